// The listener with a player that the test controls.
#include "tests/support/Eventually.h"
#include "tests/support/FakeSound.h"

#include "audition/Listener.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;
using State = Listener::State;

class ListenerTest : public ::testing::Test {
protected:
    ListenerTest() { listener.setPhrase("good"); }

    bool isHeard(const std::vector<double>& what) {
        return eventually([&] { return device.use([&] { return device.heard == what; }); });
    }
    Samples ir(double first) {
        Samples samples{};
        samples[0] = first;
        return samples;
    }

    FakeLibrary library;
    Device& device = *library.device;
    std::atomic<int> loads = 0;
    Listener listener{[this](std::string&) {
                          ++loads;
                          return &library;
                      },
                      [] {}};
};

TEST_F(ListenerTest, LoadsNothingBeforeItIsWanted) {
    listener.setIR(ir(1));
    listener.setLevel(Level::asItIs);
    listener.listen(false);
    std::this_thread::sleep_for(20ms);
    EXPECT_EQ(loads, 0);
    EXPECT_EQ(listener.status().state, State::unknown);
    listener.listen(true);
    EXPECT_TRUE(isHeard({-1}));
}

TEST_F(ListenerTest, AnotherPhraseIsHeardAtOnce) {
    listener.setIR(ir(1));
    listener.listen(true);
    EXPECT_TRUE(isHeard({1}));
    listener.setPhrase("double");
    EXPECT_TRUE(isHeard({1, 2}));
}

TEST(Listener, IsNotHeldUpByAServerThatHangs) {
    static FakeLibrary library;
    library.device->hangs = true;
    {
        Listener listener([](std::string&) { return &library; }, [] {});
        listener.listen(true);
        listener.setIR(Samples{});
    }
    library.device->hangs = false; // only now: the destructor must not wait for it
}

} // namespace
} // namespace cabslot::testing
