#include "kivo/vectors/stimulus.h"

#include <cassert>
#include <string_view>

#include "kivo/objects/rule_element.h"
#include "kivo/toolkit/radix.h"
#include "kivo/toolkit/strings.h"

namespace {

// What stands before the items of a command.
struct Head {
    std::string_view signal;
    DRO_MEMORY_RADIXES radix = DRO_RADIX_SIGNED;
    std::string_view fixed_point;  // the format's description, of DRO_RADIX_FIXED_POINT only
};

struct Item {
    std::string_view value;
    std::int32_t time = 0;
    bool has_time = false;
};

// Like next_token, but made for tokens of a few characters, where a call costs more than the
// characters do.
std::string_view take_token(std::string_view& rest, char delimiter) {
    std::size_t end = 0;
    while (end < rest.size() && rest[end] != delimiter) {
        ++end;
    }
    const std::string_view token = rest.substr(0, end);
    rest.remove_prefix(end == rest.size() ? end : end + 1);
    return token;
}

std::string_view skip_blanks(std::string_view text) {
    // No white space lies above the blank; most items follow none.
    const bool may_begin_with_one =
        !text.empty() && static_cast<unsigned char>(text.front()) <= ' ';
    return may_begin_with_one ? trim_left_view(text) : text;
}

bool is_option(std::string_view token) {
    return !token.empty() && token.front() == '-';
}

// "-signed", "-unsigned" and unknown options leave the values decimal.
void read_radix_option(std::string_view option, Head& head) {
    if (option == "-bin") {
        head.radix = DRO_RADIX_BINARY;
    } else if (option == "-hex") {
        head.radix = DRO_RADIX_HEX;
    } else if (take_token(option, '(') == "-fixed_point") {
        head.fixed_point = take_token(option, ')');
        if (!head.fixed_point.empty()) {
            head.radix = DRO_RADIX_FIXED_POINT;
        }
    }
}

// Takes the head off the front of "rest"; false when that is no "force" command.
bool take_head(std::string_view& rest, Head& head) {
    if (take_token(rest, ' ') != "force") {
        return false;
    }
    head.signal = take_token(rest, ' ');
    if (is_option(head.signal)) {
        read_radix_option(head.signal, head);
        head.signal = take_token(rest, ' ');
    }
    return true;
}

constexpr int kNoLetter = -1;

// Takes an item off the front of "rest", with the letter that ends it. Everything in one scan: the
// walk over the items is what an evaluation costs.
Item take_item(std::string_view& rest, int end_letter) {
    const char* const end = rest.data() + rest.size();
    const char* at = rest.data();
    const auto at_end = [&] { return at == end || static_cast<unsigned char>(*at) == end_letter; };

    Item item;
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

// The item that takes all of "text", commas included.
Item whole_item(std::string_view text) {
    return take_item(text, kNoLetter);
}

// Whether an item that stands at "start" comes up at "time" when it repeats. In 64 bits, so that
// the lowest time divided by -1 has a result.
bool comes_up(std::int64_t time, std::int64_t period, std::int64_t start) {
    if (period == 0) {
        return start != 0 && time / start == 0;
    }
    return time % period == start;
}

// One walk over the items of a command.
class Walk {
public:
    Walk(std::string_view signal, std::int32_t time) : signal_(signal), time_(time) {}

    void run(std::string_view items) {
        std::string_view rest = skip_blanks(items);
        std::size_t blanks = 0;  // that stand before "rest" and were skipped
        while (!rest.empty()) {
            if (rest.front() == ',') {
                // Behind a missing item everything is one item, which is not saved.
                reaches_match(whole_item(skip_blanks(rest.substr(1))));
                return;
            }
            std::string_view with_blanks = {rest.data() - blanks, rest.size() + blanks};
            const Item item = take_item(rest, ',');
            if (saved_ < 2) {
                // The skipped blanks count here, which leaves such an item no value to repeat.
                first_two_[saved_++] = blanks == 0 ? item : take_item(with_blanks, ',');
            }
            if (reaches_match(item)) {
                return;
            }
            const std::string_view next = skip_blanks(rest);
            blanks = rest.size() - next.size();
            rest = next;
        }
    }

    std::string_view signal() const { return signal_; }
    std::string_view value() const { return value_; }

private:
    // True when the item makes the transition that ends the walk.
    bool reaches_match(const Item& item) {
        if (item.value.empty() || !item.has_time) {
            return false;
        }
        if (item.value.front() != '-') {
            return matches(item);
        }
        if (item.value == "-r" || item.value == "-repeat") {
            repeat(item.time);
            return false;
        }
        if (item.value == "-c" || item.value == "-cancel") {
            if (time_ >= item.time) {
                value_ = {};
                signal_ = {};
            }
            return false;
        }
        return matches(item);
    }

    bool matches(const Item& item) {
        if (item.time != time_) {
            return false;
        }
        value_ = item.value;
        return true;
    }

    void repeat(std::int32_t period) {
        if (period > time_ || saved_ < 2) {
            return;
        }
        const auto& [first, second] = first_two_;
        // The first item follows no blanks, so it always has a value.
        if (comes_up(time_, period, first.time)) {
            value_ = first.value;
        }
        if (value_.empty() && comes_up(time_, period, second.time)) {
            value_ = second.value;
        }
    }

    std::string_view signal_;
    std::string_view value_;
    std::int32_t time_;
    // The items that repeats go back to; kept split, so that a repeat costs the same whatever their
    // length.
    Item first_two_[2];
    int saved_ = 0;
};

void write_as_binary(const Head& head, std::string& value) {
    // A value that does not convert stays as it is, behind the same prefix.
    if (head.radix == DRO_RADIX_FIXED_POINT) {
        dro_radix_conversion_fixed_point(value, &value, DRO_RADIX_FIXED_POINT, DRO_RADIX_BINARY,
                                         std::string(head.fixed_point));
    } else {
        dro_radix_conversion(value, &value, head.radix, DRO_RADIX_BINARY, 0);
    }
    value.insert(0, "0b");
}

bool evaluate(std::string_view command, std::int32_t time, std::string& signal,
              std::string& value) {
    Head head;
    if (!take_head(command, head)) {
        signal.clear();
        value.clear();
        return false;
    }
    Walk walk(head.signal, time);
    walk.run(command);
    signal.assign(walk.signal());
    value.assign(walk.value());
    if (value.empty()) {
        return false;
    }
    if (head.radix != DRO_RADIX_SIGNED) {
        write_as_binary(head, value);
    }
    return true;
}

}  // namespace

// By value is the interface that hosts are built against.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool kivo_get_transition_at_time(std::string command, std::int32_t time, std::string& signal,
                                 std::string& value) {
    return evaluate(command, time, signal, value);
}

bool kivo_get_vector_transition(KIVO_OBJ_LIST* stimulus, std::int32_t time, std::string& signal,
                                std::string& value) {
    assert(stimulus != nullptr);
    while (const KIVO_OBJ* object = stimulus->get_next_value()) {
        const auto* entry = dynamic_cast<const KIVO_RULE_ELEMENT*>(object);
        if (entry != nullptr && evaluate(entry->text1, time, signal, value)) {
            return true;
        }
    }
    stimulus->reset();
    return false;
}

bool kivo_stimulus_exists(KIVO_OBJ_LIST* stimulus, const std::string& signal) {
    assert(stimulus != nullptr);
    stimulus->reset();
    while (const KIVO_OBJ* object = stimulus->get_next_value()) {
        const auto* entry = dynamic_cast<const KIVO_RULE_ELEMENT*>(object);
        if (entry == nullptr) {
            continue;
        }
        std::string_view command = entry->text1;
        Head head;
        if (take_head(command, head) && head.signal == signal) {
            return true;
        }
    }
    return false;
}
