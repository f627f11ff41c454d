// The main view: four slots with a name, an add and a delete button each. It owns the program's
// only device link and observes its events.
//
// Everything runs on the main thread, except observeValue().
#pragma once

#include "analysis/IRSummary.h"
#include "device/HIDClass.h"
#include "device/SlotTexts.h"
#include "sets/SlotSet.h"
#include "ui/BlockingUpload.h"
#include "ui/Listening.h"
#include "ui/MainQueue.h"
#include "ui/Preview.h"
#include "ui/RememberedSlots.h"
#include "ui/SetSheet.h"
#include "upload/SlotUpload.h"

#include <QLabel>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QUrl>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Ui {
class RootViewController;
}

namespace cabslot {

class Sheet;
class SlotRow;

/// What the main view needs from outside.
struct Surroundings {
    HIDManager& manager; ///< must outlive the view
    std::string bundle;  ///< the bundle's path, for the blank IR and the phrases
    std::string pedal{}; ///< the --pedal choice whose slots are remembered; empty: none
    std::function<void(int status)> endProcess; ///< ends the process at once
    BusyWait::Pause pause{};                    ///< see BusyWait; empty: in an event loop
    Listener::Load sound = installedSound;      ///< loads the sound module
    std::chrono::milliseconds namesWait{
        5000}; ///< for the names, before a message says that they are missing
};

class RootViewController final : public QObject {
    Q_OBJECT
public:
    /// Creates the device link, which becomes the process's `object`; does not start it.
    explicit RootViewController(Surroundings surroundings);
    ~RootViewController() override;

    /// The view; the first call loads it and starts the device link. The caller takes ownership.
    QWidget* view();

    /// Shows the open panel for the slot of the add button `sender`, which has the tags 1 to 4.
    void add(QObject* sender);
    /// Clears the slot of the delete button `sender`, which has the tags 5 to 8.
    void del(QObject* sender);

    void addIR(std::int64_t index); ///< shows the open panel for slot 1 to 4
    void delIR(std::int64_t index); ///< clears slot 1 to 4, at once

    /// Loads a file into slot `index`; returns when the pedal has confirmed it (true), or when the
    /// wait is over or the file was refused (false).
    bool importFile(std::int64_t index, const Choice& choice);

    /// Loads dropped WAV files one after another, into slot `index` and the next ones. Unless all
    /// can be loaded, loads none and shows the reasons.
    void importDropped(std::int64_t index, const QList<QUrl>& files);

    void prepareChanged(bool on); ///< shows the setting, which is stored

    /// Whether there is a set to save; if only that is missing, says so.
    bool maySaveSet();
    /// Saves what is known of the slots as a set; says which were left out.
    void saveSet(const QString& path);
    /// Checks a set and asks on a sheet whether it is to be loaded. Shows why it cannot be.
    void openSet(const QString& path);
    /// The same as soon as an upload may start.
    void openSetWhenReady(const QString& path);

    bool isReady() const; ///< an upload may start

    /// Gives the slots of the last load, clear or drop their earlier contents back; undone again,
    /// the later ones. Only what was loaded from this computer.
    void undo();

    /// Shows the error sheet over the main window, with `hitString` as its detail, and returns.
    void alterIRError(const QString& hitString);

    /// Called on every assignment of KVOValue, on any thread: queues one reaction.
    void observeValue();

    /// The device link, from construction on.
    HIDClass& hidClass() { return hidClass_; }

    QPointer<QLabel> User1Label; ///< shows the name of User 1
    QPointer<QLabel> User2Label; ///< shows the name of User 2
    QPointer<QLabel> User3Label; ///< shows the name of User 3
    QPointer<QLabel> User4Label; ///< shows the name of User 4
    QStringList IRName;          ///< what a cleared slot's label shows

signals:
    void setUsed(const QString& path); ///< it was saved, or found to be good

private:
    void loadView();
    void viewDidLoad();
    void catchUp();
    void sayWithoutNames();
    void setUpRows();
    void setUpRow(SlotRow& row);
    void onKeys(const QString& keys, const std::function<void()>& action);

    /// `action`, which does nothing unless an upload may start.
    template<class Action>
    auto ifReady(Action action) {
        return [this, action](auto&&... arguments) {
            if (isReady())
                action(arguments...);
        };
    }

    void updateControls();
    void react();
    void showSlotNames();
    void tellDisconnect();
    void panelClosed(std::int64_t index, int answer, const Choice& choice);
    std::array<QPointer<QLabel>*, slotCount> labels();
    QLabel& labelOf(std::int64_t index);
    void showName(std::int64_t index, const QString& name);
    void showTargets(int first, qsizetype files);
    void stepView(int slot, int by);

    struct Sending {
        std::int64_t index; ///< the slot
        BusyWait::Counter counter;
        std::string source{}; ///< the file; empty: the slot is cleared
        IRSummary summary{};  ///< of an IR that is not read from a file
    };
    using Upload = std::function<UploadResult(const UploadOptions&, UploadWait&)>;
    UploadResult upload(const Sending& sending, const Upload& upload);
    QStringList slotFolders();
    QStringList namesBut(std::int64_t first, std::int64_t count = 1) const;
    std::vector<Choice> choicesOf(std::int64_t index, const QList<QUrl>& files) const;
    bool loadEarlier(std::int64_t index, const SlotRecord& earlier);
    void offerUndo();
    void sayResult(std::int64_t index, const UploadResult& result, const QString& done);
    void refuse(const QString& why);
    void openSheet(Sheet& sheet);
    void openWaitingSet();
    std::array<SetSheet::Row, slotCount> setRows(const SlotSet& set) const;
    QString undoNote(const SlotSet& set);
    void loadSet(const QString& name, const SlotSet& set);
    void sayStopped(const QString& name, qsizetype done, qsizetype all,
                    const std::vector<std::int64_t>& notSent);
    SlotRow* rowOf(std::int64_t index); ///< null unless 1 to 4

    Surroundings surroundings_;
    std::unique_ptr<Ui::RootViewController> ui_;
    QPointer<QWidget> view_;
    MainQueue mainQueue_;
    Listening listening_;
    RememberedSlots remembered_;
    std::array<SlotRow*, slotCount> rows_{};
    std::optional<BlockingUpload> upload_; ///< from the view's loading on
    QPointer<Sheet> sheet_;                ///< the open sheet, if any
    bool disconnected_ = false;            ///< the disconnect alert is open
    std::vector<std::int64_t> undoable_;   ///< the slots that undo() changes
    QString waitingSet_;                   ///< to be opened when an upload may start
    QString series_;                       ///< "2 of 3: " while several files are loaded
    QString problem_;                      ///< the last reason shown, for a sheet that follows
    HIDClass hidClass_; ///< declared last and so destroyed first: its thread uses the queue
};

} // namespace cabslot
