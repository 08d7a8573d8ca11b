#include "tools/findings/xml_notes.h"

#include <array>
#include <vector>

#include "tools/description/source_text.h"
#include "tools/description/start_tag.h"
#include "tools/text/text_steps.h"

namespace {

struct SkippedRow {
    std::string_view opening;
    std::string_view closing;
};

// What is no element; the more special first.
// clang-format off
constexpr std::array<SkippedRow, 4> kSkipped = {{
    { "<!--",      "-->" },
    { "<![CDATA[", "]]>" },
    { "<?",        "?>"  },
    { "<!",        ">"   },
}};
// clang-format on

bool starts_with(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

// Where what begins at "at" ends, when it is no element.
std::optional<std::size_t> end_of_skipped(std::string_view text, std::size_t at) {
    for (const SkippedRow& row : kSkipped) {
        if (starts_with(text.substr(at), row.opening)) {
            const std::size_t closing = text.find(row.closing, at + row.opening.size());
            return closing == std::string_view::npos ? text.size() : closing + row.closing.size();
        }
    }
    return std::nullopt;
}

// The start tag of the innermost element that is open where a text ends.
std::optional<std::size_t> innermost_open(std::string_view text) {
    std::vector<std::size_t> open;
    std::size_t at = text.find('<');
    while (at < text.size()) {
        std::size_t end = at + 1;
        if (const auto skipped = end_of_skipped(text, at)) {
            end = *skipped;
        } else if (text.substr(at + 1, 1) == "/") {
            if (!open.empty()) {
                open.pop_back();
            }
        } else {
            StartTag tag(text.substr(at));
            for (Attribute attribute; tag.next(attribute);) {
            }
            end = text.size() - tag.rest().size();
            if (!starts_with(tag.rest(), "/")) {
                open.push_back(at);
            }
        }
        at = text.find('<', end);
    }
    return open.empty() ? std::nullopt : std::optional(open.back());
}

// Whether the "<" stands in a text, where it was to compare.
bool follows_text(std::string_view text, std::size_t less_than) {
    const std::string_view before = text.substr(0, less_than);
    const std::size_t markup = before.find_last_of("<>");
    return markup != std::string_view::npos && before[markup] == '>' &&
           !is_blank(before.substr(markup + 1));
}

std::optional<XmlNote> note_of_comparison(std::string_view text, std::size_t fault) {
    // A tag that is no tag may reach up to an end tag.
    const bool is_at_end_tag = fault > 0 && text.substr(fault - 1, 2) == "</";
    const std::size_t less_than = text.substr(0, is_at_end_tag ? fault - 1 : fault).rfind('<');
    if (less_than == std::string_view::npos || !follows_text(text, less_than)) {
        return std::nullopt;
    }
    const bool has_equal = text.substr(less_than + 1, 1) == "=";
    return XmlNote{has_equal ? "to compare with \"<=\", write \"lte\" or \"&lt;=\""
                             : "to compare with \"<\", write \"lt\" or \"&lt;\"",
                   less_than};
}

}  // namespace

std::optional<XmlNote> note_of_xml_fault(std::string_view text, std::size_t fault) {
    const bool is_end_tag = fault >= 2 && text.substr(fault - 2, 2) == "</";
    if (!is_end_tag && !is_blank(text.substr(fault))) {
        return note_of_comparison(text, fault);
    }
    const auto open = innermost_open(text.substr(0, is_end_tag ? fault - 2 : fault));
    if (!open) {
        return std::nullopt;
    }
    const std::string name(text.substr(*open + 1, end_of_name(text, *open + 1) - *open - 1));
    return XmlNote{"element " + name + " is opened here", *open};
}
