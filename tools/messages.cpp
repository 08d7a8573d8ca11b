#include "tools/messages.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/text_escape.h"

namespace {

// How much of a long source line is shown before and from the place, in bytes.
constexpr std::size_t kBefore = 60;
constexpr std::size_t kFrom = 100;

// A file, split into the lines that places count: ended by LF, CR or both.
class SourceFile {
public:
    explicit SourceFile(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        text_.assign(std::istreambuf_iterator<char>(stream), {});
        starts_.push_back(0);
        for (std::size_t at = 0; at < text_.size(); ++at) {
            const bool is_pair =
                text_[at] == '\r' && at + 1 < text_.size() && text_[at + 1] == '\n';
            if (text_[at] == '\n' || (text_[at] == '\r' && !is_pair)) {
                starts_.push_back(at + 1);
            }
        }
    }

    // Line "number", from 1, without its end; empty beyond the last.
    std::string_view line(std::size_t number) const {
        if (number == 0 || number > starts_.size()) {
            return {};
        }
        const std::size_t start = starts_[number - 1];
        const std::size_t end = number < starts_.size() ? starts_[number] : text_.size();
        std::string_view line = std::string_view(text_).substr(start, end - start);
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
            line.remove_suffix(1);
        }
        return line;
    }

private:
    std::string text_;
    std::vector<std::size_t> starts_;
};

class Reporter {
public:
    explicit Reporter(Stream& stream) : stream_(stream) {}

    void report(const std::string& path, const KIVO_PLACE& place, const std::string& text,
                const std::string& id);

private:
    const SourceFile& source(const std::string& path);
    void append_excerpt(std::string& out, const KIVO_PLACE& place);

    Stream& stream_;
    std::map<std::string, SourceFile> sources_;
};

// A tab is one column in places, so it is shown as one blank.
std::string as_shown(std::string_view source) {
    std::string blanked(source);
    std::replace(blanked.begin(), blanked.end(), '\t', ' ');
    return escape_text(blanked);
}

// Moves a cut to the start of the character in which it would fall.
std::size_t at_character(std::string_view line, std::size_t cut) {
    while (cut > 0 && cut < line.size() && (static_cast<unsigned char>(line[cut]) & 0xC0) == 0x80) {
        --cut;
    }
    return cut;
}

const SourceFile& Reporter::source(const std::string& path) {
    const auto found = sources_.find(path);
    return found != sources_.end() ? found->second : sources_.try_emplace(path, path).first->second;
}

void Reporter::append_excerpt(std::string& out, const KIVO_PLACE& place) {
    const std::string_view line = source(place.file).line(static_cast<std::size_t>(place.line));
    // A NUL byte in a line means an encoding of wide characters, which would not read well.
    if (line.empty() || line.find('\0') != std::string_view::npos) {
        return;
    }
    const std::size_t column = place.column < 1 ? 0 : static_cast<std::size_t>(place.column - 1);
    const std::size_t pointed = at_character(line, std::min(column, line.size()));
    const std::size_t first = at_character(line, pointed > kBefore ? pointed - kBefore : 0);
    const std::size_t last = at_character(line, std::min(pointed + kFrom, line.size()));
    const std::string before =
        (first > 0 ? "..." : "") + as_shown(line.substr(first, pointed - first));
    const std::string from =
        as_shown(line.substr(pointed, last - pointed)) + (last < line.size() ? "..." : "");
    const std::string number = std::to_string(place.line);
    out += fmt::format("{:>6} | {}{}\n{:>6} | {:{}}{}\n", number, before, from, "", "",
                       text_width(before), stream_.paint(Style::kPointer, "^"));
}

void Reporter::report(const std::string& path, const KIVO_PLACE& place, const std::string& text,
                      const std::string& id) {
    std::string where = escape_text(place.file.empty() ? path : place.file);
    if (place.line > 0) {
        where += fmt::format(":{}:{}", place.line, place.column);
    }
    std::string out = fmt::format("{} {} {} {}\n", stream_.paint(Style::kBold, where + ':'),
                                  stream_.paint(Style::kError, "error:"), escape_text(text),
                                  stream_.paint(Style::kDim, '[' + id + ']'));
    if (place.line > 0) {
        append_excerpt(out, place);
    }
    stream_.write(out);
}

}  // namespace

void report_messages(Stream& stream, const Description& description) {
    Reporter reporter(stream);
    const KIVO_INFO& info = description.info();
    for (std::size_t index = 0; index < info.error_list.size(); ++index) {
        reporter.report(description.path(), info.get_error_place(index), info.error_list[index],
                        info.get_error_id(index));
    }
}
