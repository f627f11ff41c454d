#include "cli/PedalSession.h"

#include "cli/Console.h"
#include "platform/PedalChoice.h"
#include "platform/TracingHIDManager.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <sstream>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

} // namespace

PedalSession::~PedalSession() {
    link_.reset(); // ends its thread, which writes the trace
    if (trace_.is_open() && !trace_.flush())
        complain("the trace " + options_.traceFile + " is not complete: it could not be written");
}

ExitStatus PedalSession::connect() {
    manager_ = makeHIDManager(options_.pedal);
    if (!openTrace())
        return ExitStatus::wrongUsage;
    link_ = std::make_unique<HIDClass>(*manager_);
    link_->addObserver([this, link = link_.get()] {
        if (link->KVOValue() == deviceLost)
            lost_ = true;
        else
            dataReceived_ = true;
    });
    link_->OpenDevice();
    return waitForData();
}

bool PedalSession::openTrace() {
    if (options_.traceFile.empty())
        return true;
    trace_.open(options_.traceFile, std::ios::trunc);
    if (!trace_) {
        complain("the trace cannot be written to " + options_.traceFile + ": " +
                 std::strerror(errno));
        return false;
    }
    manager_ = std::make_unique<TracingHIDManager>(std::move(manager_), trace_);
    return true;
}

ExitStatus PedalSession::waitForData() const {
    const auto deadline = Clock::now() + std::chrono::duration<double>(options_.timeout);
    while (!dataReceived_) {
        if (lost_)
            return complainAboutLoss();
        if (interrupted())
            return ExitStatus::interrupted;
        if (Clock::now() >= deadline) {
            std::ostringstream message;
            message << "the pedal is there but did not send its data within " << options_.timeout
                    << " s; unplug it, plug it in and try again";
            complain(message.str());
            return ExitStatus::notConfirmed;
        }
        std::this_thread::sleep_for(5ms);
    }
    return ExitStatus::done;
}

ExitStatus PedalSession::complainAboutLoss(const std::string& consequence) const {
    const std::string why = manager_->whyNoDevice();
    complain((why.empty() ? "no pedal was found" : why) + consequence);
    return ExitStatus::noPedal;
}

} // namespace cabslot
