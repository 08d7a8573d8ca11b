#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <stdexcept>

// Does something so many times and returns the seconds that it took.
using Work = std::function<double(std::size_t times)>;

// Counts what this thread itself computes, and the kernel for it: on a machine with other work that
// tells far more than the time that passes.
class Stopwatch {
public:
    double seconds() const { return now() - start_; }

private:
    static double now();

    double start_ = now();
};

// The work of calling "body", timed as a whole.
template <class Body>
Work timed(Body body) {
    return [body](std::size_t times) mutable {
        const Stopwatch watch;
        for (std::size_t i = 0; i < times; ++i) {
            body();
        }
        return watch.seconds();
    };
}

// The work of calling "body", which returns the seconds that count.
template <class Body>
Work self_timed(Body body) {
    return [body](std::size_t times) {
        double seconds = 0;
        for (std::size_t i = 0; i < times; ++i) {
            seconds += body();
        }
        return seconds;
    };
}

// Medians over all rounds. The ratio is the median of the rounds' ratios, ours to theirs, which
// other work on the machine disturbs less than it does the times.
struct Comparison {
    double ours = 0;
    double theirs = 0;
    double ratio = 0;
};

// Each round of the benchmark runs both, in changing order, each for at least "batch_seconds".
Comparison compare(benchmark::State& state, const Work& ours, const Work& theirs,
                   double batch_seconds);

// The median time of one run.
double measure(benchmark::State& state, const Work& work, double batch_seconds);

// A measurement of something that did not do its work is worth nothing: ends the program.
inline void require(bool is_good, const char* what) {
    if (!is_good) {
        throw std::runtime_error(what);
    }
}
