#include "tools/lint/port_range.h"

#include <algorithm>
#include <cassert>
#include <string_view>

#include "tools/text/text_steps.h"
#include "tools/text/whole_number.h"

namespace {

// The whole number that a text is, or comes to when it is a calculation with numbers alone.
std::optional<std::int64_t> constant(const KIVO_SESSION& session, std::string_view text) {
    text = trimmed(text);
    if (text.find_first_not_of("0123456789+-*/%^(). ") != std::string_view::npos) {
        return std::nullopt;
    }
    const KIVO_EVALUATION result = session.evaluate(text);
    return result.kind == KIVO_VALUE_KIND::kInteger ? whole_number<std::int64_t>(result.value)
                                                    : std::nullopt;
}

}  // namespace

std::string PortRange::text() const {
    assert(least || greatest);
    return !least      ? "at most " + std::to_string(*greatest)
           : !greatest ? "at least " + std::to_string(*least)
                       : std::to_string(*least) + " to " + std::to_string(*greatest);
}

PortRange range_of_port(const Lint& lint, const std::string& name) {
    PortRange range;
    const KIVO_OBJ_INFO* const object = lint.info().get_kivo_obj(name);
    if (object == nullptr || !kivo_is_port(object->obj_type)) {
        return range;
    }
    // A copy, because walking moves the cursor.
    KIVO_OBJ_LIST rules = object->rule_list;
    rules.reset();
    while (KIVO_OBJ* record = rules.get_next_value()) {
        const auto* rule = dynamic_cast<const KIVO_RULE_ELEMENT*>(record);
        if (rule == nullptr || rule->origin != KIVO_ORIGIN_FORCE_RANGE || !rule->text3.empty()) {
            continue;
        }
        if (const auto greatest = constant(lint.session(), rule->text1)) {
            range.greatest = std::min(range.greatest.value_or(*greatest), *greatest);
        }
        if (const auto least = constant(lint.session(), rule->text2)) {
            range.least = std::max(range.least.value_or(*least), *least);
        }
    }
    // An empty one is told of as such.
    const bool is_empty = range.least && range.greatest && *range.least > *range.greatest;
    return is_empty ? PortRange() : range;
}
