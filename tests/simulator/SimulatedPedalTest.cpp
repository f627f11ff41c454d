// The pedal's own behaviour, with the time handed in. What hosts make of it, its files and its
// socket are tried with the programs, its parser by the fuzz seeds.
#include "simulator/pedal/SimulatedPedal.h"
#include "tests/support/FakePedal.h"

namespace cabslot::testing {
namespace {

using simulator::SimulatedPedal;
using std::chrono::milliseconds;

class Simulated : public ::testing::Test {
protected:
    void send(const Bytes& stream) {
        for (const HIDReport& report : cutIntoReports(stream))
            pedal().receiveReport(report, now);
    }
    Bytes received() {
        reports = pedal().takeReports(now);
        Bytes stream;
        for (const auto& report : reports)
            stream.insert(stream.end(), report.begin() + 1, report.begin() + 1 + report[0]);
        return stream;
    }

    /// Made at its first use, so that a test can set the options before.
    SimulatedPedal& pedal() {
        if (!pedal_)
            pedal_.emplace(store, options, [this](const auto& line) { log.push_back(line); });
        return *pedal_;
    }

    /// Steps 1 to 6 carry the byte A0 + step once, then 511 times 10 * step.
    static Bytes importFrame(std::uint8_t step, std::uint8_t slot, std::uint8_t flag) {
        Bytes body = {0xE9, step, slot, flag};
        if (step == 0) {
            body = body + Bytes{'C', 'a', 'b'} + Bytes(12, ' ');
        } else {
            body.push_back(static_cast<std::uint8_t>(0xA0 + step));
            body.insert(body.end(), 511, static_cast<std::uint8_t>(0x10 * step));
        }
        return makeFrame(body);
    }
    static Bytes wholeImport(std::uint8_t slot, std::uint8_t flag) {
        Bytes stream;
        for (std::uint8_t step = 0; step <= 6; ++step)
            stream = stream + importFrame(step, slot, flag);
        return stream;
    }

    simulator::PedalStore store;
    simulator::PedalOptions options;
    SimulatedPedal::TimePoint now{std::chrono::hours(1)};
    std::vector<simulator::Report> reports;
    std::vector<std::string> log;

private:
    std::optional<SimulatedPedal> pedal_;
};

TEST_F(Simulated, AnswersWithTheNamesAndOneFlagForAllSlots) {
    send(openingFrame + requestFrame);
    const Bytes frame = received();
    ASSERT_EQ(frame.size(), 85U); // 78 bytes of payload
    EXPECT_EQ(Bytes(frame.begin(), frame.begin() + 8), (Bytes{0xAA, 0x55, 79, 0, 0xF7, 0, 0, 1}));
    EXPECT_EQ(std::string(frame.begin() + 5 + 14, frame.begin() + 5 + 78),
              "User 1          User 2          User 3          User 4          ");
    send(wholeImport(4, 0) + requestFrame);
    EXPECT_EQ(received().at(5 + 2), 0) << "one slot without a factory IR is enough";
}

TEST_F(Simulated, StoresImportsAndConfirmsEachAfterItsDelay) {
    send(wholeImport(2, 0));
    EXPECT_EQ(log.back(), "stored User 2: \"Cab\" (not factory)");
    const auto& block = store.slot(1).block;
    EXPECT_EQ((std::array{block[0], block[1], block[511], block[512], block[1023]}),
              (std::array{0xA1A2A3U, 0x102030U, 0x102030U, 0xA4A5A6U, 0x405060U}));
    now += milliseconds(500);
    send(wholeImport(1, 1));
    EXPECT_TRUE(store.slot(0).factory);
    now += milliseconds(999);
    EXPECT_TRUE(received().empty());
    now += milliseconds(1);
    EXPECT_EQ(received(), confirmationFrame);
    EXPECT_EQ(log.back(), "confirmed User 2");
    EXPECT_EQ(pedal().nextDue(), now + milliseconds(500));
    now += milliseconds(500);
    EXPECT_EQ(received(), confirmationFrame);
    EXPECT_EQ(log.back(), "confirmed User 1");
    EXPECT_EQ(pedal().nextDue(), std::nullopt);
}

TEST_F(Simulated, DropsAnImportThatBreaksTheRules) {
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
    send(importFrame(0, 1, 0) + wholeImport(2, 0));
    EXPECT_EQ(shownName(store.slot(0)), "User 1");
    EXPECT_EQ(shownName(store.slot(1)), "Cab");
}

// What hosts make of the faults is tried with the programs; here they must be there at all.
TEST_F(Simulated, TheFaultsAreThoseThatTheirNamesSay) {
    const auto reply = [&](std::string_view fault) {
        simulator::Faults faults;
        EXPECT_TRUE(setFault(faults, fault));
        reports = allDataReply(store, faults);
        Bytes stream;
        for (const auto& report : reports)
            stream.insert(stream.end(), report.begin() + 1, report.begin() + 1 + report[0]);
        return stream;
    };
    const Bytes garbage = reply("garbage");
    ASSERT_EQ(garbage.size(), 5U + 85U);
    EXPECT_EQ(Bytes(garbage.begin() + 4, garbage.begin() + 8), (Bytes{0xAA, 0xAA, 0x55, 79}));
    reply("split");
    ASSERT_EQ(reports.size(), 13U); // 85 = 12 * 7 + 1
    EXPECT_EQ(reports.front()[0], 7);
    const std::size_t seam = reply("merge").size() - 85;
    EXPECT_TRUE(seam > 63 && seam < 2 * 63U) << "both frames lie in the second report";
    reply("flood");
    EXPECT_EQ(reports.size(), 2 + 100000U);

    options.announceEvery = milliseconds(100);
    EXPECT_EQ(received().size(), 85U);
    EXPECT_EQ(pedal().nextDue(), now + milliseconds(100));
}

} // namespace
} // namespace cabslot::testing
