#include <algorithm>

#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

// Which objects any text names, or any wizard map lists.
std::vector<std::uint8_t> named_objects(const Model& model) {
    std::vector<std::uint8_t> is_named(model.object_count());
    for (const Instruction& each : model.code.instructions) {
        switch (each.action) {
            case Action::kValue:
            case Action::kPort:
            case Action::kMacro:
            case Action::kCall:
                is_named[each.index] = 1;
                break;
            case Action::kConstant:
            case Action::kArgument:
            case Action::kFunction:
            case Action::kOperator:
                break;
        }
    }
    for (const Preset& preset : model.description->presets) {
        is_named[preset.object] = 1;
    }
    return is_named;
}

// What a parameter that leaves the description is used for is the host's affair.
bool is_for_hosts(const Object& object) {
    constexpr std::uint8_t kPrivate = 0;
    constexpr std::uint8_t kConstant = 1;
    return object.connection == kPrivate || object.connection == kConstant || object.is_hint;
}

}  // namespace

// A text that cannot be read may name anything, and a description that names none of its parameters
// leaves all of them to its host.
void judge_uses(SenseRun& run) {
    const Model& model = run.asker.model();
    const bool is_spoiled =
        std::any_of(model.texts.begin(), model.texts.end(),
                    [](const CompiledText& text) { return text.spoiled != kNone; });
    if (is_spoiled) {
        return;
    }
    const std::vector<std::uint8_t> is_named = named_objects(model);
    const std::vector<Object>& objects = model.description->objects;
    const auto is_visible = [&](std::uint32_t object) {
        return objects[object].kind == ObjectKind::kInteger ||
               objects[object].kind == ObjectKind::kString;
    };
    bool has_named = false;
    for (std::uint32_t object = 0; object < objects.size(); ++object) {
        has_named = has_named || (is_visible(object) && is_named[object] != 0);
    }
    for (std::uint32_t object = 0; object < objects.size(); ++object) {
        if (is_named[object] != 0) {
            continue;
        }
        if (objects[object].kind == ObjectKind::kMacro) {
            run.add_object("unused-macro", object,
                           "nothing names the macro " + run.name_of(object));
        } else if (has_named && is_visible(object) && !is_for_hosts(objects[object])) {
            run.add_object("unused-parameter", object,
                           "nothing names the parameter " + run.name_of(object));
        }
    }
}

}  // namespace kivo_session
