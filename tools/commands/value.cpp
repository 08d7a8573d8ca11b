#include <algorithm>
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
#include "tools/text/words.h"

namespace {

struct Question {
    std::string file;
    std::string vector;
    std::string signal;
    std::int32_t time = 0;
    Directories directories;
};

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
std::optional<std::string> value_at(KIVO_VECTOR_OBJ& vector, const Question& question) {
    std::optional<std::string> found;
    std::string signal;
    std::string value;
    vector.stimulus_list.reset();
    while (kivo_get_vector_transition(&vector.stimulus_list, question.time, signal, value)) {
        if (signal == question.signal) {
            found = value;
        }
    }
    return found;
}

int report_unknown(Terminal& terminal, const std::string& what) {
    terminal.report_error(what);
    return kExitMessages;
}

int answer(Terminal& terminal, KIVO_INFO& info, const Question& question) {
    KIVO_VECTOR_OBJ* const vector = info.get_vector_obj(question.vector);
    if (vector == nullptr) {
        return report_unknown(terminal, "no vector '" + question.vector +
                                            "'; the vectors are: " + quoted(vector_names(info)));
    }
    if (!kivo_stimulus_exists(&vector->stimulus_list, question.signal)) {
        return report_unknown(terminal, "vector '" + question.vector + "' drives no signal '" +
                                            question.signal +
                                            "'; its signals are: " + quoted(signal_names(*vector)));
    }
    const std::optional<std::string> value = value_at(*vector, question);
    terminal.out.write(value ? escape_text(*value) + '\n' : std::string("no transition\n"));
    return kExitDone;
}

int value(Terminal& terminal, const Question& question) {
    Description description(question.file, question.directories);
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    const int status = answer(terminal, description.info(), question);
    const int loading = status_of_loading(description);
    return loading != kExitDone ? loading : status;
}

constexpr const char* kFooter =
    "Prints the new value, or \"no transition\" when the signal does not change at that\n"
    "time. Values of binary, hexadecimal and fixed-point commands come as 0b and bits.\n"
    "Conditions are not evaluated: of a conditional command the THEN part counts.\n"
    "Exit status: 0 done, 1 done although the description gave messages, or it has no such\n"
    "vector or signal, 2 wrong usage, 3 the file cannot be read.\n\n"
    "Example:\n  kivo value fifo_info.xml fill_and_drain data 60";

}  // namespace

Command make_value() {
    auto question = std::make_shared<Question>();
    // clang-format off
    return {
        .name = "value",
        .summary = "Tell to which value a signal changes at a time",
        .rows = {
            description_row(question->file),
            {.name = "VECTOR", .target = &question->vector,
             .help = "Name of a waveform or custom vector", .is_required = true},
            {.name = "SIGNAL", .target = &question->signal,
             .help = "Name of a signal that the vector drives", .is_required = true},
            {.name = "TIME", .target = &question->time,
             .help = "Time, in units of the description", .is_required = true},
            directories_row(question->directories),
        },
        .footer = kFooter,
        .run = [question](Terminal& terminal) { return value(terminal, *question); },
    };
    // clang-format on
}
