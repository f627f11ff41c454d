// Construction, loading, and handling of the device link's events.
#include "ui/RootViewController.h"

#include "device/SharedState.h"
#include "ui/Alert.h"
#include "ui/Fatal.h"
#include "ui/SetDrops.h"
#include "ui/SlotContent.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"
#include "ui_RootViewController.h"

#include <QApplication>
#include <QShortcut>
#include <QTimer>

#include <utility>

namespace cabslot {

namespace {

QString defaultName(std::size_t slot) {
    // The third label has no blank, unlike defaultSlotName(): kept, so that the window shows the
    // same in every version.
    return QString::fromStdString(slot == 3 ? "User3" : defaultSlotName(slot));
}

} // namespace

RootViewController::RootViewController(Surroundings surroundings)
    : surroundings_(std::move(surroundings)), listening_(surroundings_.sound, surroundings_.bundle),
      remembered_(surroundings_.pedal), hidClass_(surroundings_.manager) {}

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
    static_assert(slotCount == 4, "the form and the given labels have four rows: add one to both");
    rows_ = {ui_->row1, ui_->row2, ui_->row3, ui_->row4};
    for (std::size_t i = 0; i < slotCount; ++i)
        *labels()[i] = rows_[i]->nameLabel();
    upload_.emplace(BlockingUpload::Parts{.view = *view_,
                                          .status = *ui_->statusLine,
                                          .bar = *ui_->progress,
                                          .queue = mainQueue_,
                                          .listening = listening_,
                                          .pause = surroundings_.pause,
                                          .runningChanged = [this] { updateControls(); }});
    viewDidLoad(); // first, because the rows take as long as the pedal's answer
    for (SlotRow* row : rows_)
        setUpRow(*row);
    connect(new SetDrops(*view_), &SetDrops::dropped, this, &RootViewController::openSet);
    onKeys("Ctrl+Z", [this] { undo(); });
    connect(ui_->statusLine->undoButton(), &QPushButton::clicked, this,
            ifReady([this](bool /*checked*/) { undo(); }));
    updateControls();
    catchUp();
    QTimer::singleShot(surroundings_.namesWait, view_, [this] { sayWithoutNames(); });
}

// The device thread starts before it has an observer. On a busy machine the first events, which
// without a pedal are the only ones, may be over by then.
void RootViewController::catchUp() {
    if (hidClass_.KVOValue() == deviceLost || IRNameArr.count() == slotCount)
        observeValue();
}

// The same words as the command line's.
void RootViewController::sayWithoutNames() {
    if (IRNameArr.count() != slotCount && isDeviceConnent == 1)
        refuse(
            QString("the pedal is there but did not send its data within %1 s; unplug it, plug it "
                    "in and try again")
                .arg(std::chrono::duration<double>(surroundings_.namesWait).count()));
}

// Every way to start an upload checks isReady() first: it disables the buttons, and keys and drops
// are checked here.
void RootViewController::setUpRow(SlotRow& row) {
    const int slot = row.slot();
    row.picture()->setUp(
        listening_, [this, slot] { return remembered_.history(static_cast<std::uint32_t>(slot)); });
    connect(row.addButton(), &QPushButton::clicked, this, [this, &row] { add(row.addButton()); });
    connect(row.deleteButton(), &QPushButton::clicked, this,
            [this, &row] { del(row.deleteButton()); });
    connect(row.picture(), &SlotPicture::loadAgain, this,
            ifReady([this, slot](const SlotRecord& record) { loadEarlier(slot, record); }));
    connect(&row, &SlotRow::filesDropped, this,
            ifReady([this, slot](const QList<QUrl>& files) { importDropped(slot, files); }));
    connect(&row, &SlotRow::targeted, this,
            [this, slot](qsizetype files) { showTargets(slot, files); });
    connect(row.picture(), &SlotPicture::stepped, this,
            [this, slot](int by) { stepView(slot, by); });
    onKeys(QString("Ctrl+%1").arg(slot), [this, slot] { addIR(slot); });
    onKeys(QString("Ctrl+Shift+%1").arg(slot), [this, slot] { delIR(slot); });
}

void RootViewController::onKeys(const QString& keys, const std::function<void()>& action) {
    connect(new QShortcut(QKeySequence(keys), view_), &QShortcut::activated, this, ifReady(action));
}

bool RootViewController::isReady() const {
    return IRNameArr.count() == slotCount && !upload_->isRunning() && sheet_ == nullptr &&
           !disconnected_;
}

void RootViewController::updateControls() {
    for (SlotRow* row : rows_)
        row->setReady(isReady());
    const QWidget* const focus = view_->window()->focusWidget();
    if (isReady() && (focus == nullptr || focus->isWindow()))
        rows_[0]->addButton()->setFocus();
    openWaitingSet();
}

void RootViewController::viewDidLoad() {
    hidClass_.OpenDevice();
    hidClass_.addObserver([this] { observeValue(); });
    for (std::size_t slot = 1; slot <= slotCount; ++slot)
        IRName << defaultName(slot);
}

void RootViewController::observeValue() {
    mainQueue_.post([this] { react(); });
}

// Uses the current value: several events may have happened since this one was queued.
void RootViewController::react() {
    if (hidClass_.KVOValue() == deviceLost)
        tellDisconnect();
    else
        showSlotNames();
}

void RootViewController::showSlotNames() {
    for (std::size_t i = 0; i < slotCount; ++i) {
        const auto index = static_cast<std::int64_t>(i) + 1;
        showName(index, QString::fromStdString(IRNameArr.at(i)));
        const auto record = remembered_.recall(static_cast<std::uint32_t>(index));
        unwrapped(rowOf(index)).showContent(record ? contentOf(*record) : SlotContent());
    }
    ui_->statusLine->sayReady();
    updateControls();
}

void RootViewController::tellDisconnect() {
    const std::string why = surroundings_.manager.whyNoDevice();
    if (!why.empty())
        refuse(QString::fromStdString(why));
    disconnected_ = true;
    updateControls();
    QWidget& mainWindow = unwrapped(view_ == nullptr ? nullptr : view_->window());
    // Over the open panel, if that is in front.
    QWidget* const active = QApplication::activeWindow();
    const bool overPanel = active != nullptr && active->parentWidget() == &mainWindow &&
                           qobject_cast<Sheet*>(active) == nullptr;
    auto* alert = new Alert(overPanel ? *active : mainWindow,
                            "Disconnect! Please try again after connecting.", "Ok",
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

void RootViewController::showName(std::int64_t index, const QString& name) {
    labelOf(index).setText(name);
    unwrapped(rowOf(index)).describe();
}

void RootViewController::showTargets(int first, qsizetype files) {
    for (SlotRow* row : rows_)
        row->setTarget(row->slot() >= first && row->slot() < first + files);
}

void RootViewController::stepView(int slot, int by) {
    for (int next = slot + by; rowOf(next) != nullptr; next += by) {
        if (rowOf(next)->picture()->hasContent())
            return rowOf(next)->picture()->takeView(*rowOf(slot)->picture());
    }
}

SlotRow* RootViewController::rowOf(std::int64_t index) {
    const bool exists = index >= 1 && index <= static_cast<std::int64_t>(slotCount);
    return exists ? rows_[static_cast<std::size_t>(index - 1)] : nullptr;
}

void RootViewController::prepareChanged(bool on) {
    ui_->statusLine->tell(on ? "Files are prepared before they are loaded."
                             : "Files are loaded as they are.");
}

// A following alert shows the problem, too.
void RootViewController::refuse(const QString& why) {
    problem_ = ui_->statusLine->refuse(why);
}

} // namespace cabslot
