#include "kivo/vectors/stimulus.h"

#include <cstdio>

#include "processes.h"
#include "settings.h"
#include "stimulus_commands.h"
#include "vectors/stimulus_reference.h"

namespace {

using Evaluate = bool (*)(std::string command, std::int32_t time, std::string& signal,
                          std::string& value);

Work evaluate_all(Evaluate evaluate) {
    return timed([evaluate] {
        std::string signal;
        std::string value;
        for (const StimulusCall& call : stimulus_calls()) {
            benchmark::DoNotOptimize(evaluate(call.command, call.time, signal, value));
        }
    });
}

void require_equal_answers() {
    for (const StimulusCall& call : stimulus_calls()) {
        std::string signal[2];
        std::string value[2];
        const bool ours = kivo_get_transition_at_time(call.command, call.time, signal[0], value[0]);
        const bool theirs = stimulus_reference::get_transition_at_time(call.command, call.time,
                                                                       signal[1], value[1]);
        require(ours == theirs && signal[0] == signal[1] && value[0] == value[1],
                "the library and the reference differ");
    }
}

// "force data 0 0,1 10,2 20" and so on; the time of the last item is 10 times its number.
std::string long_command(std::size_t items, const std::string& last) {
    std::string command = "force data";
    for (std::size_t i = 0; i < items; ++i) {
        command += (i == 0 ? " " : ",") + std::to_string(i % 16) + " " + std::to_string(i * 10);
    }
    return command + last;
}

Work evaluate_at_end(std::size_t items, const std::string& last, std::int32_t time) {
    return timed([command = long_command(items, last), time] {
        std::string signal;
        std::string value;
        benchmark::DoNotOptimize(kivo_get_transition_at_time(command, time, signal, value));
    });
}

void register_long(const Settings& settings, Results& results, const std::string& what,
                   const std::string& last) {
    const std::size_t items = settings.stimulus_items;
    const std::string name = "stimulus of " + std::to_string(items) + " items" + what;
    const double batch = settings.batch_seconds;
    register_rounds(name.c_str(), settings.rounds, [=, &results](benchmark::State& state) {
        const auto time = static_cast<std::int32_t>(items * 10 - 10);
        results.add_cost(name, "a tenth of it",
                         compare(state, evaluate_at_end(items, last, time),
                                 evaluate_at_end(items / 10, last, time), batch),
                         "<= 13 x");
    });
}

void register_allocations(Results& results) {
    register_rounds("stimulus allocations", 1, [&results](benchmark::State& state) {
        std::size_t ours = 0;
        std::size_t theirs = 0;
        for (auto round : state) {
            static_cast<void>(round);
            const Stopwatch watch;
            const std::string printed = run_program({KIVO_BENCH_ALLOCATIONS});
            require(std::sscanf(printed.c_str(), "%zu %zu", &ours, &theirs) == 2 && theirs > 0,
                    "no counts of allocations");
            state.SetIterationTime(watch.seconds());
        }
        const auto calls = static_cast<double>(stimulus_calls().size());
        results.add({"stimulus, allocations per call, its argument's included",
                     format_ratio(static_cast<double>(ours) / calls), "literal transcription",
                     format_ratio(static_cast<double>(theirs) / calls),
                     format_ratio(static_cast<double>(ours) / static_cast<double>(theirs)) + " x",
                     ""});
    });
}

}  // namespace

void register_stimulus(const Settings& settings, Results& results) {
    const double batch = settings.batch_seconds;
    register_rounds("stimulus", settings.rounds, [batch, &results](benchmark::State& state) {
        require_equal_answers();
        Comparison measured =
            compare(state, evaluate_all(kivo_get_transition_at_time),
                    evaluate_all(stimulus_reference::get_transition_at_time), batch);
        measured.ours /= static_cast<double>(stimulus_calls().size());
        measured.theirs /= static_cast<double>(stimulus_calls().size());
        results.add_speed("stimulus of 30 to 80 characters, one call", "literal transcription",
                          measured, ">= 8 x");
    });
    register_allocations(results);
    register_long(settings, results, "", "");
    register_long(settings, results, " and a repeat", ",-repeat 160");
}
