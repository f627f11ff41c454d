#include "cli/SlotCommand.h"

#include "cli/Console.h"
#include "device/DeviceCommands.h"
#include "device/SharedState.h"
#include "irfile/QNIRFile.h"
#include "platform/BundlePath.h"
#include "upload/SlotUpload.h"

#include <chrono>
#include <iostream>
#include <thread>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 10ms;

// Shows how far the upload is; gives it up when the pedal is gone.
class UploadProgress final : public UploadWait {
public:
    UploadProgress(const PedalSession& session, std::string slotName)
        : session_(session), slotName_(std::move(slotName)) {}

    // Ctrl-C is not looked at here: seven frames take 0.14 s, and half an IR is of no use.
    bool waitForUpload() override {
        line_.show(slotName_ + ": sending frame " + std::to_string(step + 1) + " of " +
                   std::to_string(uploadFrameCount));
        std::this_thread::sleep_for(pollInterval);
        return !session_.lost();
    }

    bool waitForConfirmation(std::uint32_t poll) override {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(poll * pollInterval);
        line_.show(slotName_ + ": sent, waiting for the pedal to confirm, " +
                   std::to_string(seconds.count()) + " s");
        std::this_thread::sleep_for(pollInterval);
        return !session_.lost() && !interrupted();
    }

private:
    const PedalSession& session_;
    std::string slotName_;
    ProgressLine line_;
};

ExitStatus refuse(const std::string& file, const std::string& why) {
    complain(file + ": " + why);
    return ExitStatus::fileRefused;
}

// Looks at the file the way the upload will, without touching what the pedal is sent.
ExitStatus checkFile(const std::string& path) {
    QNIRFile file;
    std::array<std::uint32_t, irPointCount> block{};
    if (file.openForInspection(path) && file.GetIRDataBuffer(block))
        return ExitStatus::done;
    return refuse(path, file.whyRefused());
}

ExitStatus tellEnd(UploadEnd end, std::uint32_t slot, const PedalSession& session) {
    const std::string name = defaultSlotName(slot);
    switch (end) {
    case UploadEnd::confirmed:
        std::cout << name << ": " << shownName(IRNameArr.at(slot - 1)) << '\n';
        return ExitStatus::done;
    case UploadEnd::notConfirmed:
        complain("the pedal did not confirm in time that it has stored " + name +
                 "; look with \"cabslotctl list\" and load it again if need be");
        return ExitStatus::notConfirmed;
    default:
        break;
    }
    if (session.lost())
        return session.complainAboutLoss("; " + name + " may be incomplete: load it again");
    complain("interrupted before the pedal confirmed " + name + "; look with \"cabslotctl list\"");
    return ExitStatus::interrupted;
}

} // namespace

SlotCommand::SlotCommand(CLI::App& app, PedalOptions& pedal, const std::string& name,
                         const std::string& description)
    : Command(app, name, description), pedal_(pedal) {
    subcommand()
        .add_option("SLOT", slot_, "The user slot, 1 to 4")
        ->required()
        ->type_name("")
        ->check([](const std::string& slot) {
            const bool known = slot.size() == 1 && slot[0] >= '1' && slot[0] <= '4';
            return known ? std::string{} : "there is no slot " + slot + "; there are 1 to 4";
        });
    addTimeout(pedal.timeout);
    addSeconds("--confirm-timeout", confirmTimeout_, "How long to wait for the pedal to confirm");
}

ExitStatus SlotCommand::loadIntoSlot(const std::string& file, bool clearing) {
    if (const ExitStatus checked = checkFile(file); checked != ExitStatus::done)
        return checked;
    PedalSession session(pedal_);
    if (const ExitStatus connected = session.connect(); connected != ExitStatus::done)
        return connected;

    const UploadOptions options = {
        .arming = Arming::withLastFrame,
        .confirmationPolls = static_cast<std::uint32_t>(confirmTimeout_ * (1s / pollInterval))};
    UploadResult result{};
    {
        UploadProgress progress(session, defaultSlotName(slot_));
        result = clearing ? clearSlot(slot_, bundlePath(), options, progress)
                          : loadSlot(slot_, {.path = file}, options, progress);
    }
    if (isRefused(result.end)) // it changed since it was checked
        return refuse(file, result.whyRefused);
    return tellEnd(result.end, slot_, session);
}

} // namespace cabslot
