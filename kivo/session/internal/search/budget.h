#pragma once

#include <chrono>
#include <cstdint>

#include "kivo/session/session.h"

namespace kivo_session {

// What a search may still cost. Counted; the clock is asked now and then.
class Budget {
public:
    explicit Budget(const KIVO_EFFORT& effort)
        : evaluations_(effort.evaluations),
          steps_(effort.steps),
          end_(std::chrono::steady_clock::now() + std::chrono::milliseconds(effort.milliseconds)) {}

    // Takes one step and the evaluations since the last one; false when that was too much.
    bool take(std::uint64_t evaluations) {
        evaluations_ -= evaluations < evaluations_ ? evaluations : evaluations_;
        steps_ -= steps_ > 0 ? 1 : 0;
        constexpr std::uint32_t kStepsAnAsking = 64;
        if (++asked_ % kStepsAnAsking == 0 && std::chrono::steady_clock::now() >= end_) {
            evaluations_ = 0;
        }
        return !is_spent();
    }
    bool is_spent() const { return evaluations_ == 0 || steps_ == 0; }
    std::uint64_t steps() const { return steps_; }
    std::uint64_t evaluations() const { return evaluations_; }

    // A part of what is left for one of several searches; what it does not use comes back.
    Budget share(std::uint64_t searches) const {
        Budget part = *this;
        part.evaluations_ = evaluations_ / searches;
        part.steps_ = steps_ / searches;
        return part;
    }
    void give_back(const Budget& part, std::uint64_t searches) {
        evaluations_ -= evaluations_ / searches - part.evaluations_;
        steps_ -= steps_ / searches - part.steps_;
    }

private:
    std::uint64_t evaluations_;
    std::uint64_t steps_;
    std::uint32_t asked_ = 0;
    std::chrono::steady_clock::time_point end_;
};

}  // namespace kivo_session
