#include "ui/Look.h"

#include "ui/FixedFont.h"

#include <QGuiApplication>
#include <QStyle>
#include <QVariant>
#include <QWidget>

#include <cmath>

namespace cabslot {

namespace {

constexpr qreal nameScale = 1.2;
constexpr qreal detailScale = 0.85;
constexpr double readable = 4.6; // a little more than 4.5, for what rounding takes

QFont scaled(QFont font, qreal scale) {
    font.setPointSizeF(QGuiApplication::font().pointSizeF() * scale);
    return font;
}

/// Mixes `amount` (0 to 1) of `top` into `bottom`.
QColor mixed(const QColor& top, const QColor& bottom, qreal amount) {
    const auto channel = [amount](int above, int below) {
        return static_cast<int>(above * amount + below * (1 - amount));
    };
    return {channel(top.red(), bottom.red()), channel(top.green(), bottom.green()),
            channel(top.blue(), bottom.blue())};
}

/// How bright the colour is seen, 0 to 1, as the guidelines for accessible web content define it.
double luminanceOf(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// The colour, darkened until white text on it has a contrast of 4.5 to 1.
QColor darkEnough(QColor colour) {
    while (1.05 / (luminanceOf(colour) + 0.05) < readable)
        colour = mixed(Qt::black, colour, 0.04);
    return colour;
}

constexpr const char* sheet = R"(
QWidget#Main { background: %window; border: 1px solid %edge; }
QWidget#titleBar { background: %window; }
QWidget#titleBar[transparent="true"] { background: transparent; }
QToolButton { border: none; border-radius: 6px; padding: 6px; }
QToolButton::menu-indicator { image: none; }
QToolButton:hover { background: %hover; }
QToolButton:pressed { background: %pressed; }

QFrame[role="card"] { background: %base; border: 1px solid %edge; border-radius: 10px; }
QFrame[role="line"] { background: %line; border: none; min-height: 1px; max-height: 1px; }
QFrame[role="row"] { border: 2px solid transparent; border-radius: 9px; }
QFrame[role="row"][target="true"] { background: %tint; border-color: %accent; }
QFrame[role="row"][busy="true"] { background: %tint; }
QLabel[role="number"] { background: %tint; color: %text; border-radius: 14px;
    min-width: 28px; max-width: 28px; min-height: 28px; max-height: 28px; }
QLabel[role="detail"] { color: %muted; }
QLabel[role="status"] { color: %muted; }
QLabel[role="status"][problem="true"], QLabel[role="detail"][problem="true"], QLabel[role="reason"] { color: %problem; }

QPushButton { background: %tint; color: %text; border: 1px solid %edge; border-radius: 7px;
    padding: 7px 14px; margin: 1px; outline: none; }
QPushButton[role="secondary"] { background: %button; color: %muted; }
QPushButton[role="inline"] { padding: 3px 10px; }
QPushButton:hover, QPushButton[role="secondary"]:hover { background: %hover; color: %text; }
QPushButton:pressed, QPushButton[role="secondary"]:pressed { background: %pressed; }
QPushButton[role="switch"]:checked { background: %selected; color: white; border-color: %selected; }
QAbstractItemView { selection-background-color: %selected; selection-color: white; }
QFrame[role="row"] QPushButton { min-height: 18px; }
QPushButton:disabled, QPushButton[role="secondary"]:disabled { background: transparent;
    color: %disabled; }
QPushButton:focus { border: 2px solid %accent; margin: 0px; }
QCheckBox::indicator:unchecked { border: 1px solid %muted; border-radius: 3px; background: %base;
    width: 11px; height: 11px; }

QTableWidget { background: %base; border: 1px solid %edge; border-radius: 7px; }
QTableWidget QHeaderView, QTableWidget QHeaderView::section { background: transparent;
    color: %muted; border: none; padding: 1px 4px; }
QDialog[role="alert"] { background: %window; border: 1px solid %muted; }
QLabel[role="alertTitle"] { font-weight: 600; }
)";

} // namespace

Colours coloursOf(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    const bool dark = window.lightness() < text.lightness();
    return {
        .window = window,
        .base = base,
        .text = text,
        .muted = mixed(text, window, 0.7),
        .disabled = mixed(text, window, 0.35),
        .problem = dark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB3, 0x1D, 0x1D),
        .line = mixed(text, base, 0.1),
        .frame = mixed(text, base, 0.25),
        .edge = mixed(text, window, 0.16),
        .hover = mixed(text, base, 0.08),
        .pressed = mixed(text, base, 0.16),
        .button = mixed(text, base, 0.02),
        .accent = accent,
        .other = dark ? QColor(0xF0, 0xA0, 0x50) : QColor(0xB3, 0x54, 0x0A),
        .third = dark ? QColor(0x9C, 0xCC, 0x65) : QColor(0x4F, 0x7A, 0x1F),
        .selected = darkEnough(accent),
        .tint = mixed(accent, base, 0.16),
        .dim = QColor(0, 0, 0, dark ? 140 : 90),
    };
}

QString styleSheetFor(const QPalette& palette) {
    const Colours colours = coloursOf(palette);
    QString result = QString::fromUtf8(sheet);
    const std::pair<const char*, QColor> names[] = {
        {"%window", colours.window},     {"%base", colours.base},
        {"%text", colours.text},         {"%muted", colours.muted},
        {"%disabled", colours.disabled}, {"%problem", colours.problem},
        {"%line", colours.line},         {"%edge", colours.edge},
        {"%hover", colours.hover},       {"%pressed", colours.pressed},
        {"%button", colours.button},     {"%accent", colours.accent},
        {"%selected", colours.selected}, {"%tint", colours.tint},
    };
    for (const auto& [name, colour] : names)
        result.replace(QLatin1String(name), colour.name());
    return result;
}

void setLook(QWidget& widget, const char* property, bool value) {
    if (widget.property(property) == value)
        return;
    widget.setProperty(property, value);
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

QFont nameFont() {
    return scaled(fixedFont(), nameScale);
}

QFont detailFont() {
    return scaled(QGuiApplication::font(), detailScale);
}

} // namespace cabslot
