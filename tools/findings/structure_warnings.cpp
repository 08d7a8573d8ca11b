#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> structure_warnings() {
    // clang-format off
    return {
    {"foreign-root", Severity::kWarning,
     R"(The root element of a file has another tag than ROOT, so that nothing of the file is read: the
        library takes it for a file of somebody else. Tags are compared exactly and are written in
        upper case. Write ROOT, in included files too.)",
     R"(<Root>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
</Root>
)"},

    {"unknown-element", Severity::kWarning,
     R"(An element stands where the library knows none of that tag. It is silently ignored,
        with all that it holds: a PROT among the ports declares no port.
        Tags are compared exactly and are written in upper case; a PORT belongs into PORTS,
        a PARAMETER into PARAMETERS. Correct the tag, or remove the element.)",
     R"(<ROOT>
  <PORTS>
    <PROT NAME="clock" TYPE="INPUT"/>
  </PORTS>
</ROOT>
)"},

    {"unknown-attribute", Severity::kWarning,
     R"(An element has an attribute that is not read there. Sections have none at all, and
        what is written as text, such as a condition or a command, has none that could hold
        it. Write what it says where it is read, or remove it. Attributes that begin with
        "xml" or "xsi:" are for other programs and stay without a warning.)",
     R"(<ROOT>
  <RULES ENABLED="OFF">
    <RULE>WIDTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"unread-condition", Severity::kWarning,
     R"(A condition is given as an attribute where none is read, so that what should depend
        on it applies always. A message takes its condition as an element IF; a rule, and a
        value rule, is a condition itself; for commands IF and THEN stand around them in the
        WAVE. Write the condition there.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="WARNING" IF="WIDTH gt 32">Wide counters are slow.</MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"unread-text", Severity::kWarning,
     R"(An element has a text, but only its attributes or its sub-elements are read. The
        state of a port is the attribute V or an element V; a file is the attribute FILE or
        an element FILE; texts of INTRO, END and DESCRIPTION stand in elements T. Write the
        text there.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="HAS_ENABLE" TYPE="INTEGER" VALUE="1"/>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="enable" TYPE="INPUT">
      <STATE V="UNUSED" IF="HAS_ENABLE == 0">USED</STATE>
    </PORT>
  </PORTS>
</ROOT>
)"},

    {"overridden", Severity::kWarning,
     R"(Two ways to say one thing are used at once, and the library reads only one of them:
        a message with a text has no use for its IF and THEN, a value rule with IF and THEN
        none for its text, a macro reads its first element alone, a port that is always used
        has no other USAGE. Keep the one that is meant.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="INFO">Wide counters are slow.<IF>WIDTH gt 32</IF></MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"macro-without-name", Severity::kWarning,
     R"(A macro has no NAME, so that no condition can call it and the library keeps nothing
        of it. Give it a name that conditions can write.)",
     R"(<ROOT>
  <MACROS>
    <MACRO DEFINITION="WIDTH gt 32"/>
  </MACROS>
</ROOT>
)"},

    {"macro-without-definition", Severity::kWarning,
     R"(A macro has neither an attribute DEFINITION nor an element DEFINITION as its first
        one, so that it stands for nothing; its arguments are dropped too. Write what it
        stands for.)",
     R"(<ROOT>
  <MACROS>
    <MACRO NAME="IS_WIDE"/>
  </MACROS>
</ROOT>
)"},

    {"message-without-text", Severity::kWarning,
     R"(A message has no text of its own and no THEN or TEXT with one, so that it is
        dropped, whatever its IF and ELSE hold. Write the text, or turn the condition round
        if only the ELSE has one.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="WARNING"><IF>WIDTH gt 32</IF></MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"empty-condition", Severity::kWarning,
     R"(A condition is there, but empty, and what should depend on it is taken for
        unconditional or is dropped. Write the condition, or leave out the attribute or
        element if there is none.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE V="16" IF=""/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"value-missing", Severity::kWarning,
     R"(A FORCE_VALUE or STATE has no value, so that the library silently drops it.
        The value is V, TO or THEN, as an attribute or as an element. Write it; if the value
        is that of the ELSE, turn the condition round.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE IF="MODE == 2"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"range-without-max", Severity::kWarning,
     R"(A range without an upper end is dropped, its lower end too. Write MAX, if need be
        with the largest value that makes sense, or say with a VALUE_RULE what must hold.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_RANGE MIN="1"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"then-without-if", Severity::kWarning,
     R"(A THEN has no IF that it belongs to, so that what it holds applies always, or is
        dropped in a value rule. In a WAVE a command between IF and THEN ends the IF, and so
        does an ELSE; in conditional text a T does. Put the THEN right after its IF.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <IF>HAS_ENABLE == 1</IF>
      <STIM>force clock 0 0,1 10,-repeat 20</STIM>
      <THEN><STIM>force enable 1 20</STIM></THEN>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"else-without-then", Severity::kWarning,
     R"(An ELSE of a WAVE has no THEN before it, and its commands never apply: they replace
        those of the THEN one by one. Put the ELSE after its THEN; if there is nothing to do
        when the condition holds, turn the condition round and write THEN.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <IF>HAS_ENABLE == 1</IF>
      <ELSE><STIM>force enable 1 0</STIM></ELSE>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"else-without-if", Severity::kWarning,
     R"(An ELSE stands where there is no condition, so that it never applies. Write the
        condition that decides between the two, or remove the ELSE.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE V="16" ELSE="8"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"if-without-then", Severity::kWarning,
     R"(An IF has nothing that depends on it and is dropped: no THEN follows before the next
        IF, command or text. Write the THEN right after it, or remove the IF.)",
     R"(<ROOT>
  <HTML_TEXT>
    <INTRO>
      <IF>HAS_ENABLE == 1</IF>
      <T>The counter has an enable input.</T>
    </INTRO>
  </HTML_TEXT>
</ROOT>
)"},

    {"other-kind", Severity::kWarning,
     R"(An element without TYPE adds to what is declared under its name, and here that is of
        another kind: a PARAMETER that names a port changes the port. Use the tag of what is
        meant, in its own section, or correct the name.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="clock" TYPE="INPUT"/>
  </PORTS>
  <PARAMETER_RULES>
    <PARAMETER NAME="clock"/>
  </PARAMETER_RULES>
</ROOT>
)"},

    {"type-missing", Severity::kWarning,
     R"(A PARAMETER or PORT in WIZARD_DATA is new to its map and has no TYPE, so that it is
        silently dropped. A map knows only what it declares itself and what is given
        to all maps, not the parameters and ports of the function. Write its TYPE.)",
     R"(<ROOT>
  <WIZARD_DATA>
    <WIZARD_MAP NAME="plain">
      <PARAMETER NAME="WIDTH" VALUE="8"/>
    </WIZARD_MAP>
  </WIZARD_DATA>
</ROOT>
)"},

    {"generic-without-map", Severity::kWarning,
     R"(A PARAMETER or PORT outside the maps is given to every map that is known at the end
        of its WIZARD_DATA section, and there is none. Put it into the section of the maps,
        or after it.)",
     R"(<ROOT>
  <WIZARD_DATA>
    <PORT NAME="clock" TYPE="INPUT"/>
  </WIZARD_DATA>
  <WIZARD_DATA>
    <WIZARD_MAP NAME="plain"/>
  </WIZARD_DATA>
</ROOT>
)"},
    };
    // clang-format on
}
