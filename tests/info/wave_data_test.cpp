#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/conditional_text.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

// A section with one wave "w".
std::string wave(const std::string& attributes, const std::string& sub_elements = "") {
    return "<WAVE_DATA><WAVE NAME='w' " + attributes + ">" + sub_elements + "</WAVE></WAVE_DATA>";
}

// Longest time, time step, index and truncation.
std::string fields_of(const KIVO_VECTOR_OBJ* vector) {
    if (vector == nullptr) {
        return "no vector";
    }
    return std::to_string(vector->max_time) + "|" + std::to_string(vector->time_step) + "|" +
           std::to_string(vector->index) + "|" + std::to_string(vector->truncate_low);
}

struct Entry {
    const char* command;
    const char* alternative;
    const char* condition;
};

std::vector<Rule> entries(const std::vector<Entry>& expected) {
    std::vector<Rule> rules;
    for (const Entry& entry : expected) {
        rules.push_back({entry.command, entry.alternative, entry.condition, 2});
    }
    return rules;
}

std::vector<Rule> entries_of(KIVO_VECTOR_OBJ* vector) {
    return vector == nullptr ? std::vector<Rule>{{"no vector", "", "", -1}}
                             : rules_of(vector->stimulus_list);
}

struct Row {
    const char* sub_elements;
    std::vector<Entry> expected;
};

void expect_rows(const std::vector<Row>& rows, const Messages& messages = {}) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sub_elements);
        Loaded store(wave("", row.sub_elements));
        EXPECT_EQ(entries_of(store.info.get_vector_obj("w")), entries(row.expected));
        EXPECT_EQ(store.messages(), messages);
    }
}

const char* const kBadThen = "THEN tag under WAVE tag should have a STIM or VECTOR sub-tag";
const char* const kBadElse = "ELSE tag under WAVE tag should have a STIM or VECTOR sub-tag";
const char* const kSurplus =
    "There are more stimulus in the ELSE part of the condition, rather than in the THEN section";

}  // namespace

TEST(VectorSection, without_vectors_yields_nothing) {
    for (const char* section :
         {"<WAVE_DATA/>", "<CUSTOM_VECTORS/>", "<WAVE_DATA>text</WAVE_DATA>",
          "<WAVE_DATA><wave NAME='w'/><VECTOR NAME='w'/><STIM>a</STIM></WAVE_DATA>",
          "<CUSTOM_VECTORS><CUSTOM NAME='w' BAD='1'><BAD/></CUSTOM></CUSTOM_VECTORS>"}) {
        SCOPED_TRACE(section);
        Loaded store(section);
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_next_vector_obj(), nullptr);
    }
}

TEST(VectorSection, both_sections_hold_both_kinds) {
    for (const std::string section : {"WAVE_DATA", "CUSTOM_VECTORS"}) {
        SCOPED_TRACE(section);
        Loaded store("<" + section + "><WAVE NAME='a'><STIM>1</STIM></WAVE>" +
                     "<CUSTOM_VECTOR NAME='b'><STIM>2</STIM></CUSTOM_VECTOR></" + section + ">");
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(entries_of(store.info.get_vector_obj("a")), entries({{"1", "", ""}}));
        EXPECT_EQ(entries_of(store.info.get_vector_obj("b")), entries({{"2", "", ""}}));
    }
}

TEST(VectorSection, name_is_required) {
    for (const std::string tag : {"WAVE", "CUSTOM_VECTOR"}) {
        for (const std::string attributes : {"", "NAME=''", "MAX_TIME='1' BAD='2'", "name='w'"}) {
            SCOPED_TRACE(tag + " " + attributes);
            Loaded store("<WAVE_DATA><" + tag + " " + attributes + "><BAD/><STIM>a</STIM></" + tag +
                         "></WAVE_DATA>");
            EXPECT_EQ(store.messages(),
                      Messages{"Name atrribute is missing from " + tag + " tag "});
            EXPECT_EQ(store.info.get_next_vector_obj(), nullptr);
        }
    }
}

TEST(VectorAttributes, set_the_fields) {
    struct AttributeRow {
        const char* attributes;
        const char* fields;
    };
    const AttributeRow rows[] = {
        {"", "-1|1|-1|0"},
        {"MAX_TIME='100'", "100|1|-1|0"},
        {"MAX_TIME='12ns'", "12|1|-1|0"},
        {"MAX_TIME=' -3'", "-3|1|-1|0"},
        {"MAX_TIME='abc'", "0|1|-1|0"},
        {"MAX_TIME=''", "0|1|-1|0"},
        {"MAX_TIME='2147483648'", "-2147483648|1|-1|0"},
        {"MAX_TIME='4294967297'", "1|1|-1|0"},
        {"MAX_TIME='99999999999999999999'", "-1|1|-1|0"},
        {"TIME_STEP='5'", "-1|5|-1|0"},
        {"TIME_STEP='+5 6'", "-1|5|-1|0"},
        {"TIME_STEP='x'", "-1|0|-1|0"},
        {"INDEX='2'", "-1|1|2|0"},
        {"INDEX='-2'", "-1|1|-2|0"},
        {"INDEX=''", "-1|1|0|0"},
        {"DISPLAY_TRUNCATION='LOW'", "-1|1|-1|1"},
        {"DISPLAY_TRUNCATION='HIGH'", "-1|1|-1|0"},
        {"INDEX='3' MAX_TIME='1' DISPLAY_TRUNCATION='LOW' TIME_STEP='2'", "1|2|3|1"},
    };
    for (const AttributeRow& row : rows) {
        SCOPED_TRACE(row.attributes);
        Loaded store(wave(row.attributes));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(fields_of(store.info.get_vector_obj("w")), row.fields);
    }
}

TEST(VectorAttributes, other_truncations_are_reported_and_change_nothing) {
    for (const std::string value : {"low", "High", "", "LOW ", "ON"}) {
        for (const std::string tag : {"WAVE", "CUSTOM_VECTOR"}) {
            SCOPED_TRACE(tag + " " + value);
            Loaded store("<WAVE_DATA><" + tag + " NAME='w' DISPLAY_TRUNCATION='LOW'/><" + tag +
                         " NAME='w' DISPLAY_TRUNCATION='" + value + "'/></WAVE_DATA>");
            EXPECT_EQ(store.messages(),
                      Messages{"Attribute DISPLAY_TRUNCATION has illegal value " + value +
                               " in wave ( w ). Valid values are HIGH and LOW"});
            EXPECT_EQ(fields_of(store.info.get_vector_obj("w")), "-1|1|-1|1");
        }
    }
}

TEST(VectorAttributes, unknown_ones_are_reported_in_their_order) {
    Loaded store(
        "<CUSTOM_VECTORS><CUSTOM_VECTOR NAME='v' TYPE='1' max_time='2' CAPTION='3' "
        "DISPLAY_TRUNCATION='4'/></CUSTOM_VECTORS>");
    const auto message = [](const std::string& name) {
        return "Attribute " + name +
               " is not a recognized attribute for vector stimulus (found in vector v )";
    };
    EXPECT_EQ(store.messages(),
              (Messages{message("CAPTION"),
                        "Attribute DISPLAY_TRUNCATION has illegal value 4 in wave ( v ). Valid "
                        "values are HIGH and LOW",
                        message("max_time"), message("TYPE")}));
    EXPECT_EQ(fields_of(store.info.get_vector_obj("v")), "-1|1|-1|0");
}

TEST(VectorStimulus, plain_commands_are_unconditional) {
    expect_rows({
        {"<STIM>a</STIM>", {{"a", "", ""}}},
        {"<VECTOR>a</VECTOR>", {{"a", "", ""}}},
        {"<STIM>a</STIM><STIM>b</STIM>", {{"a", "", ""}, {"b", "", ""}}},
        {"<VECTOR>a</VECTOR><STIM>b</STIM>", {{"a", "", ""}, {"b", "", ""}}},
        {"<STIM> a \n</STIM>", {{" a \n", "", ""}}},
        {"<STIM/>", {{"", "", ""}}},
        {"<STIM>a<B>b</B></STIM>", {{"a", "", ""}}},
    });
}

TEST(VectorStimulus, condition_governs_the_commands_of_its_then) {
    expect_rows({
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN>", {{"a", "", "c"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM><VECTOR>b</VECTOR></THEN>",
         {{"a", "", "c"}, {"b", "", "c"}}},
        // A THEN does not end the group.
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><THEN><STIM>b</STIM></THEN>",
         {{"a", "", "c"}, {"b", "", "c"}}},
        {"<IF>c</IF><THEN/>", {}},
        {"<IF>c</IF>", {}},
        {"<THEN><STIM>a</STIM></THEN>", {{"a", "", ""}}},
        {"<IF/><THEN><STIM>a</STIM></THEN>", {{"a", "", ""}}},
        {"<IF>c</IF><CAPTION>x</CAPTION><THEN><STIM>a</STIM></THEN>", {{"a", "", "c"}}},
        // A plain command is pending too, and so a THEN after it joins its group.
        {"<STIM>a</STIM><THEN><STIM>b</STIM></THEN>", {{"a", "", ""}, {"b", "", ""}}},
    });
}

TEST(VectorStimulus, alternatives_are_paired_by_position) {
    expect_rows({
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><ELSE><STIM>x</STIM></ELSE>", {{"a", "x", "c"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM><STIM>b</STIM></THEN><ELSE><STIM>x</STIM></ELSE>",
         {{"a", "x", "c"}, {"b", "", "c"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM><STIM>b</STIM></THEN>"
         "<ELSE><VECTOR>x</VECTOR><STIM>y</STIM></ELSE>",
         {{"a", "x", "c"}, {"b", "y", "c"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><THEN><STIM>b</STIM></THEN>"
         "<ELSE><STIM>x</STIM><STIM>y</STIM></ELSE>",
         {{"a", "x", "c"}, {"b", "y", "c"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><ELSE/>", {{"a", "", "c"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><ELSE><STIM/></ELSE>", {{"a", "", "c"}}},
        {"<THEN><STIM>a</STIM></THEN><ELSE><STIM>x</STIM></ELSE>", {{"a", "x", ""}}},
        {"<STIM>a</STIM><ELSE><STIM>x</STIM></ELSE>", {{"a", "x", ""}}},
    });
}

TEST(VectorStimulus, surplus_alternatives_are_dropped_and_reported_once) {
    expect_rows(
        {
            {"<IF>c</IF><THEN><STIM>a</STIM></THEN><ELSE><STIM>x</STIM><STIM>y</STIM></ELSE>",
             {{"a", "x", "c"}}},
            {"<IF>c</IF><THEN><STIM>a</STIM></THEN>"
             "<ELSE><STIM>x</STIM><STIM>y</STIM><STIM>z</STIM></ELSE><STIM>b</STIM>",
             {{"a", "x", "c"}, {"b", "", ""}}},
        },
        {kSurplus});
}

TEST(VectorStimulus, else_of_an_empty_group_drops_its_commands_silently) {
    expect_rows({
        {"<ELSE><STIM>x</STIM></ELSE>", {}},
        {"<IF>c</IF><ELSE><STIM>x</STIM></ELSE>", {}},
        // The condition goes with it.
        {"<IF>c</IF><ELSE><STIM>x</STIM></ELSE><THEN><STIM>a</STIM></THEN>", {{"a", "", ""}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><ELSE/><ELSE><STIM>x</STIM></ELSE>",
         {{"a", "", "c"}}},
    });
}

TEST(VectorStimulus, group_ends_at_the_next_command_or_condition) {
    expect_rows({
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><STIM>b</STIM>", {{"a", "", "c"}, {"b", "", ""}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><VECTOR>b</VECTOR>",
         {{"a", "", "c"}, {"b", "", ""}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><IF>d</IF><THEN><STIM>b</STIM></THEN>",
         {{"a", "", "c"}, {"b", "", "d"}}},
        // A condition is gone at the next command although nothing was pending.
        {"<IF>c</IF><STIM>b</STIM>", {{"b", "", ""}}},
        {"<IF>c</IF><STIM>b</STIM><THEN><STIM>a</STIM></THEN>", {{"b", "", ""}, {"a", "", ""}}},
        {"<IF>c</IF><IF>d</IF><THEN><STIM>a</STIM></THEN>", {{"a", "", "d"}}},
        {"<IF>c</IF><THEN><STIM>a</STIM></THEN><IF>d</IF><ELSE><STIM>x</STIM></ELSE>",
         {{"a", "", "c"}}},
    });
}

TEST(VectorStimulus, file_order_is_kept) {
    expect_rows(
        {{"<STIM>1</STIM><IF>c</IF><THEN><STIM>2</STIM><STIM>3</STIM></THEN>"
          "<ELSE><STIM>x</STIM></ELSE><STIM>4</STIM><VECTOR>5</VECTOR><IF>d</IF>"
          "<THEN><VECTOR>6</VECTOR></THEN>",
          {{"1", "", ""},
           {"2", "x", "c"},
           {"3", "", "c"},
           {"4", "", ""},
           {"5", "", ""},
           {"6", "", "d"}}}});
}

TEST(VectorStimulus, other_elements_below_then_and_else_are_reported) {
    expect_rows({{"<IF>c</IF><THEN><BAD/><STIM>a</STIM><stim>b</stim></THEN>", {{"a", "", "c"}}}},
                {kBadThen, kBadThen});
    expect_rows({{"<IF>c</IF><THEN><STIM>a</STIM></THEN><ELSE><BAD/><STIM>x</STIM><IF/></ELSE>",
                  {{"a", "x", "c"}}}},
                {kBadElse, kBadElse});
    expect_rows({{"<ELSE><BAD/></ELSE>", {}}}, {kBadElse});
    expect_rows({{"<THEN><STIM>a</STIM></THEN><ELSE><STIM>x</STIM><STIM>y</STIM><BAD/></ELSE>",
                  {{"a", "x", ""}}}},
                {kBadElse, kSurplus});
}

TEST(VectorStimulus, groups_do_not_reach_into_the_next_element) {
    Loaded store(wave("", "<IF>c</IF>") + wave("", "<THEN><STIM>a</STIM></THEN>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(entries_of(store.info.get_vector_obj("w")), entries({{"a", "", ""}}));
}

TEST(VectorSubElements, unknown_ones_are_reported_with_their_parent) {
    for (const std::string parent : {"WAVE", "CUSTOM_VECTOR"}) {
        for (const std::string tag : {"BAD", "stim", "TEXT", "WAVE"}) {
            SCOPED_TRACE(parent + " " + tag);
            Loaded store("<WAVE_DATA><" + parent + " NAME='w'><" + tag + ">a</" + tag + "></" +
                         parent + "></WAVE_DATA>");
            EXPECT_EQ(store.messages(),
                      Messages{"Unrecognized Sub tag " + tag + " for " + parent + " tag"});
            EXPECT_EQ(entries_of(store.info.get_vector_obj("w")), entries({}));
        }
    }
}

TEST(VectorSubElements, messages_stand_in_document_order) {
    Loaded store(wave("BAD='1'",
                      "<X/><THEN><X/></THEN><DISPLAY>bad</DISPLAY><Y/>"
                      "<DESCRIPTION><IF><T/></IF></DESCRIPTION><ELSE><X/></ELSE><Z/>"));
    EXPECT_EQ(store.messages(),
              (Messages{"Attribute BAD is not a recognized attribute for vector stimulus (found in "
                        "vector w )",
                        "Unrecognized Sub tag X for WAVE tag", kBadThen,
                        "Invalid display format specification string bad",
                        "Unrecognized Sub tag Y for WAVE tag",
                        "IF tag in conditional text sequences cannot have sub-tags", kBadElse,
                        "Unrecognized Sub tag Z for WAVE tag"}));
}

TEST(VectorSubElements, caption) {
    Loaded store(wave("", "<CAPTION>a</CAPTION><CAPTION> b </CAPTION>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_vector_obj("w")->caption, " b ");
}

TEST(VectorSubElements, description) {
    Loaded store(wave("", "<DESCRIPTION><IF>p</IF><THEN>x</THEN></DESCRIPTION>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(written(store.info.get_vector_obj("w")->description), "[p?x]");
}

TEST(VectorSubElements, description_without_elements_is_none) {
    Loaded store(wave("", "<DESCRIPTION><T>x</T></DESCRIPTION><DESCRIPTION>text</DESCRIPTION>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_vector_obj("w")->description, nullptr);
}

TEST(VectorSubElements, replaced_description_can_still_be_looked_at) {
    Loaded store(wave("", "<DESCRIPTION><T>x</T></DESCRIPTION>"));
    KIVO_CONDITIONAL_TEXT* first = store.info.get_vector_obj("w")->description;
    EXPECT_TRUE(store.load(wave("", "<DESCRIPTION><T>y</T></DESCRIPTION>")));
    EXPECT_EQ(written(store.info.get_vector_obj("w")->description), "[?y]");
    EXPECT_EQ(written(first), "[?x]");
}

TEST(VectorSubElements, condition) {
    Loaded store(wave("", "<WAVE_CONDITION>a == 1</WAVE_CONDITION>"));
    EXPECT_TRUE(store.clean);
    const KIVO_RULE_ELEMENT* condition = store.info.get_vector_obj("w")->wave_condition;
    ASSERT_NE(condition, nullptr);
    EXPECT_EQ(condition->text1, "");
    EXPECT_EQ(condition->text2, "");
    EXPECT_EQ(condition->text3, "a == 1");
    EXPECT_EQ(condition->rule_kind, 2);
}

TEST(VectorSubElements, empty_condition_is_a_condition_too) {
    Loaded store(wave("", "<WAVE_CONDITION/>"));
    const KIVO_RULE_ELEMENT* condition = store.info.get_vector_obj("w")->wave_condition;
    ASSERT_NE(condition, nullptr);
    EXPECT_EQ(condition->text3, "");
}

TEST(VectorSubElements, replaced_condition_can_still_be_looked_at) {
    Loaded store(wave("", "<WAVE_CONDITION>a</WAVE_CONDITION>"));
    const KIVO_RULE_ELEMENT* first = store.info.get_vector_obj("w")->wave_condition;
    EXPECT_TRUE(store.load(wave("", "<WAVE_CONDITION>b</WAVE_CONDITION>")));
    EXPECT_EQ(store.info.get_vector_obj("w")->wave_condition->text3, "b");
    EXPECT_EQ(first->text3, "a");
}

TEST(VectorSubElements, display) {
    Loaded store(wave("",
                      "<DISPLAY>add wave -bin data </DISPLAY>"
                      "<DISPLAY>add wave -fixed_point(8.4) q</DISPLAY>"));
    EXPECT_TRUE(store.clean);
    const KIVO_VECTOR_OBJ* vector = store.info.get_vector_obj("w");
    EXPECT_EQ(vector->get_vector_display_format("data"), DRO_RADIX_BINARY);
    EXPECT_EQ(vector->get_vector_display_format("q"), DRO_RADIX_FIXED_POINT);
    EXPECT_EQ(vector->get_vector_display_format_description("q"), "8.4");
}

TEST(VectorSubElements, empty_display_is_invalid) {
    Loaded store(wave("", "<DISPLAY/>"));
    EXPECT_EQ(store.messages(), Messages{"Invalid display format specification string "});
}

TEST(VectorSubElements, same_name_reopens_the_vector) {
    Loaded store(wave("MAX_TIME='1' TIME_STEP='2'", "<CAPTION>a</CAPTION><STIM>1</STIM>") +
                 "<CUSTOM_VECTORS><CUSTOM_VECTOR NAME='w' MAX_TIME='3' INDEX='4'>"
                 "<STIM>2</STIM></CUSTOM_VECTOR><WAVE NAME='W'/></CUSTOM_VECTORS>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_vector_obj("w")), "3|2|4|0");
    EXPECT_EQ(store.info.get_vector_obj("w")->caption, "a");
    EXPECT_EQ(entries_of(store.info.get_vector_obj("w")), entries({{"1", "", ""}, {"2", "", ""}}));
    EXPECT_EQ(store.info.get_next_vector_obj(), store.info.get_vector_obj("w"));
    EXPECT_EQ(store.info.get_next_vector_obj(), store.info.get_vector_obj("W"));
    EXPECT_EQ(store.info.get_next_vector_obj(), nullptr);
}

TEST(VectorSubElements, name_under_which_something_else_is_stored_is_passed_over) {
    KIVO_RULE_ELEMENT stranger;
    Loaded store("");
    store.info.vector_map.set_at("w", &stranger);
    EXPECT_TRUE(store.load(wave("BAD='1'", "<BAD/><STIM>a</STIM>")));
    EXPECT_EQ(store.info.vector_map.look_up("w"), &stranger);
}
