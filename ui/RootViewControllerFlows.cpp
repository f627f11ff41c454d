// The import and delete flows.
#include "ui/RootViewController.h"

#include "base/Pedal.h"
#include "device/DeviceCommands.h"
#include "device/SharedState.h"
#include "irfile/QNIRFile.h"
#include "prepare/Prepare.h"
#include "ui/Alert.h"
#include "ui/Fatal.h"
#include "ui/OpenPanel.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"
#include "ui_RootViewController.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>
#include <limits>
#include <optional>

namespace cabslot {

namespace {

constexpr int firstDeleteTag = static_cast<int>(slotCount) + 1;

const QString fileError = "File Error!! Please check the file or file name for errors.";

// Prints one line on standard output and flushes it, for pipes.
void print(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

QString slotName(std::int64_t index) {
    return QString::fromStdString(defaultSlotName(static_cast<std::size_t>(index)));
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

IRSource sourceOf(const QString& path, bool prepares) {
    IRSource source{.path = path.toStdString()};
    if (prepares) // a refused file gives no bytes, and the upload says why
        source.bytes = prepareFile(source.path, {}).wav;
    return source;
}

QString quoted(const QString& name) {
    return "“" + name + "”";
}

/// Why the file cannot be loaded; empty if it can. Changes nothing that is sent.
QString whyNotDropped(const QUrl& url) {
    if (!url.isLocalFile())
        return quoted(url.toString()) + ": it is not a file on this computer.";
    const QFileInfo file(url.toLocalFile());
    if (file.suffix().compare("wav", Qt::CaseInsensitive) != 0)
        return quoted(file.fileName()) + ": only WAV files (.wav) can be dropped.";
    QNIRFile ir;
    std::array<std::uint32_t, irPointCount> block{};
    if (ir.openForInspection(url.toLocalFile().toStdString()) && ir.GetIRDataBuffer(block))
        return {};
    return quoted(file.fileName()) + ": " + QString::fromStdString(ir.whyRefused()) + ".";
}

/// Why not all files can be loaded, from slot `index` on; empty if they can.
QString whyNotDropped(std::int64_t index, const QList<QUrl>& files) {
    const qsizetype free = static_cast<qsizetype>(slotCount) - index + 1;
    if (files.size() > free)
        return QString("%1 files were dropped, but from %2 on there %3.")
            .arg(files.size())
            .arg(slotName(index))
            .arg(free == 1 ? "is 1 slot" : QString("are %1 slots").arg(free));
    QStringList reasons;
    for (const QUrl& file : files) {
        if (const QString why = whyNotDropped(file); !why.isEmpty())
            reasons << why;
    }
    return reasons.join(' ');
}

} // namespace

void RootViewController::add(QObject* sender) {
    if (const auto slot = slotOf(sender, 1))
        addIR(*slot);
}

void RootViewController::del(QObject* sender) {
    if (const auto slot = slotOf(sender, firstDeleteTag))
        delIR(*slot);
}

void RootViewController::addIR(std::int64_t index) {
    showOpenPanel(view_->window(), "Load a WAV into " + slotName(index), listening_,
                  [this, index](int answer, const QString& path, bool prepares) {
                      panelClosed(index, answer, path, prepares);
                  });
}

void RootViewController::panelClosed(std::int64_t index, int answer, const QString& path,
                                     bool prepares) {
    if (answer != panelOK)
        return print("取消"); // cancelled
    if (isReady())            // an alert or another upload may have started since it was opened
        importFile(index, path, prepares);
}

bool RootViewController::importFile(std::int64_t index, const QString& path, bool prepares) {
    const UploadResult result = uploadSlot(
        index, BusyWait::Counter::aloud, [&](const UploadOptions& options, UploadWait& waiting) {
            return loadSlot(importNumber(index), sourceOf(path, prepares), options, waiting);
        });
    if (isRefused(result.end)) {
        refuse(quoted(QFileInfo(path).fileName()) + ": " +
               QString::fromStdString(result.whyRefused));
        alterIRError(fileError);
        return false;
    }
    remember(index, result, path);
    const QString name = QString::fromStdString(IRNameArr.at(static_cast<std::size_t>(index - 1)));
    labelOf(index).setText(name);
    showResult(result, quoted(name.trimmed()) + " is in " + slotName(index) + ".");
    print("选中了文件 Optional(\"" + path + "\")"); // the chosen file
    return result.end == UploadEnd::confirmed;
}

void RootViewController::importDropped(std::int64_t index, const QList<QUrl>& files) {
    if (const QString why = whyNotDropped(index, files); !why.isEmpty()) {
        refuse(why);
        return alterIRError(fileError);
    }
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (files.size() > 1)
            series_ = QString("%1 of %2: ").arg(i + 1).arg(files.size());
        const bool confirmed = importFile(index + i, files[i].toLocalFile());
        series_.clear();
        if (!confirmed || !view_->window()->isVisible())
            return; // the pedal is gone, or the window is about to close
    }
}

void RootViewController::delIR(std::int64_t index) {
    const UploadResult result = uploadSlot(
        index, BusyWait::Counter::silent, [&](const UploadOptions& options, UploadWait& waiting) {
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
    remember(index, result, {});
    // The view's own default name, not the pedal's: "User3" has no blank.
    labelOf(index).setText(IRName.at(index - 1));
    showResult(result, slotName(index) + " is cleared.");
}

void RootViewController::alterIRError(const QString& hitString) {
    QWidget& mainWindow = unwrapped(view_ == nullptr ? nullptr : view_->window());
    sheet_ = new Alert(mainWindow, hitString, "Cancel", problem_);
    problem_.clear();
    updateControls();
    connect(sheet_, &QDialog::finished, this, [this] {
        sheet_ = nullptr;
        updateControls();
    });
    sheet_->openAsSheet();
}

// What surrounds every upload: it blocks all other actions, and handles afterwards what was
// requested meanwhile.
UploadResult RootViewController::uploadSlot(std::int64_t index, BusyWait::Counter counter,
                                            const Upload& upload) {
    listening_.stop(); // before the first report is sent
    QWidget* const window = view_->window();
    const QPointer<QWidget> focus = window->focusWidget();
    BusyWait waiting(
        *window, surroundings_.pause,
        [this, index](const BusyWait::State& state) { showProgress(index, state); }, counter);
    mainQueue_.hold();
    setUploading(index, true);
    UploadResult result =
        upload({.arming = Arming::afterUpload,
                .recorded = [this, index](const QNIRFile& file) { showPicture(index, file); }},
               waiting);
    setUploading(index, false);
    mainQueue_.release();
    if (focus != nullptr)
        focus->setFocus();
    if (waiting.closeRequested())
        QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
    return result;
}

void RootViewController::setUploading(std::int64_t index, bool uploading) {
    uploading_ = uploading;
    updateControls();
    if (SlotRow* row = rowOf(index))
        row->setBusy(uploading);
    if (uploading) {
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
        ui_->progress->showIdle();
    }
}

// After a clear, this is the flat line of the blank IR, which was sent and is known to be silent.
// An empty picture means that the content is unknown.
void RootViewController::showPicture(std::int64_t index, const QNIRFile& file) {
    const std::string name = IRNameArr.at(static_cast<std::size_t>(index - 1));
    unwrapped(rowOf(index))
        .picture()
        ->setSummary(
            summaryOf(file, irdatabuff, QString::fromStdString(name).trimmed().toStdString()));
}

void RootViewController::showProgress(std::int64_t index, const BusyWait::State& state) {
    const bool sending = state.frame != 0;
    if (sending)
        ui_->progress->showFrame(state.frame);
    else
        ui_->progress->showWaiting();
    // A lost pedal is only mentioned here: the upload runs to its end, then the alert appears.
    const bool gone = isDeviceConnent == 0;
    QString text = series_;
    if (gone)
        text += QString("The pedal is gone. Still waiting for %1, %2 s.")
                    .arg(slotName(index))
                    .arg(state.seconds);
    else if (sending)
        text += QString("Sending frame %2 of %3 to %1.")
                    .arg(slotName(index))
                    .arg(state.frame)
                    .arg(uploadFrameCount);
    else
        text += QString("Sent to %1. Waiting for the pedal to confirm, %2 s.")
                    .arg(slotName(index))
                    .arg(state.seconds);
    if (state.closing)
        text += " Closing when this is done.";
    showStatus(text, gone);
}

// No alert for an upload that was not confirmed in time: the pedal may well have stored it.
void RootViewController::showResult(const UploadResult& result, const QString& done) {
    if (result.end == UploadEnd::confirmed)
        showStatus(series_ + done);
    else
        showReady();
}

} // namespace cabslot
