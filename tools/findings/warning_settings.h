#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/findings/finding.h"

// Which warnings are told and which of them count as errors.
class WarningSettings {
public:
    // Takes one setting: "ID" and "no-ID" switch a warning on and off, "all" all of them on,
    // "error=ID" on and to an error, "error=all" so all that are on. Later ones win. Returns what
    // is wrong with it; empty when it was taken.
    std::string take(std::string_view setting);

    // Settings to choose from: "all", and for each warning "ID" and "no-ID".
    static std::vector<std::string> all();

    // Leaves the warnings that are on, those that count as errors as such.
    void apply(std::vector<Finding>& findings) const;

private:
    enum class Choice { kOff, kOn, kError };

    Choice choice_of(std::string_view id) const;

    bool has_all_ = false;
    bool all_are_errors_ = false;
    std::map<std::string, Choice, std::less<>> choices_;
};
