#include "tools/lint/expressions_source.h"

#include <algorithm>

#include "tools/lint/slots.h"
#include "tools/text/text_steps.h"

namespace {

// How the library composes the condition of a value rule.
struct ComposedPart {
    std::string_view before;
    std::string_view word;
};

constexpr ComposedPart kComposed[] = {
    {"( ( ", "IF"},
    {") and ( ", "THEN"},
    {" ) ) || ( !( ", "IF"},
    {" ) and ( ", "ELSE"},
};

// Where a text stands in one that holds it: alone, or as an item of a list.
std::optional<std::size_t> position_in(std::string_view whole, std::string_view text) {
    if (whole == text) {
        return 0;
    }
    for (std::size_t begin = 0; begin <= whole.size();) {
        const std::size_t end = std::min(whole.find(';', begin), whole.size());
        const std::string_view item = whole.substr(begin, end - begin);
        if (trimmed(item) == trimmed(text)) {
            return static_cast<std::size_t>(trimmed(item).data() - whole.data());
        }
        begin = end + 1;
    }
    return std::nullopt;
}

std::optional<TextInSource> in_text(const Spot& spot, const DocumentText& text,
                                    std::string_view source) {
    const auto position = position_in(text.text, source);
    return position && text.run_count > 0
               ? std::optional(TextInSource{&spot.document, &spot.element, &text, *position})
               : std::nullopt;
}

std::optional<TextInSource> in_attributes(const Spot& spot, const KIVO_FAULT& fault) {
    // A default value is that of VALUE when both are there.
    const bool is_value = fault.attribute == "VALUE" || fault.attribute == "DEFAULT_VALUE";
    for (const std::string_view name :
         {is_value ? std::string_view("VALUE") : std::string_view(fault.attribute),
          is_value ? std::string_view("DEFAULT_VALUE") : std::string_view()}) {
        const DocumentAttribute* const attribute = spot.element.attribute(name);
        const auto found =
            attribute == nullptr ? std::nullopt : in_text(spot, attribute->value, fault.source);
        if (found) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<TextInSource> in_givers(const Spot& spot, const Slot& slot, std::string_view source) {
    const std::vector<Giver> givers = givers_of(spot, slot);
    for (auto giver = givers.rbegin(); giver != givers.rend(); ++giver) {
        const DocumentText& text =
            giver->attribute != nullptr ? giver->attribute->value : giver->element->text;
        if (text.text == source && text.run_count > 0) {
            return TextInSource{&spot.document, &spot.element, &text, 0};
        }
    }
    return std::nullopt;
}

}  // namespace

Place TextInSource::place(std::size_t offset, std::size_t length) const {
    if (text == nullptr) {
        return document->place(*element);
    }
    const std::size_t at = std::min(begin + offset, text->text.size());
    return document->place(*text, at, std::min(at + length, text->text.size()));
}

ExpressionSource::ExpressionSource(const Lint& lint) : lint_(lint) {
    std::unordered_map<const DocumentElement*, const DocumentElement*> last_condition;
    lint.for_each([&](const Spot& spot) {
        spots_[spot.document.name()].push_back(spot);
        const DocumentElement* const parent = spot.element.parent;
        if (spot.context == Context::kCondition) {
            last_condition[parent] = &spot.element;
        } else if (spot.context == Context::kStimulus) {
            const bool is_in_group = parent->tag == "THEN" || parent->tag == "ELSE";
            conditions_[&spot.element] = last_condition[is_in_group ? parent->parent : parent];
        }
        if (spot.context == Context::kParameter || spot.context == Context::kPort ||
            spot.context == Context::kHiddenParameter || spot.context == Context::kMacro) {
            declarations_[spot.element.value_of("NAME")].push_back(spot);
        }
    });
}

const Spot* ExpressionSource::spot_at(const KIVO_MARK& mark) const {
    const std::string path = lint_.info().get_place(mark).file;
    const auto file =
        spots_.find(path == lint_.description().path() ? lint_.description().name() : path);
    if (file == spots_.end()) {
        return nullptr;
    }
    const auto spot = std::lower_bound(
        file->second.begin(), file->second.end(), mark.offset,
        [](const Spot& each, std::uint32_t offset) { return each.element.offset < offset; });
    return spot == file->second.end() || spot->element.offset != mark.offset ? nullptr : &*spot;
}

// An object's texts may stand in any element that names it: the last one counts.
std::optional<TextInSource> ExpressionSource::find_declared(const KIVO_FAULT& fault,
                                                            const Spot& marked) const {
    if (const auto found = find_in(marked, fault)) {
        return found;
    }
    const auto named = declarations_.find(fault.object);
    if (named != declarations_.end()) {
        for (auto spot = named->second.rbegin(); spot != named->second.rend(); ++spot) {
            if (const auto found = find_in(*spot, fault)) {
                return found;
            }
        }
    }
    return std::nullopt;
}

std::optional<TextInSource> ExpressionSource::find_in(const Spot& spot,
                                                      const KIVO_FAULT& fault) const {
    if (spot.context == Context::kMacro) {
        for (const DocumentElement& sub : spot.element.sub_elements()) {
            if (sub.tag == "DEFINITION" && sub.text.text == fault.source) {
                return in_text(spot, sub.text, fault.source);
            }
        }
    }
    if (const auto found = in_attributes(spot, fault)) {
        return found;
    }
    if (!slots_of(spot.context).empty()) {
        const std::string_view word =
            fault.attribute.empty() ? std::string_view("IF") : std::string_view(fault.attribute);
        if (const auto found = in_givers(spot, slot_of(spot.context, word), fault.source)) {
            return found;
        }
    }
    if (spot.context == Context::kStimulus) {
        const auto known = conditions_.find(&spot.element);
        const DocumentElement* const condition =
            known == conditions_.end() ? nullptr : known->second;
        return condition != nullptr && condition->text.text == fault.source
                   ? std::optional(TextInSource{&spot.document, condition, &condition->text, 0})
                   : std::nullopt;
    }
    if (spot.context == Context::kWizardCondition && spot.element.text.text.empty()) {
        const DocumentAttribute* const condition = spot.element.attribute("CONDITION");
        return condition == nullptr ? std::nullopt : in_text(spot, condition->value, fault.source);
    }
    return spot.element.text.text == fault.source ? in_text(spot, spot.element.text, fault.source)
                                                  : std::nullopt;
}

std::optional<TextInSource> ExpressionSource::find(const KIVO_FAULT& fault) const {
    const Spot* const marked = spot_at(fault.mark);
    if (marked == nullptr) {
        return std::nullopt;
    }
    const bool is_of_object =
        fault.element == "PARAMETER" || fault.element == "PORT" || fault.element == "MACRO";
    const auto found = is_of_object ? find_declared(fault, *marked) : find_in(*marked, fault);
    return found ? found : TextInSource{&marked->document, &marked->element, nullptr, 0};
}

std::vector<ExpressionSource::Part> ExpressionSource::parts_of(const KIVO_FAULT& fault) const {
    const Spot* const rule = spot_at(fault.mark);
    if (rule == nullptr || rule->context != Context::kValueRule ||
        rule->element.text.text == fault.source) {
        return {};
    }
    std::vector<Part> parts;
    std::size_t begin = 0;
    for (const ComposedPart& part : kComposed) {
        const std::string_view said = text_in(*rule, part.word);
        begin += part.before.size();
        const auto where = in_givers(*rule, slot_of(rule->context, part.word), said);
        if (!where || std::string_view(fault.source)
                              .substr(std::min(begin, fault.source.size()), said.size()) != said) {
            break;
        }
        parts.push_back({*where, begin, said.size()});
        begin += said.size();
    }
    return parts;
}
