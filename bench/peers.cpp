#include "peers.h"

#include <expat.h>
#include <libxml/parser.h>
#include <tinyxml2.h>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pugixml.hpp>

#include "comparison.h"

namespace {

void start_element(void*, const XML_Char*, const XML_Char**) {}

void end_element(void*, const XML_Char*) {}

void character_data(void*, const XML_Char*, int) {}

std::size_t letters_below(const pugi::xml_node& node) {
    std::size_t letters = 0;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        letters += std::strlen(child.name()) + std::strlen(child.value());
        for (auto attribute = child.first_attribute(); attribute;
             attribute = attribute.next_attribute()) {
            letters += std::strlen(attribute.name()) + std::strlen(attribute.value());
        }
        letters += letters_below(child);
    }
    return letters;
}

}  // namespace

void parse_with_pugixml(std::string& text) {
    pugi::xml_document document;
    require(document.load_buffer_inplace(text.data(), text.size()), "pugixml failed");
}

void visit_with_pugixml(const std::string& path) {
    const std::size_t size = std::filesystem::file_size(path);
    const std::unique_ptr<char[]> text(new char[size]);
    std::filebuf file;
    file.pubsetbuf(nullptr, 0);  // straight into the text
    file.open(path, std::ios::in | std::ios::binary);
    const auto read = file.sgetn(text.get(), static_cast<std::streamsize>(size));
    require(read == static_cast<std::streamsize>(size), "a description cannot be read");
    pugi::xml_document document;
    constexpr unsigned kFlags =
        pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;
    require(document.load_buffer_inplace(text.get(), size, kFlags), "pugixml failed");
    require(letters_below(document) > 0, "a description is empty");
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
