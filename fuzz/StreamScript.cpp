#include "fuzz/StreamScript.h"

#include "simulator/pedal/PedalFrames.h"

namespace cabslot::fuzz {

namespace {

constexpr std::size_t longestFilled = 1100; // some way beyond the longest that is received
constexpr std::size_t importSteps = 7;

Bytes frameAround(View body) {
    Bytes frame = {0xAA, 0x55, static_cast<std::uint8_t>(body.size()),
                   static_cast<std::uint8_t>(body.size() >> 8)};
    append(frame, body);
    const unsigned crc = simulator::crcOf(View(frame).subspan(2));
    frame.push_back(static_cast<std::uint8_t>(crc >> 8));
    frame.push_back(static_cast<std::uint8_t>(crc));
    return frame;
}

Bytes text(Input& script) {
    const std::size_t count = script.byte();
    return script.bytes(count);
}

Bytes importFrame(std::uint8_t step, std::uint8_t slot, std::uint8_t flag, std::uint8_t fill) {
    Bytes body = {0xE9, step, slot, flag};
    body.resize(body.size() + (step == 0 ? 15 : 512), fill);
    return frameAround(body);
}

Bytes allData(std::uint8_t flag, std::uint8_t fill) {
    Bytes body(1 + 78, fill);
    body[0] = 0xF7;
    body[1 + 2] = flag;
    return frameAround(body);
}

Bytes filled(Input& script) {
    const std::size_t length = script.number16() % longestFilled;
    return frameAround(Bytes(length, script.byte()));
}

Bytes spoilt(Input& script) {
    Bytes frame = frameAround(text(script));
    const std::size_t place = script.byte() % frame.size();
    frame[place] ^= static_cast<std::uint8_t>(script.byte() | 1);
    return frame;
}

Bytes cut(Input& script) {
    Bytes frame = frameAround(text(script));
    frame.resize(script.byte() % frame.size());
    return frame;
}

Bytes header(Input& script) {
    const std::uint8_t low = script.byte();
    return {0xAA, 0x55, low, script.byte()};
}

void wrap(Bytes& stream, std::size_t count) {
    const Bytes body(stream.end() - static_cast<std::ptrdiff_t>(std::min(count, stream.size())),
                     stream.end());
    stream.resize(stream.size() - body.size());
    append(stream, frameAround(body));
}

void addStep(Input& script, Bytes& stream) {
    // The arguments' order is the script's: each is read before the next.
    const auto step = static_cast<ScriptStep>(script.byte() % static_cast<int>(ScriptStep::count));
    std::uint8_t numbers[4] = {};
    const auto read = [&](std::size_t count) {
        std::generate_n(numbers, count, [&] { return script.byte(); });
    };
    switch (step) {
    case ScriptStep::strayBytes:
        return append(stream, text(script));
    case ScriptStep::frame:
        return append(stream, frameAround(text(script)));
    case ScriptStep::filledFrame:
        return append(stream, filled(script));
    case ScriptStep::spoiltFrame:
        return append(stream, spoilt(script));
    case ScriptStep::cutFrame:
        return append(stream, cut(script));
    case ScriptStep::header:
        return append(stream, header(script));
    case ScriptStep::wrap:
        return wrap(stream, script.byte());
    case ScriptStep::importFrame:
        read(4);
        return append(stream, importFrame(numbers[0], numbers[1], numbers[2], numbers[3]));
    case ScriptStep::wholeImport:
        read(3);
        for (std::uint8_t i = 0; i < importSteps; ++i)
            append(stream, importFrame(i, numbers[0], numbers[1], numbers[2]));
        return;
    case ScriptStep::allData:
        read(2);
        return append(stream, allData(numbers[0], numbers[1]));
    case ScriptStep::count:
        return;
    }
}

} // namespace

Bytes streamFromScript(Input& script, std::size_t limit) {
    Bytes stream;
    while (!script.empty() && stream.size() < limit)
        addStep(script, stream);
    return stream;
}

Pieces::Piece Pieces::next() {
    if (plan_.empty())
        return {64, 1};
    const std::uint8_t plan = plan_[position_++ % plan_.size()];
    return {(plan & 0x3FU) + 1U, static_cast<std::size_t>(plan >> 6)};
}

} // namespace cabslot::fuzz
