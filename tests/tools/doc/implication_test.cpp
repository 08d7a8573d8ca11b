#include "tools/doc/implication.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/doc/page_fixture.h"

namespace {

std::vector<std::string> parts_of(std::string_view text) {
    const auto found = implication_of(text);
    return found ? std::vector<std::string>{std::string(found->condition),
                                            std::string(found->consequence),
                                            std::string(found->alternative)}
                 : std::vector<std::string>();
}

using Parts = std::vector<std::string>;

TEST(DocImplication, the_three_texts_of_a_composed_condition_are_found) {
    EXPECT_EQ(parts_of("( ( A) and ( B ) ) || ( !( A ) )"), (Parts{"A", "B", ""}));
    EXPECT_EQ(parts_of("( ( A) and ( B ) ) || ( !( A ) and ( C ) )"), (Parts{"A", "B", "C"}));
}

TEST(DocImplication, parts_may_hold_the_same_words) {
    EXPECT_EQ(parts_of("( ( (X) and ( Y )) and ( B ) ) || ( !( (X) and ( Y ) ) )"),
              (Parts{"(X) and ( Y )", "B", ""}));
    EXPECT_EQ(parts_of("( ( A) and ( (X) and ( Y ) ) ) || ( !( A ) and ( C ) and ( D ) )"),
              (Parts{"A", "(X) and ( Y )", "C ) and ( D"}));
}

TEST(DocImplication, other_conditions_are_none) {
    for (const char* text :
         {"", "A", "( ( A) and ( B ) )", "( ( A) and ( B ) ) || ( !( C ) )", "( ( ) )", "( (  ) )",
          "( ( A) and ( B ) ) || ( !( A ) or ( C ) )", "( ( ) and ( ) )"}) {
        EXPECT_EQ(parts_of(text), Parts{}) << text;
    }
}

class ValueRuleTest : public PageTest {};

TEST_F(ValueRuleTest, says_what_is_required_when_and_otherwise) {
    make_from(R"(<PARAMETERS><PARAMETER NAME="W" TYPE="INTEGER">
        <VALUE_RULE><IF>W gt 128</IF><THEN>S == "BLOCK"</THEN><ELSE>D lte 131072</ELSE></VALUE_RULE>
        <VALUE_RULE><IF>W gt 1</IF><THEN>D gt 2</THEN></VALUE_RULE>
        <VALUE_RULE>W lt 9</VALUE_RULE></PARAMETER></PARAMETERS>)");
    EXPECT_EQ(texts_of("//section[@id='parameters']//li"),
              (Texts{"requires S == \"BLOCK\" when W gt 128, otherwise D lte 131072",
                     "requires D gt 2 when W gt 1", "requires W lt 9"}));
    EXPECT_EQ(texts_of("//tr[@id='rule-1']/td[3]"),
              Texts{"S == \"BLOCK\" when W gt 128, otherwise D lte 131072"});
}

}  // namespace
