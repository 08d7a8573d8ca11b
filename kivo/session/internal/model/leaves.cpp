#include <algorithm>

#include "kivo/session/internal/model/builder.h"

namespace kivo_session {

void own_texts(const Description& description, const Leaf& leaf,
               std::vector<std::uint32_t>& texts) {
    texts.clear();
    switch (leaf.kind) {
        case LeafKind::kNotInList: {
            const Range items = description.objects[leaf.object].items;
            texts.assign(description.items.begin() + items.begin,
                         description.items.begin() + items.end);
            return;
        }
        case LeafKind::kRange:
        case LeafKind::kValueRule:
        case LeafKind::kConstantRange:
        case LeafKind::kPortRange: {
            const Element& element = description.elements[leaf.item];
            texts = {element.first, element.second, element.condition};
            return;
        }
        case LeafKind::kPortWidth:
            texts = {description.objects[leaf.object].width};
            return;
        case LeafKind::kPortWidth2d:
            texts = {description.objects[leaf.object].width2d};
            return;
        case LeafKind::kRule:
            texts = {description.rules[leaf.item].condition};
            return;
        default:
            return;
    }
}

void ModelBuilder::add_leaf(LeafKind kind, std::uint32_t index, std::uint32_t item) {
    model_.leaves.push_back({kind, index, item});
}

void ModelBuilder::make_leaves() {
    for (std::uint32_t i = 0; i < model_.object_count(); ++i) {
        if (is_parameter(object(i).kind)) {
            make_parameter_leaves(i);
        } else if (is_port(object(i).kind)) {
            make_port_leaves(i);
        }
    }
    const auto make_all = [this](LeafKind kind, std::size_t count) {
        const auto first = static_cast<std::uint32_t>(model_.leaves.size());
        for (std::uint32_t i = 0; i < count; ++i) {
            add_leaf(kind, kNone, i);
        }
        return first;
    };
    make_all(LeafKind::kRule, description_.rules.size());
    model_.first_message = make_all(LeafKind::kMessage, description_.messages.size());
    model_.first_vector = make_all(LeafKind::kVector, description_.vectors.size());
    model_.first_stimulus = make_all(LeafKind::kStimulus, description_.stimuli.size());
    model_.first_map = make_all(LeafKind::kMap, description_.maps.size());
    model_.first_piece = make_all(LeafKind::kPiece, description_.pieces.size());
    std::vector<std::uint32_t> texts;
    for (const Leaf& leaf : model_.leaves) {
        own_texts(description_, leaf, texts);
        model_.has_spoiled_text.push_back(
            std::any_of(texts.begin(), texts.end(),
                        [this](std::uint32_t text) { return model_.is_spoiled(text); }));
    }
}

std::uint32_t ModelBuilder::count_conditional(std::uint32_t index, ElementKind kind) const {
    std::uint32_t count = 0;
    for (std::uint32_t i = object(index).elements.begin; i < object(index).elements.end; ++i) {
        const Element& element = description_.elements[i];
        count += element.kind == kind && element.condition != kNone ? 1 : 0;
    }
    return count;
}

bool ModelBuilder::has_element(std::uint32_t index, ElementKind kind) const {
    for (std::uint32_t i = object(index).elements.begin; i < object(index).elements.end; ++i) {
        if (description_.elements[i].kind == kind) {
            return true;
        }
    }
    return false;
}

void ModelBuilder::make_parameter_leaves(std::uint32_t index) {
    const Object& each = object(index);
    if (each.kind == ObjectKind::kInteger) {
        add_leaf(LeafKind::kNeedsValue, index);
    }
    if (each.has_list) {
        add_leaf(LeafKind::kNotInList, index);
    }
    if (has_element(index, ElementKind::kForce)) {
        add_leaf(LeafKind::kOverridden, index);
    }
    if (count_conditional(index, ElementKind::kForce) > 1) {
        add_leaf(LeafKind::kForcesDisagree, index);
    }
    for (std::uint32_t i = each.elements.begin; i < each.elements.end; ++i) {
        const ElementKind kind = description_.elements[i].kind;
        if (kind == ElementKind::kRange) {
            add_leaf(LeafKind::kRange, index, i);
        } else if (kind == ElementKind::kValueRule) {
            add_leaf(LeafKind::kValueRule, index, i);
        }
    }
}

void ModelBuilder::make_port_leaves(std::uint32_t index) {
    const Object& each = object(index);
    const bool has_force = has_element(index, ElementKind::kPortForce);
    if (model_.is_setting(index) && (has_force || has_element(index, ElementKind::kState))) {
        add_leaf(LeafKind::kOverridden, index);
    }
    if (count_conditional(index, ElementKind::kState) > 1) {
        add_leaf(LeafKind::kStatesDisagree, index);
    }
    if (count_conditional(index, ElementKind::kPortForce) > 1) {
        add_leaf(LeafKind::kPortForcesDisagree, index);
    }
    if (each.kind != ObjectKind::kBuried) {
        if (each.width != kNone) {
            add_leaf(LeafKind::kPortWidth, index);
        }
        if (each.width2d != kNone) {
            add_leaf(LeafKind::kPortWidth2d, index);
        }
        add_leaf(LeafKind::kTooWide, index);
    }
    for (std::uint32_t i = each.elements.begin; i < each.elements.end; ++i) {
        const ElementKind kind = description_.elements[i].kind;
        if (kind == ElementKind::kConstantRange) {
            add_leaf(LeafKind::kConstantRange, index, i);
        } else if (kind == ElementKind::kPortRange) {
            add_leaf(LeafKind::kPortRange, index, i);
        }
    }
    if (each.kind == ObjectKind::kInput) {
        add_leaf(LeafKind::kPortNeedsValue, index);
    }
    if (has_force) {
        add_leaf(LeafKind::kForcedButConnected, index);
    }
}

void ModelBuilder::collect_leaf_inputs(const Leaf& leaf, std::vector<std::uint32_t>& inputs) const {
    const auto add_text = [&](std::uint32_t text) {
        if (text == kNone) {
            return;
        }
        for (std::uint32_t use = text_uses_[text].begin; use < text_uses_[text].end; ++use) {
            inputs.push_back(node_of(uses_[use]));
        }
    };
    const auto add_element = [&](const Element& element) {
        add_text(element.first);
        add_text(element.second);
        add_text(element.condition);
    };
    const auto add_elements = [&](ElementKind kind) {
        for (std::uint32_t i = object(leaf.object).elements.begin;
             i < object(leaf.object).elements.end; ++i) {
            if (description_.elements[i].kind == kind) {
                add_element(description_.elements[i]);
            }
        }
    };
    const auto add_port = [&] {
        inputs.push_back(leaf.object);
        inputs.push_back(model_.constant_node(leaf.object));
    };
    switch (leaf.kind) {
        case LeafKind::kNeedsValue:
            inputs.push_back(leaf.object);
            return;
        case LeafKind::kNotInList:
            inputs.push_back(leaf.object);
            for (std::uint32_t i = object(leaf.object).items.begin;
                 i < object(leaf.object).items.end; ++i) {
                add_text(description_.items[i]);
            }
            return;
        case LeafKind::kOverridden:
            inputs.push_back(leaf.object);
            if (is_port(object(leaf.object).kind)) {
                add_port();
                add_elements(ElementKind::kPortForce);
                add_elements(ElementKind::kState);
            } else {
                add_elements(ElementKind::kForce);
            }
            return;
        case LeafKind::kForcesDisagree:
            inputs.push_back(leaf.object);
            return add_elements(ElementKind::kForce);
        case LeafKind::kStatesDisagree:
            inputs.push_back(leaf.object);
            return add_elements(ElementKind::kState);
        case LeafKind::kPortForcesDisagree:
            inputs.push_back(leaf.object);
            return add_elements(ElementKind::kPortForce);
        case LeafKind::kRange:
        case LeafKind::kValueRule:
            inputs.push_back(leaf.object);
            return add_element(description_.elements[leaf.item]);
        case LeafKind::kConstantRange:
        case LeafKind::kPortRange:
            add_port();
            return add_element(description_.elements[leaf.item]);
        case LeafKind::kTooWide:
        case LeafKind::kPortWidth:
            add_port();
            return add_text(object(leaf.object).width);
        case LeafKind::kPortWidth2d:
            add_port();
            return add_text(object(leaf.object).width2d);
        case LeafKind::kPortNeedsValue:
        case LeafKind::kForcedButConnected:
            add_port();
            return add_elements(ElementKind::kPortForce);
        case LeafKind::kRule:
            return add_text(description_.rules[leaf.item].condition);
        case LeafKind::kMessage:
            return add_text(description_.messages[leaf.item].condition);
        case LeafKind::kVector:
            return add_text(description_.vectors[leaf.item].condition);
        case LeafKind::kStimulus:
            return add_text(description_.stimuli[leaf.item].condition);
        case LeafKind::kMap:
            return add_text(description_.maps[leaf.item].condition);
        case LeafKind::kPiece:
            return add_text(description_.pieces[leaf.item].condition);
    }
}

}  // namespace kivo_session
