#include "kivo/session/internal/sense/axis.h"

#include <algorithm>
#include <string>

namespace kivo_session {

namespace {

constexpr std::size_t kMostWords = 64;
constexpr std::size_t kMostNumbers = 16;

bool is_open_text(const Object& object) {
    return object.kind == ObjectKind::kString && !object.has_list;
}

class MentionFinder {
public:
    MentionFinder(const Model& model, Mentions& mentions) : model_(model), mentions_(mentions) {}

    void pass(const Program& program) {
        pass_texts(program);
        pass_numbers(program);
    }

private:
    void pass_numbers(const Program& program) {
        for (std::uint32_t at = program.begin; at < program.end; ++at) {
            const Instruction& each = model_.code.instructions[at];
            if (each.action == Action::kValue &&
                model_.description->objects[each.index].kind == ObjectKind::kInteger) {
                add_numbers(program, mentions_.numbers[each.index]);
            }
        }
    }

    void add_numbers(const Program& program, std::vector<Whole>& numbers) const {
        for (std::uint32_t at = program.begin; at < program.end; ++at) {
            const Instruction& each = model_.code.instructions[at];
            if (numbers.size() == kMostNumbers) {
                return;
            }
            if (each.action == Action::kConstant && model_.code.constants[each.index].is_whole()) {
                const Whole number = model_.code.constants[each.index].as_whole();
                if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) {
                    numbers.push_back(number);
                }
            }
        }
    }

    void pass_texts(const Program& program) {
        named_.clear();
        for (std::uint32_t at = program.begin; at < program.end; ++at) {
            const Instruction& each = model_.code.instructions[at];
            if (each.action == Action::kValue &&
                is_open_text(model_.description->objects[each.index])) {
                named_.push_back(each.index);
                if (!is_beside_literal(program, at)) {
                    mentions_.is_plain[each.index] = 0;
                }
            }
        }
        for (std::uint32_t at = program.begin; !named_.empty() && at < program.end; ++at) {
            if (is_literal(at)) {
                const Value literal = model_.code.constants[model_.code.instructions[at].index];
                add(literal.word());
            }
        }
    }

    bool is_literal(std::uint32_t at) const {
        const Instruction& each = model_.code.instructions[at];
        return each.action == Action::kConstant && model_.code.constants[each.index].is_text();
    }

    bool is_equality(const Program& program, std::uint32_t at) const {
        if (at >= program.end || model_.code.instructions[at].action != Action::kOperator) {
            return false;
        }
        const auto operation = static_cast<Operator>(model_.code.instructions[at].what);
        return operation == Operator::kEqual || operation == Operator::kUnlike;
    }

    bool is_beside_literal(const Program& program, std::uint32_t at) const {
        const bool is_left =
            at + 1 < program.end && is_literal(at + 1) && is_equality(program, at + 2);
        const bool is_right =
            at > program.begin && is_literal(at - 1) && is_equality(program, at + 1);
        return is_left || is_right;
    }

    void add(WordId word) {
        for (const std::uint32_t object : named_) {
            std::vector<WordId>& words = mentions_.words[object];
            if (words.size() < kMostWords &&
                std::find(words.begin(), words.end(), word) == words.end()) {
                words.push_back(word);
            }
        }
    }

    const Model& model_;
    Mentions& mentions_;
    std::vector<std::uint32_t> named_;
};

class AxisMaker {
public:
    AxisMaker(Engine& engine, std::uint32_t object, const Cone& above, const Mentions& mentions)
        : engine_(engine),
          model_(engine.model()),
          number_(object),
          object_(model_.description->objects[object]),
          above_(above),
          mentions_(mentions) {}

    Axis run() {
        if (is_open_text(object_)) {
            add_texts();
        } else {
            axis_.domain = domain_of(engine_, number_, above_, Bounds::kRanges);
            axis_.cuts = mentions_.numbers[number_];
            axis_.is_port = is_port(object_.kind);
            axis_.is_constant_open = axis_.is_port && object_.kind != ObjectKind::kOutput;
            axis_.is_wild = object_.has_list && !are_items_fixed();
        }
        return std::move(axis_);
    }

private:
    bool are_items_fixed() const {
        const auto first = model_.description->items.begin();
        return std::all_of(first + object_.items.begin, first + object_.items.end,
                           [this](std::uint32_t item) {
                               const Program& program = model_.texts[item].program;
                               return !model_.is_spoiled(item) &&
                                      std::none_of(model_.code.instructions.begin() + program.begin,
                                                   model_.code.instructions.begin() + program.end,
                                                   [](const Instruction& each) {
                                                       return each.action == Action::kValue ||
                                                              each.action == Action::kPort ||
                                                              each.action == Action::kMacro ||
                                                              each.action == Action::kCall;
                                                   });
                           });
    }

    void add_text(const std::string& text) {
        std::vector<std::string>& values = axis_.domain.values;
        if (std::find(values.begin(), values.end(), text) == values.end()) {
            values.push_back(text);
            axis_.domain.spans.push_back(Span::text(engine_.mutable_words().intern(text)));
        }
    }

    void add_texts() {
        Domain& domain = axis_.domain;
        const std::vector<WordId>& words = mentions_.words[number_];
        domain.object = number_;
        domain.least = domain.current = 0;
        domain.has_other = true;
        add_text(engine_.text_of(engine_.asked(number_)));
        for (const WordId word : words) {
            add_text(std::string(engine_.words().text(word)));
        }
        std::string other = "?";
        while (std::find(domain.values.begin(), domain.values.end(), other) !=
               domain.values.end()) {
            other += "?";
        }
        add_text(other);
        domain.greatest = static_cast<Whole>(domain.values.size()) - 1;
        axis_.is_other_exact = mentions_.is_plain[number_] != 0 && words.size() < kMostWords;
    }

    Engine& engine_;
    const Model& model_;
    const std::uint32_t number_;
    const Object& object_;
    const Cone& above_;
    const Mentions& mentions_;
    Axis axis_;
};

}  // namespace

Mentions::Mentions(const Model& model)
    : words(model.object_count()),
      numbers(model.object_count()),
      is_plain(model.object_count(), 1) {
    MentionFinder finder(model, *this);
    for (const CompiledText& text : model.texts) {
        finder.pass(text.program);
        if (text.implication != kNone) {
            finder.pass(model.implications[text.implication].consequence);
            finder.pass(model.implications[text.implication].alternative);
        }
    }
}

Span Axis::span(Whole first, Whole last) const {
    if (is_wild) {
        Span span = Span::any_text();
        span.add(Span::whole(kLeastWhole, kGreatestWhole));
        return span;
    }
    if (domain.has_other && is_other_exact) {
        Span span;
        for (Whole i = first; i <= last; ++i) {
            span.add(domain.spans[static_cast<std::size_t>(i)]);
        }
        return span;
    }
    return domain.span(first, last);
}

bool Axis::is_exact(Whole number) const {
    if (is_wild) {
        return false;
    }
    if (is_port) {
        return !is_constant_open ||
               number != static_cast<Whole>(static_cast<std::uint8_t>(PortState::kConstant));
    }
    return !domain.has_other || is_other_exact || number != domain.greatest;
}

Axis axis_of(Engine& engine, std::uint32_t object, const Cone& above, const Mentions& mentions) {
    return AxisMaker(engine, object, above, mentions).run();
}

}  // namespace kivo_session
