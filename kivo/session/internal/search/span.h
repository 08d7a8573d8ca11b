#pragma once

#include <cstdint>
#include <vector>

#include "kivo/session/internal/expression/value.h"

namespace kivo_session {

inline constexpr Whole kGreatestWhole = static_cast<Whole>(~static_cast<UnsignedWhole>(0) >> 1);
inline constexpr Whole kLeastWhole = -kGreatestWhole - 1;

// Everything that a value can be while some settings are not fixed. It may hold more than can
// happen, never less.
struct Span {
    static Span nothing() { return {}; }
    static Span anything();
    static Span of(Value value, const ReasonSets& reasons);
    static Span truth(bool may_be_true, bool may_be_false);
    static Span whole(Whole least, Whole greatest);
    static Span real(double least, double greatest);
    static Span text(WordId word);
    static Span any_text();
    static Span port(std::uint32_t port);
    static Span fault();
    static Span run_time();

    bool is_text() const { return is_any_text || !texts.empty(); }
    bool is_unknown() const { return may_fault || may_run_time; }
    bool is_number() const { return may_be_whole || may_be_real; }
    // Adds what another one can be.
    void add(const Span& other);
    void add_unknown(const Span& other);

    bool may_fault = false;     // not known, and that counts against the configuration
    bool may_run_time = false;  // not known before run time
    bool may_be_true = false;
    bool may_be_false = false;
    bool may_be_whole = false;
    bool may_be_real = false;
    bool is_any_text = false;
    bool is_port = false;  // this one port and nothing else
    std::uint32_t port_index = 0;
    Whole least = 0;
    Whole greatest = 0;
    double least_real = 0;
    double greatest_real = 0;
    std::vector<WordId> texts;  // sorted
};

// Sums, products and so on of whole numbers, with what does not fit cut off; "fault" becomes true
// when anything was.
Whole saturated_sum(Whole left, Whole right, bool* fault);
Whole saturated_difference(Whole left, Whole right, bool* fault);
Whole saturated_product(Whole left, Whole right, bool* fault);
Whole saturated_power(Whole base, Whole exponent, bool* fault);  // REQUIRES: both >= 0

}  // namespace kivo_session
