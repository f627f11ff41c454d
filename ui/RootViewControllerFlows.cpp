// The import and the delete flow.
#include "ui/RootViewController.h"

#include "device/DeviceCommands.h"
#include "device/SharedState.h"
#include "ui/Fatal.h"
#include "ui/OpenPanel.h"
#include "ui/SlotPicture.h"
#include "ui_RootViewController.h"

#include <QApplication>
#include <QFileInfo>
#include <QLayout>
#include <QMessageBox>

#include <cstdio>
#include <limits>
#include <optional>

namespace cabslot {

namespace {

constexpr int firstDeleteTag = 5;

// One line on standard output, at once also when that is a pipe.
void print(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

QString slotName(std::int64_t index) {
    return QString("User %1").arg(index);
}

std::uint32_t importNumber(std::int64_t index) {
    if (index < 0 || index > std::numeric_limits<std::uint32_t>::max())
        fatalError("a slot number that is no unsigned 32-bit number");
    return static_cast<std::uint32_t>(index);
}

// The slot 1 to 4 that the tag of the button stands for, when tags count from `firstTag`.
std::optional<std::int64_t> slotOf(QObject* sender, int firstTag) {
    const int slot =
        unwrapped(qobject_cast<QAbstractButton*>(sender)).property("tag").toInt() - firstTag + 1;
    if (slot < 1 || slot > static_cast<int>(slotCount))
        return std::nullopt;
    return slot;
}

QString whyNotDropped(const QList<QUrl>& files) {
    if (files.size() != 1)
        return QString("%1 files were dropped; a slot takes one").arg(files.size());
    if (!files.first().isLocalFile())
        return files.first().toString() + ": it is not a file on this computer";
    const QFileInfo file(files.first().toLocalFile());
    if (file.suffix().compare("wav", Qt::CaseInsensitive) != 0)
        return file.fileName() + ": only WAV files (.wav) can be dropped";
    return {};
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
    showOpenPanel(
        view_->window(), "Load a WAV into " + slotName(index), listening_,
        [this, index](int answer, const QString& path) { panelClosed(index, answer, path); });
}

void RootViewController::panelClosed(std::int64_t index, int answer, const QString& path) {
    if (uploading_)
        return;
    if (answer != panelOK)
        return print("取消"); // cancelled
    importFile(index, path);
}

void RootViewController::importFile(std::int64_t index, const QString& path) {
    const UploadResult result = uploadSlot(
        index, BusyWait::Counter::aloud, [&](const UploadOptions& options, UploadWait& waiting) {
            return loadSlot(importNumber(index), {.path = path.toStdString()}, options, waiting);
        });
    if (isRefused(result.end)) {
        refuse(QFileInfo(path).fileName(), result.whyRefused);
        alterIRError("File Error!! Please check the file or file name for errors.");
        return;
    }
    const QString name = QString::fromStdString(IRNameArr.at(static_cast<std::size_t>(index - 1)));
    labelOf(index).setText(name);
    tellEnd(index, result, "“" + name.trimmed() + "” is in " + slotName(index) + ".");
    print("选中了文件 Optional(\"" + path + "\")"); // the chosen file
}

void RootViewController::importDropped(std::int64_t index, const QList<QUrl>& files) {
    if (const QString why = whyNotDropped(files); !why.isEmpty()) {
        std::fprintf(stderr, "cabslot: %s\n", why.toUtf8().constData());
        showStatus(why + ".", true);
        return;
    }
    importFile(index, files.first().toLocalFile());
}

void RootViewController::delIR(std::int64_t index) {
    const UploadResult result = uploadSlot(
        index, BusyWait::Counter::silent, [&](const UploadOptions& options, UploadWait& waiting) {
            return clearSlot(importNumber(index), surroundings_.bundle, options, waiting);
        });
    if (isRefused(result.end)) {
        refuse("The blank IR " + QString::fromStdString(blankIRPath(surroundings_.bundle)),
               result.whyRefused);
        // Samples that cannot be used are no reason for a sheet here, on purpose.
        if (result.end == UploadEnd::fileRefused)
            alterIRError("Error");
        return;
    }
    // The default name of this view, not the pedal's, on purpose: "User3" has no blank.
    labelOf(index).setText(IRName.at(index - 1));
    tellEnd(index, result, slotName(index) + " is cleared.");
}

void RootViewController::alterIRError(const QString& hitString) {
    QWidget& mainWindow = unwrapped(view_ == nullptr ? nullptr : view_->window());
    auto* alert = new QMessageBox(&mainWindow);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setWindowFlags(Qt::Sheet | Qt::FramelessWindowHint);
    alert->setIcon(QMessageBox::Warning);
    alert->setText("Error");
    alert->setInformativeText(hitString);
    alert->addButton("Cancel", QMessageBox::RejectRole);
    alert->layout()->setContentsMargins(24, 20, 24, 18);
    alert->open(); // a sheet: modal for its window, and not waited for
}

// Everything that a upload has around it: nothing else happens meanwhile, and what was wanted
// meanwhile is seen to afterwards.
UploadResult RootViewController::uploadSlot(std::int64_t index, BusyWait::Counter counter,
                                            const Upload& upload) {
    listening_.stop(); // before the first report leaves
    QWidget* const window = view_->window();
    BusyWait waiting(
        *window, surroundings_.pause,
        [this, index](unsigned frame, std::int64_t seconds) {
            showProgress(index, frame, seconds);
        },
        counter);
    mainQueue_.hold();
    uploading_ = true;
    UploadResult result =
        upload({.arming = Arming::afterUpload,
                .recorded = [this, index](const QNIRFile& file) { showPicture(index, file); }},
               waiting);
    uploading_ = false;
    mainQueue_.release();
    showIdle();
    if (waiting.closeRequested())
        QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
    return result;
}

// After a clear it is the blank IR's flat line: that is what the pedal was given, and it is known
// to be silent. Empty means not known.
void RootViewController::showPicture(std::int64_t index, const QNIRFile& file) {
    const std::string name = IRNameArr.at(static_cast<std::size_t>(index - 1));
    auto* const picture = view_->findChild<SlotPicture*>(QString("picture%1").arg(index));
    unwrapped(picture).setSummary(
        summaryOf(file, irdatabuff, QString::fromStdString(name).trimmed().toStdString()));
}

void RootViewController::showProgress(std::int64_t index, unsigned frame, std::int64_t seconds) {
    ui_->progress->show();
    ui_->progress->setValue(static_cast<int>(frame == 0 ? uploadFrameCount : frame));
    if (isDeviceConnent ==
        0) // only told: the upload goes on to its end, and the alert comes after it
        showStatus(
            QString("%1: the pedal is gone; still waiting, %2 s").arg(slotName(index)).arg(seconds),
            true);
    else if (frame != 0)
        showStatus(QString("%1: sending frame %2 of %3")
                       .arg(slotName(index))
                       .arg(frame)
                       .arg(uploadFrameCount));
    else
        showStatus(QString("%1: sent; waiting for the pedal to confirm, %2 s")
                       .arg(slotName(index))
                       .arg(seconds));
}

void RootViewController::showIdle() {
    ui_->progress->setValue(0);
    ui_->progress->hide();
}

// The label shows the new name either way; this line tells the truth about the confirmation.
void RootViewController::tellEnd(std::int64_t index, const UploadResult& result,
                                 const QString& done) {
    if (result.end == UploadEnd::confirmed)
        showStatus(done);
    else
        showStatus(slotName(index) + " was sent, but the pedal did not confirm it.", true);
}

void RootViewController::refuse(const QString& file, const std::string& why) {
    const QString text = file + ": " + QString::fromStdString(why);
    std::fprintf(stderr, "cabslot: %s\n", text.toUtf8().constData());
    showStatus(text + ".", true);
}

} // namespace cabslot
