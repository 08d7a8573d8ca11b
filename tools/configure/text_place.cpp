#include "tools/configure/text_place.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/description/start_tag.h"
#include "tools/findings/library_findings.h"
#include "tools/text/text_steps.h"
#include "tools/text/xml_escape.h"

namespace {

// Of one element, so that a place never costs a walk over a whole file.
constexpr std::size_t kMostSearched = 65536;

// A text as it is read, with the offset in the raw text of each of its bytes.
struct ReadText {
    std::string text;
    std::vector<std::size_t> offsets;

    void add(char letter, std::size_t offset) {
        text += letter;
        offsets.push_back(offset);
    }
};

// Numbers for characters stay as they are: a text with one is not found.
ReadText read(std::string_view raw, bool is_attribute) {
    ReadText result;
    for (std::size_t at = 0; at < raw.size();) {
        const auto* const entity = std::find_if(
            std::begin(kXmlEntities), std::end(kXmlEntities), [&](const XmlEntity& each) {
                return raw.compare(at, each.reference.size(), each.reference) == 0;
            });
        if (entity != std::end(kXmlEntities)) {
            result.add(entity->character, at);
            at += entity->reference.size();
            continue;
        }
        const bool is_line_end = raw[at] == '\r' || raw[at] == '\n';
        const bool is_blank = is_line_end || raw[at] == '\t';
        result.add(is_blank && is_attribute ? ' ' : is_line_end ? '\n' : raw[at], at);
        at += raw.compare(at, 2, "\r\n") == 0 ? 2 : 1;
    }
    return result;
}

// The offset of a byte of the wanted text in a raw text that holds it alone.
std::optional<std::size_t> offset_in(std::string_view raw, bool is_attribute,
                                     const KIVO_FAULT& fault) {
    const ReadText found = read(raw, is_attribute);
    const std::string_view wanted = trimmed(fault.source);
    if (wanted.empty() || trimmed(found.text) != wanted) {
        return std::nullopt;
    }
    const auto skipped = static_cast<std::size_t>(wanted.data() - fault.source.data());
    const auto begin = static_cast<std::size_t>(trimmed(found.text).data() - found.text.data());
    const std::size_t byte = std::max<std::size_t>(fault.offset, skipped) - skipped + begin;
    return byte < found.offsets.size() ? found.offsets[byte] : raw.size();
}

// The offset in an element that begins "element".
std::optional<std::size_t> offset_in_element(std::string_view element, const KIVO_FAULT& fault) {
    std::optional<std::size_t> found;
    StartTag tag(element);
    for (Attribute attribute; tag.next(attribute);) {
        const auto offset = offset_in(attribute.value, true, fault);
        if (offset && (!found || attribute.name == fault.attribute)) {
            found = static_cast<std::size_t>(attribute.value.data() - element.data()) + *offset;
        }
    }
    // The texts between tags.
    const std::string end = "</" + std::string(tag.name()) + ">";
    std::size_t at = static_cast<std::size_t>(tag.rest().data() - element.data());
    while (!found && (at = element.find('>', at)) != std::string_view::npos) {
        const std::size_t next = std::min(element.find('<', ++at), element.size());
        if (const auto offset = offset_in(element.substr(at, next - at), false, fault)) {
            found = at + *offset;
        }
        if (element.compare(next, end.size(), end) == 0) {
            break;
        }
    }
    return found;
}

}  // namespace

Place place_in_text(const Description& description, const KIVO_PLACE& told, const KIVO_FAULT& fault,
                    Sources& sources) {
    Place place = place_of(description, told, sources);
    const SourceText& source = sources.at(told.file);
    const auto begin = source.offset(told.line, told.column);
    if (!place.start || !begin) {
        return place;
    }
    const auto offset = offset_in_element(source.text().substr(*begin, kMostSearched), fault);
    return offset ? source.place(place.file, *begin + *offset) : place;
}
