#include "tools/arguments/reader.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cassert>

#include "kivo/session/internal/near_word.h"
#include "tools/text/whole_number.h"
#include "tools/text/words.h"

namespace {

// Letters that a misspelt sub-command may differ in.
constexpr std::size_t kMostEdits = 2;

using Words = std::vector<std::string>;

std::string problem_of_number(const OptionRow& row, const std::string& word) {
    const auto number = whole_number<std::int32_t>(word);
    return number && *number >= row.least && *number <= row.most
               ? std::string()
               : fmt::format("a whole number from {} to {} is wanted, not '{}'", row.least,
                             row.most, word);
}

// What is wrong with a word of that row.
std::string problem_of_word(const OptionRow& row, const std::string& word) {
    if (std::holds_alternative<std::int32_t*>(row.target)) {
        return problem_of_number(row, word);
    }
    if (row.check) {
        return row.check(word);
    }
    if (!row.choices.empty() &&
        std::find(row.choices.begin(), row.choices.end(), word) == row.choices.end()) {
        return quoted_choice(row.choices) + " is wanted, not '" + word + "'";
    }
    return row.offer == Offer::kFiles && word.empty() ? "the name of a file is missing" : "";
}

struct StoreWords {
    const Words& words;

    void operator()(bool* target) const { *target = true; }
    void operator()(std::int32_t* target) const {
        *target = whole_number<std::int32_t>(words.front()).value();
    }
    void operator()(std::string* target) const { *target = words.front(); }
    void operator()(Words* target) const {
        target->insert(target->end(), words.begin(), words.end());
    }
};

// The parser's names of a row: "-o,--output".
std::string names_of(const OptionRow& row) {
    return fmt::format("{}", fmt::join(row.names(), ","));
}

void add_row(CLI::App& app, const OptionRow& row) {
    if (row.is_switch()) {
        app.add_flag_callback(
            names_of(row), [&row] { std::visit(StoreWords{{}}, row.target); }, row.help);
        return;
    }
    CLI::Option* const option = app.add_option_function<Words>(
        names_of(row),
        [&row](const Words& words) {
            if (!row.is_repeated() && words.size() > 1) {
                throw CLI::ValidationError(row.name, "is given more than once");
            }
            std::visit(StoreWords{words}, row.target);
        },
        row.help);
    option->type_name(row.value_name)->required(row.is_required);
    if (!row.is_repeated()) {
        option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }
    // Only an argument takes all the words that follow.
    option->allow_extra_args(row.is_repeated() && row.is_argument());
    if (row.accepts != nullptr) {
        app.validate_positionals();
    }
    option->check([&row](const std::string& word) {
        return row.accepts != nullptr && !row.accepts(word) ? "unexpected word '" + word + "'"
                                                            : problem_of_word(row, word);
    });
    if (!row.needs.empty()) {
        option->needs(app.get_option(row.needs));
    }
}

// The parser counts words, of which the options here take one.
std::string problem_of_known(const CLI::ParseError& error) {
    const std::string text = error.what();
    return dynamic_cast<const CLI::ArgumentMismatch*>(&error) == nullptr
               ? text
               : text.substr(0, text.find(':')) + ": the value is missing";
}

// The parser, set up with the rows of a program.
class Parser {
public:
    explicit Parser(const Program& program);

    Request read(int argc, char** argv);

private:
    void add(const Command& command);
    const Command* chosen() const;
    std::string nearest_command(const std::string& word) const;
    std::string problem_of(const CLI::ParseError& error) const;

    const Program& program_;
    CLI::App app_;
};

Parser::Parser(const Program& program) : program_(program), app_(program.summary) {
    app_.name(program.name);
    app_.footer(program.footer);
    app_.set_help_flag(names_of(program.help_row), program.help_row.help);
    app_.set_version_flag(names_of(program.version_row), program.version, program.version_row.help);
    // One at most, so that a file may have the name of a sub-command.
    app_.require_subcommand(0, 1);
    for (const Command& command : program.commands) {
        add(command);
    }
    for (const OptionRow& row : program.common_rows) {
        add_row(app_, row);
    }
}

void Parser::add(const Command& command) {
    CLI::App* const app = app_.add_subcommand(command.name, command.summary);
    app->footer(command.footer);
    if (command.is_hidden) {
        app->group("");
    }
    for (const OptionRow& row : command.rows) {
        add_row(*app, row);
    }
    for (const OptionRow& row : program_.common_rows) {
        add_row(*app, row);
    }
}

const Command* Parser::chosen() const {
    const auto found =
        std::find_if(program_.commands.begin(), program_.commands.end(),
                     [this](const Command& command) { return app_.got_subcommand(command.name); });
    return found == program_.commands.end() ? nullptr : &*found;
}

// Empty when the word is like none of them.
std::string Parser::nearest_command(const std::string& word) const {
    std::vector<std::string_view> names;
    for (const Command& command : program_.commands) {
        names.push_back(command.name);
    }
    return std::string(nearest_word(word, names, kMostEdits));
}

// An argument that nobody knows is what a user wants to hear of first, whatever else is missing.
std::string Parser::problem_of(const CLI::ParseError& error) const {
    const Command* const command = chosen();
    const Words unknown =
        command == nullptr ? app_.remaining() : app_.get_subcommand(command->name)->remaining();
    if (unknown.empty()) {
        return problem_of_known(error);
    }
    const std::string& word = unknown.front();
    if (word.size() > 1 && word.front() == '-') {
        return "unknown option '" + word + "'";
    }
    if (command != nullptr) {
        return "unexpected argument '" + word + "'";
    }
    const std::string near = nearest_command(word);
    return "unknown sub-command '" + word + "'" + (near.empty() ? "" : ", perhaps '" + near + "'");
}

Request Parser::read(int argc, char** argv) {
    try {
        app_.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return {nullptr, app_.help(), {}};
    } catch (const CLI::CallForVersion&) {
        return {nullptr, app_.version() + "\n", {}};
    } catch (const CLI::ParseError& error) {
        return {chosen(), {}, problem_of(error)};
    }
    const Command* const command = chosen();
    if (command == nullptr) {
        return {nullptr, {}, "a sub-command is missing"};
    }
    return {command, {}, command->check ? command->check() : std::string()};
}

}  // namespace

Request read_arguments(const Program& program, int argc, char** argv) {
    return Parser(program).read(argc, argv);
}
