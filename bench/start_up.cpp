#include <chrono>
#include <fstream>

#include "description_generator.h"
#include "elf_file.h"
#include "processes.h"
#include "settings.h"

namespace {

// The time that passes: what another process computes is not this one's.
Work run_to_end(const std::vector<std::string>& words) {
    return self_timed([words] {
        const auto start = std::chrono::steady_clock::now();
        run_program(words);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    });
}

}  // namespace

void register_start_up(const Settings& settings, Results& results) {
    const std::string text = generate_description(settings.small_description);
    const std::string path = (settings.folder / "start_up.xml").string();
    std::ofstream(path, std::ios::binary) << text;
    const std::string what = "process that loads " + format_size(text.size());
    const double batch = settings.batch_seconds;
    register_rounds(what.c_str(), settings.rounds, [=, &results](benchmark::State& state) {
        const Work ours = run_to_end({KIVO_BENCH_LOAD, path});
        const Work theirs = run_to_end({KIVO_BENCH_EMPTY});
        results.add_cost(what, "empty C++ process", compare(state, ours, theirs, batch), "<= 2 x");
    });
    for (const char* const name : {"fifo", "counter", "ram"}) {
        const std::string example = std::string(KIVO_EXAMPLES "/") + name + "_info.xml";
        const std::string row = std::string("kivo configure of the ") + name;
        register_rounds(row.c_str(), settings.rounds, [=, &results](benchmark::State& state) {
            const Work ours = run_to_end({KIVO_PROGRAM, "configure", example});
            const Work theirs = run_to_end({KIVO_PROGRAM, "show", example});
            results.add_cost(row, "kivo show", compare(state, ours, theirs, batch), "<= 2 x");
        });
    }
    register_rounds("start-up work", 1, [&results](benchmark::State& state) {
        StartWork work;
        for (auto round : state) {
            static_cast<void>(round);
            const Stopwatch watch;
            work = read_start_work(KIVO_LIBRARY);
            state.SetIterationTime(watch.seconds());
        }
        results.add_single("relocations of libkivo.so", std::to_string(work.relocations), "");
        results.add_single("static constructors of libkivo.so", std::to_string(work.constructors),
                           "0");
    });
}
