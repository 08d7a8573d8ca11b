#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/description/description.h"
#include "tools/findings/finding.h"

// One warning that an author has decided to live with. Errors are the library's messages, which
// hosts get too: they are not to be waived.
struct Waiver {
    std::string id;
    std::string file;    // as a path from where the program runs
    std::string object;  // empty: whatever the finding is about
    Place place;         // of the waiver itself
    bool is_of_checked_file = false;
    bool is_used = false;
};

// The waivers of one settings file.
class Waivers {
public:
    // Reads the file: tables [[waiver]] with "id", "file" (from the directory of the settings),
    // "reason" and perhaps "name", the parameter, port, vector or map that the finding is about.
    explicit Waivers(const std::string& path);

    // Why it cannot be taken, with line and column; nothing when it was.
    const std::optional<std::string>& failure() const { return failure_; }

    // Takes what is waived out of the findings of a description that consists of these files.
    void apply(std::vector<Finding>& findings, const std::vector<std::string>& files);

    // A warning for each waiver that had nothing to waive in a file that was checked.
    std::vector<Finding> unused() const;

private:
    std::optional<std::string> failure_;
    std::vector<Waiver> waivers_;
};

// The settings that go with each of the descriptions of one run: of the file that was given, or
// else of "kivo.toml" beside the description.
class WaiverFiles {
public:
    explicit WaiverFiles(std::string given) : given_(std::move(given)) {}

    // Takes what is waived out of the findings of a description.
    void apply(std::vector<Finding>& findings, const Description& description);

    // Null when there are none for a description at that path.
    Waivers* of_description(const std::string& path);

    // What is wrong with the settings themselves, when all is checked.
    std::vector<CheckedFile> report() const;

private:
    std::string given_;
    std::map<std::string, std::optional<Waivers>> files_;
};
