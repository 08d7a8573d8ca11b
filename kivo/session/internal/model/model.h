#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kivo/session/internal/expression/evaluator.h"
#include "kivo/session/internal/expression/names.h"
#include "kivo/session/internal/expression/program.h"
#include "kivo/session/internal/model/description.h"
#include "kivo/session/internal/model/graph.h"

namespace kivo_session {

// What is judged of a configuration. A leaf depends on values; nothing depends on it.
enum class LeafKind : std::uint8_t {
    kNeedsValue,
    kNotInList,
    kOverridden,
    kForcesDisagree,      // of a parameter
    kStatesDisagree,      // of a port
    kPortForcesDisagree,  // of a port
    kRange,               // item: an element; so too the next three
    kValueRule,
    kConstantRange,
    kPortRange,
    kTooWide,
    kPortWidth,
    kPortWidth2d,
    kPortNeedsValue,
    kForcedButConnected,
    kRule,      // item: a rule
    kMessage,   // item: a message
    kVector,    // item: a vector
    kStimulus,  // item: a stimulus
    kMap,       // item: a map
    kPiece,     // item: a piece
};

struct Leaf {
    LeafKind kind;
    std::uint32_t object;  // kNone for the whole function
    std::uint32_t item;
};

// The texts that a leaf judges by, kNone among them for those that are not there.
void own_texts(const Description& description, const Leaf& leaf, std::vector<std::uint32_t>& texts);

struct CompiledText {
    Program program;                    // of an implication: of its condition
    std::uint32_t implication = kNone;  // in Model::implications
    std::uint32_t spoiled = kNone;      // in Model::spoiled: why it cannot be judged at all
};

// The branches of "if A then B else C".
struct Branches {
    Program consequence;
    Program alternative;  // empty without one
};

// A fault of the description: one that spoils a text.
struct TextFault {
    std::uint32_t text;
    Fault fault;
};

// That one member of a cycle reads another, and when: always, while a wizard map is selected, or
// while no selected map presets a value.
struct CycleEdge {
    static constexpr std::uint32_t kAlways = kNone;
    static constexpr std::uint32_t kWithoutPreset = kNone - 1;

    std::uint32_t from;
    std::uint32_t to;
    std::uint32_t when;  // or the position of a map
};

// A description, compiled: nothing in it changes afterwards, so sessions share it.
// Nodes are the values that others depend on: node i is object i (a parameter's value, a port's
// state, a macro), node i + objects is the constant at port i.
class Model final : public Names {
public:
    // REQUIRES: description != nullptr
    explicit Model(std::unique_ptr<const Description> description);

    std::uint32_t object_count() const {
        return static_cast<std::uint32_t>(description->objects.size());
    }
    std::uint32_t constant_node(std::uint32_t port) const { return object_count() + port; }
    bool is_value_macro(std::uint32_t object) const { return macro_arguments[object].empty(); }
    // Whether a text cannot be judged at all; false for kNone.
    bool is_spoiled(std::uint32_t text) const {
        return text != kNone && texts[text].spoiled != kNone;
    }
    // The object of a name, or kNone.
    std::uint32_t find(std::string_view name) const;
    // Whether users may set it; hidden parameters only when the session allows it.
    bool is_setting(std::uint32_t object) const;

    Meaning look_up(std::string_view name) const override;
    bool list_holds(std::uint32_t parameter, std::string_view word) const override;
    std::size_t argument_count(std::uint32_t macro) const override;
    std::string nearest(std::string_view name, NearSearches& searches) const override;
    std::string nearest_in_list(std::uint32_t parameter, std::string_view word,
                                NearSearches& searches) const override;
    NameFacts facts(Meaning meaning) const override;
    Definition definition(std::uint32_t macro) const override;

    std::unique_ptr<const Description> description;
    Words words;
    Code code;
    std::vector<CompiledText> texts;  // like Description::texts
    std::vector<Branches> implications;
    std::vector<std::vector<Reason>> spoiled;
    std::vector<TextFault> faults;         // by text, then by offset
    std::vector<TextFault> unused_faults;  // the same of macros that nothing uses
    std::vector<Program> macros;           // by object
    std::vector<std::vector<std::string_view>> macro_arguments;  // by object
    std::vector<std::vector<Node>> macro_nodes;                  // by object

    std::vector<Leaf> leaves;
    std::vector<std::uint8_t> has_spoiled_text;  // by leaf: whether one of its own is spoiled
    std::uint32_t first_message = 0;  // among the leaves; all messages follow it, and so on
    std::uint32_t first_vector = 0;
    std::uint32_t first_stimulus = 0;
    std::uint32_t first_map = 0;
    std::uint32_t first_piece = 0;
    Adjacency dependents;                 // from a node to nodes
    Adjacency judged_by;                  // from a node to leaves
    Adjacency inputs;                     // from a node to nodes
    Adjacency leaf_inputs;                // from a leaf to nodes
    Components components;                // of the nodes, inputs first
    std::vector<std::uint8_t> is_cyclic;  // by component
    std::vector<CycleEdge> cycle_edges;   // of all cyclic components, sorted by component
    // By object: which macros its own texts must not read as values; an index of macro_flags.
    std::vector<std::uint32_t> expansion;
    std::vector<std::vector<std::uint8_t>> macro_flags;  // by object

private:
    friend class ModelBuilder;

    std::unordered_map<std::string_view, std::uint32_t> numbers_;
};

}  // namespace kivo_session
