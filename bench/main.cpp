// Measures the library against its peers and prints one table: kivo_bench [--smoke]
// [--benchmark_filter=REGEX]. With --smoke everything runs once with tiny inputs and the numbers
// mean nothing.

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <cstring>
#include <iostream>

#include "settings.h"

namespace {

Settings smoke_settings() {
    Settings settings;
    settings.rounds = 1;
    settings.large_rounds = 1;
    settings.batch_seconds = 0;
    settings.small_description = 100;
    settings.large_description = 100000;
    settings.included_files = 10;
    settings.stimulus_items = 10;
    settings.translation_bytes = 1000;
    settings.pattern_digits = 100;
    settings.decimal_digits = 100;
    settings.session_rules = 600;
    return settings;
}

bool take_smoke_option(int& argc, char** argv) {
    const bool is_smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    if (is_smoke) {
        argv[1] = argv[0];
        --argc;
    }
    return is_smoke;
}

// A folder that goes with the run.
class WorkFolder {
public:
    WorkFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kivo_bench_XXXXXX").string();
        require(mkdtemp(name.data()) != nullptr, "no folder for the files");
        path_ = name;
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

void run(int argc, char** argv) {
    const bool is_smoke = take_smoke_option(argc, argv);
    char** const arguments = is_smoke ? argv + 1 : argv;
    const WorkFolder folder;
    Settings settings = is_smoke ? smoke_settings() : Settings();
    settings.folder = folder.path();
    Results results;
    register_loading(settings, results);
    register_stimulus(settings, results);
    register_translation(settings, results);
    register_radix(settings, results);
    register_session(settings, results);
    register_start_up(settings, results);
    benchmark::Initialize(&argc, arguments);
    require(!benchmark::ReportUnrecognizedArguments(argc, arguments), "unknown argument");
    // The progress; the table alone goes to the standard output.
    benchmark::ConsoleReporter progress(benchmark::ConsoleReporter::OO_None);
    progress.SetOutputStream(&std::cerr);
    progress.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&progress);
    results.print(std::cout);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "kivo_bench: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
