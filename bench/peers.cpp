#include "peers.h"

#include <expat.h>
#include <libxml/parser.h>
#include <tinyxml2.h>
#include <pugixml.hpp>

#include "comparison.h"

namespace {

void start_element(void*, const XML_Char*, const XML_Char**) {}

void end_element(void*, const XML_Char*) {}

void character_data(void*, const XML_Char*, int) {}

}  // namespace

void parse_with_pugixml(std::string& text) {
    pugi::xml_document document;
    require(document.load_buffer_inplace(text.data(), text.size()), "pugixml failed");
}

void parse_with_expat(const std::string& text) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetElementHandler(parser, start_element, end_element);
    XML_SetCharacterDataHandler(parser, character_data);
    const bool is_parsed =
        XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    require(is_parsed, "expat failed");
}

void parse_with_tinyxml2(const std::string& text) {
    tinyxml2::XMLDocument document;
    require(document.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS, "tinyxml2 failed");
}

void parse_with_libxml2(const std::string& text) {
    xmlDocPtr document = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                       XML_PARSE_HUGE | XML_PARSE_NONET);
    require(document != nullptr, "libxml2 failed");
    xmlFreeDoc(document);
}
