#include "kivo/hdl/hdl_translator.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

struct OperatorRow {
    std::string_view word;
    std::string_view target;
};

// One bit of 32 for the letter that a token begins with, in either case.
constexpr std::uint32_t bit_of_first(std::string_view token) {
    return 1U << (LESS_C_STRING::fold(token.front()) & 31U);
}

// The rows of one language, and what tells most tokens apart from every word in them.
struct OperatorTable {
    constexpr OperatorTable() = default;
    template <std::size_t kSize>
    constexpr explicit OperatorTable(const OperatorRow (&table_rows)[kSize])
        : rows(table_rows), size(kSize) {
        for (const OperatorRow& row : table_rows) {
            longest_word = std::max(longest_word, row.word.size());
            first_letters |= bit_of_first(row.word);
        }
    }

    constexpr const OperatorRow* begin() const { return rows; }
    constexpr const OperatorRow* end() const { return rows + size; }

    const OperatorRow* rows = nullptr;
    std::size_t size = 0;
    std::size_t longest_word = 0;
    std::uint32_t first_letters = 0;
};

// The two languages differ on purpose: a word that is an operator of the language itself is no
// row of its table.
// clang-format off
constexpr OperatorRow kNhdlRows[] = {
    { "%",    "mod" },
    { "/",    "div" },
    { "and",  "&"   },
    { "gt",   ">"   },
    { "gte",  ">="  },
    { "lt",   "<"   },
    { "lte",  "<="  },
    { "quot", "div" },
    { "||",   "#"   },
};

constexpr OperatorRow kVerilogRows[] = {
    { "and",  "&&" },
    { "div",  "/"  },
    { "gt",   ">"  },
    { "gte",  ">=" },
    { "lt",   "<"  },
    { "lte",  "<=" },
    { "quot", "/"  },
};
// clang-format on

constexpr OperatorTable kNhdl(kNhdlRows);
constexpr OperatorTable kVhdl;
constexpr OperatorTable kVerilog(kVerilogRows);

constexpr bool is_sorted_without_doubles(const OperatorTable& table) {
    for (std::size_t i = 1; i < table.size; ++i) {
        if (LESS_C_STRING::compare(table.rows[i - 1].word, table.rows[i].word) >= 0) {
            return false;
        }
    }
    return true;
}
static_assert(is_sorted_without_doubles(kNhdl) && is_sorted_without_doubles(kVerilog));

const OperatorTable& table_of(KIVO_HDL_LANGUAGE language) {
    switch (language) {
        case KIVO_HDL_NHDL:
            return kNhdl;
        case KIVO_HDL_VHDL:
            return kVhdl;
        case KIVO_HDL_VERILOG:
            return kVerilog;
    }
    // Hosts may pass any number; what is no language translates as VHDL does.
    return kVhdl;
}

// The row of an operator word, or null.
const OperatorRow* find_row(const OperatorTable& table, std::string_view token) {
    if (token.empty() || token.size() > table.longest_word ||
        (table.first_letters & bit_of_first(token)) == 0) {
        return nullptr;
    }
    for (const OperatorRow& row : table) {
        if (row.word.size() == token.size() && LESS_C_STRING::compare(row.word, token) == 0) {
            return &row;
        }
    }
    return nullptr;
}

KIVO_HDL_TRANSLATOR_MAP make_map(const OperatorTable& table) {
    KIVO_HDL_TRANSLATOR_MAP map;
    for (const OperatorRow& row : table) {
        map[std::string(row.word)] = row.target;
    }
    return map;
}

// Joined by single blanks, the tokens of a text give the text again, except that blanks at its
// front have nothing to join and that one blank at its end closes the last token.
std::string_view strip_outer_blanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

}  // namespace

KIVO_HDL_TRANSLATOR_MAP init_nhdl_translator_map() {
    return make_map(kNhdl);
}

KIVO_HDL_TRANSLATOR_MAP init_vhdl_translator_map() {
    return make_map(kVhdl);
}

KIVO_HDL_TRANSLATOR_MAP init_verilog_translator_map() {
    return make_map(kVerilog);
}

std::string kivo_translate_text_to_hdl(const std::string& text, KIVO_HDL_LANGUAGE language) {
    const OperatorTable& table = table_of(language);
    const std::string_view tokens = strip_outer_blanks(text);
    if (table.size == 0) {
        return std::string(tokens);
    }
    std::string result;
    result.reserve(tokens.size());
    // What stands between two operator words is copied in one piece.
    std::size_t copied = 0;
    std::size_t start = 0;
    while (start < tokens.size()) {
        std::size_t end = start;
        while (end < tokens.size() && tokens[end] != ' ') {
            ++end;
        }
        if (const OperatorRow* row = find_row(table, tokens.substr(start, end - start))) {
            result.append(tokens, copied, start - copied);
            result.append(row->target);
            copied = end;
        }
        start = end + 1;
    }
    result.append(tokens, copied);
    return result;
}
