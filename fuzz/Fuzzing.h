// What the fuzz targets share: an input is read piece by piece, and what must hold is demanded.
//
// A target takes any bytes. The first of them choose, the rest are data; one that has run out reads
// as zeros, so that every input means something and a cut one means nearly the same.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

namespace cabslot::fuzz {

using Bytes = std::vector<std::uint8_t>;
using View = std::span<const std::uint8_t>;

/// Ends the process, with `what` on standard error, unless it holds; the fuzzer keeps the input.
inline void demand(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Demanded in vain: %s\n", what);
    std::abort();
}

/// Set where inputs are few, as the seeds are: then nothing is checked on a sample only.
inline bool everyInput = std::getenv("CABSLOT_EVERY_INPUT") != nullptr;

/// Whether to spend time on the costly checks of an input of this size: one size in eight. The same
/// input always gets the same checks, so that what was found is found again.
inline bool isInSample(std::size_t inputSize) {
    return everyInput || inputSize % 8 == 0;
}

/// An input, read from its start to its end. The bytes must outlive this and what it gives.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : left_(data, size) {}

    bool empty() const { return left_.empty(); }

    std::uint8_t byte() {
        const View one = bytes(1);
        return one.empty() ? std::uint8_t{0} : one.front();
    }

    /// Two bytes, the lower first.
    std::size_t number16() {
        const std::size_t low = byte();
        return low | static_cast<std::size_t>(byte()) << 8;
    }

    /// The next `count` bytes, or as many as are left.
    View bytes(std::size_t count) {
        const View taken = left_.first(std::min(count, left_.size()));
        left_ = left_.subspan(taken.size());
        return taken;
    }

    /// A count byte and so many bytes.
    View counted() { return bytes(byte()); }
    std::string text() {
        const View bytes = counted();
        return {bytes.begin(), bytes.end()};
    }

    View rest() { return bytes(left_.size()); }

private:
    View left_;
};

inline void append(Bytes& bytes, View more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace cabslot::fuzz
