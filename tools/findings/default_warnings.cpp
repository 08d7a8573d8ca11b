#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> default_warnings() {
    // clang-format off
    return {
    {"no-default", Severity::kWarning,
     R"(A parameter of type INTEGER has neither a VALUE nor a DEFAULT_VALUE, and no rule always forces
        one. Until somebody sets it, it is unknown, and so is all that depends on it: no
        configuration is legal. Give it a default; what only follows from others belongs in
        HIDDEN_PARAMETERS.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER"/>
  </PARAMETERS>
</ROOT>
)"},

    {"list-item", Severity::kWarning,
     R"(An item of a list of values is empty or stands there twice. Empty items do not count, also
        not for DEFAULT_VALUE_INDEX, and the second of two equal ones can never be chosen: it was
        probably meant to be another one. Remove it, or correct it.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16;32;32"/>
  </PARAMETERS>
</ROOT>
)"},
    };
    // clang-format on
}
