#include "tools/description/description.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <set>
#include <string_view>

namespace {

// "fifo" for "somewhere/fifo_info.xml": maps without a module name stand for the function's module.
std::string function_of(const std::string& path) {
    constexpr std::string_view kEnding = "_info.xml";
    const std::string name = path.substr(path.find_last_of('/') + 1);
    const bool is_usual = name.size() > kEnding.size() &&
                          name.compare(name.size() - kEnding.size(), kEnding.size(), kEnding) == 0;
    return is_usual ? name.substr(0, name.size() - kEnding.size()) : std::string();
}

// Where a file is: as it is named, or in the first directory that has it.
std::string found_in(const std::string& name, const Directories& directories) {
    struct stat state = {};
    const bool is_absolute = !name.empty() && name.front() == '/';
    if (is_absolute || stat(name.c_str(), &state) == 0) {
        return name;
    }
    for (const std::string& directory : directories) {
        std::string path = directory;
        path.append(directory.back() == '/' ? "" : "/").append(name);
        if (stat(path.c_str(), &state) == 0 && S_ISREG(state.st_mode)) {
            return path;
        }
    }
    return name;
}

// Why the library could not read the file itself, which it tells first of all.
std::optional<std::string> why_not_read(const KIVO_INFO& info, const std::string& path) {
    if (info.error_list.empty() || !is_about_unread_file(info.get_error_id(0))) {
        return std::nullopt;
    }
    const KIVO_PLACE place = info.get_error_place(0);
    return place.file == path && place.line == 0 ? std::optional(info.get_error_facts(0).reason)
                                                 : std::nullopt;
}

}  // namespace

bool is_about_unread_file(const std::string& id) {
    return id == "file-not-opened" || id == "file-not-read";
}

std::optional<std::string> why_unreadable(const std::string& path) {
    struct stat state = {};
    if (stat(path.c_str(), &state) != 0) {
        return std::strerror(errno);
    }
    if (S_ISDIR(state.st_mode)) {
        return "it is a directory";
    }
    if (!S_ISREG(state.st_mode)) {
        return "it is not a regular file";
    }
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return std::strerror(errno);
    }
    close(file);
    return std::nullopt;
}

Description::Description(const std::string& path, const Directories& directories)
    : Description(found_in(path, directories), found_in(path, directories), directories) {}

Description::Description(const std::string& name, const std::string& path,
                         const Directories& directories)
    : name_(name), path_(path), directories_(directories), failure_(why_unreadable(path)) {
    if (!failure_) {
        info_.set_include_directories(directories);
        info_.function_name = function_of(path);
        info_.process_xml_file(path);
        failure_ = why_not_read(info_, path);
    }
}

Description::~Description() {
    info_.delete_detached_objects();
}

bool Description::has_unread_files() const {
    for (std::size_t index = 0; index < info_.error_list.size(); ++index) {
        if (is_about_unread_file(info_.get_error_id(index))) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> files_of(const KIVO_INFO& info) {
    std::vector<std::string> files;
    std::set<std::string> known;
    for (KIVO_MARK mark{1, 0}; !info.get_place(mark).file.empty(); ++mark.file) {
        const std::string file = info.get_place(mark).file;
        if (known.insert(file).second) {
            files.push_back(file);
        }
    }
    return files;
}
