// Measures how soon a program's window is painted and what it costs, from outside, on the X screen.
//
//   bench_window COMMAND [ARGUMENT ...]
//
// Prints milliseconds from the program's start: "first" until its window holds a picture, "last"
// until the last change before a second without changes; then "peak", KiB of memory, and "idle",
// the percentage of one core used while nothing happens. Ends the program.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto stillness = 1s;
constexpr auto idleTime = 1s; // measured after every start

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "bench_window: %s\n", what);
    std::exit(1);
}

// A window may disappear while it is examined: that must not end the program.
int ignoreError(Display* /*display*/, XErrorEvent* /*error*/) {
    return 0;
}

class ScreenWatch {
public:
    ScreenWatch() : display_(::XOpenDisplay(nullptr)) {
        int errors = 0;
        if (display_ == nullptr || ::XDamageQueryExtension(display_, &damageEvent_, &errors) == 0)
            fail("no display with the damage extension");
        ::XSetErrorHandler(ignoreError);
        ::XSelectInput(display_, DefaultRootWindow(display_), SubstructureNotifyMask);
        ::XSync(display_, False);
    }
    ~ScreenWatch() { ::XCloseDisplay(display_); }
    ScreenWatch(const ScreenWatch&) = delete;
    ScreenWatch& operator=(const ScreenWatch&) = delete;

    /// Waits for the next change of a watched window's pixels, at most until `deadline`.
    bool waitForChange(Clock::time_point deadline) {
        while (Clock::now() < deadline) {
            while (::XPending(display_) > 0)
                if (isChange())
                    return true;
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            pollfd waiting = {.fd = ConnectionNumber(display_), .events = POLLIN, .revents = 0};
            ::poll(&waiting, 1, static_cast<int>(left.count()));
        }
        return false;
    }

    /// Whether the window that changed last shows more than one colour.
    bool hasPicture() const {
        XWindowAttributes window{};
        if (::XGetWindowAttributes(display_, changed_, &window) == 0 ||
            window.map_state != IsViewable || window.width < smallest || window.height < smallest)
            return false;
        XImage* image = ::XGetImage(display_, changed_, 0, 0, static_cast<unsigned>(window.width),
                                    static_cast<unsigned>(window.height), AllPlanes, ZPixmap);
        if (image == nullptr)
            return false;
        const auto lineSize = static_cast<std::size_t>(image->bytes_per_line);
        const std::size_t size = lineSize * static_cast<std::size_t>(image->height);
        const bool several = std::memcmp(image->data, image->data + 4, size - 4) != 0;
        XDestroyImage(image);
        return several;
    }

private:
    static constexpr int smallest = 100; // smaller windows are helpers, not visible ones

    // A window is watched from its creation, as the program created it: a window manager's frame
    // would be another window.
    bool isChange() {
        XEvent event;
        ::XNextEvent(display_, &event);
        if (event.type == CreateNotify && event.xcreatewindow.override_redirect == 0)
            ::XDamageCreate(display_, event.xcreatewindow.window, XDamageReportRawRectangles);
        if (event.type != damageEvent_ + XDamageNotify)
            return false;
        changed_ = reinterpret_cast<const XDamageNotifyEvent&>(event).drawable;
        return true;
    }

    Display* display_;
    int damageEvent_ = 0;
    Window changed_ = 0;
};

pid_t start(char** argv) {
    pid_t process = 0;
    if (::posix_spawnp(&process, argv[0], nullptr, nullptr, argv, environ) != 0)
        fail("the program does not start");
    return process;
}

long peakMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;) {
        long size = 0;
        if (word == "VmHWM:" && status >> size)
            return size;
    }
    fail("no memory figure");
}

double cpuSeconds(pid_t process) {
    clockid_t clock{};
    timespec time{};
    if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        fail("no processor time");
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void measure(ScreenWatch& screen, char** argv) {
    const auto begin = Clock::now();
    const pid_t process = start(argv);
    std::optional<Clock::time_point> first;
    Clock::time_point last = begin + 10s; // the longest time for a picture
    while (screen.waitForChange(first ? last + stillness : last)) {
        const auto now = Clock::now();
        if (!first && !screen.hasPicture())
            continue;
        first = first.value_or(now);
        last = now;
    }
    if (!first)
        fail("no window was painted");
    const auto print = [begin](const char* what, Clock::time_point time) {
        const std::chrono::duration<double, std::milli> since = time - begin;
        std::printf("%s %.3f\n", what, since.count());
    };
    print("first", *first);
    print("last", last);
    const double before = cpuSeconds(process);
    std::this_thread::sleep_for(idleTime);
    const std::chrono::duration<double> idle = idleTime;
    std::printf("idle %.3f\n", (cpuSeconds(process) - before) / idle.count() * 100);
    std::printf("peak %ld\n", peakMemory(process));
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        fail("see the top of WindowBench.cpp");
    ScreenWatch screen;
    measure(screen, argv + 1);
}
