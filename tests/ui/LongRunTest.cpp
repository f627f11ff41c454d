// The window for five hours of injected time. The linker leads the clock and the sleeps of the
// device thread and of the simulated pedal here; Qt keeps its own.
#include "tests/support/WindowFixture.h"

#include "platform/BuiltInPedal.h"
#include "ui/SlotRow.h"

#include <malloc.h>

#include <condition_variable>
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
std::atomic<nanoseconds> now{
    -session};             ///< moved by the device thread alone; it ends before the real one begins
nanoseconds granted = now; ///< how far it may be moved
bool waits = false;        ///< the device thread wants to sleep beyond that
std::mutex mutex;
std::condition_variable changed;

/// Qt keeps about 900 bytes each time its file panel was open, here eight times; of our own,
/// nothing.
constexpr std::ptrdiff_t mayGrow = 16 << 10;

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

struct Use {
    std::ptrdiff_t memory, descriptors, threads, widgets, objects;
};

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
        {
            const std::lock_guard lock(mutex);
            injected = false;
        }
        changed.notify_all();
        ::unsetenv("CABSLOT_STATE");
    }

    Use use() const {
        return {static_cast<std::ptrdiff_t>(::mallinfo2().uordblks), entries("/proc/self/fd"),
                entries("/proc/self/task"), QApplication::allWidgets().size(),
                qApp->findChildren<QObject*>().size() + window->findChildren<QObject*>().size() +
                    delegate->findChildren<QObject*>().size() +
                    root().findChildren<QObject*>().size()};
    }

    /// With all the ways that a slot's content is changed.
    void upload(int number) {
        const int slot = number % 4 + 1;
        if (number % 200 == 0) {
            press(slot);
            choose(wav());
        } else if (number % 10 == 0) {
            emit window->findChild<SlotRow*>(QString("row%1").arg(slot))
                ->filesDropped({QUrl::fromLocalFile(QString::fromStdString(wav()))});
        } else if (number % 3 == 0) {
            press(slot + 4);
        } else {
            EXPECT_TRUE(root().importFile(slot, QString::fromStdString(wav())));
        }
        EXPECT_TRUE(status().contains(QString("User %1").arg(slot))) << status().toStdString();
    }
};

TEST_F(LongRun, FiveHoursWith2000UploadsLeaveNothingBehind) {
    std::string why;
    openOn(BuiltInPedal::make(folder.path("pedal"), why));
    pass(1s);
    ASSERT_EQ(label(1), "User 1          ");
    ::testing::internal::CaptureStdout();
    Use before{};
    for (int done = 1; done <= uploads; ++done) {
        upload(done);
        ASSERT_LT(now.load(), session / uploads * done - session) << "upload " << done;
        pass(session / uploads * done - session - now.load());
        if (done == uploadsBeforeGrowth)
            before = use();
    }
    const Use after = use();
    ::testing::internal::GetCapturedStdout();
    EXPECT_LE(after.memory, before.memory + mayGrow);
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(after.widgets, before.widgets);
    EXPECT_EQ(after.objects, before.objects) << "timers are among them";
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
