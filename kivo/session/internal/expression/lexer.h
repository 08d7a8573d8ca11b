#pragma once

#include <cstdint>
#include <string_view>

#include "kivo/session/internal/expression/operators.h"

namespace kivo_session {

enum class TokenKind : std::uint8_t {
    kEnd,
    kNumber,
    kText,
    kName,
    kOperator,
    kOpen,
    kClose,
    kComma,
    kWrong,  // no token of the language; "hint" says more
};

struct Token {
    TokenKind kind = TokenKind::kEnd;
    std::uint8_t row = kNoOperator;  // of an operator
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    const char* hint = nullptr;  // what to write in place of a wrong token; null: nothing is known
};

// Cuts a text into tokens, one at a time. Past the end it gives kEnd for ever.
class Lexer {
public:
    explicit Lexer(std::string_view text) : text_(text) {}

    Token next();
    // Whether the next token is "(".
    bool is_before_open();

private:
    void skip_white_space();
    Token take(TokenKind kind, std::size_t length);
    Token number();
    Token quoted();
    Token name();
    Token symbol();

    std::string_view text_;
    std::size_t at_ = 0;
};

// A text without the blanks of the language around it.
std::string_view trimmed(std::string_view text);

bool is_name_start(char letter);
bool is_name_part(char letter);

// A character of typesetting that looks like one of the language or like nothing at all.
struct LookAlike {
    std::string_view bytes;
    const char* name;  // "a no-break space"
    const char* hint;
};

// The first of them in a text, and where; null when there is none.
const LookAlike* find_look_alike(std::string_view text, std::size_t* offset);

}  // namespace kivo_session
