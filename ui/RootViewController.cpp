// Construction, loading, and the reaction to the device link's events.
#include "ui/RootViewController.h"

#include "device/SharedState.h"
#include "ui/Fatal.h"
#include "ui/Glyphs.h"
#include "ui/Look.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"
#include "ui_RootViewController.h"

#include <QMessageBox>
#include <QShortcut>

#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

// The third has no blank, on purpose: it is part of what users know.
const QStringList defaultNames = {"User 1", "User 2", "User3", "User 4"};

constexpr int nameColumns = 18; // sixteen characters and some air

const QString ready = "Load a WAV file into a slot, or drop one on it.";

} // namespace

RootViewController::RootViewController(Surroundings surroundings)
    : surroundings_(std::move(surroundings)), listening_(surroundings_.sound, surroundings_.bundle),
      hidClass(surroundings_.manager) {}

RootViewController::~RootViewController() = default;

QWidget* RootViewController::view() {
    if (view_ == nullptr && ui_ == nullptr)
        loadView();
    return view_;
}

void RootViewController::loadView() {
    view_ = new QWidget;
    ui_ = std::make_unique<Ui::RootViewController>();
    ui_->setupUi(view_);
    User1Label = ui_->User1Label;
    User2Label = ui_->User2Label;
    User3Label = ui_->User3Label;
    User4Label = ui_->User4Label;
    viewDidLoad(); // first: the pedal's answer takes a while, and so do the fonts below
    setUpRows();
    showIdle();
    catchUp();
}

// The device thread runs before anyone observes it. On a busy machine the first events, and without
// a pedal they are the only ones, can be over by then.
void RootViewController::catchUp() {
    if (hidClass.KVOValue() == deviceLost || IRNameArr.count() == slotCount)
        observeValue();
}

void RootViewController::setUpRows() {
    ui_->heading->setFont(headingFont());
    const QFontMetrics nameMetrics(nameFont());
    for (const auto* label : labels()) {
        (*label)->setFont(nameFont());
        (*label)->setMinimumWidth(nameMetrics.horizontalAdvance(QString(nameColumns, 'M')));
    }
    QSizePolicy keepsItsPlace = ui_->progress->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    ui_->progress->setSizePolicy(keepsItsPlace);
    // Room for a reason of two lines, so that the window keeps its size.
    ui_->status->setMinimumHeight(2 * ui_->status->fontMetrics().lineSpacing());
    for (auto* button : view_->findChildren<QPushButton*>()) {
        const bool adds = button->property("tag").toInt() <= static_cast<int>(slotCount);
        if (adds)
            button->setIcon(glyphIcon(Glyph::load));
        connect(button, &QPushButton::clicked, this, [this, button, adds] {
            if (!uploading_)
                adds ? add(button) : del(button);
        });
    }
    for (auto* picture : view_->findChildren<SlotPicture*>())
        picture->setListening(listening_);
    for (auto* row : view_->findChildren<SlotRow*>()) {
        const int slot = row->property("slot").toInt();
        connect(row, &SlotRow::filesDropped, this,
                [this, slot](const QList<QUrl>& files) { importDropped(slot, files); });
        const auto onKeys = [this](const QString& keys, auto action) {
            connect(new QShortcut(QKeySequence(keys), view_), &QShortcut::activated, this, action);
        };
        onKeys(QString("Ctrl+%1").arg(slot), [this, slot] { addIR(slot); });
        onKeys(QString("Ctrl+Shift+%1").arg(slot), [this, slot] { delIR(slot); });
    }
}

void RootViewController::viewDidLoad() {
    hidClass.OpenDevice();
    hidClass.addObserver([this] { observeValue(); });
    IRName = defaultNames;
}

void RootViewController::observeValue() {
    mainQueue_.post([this] { react(); });
}

// Looks at the value as it is now: several events may have come since this one was queued.
void RootViewController::react() {
    if (hidClass.KVOValue() == deviceLost)
        tellDisconnect();
    else
        showSlotNames();
}

void RootViewController::showSlotNames() {
    for (std::size_t i = 0; i < slotCount; ++i)
        labelOf(static_cast<std::int64_t>(i) + 1).setText(QString::fromStdString(IRNameArr.at(i)));
    showStatus(ready);
}

void RootViewController::tellDisconnect() {
    if (const std::string why = surroundings_.manager.whyNoDevice(); !why.empty()) {
        std::fprintf(stderr, "cabslot: %s\n", why.c_str());
        showStatus(QString::fromStdString(why), true);
    }
    QMessageBox alert(view_ == nullptr ? nullptr : view_->window());
    alert.setIcon(QMessageBox::Warning);
    alert.setWindowModality(Qt::ApplicationModal);
    alert.setText("Error");
    alert.setInformativeText("Disconnect! Please try again after connecting.");
    alert.addButton("Ok", QMessageBox::AcceptRole);
    alert.exec();
    surroundings_.endProcess(0);
}

std::array<QPointer<QLabel>*, slotCount> RootViewController::labels() {
    return {&User1Label, &User2Label, &User3Label, &User4Label};
}

QLabel& RootViewController::labelOf(std::int64_t index) {
    return outlet(*labels()[static_cast<std::size_t>(index - 1)]);
}

void RootViewController::showStatus(const QString& text, bool problem) {
    ui_->status->setText(text);
    setLook(*ui_->status, "problem", problem);
}

} // namespace cabslot
