#include "comparison.h"

#include <time.h>
#include <algorithm>
#include <cmath>
#include <vector>

namespace {

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// How often to run the work so that the clock's own cost and steps do not matter. Warms up too.
std::size_t batch_size(const Work& work, double batch_seconds) {
    std::size_t times = 1;
    double seconds = work(times);
    if (seconds >= batch_seconds) {
        return times;
    }
    while (seconds < batch_seconds / 4) {
        times *= 2;
        seconds = work(times);
    }
    const double wanted = std::ceil(batch_seconds * static_cast<double>(times) / seconds);
    return std::max<std::size_t>(1, static_cast<std::size_t>(wanted));
}

double time_of_one(const Work& work, std::size_t times) {
    return work(times) / static_cast<double>(times);
}

}  // namespace

double Stopwatch::now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

Comparison compare(benchmark::State& state, const Work& ours, const Work& theirs,
                   double batch_seconds) {
    const std::size_t our_batch = batch_size(ours, batch_seconds);
    const std::size_t their_batch = batch_size(theirs, batch_seconds);
    std::vector<double> our_times;
    std::vector<double> their_times;
    std::vector<double> ratios;
    bool ours_first = true;
    for (auto round : state) {
        static_cast<void>(round);
        double our_time = ours_first ? time_of_one(ours, our_batch) : 0;
        const double their_time = time_of_one(theirs, their_batch);
        our_time = ours_first ? our_time : time_of_one(ours, our_batch);
        ours_first = !ours_first;
        our_times.push_back(our_time);
        their_times.push_back(their_time);
        ratios.push_back(our_time / their_time);
        state.SetIterationTime(our_time);
    }
    return {median(our_times), median(their_times), median(ratios)};
}

double measure(benchmark::State& state, const Work& work, double batch_seconds) {
    const std::size_t batch = batch_size(work, batch_seconds);
    std::vector<double> times;
    for (auto round : state) {
        static_cast<void>(round);
        times.push_back(time_of_one(work, batch));
        state.SetIterationTime(times.back());
    }
    return median(times);
}
