// cabslot-sim: a simulated pedal at a Unix socket or on a virtual USB port, for using and testing
// Cabslot without hardware.
#include "simulator/server/PedalServer.h"
#include "simulator/usb/UsbPedal.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace cabslot::simulator;

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

constexpr std::chrono::milliseconds secondPedalPace{100};

struct Arguments {
    std::string socket;
    bool usb = false;
    std::string state;
    unsigned confirmDelay = 1500;
    std::vector<std::string> faults;
    std::size_t vanishAfter = 0;
    bool secondDevice = false;
};

std::vector<std::string> faultNames() {
    std::vector<std::string> names;
    for (const NamedFault& fault : namedFaults())
        names.emplace_back(fault.name);
    return names;
}

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

PedalOptions optionsOf(const Arguments& arguments) {
    PedalOptions options;
    options.confirmDelay = std::chrono::milliseconds(arguments.confirmDelay);
    for (const std::string& name : arguments.faults)
        setFault(options.faults, name);
    options.faults.vanishAfter = arguments.vanishAfter;
    return options;
}

void addOptions(CLI::App& app, Arguments& arguments) {
    app.add_option("--socket", arguments.socket, "Where hosts connect, e.g. /tmp/pedal.sock")
        ->type_name("PATH");
    app.add_flag("--usb", arguments.usb,
                 "On a virtual USB port instead (module vhci-hcd, root): plugged in until it ends");
    app.add_option("--state", arguments.state,
                   "Keep the slots in this folder, created if necessary; in memory without it")
        ->type_name("DIR");
    app.add_option("--confirm-delay", arguments.confirmDelay,
                   "From an import's last frame to its confirmation, 1500 if not given")
        ->type_name("MS")
        ->check(CLI::Range(0U, 3600000U).description(""));
    app.add_option("--fault", arguments.faults, "Misbehave, see below; several may be given")
        ->type_name("NAME")
        ->check(CLI::IsMember(faultNames()).description(""));
    app.add_option("--vanish-after", arguments.vanishAfter,
                   "Cut the first connection that sends N reports, right after the N-th")
        ->type_name("N")
        ->check(CLI::Range(1U, 1000000000U).description(""));
    app.add_flag("--second-device", arguments.secondDevice,
                 "A second pedal at PATH.2 that sends its data unasked, ten times a second");
    app.set_version_flag("--version", "cabslot-sim " CABSLOT_VERSION, "Show the version and exit");
    app.set_help_flag("-h,--help", "Show this help and exit");
    app.get_formatter()->column_width(26);
    app.footer(faultHelp());
    app.final_callback([&arguments] {
        if (arguments.socket.empty() != arguments.usb)
            throw CLI::ValidationError("give either --socket or --usb");
        if (arguments.usb && arguments.secondDevice)
            throw CLI::ValidationError("--second-device needs --socket");
        const Faults faults = optionsOf(arguments).faults;
        if (!arguments.usb && (faults.usbStall || faults.usbHold))
            throw CLI::ValidationError("--fault usb-stall and usb-hold need --usb");
    });
}

/// One write per line, so that lines of two threads do not mix and a pipe gets each at once.
void printLine(const std::string& line) {
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

int fail(const std::string& why) {
    std::fprintf(stderr, "cabslot-sim: %s\n", why.c_str());
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

void serveUntilSignal(const std::vector<PedalServer*>& servers, const sigset_t& signals) {
    std::vector<std::thread> threads;
    threads.reserve(servers.size());
    for (PedalServer* server : servers)
        threads.emplace_back([server] { server->run(); });
    int signal = 0;
    sigwait(&signals, &signal);
    for (PedalServer* server : servers)
        server->stop();
    for (std::thread& thread : threads)
        thread.join();
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

int serveOnSockets(PedalServer& pedal, const Arguments& arguments, const sigset_t& signals) {
    std::string why;
    if (!pedal.listenAt(arguments.socket, why))
        return fail(why);
    PedalStore secondStore("Other ");
    PedalOptions secondOptions;
    secondOptions.announceEvery = secondPedalPace;
    PedalServer secondPedal(secondStore, secondOptions,
                            [](const std::string& line) { printLine("second pedal: " + line); });
    std::vector<PedalServer*> servers{&pedal};
    if (arguments.secondDevice) {
        if (!secondPedal.listenAt(arguments.socket + ".2", why))
            return fail(why);
        servers.push_back(&secondPedal);
    }
    printLine("listening on " + arguments.socket);
    if (arguments.secondDevice)
        printLine("second pedal: listening on " + arguments.socket + ".2");
    serveUntilSignal(servers, signals);
    return 0;
}

int simulate(const Arguments& arguments) {
    const sigset_t signals = blockEndSignals();
    std::string why;
    std::optional<PedalStore> store{PedalStore{}};
    if (!arguments.state.empty())
        store = PedalStore::open(arguments.state, why);
    if (!store)
        return fail(why);
    const PedalOptions options = optionsOf(arguments);
    PedalServer pedal(*store, options, printLine);
    return arguments.usb ? serveOnUsb(pedal, options.faults, signals)
                         : serveOnSockets(pedal, arguments, signals);
}

int run(int argc, char** argv) {
    CLI::App app("A simulated pedal: use and test Cabslot without the hardware.", "cabslot-sim");
    Arguments arguments;
    addOptions(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& wrong) {
        std::fprintf(stderr, "cabslot-sim: %s (see cabslot-sim --help)\n", wrong.what());
        return exitUsage;
    }
    return simulate(arguments);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) { // out of memory or threads
        std::fprintf(stderr, "cabslot-sim: %s\n", error.what());
        return exitFailure;
    }
}
