#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kivo/kivo.h"

// Why the file cannot be read ("No such file or directory"); nothing when it can.
std::optional<std::string> why_unreadable(const std::string& path);

// Whether a message of that id says that a file is there and could not be read.
bool is_about_unread_file(const std::string& id);

using Directories = std::vector<std::string>;

// One description file, loaded, with all that it holds.
class Description {
public:
    // Loads nothing when the file is not there: the library would look for it elsewhere, and a user
    // who misspelt a path wants to know.
    // The file, and the files that it includes, are looked for in the directories too.
    explicit Description(const std::string& path, const Directories& directories = {});
    // The same for a file that is called "name" wherever it is shown.
    Description(const std::string& name, const std::string& path,
                const Directories& directories = {});
    Description(const Description&) = delete;
    Description& operator=(const Description&) = delete;
    ~Description();

    // Why the file could not be read, or not to its end; nothing when it was.
    const std::optional<std::string>& failure() const { return failure_; }
    const std::string& name() const { return name_; }
    const std::string& path() const { return path_; }
    const Directories& directories() const { return directories_; }
    KIVO_INFO& info() { return info_; }
    const KIVO_INFO& info() const { return info_; }
    bool has_messages() const { return !info_.error_list.empty(); }
    // Whether a file that it includes is there and could not be read.
    bool has_unread_files() const;

private:
    std::string name_;
    std::string path_;
    Directories directories_;
    std::optional<std::string> failure_;
    KIVO_INFO info_;
};

// The paths of the files that the library has read, in its order, each once.
std::vector<std::string> files_of(const KIVO_INFO& info);
