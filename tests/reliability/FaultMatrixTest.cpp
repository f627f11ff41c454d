// Everything a pedal can do to a load, as one table: what the user is told, the status, how long it
// takes at most, and what the pedal holds afterwards. The table stands in docs/reliability.md.
#include "tests/reliability/FaultMatrix.h"

#include "simulator/pedal/PedalOptions.h"

#include <cstdio>
#include <iterator>

namespace cabslot::testing {
namespace {

using Options = std::vector<std::string>;

const std::string done = "User 2: Cab";
const std::string noData = "the pedal is there but did not send its data within 0.5 s; unplug it, "
                           "plug it in and try again";
const std::string notConfirmed =
    "the pedal did not confirm in time that it has stored User 2; look "
    "with \"cabslotctl list\" and load it again if need be";
const std::string unplugged = "the pedal was unplugged";
const std::string oldIR = "what it held";
const std::string newIR = "the new IR";

struct Row {
    std::string what; ///< "A pedal that ..."
    Options pedal{};  ///< options of the simulated one
    std::string confirmDelay = "20";
    FaultMatrix::Act act = &FaultMatrix::load;
    int status = 0;
    std::string told = done; ///< to the letter: status 0 on standard output, else on the other
    double seconds = 2;      ///< at most
    std::string holds = newIR;
    int report = 0; ///< in rows that stand once for every report
};

std::vector<Row> otherRows() {
    using T = FaultMatrix;
    return {
        {.what = "is not there",
         .act = &T::loadWithoutAPedal,
         .status = 3,
         .told =
             "no pedal answers at PATH: No such file or directory (is a simulated pedal running "
             "there?)",
         .holds = oldIR},
        {.what = "takes the connection and reads nothing",
         .act = &T::loadIntoAPedalThatReadsNothing,
         .status = 4,
         .told = noData,
         .holds = oldIR},
        {.what = "sends replies with a wrong CRC",
         .pedal = {"--fault", "corrupt-crc"},
         .status = 4,
         .told = noData,
         .holds = oldIR},
        {.what = "the same, asked to list",
         .pedal = {"--fault", "corrupt-crc"},
         .act = &T::list,
         .status = 4,
         .told = noData,
         .holds = oldIR},
        {.what = "replies in reports of 63 and of 65 bytes",
         .pedal = {"--fault", "wrong-length"},
         .status = 4,
         .told = noData,
         .holds = oldIR},
        {.what = "sends stray bytes before replies", .pedal = {"--fault", "garbage"}},
        {.what = "sends replies in reports of at most 7 bytes", .pedal = {"--fault", "split"}},
        {.what = "sends an unknown frame that runs into the reply", .pedal = {"--fault", "merge"}},
        {.what = "sends 100,000 unknown frames as fast as they go",
         .pedal = {"--fault", "flood"},
         .confirmDelay = "5000",
         .seconds = 15},
        {.what = "has another one beside it that talks all the time", .pedal = {"--second-device"}},
        {.what = "has names of all 256 byte values, asked to list",
         .act = &T::listEveryByte,
         .told = "every name, control characters as \"?\"",
         .seconds = 5,
         .holds = oldIR},
        {.what = "confirms at once, before anyone has polled",
         .pedal = {"--fault", "confirm-at-once"}},
        {.what = "confirms while it is polled for", .confirmDelay = "300"},
        {.what = "confirms when nobody polls any more",
         .confirmDelay = "60000",
         .status = 4,
         .told = notConfirmed},
        {.what = "never confirms",
         .pedal = {"--fault", "never-confirm"},
         .status = 4,
         .told = notConfirmed},
        {.what = "confirms before it has the last frame, and not again",
         .pedal = {"--fault", "confirm-early"},
         .status = 4,
         .told = notConfirmed},
        {.what = "cannot store what it gets",
         .act = &T::loadIntoAPedalThatCannotStore,
         .status = 4,
         .told = notConfirmed,
         .holds = oldIR},
        {.what = "gets a second IR right behind the first",
         .act = &T::loadBehindAnother,
         .seconds = 4},
        {.what = "gets an IR for another slot at the same time",
         .act = &T::loadBesideAnother,
         .seconds = 4},
        {.what = "has taken another one's place since the last load",
         .act = &T::loadIntoAPedalInTheFirstOnesPlace,
         .seconds = 4},
        {.what = "is still storing when the user presses Ctrl-C",
         .confirmDelay = "60000",
         .act = &T::loadUntilCtrlC,
         .status = 130,
         .told = "interrupted before the pedal confirmed User 2; look with \"cabslotctl list\""},
    };
}

// Reports 1 and 2 open the session, 3 to 57 are the upload.
std::vector<Row> allRows() {
    std::vector<Row> rows;
    for (int report = 1; report <= 57; ++report) {
        rows.push_back(
            {.what = "vanishes after report ",
             .pedal = {"--vanish-after", std::to_string(report)},
             .confirmDelay = "60000",
             .status = 3,
             .told = unplugged + (report <= 2 ? "" : "; User 2 may be incomplete: load it again"),
             .holds = report == 57 ? newIR : oldIR,
             .report = report});
    }
    std::vector<Row> others = otherRows();
    rows.insert(rows.end(), std::make_move_iterator(others.begin()),
                std::make_move_iterator(others.end()));
    return rows;
}

/// Rows that differ in the report's number alone become one line.
std::string table() {
    std::string text = "| A pedal that ... | status | the user is told | within | slot 2 holds |\n"
                       "|---|---|---|---|---|\n";
    const std::vector<Row> rows = allRows();
    const auto cells = [](const Row& row) {
        return " | " + std::to_string(row.status) + " | " + row.told + " | " +
               std::to_string(static_cast<int>(row.seconds)) + " s | " + row.holds + " |\n";
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::string what = rows[i].what;
        if (const int first = rows[i].report; first > 0) {
            while (rows[i + 1].report > 0 && cells(rows[i + 1]) == cells(rows[i]))
                ++i;
            const int last = rows[i].report;
            what += std::to_string(first) + (last > first ? " to " + std::to_string(last) : "");
        }
        text += "| " + what + cells(rows[i]);
    }
    return text;
}

// The rows mostly wait: in parts, which may run beside each other, they take a fraction of the
// time.
constexpr std::size_t parts = 4;

class FaultMatrixPart : public FaultMatrix, public ::testing::WithParamInterface<std::size_t> {
protected:
    void check(const Row& row) {
        SCOPED_TRACE(row.what + std::to_string(row.report));
        std::filesystem::remove_all(folder.path("st"));
        patience =
            row.status == 4 ? Options{"--timeout", "0.5", "--confirm-timeout", "0.5"} : Options{};
        startPedal(row.pedal, row.confirmDelay);

        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ((this->*row.act)(), row.status);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
        EXPECT_LT(took.count(), row.seconds);

        std::string told = row.told;
        if (const auto path = told.find("PATH"); path != std::string::npos)
            told.replace(path, 4, socket);
        EXPECT_EQ(out, row.status == 0 ? told + "\n" : "");
        EXPECT_EQ(err, row.status == 0 ? "" : "cabslotctl: " + told + "\n");
        EXPECT_EQ(slotHolds(), row.holds);
    }
};

TEST_P(FaultMatrixPart, EveryRowIsAsTheTableSays) {
    const std::vector<Row> rows = allRows();
    for (std::size_t i = GetParam(); i < rows.size(); i += parts)
        check(rows[i]);
}
INSTANTIATE_TEST_SUITE_P(Of4, FaultMatrixPart, ::testing::Range<std::size_t>(0, parts));

TEST(FaultMatrixTable, IsCompleteAndStandsInTheDocs) {
    const std::string printed = table();
    std::fputs(printed.c_str(), stdout);
    EXPECT_NE(contentOf(CABSLOT_DOCS "/reliability.md").find(printed), std::string::npos)
        << "put the table above into docs/reliability.md";
    for (const auto& fault : simulator::namedFaults()) {
        const Options asked{"--fault", std::string(fault.name)};
        const auto rows = allRows();
        EXPECT_TRUE(std::any_of(rows.begin(), rows.end(),
                                [&](const Row& row) { return row.pedal == asked; }))
            << fault.name << " has no row";
    }
}

} // namespace
} // namespace cabslot::testing
