#include "ui/PicturePainter.h"

#include "ui/Look.h"

#include <QFontInfo>
#include <QPainter>
#include <QPolygonF>

#include <utility>

namespace cabslot {

namespace {

constexpr double labelScale = 0.85; // of the window's text size

QColor colourOf(Ink ink, const Colours& colours) {
    switch (ink) {
    case Ink::grid:
        return colours.line;
    case Ink::frame:
        return colours.frame;
    case Ink::faint:
        return colours.muted;
    case Ink::text:
        return colours.text;
    case Ink::before:
        return colours.frame;
    case Ink::other:
        return colours.other;
    case Ink::third:
        return colours.third;
    case Ink::signal:
        break;
    }
    return colours.accent;
}

void draw(QPainter& painter, const Line& line, const QColor& colour) {
    painter.setPen(QPen(colour, 1));
    painter.drawLine(QPointF(line.from.x, line.from.y), QPointF(line.to.x, line.to.y));
}

// The outline is drawn line by line: where a curve fills its area, as with noise, its outline
// crosses itself so often that a single stroke would take ten times as long as everything else.
void draw(QPainter& painter, const Area& area, const QColor& colour) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(area.corners.size()));
    for (const Spot& corner : area.corners)
        polygon.append({corner.x, corner.y});
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(polygon, Qt::WindingFill);
    QList<QLineF> lines;
    lines.reserve(polygon.size());
    for (qsizetype i = 0; i < polygon.size(); ++i)
        lines.append({polygon[i], polygon[(i + 1) % polygon.size()]});
    painter.setPen(QPen(colour, area.outline, Qt::SolidLine, Qt::RoundCap));
    painter.drawLines(lines);
}

void draw(QPainter& painter, const Stroke& stroke, const QColor& colour) {
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(stroke.spots.size()));
    for (const Spot& spot : stroke.spots)
        line.append({spot.x, spot.y});
    constexpr Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine};
    painter.setPen(QPen(colour, stroke.width, styles[static_cast<std::size_t>(stroke.style)]));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(line);
}

void draw(QPainter& painter, const Text& text, const QColor& colour) {
    QFont font = painter.font();
    font.setPixelSize(qRound(text.size));
    font.setBold(text.strong);
    painter.setFont(font);
    painter.setPen(colour);
    const QString shown = QString::fromStdString(text.text);
    const double width = QFontMetricsF(font).horizontalAdvance(shown);
    const double before[] = {0, width / 2, width};
    painter.drawText(QPointF(text.at.x - before[static_cast<std::size_t>(text.align)], text.at.y),
                     shown);
}

} // namespace

void paintPicture(QPainter& painter, const Picture& picture, const QPalette& palette) {
    const Colours colours = coloursOf(palette);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Shape& shape : picture.shapes)
        std::visit([&](const auto& each) { draw(painter, each, colourOf(each.ink, colours)); },
                   shape);
}

PlotView::PlotView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlotView::setPlot(Plot plot, const QString& described) {
    plot_ = std::move(plot);
    setAccessibleDescription(described);
    update();
}

double PlotView::textSize() const {
    return qRound(QFontInfo(font()).pixelSize() * labelScale);
}

QSize PlotView::minimumSizeHint() const {
    return QSizeF(narrowestPlot * textSize(), lowestPlot * textSize()).toSize();
}

void PlotView::paintEvent(QPaintEvent* /*event*/) {
    if (!plot_)
        return;
    QPainter painter(this);
    paintPicture(painter, plot_({double(width()), double(height()), textSize()}), palette());
}

} // namespace cabslot
