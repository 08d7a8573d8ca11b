// Evaluates a command over a range of times and holds it against the evaluation at single times: at
// both ends of each run, beside them, and at times that the input chooses. A range and a limit
// stand before the command.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <set>
#include <string>

#include "fuzz/support/byte_reader.h"
#include "fuzz/support/expect.h"
#include "kivo/kivo.h"

namespace {

// Of which the neighbourhood is looked at: each time costs what the command's length costs.
constexpr std::size_t kMostRuns = 40;

class Comparison {
public:
    Comparison(const std::string& command, std::int32_t from, std::int32_t to, std::size_t limit)
        : command_(command),
          from_(from),
          to_(to),
          timeline_(kivo_get_timeline(command, from, to, limit)) {
        const auto transitions = std::count_if(timeline_.runs.begin(), timeline_.runs.end(),
                                               [](const auto& run) { return !run.released; });
        expect(static_cast<std::size_t>(transitions) <= limit, "no more transitions than the limit",
               at(from));
    }

    void run() {
        check_form();
        const std::size_t step = timeline_.runs.size() / kMostRuns + 1;
        for (std::size_t i = 0; i < timeline_.runs.size(); i += step) {
            const KIVO_TIMELINE_RUN& run = timeline_.runs[i];
            for (const std::int64_t beside : {-1, 0, 1}) {
                check_at(run.first + beside);
                check_at(run.last + beside);
            }
            check_at((std::int64_t{run.first} + run.last) / 2);
        }
        for (const std::int64_t time : {std::int64_t{from_}, std::int64_t{to_}, std::int64_t{0},
                                        timeline_.last_item_time, timeline_.last_item_time + 1}) {
            check_at(time);
        }
    }

    void check_at(std::int64_t time) {
        if (time < from_ || time > to_ || time >= timeline_.end) {
            return;
        }
        std::string signal;
        std::string value;
        const bool is_transition =
            kivo_get_transition_at_time(command_, static_cast<std::int32_t>(time), signal, value);
        const KIVO_TIMELINE_RUN* const run = run_at(time);
        const bool expects_transition = run != nullptr && !run->released;
        expect(is_transition == expects_transition, "both see the same transitions", at(time));
        expect(is_transition || value.empty(), "no transition has no value", at(time));
        if (expects_transition) {
            expect_same(timeline_.values[run->value], value, "both give the same value");
        }
        const bool is_nameless = run != nullptr && (run->released || run->nameless);
        expect_same(is_nameless ? std::string() : timeline_.signal, signal,
                    "both name the same signal");
    }

private:
    std::string at(std::int64_t time) const {
        return command_ + " at " + std::to_string(time) + " of " + std::to_string(from_) + " to " +
               std::to_string(to_);
    }

    void check_form() const {
        std::int64_t next = from_;
        const KIVO_TIMELINE_RUN* before = nullptr;
        for (const KIVO_TIMELINE_RUN& run : timeline_.runs) {
            expect(run.first >= next && run.last >= run.first && run.last < timeline_.end,
                   "runs stand in order, within what is told", command_);
            expect(run.released || run.value < timeline_.values.size(), "a run has a value");
            const bool continues = before != nullptr && std::int64_t{before->last} + 1 == run.first;
            expect(!continues || !is_same(*before, run), "neighbouring runs differ", at(run.first));
            next = std::int64_t{run.last} + 1;
            before = &run;
        }
        const std::set<std::string> once(timeline_.values.begin(), timeline_.values.end());
        expect(once.size() == timeline_.values.size(), "each value stands once");
        const std::int64_t whole = from_ > to_ ? from_ : std::int64_t{to_} + 1;
        expect(timeline_.end <= whole && (timeline_.end == whole) == timeline_.is_complete,
               "all is told, or it is said that it is not", command_);
    }

    static bool is_same(const KIVO_TIMELINE_RUN& left, const KIVO_TIMELINE_RUN& right) {
        return left.released == right.released &&
               (left.released || (left.value == right.value && left.nameless == right.nameless));
    }

    const KIVO_TIMELINE_RUN* run_at(std::int64_t time) const {
        for (const KIVO_TIMELINE_RUN& run : timeline_.runs) {
            if (time >= run.first && time <= run.last) {
                return &run;
            }
        }
        return nullptr;
    }

    const std::string& command_;
    std::int32_t from_;
    std::int32_t to_;
    KIVO_TIMELINE timeline_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteReader bytes(data, size);
    // Small ranges are as worthwhile as the whole of 32 bits.
    const std::size_t shift = bytes.below(32);
    const std::int32_t from = bytes.number() >> shift;
    const std::int32_t to = bytes.number() >> shift;
    const std::size_t limit = bytes.byte() * 4U;
    std::int32_t samples[4];
    for (std::int32_t& sample : samples) {
        sample = bytes.number() >> shift;
    }
    const std::string command = bytes.rest();
    Comparison comparison(command, from, to, limit);
    comparison.run();
    for (const std::int32_t sample : samples) {
        comparison.check_at(sample);
    }
    return 0;
}
