#include "tools/terminal/terminal.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "tools/text/text_escape.h"

namespace {

bool is_set(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool is_on(const char* variable) {
    return is_set(variable) && std::string_view(std::getenv(variable)) != "0";
}

bool is_color_terminal(std::FILE* file) {
    const char* const kind = std::getenv("TERM");
    return isatty(fileno(file)) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

bool wants_color(std::FILE* file, ColorChoice choice) {
    switch (choice) {
        case ColorChoice::kAlways:
            return true;
        case ColorChoice::kNever:
            return false;
        case ColorChoice::kAuto:
            break;
    }
    return !is_set("NO_COLOR") && (is_on("FORCE_COLOR") || is_color_terminal(file));
}

const char* sequence_of(Style style) {
    switch (style) {
        case Style::kBold:
            return "\033[1m";
        case Style::kDim:
            return "\033[2m";
        case Style::kError:
            return "\033[1;31m";
        case Style::kWarning:
            return "\033[1;35m";
        case Style::kNote:
            return "\033[1;36m";
        case Style::kPointer:
            return "\033[1;32m";
    }
    return "";
}

}  // namespace

void Stream::choose_color(ColorChoice choice) {
    is_colored_ = wants_color(file_, choice);
}

bool Stream::is_terminal() const {
    return isatty(fileno(file_)) == 1;
}

std::string Stream::paint(Style style, std::string_view text) const {
    if (!is_colored_ || text.empty()) {
        return std::string(text);
    }
    std::string painted = sequence_of(style);
    painted += text;
    painted += "\033[0m";
    return painted;
}

void Stream::write(std::string_view text) {
    if (error_ == 0 && std::fwrite(text.data(), 1, text.size(), file_) != text.size()) {
        error_ = errno;
    }
}

bool Stream::flush() {
    if (error_ == 0 && std::fflush(file_) != 0) {
        error_ = errno;
    }
    return error_ == 0;
}

void Terminal::report_error(std::string_view text) {
    std::string line = err.paint(Style::kBold, "kivo:");
    line += ' ';
    line += err.paint(Style::kError, "error:");
    line += ' ';
    line += escape_text(text);
    line += '\n';
    err.write(line);
}
