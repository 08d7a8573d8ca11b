#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"

namespace {

struct Options {
    std::string language;
    std::vector<std::string> texts;
};

struct LanguageRow {
    const char* name;
    KIVO_HDL_LANGUAGE language;
};

// clang-format off
constexpr LanguageRow kLanguages[] = {
    { "nhdl",    KIVO_HDL_NHDL    },
    { "vhdl",    KIVO_HDL_VHDL    },
    { "verilog", KIVO_HDL_VERILOG },
};
// clang-format on

std::vector<std::string> language_names() {
    std::vector<std::string> names;
    for (const LanguageRow& row : kLanguages) {
        names.emplace_back(row.name);
    }
    return names;
}

KIVO_HDL_LANGUAGE language_of(const std::string& name) {
    for (const LanguageRow& row : kLanguages) {
        if (name == row.name) {
            return row.language;
        }
    }
    return KIVO_HDL_VHDL;
}

int translate_input(Terminal& terminal, KIVO_HDL_LANGUAGE language) {
    for (std::string line; terminal.out.error() == 0 && std::getline(std::cin, line);) {
        terminal.out.write(kivo_translate_text_to_hdl(line, language) + '\n');
    }
    // The stream tells a read that fails as the end of the input.
    if (std::ferror(stdin) != 0) {
        terminal.report_error(std::string("cannot read standard input: ") + std::strerror(errno));
        return kExitFailed;
    }
    return kExitDone;
}

int translate(Terminal& terminal, const Options& options) {
    const KIVO_HDL_LANGUAGE language = language_of(options.language);
    if (options.texts.empty()) {
        return translate_input(terminal, language);
    }
    for (const std::string& text : options.texts) {
        terminal.out.write(kivo_translate_text_to_hdl(text, language) + '\n');
    }
    return kExitDone;
}

constexpr const char* kFooter =
    "A word is an operator only between blanks; everything else stays as it is.\n"
    "Exit status: 0 done, 2 wrong usage, 3 standard input cannot be read.\n\n"
    "Example:\n  kivo translate --to verilog \"WIDTH gte 4 and DEPTH lt 16\"\n"
    "  kivo translate --to nhdl < rules.txt";

}  // namespace

Command make_translate() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "translate",
        .summary = "Translate the operators of rules and conditions into an HDL",
        .rows = {
            {.name = "--to", .value_name = "LANGUAGE", .target = &options->language,
             .help = "Target language: nhdl, vhdl or verilog", .choices = language_names(),
             .is_required = true},
            {.name = "TEXT", .target = &options->texts,
             .help = "Texts, one line each; else standard input"},
        },
        .footer = kFooter,
        .run = [options](Terminal& terminal) { return translate(terminal, *options); },
    };
    // clang-format on
}
