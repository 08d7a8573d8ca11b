#pragma once

#include <string>
#include <vector>

#include "kivo/session/internal/model/model.h"

namespace kivo_session {

// Compiles a description into a model, in the steps of run().
class ModelBuilder {
public:
    explicit ModelBuilder(Model& model);

    void run();

private:
    void compile_macros();
    void find_macro_recursion();
    void spoil_macros();
    void compile_texts();
    void compile_text(std::uint32_t text);
    void compile_expression(std::uint32_t text);
    void compile_text_value(std::uint32_t text);
    void compile_state(std::uint32_t text);
    void compile_implication(std::uint32_t text);
    void set_constant(std::uint32_t text, Value value);
    void set_name(std::uint32_t text, Meaning meaning);
    void spoil(std::uint32_t text, std::vector<Fault> faults);
    // Spoils a text by the macros that it uses, when they are spoiled.
    void spoil_by_macros(std::uint32_t text);
    void list_macro_faults();

    void make_leaves();
    void add_leaf(LeafKind kind, std::uint32_t object, std::uint32_t item = kNone);
    void make_parameter_leaves(std::uint32_t object);
    void make_port_leaves(std::uint32_t object);
    std::uint32_t count_conditional(std::uint32_t object, ElementKind kind) const;
    bool has_element(std::uint32_t object, ElementKind kind) const;

    void connect_nodes();
    void connect_leaves();
    // A text that a node is made from, and when: see CycleEdge.
    struct Source {
        std::uint32_t text;
        std::uint32_t when;
    };
    // What evaluating the nodes reads.
    void collect_edges(std::vector<CycleEdge>& edges);
    void collect_node_edges(std::uint32_t node, std::vector<CycleEdge>& edges);
    void collect_texts(std::uint32_t node, std::vector<Source>& texts) const;
    void keep_cycle_edges(const std::vector<CycleEdge>& edges);
    void collect_own_use(std::uint32_t owner, const Use& use, std::vector<std::uint32_t>& inputs);
    void collect_use(std::uint32_t owner, const Use& use, std::vector<std::uint32_t>& inputs);
    void collect_leaf_inputs(const Leaf& leaf, std::vector<std::uint32_t>& inputs) const;
    std::uint32_t node_of(const Use& use) const;
    // Finds macros that mention an object whose own texts use them; true when there are any.
    bool find_own_mentions();
    void expand_component_macros();
    std::uint32_t flags_of(std::uint32_t object);
    void find_components(const std::vector<CycleEdge>& edges);

    const SourceText& source(std::uint32_t text) const { return description_.texts[text]; }
    const Object& object(std::uint32_t index) const { return description_.objects[index]; }

    Model& model_;
    const Description& description_;
    Expression expression_;
    Resolution resolution_;
    NearSearches searches_;
    std::vector<Use> uses_;
    std::vector<Range> text_uses_;                    // by text, in uses_
    std::vector<std::vector<Fault>> macro_faults_;    // by object
    std::vector<std::vector<Reason>> macro_reasons_;  // by object
    std::vector<std::uint8_t> is_macro_used_;         // by object
    std::vector<Source> scratch_;
    std::vector<std::uint32_t> inputs_;
};

}  // namespace kivo_session
