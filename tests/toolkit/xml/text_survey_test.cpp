#include "kivo/toolkit/xml/internal/text_survey.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

// Further than one look reaches.
const std::string kLong(50000, 'x');

}  // namespace

TEST(TextSurvey, plain_text_holds_none_of_the_rare_bytes) {
    const TextSurvey survey("<A>text</A>\n");
    EXPECT_FALSE(survey.has_nul);
    EXPECT_FALSE(survey.has_ampersand);
    EXPECT_FALSE(survey.has_inner_markup_mark);
}

TEST(TextSurvey, rare_bytes_are_found_wherever_they_stand) {
    for (const std::string& before : {""s, "x"s, kLong}) {
        EXPECT_TRUE(TextSurvey(before + "\0"s).has_nul) << before.size();
        EXPECT_TRUE(TextSurvey(before + "&").has_ampersand) << before.size();
        EXPECT_TRUE(TextSurvey(before + "!").has_inner_markup_mark) << before.size();
        EXPECT_TRUE(TextSurvey(before + "?" + kLong).has_inner_markup_mark) << before.size();
    }
}

TEST(TextSurvey, xml_declaration_is_no_inner_markup) {
    EXPECT_FALSE(TextSurvey("<?xml version='1.0'?>\n<A/>").has_inner_markup_mark);
    EXPECT_TRUE(TextSurvey("<?xml version='1.0'?>\n<A/><?p?>").has_inner_markup_mark);
    EXPECT_TRUE(TextSurvey("<?xml version='1.0'" + kLong + "?>").has_inner_markup_mark);
    EXPECT_TRUE(TextSurvey("<A/><?xml version='1.0'?>").has_inner_markup_mark);
}

TEST(TextSurvey, lines_are_those_of_the_whole_text) {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += i % 3 == 0 ? "ab\r\n" : i % 3 == 1 ? "\r" : "abcde\n";
    }
    const LineTable whole(text);
    const TextSurvey survey(text);
    for (std::size_t offset = 0; offset <= text.size(); ++offset) {
        ASSERT_EQ(survey.lines.locate(offset).line, whole.locate(offset).line) << offset;
        ASSERT_EQ(survey.lines.locate(offset).column, whole.locate(offset).column) << offset;
    }
    EXPECT_EQ(whole.locate(text.size()).line, 20001);
}

TEST(TextSurvey, line_end_of_two_bytes_counts_once_wherever_it_stands) {
    for (std::size_t size = 16300; size < 16500; ++size) {
        const TextSurvey survey(std::string(size, 'x') + "\r\ny");
        ASSERT_EQ(survey.lines.locate(size + 2).line, 2) << size;
        ASSERT_EQ(survey.lines.locate(size + 2).column, 1) << size;
    }
}
