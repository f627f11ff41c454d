#include "simulator/pedal/PedalStore.h"
#include "tests/simulator/HostReports.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace cabslot::simulator {
namespace {

using namespace testing;
using cabslot::testing::FullDisk;
namespace fs = std::filesystem;

PedalSlot slotNamed(const std::string& name) {
    PedalSlot slot;
    std::copy(name.begin(), name.end(), slot.name.begin());
    slot.factory = false;
    slot.block[0] = 0x010203;
    slot.block[1023] = 0xFFEEDD;
    return slot;
}

Bytes bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), {});
}

std::size_t filesIn(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(PedalStoreTest, keepsWhatWasStoredAcrossRuns) {
    const TempFolder folder;
    const fs::path deep = folder.path() / "a" / "b";
    std::string why;
    {
        std::optional<PedalStore> store = PedalStore::open(deep, why);
        ASSERT_TRUE(store) << why;
        ASSERT_TRUE(store->store(1, slotNamed("Cab"), why)) << why;
        EXPECT_FALSE(store->allFactory());
    }
    const std::optional<PedalStore> again = PedalStore::open(deep, why);
    ASSERT_TRUE(again) << why;
    EXPECT_EQ(again->slot(1).block, slotNamed("Cab").block);
    EXPECT_EQ(again->slot(1).name, slotNamed("Cab").name);
    EXPECT_FALSE(again->slot(1).factory);
    EXPECT_EQ(shownName(again->slot(0)), "User 1");
    EXPECT_TRUE(again->slot(0).factory);
}

TEST(PedalStoreTest, slotFileIsTheBlockThenTheNameThenTheFlag) {
    const TempFolder folder;
    std::string why;
    std::optional<PedalStore> store = PedalStore::open(folder.path(), why);
    ASSERT_TRUE(store && store->store(2, slotNamed("Cab"), why)) << why;
    const Bytes bytes = bytesOf(folder.path() / "user3.slot");
    ASSERT_EQ(bytes.size(), 4113U);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 5), (Bytes{3, 2, 1, 0, 0}));
    EXPECT_EQ(Bytes(bytes.begin() + 4092, bytes.begin() + 4100),
              (Bytes{0xDD, 0xEE, 0xFF, 0, 'C', 'a', 'b', 0}));
    EXPECT_EQ(bytes[4112], 0);
}

TEST(PedalStoreTest, refusesWhatIsNoSlotFileOrNoFolder) {
    const TempFolder folder;
    const fs::path file = folder.path() / "user2.slot";
    std::ofstream(file) << "short";
    std::string why;
    EXPECT_FALSE(PedalStore::open(folder.path(), why));
    EXPECT_NE(why.find("user2.slot is not a slot file: it has 5 bytes"), std::string::npos) << why;
    EXPECT_FALSE(PedalStore::open(file, why));
    EXPECT_NE(why.find("cannot make the folder"), std::string::npos) << why;
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_FALSE(PedalStore::open(folder.path(), why));
    EXPECT_NE(why.find("it is a folder"), std::string::npos) << why;
}

TEST(PedalStoreTest, failedSaveLeavesAllAsItWas) {
    const TempFolder folder;
    std::string why;
    std::optional<PedalStore> store = PedalStore::open(folder.path(), why);
    ASSERT_TRUE(store && store->store(0, slotNamed("Old"), why)) << why;
    const Bytes before = bytesOf(folder.path() / "user1.slot");
    {
        const FullDisk full(1000);
        EXPECT_FALSE(store->store(0, slotNamed("New"), why));
    }
    EXPECT_NE(why.find("cannot write"), std::string::npos) << why;
    EXPECT_EQ(shownName(store->slot(0)), "Old");
    EXPECT_EQ(bytesOf(folder.path() / "user1.slot"), before);
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PedalStoreTest, failedRenameLeavesNoTemporaryFile) {
    const TempFolder folder;
    std::string why;
    std::optional<PedalStore> store = PedalStore::open(folder.path(), why);
    ASSERT_TRUE(store) << why;
    fs::create_directories(folder.path() / "user1.slot" / "occupied");
    EXPECT_FALSE(store->store(0, slotNamed("New"), why));
    EXPECT_EQ(shownName(store->slot(0)), "User 1");
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST(PedalStoreTest, shownNameLeavesPaddingOutAndHidesControlBytes) {
    EXPECT_EQ(shownName(slotNamed(std::string("Cab       \0    ", 15))), "Cab");
    EXPECT_EQ(shownName(slotNamed(" AC30.B    2x12")), " AC30.B    2x12");
    EXPECT_EQ(shownName(slotNamed("A\x1b[\xff\x7f ~")), "A.[.. ~");
    EXPECT_EQ(shownName(PedalSlot{}), "");
}

} // namespace
} // namespace cabslot::simulator
