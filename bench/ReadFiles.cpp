// Opens and reads a folder's files with libsndfile, one after the other: the least work for a
// program that inspects them.
//
//   bench_read_files FOLDER
#include <sndfile.h>

#include <cstdio>
#include <filesystem>
#include <vector>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "bench_read_files: see the top of ReadFiles.cpp\n");
        return 1;
    }
    std::vector<float> samples;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        SF_INFO info{};
        SNDFILE* const file = ::sf_open(entry.path().c_str(), SFM_READ, &info);
        if (file == nullptr) {
            std::fprintf(stderr, "bench_read_files: %s\n", ::sf_strerror(nullptr));
            return 1;
        }
        samples.resize(static_cast<std::size_t>(info.frames * info.channels));
        ::sf_readf_float(file, samples.data(), info.frames);
        ::sf_close(file);
    }
}
