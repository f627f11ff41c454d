#include "ui/Application.h"

#include "platform/BundlePath.h"
#include "platform/PedalChoice.h"
#include "ui/AppDelegate.h"

#include <QApplication>
#include <QCommandLineParser>

#include <unistd.h>

#include <cstdio>
#include <string>

namespace cabslot {

namespace {

constexpr int noDisplay = 1;
constexpr int wrongUsage = 2;

// Without the destructors of statics, which would race the device thread.
[[noreturn]] void endProcess(int status) {
    std::fflush(nullptr);
    ::_exit(status);
}

[[noreturn]] void refuseUsage(const std::string& why) {
    std::fprintf(stderr, "cabslot: %s (cabslot --help shows what is right)\n", why.c_str());
    endProcess(wrongUsage);
}

// Reads the arguments without a display, so that --help needs none. Ends the process on wrong ones.
std::string chosenPedal(int argc, char** argv) {
    const QString fromVariable = qEnvironmentVariable(pedalVariable);
    const QCommandLineOption pedal(
        "pedal", "The pedal to use: usb, sim or unix:PATH. CABSLOT_PEDAL gives it, too.", "PEDAL",
        fromVariable.isEmpty() ? QString(defaultPedal) : fromVariable);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Load guitar-cabinet impulse responses into the four user slots of the pedal.");
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOption(pedal);
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    if (!parser.parse(arguments))
        refuseUsage(parser.errorText().toStdString());
    if (!parser.positionalArguments().isEmpty())
        refuseUsage("no argument is expected but options");
    if (parser.isSet(help) || parser.isSet(version))
        parser.process(QCoreApplication(argc, argv)); // ends here
    std::string choice = parser.value(pedal).toStdString();
    if (const std::string wrong = whatIsWrongWithPedal(choice); !wrong.empty())
        refuseUsage(wrong);
    return choice;
}

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

int runWindow(int argc, char** argv, HIDManager& manager) {
    QApplication::setStyle("Fusion"); // what the style sheet builds on; the palette stays as it is
    const QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("Cabslot");
    MainWindow window;
    AppDelegate delegate({.manager = manager, .bundle = bundlePath(), .endProcess = endProcess});
    delegate.window = &window;
    QObject::connect(&application, &QApplication::lastWindowClosed, &delegate,
                     &AppDelegate::applicationShouldTerminateAfterLastWindowClosed);
    QObject::connect(&application, &QApplication::aboutToQuit, &delegate,
                     &AppDelegate::applicationWillTerminate);
    delegate.applicationDidFinishLaunching();
    window.show();
    return QApplication::exec();
}

} // namespace

int runApplication(int argc, char** argv) {
    QCoreApplication::setApplicationName("cabslot");
    QCoreApplication::setOrganizationName("cabslot");
    QCoreApplication::setApplicationVersion(CABSLOT_VERSION);
    const std::string choice = chosenPedal(argc, argv);
    if (!hasDisplay()) {
        std::fprintf(stderr, "cabslot: there is no display for a window; cabslotctl does the same "
                             "from a terminal\n");
        return noDisplay;
    }
    const auto manager = makeHIDManager(choice);
    return runWindow(argc, argv, *manager);
}

} // namespace cabslot
