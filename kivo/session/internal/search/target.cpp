#include "kivo/session/internal/search/target.h"

#include <algorithm>

#include "kivo/session/internal/engine/report.h"
#include "kivo/session/internal/search/verdict_kind.h"

namespace kivo_session {

Target target_of(const Model& model, const KIVO_SUBJECT& subject) {
    const auto leaves = static_cast<std::uint32_t>(model.leaves.size());
    const auto texts = static_cast<std::uint32_t>(model.texts.size());
    const std::uint32_t object = model.find(subject.name);
    Target target;
    target.number = subject.number;
    if (subject.number == KIVO_SUBJECT::kValue) {
        target.object = object;
    } else if (subject.number < leaves) {
        target.leaf = model.leaves[subject.number].object == object ? subject.number : kNone;
    } else if (subject.number - leaves < texts) {
        const std::uint32_t text = subject.number - leaves;
        target.text = model.description->texts[text].object == object ? text : kNone;
    } else if (object != kNone && subject.number - leaves - texts == object) {
        target.cycle = object;
    }
    return target;
}

bool is_told(Engine& engine, const Target& target) {
    if (target.leaf != kNone) {
        return is_told(engine, target.leaf);
    }
    if (target.cycle != kNone) {
        return engine.is_lost_in_cycle(target.cycle);
    }
    const std::vector<KIVO_VERDICT> verdicts = Reporter(engine).verdicts();
    return std::any_of(verdicts.begin(), verdicts.end(), [&](const KIVO_VERDICT& verdict) {
        return verdict.subject.number == target.number;
    });
}

namespace {

bool reads(const Description& description, const Leaf& leaf, std::uint32_t text) {
    switch (leaf.kind) {
        case LeafKind::kMessage:
            return description.messages[leaf.item].condition == text;
        case LeafKind::kVector:
            return description.vectors[leaf.item].condition == text;
        case LeafKind::kStimulus:
            return description.stimuli[leaf.item].condition == text;
        case LeafKind::kMap:
            return description.maps[leaf.item].condition == text;
        case LeafKind::kPiece:
            return description.pieces[leaf.item].condition == text;
        default:
            break;
    }
    std::vector<std::uint32_t> texts;
    own_texts(description, leaf, texts);
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

}  // namespace

Cone cone_of(const Model& model, const Target& target) {
    std::vector<std::uint32_t> nodes;
    std::vector<std::uint32_t> leaves;
    const auto add_object = [&](std::uint32_t object) {
        if (object != kNone) {
            nodes.push_back(object);
            nodes.push_back(model.constant_node(object));
        }
    };
    add_object(target.object);
    add_object(target.cycle);
    if (target.leaf != kNone) {
        leaves.push_back(target.leaf);
    }
    if (target.text != kNone) {
        add_object(model.description->texts[target.text].object);
        for (std::uint32_t leaf = 0; leaf < model.leaves.size(); ++leaf) {
            if (reads(*model.description, model.leaves[leaf], target.text)) {
                leaves.push_back(leaf);
            }
        }
    }
    return cone_below(model, nodes, leaves);
}

Wrongs wrongs_of(const Engine& engine) {
    Wrongs wrongs;
    if (engine.is_legal()) {
        return wrongs;
    }
    const Model& model = engine.model();
    for (std::uint32_t leaf = 0; leaf < model.leaves.size(); ++leaf) {
        if (takes_legality(*model.description, model.leaves[leaf]) && is_told(engine, leaf)) {
            wrongs.leaves.push_back(leaf);
        }
    }
    for (std::uint32_t node = 0; node < 2 * model.object_count(); ++node) {
        if (engine.is_wrong(node)) {
            wrongs.nodes.push_back(node);
        }
    }
    return wrongs;
}

bool Wrongs::are_in(const Cone& cone) const {
    return std::includes(cone.leaves.begin(), cone.leaves.end(), leaves.begin(), leaves.end()) &&
           std::all_of(nodes.begin(), nodes.end(),
                       [&cone](std::uint32_t node) { return cone.has_node(node); });
}

std::vector<std::uint32_t> settings_in(const Engine& engine, const Cone& cone) {
    std::vector<std::uint32_t> settings;
    for (std::uint32_t object = 0; object < engine.model().object_count(); ++object) {
        const bool is_in =
            cone.has_node(object) || cone.has_node(engine.model().constant_node(object));
        if (is_in && engine.is_settable(object)) {
            settings.push_back(object);
        }
    }
    return settings;
}

std::uint32_t request_leaf(const Model& model, std::uint32_t object) {
    for (const std::uint32_t leaf : model.judged_by.of(object)) {
        if (model.leaves[leaf].kind == LeafKind::kOverridden &&
            model.leaves[leaf].object == object) {
            return leaf;
        }
    }
    return kNone;
}

std::vector<std::uint32_t> error_leaves(const Model& model, const Cone& cone) {
    std::vector<std::uint32_t> leaves;
    std::copy_if(cone.leaves.begin(), cone.leaves.end(), std::back_inserter(leaves),
                 [&model](std::uint32_t leaf) {
                     return takes_legality(*model.description, model.leaves[leaf]);
                 });
    return leaves;
}

std::vector<std::uint32_t> valued_objects(const Model& model, const Cone& cone) {
    std::vector<std::uint32_t> objects;
    for (const std::uint32_t node : cone.nodes) {
        const std::uint32_t object = node % model.object_count();
        if (model.description->objects[object].kind != ObjectKind::kMacro) {
            objects.push_back(object);
        }
    }
    std::sort(objects.begin(), objects.end());
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
    return objects;
}

std::string asked_text_of(const Engine& engine, std::uint32_t object) {
    if (const Given* given = engine.given(object)) {
        return given->text;
    }
    const Value asked = engine.asked(object);
    const bool is_state =
        is_port(engine.model().description->objects[object].kind) && !asked.is_unknown();
    return is_state ? word_of(static_cast<PortState>(asked.low)) : engine.text_of(asked);
}

}  // namespace kivo_session
