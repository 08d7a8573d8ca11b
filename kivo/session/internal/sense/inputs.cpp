#include "kivo/session/internal/sense/inputs.h"

#include <optional>

namespace kivo_session {

namespace {

class InputFinder {
public:
    InputFinder(const Engine& engine, std::uint32_t text, Inputs& inputs)
        : model_(engine.model()),
          own_(engine.reads_own(text) ? model_.description->texts[text].object : kNone),
          inputs_(inputs) {}

    void pass(const Program& program) {
        for (std::uint32_t at = program.begin; at < program.end; ++at) {
            const Instruction& each = model_.code.instructions[at];
            switch (each.action) {
                case Action::kValue:
                    (each.index == own_ && model_.is_setting(own_) ? inputs_.asked : inputs_.nodes)
                        .push_back(each.index);
                    break;
                case Action::kPort:
                    inputs_.nodes.push_back(each.index);
                    inputs_.nodes.push_back(model_.constant_node(each.index));
                    break;
                case Action::kMacro:
                case Action::kCall:
                    inputs_.nodes.push_back(each.index);
                    break;
                case Action::kConstant:
                case Action::kArgument:
                case Action::kFunction:
                case Action::kOperator:
                    break;
            }
        }
    }

private:
    const Model& model_;
    const std::uint32_t own_;
    Inputs& inputs_;
};

// What a condition that compares a parameter with a literal says: "A == 2".
struct Equality {
    std::uint32_t object;
    std::uint32_t constant;
    bool is_own;
};

std::optional<Equality> equality_of(const Engine& engine, const Wanted& wanted) {
    const Model& model = engine.model();
    const Program& program = model.texts[wanted.item].program;
    if (wanted.kind != WantedKind::kHolds || program.end - program.begin != 3) {
        return std::nullopt;
    }
    const Instruction* each = &model.code.instructions[program.begin];
    const bool is_equality = each[2].action == Action::kOperator &&
                             static_cast<Operator>(each[2].what) == Operator::kEqual;
    if (!is_equality || each[0].action != Action::kValue || each[1].action != Action::kConstant) {
        return std::nullopt;
    }
    // Texts may be numbers as well.
    const ObjectKind kind = model.description->objects[each[0].index].kind;
    const Value constant = model.code.constants[each[1].index];
    const bool is_fit = kind == ObjectKind::kString    ? constant.is_text()
                        : kind == ObjectKind::kInteger ? constant.is_whole()
                                                       : false;
    return is_fit ? std::optional(
                        Equality{each[0].index, each[1].index, engine.reads_own(wanted.item)})
                  : std::nullopt;
}

}  // namespace

bool exclude_each_other(const Engine& engine, const std::vector<Wanted>& wanted) {
    std::vector<Equality> known;
    for (const Wanted& each : wanted) {
        const bool is_condition = each.kind == WantedKind::kHolds;
        const std::optional<Equality> found =
            is_condition ? equality_of(engine, each) : std::nullopt;
        if (!found) {
            continue;
        }
        for (const Equality& other : known) {
            if (other.object == found->object && other.is_own == found->is_own &&
                other.constant != found->constant) {
                return true;
            }
        }
        known.push_back(*found);
    }
    return false;
}

void add_inputs(const Engine& engine, std::uint32_t text, Inputs& inputs) {
    const Model& model = engine.model();
    const CompiledText& compiled = model.texts[text];
    InputFinder finder(engine, text, inputs);
    finder.pass(compiled.program);
}

Inputs inputs_of(const Engine& engine, const std::vector<Wanted>& wanted) {
    Inputs inputs;
    for (const Wanted& each : wanted) {
        switch (each.kind) {
            case WantedKind::kHolds:
            case WantedKind::kFails:
                add_inputs(engine, each.item, inputs);
                break;
            case WantedKind::kAtMost:
            case WantedKind::kAbove:
                add_inputs(engine, each.item, inputs);
                add_inputs(engine, each.other, inputs);
                break;
            case WantedKind::kIs:
            case WantedKind::kConnected:
                inputs.nodes.push_back(each.item);
                break;
            case WantedKind::kGood:
            case WantedKind::kTold:
                inputs.leaves.push_back(each.item);
                break;
        }
    }
    return inputs;
}

}  // namespace kivo_session
