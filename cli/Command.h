// The commands of cabslotctl. Each adds itself to the command line and runs when it was given.
#pragma once

#include "analysis/IRSummary.h"
#include "cli/ExitStatus.h"
#include "cli/PedalSession.h"

#include <CLI/App.hpp>

#include <cstdint>
#include <string>

namespace cabslot {

class Command {
public:
    virtual ~Command() = default;
    virtual ExitStatus run() = 0;
    bool given() const { return subcommand_->parsed(); }

protected:
    /// `app` keeps the subcommand and must outlive this object.
    Command(CLI::App& app, const std::string& name, const std::string& description)
        : subcommand_(app.add_subcommand(name, description)) {
        subcommand_->footer(""); // the program's own is long
    }

    CLI::App& subcommand() { return *subcommand_; }

    void addSeconds(const std::string& option, double& seconds, const std::string& description);
    void addTimeout(PedalOptions& pedal);

private:
    CLI::App* subcommand_;
};

/// list: the four slots' names, as the pedal sends them.
class ListCommand final : public Command {
public:
    ListCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;

private:
    PedalOptions& pedal_;
    bool json_ = false;
};

/// What load and clear share: one slot's upload on a pedal, and how its end is told.
class SlotCommand : public Command {
protected:
    SlotCommand(CLI::App& app, PedalOptions& pedal, const std::string& name,
                const std::string& description);

    std::uint32_t slot() const { return slot_; }

    /// Checks the IR file before the pedal is touched, then loads it: under its own name, or, when
    /// `clearing`, under the slot's default name.
    ExitStatus loadIntoSlot(const std::string& file, bool clearing);

private:
    PedalOptions& pedal_;
    std::uint32_t slot_ = 0;
    double confirmTimeout_ = 600;
};

/// load SLOT FILE
class LoadCommand final : public SlotCommand {
public:
    LoadCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;

private:
    std::string file_;
};

/// clear SLOT
class ClearCommand final : public SlotCommand {
public:
    ClearCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;
};

/// inspect FILE: what would be loaded and what is odd about it; needs no pedal.
class InspectCommand final : public Command {
public:
    explicit InspectCommand(CLI::App& app);
    ExitStatus run() override;

private:
    bool writeFiles(const IRSummary& summary, const Block& block) const;

    std::string file_;
    std::string blockFile_;
    std::string plotFile_;
    bool json_ = false;
};

} // namespace cabslot
