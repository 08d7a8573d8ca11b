// Parses, prints and evaluates any bytes as a text of the rule language.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/support/expect.h"
#include "fuzz/support/memory_file.h"
#include "kivo/kivo.h"
#include "kivo/session/internal/expression/expression.h"
#include "kivo/session/session.h"

namespace {

using kivo_session::Expression;

constexpr const char* kDescription = R"(<ROOT>
<PARAMETERS><PARAMETER NAME="A" TYPE="INTEGER" VALUE="16"/><PARAMETER NAME="U" TYPE="INTEGER"/>
<PARAMETER NAME="S" TYPE="STRING" VALUE="AUTO;BLOCK" DEFAULT_VALUE_INDEX="0"/></PARAMETERS>
<PORTS><PORT NAME="p" TYPE="INPUT"/><PORT NAME="c" TYPE="INPUT" USAGE="CONSTANT" DEFAULT_VALUE="3"/>
</PORTS>
<MACROS><MACRO NAME="M" DEFINITION="A * 2"/><MACRO NAME="F" ARGUMENTS="x, y" DEFINITION="x / y"/>
<MACRO NAME="WRONG" DEFINITION="1 +"/><MACRO NAME="ROUND" DEFINITION="ROUND + 1"/></MACROS>
</ROOT>)";

struct Subject {
    Subject() : session(loaded(info)) {}

    static KIVO_INFO& loaded(KIVO_INFO& info) {
        info.process_xml_file(input_file(kDescription));
        return info;
    }

    KIVO_INFO info;
    KIVO_SESSION session;
};

std::string told(const KIVO_EVALUATION& value) {
    std::string text = std::to_string(static_cast<int>(value.kind)) + value.value;
    for (const std::string& reason : value.reasons) {
        text += ", " + reason;
    }
    return text;
}

std::string printed(std::string_view text, const Expression& expression) {
    return print(text, expression.nodes, static_cast<std::uint32_t>(expression.nodes.size()) - 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Subject* const subject = new Subject;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const KIVO_EVALUATION value = subject->session.evaluate(text);
    for (const KIVO_FAULT& fault : value.faults) {
        expect(fault.offset <= text.size(), "a fault lies in its text", text);
    }
    Expression expression;
    kivo_session::parse(text, expression);
    if (expression.fault) {
        expect(value.kind == KIVO_VALUE_KIND::kUnknown && !value.faults.empty(),
               "what is no expression has no value", text);
        return 0;
    }
    expect(expression.nodes.size() <= text.size(), "a tree has no more nodes than its text bytes");
    const std::string once = printed(text, expression);
    Expression again;
    kivo_session::parse(once, again);
    // Parentheses that are kept may stand where a long text has no room for them.
    if (again.fault) {
        expect(once.size() > kivo_session::kLongestText, "what is printed is an expression", once);
        return 0;
    }
    expect_same(printed(once, again), once, "printing what was printed changes nothing");
    expect_same(told(subject->session.evaluate(once)), told(value),
                "what is printed has the same value");
    expect((subject->session.holds(text) == KIVO_TRUTH::kUnknown) ==
               (subject->session.holds(once) == KIVO_TRUTH::kUnknown),
           "what is printed is as decided", text);
    return 0;
}
