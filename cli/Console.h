// Terminal output: messages and progress on standard error, and names made safe to print.
#pragma once

#include <string>

namespace cabslot {

/// Writes "cabslotctl: " and the message, one line, to standard error.
void complain(const std::string& message);

/// `name` ready to print: without trailing blanks, control characters as "?".
std::string shownName(const std::string& name);

/// A line on standard error that is overwritten repeatedly; shows nothing unless that is a
/// terminal. The destructor erases the line.
class ProgressLine {
public:
    ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    void show(const std::string& text);

private:
    bool onTerminal_;
    std::string shown_;
};

/// Makes Ctrl-C (SIGINT) and SIGTERM set interrupted() instead of ending the process.
void catchInterrupts();
bool interrupted();

} // namespace cabslot
