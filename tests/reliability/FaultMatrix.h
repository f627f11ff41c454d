// What the rows of the fault matrix do with a misbehaving pedal, and what they look at afterwards.
#pragma once

#include "tests/support/Programs.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace cabslot::testing {

class FaultMatrix : public ProgramTest {
public:
    using Options = std::vector<std::string>;
    using Act = int (FaultMatrix::*)();

    // Each returns the status of the command that the row is about and leaves its words in `out`
    // and `err`. `patience` is how long that command waits.

    int load() { return run(waiting({"load", "2", wav()})); }
    int list() { return run(waiting({"list"})); }

    int loadWithoutAPedal() {
        pedal.reset();
        return load();
    }

    int loadIntoAPedalThatReadsNothing() {
        pedal->signal(SIGSTOP);
        const int status = load();
        pedal->signal(SIGCONT);
        return status;
    }

    int loadIntoAPedalThatCannotStore() {
        std::filesystem::create_directories(slotFile(2));
        const int status = load();
        std::filesystem::remove(slotFile(2));
        return status;
    }

    int loadBehindAnother() {
        EXPECT_EQ(run({"load", "2", otherWav()}), 0) << err;
        return load();
    }

    int loadBesideAnother() {
        Program other({CABSLOTCTL, "--pedal", "unix:" + socket, "load", "3", otherWav()}, folder,
                      "other");
        const int status = load();
        EXPECT_EQ(other.wait(), 0) << other.err();
        EXPECT_TRUE(contentOf(slotFile(3)).starts_with(otherBlock));
        return status;
    }

    int loadIntoAPedalInTheFirstOnesPlace() {
        EXPECT_EQ(run({"load", "2", otherWav()}), 0) << err;
        pedal.reset();
        std::filesystem::rename(folder.path("st"), folder.path("first"));
        startPedal();
        const int status = load();
        EXPECT_TRUE(contentOf(folder.path("first/user2.slot")).starts_with(otherBlock));
        std::filesystem::remove_all(folder.path("first"));
        return status;
    }

    int loadUntilCtrlC() {
        const auto loading = start({"load", "2", wav()});
        EXPECT_TRUE(pedal->hasPrinted("stored User 2"));
        loading->signal(SIGINT);
        const int status = loading->wait();
        out = loading->out();
        err = loading->err();
        return status;
    }

    /// Four pedals, since one has room for 64 of the 256 values.
    int listEveryByte() {
        int worst = 0;
        for (int first = 0; first < 256; first += 64) {
            pedal.reset();
            for (int slot = 1; slot <= 4; ++slot)
                folder.write("st/user" + std::to_string(slot) + ".slot",
                             slotNamedFrom(first + 16 * (slot - 1)));
            startPedal();
            worst = std::max(worst, run({"list", "--json"}));
            const auto slots = nlohmann::json::parse(out).at("slots");
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_EQ(slots.at(i).at("name"), charactersFrom(first + 16 * static_cast<int>(i)));
            worst = std::max(worst, run({"list"}));
            EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 4) << "a name is no line break";
            EXPECT_EQ(out.find('\033'), std::string::npos) << "nor an order to the terminal";
        }
        out = "every name, control characters as \"?\"\n"; // that was looked at above
        std::filesystem::remove_all(folder.path("st"));
        return worst;
    }

    std::string slotFile(int slot) const {
        return folder.path("st/user" + std::to_string(slot) + ".slot");
    }

    /// Of slot 2: "what it held", "the new IR", or neither.
    std::string slotHolds() const {
        const std::string stored = contentOf(slotFile(2));
        if (stored.empty())
            return "what it held";
        const bool whole = stored.starts_with(newBlock) && stored.substr(4096, 3) == "Cab";
        return whole ? "the new IR" : "something else";
    }

    Options patience;

private:
    Options waiting(Options command) const {
        command.insert(command.end(), patience.begin(), patience.end());
        if (command.front() == "list")
            command.resize(3); // it waits for no confirmation
        return command;
    }

    std::string otherWav() const {
        return folder.write("Other.wav", WavBuilder{}.add(0x5678).bytes());
    }

    /// A slot file whose name is the 16 bytes from `first` on.
    static std::string slotNamedFrom(int first) {
        std::string bytes(4096 + 16 + 1, '\0');
        for (int i = 0; i < 16; ++i)
            bytes[static_cast<std::size_t>(4096 + i)] = static_cast<char>(first + i);
        return bytes;
    }

    /// The same bytes as characters by their code, in UTF-8; a 0 byte shows nothing.
    static std::string charactersFrom(int first) {
        std::string text;
        for (int code = std::max(first, 1); code < first + 16; ++code) {
            if (code >= 0x80)
                text += static_cast<char>(0xC0 | code >> 6);
            text += static_cast<char>(code >= 0x80 ? 0x80 | (code & 0x3F) : code);
        }
        return text;
    }

    static std::string block(std::string firstPoints) {
        firstPoints.resize(4096, '\0');
        return firstPoints;
    }

    const std::string newBlock = block(std::string("\x00\x34\x12\x00\x00\xFE\xFF\x00", 8));
    const std::string otherBlock = block(std::string("\x00\x78\x56\x00", 4));
};

} // namespace cabslot::testing
