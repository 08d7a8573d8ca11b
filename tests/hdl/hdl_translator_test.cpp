#include "kivo/hdl/hdl_translator.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/hdl/hdl_reference.h"

namespace {

std::string nhdl(const std::string& text) {
    return kivo_translate_text_to_hdl(text, KIVO_HDL_NHDL);
}

std::string vhdl(const std::string& text) {
    return kivo_translate_text_to_hdl(text, KIVO_HDL_VHDL);
}

std::string verilog(const std::string& text) {
    return kivo_translate_text_to_hdl(text, KIVO_HDL_VERILOG);
}

constexpr KIVO_HDL_LANGUAGE kAnyLanguage[] = {
    KIVO_HDL_NHDL,
    KIVO_HDL_VHDL,
    KIVO_HDL_VERILOG,
    static_cast<KIVO_HDL_LANGUAGE>(3),
    static_cast<KIVO_HDL_LANGUAGE>(-1),
    static_cast<KIVO_HDL_LANGUAGE>(2147483647),
};

const KIVO_HDL_TRANSLATOR_MAP& nhdl_rows() {
    static const KIVO_HDL_TRANSLATOR_MAP rows = {
        {"%", "mod"}, {"/", "div"},  {"and", "&"},    {"gt", ">"}, {"gte", ">="},
        {"lt", "<"},  {"lte", "<="}, {"quot", "div"}, {"||", "#"},
    };
    return rows;
}

const KIVO_HDL_TRANSLATOR_MAP& verilog_rows() {
    static const KIVO_HDL_TRANSLATOR_MAP rows = {
        {"and", "&&"}, {"div", "/"},  {"gt", ">"},   {"gte", ">="},
        {"lt", "<"},   {"lte", "<="}, {"quot", "/"},
    };
    return rows;
}

std::string in_upper_case(std::string text) {
    for (char& letter : text) {
        letter = static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
    }
    return text;
}

TEST(HdlTranslatorMap, holds_the_operators_of_its_language) {
    EXPECT_EQ(init_nhdl_translator_map(), nhdl_rows());
    EXPECT_EQ(init_vhdl_translator_map(), KIVO_HDL_TRANSLATOR_MAP());
    EXPECT_EQ(init_verilog_translator_map(), verilog_rows());
    EXPECT_EQ(init_nhdl_translator_map().size(), 9U);
    EXPECT_EQ(init_verilog_translator_map().size(), 7U);
}

TEST(HdlTranslatorMap, is_looked_up_in_any_letter_case) {
    for (const char* word : {"and", "And", "AND", "aNd"}) {
        EXPECT_EQ(init_nhdl_translator_map().at(word), "&") << word;
        EXPECT_EQ(init_verilog_translator_map().at(word), "&&") << word;
    }
}

TEST(HdlTranslatorMap, belongs_to_its_caller) {
    KIVO_HDL_TRANSLATOR_MAP map = init_nhdl_translator_map();
    map["and"] = "changed";
    map["or"] = "added";
    EXPECT_EQ(init_nhdl_translator_map(), nhdl_rows());
    EXPECT_EQ(nhdl("a and b or c"), "a & b or c");
}

TEST(HdlTranslator, every_operator_is_translated_in_any_place_and_case) {
    for (const auto& [word, target] : nhdl_rows()) {
        for (const std::string& written : {word, in_upper_case(word)}) {
            EXPECT_EQ(nhdl(written), target) << written;
            EXPECT_EQ(nhdl("a " + written + " b"), "a " + target + " b") << written;
            EXPECT_EQ(nhdl(written + " " + written), target + " " + target) << written;
        }
    }
    for (const auto& [word, target] : verilog_rows()) {
        for (const std::string& written : {word, in_upper_case(word)}) {
            EXPECT_EQ(verilog(written), target) << written;
            EXPECT_EQ(verilog("a " + written + " b"), "a " + target + " b") << written;
            EXPECT_EQ(verilog(written + " " + written), target + " " + target) << written;
        }
    }
}

TEST(HdlTranslator, empty_text_stays_empty) {
    for (const KIVO_HDL_LANGUAGE language : kAnyLanguage) {
        EXPECT_EQ(kivo_translate_text_to_hdl("", language), "") << language;
    }
}

TEST(HdlTranslator, comparisons_and_conjunctions) {
    const std::string text = "x gte 4 and y lt 2";
    EXPECT_EQ(nhdl(text), "x >= 4 & y < 2");
    EXPECT_EQ(verilog(text), "x >= 4 && y < 2");
    EXPECT_EQ(vhdl(text), text);
}

TEST(HdlTranslator, divisions_differ_by_language) {
    EXPECT_EQ(nhdl("a / b"), "a div b");
    EXPECT_EQ(nhdl("a div b"), "a div b");
    EXPECT_EQ(nhdl("a quot b"), "a div b");
    EXPECT_EQ(verilog("a / b"), "a / b");
    EXPECT_EQ(verilog("a div b"), "a / b");
    EXPECT_EQ(verilog("a quot b"), "a / b");
}

TEST(HdlTranslator, remainder_and_disjunction_are_translated_for_nhdl_only) {
    EXPECT_EQ(nhdl("a % b"), "a mod b");
    EXPECT_EQ(verilog("a % b"), "a % b");
    EXPECT_EQ(nhdl("a || b"), "a # b");
    EXPECT_EQ(verilog("a || b"), "a || b");
}

TEST(HdlTranslator, other_tokens_keep_their_case) {
    EXPECT_EQ(nhdl("A LTE B"), "A <= B");
    EXPECT_EQ(verilog("A LTE B"), "A <= B");
    EXPECT_EQ(vhdl("A LTE b"), "A LTE b");
    EXPECT_EQ(nhdl("Alpha AnD Not or MOD"), "Alpha & Not or MOD");
}

TEST(HdlTranslator, only_whole_tokens_are_translated) {
    for (const char* text : {"a<=b",  "a<b",    "lt(b)", "(and", "and)",     "\"and\"", "and,",
                             "band",  "andy",   "an",    "ands", "quots",    "quo",     "|",
                             "|||",   "//",     "%%",    "a/b",  "or",       "not",     "mod",
                             "=",     "==",     "!=",    "<",    "and\tand", "and\nlt", "\tand",
                             "and\r", "\xE4nd", "l\xF4"}) {
        EXPECT_EQ(nhdl(text), text);
        EXPECT_EQ(verilog(text), text);
    }
}

TEST(HdlTranslator, punctuation_belongs_to_its_token) {
    EXPECT_EQ(nhdl("(a lt b)"), "(a < b)");
    EXPECT_EQ(verilog("(a lt b)"), "(a < b)");
    EXPECT_EQ(nhdl("a lt(b)"), "a lt(b)");
    EXPECT_EQ(nhdl("\"this and that\""), "\"this & that\"");
}

// Letters alone have two cases: what differs from a word by that one bit elsewhere is another word.
TEST(HdlTranslator, only_letters_are_folded) {
    EXPECT_EQ(nhdl("\\\\"), "\\\\");
    EXPECT_EQ(nhdl("\x0F"), "\x0F");
    EXPECT_EQ(nhdl("\x05"), "\x05");
    EXPECT_EQ(nhdl("O"), "O");
}

TEST(HdlTranslator, nul_bytes_are_ordinary_characters) {
    using namespace std::string_literals;
    EXPECT_EQ(nhdl("a\0b and lt\0 lt"s), "a\0b & lt\0 <"s);
    EXPECT_EQ(verilog("\0"s), "\0"s);
}

TEST(HdlTranslator, blanks_at_the_front_disappear) {
    for (const KIVO_HDL_LANGUAGE language : kAnyLanguage) {
        EXPECT_EQ(kivo_translate_text_to_hdl(" a", language), "a") << language;
        EXPECT_EQ(kivo_translate_text_to_hdl("    a b", language), "a b") << language;
    }
    EXPECT_EQ(nhdl("  and"), "&");
}

TEST(HdlTranslator, one_blank_at_the_end_disappears) {
    for (const KIVO_HDL_LANGUAGE language : kAnyLanguage) {
        EXPECT_EQ(kivo_translate_text_to_hdl("a ", language), "a") << language;
        EXPECT_EQ(kivo_translate_text_to_hdl(" a ", language), "a") << language;
        EXPECT_EQ(kivo_translate_text_to_hdl("a  ", language), "a ") << language;
        EXPECT_EQ(kivo_translate_text_to_hdl("a    ", language), "a   ") << language;
    }
    EXPECT_EQ(nhdl("a and "), "a &");
    EXPECT_EQ(nhdl("a and  "), "a & ");
}

TEST(HdlTranslator, blanks_alone_give_nothing) {
    for (const KIVO_HDL_LANGUAGE language : kAnyLanguage) {
        for (std::size_t blanks = 1; blanks < 5; ++blanks) {
            EXPECT_EQ(kivo_translate_text_to_hdl(std::string(blanks, ' '), language), "")
                << language << ", " << blanks;
        }
    }
}

TEST(HdlTranslator, repeated_blanks_between_tokens_stay) {
    EXPECT_EQ(nhdl("a  and   b"), "a  &   b");
    EXPECT_EQ(vhdl("a  and   b"), "a  and   b");
}

TEST(HdlTranslator, tabs_and_line_breaks_are_no_blanks) {
    EXPECT_EQ(nhdl("\n and \t"), "\n & \t");
    EXPECT_EQ(nhdl("a\tand b"), "a\tand b");
}

TEST(HdlTranslator, unknown_languages_translate_nothing) {
    for (const std::int32_t number : {3, 4, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(
            kivo_translate_text_to_hdl(" a and  b div c ", static_cast<KIVO_HDL_LANGUAGE>(number)),
            "a and  b div c")
            << number;
    }
}

TEST(HdlTranslator, leaves_its_argument_alone) {
    const std::string text = " a and b ";
    nhdl(text);
    EXPECT_EQ(text, " a and b ");
}

// Would take hours if every token moved the text after it.
TEST(HdlTranslator, twenty_megabytes_are_translated) {
    std::string text;
    std::string expected;
    while (text.size() < (20U << 20)) {
        text += "WIDTH  gte 4 and x / 2 ";
        expected += "WIDTH  >= 4 & x div 2 ";
    }
    expected.pop_back();
    EXPECT_TRUE(nhdl(text) == expected);
    const std::string blanks(20U << 20, ' ');
    EXPECT_EQ(nhdl(blanks), "");
    EXPECT_TRUE(verilog("and" + blanks) == "&&" + blanks.substr(1));
    const std::string token(20U << 20, '/');
    EXPECT_TRUE(nhdl(token) == token);
}

TEST(HdlTranslator, random_texts_are_translated_as_by_the_plain_transcription) {
    constexpr const char* kTokens[] = {
        "and",  "AND", "%",   "lte",    "lt",  "gte", "Gt",     "||", "/",
        "quot", "div", "Div", "",       "a",   "4",   "anda",   "or", "",
        "|",    "(lt", "lt)", "WIDTH_", "mod", "\t",  "\xC1nd",
    };
    std::mt19937 random(20240229);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (int i = 0; i < 50000; ++i) {
        std::string text;
        for (std::size_t tokens = below(12); tokens > 0; --tokens) {
            text += kTokens[below(std::size(kTokens))];
            text.append(below(8) == 0 ? below(4) : 1, ' ');
        }
        if (!text.empty() && below(4) == 0) {
            text[below(text.size())] = static_cast<char>(below(256));
        }
        const KIVO_HDL_LANGUAGE language = kAnyLanguage[below(std::size(kAnyLanguage))];
        ASSERT_EQ(kivo_translate_text_to_hdl(text, language),
                  hdl_reference::translate(text, language))
            << testing::PrintToString(text) << ", language " << language;
    }
}

}  // namespace
