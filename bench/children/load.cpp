// Loads a description and ends: kivo_bench_load FILE [--peak | TIMES]. With --peak it prints the
// most memory that the process held, in kB, while the store is still alive; with a number it loads
// so often, which is what a profiler wants.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "kivo/kivo.h"

namespace {

long peak_in_kilobytes() {
    // The kernel's own count of this process image: rusage would count the parent's memory too.
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0) {
            return std::strtol(line.c_str() + 6, nullptr, 10);
        }
    }
    return 0;
}

bool load(const char* path, bool shows_peak) {
    KIVO_INFO info;
    const bool is_loaded = info.process_xml_file(path);
    if (shows_peak) {
        std::printf("%ld\n", peak_in_kilobytes());
    }
    info.delete_detached_objects();
    return is_loaded;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return 2;
    }
    const std::string option = argc > 2 ? argv[2] : "1";
    const bool shows_peak = option == "--peak";
    const long times = shows_peak ? 1 : std::strtol(option.c_str(), nullptr, 10);
    for (long i = 0; i < times; ++i) {
        if (!load(argv[1], shows_peak)) {
            return 1;
        }
    }
    return 0;
}
