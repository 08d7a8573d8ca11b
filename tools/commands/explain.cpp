#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/session/internal/near_word.h"
#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/findings/catalogue.h"
#include "tools/text/text_escape.h"
#include "tools/text/text_steps.h"
#include "tools/text/text_width.h"

namespace {

constexpr std::size_t kTextWidth = 80;
constexpr std::size_t kMostEdits = 3;

std::vector<std::string> known_ids() {
    std::vector<std::string> ids;
    for (const MessageDescription& row : message_catalogue()) {
        ids.emplace_back(row.id);
    }
    return ids;
}

std::string check_id(const std::string& id) {
    if (find_message(id) != nullptr) {
        return {};
    }
    std::vector<std::string_view> ids;
    for (const MessageDescription& row : message_catalogue()) {
        ids.push_back(row.id);
    }
    const std::string_view nearest = nearest_word(id, ids, kMostEdits);
    return nearest.empty() ? fmt::format("no message '{}'", id)
                           : fmt::format("no message '{}', perhaps '{}'", id, nearest);
}

void list_messages(Stream& out) {
    std::size_t width = 0;
    for (const MessageDescription& row : message_catalogue()) {
        width = std::max(width, row.id.size());
    }
    for (const MessageDescription& row : message_catalogue()) {
        out.write(fmt::format("{}{:{}}  {:7}  {}\n", out.paint(Style::kBold, row.id), "",
                              width - row.id.size(), severity_word(row.severity), summary_of(row)));
    }
}

void explain_message(Stream& out, const MessageDescription& row) {
    out.write(
        fmt::format("{} ({})\n\n", out.paint(Style::kBold, row.id), severity_word(row.severity)));
    for (const std::string& line : wrap_text(join_lines(row.explanation), kTextWidth)) {
        out.write(line + '\n');
    }
    out.write("\nExample:\n\n");
    for (std::string_view rest = row.example; !rest.empty();) {
        out.write(fmt::format("  {}\n", escape_text(taken_line(rest))));
    }
}

int explain(Terminal& terminal, const std::vector<std::string>& ids) {
    if (ids.empty()) {
        list_messages(terminal.out);
    }
    const char* separator = "";
    for (const std::string& id : ids) {
        terminal.out.write(separator);
        explain_message(terminal.out, *find_message(id));
        separator = "\n";
    }
    return kExitDone;
}

constexpr const char* kFooter =
    "Every example is a whole description that gives the message, if any does.\n"
    "Exit status: 0 done, 2 wrong usage or no message of that id.\n\n"
    "Example:\n  kivo explain unknown-section surplus-else";

}  // namespace

Command make_explain() {
    auto ids = std::make_shared<std::vector<std::string>>();
    // clang-format off
    return {
        .name = "explain",
        .summary = "Explain messages and show what gives them",
        .rows = {
            {.name = "ID", .target = ids.get(),
             .help = "Ids of messages, as 'kivo check' prints them; else all are listed",
             .choices = known_ids(), .check = check_id},
        },
        .footer = kFooter,
        .run = [ids](Terminal& terminal) { return explain(terminal, *ids); },
    };
    // clang-format on
}
