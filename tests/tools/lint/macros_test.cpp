// Arguments of macros that are given again or not used.
#include "tests/tools/lint/lint_fixture.h"

namespace {

std::string macro(const std::string& attributes, const std::string& definition = "") {
    return "<MACROS><MACRO NAME='M' " + attributes + ">" + definition + "</MACRO></MACROS>" +
           kPassing;
}

// clang-format off
const LintCase kArguments[] = {
    {macro("ARGUMENTS='n,m' DEFINITION='n * A'"), {
     "2:38 the definition of \"M\" does not use its argument \"m\" [unused-argument]"}},
    {macro("ARGUMENTS='n'", "<DEFINITION>A == \"n\"</DEFINITION>"), {
     "2:36 the definition of \"M\" does not use its argument \"n\" [unused-argument]"}},
    {macro("ARGUMENTS='a' DEFINITION='A + ab + aa' "), {
     "2:36 the definition of \"M\" does not use its argument \"a\" [unused-argument]",
     "2:55 no parameter, port or macro is called ab [unknown-name]",
     "  did you mean \"a\"?",
     "2:60 no parameter, port or macro is called aa [unknown-name]",
     "  did you mean \"a\"?"}},
    {macro("ARGUMENTS='n, n' DEFINITION='n + 1'"), {
     "2:39 the argument \"n\" is given again [given-twice]"}},
};

const std::string kRightArguments[] = {
    macro("ARGUMENTS='n, m' DEFINITION='max(n,m)'"),
    macro("ARGUMENTS='n'", "<DEFINITION>MODE == \"a\" || n</DEFINITION>"),
    macro("DEFINITION='A'"),
};
// clang-format on

TEST(Macros, arguments_that_say_nothing) {
    expect_warnings(kArguments);
}

TEST(Macros, arguments_that_are_used_stay_silent) {
    expect_silence(kRightArguments);
}

}  // namespace
