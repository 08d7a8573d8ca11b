#include "tools/arguments/reader.h"

#include <gtest/gtest.h>

#include "tests/tools/arguments/sample_program.h"

namespace {

using Words = std::vector<std::string>;

Request read(const SampleProgram& sample, Words words) {
    words.insert(words.begin(), "tool");
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    return read_arguments(sample.program, static_cast<int>(arguments.size()), arguments.data());
}

std::string problem_of(const Words& words) {
    const SampleProgram sample;
    const Request request = read(sample, words);
    EXPECT_EQ(request.answer, "");
    return request.problem;
}

TEST(Reader, puts_every_word_where_its_row_says) {
    SampleProgram sample;
    const Request request = read(
        sample, {"draw", "-o", "out", "--index=i", "-I", "a", "-Ib", "a_file", "--width", "40",
                 "a thing", "--plain", "A=1", "--fail-on", "never", "B=", "--color", "always"});
    EXPECT_EQ(request.problem, "");
    ASSERT_EQ(request.command, &sample.program.commands[0]);
    EXPECT_EQ(sample.file, "a_file");
    EXPECT_EQ(sample.thing, "a thing");
    EXPECT_EQ(sample.settings, (Words{"A=1", "B="}));
    EXPECT_EQ(sample.output, "out");
    EXPECT_EQ(sample.index, "i");
    EXPECT_EQ(sample.folders, (Words{".", "a", "b"}));
    EXPECT_EQ(sample.width, 40);
    EXPECT_EQ(sample.level, "never");
    EXPECT_TRUE(sample.is_plain);
    EXPECT_EQ(sample.color, "always");
}

TEST(Reader, leaves_alone_what_is_not_given) {
    SampleProgram sample;
    EXPECT_EQ(read(sample, {"draw", "f"}).problem, "");
    EXPECT_EQ(sample.thing, "");
    EXPECT_EQ(sample.folders, Words{"."});
    EXPECT_EQ(sample.width, 100);
    EXPECT_EQ(sample.level, "error");
    EXPECT_FALSE(sample.is_plain);
}

TEST(Reader, an_argument_takes_only_words_that_it_accepts) {
    SampleProgram sample;
    EXPECT_EQ(read(sample, {"draw", "x=y.xml", "A=1", "thing"}).problem, "");
    // The one that is required takes any word.
    EXPECT_EQ(sample.file, "x=y.xml");
    EXPECT_EQ(sample.thing, "thing");
    EXPECT_EQ(sample.settings, Words{"A=1"});
    EXPECT_EQ(problem_of({"draw", "f", "thing", "A=1", "other"}), "unexpected argument 'other'");
}

TEST(Reader, a_repeated_option_takes_one_word_each_time) {
    SampleProgram sample;
    EXPECT_EQ(read(sample, {"draw", "-I", "a", "f"}).problem, "");
    EXPECT_EQ(sample.folders, (Words{".", "a"}));
    EXPECT_EQ(sample.file, "f");
}

TEST(Reader, common_options_stand_before_the_command_too) {
    SampleProgram sample;
    EXPECT_EQ(read(sample, {"--color", "never", "list", "w", "-"}).problem, "");
    EXPECT_EQ(sample.color, "never");
    EXPECT_EQ(sample.words, (Words{"w", "-"}));
}

TEST(Reader, a_word_after_two_hyphens_is_no_option) {
    SampleProgram sample;
    EXPECT_EQ(read(sample, {"list", "--", "--plain", "-x"}).problem, "");
    EXPECT_EQ(sample.words, (Words{"--plain", "-x"}));
}

TEST(Reader, says_what_is_wrong) {
    struct Row {
        Words words;
        const char* problem;
    };
    // clang-format off
    const std::vector<Row> rows = {
        {{},                                   "a sub-command is missing"},
        {{"--color", "never"},                 "a sub-command is missing"},
        {{"drow"},                             "unknown sub-command 'drow', perhaps 'draw'"},
        {{"something"},                        "unknown sub-command 'something'"},
        {{"-x"},                               "unknown option '-x'"},
        {{"draw"},                             "FILE is required"},
        {{"draw", "--bold"},                   "unknown option '--bold'"},
        {{"list", "a", "bad"},                 "WORD: a bad word"},
        {{"draw", "f", "--width", "39"},
         "--width: a whole number from 40 to 1000 is wanted, not '39'"},
        {{"draw", "f", "--width", "1001"},
         "--width: a whole number from 40 to 1000 is wanted, not '1001'"},
        {{"draw", "f", "--width", "0x40"},
         "--width: a whole number from 40 to 1000 is wanted, not '0x40'"},
        {{"draw", "f", "--fail-on", "x"},      "--fail-on: 'never' or 'error' is wanted, not 'x'"},
        {{"draw", "f", "--output", ""},        "--output: the name of a file is missing"},
        {{"draw", "f", "--output"},            "--output: the value is missing"},
        {{"draw", "f", "-o", "a", "-o", "b"},  "--output: is given more than once"},
        {{"draw", "f", "--index", "i"},        "--index requires --output"},
        {{"draw", "f", "nothing"},             "nothing is to be drawn"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_EQ(problem_of(row.words), row.problem) << testing::PrintToString(row.words);
    }
}

TEST(Reader, tells_the_command_of_which_the_arguments_are_wrong) {
    const SampleProgram sample;
    EXPECT_EQ(read(sample, {"draw"}).command, &sample.program.commands[0]);
    EXPECT_EQ(read(sample, {"drow"}).command, nullptr);
}

TEST(Reader, answers_help_and_version) {
    const SampleProgram sample;
    EXPECT_EQ(read(sample, {"--version"}).answer, "tool 1.2\n");
    const std::string help = read(sample, {"--help"}).answer;
    EXPECT_NE(help.find("  draw "), std::string::npos) << help;
    EXPECT_EQ(help.find("secret"), std::string::npos) << help;
    const std::string draw = read(sample, {"draw", "-h"}).answer;
    for (const char* const part : {"FILE REQUIRED ", "NAME=VALUE ... ", "-o,--output FILE ",
                                   "-I DIR ... ", "--plain ", "--color WHEN "}) {
        EXPECT_NE(draw.find(part), std::string::npos) << part << draw;
    }
}

}  // namespace
