#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>

#include "kivo/kivo.h"
#include "tools/commands/commands.h"
#include "tools/commands/configuring.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/description/message_severity.h"
#include "tools/show/parts.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"

namespace {

void show_function_information(Page& page, const KIVO_INFO& info) {
    const bool is_given = !info.vhdl_library.empty() || !info.time_scale.empty() ||
                          !info.time_delta.empty() || info.start_time != 0;
    if (!is_given) {
        return;
    }
    Facts facts;
    facts.add("VHDL library", info.vhdl_library);
    facts.add("Simulation library", info.get_simulation_library());
    facts.add("Start time", with_unit(info.start_time, info.time_scale));
    facts.add("Time scale", info.time_scale);
    facts.add("Time delta", info.time_delta);
    page.heading("Function information");
    page.table(facts.table(), 2);
}

void show_rules(Page& page, KIVO_INFO& info) {
    Table table({"Kind", "Rule"});
    info.reset_fn_rule_list();
    while (const KIVO_RULE_ELEMENT* rule = info.get_next_fn_rule_element()) {
        const bool is_required = rule->rule_kind == KIVO_RULE_REQUIRED;
        table.add_row({is_required ? "required" : "optional", join_lines(rule->text3)});
    }
    if (!table.empty()) {
        page.heading("Rules");
        page.table(table, 2);
    }
}

std::string severity_of(std::int32_t kind) {
    for (const MessageSeverity& row : kMessageSeverities) {
        if (row.kind == kind) {
            return row.word;
        }
    }
    return fmt::format("kind {}", kind);
}

void show_messages(Page& page, KIVO_INFO& info) {
    Table table({"Severity", "Message"});
    info.reset_message_list();
    while (const KIVO_RULE_ELEMENT* message = info.get_next_msg()) {
        table.add_row({severity_of(message->rule_kind), join_lines(message->text1)});
        if (!message->text3.empty()) {
            table.add_note("if " + join_lines(message->text3));
        }
        if (!message->text2.empty()) {
            table.add_note("else: " + join_lines(message->text2));
        }
    }
    if (!table.empty()) {
        page.heading("Messages");
        page.table(table, 2);
    }
}

std::string show_text(const Stream& stream, KIVO_INFO& info, const std::string& path) {
    Page page(stream);
    page.heading(info.function_name.empty() ? path : info.function_name);
    show_function_information(page, info);
    show_parameters(page, info);
    show_ports(page, info);
    show_hidden_parameters(page, info);
    show_macros(page, info);
    show_rules(page, info);
    show_messages(page, info);
    show_vectors(page, info);
    show_wizard_maps(page, info);
    show_help_text(page, info);
    return page.text();
}

struct Options {
    std::string path;
    ConfigurationRequest request;
    std::string format = "text";
    Directories directories;
};

int show(Terminal& terminal, const Options& options) {
    Description description(options.path, options.directories);
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    KIVO_INFO& info = description.info();
    const Configuration configuration(terminal, info, options.request);
    if (configuration.failure()) {
        return *configuration.failure();
    }
    if (configuration.session() != nullptr) {
        kivo_store_results(*configuration.session(), info);
    }
    terminal.out.write(options.format == "json"
                           ? show_json(info, description.path())
                           : show_text(terminal.out, info, description.path()));
    const int loading = status_of_loading(description);
    return loading != kExitDone ? loading : configuration.status();
}

constexpr const char* kFooter =
    "Sections that the description does not have are left out. Messages go to standard\n"
    "error, as 'kivo check' writes them; what was read is shown all the same.\n"
    "NAME=VALUE adds what takes effect then: \"Now\" of the tables, \"current_value\" in JSON.\n"
    "JSON holds everything, messages too, in one object whose keys are always there;\n"
    "docs/show.schema.json describes each of them.\n"
    "Exit status: 0 no messages, 1 messages, or the configuration is not legal or not as asked\n"
    "for, 2 wrong usage, 3 the file cannot be read.\n\n"
    "Example:\n"
    "  kivo show fifo_info.xml\n"
    "  kivo show fifo_info.xml DEPTH=1024\n"
    "  kivo show --format json fifo_info.xml | jq -r '.object_map[].name'";

}  // namespace

Command make_show() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "show",
        .summary = "Show all that a description holds as tables",
        .rows = {
            description_row(options->path),
            settings_row(options->request),
            {.name = "--format", .value_name = "FORMAT", .target = &options->format,
             .help = "What to write: text (the default) or json", .choices = {"text", "json"}},
            directories_row(options->directories),
        },
        .footer = kFooter,
        .run = [options](Terminal& terminal) { return show(terminal, *options); },
    };
    // clang-format on
}
