#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kivo/toolkit/xml/internal/input_source.h"
#include "kivo/toolkit/xml/internal/line_table.h"
#include "kivo/toolkit/xml/internal/xml_element.h"

// Collects what a parser found wrong: "line 3, column 7 of FILE: WHAT", each in one line.
class KIVO_XML_SAX_ERROR_HANDLER {
public:
    struct Message {
        std::string text;
        std::size_t offset;  // in bytes from the start of the document
        // Of an attribute that is given more than once: its name, and where it stands first.
        std::string attribute{};
        std::optional<std::size_t> first{};
    };

    bool has_error_messages() const { return !messages_.empty(); }
    void reset_error_message_list() { cursor_ = 0; }
    // The next message; the empty string at the end.
    std::string get_next_error_message();

    const std::vector<Message>& messages() const { return messages_; }
    void add(Message message) { messages_.push_back(std::move(message)); }

private:
    std::vector<Message> messages_;
    std::size_t cursor_ = 0;
};

// Parses a document in one buffer, in place, and owns it: the elements of its walk and all views
// into it go with the parser.
class KIVO_XML_SAX_PARSER {
public:
    KIVO_XML_SAX_PARSER();
    KIVO_XML_SAX_PARSER(const KIVO_XML_SAX_PARSER&) = delete;
    KIVO_XML_SAX_PARSER& operator=(const KIVO_XML_SAX_PARSER&) = delete;
    ~KIVO_XML_SAX_PARSER();

    // Reads the whole source and parses it. False when that fails, with at least one message; a
    // document without any element parses well. Messages may come with success too.
    bool parse(KIVO_XML_SAX_INPUT_SOURCE& source);
    // After it: whether the source could be read.
    bool has_text() const { return has_text_; }

    // The document's root, null when it has none or the parse failed.
    KIVO_XML_ELEMENT* root_element() { return root_; }

    // Before parse(), for a document that is walked once: a large one shrinks as it is walked, so
    // that there is no second one, and what parse() would look for in every element is looked for
    // along the way and told by end_walk().
    void walk_once() { walks_once_ = true; }
    void end_walk();

    KIVO_XML_SAX_ERROR_HANDLER& error_handler() { return errors_; }

    // Where the lines of the document begin.
    LineTable take_line_table() { return std::move(lines_); }

private:
    struct Tree;

    bool parse_text(std::uint32_t file_number);
    void report(const XmlFinding& finding);

    std::unique_ptr<Tree> tree_;
    std::string source_name_;
    bool has_text_ = false;
    bool walks_once_ = false;
    KIVO_XML_ELEMENT* root_ = nullptr;
    KIVO_XML_SAX_ERROR_HANDLER errors_;
    LineTable lines_;
};
