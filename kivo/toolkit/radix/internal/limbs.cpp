#include "kivo/toolkit/radix/internal/limbs.h"

#include <algorithm>
#include <utility>

namespace {

// Below so many limbs the square of the length is the cheaper one.
constexpr std::size_t kFewLimbs = 40;

void drop_leading_zeros(Limbs& number) {
    while (!number.empty() && number.back() == 0) {
        number.pop_back();
    }
}

// A part of a number; "size" may be 0.
struct Part {
    const std::uint64_t* limbs;
    std::size_t size;

    std::uint64_t at(std::size_t i) const { return i < size ? limbs[i] : 0; }
    Part low(std::size_t count) const { return {limbs, std::min(count, size)}; }
    Part high(std::size_t count) const {
        return size > count ? Part{limbs + count, size - count} : Part{limbs, 0};
    }
};

// Adds the part to what stands at "to", which has room for the carry.
template <class Base>
void add(std::uint64_t* to, Part part) {
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < part.size || carry != 0; ++i) {
        const Division sum = Base::split(Wide{to[i]} + part.at(i) + carry);
        to[i] = sum.rest;
        carry = sum.quotient;
    }
}

// Subtracts the part from what stands at "from", which is not less.
template <class Base>
void subtract(std::uint64_t* from, Part part) {
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < part.size || borrow != 0; ++i) {
        const Wide less = Wide{part.at(i)} + borrow;
        borrow = from[i] < less ? 1 : 0;
        from[i] = static_cast<std::uint64_t>((borrow != 0 ? Base::kBase : 0) + from[i] - less);
    }
}

// The difference without its sign, in "size" limbs; true when "left" is the smaller one.
template <class Base>
bool distance(Part left, Part right, std::size_t size, Limbs& difference) {
    std::size_t top = size;
    while (top > 0 && left.at(top - 1) == right.at(top - 1)) {
        --top;
    }
    const bool is_smaller = top > 0 && left.at(top - 1) < right.at(top - 1);
    if (is_smaller) {
        std::swap(left, right);
    }
    difference.assign(left.limbs, left.limbs + left.size);
    difference.resize(size);
    subtract<Base>(difference.data(), right);
    return is_smaller;
}

// Adds the product to what stands at "to", which has room for it.
template <class Base>
void add_product_by_limb(std::uint64_t* to, Part left, Part right) {
    for (std::size_t i = 0; i < left.size; ++i) {
        std::uint64_t carry = 0;
        for (std::size_t k = 0; k < right.size; ++k) {
            const Division sum =
                Base::split(Wide{left.limbs[i]} * right.limbs[k] + to[i + k] + carry);
            to[i + k] = sum.rest;
            carry = sum.quotient;
        }
        add<Base>(to + i + right.size, {&carry, 1});
    }
}

// The product in left.size + right.size limbs. Three products of halves make one of the whole: the
// calls are as deep as the logarithm of the size.
template <class Base>
Limbs product(Part left, Part right) {  // NOLINT(misc-no-recursion)
    // One more limb takes the carry, always 0, of additions that end at the last.
    Limbs result(left.size + right.size + 1);
    const std::size_t half = (std::max(left.size, right.size) + 1) / 2;
    if (std::min(left.size, right.size) < kFewLimbs) {
        add_product_by_limb<Base>(result.data(), left, right);
    } else {
        Limbs low = product<Base>(left.low(half), right.low(half));
        Limbs high = product<Base>(left.high(half), right.high(half));
        drop_leading_zeros(low);
        drop_leading_zeros(high);
        Limbs left_distance;
        Limbs right_distance;
        const bool left_is_negative =
            distance<Base>(left.low(half), left.high(half), half, left_distance);
        const bool right_is_negative =
            distance<Base>(right.low(half), right.high(half), half, right_distance);
        const Limbs middle =
            product<Base>({left_distance.data(), half}, {right_distance.data(), half});
        // low + high - (low - high of the left) * (low - high of the right)
        Limbs cross(2 * half + 2);
        add<Base>(cross.data(), {low.data(), low.size()});
        add<Base>(cross.data(), {high.data(), high.size()});
        if (left_is_negative == right_is_negative) {
            subtract<Base>(cross.data(), {middle.data(), middle.size()});
        } else {
            add<Base>(cross.data(), {middle.data(), middle.size()});
        }
        drop_leading_zeros(cross);
        add<Base>(result.data(), {low.data(), low.size()});
        add<Base>(result.data() + 2 * half, {high.data(), high.size()});
        add<Base>(result.data() + half, {cross.data(), cross.size()});
    }
    result.pop_back();
    return result;
}

// Rewrites a number whose limbs are of base "from" in the other base: pairs of limbs become one
// piece, pairs of pieces a longer one, and so on; a piece times the power that its place stands for
// is added to its neighbour.
template <class Base>
Limbs rewrite(const Limbs& number, Wide from) {
    std::vector<Limbs> pieces;
    pieces.reserve(number.size());
    for (const std::uint64_t limb : number) {
        const Division split = Base::split(limb);
        pieces.push_back({split.rest, split.quotient});
        drop_leading_zeros(pieces.back());
    }
    const Division base = Base::split(from);
    Limbs power = {base.rest, base.quotient};
    while (pieces.size() > 1) {
        drop_leading_zeros(power);
        for (std::size_t i = 0; i + 1 < pieces.size(); i += 2) {
            Limbs& low = pieces[i];
            const Limbs& high = pieces[i + 1];
            Limbs joined = product<Base>({high.data(), high.size()}, {power.data(), power.size()});
            joined.resize(std::max(joined.size(), low.size()) + 1);
            add<Base>(joined.data(), {low.data(), low.size()});
            drop_leading_zeros(joined);
            pieces[i / 2] = std::move(joined);
        }
        if (pieces.size() % 2 != 0) {
            pieces[pieces.size() / 2] = std::move(pieces.back());
        }
        pieces.resize((pieces.size() + 1) / 2);
        if (pieces.size() > 1) {
            power = product<Base>({power.data(), power.size()}, {power.data(), power.size()});
        }
    }
    return pieces.empty() ? Limbs() : std::move(pieces.front());
}

}  // namespace

Limbs binary_to_decimal(const Limbs& from) {
    return rewrite<DecimalBase>(from, BinaryBase::kBase);
}

Limbs decimal_to_binary(const Limbs& from) {
    return rewrite<BinaryBase>(from, DecimalBase::kBase);
}
