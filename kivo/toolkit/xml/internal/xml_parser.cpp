#include "kivo/toolkit/xml/internal/xml_parser.h"

#include <new>
#include <pugixml.hpp>
#include <utility>

#include "kivo/toolkit/xml/internal/text_survey.h"
#include "kivo/toolkit/xml/internal/xml_checks.h"

namespace {

constexpr unsigned kParseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                 pugi::parse_wconv_attribute | pugi::parse_fragment |
                                 pugi::parse_embed_pcdata;

const char* describe(pugi::xml_parse_status status) {
    switch (status) {
        case pugi::status_ok:
        case pugi::status_file_not_found:
        case pugi::status_io_error:
        case pugi::status_internal_error:
        case pugi::status_out_of_memory:
        case pugi::status_append_invalid_root:
        case pugi::status_no_document_element:
            break;
        case pugi::status_unrecognized_tag:
            return "no tag name behind \"<\"";
        case pugi::status_bad_pi:
            return "processing instruction is malformed or not closed";
        case pugi::status_bad_comment:
            return "comment is malformed or not closed";
        case pugi::status_bad_cdata:
            return "CDATA section is malformed or not closed";
        case pugi::status_bad_doctype:
            return "document type declaration is malformed or not closed";
        case pugi::status_bad_pcdata:
            return "text is malformed";
        case pugi::status_bad_start_element:
            return "start tag is malformed or not closed";
        case pugi::status_bad_attribute:
            return "attribute is malformed: NAME=\"VALUE\" is expected";
        case pugi::status_bad_end_element:
            return "end tag is malformed or not closed";
        case pugi::status_end_element_mismatch:
            return "an element is not closed, or the end tag does not match its start tag";
    }
    return "not well-formed";
}

}  // namespace

std::string KIVO_XML_SAX_ERROR_HANDLER::get_next_error_message() {
    return cursor_ < messages_.size() ? messages_[cursor_++].text : std::string();
}

// The buffer outlives the tree and the elements, which point into it.
struct KIVO_XML_SAX_PARSER::Tree {
    TextBuffer text;
    pugi::xml_document nodes;
    KIVO_XML_DOCUMENT walk;
};

KIVO_XML_SAX_PARSER::KIVO_XML_SAX_PARSER() : tree_(std::make_unique<Tree>()) {}

KIVO_XML_SAX_PARSER::~KIVO_XML_SAX_PARSER() = default;

void KIVO_XML_SAX_PARSER::report(const XmlFinding& finding) {
    const LineTable::Position at = lines_.locate(finding.offset);
    std::string text = "line " + std::to_string(at.line) + ", column " + std::to_string(at.column);
    if (!source_name_.empty()) {
        text += " of " + source_name_;
    }
    errors_.add({text + ": " + finding.what, finding.offset, finding.attribute, finding.first});
}

bool KIVO_XML_SAX_PARSER::parse(KIVO_XML_SAX_INPUT_SOURCE& source) {
    source_name_ = source.name;
    has_text_ = source.read_text(tree_->text);
    if (!has_text_) {
        report({0, "the text cannot be read"});
        return false;
    }
    convert_to_utf8(tree_->text);
    const bool is_parsed = parse_text(source.file_number);
    if (!walks_once_) {
        end_walk();
    }
    return is_parsed;
}

bool KIVO_XML_SAX_PARSER::parse_text(std::uint32_t file_number) {
    const std::size_t mark = utf8_mark_length(tree_->text.view());
    char* const text = tree_->text.data.get() + mark;
    const std::string_view whole = tree_->text.view().substr(mark);
    TextSurvey survey(whole);
    lines_ = std::move(survey.lines);
    if (survey.has_nul || survey.has_ampersand) {
        if (const auto nul = find_nul(whole)) {
            report(*nul);
            return false;
        }
    }
    const bool keeps_blanks = survey.has_inner_markup_mark && has_blanks_beside_markup(whole);
    const unsigned blanks = keeps_blanks ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single;
    // The NUL after the text goes along: the parser puts one in place of the last byte.
    const pugi::xml_parse_result result = tree_->nodes.load_buffer_inplace(
        text, whole.size() + 1, kParseFlags | blanks, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory) {
        throw std::bad_alloc();
    }
    if (!result) {
        report({static_cast<std::size_t>(result.offset), describe(result.status)});
        return false;
    }
    if (const auto second = find_second_root(tree_->nodes, text)) {
        report(*second);
        return false;
    }
    if (const pugi::xml_node root = tree_->nodes.document_element()) {
        root_ = tree_->walk.stand_on_root(root, text, file_number);
    }
    // What a small document takes is not worth the time.
    constexpr std::size_t kLarge = 1024UL * 1024;
    if (walks_once_ && whole.size() >= kLarge) {
        tree_->walk.release_behind_walk();
    }
    return true;
}

void KIVO_XML_SAX_PARSER::end_walk() {
    for (const XmlFinding& finding : tree_->walk.take_repeated_attributes()) {
        report(finding);
    }
}
