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
#include "tools/findings/verdict_pages.h"
#include "tools/text/text_escape.h"
#include "tools/text/text_steps.h"
#include "tools/text/text_width.h"

namespace {

constexpr std::size_t kTextWidth = 80;
constexpr std::size_t kMostEdits = 3;

// Those of both kinds once.
std::vector<std::string_view> known_ids() {
    std::vector<std::string_view> ids;
    for (const MessageDescription& row : message_catalogue()) {
        ids.push_back(row.id);
    }
    for (const VerdictPage& page : verdict_pages()) {
        if (find_message(page.id) == nullptr) {
            ids.push_back(page.id);
        }
    }
    return ids;
}

std::string check_id(const std::string& id) {
    if (find_message(id) != nullptr || find_verdict_page(id) != nullptr) {
        return {};
    }
    const std::string_view nearest = nearest_word(id, known_ids(), kMostEdits);
    return nearest.empty() ? fmt::format("no message '{}'", id)
                           : fmt::format("no message '{}', perhaps '{}'", id, nearest);
}

// The messages about descriptions, then the verdicts on configurations.
void list_all(Stream& out) {
    std::size_t width = 0;
    for (const std::string_view id : known_ids()) {
        width = std::max(width, id.size());
    }
    for (const MessageDescription& row : message_catalogue()) {
        out.write(fmt::format("{}{:{}}  {:7}  {}\n", out.paint(Style::kBold, row.id), "",
                              width - row.id.size(), severity_word(row.severity),
                              first_sentence(row.explanation)));
    }
    out.write("\n");
    for (const VerdictPage& page : verdict_pages()) {
        out.write(fmt::format("{}{:{}}  {:16}  {}\n", out.paint(Style::kBold, page.id), "",
                              width - page.id.size(), page.severity,
                              first_sentence(page.explanation)));
    }
}

void explain_one(Stream& out, std::string_view id, std::string_view kind,
                 std::string_view explanation, std::string_view lead, std::string_view example) {
    out.write(fmt::format("{} ({})\n\n", out.paint(Style::kBold, id), kind));
    for (const std::string& line : wrap_text(join_lines(explanation), kTextWidth)) {
        out.write(line + '\n');
    }
    out.write(fmt::format("\n{}\n\n", lead));
    for (std::string_view rest = example; !rest.empty();) {
        out.write(fmt::format("  {}\n", escape_text(taken_line(rest))));
    }
}

// What the id means of a description, and what of a configuration.
void explain_id(Stream& out, const std::string& id) {
    const MessageDescription* const row = find_message(id);
    if (row != nullptr) {
        explain_one(out, id, severity_word(row->severity), row->explanation,
                    "Example:", row->example);
    }
    if (const VerdictPage* const page = find_verdict_page(id)) {
        out.write(row == nullptr ? "" : "\n");
        const std::string blank = page->settings.empty() ? "" : " ";
        explain_one(out, id, fmt::format("{} of a configuration", page->severity),
                    page->explanation,
                    fmt::format("Example, with kivo configure FILE{}{}:", blank, page->settings),
                    page->example);
    }
}

int explain(Terminal& terminal, const std::vector<std::string>& ids) {
    if (ids.empty()) {
        list_all(terminal.out);
    }
    const char* separator = "";
    for (const std::string& id : ids) {
        terminal.out.write(separator);
        explain_id(terminal.out, id);
        separator = "\n";
    }
    return kExitDone;
}

constexpr const char* kFooter =
    "Every example is a whole description that gives the message, if any does. Of an id that\n"
    "kivo check and kivo configure both print, both meanings are told.\n"
    "Exit status: 0 done, 2 wrong usage or no message of that id.\n\n"
    "Example:\n  kivo explain unknown-section surplus-else";

}  // namespace

Command make_explain() {
    auto ids = std::make_shared<std::vector<std::string>>();
    const std::vector<std::string_view> ids_shown = known_ids();
    // clang-format off
    return {
        .name = "explain",
        .summary = "Explain messages and verdicts and show what gives them",
        .rows = {
            {.name = "ID", .target = ids.get(),
             .help = "Ids as 'kivo check' and 'configure' print them; else all are listed",
             .choices = {ids_shown.begin(), ids_shown.end()}, .check = check_id},
        },
        .footer = kFooter,
        .run = [ids](Terminal& terminal) { return explain(terminal, *ids); },
    };
    // clang-format on
}
