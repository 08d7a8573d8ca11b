#pragma once

#include <cstddef>
#include <optional>
#include <string>

// What stands in standard input, as a file that the library can load. It has no name in any
// directory and is gone with the program, however that ends.
class StandardInput {
public:
    static constexpr const char* kName = "<stdin>";

    // Reads all of it. One that is longer than so many bytes counts as one that cannot be read: it
    // may have no end.
    explicit StandardInput(std::size_t limit);
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;
    ~StandardInput();

    // Why it could not be read.
    const std::optional<std::string>& failure() const { return failure_; }
    std::string path() const;

private:
    int file_ = -1;
    std::optional<std::string> failure_;
};
