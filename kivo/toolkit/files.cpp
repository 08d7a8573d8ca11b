#include "kivo/toolkit/files.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <cstdint>
#include <fstream>
#include <locale>
#include <sstream>

namespace {

// The path of the file from which the code at "address" was loaded, empty when the system does not
// tell.
std::string mapped_file(std::uintptr_t address) {
    std::ifstream maps("/proc/self/maps");
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

std::string dro_get_library_module_path() {
    void* const here = reinterpret_cast<void*>(&dro_get_library_module_path);
    Dl_info module{};
    std::string path = dladdr(here, &module) == 0 ? "" : module.dli_fname;
    // A relative name, as a program's own often is, is relative to a working directory that the
    // host may have left since.
    if (path.empty() || path.front() != '/') {
        path = mapped_file(reinterpret_cast<std::uintptr_t>(here));
    }
    return path.empty() ? "./" : path.substr(0, path.rfind('/') + 1);
}
