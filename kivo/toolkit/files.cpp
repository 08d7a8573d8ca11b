#include "kivo/toolkit/files.h"

#include <dlfcn.h>
#include <limits.h>
#include <link.h>
#include <sys/stat.h>

bool dro_file_exists(const std::string& path) {
    struct stat status {};
    return path.find('\0') == std::string::npos && stat(path.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode);
}

std::string dro_get_library_module_path() {
    Dl_info module{};
    void* map = nullptr;
    char directory[PATH_MAX] = "";
    // The dynamic linker keeps the directory as an absolute path; the file name that it keeps may
    // be relative to a working directory that the host has left since.
    if (dladdr1(reinterpret_cast<void*>(&dro_get_library_module_path), &module, &map,
                RTLD_DL_LINKMAP) == 0 ||
        dlinfo(map, RTLD_DI_ORIGIN, directory) != 0) {
        return "./";
    }
    std::string path = directory;
    if (path.empty() || path.back() != '/') {
        path += '/';
    }
    return path;
}
