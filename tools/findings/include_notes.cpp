#include "tools/findings/include_notes.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "kivo/session/internal/near_word.h"
#include "tools/text/words.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostEdits = 2;

bool is_absolute(const std::string& name) {
    return !name.empty() && name.front() == '/';
}

// The directory part of a path with its "/", empty when it has none.
std::string directory_of(const std::string& path) {
    return path.substr(0, path.find_last_of('/') + 1);
}

std::string joined(const std::string& directory, const std::string& name) {
    const bool needs_slash = !directory.empty() && directory.back() != '/';
    return directory + (needs_slash ? "/" : "") + name;
}

bool is_file(const std::string& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

std::string working_directory() {
    std::error_code error;
    const fs::path path = fs::current_path(error);
    return error ? "." : path.string();
}

}  // namespace

std::string IncludeNotes::searched(const std::string& name) const {
    if (is_absolute(name)) {
        return "looked for there alone";
    }
    std::vector<std::string> places = {working_directory()};
    places.insert(places.end(), directories_.begin(), directories_.end());
    return "looked for in " + quoted(places) + " and beside the library";
}

std::string IncludeNotes::beside(const std::string& name, const std::string& includer) const {
    const std::string path = joined(directory_of(includer), name);
    return !is_absolute(name) && is_file(path) ? path : std::string();
}

const std::vector<std::string>& IncludeNotes::files_in(const std::string& directory) {
    const auto [found, is_new] = files_.try_emplace(directory);
    if (is_new) {
        std::error_code error;
        fs::directory_iterator entry(directory.empty() ? "." : directory, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            std::error_code unknown;
            if (entry->is_regular_file(unknown)) {
                found->second.push_back(entry->path().filename().string());
            }
        }
        std::sort(found->second.begin(), found->second.end());
    }
    return found->second;
}

std::string IncludeNotes::nearest(const std::string& name) {
    const std::string folder = directory_of(name);
    const std::string file = name.substr(folder.size());
    std::vector<std::string> bases = {""};
    if (!is_absolute(name)) {
        bases.insert(bases.end(), directories_.begin(), directories_.end());
    }
    for (const std::string& base : bases) {
        const std::vector<std::string>& files = files_in(joined(base, folder));
        const std::vector<std::string_view> known(files.begin(), files.end());
        if (const std::string_view near = nearest_word(file, known, kMostEdits); !near.empty()) {
            return folder + std::string(near);
        }
    }
    return {};
}
