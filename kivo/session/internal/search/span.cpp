#include "kivo/session/internal/search/span.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <limits>

namespace kivo_session {

namespace {

// More texts than these are not told apart.
constexpr std::size_t kMostTexts = 16;

}  // namespace

Span Span::anything() {  // NOLINT(misc-no-recursion): add() asks for it at most once
    Span span = whole(kLeastWhole, kGreatestWhole);
    span.add(real(std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max()));
    span.may_fault = span.may_run_time = true;
    span.may_be_true = span.may_be_false = true;
    span.is_any_text = true;
    return span;
}

Span Span::of(Value value, const ReasonSets& reasons) {
    switch (value.kind) {
        case ValueKind::kUnknown:
            return reasons.is_more_than_run_time(value.reasons()) ? fault() : run_time();
        case ValueKind::kTruth:
            return truth(value.is_true(), value.is_false());
        case ValueKind::kInteger:
        case ValueKind::kBig:
            return whole(value.as_whole(), value.as_whole());
        case ValueKind::kReal:
            return real(value.as_real(), value.as_real());
        case ValueKind::kText:
            return text(value.word());
        case ValueKind::kPort:
            break;
    }
    return port(value.port_index());
}

Span Span::truth(bool may_be_true, bool may_be_false) {
    Span span;
    span.may_be_true = may_be_true;
    span.may_be_false = may_be_false;
    return span;
}

Span Span::whole(Whole least, Whole greatest) {
    Span span;
    span.may_be_whole = true;
    span.least = least;
    span.greatest = greatest;
    return span;
}

Span Span::real(double least, double greatest) {
    Span span;
    span.may_be_real = true;
    span.least_real = least;
    span.greatest_real = greatest;
    return span;
}

Span Span::text(WordId word) {
    Span span;
    span.texts.push_back(word);
    return span;
}

Span Span::any_text() {
    Span span;
    span.is_any_text = true;
    return span;
}

Span Span::port(std::uint32_t port) {
    Span span;
    span.is_port = true;
    span.port_index = port;
    return span;
}

Span Span::fault() {
    Span span;
    span.may_fault = true;
    return span;
}

Span Span::run_time() {
    Span span;
    span.may_run_time = true;
    return span;
}

void Span::add_unknown(const Span& other) {
    may_fault = may_fault || other.may_fault;
    may_run_time = may_run_time || other.may_run_time;
}

void Span::add(const Span& other) {  // NOLINT(misc-no-recursion)
    const auto is_empty = [](const Span& span) {
        return !span.is_unknown() && !span.is_number() && !span.is_text() && !span.may_be_true &&
               !span.may_be_false && !span.is_port;
    };
    if (is_empty(other)) {
        return;
    }
    if (is_empty(*this)) {
        *this = other;
        return;
    }
    if (is_port || other.is_port) {
        if (!is_port || !other.is_port || port_index != other.port_index) {
            *this = anything();
        }
        return;
    }
    add_unknown(other);
    may_be_true = may_be_true || other.may_be_true;
    may_be_false = may_be_false || other.may_be_false;
    if (other.may_be_whole) {
        least = may_be_whole ? std::min(least, other.least) : other.least;
        greatest = may_be_whole ? std::max(greatest, other.greatest) : other.greatest;
        may_be_whole = true;
    }
    if (other.may_be_real) {
        least_real = may_be_real ? std::min(least_real, other.least_real) : other.least_real;
        greatest_real =
            may_be_real ? std::max(greatest_real, other.greatest_real) : other.greatest_real;
        may_be_real = true;
    }
    is_any_text = is_any_text || other.is_any_text;
    if (!is_any_text && !other.texts.empty()) {
        std::vector<WordId> both;
        std::set_union(texts.begin(), texts.end(), other.texts.begin(), other.texts.end(),
                       std::back_inserter(both));
        texts = std::move(both);
        is_any_text = texts.size() > kMostTexts;
    }
    if (is_any_text) {
        texts.clear();
    }
}

Whole saturated_sum(Whole left, Whole right, bool* fault) {
    Whole result = 0;
    if (__builtin_add_overflow(left, right, &result)) {
        *fault = true;
        return left < 0 ? kLeastWhole : kGreatestWhole;
    }
    return result;
}

Whole saturated_difference(Whole left, Whole right, bool* fault) {
    Whole result = 0;
    if (__builtin_sub_overflow(left, right, &result)) {
        *fault = true;
        return left < 0 ? kLeastWhole : kGreatestWhole;
    }
    return result;
}

Whole saturated_product(Whole left, Whole right, bool* fault) {
    Whole result = 0;
    if (__builtin_mul_overflow(left, right, &result)) {
        *fault = true;
        return (left < 0) != (right < 0) ? kLeastWhole : kGreatestWhole;
    }
    return result;
}

Whole saturated_power(Whole base, Whole exponent, bool* fault) {
    assert(base >= 0 && exponent >= 0);
    const std::optional<Whole> result = checked_power(base, exponent);
    if (!result) {
        *fault = true;
    }
    return result.value_or(kGreatestWhole);
}

}  // namespace kivo_session
