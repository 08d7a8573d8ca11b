#include "kivo/session/internal/search/domain.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "kivo/session/internal/engine/engine.h"

namespace kivo_session {

namespace {

constexpr std::size_t kMostMentioned = 64;

class DomainMaker {
public:
    DomainMaker(Engine& engine, std::uint32_t object, const Cone& above, Bounds bounds)
        : engine_(engine),
          model_(engine.model()),
          description_(*model_.description),
          object_(description_.objects[object]),
          above_(above),
          bounds_(bounds) {
        domain_.object = object;
    }

    Domain run() {
        if (is_port(object_.kind)) {
            add_states();
        } else if (object_.has_list) {
            add_items();
        } else if (object_.kind == ObjectKind::kInteger) {
            find_numbers();
        } else {
            add_mentioned();
        }
        return std::move(domain_);
    }

private:
    void add_value(std::string text, Span span) {
        const bool is_known =
            std::find(domain_.values.begin(), domain_.values.end(), text) != domain_.values.end();
        if (!is_known) {
            domain_.values.push_back(std::move(text));
            domain_.spans.push_back(std::move(span));
            domain_.greatest = static_cast<Whole>(domain_.values.size()) - 1;
        }
    }

    void find_current(const std::string& text) {
        const auto found = std::find(domain_.values.begin(), domain_.values.end(), text);
        domain_.current =
            found == domain_.values.end() ? -1 : static_cast<Whole>(found - domain_.values.begin());
    }

    void add_states() {
        for (std::uint8_t number = 0; number < 4; ++number) {
            const auto state = static_cast<PortState>(number);
            if (state != PortState::kConstant || object_.kind != ObjectKind::kOutput) {
                add_value(word_of(state), Span::whole(number, number));
            }
        }
        const Value asked = engine_.asked(domain_.object);
        const Given* given = engine_.given(domain_.object);
        find_current(given != nullptr     ? given->text
                     : asked.is_unknown() ? ""
                                          : word_of(static_cast<PortState>(asked.low)));
    }

    void add_items() {
        for (std::uint32_t i = object_.items.begin; i < object_.items.end; ++i) {
            const Value item = engine_.evaluate_text(description_.items[i]);
            if (!item.is_unknown()) {
                const std::string text = engine_.text_of(item);
                const bool is_text = object_.kind == ObjectKind::kString;
                const Value typed =
                    is_text ? Value::text(engine_.mutable_words().intern(text)) : item;
                add_value(text, Span::of(typed, engine_.reasons()));
            }
        }
        find_current(engine_.text_of(engine_.asked(domain_.object)));
    }

    // A setting without a list: the texts that stand beside its name, and any other.
    void add_mentioned() {
        add_text(engine_.text_of(engine_.asked(domain_.object)));
        for (std::uint32_t text = 0; text < model_.texts.size(); ++text) {
            const CompiledText& compiled = model_.texts[text];
            add_mentioned_in(compiled.program);
            if (compiled.implication != kNone) {
                add_mentioned_in(model_.implications[compiled.implication].consequence);
                add_mentioned_in(model_.implications[compiled.implication].alternative);
            }
        }
        std::string other = "?";
        while (is_value(other)) {
            other += "?";
        }
        add_text(other);
        domain_.has_other = true;
        find_current(engine_.text_of(engine_.asked(domain_.object)));
    }

    bool is_value(const std::string& text) const {
        return std::find(domain_.values.begin(), domain_.values.end(), text) !=
               domain_.values.end();
    }

    void add_text(const std::string& text) {
        const std::optional<Whole> whole = whole_from_text(text);
        const bool is_number = object_.kind == ObjectKind::kHidden && whole.has_value();
        add_value(text, is_number ? Span::whole(*whole, *whole)
                                  : Span::text(engine_.mutable_words().intern(text)));
    }

    void add_mentioned_in(const Program& program) {
        const auto begin = model_.code.instructions.begin() + program.begin;
        const auto end = model_.code.instructions.begin() + program.end;
        const bool is_named = std::any_of(begin, end, [this](const Instruction& each) {
            return each.action == Action::kValue && each.index == domain_.object;
        });
        for (auto each = begin; is_named && each != end; ++each) {
            if (each->action != Action::kConstant || each->index >= model_.code.constants.size() ||
                domain_.values.size() >= kMostMentioned) {
                continue;
            }
            const Value constant = model_.code.constants[each->index];
            const bool is_fit =
                constant.is_text() || (constant.is_whole() && object_.kind == ObjectKind::kHidden);
            if (is_fit) {
                add_text(engine_.text_of(constant));
            }
        }
    }

    void find_numbers() {
        domain_.is_numbers = true;
        const Value asked = engine_.asked(domain_.object);
        std::optional<Whole> least;
        std::optional<Whole> greatest;
        for (std::uint32_t i = object_.elements.begin; i < object_.elements.end; ++i) {
            const Element& element = description_.elements[i];
            if (element.kind != ElementKind::kRange || !engine_.is_in_force(element) ||
                !is_always(element.condition)) {
                continue;
            }
            const std::optional<Whole> above = fixed(element.first);
            const std::optional<Whole> below = fixed(element.second);
            const bool is_open =
                (element.first != kNone && !above) || (element.second != kNone && !below);
            if (is_open && bounds_ == Bounds::kRanges) {
                continue;
            }
            if (above) {
                greatest = greatest ? std::min(*greatest, *above) : *above;
            }
            if (below) {
                least = least ? std::max(*least, *below) : *below;
            }
        }
        const Whole near = asked.is_whole() ? asked.as_whole() : Whole(0);
        const bool is_wide = bounds_ == Bounds::kRanges;
        const Whole reach = is_wide ? kGreatestWhole / 4 : std::numeric_limits<std::int32_t>::max();
        domain_.least = least.value_or(std::min<Whole>(near, -reach - 1));
        domain_.greatest = greatest.value_or(std::max<Whole>(near, reach));
        // Half of all numbers is room enough, and differences stay in range.
        domain_.least = std::max(domain_.least, kLeastWhole / 4);
        domain_.greatest = std::min(domain_.greatest, kGreatestWhole / 4);
        domain_.current = std::clamp(near, kLeastWhole / 2, kGreatestWhole / 2);
    }

    bool is_always(std::uint32_t condition) {
        return condition == kNone ||
               (is_fixed(condition) && engine_.evaluate_text(condition).is_true());
    }

    std::optional<Whole> fixed(std::uint32_t text) {
        if (text == kNone || !is_fixed(text)) {
            return std::nullopt;
        }
        const Value value = engine_.evaluate_text(text);
        return value.is_whole() ? std::optional(value.as_whole()) : std::nullopt;
    }

    // Whether nothing that a text names can change.
    bool is_fixed(std::uint32_t text) const {
        if (model_.is_spoiled(text) || model_.texts[text].implication != kNone) {
            return false;
        }
        const Program& program = model_.texts[text].program;
        return std::none_of(model_.code.instructions.begin() + program.begin,
                            model_.code.instructions.begin() + program.end,
                            [this](const Instruction& each) {
                                switch (each.action) {
                                    case Action::kPort:
                                        return above_.has_node(each.index) ||
                                               above_.has_node(model_.constant_node(each.index));
                                    case Action::kValue:
                                    case Action::kMacro:
                                    case Action::kCall:
                                        return above_.has_node(each.index);
                                    case Action::kConstant:
                                    case Action::kArgument:
                                    case Action::kFunction:
                                    case Action::kOperator:
                                        break;
                                }
                                return false;
                            });
    }

    Engine& engine_;
    const Model& model_;
    const Description& description_;
    const Object& object_;
    const Cone& above_;
    const Bounds bounds_;
    Domain domain_;
};

}  // namespace

std::string Domain::text(Whole number) const {
    return is_numbers ? to_text(number) : values[static_cast<std::size_t>(number)];
}

Span Domain::span(Whole first, Whole last) const {
    if (is_numbers) {
        return Span::whole(first, last);
    }
    Span span;
    for (Whole i = first; i <= last; ++i) {
        span.add(has_other && i == greatest ? Span::any_text()
                                            : spans[static_cast<std::size_t>(i)]);
    }
    return span;
}

Domain domain_of(Engine& engine, std::uint32_t object, const Cone& above, Bounds bounds) {
    return DomainMaker(engine, object, above, bounds).run();
}

}  // namespace kivo_session
