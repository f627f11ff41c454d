// The main view: four slots with a name, an add and a delete button each; the owner of the
// program's one device link and the observer of its events.
//
// Everything runs on the main thread, except observeValue().
#pragma once

#include "device/HIDClass.h"
#include "device/SlotTexts.h"
#include "memory/SlotMemory.h"
#include "ui/BusyWait.h"
#include "ui/Listening.h"
#include "ui/MainQueue.h"
#include "upload/SlotUpload.h"

#include <QLabel>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QUrl>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Ui {
class RootViewController;
}

namespace cabslot {

class Alert;
class SlotRow;

/// What the main view needs from around it.
struct Surroundings {
    HIDManager& manager; ///< outlives the view
    std::string bundle;  ///< the bundle's path, for the blank IR
    std::string pedal{}; ///< as --pedal takes it: whose slots are remembered; empty: none are
    std::function<void(int status)> endProcess; ///< ends the process at once
    BusyWait::Pause pause = BusyWait::paintFor; ///< passes a second between two polls
    Listener::Load sound = installedSound;      ///< what IRs are listened to with
};

class RootViewController final : public QObject {
    Q_OBJECT
public:
    /// Makes the device link, which makes it the process's `object`; does not start it.
    explicit RootViewController(Surroundings surroundings);
    ~RootViewController() override;

    /// The view; the first call loads it and starts the device link. Whoever takes it in owns it.
    QWidget* view();

    /// Shows the open panel for the slot whose add button `sender` is, by its tag 1 to 4.
    void add(QObject* sender);
    /// Clears the slot whose delete button `sender` is, by its tag 5 to 8.
    void del(QObject* sender);

    void addIR(std::int64_t index); ///< shows the open panel for slot 1 to 4
    void delIR(std::int64_t index); ///< clears slot 1 to 4, at once

    /// Loads a file into slot `index`; does not return before the pedal has confirmed it, or 600
    /// polls are over, or the file was refused. True when the pedal has confirmed. When it
    /// `prepares`, the block is the one that preparing the file gives.
    bool importFile(std::int64_t index, const QString& path, bool prepares = false);

    /// Loads WAV files that were dropped on slot `index` into it and the next ones, one after
    /// another. Unless all can be loaded, none is, and the reasons are shown.
    void importDropped(std::int64_t index, const QList<QUrl>& files);

    /// The error sheet over the main window, with `hitString` as its detail text. Returns at once.
    void alterIRError(const QString& hitString);

    /// For each assignment of KVOValue, on any thread: queues one reaction.
    void observeValue();

    QPointer<QLabel> User1Label; ///< shows the name of User 1
    QPointer<QLabel> User2Label; ///< shows the name of User 2
    QPointer<QLabel> User3Label; ///< shows the name of User 3
    QPointer<QLabel> User4Label; ///< shows the name of User 4
    QStringList IRName;          ///< what a cleared slot's label shows

private:
    void loadView();
    void viewDidLoad();
    void catchUp();
    void setUpRows();
    void setUpRow(SlotRow& row);
    bool isReady() const;
    void updateControls();
    void react();
    void showSlotNames();
    void tellDisconnect();
    void panelClosed(std::int64_t index, int answer, const QString& path, bool prepares);
    std::array<QPointer<QLabel>*, slotCount> labels();
    QLabel& labelOf(std::int64_t index);

    using Upload = std::function<UploadResult(const UploadOptions&, UploadWait&)>;
    UploadResult uploadSlot(std::int64_t index, BusyWait::Counter counter, const Upload& upload);
    void setUploading(std::int64_t index, bool uploading);
    void showPicture(std::int64_t index, const QNIRFile& file);
    void remember(std::int64_t index, const UploadResult& result, const QString& path);
    void showRemembered(std::int64_t index);
    void showProgress(std::int64_t index, const BusyWait::State& state);
    void tellEnd(const UploadResult& result, const QString& done);
    void refuse(const QString& why);
    void showStatus(const QString& text, bool problem = false);
    void showReady();
    SlotRow* rowOf(std::int64_t index); ///< null for any but 1 to 4

    Surroundings surroundings_;
    std::unique_ptr<Ui::RootViewController> ui_;
    QPointer<QWidget> view_;
    MainQueue mainQueue_;
    Listening listening_;
    std::optional<SlotMemory> memory_;
    std::array<SlotRow*, slotCount> rows_{};
    bool uploading_ = false;
    QPointer<Alert> sheet_;     ///< while one is open
    bool disconnected_ = false; ///< the disconnect alert is open
    QString series_;            ///< "2 of 3: " while several files are loaded
    QString problem_;           ///< the last reason shown, for the sheet that follows

public:
    /// The device link. It is declared last and so destroyed first, since its thread uses the queue
    /// above.
    HIDClass hidClass;
};

} // namespace cabslot
