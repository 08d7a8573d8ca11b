#pragma once

#include <random>
#include <string>
#include <vector>

// Random texts of the rule language over the names that it is given; the same for the same seed.
class RandomTexts {
public:
    RandomTexts(std::uint32_t seed, std::vector<std::string> names)
        : random_(seed), names_(std::move(names)) {}

    std::size_t pick(std::size_t size) { return random_() % size; }

    template <class List>
    auto one_of(const List& list) {
        return *(std::begin(list) + static_cast<std::ptrdiff_t>(pick(std::size(list))));
    }

    // An expression of at most so many levels.
    std::string expression(int depth) {
        static constexpr const char* kBinary[] = {"||", "and", "==", "!=", "lt", "<=",  "gt",  ">=",
                                                  "+",  "-",   "*",  "/",  "%",  "mod", "div", "^"};
        static constexpr const char* kLeaves[] = {"0",   "1",        "2",  "7",
                                                  "2.5", "\"AUTO\"", "ON", "TRUE"};
        if (depth == 0 || pick(5) == 0) {
            return pick(3) == 0 ? std::string(one_of(kLeaves)) : one_of(names_);
        }
        switch (pick(8)) {
            case 0:
                return "!" + parenthesised(depth - 1);
            case 1:
                return "- " + parenthesised(depth - 1);
            case 2:
                return "max(" + expression(depth - 1) + ", " + expression(depth - 1) + ")";
            case 3:
                return expression(depth - 1) + " + 1";
            default:
                return parenthesised(depth - 1) + " " + one_of(kBinary) + " " +
                       parenthesised(depth - 1);
        }
    }

    std::string parenthesised(int depth) { return "( " + expression(depth) + " )"; }

private:
    std::mt19937 random_;
    std::vector<std::string> names_;
};
