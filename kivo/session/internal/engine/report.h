#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/session.h"

namespace kivo_session {

// Puts what an engine found into words.
class Reporter {
public:
    explicit Reporter(Engine& engine)
        : engine_(engine), model_(engine.model()), description_(*model_.description) {}

    std::vector<KIVO_VERDICT> verdicts();
    std::vector<KIVO_FAULT> faults();
    std::vector<KIVO_SHOWN_MESSAGE> messages() const;
    KIVO_SETTING setting(std::uint32_t object) const;
    KIVO_PORT port(std::uint32_t object) const;
    KIVO_FAULT fault(Reason reason) const;
    std::string reason_text(Reason reason) const;
    // A leaf as a verdict, whether or not it is one.
    KIVO_VERDICT verdict(std::uint32_t leaf, bool is_undecided);
    // The text of a rule, with an implication written out.
    std::string rule_text(std::uint32_t text) const;
    // "from 1 to 7 (DEPTH - 1)"
    std::string limits_text(const Element& element);
    // The element that a leaf judges by.
    KIVO_MARK mark_of(std::uint32_t leaf) const;
    // "USED", "CONSTANT:5"
    std::string state_text(std::uint32_t port) const;
    // A value, with quotes around a text, or the state of a port.
    std::string effective_text(std::uint32_t object) const;

private:
    void collect_value_faults();
    void collect_leaf(std::uint32_t leaf);
    void collect_message(std::uint32_t leaf);
    void collect_faults(Value unknown, KIVO_SEVERITY severity);
    // What spoils the texts of a leaf.
    void collect_own_faults(const Leaf& leaf);
    void add_fault(Reason reason, KIVO_SEVERITY severity);
    void add_cycle(std::uint32_t object);
    void add(std::uint32_t leaf, bool is_undecided);
    std::string text_of(std::uint32_t leaf, bool is_undecided);
    std::string value_text(std::uint32_t object) const;
    std::string limit_text(std::uint32_t text);
    std::string name_of(std::uint32_t object) const {
        return object == kNone ? std::string() : std::string(description_.objects[object].name);
    }

    Engine& engine_;
    const Model& model_;
    const Description& description_;
    std::vector<KIVO_VERDICT> verdicts_;
    std::map<Reason, std::size_t> told_;  // faults and where they stand in verdicts_
};

}  // namespace kivo_session
