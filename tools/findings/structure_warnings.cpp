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
    };
    // clang-format on
}
