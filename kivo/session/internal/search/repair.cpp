#include "kivo/session/internal/search/repair.h"

#include <algorithm>
#include <tuple>

#include "kivo/session/internal/search/search.h"
#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/search/verdict_kind.h"

namespace kivo_session {

namespace {

// The verdict is gone, the configuration is legal, what is changed takes effect, and nothing that
// was granted is overridden.
struct RepairGoal : Goal {
    bool is_met(Engine& engine) const override {
        return engine.is_legal() && !is_told(engine, target) &&
               std::none_of(requests.begin(), requests.end(),
                            [&engine](std::uint32_t leaf) { return is_told(engine, leaf); });
    }

    Target target;
    std::vector<std::uint32_t> requests;
};

struct Candidate {
    std::vector<Change> changes;
    std::size_t given = 0;  // settings among them that are given
    UnsignedWhole distance = 0;
};

class RepairFinder {
public:
    RepairFinder(Engine& engine, const Target& target, const KIVO_EFFORT& effort)
        : engine_(engine),
          model_(engine.model()),
          target_(target),
          budget_(effort),
          trial_(engine),
          wrongs_(wrongs_of(engine)) {}

    std::vector<KIVO_REPAIR> run() {
        const std::vector<std::uint32_t> settings = settings_in(engine_, cone_of(model_, target_));
        std::vector<std::uint32_t> able = settings;
        able.erase(std::remove_if(able.begin(), able.end(),
                                  [this](std::uint32_t object) { return !can_reach({object}); }),
                   able.end());
        std::size_t left = able.size();
        for (const std::uint32_t object : able) {
            try_settings({object}, left--);
        }
        if (found_.empty()) {
            try_pairs(settings);
        }
        return told();
    }

    // Nothing was left out for want of effort.
    bool is_complete() const { return is_complete_; }

private:
    void try_pairs(const std::vector<std::uint32_t>& settings) {
        std::size_t left = settings.size();
        for (const std::uint32_t first : settings) {
            const std::vector<std::uint32_t> others = partners_of(first);
            std::size_t pairs = left-- * others.size();
            for (const std::uint32_t second : others) {
                const bool is_known =
                    second < first && std::binary_search(settings.begin(), settings.end(), second);
                if (budget_.is_spent()) {
                    is_complete_ = false;
                } else if (first != second && !is_known) {
                    try_settings({std::min(first, second), std::max(first, second)}, pairs);
                }
                --pairs;
            }
        }
    }

    // The settings that can mend what the first one does not reach, or else what it breaks.
    std::vector<std::uint32_t> partners_of(std::uint32_t first) const {
        const Cone above = cone_above(model_, {first});
        for (const std::uint32_t leaf : wrongs_.leaves) {
            if (!std::binary_search(above.leaves.begin(), above.leaves.end(), leaf)) {
                return settings_in(engine_, cone_below(model_, {}, {leaf}));
            }
        }
        std::vector<std::uint32_t> nodes = cone_of(model_, target_).nodes;
        nodes.insert(nodes.end(), wrongs_.nodes.begin(), wrongs_.nodes.end());
        return settings_in(engine_, cone_below(model_, nodes, error_leaves(model_, above)));
    }

    // Whether changing them can mend all that is wrong. What that costs is counted too.
    bool can_reach(const std::vector<std::uint32_t>& objects) {
        const Cone above = cone_above(model_, objects);
        if (!budget_.take(above.leaves.size() + above.nodes.size())) {
            is_complete_ = false;
            return false;
        }
        return wrongs_.are_in(above);
    }

    void try_settings(const std::vector<std::uint32_t>& objects, std::size_t searches) {
        if (!can_reach(objects)) {
            return;
        }
        const Cone above = cone_above(model_, objects);
        std::vector<Domain> domains;
        domains.reserve(objects.size());
        for (const std::uint32_t object : objects) {
            domains.push_back(domain_of(engine_, object, above));
        }
        const RepairGoal goal = goal_for(objects, above);
        Budget part = budget_.share(searches);
        Search search(engine_, domains, above, goal, trial_, part);
        for (const Box& box : boxes_of(domains)) {
            if (const std::optional<Point> point = search.find_nearest(box)) {
                add(domains, *point);
            }
        }
        is_complete_ = is_complete_ && !part.is_spent();
        budget_.give_back(part, searches);
    }

    // Every combination of the values of lists, and the numbers below and above the current one.
    static std::vector<Box> boxes_of(const std::vector<Domain>& domains) {
        std::vector<Box> boxes{{}};
        for (const Domain& domain : domains) {
            std::vector<Interval> intervals;
            if (domain.is_numbers) {
                intervals.push_back({domain.least, std::min(domain.greatest, domain.current - 1)});
                intervals.push_back({std::max(domain.least, domain.current + 1), domain.greatest});
            } else {
                const Whole last = domain.greatest - (domain.has_other ? 1 : 0);
                for (Whole i = domain.least; i <= last; ++i) {
                    intervals.push_back({i, i == domain.current ? i - 1 : i});
                }
            }
            std::vector<Box> longer;
            for (const Box& box : boxes) {
                for (const Interval& interval : intervals) {
                    longer.push_back(box);
                    longer.back().push_back(interval);
                }
            }
            boxes = std::move(longer);
        }
        return boxes;
    }

    RepairGoal goal_for(const std::vector<std::uint32_t>& objects, const Cone& above) const {
        RepairGoal goal;
        goal.target = target_;
        if (target_.leaf != kNone) {
            goal.leaves.push_back(target_.leaf);
        }
        for (const std::uint32_t leaf : above.leaves) {
            const std::uint32_t object = model_.leaves[leaf].object;
            const bool is_changed =
                std::find(objects.begin(), objects.end(), object) != objects.end();
            if (model_.leaves[leaf].kind == LeafKind::kOverridden &&
                (is_changed || (engine_.given(object) != nullptr && !is_told(engine_, leaf)))) {
                goal.requests.push_back(leaf);
            }
        }
        goal.leaves.insert(goal.leaves.end(), goal.requests.begin(), goal.requests.end());
        // What fails now is the likeliest to fail still, and then the rest need not be looked at.
        std::vector<std::uint32_t> errors = error_leaves(model_, above);
        std::stable_partition(errors.begin(), errors.end(),
                              [this](std::uint32_t leaf) { return is_told(engine_, leaf); });
        goal.leaves.insert(goal.leaves.end(), errors.begin(), errors.end());
        goal.faultless = valued_objects(model_, above);
        return goal;
    }

    void add(const std::vector<Domain>& domains, const Point& point) {
        Candidate candidate;
        for (std::size_t i = 0; i < domains.size(); ++i) {
            const Domain& domain = domains[i];
            candidate.changes.push_back({domain.object, domain.text(point[i])});
            candidate.given += engine_.given(domain.object) != nullptr ? 1 : 0;
            const Whole distance = point[i] - domain.current;
            candidate.distance +=
                domain.is_numbers ? static_cast<UnsignedWhole>(distance < 0 ? -distance : distance)
                                  : 1;
        }
        found_.push_back(std::move(candidate));
    }

    std::vector<KIVO_REPAIR> told() {
        std::stable_sort(
            found_.begin(), found_.end(), [](const Candidate& left, const Candidate& right) {
                return std::tie(left.given, left.distance) < std::tie(right.given, right.distance);
            });
        std::vector<KIVO_REPAIR> repairs;
        for (const Candidate& candidate : found_) {
            KIVO_REPAIR repair;
            for (const Change& change : candidate.changes) {
                const std::string name(model_.description->objects[change.object].name);
                repair.text += (repair.text.empty() ? "" : " ") + name + "=" + change.text;
                repair.set.push_back({name, change.text});
            }
            repairs.push_back(std::move(repair));
        }
        return repairs;
    }

    Engine& engine_;
    const Model& model_;
    const Target target_;
    Budget budget_;
    Trial trial_;
    const Wrongs wrongs_;
    std::vector<Candidate> found_;
    bool is_complete_ = true;
};

}  // namespace

std::vector<KIVO_REPAIR> repairs_of(Engine& engine, const KIVO_SUBJECT& subject,
                                    const KIVO_EFFORT& effort, bool& is_complete) {
    is_complete = true;
    engine.collect_garbage();
    const Target target = target_of(engine.model(), subject);
    if (!target.is_verdict() || !is_told(engine, target)) {
        return {};
    }
    RepairFinder finder(engine, target, effort);
    std::vector<KIVO_REPAIR> found = finder.run();
    is_complete = finder.is_complete();
    return found;
}

}  // namespace kivo_session
