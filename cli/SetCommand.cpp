#include "cli/SetCommand.h"

#include "analysis/IRSummary.h"
#include "base/PathText.h"
#include "base/VisibleText.h"
#include "cli/Console.h"
#include "cli/OutputFiles.h"
#include "cli/SetShow.h"
#include "cli/SlotCommand.h"
#include "cli/SlotFiles.h"
#include "device/SharedState.h"
#include "irfile/IRFile.h"
#include "irfile/NameField.h"
#include "memory/SlotMemory.h"
#include "sets/SetFile.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace cabslot {

namespace {

constexpr const char* fileHelp = "A set, *.cabset";
constexpr const char* newFileHelp = "The set to write, *.cabset";

/// The arguments SLOT ..., which choose slots; all four if none is given.
class ChosenSlots {
public:
    void addTo(Arguments& arguments) {
        arguments.add({.name = "SLOT",
                       .help = "The user slots, " + slotNumbers() + "; all if not given",
                       .reader = intoSlots(slots_),
                       .many = true});
        arguments.addCheck([this] { return whyRepeated(slots_); });
    }

    bool has(std::uint32_t slot) const {
        return slots_.empty() || std::ranges::find(slots_, slot) != slots_.end();
    }

private:
    std::vector<std::uint32_t> slots_;
};

Output outputOf(const std::string& file, const SlotSet& set) {
    const std::string text = setText(set);
    return {file, {text.begin(), text.end()}};
}

void printNames(const SlotSet& set) {
    for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
        if (const auto& ir = set.at(slot - 1))
            std::cout << defaultSlotName(slot) << ": " << shownName(nameText(ir->name)) << '\n';
    }
}

class SetSave final : public Command {
public:
    SetSave(Arguments& parent, CommonOptions& options)
        : Command(parent, "save", "Save what this computer knows of the pedal's slots as a set"),
          options_(options) {
        addFile("FILE", file_, newFileHelp);
        slots_.addTo(arguments());
        addForce(options);
        addTimeout(options.timeout);
    }

    ExitStatus run() override {
        OutputFiles outputs(options_.force);
        outputs.add(file_);
        if (!outputs.mayWrite())
            return ExitStatus::wrongUsage;
        PedalSession session(options_);
        if (const ExitStatus connected = session.connect({file_}); connected != ExitStatus::done)
            return connected;
        const SlotSet set = knownSlots();
        if (std::ranges::none_of(set, &std::optional<IR>::has_value)) {
            complain(file_ + " was not written: there is nothing to save");
            return ExitStatus::fileRefused;
        }
        const ExitStatus written = outputs.writeAndReport({outputOf(file_, set)});
        if (written == ExitStatus::done)
            printNames(set);
        return written;
    }

private:
    /// Those that were chosen; reports which of them are unknown.
    SlotSet knownSlots() const {
        SlotMemory memory(options_.pedal, complain);
        SlotSet set = rememberedSet(memory, IRNameArr.all());
        for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
            if (!slots_.has(slot))
                set.at(slot - 1).reset();
            else if (!set.at(slot - 1))
                complain(defaultSlotName(slot) +
                         " is left out: it was not loaded from this computer");
        }
        return set;
    }

    CommonOptions& options_;
    std::string file_;
    ChosenSlots slots_;
};

class SetLoad final : public SlotCommand {
public:
    SetLoad(Arguments& parent, CommonOptions& options)
        : SlotCommand(parent, options, "load", "Load a set into the slots") {
        addFile("FILE", file_, fileHelp);
        slots_.addTo(arguments());
    }

    ExitStatus run() override {
        const ReadSet read = readSet(file_);
        if (!read)
            return refuse(file_, read.whyRefused);
        const std::vector<SlotJob> jobs = jobsFrom(read.set);
        if (jobs.empty())
            return refuse(file_, "there is nothing in it to load");
        PedalSession session(options());
        const ExitStatus connected = session.connect({file_});
        return connected == ExitStatus::done ? upload(jobs, session) : connected;
    }

private:
    /// For the chosen slots; reports which of them are unknown.
    std::vector<SlotJob> jobsFrom(const SlotSet& set) const {
        std::vector<SlotJob> jobs;
        for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
            const auto& ir = set.at(slot - 1);
            if (!slots_.has(slot))
                continue;
            if (ir)
                jobs.push_back({.slot = slot, .ir = *ir, .findings = findingsOf(*ir)});
            else
                complain(defaultSlotName(slot) + " stays as it is: the set does not know it");
        }
        return jobs;
    }

    static std::vector<Finding> findingsOf(const IR& ir) {
        return summaryOf(ir.block, {}, {}).findings;
    }

    std::string file_;
    ChosenSlots slots_;
};

class SetExport final : public Command {
public:
    SetExport(Arguments& parent, CommonOptions& options)
        : Command(parent, "export", "Write a set's IRs as WAV files into a folder; needs no pedal"),
          options_(options) {
        addFile("FILE", file_, fileHelp);
        addFile("FOLDER", folder_, "The folder, which must exist");
        addForce(options);
    }

    ExitStatus run() override {
        const ReadSet read = readSet(file_);
        if (!read)
            return refuse(file_, read.whyRefused);
        OutputFiles outputs(options_.force);
        outputs.addInput(file_);
        if (!isFolder(folder_))
            return ExitStatus::wrongUsage;
        std::vector<Output> files;
        for (ExportedIR& ir : exported(read.set)) {
            files.push_back({textOf(pathOf(folder_) / pathOf(ir.file)), std::move(ir.wav)});
            outputs.add(files.back().path);
            if (!ir.keepsName)
                complain(files.back().path + " cannot have " + defaultSlotName(ir.slot) +
                         "'s name; use load --name to give it");
        }
        if (!outputs.mayWrite())
            return ExitStatus::wrongUsage;
        const ExitStatus written = outputs.writeAndReport(files);
        if (written == ExitStatus::done) {
            for (const Output& file : files)
                std::cout << visibleText(file.path) << '\n';
        }
        return written;
    }

private:
    CommonOptions& options_;
    std::string file_;
    std::string folder_;
};

class SetNew final : public Command {
public:
    SetNew(Arguments& parent, CommonOptions& options)
        : Command(parent, "new", "Make a set from IR files; needs no pedal"), options_(options) {
        addFile("SET", file_, newFileHelp);
        files_.addTo(arguments());
        addForce(options);
        arguments().addCheck([this] { return files_.whatIsWrong(); });
    }

    ExitStatus run() override {
        SlotSet set;
        OutputFiles outputs(options_.force);
        ExitStatus status = ExitStatus::done;
        for (const auto& [slot, file] : files_.pairs()) {
            outputs.addInput(file);
            const ReadIR read = readIR(file, interrupted);
            if (read)
                set.at(slot - 1) = recordOf(read.ir, {}).ir; // with an absolute path
            else
                status = refuse(file, read.whyRefused);
        }
        if (status != ExitStatus::done)
            return interrupted() ? ExitStatus::interrupted : status;
        outputs.add(file_);
        if (!outputs.mayWrite())
            return ExitStatus::wrongUsage;
        status = outputs.writeAndReport({outputOf(file_, set)});
        if (status == ExitStatus::done)
            printNames(set);
        return status;
    }

private:
    CommonOptions& options_;
    std::string file_;
    SlotFiles files_;
};

// In the order of the help.
constexpr CommandMaker commandTable[] = {
    make<SetSave>, make<SetShow>, make<SetLoad>, make<SetExport>, make<SetNew>,
};

} // namespace

SetCommand::SetCommand(Arguments& program, CommonOptions& options)
    : CommandGroup(program, options, "set", "Save, show, load and make sets of all four slots",
                   commandTable) {}

} // namespace cabslot
