#include "tools/findings/verdict_pages.h"

#include <algorithm>

const std::vector<VerdictPage>& verdict_pages() {
    // clang-format off
    static const std::vector<VerdictPage> pages = {
    {"needs-value", "error",
     R"(An INTEGER parameter has no value: nobody set it, and the description gives no default.
        The configuration is not legal, and what depends on the parameter is not decided. Set
        it; an author gives it a DEFAULT_VALUE.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER"/>
  </PARAMETERS>
</ROOT>
)", ""},

    {"not-in-list", "error",
     R"(A parameter has a value that is not one of its list, compared letter by letter: it was
        set so, or a rule or a wizard map gave it the value. The configuration is not legal. Set
        one of the values that the message names.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK" DEFAULT_VALUE_INDEX="0"/>
  </PARAMETERS>
</ROOT>
)", "STYLE=BLOK"},

    {"out-of-range", "error",
     R"(A parameter lies outside a FORCE_RANGE that counts now. The configuration is not legal.
        Values are never moved into the range: set another one, or change what the limits or the
        condition of the range depend on. The message shows the limits as they stand now, and
        --why what they come from.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16">
      <FORCE_RANGE MIN="4" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)", "DEPTH=128"},

    {"value-rule", "error or advice",
     R"(A VALUE_RULE of a parameter does not hold. The configuration is not legal, unless the
        rule is one that is not required: then this is advice. Any parameter that the rule names
        may be the one to change; the conflict lists them, and --repairs the changes that
        suffice.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
    <PARAMETER NAME="LEVEL" TYPE="INTEGER" VALUE="12">
      <VALUE_RULE>LEVEL lt DEPTH</VALUE_RULE>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)", "LEVEL=20"},

    {"overridden", "warning",
     R"(What was set did not take effect, since a FORCE_VALUE gives the parameter, or a STATE
        rule the port, something else. The configuration may be legal all the same, but it is
        not what was asked for, and the exit status says so. What was set is kept and counts
        again when the rule no longer applies. Take the setting back, or change what the rule
        depends on.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
    <PARAMETER NAME="BYTES" TYPE="STRING" VALUE="ON;OFF" DEFAULT_VALUE_INDEX="1">
      <FORCE_VALUE V="OFF" IF="WIDTH % 8 != 0"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)", "WIDTH=9 BYTES=ON"},

    {"forces-disagree", "error",
     R"(Two FORCE_VALUE elements of a parameter or port, or two STATE elements of a port, apply
        at once and give different values. The first one counts, but the description contradicts
        itself, so the configuration is not legal. Settings with which one of the two does not
        apply avoid it; an author makes their conditions exclude each other, or writes one with
        an ELSE last.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="SMALL;FAST" DEFAULT_VALUE_INDEX="0">
      <FORCE_VALUE V="SMALL" IF="DEPTH gt 32"/>
      <FORCE_VALUE V="FAST" IF="DEPTH gt 64"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)", "DEPTH=100"},

    {"rule", "error",
     R"(A required RULE or CONDITION of the function does not hold, so the configuration is not
        legal. The message shows the rule; --why shows what its parts come to and where those
        values are from, and --repairs the changes after which it holds.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <RULES>
    <RULE>DEPTH % 2 == 0</RULE>
  </RULES>
</ROOT>
)", "DEPTH=5"},

    {"advice", "advice",
     R"(A RULE or CONDITION with REQUIRED_RULE="OFF" does not hold. The configuration stays
        legal: the author of the description recommends another one. The conflict and the
        repairs say which.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <RULES>
    <RULE REQUIRED_RULE="OFF">DEPTH % 2 == 0</RULE>
  </RULES>
</ROOT>
)", "DEPTH=5"},

    {"message-error", "error",
     R"(A MESSAGE of type ERROR is shown, which the author wrote for configurations that do not
        work. This one is not legal. Its text is that of the message; --why shows the condition
        under which it is shown.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <MESSAGES>
    <MESSAGE TYPE="ERROR">
      <IF>DEPTH lt 4</IF>
      <THEN>Fewer than four words cannot be stored.</THEN>
    </MESSAGE>
  </MESSAGES>
</ROOT>
)", "DEPTH=2"},

    {"port-width", "error",
     R"(The width of a port that is connected or tied comes to less than 1, or to no whole
        number, so that no instance can be written. The configuration is not legal. Change the
        settings that the width depends on, or leave the port unused; an author gives those
        parameters a range.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="spare" TYPE="INPUT" WIDTH="DEPTH - 8"/>
  </PORTS>
</ROOT>
)", "DEPTH=8"},

    {"port-range", "error or warning",
     R"(The constant at a port lies outside a CONSTANT_RANGE or does not fit the width of the
        port: the configuration is not legal. As a warning: the constant lies outside a
        FORCE_RANGE, which says what the port should carry, or no value lies in the FORCE_RANGE
        of a port that is used. Tie the port to another value, or change what the limits depend
        on.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="offset" TYPE="INPUT" WIDTH="4">
      <CONSTANT_RANGE MIN="0" MAX="7"/>
    </PORT>
  </PORTS>
</ROOT>
)", "offset=CONSTANT:9"},

    {"port-needs-value", "warning",
     R"(An input is not connected, and neither the user nor the description says what it reads:
        it has no FORCE_VALUE, no constant and no DEFAULT_VALUE. Where a constant is needed, 0
        is taken. Connect the port, or set it to a constant as in enable=CONSTANT:1; an author
        gives it a DEFAULT_VALUE.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="enable" TYPE="INPUT"/>
  </PORTS>
</ROOT>
)", "enable=UNUSED"},

    {"forced-but-connected", "warning",
     R"(A FORCE_VALUE gives a port a constant, but the port is connected, so that the constant
        has no effect. Make the port CONSTANT or UNUSED; an author adds a STATE rule with the
        same condition.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="reset" TYPE="INPUT">
      <FORCE_VALUE V="0"/>
    </PORT>
  </PORTS>
</ROOT>
)", ""},

    {"fault", "error or warning",
     R"(A text of the description cannot be judged: it is no expression, names what is not
        there, or has no value with these settings, as in a division by zero. The id in the
        message says more, as in kivo explain unknown-name. It is an error where a value or an
        error depends on the text, and a warning where only advice, messages, waves or maps do.
        What comes of the values alone other settings avoid; the rest only the author can mend.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <RULES>
    <RULE>DEPHT gt 4</RULE>
  </RULES>
</ROOT>
)", ""},
    };
    // clang-format on
    return pages;
}

const VerdictPage* find_verdict_page(std::string_view id) {
    const std::vector<VerdictPage>& pages = verdict_pages();
    const auto found = std::find_if(pages.begin(), pages.end(),
                                    [id](const VerdictPage& page) { return page.id == id; });
    return found == pages.end() ? nullptr : &*found;
}
