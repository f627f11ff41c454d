// The USB manager on a fake bus: hidapi's functions are replaced by this file's. Runs wherever the
// programs do; the kernel bench covers the real hidapi.
#include "cli/CommandLine.h"
#include "platform/UsbHIDManager.h"
#include "tests/support/Files.h"
#include "tests/support/Journal.h"

#include <gtest/gtest.h>
#include <hidapi.h>

#include <algorithm>
#include <deque>
#include <map>

struct hid_device_ {
    std::string path;
};

namespace cabslot::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct FakeNode {
    std::uint16_t release = pedalRelease;
    bool opens = true;
    int failingReads = 0;
    int failingWrites = 0;
    std::deque<Bytes> toHost{};
    std::vector<Bytes> written{};
};

struct FakeBus {
    bool starts = true;
    std::map<std::string, FakeNode> nodes;
    int open = 0;
} bus;

hid_device_info* listed(const std::string& path, const FakeNode& node, hid_device_info* next) {
    auto* const info = new hid_device_info{};
    if (!path.empty()) { // hidapi gives none for a node that vanishes during the scan
        info->path = new char[path.size() + 1]{};
        std::copy(path.begin(), path.end(), info->path);
    }
    info->release_number = node.release;
    info->next = next;
    return info;
}

} // namespace
} // namespace cabslot::testing

using cabslot::testing::bus;
using cabslot::testing::Bytes;

int hid_init() {
    return bus.starts ? 0 : -1;
}

int hid_exit() {
    return 0;
}

hid_device_info* hid_enumerate(unsigned short /*vendor*/, unsigned short /*product*/) {
    hid_device_info* list = nullptr;
    for (const auto& [path, node] : bus.nodes) {
        list = cabslot::testing::listed(path, node, list);
        list = cabslot::testing::listed(path, node, list); // once per usage
    }
    return list;
}

void hid_free_enumeration(hid_device_info* list) {
    while (list != nullptr) {
        hid_device_info* const next = list->next;
        delete[] list->path;
        delete list;
        list = next;
    }
}

hid_device* hid_open_path(const char* path) {
    if (!bus.nodes.at(path).opens)
        return nullptr;
    ++bus.open;
    return new hid_device_{path};
}

void hid_close(hid_device* device) {
    bus.open -= device != nullptr ? 1 : 0;
    delete device;
}

int hid_write(hid_device* device, const unsigned char* bytes, std::size_t size) {
    const auto node = bus.nodes.find(device->path);
    if (node == bus.nodes.end() || node->second.failingWrites-- > 0)
        return -1;
    node->second.written.emplace_back(bytes, bytes + size);
    return static_cast<int>(size);
}

int hid_read_timeout(hid_device* device, unsigned char* buffer, std::size_t size, int /*time*/) {
    const auto node = bus.nodes.find(device->path);
    if (node == bus.nodes.end() || node->second.failingReads-- > 0)
        return -1;
    auto& reports = node->second.toHost;
    if (reports.empty())
        return 0;
    const Bytes report = reports.front();
    reports.pop_front();
    const std::size_t count = std::min(size, report.size());
    std::copy_n(report.begin(), count, buffer);
    return static_cast<int>(count);
}

namespace cabslot::testing {
namespace {

class UsbManager : public ::testing::Test {
protected:
    void SetUp() override { bus = {}; }
    void open() { opened = manager.open(pedalMatching, journal.callbacks()); }
    /// One iteration: scans if that is due, then reads each device once.
    void turn() { manager.waitForEvents(UsbHIDManager::TimePoint{}); }

    bool opened = false;
    Journal journal;
    UsbHIDManager manager;
};

// The manager as a sentence, the doctor as a word.
TEST_F(UsbManager, SaysWhyThereIsNoPedal) {
    const std::tuple<bool, std::map<std::string, FakeNode>, std::string, std::string> rows[] = {
        {false, {}, "the USB service is not available", "no_service"},
        {true, {}, "no pedal was found on USB", "no_pedal"},
        {true,
         {{"a", {.release = 512}}},
         "the pedal at a has release 512 (0x0200); only release",
         "other_release"},
        {true,
         {{"a", {.release = 512}}, {"b", {.opens = false}}},
         "the pedal at b cannot be open",
         "failing"},
        {true, {{"a", {}}}, "", "ok"},
    };
    const char* const doctor[] = {"cabslotctl", "doctor", "--json"};
    for (const auto& [starts, nodes, why, word] : rows) {
        SCOPED_TRACE(word);
        bus = {.starts = starts, .nodes = nodes};
        auto fresh = std::make_unique<UsbHIDManager>();
        EXPECT_EQ(fresh->open(pedalMatching, journal.callbacks()), starts);
        fresh->waitForEvents({});
        EXPECT_TRUE(fresh->whyNoDevice().starts_with(why)) << fresh->whyNoDevice();
        EXPECT_EQ(journal.text, word == "ok" ? "+ " : "");
        fresh.reset(); // has the pedal's lock
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(runCommandLine(3, doctor), word == "ok" ? 0 : 3);
        const std::string json = ::testing::internal::GetCapturedStdout();
        EXPECT_NE(json.find("\"status\": \"" + word), std::string::npos) << json;
    }
}

TEST_F(UsbManager, TakesNoPedalWhileAnotherProgramHasTheFirst) {
    const TempFolder folder;
    const std::string used = folder.write("a", "");
    bus.nodes = {{folder.path("b"), {}}, {used, {}}}; // listed last to first
    LockAttempt other = lockPedal(used);
    ASSERT_TRUE(other.lock);
    int asked = 0;
    UsbHIDManager waiting([&](const LockHolder&) { return ++asked < 3; });
    waiting.open(pedalMatching, journal.callbacks());
    waiting.waitForEvents({});
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(journal.text, "");
    EXPECT_TRUE(waiting.whyNoDevice().starts_with("the pedal at " + used + " is in use by "));

    UsbHIDManager patient([&](const LockHolder&) { return other.lock.reset(), true; });
    patient.open(pedalMatching, journal.callbacks());
    patient.waitForEvents({});
    EXPECT_EQ(journal.text, "+ + ");
    EXPECT_TRUE(holderOf(used));
    journal.lastDevice->close();
    EXPECT_TRUE(lockPedal(used).lock) << "a closed pedal is free";
}

TEST_F(UsbManager, AnnouncesEachNodeOnceAndClosesItInTheEnd) {
    bus.nodes = {{"", {}}, {"a", {}}, {"b", {}}};
    {
        UsbHIDManager fresh;
        fresh.open(pedalMatching, journal.callbacks());
        fresh.waitForEvents({});
        EXPECT_EQ(journal.text, "+ + ") << "though each is listed twice";
        EXPECT_EQ(bus.open, 2);
    }
    EXPECT_EQ(bus.open, 0);
    EXPECT_FALSE(journal.lastDevice->SetReport({})) << "the reference outlives the manager";
}

TEST_F(UsbManager, ReportsPassWholeAndBehindAZeroByte) {
    bus.nodes["a"].toHost = {Bytes(64, 7), Bytes(65, 1)};
    open();
    turn();
    EXPECT_EQ(journal.lastReport, Bytes(64, 7));
    turn();
    EXPECT_EQ(journal.text, "+ 64 65 ");
    ASSERT_TRUE(journal.lastDevice->SetReport({63, 9}));
    Bytes expected(65, 0);
    expected[1] = 63;
    expected[2] = 9;
    EXPECT_EQ(bus.nodes["a"].written, std::vector<Bytes>{expected});
}

TEST_F(UsbManager, PedalsComeAndGoBesideEachOther) {
    const auto waitFor = [this](const std::string& text) {
        for (int i = 0; i < 300 && journal.text != text; ++i)
            manager.waitForEvents(std::chrono::steady_clock::now() + std::chrono::milliseconds(10));
        EXPECT_EQ(journal.text, text);
    };
    bus.nodes = {{"a", {}}};
    open();
    turn();
    const HIDDeviceRef first = journal.lastDevice;
    bus.nodes["b"] = {};
    waitFor("+ + ");
    EXPECT_EQ(manager.copyDevices(), (std::vector{first, journal.lastDevice}));
    journal.lastDevice->close();
    bus.nodes.erase("a");
    waitFor("+ + - ");
    EXPECT_EQ(journal.lastDevice, first);
    EXPECT_EQ(manager.copyDevices().size(), 1U) << "closed, but still plugged in";
    bus.nodes["c"] = {};
    waitFor("+ + - + ");
}

TEST_F(UsbManager, FiveFailuresInARowLoseADeviceAndFourDoNot) {
    bus.nodes["a"].failingWrites = 4;
    open();
    turn();
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(journal.lastDevice->SetReport({}));
    EXPECT_TRUE(journal.lastDevice->SetReport({}));
    bus.nodes["a"].failingReads = 3 * 4; // a read tries three times
    for (int i = 0; i < 5; ++i)
        turn();
    EXPECT_EQ(journal.text, "+ ");
    bus.nodes["a"].failingWrites = 11;
    for (int i = 0; i < 11; ++i, turn())
        EXPECT_FALSE(journal.lastDevice->SetReport({}));
    EXPECT_TRUE(journal.lastDevice->SetReport({})) << "it is still listed";
    EXPECT_EQ(journal.text, "+ ");
    bus.nodes.clear();
    for (int i = 0; i < 5; ++i)
        journal.lastDevice->SetReport({});
    turn();
    EXPECT_EQ(journal.text, "+ - ");
    EXPECT_EQ(manager.whyNoDevice(), "the pedal was unplugged");
    EXPECT_EQ(bus.open, 0);
}

} // namespace
} // namespace cabslot::testing
