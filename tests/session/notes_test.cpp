// What the session tells authors of texts that can be judged as they stand.
#include <gtest/gtest.h>

#include "tests/session/fixture.h"

namespace {

using Texts = std::vector<std::string>;

// "id object ELEMENT ATTRIBUTE offset+length: source"
Texts notes_of(const std::string& sections) {
    Loaded loaded(sections);
    const KIVO_SESSION session(loaded.info);
    Texts notes;
    for (const KIVO_FAULT& note : session.notes()) {
        EXPECT_NE(loaded.info.get_place(note.mark).line, 0) << note.id;
        EXPECT_FALSE(note.text.empty()) << note.id;
        notes.push_back(note.id + " " + note.object + " " + note.element + " " + note.attribute +
                        " " + std::to_string(note.offset) + "+" + std::to_string(note.length) +
                        ": " + note.source);
    }
    return notes;
}

std::string in_width(const std::string& content, const std::string& attributes = "VALUE='8'") {
    return "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' " + attributes + ">" + content +
           "</PARAMETER></PARAMETERS>";
}

std::string hidden(const std::string& value) {
    return "<HIDDEN_PARAMETERS><PARAMETER NAME='H' VALUE='" + value +
           "'/><PARAMETER NAME='G' VALUE='2'/></HIDDEN_PARAMETERS>";
}

std::string macros(const std::string& content) {
    return "<MACROS>" + content + "</MACROS>";
}

struct Row {
    std::string sections;
    Texts expected;
};

}  // namespace

TEST(Notes, are_told_of_every_kind_of_text) {
    const std::string declared = in_width("");
    for (const Row& row : std::initializer_list<Row>{
             {in_width("", "VALUE='-2 ^ 2'"),
              {"sign-before-power W PARAMETER DEFAULT_VALUE 0+1: -2 ^ 2"}},
             {in_width("<FORCE_VALUE V='-2 ^ 2' ELSE='-3 ^ 2' IF='!W == 1'/>"),
              {"sign-before-power W FORCE_VALUE V 0+1: -2 ^ 2",
               "sign-before-power W FORCE_VALUE ELSE 0+1: -3 ^ 2",
               "not-before-comparison W FORCE_VALUE IF 0+1: !W == 1"}},
             {in_width("<FORCE_RANGE MIN='-2 ^ 2' MAX='-1 ^ 2' IF='!W == 1'/>"),
              {"sign-before-power W FORCE_RANGE MAX 0+1: -1 ^ 2",
               "sign-before-power W FORCE_RANGE MIN 0+1: -2 ^ 2",
               "not-before-comparison W FORCE_RANGE IF 0+1: !W == 1"}},
             {in_width("<VALUE_RULE>!W == 1</VALUE_RULE>"),
              {"not-before-comparison W VALUE_RULE  0+1: !W == 1"}},
             {declared +
                  "<PORTS><PORT NAME='q' TYPE='OUTPUT' WIDTH='-2 ^ W' WIDTH2D='-3 ^ W'/></PORTS>",
              {"sign-before-power q PORT WIDTH 0+1: -2 ^ W",
               "sign-before-power q PORT WIDTH2D 0+1: -3 ^ W"}},
             {declared + hidden("-2 ^ W"), {"sign-before-power H PARAMETER VALUE 0+1: -2 ^ W"}},
             {declared + macros("<MACRO NAME='M' DEFINITION='-2 ^ W'/>"),
              {"sign-before-power M MACRO DEFINITION 0+1: -2 ^ W"}},
             {declared + "<RULES><RULE>!W == 1</RULE></RULES>",
              {"not-before-comparison  RULE  0+1: !W == 1"}},
             {declared + "<MSGS><MSG TYPE='INFO'><IF>!W == 1</IF><THEN>a</THEN></MSG></MSGS>",
              {"not-before-comparison  MESSAGE  0+1: !W == 1"}},
             {declared + "<WAVE_DATA><WAVE NAME='w'><DESCRIPTION><IF>!W == 2</IF><THEN>a</THEN>"
                         "</DESCRIPTION><WAVE_CONDITION>!W == 1</WAVE_CONDITION><IF>!W == 3</IF>"
                         "<THEN><STIM>force q 1 0</STIM></THEN></WAVE></WAVE_DATA>",
              {"not-before-comparison  WAVE_CONDITION  0+1: !W == 1",
               "not-before-comparison  STIM  0+1: !W == 3",
               "not-before-comparison  IF  0+1: !W == 2"}},
             {declared + "<WIZARD_DATA><WIZARD_MAP NAME='m'><WIZARD_CONDITION>!W == 1"
                         "</WIZARD_CONDITION><PARAMETER NAME='W' TYPE='INTEGER' VALUE='-2 ^ 2'/>"
                         "</WIZARD_MAP></WIZARD_DATA>",
              {"not-before-comparison  WIZARD_CONDITION  0+1: !W == 1",
               "sign-before-power W PARAMETER VALUE 0+1: -2 ^ 2"}},
             {declared + "<HTML_TEXT><INTRO><IF>!W == 1</IF><THEN>a</THEN></INTRO></HTML_TEXT>",
              {"not-before-comparison  IF  0+1: !W == 1"}},
         }) {
        EXPECT_EQ(notes_of(row.sections), row.expected) << row.sections;
    }
}

TEST(Notes, speak_of_the_condition_of_a_value_rule_once) {
    const std::string rule = "<VALUE_RULE><IF>!W == 1</IF><THEN>!W == 2</THEN>";
    const std::string text = "( ( !W == 1) and ( !W == 2 ) ) || ( !( !W == 1 )";
    EXPECT_EQ(notes_of(in_width(rule + "</VALUE_RULE>")),
              (Texts{"not-before-comparison W VALUE_RULE  4+1: " + text + " )",
                     "not-before-comparison W VALUE_RULE  19+1: " + text + " )"}));
    EXPECT_EQ(notes_of(in_width(rule + "<ELSE>!W == 3</ELSE></VALUE_RULE>")),
              (Texts{"not-before-comparison W VALUE_RULE  4+1: " + text + " and ( !W == 3 ) )",
                     "not-before-comparison W VALUE_RULE  19+1: " + text + " and ( !W == 3 ) )",
                     "not-before-comparison W VALUE_RULE  55+1: " + text + " and ( !W == 3 ) )"}));
}

TEST(Notes, tell_what_is_wrong_with_macros_that_nothing_uses) {
    const std::string declared = in_width("");
    EXPECT_EQ(notes_of(declared + macros("<MACRO NAME='A' DEFINITION='W +'/>")),
              Texts{"expression-syntax A MACRO DEFINITION 3+0: W +"});
    EXPECT_EQ(notes_of(declared + macros("<MACRO NAME='A' DEFINITION='V + log2(1, 2)'/>")),
              (Texts{"unknown-name A MACRO DEFINITION 0+1: V + log2(1, 2)",
                     "macro-arguments A MACRO DEFINITION 4+4: V + log2(1, 2)"}));
    EXPECT_EQ(notes_of(declared + macros("<MACRO NAME='A' DEFINITION='1 + B'/>"
                                         "<MACRO NAME='B' DEFINITION='A'/>")),
              (Texts{"macro-recursion A MACRO DEFINITION 4+1: 1 + B",
                     "macro-recursion B MACRO DEFINITION 0+1: A"}));
    EXPECT_EQ(notes_of(declared + macros("<MACRO NAME='A' ARGUMENTS='n' DEFINITION='n + W'/>")),
              Texts());
    // As a fault when something does.
    EXPECT_EQ(notes_of(declared + macros("<MACRO NAME='A' DEFINITION='W +'/>") +
                       "<RULES><RULE>A gt 1</RULE></RULES>"),
              Texts());
}

TEST(Notes, tell_through_which_macro_one_that_nothing_uses_uses_itself) {
    Loaded loaded(
        macros("<MACRO NAME='A' DEFINITION='1 + B'/><MACRO NAME='B' DEFINITION='A'/>"
               "<MACRO NAME='C' DEFINITION='C + D'/><MACRO NAME='D' DEFINITION='1'/>"));
    Texts texts;
    for (const KIVO_FAULT& note : KIVO_SESSION(loaded.info).notes()) {
        texts.push_back(note.text);
    }
    EXPECT_EQ(texts, (Texts{"the macro A uses itself through B",
                            "the macro B uses itself through A", "the macro C uses itself"}));
}

TEST(Notes, tell_of_values_that_look_like_expressions_and_are_read_as_texts) {
    const std::string declared = in_width("");
    EXPECT_EQ(notes_of(declared + hidden("log2(DEPTH)")),
              Texts{"value-read-as-text H PARAMETER VALUE 5+5: log2(DEPTH)"});
    EXPECT_EQ(notes_of(declared + hidden("( W + 1")),
              Texts{"value-read-as-text H PARAMETER VALUE 7+0: ( W + 1"});
    for (const char* const text :
         {"ASYNCHRONOUS", "CLOCK-ENABLE", "W bits", "about (8)", "W + 1", "G", "8 ns"}) {
        EXPECT_EQ(notes_of(declared + hidden(text)), Texts()) << text;
    }
}
