#include "kivo/toolkit/xml/internal/xml_checks.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <pugixml.hpp>

#include "kivo/toolkit/internal/text_view.h"

namespace {

// The value of a hexadecimal digit, or of a decimal one; -1 for anything else.
int digit_value(char digit, bool hexadecimal) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return hexadecimal && lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Whether what follows "&#" is a reference to character 0. The parser counts in 32 bits, so a
// number that is a multiple of 2 to the 32nd would give it a NUL too.
bool refers_to_nul(std::string_view rest) {
    const bool hexadecimal = !rest.empty() && rest.front() == 'x';
    rest.remove_prefix(hexadecimal ? 1 : 0);
    if (rest.empty() || rest.front() == ';') {
        return false;
    }
    std::uint32_t code = 0;
    for (const char letter : rest) {
        if (letter == ';') {
            return code == 0;
        }
        const int digit = digit_value(letter, hexadecimal);
        if (digit < 0) {
            return false;
        }
        code = code * (hexadecimal ? 16 : 10) + static_cast<std::uint32_t>(digit);
    }
    return false;
}

// Markup that may stand within the text of an element and does not end it.
struct InnerMarkup {
    std::string_view opening;
    std::string_view closing;
};

// clang-format off
constexpr InnerMarkup kInnerMarkup[] = {
    { "<!--",      "-->" },
    { "<![CDATA[", "]]>" },
    { "<?",        "?>"  },
};
// clang-format on

// The end of the inner markup that begins at "begin": "begin" itself when none does, npos when it
// is not closed.
std::size_t end_of_inner_markup(std::string_view text, std::size_t begin) {
    for (const InnerMarkup& markup : kInnerMarkup) {
        if (text.substr(begin, markup.opening.size()) == markup.opening) {
            const std::size_t closing = text.find(markup.closing, begin + markup.opening.size());
            return closing == std::string_view::npos ? closing : closing + markup.closing.size();
        }
    }
    return begin;
}

std::size_t skip_blanks(std::string_view text, std::size_t at) {
    while (at < text.size() && is_white_space(text[at])) {
        ++at;
    }
    return at;
}

// Finds the places of "<!" and "<?" one after the other. Each of the two marks is rare, and a
// search for a single byte runs at the speed of memory.
class InnerMarkupFinder {
public:
    explicit InnerMarkupFinder(std::string_view text)
        : text_(text), exclamation_(find('!', 0)), question_(find('?', 0)) {}

    // The first place from "at" on, or npos. REQUIRES: "at" never decreases.
    std::size_t next(std::size_t at) {
        assert(at >= last_asked_);
        last_asked_ = at;
        if (exclamation_ < at) {
            exclamation_ = find('!', at);
        }
        if (question_ < at) {
            question_ = find('?', at);
        }
        return std::min(exclamation_, question_);
    }

private:
    std::size_t find(char second, std::size_t at) const {
        std::size_t found = text_.find(second, at + 1);
        while (found != std::string_view::npos && text_[found - 1] != '<') {
            found = text_.find(second, found + 1);
        }
        return found == std::string_view::npos ? found : found - 1;
    }

    std::string_view text_;
    std::size_t exclamation_;
    std::size_t question_;
    std::size_t last_asked_ = 0;
};

// The following are given where something begins and return where it ends, npos when it does not:
// what the parser skips or reads as one, by its own rules.

std::size_t end_after(std::string_view text, std::string_view closing, std::size_t at) {
    const std::size_t found = text.find(closing, at);
    return found == std::string_view::npos ? found : found + closing.size();
}

// "at" stands after the opening quote.
std::size_t end_of_quoted(std::string_view text, char quote, std::size_t at) {
    return end_after(text, std::string_view(&quote, 1), at);
}

// "<![...]]>" in a document type declaration, where such sections nest.
std::size_t end_of_conditional_section(std::string_view text, std::size_t at) {
    std::size_t depth = 0;
    while (at < text.size()) {
        if (text.substr(at, 3) == "<![") {
            ++depth;
            at += 3;
        } else if (text.substr(at, 3) == "]]>") {
            at += 3;
            if (--depth == 0) {
                return at;
            }
        } else {
            ++at;
        }
    }
    return std::string_view::npos;
}

std::size_t end_of_document_type(std::string_view text, std::size_t at) {
    std::size_t depth = 0;  // of declarations, the whole one among them
    while (at < text.size()) {
        if (text[at] == '"' || text[at] == '\'') {
            at = end_of_quoted(text, text[at], at + 1);
        } else if (text.substr(at, 4) == "<!--") {
            at = end_after(text, "-->", at + 4);
        } else if (text.substr(at, 3) == "<![") {
            at = end_of_conditional_section(text, at);
        } else if (text.substr(at, 2) == "<?") {
            at = end_after(text, "?>", at + 2);
        } else if (text.substr(at, 2) == "<!") {
            ++depth;
            at += 2;
        } else if (text[at++] == '>' && --depth == 0) {
            return at;
        }
    }
    return std::string_view::npos;
}

// A start or end tag: ">" within a value does not end it.
std::size_t end_of_tag(std::string_view text, std::size_t at) {
    while (at < text.size() && text[at] != '>') {
        const bool is_quote = text[at] == '"' || text[at] == '\'';
        at = is_quote ? end_of_quoted(text, text[at], at + 1) : at + 1;
    }
    return at < text.size() ? at + 1 : std::string_view::npos;
}

// The first place from "at" on of what looks like a reference to character 0, or npos.
std::size_t find_nul_reference(std::string_view text, std::size_t at) {
    at = text.find('&', at);
    while (at != std::string_view::npos &&
           (text.substr(at + 1, 1) != "#" || !refers_to_nul(text.substr(at + 2)))) {
        at = text.find('&', at + 1);
    }
    return at;
}

std::size_t offset_of(const char* inside, const char* text) {
    return static_cast<std::size_t>(inside - text);
}

bool is_blank(const char* text) {
    return trim_left_view(text).empty();
}

XmlFinding repeated(const char* first, const char* second, const char* text) {
    const std::string name = second;
    return {offset_of(second, text), "attribute " + name + " is given more than once", name,
            offset_of(first, text)};
}

// The square of a few costs less than sorting them.
constexpr std::size_t kFew = 16;

void find_repeated_among_few(const char* const* names, std::size_t count, const char* text,
                             std::vector<XmlFinding>& findings) {
    for (std::size_t second = 1; second < count; ++second) {
        const auto equals_second = [&](const char* first) {
            return *first == *names[second] && std::string_view(first) == names[second];
        };
        const auto first = std::find_if(names, names + second, equals_second);
        if (first != names + second && std::none_of(first + 1, names + second, equals_second)) {
            findings.push_back(repeated(*first, names[second], text));
        }
    }
}

void find_repeated_among_many(const pugi::xml_node& element, const char* text,
                              std::vector<XmlFinding>& findings) {
    std::vector<std::string_view> names;
    for (const pugi::xml_attribute attribute : element.attributes()) {
        names.emplace_back(attribute.name());
    }
    // Equal names end up in document order, which is the order of their addresses.
    std::sort(names.begin(), names.end(), [](std::string_view left, std::string_view right) {
        const int order = left.compare(right);
        return order < 0 || (order == 0 && left.data() < right.data());
    });
    const std::size_t before = findings.size();
    for (std::size_t i = 1; i < names.size(); ++i) {
        const bool is_second = names[i] == names[i - 1] && (i == 1 || names[i] != names[i - 2]);
        if (is_second) {
            findings.push_back(repeated(names[i - 1].data(), names[i].data(), text));
        }
    }
    std::sort(
        findings.begin() + static_cast<std::ptrdiff_t>(before), findings.end(),
        [](const XmlFinding& left, const XmlFinding& right) { return left.offset < right.offset; });
}

// Visits every element of a tree; the parser's own traversal takes no stack.
class RepeatedAttributeFinder : public pugi::xml_tree_walker {
public:
    RepeatedAttributeFinder(const char* text, std::vector<XmlFinding>& findings)
        : text_(text), findings_(findings) {}

    bool for_each(pugi::xml_node& node) override {
        find_repeated_attributes(node, text_, findings_);
        levels_ = std::max(levels_, static_cast<std::size_t>(depth()) + 1);
        return true;
    }

    std::size_t levels() const { return levels_; }

private:
    std::size_t levels_ = 0;
    const char* text_;
    std::vector<XmlFinding>& findings_;
};

}  // namespace

std::optional<XmlFinding> find_nul(std::string_view text) {
    const std::size_t byte = text.find('\0');
    if (byte != std::string_view::npos) {
        return XmlFinding{byte, "NUL byte"};
    }
    std::size_t reference = find_nul_reference(text, 0);
    if (reference == std::string_view::npos) {
        return std::nullopt;
    }
    // In comments, CDATA sections, processing instructions and the document type declaration
    // nothing is a reference. Each begins with "<", but not within a tag.
    for (std::size_t at = 0; reference != std::string_view::npos;) {
        const std::size_t markup = text.find('<', at);
        if (reference < markup) {
            return XmlFinding{reference, "character reference to NUL"};
        }
        at = end_of_inner_markup(text, markup);
        if (at == markup && text.substr(markup, 2) == "<!") {
            at = end_of_document_type(text, markup);
        } else if (at == markup) {
            at = end_of_tag(text, markup);
            if (reference < at) {
                return XmlFinding{reference, "character reference to NUL"};
            }
        }
        if (reference < at) {
            reference = find_nul_reference(text, at);
        }
    }
    return std::nullopt;
}

bool has_blanks_beside_markup(std::string_view text) {
    InnerMarkupFinder finder(text);
    for (std::size_t at = finder.next(0); at != std::string_view::npos; at = finder.next(at)) {
        const std::size_t begin = at;
        bool has_blanks = at > 0 && is_white_space(text[at - 1]);
        std::size_t next = end_of_inner_markup(text, at);
        while (next != at) {
            // What is not closed or holds another opening may stand in an attribute value.
            if (next == std::string_view::npos || finder.next(at + 1) < next) {
                return true;
            }
            at = skip_blanks(text, next);
            has_blanks = has_blanks || at != next;
            next = at == text.size() ? at : end_of_inner_markup(text, at);
        }
        if (at == begin) {  // a document type declaration
            ++at;
            continue;
        }
        // Before a start tag the blanks stand in an element that has a sub-element.
        const char after = at + 1 < text.size() ? text[at + 1] : '\0';
        if (has_blanks && at < text.size() && (text[at] != '<' || after == '/')) {
            return true;
        }
    }
    return false;
}

std::optional<XmlFinding> find_second_root(const pugi::xml_document& document, const char* text) {
    bool has_root = false;
    for (const pugi::xml_node node : document.children()) {
        if (node.type() == pugi::node_element) {
            if (has_root) {
                return XmlFinding{offset_of(node.name(), text) - 1, "second root element"};
            }
            has_root = true;
        } else if (node.type() == pugi::node_cdata || !is_blank(node.value())) {
            return XmlFinding{offset_of(node.value(), text), "text outside the root element"};
        }
    }
    return std::nullopt;
}

void find_repeated_attributes(const pugi::xml_node& element, const char* text,
                              std::vector<XmlFinding>& findings) {
    const char* names[kFew];
    std::size_t count = 0;
    for (const pugi::xml_attribute attribute : element.attributes()) {
        if (count == kFew) {
            find_repeated_among_many(element, text, findings);
            return;
        }
        names[count++] = attribute.name();
    }
    find_repeated_among_few(names, count, text, findings);
}

std::size_t find_repeated_attributes_below(pugi::xml_node node, const char* text,
                                           std::vector<XmlFinding>& findings) {
    RepeatedAttributeFinder finder(text, findings);
    node.traverse(finder);
    return finder.levels();
}
