// The main window: a strip with the window's buttons, and the content below or under it.
#pragma once

#include <QPoint>
#include <QWidget>

#include <memory>
#include <optional>

class QAbstractButton;

namespace Ui {
class Main;
}

namespace cabslot {

class MainWindow final : public QWidget {
    Q_OBJECT
public:
    MainWindow();
    ~MainWindow() override;

    void center(); ///< in the middle of its screen
    void setTitleBarTransparent(bool transparent);
    void setTitleVisible(bool visible);
    void setMovableByBackground(bool movable); ///< by any place that is no control
    void setFullSizeContent();                 ///< the content reaches under the strip

    QWidget* contentView() const;

    /// Takes `view` in, at the content's upper left corner and in its own frame: as large as its
    /// form asks for with this desktop's font. The window gets that size when it is shown, around
    /// the centre that it has, and keeps it.
    void addToContent(QWidget* view);

    QAbstractButton* closeButton() const;
    QAbstractButton* zoomButton() const;

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void dress();

    std::unique_ptr<Ui::Main> ui_;
    bool movable_ = false;
    std::optional<QPoint> grabbedAt_; ///< in the window, while it is moved by hand
};

} // namespace cabslot
