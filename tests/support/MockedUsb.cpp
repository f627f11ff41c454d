#include "tests/support/MockedUsb.h"

#include <gtest/gtest.h>

#include <linux/hidraw.h>
#include <sys/ioctl.h>

#include <poll.h>
#include <umockdev.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace cabslot::testing {

namespace {

constexpr std::size_t packetSize = 65; // a report and its ID
constexpr int tries = 5000;

// 64 bytes each way, and a second, empty collection, for which hidapi lists the node twice.
constexpr const char* reportDescriptor = "0600FF0901A101150026FF00750895400901810209019102C0"
                                         "05010902A101C0";

// Only the question that opening asks; the answer is looked at by nobody.
gboolean answerIoctl(UMockdevIoctlBase* /*base*/, UMockdevIoctlClient* client, gpointer /*data*/) {
    if (umockdev_ioctl_client_get_request(client) != HIDIOCGRDESCSIZE)
        return FALSE;
    UMockdevIoctlData* const answer =
        umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(int), nullptr);
    int size = 31;
    umockdev_ioctl_data_update(answer, 0, reinterpret_cast<guint8*>(&size), sizeof size);
    umockdev_ioctl_data_unref(answer);
    umockdev_ioctl_client_complete(client, 0, 0);
    return TRUE;
}

// The four levels of a device in the system's tree, from the bus down.
std::array<std::string, 4> levels(unsigned node) {
    const std::string port = std::to_string(node + 1);
    const std::string usb = "/devices/usb1/1-" + port;
    const std::string interface = usb + "/1-" + port + ":1.0";
    const std::string hid = interface + "/0003:0483:5703.000" + port;
    return {usb, interface, hid, hid + "/hidraw/hidraw" + std::to_string(node)};
}

std::string description(unsigned node, const std::string& release) {
    const auto [usb, interface, hid, hidraw] = levels(node);
    return "P: " + usb +
           "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: idVendor=0483\\n\nA: idProduct=5703\\n\n"
           "A: bcdDevice=" +
           release + "\\n\nA: manufacturer=M\\n\nA: product=P\\n\n\nP: " + interface +
           "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\nA: bInterfaceNumber=00\\n\n\nP: " + hid +
           "\nE: SUBSYSTEM=hid\nE: HID_ID=0003:00000483:00005703\nE: HID_NAME=P\nE: HID_UNIQ=\n"
           "E: HID_PHYS=usb-1\nH: report_descriptor=" +
           reportDescriptor + "\n\nP: " + hidraw + "\nN: hidraw" + std::to_string(node) +
           "\nL: device=../..\nE: SUBSYSTEM=hidraw\nE: DEVNAME=" + MockedUsb::path(node) + "\n";
}

} // namespace

MockedUsb::MockedUsb() : bed_(umockdev_testbed_new()), loop_(g_main_loop_new(nullptr, FALSE)) {
    loopThread_ = std::thread([this] { g_main_loop_run(loop_); });
}

MockedUsb::~MockedUsb() {
    for (unsigned node = 0; node < pedals_.size(); ++node)
        breakOff(node);
    g_idle_add(
        [](gpointer loop) -> gboolean {
            return g_main_loop_quit(static_cast<GMainLoop*>(loop)), FALSE;
        },
        loop_);
    loopThread_.join();
    g_object_unref(bed_);
    g_main_loop_unref(loop_);
}

void MockedUsb::plugIn(unsigned node, const std::string& release) {
    GError* error = nullptr;
    const std::string text = description(node, release);
    ASSERT_TRUE(umockdev_testbed_add_from_string(bed_, text.c_str(), &error)) << error->message;
    UMockdevIoctlBase* const ioctls = umockdev_ioctl_base_new();
    g_signal_connect(ioctls, "handle-ioctl", G_CALLBACK(answerIoctl), nullptr);
    ASSERT_TRUE(umockdev_testbed_attach_ioctl(bed_, path(node).c_str(), ioctls, &error));
    g_object_unref(ioctls);
    pedals_.resize(std::max<std::size_t>(pedals_.size(), node + 1), -1);
    pedals_[node] = umockdev_testbed_get_dev_fd(bed_, path(node).c_str());
    ASSERT_GE(pedals_[node], 0);
}

void MockedUsb::unplug(unsigned node) {
    umockdev_testbed_detach_ioctl(bed_, path(node).c_str(), nullptr);
    umockdev_testbed_remove_device(bed_, ("/sys" + levels(node)[0]).c_str());
    breakOff(node);
}

void MockedUsb::breakOff(unsigned node) {
    if (pedals_[node] >= 0)
        ::close(std::exchange(pedals_[node], -1));
}

void MockedUsb::sendFromPedal(unsigned node, const std::vector<std::uint8_t>& report) {
    ASSERT_EQ(::write(pedals_[node], report.data(), report.size()),
              static_cast<ssize_t>(report.size()));
}

bool MockedUsb::hasWrite(unsigned node) const {
    pollfd readable = {.fd = pedals_[node], .events = POLLIN, .revents = 0};
    return ::poll(&readable, 1, 0) > 0 && (readable.revents & POLLIN) != 0;
}

// Polls, since waiting ends at once while no host has the node open.
std::vector<std::uint8_t> MockedUsb::nextWrite(unsigned node) {
    for (int i = 0; i < tries && !hasWrite(node); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (!hasWrite(node))
        return {};
    std::vector<std::uint8_t> packet(packetSize);
    const ssize_t size = ::read(pedals_[node], packet.data(), packet.size());
    packet.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return packet;
}

} // namespace cabslot::testing
