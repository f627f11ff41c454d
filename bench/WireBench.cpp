// Measures how evenly the upload's frames reach the pedal, and how long an upload and a load take.
//
//   bench_wire uploads COUNT FILE             this process is the host
//   bench_wire loads COUNT FILE CABSLOTCTL    one process each
//
// Prints milliseconds, one line each: "gap" between two frames, "upload" from the request to the
// last report, "exit" from the confirmation's last byte to the end of cabslotctl.
#include "bench/StopwatchPedal.h"

#include "device/DeviceCommands.h"
#include "device/HIDClass.h"
#include "platform/SocketHIDManager.h"
#include "simulator/server/ListeningSocket.h"
#include "upload/SlotUpload.h"

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <poll.h>
#include <string>

namespace {

using namespace cabslot;
using namespace cabslot::bench;
using namespace std::chrono_literals;

constexpr auto poll = 1ms; // shorter than in any program, so that the host adds nothing

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "bench_wire: %s\n", what);
    std::exit(1);
}

void print(const char* what, Clock::duration time) {
    std::printf("%s %.3f\n", what, std::chrono::duration<double, std::milli>(time).count());
}

// The first poll comes right after the request.
class Stopwatch final : public UploadWait {
public:
    bool waitForUpload() override {
        if (!requested)
            requested = Clock::now();
        std::this_thread::sleep_for(poll);
        return true;
    }
    bool waitForConfirmation(std::uint32_t /*poll*/) override {
        std::this_thread::sleep_for(poll);
        return true;
    }

    std::optional<Clock::time_point> requested;
};

void printUpload(const UploadTimes& upload, Clock::time_point requested) {
    for (std::size_t i = 1; i < upload.frames.size(); ++i)
        print("gap", upload.frames[i] - upload.frames[i - 1]);
    print("upload", upload.lastReport - requested);
}

void measureUploads(int count, const std::string& file) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        fail("no socket pair");
    StopwatchPedal pedal{FileDescriptor(ends[0])};
    SocketHIDManager manager(ends[1]);
    HIDClass link(manager);
    std::atomic<bool> ready{false};
    link.addObserver([&ready] { ready = true; });
    link.OpenDevice();
    while (!ready)
        std::this_thread::sleep_for(poll);
    for (int i = 0; i < count; ++i) {
        Stopwatch waiting;
        const UploadResult result = loadSlot(
            1, {file}, {.arming = Arming::withLastFrame, .confirmationPolls = 5000}, waiting);
        const auto uploads = pedal.takeUploads();
        if (result.end != UploadEnd::confirmed || uploads.size() != 1 || !waiting.requested)
            fail("an upload went wrong");
        printUpload(uploads.front(), *waiting.requested);
    }
}

void measureLoad(simulator::ListeningSocket& listener, const std::string& pedal,
                 const std::string& file, const std::string& program) {
    std::string arguments[] = {program, "--pedal", pedal, "load", "1", file};
    char* argv[] = {arguments[0].data(),
                    arguments[1].data(),
                    arguments[2].data(),
                    arguments[3].data(),
                    arguments[4].data(),
                    arguments[5].data(),
                    nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", 1, 0);
    pid_t process = 0;
    if (::posix_spawn(&process, program.c_str(), &actions, nullptr, argv, environ) != 0)
        fail("cabslotctl does not start");
    posix_spawn_file_actions_destroy(&actions);
    pollfd waiting = {.fd = listener.fd(), .events = POLLIN, .revents = 0};
    ::poll(&waiting, 1, 10'000);
    StopwatchPedal stopwatch(listener.accept());
    int status = 0;
    ::waitpid(process, &status, 0);
    const auto end = Clock::now();
    const auto uploads = stopwatch.takeUploads();
    if (status != 0 || uploads.size() != 1)
        fail("a load went wrong");
    print("exit", end - uploads.front().confirmed);
}

void measureLoads(int count, const std::string& file, const std::string& program) {
    const std::string path = "/tmp/cabslot-bench-" + std::to_string(::getpid());
    simulator::ListeningSocket listener;
    std::string why;
    if (!listener.open(path, why))
        fail(why.c_str());
    for (int i = 0; i < count; ++i)
        measureLoad(listener, "unix:" + path, file, program);
}

} // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "";
    if (what == "uploads" && argc == 4)
        measureUploads(std::atoi(argv[2]), argv[3]);
    else if (what == "loads" && argc == 5)
        measureLoads(std::atoi(argv[2]), argv[3], argv[4]);
    else
        fail("see the top of WireBench.cpp");
}
