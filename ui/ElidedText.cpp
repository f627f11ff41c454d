#include "ui/ElidedText.h"

#include "ui/Words.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

namespace cabslot {

ElidedText::ElidedText(int lineCount, QWidget* parent) : QLabel(parent), lineCount_(lineCount) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ElidedText::sizeHint() const {
    return {QLabel::sizeHint().width(), lineCount_ * fontMetrics().lineSpacing()};
}

QSize ElidedText::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

QStringList ElidedText::shownLines() const {
    const int width = contentsRect().width();
    QTextLayout layout(text(), font());
    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapping);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (lines.size() + 1 == lineCount_) {
            lines << fontMetrics().elidedText(text().mid(line.textStart()), Qt::ElideRight, width);
            break;
        }
        lines << text().mid(line.textStart(), line.textLength());
    }
    layout.endLayout();
    return lines;
}

bool ElidedText::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip)
        setToolTip(shownLines().join(QString()) == text() ? QString() : toolTipOf(text()));
    return QLabel::event(event);
}

void ElidedText::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(),
                          static_cast<int>(Qt::AlignLeft | (alignment() & Qt::AlignVertical_Mask)),
                          palette(), isEnabled(), shownLines().join('\n'), foregroundRole());
}

} // namespace cabslot
