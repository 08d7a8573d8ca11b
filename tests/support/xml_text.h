#pragma once

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/toolkit/xml/internal/xml_parser.h"

// Hands a text in memory to a parser.
class MemorySource : public KIVO_XML_SAX_INPUT_SOURCE {
public:
    explicit MemorySource(std::string_view text) : text_(text) {}

    bool read_text(TextBuffer& text) override {
        TextBuffer copy = make_text_buffer(text_.size());
        std::memcpy(copy.data.get(), text_.data(), text_.size());
        text = std::move(copy);
        return true;
    }

private:
    std::string_view text_;
};

// A document parsed from a text in memory.
struct ParsedText {
    explicit ParsedText(std::string_view text, const std::string& source_name = "") {
        MemorySource source(text);
        source.name = source_name;
        is_parsed = parser.parse(source);
        root = parser.root_element();
    }

    std::vector<std::string> messages() {
        std::vector<std::string> texts;
        parser.error_handler().reset_error_message_list();
        for (std::string text = parser.error_handler().get_next_error_message(); !text.empty();
             text = parser.error_handler().get_next_error_message()) {
            texts.push_back(text);
        }
        return texts;
    }

    KIVO_XML_SAX_PARSER parser;
    bool is_parsed = false;
    KIVO_XML_ELEMENT* root = nullptr;
};

// The text of the root element; what went wrong when there is none.
inline std::string root_text(std::string_view document) {
    ParsedText parsed(document);
    if (parsed.root != nullptr) {
        return std::string(parsed.root->text());
    }
    const std::vector<std::string> messages = parsed.messages();
    return messages.empty() ? "(no root)" : "(" + messages.front() + ")";
}
