// The import and delete flows.
#include "ui/RootViewController.h"

#include "device/SharedState.h"
#include "irfile/IRFile.h"
#include "irfile/SlotName.h"
#include "ui/Alert.h"
#include "ui/Announce.h"
#include "ui/BlockingUpload.h"
#include "ui/DroppedFiles.h"
#include "ui/Fatal.h"
#include "ui/OpenPanel.h"
#include "ui/PrepareSetting.h"
#include "ui/Preview.h"
#include "ui/SlotContent.h"
#include "ui/SlotRow.h"
#include "ui/Words.h"
#include "ui_RootViewController.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>
#include <limits>
#include <optional>
#include <utility>

namespace cabslot {

namespace {

constexpr int firstDeleteTag = static_cast<int>(slotCount) + 1;

// Prints one line on standard output and flushes it, for pipes. The lines stay as they are, so that
// programs that start the window and read them go on working.
void print(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

std::uint32_t importNumber(std::int64_t index) {
    if (index < 0 || index > std::numeric_limits<std::uint32_t>::max())
        fatalError("a slot number that does not fit into 32 bits");
    return static_cast<std::uint32_t>(index);
}

// Converts the button's tag to a slot, 1 to 4; tags count from `firstTag`.
std::optional<std::int64_t> slotOf(QObject* sender, int firstTag) {
    const int slot =
        unwrapped(qobject_cast<QAbstractButton*>(sender)).property("tag").toInt() - firstTag + 1;
    if (slot < 1 || slot > static_cast<int>(slotCount))
        return std::nullopt;
    return slot;
}

// A click does not move the focus; after the upload it is on the control that began it.
void focusOn(QObject& control) {
    static_cast<QWidget&>(control).setFocus();
}

} // namespace

void RootViewController::add(QObject* sender) {
    if (const auto slot = slotOf(sender, 1)) {
        focusOn(*sender);
        addIR(*slot);
    }
}

void RootViewController::del(QObject* sender) {
    if (const auto slot = slotOf(sender, firstDeleteTag)) {
        focusOn(*sender);
        delIR(*slot);
    }
}

void RootViewController::addIR(std::int64_t index) {
    showOpenPanel(
        view_->window(), {"Load a WAV into " + slotName(index), namesBut(index), slotFolders()},
        listening_,
        [this, index](int answer, const Choice& choice) { panelClosed(index, answer, choice); });
}

// Of what was loaded into the slots from this computer.
QStringList RootViewController::slotFolders() {
    QStringList folders;
    for (std::uint32_t slot = 1; slot <= IRNameArr.count(); ++slot) {
        const auto record = remembered_.recall(slot);
        if (record && !record->isClear())
            folders << QFileInfo(QString::fromStdString(record->ir.source)).absolutePath();
    }
    return folders;
}

void RootViewController::panelClosed(std::int64_t index, int answer, const Choice& choice) {
    if (answer != panelOK)
        return print("取消"); // cancelled
    if (isReady())            // an alert or another upload may have started since it was opened
        importFile(index, choice);
}

bool RootViewController::importFile(std::int64_t index, const Choice& choice) {
    const QString& path = choice.path;
    // A file that is refused here is refused again below, in the given order.
    const Preview preview = choice.isPlain() ? Preview() : previewOf(choice, Extent::asNeeded);
    const UploadResult result =
        upload({index, BusyWait::Counter::aloud, path.toStdString(),
                preview.summary.value_or(IRSummary())},
               [&](const UploadOptions& options, UploadWait& waiting) {
                   const std::uint32_t slot = importNumber(index);
                   return preview.summary ? loadSlot(slot, preview.ir, options, waiting)
                                          : loadSlot(slot, path.toStdString(), options, waiting);
               });
    if (isRefused(result.end)) {
        refuse(quoted(QFileInfo(path).fileName()) + ": " +
               QString::fromStdString(result.whyRefused));
        alterIRError(fileError);
        return false;
    }
    const QString name = QString::fromStdString(IRNameArr.at(static_cast<std::size_t>(index - 1)));
    showName(index, name);
    const QString renamed =
        choice.name.isEmpty() || series_.isEmpty() ? "" : " Its file gives a name that is taken.";
    sayResult(index, result, quoted(name.trimmed()) + " is in " + slotName(index) + "." + renamed);
    print("选中了文件 Optional(\"" + path + "\")"); // the chosen file
    return result.end == UploadEnd::confirmed;
}

void RootViewController::importDropped(std::int64_t index, const QList<QUrl>& files) {
    if (const QString set = setAmong(files); !set.isEmpty())
        return openSet(set);
    if (const QString why = whyNotDropped(index, files); !why.isEmpty()) {
        refuse(why);
        return alterIRError(fileError);
    }
    undoable_.clear();
    const std::vector<Choice> choices = choicesOf(index, files);
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (files.size() > 1)
            series_ = seriesText(i, files.size());
        const bool confirmed = importFile(index + i, choices[static_cast<std::size_t>(i)]);
        series_.clear();
        if (!confirmed || upload_->closeRequested())
            return; // the pedal may be gone, or the user wants to leave
    }
}

// The names of all slots but those from `first` on.
QStringList RootViewController::namesBut(std::int64_t first, std::int64_t count) const {
    QStringList names;
    for (std::int64_t slot = 1; slot <= static_cast<std::int64_t>(IRNameArr.count()); ++slot) {
        if (slot < first || slot >= first + count)
            names << QString::fromStdString(IRNameArr.at(static_cast<std::size_t>(slot - 1)))
                         .trimmed();
    }
    return names;
}

// Files that would have one name among them get proposals; a file alone keeps the rule's.
std::vector<Choice> RootViewController::choicesOf(std::int64_t index,
                                                  const QList<QUrl>& files) const {
    std::vector<Choice> choices;
    std::vector<std::string> paths;
    for (const QUrl& file : files) {
        choices.push_back(choiceFromSettings(file.toLocalFile()));
        paths.push_back(choices.back().path.toStdString());
    }
    std::vector<std::string> taken;
    for (const QString& name : namesBut(index, files.size()))
        taken.push_back(name.toStdString());
    if (files.size() < 2)
        return choices;
    const std::vector<std::string> names = namesApart(paths, paths, taken);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (names[i] != ruleName(paths[i]))
            choices[i].name = QString::fromStdString(names[i]);
    }
    return choices;
}

void RootViewController::delIR(std::int64_t index) {
    const UploadResult result = upload(
        {index, BusyWait::Counter::silent}, [&](const UploadOptions& options, UploadWait& waiting) {
            return clearSlot(importNumber(index), surroundings_.bundle, options, waiting);
        });
    // If the blank samples cannot be used, a clear ends silently: the slot keeps its content.
    if (result.end == UploadEnd::samplesRefused)
        return;
    if (result.end == UploadEnd::fileRefused) {
        refuse("The blank IR " + QString::fromStdString(blankIRPath(surroundings_.bundle)) + ": " +
               QString::fromStdString(result.whyRefused));
        return alterIRError("Error");
    }
    // The view's own default name, not the pedal's: "User3" has no blank.
    showName(index, IRName.at(index - 1));
    sayResult(index, result, slotName(index) + " is cleared.");
}

void RootViewController::alterIRError(const QString& hitString) {
    QWidget& mainWindow = unwrapped(view_ == nullptr ? nullptr : view_->window());
    auto* const alert = new Alert(mainWindow, hitString, "Cancel", problem_);
    problem_.clear();
    openSheet(*alert);
}

void RootViewController::openSheet(Sheet& sheet) {
    const QPointer<QWidget> focus = view_->window()->focusWidget();
    sheet_ = &sheet;
    updateControls();
    connect(&sheet, &QDialog::finished, this, [this, focus] {
        sheet_ = nullptr;
        updateControls();
        if (focus != nullptr)
            focus->setFocus();
    });
    sheet.openAsSheet();
}

// What was sent is then shown in its row and remembered.
UploadResult RootViewController::upload(const Sending& sending, const Upload& upload) {
    if (series_.isEmpty())
        undoable_.clear();
    const auto slot = static_cast<std::size_t>(sending.index - 1);
    const std::string replaced = slot < IRNameArr.count() ? IRNameArr.at(slot) : std::string();
    SlotRecord record;
    IRSummary sent = sending.summary;
    const auto recorded = [&](const IRFile* file) {
        record = recordOf(stagedIR(sending.source), replaced);
        if (file != nullptr)
            sent = summaryOf(*file, record.ir.block, {});
    };
    SlotRow* const row = rowOf(sending.index);
    UploadResult result = upload_->run(
        {sending.index, row, sending.counter, series_, sending.source.empty()},
        [&](UploadWait& waiting) {
            // In this order the window has always waited; the lines that it prints depend on it.
            return upload({.arming = Arming::afterUpload, .recorded = recorded}, waiting);
        });
    if (isRefused(result.end))
        return result;
    record.findings = sent.findings;
    record.confirmed = result.end == UploadEnd::confirmed;
    remembered_.remember(importNumber(sending.index), record);
    unwrapped(row).showContent(contentOf(record, sent.origin));
    return result;
}

void RootViewController::undo() {
    const std::vector<std::int64_t> indexes = std::exchange(undoable_, {});
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        const auto earlier = remembered_.undoTarget(importNumber(indexes[i]));
        if (indexes.size() > 1)
            series_ = seriesText(static_cast<qsizetype>(i), static_cast<qsizetype>(indexes.size()));
        const bool goesOn = !earlier || loadEarlier(indexes[i], *earlier);
        series_.clear();
        if (!goesOn || upload_->closeRequested())
            return;
    }
}

bool RootViewController::loadEarlier(std::int64_t index, const SlotRecord& earlier) {
    const UploadResult result =
        upload({index, BusyWait::Counter::silent, earlier.ir.source, *contentOf(earlier).summary},
               [&](const UploadOptions& options, UploadWait& waiting) {
                   return loadSlot(importNumber(index), earlier.ir, options, waiting);
               });
    const QString name = QString::fromStdString(IRNameArr.at(static_cast<std::size_t>(index - 1)));
    showName(index, name);
    sayResult(index, result,
              earlier.isClear() ? slotName(index) + " is cleared."
                                : quoted(name.trimmed()) + " is in " + slotName(index) + ".");
    return result.end == UploadEnd::confirmed;
}

// No alert for an upload that was not confirmed in time: the pedal may well have stored it.
void RootViewController::sayResult(std::int64_t index, const UploadResult& result,
                                   const QString& done) {
    if (result.end != UploadEnd::confirmed) {
        announce(*ui_->statusLine,
                 slotName(index) + ": " + unwrapped(rowOf(index)).contentInWords());
        return ui_->statusLine->sayReady();
    }
    ui_->statusLine->tell(series_ + done, unwrapped(rowOf(index)).contentInWords());
    if (remembered_.undoTarget(importNumber(index)))
        undoable_.push_back(index);
    offerUndo();
}

void RootViewController::offerUndo() {
    if (undoable_.empty())
        return;
    ui_->statusLine->offerUndo("Loads what was in " + slotNames(undoable_) + " before");
}

} // namespace cabslot
