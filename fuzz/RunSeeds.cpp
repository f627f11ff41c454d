// Runs a fuzz target over all files of a folder, without the fuzzer: the seeds are part of ./test.
#include "fuzz/Fuzzing.h"
#include "tests/support/Files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int /*argc*/, char** argv) {
    cabslot::fuzz::everyInput = true;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        const std::string path = entry.path().string();
        std::fprintf(stderr, "%s\n", path.c_str()); // the last path printed is the one that failed
        const std::string seed = cabslot::testing::contentOf(path);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(seed.data()), seed.size());
        ++count;
    }
    return count > 0 ? 0 : 1;
}
