#include "platform/UsbHIDManager.h"

#include "platform/Deadline.h"
#include "platform/DevicePermission.h"

#include <hidapi.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// A scan reads a few small files for each hidraw node: far less than a tick.
constexpr auto lookInterval = 500ms;
constexpr auto lookIntervalForMore = 1s; // while a device is announced
constexpr int turnOfEach = 1;            // ms, with several open devices
constexpr int interruptedTries = 3;      // a signal ends a system call early
constexpr int failuresThatLose = 5;      // in a row
constexpr std::uint8_t noReportID = 0;

} // namespace

class UsbDevice final : public HIDDevice {
public:
    explicit UsbDevice(UsbFinding finding)
        : path_(std::move(finding.path)), lock_(std::move(finding.lock)),
          handle_(std::move(finding.handle)) {}

    // The kernel waits up to five seconds for a pedal that accepts nothing; hidraw has no way to
    // shorten that.
    bool SetReport(const HIDReport& report) override {
        if (!handle_)
            return false;
        std::array<std::uint8_t, 1 + hidReportSize> packet{noReportID};
        std::copy(report.begin(), report.end(), packet.begin() + 1);
        for (int i = 0; i < interruptedTries; ++i) {
            errno = 0;
            if (::hid_write(handle_.get(), packet.data(), packet.size()) ==
                static_cast<int>(packet.size())) {
                failedWrites_ = 0;
                return true;
            }
            if (errno != EINTR)
                break;
        }
        ++failedWrites_;
        lost_ = lost_ || meansLost(errno);
        return false;
    }

    void close() override {
        handle_.reset();
        lock_.reset();
    }

    // Bytes read, 0 on timeout, -1 if the device cannot be read. An interrupted wait looks like the
    // latter, but not twice.
    int read(std::span<std::uint8_t> buffer, int milliseconds) {
        int size = ::hid_read_timeout(handle_.get(), buffer.data(), buffer.size(), milliseconds);
        for (int i = 1; size < 0 && i < interruptedTries; ++i)
            size = ::hid_read_timeout(handle_.get(), buffer.data(), buffer.size(), 0);
        failedReads_ = size < 0 ? failedReads_ + 1 : 0;
        lost_ = lost_ || failedReads_ >= failuresThatLose;
        return size;
    }

    const std::string& path() const { return path_; }
    bool isOpen() const { return handle_ != nullptr; }
    // A single failed read proves nothing: a signal may have interrupted it.
    bool isLost() const { return lost_; }
    // Failing writes prove nothing either: the pedal may be there and take no reports.
    bool mayBeLost() const { return failedWrites_ >= failuresThatLose; }
    void wasLookedFor(bool isThere) {
        failedWrites_ = 0;
        lost_ = lost_ || !isThere;
    }

private:
    std::string path_;
    std::unique_ptr<PedalLock> lock_;
    UsbHandle handle_;
    int failedWrites_ = 0; ///< in a row
    int failedReads_ = 0;  ///< in a row
    bool lost_ = false;
};

namespace {

bool has(const std::vector<UsbFinding>& findings, const UsbDevice& device) {
    return std::any_of(findings.begin(), findings.end(),
                       [&](const UsbFinding& finding) { return finding.path == device.path(); });
}

} // namespace

UsbHIDManager::UsbHIDManager(WhileInUse whileInUse) : whileInUse_(std::move(whileInUse)) {}

UsbHIDManager::~UsbHIDManager() {
    for (const Device& device : devices_)
        device->close();
    leaveUsb();
}

bool UsbHIDManager::open(const HIDMatching& matching, const HIDCallbacks& callbacks) {
    matching_ = matching;
    callbacks_ = callbacks;
    return joinUsb();
}

void UsbHIDManager::waitForEvents(TimePoint deadline) {
    removeLost();
    if (Clock::now() >= nextLook_)
        lookForDevices();
    do {
        listen(deadline);
        removeLost(); // a callback may have written
    } while (Clock::now() < deadline);
}

void UsbHIDManager::lookForDevices() {
    std::vector<UsbFinding> findings = openNew();
    UsbVerdict verdict = verdictOn(findings, matching_);
    while (verdict.status == UsbStatus::inUse && whileInUse_ && whileInUse_(verdict.holder)) {
        findings = openNew();
        verdict = verdictOn(findings, matching_);
    }
    whileInUse_ = nullptr;
    if (devices_.empty())
        explain(verdict);
    for (UsbFinding& finding : findings) {
        if (finding.handle && verdict.status == UsbStatus::ok)
            announce(std::make_shared<UsbDevice>(std::move(finding)));
    }
    nextLook_ = Clock::now() + (devices_.empty() ? lookInterval : lookIntervalForMore);
}

// What is on the bus; what is new there is open if it can be used.
std::vector<UsbFinding> UsbHIDManager::openNew() {
    std::vector<UsbFinding> findings = findOnUsb(matching_);
    removeClosedBut(findings);
    for (UsbFinding& finding : findings) {
        if (!isKnown(finding.path))
            openOnUsb(finding);
        if (finding.status == UsbStatus::inUse) // by a program that opens the rest, too
            break;
    }
    return findings;
}

bool UsbHIDManager::isKnown(const std::string& path) const {
    return std::any_of(devices_.begin(), devices_.end(),
                       [&](const Device& device) { return device->path() == path; });
}

// For a closed device, only a scan of the bus shows that it was unplugged.
void UsbHIDManager::removeClosedBut(const std::vector<UsbFinding>& there) {
    for (std::size_t i = devices_.size(); i-- > 0;) {
        const Device device = devices_[i];
        if (!device->isOpen() && !has(there, *device))
            remove(device);
    }
}

void UsbHIDManager::explain(const UsbVerdict& verdict) {
    if (verdict.status == UsbStatus::noPedal)
        whyNoDevice_.absent(verdict.message);
    else if (verdict.status != UsbStatus::ok)
        whyNoDevice_.unusable(verdict.message +
                              (verdict.fix.empty() ? "" : "; run: " + verdict.fix));
}

void UsbHIDManager::announce(const Device& device) {
    whyNoDevice_.found();
    devices_.push_back(device);
    callbacks_.matching(callbacks_.context, 0, this, device);
}

// One iteration: waits until the deadline for a single device, briefly for each of several.
void UsbHIDManager::listen(TimePoint deadline) {
    const int left = millisecondsUntil(deadline);
    const auto open = std::count_if(devices_.begin(), devices_.end(),
                                    [](const Device& device) { return device->isOpen(); });
    if (open == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(left));
    const int turn = open > 1 ? std::min(left, turnOfEach) : left;
    // Backwards, since a lost device is removed from the list.
    for (std::size_t i = devices_.size(); i-- > 0;)
        readFrom(Device(devices_[i]), turn);
}

void UsbHIDManager::readFrom(const Device& device, int milliseconds) {
    if (!device->isOpen())
        return;
    std::array<std::uint8_t, hidReportSize + 1> report{}; // one more, to detect long reports
    const int size = device->read(report, milliseconds);
    if (size > 0)
        callbacks_.report(callbacks_.context, 0, device, HIDReportType::input, 0, report.data(),
                          static_cast<std::size_t>(size));
    if (size < 0 && !device->isLost()) // the read returned early
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void UsbHIDManager::removeLost() {
    for (std::size_t i = devices_.size(); i-- > 0;) {
        const Device device = devices_[i];
        if (device->mayBeLost())
            device->wasLookedFor(has(findOnUsb(matching_), *device));
        if (device->isLost())
            remove(device);
    }
}

void UsbHIDManager::remove(const Device& device) {
    device->close();
    std::erase(devices_, device);
    whyNoDevice_.lost();
    callbacks_.removal(callbacks_.context, 0, this, device);
}

std::vector<HIDDeviceRef> UsbHIDManager::copyDevices() const {
    return {devices_.begin(), devices_.end()};
}

} // namespace cabslot
