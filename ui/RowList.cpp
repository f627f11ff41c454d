#include "ui/RowList.h"

#include "ui/Look.h"

#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace cabslot {

namespace {

constexpr int iconSize = 16;
constexpr int padding = 6;      // pixels left and right of the text
constexpr int lineSpacing = 10; // pixels above and below the text together
constexpr double corner = 5;
constexpr double focusWidth = 1.6;

class RowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool twoLines = false;

    QSize sizeHint(const QStyleOptionViewItem& option,
                   const QModelIndex& /*index*/) const override {
        const int second = twoLines ? QFontMetrics(detailFont()).height() : 0;
        return {0, option.fontMetrics.height() + lineSpacing + second};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        painter->save();
        const Colours colours = coloursOf(option.palette);
        const bool isTitle = index.data(RowList::isTitleRole).toBool();
        if (!isTitle)
            paintGround(*painter, option, colours);
        QRect space = option.rect.adjusted(padding, lineSpacing / 2, -padding, -lineSpacing / 2);
        if (!isTitle) {
            const auto icon = index.data(Qt::DecorationRole).value<QIcon>();
            icon.paint(painter,
                       QRect(space.topLeft(), QSize(iconSize, option.fontMetrics.height())));
            space.setLeft(space.left() + iconSize + padding);
        }
        QRect first = space;
        first.setHeight(option.fontMetrics.height());
        paintText(*painter, first, index.data().toString(), isTitle ? detailFont() : option.font,
                  isTitle ? colours.muted : colours.text);
        paintText(*painter, space.adjusted(0, first.height(), 0, 0),
                  index.data(RowList::detailRole).toString(), detailFont(), colours.muted);
        painter->restore();
    }

private:
    static void paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                            const Colours& colours) {
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        const bool hovered = (option.state & QStyle::State_MouseOver) != 0;
        const bool focused = (option.state & QStyle::State_HasFocus) != 0;
        if (!selected && !hovered && !focused)
            return;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(focused ? QPen(colours.accent, focusWidth) : QPen(Qt::NoPen));
        painter.setBrush(selected ? QBrush(colours.tint) : hovered ? colours.hover : QBrush());
        painter.drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -1), corner, corner);
    }

    static void paintText(QPainter& painter, const QRect& space, const QString& text,
                          const QFont& font, const QColor& colour) {
        painter.setFont(font);
        painter.setPen(colour);
        painter.drawText(space, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                         QFontMetrics(font).elidedText(text, Qt::ElideMiddle, space.width()));
    }
};

} // namespace

RowList::RowList(QWidget* parent) : QListView(parent) {
    setProperty("role", "rows");
    setItemDelegate(new RowDelegate(this));
    setUniformItemSizes(true);
    setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    connect(this, &QListView::doubleClicked, this, &RowList::entered);
}

void RowList::setTwoLines(bool two) {
    static_cast<RowDelegate*>(itemDelegate())->twoLines = two;
    scheduleDelayedItemsLayout();
}

void RowList::setEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void RowList::keyPressEvent(QKeyEvent* event) {
    const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool steps = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    const bool isSelected = selectionModel()->hasSelection();
    if (enters && isSelected)
        emit entered(currentIndex());
    else if (steps && !isSelected)
        setCurrentIndex(model()->index(0, 0));
    else if (!enters)
        QListView::keyPressEvent(event);
}

void RowList::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (emptyText_.isEmpty() || model() == nullptr || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(coloursOf(palette()).muted);
    painter.drawText(viewport()->rect().adjusted(padding, 2 * padding, -padding, 0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

} // namespace cabslot
