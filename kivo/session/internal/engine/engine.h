#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kivo/session/internal/expression/evaluator.h"
#include "kivo/session/internal/model/model.h"

namespace kivo_session {

// Where an asked-for value comes from, or what was put over it.
enum class Source : std::uint8_t { kDefault, kPreset, kGiven, kForced };

// What a user asked for: the value of a parameter, or the state of a port and its constant.
struct Given {
    std::string text;  // as it was asked for
    Value value;       // of a port: the number of a PortState
    std::optional<Value> constant;
};

enum class SetResult : std::uint8_t { kDone, kUnknownName, kNotASetting, kNotANumber, kNotAState };

struct Assignment {
    std::string_view name;
    std::string_view value;
};

// One configuration: what is asked for, what follows from it, and what is judged. A change costs
// time in proportion to what depends on it. Copies share the model.
class Engine {
public:
    explicit Engine(std::shared_ptr<const Model> model);
    Engine(const Engine& other);
    Engine& operator=(const Engine&) = delete;

    // All or none.
    SetResult set(const std::vector<Assignment>& assignments, std::size_t* refused);
    void unset(std::string_view name);
    // kNone for no map.
    void select_map(std::uint32_t map);
    std::uint32_t map() const { return map_; }
    void allow_hidden(bool is_allowed) { allows_hidden_ = is_allowed; }
    bool is_settable(std::uint32_t object) const;

    const Model& model() const { return *model_; }
    const std::shared_ptr<const Model>& shared_model() const { return model_; }
    const Words& words() const { return words_; }
    const ReasonSets& reasons() const { return reasons_; }
    const Given* given(std::uint32_t object) const;
    const std::unordered_map<std::uint32_t, Given>& all_given() const { return given_; }

    // Of a parameter, hidden parameter or macro; of a port the number of its state.
    Value value(std::uint32_t object) const { return values_[object]; }
    // The constant at a port; unknown when it is not tied.
    Value constant(std::uint32_t port) const { return constants_[port]; }
    // What was asked for: the value of a parameter, the state of a port.
    Value asked(std::uint32_t object) const { return asked_[object]; }
    Source source(std::uint32_t object) const { return sources_[object]; }
    // The text of what is asked for while nothing is set: the map's or the default; kNone for none.
    std::uint32_t asked_text(std::uint32_t object) const;
    // Whether the selected map says what is asked for while nothing is set.
    bool is_preset(std::uint32_t object) const;
    // What a value means as a condition; nothing when it is not known or means none.
    std::optional<bool> truth_of(Value value) const;
    // The whole number that a port's rules give in place of a state, or unknown.
    Value number_in_place(std::uint32_t port) const { return numbers_[port]; }
    // Whether an element counts with the map that is selected.
    bool is_in_force(const Element& element) const {
        return element.map == kNone || element.map == map_;
    }
    bool is_tied(std::uint32_t port) const;

    // Of a leaf that is a condition (messages, vectors, maps, ...): whether it holds. Of all others
    // whether what they demand is met.
    Value result(std::uint32_t leaf) const { return results_[leaf]; }
    // The element that a failing leaf speaks of, where the leaf itself does not say: kNone for
    // none.
    std::uint32_t culprit(std::uint32_t leaf) const { return culprits_[leaf]; }

    // No leaf and no value takes legality; nothing that was asked for is overridden.
    bool is_legal() const { return wrong_ == 0; }
    bool is_granted() const { return overridden_ == 0; }
    // Whether the value of a node takes legality.
    bool is_wrong(std::uint32_t node) const { return is_node_wrong_[node] != 0; }
    // Whether a leaf needs its own texts now and one of them is spoiled.
    bool needs_spoiled_text(std::uint32_t leaf) const {
        return (standings_[leaf] & kNeedsSpoiledText) != 0;
    }
    // Whether a parameter takes the default that its index does not give.
    bool needs_missing_default(std::uint32_t object) const {
        return is_default_missed_[object] != 0;
    }
    // Whether a value, state or constant is unknown because of a cycle.
    bool is_lost_in_cycle(std::uint32_t object) const;

    // Evaluates a text now, whoever needs it; with no own object.
    Value evaluate_text(std::uint32_t text);
    // The condition that a text is, of an implication the one before "then"; with the names that
    // evaluate_text gives it.
    Value condition_of(std::uint32_t text);
    // Whether the limit of a range is at most another one.
    Value is_at_most(std::uint32_t least, std::uint32_t greatest);
    // Whether a text belongs to those in which the name of its object means what was asked for.
    bool reads_own(std::uint32_t text) const;
    // The values of the expressions in a program of a text of the model, in their order; with the
    // names that evaluate_text gives it.
    std::vector<Value> trace(std::uint32_t text, const Program& program);
    // What decides a value: an element and whether it is its ELSE; kNone when none does.
    struct Forcing {
        std::uint32_t element = kNone;
        bool is_else = false;
    };
    Forcing forcing(std::uint32_t object, ElementKind kind);
    // The whole number that a width text gives, or unknown.
    Value width(std::uint32_t port);
    // Evaluates a program that is not of the model's code; none of the macros it uses is spoiled.
    Value evaluate(const Program& program, const Code& code, bool as_condition);
    Value unknown(std::vector<Reason> reasons);
    // Gives back what evaluations and changes left behind. Values that were given out are void.
    void collect_garbage();
    Words& mutable_words() { return words_; }
    std::string text_of(Value value) const;

    // As though no rule gave this object its value or state; kNone for none.
    void pin(std::uint32_t object);
    // Values and leaves that were worked out so far.
    std::uint64_t evaluations() const { return evaluations_; }

    // Counts changes; results are the same as long as it is.
    std::uint64_t version() const { return version_; }
    // Nodes and leaves that changed since the last call.
    void take_changes(std::vector<std::uint32_t>& nodes, std::vector<std::uint32_t>& leaves);

private:
    friend class Judge;

    // What a leaf means for the configuration as a whole.
    enum Standing : std::uint8_t { kTakesLegality = 1, kOverridden = 2, kNeedsSpoiledText = 4 };

    void assign(std::uint32_t object, Given given);
    SetResult check(const Assignment& assignment, std::uint32_t* object, Given* given);
    SetResult check_port(std::string_view value, ObjectKind kind, Given* given) const;
    void apply_map(std::uint32_t map, bool is_selected);
    void evaluate_all();

    void touch(std::uint32_t object);
    void mark_node(std::uint32_t node);
    void mark_leaf(std::uint32_t leaf);
    void mark_judged(std::uint32_t node);
    void propagate();
    void run_component(std::uint32_t component);
    void run_cycle(std::uint32_t component);
    // The circles that are left of a cyclic component now, inputs first: positions in "members".
    Components circles_of(std::uint32_t component, const std::vector<std::uint32_t>& members,
                          std::vector<std::uint8_t>& is_circle) const;
    bool applies(const CycleEdge& edge) const;
    void run_circle(std::vector<std::uint32_t> members);
    bool update(std::uint32_t node);
    bool is_relay(std::uint32_t node) const;
    // What depends on it is worked out anew, and hosts are told.
    void note_change(std::uint32_t node);
    void tell_change(std::uint32_t node);
    void note_standing(std::uint32_t leaf, bool needs_texts);
    std::uint8_t standing_of(std::uint32_t leaf, bool needs_texts) const;
    // Counts a node whose value is wrong, or no more.
    void weigh_node(std::uint32_t node);
    void start_cycle(const std::vector<std::uint32_t>& settings);
    bool settle_cycle(const std::vector<std::uint32_t>& settings);
    void lose_cycle(const std::vector<std::uint32_t>& settings);
    Value& slot(std::uint32_t node) {
        const std::uint32_t objects = model_->object_count();
        return node < objects ? values_[node] : constants_[node - objects];
    }
    void collect_words();
    void collect_reasons();

    // The values that nodes have.
    bool evaluate_parameter(std::uint32_t object);
    bool evaluate_macro(std::uint32_t object);
    bool evaluate_state(std::uint32_t port);
    bool evaluate_constant(std::uint32_t port);
    Value asked_value(std::uint32_t object);
    Value asked_state(std::uint32_t port);
    Value typed(std::uint32_t object, std::uint32_t text);
    Value condition(std::uint32_t text);
    Value evaluate_role(std::uint32_t text);
    Value spoiled_value(std::uint32_t text);
    Value untied(std::uint32_t port);
    // The constant that a port in a state has when no rule gives it one: unknown when not CONSTANT.
    Value asked_constant(std::uint32_t port, Value state);
    // That of the state that the port is in; a number in place of a STATE goes before it.
    Value unforced_constant(std::uint32_t port);
    // Whether a port in a state has no constant, whatever the rules say.
    bool is_open(std::uint32_t port, PortState state) const;
    // Evaluates with the names of an object's own texts: of a parameter all, of a port those of
    // STATE, or those of FORCE_VALUE.
    void begin_own(std::uint32_t object);
    void begin_own_force(std::uint32_t port);
    // What the element of a text asks for; nothing for a text that is not an object's own.
    void begin_own_text(std::uint32_t text);
    void end_own();
    // Ends it, also when memory runs out meanwhile.
    struct EndOwn {
        ~EndOwn() { engine.end_own(); }

        Engine& engine;
    };
    // Which macros the texts of an object do not take the value of.
    void expand_macros(std::uint32_t object);

    struct Outcome {
        Value value;
        bool is_forced = false;
        std::uint32_t element = kNone;  // that ended the walk
    };
    // Walks over the elements of a kind: the first that is active decides, else "base".
    template <class ValueOf>
    Outcome walk(std::uint32_t object, ElementKind kind, Value base, ValueOf value_of);
    // What the FORCE_VALUE elements of a port give, else "base".
    Outcome force_of(std::uint32_t port, Value base);
    // Whether any of them is active.
    Value forces_port(std::uint32_t port);

    std::shared_ptr<const Model> model_;
    Words words_;
    ReasonSets reasons_;
    Evaluator evaluator_;
    Scene scene_;
    std::unordered_map<std::uint32_t, Given> given_;
    std::uint32_t map_ = kNone;
    std::vector<std::uint32_t> presets_;  // by object: in Description::presets, kNone without one
    bool allows_hidden_ = false;
    std::uint32_t pinned_ = kNone;
    std::uint64_t evaluations_ = 0;

    std::vector<Value> values_;     // by object
    std::vector<Value> constants_;  // by object
    std::vector<Value> asked_;      // by object
    std::vector<Value> numbers_;    // by object: the number in place of a STATE, else unknown
    std::vector<Source> sources_;   // by object
    std::vector<Value> results_;    // by leaf
    std::vector<std::uint32_t> culprits_;          // by leaf
    std::vector<Value> spoiled_;                   // by Model::spoiled
    std::vector<std::uint8_t> is_default_missed_;  // by object
    std::vector<std::uint8_t> standings_;          // by leaf: of Standing
    std::vector<std::uint8_t> is_node_wrong_;      // by node
    std::uint32_t wrong_ = 0;                      // leaves and nodes that take legality
    std::uint32_t overridden_ = 0;                 // leaves

    std::vector<std::uint32_t> queue_;     // components to run, a heap: the least first
    std::vector<std::uint8_t> is_queued_;  // by component
    std::vector<std::uint32_t> pending_leaves_;
    std::vector<std::uint8_t> is_leaf_pending_;  // by leaf
    std::vector<std::uint32_t> changed_nodes_;
    std::vector<std::uint8_t> is_node_changed_;
    std::vector<std::uint32_t> changed_leaves_;
    std::vector<std::uint8_t> is_leaf_changed_;
    std::uint64_t version_ = 1;
    std::size_t kept_words_ = 0;
    std::size_t kept_reasons_ = 0;
};

}  // namespace kivo_session
