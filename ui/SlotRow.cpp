#include "ui/SlotRow.h"

#include "base/Pedal.h"
#include "ui/Announce.h"
#include "ui/Glyphs.h"
#include "ui/Look.h"
#include "ui/SlotPicture.h"
#include "ui/Words.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPainter>
#include <QStringList>

#include <algorithm>

namespace cabslot {

namespace {

constexpr int nameColumns = 18; // sixteen characters and some space
constexpr const char* usualLine = "Acme 4x12 V30 SM57 edge.wav, 23 Nov 2026"; // longer ones are cut
constexpr int markSize = 14;                                                  // pixels
constexpr int markSpacing = 5;

// A drawn sign, sharp at any scale; its words are for screen readers and the pointer.
class Mark final : public QLabel {
public:
    explicit Mark(QWidget* parent) : QLabel(parent) {
        setFixedSize(markSize, markSize);
        setAccessibleName("Finding");
        hide();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        glyphIcon(Glyph::finding).paint(&painter, rect());
    }
};

QLabel* makeLabel(const char* role, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText); // names come from files and from the pedal
    label->setProperty("role", role);
    return label;
}

} // namespace

SlotRow::SlotRow(QWidget* parent)
    : QFrame(parent), number_(makeLabel("number", this)), name_(makeLabel("name", this)),
      mark_(new Mark(this)), detail_(makeLabel("detail", this)), picture_(new SlotPicture(this)),
      add_(new QPushButton(" Load…", this)), delete_(new QPushButton("Clear", this)) {
    setProperty("role", "row");
    setAccessibleRole(*this, QAccessible::Grouping);
    delete_->setProperty("role", "secondary");
    number_->setAlignment(Qt::AlignCenter);
    name_->setText("…");
    name_->setFont(nameFont());
    name_->setMinimumWidth(
        std::max(QFontMetrics(nameFont()).horizontalAdvance(QString(nameColumns, 'M')),
                 QFontMetrics(detailFont()).horizontalAdvance(usualLine)));
    detail_->setFont(detailFont());
    detail_->setWordWrap(true);
    detail_->hide();
    add_->setIcon(glyphIcon(Glyph::load));
    for (QPushButton* button : {add_, delete_})
        button->setFocusPolicy(Qt::TabFocus); // shows the focus only to keyboard users
    layOut();
}

void SlotRow::layOut() {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch();
    texts->addWidget(name_);
    auto* below = new QHBoxLayout;
    below->setSpacing(markSpacing);
    below->addWidget(mark_, 0, Qt::AlignTop);
    below->addWidget(detail_, 1);
    texts->addLayout(below);
    texts->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(18, 10, 14, 10);
    row->setSpacing(8);
    row->addWidget(number_);
    row->addLayout(texts, 1);
    row->addWidget(picture_);
    row->addWidget(add_);
    row->addWidget(delete_);
    setTabOrder(picture_, add_);
    setTabOrder(add_, delete_);
}

void SlotRow::setSlot(int slot) {
    slot_ = slot;
    const QString name = QString::fromStdString(defaultSlotName(static_cast<std::size_t>(slot)));
    number_->setText(QString::number(slot));
    name_->setObjectName(QString("User%1Label").arg(slot));
    picture_->setObjectName(QString("picture%1").arg(slot));
    picture_->setSlotName(name);
    add_->setProperty("tag", slot);
    add_->setAccessibleName("Load a WAV into " + name);
    add_->setToolTip(QString("Load a WAV file into %1 (Ctrl+%2)").arg(name).arg(slot));
    delete_->setProperty("tag", slot + static_cast<int>(slotCount));
    delete_->setAccessibleName("Clear " + name);
    delete_->setToolTip(QString("Clear %1 (Ctrl+Shift+%2)").arg(name).arg(slot));
}

void SlotRow::showContent(const SlotContent& content) {
    mark_->setVisible(!content.findings.isEmpty());
    mark_->setAccessibleDescription(content.findings);
    showLine(content);
    QStringList words{content.detail, content.findings};
    words.removeAll({});
    setToolTip(words.isEmpty() ? QString() : toolTipOf(words.join('\n')));
    detail_->setAccessibleDescription(words.join('\n'));
    if (content.summary)
        picture_->setSummary(*content.summary);
    else
        picture_->clear();
}

// Cuts the file's name in the middle: its ends tell files apart.
void SlotRow::showLine(const SlotContent& content) {
    const QFontMetrics font(detail_->font());
    const int mark = mark_->isVisibleTo(this) ? markSize + markSpacing : 0;
    const int width = name_->minimumWidth() - mark - font.horizontalAdvance(content.rest);
    detail_->setText(font.elidedText(content.file, Qt::ElideMiddle, width) + content.rest);
    detail_->setAccessibleName(content.line());
    detail_->setVisible(!content.line().isEmpty());
    setLook(*detail_, "problem", content.problem);
}

void SlotRow::setReady(bool ready) {
    add_->setEnabled(ready);
    delete_->setEnabled(ready);
    setAcceptDrops(ready);
    picture_->setReady(ready);
}

void SlotRow::setTarget(bool target) {
    setLook(*this, "target", target);
}

void SlotRow::describe() {
    const QString slot = QString::fromStdString(defaultSlotName(static_cast<std::size_t>(slot_)));
    const QString name = name_->text().trimmed();
    name_->setAccessibleName(name);
    setAccessibleName(name == slot ? slot : slot + ", " + name);
}

QString SlotRow::contentInWords() const {
    return (detail_->accessibleName() + ". " + mark_->accessibleDescription()).trimmed();
}

void SlotRow::setBusy(bool busy) {
    setLook(*this, "busy", busy);
}

void SlotRow::dragEnterEvent(QDragEnterEvent* event) {
    if (!event->mimeData()->hasUrls())
        return;
    event->acceptProposedAction();
    emit targeted(event->mimeData()->urls().size());
}

void SlotRow::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    emit targeted(0);
}

void SlotRow::dropEvent(QDropEvent* event) {
    emit targeted(0);
    event->acceptProposedAction();
    // Deferred, because the program that the files came from waits for this call to return.
    QMetaObject::invokeMethod(
        this, [this, files = event->mimeData()->urls()] { emit filesDropped(files); },
        Qt::QueuedConnection);
}

} // namespace cabslot
