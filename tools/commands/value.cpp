#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/text/text_escape.h"

namespace {

struct Request {
    std::string file;
    std::string vector;
    std::string signal;
    std::int32_t time = 0;
};

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "'" : ", '") + name + '\'';
    }
    return text.empty() ? "none" : text;
}

std::vector<std::string> vector_names(KIVO_INFO& info) {
    std::vector<std::string> names;
    info.reset_vector_map();
    while (const KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        names.push_back(vector->name);
    }
    return names;
}

// The signals that the commands name, each once.
std::vector<std::string> signal_names(KIVO_VECTOR_OBJ& vector) {
    std::vector<std::string> names;
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        std::string signal;
        std::string value;
        // No command has cancelled its signal yet at the very first time.
        kivo_get_transition_at_time(entry->text1, std::numeric_limits<std::int32_t>::min(), signal,
                                    value);
        if (!signal.empty()) {
            names.push_back(signal);
        }
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

// The last transition of the signal at that time: a later command overrides an earlier one.
std::optional<std::string> value_at(KIVO_VECTOR_OBJ& vector, const Request& request) {
    std::optional<std::string> found;
    std::string signal;
    std::string value;
    vector.stimulus_list.reset();
    while (kivo_get_vector_transition(&vector.stimulus_list, request.time, signal, value)) {
        if (signal == request.signal) {
            found = value;
        }
    }
    return found;
}

int report_unknown(Terminal& terminal, const std::string& what) {
    terminal.report_error(what);
    return kExitMessages;
}

int answer(Terminal& terminal, KIVO_INFO& info, const Request& request) {
    KIVO_VECTOR_OBJ* const vector = info.get_vector_obj(request.vector);
    if (vector == nullptr) {
        return report_unknown(terminal, "no vector '" + request.vector +
                                            "'; the vectors are: " + joined(vector_names(info)));
    }
    if (!kivo_stimulus_exists(&vector->stimulus_list, request.signal)) {
        return report_unknown(terminal, "vector '" + request.vector + "' drives no signal '" +
                                            request.signal +
                                            "'; its signals are: " + joined(signal_names(*vector)));
    }
    const std::optional<std::string> value = value_at(*vector, request);
    terminal.out.write(value ? escape_text(*value) + '\n' : std::string("no transition\n"));
    return kExitDone;
}

int value(Terminal& terminal, const Request& request) {
    Description description(request.file);
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    const int status = answer(terminal, description.info(), request);
    return description.has_messages() ? kExitMessages : status;
}

std::string check_time(const std::string& text) {
    std::int32_t time = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, time);
    return read.ec == std::errc() && read.ptr == end
               ? std::string()
               : "a time is a whole number of 32 bits, not '" + text + "'";
}

}  // namespace

Command add_value(CLI::App& program) {
    CLI::App* const app =
        program.add_subcommand("value", "Tell to which value a signal changes at a time");
    auto request = std::make_shared<Request>();
    app->add_option("FILE", request->file, "Description file")->required()->type_name("");
    app->add_option("VECTOR", request->vector, "Name of a waveform or custom vector")
        ->required()
        ->type_name("");
    app->add_option("SIGNAL", request->signal, "Name of a signal that the vector drives")
        ->required()
        ->type_name("");
    app->add_option("TIME", request->time, "Time, in units of the description")
        ->required()
        ->type_name("")
        ->check(CLI::Validator(check_time, ""));
    app->footer(
        "Prints the new value, or \"no transition\" when the signal does not change at that\n"
        "time. Values of binary, hexadecimal and fixed-point commands come as 0b and bits.\n"
        "Conditions are not evaluated: of a conditional command the THEN part counts.\n"
        "Exit status: 0 done, 1 done although the description gave messages, or it has no such\n"
        "vector or signal, 2 wrong usage, 3 the file cannot be read.\n\n"
        "Example:\n  kivo value fifo_info.xml fill_and_drain data 60");
    return {app, "kivo value [--color WHEN] FILE VECTOR SIGNAL TIME",
            [request](Terminal& terminal) { return value(terminal, *request); }};
}
