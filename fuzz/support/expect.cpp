#include "fuzz/support/expect.h"

#include <cstdio>
#include <cstdlib>

namespace {

void show(std::string_view text) {
    constexpr std::size_t kMost = 2000;
    for (const char letter : text.substr(0, kMost)) {
        if (letter >= ' ' && letter <= '~') {
            std::fputc(letter, stderr);
        } else {
            std::fprintf(stderr, "\\x%02X", static_cast<unsigned char>(letter));
        }
    }
    std::fputs(text.size() > kMost ? "...\n" : "\n", stderr);
}

void tell(std::string_view promise) {
    std::fputs("broken promise: ", stderr);
    show(promise);
}

}  // namespace

void expect(bool holds, std::string_view promise) {
    if (!holds) {
        tell(promise);
        std::abort();
    }
}

void expect(bool holds, std::string_view promise, std::string_view seen) {
    if (!holds) {
        tell(promise);
        std::fputs("  seen: ", stderr);
        show(seen);
        std::abort();
    }
}

void expect_same(std::string_view first, std::string_view second, std::string_view promise) {
    if (first != second) {
        tell(promise);
        std::fputs("  first:  ", stderr);
        show(first);
        std::fputs("  second: ", stderr);
        show(second);
        std::abort();
    }
}
