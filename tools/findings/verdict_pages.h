#pragma once

#include <string_view>
#include <vector>

// What a user or author wants to know of one kind of verdict on a configuration. The same id may
// have a row in the catalogue of messages as well, about descriptions.
struct VerdictPage {
    std::string_view id;
    std::string_view severity;  // "error", "error or warning", ...
    // What is wrong, whether it keeps the configuration from being legal, and what to do: one
    // paragraph, its lines broken for the sake of the source only.
    std::string_view explanation;
    // A whole description that gives this verdict when these words are set, separated by blanks.
    std::string_view example;
    std::string_view settings;
};

// Every kind of verdict, those on parameters first, then rules, then ports.
const std::vector<VerdictPage>& verdict_pages();

// The page of that id, or null.
const VerdictPage* find_verdict_page(std::string_view id);
