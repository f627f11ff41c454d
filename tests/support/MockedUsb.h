// A USB bus of the test's own, for the unmodified hidapi. The program must run under
// umockdev-wrapper.
#pragma once

#include <gtest/gtest.h>

#include <linux/hidraw.h>

#include <sys/ioctl.h>

#include <poll.h>
#include <umockdev.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace cabslot::testing {

/// One at a time. Nodes are /dev/hidraw0 and on. The pedal's end of a node is a stream of bytes:
/// write whole reports, and one at a time.
class MockedUsb {
public:
    MockedUsb() {
        loopThread_ = std::thread([this] { g_main_loop_run(loop_); });
    }
    MockedUsb(const MockedUsb&) = delete;
    MockedUsb& operator=(const MockedUsb&) = delete;
    ~MockedUsb() {
        for (unsigned node = 0; node < pedals_.size(); ++node)
            breakOff(node);
        const auto quit = [](gpointer loop) -> gboolean {
            return g_main_loop_quit(static_cast<GMainLoop*>(loop)), FALSE;
        };
        g_idle_add(quit, loop_);
        loopThread_.join();
        g_object_unref(bed_);
        g_main_loop_unref(loop_);
    }

    /// `release` as the system writes it, in hex. A node's number can be used once only.
    void plugIn(unsigned node, const std::string& release = "00c8") {
        const std::string dev = "/dev/hidraw" + std::to_string(node);
        ASSERT_TRUE(
            umockdev_testbed_add_from_string(bed_, description(node, release).c_str(), nullptr));
        UMockdevIoctlBase* const ioctls = umockdev_ioctl_base_new();
        g_signal_connect(ioctls, "handle-ioctl", G_CALLBACK(answerIoctl), nullptr);
        ASSERT_TRUE(umockdev_testbed_attach_ioctl(bed_, dev.c_str(), ioctls, nullptr));
        g_object_unref(ioctls);
        pedals_.at(node) = umockdev_testbed_get_dev_fd(bed_, dev.c_str());
        ASSERT_GE(pedals_[node], 0);
    }

    void unplug(unsigned node) {
        const std::string dev = "/dev/hidraw" + std::to_string(node);
        umockdev_testbed_detach_ioctl(bed_, dev.c_str(), nullptr);
        umockdev_testbed_remove_device(bed_, ("/sys" + usbPath(node)).c_str());
        breakOff(node);
    }

    /// The node stays, but reading and writing fail from now on.
    void breakOff(unsigned node) {
        if (pedals_[node] >= 0)
            ::close(std::exchange(pedals_[node], -1));
    }

    void sendFromPedal(unsigned node, const std::vector<std::uint8_t>& report) {
        ASSERT_EQ(::write(pedals_[node], report.data(), report.size()),
                  static_cast<ssize_t>(report.size()));
    }

    /// What the host wrote, a report and its ID; empty when nothing comes for five seconds.
    std::vector<std::uint8_t> nextWrite(unsigned node) {
        std::vector<std::uint8_t> packet(65);
        pollfd readable = {.fd = pedals_[node], .events = POLLIN, .revents = 0};
        const bool came = ::poll(&readable, 1, 5000) > 0;
        const ssize_t size = came ? ::read(pedals_[node], packet.data(), packet.size()) : 0;
        packet.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        return packet;
    }

private:
    // Only the question that opening asks; the answer is looked at by nobody.
    static gboolean answerIoctl(UMockdevIoctlBase* /*base*/, UMockdevIoctlClient* client,
                                gpointer /*data*/) {
        if (umockdev_ioctl_client_get_request(client) != HIDIOCGRDESCSIZE)
            return FALSE;
        UMockdevIoctlData* const answer = umockdev_ioctl_data_resolve(
            umockdev_ioctl_client_get_arg(client), 0, sizeof(int), nullptr);
        int size = 31;
        umockdev_ioctl_data_update(answer, 0, reinterpret_cast<guint8*>(&size), sizeof size);
        umockdev_ioctl_data_unref(answer);
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }

    static std::string usbPath(unsigned node) {
        return "/devices/usb1/1-" + std::to_string(node + 1);
    }

    // The four levels of a device in the system's tree, from the bus down. The report descriptor
    // has 64 bytes each way and a second, empty collection, for which hidapi lists the node twice.
    static std::string description(unsigned node, const std::string& release) {
        const std::string port = std::to_string(node + 1), number = std::to_string(node);
        const std::string interface = usbPath(node) + "/1-" + port + ":1.0";
        const std::string hid = interface + "/0003:0483:5703.000" + port;
        return "P: " + usbPath(node) +
               "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: idVendor=0483\\n\n"
               "A: idProduct=5703\\n\nA: manufacturer=M\\n\nA: product=P\\n\nA: bcdDevice=" +
               release + "\\n\n\nP: " + interface +
               "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\nA: bInterfaceNumber=00\\n\n\nP: " +
               hid +
               "\nE: SUBSYSTEM=hid\nE: HID_ID=0003:00000483:00005703\nE: HID_NAME=P\n"
               "E: HID_UNIQ=\nE: HID_PHYS=usb-1\nH: report_descriptor="
               "0600FF0901A101150026FF00750895400901810209019102C005010902A101C0\n\nP: " +
               hid + "/hidraw/hidraw" + number + "\nN: hidraw" + number +
               "\nL: device=../..\nE: SUBSYSTEM=hidraw\nE: DEVNAME=/dev/hidraw" + number + "\n";
    }

    UMockdevTestbed* bed_ = umockdev_testbed_new();
    GMainLoop* loop_ = g_main_loop_new(nullptr, FALSE);
    std::thread loopThread_; ///< answers the ioctls
    std::array<int, 4> pedals_ = {-1, -1, -1, -1};
};

} // namespace cabslot::testing
