// Dry phrases of any content. libsndfile needs a file: it is in memory, the same one for all
// inputs.
//
// Input: the file.
#include "audition/sound/PhraseFile.h"
#include "fuzz/Fuzzing.h"

#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot;
    using fuzz::check;
    static const int file = ::memfd_create("phrase", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    const auto written = static_cast<std::size_t>(::pwrite(file, data, size, 0));
    check(written == size && ::ftruncate(file, static_cast<off_t>(size)) == 0, "it is written");

    const PhraseSamples phrase = readPhrase(path);
    check(phrase.samples.empty() == !phrase.whyNot.empty(), "exactly the refusals have a reason");
    check(static_cast<double>(phrase.samples.size()) <= longestPhrase * soundRate + 1,
          "at most the start of a long phrase is used");
    check(std::ranges::none_of(phrase.samples, [](float x) { return x != x; }), "all are numbers");
    return 0;
}
