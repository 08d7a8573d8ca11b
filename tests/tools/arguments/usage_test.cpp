#include "tools/arguments/usage.h"

#include <gtest/gtest.h>

#include "tests/tools/arguments/sample_program.h"

namespace {

TEST(Usage, of_the_program_names_the_commands_that_are_shown) {
    const SampleProgram sample;
    EXPECT_EQ(usage_of(sample.program),
              "tool draw|list ...; 'tool --help' says what each of them does");
}

TEST(Usage, shows_every_row_as_it_may_be_written) {
    const SampleProgram sample;
    EXPECT_EQ(usage_of(sample.program, sample.program.commands[0]),
              "tool draw [-o FILE [--index FILE]] [-I DIR]... [--width COLUMNS] "
              "[--fail-on never|error] [--plain] [--color WHEN] FILE [THING] [NAME=VALUE...]");
    EXPECT_EQ(usage_of(sample.program, sample.program.commands[1]),
              "tool list [--color WHEN] WORD...");
}

TEST(Usage, shows_required_options_and_choices_as_they_are) {
    SampleProgram sample;
    Command& list = sample.program.commands[1];
    std::string to;
    list.rows = {{.name = "--to", .value_name = "LANGUAGE", .target = &to, .is_required = true}};
    list.rows.front().choices = {"a", "b", "c", "d"};
    EXPECT_EQ(usage_of(sample.program, list), "tool list --to a|b|c|d [--color WHEN]");
    list.rows.front().choices.emplace_back("e");
    EXPECT_EQ(usage_of(sample.program, list), "tool list --to LANGUAGE [--color WHEN]");
}

}  // namespace
