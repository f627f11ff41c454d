// Construction, loading, and handling of the device link's events.
#include "ui/RootViewController.h"

#include "base/VisibleText.h"
#include "device/SharedState.h"
#include "ui/Alert.h"
#include "ui/Fatal.h"
#include "ui/Look.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"
#include "ui_RootViewController.h"

#include <QDateTime>
#include <QLocale>
#include <QShortcut>

#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

QString defaultName(std::size_t slot) {
    // The only exception to defaultSlotName(): the window shows the third name without a blank.
    return QString::fromStdString(slot == 3 ? "User3" : defaultSlotName(slot));
}

void complain(const std::string& line) {
    std::fprintf(stderr, "cabslot: %s\n", line.c_str());
}

// Such as "Loaded from here on 3 May".
QString rememberedText(const SlotRecord& record) {
    const QDate day = QDateTime::fromSecsSinceEpoch(record.time.time_since_epoch().count()).date();
    const bool thisYear = day.year() == QDate::currentDate().year();
    return (record.source.empty() ? "Cleared" : "Loaded") + QString(" from here on ") +
           QLocale::c().toString(day, thisYear ? "d MMM" : "d MMM yyyy");
}

const QString ready = "Load a WAV file into a slot, or drop one on it.";

} // namespace

RootViewController::RootViewController(Surroundings surroundings)
    : surroundings_(std::move(surroundings)), listening_(surroundings_.sound, surroundings_.bundle),
      hidClass(surroundings_.manager) {
    if (!surroundings_.pedal.empty())
        memory_.emplace(surroundings_.pedal, complain);
}

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
    rows_ = {ui_->row1, ui_->row2, ui_->row3, ui_->row4};
    for (std::size_t i = 0; i < slotCount; ++i)
        *labels()[i] = rows_[i]->nameLabel();
    viewDidLoad(); // first, because the rows take as long as the pedal's answer
    for (SlotRow* row : rows_)
        setUpRow(*row);
    // Reserves space for a reason of two lines, so that the window keeps its size.
    ui_->status->setMinimumHeight(2 * ui_->status->fontMetrics().lineSpacing());
    updateControls();
    catchUp();
}

// The device thread starts before it has an observer. On a busy machine the first events, which
// without a pedal are the only ones, may be over by then.
void RootViewController::catchUp() {
    if (hidClass.KVOValue() == deviceLost || IRNameArr.count() == slotCount)
        observeValue();
}

// Every way to start an upload checks isReady() first: it disables the buttons, and keys and drops
// are checked here.
void RootViewController::setUpRow(SlotRow& row) {
    row.picture()->setListening(listening_);
    connect(row.addButton(), &QPushButton::clicked, this, [this, &row] { add(row.addButton()); });
    connect(row.deleteButton(), &QPushButton::clicked, this,
            [this, &row] { del(row.deleteButton()); });
    const auto ifReady = [this](auto action) {
        return [this, action](auto&&... arguments) {
            if (isReady())
                action(arguments...);
        };
    };
    const int slot = row.slot();
    connect(&row, &SlotRow::filesDropped, this,
            ifReady([this, slot](const QList<QUrl>& files) { importDropped(slot, files); }));
    const auto onKeys = [this](const QString& keys, auto action) {
        connect(new QShortcut(QKeySequence(keys), view_), &QShortcut::activated, this, action);
    };
    onKeys(QString("Ctrl+%1").arg(slot), ifReady([this, slot] { addIR(slot); }));
    onKeys(QString("Ctrl+Shift+%1").arg(slot), ifReady([this, slot] { delIR(slot); }));
}

bool RootViewController::isReady() const {
    return IRNameArr.count() == slotCount && !uploading_ && sheet_ == nullptr && !disconnected_;
}

void RootViewController::updateControls() {
    for (SlotRow* row : rows_)
        row->setReady(isReady());
}

void RootViewController::viewDidLoad() {
    hidClass.OpenDevice();
    hidClass.addObserver([this] { observeValue(); });
    for (std::size_t slot = 1; slot <= slotCount; ++slot)
        IRName << defaultName(slot);
}

void RootViewController::observeValue() {
    mainQueue_.post([this] { react(); });
}

// Uses the current value: several events may have happened since this one was queued.
void RootViewController::react() {
    if (hidClass.KVOValue() == deviceLost)
        tellDisconnect();
    else
        showSlotNames();
}

void RootViewController::showSlotNames() {
    for (std::size_t i = 0; i < slotCount; ++i) {
        const auto index = static_cast<std::int64_t>(i) + 1;
        labelOf(index).setText(QString::fromStdString(IRNameArr.at(i)));
        showRemembered(index);
    }
    showReady();
    updateControls();
}

// The protocol cannot query a slot's content. A slot that still has the name it was loaded with
// most likely still holds the same IR.
void RootViewController::showRemembered(std::int64_t index) {
    if (!memory_)
        return;
    const auto slot = static_cast<std::uint32_t>(index);
    SlotRow& row = unwrapped(rowOf(index));
    const auto record = memory_->recall(slot, IRNameArr.at(slot - 1));
    row.setDetail(record ? rememberedText(*record) : QString());
    if (!record)
        return row.picture()->clear();
    row.picture()->setSummary(
        summaryOf(record->block, record->name, rememberedText(*record).toStdString()));
}

void RootViewController::remember(std::int64_t index, const UploadResult& result,
                                  const QString& path) {
    if (!memory_ || result.end != UploadEnd::confirmed)
        return unwrapped(rowOf(index)).setDetail({});
    const auto slot = static_cast<std::uint32_t>(index);
    const SlotRecord record = recordOfUpload(slot, path.toStdString());
    memory_->remember(slot, record);
    unwrapped(rowOf(index)).setDetail(rememberedText(record));
}

void RootViewController::tellDisconnect() {
    const std::string why = surroundings_.manager.whyNoDevice();
    if (!why.empty())
        refuse(QString::fromStdString(why));
    disconnected_ = true;
    updateControls();
    QWidget& mainWindow = unwrapped(view_ == nullptr ? nullptr : view_->window());
    auto* alert = new Alert(mainWindow, "Disconnect! Please try again after connecting.", "Ok",
                            why.empty() ? QString() : problem_);
    alert->runModal();
    surroundings_.endProcess(0);
}

std::array<QPointer<QLabel>*, slotCount> RootViewController::labels() {
    return {&User1Label, &User2Label, &User3Label, &User4Label};
}

QLabel& RootViewController::labelOf(std::int64_t index) {
    return outlet(*labels()[static_cast<std::size_t>(index - 1)]);
}

SlotRow* RootViewController::rowOf(std::int64_t index) {
    const bool exists = index >= 1 && index <= static_cast<std::int64_t>(slotCount);
    return exists ? rows_[static_cast<std::size_t>(index - 1)] : nullptr;
}

void RootViewController::showStatus(const QString& text, bool problem) {
    ui_->status->setText(text);
    setLook(*ui_->status, "problem", problem);
}

void RootViewController::showReady() {
    showStatus(ready);
}

// Reports the problem on standard error and in the status line; a following alert shows it too.
void RootViewController::refuse(const QString& why) {
    QString text = QString::fromStdString(visibleText(why.toStdString()));
    std::fprintf(stderr, "cabslot: %s\n", text.toUtf8().constData());
    text[0] = text[0].toUpper();
    problem_ = text.endsWith('.') ? text : text + ".";
    showStatus(problem_, true);
}

} // namespace cabslot
