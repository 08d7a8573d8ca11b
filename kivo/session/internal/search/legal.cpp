#include "kivo/session/internal/search/legal.h"

#include <limits>

#include "kivo/session/internal/search/search.h"
#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/search/verdict_kind.h"

namespace kivo_session {

namespace {

struct LegalGoal : Goal {
    bool is_met(Engine& engine) const override {
        return engine.is_legal() && (request == kNone || !is_told(engine, request));
    }

    std::uint32_t request = kNone;
};

struct OwnGoal : Goal {
    bool is_met(Engine& engine) const override {
        for (const std::uint32_t leaf : leaves) {
            if (is_told(engine, leaf)) {
                return false;
            }
        }
        return true;
    }
};

LegalGoal legal_goal(const Model& model, std::uint32_t object, const Cone& above) {
    LegalGoal goal;
    goal.request = request_leaf(model, object);
    goal.leaves = error_leaves(model, above);
    if (goal.request != kNone) {
        goal.leaves.insert(goal.leaves.begin(), goal.request);
    }
    goal.faultless = valued_objects(model, above);
    return goal;
}

OwnGoal own_goal(const Model& model, std::uint32_t object, const Cone& above) {
    OwnGoal goal;
    for (const std::uint32_t leaf : error_leaves(model, above)) {
        if (model.leaves[leaf].object == object) {
            goal.leaves.push_back(leaf);
        }
    }
    return goal;
}

std::vector<KIVO_RUN> runs_of(const std::vector<Interval>& intervals) {
    std::vector<KIVO_RUN> runs;
    runs.reserve(intervals.size());
    for (const Interval& each : intervals) {
        runs.push_back({to_text(each.first), to_text(each.last)});
    }
    return runs;
}

void tell(const Domain& domain, const std::vector<Interval>& met,
          const std::vector<Interval>& undecided, KIVO_LEGAL_VALUES& result) {
    if (domain.is_numbers) {
        result.runs = runs_of(met);
        result.undecided = runs_of(undecided);
        return;
    }
    for (const Interval& each : met) {
        for (Whole i = each.first; i <= each.last; ++i) {
            if (domain.has_other && i == domain.greatest) {
                result.are_others_legal = true;
            } else {
                result.values.push_back(domain.text(i));
            }
        }
    }
}

// Few values are always tried, one by one if need be.
KIVO_EFFORT enough(const Domain& domain, const KIVO_EFFORT& effort) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    return domain.is_numbers ? effort : KIVO_EFFORT{kMost, kMost, kMost};
}

}  // namespace

KIVO_LEGAL_VALUES legal_values(Engine& engine, std::uint32_t object, KIVO_LEGAL_SCOPE scope,
                               const KIVO_EFFORT& effort) {
    KIVO_LEGAL_VALUES result;
    if (object == kNone || !engine.is_settable(object)) {
        return result;
    }
    result.is_setting = true;
    engine.collect_garbage();
    const bool is_own = scope == KIVO_LEGAL_SCOPE::kOwn;
    const Cone above = cone_above(engine.model(), {object});
    if (!is_own && !wrongs_of(engine).are_in(above)) {
        return result;  // what is wrong elsewhere stays wrong
    }
    const std::vector<Domain> domains{domain_of(engine, object, above)};
    Budget budget(enough(domains[0], effort));
    Trial trial(engine);
    const LegalGoal whole = legal_goal(engine.model(), object, above);
    const OwnGoal own = own_goal(engine.model(), object, above);
    const Goal& goal = is_own ? static_cast<const Goal&>(own) : whole;
    Search search(engine, domains, above, goal, trial, budget);
    if (is_own) {
        trial.pin(object);
        search.pin(object);
    }
    std::vector<Interval> met;
    std::vector<Interval> undecided;
    search.find_all({domains[0].least, domains[0].greatest}, met, undecided);
    tell(domains[0], met, undecided, result);
    return result;
}

}  // namespace kivo_session
