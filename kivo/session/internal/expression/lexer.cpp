#include "kivo/session/internal/expression/lexer.h"

#include <iterator>

namespace kivo_session {

namespace {

struct HintRow {
    std::string_view spelling;
    const char* hint;
};

// Looked for where no operator matches, longest first.
// clang-format off
constexpr HintRow kHints[] = {
    { "#",  "write \"||\" or \"or\""                                 },
    { "&",  "write \"&&\" or \"and\""                                },
    { "'",  "texts stand in double quotes"                           },
    { "=",  "write \"==\""                                           },
    { "?",  "there is no \"?:\"; use an element with IF and ELSE"    },
    { "|",  "write \"||\" or \"or\""                                 },
    { "~",  "write \"!\" or \"not\""                                 },
};

// Looked for before operators and the signs above, which are the beginnings of these.
constexpr HintRow kLongHints[] = {
    { "**", "write \"^\""              },
    { "/=", "write \"!=\""             },
    { "<>", "write \"!=\""             },
    { "=<", "write \"<=\" or \"lte\""  },
    { "=>", "write \">=\" or \"gte\""  },
};

constexpr LookAlike kLookAlikes[] = {
    { "\xC2\xA0",     "a no-break space",                    "write a blank"             },
    { "\xC2\xAB",     "a typographic quotation mark",        "write \""                  },
    { "\xC2\xB2",     "a raised 2",                          "write \"^ 2\""             },
    { "\xC2\xB3",     "a raised 3",                          "write \"^ 3\""             },
    { "\xC2\xB7",     "a raised dot",                        "write \"*\""               },
    { "\xC2\xBB",     "a typographic quotation mark",        "write \""                  },
    { "\xC3\x97",     "a multiplication sign",               "write \"*\""               },
    { "\xC3\xB7",     "a division sign",                     "write \"/\""               },
    { "\xE2\x80\x82", "a typographic space",                 "write a blank"             },
    { "\xE2\x80\x83", "a typographic space",                 "write a blank"             },
    { "\xE2\x80\x89", "a typographic space",                 "write a blank"             },
    { "\xE2\x80\x8B", "a space without width",               "take it away"              },
    { "\xE2\x80\x90", "a typographic hyphen",                "write \"-\""               },
    { "\xE2\x80\x91", "a no-break hyphen",                   "write \"-\""               },
    { "\xE2\x80\x93", "a typographic dash",                  "write \"-\""               },
    { "\xE2\x80\x94", "a typographic dash",                  "write \"-\""               },
    { "\xE2\x80\x98", "a typographic quotation mark",        "write \""                  },
    { "\xE2\x80\x99", "a typographic quotation mark",        "write \""                  },
    { "\xE2\x80\x9A", "a typographic quotation mark",        "write \""                  },
    { "\xE2\x80\x9C", "a typographic quotation mark",        "write \""                  },
    { "\xE2\x80\x9D", "a typographic quotation mark",        "write \""                  },
    { "\xE2\x80\x9E", "a typographic quotation mark",        "write \""                  },
    { "\xE2\x80\xAF", "a narrow no-break space",             "write a blank"             },
    { "\xE2\x88\x92", "a typographic minus sign",            "write \"-\""               },
    { "\xE2\x89\xA0", "a one-character \"not equal\"",       "write \"!=\""              },
    { "\xE2\x89\xA4", "a one-character \"less or equal\"",   "write \"<=\" or \"lte\""   },
    { "\xE2\x89\xA5", "a one-character \"greater or equal\"", "write \">=\" or \"gte\""  },
    { "\xEF\xBB\xBF", "a byte-order mark",                   "take it away"              },
};
// clang-format on

const char* hint_of(const HintRow* begin, const HintRow* end, std::string_view text,
                    std::size_t* length) {
    for (const HintRow* row = begin; row != end; ++row) {
        if (text.substr(0, row->spelling.size()) == row->spelling) {
            *length = row->spelling.size();
            return row->hint;
        }
    }
    return nullptr;
}

bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

bool is_blank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool is_name_start(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_' ||
           static_cast<unsigned char>(letter) > 127;
}

bool is_name_part(char letter) {
    return is_name_start(letter) || is_digit(letter) || letter == '$';
}

const LookAlike* find_look_alike(std::string_view text, std::size_t* offset) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (static_cast<unsigned char>(text[at]) <= 127) {
            continue;
        }
        for (const LookAlike& row : kLookAlikes) {
            if (text.substr(at, row.bytes.size()) == row.bytes) {
                *offset = at;
                return &row;
            }
        }
    }
    return nullptr;
}

void Lexer::skip_white_space() {
    while (at_ < text_.size() && is_blank(text_[at_])) {
        ++at_;
    }
}

bool Lexer::is_before_open() {
    skip_white_space();
    return at_ < text_.size() && text_[at_] == '(';
}

Token Lexer::take(TokenKind kind, std::size_t length) {
    Token token;
    token.kind = kind;
    token.offset = static_cast<std::uint32_t>(at_);
    token.length = static_cast<std::uint32_t>(length);
    at_ += length;
    return token;
}

Token Lexer::next() {
    skip_white_space();
    if (at_ == text_.size()) {
        return take(TokenKind::kEnd, 0);
    }
    const char first = text_[at_];
    if (is_name_start(first)) {
        return name();
    }
    if (is_digit(first)) {
        return number();
    }
    switch (first) {
        case '"':
            return quoted();
        case '(':
            return take(TokenKind::kOpen, 1);
        case ')':
            return take(TokenKind::kClose, 1);
        case ',':
            return take(TokenKind::kComma, 1);
        default:
            return symbol();
    }
}

Token Lexer::number() {
    std::size_t end = at_;
    const auto skip_digits = [&] {
        while (end < text_.size() && is_digit(text_[end])) {
            ++end;
        }
    };
    skip_digits();
    const bool is_hexadecimal = end == at_ + 1 && text_[at_] == '0' && end < text_.size() &&
                                (text_[end] == 'x' || text_[end] == 'X');
    if (is_hexadecimal) {
        Token token = take(TokenKind::kWrong, 2);
        token.hint = "numbers are decimal";
        return token;
    }
    if (end + 1 < text_.size() && text_[end] == '.' && is_digit(text_[end + 1])) {
        ++end;
        skip_digits();
    }
    return take(TokenKind::kNumber, end - at_);
}

Token Lexer::quoted() {
    const std::size_t end = text_.find('"', at_ + 1);
    if (end == std::string_view::npos) {
        Token token = take(TokenKind::kWrong, text_.size() - at_);
        token.hint = "the text does not end";
        return token;
    }
    return take(TokenKind::kText, end + 1 - at_);
}

Token Lexer::name() {
    std::size_t end = at_ + 1;
    while (end < text_.size() && is_name_part(text_[end])) {
        ++end;
    }
    Token token = take(TokenKind::kName, end - at_);
    token.row = find_operator(text_.substr(token.offset, token.length));
    if (token.row != kNoOperator) {
        token.kind = TokenKind::kOperator;
    }
    return token;
}

Token Lexer::symbol() {
    const std::string_view rest = text_.substr(at_);
    std::size_t length = 1;
    const char* hint = hint_of(std::begin(kLongHints), std::end(kLongHints), rest, &length);
    if (hint == nullptr) {
        for (const std::size_t size : {2U, 1U}) {
            const std::uint8_t row =
                rest.size() < size ? kNoOperator : find_operator(rest.substr(0, size));
            if (row != kNoOperator) {
                Token token = take(TokenKind::kOperator, size);
                token.row = row;
                return token;
            }
        }
        hint = hint_of(std::begin(kHints), std::end(kHints), rest, &length);
    }
    Token token = take(TokenKind::kWrong, length);
    token.hint = hint;
    return token;
}

}  // namespace kivo_session
