#include "kivo/session/internal/search/search.h"

#include <algorithm>

namespace kivo_session {

namespace {

bool is_point(const Box& box) {
    return std::all_of(box.begin(), box.end(),
                       [](const Interval& each) { return each.is_point(); });
}

Point low_corner(const Box& box) {
    Point point;
    for (const Interval& each : box) {
        point.push_back(each.first);
    }
    return point;
}

Box box_of(const Point& point) {
    Box box;
    for (const Whole each : point) {
        box.push_back({each, each});
    }
    return box;
}

void append(std::vector<Interval>& intervals, Interval interval) {
    if (!intervals.empty() && intervals.back().last + 1 == interval.first) {
        intervals.back().last = interval.last;
    } else {
        intervals.push_back(interval);
    }
}

}  // namespace

Search::Search(const Engine& engine, const std::vector<Domain>& domains, const Cone& above,
               const Goal& goal, Trial& trial, Budget& budget)
    : domains_(domains),
      goal_(goal),
      trial_(trial),
      budget_(budget),
      spans_(engine, above),
      plan_(spans_.plan(goal.leaves, goal.faultless)),
      evaluations_(trial.evaluations()) {}

bool Search::take_step() {
    // What is worked out for two ends at once counts twice.
    const std::uint64_t now = 2 * spans_.evaluations() + trial_.evaluations();
    const std::uint64_t used = now - evaluations_;
    evaluations_ = now;
    return budget_.take(used);
}

bool Search::is_met_at(const Point& point) {
    std::vector<Change> changes;
    for (std::size_t i = 0; i < domains_.size(); ++i) {
        changes.push_back({domains_[i].object, domains_[i].text(point[i])});
    }
    Engine* changed = trial_.with(changes);
    return changed != nullptr && goal_.is_met(*changed);
}

Outlook Search::look(const Part& part) {
    for (std::size_t i = 0; i < domains_.size(); ++i) {
        spans_.free(domains_[i].object, domains_[i].span(part.box[i].first, part.box[i].last));
    }
    Outlook outlook = spans_.look(*part.plan);
    outlook.may_be_bad = outlook.may_be_bad || !goal_.is_complete;
    return outlook;
}

// What can go wrong no more need not be looked at again. A new plan costs as much as a look.
std::shared_ptr<const Plan> Search::narrowed(const Part& part, const Outlook& outlook) const {
    const std::size_t before = part.plan->leaves.size() + part.plan->faultless.size();
    const std::size_t now = outlook.open_leaves.size() + outlook.open_nodes.size();
    return 2 * now > before ? part.plan : spans_.plan(outlook.open_leaves, outlook.open_nodes);
}

std::pair<Search::Part, Search::Part> Search::halves(const Part& part,
                                                     const Outlook& outlook) const {
    // Texts and states first: they decide more than numbers do.
    std::size_t widest = 0;
    const auto weight = [&](std::size_t i) {
        const Whole size = part.box[i].last - part.box[i].first;
        return std::pair(size > 0, std::pair(!domains_[i].is_numbers, size));
    };
    for (std::size_t i = 1; i < part.box.size(); ++i) {
        widest = weight(i) > weight(widest) ? i : widest;
    }
    const Interval whole = part.box[widest];
    const Whole middle = whole.first + (whole.last - whole.first) / 2;
    std::pair<Part, Part> result{part, part};
    result.first.box[widest].last = middle;
    result.second.box[widest].first = middle + 1;
    result.first.plan = result.second.plan = narrowed(part, outlook);
    return result;
}

void Search::find_all(Interval interval, std::vector<Interval>& met,
                      std::vector<Interval>& undecided) {
    if (interval.first > interval.last) {
        return;
    }
    std::vector<Part> waiting{{{interval}, plan_}};
    while (!waiting.empty()) {
        const Part part = std::move(waiting.back());
        waiting.pop_back();
        if (!take_step()) {
            append(undecided, part.box[0]);
            continue;
        }
        if (is_point(part.box)) {
            if (is_met_at(low_corner(part.box))) {
                append(met, part.box[0]);
            }
            continue;
        }
        const Outlook outlook = look(part);
        if (!outlook.may_be_good) {
            continue;
        }
        if (!outlook.may_be_bad) {
            append(met, part.box[0]);
            continue;
        }
        auto [first, second] = halves(part, outlook);
        waiting.push_back(std::move(second));
        waiting.push_back(std::move(first));
    }
}

UnsignedWhole Search::distance_of(const Box& box) const {
    UnsignedWhole distance = 0;
    for (std::size_t i = 0; i < box.size(); ++i) {
        const Whole current = domains_[i].current;
        if (!domains_[i].is_numbers) {
            distance += box[i].first <= current && current <= box[i].last ? 0 : 1;
        } else if (current < box[i].first) {
            distance += static_cast<UnsignedWhole>(box[i].first - current);
        } else if (current > box[i].last) {
            distance += static_cast<UnsignedWhole>(current - box[i].last);
        }
    }
    return distance;
}

std::optional<Point> Search::find_nearest(const Box& box) {
    const auto is_later = [](const Ranked& left, const Ranked& right) {
        return left.distance != right.distance ? left.distance > right.distance
                                               : left.number > right.number;
    };
    std::vector<Ranked> waiting;
    std::uint64_t number = 0;
    const auto add = [&](Part part) {
        const UnsignedWhole distance = distance_of(part.box);
        waiting.push_back({distance, number++, std::move(part)});
        std::push_heap(waiting.begin(), waiting.end(), is_later);
    };
    if (std::all_of(box.begin(), box.end(),
                    [](const Interval& each) { return each.first <= each.last; })) {
        add({box, plan_});
    }
    while (!waiting.empty() && take_step()) {
        std::pop_heap(waiting.begin(), waiting.end(), is_later);
        const Part part = std::move(waiting.back().part);
        waiting.pop_back();
        const Outlook outlook = look(part);
        if (!outlook.may_be_good) {
            continue;
        }
        if (is_point(part.box)) {
            const Point point = low_corner(part.box);
            if (is_met_at(point)) {
                return point;
            }
            continue;
        }
        auto [first, second] = halves(part, outlook);
        add(std::move(first));
        add(std::move(second));
    }
    return std::nullopt;
}

// Whether the goal is met at the least, greatest or nearest point for certain. Of few points all
// are soon tried.
bool Search::may_corner_do(const Part& part) {
    constexpr double kFewPoints = 32;
    double points = 1;
    for (const Interval& each : part.box) {
        points *= static_cast<double>(each.last - each.first) + 1;
    }
    if (points <= kFewPoints) {
        return false;
    }
    Point least;
    Point greatest;
    Point nearest;
    for (std::size_t i = 0; i < domains_.size(); ++i) {
        least.push_back(part.box[i].first);
        greatest.push_back(part.box[i].last);
        nearest.push_back(std::clamp(domains_[i].current, part.box[i].first, part.box[i].last));
    }
    for (const Point& point : {nearest, least, greatest}) {
        const Outlook outlook = look({box_of(point), part.plan});
        if (outlook.may_be_good && !outlook.may_be_bad) {
            return true;
        }
    }
    return false;
}

Finding Search::can_be_met(const Box& box) {
    std::vector<Part> waiting{{box, plan_}};
    while (!waiting.empty()) {
        if (!take_step()) {
            return Finding::kUnknown;
        }
        const Part part = std::move(waiting.back());
        waiting.pop_back();
        const Outlook outlook = look(part);
        if (!outlook.may_be_good) {
            continue;
        }
        if (!outlook.may_be_bad) {
            return Finding::kYes;
        }
        if (is_point(part.box)) {
            if (is_met_at(low_corner(part.box))) {
                return Finding::kYes;
            }
            continue;
        }
        if (may_corner_do(part)) {
            return Finding::kYes;
        }
        auto [first, second] = halves(part, outlook);
        // The nearer one is looked at first, so it goes last.
        if (distance_of(first.box) <= distance_of(second.box)) {
            std::swap(first, second);
        }
        waiting.push_back(std::move(first));
        waiting.push_back(std::move(second));
    }
    return Finding::kNo;
}

}  // namespace kivo_session
