#include <algorithm>
#include <utility>

#include "kivo/session/internal/search/verdict_kind.h"
#include "kivo/session/internal/sense/inputs.h"
#include "kivo/session/internal/sense/space.h"

namespace kivo_session {

namespace {

constexpr double kFewPoints = 8;
constexpr std::size_t kMostCuts = 6;      // of one setting, that are tried
constexpr std::size_t kMostCompared = 8;  // settings of which the best cut is looked for

double points_of(const Box& box) {
    double points = 1;
    for (const Interval& each : box) {
        points *= static_cast<double>(each.last - each.first) + 1;
    }
    return points;
}

// Where to cut an interval: large ones by the size of numbers, since small numbers decide more.
Whole middle_of(const Interval& whole) {
    constexpr Whole kLarge = 1 << 16;
    const Whole size = whole.last - whole.first;
    if (size < kLarge) {
        return whole.first + size / 2;
    }
    if (whole.first < 0 && whole.last > 0) {
        return -1;
    }
    Whole step = kLarge;
    while (step < size / step) {
        step *= 16;
    }
    step = std::min(step, size / 2);
    return whole.first < 0 ? whole.last - step - 1 : whole.first + step;
}

}  // namespace

bool Space::may_be_met(const Question& question, const Scene& scene, const Part& part,
                       Outlook& outlook) {
    for (std::size_t i = 0; i < scene.settings.size(); ++i) {
        const std::uint32_t object = scene.settings[i];
        spans_.free(object, axis(object).span(part.box[i].first, part.box[i].last));
    }
    outlook = spans_.look(*part.plan);
    return outlook.may_be_good &&
           std::all_of(question.wanted.begin(), question.wanted.end(),
                       [this](const Wanted& wanted) { return spans_.may_be(wanted); });
}

std::vector<Change> Space::changes_of(const Scene& scene, const Point& point) const {
    std::vector<Change> changes;
    for (std::size_t i = 0; i < point.size(); ++i) {
        const Domain& domain = axis(scene.settings[i]).domain;
        changes.push_back({domain.object, domain.text(point[i])});
    }
    return changes;
}

Space::Verdict Space::try_point(const Question& question, const Scene& scene, const Point& point) {
    Engine* engine = trial_.with(changes_of(scene, point));
    if (engine == nullptr) {
        return Verdict::kUnsure;
    }
    const bool is_met =
        std::all_of(question.wanted.begin(), question.wanted.end(),
                    [&](const Wanted& wanted) {
                        return kivo_session::is_met(*engine, wanted, question.is_certain);
                    }) &&
        std::none_of(scene.leaves.begin(), scene.leaves.end(),
                     [&](std::uint32_t leaf) { return is_told(*engine, leaf); }) &&
        std::none_of(scene.above.begin(), scene.above.end(),
                     [&](std::uint32_t node) { return engine->is_wrong(node); });
    if (is_met) {
        return Verdict::kMet;
    }
    bool is_exact = scene.is_closed;
    for (std::size_t i = 0; i < point.size(); ++i) {
        is_exact = is_exact && axis(scene.settings[i]).is_exact(point[i]);
    }
    return is_exact ? Verdict::kNotMet : Verdict::kUnsure;
}

bool Space::try_all(const Question& question, const Scene& scene, const Part& part, bool& is_unsure,
                    Point& met) {
    Point point;
    for (const Interval& each : part.box) {
        point.push_back(each.first);
    }
    for (std::size_t moved = 0; moved < point.size() || point.empty();) {
        const Verdict verdict = try_point(question, scene, point);
        if (verdict == Verdict::kMet) {
            met = point;
            return true;
        }
        if (verdict == Verdict::kUnsure && !is_unsure) {
            Box box;
            for (const Whole each : point) {
                box.push_back({each, each});
            }
            Outlook outlook;
            is_unsure = may_be_met(question, scene, {box, part.plan, true}, outlook);
        }
        for (moved = 0; moved < point.size(); ++moved) {
            if (++point[moved] <= part.box[moved].last) {
                break;
            }
            point[moved] = part.box[moved].first;
        }
        if (point.empty()) {
            break;
        }
    }
    return false;
}

Point Space::nearest(const Scene& scene, const Box& box) const {
    Point point;
    for (std::size_t i = 0; i < box.size(); ++i) {
        point.push_back(
            std::clamp(axis(scene.settings[i]).domain.current, box[i].first, box[i].last));
    }
    return point;
}

bool Space::try_corners(const Question& question, const Scene& scene, const Part& part,
                        Point& met) {
    Point least;
    Point greatest;
    for (const Interval& each : part.box) {
        least.push_back(each.first);
        greatest.push_back(each.last);
    }
    std::vector<Point> points{std::move(least), std::move(greatest)};
    if (!part.is_nearest_tried) {
        points.push_back(nearest(scene, part.box));
    }
    for (const Point& point : points) {
        if (try_point(question, scene, point) == Verdict::kMet) {
            met = point;
            return true;
        }
    }
    return false;
}

std::vector<Whole> Space::cuts(std::uint32_t object, const Interval& whole) const {
    std::vector<Whole> after;
    if (!axis(object).domain.is_numbers) {
        return {middle_of(whole)};
    }
    const auto add = [&](Whole number) {
        if (number >= whole.first && number < whole.last && after.size() < kMostCuts &&
            std::find(after.begin(), after.end(), number) == after.end()) {
            after.push_back(number);
        }
    };
    for (const Whole number : axis(object).cuts) {
        add(number);
        add(number - 1);
    }
    add(middle_of(whole));
    return after;
}

// The part with the nearest point last, to be looked at first.
std::pair<Space::Part, Space::Part> Space::cut(const Scene& scene, const Part& part,
                                               std::size_t setting, Whole after) const {
    std::pair<Part, Part> result{part, part};
    result.first.box[setting].first = after + 1;
    result.second.box[setting].last = after;
    if (axis(scene.settings[setting]).domain.current > after) {
        std::swap(result.first, result.second);
    }
    result.first.is_nearest_tried = false;
    result.second.is_nearest_tried = true;
    return result;
}

// A cut that rules one part out is the best; else texts and states first, which decide more than
// numbers do.
void Space::add_parts(const Question& question, const Scene& scene, const Part& part,
                      std::vector<Part>& waiting) {
    std::size_t widest = 0;
    const auto weight = [&](std::size_t i) {
        const Whole size = part.box[i].last - part.box[i].first;
        return std::pair(size > 0, std::pair(!axis(scene.settings[i]).domain.is_numbers, size));
    };
    Outlook outlook;
    for (std::size_t i = 0; i < part.box.size(); ++i) {
        widest = weight(i) > weight(widest) ? i : widest;
        if (part.box[i].is_point() || part.box.size() > kMostCompared) {
            continue;
        }
        for (const Whole after : cuts(scene.settings[i], part.box[i])) {
            auto [later, sooner] = cut(scene, part, i, after);
            const bool may_later = may_be_met(question, scene, later, outlook);
            const bool may_sooner = may_be_met(question, scene, sooner, outlook);
            if (!may_later || !may_sooner) {
                if (may_later || may_sooner) {
                    waiting.push_back(std::move(may_later ? later : sooner));
                }
                return;
            }
        }
    }
    auto [later, sooner] =
        cut(scene, part, widest, cuts(scene.settings[widest], part.box[widest]).front());
    waiting.push_back(std::move(later));
    waiting.push_back(std::move(sooner));
}

Answer Space::search(const Question& question, const Scene& scene, Budget& budget) {
    const std::vector<std::uint32_t> nodes = [&] {
        const Inputs inputs = inputs_of(start_, question.wanted);
        std::vector<std::uint32_t> all = inputs.nodes;
        for (const std::uint32_t leaf : inputs.leaves) {
            const auto more = start_.model().leaf_inputs.of(leaf);
            all.insert(all.end(), more.begin(), more.end());
        }
        return all;
    }();
    Box whole;
    for (const std::uint32_t object : scene.settings) {
        const Domain& domain = axis(object).domain;
        whole.push_back({domain.least, domain.greatest});
    }
    const bool is_empty = std::any_of(whole.begin(), whole.end(),
                                      [](const Interval& each) { return each.first > each.last; });
    if (is_empty) {
        return {};
    }
    std::vector<Part> waiting{{whole, spans_.plan(scene.leaves, {}, nodes), false}};
    std::uint64_t before = evaluations();
    bool is_unsure = false;
    Answer answer;
    while (!waiting.empty()) {
        const std::uint64_t now = evaluations();
        if (!budget.take(now - before)) {
            is_unsure = true;
            break;
        }
        before = now;
        Part part = std::move(waiting.back());
        waiting.pop_back();
        Outlook outlook;
        if (!may_be_met(question, scene, part, outlook)) {
            continue;
        }
        Point met;
        const bool is_small = points_of(part.box) <= kFewPoints;
        if (is_small ? try_all(question, scene, part, is_unsure, met)
                     : try_corners(question, scene, part, met)) {
            if (question.is_certain) {
                simplify(question, scene, met);
            }
            answer = {Finding::kYes, true, changes_of(scene, met)};
            break;
        }
        if (is_small) {
            continue;
        }
        // A new plan costs as much as a look.
        if (2 * outlook.open_leaves.size() <= part.plan->leaves.size()) {
            part.plan = spans_.plan(std::move(outlook.open_leaves), {}, nodes);
        }
        add_parts(question, scene, part, waiting);
    }
    for (const std::uint32_t object : scene.settings) {
        const Axis& each = axis(object);
        spans_.free(object, each.span(each.domain.least, each.domain.greatest));
    }
    if (answer.finding != Finding::kYes) {
        answer.finding = is_unsure ? Finding::kUnknown : Finding::kNo;
    }
    return answer;
}

// As near to the defaults as it can be, setting by setting.
void Space::simplify(const Question& question, const Scene& scene, Point& point) {
    for (std::size_t i = 0; i < point.size(); ++i) {
        const Domain& domain = axis(scene.settings[i]).domain;
        if (domain.current < domain.least || domain.current > domain.greatest) {
            continue;
        }
        const Whole before = std::exchange(point[i], domain.current);
        if (before != domain.current && try_point(question, scene, point) != Verdict::kMet) {
            point[i] = before;
        }
    }
}

}  // namespace kivo_session
