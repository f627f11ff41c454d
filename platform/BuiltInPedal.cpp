#include "platform/BuiltInPedal.h"

#include "base/PathText.h"
#include "base/StateFolder.h"
#include "simulator/pedal/SimulatedPedal.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using Clock = std::chrono::steady_clock;
static_assert(hidReportSize == simulator::reportSize);

constexpr std::chrono::milliseconds lookInterval{500};

} // namespace

class BuiltInDevice final : public HIDDevice {
public:
    BuiltInDevice(simulator::PedalStore store, std::unique_ptr<PedalLock> lock,
                  simulator::Log complain)
        : lock_(std::move(lock)), store_(std::move(store)),
          pedal_(store_, {}, {}, std::move(complain)) {}

    bool SetReport(const HIDReport& report) override {
        if (open_)
            pedal_.receiveReport(report, Clock::now());
        return open_;
    }

    void close() override { open_ = false; }

    // Collects the pedal's pending replies.
    std::vector<simulator::Report> takeReports() {
        auto reports = pedal_.takeReports(Clock::now());
        return open_ ? std::move(reports) : std::vector<simulator::Report>{};
    }

    Clock::time_point nextDue() const {
        return pedal_.nextDue().value_or(Clock::time_point::max());
    }

private:
    std::unique_ptr<PedalLock> lock_;
    simulator::PedalStore store_;
    simulator::SimulatedPedal pedal_;
    bool open_ = true;
};

BuiltInPedal::BuiltInPedal(std::string folder, WhileInUse whileInUse, Complain complain)
    : folder_(std::move(folder)), whileInUse_(std::move(whileInUse)),
      complain_(std::move(complain)) {}

BuiltInPedal::~BuiltInPedal() = default;

bool BuiltInPedal::open(const HIDMatching& /*matching*/, const HIDCallbacks& callbacks) {
    callbacks_ = callbacks;
    return true;
}

// The slots are read only now: the program that had the folder may have changed them.
void BuiltInPedal::plugIn() {
    nextLook_ = Clock::now() + lookInterval;
    if (folder_.empty())
        return whyNoDevice_.absent("the simulated pedal has no folder for its slots: set " +
                                   whatNamesStateFolder());
    std::error_code failed; // reported when the slots are read
    std::filesystem::create_directories(pathOf(folder_), failed);
    LockAttempt attempt = lockPedal(folder_);
    while (attempt.holder && whileInUse_ && whileInUse_(*attempt.holder))
        attempt = lockPedal(folder_);
    whileInUse_ = nullptr;
    if (attempt.holder)
        return whyNoDevice_.unusable(inUseText(folder_, *attempt.holder));
    std::string why;
    auto store = simulator::PedalStore::open(pathOf(folder_), why);
    if (!store)
        return whyNoDevice_.absent("the simulated pedal is not available: " + why);
    device_ =
        std::make_shared<BuiltInDevice>(*std::move(store), std::move(attempt.lock), complain_);
    whyNoDevice_.found();
    callbacks_.matching(callbacks_.context, 0, this, device_);
}

void BuiltInPedal::waitForEvents(TimePoint deadline) {
    if (device_ == nullptr && Clock::now() >= nextLook_)
        plugIn();
    if (device_ == nullptr)
        return std::this_thread::sleep_until(deadline);
    do {
        for (const simulator::Report& report : device_->takeReports())
            callbacks_.report(callbacks_.context, 0, device_, HIDReportType::input, 0,
                              report.data(), report.size());
        std::this_thread::sleep_until(std::min(deadline, device_->nextDue()));
    } while (Clock::now() < deadline);
}

std::vector<HIDDeviceRef> BuiltInPedal::copyDevices() const {
    return device_ == nullptr ? std::vector<HIDDeviceRef>{} : std::vector<HIDDeviceRef>{device_};
}

std::string builtInPedalFolder() {
    const std::string state = userStateFolder();
    return state.empty() ? state : textOf(pathOf(state) / "cabslot" / "pedal");
}

} // namespace cabslot
