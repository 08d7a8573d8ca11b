#include "tools/findings/xml_fault.h"

#include <expat.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <set>

#include "kivo/kivo.h"
#include "tools/description/source_text.h"
#include "tools/text/utf8.h"

namespace {

// Entities that refer to others, of which each may take the parser a call deeper.
constexpr std::size_t kMostNestedEntities = 100;
// What the parser takes at once; its lengths have 31 bits.
constexpr std::size_t kPiece = 1024UL * 1024 * 1024;

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

// What the parser told before it met the fault.
struct Course {
    XML_Parser parser = nullptr;
    bool has_element = false;
    bool is_utf8 = true;
    std::size_t nested_entities = 0;
    std::set<std::string, std::less<>> entities = {"amp", "apos", "gt", "lt", "quot"};
};

void note_element(void* data, const XML_Char*, const XML_Char**) {
    static_cast<Course*>(data)->has_element = true;
}

// A handler for all the rest keeps the parser from expanding entities in texts.
void pass_over(void*, const XML_Char*, int) {}

void note_encoding(void* data, const XML_Char*, const XML_Char* encoding, int) {
    std::string name = encoding == nullptr ? "utf-8" : encoding;
    std::transform(name.begin(), name.end(), name.begin(), LESS_C_STRING::fold);
    static_cast<Course*>(data)->is_utf8 = name == "utf-8";
}

void note_entity(void* data, const XML_Char* name, int is_parameter, const XML_Char* value,
                 int length, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    Course& course = *static_cast<Course*>(data);
    if (is_parameter == 0) {
        course.entities.emplace(name);
    }
    if (value != nullptr && std::memchr(value, '&', static_cast<std::size_t>(length)) != nullptr &&
        ++course.nested_entities > kMostNestedEntities) {
        XML_StopParser(course.parser, XML_FALSE);
    }
}

// Takes every byte beyond ASCII of an encoding that the parser does not know for a letter.
int accept_encoding(void*, const XML_Char*, XML_Encoding* encoding) {
    constexpr int kSomeLetter = 0xE9;
    for (int byte = 0; byte < 256; ++byte) {
        encoding->map[byte] = byte < 0x80 ? byte : kSomeLetter;
    }
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
}

XML_Error parse(XML_Parser parser, std::string_view text) {
    while (true) {
        const std::string_view piece = text.substr(0, kPiece);
        const bool is_last = piece.size() == text.size();
        if (XML_Parse(parser, piece.data(), static_cast<int>(piece.size()), is_last ? 1 : 0) !=
            XML_STATUS_OK) {
            return XML_GetErrorCode(parser);
        }
        if (is_last) {
            return XML_ERROR_NONE;
        }
        text.remove_prefix(piece.size());
    }
}

std::uint32_t digits_value(std::string_view digits, std::uint32_t base) {
    std::uint32_t value = 0;
    for (const char digit : digits) {
        const auto lower = std::uint32_t{LESS_C_STRING::fold(digit)};
        value = value * base + (lower >= 'a' ? lower - 'a' + 10 : lower - '0');
        value = std::min(value, 0x110000U);
    }
    return value;
}

bool is_xml_character(std::uint32_t code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

// Of "#10" or "#xA".
bool is_allowed_character(std::string_view reference) {
    const bool is_hexadecimal = reference.substr(1, 1) == "x";
    return is_xml_character(
        digits_value(reference.substr(is_hexadecimal ? 2 : 1), is_hexadecimal ? 16 : 10));
}

// What stands between the "&" at "begin" and the ";" that closes the reference; empty without one.
std::string_view reference_at(std::string_view text, std::size_t begin) {
    const std::size_t start = begin + 1;
    const bool is_number = text.substr(start, 1) == "#";
    const std::size_t end = end_of_name(text, start + (is_number ? 1 : 0));
    return text.substr(end, 1) == ";" ? text.substr(start, end - start) : std::string_view();
}

class Explanation {
public:
    Explanation(std::string_view text, const Course& course, XML_Error error, std::size_t at)
        : text_(text), course_(course), error_(error), at_(std::min(at, text.size())) {}

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
    // The offset of the "&" of the reference that is broken off here, or npos.
    std::size_t start_of_reference() const;
    // The first reference from here on that is as wanted; an error about an attribute's value comes
    // with the place of the tag.
    template <class IsWanted>
    std::size_t find_reference(IsWanted is_wanted) const;

    std::string_view text_;
    const Course& course_;
    XML_Error error_;
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

std::size_t Explanation::start_of_reference() const {
    std::size_t start = at_;
    while (start > 0 && (is_name_letter(text_[start - 1]) || text_[start - 1] == '#')) {
        --start;
    }
    return start > 0 && text_[start - 1] == '&' ? start - 1 : std::string_view::npos;
}

XmlFault Explanation::comment_hyphens() const {
    return at("xml-comment-hyphens",
              "\"--\" is not allowed within a comment; write one hyphen or \"- -\"", at_ - 2, 2);
}

XmlFault Explanation::bad_byte() const {
    return at(
        "xml-bad-utf8",
        fmt::format("byte 0x{:02X} is no UTF-8, in which the file has to be; save it as UTF-8",
                    static_cast<unsigned char>(text_[at_])),
        at_, 1);
}

XmlFault Explanation::bad_character(std::uint32_t code, std::size_t length) const {
    return at("xml-control-character",
              fmt::format("character U+{:04X} is not allowed in XML; remove it", code), at_,
              length);
}

XmlFault Explanation::bad_reference() const {
    const std::size_t start = start_of_reference();
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
        return !name.empty() && name[0] != '#' && course_.entities.count(name) == 0;
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
        return reference.substr(0, 1) == "#" && !is_allowed_character(reference);
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
    if (byte >= 0x80 && course_.is_utf8 && utf8_length(rest) == 0) {
        return bad_byte();
    }
    if (rest.substr(0, 3) == "\xEF\xBF\xBE" || rest.substr(0, 3) == "\xEF\xBF\xBF") {
        return bad_character(rest[2] == '\xBE' ? 0xFFFE : 0xFFFF, 3);
    }
    if (start_of_reference() != std::string_view::npos) {
        return bad_reference();
    }
    const bool is_in_value = here(1) == "<" && is_in_attribute_value();
    if (is_in_value || (before(1) == "<" && here(1) != "/")) {
        return at("xml-raw-less-than",
                  "\"<\" begins a tag; write \"&lt;\" for the character itself",
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
    const char* text = nullptr;
    switch (error_) {
        case XML_ERROR_NO_ELEMENTS:
            text = "the file ends before all of its elements; add the end tags that are missing";
            break;
        case XML_ERROR_TAG_MISMATCH:
            text = "this end tag does not match the last open start tag; correct one of the two";
            break;
        case XML_ERROR_UNCLOSED_TOKEN:
        case XML_ERROR_UNCLOSED_CDATA_SECTION:
            text = "what begins here is not closed before the file ends; close it";
            break;
        case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
            text = "only comments may follow the root element; move this into it";
            break;
        case XML_ERROR_MISPLACED_XML_PI:
            text =
                "\"<?xml\" may only be the first five characters of a file; remove what is before "
                "it";
            break;
        case XML_ERROR_INCORRECT_ENCODING:
            text = "the file is not in the encoding that it declares; correct the declaration";
            break;
        case XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF:
            text = "an attribute cannot refer to another file; write its value here";
            break;
        case XML_ERROR_RECURSIVE_ENTITY_REF:
            text = "the entity refers to itself; write the text itself";
            break;
        default:
            break;
    }
    return at("xml-not-well-formed",
              text != nullptr ? text
                              : fmt::format("this is not well-formed XML ({}); correct it",
                                            XML_ErrorString(error_)),
              at_, 1);
}

XmlFault Explanation::fault() const {
    switch (error_) {
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

std::optional<XmlFault> find_xml_fault(std::string_view text, bool is_known_utf8) {
    const Parser parser(XML_ParserCreate(is_known_utf8 ? "UTF-8" : nullptr));
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    Course course;
    course.parser = parser.get();
    XML_SetUserData(parser.get(), &course);
    XML_SetStartElementHandler(parser.get(), note_element);
    XML_SetDefaultHandler(parser.get(), pass_over);
    XML_SetXmlDeclHandler(parser.get(), note_encoding);
    XML_SetEntityDeclHandler(parser.get(), note_entity);
    XML_SetUnknownEncodingHandler(parser.get(), accept_encoding, nullptr);
    const XML_Error error = parse(parser.get(), text);
    if (error == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    if (error == XML_ERROR_NONE || (error == XML_ERROR_NO_ELEMENTS && !course.has_element)) {
        return std::nullopt;
    }
    course.is_utf8 = course.is_utf8 || is_known_utf8;
    const auto at =
        static_cast<std::size_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser.get()), 0));
    return Explanation(text, course, error, at).fault();
}
