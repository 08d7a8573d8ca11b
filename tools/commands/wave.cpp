#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/files/file_output.h"
#include "tools/terminal/table.h"
#include "tools/text/text_escape.h"
#include "tools/wave/drivers.h"
#include "tools/wave/renderers.h"
#include "tools/wave/wave_model.h"

namespace {

// When all vectors are drawn, of which thousands could take seconds each.
constexpr std::size_t kMaxTransitionsOfOneAmongMany = kMaxTransitions / 4;

struct Request {
    std::string file;
    std::string vector;
    std::vector<std::string> otherwise;
    TerminalLook look{.columns = kPageWidth};
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

std::string quoted(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "'" : ", '") + name + "'";
    }
    return text.empty() ? "none" : text;
}

std::string names_of(const std::vector<KIVO_VECTOR_OBJ*>& vectors) {
    std::vector<std::string> names;
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
    Wave(Terminal& terminal, KIVO_INFO& info, const Request& request)
        : terminal_(terminal), info_(info), request_(request), vectors_(all_vectors(info)) {}

    int run() {
        const std::string all = names_of(vectors_);
        if (!request_.vector.empty()) {
            std::erase_if(vectors_, [this](const KIVO_VECTOR_OBJ* vector) {
                return vector->name != request_.vector;
            });
            if (vectors_.empty()) {
                return report_missing(
                    terminal_, "no vector '" + request_.vector + "'; the vectors are: " + all);
            }
        }
        if (vectors_.empty()) {
            return report_missing(terminal_, "the description has no vectors");
        }
        if (request_.wants_files() && vectors_.size() > 1) {
            terminal_.report_error("a file holds one vector, name it; the vectors are: " + all);
            return kExitUsage;
        }
        const int status = check_conditions();
        return status != kExitDone ? status
               : request_.wants_files()
                   ? write_files(make_model(*vectors_.front(), kMaxTransitions))
                   : draw();
    }

private:
    // A condition that no command has is a typing error.
    int check_conditions() {
        std::vector<std::string> known;
        for (KIVO_VECTOR_OBJ* vector : vectors_) {
            for (const std::string& condition : wave_conditions(*vector)) {
                known.push_back(condition);
            }
        }
        for (const std::string& condition : request_.otherwise) {
            if (std::find(known.begin(), known.end(), join_lines(condition)) == known.end()) {
                return report_missing(terminal_, "no command has the condition '" + condition +
                                                     "'; the conditions are: " + quoted(known));
            }
        }
        return kExitDone;
    }

    WaveModel make_model(KIVO_VECTOR_OBJ& vector, std::size_t max_transitions) {
        std::vector<std::string> otherwise;
        for (const std::string& condition : request_.otherwise) {
            otherwise.push_back(join_lines(condition));
        }
        WaveModel model = make_wave_model(info_, vector, otherwise, max_transitions);
        for (const std::string& note : model.notes) {
            write_note(note);
        }
        return model;
    }

    void write_note(const std::string& note) {
        terminal_.err.write("kivo: note: " + escape_text(note) + "\n");
    }

    int draw() {
        const std::size_t limit =
            vectors_.size() > 1 ? kMaxTransitionsOfOneAmongMany : kMaxTransitions;
        std::size_t room = kMaxTransitions;
        std::size_t drawn = 0;
        for (; drawn < vectors_.size() && room > 0; ++drawn) {
            const WaveModel model = make_model(*vectors_[drawn], std::min(limit, room));
            room -= std::min(room, model.transitions);
            terminal_.out.write(drawn == 0 ? "" : "\n");
            terminal_.out.write(render_terminal(model, request_.look, terminal_.out));
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
        if (!request_.svg.empty()) {
            is_written = write(request_.svg, render_svg(model));
        }
        if (!request_.vcd.empty()) {
            is_written = write_vcd_file(model) && is_written;
        }
        if (!request_.gtkw.empty()) {
            is_written =
                write(request_.gtkw, write_gtkw(model, request_.vcd, request_.gtkw)) && is_written;
        }
        if (!request_.wavejson.empty()) {
            is_written = write_wavejson_file(model) && is_written;
        }
        return is_written ? kExitDone : kExitFailed;
    }

    bool write_vcd_file(const WaveModel& model) {
        const auto dump = write_vcd(model);
        if (!dump) {
            terminal_.report_error(fmt::format(
                "cannot write '{}': the values of vector '{}' are too wide and change too often",
                request_.vcd, model.name));
            return false;
        }
        return write(request_.vcd, *dump);
    }

    bool write_wavejson_file(const WaveModel& model) {
        const auto document = write_wavejson(model);
        if (!document) {
            terminal_.report_error(fmt::format(
                "cannot write '{}': in steps of {} the waves of vector '{}' are too long",
                request_.wavejson, model.common_step(), model.name));
            return false;
        }
        return write(request_.wavejson, *document);
    }

    Terminal& terminal_;
    KIVO_INFO& info_;
    const Request& request_;
    std::vector<KIVO_VECTOR_OBJ*> vectors_;
};

// What is wrong with the paths of the files to be written; empty when nothing is.
std::string check_outputs(const Request& request) {
    std::vector<std::string> others;
    for (const std::string& output : {request.svg, request.vcd, request.gtkw, request.wavejson}) {
        if (output.empty()) {
            continue;
        }
        if (is_same_file(output, request.file)) {
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

int wave(Terminal& terminal, const Request& request) {
    if (const std::string problem = check_outputs(request); !problem.empty()) {
        terminal.report_error(problem);
        return kExitUsage;
    }
    Description description(request.file);
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    const int status = Wave(terminal, description.info(), request).run();
    return status == kExitDone && description.has_messages() ? kExitMessages : status;
}

std::string check_file_name(const std::string& name) {
    return name.empty() ? "the name of a file is missing" : "";
}

}  // namespace

Command add_wave(CLI::App& program) {
    const CLI::Validator file_name(check_file_name, "");
    CLI::App* const app = program.add_subcommand("wave", "Draw the waveforms of vectors");
    auto request = std::make_shared<Request>();
    app->add_option("FILE", request->file, "Description file")->required()->type_name("");
    app->add_option("VECTOR", request->vector,
                    "Name of a waveform or custom vector; without it, all are drawn")
        ->type_name("");
    app->add_option("--else", request->otherwise,
                    "Take the ELSE part where this is the condition; may be repeated")
        ->type_name("COND")
        ->allow_extra_args(false);
    app->add_flag("--ascii", request->look.is_ascii,
                  "Draw with ASCII characters; otherwise that depends on the locale");
    app->add_option("--width", request->look.columns,
                    "Columns of the drawing, 40 to 1000; 100 by default")
        ->type_name("COLUMNS")
        ->check(CLI::Range(40, 1000).description(""));
    app->add_option("--svg", request->svg, "Write a picture instead")
        ->type_name("OUT")
        ->check(file_name);
    CLI::Option* const vcd = app->add_option("--vcd", request->vcd, "Write a Value Change Dump")
                                 ->type_name("OUT")
                                 ->check(file_name);
    app->add_option("--gtkw", request->gtkw, "Write a GTKWave save file for the dump")
        ->type_name("OUT")
        ->check(file_name)
        ->needs(vcd);
    app->add_option("--wavejson", request->wavejson, "Write WaveJSON")
        ->type_name("OUT")
        ->check(file_name);
    app->footer(
        "Conditions are not evaluated: of a conditional command the THEN part counts, unless\n"
        "--else names its condition. A file holds one vector.\n"
        "Exit status: 0 done, 1 done although the description gave messages, or it has no such\n"
        "vector, 2 wrong usage, 3 the file cannot be read or the output not be written.\n\n"
        "Example:\n  kivo wave fifo_info.xml fill_and_drain --svg fill_and_drain.svg");
    return {app,
            "kivo wave [--else COND]... [--ascii] [--width COLUMNS] [--svg OUT] "
            "[--vcd OUT [--gtkw OUT]] [--wavejson OUT] [--color WHEN] FILE [VECTOR]",
            [request](Terminal& terminal) {
                request->look.is_ascii = request->look.is_ascii || !is_utf8_locale();
                return wave(terminal, *request);
            }};
}
