#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tools/commands/commands.h"
#include "tools/commands/configuring.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/files/file_output.h"
#include "tools/findings/text_report.h"
#include "tools/terminal/table.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"
#include "tools/wave/drivers.h"
#include "tools/wave/renderers.h"
#include "tools/wave/wave_model.h"
#include "tools/wave/wave_notes.h"

namespace {

// When all vectors are drawn, of which thousands could take seconds each.
constexpr std::size_t kMaxTransitionsOfOneAmongMany = kMaxTransitions / 4;

struct Options {
    std::string file;
    Directories directories;
    FindingOptions findings;
    std::string vector;
    ConfigurationRequest request;
    std::vector<std::string> otherwise;
    bool is_ascii = false;
    std::int32_t columns = kPageWidth;
    std::string svg;
    std::string vcd;
    std::string gtkw;
    std::string wavejson;

    bool wants_files() const { return !svg.empty() || !vcd.empty() || !wavejson.empty(); }
};

// The first of these that is set decides, as for every program.
bool is_utf8_locale() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value == nullptr || *value == '\0') {
            continue;
        }
        std::string name = value;
        std::transform(name.begin(), name.end(), name.begin(), LESS_C_STRING::fold);
        return name.find("utf-8") != std::string::npos || name.find("utf8") != std::string::npos;
    }
    return false;
}

std::vector<KIVO_VECTOR_OBJ*> all_vectors(KIVO_INFO& info) {
    std::vector<KIVO_VECTOR_OBJ*> vectors;
    // A name taken by an object of another class gives none.
    std::string name;
    info.vector_map.reset();
    while (KIVO_OBJ* object = info.vector_map.get_next_entry(name)) {
        if (auto* vector = dynamic_cast<KIVO_VECTOR_OBJ*>(object)) {
            vectors.push_back(vector);
        }
    }
    return vectors;
}

std::string names_of(const std::vector<KIVO_VECTOR_OBJ*>& vectors) {
    std::vector<std::string> names;
    names.reserve(vectors.size());
    for (const KIVO_VECTOR_OBJ* vector : vectors) {
        names.push_back(vector->name);
    }
    return quoted(names);
}

int report_missing(Terminal& terminal, const std::string& what) {
    terminal.report_error(what);
    return kExitMessages;
}

class Wave {
public:
    // "session" may be null.
    Wave(Terminal& terminal, Description& description, const KIVO_SESSION* session,
         const Options& options, const std::vector<Finding>& warnings)
        : terminal_(terminal),
          info_(description.info()),
          session_(session),
          options_(options),
          vectors_(all_vectors(info_)),
          warnings_(warnings) {
        if (session == nullptr) {
            defaults_.emplace(info_);
        }
    }

    int run() {
        const std::string all = names_of(vectors_);
        if (!options_.vector.empty()) {
            std::erase_if(vectors_, [this](const KIVO_VECTOR_OBJ* vector) {
                return vector->name != options_.vector;
            });
            if (vectors_.empty()) {
                return report_missing(
                    terminal_, "no vector '" + options_.vector + "'; the vectors are: " + all);
            }
        }
        if (vectors_.empty()) {
            return report_missing(terminal_, "the description has no vectors");
        }
        if (!drop_others()) {
            return report_missing(terminal_, options_.vector.empty()
                                                 ? "no vector applies to this configuration"
                                                 : "vector '" + options_.vector +
                                                       "' does not apply to this configuration");
        }
        if (options_.wants_files() && vectors_.size() > 1) {
            terminal_.report_error("a file holds one vector, name it; the vectors are: " + all);
            return kExitUsage;
        }
        const int status = check_conditions();
        return status != kExitDone ? status
               : options_.wants_files()
                   ? write_files(make_model(*vectors_.front(), kMaxTransitions))
                   : draw();
    }

private:
    // Leaves the vectors that apply; false when there is none.
    bool drop_others() {
        const std::set<std::string> others = vectors_left_out(session_);
        std::erase_if(vectors_, [&others](const KIVO_VECTOR_OBJ* vector) {
            return others.count(vector->name) > 0;
        });
        return !vectors_.empty();
    }

    // A condition that no command has is a typing error.
    int check_conditions() {
        std::vector<std::string> known;
        for (KIVO_VECTOR_OBJ* vector : vectors_) {
            for (const std::string& condition : wave_conditions(*vector)) {
                known.push_back(condition);
            }
        }
        for (const std::string& condition : options_.otherwise) {
            if (std::find(known.begin(), known.end(), join_lines(condition)) == known.end()) {
                return report_missing(terminal_, "no command has the condition '" + condition +
                                                     "'; the conditions are: " + quoted(known));
            }
        }
        return kExitDone;
    }

    WaveModel make_model(KIVO_VECTOR_OBJ& vector, std::size_t max_transitions) {
        WaveCase drawn;
        drawn.session = session_;
        drawn.defaults = defaults_ ? &*defaults_ : nullptr;
        for (const std::string& condition : options_.otherwise) {
            drawn.otherwise.push_back(join_lines(condition));
        }
        WaveModel model = make_wave_model(info_, vector, drawn, max_transitions);
        for (const std::string& note : model.notes) {
            write_note(note);
        }
        for (const Finding& warning : warnings_) {
            if (warning.object == vector.name) {
                write_finding(terminal_.err, options_.file, warning);
            }
        }
        const std::vector<std::string> notes = wave_notes(warnings_, vector.name);
        model.notes.insert(model.notes.end(), notes.begin(), notes.end());
        return model;
    }

    void write_note(const std::string& note) {
        terminal_.err.write("kivo: note: " + escape_text(note) + "\n");
    }

    int draw() {
        const TerminalLook look = {static_cast<std::size_t>(options_.columns),
                                   options_.is_ascii || !is_utf8_locale()};
        const std::size_t limit =
            vectors_.size() > 1 ? kMaxTransitionsOfOneAmongMany : kMaxTransitions;
        std::size_t room = kMaxTransitions;
        std::size_t drawn = 0;
        for (; drawn < vectors_.size() && room > 0; ++drawn) {
            const WaveModel model = make_model(*vectors_[drawn], std::min(limit, room));
            room -= std::min(room, model.transitions);
            terminal_.out.write(drawn == 0 ? "" : "\n");
            terminal_.out.write(render_terminal(model, look, terminal_.out));
        }
        if (drawn < vectors_.size()) {
            write_note(fmt::format(
                "the last {} of {} vectors are left out, since those before them make too many "
                "transitions; name one to see it",
                vectors_.size() - drawn, vectors_.size()));
        }
        return kExitDone;
    }

    bool write(const std::string& path, std::string_view content) {
        const auto failure = write_file(path, content);
        if (failure) {
            terminal_.report_error("cannot write '" + path + "': " + *failure);
        }
        return !failure;
    }

    int write_files(const WaveModel& model) {
        bool is_written = true;
        if (!options_.svg.empty()) {
            is_written = write(options_.svg, render_svg(model));
        }
        if (!options_.vcd.empty()) {
            is_written = write_vcd_file(model) && is_written;
        }
        if (!options_.gtkw.empty()) {
            is_written =
                write(options_.gtkw, write_gtkw(model, options_.vcd, options_.gtkw)) && is_written;
        }
        if (!options_.wavejson.empty()) {
            is_written = write_wavejson_file(model) && is_written;
        }
        return is_written ? kExitDone : kExitFailed;
    }

    bool write_vcd_file(const WaveModel& model) {
        const auto dump = write_vcd(model);
        if (!dump) {
            terminal_.report_error(fmt::format(
                "cannot write '{}': the values of vector '{}' are too wide and change too often",
                options_.vcd, model.name));
            return false;
        }
        return write(options_.vcd, *dump);
    }

    bool write_wavejson_file(const WaveModel& model) {
        const auto document = write_wavejson(model);
        if (!document) {
            terminal_.report_error(fmt::format(
                "cannot write '{}': in steps of {} the waves of vector '{}' are too long",
                options_.wavejson, model.common_step(), model.name));
            return false;
        }
        return write(options_.wavejson, *document);
    }

    Terminal& terminal_;
    KIVO_INFO& info_;
    const KIVO_SESSION* session_;
    std::optional<KIVO_SESSION> defaults_;  // without a session
    const Options& options_;
    std::vector<KIVO_VECTOR_OBJ*> vectors_;
    const std::vector<Finding>& warnings_;
};

// What is wrong with the paths of the files to be written; empty when nothing is.
std::string check_outputs(const Options& options, const std::string& description) {
    std::vector<std::string> others;
    for (const std::string& output : {options.svg, options.vcd, options.gtkw, options.wavejson}) {
        if (output.empty()) {
            continue;
        }
        if (is_same_file(output, description)) {
            return "'" + output + "' is the description; name another output";
        }
        if (std::any_of(others.begin(), others.end(),
                        [&](const std::string& other) { return is_same_file(output, other); })) {
            return "'" + output + "' is the file of two outputs; name another for one of them";
        }
        others.push_back(output);
    }
    return {};
}

int wave(Terminal& terminal, const Options& options) {
    Description description(options.file, options.directories);
    if (const std::string problem = check_outputs(options, description.path()); !problem.empty()) {
        terminal.report_error(problem);
        return kExitUsage;
    }
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    const Configuration configuration(terminal, description.info(), options.request);
    if (configuration.failure()) {
        return *configuration.failure();
    }
    FindingFilter filter(options.findings);
    const std::vector<Finding> warnings = warnings_of_waves(description, filter);
    if (!report_settings(terminal, filter)) {
        return kExitFailed;
    }
    const int status =
        Wave(terminal, description, configuration.session(), options, warnings).run();
    const int loading = status_of_loading(description, warnings);
    return status != kExitDone ? status : loading != kExitDone ? loading : configuration.status();
}

constexpr const char* kFooter =
    "With NAME=VALUE, the vectors that apply to that configuration are drawn, and conditions and\n"
    "widths are evaluated. Without, the THEN part of a conditional command counts, unless --else\n"
    "names its condition. A file holds one vector.\n"
    "Exit status: 0 done, 1 done although the description gave messages or the configuration is\n"
    "not legal or not as asked for, or there is no such vector, 2 wrong usage, 3 the file cannot\n"
    "be read or the output not be written.\n\n"
    "Examples:\n"
    "  kivo wave fifo_info.xml fill_and_drain --svg fill_and_drain.svg\n"
    "  kivo wave fifo_info.xml fill_and_drain READ_MODE=SHOW_AHEAD";

std::string check_case(const Options& options) {
    return !options.otherwise.empty() && !options.request.settings.empty()
               ? "--else and NAME=VALUE exclude each other, which decides all conditions"
               : "";
}

}  // namespace

Command make_wave() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "wave",
        .summary = "Draw the waveforms of vectors",
        .rows = {
            description_row(options->file),
            {.name = "VECTOR", .target = &options->vector,
             .help = "Name of a waveform or custom vector; without it, all are drawn",
             .accepts = is_no_setting},
            settings_row(options->request),
            {.name = "--else", .value_name = "COND", .target = &options->otherwise,
             .help = "Take the ELSE part where this is the condition; may be repeated"},
            directories_row(options->directories),
            warnings_row(options->findings),
            config_row(options->findings),
            {.name = "--ascii", .target = &options->is_ascii,
             .help = "Draw with ASCII characters; otherwise that depends on the locale"},
            {.name = "--width", .value_name = "COLUMNS", .target = &options->columns,
             .help = "Columns of the drawing, 40 to 1000; 100 by default",
             .least = 40, .most = 1000},
            {.name = "--svg", .value_name = "OUT", .target = &options->svg,
             .help = "Write a picture instead", .offer = Offer::kFiles},
            {.name = "--vcd", .value_name = "OUT", .target = &options->vcd,
             .help = "Write a Value Change Dump", .offer = Offer::kFiles},
            {.name = "--gtkw", .value_name = "OUT", .target = &options->gtkw,
             .help = "Write a GTKWave save file for the dump", .offer = Offer::kFiles,
             .needs = "--vcd"},
            {.name = "--wavejson", .value_name = "OUT", .target = &options->wavejson,
             .help = "Write WaveJSON", .offer = Offer::kFiles},
        },
        .footer = kFooter,
        .check = [options] { return check_case(*options); },
        .run = [options](Terminal& terminal) { return wave(terminal, *options); },
    };
    // clang-format on
}
