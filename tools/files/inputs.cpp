#include "tools/files/inputs.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <map>
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

std::string parent_of(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// Finds the files of several arguments, each once.
class Search {
public:
    void add(const std::string& argument);
    std::vector<Input> take() { return std::move(inputs_); }

private:
    void search(const std::string& top);
    void enter(const std::string& path);
    void read(const std::string& path);
    // Whether a file has not been found yet, in whatever way its directory was written.
    bool is_new(const std::optional<Identity>& directory, const std::string& path);

    std::vector<Input> inputs_;
    // The directories with the number of the argument for which each was entered.
    std::map<Identity, std::size_t> entered_;
    std::set<std::pair<Identity, std::string>> files_;
    std::set<std::string> paths_;  // of files in directories that are not there
    // Of the argument in hand.
    std::size_t argument_ = 0;
    bool has_met_earlier_ = false;
    std::vector<std::string> waiting_;
    std::vector<Input> found_;
};

bool Search::is_new(const std::optional<Identity>& directory, const std::string& path) {
    const bool is_new =
        directory ? files_.emplace(*directory, path.substr(path.find_last_of('/') + 1)).second
                  : paths_.insert(path).second;
    has_met_earlier_ = has_met_earlier_ || !is_new;
    return is_new;
}

void Search::enter(const std::string& path) {
    const std::optional<Identity> identity = identity_of_directory(path);
    if (!identity) {
        return;
    }
    const auto [at, is_first] = entered_.emplace(*identity, argument_);
    if (is_first) {
        waiting_.push_back(path);
    }
    has_met_earlier_ = has_met_earlier_ || at->second != argument_;
}

void Search::read(const std::string& path) {
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir(path.c_str()));
    if (directory == nullptr) {
        found_.push_back({path, std::strerror(errno)});
        return;
    }
    const std::optional<Identity> identity = identity_of_directory(path);
    errno = 0;
    while (const dirent* const entry = readdir(directory.get())) {
        const std::string name = entry->d_name;
        const std::string below = joined(path, name);
        if (name == "." || name == "..") {
            continue;
        }
        if (identity_of_directory(below)) {
            enter(below);
        } else if (is_description(name) && is_new(identity, below)) {
            found_.push_back({below, std::nullopt});
        }
        errno = 0;
    }
    if (errno != 0) {
        found_.push_back({path, std::strerror(errno)});
    }
}

void Search::search(const std::string& top) {
    ++argument_;
    has_met_earlier_ = false;
    enter(top);
    while (!waiting_.empty()) {
        const std::string path = std::move(waiting_.back());
        waiting_.pop_back();
        read(path);
    }
    std::sort(found_.begin(), found_.end(),
              [](const Input& left, const Input& right) { return left.path < right.path; });
    if (found_.empty() && !has_met_earlier_) {
        found_.push_back({top, "no file *_info.xml is below this directory"});
    }
    std::move(found_.begin(), found_.end(), std::back_inserter(inputs_));
    found_.clear();
}

void Search::add(const std::string& argument) {
    const bool is_standard_input = argument == "-";
    if (!is_standard_input && identity_of_directory(argument)) {
        search(argument);
        return;
    }
    if (is_standard_input || is_new(identity_of_directory(parent_of(argument)), argument)) {
        inputs_.push_back({argument, std::nullopt});
    }
}

}  // namespace

std::vector<Input> find_inputs(const std::vector<std::string>& arguments) {
    Search search;
    for (const std::string& argument : arguments) {
        search.add(argument);
    }
    return search.take();
}
