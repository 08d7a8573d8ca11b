#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "kivo/session/internal/engine/leaf_rows.h"
#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

constexpr std::size_t kMostRanges = 8;  // of one parameter, that are compared with one another

class Ranges {
public:
    explicit Ranges(SenseRun& run) : run_(run), model_(run.asker.model()) {}

    void run() {
        for (const Object& object : run_.asker.description().objects) {
            if (object.kind == ObjectKind::kInteger || object.kind == ObjectKind::kHidden) {
                pass_object(object);
            }
        }
    }

private:
    const Element& element(std::uint32_t number) const {
        return run_.asker.description().elements[number];
    }

    bool is_judgeable(const Element& each) const {
        return !model_.is_spoiled(each.first) && !model_.is_spoiled(each.second) &&
               !model_.is_spoiled(each.condition);
    }

    void pass_object(const Object& object) {
        std::vector<std::uint32_t> ranges;
        std::vector<std::uint32_t> forces;
        for (std::uint32_t i = object.elements.begin; i < object.elements.end; ++i) {
            const Element& each = element(i);
            if (is_judgeable(each) && each.kind == ElementKind::kRange) {
                ranges.push_back(i);
            } else if (is_judgeable(each) && each.kind == ElementKind::kForce &&
                       each.first != kNone) {
                forces.push_back(i);
            }
        }
        for (std::vector<std::uint32_t>* numbers : {&ranges, &forces}) {
            if (numbers->size() > kMostRanges) {
                run_.asker.count_undecided();
                numbers->resize(kMostRanges);
            }
        }
        ranges.erase(std::remove_if(ranges.begin(), ranges.end(),
                                    [this](std::uint32_t each) { return is_empty(each); }),
                     ranges.end());
        for (std::size_t i = 0; i < ranges.size(); ++i) {
            for (std::size_t j = i + 1; j < ranges.size(); ++j) {
                pass_pair(ranges[i], ranges[j]);
            }
            pass_forces(forces, ranges[i]);
        }
    }

    // The map in which both count; no value when there is none.
    static std::optional<std::uint32_t> common_map(const Element& left, const Element& right) {
        if (left.map != kNone && right.map != kNone && left.map != right.map) {
            return std::nullopt;
        }
        return left.map != kNone ? left.map : right.map;
    }

    // Whether something that can be so is never so together with what is wanted besides.
    bool is_never(const std::vector<Wanted>& active, std::vector<Wanted> wanted,
                  std::uint32_t map) {
        wanted.insert(wanted.begin(), active.begin(), active.end());
        Question question;
        question.wanted = std::move(wanted);
        if (run_.asker.ask(question, map) != Finding::kNo) {
            return false;
        }
        question.wanted = active;
        return run_.asker.ask(question, map) == Finding::kYes;
    }

    static void want_at_most(std::vector<Wanted>& wanted, std::uint32_t least,
                             std::uint32_t greatest) {
        if (least != kNone && greatest != kNone) {
            wanted.push_back({WantedKind::kAtMost, least, greatest, {}, {}});
        }
    }

    bool is_empty(std::uint32_t number) {
        const Element& range = element(number);
        std::vector<Wanted> active;
        want(active, WantedKind::kHolds, range.condition);
        std::vector<Wanted> wanted;
        want_at_most(wanted, range.second, range.first);
        if (wanted.empty() || !is_never(active, std::move(wanted), range.map)) {
            return false;
        }
        run_.add_text(
            "ranges-exclude", range.second,
            "no value is ever in the " + run_.name_of(range) + ": its MIN is always above its MAX");
        return true;
    }

    void pass_pair(std::uint32_t first, std::uint32_t second) {
        const Element& left = element(first);
        const Element& right = element(second);
        const std::optional<std::uint32_t> map = common_map(left, right);
        std::vector<Wanted> active;
        want(active, WantedKind::kHolds, left.condition);
        want(active, WantedKind::kHolds, right.condition);
        std::vector<Wanted> wanted;
        want_at_most(wanted, left.second, right.first);
        want_at_most(wanted, right.second, left.first);
        if (map && !wanted.empty() && is_never(active, std::move(wanted), *map)) {
            KIVO_SENSE_FINDING& finding =
                run_.add_element("ranges-exclude", right,
                                 "two ranges of " + run_.name_of(right.object) +
                                     " that can count at once never have a value in common");
            finding.notes.push_back({"the other range", left.mark});
        }
    }

    std::uint32_t leaf_of(std::uint32_t range) const {
        for (const std::uint32_t leaf : model_.judged_by.of(element(range).object)) {
            if (model_.leaves[leaf].kind == LeafKind::kRange && model_.leaves[leaf].item == range) {
                return leaf;
            }
        }
        return kNone;
    }

    // A force counts while no earlier one does.
    void pass_forces(const std::vector<std::uint32_t>& forces, std::uint32_t range) {
        std::vector<Wanted> active;
        want(active, WantedKind::kHolds, element(range).condition);
        for (const std::uint32_t number : forces) {
            const Element& force = element(number);
            const std::optional<std::uint32_t> map = common_map(force, element(range));
            std::vector<Wanted> decides = active;
            want(decides, WantedKind::kHolds, force.condition);
            std::vector<Wanted> wanted;
            want(wanted, WantedKind::kGood, leaf_of(range));
            if (map && !wanted.empty() && is_never(decides, std::move(wanted), *map)) {
                KIVO_SENSE_FINDING& finding =
                    run_.add_text("ranges-exclude", force.first,
                                  "the value that the " + run_.name_of(force) +
                                      " gives is never in a range that counts at the same time");
                finding.notes.push_back({"the range", element(range).mark});
                run_.told_elements.insert(number);
            }
            if (force.condition == kNone || force.second != kNone) {
                return;
            }
            want(active, WantedKind::kFails, force.condition);
        }
    }

    SenseRun& run_;
    const Model& model_;
};

ElementKind element_kind(LeafKind kind) {
    return kind == LeafKind::kForcesDisagree   ? ElementKind::kForce
           : kind == LeafKind::kStatesDisagree ? ElementKind::kState
                                               : ElementKind::kPortForce;
}

}  // namespace

void judge_ranges(SenseRun& run) {
    Ranges(run).run();
}

void judge_forces(SenseRun& run) {
    const Model& model = run.asker.model();
    for (std::uint32_t number = 0; number < model.leaves.size(); ++number) {
        const Leaf& leaf = model.leaves[number];
        if (!is_disagreement(leaf.kind)) {
            continue;
        }
        Question question;
        want(question.wanted, WantedKind::kTold, number);
        question.is_legal = question.is_certain = true;
        question.except = number;
        Engine* engine = run.asker.find(question);
        if (engine == nullptr || engine->culprit(number) == kNone) {
            continue;
        }
        const Element& second = run.asker.description().elements[engine->culprit(number)];
        const Engine::Forcing first = engine->forcing(leaf.object, element_kind(leaf.kind));
        KIVO_SENSE_FINDING& finding = run.add_element(
            "forces-disagree", second,
            std::string(leaf.kind == LeafKind::kStatesDisagree ? "two rules give "
                                                               : "two rules force ") +
                (leaf.kind == LeafKind::kStatesDisagree
                     ? run.name_of(leaf.object) + " different states"
                     : "different values on " + run.name_of(leaf.object)) +
                run.found_text());
        if (first.element != kNone) {
            finding.notes.push_back(
                {"this one counts", run.asker.description().elements[first.element].mark});
        }
    }
}

}  // namespace kivo_session
