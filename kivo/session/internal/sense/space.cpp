#include "kivo/session/internal/sense/space.h"

#include <algorithm>
#include <unordered_set>

#include "kivo/session/internal/engine/leaf_rows.h"
#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/sense/inputs.h"

namespace kivo_session {

namespace {

constexpr std::size_t kMostSettings = 24;
constexpr int kRings = 3;

std::vector<std::uint32_t> all_settings(const Model& model) {
    std::vector<std::uint32_t> settings;
    for (std::uint32_t object = 0; object < model.object_count(); ++object) {
        if (model.is_setting(object)) {
            settings.push_back(object);
        }
    }
    return settings;
}

// Whether all that an object's value is made from can be judged.
bool is_judgeable(const Model& model, std::uint32_t object) {
    const Description& description = *model.description;
    const Object& each = description.objects[object];
    for (std::uint32_t i = each.elements.begin; i < each.elements.end; ++i) {
        const Element& element = description.elements[i];
        if (model.is_spoiled(element.first) || model.is_spoiled(element.second) ||
            model.is_spoiled(element.condition)) {
            return false;
        }
    }
    const auto is_cyclic = [&model](std::uint32_t node) {
        return model.is_cyclic[model.components.component_of[node]] != 0;
    };
    return !model.is_spoiled(each.default_text) && !is_cyclic(object) &&
           !is_cyclic(model.constant_node(object));
}

}  // namespace

Space::Space(std::shared_ptr<const Model> model, std::uint32_t map, const Mentions& mentions)
    : start_(std::move(model)),
      axis_of_(start_.model().object_count(), kNone),
      above_(cone_above(start_.model(), all_settings(start_.model()))),
      spans_(start_, above_),
      trial_(start_) {
    start_.select_map(map);
    const std::uint32_t objects = start_.model().object_count();
    for (std::uint32_t object = 0; object < objects; ++object) {
        is_clear_.push_back(is_judgeable(start_.model(), object) ? 1 : 0);
        if (start_.is_settable(object)) {
            axis_of_[object] = static_cast<std::uint32_t>(axes_.size());
            axes_.push_back(kivo_session::axis_of(start_, object, above_, mentions));
        }
    }
    for (const Axis& axis : axes_) {
        spans_.free(axis.domain.object, axis.span(axis.domain.least, axis.domain.greatest));
        if (axis.is_constant_open) {
            spans_.open_constant(axis.domain.object);
        }
    }
}

bool Space::is_clear(const Cone& cone) const {
    const std::uint32_t objects = start_.model().object_count();
    const auto& spoiled = start_.model().has_spoiled_text;
    return std::all_of(cone.nodes.begin(), cone.nodes.end(),
                       [&](std::uint32_t node) { return is_clear_[node % objects] != 0; }) &&
           std::none_of(cone.leaves.begin(), cone.leaves.end(),
                        [&](std::uint32_t leaf) { return spoiled[leaf] != 0; });
}

std::vector<std::uint32_t> Space::settings_in(const Cone& cone,
                                              const std::vector<std::uint32_t>& more) const {
    std::vector<std::uint32_t> settings;
    for (const std::vector<std::uint32_t>* nodes : {&cone.nodes, &more}) {
        for (const std::uint32_t node : *nodes) {
            const std::uint32_t object = node % start_.model().object_count();
            if (axis_of_[object] != kNone) {
                settings.push_back(object);
            }
        }
    }
    std::sort(settings.begin(), settings.end());
    settings.erase(std::unique(settings.begin(), settings.end()), settings.end());
    return settings;
}

// The settings that are named, directly or through what is no setting.
std::vector<std::uint32_t> Space::settings_named(const Inputs& inputs) const {
    const Model& model = start_.model();
    const std::uint32_t objects = model.object_count();
    std::vector<std::uint32_t> settings = inputs.asked;
    std::vector<std::uint32_t> waiting = inputs.nodes;
    for (const std::uint32_t leaf : inputs.leaves) {
        const auto nodes = model.leaf_inputs.of(leaf);
        waiting.insert(waiting.end(), nodes.begin(), nodes.end());
    }
    std::unordered_set<std::uint32_t> known;
    while (!waiting.empty()) {
        const std::uint32_t node = waiting.back();
        waiting.pop_back();
        if (!known.insert(node).second) {
            continue;
        }
        if (axis_of_[node % objects] != kNone) {
            settings.push_back(node % objects);
        } else {
            const auto below = model.inputs.of(node);
            waiting.insert(waiting.end(), below.begin(), below.end());
        }
    }
    std::sort(settings.begin(), settings.end());
    settings.erase(std::unique(settings.begin(), settings.end()), settings.end());
    return settings;
}

// First with what is named alone, all else at its default; where that does not do, with all that
// has a part in it.
Answer Space::ask(const Question& question, Budget& budget) {
    const Inputs inputs = inputs_of(start_, question.wanted);
    const Cone below = cone_below(start_.model(), inputs.nodes, inputs.leaves);
    if (!is_clear(below)) {
        return {Finding::kUnknown, false, {}};
    }
    if (exclude_each_other(start_, question.wanted)) {
        return {Finding::kNo, true, {}};
    }
    std::vector<std::uint32_t> settings = settings_named(inputs);
    for (int ring = 0; ring < kRings && settings.size() <= kMostSettings; ++ring) {
        Scene scene = scene_of(question, settings);
        std::vector<std::uint32_t> around = settings_around(question, scene);
        scene.is_closed = around == settings;
        // What can be answered at all is answered soon, most of the time.
        const std::uint64_t searches = scene.is_closed ? 1 : 2;
        Budget part = budget.share(searches);
        Answer answer = search(question, scene, part);
        if (answer.finding == Finding::kNo) {
            return question.is_legal ? judged_among_legal(question, scene, answer, part) : answer;
        }
        budget.give_back(part, searches);
        if (answer.finding == Finding::kYes || scene.is_closed || budget.is_spent()) {
            return answer;
        }
        settings = std::move(around);
    }
    return {};
}

// Where nothing at all is legal, that is told of elsewhere.
Answer Space::judged_among_legal(const Question& question, Scene scene, const Answer& answer,
                                 Budget& budget) {
    Question any = question;
    any.wanted.clear();
    Finding finding = search(any, scene, budget).finding;
    for (int ring = 1; ring < kRings && finding == Finding::kUnknown; ++ring) {
        std::vector<std::uint32_t> around = settings_around(any, scene);
        if (around.size() > kMostSettings) {
            break;
        }
        scene = scene_of(any, around);
        scene.is_closed = settings_around(any, scene) == around;
        finding = search(any, scene, budget).finding;
    }
    return finding == Finding::kYes ? answer
                                    : Answer{Finding::kUnknown, finding != Finding::kNo, {}};
}

Space::Scene Space::scene_of(const Question& question, std::vector<std::uint32_t> settings) const {
    Scene scene;
    if (!question.is_legal) {
        scene.settings = std::move(settings);
        return scene;
    }
    const Cone above = cone_above(start_.model(), settings);
    scene.settings = std::move(settings);
    scene.leaves = error_leaves(start_.model(), above);
    // Forces that disagree are told of as such, and not of all that they make illegal.
    const auto is_left_out = [&](std::uint32_t leaf) {
        return leaf == question.except ||
               (!question.is_certain && is_disagreement(start_.model().leaves[leaf].kind));
    };
    scene.leaves.erase(std::remove_if(scene.leaves.begin(), scene.leaves.end(), is_left_out),
                       scene.leaves.end());
    scene.above = above.nodes;
    return scene;
}

// All settings that have a part in a scene.
std::vector<std::uint32_t> Space::settings_around(const Question& question,
                                                  const Scene& scene) const {
    Inputs inputs = inputs_of(start_, question.wanted);
    inputs.nodes.insert(inputs.nodes.end(), scene.above.begin(), scene.above.end());
    inputs.leaves.insert(inputs.leaves.end(), scene.leaves.begin(), scene.leaves.end());
    const Cone below = cone_below(start_.model(), inputs.nodes, inputs.leaves);
    inputs.asked.insert(inputs.asked.end(), scene.settings.begin(), scene.settings.end());
    return settings_in(below, inputs.asked);
}

}  // namespace kivo_session
