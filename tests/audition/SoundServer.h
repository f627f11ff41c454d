// A private sound server with a null output whose monitor is recorded.
#pragma once

#include "tests/support/Programs.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace cabslot::testing {

/// Raises the priority if allowed: other tests keep the machine busy, and sound cannot wait.
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
        ASSERT_TRUE(eventually(check));
    }

    /// Records what is played, for as long as this object lives.
    struct Recorder {
        explicit Recorder(SoundServer& server)
            : program({"/usr/bin/parec", "-d", "t.monitor", "--rate=44100", "--channels=1",
                       "--format=float32le", "--latency-msec=20"},
                      server.folder, "recording") {
            waitFor([this] { return !program.out().empty(); });
        }
        Program program;
    };

    std::vector<float> recorded() const {
        const std::string bytes = contentOf(folder.path("recording.out"));
        std::vector<float> samples(bytes.size() / sizeof(float));
        std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
        return samples;
    }

    Urgent urgent;
    TempFolder folder;
    std::string socket = folder.path("socket");
    Program server{{"/usr/bin/pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                    "--use-pid-file=no", "--log-level=0", "-L",
                    "module-null-sink sink_name=t rate=44100 channels=1", "-L",
                    "module-native-protocol-unix auth-anonymous=1 socket=" + socket},
                   folder,
                   "server"};
};

} // namespace cabslot::testing
