// From sample bytes to the pedal's block, bit by bit.
//
// The numbers for 48 and 96 kHz come from exact rational arithmetic, rounded to single precision
// after every step, and not from the code under test.
#include "irfile/IRConversion.h"
#include "irfile/IRFile.h"
#include "tests/support/WavBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace cabslot::testing {
namespace {

constexpr std::uint32_t untouched = 0xDEADBEEF;

class Conversion : public ::testing::Test {
protected:
    /// The block of a file with these bytes; all `untouched` if it is refused.
    Block convert(const std::string& bytes) {
        Block block;
        block.fill(untouched);
        file_ = IRFile::read(folder_.write("Test.wav", bytes));
        EXPECT_EQ(file_.whyRefused(), "");
        whyNot_ = file_.convertTo(block);
        return block;
    }

    static Block filled(std::uint32_t value) {
        Block block;
        block.fill(value);
        return block;
    }

    TempFolder folder_;
    IRFile file_;
    std::string whyNot_;
};

/// FNV-1a over a block's entries, lowest byte first.
std::uint64_t digest(const Block& block) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const std::uint32_t entry : block)
        for (int shift = 0; shift < 32; shift += 8)
            hash = (hash ^ (entry >> shift & 0xFF)) * 0x100000001B3;
    return hash;
}

struct Expected {
    std::uint16_t bits;
    std::int32_t scale; ///< sample i is ((37 i mod 201) - 100) times this
    std::uint32_t rate;
    std::array<std::uint32_t, 5> points; ///< points 0, 1, 12, 700 and 1023
    std::uint64_t digest;
};

// clang-format off
constexpr Expected everyFormat[] = {
    {8, 1, 44100, {0x9C0000, 0xC10000, 0xC60000, 0x480000, 0xDB0000}, 0x2ED7340D62A71783},
    {8, 1, 48000, {0x9C0000, 0xC4418A, 0xED1271, 0xC33398, 0x490DD8}, 0x62F2C39CA835E1A3},
    {8, 1, 88200, {0x9C0000, 0xE60000, 0xF00000, 0x2B0000, 0x1A0000}, 0xA537013544193C01},
    {8, 1, 96000, {0x9C0000, 0xEC8C8C, 0x3E9688, 0x044D1A, 0x4E592B}, 0x6FBD77C34FCDF96F},
    {16, 300, 44100, {0x8AD000, 0xB62C00, 0xBC0800, 0x546000, 0xD4A400}, 0xC9DFB1FE53237897},
    {16, 300, 48000, {0x8AD000, 0xB9FCCD, 0xE9D19C, 0xB8C076, 0x559C39}, 0x707A21D1B0FD2F1D},
    {16, 300, 88200, {0x8AD000, 0xE18800, 0xED4000, 0x326400, 0x1E7800}, 0x976D4896D845E651},
    {16, 300, 96000, {0x8AD000, 0xE934B4, 0x495868, 0x050A5B, 0x5BD07F}, 0xD41C555CF723BC99},
    {24, 70001, 44100, {0x952FDC, 0xBCB531, 0xC20C66, 0x4CE7C8, 0xD87AAB}, 0xEC7BA06417299B64},
    {24, 70001, 48000, {0x952FDC, 0xC02F85, 0xEBC84F, 0xBF0F2F, 0x4E0802}, 0x68BCCC9F23C67146},
    {24, 70001, 88200, {0x952FDC, 0xE43A86, 0xEEE8F0, 0x2DEDFB, 0x1BC57A}, 0x5C2435A0C9EDC4DF},
    {24, 70001, 96000, {0x952FDC, 0xEB394B, 0x42DA28, 0x04981F, 0x53AFAD}, 0x87311462D56CF110},
};
// clang-format on

TEST_F(Conversion, EveryDepthAndRateMonoAndStereo) {
    const auto check = [this](const Expected& expected, std::uint16_t bits,
                              std::uint16_t channels) {
        SCOPED_TRACE(std::to_string(bits) + " bits, " + std::to_string(expected.rate) + " Hz, " +
                     std::to_string(channels) + " channels");
        WavBuilder wav{.rate = expected.rate, .channels = channels, .bits = bits};
        for (int i = 0; i < 2300; ++i) {
            const std::int32_t left = (37 * i % 201 - 100) * expected.scale;
            for (const std::int32_t sample : {left, ~left / 3}) {
                if (bits == 32)
                    wav.addFloat(static_cast<float>(sample) / 8388608.0f);
                else
                    wav.add(sample);
                if (channels == 1)
                    break;
            }
        }
        const Block block = convert(wav.bytes());
        ASSERT_EQ(whyNot_, "");
        EXPECT_EQ((std::array{block[0], block[1], block[12], block[700], block[1023]}),
                  expected.points);
        EXPECT_EQ(digest(block), expected.digest);
    };
    for (const Expected& expected : everyFormat)
        for (const std::uint16_t channels : std::array<std::uint16_t, 2>{1, 2}) {
            check(expected, expected.bits, channels);
            if (expected.bits == 24)
                check(expected, 32, channels); // the same values as floats
        }
}

TEST_F(Conversion, FloatSamples) {
    constexpr float unit = 1.0f / 8388608.0f;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    // A sample, the decoder's word at 44.1 kHz, and that at 48 kHz, through both conversions.
    const std::tuple<float, std::uint32_t, std::uint32_t> cases[] = {
        {1.0f, 0x7FFFF7, 0x7FFFF7},
        {-1.0f, 0x800009, 0x800009},
        {-0.1f, 0xF33334, 0xF33334}, // -838860.8: towards zero
        {-1.5f * unit, 0xFFFFFF, 0xFFFFFF},
        {1.5f, 0xC00000, 0xC00000},     // beyond full scale: wraps
        {-1.5f, 0xC00000, 0xC00000},    // 0x400000 with the sign bit set
        {2.0f, 0x1000000, 0},           // higher bits of positive samples stay at 44.1 kHz only
        {-2.0f, 0x800000, 0x800009},    // -1.0 in the resampler
        {255.5f, 0x7FC00000, 0xC00000}, // almost the largest that fits
        {256.0f, 0x800000, 0x800009},   // does not fit: becomes the least integer
        {infinity, 0x800000, 0x800009},
        {std::nanf(""), 0x800000, 0x800009},
    };
    for (const auto& [sample, at44100, at48000] : cases) {
        SCOPED_TRACE(sample);
        for (const std::uint32_t rate : {44100u, 48000u}) {
            WavBuilder wav{.rate = rate, .bits = 32, .formatTag = 3};
            for (int i = 0; i < 1120; ++i)
                wav.addFloat(sample);
            EXPECT_EQ(convert(wav.bytes()), filled(rate == 44100 ? at44100 : at48000));
        }
    }
}

TEST_F(Conversion, MoreThanTwoChannelsAreSilentWhateverTheirRateAndDepth) {
    for (const std::uint32_t rate : {44100u, 48000u, 88200u, 96000u})
        for (const std::uint16_t bits : std::array<std::uint16_t, 2>{16, 40}) {
            WavBuilder wav{.rate = rate, .channels = 3, .bits = bits};
            wav.samples.assign(40000, '\x33');
            EXPECT_EQ(convert(wav.bytes()), filled(0)) << rate;
            EXPECT_EQ(whyNot_, "");
        }
}

TEST_F(Conversion, RefusalsSayWhyAndLeaveTheDestination) {
    const std::string rates = " Hz is not supported; 44100, 48000, 88200 and 96000 Hz are";
    const std::string depths = " bits per sample are not supported; 8, 16, 24 and 32 (float) are";
    const std::tuple<WavBuilder, std::uint32_t, std::string> rows[] = {
        {{.rate = 22050}, 24, "22050" + rates},
        {{.rate = 4294967295, .channels = 2}, 12, "4294967295" + rates},
        {{.rate = 22050, .channels = 3}, 8, "22050" + rates},
        {{.bits = 12}, 48, "12" + depths},
        {{.rate = 96000, .channels = 2, .bits = 64}, 3, "64" + depths},
    };
    for (auto [wav, frames, why] : rows) {
        wav.samples.assign(48, '\x33');
        EXPECT_EQ(convert(wav.bytes()), filled(untouched));
        EXPECT_EQ(whyNot_, why);
        EXPECT_EQ(file_.frameCount(), frames) << "it was opened";
    }
}

} // namespace
} // namespace cabslot::testing
