// The window for five hours of injected time. The linker leads the clock and the sleeps of the
// device thread and of the simulated pedal here; Qt keeps its own.
#include "tests/support/WindowFixture.h"

#include "platform/BuiltInPedal.h"

#include <malloc.h>

#include <condition_variable>
#include <map>
#include <mutex>

extern "C" int realSleep(const timespec* time, timespec* rest) asm("__real_nanosleep");
extern "C" int injectedSleep(const timespec* time, timespec* rest) asm("__wrap_nanosleep");
extern "C" std::int64_t realNow() asm("__real__ZNSt6chrono3_V212steady_clock3nowEv");
extern "C" std::int64_t injectedNow() asm("__wrap__ZNSt6chrono3_V212steady_clock3nowEv");

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

constexpr int uploads = 2000, uploadsBeforeGrowth = 400;
constexpr nanoseconds session = 5h;

std::atomic<bool> injected = false;
// Moved by the device thread alone. It ends before the real time, which comes again at the end.
std::atomic<nanoseconds> now{-session};
nanoseconds granted = now; ///< how far it may be moved
bool waits = false;        ///< the device thread wants to sleep beyond that
std::mutex mutex;
std::condition_variable changed;

/// Qt keeps about 900 bytes each time its file panel was open, here eight times; of our own,
/// nothing.
constexpr std::size_t mayGrow = 16 << 10;

/// Lets so much time pass; returns when the device thread has done all that was due in it.
void pass(nanoseconds time) {
    std::unique_lock lock(mutex);
    granted += time;
    waits = false;
    changed.notify_all();
    changed.wait(lock, [] { return waits; });
    lock.unlock();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

using Use = std::map<std::string, std::ptrdiff_t>;

std::ptrdiff_t entries(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

class LongRun : public WindowFixture {
protected:
    LongRun() {
        ::setenv("CABSLOT_STATE", folder.path("memory").c_str(), 1);
        pedalName = "sim";
        pause = pass;
        injected = true;
    }
    ~LongRun() override {
        const std::lock_guard lock(mutex);
        injected = false;
        changed.notify_all();
    }

    Use use() const {
        return {{"descriptors", entries("/proc/self/fd")},
                {"threads", entries("/proc/self/task")},
                {"widgets", QApplication::allWidgets().size()},
                {"objects with their timers",
                 window->findChildren<QObject*>().size() + root().findChildren<QObject*>().size()}};
    }

    void upload(int number) {
        const int slot = number % 4 + 1;
        if (number % 200 == 0) {
            press(slot);
            choose(wav());
        } else if (number % 3 == 0)
            press(slot + 4);
        else
            EXPECT_TRUE(root().importFile(slot, QString::fromStdString(wav())));
        EXPECT_TRUE(status().contains(QString("User %1").arg(slot))) << status().toStdString();
    }
};

TEST_F(LongRun, FiveHoursWith2000UploadsLeaveNothingBehind) {
    openOn(std::make_unique<BuiltInPedal>(folder.path("pedal")));
    pass(1s);
    ASSERT_EQ(label(1), "User 1          ");
    ::testing::internal::CaptureStdout();
    Use before;
    std::size_t memory = 0;
    for (int done = 1; done <= uploads; ++done) {
        upload(done);
        ASSERT_LT(now.load(), session / uploads * done - session) << "upload " << done;
        pass(session / uploads * done - session - now.load());
        if (done == uploadsBeforeGrowth) {
            before = use();
            memory = ::mallinfo2().uordblks;
        }
    }
    const std::size_t memoryAfter = ::mallinfo2().uordblks;
    const Use after = use();
    ::testing::internal::GetCapturedStdout();
    EXPECT_LE(memoryAfter, memory + mayGrow);
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace cabslot::testing

std::int64_t injectedNow() {
    using namespace cabslot::testing;
    return injected ? now.load().count() : realNow();
}

int injectedSleep(const timespec* time, timespec* rest) {
    using namespace cabslot::testing;
    if (!injected)
        return realSleep(time, rest);
    const auto end = now.load() + std::chrono::seconds(time->tv_sec) + nanoseconds(time->tv_nsec);
    std::unique_lock lock(mutex);
    while (injected && granted < end) {
        waits = true;
        changed.notify_all();
        changed.wait(lock);
    }
    now = end;
    return 0;
}
