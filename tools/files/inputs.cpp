#include "tools/files/inputs.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

namespace {

using Identity = std::pair<dev_t, ino_t>;

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

std::optional<Identity> identity_of_directory(const std::string& path) {
    struct stat state = {};
    if (stat(path.c_str(), &state) != 0 || !S_ISDIR(state.st_mode)) {
        return std::nullopt;
    }
    return Identity{state.st_dev, state.st_ino};
}

bool is_description(std::string_view name) {
    constexpr std::string_view kEnding = "_info.xml";
    return name.size() > kEnding.size() && name.substr(name.size() - kEnding.size()) == kEnding;
}

std::string joined(const std::string& directory, const std::string& name) {
    return directory.back() == '/' ? directory + name : directory + '/' + name;
}

class Search {
public:
    // REQUIRES: "top" is a directory
    std::vector<Input> run(const std::string& top);

private:
    void enter(const std::string& path);
    void read(const std::string& path);

    std::vector<std::string> waiting_;
    std::set<Identity> entered_;
    std::vector<Input> found_;
};

void Search::enter(const std::string& path) {
    const std::optional<Identity> identity = identity_of_directory(path);
    if (identity && entered_.insert(*identity).second) {
        waiting_.push_back(path);
    }
}

void Search::read(const std::string& path) {
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir(path.c_str()));
    if (directory == nullptr) {
        found_.push_back({path, std::strerror(errno)});
        return;
    }
    errno = 0;
    while (const dirent* const entry = readdir(directory.get())) {
        const std::string name = entry->d_name;
        const std::string below = joined(path, name);
        if (name == "." || name == "..") {
            continue;
        }
        if (identity_of_directory(below)) {
            enter(below);
        } else if (is_description(name)) {
            found_.push_back({below, std::nullopt});
        }
        errno = 0;
    }
    if (errno != 0) {
        found_.push_back({path, std::strerror(errno)});
    }
}

std::vector<Input> Search::run(const std::string& top) {
    enter(top);
    while (!waiting_.empty()) {
        const std::string path = std::move(waiting_.back());
        waiting_.pop_back();
        read(path);
    }
    std::sort(found_.begin(), found_.end(),
              [](const Input& left, const Input& right) { return left.path < right.path; });
    if (found_.empty()) {
        found_.push_back({top, "no file *_info.xml is below this directory"});
    }
    return std::move(found_);
}

}  // namespace

std::vector<Input> find_inputs(const std::vector<std::string>& arguments) {
    std::vector<Input> inputs;
    for (const std::string& argument : arguments) {
        if (argument != "-" && identity_of_directory(argument)) {
            std::vector<Input> found = Search().run(argument);
            std::move(found.begin(), found.end(), std::back_inserter(inputs));
        } else {
            inputs.push_back({argument, std::nullopt});
        }
    }
    return inputs;
}
