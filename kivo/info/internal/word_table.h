#pragma once

// Tables in which readers look words up: tags, attributes and values. Each row begins with its
// word, and the same rows tell a message which words are known.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/objects/internal/message.h"

// For tables that say no more than which words there are.
struct WordRow {
    std::string_view word;
};

// The row of that word, null for an unknown one.
template <class Row, std::size_t kCount>
const Row* find_row(const Row (&rows)[kCount], std::string_view word) {
    for (const Row& row : rows) {
        if (row.word == word) {
            return &row;
        }
    }
    return nullptr;
}

template <const auto& kRows>
void gather_words(std::uint32_t, std::vector<std::string>& words) {
    for (const auto& row : kRows) {
        words.emplace_back(row.word);
    }
}

// All words of a table.
template <const auto& kRows>
constexpr KnownWords kWordsOf = {gather_words<kRows>, 0};
