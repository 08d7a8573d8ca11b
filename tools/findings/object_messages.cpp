#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> object_messages() {
    // clang-format off
    return {
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
    };
    // clang-format on
}
