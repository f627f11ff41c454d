#include "simulator/usb/UsbPedal.h"
#include "tests/simulator/HostReports.h"

#include <gtest/gtest.h>

#include <optional>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <thread>

namespace cabslot::simulator {
namespace {

using testing::Bytes;

Bytes bytesOf(std::span<const std::uint8_t> bytes) {
    return {bytes.begin(), bytes.end()};
}

// --- Control requests; the descriptors themselves are proved by the kernel that takes them ------

struct ControlCase {
    const char* what;
    UsbSetup setup;
    std::optional<Bytes> answer;
};

TEST(UsbControl, IsAnsweredOrStalled) {
    const ControlCase cases[] = {
        {"the device's first 4 bytes", {0x80, 6, 0, 1, 0, 0, 4, 0}, Bytes{18, 1, 0, 2}},
        {"HID", {0x81, 6, 0, 0x21, 0, 0, 9, 0}, Bytes{9, 0x21, 0x11, 1, 0, 1, 0x22, 25, 0}},
        {"languages", {0x80, 6, 0, 3, 9, 4, 255, 0}, Bytes{4, 3, 9, 4}},
        {"the start of the maker", {0x80, 6, 1, 3, 9, 4, 6, 0}, Bytes{16, 3, 'C', 0, 'a', 0}},
        {"a string that there is not", {0x80, 6, 3, 3, 9, 4, 255, 0}, std::nullopt},
        {"status", {0x80, 0, 0, 0, 0, 0, 2, 0}, Bytes{0, 0}},
        {"set the configuration", {0x00, 9, 1, 0, 0, 0, 0, 0}, Bytes{}},
        {"set idle", {0x21, 10, 0, 0, 0, 0, 0, 0}, Bytes{}},
        {"a high-speed qualifier", {0x80, 6, 0, 6, 0, 0, 10, 0}, std::nullopt},
        {"a maker's own request", {0xC0, 1, 0, 0, 0, 0, 1, 0}, std::nullopt},
    };
    for (const ControlCase& one : cases)
        EXPECT_EQ(answerControl(one.setup), one.answer) << one.what;
}

// --- Messages ----------------------------------------------------------------------------------

constexpr std::uint8_t in = 1;
constexpr std::uint8_t out = 0;

UsbIpHeader submitHeader(std::uint8_t sequence, std::uint8_t direction, std::uint8_t endpoint,
                         std::uint8_t length, const UsbSetup& setup = {}) {
    UsbIpHeader header{0, 0, 0, 1, 0, 0, 0, sequence, 0, 0, 0, 1, 0, 0, 0, direction};
    header[19] = endpoint;
    header[27] = length;
    std::copy(setup.begin(), setup.end(), header.begin() + 40);
    return header;
}

TEST(UsbIp, ReadsBigEndianNumbers) {
    UsbIpHeader header = submitHeader(0x44, in, 5, 0x40, {1, 2, 3, 4, 5, 6, 7, 8});
    header[4] = 0x11;
    header[20] = 0x21;
    header[26] = 0x03;
    const UsbIpRequest request = decodeRequest(header);
    EXPECT_EQ(request.command, UsbIpCommand::submit);
    EXPECT_EQ(request.sequence, 0x11000044U);
    EXPECT_TRUE(request.in);
    EXPECT_EQ(request.endpoint, 5U);
    EXPECT_EQ(request.unlinked, 0x21000000U);
    EXPECT_EQ(request.length, 0x340U);
    EXPECT_EQ(request.setup, (UsbSetup{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(UsbIp, WritesAnswers) {
    Bytes submit(50);
    submit[3] = 3;
    submit[7] = 9;
    submit[27] = 2;
    submit[48] = 0xAB;
    submit[49] = 0xCD;
    EXPECT_EQ(encodeSubmitAnswer(9, 0, 2, Bytes{0xAB, 0xCD}), submit);

    Bytes unlink(48);
    unlink[3] = 4;
    unlink[6] = 1;
    std::fill_n(unlink.begin() + 20, 3, std::uint8_t{0xFF});
    unlink[23] = 0x98; // -104
    EXPECT_EQ(encodeUnlinkAnswer(256, statusUnlinked), unlink);
}

// --- The bridge --------------------------------------------------------------------------------

/// A UsbPedal on a thread of its own, between a kernel and a pedal that the test plays. A wait that
/// never ends fails the test instead of hanging it.
class UsbPedalBetween : public ::testing::Test {
protected:
    UsbPedalBetween() {
        int bus[2];
        int reports[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, bus), 0);
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, reports), 0);
        kernel = FileDescriptor(bus[0]);
        pedal = FileDescriptor(reports[0]);
        const timeval patience{20, 0};
        for (const int fd : {kernel.get(), pedal.get()})
            ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        thread_ = std::thread(
            [this, cable = UsbPedal(FileDescriptor(bus[1]), FileDescriptor(reports[1]))]() mutable {
                cable.run(stop.get());
            });
    }

    ~UsbPedalBetween() override {
        kernel.close();
        thread_.join();
    }

    void request(const UsbIpHeader& header, const Bytes& data = {}) {
        Bytes message = bytesOf(header);
        message.insert(message.end(), data.begin(), data.end());
        EXPECT_EQ(::send(kernel.get(), message.data(), message.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(message.size()));
    }

    /// What the kernel or the pedal receives, up to `size` bytes; empty when the cable is pulled.
    static Bytes receive(const FileDescriptor& fd, std::size_t size) {
        Bytes bytes(size);
        const ssize_t got = ::recv(fd.get(), bytes.data(), size, MSG_WAITALL);
        EXPECT_GE(got, 0) << "nothing came";
        bytes.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
        return bytes;
    }

    FileDescriptor kernel;
    FileDescriptor pedal;
    FileDescriptor stop{::eventfd(0, 0)};

private:
    std::thread thread_;
};

TEST_F(UsbPedalBetween, AnswersTheControlEndpoint) {
    request(submitHeader(1, in, 0, 64, {0x80, 6, 0, 1, 0, 0, 64, 0}));
    EXPECT_EQ(receive(kernel, 48 + 18), encodeSubmitAnswer(1, 0, 18, usbDeviceDescriptor()));
    request(submitHeader(2, in, 0, 1, {0xC0, 1, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(receive(kernel, 48), encodeSubmitAnswer(2, statusStalled, 0, {}));
}

TEST_F(UsbPedalBetween, CarriesReportsBothWays) {
    const Bytes toPedal(64, 0x5A);
    request(submitHeader(1, out, 1, 64), toPedal);
    EXPECT_EQ(receive(pedal, 64), toPedal);
    EXPECT_EQ(receive(kernel, 48), encodeSubmitAnswer(1, 0, 64, {}));

    const Bytes first(64, 0x11);
    const Bytes second(64, 0x22);
    ::send(pedal.get(), first.data(), 64, 0); // before the host asks
    request(submitHeader(2, in, 1, 64));
    EXPECT_EQ(receive(kernel, 48 + 64), encodeSubmitAnswer(2, 0, 64, first));
    request(submitHeader(3, in, 1, 64)); // and after
    ::send(pedal.get(), second.data(), 64, 0);
    EXPECT_EQ(receive(kernel, 48 + 64), encodeSubmitAnswer(3, 0, 64, second));
}

TEST_F(UsbPedalBetween, GivesNoReportToARequestThatWasTakenBack) {
    UsbIpHeader unlink = submitHeader(8, in, 1, 0);
    unlink[3] = 2;
    unlink[23] = 7;
    request(submitHeader(7, in, 1, 64));
    request(unlink);
    EXPECT_EQ(receive(kernel, 48), encodeUnlinkAnswer(8, statusUnlinked));
    request(unlink); // nothing is left to take back
    EXPECT_EQ(receive(kernel, 48), encodeUnlinkAnswer(8, 0));

    const Bytes report(64, 0x33);
    ::send(pedal.get(), report.data(), 64, 0);
    request(submitHeader(9, in, 1, 64));
    EXPECT_EQ(receive(kernel, 48 + 64), encodeSubmitAnswer(9, 0, 64, report));
}

TEST_F(UsbPedalBetween, IsUnpluggedByAPedalThatVanishes) {
    pedal.close();
    EXPECT_EQ(receive(kernel, 1), Bytes{});
}

TEST_F(UsbPedalBetween, IsUnpluggedByItsOwner) {
    ::eventfd_write(stop.get(), 1);
    EXPECT_EQ(receive(kernel, 1), Bytes{});
    EXPECT_EQ(receive(pedal, 1), Bytes{});
}

TEST_F(UsbPedalBetween, EndsWithABusThatIsOutOfStep) {
    UsbIpHeader unknown = submitHeader(1, in, 1, 64);
    unknown[3] = 5;
    request(unknown);
    EXPECT_EQ(receive(kernel, 1), Bytes{});
}

} // namespace
} // namespace cabslot::simulator
