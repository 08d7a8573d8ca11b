#include "tools/findings/xml_reading.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

#include "kivo/kivo.h"

namespace {

// The most entities that refer to others: each may take the parser a call deeper.
constexpr std::size_t kMostNestedEntities = 100;
// What the parser takes at once; its lengths have 31 bits.
constexpr std::size_t kPiece = 1024UL * 1024 * 1024;

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

// What the handlers work on.
struct Course {
    XML_Parser parser = nullptr;
    SourceEncoding encoding = SourceEncoding::kDeclared;
    std::size_t nested_entities = 0;
    bool is_wrong_encoding = false;
    XmlReading reading;
};

void note_element(void* data, const XML_Char*, const XML_Char**) {
    static_cast<Course*>(data)->reading.has_element = true;
}

// A handler for all the rest. Entities in texts are expanded, which the parser bounds itself: what
// they hold must be well-formed too.
void ignore_rest(void*, const XML_Char*, int) {}

// Whether the bytes cannot be in the encoding that their declaration names, in lower case.
bool contradicts(SourceEncoding encoding, std::string_view declared) {
    const bool is_wide = declared.substr(0, 6) == "utf-16";
    const bool is_narrow =
        declared == "utf-8" || declared == "us-ascii" || declared == "iso-8859-1";
    return (encoding == SourceEncoding::kUtf8 && is_wide) ||
           (encoding == SourceEncoding::kConverted && is_narrow);
}

void note_encoding(void* data, const XML_Char*, const XML_Char* encoding, int) {
    std::string name = encoding == nullptr ? "utf-8" : encoding;
    std::transform(name.begin(), name.end(), name.begin(), LESS_C_STRING::fold);
    Course& course = *static_cast<Course*>(data);
    course.reading.is_utf8 = name == "utf-8";
    course.is_wrong_encoding = encoding != nullptr && contradicts(course.encoding, name);
}

void note_entity(void* data, const XML_Char* name, int is_parameter, const XML_Char* value,
                 int length, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    Course& course = *static_cast<Course*>(data);
    if (is_parameter == 0) {
        course.reading.entities.emplace(name);
    }
    if (value != nullptr && std::memchr(value, '&', static_cast<std::size_t>(length)) != nullptr &&
        ++course.nested_entities > kMostNestedEntities) {
        XML_StopParser(course.parser, XML_FALSE);
    }
}

// Of an encoding that the parser does not know, every byte beyond ASCII counts as a letter.
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

void set_handlers(Course& course) {
    XML_SetUserData(course.parser, &course);
    XML_SetStartElementHandler(course.parser, note_element);
    XML_SetDefaultHandlerExpand(course.parser, ignore_rest);
    XML_SetXmlDeclHandler(course.parser, note_encoding);
    XML_SetEntityDeclHandler(course.parser, note_entity);
    XML_SetUnknownEncodingHandler(course.parser, accept_encoding, nullptr);
}

}  // namespace

XmlReading read_strictly(std::string_view text, SourceEncoding encoding) {
    const bool is_known = encoding != SourceEncoding::kDeclared;
    const Parser parser(XML_ParserCreate(is_known ? "UTF-8" : nullptr));
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    Course course;
    course.parser = parser.get();
    course.encoding = encoding;
    set_handlers(course);
    course.reading.error = parse(parser.get(), text);
    if (course.reading.error == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    course.reading.is_utf8 = course.reading.is_utf8 || is_known;
    course.reading.at =
        static_cast<std::size_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser.get()), 0));
    if (is_known && utf8_mark_length(text) > 0) {
        course.reading.error = XML_ERROR_SYNTAX;
        course.reading.at = 0;
    } else if (course.reading.error == XML_ERROR_NONE && course.is_wrong_encoding) {
        course.reading.error = XML_ERROR_INCORRECT_ENCODING;
        course.reading.at = 0;
    }
    return std::move(course.reading);
}
