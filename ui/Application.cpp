#include "ui/Application.h"

#include "base/StandardStreams.h"
#include "platform/BundlePath.h"
#include "platform/PedalChoice.h"
#include "ui/AppDelegate.h"
#include "ui/Arguments.h"
#include "ui/Display.h"
#include "ui/HandOver.h"
#include "ui/Problem.h"
#include "ui/Raise.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

namespace cabslot {

namespace {

// What desktops know the window by: the name of its desktop entry, and of its icon in their theme.
constexpr const char* desktopEntry = "org.cabslot.Cabslot";
constexpr const char* iconName = "cabslot";
constexpr std::chrono::milliseconds iconDelay{200};
constexpr const char* programName = "cabslot"; // as the pedal's lock knows it
constexpr std::chrono::seconds longestInUse{5};
constexpr std::chrono::milliseconds lookInterval{100};

// Without the destructors of statics, which would race the device thread.
[[noreturn]] void endProcess(int status) {
    std::fflush(nullptr);
    std::_Exit(status);
}

int runWindow(int argc, char** argv, HIDManager& manager, const WindowArguments& arguments) {
    QApplication::setStyle("Fusion"); // what the style sheet builds on; the palette stays as it is
    std::optional<QApplication> application;
    startOnDisplay([&] { application.emplace(argc, argv); });
    QApplication::setApplicationDisplayName("Cabslot");
    QApplication::setDesktopFileName(desktopEntry);
    MainWindow window;
    AppDelegate delegate({.manager = manager,
                          .bundle = bundlePath(),
                          .pedal = arguments.pedal,
                          .endProcess = endProcess});
    delegate.window = &window;
    raiseOnRequest(window, [&delegate] {
        if (const QString set = takeHandedOver(); !set.isEmpty())
            delegate.rootVC->openSetWhenReady(set);
    });
    QObject::connect(&*application, &QApplication::lastWindowClosed, &delegate,
                     &AppDelegate::applicationShouldTerminateAfterLastWindowClosed);
    QObject::connect(&*application, &QApplication::aboutToQuit, &delegate,
                     &AppDelegate::applicationWillTerminate);
    delegate.applicationDidFinishLaunching();
    window.show();
    delegate.rootVC->openSetWhenReady(QString::fromStdString(arguments.set));
    // Finding the icon means reading many files of the theme, so that waits until the names are on
    // the screen.
    QTimer::singleShot(iconDelay, &window,
                       [] { QApplication::setWindowIcon(QIcon::fromTheme(iconName)); });
    return QApplication::exec();
}

// Another window on the pedal comes to the front and opens the set, and this program ends.
bool isShownElsewhere(const WindowArguments& arguments) {
    const auto holder = whoUsesPedal(arguments.pedal);
    if (!holder || holder->program != programName)
        return false;
    if (!arguments.set.empty()) // first, because the other window looks for it when it is raised
        handOver(holder->pid, QString::fromStdString(arguments.set));
    return raiseWindowOf(holder->pid);
}

// On the device thread. A command that uses the pedal is done within seconds; the window says that
// it is looking for the pedal meanwhile, and then who has it.
bool waitForOther(const LockHolder& /*holder*/) {
    static const auto end = std::chrono::steady_clock::now() + longestInUse;
    std::this_thread::sleep_for(lookInterval);
    return std::chrono::steady_clock::now() < end;
}

} // namespace

int runApplication(int argc, char** argv) {
    openStandardStreams();
    QCoreApplication::setApplicationName("cabslot");
    QCoreApplication::setOrganizationName("cabslot");
    WindowArguments arguments;
    if (const auto status = readArguments(argc, argv, arguments))
        return *status;
    if (isShownElsewhere(arguments))
        return 0;
    const auto manager =
        makeHIDManager(arguments.pedal, {.whileInUse = waitForOther, .complain = printProblem});
    return runWindow(argc, argv, *manager, arguments);
}

} // namespace cabslot
