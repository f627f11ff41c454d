// One command's connection to the pedal: the device link, and what it has said so far.
#pragma once

#include "cli/ExitStatus.h"
#include "device/HIDClass.h"
#include "device/HIDManager.h"

#include <atomic>
#include <fstream>
#include <memory>
#include <string>

namespace cabslot {

struct PedalOptions {
    std::string pedal;     ///< usb, sim or unix:PATH; checked already
    std::string traceFile; ///< empty: no trace
    double timeout = 5;    ///< seconds to wait for the pedal's data
};

/// Main thread. Failures are told on standard error and come back as the status to end with.
class PedalSession {
public:
    explicit PedalSession(const PedalOptions& options) : options_(options) {}
    ~PedalSession();

    /// Starts the link and waits for the pedal's names and flags. Anything but `done`: the
    /// session cannot be used.
    ExitStatus connect();

    /// The pedal is gone.
    bool lost() const { return lost_; }

    /// Tells that the pedal is gone and, behind it, what follows from that.
    ExitStatus complainAboutLoss(const std::string& consequence = {}) const;

private:
    bool openTrace();
    ExitStatus waitForData() const;

    PedalOptions options_;
    std::ofstream trace_;
    std::atomic<bool> dataReceived_{false};
    std::atomic<bool> lost_{false};
    std::unique_ptr<HIDManager> manager_;
    std::unique_ptr<HIDClass>
        link_; // last, so that it is destroyed first: its thread uses all of the above
};

} // namespace cabslot
