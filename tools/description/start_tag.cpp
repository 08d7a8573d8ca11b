#include "tools/description/start_tag.h"

#include <algorithm>
#include <cstddef>

#include "tools/text/text_steps.h"

StartTag::StartTag(std::string_view source) : rest_(source) {
    if (!rest_.empty() && rest_.front() == '<') {
        rest_.remove_prefix(1);
        name_ = taken_until(rest_, " \t\r\n/>");
    } else {
        rest_ = {};
    }
}

bool StartTag::next(Attribute& attribute) {
    skip_blanks(rest_);
    attribute.name = taken_until(rest_, "= \t\r\n/>");
    skip_blanks(rest_);
    if (attribute.name.empty() || rest_.empty() || rest_.front() != '=') {
        return false;
    }
    rest_.remove_prefix(1);
    skip_blanks(rest_);
    const std::string_view quote = rest_.substr(0, 1);
    if (quote != "\"" && quote != "'") {
        return false;
    }
    rest_.remove_prefix(1);
    attribute.value = taken_until(rest_, quote);
    rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 1));
    return true;
}

Attribute find_attribute(std::string_view source, std::string_view name) {
    Attribute found;
    StartTag tag(source);
    for (Attribute attribute; tag.next(attribute);) {
        if (attribute.name == name) {
            found = attribute;
        }
    }
    return found;
}
