// What a program and its commands take on the command line. Parsing, help and messages are CLI11's,
// which only Arguments.cpp includes.
#pragma once

#include "arguments/Readers.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cabslot {

/// A program as its --help and --version show it.
struct ProgramText {
    std::string name;
    std::string version;
    std::string description;
    std::string footer;   ///< below the options: exit status, examples
    unsigned column = 30; ///< where the explanations of the options begin
};

/// An option with a value, or a positional argument.
struct Argument {
    std::string name; ///< "--fade", or for a positional argument its name in the help: "FILE"
    std::string help;
    Reader reader;          ///< called after parsing, for each value that was given
    std::string type{};     ///< what follows an option in the help: "MS"
    std::string variable{}; ///< an environment variable that stands in for a missing option
    bool required = false;
    bool many = false; ///< takes any number of values
};

/// The arguments of a program, or of one of its commands. Main thread.
class Arguments {
public:
    explicit Arguments(const ProgramText& program);
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments();

    void add(const Argument& argument);
    void addFlag(const std::string& name, bool& given, const std::string& help);

    /// `whatIsWrong` is called if these arguments were given and each was valid by itself. It
    /// returns what is wrong with them together, or an empty text.
    void addCheck(std::function<std::string()> whatIsWrong);

    /// Adds a command, which this object keeps. One of the commands must be given; behind it, the
    /// options of all levels above may also stand.
    Arguments& addCommand(const std::string& name, const std::string& description);

    /// After parse(): whether the command was given.
    bool given() const;

    /// Parses the command line and calls readers and checks. Returns an exit status if the program
    /// should end: 0 after --help or --version, 2 after wrong usage, which it has reported on
    /// standard error.
    std::optional<int> parse(int argc, const char* const* argv);

private:
    struct Level;
    explicit Arguments(std::unique_ptr<Level> level);
    std::string whatIsWrong() const;

    std::unique_ptr<Level> level_;
};

} // namespace cabslot
