// The unpacker, and the simulated pedal's parser, against a second opinion: just the frames that
// the written rules say are delivered, whole and in order; by the unpacker tick by tick.
//
// Input: pieces, then a script for the stream.
#include "device/DeviceCommands.h"
#include "device/ReceiveBuffer.h"
#include "fuzz/ReceiverState.h"
#include "fuzz/StreamRules.h"
#include "fuzz/StreamScript.h"

namespace {

cabslot::fuzz::Bytes delivered; // all frames of this input, one behind the other

} // namespace

// The linker leads the unpacker's calls of CMD_Callback here.
extern "C" void realCallback(const std::uint8_t* frame) asm("__real__ZN7cabslot12CMD_CallbackEPKh");
extern "C" void
wrappedCallback(const std::uint8_t* frame) asm("__wrap__ZN7cabslot12CMD_CallbackEPKh");

void wrappedCallback(const std::uint8_t* frame) {
    cabslot::fuzz::append(delivered,
                          {frame, cabslot::FrameView(frame).length() + cabslot::frameOverhead});
    realCallback(frame);
}

namespace cabslot::fuzz {
namespace {

constexpr std::size_t streamLimit = 12000; // the ring buffer's 10240 and some, so that it wraps
constexpr int idleTicks = 3;

/// Goes through the stream's events tick by tick.
class Expectation {
public:
    explicit Expectation(View stream) : stream_(stream), events_(eventsOf(stream)) {}

    /// What can happen while the first `come` bytes are there happens.
    void passTick(std::size_t come) {
        while (!done() && events_[next_].need <= come) {
            const StreamEvent& event = events_[next_++];
            if (!event.isFrame)
                return; // one stray byte a tick
            append(delivered_, stream_.subspan(event.begin, event.end - event.begin));
        }
    }

    bool done() const { return next_ == events_.size(); }
    const Bytes& delivered() const { return delivered_; }

private:
    View stream_;
    std::vector<StreamEvent> events_;
    std::size_t next_ = 0;
    Bytes delivered_;
};

void tickBoth(Expectation& expectation, std::size_t come) {
    expectation.passTick(come);
    tick();
    demand(delivered == expectation.delivered(), "the frames delivered are those of the rules");
}

// The pedal's parser keeps no ticks: it is compared at the stream's end.
void demandPedalFindsTheSame(View stream, Pieces pieces) {
    Bytes expected;
    for (const StreamEvent& event : eventsOf(stream))
        if (event.isFrame)
            append(expected, stream.subspan(event.begin, event.end - event.begin));
    simulator::FrameParser parser;
    Bytes found;
    std::size_t skipped = 0;
    for (std::size_t fed = 0; fed < stream.size();) {
        const std::size_t size = std::min(pieces.next().size, stream.size() - fed);
        for (const simulator::Frame& frame : parser.feed(stream.subspan(fed, size)))
            append(found, frame.command ? simulator::encodeFrame(*frame.command, frame.payload)
                                        : Bytes{0xAA, 0x55, 0, 0, 0xFF, 0xFF});
        fed += size;
        skipped += parser.takeSkipped();
        demand(fed >= found.size() + skipped, "no byte is used twice");
        demand(fed - found.size() - skipped < 1024, "less than one frame is held");
    }
    demand(found == expected, "the pedal finds the frames of the rules");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    cabslot::resetSharedState();
    delivered.clear();
    Input input(data, size);
    Pieces pieces(input);
    const Bytes stream = streamFromScript(input, streamLimit);
    demandPedalFindsTheSame(stream, pieces);
    Expectation expectation(stream);
    for (std::size_t come = 0; come < stream.size();) {
        const Pieces::Piece piece = pieces.next();
        const View bytes = View(stream).subspan(come, std::min(piece.size, stream.size() - come));
        while (cabslot::rxBufferSize - cabslot::rx_buffer_count < bytes.size())
            tickBoth(expectation, come);
        cabslot::putRX_buffer(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        come += bytes.size();
        for (std::size_t i = 0; i < piece.ticks; ++i)
            tickBoth(expectation, come);
    }
    while (!expectation.done())
        tickBoth(expectation, stream.size());
    for (int i = 0; i < idleTicks; ++i)
        tickBoth(expectation, stream.size());
    return 0;
}
