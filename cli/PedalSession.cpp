#include "cli/PedalSession.h"

#include "base/PathText.h"
#include "base/SystemError.h"
#include "cli/Console.h"
#include "cli/OutputFiles.h"
#include "platform/PedalChoice.h"
#include "platform/TracingHIDManager.h"

#include <cerrno>
#include <chrono>
#include <sstream>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// How long to wait for another program to be done with the pedal.
constexpr auto patience = 5s;
constexpr auto pauseForOther = 50ms;

} // namespace

PedalSession::~PedalSession() {
    link_.reset(); // ends its thread, which writes the trace
    if (trace_.is_open() && !trace_.flush())
        complain("the trace " + options_.traceFile + " is not complete: it could not be written");
}

ExitStatus PedalSession::connect(const std::vector<std::string>& inputs) {
    freeBefore_ = Clock::now() + patience;
    manager_ = makeHIDManager(
        options_.pedal,
        {.whileInUse = [this](const LockHolder& holder) { return waitForOther(holder); },
         .complain = [](const std::string& why) { complain("the simulated pedal " + why); }});
    if (!openTrace(inputs))
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

bool PedalSession::openTrace(const std::vector<std::string>& inputs) {
    if (options_.traceFile.empty())
        return true;
    OutputFiles files(options_.force);
    for (const std::string& input : inputs)
        files.addInput(input);
    files.addLog(options_.traceFile);
    if (!files.mayWrite())
        return false;
    trace_.open(pathOf(options_.traceFile), std::ios::trunc);
    if (!trace_) {
        complain("the trace cannot be written to " + options_.traceFile + ": " +
                 systemErrorText(errno));
        return false;
    }
    auto tracing = std::make_unique<TracingHIDManager>(std::move(manager_), trace_);
    tracing_ = tracing.get();
    manager_ = std::move(tracing);
    return true;
}

// Device thread.
bool PedalSession::waitForOther(const LockHolder& holder) {
    if (tracing_ != nullptr && waits_ == 0)
        tracing_->note("waiting: " + inUseText(options_.pedal, holder));
    ++waits_;
    if (interrupted() || Clock::now() >= freeBefore_)
        return false;
    std::this_thread::sleep_for(pauseForOther);
    return true;
}

ExitStatus PedalSession::waitForData() const {
    const std::chrono::duration<double> timeout(options_.timeout);
    auto deadline = Clock::now() + timeout;
    for (int waits = 0; !dataReceived_;) {
        if (waits_ > waits) { // the time runs from when the pedal is free
            waits = waits_;
            deadline = Clock::now() + timeout;
        }
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
