#include "tools/lint/constant_limit.h"

#include "tools/text/text_steps.h"
#include "tools/text/whole_number.h"

std::optional<std::int64_t> constant_limit(const KIVO_SESSION& session, std::string_view text) {
    skip_blanks(text);
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    const auto number = whole_number<std::int64_t>(text);
    const bool is_sum = !number && !text.empty() &&
                        text.find_first_not_of("0123456789+-*/%^(). ") == std::string_view::npos;
    if (!is_sum) {
        return number;
    }
    const KIVO_EVALUATION result = session.evaluate(text);
    return result.kind == KIVO_VALUE_KIND::kInteger ? whole_number<std::int64_t>(result.value)
                                                    : std::nullopt;
}
