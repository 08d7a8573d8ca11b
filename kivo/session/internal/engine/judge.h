#pragma once

#include <cstdint>

#include "kivo/session/internal/engine/engine.h"

namespace kivo_session {

// Judges leaves of an engine whose values are settled.
class Judge {
public:
    explicit Judge(Engine& engine)
        : engine_(engine), model_(engine.model()), description_(*model_.description) {}

    // A truth or unknown; see Engine::result.
    Value run(std::uint32_t leaf);
    // Whether the last leaf needs its own texts now, whatever they come to.
    bool needs_texts() const { return needs_texts_; }

private:
    Value needs_value(std::uint32_t object);
    Value is_in_list(std::uint32_t object);
    Value is_granted(std::uint32_t object);
    Value is_port_granted(std::uint32_t port);
    Value do_forces_agree(std::uint32_t object, ElementKind kind);
    Value demand(Value holds, Value value, const Element& element);
    Value range(const Element& element);
    Value value_rule(const Element& element);
    Value constant_range(const Element& element);
    Value port_range(const Element& element);
    Value is_narrow_enough(std::uint32_t port);
    Value width(std::uint32_t port, std::uint32_t text);
    Value has_port_value(std::uint32_t port);
    Value is_force_open(std::uint32_t port);
    Value condition(std::uint32_t text);  // of kNone: true

    // Whether "value" lies between the limits of an element.
    Value is_within(Value value, const Element& element);
    Value ordered(Value least, Value greatest, std::uint32_t text);
    Value both(Value left, Value right);
    // Whether the condition does not hold or "demand" is met.
    Value implied(Value condition, Value demand);
    // Whether a port is connected, and whether it is tied.
    Value is_connected_port(std::uint32_t port);
    Value is_tied_port(std::uint32_t port);
    bool is_in_force(const Element& element) const { return engine_.is_in_force(element); }

    Engine& engine_;
    const Model& model_;
    const Description& description_;
    std::uint32_t culprit_ = kNone;
    bool needs_texts_ = false;
};

}  // namespace kivo_session
