#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>

#include "tools/lint/stimulus.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kNoTime = {
    "stimulus-item", "{} has no {}: it is silently ignored"};
constexpr LintRow kNoItem = {
    "stimulus-item", "an item is missing beside this comma"};
constexpr LintRow kAllOneItem = {
    "stimulus-item", "an item is missing before this comma: what follows is read as one item"};
constexpr LintRow kSemicolon = {
    "stimulus-item", "\";\" separates nothing: there is a \",\" between items"};
constexpr LintRow kNoComma = {
    "stimulus-item", "{} is not read: a comma is missing before it"};
constexpr LintRow kNotATime = {
    "stimulus-time", "{} is no whole number: the {} is read as {}"};
constexpr LintRow kTooLarge = {
    "stimulus-time", "{} is too large: the {} is read as {}"};
constexpr LintRow kNegative = {
    "stimulus-time", "{} is negative: waves begin at {}"};
constexpr LintRow kBeyondEnd = {
    "stimulus-time", "the time {} lies beyond MAX_TIME {}"};
constexpr LintRow kUnsorted = {
    "stimulus-order", "the time {} stands after the time {}: items are sorted by time"};
constexpr LintRow kSameTime = {
    "stimulus-order", "the time {} is given again: the first item of that time counts"};
constexpr LintRow kEarlyCancel = {
    "stimulus-order", "the cancel stands before the items: from {} on they belong to no signal"};
constexpr LintRow kAfterCancel = {
    "stimulus-order", "{} stands after the cancel: from {} on it belongs to no signal"};
constexpr LintRow kNothingToRepeat = {
    "stimulus-repeat", "there is nothing to repeat: two items must stand before {}"};
constexpr LintRow kHiddenItem = {
    "stimulus-repeat", "{} is not repeated: a blank stands before it"};
constexpr LintRow kThirdItem = {
    "stimulus-repeat", "{} is not repeated: only the first two items are"};
constexpr LintRow kNoPeriod = {
    "stimulus-repeat", "a period of 0 repeats nothing"};
constexpr LintRow kShortPeriod = {
    "stimulus-repeat", "{} never comes again: the period {} does not lie beyond its time"};
// clang-format on

// The number of the library, when the text is one.
std::optional<std::int32_t> sound_value(const CommandItem& item) {
    const bool is_sound = item.has_time && item.time.is_whole && item.time.fits;
    return is_sound ? std::optional(item.time.value) : std::nullopt;
}

// Passes the items in order.
class TimesCheck {
public:
    TimesCheck(const CommandSpot& at, const StimulusCommand& command)
        : at_(at), command_(command), start_(at.lint.info().start_time) {
        const DocumentAttribute* const name = at.spot.element.owner_name;
        const KIVO_VECTOR_OBJ* const vector =
            name == nullptr ? nullptr
                            : at.lint.info().get_vector_obj(std::string(name->value.text));
        if (vector != nullptr && vector->max_time >= 0) {
            end_ = vector->max_time;
        }
        const auto repeat =
            std::find_if(command.items.begin(), command.items.end(),
                         [](const CommandItem& item) { return item.kind() == ItemKind::kRepeat; });
        is_repeated_ = repeat != command.items.end();
        before_repeat_ = static_cast<std::size_t>(repeat - command.items.begin());
    }

    void run() {
        for (std::size_t index = 0; index < command_.items.size(); ++index) {
            pass(command_.items[index], index);
        }
    }

private:
    template <class... Argument>
    void post(const LintRow& row, std::string_view part, const Argument&... arguments) {
        at_.post(row, command_.text, part, arguments...);
    }

    void pass(const CommandItem& item, std::size_t index) {
        if (item.kind() == ItemKind::kUnknownOption) {
            return;  // which is told with the values
        }
        if (item.start == ItemStart::kWithoutComma) {
            const bool is_after_option =
                command_.items[index - 1].kind() == ItemKind::kUnknownOption;
            if (is_after_option) {
                return;
            }
            post(kNoComma, item.text, quoted(item.text));
        } else if (!item.has_time) {
            const bool is_repeat = item.kind() == ItemKind::kRepeat;
            post(kNoTime, item.text, quoted(item.text), is_repeat ? "period" : "time");
        }
        if (item.has_time) {
            check_number(item);
        }
        switch (item.kind()) {
            case ItemKind::kValue:
                pass_value(item, index);
                break;
            case ItemKind::kRepeat:
                pass_repeat(item);
                break;
            case ItemKind::kCancel:
                pass_cancel(item, index);
                break;
            case ItemKind::kUnknownOption:
                break;
        }
    }

    void check_number(const CommandItem& item) {
        const CommandTime& time = item.time;
        const std::string_view noun = item.kind() == ItemKind::kRepeat ? "period" : "time";
        if (!time.is_whole) {
            post(kNotATime, time.text, quoted(time.text), noun, time.value);
        } else if (!time.fits) {
            post(kTooLarge, time.text, quoted(time.text), noun, time.value);
        } else if (time.value < std::min(start_, 0)) {
            post(kNegative, time.text, time.value, start_);
        }
    }

    void pass_value(const CommandItem& item, std::size_t index) {
        if (values_.size() == 1 && item.follows_blanks && is_repeated_ && index < before_repeat_) {
            post(kHiddenItem, item.text, quoted(item.text));
        } else if (values_.size() == 2 && is_repeated_ && index < before_repeat_) {
            post(kThirdItem, item.text, quoted(item.text));
        }
        values_.push_back(&item);
        const std::optional<std::int32_t> time = sound_value(item);
        if (time && cancelled_from_ && !is_early_cancel_ && *time >= *cancelled_from_) {
            post(kAfterCancel, item.text, quoted(item.text), *cancelled_from_);
        } else {
            check_order(item);
        }
    }

    void check_order(const CommandItem& item) {
        const std::optional<std::int32_t> time = sound_value(item);
        if (!time) {
            return;
        }
        if (last_ && *time < *last_) {
            post(kUnsorted, item.time.text, *time, *last_);
        } else if (last_ && *time == *last_) {
            post(kSameTime, item.time.text, *time);
        } else if (end_ && *time > *end_ && !is_beyond_end_) {
            // Those after it are, too.
            post(kBeyondEnd, item.time.text, *time, *end_);
            is_beyond_end_ = true;
        }
        last_ = time;
    }

    void pass_cancel(const CommandItem& item, std::size_t index) {
        const std::optional<std::int32_t> time = sound_value(item);
        if (index == 0 && command_.items.size() > 1) {
            post(kEarlyCancel, item.text, item.time.value);
            is_early_cancel_ = true;
        } else {
            check_order(item);
        }
        if (time && !cancelled_from_) {
            cancelled_from_ = time;
        }
    }

    void pass_repeat(const CommandItem& item) {
        const std::optional<std::int32_t> period = sound_value(item);
        if (cancelled_from_ && !is_early_cancel_) {
            post(kAfterCancel, item.text, quoted(item.text), *cancelled_from_);
        } else if (values_.size() < 2) {
            post(kNothingToRepeat, item.text, quoted(item.text));
        } else if (period == 0) {
            post(kNoPeriod, item.text);
        } else if (period && *period > 0) {
            check_period(item, *period);
        }
    }

    // What lies a period or more after 0 is the remainder of no time.
    void check_period(const CommandItem& item, std::int32_t period) {
        for (const CommandItem* const repeated : {values_[0], values_[1]}) {
            const std::optional<std::int32_t> time = sound_value(*repeated);
            if (time && *time >= period) {
                post(kShortPeriod, item.text, quoted(repeated->text), period);
                return;
            }
        }
    }

    const CommandSpot& at_;
    const StimulusCommand& command_;
    std::int32_t start_;
    std::optional<std::int32_t> end_;
    bool is_repeated_ = false;
    std::size_t before_repeat_ = 0;  // the position of the first repeat
    std::vector<const CommandItem*> values_;
    std::optional<std::int32_t> last_;
    std::optional<std::int32_t> cancelled_from_;
    bool is_early_cancel_ = false;
    bool is_beyond_end_ = false;
};

void check_separators(const CommandSpot& at, const StimulusCommand& command) {
    for (const std::string_view semicolon : command.semicolons) {
        at.post(kSemicolon, command.text, semicolon);
    }
    for (const std::string_view comma : command.lonely_commas) {
        const bool is_last = is_blank(std::string_view(
            comma.data() + 1, command.text.data() + command.text.size() - comma.data() - 1));
        at.post(is_last ? kNoItem : kAllOneItem, command.text, comma);
    }
}

}  // namespace

void check_times(const CommandSpot& at, const StimulusCommand& command) {
    check_separators(at, command);
    TimesCheck(at, command).run();
}
