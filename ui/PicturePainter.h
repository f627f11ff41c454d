// Draws pictures in the window, in the colours of its palette.
#pragma once

#include "analysis/Plots.h"

#include <QWidget>

#include <functional>

class QPainter;

namespace cabslot {

void paintPicture(QPainter& painter, const Picture& picture, const QPalette& palette);

/// Shows a plot that fills the widget.
class PlotView final : public QWidget {
public:
    using Plot = std::function<Picture(const PlotSize&)>;

    explicit PlotView(QWidget* parent = nullptr);

    /// `described` is read aloud by screen readers.
    void setPlot(Plot plot, const QString& described);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double textSize() const;

    Plot plot_;
};

} // namespace cabslot
