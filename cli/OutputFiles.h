// The output files of a command: all are checked before anything is written, then written whole.
#pragma once

#include "base/Output.h"
#include "cli/ExitStatus.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cabslot {

struct Output {
    std::string path; ///< empty: not asked for
    std::vector<std::uint8_t> bytes;
};

/// Whether `path` is a folder for outputs; if not, reports it.
bool isFolder(const std::string& path);

/// The rule for all of them: an output never replaces an input or another output, and an existing
/// file only if the user asked for that. A pipe with a reader and a device are written directly.
///
/// Main thread, but write() on any.
class OutputFiles {
public:
    /// `replaces`: existing files may be replaced.
    explicit OutputFiles(bool replaces) : replaces_(replaces) {}

    /// Adds a file that the command reads.
    void addInput(const std::string& path);

    /// Adds an output that was asked for, unless `path` is empty. Reports why it must not be
    /// written. Add the inputs first.
    void add(const std::string& path);

    /// The same for a file that is written line by line: refuses pipes, whose reader could block
    /// the program.
    void addLog(const std::string& path);

    bool mayWrite() const { return mayWrite_; } ///< nothing was reported

    /// Writes outputs that were added; returns a message about the first that fails, or an empty
    /// text. After a failure those that were not there before are gone again.
    std::string write(const std::vector<Output>& outputs) const;

    /// The same, but reports the failure and returns the command's status.
    ExitStatus writeAndReport(const std::vector<Output>& outputs) const;

private:
    struct Added {
        std::string path;
        OutputPlace place;
    };

    std::string whyNot(const std::string& path, const OutputPlace& place) const;
    void add(const std::string& path, OutputPlace place, const std::string& whyNot);
    const Added& addedAs(const std::string& path) const;
    std::string writeOne(const Output& output) const;

    bool replaces_;
    bool mayWrite_ = true;
    std::vector<std::string> inputs_;
    std::vector<Added> outputs_;
};

/// Reports it if the pedal would refuse the name of a WAV file that is written.
void warnOfName(const std::string& path);

} // namespace cabslot
