#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// A name that is ours, and a value that may hold anything.
struct HtmlAttribute {
    std::string_view name;
    std::string_view value;
};

using HtmlAttributes = std::initializer_list<HtmlAttribute>;

// The text as element content or attribute value: markup stands for itself, and what cannot stand
// in a page (control characters, bytes that are not UTF-8) is shown as an escape ("\x1B").
std::string escape_html(std::string_view text);

// Writes markup that is HTML and well-formed XML at once. All text is escaped.
class HtmlWriter {
public:
    void open(std::string_view tag, HtmlAttributes attributes = {});
    // Closes the element opened last.
    // REQUIRES: an element is open
    void close();
    // An element that holds text alone.
    void element(std::string_view tag, HtmlAttributes attributes, std::string_view text);
    void element(std::string_view tag, std::string_view text);
    // An element that HTML or SVG define without content.
    void void_element(std::string_view tag, HtmlAttributes attributes);
    void text(std::string_view text);
    // Markup that is complete and escaped already.
    void markup(std::string_view markup) { out_ += markup; }

    bool empty() const { return out_.empty(); }
    std::size_t size() const { return out_.size(); }
    // What was written.
    // REQUIRES: no element is open
    const std::string& result() const;

private:
    void start_tag(std::string_view tag, HtmlAttributes attributes);

    std::string out_;
    std::vector<std::string> open_;
};

// An element that is open as long as this object lives.
class HtmlScope {
public:
    HtmlScope(HtmlWriter& html, std::string_view tag, HtmlAttributes attributes = {})
        : html_(html) {
        html_.open(tag, attributes);
    }
    HtmlScope(const HtmlScope&) = delete;
    HtmlScope& operator=(const HtmlScope&) = delete;
    ~HtmlScope() { html_.close(); }

private:
    HtmlWriter& html_;
};
