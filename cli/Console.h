// What goes to the terminal: messages and progress on standard error, names fit for reading.
#pragma once

#include <string>

namespace cabslot {

/// Writes "cabslotctl: " and the message, one line, to standard error.
void complain(const std::string& message);

/// `name` as a line of text can show it: without the blanks at its end, control characters as "?".
std::string shownName(const std::string& name);

/// One line on standard error that is written over and over; shows nothing unless that is a
/// terminal. The line is wiped when the object goes.
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

/// From now on Ctrl-C (SIGINT) and SIGTERM do not end the process: they make interrupted() true.
void catchInterrupts();
bool interrupted();

} // namespace cabslot
