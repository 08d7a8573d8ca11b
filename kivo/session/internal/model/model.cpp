#include "kivo/session/internal/model/model.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "kivo/session/internal/model/builder.h"
#include "kivo/session/internal/near_word.h"

namespace kivo_session {

namespace {

std::size_t most_edits(std::string_view word) {
    return word.size() < 4 ? 1 : 2;
}

}  // namespace

Model::Model(std::unique_ptr<const Description> source) : description(std::move(source)) {
    assert(description != nullptr);
    numbers_.reserve(description->objects.size());
    for (std::uint32_t i = 0; i < description->objects.size(); ++i) {
        numbers_.emplace(description->objects[i].name, i);
    }
    ModelBuilder(*this).run();
}

std::uint32_t Model::find(std::string_view name) const {
    const auto found = numbers_.find(name);
    return found == numbers_.end() ? kNone : found->second;
}

bool Model::is_setting(std::uint32_t index) const {
    const Object& object = description->objects[index];
    if (is_port(object.kind)) {
        return object.kind != ObjectKind::kBuried && !object.is_always_used;
    }
    return object.kind == ObjectKind::kInteger || object.kind == ObjectKind::kString;
}

Meaning Model::look_up(std::string_view name) const {
    const std::uint32_t found = find(name);
    if (found == kNone) {
        return {};
    }
    const ObjectKind kind = description->objects[found].kind;
    return {is_port(kind)        ? MeaningKind::kPort
            : is_parameter(kind) ? MeaningKind::kParameter
                                 : MeaningKind::kMacro,
            found};
}

bool Model::list_holds(std::uint32_t parameter, std::string_view word) const {
    const Object& object = description->objects[parameter];
    if (object.kind != ObjectKind::kString) {
        return false;
    }
    const auto first = description->items.begin();
    return std::any_of(first + object.items.begin, first + object.items.end,
                       [&](std::uint32_t item) { return description->texts[item].text == word; });
}

std::size_t Model::argument_count(std::uint32_t macro) const {
    return macro_arguments[macro].size();
}

std::string Model::nearest(std::string_view name, NearSearches& searches) const {
    if (!searches.take(name)) {
        return {};
    }
    std::vector<std::string_view> known;
    known.reserve(description->objects.size());
    for (const Object& object : description->objects) {
        known.push_back(object.name);
    }
    return std::string(nearest_word(name, known, most_edits(name)));
}

std::string Model::nearest_in_list(std::uint32_t parameter, std::string_view word,
                                   NearSearches& searches) const {
    if (!searches.take(word)) {
        return {};
    }
    std::vector<std::string_view> known;
    const Range items = description->objects[parameter].items;
    for (std::uint32_t i = items.begin; i < items.end; ++i) {
        known.push_back(description->texts[description->items[i]].text);
    }
    return std::string(nearest_word(word, known, most_edits(word)));
}

NameFacts Model::facts(Meaning meaning) const {
    NameFacts facts;
    if (meaning.kind != MeaningKind::kParameter) {
        return facts;
    }
    const Object& object = description->objects[meaning.index];
    facts.is_integer = object.kind == ObjectKind::kInteger;
    facts.is_text = object.kind == ObjectKind::kString;
    facts.has_list = object.has_list;
    const auto is_not_negative = [this](std::uint32_t text) {
        return text != kNone && is_canonical_decimal(description->texts[text].text) &&
               description->texts[text].text.front() != '-';
    };
    for (std::uint32_t i = object.elements.begin; i < object.elements.end; ++i) {
        const Element& element = description->elements[i];
        if (element.kind == ElementKind::kRange && element.condition == kNone &&
            element.map == kNone && is_not_negative(element.second)) {
            facts.may_be_negative = false;
        }
    }
    if (object.has_list) {
        const auto first = description->items.begin();
        facts.may_be_negative =
            !std::all_of(first + object.items.begin, first + object.items.end, is_not_negative);
    }
    return facts;
}

Names::Definition Model::definition(std::uint32_t macro) const {
    const bool is_expression = !macro_nodes[macro].empty();
    return {description->texts[description->objects[macro].default_text].text,
            is_expression ? &macro_nodes[macro] : nullptr, macro_arguments[macro]};
}

}  // namespace kivo_session
