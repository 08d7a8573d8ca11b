#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "kivo/session/internal/sense/space.h"

namespace kivo_session {

// Asks questions about all configurations of a description, whatever wizard map is selected, within
// one effort.
class Asker {
public:
    Asker(std::shared_ptr<const Model> model, const KIVO_EFFORT& effort);

    const Model& model() const { return *model_; }
    const Description& description() const { return *model_->description; }
    // With no map selected, everything at its default.
    Engine& start() { return space(kNone).start(); }
    const Axis& axis(std::uint32_t object) { return space(kNone).axis(object); }

    // Whether there is such a configuration. What is not decided is counted.
    Finding ask(const Question& question) { return ask(question, kNone); }
    // For something that belongs to a map it is selected; kNone for what belongs to none.
    Finding ask(const Question& question, std::uint32_t map);
    // Whether it is certain that there is none; what is not decided is not counted.
    bool is_never(const Question& question, std::uint32_t map);
    // A configuration as asked for, with no map selected; null when there is none, or that is not
    // decided. It lives until the next question.
    Engine* find(const Question& question);
    // What was set in the last one that was found.
    const std::vector<Change>& found() const { return found_; }

    // How many questions were not decided.
    std::size_t undecided() const { return undecided_; }
    // One more that could not be asked.
    void count_undecided() { ++undecided_; }

private:
    Space& space(std::uint32_t map);
    Answer ask_space(const Question& question, std::uint32_t map);
    // The maps that may make a difference to a question.
    std::vector<std::uint32_t> maps_of(const Question& question);
    KIVO_EFFORT rest() const;

    struct Made {
        std::uint32_t map;
        std::unique_ptr<Space> space;
    };

    std::shared_ptr<const Model> model_;
    Mentions mentions_;
    KIVO_EFFORT effort_;
    std::uint64_t evaluations_;  // that are left for all
    std::uint64_t expected_;     // questions to come
    std::chrono::steady_clock::time_point end_;
    std::vector<Made> spaces_;                            // the last ones used, the last one last
    std::vector<std::vector<std::uint32_t>> touched_by_;  // by object: maps that change it
    std::vector<std::uint32_t> touching_;                 // the maps that change anything
    std::vector<Change> found_;
    std::size_t undecided_ = 0;
};

}  // namespace kivo_session
