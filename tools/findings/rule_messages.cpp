#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> rule_messages() {
    // clang-format off
    return {
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
    };
    // clang-format on
}
