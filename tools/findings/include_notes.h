#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/description/description.h"

// What helps with a file that is included and not found. Each directory is read once.
class IncludeNotes {
public:
    explicit IncludeNotes(const Directories& directories) : directories_(directories) {}

    // "looked for in ..."
    std::string searched(const std::string& name) const;
    // The file beside the one that includes it, where it is not looked for; empty when there is
    // none.
    std::string beside(const std::string& name, const std::string& includer) const;
    // A name near this one of which there is a file where it is looked for; empty when there is
    // none.
    std::string nearest(const std::string& name);

private:
    const std::vector<std::string>& files_in(const std::string& directory);

    const Directories& directories_;
    std::map<std::string, std::vector<std::string>> files_;
};
