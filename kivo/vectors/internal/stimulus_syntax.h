#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "kivo/toolkit/internal/text_view.h"
#include "kivo/toolkit/radix/radix.h"

// How stimulus commands are split. Inline, because the walk over the items is what the evaluation
// at one time costs.

// What stands before the items of a command.
struct StimulusHead {
    std::string_view signal;
    DRO_MEMORY_RADIXES radix = DRO_RADIX_SIGNED;
    std::string_view fixed_point;  // the format's description, of DRO_RADIX_FIXED_POINT only
};

struct StimulusItem {
    std::string_view value;
    std::int32_t time = 0;
    bool has_time = false;
};

enum class StimulusItemKind { kNothing, kValue, kRepeat, kCancel };

// What a token that begins with "-" says about the values: "-signed", "-unsigned" and unknown
// options leave them decimal.
void read_radix_option(std::string_view option, StimulusHead& head);

// Rewrites a value of a "-bin", "-hex" or fixed-point command as "0b" and binary digits.
void write_as_binary(const StimulusHead& head, std::string& value);

// Like next_token, but made for tokens of a few characters, where a call costs more than the
// characters do.
inline std::string_view take_token(std::string_view& rest, char delimiter) {
    std::size_t end = 0;
    while (end < rest.size() && rest[end] != delimiter) {
        ++end;
    }
    const std::string_view token = rest.substr(0, end);
    rest.remove_prefix(end == rest.size() ? end : end + 1);
    return token;
}

// Takes "force", the radix option and the signal off the front of "rest"; false when that is no
// "force" command.
inline bool take_head(std::string_view& rest, StimulusHead& head) {
    if (take_token(rest, ' ') != "force") {
        return false;
    }
    head.signal = take_token(rest, ' ');
    if (!head.signal.empty() && head.signal.front() == '-') {
        read_radix_option(head.signal, head);
        head.signal = take_token(rest, ' ');
    }
    return true;
}

inline StimulusItemKind kind_of(const StimulusItem& item) {
    if (item.value.empty() || !item.has_time) {
        return StimulusItemKind::kNothing;
    }
    if (item.value.front() != '-') {
        return StimulusItemKind::kValue;
    }
    if (item.value == "-r" || item.value == "-repeat") {
        return StimulusItemKind::kRepeat;
    }
    if (item.value == "-c" || item.value == "-cancel") {
        return StimulusItemKind::kCancel;
    }
    return StimulusItemKind::kValue;
}

inline std::string_view skip_blanks(std::string_view text) {
    // No white space lies above the blank; most items follow none.
    const bool may_begin_with_one =
        !text.empty() && static_cast<unsigned char>(text.front()) <= ' ';
    return may_begin_with_one ? trim_left_view(text) : text;
}

// Ends no item.
constexpr int kNoLetter = -1;

// Takes an item off the front of "rest", with the letter that ends it. Everything in one scan: the
// walk over the items is what an evaluation costs.
inline StimulusItem take_item(std::string_view& rest, int end_letter) {
    const char* const end = rest.data() + rest.size();
    const char* at = rest.data();
    const auto at_end = [&] { return at == end || static_cast<unsigned char>(*at) == end_letter; };

    StimulusItem item;
    while (!at_end() && *at != ' ') {
        ++at;
    }
    item.value = {rest.data(), static_cast<std::size_t>(at - rest.data())};
    if (!at_end()) {
        ++at;
        item.has_time = !at_end();
        if (item.has_time && *at == '@') {
            ++at;
        }
        // Nine digits always fit. Whatever else stands there is read again, by the common rule.
        constexpr std::ptrdiff_t kSafeDigits = 9;
        const char* const time = at;
        while (!at_end() && *at >= '0' && *at <= '9' && at - time < kSafeDigits) {
            item.time = item.time * 10 + (*at - '0');
            ++at;
        }
        if (!at_end()) {
            while (!at_end()) {
                ++at;
            }
            item.time = to_int32({time, static_cast<std::size_t>(at - time)});
        }
    }
    rest.remove_prefix(static_cast<std::size_t>(at - rest.data()) + (at == end ? 0 : 1));
    return item;
}

// Hands the items that take part in the evaluation to "visit", in order, until it returns true.
// "first_two" gets the items that repeats go back to, and "saved" how many of them there are so
// far; both stand as of the item that is visited.
template <typename Visit>
inline void walk_items(std::string_view items, StimulusItem (&first_two)[2], int& saved,
                       const Visit& visit) {
    std::string_view rest = skip_blanks(items);
    std::size_t blanks = 0;  // that stand before "rest" and were skipped
    while (!rest.empty()) {
        if (rest.front() == ',') {
            // After a missing item everything is one item, commas included, which is not saved.
            rest = skip_blanks(rest.substr(1));
            visit(take_item(rest, kNoLetter));
            return;
        }
        std::string_view with_blanks = {rest.data() - blanks, rest.size() + blanks};
        const StimulusItem item = take_item(rest, ',');
        if (saved < 2) {
            // The skipped blanks count here, which leaves such an item no value to repeat.
            first_two[saved++] = blanks == 0 ? item : take_item(with_blanks, ',');
        }
        if (visit(item)) {
            return;
        }
        const std::string_view next = skip_blanks(rest);
        blanks = rest.size() - next.size();
        rest = next;
    }
}
