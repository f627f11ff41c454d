// Bytes as a bus may bring them, through the ring buffer and the unpacker.
//
// Input: a row of choices. 0 to 191: put so many of the bytes that follow; 192 to 223: so many
// ticks, none to 31; 224 to 254: put the last piece again, 1 to 31 times; 255: empty the buffer.
#include "device/ReceiveBuffer.h"
#include "fuzz/ReceiverState.h"

#include <deque>

namespace cabslot::fuzz {
namespace {

constexpr std::uint8_t firstTicks = 192;
constexpr std::uint8_t firstAgain = 224;
constexpr std::uint8_t emptied = 255;

/// The ring buffer beside a plain queue that is told the same.
class WatchedBuffer {
public:
    void put(View bytes) {
        const bool fits = bytes.size() <= rxBufferSize - rx_buffer_count;
        const int stored = putRX_buffer(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        demand(stored == (fits ? 1 : 0), "bytes are stored when they all fit, and only then");
        if (fits)
            expected_.insert(expected_.end(), bytes.begin(), bytes.end());
        demandCount();
    }

    void tickOnce() {
        tick();
        while (expected_.size() > rx_buffer_count)
            expected_.pop_front();
        demandCount();
    }

    void clear() {
        ClearRx_buffer();
        expected_.clear();
        demandCount();
    }

    void demandBytes() const {
        Bytes stored(rx_buffer_count);
        demand(getRX_buffer(rx_buffer_count + 1, nullptr) == 0, "more than there is is not given");
        demand(getRX_buffer(rx_buffer_count, stored.data()) == 1, "all there is is given");
        demand(std::equal(stored.begin(), stored.end(), expected_.begin(), expected_.end()),
               "what is stored is what was put and not yet taken");
    }

private:
    void demandCount() const {
        demandReceiverInOrder();
        demand(rx_buffer_count == expected_.size(), "no byte is lost or made");
    }

    std::deque<std::uint8_t> expected_;
};

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    cabslot::resetSharedState();
    Input input(data, size);
    WatchedBuffer buffer;
    Bytes piece;
    while (!input.empty()) {
        const std::uint8_t choice = input.byte();
        if (choice < firstTicks)
            buffer.put(piece = input.bytes(choice));
        else if (choice == emptied)
            buffer.clear();
        for (int i = firstTicks; i < choice && choice < firstAgain; ++i)
            buffer.tickOnce();
        for (int i = firstAgain; i <= choice && choice >= firstAgain && choice < emptied; ++i)
            buffer.put(piece);
    }
    buffer.demandBytes();
    return 0;
}
