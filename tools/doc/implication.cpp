#include "tools/doc/implication.h"

#include <string>

namespace {

// "( ( A) and ( B ) ) || ( !( A ) )", or with " and ( C )" before the last parenthesis.
constexpr std::string_view kOpening = "( ( ";
constexpr std::string_view kAnd = ") and ( ";
constexpr std::string_view kOr = " ) ) || ( !( ";
constexpr std::string_view kElse = " ) and ( ";
constexpr std::string_view kClosing = " ) )";
// A condition may hold the same words itself; nobody writes more of them.
constexpr int kMostTries = 32;

bool ends_with(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::optional<Implication> split_at(std::string_view text, std::size_t condition_end) {
    const std::string_view condition =
        text.substr(kOpening.size(), condition_end - kOpening.size());
    std::string_view rest = text.substr(condition_end + kAnd.size());
    const std::string repeated = std::string(kOr) + std::string(condition);
    rest.remove_suffix(kClosing.size());
    if (ends_with(rest, repeated)) {
        return Implication{condition, rest.substr(0, rest.size() - repeated.size()), {}};
    }
    const std::size_t otherwise = rest.find(repeated + std::string(kElse));
    if (otherwise == std::string_view::npos) {
        return std::nullopt;
    }
    return Implication{condition, rest.substr(0, otherwise),
                       rest.substr(otherwise + repeated.size() + kElse.size())};
}

}  // namespace

std::optional<Implication> implication_of(std::string_view text) {
    const std::size_t least = kAnd.size() + kClosing.size();
    if (text.substr(0, kOpening.size()) != kOpening || !ends_with(text, kClosing)) {
        return std::nullopt;
    }
    std::size_t at = text.find(kAnd, kOpening.size());
    for (int i = 0; i < kMostTries && at != std::string_view::npos && at + least <= text.size();
         ++i) {
        if (auto found = split_at(text, at)) {
            return found;
        }
        at = text.find(kAnd, at + 1);
    }
    return std::nullopt;
}
