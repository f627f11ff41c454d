#include "cli/Console.h"

#include "base/VisibleText.h"
#include "cli/Terminal.h"

#include <atomic>
#include <csignal>
#include <cstdio>

namespace cabslot {

namespace {

std::atomic<bool> interruptSeen{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler writes it");

constexpr const char* wipeLine = "\r\033[K";

void seeInterrupt(int signal) {
    std::signal(signal, seeInterrupt); // on Windows a handler is reset after one signal
    interruptSeen = true;
}

} // namespace

void complain(const std::string& message) {
    std::fprintf(stderr, "cabslotctl: %s\n", visibleText(message).c_str());
}

std::string shownName(const std::string& name) {
    std::string shown = visibleText(name);
    shown.erase(shown.find_last_not_of(' ') + 1);
    return shown;
}

ProgressLine::ProgressLine() : onTerminal_(standardErrorIsTerminal()) {}

ProgressLine::~ProgressLine() {
    if (!shown_.empty())
        std::fputs(wipeLine, stderr);
}

void ProgressLine::show(const std::string& text) {
    if (!onTerminal_ || text == shown_)
        return;
    shown_ = text;
    std::fprintf(stderr, "%s%s", wipeLine, text.c_str());
    std::fflush(stderr);
}

void catchInterrupts() {
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, seeInterrupt);
}

bool interrupted() {
    return interruptSeen;
}

} // namespace cabslot
