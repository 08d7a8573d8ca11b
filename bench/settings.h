#pragma once

#include <cstddef>
#include <filesystem>

#include "results.h"

// How much to measure. The defaults are what the numbers in docs/performance.md were made with.
struct Settings {
    int rounds = 101;
    int large_rounds = 7;  // of what takes a good part of a second
    double batch_seconds = 0.001;
    std::size_t small_description = 32 * 1024;
    std::size_t large_description = 32 * 1024 * 1000;
    std::size_t included_files = 10000;
    std::size_t stimulus_items = 200000;
    std::size_t translation_bytes = 20000000;
    std::size_t pattern_digits = 1000000;
    std::size_t decimal_digits = 100000;
    std::size_t session_rules = 10000;
    std::filesystem::path folder;  // for the files that are measured
};

// Each registers the benchmarks of its topic; they put their rows into the results.
void register_loading(const Settings& settings, Results& results);
void register_stimulus(const Settings& settings, Results& results);
void register_translation(const Settings& settings, Results& results);
void register_radix(const Settings& settings, Results& results);
void register_session(const Settings& settings, Results& results);
void register_start_up(const Settings& settings, Results& results);

// Registers one benchmark of so many rounds.
template <class Body>
void register_rounds(const char* name, int rounds, Body body) {
    benchmark::RegisterBenchmark(name, body)->UseManualTime()->Iterations(rounds);
}
