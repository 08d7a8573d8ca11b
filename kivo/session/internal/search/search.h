#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "kivo/session/internal/search/budget.h"
#include "kivo/session/internal/search/domain.h"
#include "kivo/session/internal/search/span_engine.h"
#include "kivo/session/internal/search/trial.h"

namespace kivo_session {

// A number or position for each of several settings, from "first" to "last".
struct Interval {
    bool is_point() const { return first == last; }

    Whole first;
    Whole last;
};
using Box = std::vector<Interval>;  // one for each domain
using Point = std::vector<Whole>;

// What is wanted of a configuration: for points exactly, for boxes as far as can be said.
struct Goal {
    std::vector<std::uint32_t> leaves;     // that must not be told of
    std::vector<std::uint32_t> faultless;  // objects whose values must not be wrong
    bool is_complete = true;               // these are all that is wanted
    // Decides of one configuration.
    virtual bool is_met(Engine& engine) const = 0;
    virtual ~Goal() = default;
};

enum class Finding { kNo, kYes, kUnknown };

// Looks for values of some settings with which a goal is met; all other settings stay as they are.
class Search {
public:
    // REQUIRES: "engine" does not change while this lives; "domains" and "above", the cone of their
    // settings, too
    Search(const Engine& engine, const std::vector<Domain>& domains, const Cone& above,
           const Goal& goal, Trial& trial, Budget& budget);

    // As though no rule forced a value on the setting.
    void pin(std::uint32_t object) { spans_.pin(object); }

    // Of one setting: the numbers with which the goal is met, and those that were not decided.
    // Both sorted.
    void find_all(Interval interval, std::vector<Interval>& met, std::vector<Interval>& undecided);
    // The point of a box that is nearest to the current values; nothing when there is none or the
    // budget is spent.
    std::optional<Point> find_nearest(const Box& box);
    // Whether there is any point at all.
    Finding can_be_met(const Box& box);

private:
    struct Part {
        Box box;
        std::shared_ptr<const Plan> plan;
    };
    struct Ranked {
        UnsignedWhole distance;
        std::uint64_t number;
        Part part;
    };

    bool is_met_at(const Point& point);
    Outlook look(const Part& part);
    // The parts of a part; which of its two halves comes first is the caller's affair.
    std::pair<Part, Part> halves(const Part& part, const Outlook& outlook) const;
    std::shared_ptr<const Plan> narrowed(const Part& part, const Outlook& outlook) const;
    UnsignedWhole distance_of(const Box& box) const;
    bool may_corner_do(const Part& part);
    bool take_step();

    const std::vector<Domain>& domains_;
    const Goal& goal_;
    Trial& trial_;
    Budget& budget_;
    SpanEngine spans_;
    std::shared_ptr<const Plan> plan_;
    std::uint64_t evaluations_;  // at the last step
};

}  // namespace kivo_session
