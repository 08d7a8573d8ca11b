#include "fuzz/support/xml_oracle.h"

#include <expat.h>

#include <memory>

#include "fuzz/support/expect.h"

std::string xml_refusal(std::string_view text) {
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    expect(parser != nullptr, "memory lasts");
    if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK) {
        return {};
    }
    return std::string(XML_ErrorString(XML_GetErrorCode(parser.get()))) + " at byte " +
           std::to_string(XML_GetCurrentByteIndex(parser.get()));
}
