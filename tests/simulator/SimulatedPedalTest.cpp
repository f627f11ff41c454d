// What the pedal refuses and how it misbehaves. The rest of it is tried with the programs, its
// parser by the fuzz seeds.
#include "simulator/pedal/SimulatedPedal.h"
#include "tests/support/FakePedal.h"

namespace cabslot::testing {
namespace {

using simulator::SimulatedPedal;

/// One frame of an upload, all of one byte.
Bytes importFrame(std::uint8_t step, std::uint8_t slot, std::uint8_t flag) {
    return makeFrame(Bytes{0xE9, step, slot, flag} + Bytes(step == 0 ? 15 : 512, 'x'));
}

TEST(Simulated, DropsAnImportThatBreaksTheRules) {
    simulator::PedalStore store;
    std::vector<std::string> log;
    SimulatedPedal pedal(store, {}, [&](const std::string& line) { log.push_back(line); });
    const auto send = [&](const Bytes& stream) {
        for (const HIDReport& report : cutIntoReports(stream))
            pedal.receiveReport(report, {});
    };
    const std::pair<Bytes, const char*> rows[] = {
        {importFrame(3, 2, 0), "step 3 instead of step 2"},
        {importFrame(2, 3, 0), "the slot changed from 2 to 3"},
        {importFrame(2, 2, 1), "the factory flag changed on the way"},
        {importFrame(2, 5, 0), "there is no slot 5"},
        {importFrame(7, 2, 0), "no such step"},
        {makeFrame({0xE9, 2, 2, 0, 1}), "step 2 has a payload of 4 bytes, not 515"},
    };
    for (const auto& [broken, why] : rows) {
        send(importFrame(0, 2, 0) + importFrame(1, 2, 0) + broken);
        EXPECT_EQ(log.back(), std::string("dropped an import: ") + why);
        for (std::uint8_t step = 2; step <= 6; ++step)
            send(importFrame(step, 2, 0));
        EXPECT_EQ(log.back(), "dropped an import: step 6 without the steps before it");
    }
    EXPECT_EQ(shownName(store.slot(1)), "User 2");
    for (std::uint8_t step = 0; step <= 6; ++step)
        send(importFrame(step, 2, 0));
    EXPECT_EQ(shownName(store.slot(1)), "xxxxxxxxxxxxxxx");
}

TEST(Simulated, TheFaultsAreThoseThatTheirNamesSay) {
    const auto reply = [](std::string_view fault) {
        simulator::Faults faults;
        EXPECT_TRUE(setFault(faults, fault));
        return allDataReply(simulator::PedalStore(), faults);
    };
    EXPECT_EQ(reply("garbage")[0][0], 63);
    EXPECT_EQ(reply("garbage")[1][0], 5 + 85 - 63) << "five stray bytes";
    ASSERT_EQ(reply("split").size(), 13U); // 85 = 12 * 7 + 1
    EXPECT_EQ(reply("split")[0][0], 7);
    EXPECT_EQ(reply("merge").size(), 3U) << "an unknown frame, then the reply";
    EXPECT_EQ(reply("flood").size(), 2 + 100000U);
}

} // namespace
} // namespace cabslot::testing
