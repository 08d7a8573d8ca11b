#pragma once

// Kinds of letters, whatever the locale; letters and digits are those of ASCII.

constexpr bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

constexpr bool is_capital(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

constexpr bool is_letter(char letter) {
    return is_capital(letter) || (letter >= 'a' && letter <= 'z');
}

constexpr bool is_letter_or_digit(char letter) {
    return is_letter(letter) || is_digit(letter);
}

// Part of a character of several bytes.
constexpr bool is_beyond_ascii(char letter) {
    return static_cast<unsigned char>(letter) >= 0x80;
}

// What a name in a condition begins with and goes on with.
constexpr bool can_begin_name(char letter) {
    return is_letter(letter) || letter == '_' || is_beyond_ascii(letter);
}

constexpr bool can_be_in_name(char letter) {
    return can_begin_name(letter) || is_digit(letter) || letter == '$';
}
