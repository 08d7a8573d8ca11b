#include "kivo/session/internal/search/conflict.h"

#include <algorithm>

#include "kivo/session/internal/search/search.h"
#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/search/verdict_kind.h"

namespace kivo_session {

namespace {

// The verdict is gone, and the requests that are not free are still granted.
struct ReliefGoal : Goal {
    bool is_met(Engine& engine) const override {
        return !is_told(engine, target) &&
               std::none_of(requests.begin(), requests.end(),
                            [&engine](std::uint32_t leaf) { return is_told(engine, leaf); });
    }

    Target target;
    std::vector<std::uint32_t> requests;
};

class ConflictFinder {
public:
    ConflictFinder(Engine& engine, const Target& target, const KIVO_EFFORT& effort)
        : engine_(engine),
          model_(engine.model()),
          target_(target),
          budget_(effort),
          trial_(engine) {
        everything_.is_node.assign(std::size_t{2} * model_.object_count(), 1);
    }

    KIVO_CONFLICT run() {
        std::vector<std::uint32_t> settings =
            fails_by_request() ? std::vector<std::uint32_t>{model_.leaves[target_.leaf].object}
                               : settings_in(engine_, cone_of(model_, target_));
        kept_ = settings;
        const auto is_given = [this](std::uint32_t object) {
            return engine_.given(object) != nullptr;
        };
        std::stable_partition(settings.begin(), settings.end(),
                              [&](std::uint32_t object) { return !is_given(object); });
        std::size_t left = settings.size();
        for (const std::uint32_t object : settings) {
            if (!is_needed(object, left--)) {
                kept_.erase(std::find(kept_.begin(), kept_.end(), object));
            }
        }
        std::stable_partition(kept_.begin(), kept_.end(), is_given);
        for (const std::uint32_t object : kept_) {
            add_setting(object);
        }
        conflict_.text += conflict_.may_be_smaller ? " (perhaps fewer)" : "";
        return std::move(conflict_);
    }

private:
    void add_setting(std::uint32_t object) {
        const std::string name(model_.description->objects[object].name);
        const std::string value = asked_text_of(engine_, object);
        conflict_.text += (conflict_.settings.empty() ? "" : " ") + name + "=" + value;
        conflict_.settings.push_back({name, value});
    }

    // Whether a request that is granted is judged by itself: nothing else has a part then.
    bool fails_by_request() const {
        if (target_.leaf == kNone) {
            return false;
        }
        const std::uint32_t object = model_.leaves[target_.leaf].object;
        const auto inputs = model_.leaf_inputs.of(target_.leaf);
        const bool reads_itself =
            object != kNone && std::all_of(inputs.begin(), inputs.end(),
                                           [&](std::uint32_t node) { return node == object; });
        if (!reads_itself || engine_.given(object) == nullptr) {
            return false;
        }
        const std::uint32_t request = request_leaf(model_, object);
        return request == kNone || !is_told(engine_, request);
    }

    // Whether there is a way out with this one free as well. Else it stays free.
    bool is_needed(std::uint32_t object, std::size_t searches) {
        if (budget_.is_spent()) {
            conflict_.may_be_smaller = true;
            return true;
        }
        free_.push_back(domain_of(engine_, object, everything_));
        Box box;
        std::vector<std::uint32_t> objects;
        for (const Domain& domain : free_) {
            box.push_back({domain.least, domain.greatest});
            objects.push_back(domain.object);
        }
        const Cone above = cone_above(model_, objects);
        const ReliefGoal goal = goal_without(object);
        Budget part = budget_.share(searches);
        const Finding finding = Search(engine_, free_, above, goal, trial_, part).can_be_met(box);
        budget_.give_back(part, searches);
        if (finding == Finding::kNo) {
            return false;
        }
        conflict_.may_be_smaller = conflict_.may_be_smaller || finding == Finding::kUnknown;
        free_.pop_back();
        return true;
    }

    ReliefGoal goal_without(std::uint32_t object) const {
        ReliefGoal goal;
        goal.target = target_;
        goal.is_complete = target_.leaf != kNone;
        if (goal.is_complete) {
            goal.leaves.push_back(target_.leaf);
        }
        for (const std::uint32_t kept : kept_) {
            const std::uint32_t leaf = request_leaf(model_, kept);
            if (kept != object && leaf != kNone && engine_.given(kept) != nullptr &&
                !is_told(engine_, leaf)) {
                goal.requests.push_back(leaf);
                goal.leaves.push_back(leaf);
            }
        }
        return goal;
    }

    Engine& engine_;
    const Model& model_;
    const Target target_;
    Budget budget_;
    Trial trial_;
    Cone everything_;
    std::vector<std::uint32_t> kept_;
    std::vector<Domain> free_;
    KIVO_CONFLICT conflict_;
};

}  // namespace

KIVO_CONFLICT conflict_of(Engine& engine, const KIVO_SUBJECT& subject, const KIVO_EFFORT& effort) {
    engine.collect_garbage();
    const Target target = target_of(engine.model(), subject);
    if (!target.is_verdict() || !is_told(engine, target)) {
        return {};
    }
    return ConflictFinder(engine, target, effort).run();
}

}  // namespace kivo_session
