#include "tools/lint/stimulus_command.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

namespace {

constexpr std::string_view kDigits = "0123456789";
// Those of numbers and patterns in any radix.
constexpr std::string_view kLettersOfValues = "0123456789ABCDEFabcdefXZUWLHxzuwlh-_.";
constexpr std::string_view kUnits[] = {"fs", "ps", "ns", "us", "ms", "s"};

struct BlankRow {
    std::string_view bytes;
    std::string_view name;
};

// clang-format off
constexpr BlankRow kBlankRows[] = {
    { " ",            "a blank"                         },
    { "\t",           "a tab"                           },
    { "\n",           "a line break"                    },
    { "\r",           "a line break"                    },
    { "\v",           "a control character"             },
    { "\f",           "a control character"             },
    { "\xC2\xA0",     "a no-break space"                },
    { "\xE2\x80\x87", "a no-break space"                },
    { "\xE2\x80\xAF", "a no-break space"                },
    { "\xE2\x80\x82", "a typographic blank"           },
    { "\xE2\x80\x83", "a typographic blank"           },
    { "\xE2\x80\x89", "a typographic blank"           },
    { "\xE2\x80\x8A", "a typographic blank"           },
    { "\xE2\x80\x8B", "a character of no width"         },
    { "\xE3\x80\x80", "a typographic blank"           },
    { "\xEF\xBB\xBF", "a character of no width"         },
};
// clang-format on

const BlankRow* find_blank(std::string_view text) {
    const auto* const found =
        std::find_if(std::begin(kBlankRows), std::end(kBlankRows),
                     [text](const BlankRow& row) { return text.starts_with(row.bytes); });
    return found == std::end(kBlankRows) ? nullptr : found;
}

std::string with_plain_blanks(std::string_view source) {
    std::string text(source);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = blank_length(source.substr(at));
        std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(at), length, ' ');
        at += std::max<std::size_t>(length, 1);
    }
    return text;
}

void skip_spaces(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
}

bool has_only_spaces(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string_view without_spaces_after(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view take_word(std::string_view& rest) {
    skip_spaces(rest);
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(word.size());
    return word;
}

// Takes a number as the library reads it: a sign and digits.
std::string_view take_number(std::string_view& rest) {
    const std::size_t sign = rest.substr(0, 1) == "-" || rest.substr(0, 1) == "+" ? 1 : 0;
    const std::size_t end = std::min(rest.find_first_not_of(kDigits, sign), rest.size());
    const std::string_view number = rest.substr(0, end > sign ? end : 0);
    rest.remove_prefix(number.size());
    return number;
}

void read_number(std::string_view number, CommandTime& time) {
    if (number.empty()) {
        return;
    }
    std::int64_t value = 0;
    const std::string_view digits = number.substr(number.front() == '+' ? 1 : 0);
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        value = number.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                                      : std::numeric_limits<std::int64_t>::max();
    }
    time.value = static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    time.fits = time.value == value;
}

bool is_unit(std::string_view text) {
    return std::find(std::begin(kUnits), std::end(kUnits), text) != std::end(kUnits);
}

// Takes the time that stands after the blank of an item. What follows it and a blank is left when
// it can be another item.
CommandTime take_time(std::string_view& rest) {
    rest.remove_prefix(rest.substr(0, 1) == " " ? 1 : 0);
    const bool has_sign = rest.substr(0, 1) == "@";
    rest.remove_prefix(has_sign ? 1 : 0);
    skip_spaces(rest);
    CommandTime time;
    time.text = rest;
    const std::string_view number = take_number(rest);
    read_number(number, time);
    std::string_view next = rest;
    skip_spaces(next);
    const bool is_followed_by_item =
        !number.empty() && next.size() < rest.size() && !next.empty() && !is_unit(next);
    if (is_followed_by_item || next.empty()) {
        time.text = number;
        time.is_whole = !number.empty();
        rest = next;
    } else {
        rest.remove_prefix(rest.size());
    }
    return time;
}

CommandItem take_item(std::string_view& rest) {
    CommandItem item;
    const char* const begin = rest.data();
    item.value = take_word(rest);
    item.has_time = !rest.empty();
    item.time = take_time(rest);
    item.text = without_spaces_after({begin, static_cast<std::size_t>(rest.data() - begin)});
    return item;
}

// Appends the items of what stands between two separators: one, if no comma is missing.
void append_items(std::vector<CommandItem>& items, std::string_view piece, ItemStart start) {
    piece = without_spaces_after(piece);
    std::size_t blanks = piece.size();
    skip_spaces(piece);
    blanks -= piece.size();
    while (!piece.empty()) {
        CommandItem& item = items.emplace_back(take_item(piece));
        item.start = start;
        item.follows_blanks = blanks > 0;
        start = ItemStart::kWithoutComma;
        blanks = 0;
    }
}

}  // namespace

std::size_t blank_length(std::string_view text) {
    const BlankRow* const row = find_blank(text);
    return row == nullptr ? 0 : row->bytes.size();
}

std::string_view name_of_blank(std::string_view blank) {
    return find_blank(blank)->name;
}

ItemKind CommandItem::kind() const {
    if (value == "-r" || value == "-repeat") {
        return ItemKind::kRepeat;
    }
    if (value == "-c" || value == "-cancel") {
        return ItemKind::kCancel;
    }
    const bool is_option =
        value.substr(0, 1) == "-" &&
        (value.find_first_not_of(kLettersOfValues) != std::string_view::npos || value == "-hex");
    return is_option ? ItemKind::kUnknownOption : ItemKind::kValue;
}

StimulusCommand::StimulusCommand(std::string_view source) : text(with_plain_blanks(source)) {
    std::string_view rest = text;
    keyword = take_word(rest);
    signal = take_word(rest);
    if (signal.substr(0, 1) == "-") {
        option = signal;
        signal = take_word(rest);
    }
    skip_spaces(rest);
    take_list(rest);
}

void StimulusCommand::take_list(std::string_view rest) {
    ItemStart start = ItemStart::kOfList;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(",;"), rest.size());
        const std::string_view piece = rest.substr(0, end);
        const std::string_view separator = rest.substr(end, 1);
        rest.remove_prefix(end + separator.size());
        append_items(items, piece, start);
        start = separator == ";" ? ItemStart::kAfterSemicolon : ItemStart::kAfterComma;
        const bool is_lonely = has_only_spaces(piece) || has_only_spaces(rest);
        if (separator == "," && is_lonely) {
            lonely_commas.push_back(separator);
        } else if (separator == ";") {
            semicolons.push_back(separator);
        }
    }
}
