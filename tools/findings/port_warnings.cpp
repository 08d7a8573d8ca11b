#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> port_warnings() {
    // clang-format off
    return {
    {"wrong-direction", Severity::kWarning,
     R"(A port is given what its direction cannot have. IS_CLOCK_PORT and ASYNC count for ports of type
        INPUT alone, CLOCK_PERIOD for clocks, and a port of type OUTPUT drives its signal, so that no
        constant can be tied to it. Correct the TYPE, or remove what does not fit it.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="clock_out" TYPE="OUTPUT" IS_CLOCK_PORT="TRUE"/>
  </PORTS>
</ROOT>
)"},

    {"run-time-width", Severity::kWarning,
     R"(The width of a port depends on the value of a port. Widths are decided before the design runs,
        when a port has no value yet, so the width is unknown. Name a parameter or a hidden parameter
        in its place.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="count" TYPE="INPUT" WIDTH="4"/>
    <PORT NAME="q" TYPE="OUTPUT" WIDTH="count"/>
  </PORTS>
</ROOT>
)"},
    };
    // clang-format on
}
