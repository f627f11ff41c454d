// Runs the built programs as a user would: cabslotctl until it ends, cabslot-sim in parallel.
#pragma once

#include "tests/support/Eventually.h"
#include "tests/support/WavBuilder.h"
#include "tests/support/WithVariable.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

namespace cabslot::testing {

/// A child process whose output goes to files in a folder.
class Program {
public:
    Program(std::vector<std::string> arguments, const TempFolder& folder, const std::string& name)
        : out_(folder.path(name + ".out")), err_(folder.path(name + ".err")) {
        for (const std::string& old : {out_, err_})
            std::filesystem::remove(old); // removes an earlier program's output
        pid_ = ::fork();
        if (pid_ == 0) {
            redirect(out_, STDOUT_FILENO);
            redirect(err_, STDERR_FILENO);
            std::vector<char*> argv;
            for (std::string& argument : arguments)
                argv.push_back(argument.data());
            argv.push_back(nullptr);
            ::execv(argv[0], argv.data());
            ::_exit(127);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (pid_ > 0) {
            signal(SIGTERM);
            wait();
        }
    }

    void signal(int number) const { ::kill(pid_, number); }

    /// The exit status, or -1 after a crash.
    int wait() {
        int status = 0;
        ::waitpid(std::exchange(pid_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string out() const { return contentOf(out_); }
    std::string err() const { return contentOf(err_); }

    /// Waits for `text`; false if the program ends, or ten seconds pass, without it.
    bool hasPrinted(const std::string& text) const {
        bool found = false;
        return eventually([&] {
                   const bool ended = hasEnded(); // before the look, which then sees everything
                   found = out().find(text) != std::string::npos;
                   return found || ended;
               }) &&
               found;
    }

private:
    bool hasEnded() const {
        siginfo_t state{};
        return ::waitid(P_PID, static_cast<id_t>(pid_), &state, WEXITED | WNOHANG | WNOWAIT) != 0 ||
               state.si_pid != 0;
    }

    static void redirect(const std::string& path, int stream) {
        const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        ::dup2(fd, stream);
    }

    pid_t pid_ = -1;
    std::string out_;
    std::string err_;
};

/// A folder, a simulated pedal in it after startPedal(), and cabslotctl to talk to it.
class ProgramTest : public ::testing::Test {
protected:
    /// Ends a running pedal and starts another one on the same socket and folder.
    void startPedal(std::vector<std::string> options = {}, const std::string& confirmDelay = "20") {
        pedal.reset();
        options.insert(options.begin(), {CABSLOT_SIM, "--socket", socket, "--state",
                                         folder.path("st"), "--confirm-delay", confirmDelay});
        pedal = std::make_unique<Program>(std::move(options), folder, "pedal");
        ASSERT_TRUE(pedal->hasPrinted("listening on " + socket)) << pedal->err();
    }

    std::unique_ptr<Program> start(std::vector<std::string> arguments,
                                   const std::string& pedalChoice = {}) {
        arguments.insert(arguments.begin(), {CABSLOTCTL, "--pedal",
                                             pedalChoice.empty() ? "unix:" + socket : pedalChoice});
        return std::make_unique<Program>(std::move(arguments), folder, "ctl");
    }

    /// Runs cabslotctl to its end; what it printed is in `out` and `err`.
    int run(std::vector<std::string> arguments, const std::string& pedalChoice = {}) {
        const auto program = start(std::move(arguments), pedalChoice);
        const int status = program->wait();
        out = program->out();
        err = program->err();
        return status;
    }

    /// Whether the last run printed `text`; a failure shows what it printed.
    ::testing::AssertionResult errHas(const std::string& text) const {
        return ::testing::IsSubstring("text", "err", text, err);
    }
    ::testing::AssertionResult outHas(const std::string& text) const {
        return ::testing::IsSubstring("text", "out", text, out);
    }

    std::string wav(const std::string& name = "Cab.wav") {
        return folder.write(name, WavBuilder{}.add(0x1234).add(-2).bytes());
    }

    TempFolder folder;
    const WithVariable memory{"CABSLOT_STATE", folder.path("memory")};
    std::string socket = folder.path("pedal.sock");
    std::unique_ptr<Program> pedal;
    std::string out;
    std::string err;
};

} // namespace cabslot::testing
