#include "arguments/Arguments.h"

#include "base/VisibleText.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdio>
#include <utility>
#include <vector>

namespace cabslot {

namespace {

constexpr int wrongUsage = 2;

// CLI11 takes "[a,b]" for a list. A zero byte, which no argument can hold, hides a name's bracket.
constexpr char hidden = '\0';

/// The arguments in the order that CLI11 wants: the last one first.
std::vector<std::string> reversedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        arguments.emplace_back(argv[i]);
        if (arguments.back().starts_with('[') && arguments.back().ends_with(']'))
            arguments.back() += hidden;
    }
    return arguments;
}

std::string asGiven(std::string value) {
    if (value.ends_with(hidden))
        value.pop_back();
    return value;
}

} // namespace

struct Arguments::Level {
    struct Read {
        const CLI::Option* option;
        Reader reader;
    };

    std::string program;
    std::unique_ptr<CLI::App> root; ///< null for a command
    CLI::App* app = nullptr;
    std::vector<Read> arguments;
    std::vector<std::function<std::string()>> checks;
    std::vector<std::unique_ptr<Arguments>> commands;
};

Arguments::Arguments(const ProgramText& program) : level_(std::make_unique<Level>()) {
    level_->program = program.name;
    level_->root = std::make_unique<CLI::App>(program.description, program.name);
    level_->app = level_->root.get();
    level_->app->set_version_flag("--version", program.name + " " + program.version,
                                  "Show the version and exit");
    level_->app->set_help_flag("-h,--help", "Show this help and exit");
    level_->app->get_formatter()->column_width(program.column);
    level_->app->footer(program.footer);
    level_->app->fallthrough(); // commands inherit it
}

Arguments::Arguments(std::unique_ptr<Level> level) : level_(std::move(level)) {}
Arguments::~Arguments() = default;

// The readers are called after parsing, not by CLI11: it drops a variable's value that fails a
// check, in silence from version 2.4 on.
void Arguments::add(const Argument& argument) {
    CLI::Option* const option =
        level_->app->add_option(argument.name, CLI::callback_t(), argument.help);
    option->type_name(argument.type)->required(argument.required);
    if (argument.many)
        option->expected(CLI::detail::expected_max_vector_size);
    if (!argument.variable.empty())
        option->envname(argument.variable);
    level_->arguments.push_back({option, argument.reader});
}

void Arguments::addFlag(const std::string& name, bool& given, const std::string& help) {
    level_->app->add_flag(name, given, help);
}

void Arguments::addCheck(std::function<std::string()> whatIsWrong) {
    level_->checks.push_back(std::move(whatIsWrong));
}

Arguments& Arguments::addCommand(const std::string& name, const std::string& description) {
    auto level = std::make_unique<Level>();
    level->app = level_->app->add_subcommand(name, description);
    level->app->footer(""); // the program's is long
    level_->app->require_subcommand(1);
    level_->commands.emplace_back(new Arguments(std::move(level)));
    return *level_->commands.back();
}

bool Arguments::given() const {
    return level_->app->parsed();
}

/// Calls the readers and checks of this level and of the commands that were given.
std::string Arguments::whatIsWrong() const {
    for (const Level::Read& argument : level_->arguments) {
        for (const std::string& value : argument.option->results()) {
            if (std::string why = argument.reader(asGiven(value)); !why.empty())
                return argument.option->get_name() + ": " + why;
        }
    }
    for (const auto& check : level_->checks) {
        if (std::string why = check(); !why.empty())
            return why;
    }
    for (const auto& command : level_->commands) {
        if (!command->given())
            continue;
        if (std::string why = command->whatIsWrong(); !why.empty())
            return why;
    }
    return {};
}

std::optional<int> Arguments::parse(int argc, const char* const* argv) {
    std::string why;
    try {
        level_->app->parse(reversedArguments(argc, argv));
        why = whatIsWrong();
    } catch (const CLI::Success& help) {
        return level_->app->exit(help);
    } catch (const CLI::ParseError& wrong) {
        why = wrong.what();
        std::erase(why, hidden);
    }
    if (why.empty())
        return std::nullopt;
    std::fprintf(stderr, "%s: %s (see %s --help)\n", level_->program.c_str(),
                 visibleText(why).c_str(), level_->program.c_str());
    return wrongUsage;
}

} // namespace cabslot
