#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/search/cone.h"
#include "kivo/session/internal/search/span_evaluator.h"

namespace kivo_session {

struct Wanted;

// What is looked at: leaves that must not be told of, and nodes that must not be at fault.
struct Plan {
    std::vector<std::uint32_t> leaves;
    std::vector<std::uint32_t> faultless;  // objects
    std::vector<std::uint32_t> order;      // the nodes that must be worked out for them
};

// How things can stand with all of a plan.
struct Outlook {
    bool may_be_good = true;
    bool may_be_bad = false;
    std::vector<std::uint32_t> open_leaves;  // where both can be
    std::vector<std::uint32_t> open_nodes;
};

// The engine's rules, with some settings at everything that they can be at once. What they do not
// reach is taken from an engine, which must not change meanwhile.
class SpanEngine final : private SpanNames {
public:
    // "above" is the cone of the settings that are free.
    SpanEngine(const Engine& engine, const Cone& above);

    // What the setting can be asked to be.
    void free(std::uint32_t object, Span asked);
    // That a port which is free can be asked to be any constant.
    void open_constant(std::uint32_t port) { is_constant_open_[slots_[port]] = 1; }
    // As though no rule forced a value on it.
    void pin(std::uint32_t object) { pinned_ = object; }
    // "nodes" are worked out too.
    std::shared_ptr<const Plan> plan(std::vector<std::uint32_t> leaves,
                                     std::vector<std::uint32_t> faultless,
                                     const std::vector<std::uint32_t>& nodes = {}) const;
    Outlook look(const Plan& plan);
    // Whether something can be so, after a look at a plan with what it depends on.
    bool may_be(const Wanted& wanted);

    // Of texts and rules that were evaluated.
    std::uint64_t evaluations() const { return evaluations_; }

private:
    struct Outcome {
        Span value;
        bool may_be_forced = false;
        bool may_be_free = false;
    };

    Span parameter(std::uint32_t index) const override;
    Span port_state(std::uint32_t port) const override;
    Span port_constant(std::uint32_t port) const override;
    Span macro_value(std::uint32_t macro) const override;
    bool is_expanded(std::uint32_t macro) const override;
    const Program& macro_program(std::uint32_t macro) const override;

    Span value(std::uint32_t object) const;
    Span constant(std::uint32_t port) const;
    Span asked(std::uint32_t object) const;
    void update(std::uint32_t node);
    void begin_own(std::uint32_t object);
    void begin_own_force(std::uint32_t port);
    void end_own();
    Span asked_constant(std::uint32_t port, const Span& state);
    Span unforced_constant(std::uint32_t port);
    Span forces_port(std::uint32_t port);
    Span condition(std::uint32_t text);
    Span typed(std::uint32_t object, std::uint32_t text);
    Span evaluated_state(std::uint32_t text);
    Span evaluated_asked(std::uint32_t object);
    void evaluate_parameter(std::uint32_t object);
    void evaluate_state(std::uint32_t port);
    void evaluate_constant(std::uint32_t port);
    template <class ValueOf>
    Outcome walk(std::uint32_t object, ElementKind kind, const Span& base, ValueOf value_of);

    // How a leaf can stand: not told of, or told of.
    struct Standing {
        bool may_be_good;
        bool may_be_bad;
    };
    Standing standing_of(std::uint32_t leaf);
    // A condition with the names that it has where it stands; of an implication its own.
    Span own_condition(std::uint32_t text);
    bool may_have(const Span& effective, const Span& wanted) const;
    Span judged(std::uint32_t leaf);
    Span is_in_list(std::uint32_t object);
    Span is_granted(std::uint32_t object);
    Span is_port_granted(std::uint32_t port);
    Span do_forces_agree(std::uint32_t object, ElementKind kind);
    Span is_within(const Span& value, const Element& element);
    Span limit(std::uint32_t text);
    Span width(std::uint32_t port, std::uint32_t text);
    Span is_narrow_enough(std::uint32_t port);
    Span is_connected_port(std::uint32_t port) const;
    Span is_tied_port(std::uint32_t port);
    Span implied(Span condition, const Span& demand) const;

    const Engine& engine_;
    const Model& model_;
    const Description& description_;
    SpanEvaluator evaluator_;
    std::vector<std::uint32_t> slots_;            // by node; kNone for what does not vary
    std::vector<Span> spans_;                     // by slot
    std::vector<Span> asked_;                     // by slot
    std::vector<Span> numbers_;                   // by slot: of a state, the number in its place
    std::vector<std::uint8_t> force_;             // by slot: bit 0 may be forced, bit 1 may be free
    std::vector<std::uint8_t> is_free_;           // by slot
    std::vector<std::uint8_t> is_constant_open_;  // by slot
    std::uint32_t pinned_ = kNone;
    std::uint32_t own_ = kNone;
    Span own_value_;     // of a port its state
    Span own_constant_;  // of a port
    const std::uint8_t* expanded_ = nullptr;
    std::uint64_t evaluations_ = 0;
};

}  // namespace kivo_session
