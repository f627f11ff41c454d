// Many uploads in one window: nothing piles up.
#include "tests/support/WindowFixture.h"

#include <map>

namespace cabslot::testing {
namespace {

constexpr int uploads = 60, uploadsBeforeCounting = 20;

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
    simulator::PedalOptions pedal;
    pedal.confirmDelay = std::chrono::milliseconds(30);
    open(pedal);
    ::testing::internal::CaptureStdout();
    std::map<std::string, std::ptrdiff_t> before;
    for (int done = 1; done <= uploads; ++done) {
        press(done % 8 + 1); // one of the four panels, or a clear
        if (dialog<QFileDialog>() != nullptr)
            choose(wav());
        EXPECT_TRUE(status().contains("User")) << status().toStdString();
        if (done == uploadsBeforeCounting)
            before = use();
    }
    EXPECT_EQ(use(), before);
    ::testing::internal::GetCapturedStdout();
}

} // namespace
} // namespace cabslot::testing
