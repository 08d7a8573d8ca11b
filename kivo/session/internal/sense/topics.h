#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>

#include "kivo/session/internal/sense/asker.h"
#include "kivo/session/sense.h"

namespace kivo_session {

// One judgement of a description: who is asked, and what was found so far.
struct SenseRun {
    // About a text of the description.
    KIVO_SENSE_FINDING& add_text(const char* id, std::uint32_t text, std::string says);
    // About a declaration, or an element that has no text of its own.
    KIVO_SENSE_FINDING& add_object(const char* id, std::uint32_t object, std::string says);
    KIVO_SENSE_FINDING& add_mark(const char* id, std::uint32_t object, KIVO_MARK mark,
                                 std::string says);
    // About a rule element: its condition, else a value of it.
    KIVO_SENSE_FINDING& add_element(const char* id, const Element& element, std::string says);
    // "FORCE_VALUE of DEPTH"
    std::string name_of(const Element& element) const;
    std::string name_of(std::uint32_t object) const;
    // What was set in the configuration that was found last: " with A=1 B=2".
    std::string found_text();

    Asker& asker;
    KIVO_SENSE& result;
    std::unordered_set<std::uint32_t> told_elements;  // of which no more need be told
    std::unordered_set<std::uint32_t> told_leaves;
};

// A text without a condition needs none.
void want(std::vector<Wanted>& wanted, WantedKind kind, std::uint32_t item);

// The topics, in the order in which they are judged.
void judge_elements(SenseRun& run);      // dead-rule, dead-in-legal
void judge_rules(SenseRun& run);         // impossible-rule
void judge_messages(SenseRun& run);      // unreachable-message
void judge_applications(SenseRun& run);  // dead-rule, dead-in-legal: vectors, texts and maps
void judge_ranges(SenseRun& run);        // ranges-exclude
void judge_forces(SenseRun& run);        // forces-disagree
void judge_ports(SenseRun& run);         // port-width-never, range-empty
void judge_defaults(SenseRun& run);      // default-breaks-rule, default-never-used
void judge_values(SenseRun& run);        // value-never-legal
void judge_cycles(SenseRun& run);        // force-cycle
void judge_uses(SenseRun& run);          // unused-parameter, unused-macro
void judge_always(SenseRun& run);        // always-condition

}  // namespace kivo_session
