#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> display_messages() {
    // clang-format off
    return {
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

    {"wizard-map-objects", Severity::kError,
     R"(The wizard maps would receive more than 1,000,000 copies of the PARAMETER and PORT elements
        that stand directly in WIZARD_DATA, which every map receives. This map has received none. Write
        what only some maps need inside those maps. The example would need as many maps and ports as
        make a million when they are multiplied.)",
     R"(<ROOT>
  <WIZARD_DATA>
    <PORT NAME="clock" TYPE="INPUT"/>
    <WIZARD_MAP NAME="plain"/>
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
    };
    // clang-format on
}
