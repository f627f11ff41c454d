// Saving the slots as a set, and loading one.
#include "ui/RootViewController.h"

#include "base/Files.h"
#include "base/VisibleText.h"
#include "device/SharedState.h"
#include "irfile/NameField.h"
#include "sets/SetFile.h"
#include "ui/Alert.h"
#include "ui/BlockingUpload.h"
#include "ui/SetSheet.h"
#include "ui/StatusLine.h"
#include "ui/Words.h"
#include "ui_RootViewController.h"

#include <QFileInfo>

#include <utility>

namespace cabslot {

namespace {

QString fileName(const QString& path) {
    return quoted(QFileInfo(path).fileName());
}

QString shown(const std::string& name) {
    return QString::fromStdString(visibleText(name)).trimmed();
}

std::vector<std::int64_t> slotsOf(const SlotSet& set, bool known) {
    std::vector<std::int64_t> indexes;
    for (std::size_t i = 0; i < slotCount; ++i) {
        if (set.at(i).has_value() == known)
            indexes.push_back(static_cast<std::int64_t>(i) + 1);
    }
    return indexes;
}

} // namespace

bool RootViewController::maySaveSet() {
    if (!isReady())
        return false;
    const bool known = !slotsOf(remembered_.set(), true).empty();
    if (!known)
        refuse("there is nothing to save: no slot was loaded from this computer");
    return known;
}

void RootViewController::saveSet(const QString& path) {
    if (!maySaveSet())
        return;
    const SlotSet set = remembered_.set();
    const std::string text = setText(set);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    if (const std::string why = replaceFile(path.toStdString(), {bytes, text.size()});
        !why.empty()) {
        refuse(fileName(path) + " cannot be written: " + QString::fromStdString(why));
        return alterIRError("Error");
    }
    const auto unknown = slotsOf(set, false);
    ui_->statusLine->tell(fileName(path) + " holds " + slotNames(slotsOf(set, true)) + "." +
                          (unknown.empty()
                               ? QString()
                               : " Left out: " + slotNames(unknown) + ", not loaded from here."));
    emit setUsed(path);
}

void RootViewController::openSetWhenReady(const QString& path) {
    waitingSet_ = path;
    openWaitingSet();
}

void RootViewController::openWaitingSet() {
    if (waitingSet_.isEmpty() || !isReady())
        return;
    // Deferred until the upload or the alert that has just ended is over.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isReady())
                openSet(std::exchange(waitingSet_, {}));
        },
        Qt::QueuedConnection);
}

void RootViewController::openSet(const QString& path) {
    if (!isReady())
        return;
    ReadSet read = readSet(path.toStdString());
    if (read && slotsOf(read.set, true).empty())
        read.whyRefused = "there is nothing in it to load";
    if (!read) {
        refuse(fileName(path) + ": " + QString::fromStdString(read.whyRefused));
        return alterIRError(fileError);
    }
    emit setUsed(path);
    const QString name = QFileInfo(path).completeBaseName();
    auto* const sheet = new SetSheet(*view_->window(), name, setRows(read.set), undoNote(read.set));
    connect(
        sheet, &QDialog::accepted, this,
        [this, name, set = read.set] {
            if (isReady())
                loadSet(name, set);
        },
        Qt::QueuedConnection); // the sheet has left the screen
    openSheet(*sheet);
}

std::array<SetSheet::Row, slotCount> RootViewController::setRows(const SlotSet& set) const {
    SetSheet::Rows rows;
    for (std::size_t i = 0; i < slotCount; ++i) {
        rows.at(i).now = shown(IRNameArr.at(i));
        if (set.at(i))
            rows.at(i).after = shown(nameText(set.at(i)->name));
    }
    return rows;
}

QString RootViewController::undoNote(const SlotSet& set) {
    SlotSet lost = set;
    for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
        if (remembered_.recall(slot))
            lost.at(slot - 1).reset();
    }
    const auto indexes = slotsOf(lost, true);
    return indexes.empty() ? "Undo brings back what the slots hold now."
                           : "Undo cannot bring back what is in " + slotNames(indexes) +
                                 " now: it was not loaded from this computer.";
}

void RootViewController::loadSet(const QString& name, const SlotSet& set) {
    undoable_.clear();
    auto indexes = slotsOf(set, true);
    const auto count = static_cast<qsizetype>(indexes.size());
    for (qsizetype i = 0; i < count; ++i) {
        const std::int64_t slot = indexes.front();
        if (count > 1)
            series_ = seriesText(i, count);
        const IR& ir = *set.at(static_cast<std::size_t>(slot - 1));
        const bool confirmed = loadEarlier(slot, recordOf(ir, {}));
        series_.clear();
        indexes.erase(indexes.begin());
        if (!confirmed || (upload_->closeRequested() && !indexes.empty()))
            return sayStopped(name, confirmed ? i + 1 : i, count, indexes);
    }
    ui_->statusLine->tell("The set " + quoted(name) + " is loaded.");
    offerUndo();
}

void RootViewController::sayStopped(const QString& name, qsizetype done, qsizetype all,
                                    const std::vector<std::int64_t>& notSent) {
    QString text =
        QString("The set %1: %2 of %3 slots confirmed").arg(quoted(name)).arg(done).arg(all);
    if (!notSent.empty())
        text += "; not sent: " + slotNames(notSent);
    refuse(text);
    offerUndo();
}

} // namespace cabslot
