#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> sense_warnings() {
    // clang-format off
    return {
    {"dead-rule", Severity::kWarning,
     R"(The condition of a rule, a part of a waveform, a text or a wizard map is never true, whatever
        is set, or it always is and the ELSE never counts; or a rule stands after one that always
        decides. Correct the condition, or remove what never counts.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="MODE" TYPE="INTEGER" VALUE="2;3" DEFAULT_VALUE_INDEX="0"/>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE V="16" IF="MODE == 1"/>
    </PARAMETER>
  </PARAMETERS>
  <RULES>
    <RULE>WIDTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"dead-in-legal", Severity::kWarning,
     R"(A condition is true only in configurations that break another rule, so what depends on it is
        never of use. Widen the other rule, or remove what never counts.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="full" TYPE="OUTPUT">
      <STATE V="UNUSED" IF="DEPTH == 0"/>
    </PORT>
  </PORTS>
  <RULES>
    <RULE>DEPTH gte 4</RULE>
  </RULES>
</ROOT>
)"},

    {"unreachable-message", Severity::kWarning,
     R"(A message, or its ELSE, is never shown, whatever is set; other messages than errors also not in
        a legal configuration. Perhaps a rule already rules out what it speaks of. Correct its
        condition, or remove it.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE MIN="1" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
  <MESSAGES>
    <MESSAGE TYPE="WARNING">
      <IF>WIDTH gt 100</IF>
      <THEN>Wide counters are slow.</THEN>
    </MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"impossible-rule", Severity::kWarning,
     R"(No configuration at all meets a rule that must be met, so none is legal. Correct the rule.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE MIN="1" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
  <RULES>
    <RULE>( WIDTH lt 8 ) and ( WIDTH gt 32 )</RULE>
  </RULES>
</ROOT>
)"},

    {"always-condition", Severity::kWarning,
     R"(A condition or a rule is always true, so it says nothing. Remove it, or the rules that make it
        so. Told only when it is asked for, since it may be written for its readers.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE MIN="1" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
  <RULES>
    <RULE>WIDTH gt 0</RULE>
  </RULES>
</ROOT>
)", false},

    {"default-breaks-rule", Severity::kWarning,
     R"(With everything at its default, or at what a wizard map sets, a required rule, range or list is
        broken, so users meet an error before they have set anything. Choose other defaults, or
        correct the rule.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
    <PARAMETER NAME="LEVEL" TYPE="INTEGER" VALUE="20" CNX_TYPE="CONSTANT">
      <FORCE_RANGE MIN="1" MAX="DEPTH - 1"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"default-never-used", Severity::kWarning,
     R"(Rules always force the value of a parameter, so its default never counts and nobody can set it.
        Leave out the ELSE of the rule if the default is to count; declare what always follows from
        others as a hidden parameter.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
    <PARAMETER NAME="CHAIN" TYPE="STRING" VALUE="ON;OFF" CNX_TYPE="CONSTANT">
      <FORCE_VALUE V="OFF" ELSE="ON" IF="WIDTH lt 4"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"value-never-legal", Severity::kWarning,
     R"(A list offers a value that the parameter has in no legal configuration. Take it out of the list,
        or correct the rules that rule it out.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STORAGE" TYPE="STRING" VALUE="AUTO;BLOCK;REGISTERS" DEFAULT_VALUE_INDEX="0">
      <VALUE_RULE>STORAGE != "REGISTERS"</VALUE_RULE>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"forces-disagree", Severity::kWarning,
     R"(Two rules that give an object different values or states count at once in an otherwise legal
        configuration; the first one wins, and the configuration is not legal. Let their conditions
        exclude each other, or write the second value as ELSE of the first.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="MODE" TYPE="INTEGER" VALUE="1;2;3" DEFAULT_VALUE_INDEX="0"/>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8" CNX_TYPE="CONSTANT">
      <FORCE_VALUE V="16" IF="MODE gt 1"/>
      <FORCE_VALUE V="32" IF="MODE gt 2"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"ranges-exclude", Severity::kWarning,
     R"(Ranges of one parameter that count at the same time, or a value that is forced and a range,
        never have a value in common, or the limits of one range leave none. Whenever they count no
        configuration is legal. Correct a limit, or a condition.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16" CNX_TYPE="CONSTANT">
      <FORCE_RANGE MIN="4" MAX="64"/>
      <FORCE_RANGE MIN="128" MAX="1024" IF="WIDTH gt 32"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"force-cycle", Severity::kWarning,
     R"(The values of several objects force one another in a circle, so none of them comes first and
        what they come to may depend on the order of their declarations. Let one of them be set, and
        the others follow from it.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE V="16" IF="DEPTH gt 64"/>
    </PARAMETER>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16">
      <FORCE_VALUE V="64" IF="WIDTH gt 8"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"unused-parameter", Severity::kWarning,
     R"(Nothing in the description names a parameter although it names others: no rule, width, waveform
        or wizard map. Remove it, or say with CNX_TYPE that it is meant for the block alone (CONSTANT)
        or for the wizard alone (PRIVATE).)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
    <PARAMETER NAME="DETPH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <RULES>
    <RULE>WIDTH gte 4</RULE>
  </RULES>
</ROOT>
)"},

    {"unused-macro", Severity::kWarning,
     R"(Nothing in the description names a macro. Remove it, or use it where its text stands.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <MACROS>
    <MACRO NAME="BYTES" DEFINITION="( WIDTH + 7 ) quot 8"/>
  </MACROS>
</ROOT>
)"},

    {"port-width-never", Severity::kWarning,
     R"(In an otherwise legal configuration a port that is used has a width below one. Bound what the
        width is made of, or leave the port out then with a STATE.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE MIN="1" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="lanes" TYPE="INPUT" WIDTH="WIDTH quot 8"/>
  </PORTS>
</ROOT>
)"},

    {"range-empty", Severity::kWarning,
     R"(In a legal configuration the range of a port that is connected holds no value. Let the range
        count only where it holds one, with an IF.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="MODULUS" TYPE="INTEGER" VALUE="0">
      <FORCE_RANGE MIN="0" MAX="256"/>
    </PARAMETER>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="data" TYPE="INPUT" WIDTH="8">
      <FORCE_RANGE MIN="0" MAX="MODULUS - 1"/>
    </PORT>
  </PORTS>
</ROOT>
)"},
    };
    // clang-format on
}
