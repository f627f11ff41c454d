#include "platform/BuiltInPedal.h"

#include "base/PathText.h"
#include "base/StateFolder.h"
#include "simulator/pedal/SimulatedPedal.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using Clock = std::chrono::steady_clock;
static_assert(hidReportSize == simulator::reportSize);

} // namespace

class BuiltInDevice final : public HIDDevice {
public:
    explicit BuiltInDevice(simulator::PedalStore store)
        : store_(std::move(store)), pedal_(store_, {}, {}) {}

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
    simulator::PedalStore store_;
    simulator::SimulatedPedal pedal_;
    bool open_ = true;
};

std::unique_ptr<BuiltInPedal> BuiltInPedal::make(const std::string& stateFolder, std::string& why) {
    auto store = simulator::PedalStore::open(pathOf(stateFolder), why);
    if (!store)
        return nullptr;
    auto device = std::make_shared<BuiltInDevice>(*std::move(store));
    return std::unique_ptr<BuiltInPedal>(new BuiltInPedal(std::move(device)));
}

BuiltInPedal::BuiltInPedal(std::shared_ptr<BuiltInDevice> device) : device_(std::move(device)) {}

BuiltInPedal::~BuiltInPedal() = default;

bool BuiltInPedal::open(const HIDMatching& /*matching*/, const HIDCallbacks& callbacks) {
    callbacks_ = callbacks;
    return true;
}

void BuiltInPedal::waitForEvents(TimePoint deadline) {
    if (!std::exchange(announced_, true))
        callbacks_.matching(callbacks_.context, 0, this, device_);
    do {
        for (const simulator::Report& report : device_->takeReports())
            callbacks_.report(callbacks_.context, 0, device_, HIDReportType::input, 0,
                              report.data(), report.size());
        std::this_thread::sleep_until(std::min(deadline, device_->nextDue()));
    } while (Clock::now() < deadline);
}

std::vector<HIDDeviceRef> BuiltInPedal::copyDevices() const {
    return {device_};
}

std::string BuiltInPedal::whyNoDevice() const {
    return {}; // it is always there
}

std::string builtInPedalFolder() {
    const std::string state = userStateFolder();
    return state.empty() ? state : textOf(pathOf(state) / "cabslot" / "pedal");
}

} // namespace cabslot
