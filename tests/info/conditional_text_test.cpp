#include <gtest/gtest.h>

#include <string>

#include "kivo/kivo.h"
#include "tests/support/conditional_text.h"
#include "tests/support/description.h"
#include "tests/support/extent.h"
#include "tests/support/rules.h"

namespace {

struct Row {
    const char* content;  // of INTRO
    const char* written;  // see support/conditional_text.h
};

void expect_rows(std::initializer_list<Row> rows, const Messages& messages = {}) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content);
        Loaded store("<HTML_TEXT><INTRO>" + std::string(row.content) + "</INTRO></HTML_TEXT>");
        ASSERT_NE(store.info.html_text, nullptr);
        EXPECT_EQ(written(store.info.html_text->intro), row.written);
        EXPECT_EQ(store.messages(), messages);
    }
}

const std::string kBothAtOnce =
    "Can't have conditional text as well as sub-tags at the same level ";

}  // namespace

TEST(ConditionalText, without_sub_elements_there_is_no_sequence) {
    expect_rows({{"", "null"}, {"text", "null"}, {" \n ", "null"}, {"<!-- T -->", "null"}});
}

TEST(ConditionalText, plain_pieces) {
    expect_rows({
        {"<T>x</T>", "[?x]"},
        {"<TEXT>x</TEXT>", "[?x]"},
        {"<T>x</T><TEXT>y</TEXT><T>z</T>", "[?x ?y ?z]"},
        {"text beside<T>x</T>", "[?x]"},
        {"<T> </T>", "[? ]"},
        {"<T><![CDATA[<b>x</b>]]></T>", "[?<b>x</b>]"},
    });
}

TEST(ConditionalText, empty_elements_are_no_pieces) {
    expect_rows({{"<T/>", "[]"},
                 {"<TEXT></TEXT><IF/>", "[]"},
                 {"<THEN/><ELSE/>", "[]"},
                 {"<T/><T>x</T><T/>", "[?x]"}});
}

TEST(ConditionalText, conditional_pieces) {
    expect_rows({
        {"<IF>p</IF><THEN>x</THEN><ELSE>y</ELSE>", "[p?x:y]"},
        {"<IF>p</IF><THEN>x</THEN><ELSE>y</ELSE><T>z</T>", "[p?x:y ?z]"},
        {"<IF>p</IF><THEN>x</THEN><IF>q</IF><THEN>w</THEN>", "[p?x q?w]"},
        {"<IF>p</IF><T>z</T>", "[p? ?z]"},
        {"<IF>p</IF><TEXT>z</TEXT>", "[p? ?z]"},
        {"<IF>p</IF>", "[p?]"},
        {"<IF>p</IF><IF>q</IF>", "[p? q?]"},
        {"<IF>p</IF><ELSE>y</ELSE>", "[p?:y]"},
        {"<IF>p</IF><THEN>x</THEN>", "[p?x]"},
        {"<IF> p </IF><THEN> x </THEN>", "[ p ? x ]"},
    });
}

TEST(ConditionalText, then_leaves_its_piece_open) {
    expect_rows({{"<IF>p</IF><THEN>x</THEN><THEN>y</THEN><ELSE>z</ELSE>", "[p?y:z]"}});
}

TEST(ConditionalText, plain_else_closes_its_piece) {
    expect_rows({{"<IF>p</IF><ELSE>y</ELSE><THEN>x</THEN>", "[p?:y ?x]"},
                 {"<IF>p</IF><ELSE>y</ELSE><ELSE>z</ELSE>", "[p?:y ?:z]"}});
}

TEST(ConditionalText, empty_sub_elements_leave_the_piece_as_it_is) {
    expect_rows({{"<IF>p</IF><THEN>x</THEN><THEN/><ELSE/><ELSE>y</ELSE>", "[p?x:y]"}});
}

TEST(ConditionalText, empty_text_elements_close_the_piece_before_them) {
    expect_rows({{"<IF>p</IF><T/><THEN>x</THEN>", "[p? ?x]"},
                 {"<IF>p</IF><TEXT/><THEN>x</THEN>", "[p? ?x]"},
                 {"<IF>p</IF><IF/><THEN>x</THEN>", "[p? ?x]"}});
}

TEST(ConditionalText, then_or_else_without_an_open_piece_opens_one) {
    expect_rows({
        {"<THEN>x</THEN>", "[?x]"},
        {"<ELSE>y</ELSE>", "[?:y]"},
        {"<THEN>x</THEN><ELSE>y</ELSE>", "[?x:y]"},
        {"<T>a</T><THEN>x</THEN>", "[?a ?x]"},
        {"<IF/><THEN>x</THEN><ELSE>y</ELSE>", "[?x:y]"},
        {"<THEN>x</THEN><IF>p</IF>", "[?x p?]"},
    });
}

TEST(ConditionalText, unknown_tags_without_sub_elements_are_ignored) {
    expect_rows({{"<B>x</B>", "[]"},
                 {"<B/>", "[]"},
                 {"<t>x</t><If>p</If><then>y</then>", "[]"},
                 {"<IF>p</IF><B>x</B><THEN>y</THEN>", "[p?y]"}});
}

TEST(ConditionalText, nested_sequences) {
    expect_rows({
        {"<IF>A</IF><THEN><T>x</T><T>z</T></THEN>", "[A?[?x ?z]]"},
        {"<IF>A</IF><THEN><T>x</T></THEN><ELSE><T>y</T></ELSE>", "[A?[?x]:[?y]]"},
        {"<IF>A</IF><THEN>\n  <T>x</T>\n</THEN>", "[A?[?x]]"},
        {"<IF>A</IF><THEN><IF>B</IF><THEN><IF>C</IF><ELSE>z</ELSE></THEN></THEN>",
         "[A?[B?[C?:z]]]"},
        {"<T><T>x</T></T>", "[?[?x]]"},
        {"<TEXT><IF>p</IF><THEN>x</THEN></TEXT>", "[?[p?x]]"},
        {"<THEN><T>x</T></THEN>", "[?[?x]]"},
        {"<ELSE><T>x</T></ELSE>", "[?:[?x]]"},
        {"<T><T/></T>", "[?[]]"},
    });
}

TEST(ConditionalText, nested_sequence_leaves_its_piece_open) {
    expect_rows({
        // Unlike a plain ELSE, one with sub-elements is followed by more of the same piece.
        {"<IF>p</IF><ELSE><T>y</T></ELSE><THEN>x</THEN>", "[p?x:[?y]]"},
        {"<IF>p</IF><ELSE><T>y</T></ELSE><ELSE>z</ELSE><THEN>x</THEN>", "[p?:z ?x]"},
        {"<T><T>x</T></T><ELSE>y</ELSE>", "[?[?x]:y]"},
        {"<T><T>x</T></T><T><T>y</T></T>", "[?[?x] ?[?y]]"},
        {"<THEN><T>x</T></THEN><T>z</T>", "[?[?x] ?z]"},
    });
}

TEST(ConditionalText, text_and_sequence_take_each_others_place) {
    expect_rows({
        {"<IF>p</IF><THEN>x</THEN><THEN><T>y</T></THEN>", "[p?[?y]]"},
        {"<IF>p</IF><THEN><T>y</T></THEN><THEN>x</THEN>", "[p?x]"},
        {"<IF>p</IF><THEN><T>y</T></THEN><THEN><T>z</T></THEN>", "[p?[?z]]"},
        {"<IF>p</IF><ELSE><T>y</T></ELSE><ELSE>x</ELSE>", "[p?:x]"},
        {"<IF>p</IF><ELSE><T>y</T></ELSE><ELSE><T>z</T></ELSE>", "[p?:[?z]]"},
        {"<IF>p</IF><THEN><T>y</T></THEN><THEN/>", "[p?[?y]]"},
    });
}

TEST(ConditionalText, sequence_below_an_unknown_tag_is_dropped_but_opens_a_piece) {
    expect_rows({
        {"<B><T>x</T></B>", "[?]"},
        {"<B><T>x</T></B><THEN>y</THEN>", "[?y]"},
        {"<IF>p</IF><B><T>x</T></B><THEN>y</THEN>", "[p?y]"},
        {"<B><C><T>x</T></C></B><C><T>y</T></C>", "[?]"},
    });
}

TEST(ConditionalText, if_with_sub_elements_is_refused) {
    const Messages messages{"IF tag in conditional text sequences cannot have sub-tags"};
    expect_rows(
        {
            {"<IF><T>x</T></IF>", "[]"},
            {"<IF>p<T>x</T></IF><THEN>y</THEN>", "[?y]"},
            {"<IF>p</IF><IF><B/></IF><THEN>y</THEN>", "[p? ?y]"},
            {"<IF><IF><T>x</T></IF></IF>", "[]"},
        },
        messages);
}

TEST(ConditionalText, text_beside_sub_elements_is_refused) {
    struct Refused {
        const char* content;
        const char* written;
        const char* tag;
    };
    const Refused rows[] = {
        {"<TEXT>x<T>y</T></TEXT>", "[]", "TEXT"},
        {"<T><T>y</T>x</T>", "[]", "T"},
        {"<IF>p</IF><TEXT>x<T>y</T></TEXT><THEN>z</THEN>", "[p? ?z]", "TEXT"},
        {"<IF>p</IF><THEN>x<T>y</T></THEN><ELSE>z</ELSE>", "[p?:z]", "THEN"},
        {"<IF>p</IF><ELSE>x<T>y</T></ELSE><THEN>z</THEN>", "[p?z]", "ELSE"},
        {"<THEN><IF>p</IF><ELSE>x<T>y</T></ELSE></THEN>", "[?[p?]]", "ELSE"},
        {"<B>x<T>y</T></B>", "[]", "B"},
    };
    for (const Refused& row : rows) {
        expect_rows({{row.content, row.written}}, {kBothAtOnce + row.tag});
    }
}

TEST(ConditionalText, messages_stand_in_document_order) {
    expect_rows({{"<T>x<B/></T><THEN><IF><B/></IF><ELSE>y<B/></ELSE></THEN><B>z<T/></B>", "[?[]]"}},
                {kBothAtOnce + "T", "IF tag in conditional text sequences cannot have sub-tags",
                 kBothAtOnce + "ELSE", kBothAtOnce + "B"});
}

TEST(ConditionalText, attributes_are_ignored) {
    expect_rows({{"<IF NAME='x'>p</IF><THEN TEXT='y'>z</THEN>", "[p?z]"}});
}

// --- Depth. The levels are counted and taken apart without recursion.

namespace {

std::string nested(const std::string& open, const std::string& close, std::size_t levels,
                   const std::string& inside) {
    std::string text;
    text.reserve(levels * (open.size() + close.size()) + inside.size());
    for (std::size_t i = 0; i < levels; ++i) {
        text += open;
    }
    text += inside;
    for (std::size_t i = 0; i < levels; ++i) {
        text += close;
    }
    return text;
}

// Levels of sequences, following the first piece of each.
std::size_t depth_of(KIVO_CONDITIONAL_TEXT* sequence) {
    std::size_t depth = 0;
    while (sequence != nullptr) {
        ++depth;
        sequence->text_elements.reset();
        const KIVO_CONDITIONAL_TEXT* piece = sequence->get_next_text_element();
        sequence = piece == nullptr             ? nullptr
                   : piece->then_sub != nullptr ? piece->then_sub
                                                : piece->else_sub;
    }
    return depth;
}

}  // namespace

TEST(ConditionalTextDepth, very_many_levels_of_then_are_read_and_released) {
    on_small_stack([] {
        Loaded store("<HTML_TEXT><INTRO>" + nested("<THEN>", "</THEN>", kVeryMany, "<T>x</T>") +
                     "</INTRO></HTML_TEXT>");
        EXPECT_TRUE(store.clean);
        ASSERT_NE(store.info.html_text, nullptr);
        EXPECT_EQ(depth_of(store.info.html_text->intro), kVeryMany + 1);
    });
}

TEST(ConditionalTextDepth, very_many_levels_of_conditional_else_are_read_and_released) {
    on_small_stack([] {
        Loaded store("<WAVE_DATA><WAVE NAME='w'><DESCRIPTION>" +
                     nested("<IF>p</IF><THEN>x</THEN><ELSE>", "</ELSE>", kVeryMany, "<IF>q</IF>") +
                     "</DESCRIPTION></WAVE></WAVE_DATA>");
        EXPECT_TRUE(store.clean);
        const KIVO_VECTOR_OBJ* vector = store.info.get_vector_obj("w");
        ASSERT_NE(vector, nullptr);
        EXPECT_EQ(depth_of(vector->description), kVeryMany + 1);
    });
}

TEST(ConditionalTextDepth, very_many_levels_of_unknown_tags_are_dropped) {
    on_small_stack([] {
        Loaded store("<HTML_TEXT><INTRO>" + nested("<B>", "</B>", kVeryMany, "<T>x</T>") +
                     "</INTRO></HTML_TEXT>");
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(written(store.info.html_text->intro), "[?]");
    });
}

TEST(ConditionalTextDepth, deep_sequence_is_released_when_it_is_replaced) {
    on_small_stack([] {
        const std::string deep = nested("<THEN>", "</THEN>", kVeryMany, "<T>x</T>");
        Loaded store("<HTML_TEXT><INTRO><IF>p</IF><THEN>" + deep + "</THEN><THEN>y</THEN></INTRO>" +
                     "<END>" + deep + "</END><END><T>z</T></END></HTML_TEXT>");
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(written(store.info.html_text->intro), "[p?y]");
        EXPECT_EQ(written(store.info.html_text->end), "[?z]");
    });
}
