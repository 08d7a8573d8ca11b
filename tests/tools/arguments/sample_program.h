#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/arguments/command.h"

inline bool is_setting(std::string_view word) {
    return word.find('=') != std::string_view::npos;
}

inline bool is_no_setting(std::string_view word) {
    return !is_setting(word);
}

// A program with a row of every kind.
struct SampleProgram {
    SampleProgram() {
        program.name = "tool";
        program.version = "tool 1.2";
        program.summary = "Does things.";
        program.help_row = {.name = "--help", .short_name = "-h", .help = "Print this"};
        program.version_row = {.name = "--version", .help = "Print the version"};
        // clang-format off
        program.common_rows = {
            {.name = "--color", .value_name = "WHEN", .target = &color, .help = "Colours",
             .choices = {"always", "never"}}};
        program.commands = {
            {.name = "draw", .summary = "Draw something",
             .rows = {
                {.name = "FILE", .target = &file, .help = "A file", .is_required = true},
                {.name = "THING", .target = &thing, .help = "What", .accepts = is_no_setting},
                {.name = "NAME=VALUE", .target = &settings, .help = "Settings",
                 .accepts = is_setting},
                {.name = "--output", .short_name = "-o", .value_name = "FILE", .target = &output,
                 .help = "Where to", .offer = Offer::kFiles},
                {.name = "--index", .value_name = "FILE", .target = &index, .help = "Its index",
                 .offer = Offer::kFiles, .needs = "--output"},
                {.name = "-I", .value_name = "DIR", .target = &folders, .help = "Where to look",
                 .offer = Offer::kFolders},
                {.name = "--width", .value_name = "COLUMNS", .target = &width, .help = "Width",
                 .least = 40, .most = 1000},
                {.name = "--fail-on", .value_name = "LEVEL", .target = &level, .help = "When",
                 .choices = {"never", "error"}},
                {.name = "--plain", .target = &is_plain, .help = "Plainly"}},
             .check = [this] { return thing == "nothing" ? "nothing is to be drawn" : ""; }},
            {.name = "list", .summary = "List words",
             .rows = {
                {.name = "WORD", .target = &words, .help = "Words", .is_required = true,
                 .check = [](const std::string& word) {
                     return word == "bad" ? std::string("a bad word") : std::string(); }}}},
            {.name = "secret", .is_hidden = true}};
        // clang-format on
    }
    SampleProgram(const SampleProgram&) = delete;
    SampleProgram& operator=(const SampleProgram&) = delete;

    Program program;
    std::string color;
    std::string file;
    std::string thing;
    std::vector<std::string> settings;
    std::string output;
    std::string index;
    std::vector<std::string> folders = {"."};
    std::int32_t width = 100;
    std::string level = "error";
    bool is_plain = false;
    std::vector<std::string> words;
};
