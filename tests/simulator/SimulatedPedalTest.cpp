#include "simulator/pedal/SimulatedPedal.h"
#include "tests/simulator/HostReports.h"

#include <gtest/gtest.h>

namespace cabslot::simulator {
namespace {

using namespace testing;
using std::chrono::milliseconds;

class SimulatedPedalTest : public ::testing::Test {
protected:
    void sendStream(const Bytes& stream) {
        for (const Report& report : cutIntoReports(stream))
            pedal().receiveReport(report, now_);
    }

    /// What has come by now, as a stream.
    Bytes received() {
        reports_ = pedal().takeReports(now_);
        return joinReports(reports_);
    }

    bool said(const std::string& line) const {
        return std::find(log_.begin(), log_.end(), line) != log_.end();
    }

    /// Made at its first use, so that a test can set the options before.
    SimulatedPedal& pedal() {
        if (!pedal_)
            pedal_.emplace(store_, options_, [this](const auto& line) { log_.push_back(line); });
        return *pedal_;
    }

    PedalStore store_;
    PedalOptions options_;
    SimulatedPedal::TimePoint now_{std::chrono::hours(1)};
    std::vector<Report> reports_;
    std::vector<std::string> log_;

private:
    std::optional<SimulatedPedal> pedal_;
};

TEST_F(SimulatedPedalTest, answersWithTheNamesAndOneFlagForAllSlots) {
    sendStream(allDataRequest);
    const Bytes frame = received();
    ASSERT_EQ(frame.size(), 85U); // 78 bytes of payload
    EXPECT_EQ(Bytes(frame.begin(), frame.begin() + 8), (Bytes{0xAA, 0x55, 79, 0, 0xF7, 0, 0, 1}));
    EXPECT_EQ(std::string(frame.begin() + 5 + 14, frame.begin() + 5 + 78),
              "User 1          User 2          User 3          User 4          ");

    sendStream(wholeImport(4, 0));
    sendStream(allDataRequest);
    EXPECT_EQ(received().at(5 + 2), 0); // one slot without a factory IR is enough
}

TEST_F(SimulatedPedalTest, storesAnImportAndConfirmsItAfterTheDelay) {
    sendStream(wholeImport(2, 0));
    EXPECT_TRUE(said("import step 3 of slot 2"));
    EXPECT_EQ(log_.back(), "stored User 2: \"Cab\" (not factory)");

    const PedalSlot& slot = store_.slot(1);
    EXPECT_EQ(slot.block[0], 0xA1A2A3U);
    EXPECT_EQ(slot.block[1], 0x102030U);
    EXPECT_EQ(slot.block[511], 0x102030U);
    EXPECT_EQ(slot.block[512], 0xA4A5A6U);
    EXPECT_EQ(slot.block[1023], 0x405060U);
    EXPECT_EQ(std::string(slot.name.begin(), slot.name.end()),
              std::string("Cab            \0", 16));

    EXPECT_EQ(pedal().nextDue(), now_ + milliseconds(1500));
    now_ += milliseconds(1499);
    EXPECT_TRUE(received().empty());
    now_ += milliseconds(1);
    EXPECT_EQ(received(), confirmation);
    EXPECT_EQ(log_.back(), "confirmed User 2");
    EXPECT_TRUE(received().empty());
    EXPECT_EQ(pedal().nextDue(), std::nullopt);
}

TEST_F(SimulatedPedalTest, twoImportsAreConfirmedEachInItsTurn) {
    sendStream(wholeImport(3, 1));
    now_ += milliseconds(500);
    sendStream(wholeImport(1, 1));
    EXPECT_EQ(log_.back(), "stored User 1: \"Cab\" (factory)");
    now_ += milliseconds(1000);
    EXPECT_EQ(received(), confirmation);
    EXPECT_EQ(log_.back(), "confirmed User 3");
    now_ += milliseconds(500);
    EXPECT_EQ(received(), confirmation);
    EXPECT_EQ(log_.back(), "confirmed User 1");
}

TEST_F(SimulatedPedalTest, dropsAnImportThatBreaksTheRules) {
    struct Case {
        Bytes broken;
        const char* why;
    };
    const Case cases[] = {
        {importFrame(3, 2, 0), "step 3 instead of step 2"},
        {importFrame(1, 2, 0), "step 1 instead of step 2"},
        {importFrame(2, 3, 0), "the slot changed from 2 to 3"},
        {importFrame(2, 2, 1), "the factory flag changed on the way"},
        {importFrame(2, 5, 0), "there is no slot 5"},
        {importFrame(0, 0, 0), "there is no slot 0"},
        {importFrame(7, 2, 0), "no such step"},
        {encodeFrame(0xE9, {}), "no such step"},
        {encodeFrame(0xE9, Bytes{2, 2, 0, 1}), "step 2 has a payload of 4 bytes, not 515"},
        {encodeFrame(0xE9, Bytes(3 + 16)), "step 0 has a payload of 19 bytes, not 18"},
    };
    for (const Case& broken : cases) {
        SCOPED_TRACE(broken.why);
        sendStream(importFrame(0, 2, 0));
        sendStream(importFrame(1, 2, 0));
        sendStream(broken.broken);
        EXPECT_EQ(log_.back(), std::string("dropped an import: ") + broken.why);
        for (std::uint8_t step = 2; step <= 6; ++step)
            sendStream(importFrame(step, 2, 0));
        EXPECT_EQ(log_.back(), "dropped an import: step 6 without the steps before it");
    }
    EXPECT_EQ(shownName(store_.slot(1)), "User 2");
    sendStream(wholeImport(2, 0));
    EXPECT_EQ(shownName(store_.slot(1)), "Cab");
}

TEST_F(SimulatedPedalTest, stepZeroBeginsAnew) {
    sendStream(importFrame(0, 1, 0, "Old"));
    sendStream(importFrame(1, 1, 0));
    sendStream(wholeImport(2, 0, "New"));
    EXPECT_TRUE(said("dropped an import: a new one begins at step 2"));
    EXPECT_EQ(shownName(store_.slot(0)), "User 1");
    EXPECT_EQ(shownName(store_.slot(1)), "New");
    EXPECT_EQ(store_.slot(1).block[1], 0x102030U); // nothing of the first one's samples
}

TEST_F(SimulatedPedalTest, saysWhatItCannotUse) {
    Report report{};
    pedal().receiveReport(std::span(report).first(40), now_);
    EXPECT_EQ(log_.back(), "dropped a report of 40 bytes, it must have 64");
    report[0] = 64;
    pedal().receiveReport(report, now_);
    EXPECT_EQ(log_.back(), "dropped a report that counts 64 bytes, it can hold 63");
    sendStream({1, 2, 3});
    EXPECT_EQ(log_.back(), "skipped bytes that are no frame: 3");
    sendStream(encodeFrame(0x0B, {}));
    EXPECT_EQ(log_.back(), "unknown command 0x0B");
    sendStream(encodeFrame(0xEF, Bytes(2)));
    EXPECT_EQ(log_.back(), "dropped a request for all data: it has a payload of 2 bytes");
    EXPECT_TRUE(received().empty());
}

// What a host makes of them is tried with the programs; here they must be there at all.
TEST_F(SimulatedPedalTest, faultsOfTheStreamThatAHostMustGetThrough) {
    const auto reply = [this](std::string_view fault) {
        PedalOptions options;
        EXPECT_TRUE(setFault(options.faults, fault));
        reports_ = allDataReply(store_, options.faults);
        return joinReports(reports_);
    };
    Bytes stream = reply("garbage");
    ASSERT_EQ(stream.size(), 5U + 85U);
    EXPECT_EQ(Bytes(stream.begin() + 4, stream.begin() + 8), (Bytes{0xAA, 0xAA, 0x55, 79}));
    EXPECT_EQ(FrameParser().feed(stream).size(), 1U);

    EXPECT_EQ(FrameParser().feed(reply("split")).size(), 1U);
    ASSERT_EQ(reports_.size(), 13U); // 85 = 12 * 7 + 1
    EXPECT_EQ(reports_.front()[0], 7);
    EXPECT_EQ(reports_.back()[0], 1);

    stream = reply("merge");
    EXPECT_EQ(FrameParser().feed(stream).size(), 2U);
    const std::size_t seam = stream.size() - 85; // both sides lie in the second report
    EXPECT_TRUE(seam > 63 && seam < 2 * 63U) << seam;

    reply("flood");
    EXPECT_EQ(reports_.size(), 2 + 100000U);
    EXPECT_EQ(FrameParser().feed(joinReports({&reports_.back(), 1})).size(), 1U);
}

TEST_F(SimulatedPedalTest, announcesUnaskedAtItsPace) {
    options_.announceEvery = milliseconds(100);
    EXPECT_EQ(received().size(), 85U);
    EXPECT_TRUE(received().empty());
    EXPECT_EQ(pedal().nextDue(), now_ + milliseconds(100));
    now_ += milliseconds(100);
    EXPECT_EQ(received().size(), 85U);
}

} // namespace
} // namespace cabslot::simulator
