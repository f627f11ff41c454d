// The unpacker against a reference: exactly the frames that the rules predict are delivered, whole
// and in order, tick by tick. On a sample of the inputs, the simulated pedal's parser, too.
//
// Input: the ring's start index, pieces, then a script for the stream.
#include "device/DeviceCommands.h"
#include "device/ReceiveBuffer.h"
#include "fuzz/ReceiverState.h"
#include "fuzz/StreamScript.h"

static cabslot::fuzz::Bytes delivered; // all frames of this input, concatenated

// The linker redirects the unpacker's calls of CMD_Callback to this.
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

constexpr std::size_t streamLimit = 1500; // more than one of the longest frames

void tickBoth(Expectation& expectation, std::size_t come) {
    expectation.passTick(come);
    tick();
    check(delivered.size() == expectation.delivered().size(), "each comes in its tick");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    cabslot::resetSharedState();
    delivered.clear();
    Input input(data, size);
    cabslot::rx_buffer_readp = cabslot::rx_buffer_writep =
        static_cast<std::uint32_t>(input.number16() % cabslot::rxBufferSize);
    Pieces pieces(input);
    const Pieces samePieces = pieces;
    const Bytes stream = streamFromScript(input, streamLimit);
    Expectation expectation(stream);
    for (std::size_t come = 0; come < stream.size();) {
        const Pieces::Piece piece = pieces.next();
        const View bytes = View(stream).subspan(come, std::min(piece.size, stream.size() - come));
        check(cabslot::putRX_buffer(bytes.data(), static_cast<std::uint32_t>(bytes.size())) == 1,
              "the ring accepts what fits");
        come += bytes.size();
        for (std::size_t i = 0; i < piece.ticks; ++i)
            tickBoth(expectation, come);
    }
    // A thousand stray bytes take as many ticks: all of them on the sample only.
    for (int i = 0; !expectation.done() && (i < 200 || isInSample(size)); ++i)
        tickBoth(expectation, stream.size());
    tickBoth(expectation, stream.size()); // an idle tick
    check(delivered == expectation.delivered(), "the frames are those predicted");
    if (isInSample(size))
        checkPedalFinds(delivered, stream, samePieces);
    return 0;
}
