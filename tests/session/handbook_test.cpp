// What the handbook says that expressions give is what they give.

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/session/fixture.h"

namespace {

// "`EXPRESSION`" of one cell, with the sign that a table cannot hold as it is.
std::string expression_in(const std::string& cell) {
    const std::size_t first = cell.find('`');
    std::string text = cell.substr(first + 1, cell.rfind('`') - first - 1);
    for (std::size_t at = text.find("\\|"); at != std::string::npos; at = text.find("\\|")) {
        text.erase(at, 1);
    }
    return text;
}

struct Row {
    std::string expression;
    std::string result;
};

// The rows of the table that begins with this line.
std::vector<Row> rows_below(const std::string& heading) {
    std::ifstream page(KIVO_DOCS "/description-format.md");
    std::string line;
    while (std::getline(page, line) && line != heading) {
    }
    std::getline(page, line);
    std::vector<Row> rows;
    while (std::getline(page, line) && line.rfind("| ", 0) == 0) {
        const std::size_t middle = line.rfind(" | ");
        rows.push_back({expression_in(line.substr(0, middle)),
                        line.substr(middle + 3, line.size() - middle - 5)});
    }
    return rows;
}

TEST(Handbook, expressions_give_what_it_says) {
    const Example fifo("fifo");
    const KIVO_SESSION session(fifo.info);
    const std::vector<Row> rows = rows_below("| Expression | Gives |");
    EXPECT_GE(rows.size(), 15u);
    for (const Row& row : rows) {
        const KIVO_EVALUATION found = session.evaluate(row.expression);
        EXPECT_EQ(found.kind == KIVO_VALUE_KIND::kUnknown ? "unknown" : found.value, row.result)
            << row.expression;
    }
}

// The spellings in a cell, which commas separate outside of calls.
std::vector<std::string> spellings_in(const std::string& cell) {
    std::vector<std::string> spellings;
    for (std::size_t begin = cell.find('`'); begin != std::string::npos;) {
        const std::size_t end = cell.find('`', begin + 1);
        spellings.push_back(expression_in(cell.substr(begin, end - begin + 1)));
        begin = cell.find('`', end + 1);
    }
    return spellings;
}

TEST(Handbook, what_it_calls_refused_is_refused) {
    const Example fifo("fifo");
    const KIVO_SESSION session(fifo.info);
    std::ifstream page(KIVO_DOCS "/description-format.md");
    std::string line;
    while (std::getline(page, line) && line != "| Not | But |") {
    }
    std::getline(page, line);
    std::size_t refused = 0;
    while (std::getline(page, line) && line.rfind("| `", 0) == 0) {
        for (const std::string& text : spellings_in(line.substr(0, line.rfind(" | ")))) {
            const std::vector<KIVO_FAULT> faults = session.evaluate(text).faults;
            ASSERT_EQ(faults.size(), 1u) << text;
            EXPECT_EQ(faults[0].id, "expression-syntax") << text;
            ++refused;
        }
    }
    EXPECT_GE(refused, 13u);
}

TEST(Handbook, settings_become_what_it_says) {
    const Loaded store(
        "<PARAMETERS><PARAMETER NAME='WIDTH' TYPE='INTEGER' VALUE='12'>"
        "<FORCE_VALUE V='8' IF='WIDTH gt 8'/></PARAMETER>"
        "<PARAMETER NAME='A' TYPE='INTEGER' VALUE='1'><FORCE_VALUE V='2' IF='WIDTH == 9'/>"
        "<FORCE_VALUE V='3' WHEN_CMD='WIDTH == 8'/></PARAMETER>"
        "<PARAMETER NAME='LEVEL' TYPE='INTEGER' DEFAULT_VALUE='WIDTH - 4'/>"
        "<PARAMETER NAME='MODE' TYPE='STRING' VALUE='FAST;SMALL'/></PARAMETERS>"
        "<PORTS><PORT NAME='c' TYPE='INPUT' USAGE='CONSTANT' DEFAULT_VALUE='1'>"
        "<FORCE_VALUE V='0' IF='MODE == \"SMALL\"'/></PORT></PORTS>");
    KIVO_SESSION session(store.info);
    EXPECT_EQ(value_of(session, "WIDTH"), "8");
    EXPECT_EQ(value_of(session, "A"), "3");
    EXPECT_EQ(value_of(session, "LEVEL"), "4");
    EXPECT_EQ(value_of(session, "MODE"), "FAST");
    EXPECT_EQ(state_of(session, "c"), "CONSTANT:1");
    ASSERT_EQ(session.set_all({{"c", "CONSTANT:1"}, {"MODE", "SMALL"}, {"WIDTH", "5"}}),
              KIVO_SET_RESULT::kDone);
    EXPECT_EQ(state_of(session, "c"), "CONSTANT:0");
    EXPECT_EQ(value_of(session, "WIDTH"), "5");
    EXPECT_EQ(value_of(session, "A"), "1");
}

}  // namespace
