#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kivo/session/session.h"

// What a command line asks of a configuration.
struct ConfigurationRequest {
    std::vector<std::string> settings;  // "NAME=VALUE", of several for one name the last counts
    std::string map;                    // a wizard map; empty: that of "from", or none
    std::string from;                   // a file with an earlier configuration; empty for none
    bool allows_hidden = false;
};

// Why a request is refused, in one line.
struct Refusal {
    bool is_unreadable = false;  // else what is asked for is wrong
    std::string text;
};

// Whether a word of the command line is "NAME=VALUE".
bool is_setting(std::string_view word);
bool is_no_setting(std::string_view word);

// Makes the settings of the request, all or none.
std::optional<Refusal> apply_request(KIVO_SESSION& session, const ConfigurationRequest& request);
