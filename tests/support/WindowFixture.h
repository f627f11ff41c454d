// The whole window on the offscreen platform, with a simulated pedal in the process; the test
// presses buttons, answers panels and alerts, and reads what is shown.
#pragma once

#include "tests/support/FakePedal.h"
#include "tests/support/FakeSound.h"
#include "tests/support/WavBuilder.h"
#include "tests/support/WithVariable.h"

#include "platform/SocketHIDManager.h"
#include "simulator/server/PedalServer.h"
#include "ui/Alert.h"
#include "ui/AppDelegate.h"
#include "ui/OpenPanel.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <sys/socket.h>

#include <array>
#include <thread>

namespace cabslot::testing {

class WindowFixture : public ::testing::Test {
protected:
    WindowFixture() {
        resetSharedState();
        std::filesystem::create_directories(folder.path("bundle/Contents/Resources"));
        folder.write("bundle/Contents/Resources/0.wav", WavBuilder{}.add(0).bytes());
    }

    ~WindowFixture() override { close(); }

    /// Ends the window and the pedal, which keeps its slots: another open() starts both anew.
    void close() {
        delegate.reset();
        window.reset();
        if (pedalThread.joinable()) {
            server->stop();
            pedalThread.join();
        }
        resetSharedState();
    }

    /// A pedal that confirms sooner than a real one, but not within a poll.
    static simulator::PedalBehaviour quickPedal() {
        simulator::PedalBehaviour options;
        options.confirmDelay = std::chrono::milliseconds(300);
        return options;
    }

    /// Opens the window on a pedal and waits for its names.
    void open(const simulator::PedalBehaviour& options = quickPedal()) {
        std::array<int, 2> ends{};
        ASSERT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
        server = std::make_unique<simulator::PedalServer>(store, options, simulator::Log{});
        server->adopt(ends[0]);
        pedalThread = std::thread([this] { server->run(); });
        openOn(std::make_unique<SocketHIDManager>(ends[1]));
        ASSERT_TRUE(QTest::qWaitFor([this] { return label(1) == "User 1          "; }));
    }

    void openOn(std::unique_ptr<HIDManager> service) {
        manager = std::move(service);
        window = std::make_unique<MainWindow>();
        delegate = std::make_unique<AppDelegate>(
            Surroundings{.manager = *manager,
                         .bundle = folder.path("bundle"),
                         .pedal = pedalName,
                         .endProcess = [this](int status) { ended.push_back(status); },
                         .pause = [this](std::chrono::milliseconds time) { pause(time); },
                         .sound = [this](std::string&) { return &sound; },
                         .namesWait = namesWait});
        delegate->window = window.get();
        QObject::connect(qApp, &QApplication::lastWindowClosed, delegate.get(),
                         &AppDelegate::applicationShouldTerminateAfterLastWindowClosed);
        delegate->applicationDidFinishLaunching();
        window->show();
    }

    RootViewController& root() const { return *delegate->rootVC; }

    QString label(int slot) {
        return window->findChild<QLabel*>(QString("User%1Label").arg(slot))->text();
    }
    QString status() { return window->findChild<QLabel*>("status")->text(); }

    /// The button with this tag: 1 to 4 add, 5 to 8 delete.
    QPushButton* button(int tag) {
        for (auto* candidate : window->findChildren<QPushButton*>()) {
            if (candidate->property("tag").toInt() == tag)
                return candidate;
        }
        ADD_FAILURE() << "no button " << tag;
        return nullptr;
    }
    void press(int tag) { QTest::mouseClick(button(tag), Qt::LeftButton); }

    /// The open panel or alert, or null.
    template<class Dialog>
    Dialog* dialog() {
        Dialog* open = nullptr;
        for (auto* candidate : window->findChildren<Dialog*>()) {
            if (candidate->isVisible())
                open = candidate;
        }
        return open;
    }

    /// Answers the open panel with `path`, then lets the upload run.
    void choose(const std::string& path) {
        auto* panel = dialog<OpenPanel>();
        ASSERT_NE(panel, nullptr);
        panel->findChild<QLineEdit*>("fileName")->setText(QString::fromStdString(path));
        panel->accept();
        QCoreApplication::processEvents();
    }

    struct Shown {
        QString title, detail, button;
        Qt::WindowModality modality;
    };
    static Shown read(const cabslot::Alert& alert) {
        return {alert.title(), alert.detail(), alert.button()->text(), alert.windowModality()};
    }

    /// Presses "Ok" on each disconnect alert as soon as it is open, and stores its text.
    void answerDisconnects() {
        QTimer::singleShot(1, window.get(), [this] {
            answerDisconnects();
            if (auto* box = dialog<cabslot::Alert>()) {
                said.push_back(read(*box));
                QTest::mouseClick(box->button(), Qt::LeftButton);
            }
        });
    }

    std::string wav(const std::string& name = "Cab.wav") {
        return folder.write(name, WavBuilder{}.add(0x1234).bytes());
    }

public:
    /// Called when the window opens its device link, before the link's thread starts.
    static std::function<void(HIDClass&)> duringOpenDevice;

protected:
    std::string pedalName{}; ///< the pedal whose slots are remembered; empty: none
    std::chrono::milliseconds namesWait{5000};
    FakeLibrary sound;
    std::unique_ptr<HIDManager> manager;
    TempFolder folder;
    simulator::PedalStore store;
    std::unique_ptr<simulator::PedalServer> server;
    std::thread pedalThread;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<AppDelegate> delegate;
    std::vector<Shown> said; ///< the disconnect alerts' texts
    std::vector<int> ended;  ///< the exit statuses that ending the process would have had
    /// Replaces the second between two polls: runs the event loop and gives the pedal some time.
    std::function<void(std::chrono::milliseconds)> pause = [](std::chrono::milliseconds) {
        QTest::qWait(20);
    };
};

} // namespace cabslot::testing
