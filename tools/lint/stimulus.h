#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "tools/description/object_names.h"
#include "tools/lint/lint.h"
#include "tools/lint/port_range.h"
#include "tools/lint/stimulus_command.h"

// What the sources of this room share.

// The ports of a description, also those whose declarations the library refuses.
class PortNames {
public:
    // REQUIRES: the lint outlives this
    explicit PortNames(const Lint& lint);

    // A description without any port is a part of one, where every name can be right.
    bool has(std::string_view name) const { return declared_.empty() || declared_.count(name) > 0; }
    std::string nearest(std::string_view name) const { return names_.nearest(name); }
    const PortRange& range(const std::string& name) const;

private:
    const Lint& lint_;
    std::set<std::string_view> declared_;
    ObjectNames names_;
    mutable std::map<std::string, PortRange> ranges_;  // of those that were asked for
};

// The vectors that apply with everything at its default.
class VectorsByDefault {
public:
    explicit VectorsByDefault(const Lint& lint);

    // Whether the command or display format is of one of them, whatever else is set.
    bool has(const Spot& command) const;

private:
    std::set<std::string, std::less<>> names_;
};

// How wide a port is.
struct PortWidth {
    std::size_t bits;
    bool is_default;  // it depends on what is set

    // "the 2 bits of port "select""
    std::string of_port(std::string_view port) const;
};

// The command or display format of an element, with what is known around it.
struct CommandSpot {
    Lint& lint;
    const Spot& spot;
    const PortNames& ports;
    const VectorsByDefault& vectors;

    std::string_view source() const { return spot.element.text.text; }

    // Nothing where the command may apply to other configurations than the port has its width in.
    std::optional<PortWidth> width_of(std::string_view port) const;

    // Posts a warning about a part of the element's text.
    template <class... Argument>
    Finding& post_at(const LintRow& row, std::size_t begin, std::size_t size,
                     const Argument&... arguments) const {
        return lint.post(row, spot.element,
                         spot.document.place(spot.element.text, begin, begin + size), arguments...);
    }

    // The same for a part of another text of that length.
    template <class... Argument>
    Finding& post(const LintRow& row, std::string_view whole, std::string_view part,
                  const Argument&... arguments) const {
        return post_at(row, static_cast<std::size_t>(part.data() - whole.data()), part.size(),
                       arguments...);
    }
};

// White space that keeps a command or a part of it from being read.
void check_blanks(const CommandSpot& at);

// The times of a command, their order, and its repeats and cancels.
void check_times(const CommandSpot& at, const StimulusCommand& command);

// The values of a command, and its radix option.
void check_values(const CommandSpot& at, const StimulusCommand& command);

// A name that must be that of a port.
void check_port(const CommandSpot& at, std::string_view whole, std::string_view name);

// Whether the description of fixed point is one, as in "(s4.12)"; posts a warning of what is none.
bool check_fixed_point(const CommandSpot& at, std::string_view whole, std::string_view option);

// The bits of a description that is one.
std::optional<std::size_t> fixed_point_bits(std::string_view option);

// A display format that is read.
void check_display(const CommandSpot& at);
