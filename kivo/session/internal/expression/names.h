#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/session/internal/expression/expression.h"

namespace kivo_session {

enum class MeaningKind : std::uint8_t {
    kNothing,
    kParameter,  // parameters and hidden parameters
    kPort,
    kMacro,
};

// What a name of the description stands for. The number is that of whoever answers.
struct Meaning {
    MeaningKind kind = MeaningKind::kNothing;
    std::uint32_t index = 0;
};

// What is known of a name's values before any are set.
struct NameFacts {
    bool is_integer = false;
    bool is_text = false;
    bool may_be_negative = true;
    bool has_list = false;
};

// How many near names may still be looked for. Each search looks at every word: a description that
// is wrong everywhere must not cost the square of its size.
class NearSearches {
public:
    explicit NearSearches(std::uint32_t most = 100) : left_(most) {}

    // Whether a word may be looked for; if so, it counts.
    bool take(std::string_view word);

private:
    std::uint32_t left_;
};

// What the names of a description stand for. The rule language asks it and knows nothing else of
// descriptions.
class Names {
public:
    virtual ~Names() = default;

    virtual Meaning look_up(std::string_view name) const = 0;
    // Whether the list of a STRING parameter holds the word.
    virtual bool list_holds(std::uint32_t parameter, std::string_view word) const = 0;
    virtual std::size_t argument_count(std::uint32_t macro) const = 0;
    // The known name that was probably meant; empty when there is none, or no search is left.
    virtual std::string nearest(std::string_view name, NearSearches& searches) const = 0;
    // The same for the items of the parameter's list.
    virtual std::string nearest_in_list(std::uint32_t parameter, std::string_view word,
                                        NearSearches& searches) const = 0;
    virtual NameFacts facts(Meaning meaning) const = 0;
    // The definition of a macro, for finding where textual expansion reads differently. Null when
    // it is no expression.
    struct Definition {
        std::string_view text;
        const std::vector<Node>* nodes;
        std::vector<std::string_view> arguments;
    };
    virtual Definition definition(std::uint32_t macro) const = 0;
};

enum class BindingKind : std::uint8_t {
    kNone,  // no name, or one with a fault
    kArgument,
    kParameter,
    kPort,
    kMacro,
    kTruth,     // TRUE or FALSE: index 1 or 0
    kWord,      // ON, OFF, or a bare word: the text itself
    kFunction,  // index: a Function
};

// What a name stands for in one text.
struct Binding {
    BindingKind kind = BindingKind::kNone;
    std::uint32_t index = 0;
    bool is_bare_word = false;
};

struct Resolution {
    std::vector<Binding> bindings;  // one for each node
    std::vector<Fault> faults;      // unknown names and wrong numbers of arguments, in text order
};

inline constexpr std::uint32_t kNoNode = 0xFFFFFFFF;

// The positions of the nodes above; kNoNode above the root.
void parents_of(const std::vector<Node>& nodes, std::vector<std::uint32_t>& parents);

// Finds what the names of a parsed text stand for; "arguments" are those of the macro whose
// definition it is. "searches" are for the texts of the faults. "resolution" is filled anew; its
// memory is used again.
void resolve(std::string_view text, const std::vector<Node>& nodes, const Names& names,
             const std::vector<std::string_view>& arguments, NearSearches& searches,
             Resolution& resolution);

// The names of an argument list "level, mark".
std::vector<std::string_view> split_arguments(std::string_view arguments);

}  // namespace kivo_session
