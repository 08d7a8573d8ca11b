#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> value_warnings() {
    // clang-format off
    return {
    {"value-not-in-list", Severity::kWarning,
     R"(A default, a forced value or the value that a map sets is none of the values of the parameter's
        list, perhaps in letter case alone: it can never be legal. Correct the value, or add it to the
        list.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK" CNX_TYPE="CONSTANT">
      <FORCE_VALUE V="BLOK" IF="WIDTH gt 32"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"value-out-of-range", Severity::kWarning,
     R"(A default, an item of a list, a forced value or the value that a map sets lies outside a range
        that always holds: it can never be legal. The default of a port has to fit into its width, too.
        Correct the value or the range.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="128">
      <FORCE_RANGE MIN="1" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"empty-range", Severity::kWarning,
     R"(The MIN of a range lies above its MAX, so no value is in it. Exchange them, or correct the one
        that is wrong.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE MIN="64" MAX="1"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"index-without-list", Severity::kWarning,
     R"(DEFAULT_VALUE_INDEX names an item of a list, and the parameter has none. Give the list as
        VALUE, or the default as DEFAULT_VALUE.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" DEFAULT_VALUE_INDEX="0"/>
  </PARAMETERS>
</ROOT>
)"},

    {"default-index", Severity::kWarning,
     R"(DEFAULT_VALUE_INDEX names an item that the list of values does not have; hosts take the first
        one. Items are counted from 0.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK" DEFAULT_VALUE_INDEX="2"/>
  </PARAMETERS>
</ROOT>
)"},

    {"default-ignored", Severity::kWarning,
     R"(DEFAULT_VALUE does not count beside VALUE or DEFAULT_VALUE_INDEX, and says something else. Of a
        list DEFAULT_VALUE_INDEX names the default; without it the first item is the default. Remove
        the one that is wrong. In a map the index presets nothing: write the value as VALUE.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8" DEFAULT_VALUE="4"/>
  </PARAMETERS>
</ROOT>
)"},

    {"number-expected", Severity::kWarning,
     R"(A width, a limit of a range or the value of an INTEGER parameter or a port is a text or a
        condition, and must be a number. Write a number, or an expression that gives one.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="q" TYPE="OUTPUT" WIDTH="&quot;eight&quot;"/>
  </PORTS>
</ROOT>
)"},

    {"other-type", Severity::kWarning,
     R"(A map gives a parameter or port another TYPE than its declaration has. The declaration holds,
        so the value of the map is read in another way than it was written. Write the declared
        type.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <WIZARD_DATA>
    <WIZARD_MAP NAME="narrow">
      <PARAMETER NAME="WIDTH" TYPE="STRING" VALUE="4"/>
    </WIZARD_MAP>
  </WIZARD_DATA>
</ROOT>
)"},
    };
    // clang-format on
}
