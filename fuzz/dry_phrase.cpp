// Dry phrases of any content. libsndfile wants a file: it is one in memory, the same for all
// inputs.
//
// Input: the file.
#include "audition/sound/PhraseFile.h"
#include "fuzz/Fuzzing.h"

#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot;
    using fuzz::demand;
    static const int file = ::memfd_create("phrase", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    const auto written = static_cast<std::size_t>(::pwrite(file, data, size, 0));
    demand(written == size && ::ftruncate(file, static_cast<off_t>(size)) == 0, "memory is there");

    const PhraseSamples phrase = readPhrase(path);
    demand(phrase.samples.empty() == !phrase.whyNot.empty(), "just a refusal has a reason");
    demand(static_cast<double>(phrase.samples.size()) <= longestPhrase * soundRate + 1,
           "of a long one the start is used");
    demand(std::ranges::none_of(phrase.samples, [](float x) { return x != x; }), "all are numbers");
    return 0;
}
