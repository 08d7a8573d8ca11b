#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> word_warnings() {
    // clang-format off
    return {
    {"unknown-word", Severity::kWarning,
     R"(An attribute takes one of a few words and has another, which silently counts as one
        of them: "on" is OFF, "unused" is USED. Words are compared exactly and are
        written in upper case. Write the one that is meant.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="enable" TYPE="INPUT" USAGE="unused"/>
  </PORTS>
</ROOT>
)"},

    {"not-a-number", Severity::kWarning,
     R"(A number is read up to the first letter that is none: "120us" is 120, "four" is 0.
        Times have no unit of their own, all count in TIME_SCALE. Numbers beyond 32 bits
        lose their upper digits. Write digits alone.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count" MAX_TIME="120us">
      <STIM>force enable 1 20</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"time-unit", Severity::kWarning,
     R"(TIME_SCALE is the unit in which all times count: fs, ps, ns, us, ms or s, perhaps with a whole
        number before it, such as "100 ps". Another one is shown as it is written, but programs
        that read waveforms take it for nanoseconds. Write one that they know.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_SCALE VALUE="nsec"/>
  </FUNCTION_INFORMATION>
</ROOT>
)"},

    {"time-step", Severity::kWarning,
     R"(A wave with a TIME_STEP of 0 or less gets nowhere: hosts go through its times in
        such steps. A clock with a CLOCK_PERIOD of 0 and a TIME_DELTA of 0 get nowhere either,
        one step is too large that goes beyond MAX_TIME, and a wave whose MAX_TIME lies before
        START_TIME is over before it begins. Write how far apart the times are that a host is
        to look at, or leave out the attribute for steps of 1.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count" MAX_TIME="120" TIME_STEP="0">
      <STIM>force enable 1 20</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"unused-argument", Severity::kWarning,
     R"(The definition of a macro does not use one of its arguments, so that it does not matter
        what a call gives for it. Perhaps the definition names a parameter in its place. Use
        the argument, or take it away, there and in the calls.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <MACROS>
    <MACRO NAME="IS_WIDE" ARGUMENTS="bits" DEFINITION="WIDTH gt 32"/>
  </MACROS>
  <RULES>
    <RULE>!( IS_WIDE(WIDTH) )</RULE>
  </RULES>
</ROOT>
)"},

    {"wrong-separator", Severity::kWarning,
     R"(The entries of a list are separated by something else than the library looks for,
        and the list is taken for one entry. The values of a parameter and the libraries of
        a model are separated by ";", the arguments of a macro by ",".)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO,BLOCK" DEFAULT_VALUE_INDEX="0"/>
  </PARAMETERS>
</ROOT>
)"},

    {"name-with-blanks", Severity::kWarning,
     R"(A name begins or ends with a blank, which is part of it: whoever writes it without
        the blank names something else. Remove the blank.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="clock " TYPE="INPUT"/>
  </PORTS>
</ROOT>
)"},

    {"unwritable-name", Severity::kWarning,
     R"(A name holds a sign with which conditions cannot write it: "DATA-WIDTH" reads as a
        difference. Names begin with a letter or "_" and go on with letters, digits, "_" and
        "$". The name of a module has no blanks either, since no design could write it.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DATA-WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
</ROOT>
)"},
    };
    // clang-format on
}
