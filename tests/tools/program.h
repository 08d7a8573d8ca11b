#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

// The exit status of a run that was to obey permissions and could not be made to.
constexpr int kCannotGiveUp = 125;

// What one run of the program answered.
struct RunResult {
    int status = -1;  // exit status; -1 when it did not exit by itself
    std::string out;
    std::string err;
};

struct RunOptions {
    std::string input = {};                               // what it reads from standard input
    std::map<std::string, std::string> environment = {};  // besides a bare one
    std::string directory = {};                           // where it runs; empty: here
    std::string out_path = {};                            // standard output; empty: to us
    std::string input_path = {};                          // standard input; empty: "input"
    bool closes_input = false;                            // no standard input at all
    bool obeys_permissions = false;                       // those of files, superuser or not
    std::map<int, std::uint64_t> limits = {};             // of resources: RLIMIT_NOFILE and so on
};

RunResult run_kivo(const std::vector<std::string>& arguments, const RunOptions& options = {});

// The path of one of the project's example descriptions.
std::string example(const std::string& name);

// A description with these sections.
std::string with_sections(const std::string& sections);

std::vector<std::string> lines_of(const std::string& text);
// The lines that name a place: those that begin with "PATH:", without that.
std::vector<std::string> places_in(const std::string& text, const std::string& path);
// Those of them that are messages and not notes on one.
std::vector<std::string> messages_in(const std::string& text, const std::string& path);
