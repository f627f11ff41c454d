// Shared by the fuzz targets: reading an input piece by piece, and checking what must hold.
//
// Any bytes are valid input. The first ones select what to do, the rest are data. Reading past the
// end gives zeros, so that a truncated input means nearly the same as the whole one.
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

/// Aborts with `what` on standard error unless it holds; the fuzzer keeps the input.
inline void check(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Violated: %s\n", what);
    std::abort();
}

/// Set for a run over few inputs, such as the seeds: every check then runs on each of them.
inline bool everyInput = std::getenv("CABSLOT_EVERY_INPUT") != nullptr;

/// Whether the expensive checks run on an input of this size: one size in eight. The same input
/// always gets the same checks, so that a finding can be reproduced.
inline bool isInSample(std::size_t inputSize) {
    return everyInput || inputSize % 8 == 0;
}

/// An input, read from start to end. The bytes must outlive this and the views that it returns.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : left_(data, size) {}

    bool empty() const { return left_.empty(); }

    std::uint8_t byte() {
        const View one = bytes(1);
        return one.empty() ? std::uint8_t{0} : one.front();
    }

    /// Two bytes, little-endian.
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

    /// A count byte, then that many bytes.
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
