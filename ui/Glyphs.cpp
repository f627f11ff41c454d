#include "ui/Glyphs.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace cabslot {

namespace {

constexpr qreal grid = 16; // the glyphs are designed on 16 by 16 units
constexpr qreal stroke = 1.6;

QPainterPath cross() {
    QPainterPath path;
    path.moveTo(4, 4);
    path.lineTo(12, 12);
    path.moveTo(12, 4);
    path.lineTo(4, 12);
    return path;
}

// An arrow into a tray.
QPainterPath arrowIntoTray() {
    QPainterPath path;
    path.moveTo(8, 2);
    path.lineTo(8, 10);
    path.moveTo(4.5, 6.8);
    path.lineTo(8, 10.3);
    path.lineTo(11.5, 6.8);
    path.moveTo(2.5, 10.5);
    path.lineTo(2.5, 13.5);
    path.lineTo(13.5, 13.5);
    path.lineTo(13.5, 10.5);
    return path;
}

QPainterPath dash() {
    QPainterPath path;
    path.moveTo(4, 8);
    path.lineTo(12, 8);
    return path;
}

QPainterPath threeLines() {
    QPainterPath path;
    for (const qreal y : {4.5, 8.0, 11.5}) {
        path.moveTo(3, y);
        path.lineTo(13, y);
    }
    return path;
}

// A triangle around an exclamation mark.
QPainterPath warning() {
    QPainterPath path;
    path.moveTo(8, 2);
    path.lineTo(14.5, 13.5);
    path.lineTo(1.5, 13.5);
    path.closeSubpath();
    path.moveTo(8, 6.2);
    path.lineTo(8, 9.4);
    path.moveTo(8, 11.5);
    path.lineTo(8, 11.6);
    return path;
}

QPainterPath lines(std::initializer_list<QPointF> points) {
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
    return path;
}

QPainterPath folder() {
    return lines({{1.5, 13}, {1.5, 3.5}, {6, 3.5}, {7.5, 5.5}, {14.5, 5.5}, {14.5, 13}, {1.5, 13}});
}

// An IR: a peak that rings out.
QPainterPath wave() {
    return lines({{1.5, 8}, {3.5, 8}, {5, 2.5}, {7.5, 13.5}, {9.5, 5.5}, {11.5, 9.5}, {14.5, 8}});
}

QPainterPath outline(Glyph glyph) {
    switch (glyph) {
    case Glyph::folder:
        return folder();
    case Glyph::wave:
        return wave();
    case Glyph::back:
        return lines({{9.5, 3.5}, {5, 8}, {9.5, 12.5}});
    case Glyph::forward:
        return lines({{6.5, 3.5}, {11, 8}, {6.5, 12.5}});
    case Glyph::up:
        return lines({{3.5, 9.5}, {8, 5}, {12.5, 9.5}});
    case Glyph::load:
        return arrowIntoTray();
    case Glyph::minimise:
        return dash();
    case Glyph::menu:
        return threeLines();
    case Glyph::finding:
        return warning();
    case Glyph::close:
        break;
    }
    return cross();
}

class GlyphEngine final : public QIconEngine {
public:
    explicit GlyphEngine(Glyph glyph) : glyph_(glyph) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / grid, rect.height() / grid);
        painter->setPen(QPen(QGuiApplication::palette().color(group, QPalette::WindowText), stroke,
                             Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(outline(glyph_));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, {{}, size}, mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new GlyphEngine(glyph_); }

private:
    Glyph glyph_;
};

} // namespace

QIcon glyphIcon(Glyph glyph) {
    return QIcon(new GlyphEngine(glyph)); // the icon owns the engine
}

} // namespace cabslot
