// A command's connection to the pedal: the device link and its state.
#pragma once

#include "cli/CommonOptions.h"
#include "cli/ExitStatus.h"
#include "device/HIDClass.h"
#include "device/HIDManager.h"
#include "platform/PedalLock.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace cabslot {

class TracingHIDManager;

/// Main thread. Failures are reported on standard error and returned as the exit status.
class PedalSession {
public:
    explicit PedalSession(const CommonOptions& options) : options_(options) {}
    ~PedalSession();

    /// Starts the link and waits for the pedal's names and flags. The session can be used only if
    /// this returns `done`. The trace must not replace any of `inputs`.
    ExitStatus connect(const std::vector<std::string>& inputs = {});

    /// The pedal was disconnected.
    bool lost() const { return lost_; }

    /// Reports that the pedal was disconnected, followed by `consequence`.
    ExitStatus complainAboutLoss(const std::string& consequence = {}) const;

private:
    bool waitForOther(const LockHolder& holder);
    bool openTrace(const std::vector<std::string>& inputs);
    ExitStatus waitForData() const;

    CommonOptions options_;
    std::ofstream trace_;
    std::atomic<bool> dataReceived_{false};
    std::atomic<bool> lost_{false};
    std::chrono::steady_clock::time_point freeBefore_; ///< when to give up waiting for it
    std::atomic<int> waits_{0}; ///< for another program to be done with the pedal
    std::unique_ptr<HIDManager> manager_;
    TracingHIDManager* tracing_ = nullptr; ///< manager_, if it writes a trace
    std::unique_ptr<HIDClass>
        link_; // declared last, so destroyed first: its thread uses all of the above
};

} // namespace cabslot
