#include "tools/description/document.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <iterator>
#include <pugixml.hpp>
#include <set>
#include <utility>

#include "kivo/session/internal/near_word.h"
#include "tools/text/text_steps.h"
#include "tools/text/xml_escape.h"

namespace {

// As the library parses, but that all white space is kept: which of it counts is seen in the end.
constexpr unsigned kParseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                 pugi::parse_wconv_attribute | pugi::parse_fragment |
                                 pugi::parse_ws_pcdata;

// Calls "visit" with every element from the root on, in the order of the file.
template <class Visit>
void for_each_element(pugi::xml_node root, Visit visit) {
    for (pugi::xml_node node = root; node;) {
        if (node.type() == pugi::node_element) {
            visit(node);
        }
        if (node.first_child()) {
            node = node.first_child();
            continue;
        }
        while (node != root && !node.next_sibling()) {
            node = node.parent();
        }
        node = node == root ? pugi::xml_node() : node.next_sibling();
    }
}

int digit_value(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

struct Step {
    std::size_t source;
    std::size_t decoded;
};

constexpr Step kOneByte = {1, 1};

std::size_t length_as_utf8(std::uint32_t code) {
    return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

// "rest" begins with "&#".
Step character_reference(std::string_view rest) {
    const bool is_hexadecimal = rest.substr(2, 1) == "x";
    const int base = is_hexadecimal ? 16 : 10;
    const std::size_t first = is_hexadecimal ? 3 : 2;
    std::uint32_t code = 0;
    std::size_t at = first;
    for (; at < rest.size() && digit_value(rest[at]) < base; ++at) {
        code = code * static_cast<std::uint32_t>(base) +
               static_cast<std::uint32_t>(digit_value(rest[at]));
    }
    const bool is_closed = at > first && at < rest.size() && rest[at] == ';';
    return is_closed ? Step{at + 1, length_as_utf8(code)} : kOneByte;
}

// What the parser makes the next piece of the text of. It leaves what is no reference as it is.
Step next_step(std::string_view rest, TextRun::Kind kind) {
    if (rest.front() == '\r') {
        return {rest.substr(1, 1) == "\n" ? std::size_t{2} : std::size_t{1}, 1};
    }
    if (rest.front() != '&' || kind == TextRun::Kind::kCdata) {
        return kOneByte;
    }
    if (rest.substr(1, 1) == "#") {
        return character_reference(rest);
    }
    for (const XmlEntity& entity : kXmlEntities) {
        if (rest.substr(0, entity.reference.size()) == entity.reference) {
            return {entity.reference.size(), 1};
        }
    }
    return kOneByte;
}

}  // namespace

const DocumentAttribute* DocumentElement::attribute(std::string_view name) const {
    const DocumentAttribute* first = nullptr;
    const DocumentAttribute* last = nullptr;
    for (std::size_t index = 0; index < attribute_count; ++index) {
        if (equals_but_for_case(attributes[index].name, name)) {
            last = &attributes[index];
            first = first == nullptr ? last : first;
        }
    }
    return first != nullptr && first->name == name ? last : nullptr;
}

std::string_view DocumentElement::value_of(std::string_view name) const {
    const DocumentAttribute* const found = attribute(name);
    return found == nullptr ? std::string_view() : found->value.text;
}

// Turns the parser's tree into the document's. The vectors do not grow beyond what was counted, so
// that pointers into them stay valid.
class Document::Builder {
public:
    Builder(Document& document, pugi::xml_node root) : document_(document), root_(root) {}

    void build() {
        reserve();
        for_each_element(root_, [this](pugi::xml_node node) { add_element(node); });
        link();
    }

private:
    void reserve() {
        std::size_t elements = 0;
        std::size_t attributes = 0;
        std::size_t runs = 0;
        for_each_element(root_, [&](pugi::xml_node node) {
            ++elements;
            const auto all = node.attributes();
            attributes += static_cast<std::size_t>(std::distance(all.begin(), all.end()));
            for (const pugi::xml_node child : node.children()) {
                runs += child.type() == pugi::node_element ? 0 : 1;
            }
        });
        document_.elements_.reserve(elements);
        document_.attributes_.reserve(attributes);
        document_.runs_.reserve(runs + attributes);
    }

    std::size_t offset_of(const char* parsed) const {
        return static_cast<std::size_t>(parsed - document_.buffer_.data());
    }

    void add_element(pugi::xml_node node) {
        while (!open_.empty() && open_.back().node != node.parent()) {
            open_.pop_back();
        }
        DocumentElement& element = document_.elements_.emplace_back();
        element.tag = node.name();
        element.offset = offset_of(node.name()) - 1;
        element.parent = open_.empty() ? nullptr : open_.back().element;
        add_attributes(node, element);
        element.owner_name = element.attribute("NAME");
        if (element.owner_name == nullptr && element.parent != nullptr) {
            element.owner_name = element.parent->owner_name;
        }
        add_text(node, element);
        open_.push_back({node, &element});
    }

    void add_attributes(pugi::xml_node node, DocumentElement& element) {
        element.attributes = document_.attributes_.data() + document_.attributes_.size();
        for (const pugi::xml_attribute parsed : node.attributes()) {
            const std::string_view value = parsed.value();
            document_.runs_.push_back({value, offset_of(parsed.value()), TextRun::Kind::kValue});
            document_.attributes_.push_back(
                {parsed.name(), offset_of(parsed.name()), {value, &document_.runs_.back(), 1}});
            ++element.attribute_count;
        }
    }

    void add_text(pugi::xml_node node, DocumentElement& element) {
        const bool has_sub_elements = std::any_of(
            node.begin(), node.end(),
            [](const pugi::xml_node& child) { return child.type() == pugi::node_element; });
        DocumentText& text = element.text;
        text.runs = document_.runs_.data() + document_.runs_.size();
        for (const pugi::xml_node child : node.children()) {
            const bool is_text = child.type() != pugi::node_element && *child.value() != '\0';
            if (is_text && !(has_sub_elements && is_blank(child.value()))) {
                const auto kind =
                    child.type() == pugi::node_cdata ? TextRun::Kind::kCdata : TextRun::Kind::kText;
                document_.runs_.push_back({child.value(), offset_of(child.value()), kind});
                ++text.run_count;
            }
        }
        if (text.run_count == 1) {
            text.text = text.runs->text;
        } else if (text.run_count > 1) {
            std::string& joined = document_.joined_texts_.emplace_back();
            std::for_each(text.runs, text.runs + text.run_count,
                          [&joined](const TextRun& run) { joined += run.text; });
            text.text = joined;
        }
    }

    // From the last one, so that what is linked in front of others comes before them in the file.
    void link() {
        std::vector<DocumentElement>& elements = document_.elements_;
        for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
            if (element->parent != nullptr) {
                DocumentElement& parent =
                    elements[static_cast<std::size_t>(element->parent - elements.data())];
                element->next = parent.first_sub;
                parent.first_sub = &*element;
            }
        }
    }

    struct Open {
        pugi::xml_node node;
        const DocumentElement* element;
    };

    Document& document_;
    pugi::xml_node root_;
    std::vector<Open> open_;
};

Document::Document(const SourceText& source, std::string name)
    : source_(source), name_(std::move(name)) {
    const std::string_view text = source.text();
    buffer_.reserve(text.size() + 1);
    buffer_.assign(text.begin(), text.end());
    // The parser puts a NUL in place of the last byte.
    buffer_.push_back('\0');
    pugi::xml_document tree;
    if (tree.load_buffer_inplace(buffer_.data(), buffer_.size(), kParseFlags,
                                 pugi::encoding_utf8)) {
        Builder(*this, tree.document_element()).build();
    }
}

std::size_t Document::source_offset_in(const TextRun& run, std::size_t at) const {
    if (last_walk_.run != &run || last_walk_.decoded > at) {
        last_walk_ = {&run, 0, run.offset};
    }
    while (last_walk_.decoded < at) {
        const Step step = next_step(source_.text().substr(last_walk_.source), run.kind);
        if (last_walk_.decoded + step.decoded > at) {  // within a character
            break;
        }
        last_walk_.source += step.source;
        last_walk_.decoded += step.decoded;
    }
    return last_walk_.source;
}

std::size_t Document::source_offset(const DocumentText& text, std::size_t at) const {
    for (std::size_t index = 0; index < text.run_count; ++index) {
        const TextRun& run = text.runs[index];
        // What stands between two runs belongs to neither: the end is that of the last run.
        if (at < run.text.size() || index + 1 == text.run_count) {
            return source_offset_in(run, std::min(at, run.text.size()));
        }
        at -= run.text.size();
    }
    return 0;
}

Place Document::place(const DocumentElement& element) const {
    return source_.place(name_, element.offset);
}

Place Document::place(const DocumentAttribute& attribute) const {
    return source_.place(name_, attribute.name_offset,
                         attribute.name_offset + attribute.name.size());
}

Place Document::place(const DocumentText& text, std::size_t begin, std::size_t end) const {
    assert(text.run_count > 0);
    const TextRun* run = text.runs;
    for (; run + 1 < text.runs + text.run_count && begin >= run->text.size(); ++run) {
        begin -= run->text.size();
        end -= run->text.size();
    }
    const std::string_view part = run->text.substr(begin, end - begin);
    const std::size_t offset = source_offset_in(*run, begin);
    const Walk to_begin = last_walk_;
    const std::size_t last = source_offset_in(*run, begin + std::min(part.find('\n'), part.size()));
    last_walk_ = to_begin;  // the next place may lie within this one
    const std::string_view shown = source_.text().substr(offset, last - offset);
    return source_.place(name_, offset,
                         offset + std::min(shown.find_first_of("\r\n"), shown.size()));
}

Place Document::place(const DocumentText& text) const {
    const std::size_t begin = text.text.find_first_not_of(kBlanks);
    return begin == std::string_view::npos
               ? place(text, 0, text.text.size())
               : place(text, begin, text.text.find_last_not_of(kBlanks) + 1);
}

std::deque<Document> documents_of(const Description& description, Sources& sources) {
    const KIVO_INFO& info = description.info();
    std::set<std::string> passed;
    for (std::size_t index = 0; index < info.error_list.size(); ++index) {
        const std::string id = info.get_error_id(index);
        if (id == "invalid-file" || id == "file-not-read") {
            passed.insert(info.get_error_place(index).file);
        }
    }
    std::deque<Document> documents;
    for (const std::string& path : files_of(info)) {
        if (passed.count(path) == 0) {
            documents.emplace_back(sources.at(path),
                                   path == description.path() ? description.name() : path);
        }
    }
    return documents;
}
