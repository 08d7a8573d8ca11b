#include "kivo/toolkit/files.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <cstdint>
#include <fstream>
#include <locale>
#include <sstream>

#include "kivo/toolkit/internal/module_path.h"

namespace {

// The path of the file from which the code at "address" was loaded, empty when the system does not
// tell.
std::string mapped_file(std::uintptr_t address) {
    std::ifstream maps("/proc/self/maps");
    maps.exceptions(std::ios::badbit);  // a shortage of memory is no answer
    for (std::string line; std::getline(maps, line);) {
        std::istringstream words(line);
        words.imbue(std::locale::classic());
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        char dash = 0;
        words >> std::hex >> begin >> dash >> end;
        if (words && address >= begin && address < end) {
            const std::size_t path = line.find('/');
            return path == std::string::npos ? std::string() : line.substr(path);
        }
    }
    return {};
}

}  // namespace

bool dro_file_exists(const std::string& path) {
    struct stat status {};
    return path.find('\0') == std::string::npos && stat(path.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode);
}

std::string directory_of_module(const char* told, const void* address) {
    std::string path = told == nullptr ? "" : told;
    if (path.empty() || path.front() != '/') {
        path = mapped_file(reinterpret_cast<std::uintptr_t>(address));
    }
    return path.empty() ? "./" : path.substr(0, path.rfind('/') + 1);
}

std::string dro_get_library_module_path() {
    const auto* const here = reinterpret_cast<const void*>(&dro_get_library_module_path);
    Dl_info module{};
    return directory_of_module(dladdr(here, &module) == 0 ? nullptr : module.dli_fname, here);
}
