// Many uploads in one window: nothing piles up.
#include "tests/support/WindowFixture.h"

#include <map>

namespace cabslot::testing {
namespace {

constexpr int uploads = 48, uploadsBeforeCounting = 16;

class LongRun : public WindowFixture {
protected:
    static std::ptrdiff_t entries(const char* folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }

    std::map<std::string, std::ptrdiff_t> use() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return {{"descriptors", entries("/proc/self/fd")},
                {"threads", entries("/proc/self/task")},
                {"widgets", QApplication::allWidgets().size()},
                {"objects with their timers",
                 window->findChildren<QObject*>().size() + root().findChildren<QObject*>().size()}};
    }
};

TEST_F(LongRun, UploadsLeaveNothingBehind) {
    const WithVariable memory("CABSLOT_STATE", folder.path("memory"));
    pedalName = "sim";
    simulator::PedalBehaviour pedal;
    pedal.confirmDelay = std::chrono::milliseconds(100);
    pause = [](std::chrono::milliseconds) {
        const bool sending = isInportIR == 1;
        static_cast<void>(
            QTest::qWaitFor([sending] { return sending && isInportIR == 0; }, sending ? 1000 : 20));
    };
    open(pedal);
    ::testing::internal::CaptureStdout();
    std::map<std::string, std::ptrdiff_t> before;
    for (int done = 1; done <= uploads; ++done) {
        press(done % 8 + 1); // one of the four panels, or a clear
        if (dialog<OpenPanel>() != nullptr)
            choose(wav());
        if (done == uploadsBeforeCounting)
            before = use();
    }
    const auto after = use();
    const std::string printed = ::testing::internal::GetCapturedStdout();
    EXPECT_FALSE(HasFailure()) << printed;
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace cabslot::testing
