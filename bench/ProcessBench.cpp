// Compares two commands as whole processes, run in turn.
//
//   bench_process COUNT COMMAND [ARGUMENT ...] -- COMMAND [ARGUMENT ...]
//
// Prints one line per run: "ours" or "theirs", the milliseconds from start to end, the peak memory
// in KiB. The commands' output is discarded.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "bench_process: %s\n", what);
    std::exit(1);
}

void run(const char* who, char** argv, const posix_spawn_file_actions_t& actions) {
    const auto start = Clock::now();
    pid_t process = 0;
    if (::posix_spawnp(&process, argv[0], &actions, nullptr, argv, environ) != 0)
        fail("a command does not start");
    int status = 0;
    rusage usage{};
    ::wait4(process, &status, 0, &usage);
    const std::chrono::duration<double, std::milli> time = Clock::now() - start;
    if (status != 0)
        fail("a command failed");
    std::printf("%s %.3f %ld\n", who, time.count(), usage.ru_maxrss);
}

} // namespace

int main(int argc, char** argv) {
    int separator = 2;
    while (separator < argc && std::string_view(argv[separator]) != "--")
        ++separator;
    if (separator + 1 >= argc || separator == 2)
        fail("see the top of ProcessBench.cpp");
    argv[separator] = nullptr;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    for (int i = std::atoi(argv[1]); i > 0; --i) {
        run("ours", argv + 2, actions);
        run("theirs", argv + separator + 1, actions);
    }
}
