#include "kivo/session/internal/sense/inputs.h"

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

}  // namespace

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
                inputs.nodes.push_back(each.item);
                break;
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
