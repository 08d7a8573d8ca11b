#pragma once

#include <cstdio>
#include <string>
#include <string_view>

enum class ColorChoice { kAuto, kAlways, kNever };

enum class Style { kBold, kDim, kError, kWarning, kNote, kPointer };

// One of the two standard streams: what is written to it, in colour or not, and whether all of it
// arrived.
class Stream {
public:
    explicit Stream(std::FILE* file) : file_(file) {}

    // kAuto asks NO_COLOR, then FORCE_COLOR, then whether the stream is a terminal.
    void choose_color(ColorChoice choice);
    bool is_terminal() const;
    // The text with the style's colour around it, or the text alone.
    std::string paint(Style style, std::string_view text) const;

    // After a write that failed, writes nothing more.
    void write(std::string_view text);
    // Hands on what is still buffered; false when this or any write failed.
    bool flush();
    // The errno of the first write that failed, 0 for none.
    int error() const { return error_; }

private:
    std::FILE* file_;
    bool is_colored_ = false;
    int error_ = 0;
};

// The streams of the program.
struct Terminal {
    Stream out{stdout};
    Stream err{stderr};

    // "kivo: error: TEXT" on the error stream, in one line whatever the text holds.
    void report_error(std::string_view text);
};
