#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kivo/session/export.h"
#include "kivo/session/session.h"
#include "kivo/toolkit/place.h"

// A place that belongs to a finding, and why.
struct KIVO_SENSE_NOTE {
    std::string text;
    KIVO_MARK mark;
};

// Something in a description that can be read and does not make sense.
struct KIVO_SENSE_FINDING {
    std::string id;  // "dead-rule", ...: stable; see the handbook
    std::string text;
    std::string object;     // whose it is; empty for the function
    std::string element;    // "FORCE_RANGE", "RULE", ...
    std::string attribute;  // "IF", "VALUE", ...; empty for the element itself
    std::string source;     // the text that it is about; empty for the element itself
    KIVO_MARK mark;         // the element; see KIVO_INFO::get_place
    std::vector<KIVO_SENSE_NOTE> notes;
};

struct KIVO_SENSE {
    std::vector<KIVO_SENSE_FINDING> findings;  // in the order of their kinds, then of the store
    std::size_t undecided = 0;                 // questions that the effort did not suffice for
};

// Judges the description of a session: rules that never apply, defaults that break rules, values
// that no legal configuration has. What is set in the session does not matter. Parameters take the
// items of their list, or the whole numbers within those of their ranges that have fixed limits
// and no condition; texts without a list whatever they are compared with, and one other. Nothing
// is told that is not certain. The steps of "effort" bound each question, its evaluations and its
// time all of them; no question takes more than a sixty-fourth of the evaluations. Bad input never
// throws; memory exhaustion throws std::bad_alloc.
KIVO_SESSION_API KIVO_SENSE kivo_judge_sense(const KIVO_SESSION& session,
                                             const KIVO_EFFORT& effort = {4000000, 2000, 2000});
