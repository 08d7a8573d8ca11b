#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> repetition_warnings() {
    // clang-format off
    return {
    {"declared-twice", Severity::kWarning,
     R"(Something of that name and type is declared already, and the library takes the
        second for more of the first, as the warning says. Remove one of them or rename it.
        To add rules to a parameter or port leave out TYPE.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="data" TYPE="INPUT" WIDTH="8"/>
    <PORT NAME="data" TYPE="INPUT" WIDTH="16"/>
  </PORTS>
</ROOT>
)"},

    {"given-twice", Severity::kWarning,
     R"(What can be given once is given again, or two words of one meaning stand in one
        element, such as IF and WHEN: only one of them counts, as the warning says. Keep
        that one. A file that is included again is read again, so that its rules apply
        twice. Of two stimulus commands that give one signal a value at the same time the
        last counts: the signal of one of them is often a copy.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">
      <FORCE_VALUE V="16" IF="WIDTH == 2" WHEN="WIDTH == 3"/>
    </PARAMETER>
  </PARAMETERS>
</ROOT>
)"},

    {"unused-waiver", Severity::kWarning,
     R"(The settings file kivo.toml waives a finding that is not there, in a file that was checked:
        what it was for has been mended or has moved. Remove the waiver, or correct its id, file or
        name.)",
     R"([[waiver]]
id = "unread-text"
file = "counter_info.xml"
reason = "a note to ourselves"
)"},
    };
    // clang-format on
}
