#include "cli/Console.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>

namespace cabslot {

namespace {

std::atomic<bool> interruptSeen{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler writes it");

constexpr const char* wipeLine = "\r\033[K";

// Length of the control character at `at`, C0, DEL or C1 (two bytes in UTF-8); 0 if it is none.
std::size_t controlLength(const std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(at) < 0x20 || byte(at) == 0x7F)
        return 1;
    const bool c1 = byte(at) == 0xC2 && at + 1 < text.size() && byte(at + 1) < 0xA0;
    return c1 ? 2 : 0;
}

} // namespace

void complain(const std::string& message) {
    std::fprintf(stderr, "cabslotctl: %s\n", message.c_str());
}

std::string shownName(const std::string& name) {
    std::string shown;
    for (std::size_t i = 0; i < name.size();) {
        const std::size_t control = controlLength(name, i);
        shown += control > 0 ? '?' : name[i];
        i += control > 0 ? control : 1;
    }
    shown.erase(shown.find_last_not_of(' ') + 1);
    return shown;
}

ProgressLine::ProgressLine() : onTerminal_(::isatty(STDERR_FILENO) == 1) {}

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
        std::signal(signal, [](int) { interruptSeen = true; });
}

bool interrupted() {
    return interruptSeen;
}

} // namespace cabslot
