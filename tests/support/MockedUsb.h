// A USB bus of the test's own, for the unmodified hidapi. The program must run under
// umockdev-wrapper.
#pragma once

#include <string>
#include <thread>
#include <vector>

// umockdev's and GLib's types, without their headers
struct _UMockdevTestbed;
struct _GMainLoop;

namespace cabslot::testing {

/// One at a time. Nodes are /dev/hidraw0 and on. The pedal's end of a node is a stream of bytes:
/// write whole reports, and one at a time.
class MockedUsb {
public:
    MockedUsb();
    MockedUsb(const MockedUsb&) = delete;
    MockedUsb& operator=(const MockedUsb&) = delete;
    ~MockedUsb();

    /// `release` as the system writes it, in hex. A node's number can be used once only.
    void plugIn(unsigned node, const std::string& release = "00c8");
    void unplug(unsigned node);

    /// The node stays, but reading and writing fail from now on.
    void breakOff(unsigned node);

    void sendFromPedal(unsigned node, const std::vector<std::uint8_t>& report);

    /// The next write as the pedal gets it; empty when none comes for five seconds.
    std::vector<std::uint8_t> nextWrite(unsigned node);

    bool hasWrite(unsigned node) const;

    static std::string path(unsigned node) { return "/dev/hidraw" + std::to_string(node); }

private:
    _UMockdevTestbed* bed_;
    _GMainLoop* loop_;
    std::thread loopThread_; ///< answers the ioctls
    std::vector<int> pedals_;
};

} // namespace cabslot::testing
