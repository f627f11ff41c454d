// A sound server of the test's own, with a null output whose monitor is recorded.
#pragma once

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace cabslot::testing {

/// A program that ends with the test.
class Child {
public:
    explicit Child(const std::string& command) : process_(::fork()) {
        if (process_ == 0) {
            ::execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
            ::_exit(127);
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { end(SIGTERM); }

    void end(int signal) {
        if (process_ > 0) {
            ::kill(process_, signal);
            ::waitpid(process_, nullptr, 0);
        }
        process_ = -1;
    }

private:
    pid_t process_;
};

/// Other tests keep the machine busy, and sound cannot wait: where it may, it comes first.
struct Urgent {
    Urgent() { [[maybe_unused]] const int refused = ::setpriority(PRIO_PROCESS, 0, -15); }
};

class SoundServer : public ::testing::Test {
protected:
    SoundServer() {
        for (const char* variable : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"})
            ::setenv(variable, folder.path().c_str(), 1);
        ::setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
        ::setenv("PULSE_LATENCY_MSEC", "200", 1);
        ::unsetenv("SDL_AUDIODRIVER");
        waitFor([this] { return std::filesystem::exists(socket); });
    }

    template<typename Check>
    static void waitFor(const Check& check) {
        for (int i = 0; i < 1000 && !check(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ASSERT_TRUE(check());
    }

    /// While it lives, what is played goes into `recording`.
    struct Recorder {
        explicit Recorder(const SoundServer& server)
            : child("parec -d t.monitor --rate=44100 --channels=1 --format=float32le"
                    " --latency-msec=20 >" +
                    server.recording) {
            waitFor([&] { return !contentOf(server.recording).empty(); });
        }
        Child child;
    };

    std::vector<float> recorded() const {
        const std::string bytes = contentOf(recording);
        std::vector<float> samples(bytes.size() / sizeof(float));
        std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
        return samples;
    }

    Urgent urgent;
    TempFolder folder;
    std::string socket = folder.path("socket");
    std::string recording = folder.path("recording");
    Child server{"pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --log-level=0"
                 " -L 'module-null-sink sink_name=t rate=44100 channels=1'"
                 " -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
                 socket + "'"};
};

} // namespace cabslot::testing
