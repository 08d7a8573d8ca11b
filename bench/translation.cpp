#include "hdl/hdl_reference.h"
#include "settings.h"

namespace {

constexpr const char* kText =
    "( WIDTH gt 0 and WIDTH lte 64 ) || ( DEPTH % 4 == 0 and DEPTH / WIDTH gte MIN_DEPTH )";

struct Language {
    const char* name;
    KIVO_HDL_LANGUAGE language;
};

// clang-format off
constexpr Language kLanguages[] = {
    { "NHDL",    KIVO_HDL_NHDL    },
    { "VHDL",    KIVO_HDL_VHDL    },
    { "Verilog", KIVO_HDL_VERILOG },
};
// clang-format on

std::string text_of_size(std::size_t size) {
    std::string text;
    while (text.size() < size) {
        text += kText;
        text += " || ";
    }
    return text;
}

Work translate(const std::string& text, KIVO_HDL_LANGUAGE language) {
    return timed(
        [text, language] { benchmark::DoNotOptimize(kivo_translate_text_to_hdl(text, language)); });
}

Work translate_by_reference(const std::string& text, KIVO_HDL_LANGUAGE language) {
    return timed(
        [text, language] { benchmark::DoNotOptimize(hdl_reference::translate(text, language)); });
}

}  // namespace

void register_translation(const Settings& settings, Results& results) {
    const double batch = settings.batch_seconds;
    for (const Language& row : kLanguages) {
        const std::string what = std::string("translation to ") + row.name;
        register_rounds(what.c_str(), settings.rounds, [=, &results](benchmark::State& state) {
            require(kivo_translate_text_to_hdl(kText, row.language) ==
                        hdl_reference::translate(kText, row.language),
                    "the library and the reference differ");
            results.add_speed(what + ", one rule", "literal transcription",
                              compare(state, translate(kText, row.language),
                                      translate_by_reference(kText, row.language), batch),
                              ">= 8 x");
        });
    }
    const std::size_t size = settings.translation_bytes;
    const std::string what = "translation of " + format_size(size);
    register_rounds(what.c_str(), settings.large_rounds, [=, &results](benchmark::State& state) {
        results.add_cost(what, "a tenth of it",
                         compare(state, translate(text_of_size(size), KIVO_HDL_VERILOG),
                                 translate(text_of_size(size / 10), KIVO_HDL_VERILOG), batch),
                         "<= 13 x");
    });
}
