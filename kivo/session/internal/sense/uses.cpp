#include <string_view>

#include "kivo/session/internal/expression/lexer.h"
#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

// What a text that cannot be read names, or was probably meant to.
void add_spoiled(const Model& model, std::vector<std::uint8_t>& is_named) {
    NearSearches searches;
    for (std::uint32_t number = 0; number < model.texts.size(); ++number) {
        if (model.texts[number].spoiled == kNone) {
            continue;
        }
        const std::string_view text = model.description->texts[number].text;
        Lexer lexer(text);
        for (Token token = lexer.next(); token.kind != TokenKind::kEnd; token = lexer.next()) {
            const std::string_view word = text.substr(token.offset, token.length);
            const std::uint32_t known = token.kind == TokenKind::kName ? model.find(word) : kNone;
            const std::uint32_t meant = known == kNone && token.kind == TokenKind::kName
                                            ? model.find(model.nearest(word, searches))
                                            : known;
            if (meant != kNone) {
                is_named[meant] = 1;
            }
        }
    }
}

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
    add_spoiled(model, is_named);
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

// A description that names none of its parameters leaves all of them to its host, and one that
// declares macros alone is a part of others.
void judge_uses(SenseRun& run) {
    const Model& model = run.asker.model();
    const std::vector<std::uint8_t> is_named = named_objects(model);
    const std::vector<Object>& objects = model.description->objects;
    const auto is_visible = [&](std::uint32_t object) {
        return objects[object].kind == ObjectKind::kInteger ||
               objects[object].kind == ObjectKind::kString;
    };
    bool has_named = false;
    bool has_others = false;
    for (std::uint32_t object = 0; object < objects.size(); ++object) {
        has_named = has_named || (is_visible(object) && is_named[object] != 0);
        has_others = has_others || objects[object].kind != ObjectKind::kMacro;
    }
    for (std::uint32_t object = 0; object < objects.size(); ++object) {
        if (is_named[object] != 0) {
            continue;
        }
        if (objects[object].kind == ObjectKind::kMacro && has_others) {
            run.add_object("unused-macro", object,
                           "nothing names the macro " + run.name_of(object));
        } else if (has_named && is_visible(object) && !is_for_hosts(objects[object])) {
            run.add_object("unused-parameter", object,
                           "nothing names the parameter " + run.name_of(object));
        }
    }
}

}  // namespace kivo_session
