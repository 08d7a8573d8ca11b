#include "tools/findings/xml_fault.h"

#include <expat.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

#include "tools/findings/xml_reading.h"
#include "tools/findings/xml_references.h"
#include "tools/text/utf8.h"

namespace {

// Errors that the place alone explains.
struct PlainRow {
    XML_Error error;
    const char* text;
};

// clang-format off
constexpr PlainRow kPlainRows[] = {
    {XML_ERROR_NO_ELEMENTS,
     "the file ends before all of its elements; add the end tags that are missing"},
    {XML_ERROR_TAG_MISMATCH,
     "this end tag does not match the last open start tag; correct one of the two"},
    {XML_ERROR_UNCLOSED_TOKEN,
     "what begins here is not closed before the file ends; close it"},
    {XML_ERROR_UNCLOSED_CDATA_SECTION,
     "what begins here is not closed before the file ends; close it"},
    {XML_ERROR_JUNK_AFTER_DOC_ELEMENT,
     "only comments may follow the root element; move this into it"},
    {XML_ERROR_MISPLACED_XML_PI,
     "\"<?xml\" may only be the first five characters of a file; remove what is before it"},
    {XML_ERROR_INCORRECT_ENCODING,
     "the file is not in the encoding that it declares; correct the declaration"},
    {XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF,
     "an attribute cannot refer to another file; write its value here"},
    {XML_ERROR_RECURSIVE_ENTITY_REF,
     "the entity refers to itself; write the text itself"},
};
// clang-format on

class Explanation {
public:
    Explanation(std::string_view text, const XmlReading& reading)
        : text_(text), reading_(reading), at_(std::min(reading.at, text.size())) {}

    XmlFault fault() const;

private:
    XmlFault bad_token() const;
    XmlFault bad_reference() const;
    XmlFault undeclared_entity() const;
    XmlFault bad_character_reference() const;
    XmlFault other() const;

    XmlFault comment_hyphens() const;
    XmlFault bad_byte() const;
    XmlFault bad_character(std::uint32_t code, std::size_t length) const;

    XmlFault at(const char* id, std::string text, std::size_t begin, std::size_t length) const {
        return {id, std::move(text), begin, std::min(begin + length, text_.size())};
    }
    std::string_view here(std::size_t length) const { return text_.substr(at_, length); }
    std::string_view before(std::size_t length) const {
        return at_ < length ? std::string_view() : text_.substr(at_ - length, length);
    }
    bool is_in_comment() const;
    bool is_in_attribute_value() const;
    // The first reference from here on that is as wanted; an error about an attribute's value comes
    // with the place of the tag.
    template <class IsWanted>
    std::size_t find_reference(IsWanted is_wanted) const;

    std::string_view text_;
    const XmlReading& reading_;
    std::size_t at_;
};

template <class IsWanted>
std::size_t Explanation::find_reference(IsWanted is_wanted) const {
    std::size_t found = text_.find('&', at_);
    while (found != std::string_view::npos && !is_wanted(reference_at(text_, found))) {
        found = text_.find('&', found + 1);
    }
    return found == std::string_view::npos ? at_ : found;
}

bool Explanation::is_in_comment() const {
    const std::size_t opening = text_.substr(0, at_).rfind("<!--");
    return opening != std::string_view::npos &&
           text_.substr(opening, at_ - opening).find("-->", 4) == std::string_view::npos;
}

bool Explanation::is_in_attribute_value() const {
    const std::size_t tag = text_.substr(0, at_).rfind('<');
    if (tag == std::string_view::npos) {
        return false;
    }
    char quote = '\0';
    for (const char letter : text_.substr(tag, at_ - tag)) {
        if (quote == '\0' && (letter == '"' || letter == '\'')) {
            quote = letter;
        } else if (letter == quote || (quote == '\0' && letter == '>')) {
            quote = '\0';
        }
    }
    return quote != '\0';
}

XmlFault Explanation::comment_hyphens() const {
    return at("xml-comment-hyphens",
              "\"--\" is not allowed within a comment; write one hyphen or \"- -\"", at_ - 2, 2);
}

XmlFault Explanation::bad_byte() const {
    return at("xml-bad-utf8",
              fmt::format("byte 0x{:02X} is not UTF-8; save the file as UTF-8",
                          static_cast<unsigned char>(text_[at_])),
              at_, 1);
}

XmlFault Explanation::bad_character(std::uint32_t code, std::size_t length) const {
    return at("xml-control-character",
              fmt::format("character U+{:04X} is not allowed in XML; remove it", code), at_,
              length);
}

XmlFault Explanation::bad_reference() const {
    const std::size_t start = start_of_reference(text_, at_);
    if (text_.substr(start + 1, 1) == "#") {
        return at(
            "xml-bad-character-reference",
            "\"&#\" begins the number of a character, such as \"&#65;\"; write \"&amp;#\" for "
            "the two characters themselves",
            start, 2);
    }
    return at("xml-raw-ampersand",
              "\"&\" begins a reference such as \"&lt;\"; write \"&amp;\" for the character itself",
              start, 1);
}

XmlFault Explanation::undeclared_entity() const {
    const std::size_t found = find_reference([this](std::string_view name) {
        return !name.empty() && name[0] != '#' && reading_.entities.count(name) == 0;
    });
    const std::string_view name = reference_at(text_, found);
    return at(
        "xml-undeclared-entity",
        fmt::format("entity \"{}\" is not declared; write the character itself, or \"&amp;{};\" "
                    "for this text",
                    name, name),
        found, name.size() + 2);
}

XmlFault Explanation::bad_character_reference() const {
    const std::size_t found = find_reference([](std::string_view reference) {
        return reference.substr(0, 1) == "#" && !is_allowed_reference(reference);
    });
    const std::string_view reference = reference_at(text_, found);
    return at("xml-bad-character-reference",
              fmt::format("\"&{};\" stands for a character that XML does not allow; remove it",
                          reference),
              found, reference.size() + 2);
}

XmlFault Explanation::bad_token() const {
    if (before(2) == "--" && is_in_comment()) {
        return comment_hyphens();
    }
    const std::string_view rest = text_.substr(at_);
    const auto byte = rest.empty() ? std::uint32_t{' '} : static_cast<unsigned char>(rest[0]);
    if (!is_xml_character(byte)) {
        return bad_character(byte, 1);
    }
    if (byte >= 0x80 && reading_.is_utf8 && utf8_length(rest) == 0) {
        return bad_byte();
    }
    if (rest.substr(0, 3) == "\xEF\xBF\xBE" || rest.substr(0, 3) == "\xEF\xBF\xBF") {
        return bad_character(rest[2] == '\xBE' ? 0xFFFE : 0xFFFF, 3);
    }
    if (start_of_reference(text_, at_) != std::string_view::npos) {
        return bad_reference();
    }
    const bool is_in_value = here(1) == "<" && is_in_attribute_value();
    if (is_in_value || (before(1) == "<" && here(1) != "/")) {
        return at(
            "xml-raw-less-than",
            "\"<\" begins a tag; write \"lt\" in a condition, or \"&lt;\" for the character itself",
            is_in_value ? at_ : at_ - 1, 1);
    }
    if (before(2) == "]]" && here(1) == ">") {
        return at("xml-not-well-formed", "\"]]>\" is not allowed in a text; write \"]]&gt;\"",
                  at_ - 2, 3);
    }
    return at("xml-not-well-formed",
              "this is not allowed here; look for a missing quote, blank, \"=\" or \">\" before it",
              at_, 1);
}

XmlFault Explanation::other() const {
    for (const PlainRow& row : kPlainRows) {
        if (row.error == reading_.error) {
            return at("xml-not-well-formed", row.text, at_, 1);
        }
    }
    return at("xml-not-well-formed",
              fmt::format("this is not well-formed XML ({}); correct it",
                          XML_ErrorString(reading_.error)),
              at_, 1);
}

XmlFault Explanation::fault() const {
    switch (reading_.error) {
        case XML_ERROR_INVALID_TOKEN:
            return bad_token();
        case XML_ERROR_PARTIAL_CHAR:
            return bad_byte();
        case XML_ERROR_UNDEFINED_ENTITY:
            return undeclared_entity();
        case XML_ERROR_BAD_CHAR_REF:
            return bad_character_reference();
        case XML_ERROR_DUPLICATE_ATTRIBUTE: {
            const std::size_t length = end_of_name(text_, at_) - at_;
            return at("xml-repeated-attribute",
                      fmt::format("attribute \"{}\" is given more than once; keep one of them",
                                  here(length)),
                      at_, length);
        }
        case XML_ERROR_ABORTED:
        case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
            return at("xml-entity-expansion",
                      "the entities of this file are nested or repeated too often to be followed; "
                      "write the texts themselves",
                      at_, 1);
        default:
            return other();
    }
}

}  // namespace

std::optional<XmlFault> find_xml_fault(std::string_view text, SourceEncoding encoding) {
    const XmlReading reading = read_strictly(text, encoding);
    const bool is_empty = reading.error == XML_ERROR_NO_ELEMENTS && !reading.has_element;
    return reading.error == XML_ERROR_NONE || is_empty
               ? std::nullopt
               : std::optional(Explanation(text, reading).fault());
}
