#include "ui/Look.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QStyle>
#include <QVariant>
#include <QWidget>

namespace cabslot {

namespace {

constexpr qreal headingScale = 1.7;
constexpr qreal nameScale = 1.2;

QFont scaled(QFont font, qreal scale) {
    font.setPointSizeF(QGuiApplication::font().pointSizeF() * scale);
    return font;
}

constexpr const char* sheet = R"(
QWidget#Main { background: %window; border: 1px solid %edge; }
QWidget#titleBar { background: %window; }
QWidget#titleBar[transparent="true"] { background: transparent; }
QToolButton { border: none; border-radius: 6px; padding: 6px; }
QToolButton:hover { background: %hover; }
QToolButton:pressed { background: %edge; }

QFrame[role="card"] { background: %base; border: 1px solid %edge; border-radius: 10px; }
QFrame[role="line"] { background: %line; border: none; min-height: 1px; max-height: 1px; }
QFrame[role="row"] { border: 2px solid transparent; border-radius: 9px; }
QFrame[role="row"][target="true"] { background: %tint; border-color: %accent; }
QLabel[role="number"] { background: %tint; color: %text; border-radius: 14px;
    min-width: 28px; max-width: 28px; min-height: 28px; max-height: 28px; }
QLabel[role="status"] { color: %muted; }
QLabel[role="status"][problem="true"] { color: %text; }

QPushButton { background: %button; color: %text; border: 1px solid %edge; border-radius: 7px;
    padding: 7px 14px; margin: 1px; outline: none; }
QPushButton[role="secondary"] { background: transparent; border-color: transparent;
    color: %muted; }
QPushButton:hover, QPushButton[role="secondary"]:hover { background: %hover; color: %text; }
QPushButton:pressed, QPushButton[role="secondary"]:pressed { background: %edge; }
QPushButton:focus, QPushButton[role="secondary"]:focus { border: 2px solid %accent; margin: 0px; }

QPushButton[role="switch"]:checked { background: %accent; color: %window; border-color: %accent; }
QPushButton:disabled { color: %muted; border-color: %line; }

QMessageBox { background: %window; border: 1px solid %edge; }
QMessageBox QLabel#qt_msgbox_label { font-weight: 600; min-width: 320px; }
QMessageBox QLabel#qt_msgbox_informativelabel { min-width: 320px; }

QProgressBar { background: %edge; border: none; border-radius: 2px;
    min-height: 4px; max-height: 4px; }
QProgressBar::chunk { background: %accent; border-radius: 2px; }
)";

} // namespace

QColor mixed(const QColor& top, const QColor& bottom, qreal amount) {
    const auto channel = [amount](int above, int below) {
        return static_cast<int>(above * amount + below * (1 - amount));
    };
    return {channel(top.red(), bottom.red()), channel(top.green(), bottom.green()),
            channel(top.blue(), bottom.blue())};
}

QString styleSheetFor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::WindowText);
    const QColor accent = palette.color(QPalette::Highlight);
    QString result = QString::fromUtf8(sheet);
    const std::pair<const char*, QString> colours[] = {
        {"%window", window.name()},
        {"%base", base.name()},
        {"%text", text.name()},
        {"%muted", mixed(text, window, 0.7).name()},
        {"%line", mixed(text, base, 0.1).name()},
        {"%edge", mixed(text, window, 0.16).name()},
        {"%hover", mixed(text, base, 0.08).name()},
        {"%button", mixed(text, base, 0.02).name()},
        {"%accent", accent.name()},
        {"%tint", mixed(accent, base, 0.16).name()},
    };
    for (const auto& [name, colour] : colours)
        result.replace(QLatin1String(name), colour);
    return result;
}

void setLook(QWidget& widget, const char* property, bool value) {
    if (widget.property(property) == value)
        return;
    widget.setProperty(property, value);
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

QFont headingFont() {
    QFont font = scaled(QGuiApplication::font(), headingScale);
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont nameFont() {
    return scaled(QFontDatabase::systemFont(QFontDatabase::FixedFont), nameScale);
}

} // namespace cabslot
