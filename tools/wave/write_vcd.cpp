#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "tools/description/time_scale.h"
#include "tools/text/text_escape.h"
#include "tools/wave/renderers.h"
#include "tools/wave/vcd_names.h"

namespace {

// Of all changes of a dump together: half a gigabyte of text.
constexpr std::size_t kMaxBits = 500'000'000;

// Short codes of the printable characters from "!" to "~".
std::string code_of(std::size_t index) {
    constexpr std::size_t kLetters = '~' - '!' + 1;
    std::string code;
    do {
        code += static_cast<char>('!' + index % kLetters);
        index /= kLetters;
    } while (index > 0);
    return code;
}

// Text for a comment, which a word "$end" would close.
std::string comment_text(const std::string& text) {
    std::string safe;
    for (const char letter : escape_text(text)) {
        safe += letter == '$' ? std::string("\\x24") : std::string(1, letter);
    }
    return safe;
}

class DumpWriter {
public:
    explicit DumpWriter(const WaveModel& model)
        : model_(model), names_(make_vcd_names(model)), scale_(read_time_scale(model.time_scale)) {}

    std::string write() {
        write_header();
        write_changes();
        return std::move(out_);
    }

private:
    void add(std::string_view text) {
        out_ += text;
        out_ += '\n';
    }

    void add_comment(const std::string& text) { add("$comment " + comment_text(text) + " $end"); }

    void write_header() {
        add("$version kivo $end");
        if (!model_.caption.empty()) {
            add_comment(model_.caption);
        }
        if (!scale_.is_known) {
            add_comment("Time scale of the description: '" + model_.time_scale + "'");
        }
        if (model_.start < 0) {
            add_comment(fmt::format("Time 0 is {} of the description", model_.start));
        }
        if (names_.scope != model_.name) {
            add_comment(names_.scope + " is " + model_.name);
        }
        for (std::size_t i = 0; i < model_.signals.size(); ++i) {
            if (names_.signals[i] != model_.signals[i].name) {
                add_comment(names_.signals[i] + " is " + model_.signals[i].name);
            }
        }
        add("$timescale " + scale_.text + " $end");
        add("$scope module " + names_.scope + " $end");
        for (std::size_t i = 0; i < model_.signals.size(); ++i) {
            const WaveSignal& signal = model_.signals[i];
            const std::string range = vcd_range(signal);
            add(fmt::format("$var wire {} {} {}{} $end", signal.width, code_of(i),
                            names_.signals[i], range.empty() ? "" : " " + range));
        }
        add("$upscope $end");
        add("$enddefinitions $end");
    }

    void write_time(std::int64_t time) {
        // A dump knows no time before 0.
        const std::int64_t origin = std::min<std::int64_t>(model_.start, 0);
        out_ += fmt::format("#{}\n", (time - origin) * scale_.factor);
    }

    void write_change(std::size_t index, const WaveChange& change) {
        const WaveSignal& signal = model_.signals[index];
        if (signal.width > 1) {
            out_ += 'b';
        }
        if (change.state == WaveState::kValue) {
            out_ += signal.values[change.value].bits;
        } else {
            out_.append(signal.width, change.state == WaveState::kReleased ? 'z' : 'x');
        }
        if (signal.width > 1) {
            out_ += ' ';
        }
        add(code_of(index));
    }

    void write_changes() {
        struct Event {
            std::int64_t time;
            std::size_t signal;
            const WaveChange* change;
        };
        write_time(model_.start);
        add("$dumpvars");
        std::vector<Event> events;
        for (std::size_t i = 0; i < model_.signals.size(); ++i) {
            const auto& changes = model_.signals[i].changes;
            write_change(i, changes.front());
            for (std::size_t k = 1; k < changes.size(); ++k) {
                events.push_back({changes[k].time, i, &changes[k]});
            }
        }
        add("$end");
        std::stable_sort(events.begin(), events.end(), [](const Event& left, const Event& right) {
            return left.time < right.time;
        });
        std::int64_t now = model_.start;
        for (const Event& event : events) {
            if (event.time != now) {
                now = event.time;
                write_time(now);
            }
            write_change(event.signal, *event.change);
        }
        if (now != model_.end) {
            write_time(model_.end);
        }
    }

    const WaveModel& model_;
    const VcdNames names_;
    const TimeScale scale_;
    std::string out_;
};

}  // namespace

std::optional<std::string> write_vcd(const WaveModel& model) {
    std::size_t room = kMaxBits;
    for (const WaveSignal& signal : model.signals) {
        if (signal.changes.size() > room / signal.width) {
            return std::nullopt;
        }
        room -= signal.changes.size() * signal.width;
    }
    return DumpWriter(model).write();
}
