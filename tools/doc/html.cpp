#include "tools/doc/html.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "tools/text/xml_escape.h"

namespace {

// Elements between whose tags a line break would show as a blank.
constexpr std::array<std::string_view, 7> kInline = {"a",    "code",   "small", "span",
                                                     "text", "strong", "tspan"};

bool is_inline(std::string_view tag) {
    return std::find(kInline.begin(), kInline.end(), tag) != kInline.end();
}

}  // namespace

std::string escape_html(std::string_view text) {
    constexpr std::string_view kWhiteSpace = "\t\n\r";
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(kWhiteSpace), text.size());
        out += escape_xml(text.substr(0, end));
        text.remove_prefix(end);
        const std::size_t next = std::min(text.find_first_not_of(kWhiteSpace), text.size());
        // A page shows any run of white space as one blank.
        out.append(next > 0 ? 1 : 0, ' ');
        text.remove_prefix(next);
    }
    return out;
}

void HtmlWriter::start_tag(std::string_view tag, HtmlAttributes attributes) {
    out_ += '<';
    out_ += tag;
    for (const HtmlAttribute& attribute : attributes) {
        out_ += ' ';
        out_ += attribute.name;
        out_ += "=\"";
        out_ += escape_html(attribute.value);
        out_ += '"';
    }
}

void HtmlWriter::open(std::string_view tag, HtmlAttributes attributes) {
    start_tag(tag, attributes);
    out_ += '>';
    open_.emplace_back(tag);
}

void HtmlWriter::close() {
    assert(!open_.empty());
    out_ += "</";
    out_ += open_.back();
    out_ += is_inline(open_.back()) ? ">" : ">\n";
    open_.pop_back();
}

void HtmlWriter::element(std::string_view tag, HtmlAttributes attributes, std::string_view text) {
    const HtmlScope scope(*this, tag, attributes);
    this->text(text);
}

void HtmlWriter::element(std::string_view tag, std::string_view text) {
    element(tag, {}, text);
}

void HtmlWriter::void_element(std::string_view tag, HtmlAttributes attributes) {
    start_tag(tag, attributes);
    out_ += "/>\n";
}

void HtmlWriter::text(std::string_view text) {
    out_ += escape_html(text);
}

const std::string& HtmlWriter::result() const {
    assert(open_.empty());
    return out_;
}
