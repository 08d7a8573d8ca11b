#include "tools/findings/catalogue.h"

#include <algorithm>

#include "tools/findings/catalogue_parts.h"
#include "tools/text/text_escape.h"

namespace {

// clang-format off
const std::vector<MessageDescription> kOfLibraryAndXml = {
    {"host-message", Severity::kError,
     R"(The program that loads the description posted this message itself, about something that the
        library does not know of. No description gives it, and it has no place in a file: what it
        asks for is said by its text and by the manual of that program.)",
     R"(// C++ of the host, not a description:
info.post_error_message("The wizard cannot write into the project folder");
)"},

    {"file-not-found", Severity::kError,
     R"(The named file does not exist or cannot be opened, so everything that it declares is missing.
        Names of included files are taken as they stand, relative to the directory in which the
        program runs, and then beside the library; not relative to the file that includes them.
        Correct the name, or run the program where the name is right.)",
     R"(<ROOT>
  <INCLUDE FILE="no_such_file.xml"/>
</ROOT>
)"},

    {"invalid-file", Severity::kError,
     R"(The file is not well-formed XML, so nothing of it is read. A message xml-syntax with the
        line and column of the first fault always follows: mend that place and check again, because the
        parser does not look beyond it.)",
     R"(<ROOT>
  <PARAMETERS>
</ROOT>
)"},

    {"xml-syntax", Severity::kError,
     R"(The XML parser found a fault at this place. When a tag is not closed, a quote is missing or a
        character is not allowed, the file is not read at all, as the message invalid-file says.
        When an element has the same attribute twice, the file is read and the last value counts,
        which other readers of XML do not accept: keep one of them.)",
     R"(<ROOT>
  <RULES>
    <RULE ENABLED="ON" ENABLED="ON">WIDTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"no-root", Severity::kError,
     R"(The file holds no element at all, perhaps because everything in it is commented out. A
        description is one ROOT element with its sections inside: write one, even if it is
        empty.)",
     R"(<!-- nothing -->
)"},

    {"include-cycle", Severity::kError,
     R"(A file includes itself, directly or through files that it includes. It is not read again, so
        nothing is lost, but one of the INCLUDE elements is superfluous: remove the one that leads
        back. The example does so when it is saved as counter_info.xml and checked in its own
        directory.)",
     R"(<ROOT>
  <INCLUDE FILE="counter_info.xml"/>
</ROOT>
)"},

    {"unknown-section", Severity::kError,
     R"(An element directly in ROOT is not a section of a description, so nothing in it is read.
        Tags are compared exactly and are written in upper case: correct the tag, or remove the
        element. The sections are FUNCTION_INFORMATION, PARAMETERS, PARAMETER_RULES, PORTS,
        PORT_RULES, HIDDEN_PARAMETERS, MACROS, RULES, MESSAGES, MSGS, WAVE_DATA, CUSTOM_VECTORS,
        WIZARD_DATA, HTML_TEXT and INCLUDE.)",
     R"(<ROOT>
  <PARAMETRS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETRS>
</ROOT>
)"},

    {"include-attribute", Severity::kError,
     R"(INCLUDE has an attribute other than FILE, which is ignored. A path belongs in FILE itself:
        there is no attribute for a directory.)",
     R"(<ROOT>
  <INCLUDE PATH="common"/>
</ROOT>
)"},

    {"include-sub-tag", Severity::kError,
     R"(INCLUDE holds an element other than FILE, which is ignored. Name every further file in an
        element FILE of its own, or in the attribute FILE.)",
     R"(<ROOT>
  <INCLUDE>
    <DIRECTORY>common</DIRECTORY>
  </INCLUDE>
</ROOT>
)"},

    {"function-information-sub-tag", Severity::kError,
     R"(FUNCTION_INFORMATION holds an element that is not a setting, so it is ignored and the
        setting that was meant keeps its default. The settings are VHDL_LIBRARY, START_TIME, TIME_SCALE and
        TIME_DELTA.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_UNIT VALUE="ns"/>
  </FUNCTION_INFORMATION>
</ROOT>
)"},

    {"function-information-attribute", Severity::kError,
     R"(A setting has an attribute that it does not know, which is ignored. VHDL_LIBRARY is set by
        NAME; START_TIME, TIME_SCALE and TIME_DELTA are set by VALUE.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_SCALE UNIT="ns"/>
  </FUNCTION_INFORMATION>
</ROOT>
)"},

    {"function-information-nested-tag", Severity::kError,
     R"(A setting holds an element. Settings have an attribute and nothing inside, so what stands
        there is ignored: write the value as the attribute VALUE, or NAME for VHDL_LIBRARY.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_DELTA><STEP>10</STEP></TIME_DELTA>
  </FUNCTION_INFORMATION>
</ROOT>
)"},

    {"type-clash", Severity::kError,
     R"(Something of that name has been declared with another type, and the element is ignored.
        Parameters, ports, hidden parameters and macros share their names. Rename one of the two;
        to add rules to what is declared already, leave out TYPE.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="WIDTH" TYPE="INPUT"/>
  </PORTS>
</ROOT>
)"},

    {"unknown-type", Severity::kError,
     R"(An element without a valid TYPE adds to a parameter or port that is declared already, and
        there is none of that name; so it is ignored. Either the name is misspelt, or the
        declaration comes later (an included file is read after the file that includes it), or this
        is the declaration and its TYPE is missing or wrong.)",
     R"(<ROOT>
  <PARAMETER_RULES>
    <PARAMETER NAME="WITDH"><FORCE_RANGE MIN="1" MAX="64"/></PARAMETER>
  </PARAMETER_RULES>
</ROOT>
)"},

    {"parameter-type", Severity::kError,
     R"(The TYPE of a parameter is neither INTEGER nor STRING. The element then counts as one without
        TYPE: it adds to a parameter that is declared already, and declares none. Where there is
        none yet, the message unknown-type follows.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="MODE" TYPE="STRING" VALUE="FAST;SMALL"/>
  </PARAMETERS>
  <PARAMETER_RULES>
    <PARAMETER NAME="MODE" TYPE="ENUM" DEFAULT_VALUE="FAST"/>
  </PARAMETER_RULES>
</ROOT>
)"},

    {"parameter-name", Severity::kError,
     R"(A PARAMETER has no NAME, or an empty one, and is ignored with all that it holds. Rules and
        wizards refer to parameters by their names: give it one.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
</ROOT>
)"},

    {"parameter-cnx-type", Severity::kError,
     R"(The CNX_TYPE of a parameter says how it is connected and is CONSTANT or PRIVATE. Any other
        value is ignored, and the parameter is not connected. USED_PORT is for ports.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8" CNX_TYPE="USED_PORT"/>
  </PARAMETERS>
</ROOT>
)"},

    {"parameter-attribute", Severity::kError,
     R"(A PARAMETER has an attribute that is not known, which is ignored. The attributes are NAME,
        TYPE, VALUE, DEFAULT_VALUE, DEFAULT_VALUE_INDEX, LPM_HINT and CNX_TYPE; limits and
        conditions are elements inside the parameter.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8" UNITS="bits"/>
  </PARAMETERS>
</ROOT>
)"},

    {"port-type", Severity::kError,
     R"(The TYPE of a port is none of INPUT, OUTPUT, BIDIR and BURIED. The element then counts as one
        without TYPE: it adds to a port that is declared already, and declares none. Where there is
        none yet, the message unknown-type follows.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="start" TYPE="INPUT"/>
  </PORTS>
  <PORT_RULES>
    <PORT NAME="start" TYPE="IN" DEFAULT_VALUE="0"/>
  </PORT_RULES>
</ROOT>
)"},

    {"port-name", Severity::kError,
     R"(A PORT has no NAME, or an empty one, and is ignored with all that it holds. Rules, waveforms
        and wizards refer to ports by their names: give it one.)",
     R"(<ROOT>
  <PORTS>
    <PORT TYPE="OUTPUT"/>
  </PORTS>
</ROOT>
)"},

    {"port-cnx-type", Severity::kError,
     R"(The CNX_TYPE of a port can only be USED_PORT. Any other value is ignored, and the port is not
        connected. CONSTANT and PRIVATE are for parameters.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="clock" TYPE="INPUT" CNX_TYPE="CONSTANT"/>
  </PORTS>
</ROOT>
)"},

    {"port-attribute", Severity::kError,
     R"(A PORT has an attribute that is not known, which is ignored. The attributes are NAME, TYPE,
        WIDTH, WIDTH2D, DEFAULT_VALUE, USAGE, IS_CLOCK_PORT, ASYNC, CLOCK_PERIOD,
        INITIAL_VEC_STATE, HIGH_PROBABILITY and CNX_TYPE. A port has no VALUE: what it is when it is
        not connected is its DEFAULT_VALUE.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="enable" TYPE="INPUT" VALUE="1"/>
  </PORTS>
</ROOT>
)"},

    {"high-probability", Severity::kError,
     R"(HIGH_PROBABILITY says in percent how often a port is high, and is a whole number from 1 to
        100. Although the message speaks of 0, that is refused too: a port that is never high is
        described by its rules. The port keeps its earlier value, 50 by default.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="enable" TYPE="INPUT" HIGH_PROBABILITY="0"/>
  </PORTS>
</ROOT>
)"},

    {"hidden-parameter-attribute", Severity::kError,
     R"(A PARAMETER of HIDDEN_PARAMETERS has an attribute other than NAME and VALUE, which is
        ignored. Hidden parameters have no type: remove the attribute, or declare the parameter in
        PARAMETERS if its user is to see it.)",
     R"(<ROOT>
  <HIDDEN_PARAMETERS>
    <PARAMETER NAME="ADDRESS_WIDTH" TYPE="INTEGER" VALUE="4"/>
  </HIDDEN_PARAMETERS>
</ROOT>
)"},

    {"object-sub-tag", Severity::kError,
     R"(An element inside a PARAMETER or PORT is not a rule for it, so it is ignored. Parameters take
        FORCE_VALUE, FORCE_RANGE and VALUE_RULE; ports take FORCE_VALUE, STATE, FORCE_RANGE and
        CONSTANT_RANGE. The message says PORT for both.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="enable" TYPE="INPUT">
      <VALUE_RULE>WIDTH gt 0</VALUE_RULE>
    </PORT>
  </PORTS>
</ROOT>
)"},

    {"range-attribute", Severity::kError,
     R"(A FORCE_VALUE, STATE, FORCE_RANGE or CONSTANT_RANGE has an attribute that does not fit it,
        which is ignored; a rule that loses its condition in this way always applies. Values are V,
        TO or THEN, limits MIN and MAX (ranges only), conditions IF, WHEN or WHEN_CMD, and ELSE is for
        FORCE_VALUE and STATE. The FORCE_RANGE of a port takes no V, TO or THEN.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE V="8" UNLESS="MODE == 2"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"range-sub-tag", Severity::kError,
     R"(An element inside a FORCE_VALUE, STATE, FORCE_RANGE or CONSTANT_RANGE does not fit it, so it
        is ignored. FORCE_RANGE takes MIN, MAX and a condition (IF, WHEN, WHEN_CMD), FORCE_VALUE and
        STATE a value (V, TO, THEN), a condition and ELSE; the limits of a CONSTANT_RANGE are
        attributes. After a WHEN_CMD no ELSE, MIN or MAX is accepted: write it last.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE><MIN>1</MIN><MAXIMUM>64</MAXIMUM></FORCE_RANGE>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"value-rule-sub-tag", Severity::kError,
     R"(VALUE_RULE holds an element other than IF, THEN and ELSE, which is ignored, so the rule may
        say less than was meant. Write the condition as text, or as IF, THEN and perhaps ELSE. The
        other names of IF (WHEN, WHEN_CMD) are not accepted here.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <VALUE_RULE><WHEN>MODE == 2</WHEN><THEN>WIDTH gt 8</THEN></VALUE_RULE>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"rule-without-data", Severity::kError,
     R"(A rule is empty, or switched off by an ENABLED other than ON, and is not stored: the
        configuration is not held to it. Write the condition as the text of the element; remove a
        rule that is not to apply, or comment it out.)",
     R"(<ROOT>
  <RULES>
    <RULE ENABLED="OFF">WIDTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"rules-sub-tag", Severity::kError,
     R"(RULES holds an element other than RULE and CONDITION, which is ignored. Messages for the user
        belong in MESSAGES, and rules for one parameter or port into its own element.)",
     R"(<ROOT>
  <RULES>
    <MESSAGE TYPE="INFO">Wide counters are slow.</MESSAGE>
  </RULES>
</ROOT>
)"},

    {"message-type", Severity::kError,
     R"(A message has no TYPE, or one that is none of CRITICAL_WARNING, WARNING, ERROR and INFO, and
        is dropped: nobody will be told. The words are compared exactly, in upper case.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="warning">Wide counters are slow.</MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"message-sub-tag", Severity::kError,
     R"(A message holds an element that is not known, which is ignored; a message that loses its
        condition in this way is always shown. IF or WHEN is the condition, THEN or TEXT is shown when it
        holds, ELSE otherwise.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="INFO"><UNLESS>WIDTH lt 32</UNLESS><THEN>Slow.</THEN></MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"messages-sub-tag", Severity::kError,
     R"(MESSAGES holds an element other than MESSAGE and MSG, which is ignored. Rules belong in
        RULES.)",
     R"(<ROOT>
  <MESSAGES>
    <RULE>WIDTH gt 0</RULE>
  </MESSAGES>
</ROOT>
)"},

    {"macros-sub-tag", Severity::kError,
     R"(MACROS holds an element other than MACRO, which is ignored: the macro that was meant does not
        exist.)",
     R"(<ROOT>
  <MACROS>
    <DEFINE NAME="BYTES" DEFINITION="WIDTH quot 8"/>
  </MACROS>
</ROOT>
)"},

    {"macro-sub-tag", Severity::kError,
     R"(The first element inside a MACRO is not DEFINITION and is ignored, so the macro may have no
        value. Write the definition as the first element, or as the attribute DEFINITION.)",
     R"(<ROOT>
  <MACROS>
    <MACRO NAME="IS_WIDE"><BODY>WIDTH gt 32</BODY></MACRO>
  </MACROS>
</ROOT>
)"},

    {"vector-name", Severity::kError,
     R"(A WAVE or CUSTOM_VECTOR has no NAME, or an empty one, and is ignored with all its stimulus.
        Waveforms are known by their names: give it one.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE MAX_TIME="200"/>
  </WAVE_DATA>
</ROOT>
)"},

    {"vector-display-truncation", Severity::kError,
     R"(DISPLAY_TRUNCATION says which end of a value is cut when it does not fit, and is HIGH or LOW,
        in upper case. Any other value is ignored; HIGH is the default.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count" DISPLAY_TRUNCATION="low"/>
  </WAVE_DATA>
</ROOT>
)"},

    {"vector-attribute", Severity::kError,
     R"(A WAVE or CUSTOM_VECTOR has an attribute that is not known, which is ignored. The attributes
        are NAME, MAX_TIME, TIME_STEP, INDEX and DISPLAY_TRUNCATION.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count" COLOUR="red"/>
  </WAVE_DATA>
</ROOT>
)"},

    {"vector-sub-tag", Severity::kError,
     R"(A WAVE or CUSTOM_VECTOR holds an element that is not known, which is ignored. It takes
        CAPTION, DESCRIPTION, WAVE_CONDITION, STIM or VECTOR, IF, THEN, ELSE and DISPLAY.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count"><NOTE>Counting up</NOTE></WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"then-sub-tag", Severity::kError,
     R"(THEN of a waveform holds something other than STIM and VECTOR, which is ignored. Only
        stimulus commands depend on a condition: a format in DISPLAY always applies and belongs
        beside THEN.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <IF>HAS_ENABLE == 1</IF>
      <THEN><DISPLAY>add wave -bin enable</DISPLAY></THEN>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"else-sub-tag", Severity::kError,
     R"(ELSE of a waveform holds something other than STIM and VECTOR, which is ignored. Only
        stimulus commands depend on a condition: a format in DISPLAY always applies and belongs
        beside ELSE.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <IF>HAS_ENABLE == 1</IF>
      <THEN><STIM>force enable 1 20</STIM></THEN>
      <ELSE><DISPLAY>add wave -bin enable</DISPLAY></ELSE>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"surplus-else", Severity::kError,
     R"(ELSE holds more commands than THEN. The first command of ELSE replaces the first of THEN, and
        so on; those left over replace nothing and are dropped. Give THEN as many commands, or write
        the others under an IF of their own with the opposite condition.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <IF>HAS_ENABLE == 1</IF>
      <THEN><STIM>force enable 1 20</STIM></THEN>
      <ELSE><STIM>force enable 1 0</STIM><STIM>force reset 0 20</STIM></ELSE>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"display-radix", Severity::kError,
     R"(The radix in a DISPLAY is not known, so the port keeps its format, hexadecimal by default.
        The radixes are -bin, -hex, -signed, -unsigned and -fixed_point(I.F), where I and F are the
        bits before and after the point. The message display-command always follows, with the whole
        format.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count"><DISPLAY>add wave -oct data</DISPLAY></WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"display-command", Severity::kError,
     R"(The text of a DISPLAY cannot be read, so the port keeps its format, hexadecimal by default.
        It is "add wave", a radix and one port, separated by blanks: "add wave -unsigned data".)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count"><DISPLAY>show -bin data</DISPLAY></WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"wizard-map-name", Severity::kError,
     R"(A WIZARD_MAP has no NAME, or an empty one, and is ignored with all that it maps. Give it
        one.)",
     R"(<ROOT>
  <WIZARD_DATA>
    <WIZARD_MAP WIZARD_NAME="counter"/>
  </WIZARD_DATA>
</ROOT>
)"},

    {"wizard-map-attribute", Severity::kError,
     R"(A WIZARD_MAP has an attribute that is not known, which is ignored. The attributes are NAME,
        WIZARD_NAME, MODULE_NAME, MAP_CONSTANTS and MAP_USED_PORTS. The message speaks of a vector
        and means the map.)",
     R"(<ROOT>
  <WIZARD_DATA>
    <WIZARD_MAP NAME="plain" MODULE="counter_core"/>
  </WIZARD_DATA>
</ROOT>
)"},

    {"wizard-map-sub-tag", Severity::kError,
     R"(A WIZARD_MAP holds an element other than PARAMETER, PORT and WIZARD_CONDITION, which is
        ignored.)",
     R"(<ROOT>
  <WIZARD_DATA>
    <WIZARD_MAP NAME="plain"><CONDITION>STYLE == 1</CONDITION></WIZARD_MAP>
  </WIZARD_DATA>
</ROOT>
)"},

    {"if-with-sub-tags", Severity::kError,
     R"(The IF of a conditional text holds an element and is ignored, so what was to depend on it is
        always shown. A condition is plain text: write it without tags, and what depends on it in
        THEN and ELSE after it.)",
     R"(<ROOT>
  <HTML_TEXT>
    <INTRO>
      <IF><T>HAS_ENABLE == 1</T></IF>
      <THEN>The counter has an enable input.</THEN>
    </INTRO>
  </HTML_TEXT>
</ROOT>
)"},

    {"text-with-sub-tags", Severity::kError,
     R"(A part of a conditional text holds text and elements side by side, and neither is shown.
        Put each run of text into an element T of its own, or write everything as plain text.)",
     R"(<ROOT>
  <HTML_TEXT>
    <INTRO>
      <THEN>The counter has <T>an enable input.</T></THEN>
    </INTRO>
  </HTML_TEXT>
</ROOT>
)"},

    {"xml-raw-ampersand", Severity::kWarning,
     R"(In XML "&" begins a reference such as "&lt;". The library takes an "&" without a
        reference for the character itself, but other programs refuse the file. Write "&amp;".)",
     R"(<ROOT>
  <RULES>
    <RULE>WIDTH gt 0 && DEPTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"xml-raw-less-than", Severity::kWarning,
     R"(In XML "<" begins a tag, also within the value of an attribute. The library takes one in a
        value for the character itself, but other programs refuse the file. Write "&lt;" for the
        character, or "lt" in a condition.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <MACROS>
    <MACRO NAME="IS_NARROW" DEFINITION="WIDTH < 9"/>
  </MACROS>
</ROOT>
)"},

    {"xml-undeclared-entity", Severity::kWarning,
     R"(XML knows the entities "amp", "apos", "gt", "lt" and "quot"; others, such as those of HTML,
        are unknown unless the file declares them. The library leaves the reference in the text as
        it is written, and other programs refuse the file. Write the character itself, or its number
        as in "&#176;".)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="WARNING">Above 85&nbsp;C the memory fails.</MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"xml-repeated-attribute", Severity::kWarning,
     R"(An element has the same attribute twice. This warning is for a file of which the library can
        read nothing because of something else further on; otherwise it says the same as an error
        xml-syntax. Keep one of the two attributes.)",
     R"(<ROOT>
  <RULES>
    <RULE ENABLED="ON" ENABLED="ON">WIDTH gt 0</RULE>
  <RULES>
</ROOT>
)"},

    {"xml-control-character", Severity::kWarning,
     R"(XML allows no control characters but tab, line feed and carriage return. The library takes
        them as they are, but other programs refuse the file. They are mostly invisible and come
        from copying: remove what stands at the place, and write the text again.)",
     "<ROOT>\n"
     "  <MESSAGES>\n"
     "    <MESSAGE TYPE=\"INFO\">The output is\b registered.</MESSAGE>\n"
     "  </MESSAGES>\n"
     "</ROOT>\n"},

    {"xml-bad-character-reference", Severity::kWarning,
     R"(A reference such as "&#65;" or "&#x41;" stands for the character of that number. This one has
        no number, or that of a character that XML does not allow, and other programs refuse the
        file. Correct the number, or remove the reference.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="INFO">The output is&#8; registered.</MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"xml-bad-utf8", Severity::kWarning,
     R"(A byte is not part of any character of UTF-8, the encoding of a file that declares it or
        none. The library hands it on as it is, so that a wizard shows a wrong character, and other
        programs refuse the file. Save the file as UTF-8 with the editor that wrote it.)",
     "<ROOT>\n"
     "  <MESSAGES>\n"
     "    <MESSAGE TYPE=\"WARNING\">Above 85 \xB0" "C the memory fails.</MESSAGE>\n"
     "  </MESSAGES>\n"
     "</ROOT>\n"},

    {"xml-comment-hyphens", Severity::kWarning,
     R"(Two hyphens within a comment are its end for some programs, which then refuse the file; the
        library reads on to "-->". Write one hyphen, or a blank between the two.)",
     R"(<ROOT>
  <!-- Ports -- see the manual -->
</ROOT>
)"},

    {"xml-entity-expansion", Severity::kWarning,
     R"(The file declares entities that contain others, or are used, so many times over that what
        they stand for could be far larger than the file. The check stops there. The library does
        not replace entities that a file declares, so they are of no use in a description: write
        the texts themselves.)",
     R"(<!DOCTYPE ROOT [
  <!ENTITY a "0123456789">
  <!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">
  <!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">
  <!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;">
  <!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;">
  <!ENTITY f "&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;">
  <!ENTITY g "&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;">
]>
<ROOT><RULES ODD="&g;"/></ROOT>
)"},

    {"xml-not-well-formed", Severity::kWarning,
     R"(The file breaks another rule of XML, as the text of the message says. The library reads the
        file in its own way or has found something else before, but other programs refuse it.)",
     R"(<!-- counter -->
<?xml version="1.0"?>
<ROOT/>
)"},
};
// clang-format on

std::vector<MessageDescription> all_messages() {
    std::vector<MessageDescription> all = kOfLibraryAndXml;
    for (const auto part : {structure_warnings, word_warnings, expression_warnings, value_warnings,
                            repetition_warnings, stimulus_warnings}) {
        const std::vector<MessageDescription> rows = part();
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}

}  // namespace

const std::vector<MessageDescription>& message_catalogue() {
    static const std::vector<MessageDescription> catalogue = all_messages();
    return catalogue;
}

const char* severity_word(Severity severity) {
    return severity == Severity::kError     ? "error"
           : severity == Severity::kWarning ? "warning"
                                            : "advice";
}

std::string first_sentence(std::string_view explanation) {
    const std::string text = join_lines(explanation);
    const std::size_t end = text.find(". ");
    return end == std::string::npos ? text : text.substr(0, end + 1);
}

const MessageDescription* find_message(std::string_view id) {
    const std::vector<MessageDescription>& rows = message_catalogue();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [id](const MessageDescription& row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}
