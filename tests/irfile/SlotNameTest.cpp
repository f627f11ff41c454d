// Names that the user types, and those that are proposed.
#include "irfile/SlotName.h"

#include "irfile/AsciiFolding.h"

#include <gtest/gtest.h>

namespace cabslot::testing {
namespace {

using Names = std::vector<std::string>;

const Names kin = {"Acme 4x12 SM57 Cap Edge 01.wav", "Acme 4x12 SM57 Cap Edge 02.wav",
                   "Acme 4x12 SM57 Cone 01.wav", "Acme 4x12 R121 Cap Edge 01.wav", "Other.wav"};

TEST(SlotName, IsProposedFromTheWordsThatDistinguishTheFile) {
    struct Case {
        std::string path, name;
        Names neighbours{}, taken{};
    };
    const Case cases[] = {
        {"/irs/" + kin[0], "SM57CapE01", kin},
        {"/irs/" + kin[3], "R121CapE01", kin},
        {"/irs/Other.wav", "Other", kin},
        {"/irs/Größe 3.WAV", "Grosse 3"},
        {"/irs/Cafe\u0301 Ångström №1.wav", "CafeAngst1"},
        {"Жук.wav", "Zhuk"},
        {"Ω.wav", "O"},
        {"４×12 – Bright.wav", "4x12Bright"},
        {"箱.wav", ""},
        {"箱 2.wav", "2"},
        {"4x12 SM57 R121 U87 2024.wav", "4x12SM2024"},
        {"deep-blue_sea.wav", "DeepBlueSe"},
        {kin[0], "SM57CapE-2", kin, {"SM57CapE01"}},
        {"Deep 4x12.wav", "Deep4x12-2", {}, {"Deep 4x12"}},
        {"Deep Cab.wav", "Deep Cab3", {}, {"Deep Cab", "Deep Cab2"}},
    };
    for (const Case& test : cases)
        EXPECT_EQ(proposedName(test.path, test.neighbours, test.taken), test.name) << test.path;
    EXPECT_EQ(asciiText("\xC3(\xFF)ø"), " ( )o") << "bytes that are no UTF-8";
}

TEST(SlotName, OfFilesLoadedTogetherDiffersWhereTheRulesWouldNot) {
    const Names taken = {"SM57CapE01"};
    const Names together = {kin[0], "Deep.wav", kin[1], "b/" + kin[0]};
    EXPECT_EQ(namesApart(together, kin, taken),
              (Names{"SM57CapE-2", "Deep", "SM57CapE02", "SM57CapE-3"}));
    EXPECT_EQ(namesApart(Names{"箱1.wav", "Deep.wav"}, kin, Names{"Deep"}), (Names{"箱1", "Deep"}))
        << "by rule: nothing equal among them";
}

TEST(SlotName, ByRuleMayBeRefusedOrTaken) {
    EXPECT_EQ(nameProblem(kin[0], Names{"Deep", "Acme 4x12"}), NameProblem::taken);
    EXPECT_EQ(nameProblem(kin[0], Names{"Acme 4x12 S"}), NameProblem::none);
    EXPECT_EQ(nameProblem("Deep cabinet no. é.wav", {}), NameProblem::refused);
}

TEST(SlotName, TypedHasUpToTenPlainCharacters) {
    EXPECT_EQ(checkSlotName("~Ten chars"), "");
    for (const auto& [name, why] : {std::pair{"Eleven char", "it has 11 characters"},
                                    {"", "it is empty"},
                                    {"   ", "it is empty"},
                                    {"Caf\u00E9", "cannot show"},
                                    {"a\tb", "cannot show"}})
        EXPECT_NE(checkSlotName(name).find(why), std::string::npos) << name;
}

} // namespace
} // namespace cabslot::testing
