#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kivo/session/internal/search/budget.h"
#include "kivo/session/internal/search/search.h"
#include "kivo/session/internal/search/span_engine.h"
#include "kivo/session/internal/search/trial.h"
#include "kivo/session/internal/search/wanted.h"
#include "kivo/session/internal/sense/axis.h"
#include "kivo/session/internal/sense/inputs.h"

namespace kivo_session {

// Whether there is a configuration with all that is wanted.
struct Question {
    std::vector<Wanted> wanted;
    bool is_legal = false;         // among the legal ones
    bool is_certain = false;       // what is known only at run time does not do
    std::uint32_t except = kNone;  // a leaf that legality does not take into account
};

struct Answer {
    Finding finding = Finding::kUnknown;
    bool is_judgeable = true;  // else texts that are at fault have a part in it
    std::vector<Change> with;  // of kYes: what to set
};

// All configurations that a description has while one wizard map is selected, or none.
class Space {
public:
    Space(std::shared_ptr<const Model> model, std::uint32_t map, const Mentions& mentions);

    // Everything at its default.
    Engine& start() { return start_; }
    const Axis& axis(std::uint32_t object) const { return axes_[axis_of_[object]]; }
    Answer ask(const Question& question, Budget& budget);
    // The configuration of an answer; until the next question.
    Engine* with(const std::vector<Change>& changes) { return trial_.with(changes); }

private:
    // What one search is about.
    struct Scene {
        std::vector<std::uint32_t> settings;
        std::vector<std::uint32_t> leaves;  // that must not be told of
        std::vector<std::uint32_t> above;   // nodes that must not be wrong
        bool is_closed = false;             // nothing else has a part in it
    };
    struct Part {
        Box box;
        std::shared_ptr<const Plan> plan;
        bool is_nearest_tried;
    };
    enum class Verdict : std::uint8_t { kMet, kNotMet, kUnsure };

    bool is_clear(const Cone& cone) const;
    std::vector<std::uint32_t> settings_named(const Inputs& inputs) const;
    std::vector<std::uint32_t> settings_in(const Cone& cone,
                                           const std::vector<std::uint32_t>& more) const;
    Scene scene_of(const Question& question, std::vector<std::uint32_t> settings) const;
    std::vector<std::uint32_t> settings_around(const Question& question, const Scene& scene) const;
    Answer judged_among_legal(const Question& question, Scene scene, const Answer& answer,
                              Budget& budget);
    void simplify(const Question& question, const Scene& scene, Point& point);
    Answer search(const Question& question, const Scene& scene, Budget& budget);

    bool may_be_met(const Question& question, const Scene& scene, const Part& part,
                    Outlook& outlook);
    Verdict try_point(const Question& question, const Scene& scene, const Point& point);
    // All points of a small part; true when it has one that does.
    bool try_all(const Question& question, const Scene& scene, const Part& part, bool& is_unsure,
                 Point& met);
    bool try_corners(const Question& question, const Scene& scene, const Part& part, Point& met);
    Point nearest(const Scene& scene, const Box& box) const;
    // Where to cut a setting's interval: after these numbers.
    std::vector<Whole> cuts(std::uint32_t object, const Interval& whole) const;
    std::pair<Part, Part> cut(const Scene& scene, const Part& part, std::size_t setting,
                              Whole after) const;
    // Adds the parts of a part that may have a point.
    void add_parts(const Question& question, const Scene& scene, const Part& part,
                   std::vector<Part>& waiting);
    std::vector<Change> changes_of(const Scene& scene, const Point& point) const;
    std::uint64_t evaluations() const { return 2 * spans_.evaluations() + trial_.evaluations(); }

    Engine start_;
    std::vector<std::uint32_t> axis_of_;  // by object
    std::vector<Axis> axes_;
    std::vector<std::uint8_t> is_clear_;  // by object: nothing about it is spoiled
    Cone above_;
    SpanEngine spans_;
    Trial trial_;
};

}  // namespace kivo_session
