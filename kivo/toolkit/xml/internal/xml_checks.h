#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pugi {
class xml_document;
class xml_node;
}  // namespace pugi

// Something that is wrong at a place of a document.
struct XmlFinding {
    std::size_t offset;
    std::string what;
    // Of an attribute that is given more than once: its name, and where it stands first.
    std::string attribute{};
    std::optional<std::size_t> first{};
};

// What the parser would read over or be misled by: a NUL byte, or a character reference to one.
std::optional<XmlFinding> find_nul(std::string_view text);

// Whether the text of some element without sub-elements may hold white space beside a comment, a
// CDATA section or a processing instruction. Only then does the parser have to keep every run of
// white space of the document. May say yes when it need not.
bool has_blanks_beside_markup(std::string_view text);

// A second root element, or text outside the root element, of a document parsed from "text".
std::optional<XmlFinding> find_second_root(const pugi::xml_document& document, const char* text);

// Adds one finding for each attribute name that the element gives more than once, in document
// order. "text" is what the document was parsed from.
void find_repeated_attributes(const pugi::xml_node& element, const char* text,
                              std::vector<XmlFinding>& findings);

// The same for every element below "node". Returns how many levels there are below it.
std::size_t find_repeated_attributes_below(pugi::xml_node node, const char* text,
                                           std::vector<XmlFinding>& findings);
