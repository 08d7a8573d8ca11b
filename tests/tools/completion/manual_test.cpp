// What the manual and the completion scripts make of hostile declarations.
#include <gtest/gtest.h>

#include <string>

#include "tools/completion/writers.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

struct DeclaredProgram {
    DeclaredProgram() {
        app.name("kivo");
        app.set_version_flag("--version", "kivo 1.2");
        app.footer("Examples:\n  kivo make a\\b");
        CLI::App* const make = app.add_subcommand("make", "It's [made]: of 'C:\\x'");
        make->add_option("FILE", texts, ".first-rate \"file\"")->type_name("");
        make->add_option("-k,--kind", text, "A kind")
            ->type_name("KIND")
            ->check(one_of({"red", "blue"}));
        make->add_flag("--fast", flag, "Be fast");
        make->footer("'quoted' ^~`\n\nExample:\n  .so /etc/passwd");
        app.add_subcommand("secret", "Nobody's business")->group("");
        commands = {{make, "kivo make [-k KIND] FILE...", {}},
                    {app.get_subcommand("secret"), "kivo secret", {}}};
    }

    ProgramModel model() { return model_of(app, commands); }

    CLI::App app;
    std::string text;
    std::vector<std::string> texts;
    bool flag = false;
    std::vector<Command> commands;
};

TEST(ProgramModelTest, HoldsWhatWasDeclared) {
    DeclaredProgram program;
    const ProgramModel model = program.model();
    EXPECT_EQ(model.version, "kivo 1.2");
    ASSERT_EQ(model.commands.size(), 1U);
    const CommandModel& make = model.commands[0];
    EXPECT_EQ(make.name, "make");
    ASSERT_EQ(make.arguments.size(), 1U);
    EXPECT_EQ(make.arguments[0].name, "FILE");
    EXPECT_TRUE(make.arguments[0].is_repeated);
    EXPECT_EQ(make.arguments[0].value.kind, ValueModel::Kind::kDescriptions);
    ASSERT_EQ(make.options.size(), 3U);
    EXPECT_EQ(make.options[1].names, (std::vector<std::string>{"-k", "--kind"}));
    EXPECT_EQ(make.options[1].value_name, "KIND");
    EXPECT_EQ(make.options[1].value.words, (std::vector<std::string>{"red", "blue"}));
    EXPECT_FALSE(make.options[2].takes_value());
}

TEST(ManualTest, EscapesWhatRoffWouldTakeForItsOwn) {
    DeclaredProgram program;
    const std::string page = manual_page(program.model());
    EXPECT_TRUE(contains(page, "\nIt\\(aqs [made]: of \\(aqC:\\ex\\(aq.\n")) << page;
    EXPECT_TRUE(contains(page, "\n\\&.first\\-rate \\(dqfile\\(dq.\n")) << page;
    EXPECT_TRUE(contains(page, "\n\\(aqquoted\\(aq \\(ha\\(ti\\(ga\n")) << page;
    EXPECT_TRUE(contains(page, "\n.EX\n\\&.so /etc/passwd\n.EE\n")) << page;
    EXPECT_TRUE(contains(page, "\nkivo make a\\eb\n")) << page;
    EXPECT_TRUE(contains(page, "\n.TP\n\\fB\\-k\\fR, \\fB\\-\\-kind\\fR \\fIKIND\\fR\n")) << page;
    EXPECT_TRUE(contains(page, "\\fBmake\\fR [\\fB\\-k\\fR\\ \\fIKIND\\fR] \\fIFILE\\fR...\n"))
        << page;
    EXPECT_FALSE(contains(page, "secret"));
}

TEST(CompletionTest, QuotesDescriptionsForZsh) {
    DeclaredProgram program;
    const std::string script = zsh_completion(program.model());
    EXPECT_TRUE(contains(script, R"('make:It'\''s \[made\]\: of '\''C\:\\x'\''')")) << script;
    EXPECT_TRUE(contains(script, "'(-k --kind)'{-k+,--kind=}'[A kind]:KIND:(red blue)'")) << script;
    EXPECT_FALSE(contains(script, "secret"));
}

TEST(CompletionTest, QuotesDescriptionsForFish) {
    DeclaredProgram program;
    const std::string script = fish_completion(program.model());
    EXPECT_TRUE(contains(script, R"(-a make -d 'It\'s [made]: of \'C:\\x\'')")) << script;
    EXPECT_TRUE(contains(script, "-s k -l kind -x -a 'red blue' -d 'A kind'")) << script;
    EXPECT_FALSE(contains(script, "secret"));
}

TEST(CompletionTest, KnowsForBashWhichOptionsTakeAValue) {
    DeclaredProgram program;
    const std::string script = bash_completion(program.model());
    EXPECT_TRUE(contains(script, "'make -k' | 'make --kind') option=$word ;;")) << script;
    EXPECT_TRUE(contains(script, "'make -k' | 'make --kind') _kivo_words 'red blue' ;;"));
    EXPECT_FALSE(contains(script, "'make --fast'"));
    EXPECT_FALSE(contains(script, "secret"));
}

}  // namespace
