// cabslot-sim: a simulated pedal at a Unix socket or on a virtual USB port, for using and testing
// Cabslot without hardware.
#include "arguments/Arguments.h"
#include "base/StandardStreams.h"
#include "base/VisibleText.h"
#include "simulator/server/PedalServer.h"
#include "simulator/usb/UsbPedal.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace cabslot::simulator;
using cabslot::Arguments;
using cabslot::into;
using cabslot::within;

constexpr int exitFailure = 1;

constexpr std::chrono::milliseconds secondPedalPace{100};

constexpr std::uint32_t longestDelay = 3600000; // ms
constexpr std::uint32_t mostReports = 1000000000;

struct Settings {
    std::string socket;
    bool usb = false;
    std::string state;
    std::uint32_t confirmDelay = 1500;
    std::vector<std::string> faults;
    std::uint32_t vanishAfter = 0;
    bool secondDevice = false;
};

std::string faultHelp() {
    std::string text = "Faults:\n";
    for (const NamedFault& fault : namedFaults()) {
        std::string line = "  " + std::string(fault.name);
        line.resize(26, ' ');
        text += line + std::string(fault.meaning) + "\n";
    }
    return text + R"(
Exit status:
  0    ended by Ctrl-C (SIGINT or SIGTERM) or, on USB, unplugged
  1    the socket, the USB port or the folder is not available
  2    wrong usage

Examples:
  cabslot-sim --socket /tmp/pedal.sock
  cabslot-sim --socket /tmp/pedal.sock --state ~/pedal --confirm-delay 300
  cabslot-sim --socket /tmp/pedal.sock --fault split --fault garbage)";
}

PedalBehaviour optionsOf(const Settings& settings) {
    PedalBehaviour options;
    options.confirmDelay = std::chrono::milliseconds(settings.confirmDelay);
    for (const std::string& name : settings.faults)
        setFault(options.faults, name);
    options.faults.vanishAfter = settings.vanishAfter;
    return options;
}

std::string whatIsWrongWith(const Settings& settings) {
    Faults known;
    for (const std::string& name : settings.faults) {
        if (!setFault(known, name))
            return "--fault: there is no " + name + "; the help lists what there is";
    }
    if (settings.socket.empty() != settings.usb)
        return "give either --socket or --usb";
    if (settings.usb && settings.secondDevice)
        return "--second-device needs --socket";
    if (!settings.usb && (known.usbStall || known.usbHold))
        return "--fault usb-stall and usb-hold need --usb";
    return {};
}

void addPedal(Arguments& program, Settings& settings) {
    program.add({.name = "--confirm-delay",
                 .help = "From an import's last frame to its confirmation, 1500 if not given",
                 .reader = within(settings.confirmDelay, 0, longestDelay),
                 .type = "MS"});
    program.add({.name = "--fault",
                 .help = "Misbehave, see below; several may be given",
                 .reader = into(settings.faults),
                 .type = "NAME",
                 .many = true});
    program.add({.name = "--vanish-after",
                 .help = "Cut the first connection that sends N reports, right after the N-th",
                 .reader = within(settings.vanishAfter, 1, mostReports),
                 .type = "N"});
}

void addOptions(Arguments& program, Settings& settings) {
    program.add({.name = "--socket",
                 .help = "Where hosts connect, e.g. /tmp/pedal.sock",
                 .reader = into(settings.socket),
                 .type = "PATH"});
    program.addFlag("--usb", settings.usb,
                    "On a virtual USB port instead (module vhci-hcd, root): plugged in until it "
                    "ends");
    program.add(
        {.name = "--state",
         .help = "Keep the slots in this folder, created if necessary; in memory without it",
         .reader = into(settings.state),
         .type = "DIR"});
    addPedal(program, settings);
    program.addFlag("--second-device", settings.secondDevice,
                    "A second pedal at PATH.2 that sends its data unasked, ten times a second");
    program.addCheck([&settings] { return whatIsWrongWith(settings); });
}

/// One write per line, so that lines of two threads do not mix and a pipe gets each at once.
void printLine(const std::string& line) {
    std::fputs((cabslot::visibleText(line) + "\n").c_str(), stdout);
    std::fflush(stdout);
}

int fail(const std::string& why) {
    std::fprintf(stderr, "cabslot-sim: %s\n", cabslot::visibleText(why).c_str());
    return exitFailure;
}

/// Blocks SIGINT and SIGTERM for sigwait() in the main thread; call it before any thread starts.
sigset_t blockEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    // If the reader of the log exits (`| head`), the program must still remove its sockets before
    // it ends.
    std::signal(SIGPIPE, SIG_IGN);
    return signals;
}

/// Serves on a thread of its own until it is destroyed, also when the next thread cannot be made.
class ServerThread {
public:
    explicit ServerThread(PedalServer& server)
        : server_(server), thread_([&server] { server.run(); }) {}
    ServerThread(const ServerThread&) = delete;
    ServerThread& operator=(const ServerThread&) = delete;
    ~ServerThread() {
        server_.stop();
        thread_.join();
    }

private:
    PedalServer& server_;
    std::thread thread_;
};

void serveUntilSignal(const std::vector<PedalServer*>& servers, const sigset_t& signals) {
    std::vector<std::unique_ptr<ServerThread>> threads;
    threads.reserve(servers.size());
    for (PedalServer* server : servers)
        threads.push_back(std::make_unique<ServerThread>(*server));
    int signal = 0;
    sigwait(&signals, &signal);
}

/// Returns when a signal arrives or the pedal vanishes.
int serveOnUsb(PedalServer& pedal, const Faults& faults, const sigset_t& signals) {
    std::string why;
    cabslot::FileDescriptor bus = plugIntoVirtualPort(why);
    if (!bus)
        return fail(why);
    const cabslot::FileDescriptor stop(::signalfd(-1, &signals, SFD_CLOEXEC));
    int ends[2];
    if (!stop || ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return fail("no descriptors are available");
    pedal.adopt(ends[0]);
    UsbPedal cable(std::move(bus), cabslot::FileDescriptor(ends[1]), faults);
    printLine("plugged in");
    std::thread thread([&pedal] { pedal.run(); }); // ends when the cable is pulled
    cable.run(stop.get());
    thread.join();
    printLine("unplugged");
    return 0;
}

int serveOnSockets(PedalServer& pedal, const Settings& settings, const sigset_t& signals) {
    std::string why;
    if (!pedal.listenAt(settings.socket, why))
        return fail(why);
    PedalStore secondStore("Other ");
    PedalBehaviour secondOptions;
    secondOptions.announceEvery = secondPedalPace;
    PedalServer secondPedal(secondStore, secondOptions,
                            [](const std::string& line) { printLine("second pedal: " + line); });
    std::vector<PedalServer*> servers{&pedal};
    if (settings.secondDevice) {
        if (!secondPedal.listenAt(settings.socket + ".2", why))
            return fail(why);
        servers.push_back(&secondPedal);
    }
    printLine("listening on " + settings.socket);
    if (settings.secondDevice)
        printLine("second pedal: listening on " + settings.socket + ".2");
    serveUntilSignal(servers, signals);
    return 0;
}

int simulate(const Settings& settings) {
    const sigset_t signals = blockEndSignals();
    std::string why;
    std::optional<PedalStore> store{PedalStore{}};
    if (!settings.state.empty())
        store = PedalStore::open(settings.state, why);
    if (!store)
        return fail(why);
    const PedalBehaviour options = optionsOf(settings);
    PedalServer pedal(*store, options, printLine);
    return settings.usb ? serveOnUsb(pedal, options.faults, signals)
                        : serveOnSockets(pedal, settings, signals);
}

int run(int argc, char** argv) {
    Arguments program(
        {.name = "cabslot-sim",
         .version = CABSLOT_VERSION,
         .description = "A simulated pedal: use and test Cabslot without the hardware.",
         .footer = faultHelp(),
         .column = 26});
    Settings settings;
    addOptions(program, settings);
    if (const auto status = program.parse(argc, argv))
        return *status;
    return simulate(settings);
}

} // namespace

int main(int argc, char** argv) {
    cabslot::openStandardStreams();
    try {
        return run(argc, argv);
    } catch (const std::exception& error) { // out of memory or threads
        return fail(error.what());
    }
}
