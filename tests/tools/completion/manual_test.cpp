// What the manual and the completion scripts make of hostile declarations.
#include <gtest/gtest.h>

#include <string>

#include "tools/completion/scopes.h"
#include "tools/completion/writers.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

struct DeclaredProgram {
    DeclaredProgram() {
        program.name = "kivo";
        program.version = "kivo 1.2";
        program.footer = "Examples:\n  kivo make a\\b";
        program.help_row = {.name = "--help", .short_name = "-h"};
        program.version_row = {.name = "--version"};
        // clang-format off
        program.commands = {
            {.name = "make", .summary = "It's [made]: of 'C:\\x'",
             .rows = {
                {.name = "FILE", .target = &texts, .help = ".first-rate \"file\"",
                 .offer = Offer::kDescriptions},
                {.name = "--kind", .short_name = "-k", .value_name = "KIND", .target = &text,
                 .help = "A kind", .choices = {"red", "blue"}},
                {.name = "--fast", .target = &flag, .help = "Be fast"},
                {.name = "-I", .value_name = "DIR", .target = &texts, .help = "Look there",
                 .offer = Offer::kFolders}},
             .footer = "'quoted' ^~`\n\nExample:\n  .so /etc/passwd"},
            {.name = "secret", .summary = "Nobody's business", .is_hidden = true}};
        // clang-format on
    }

    std::string text;
    std::vector<std::string> texts;
    bool flag = false;
    Program program;
};

TEST(Scopes, hold_what_was_declared) {
    const DeclaredProgram declared;
    const std::vector<Scope> scopes = scopes_of(declared.program);
    ASSERT_EQ(scopes.size(), 2U);
    EXPECT_EQ(scopes[0].name, "");
    ASSERT_EQ(scopes[0].options.size(), 2U);
    EXPECT_EQ(scopes[0].options[1]->name, "--version");
    EXPECT_EQ(scopes[1].name, "make");
    ASSERT_EQ(scopes[1].arguments.size(), 1U);
    EXPECT_EQ(scopes[1].arguments[0]->name, "FILE");
    EXPECT_TRUE(scopes[1].arguments[0]->is_repeated());
    ASSERT_EQ(scopes[1].options.size(), 4U);
    EXPECT_EQ(scopes[1].options[0]->names(), (std::vector<std::string>{"-h", "--help"}));
    EXPECT_EQ(scopes[1].options[1]->names(), (std::vector<std::string>{"-k", "--kind"}));
    EXPECT_EQ(scopes[1].options[1]->value_name, "KIND");
    EXPECT_EQ(scopes[1].options[1]->choices, (std::vector<std::string>{"red", "blue"}));
    EXPECT_TRUE(scopes[1].options[2]->is_switch());
    EXPECT_EQ(scopes[1].options[3]->names(), (std::vector<std::string>{"-I"}));
}

TEST(Manual, escapes_what_roff_would_take_for_its_own) {
    const DeclaredProgram declared;
    const std::string page = manual_page(declared.program);
    EXPECT_TRUE(contains(page, "\nIt\\(aqs [made]: of \\(aqC:\\ex\\(aq.\n")) << page;
    EXPECT_TRUE(contains(page, "\n\\&.first\\-rate \\(dqfile\\(dq.\n")) << page;
    EXPECT_TRUE(contains(page, "\n\\(aqquoted\\(aq \\(ha\\(ti\\(ga\n")) << page;
    EXPECT_TRUE(contains(page, "\n.EX\n\\&.so /etc/passwd\n.EE\n")) << page;
    EXPECT_TRUE(contains(page, "\nkivo make a\\eb\n")) << page;
    EXPECT_TRUE(contains(page, "\n.TP\n\\fB\\-k\\fR, \\fB\\-\\-kind\\fR \\fIKIND\\fR\n")) << page;
    EXPECT_TRUE(
        contains(page,
                 "\\fBmake\\fR [\\fB\\-k\\fR\\ \\fBred\\fR|\\fBblue\\fR] [\\fB\\-\\-fast\\fR] "
                 "[\\fB\\-I\\fR\\ \\fIDIR\\fR]... [\\fIFILE\\fR...]\n"))
        << page;
    EXPECT_FALSE(contains(page, "secret"));
}

TEST(Completion, quotes_descriptions_for_zsh) {
    const DeclaredProgram declared;
    const std::string script = zsh_completion(declared.program);
    EXPECT_TRUE(contains(script, R"('make:It'\''s \[made\]\: of '\''C\:\\x'\''')")) << script;
    EXPECT_TRUE(contains(script, "'(-k --kind)'{-k+,--kind=}'[A kind]:KIND:(red blue)'")) << script;
    EXPECT_TRUE(contains(script, "'*-I+[Look there]:DIR:_files -/'")) << script;
    EXPECT_FALSE(contains(script, "secret"));
}

TEST(Completion, quotes_descriptions_for_fish) {
    const DeclaredProgram declared;
    const std::string script = fish_completion(declared.program);
    EXPECT_TRUE(contains(script, R"(-a make -d 'It\'s [made]: of \'C:\\x\'')")) << script;
    EXPECT_TRUE(contains(script, "-s k -l kind -x -a 'red blue' -d 'A kind'")) << script;
    EXPECT_TRUE(contains(script, "-s I -x -a '(__fish_complete_directories)' -d 'Look there'"));
    EXPECT_FALSE(contains(script, "secret"));
}

TEST(Completion, knows_for_bash_which_options_take_a_value) {
    const DeclaredProgram declared;
    const std::string script = bash_completion(declared.program);
    EXPECT_TRUE(contains(script, "'make -k' | 'make --kind' | 'make -I') option=$word ;;"))
        << script;
    EXPECT_TRUE(contains(script, "'make -k' | 'make --kind') _kivo_words 'red blue' ;;"));
    EXPECT_TRUE(contains(script, "'make -I') _kivo_folders ;;")) << script;
    EXPECT_FALSE(contains(script, "'make --fast'"));
    EXPECT_FALSE(contains(script, "secret"));
}

}  // namespace
