#include <gtest/gtest.h>

#include <string>

#include "kivo/session/internal/expression/expression.h"

namespace {

using namespace kivo_session;

// The tree with all parentheses: "((1) + ((2) * (3)))" is written "(1 + (2 * 3))".
std::string tree(const std::string& text) {
    Expression expression;
    parse(text, expression);
    if (expression.fault) {
        return "fault";
    }
    std::vector<std::string> stack;
    for (const Node& node : expression.nodes) {
        std::string written(token_of(text, node));
        std::string operands;
        for (std::size_t i = stack.size() - node.count; i < stack.size(); ++i) {
            operands += (operands.empty() ? "" : ", ") + stack[i];
        }
        if (node.kind == NodeKind::kBinary) {
            written = "(" + stack[stack.size() - 2] + " " + written + " " + stack.back() + ")";
        } else if (node.kind == NodeKind::kUnary) {
            written = "(" + written + " " + stack.back() + ")";
        } else if (node.kind == NodeKind::kCall) {
            written += "(" + operands + ")";
        }
        stack.resize(stack.size() - node.count);
        stack.push_back(written);
    }
    return stack.size() == 1 ? stack[0] : "broken";
}

std::string fault_of(const std::string& text) {
    Expression expression;
    parse(text, expression);
    if (!expression.fault) {
        return "none";
    }
    return std::string(fault_name(expression.fault->id)) + " " +
           std::to_string(expression.fault->offset) + ": " + expression.fault->text;
}

std::string printed(const std::string& text) {
    Expression expression;
    parse(text, expression);
    return expression.nodes.empty()
               ? "fault"
               : print(text, expression.nodes,
                       static_cast<std::uint32_t>(expression.nodes.size()) - 1);
}

struct Row {
    const char* text;
    const char* expected;
};

}  // namespace

TEST(Parser, operators_bind_from_or_to_not) {
    for (const Row& row : std::initializer_list<Row>{
             {"1", "1"},
             {"1 + 2 * 3 ^ 2", "(1 + (2 * (3 ^ 2)))"},
             {"a || b && c == d + e * - f ^ ! g",
              "(a || (b && (c == (d + (e * (- (f ^ (! g))))))))"},
             {"! a ^ b", "((! a) ^ b)"},
             {"- a ^ b", "(- (a ^ b))"},
             {"- a * b", "((- a) * b)"},
             {"a ^ - b", "(a ^ (- b))"},
             {"a ^ - b * c", "((a ^ (- b)) * c)"},
             {"a ^ - ! b", "(a ^ (- (! b)))"},
             {"a - b - c", "((a - b) - c)"},
             {"7 quot 2 * 2", "((7 quot 2) * 2)"},
             {"a and b or c and d", "((a and b) or (c and d))"},
             {"! a == b", "((! a) == b)"},
             {"not a and not b", "((not a) and (not b))"},
             {"a - - + b", "(a - (- (+ b)))"},
             {"( a or b ) and c", "((a or b) and c)"},
             {"(2 ^ 3) ^ 2", "((2 ^ 3) ^ 2)"},
             {"(a lt b) lt c", "((a lt b) lt c)"},
         }) {
        EXPECT_EQ(tree(row.text), row.expected) << row.text;
    }
}

TEST(Parser, words_are_known_in_any_case_and_without_blanks) {
    for (const Row& row : std::initializer_list<Row>{
             {"DEPTH>=16", "(DEPTH >= 16)"},
             {"DEPTH Gte 16 AND 1", "((DEPTH Gte 16) AND 1)"},
             {"(a lt(b))", "(a lt b)"},
             {"1lt 2", "(1 lt 2)"},
             {"\ta\n==\r\"x\"", "(a == \"x\")"},
             {"android", "android"},
             {"a$b_1", "a$b_1"},
             {"\xC3\xA4", "\xC3\xA4"},
         }) {
        EXPECT_EQ(tree(row.text), row.expected) << row.text;
    }
}

TEST(Parser, calls) {
    for (const Row& row : std::initializer_list<Row>{
             {"F()", "F()"},
             {"F ( )", "F()"},
             {"F(a + 1, G(), (b))", "F((a + 1), G(), b)"},
             {"F(a or b) + 1", "(F((a or b)) + 1)"},
             {"-F(1) ^ 2", "(- (F(1) ^ 2))"},
         }) {
        EXPECT_EQ(tree(row.text), row.expected) << row.text;
    }
}

TEST(Parser, faults_say_where_and_what_to_write) {
    for (
        const Row& row : std::initializer_list<Row>{
            {"", "expression-syntax 0: the text is empty"},
            {"( DATA_WIDTH gt 1", "expression-syntax 17: \")\" is missing"},
            {"a )", "expression-syntax 2: no \"(\" stands before this \")\""},
            {"a = b", "expression-syntax 2: \"=\": write \"==\""},
            {"a /= b", "expression-syntax 2: \"/=\": write \"!=\""},
            {"a <> b", "expression-syntax 2: \"<>\": write \"!=\""},
            {"a & b", "expression-syntax 2: \"&\": write \"&&\" or \"and\""},
            {"a | b", "expression-syntax 2: \"|\": write \"||\" or \"or\""},
            {"a # b", "expression-syntax 2: \"#\": write \"||\" or \"or\""},
            {"a ** b", "expression-syntax 2: \"**\": write \"^\""},
            {"a == 'x'", "expression-syntax 5: \"'\": texts stand in double quotes"},
            {"a xor b",
             "expression-syntax 2: there is no \"xor\"; write \"!=\" between two conditions"},
            {"a ge b", "expression-syntax 2: there is no \"ge\"; write \">=\" or \"gte\""},
            {"a Eq b", "expression-syntax 2: there is no \"eq\"; write \"==\""},
            {"a => b", "expression-syntax 2: \"=>\": write \">=\" or \"gte\""},
            {"a =< b", "expression-syntax 2: \"=<\": write \"<=\" or \"lte\""},
            {"a ? b : c",
             "expression-syntax 2: \"?\": there is no \"?:\"; use an element with IF and ELSE"},
            {"0x10", "expression-syntax 0: \"0x\": numbers are decimal"},
            {"\"abc", "expression-syntax 0: \"\"abc\": the text does not end"},
            {"a b", "expression-syntax 2: an operator is missing before \"b\""},
            {"8bit", "expression-syntax 1: an operator is missing before \"bit\""},
            {"1.", "expression-syntax 1: an operator is missing before \".\""},
            {"a +", "expression-syntax 3: a number, text, name or \"(\" is missing at the end"},
            {"F(a,)", "expression-syntax 4: a number, text, name or \"(\" is missing before \")\""},
            {"()", "expression-syntax 1: a number, text, name or \"(\" is missing before \")\""},
            {"(a, b)",
             "expression-syntax 2: \",\" stands only between the arguments of a macro or function"},
            {"! - a", "expression-syntax 2: a number, text, name or \"(\" is missing before \"-\""},
            {"2 ^ 3 ^ 2",
             "expression-syntax 6: a power of a power has no one reading; write parentheses"},
            {"2 ^ - 3 ^ 2",
             "expression-syntax 8: a power of a power has no one reading; write parentheses"},
            {"0 lt DEPTH lt 32",
             "expression-syntax 11: a comparison of a comparison has no one reading; write "
             "\"and\" between two comparisons"},
            {"a \xE2\x89\xA4 3",
             "expression-syntax 2: an operator is missing before \"\xE2\x89\xA4\"; column 3 holds "
             "a "
             "one-character \"less or equal\": write \"<=\" or \"lte\""},
            {"a\xC2\xA0gt 3",
             "expression-syntax 6: an operator is missing before \"3\"; column 2 holds a no-break "
             "space: write a blank"},
        }) {
        EXPECT_EQ(fault_of(row.text), row.expected) << row.text;
    }
}

TEST(Parser, prints_what_parses_to_the_same_tree) {
    for (const Row& row : std::initializer_list<Row>{
             {"((a)) + (b)", "a + b"},
             {"(a + b) * c", "(a + b) * c"},
             {"a + (b + c)", "a + (b + c)"},
             {"(a + b) + c", "a + b + c"},
             {"-(2 ^ 2)", "-2 ^ 2"},
             {"(-2) ^ 2", "(-2) ^ 2"},
             {"2 ^ -3", "2 ^ (-3)"},
             {"!(a == b)", "!(a == b)"},
             {"not ( a )", "not a"},
             {"(a and b) or c", "a and b or c"},
             {"a and (b or c)", "a and (b or c)"},
             {"(a lt b) == c", "(a lt b) == c"},
             {"F( a+b ,c )", "F(a + b, c)"},
             {"F()", "F()"},
             {"- - a", "--a"},
         }) {
        EXPECT_EQ(printed(row.text), row.expected) << row.text;
        EXPECT_EQ(tree(printed(row.text)), tree(row.text)) << row.text;
    }
}

TEST(Parser, limits_are_faults) {
    EXPECT_EQ(fault_of(std::string(256, '(') + "1" + std::string(256, ')')), "none");
    EXPECT_EQ(fault_of(std::string(257, '(') + "1" + std::string(257, ')')),
              "too-deep 256: more than 256 operators and parentheses are open");
    EXPECT_EQ(fault_of(std::string(65535, ' ') + "1"), "none");
    EXPECT_EQ(fault_of(std::string(65536, ' ') + "1"),
              "text-too-long 65536: the text is longer than 65536 bytes");
    std::string sum = "1";
    while (sum.size() < 60000) {
        sum += "+1";
    }
    EXPECT_EQ(fault_of(sum), "none");
}

TEST(Parser, every_prefix_of_a_text_ends_well) {
    const std::string text = "!( a lte CLOG2(b + 1, \"x\") ) || 2 ^ -3.5 quot c != 0 and F()";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        EXPECT_NE(tree(text.substr(0, size)), "broken") << size;
    }
}

TEST(Parser, source_of_a_subtree_has_its_parentheses) {
    const std::string text = " ( a + b ) * F(1, G())";
    Expression expression;
    parse(text, expression);
    std::vector<std::string> sources;
    for (const Node& node : expression.nodes) {
        sources.push_back(text.substr(node.source_begin, node.source_end - node.source_begin));
    }
    EXPECT_EQ(sources, (std::vector<std::string>{"a", "b", "( a + b )", "1", "G()", "F(1, G())",
                                                 "( a + b ) * F(1, G())"}));
}

TEST(Implication, is_found_in_the_combined_text_of_a_value_rule) {
    const auto parts = [](const std::string& text) -> std::string {
        Expression expression;
        parse(text, expression);
        const auto found = find_implication(text, expression.nodes);
        if (!found) {
            return "none";
        }
        const auto part = [&](std::uint32_t root) { return print(text, expression.nodes, root); };
        return part(found->condition) + " ? " + part(found->consequence) +
               (found->alternative ? " : " + part(*found->alternative) : "");
    };
    EXPECT_EQ(parts("( ( a lt 1) and ( b ) ) || ( !( a lt 1 ) )"), "a lt 1 ? b");
    EXPECT_EQ(parts("( ( a or b) and ( c ) ) || ( !( a or b ) and ( d or e ) )"),
              "a or b ? c : d or e");
    EXPECT_EQ(parts("( ( a ) and ( b ) ) || ( !( c ) )"), "none");
    EXPECT_EQ(parts("a || b"), "none");
    EXPECT_EQ(parts("( ( a < 1) and b ) || !( a lt 1 )"), "a < 1 ? b");
}
