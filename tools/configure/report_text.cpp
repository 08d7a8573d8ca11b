#include <fmt/format.h>

#include <algorithm>

#include "tools/configure/legal_column.h"
#include "tools/configure/report.h"
#include "tools/findings/text_report.h"
#include "tools/terminal/page.h"
#include "tools/text/text_escape.h"

namespace {

constexpr const char* kNotKnown = "not known";

// What was asked for, where something else took effect.
std::string asked_if_other(const std::optional<std::string>& asked, const std::string& effective) {
    return asked && *asked != effective ? *asked : std::string();
}

std::string state_of(const KIVO_PORT& port) {
    return port.state ? kivo_get_usage_state_as_string(*port.state) : kNotKnown;
}

const char* applies_word(KIVO_TRUTH truth) {
    return truth == KIVO_TRUTH::kYes ? "yes" : truth == KIVO_TRUTH::kNo ? "no" : "not decided";
}

void add_table(Page& page, const char* title, const Table& table) {
    if (!table.empty()) {
        page.heading(title);
        page.table(table, 2);
    }
}

std::vector<std::string> cells_of(const KIVO_SETTING& setting) {
    const std::string value = setting.value.value_or(kNotKnown);
    return {setting.name, value, source_word(setting.source, false),
            asked_if_other(setting.asked, value)};
}

void add_settings(Page& page, const KIVO_SESSION& session) {
    Table table({"Name", "Value", "Source", "Asked for", "Legal values"});
    LegalColumn legal(session);
    for (const KIVO_SETTING& each : session.settings()) {
        std::vector<std::string> cells = cells_of(each);
        cells.push_back(legal.cell(each.name));
        table.add_row(std::move(cells));
    }
    add_table(page, "Settings", table);
    if (const std::string footnote = legal.footnote(); !footnote.empty()) {
        page.prose(footnote, 2);
    }
}

void add_hidden(Page& page, const KIVO_SESSION& session) {
    Table table({"Name", "Value", "Source", "Asked for"});
    for (const KIVO_SETTING& each : session.hidden()) {
        table.add_row(cells_of(each));
    }
    add_table(page, "Hidden parameters", table);
}

void add_ports(Page& page, const KIVO_SESSION& session) {
    Table table({"Name", "State", "Width", "Tied to", "Source", "Asked for"});
    for (const KIVO_PORT& each : session.ports()) {
        const std::string state = state_of(each);
        const std::string whole = state + (each.tied ? ":" + *each.tied : "");
        table.add_row({each.name, state, each.width ? std::to_string(*each.width) : kNotKnown,
                       each.tied.value_or(""), source_word(each.source, true),
                       each.asked == whole ? "" : asked_if_other(each.asked, state)});
    }
    add_table(page, "Ports", table);
}

void add_messages(Page& page, const KIVO_SESSION& session) {
    Table table({"Severity", "Message"});
    for (const KIVO_SHOWN_MESSAGE& each : session.messages()) {
        table.add_row({severity_word(each.severity), join_lines(each.text)});
    }
    add_table(page, "Messages", table);
}

void add_applications(Page& page, const char* title, const std::vector<KIVO_APPLICATION>& all) {
    Table table({"Name", "Applies"});
    for (const KIVO_APPLICATION& each : all) {
        table.add_row({each.name, applies_word(each.applies)});
    }
    add_table(page, title, table);
}

// What values and rules hold, which may be anything, is escaped line by line.
std::string escape_lines(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines += escape_text(text.substr(0, end)) + "\n";
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::string heading(const Stream& stream, const char* title) {
    return "\n" + stream.paint(Style::kBold, title) + "\n";
}

// "  conflict of: A=1 B=2"
std::string conflict_line(const VerdictForm& form) {
    const KIVO_CONFLICT& conflict = form.conflict;
    return conflict.settings.empty() ? "" : "  conflict of: " + conflict.text + "\n";
}

// "  would be legal with: A=2, or B=1". What is wrong with the description no setting mends.
std::string repairs_line(const VerdictForm& form, bool shows_all) {
    const bool has_answer = form.is_explained && form.finding.severity == Severity::kError &&
                            form.finding.id != "fault";
    if (form.repairs.empty()) {
        return !has_answer          ? ""
               : form.are_all_tried ? "  no change of at most two settings makes it legal\n"
                                    : "  no change that was tried makes it legal; there are more\n";
    }
    std::string text = "  would be legal with: " + form.repairs[0].text;
    if (shows_all) {
        for (auto each = form.repairs.begin() + 1; each != form.repairs.end(); ++each) {
            text += ", or " + each->text;
        }
        text += form.are_all_tried ? "" : " (not all changes were tried)";
    }
    return text + "\n";
}

std::string findings_text(const Stream& stream, const Description& description,
                          const std::vector<VerdictForm>& forms, const ReportDepth& depth) {
    std::string text;
    for (const VerdictForm& form : forms) {
        text += finding_text(stream, description.name(), form.finding);
        text += escape_lines(conflict_line(form) + repairs_line(form, depth.shows_all_repairs));
    }
    return text.empty() ? text : heading(stream, "Findings") + text;
}

bool is_asked_for(const ReportDepth& depth, const std::string& name) {
    return std::any_of(depth.why.begin(), depth.why.end(),
                       [&](const std::string& asked) { return asked == "all" || asked == name; });
}

// The verdicts that are asked about, then the values.
std::string why_text(const Stream& stream, const KIVO_SESSION& session,
                     const Description& description, const std::vector<VerdictForm>& forms,
                     const ReportDepth& depth) {
    std::string text;
    for (const VerdictForm& form : forms) {
        if (is_asked_for(depth, form.subject.name)) {
            text += kivo_why_text(session.why(form.subject), form.conflict, form.repairs,
                                  description.info());
        }
    }
    for (const std::string& name : depth.why) {
        const KIVO_WHY why = session.why({name});
        text += why.is_known ? kivo_why_text(why, {}, {}, description.info()) : std::string();
    }
    return text.empty() ? text : heading(stream, "Why") + escape_lines(text);
}

}  // namespace

std::string configuration_text(const Stream& stream, const KIVO_SESSION& session,
                               const Description& description, const ReportDepth& depth) {
    const std::vector<VerdictForm> forms = verdict_forms(session, description);
    const std::string& function = description.info().function_name;
    Page page(stream);
    page.heading((function.empty() ? description.name() : function) + ": " + standing_of(session));
    Facts facts;
    facts.add("Asked for", asked_for(session));
    facts.add("Wizard map", session.map());
    page.table(facts.table(), 2);
    add_settings(page, session);
    add_hidden(page, session);
    add_ports(page, session);
    add_messages(page, session);
    add_applications(page, "Waves", session.vectors());
    add_applications(page, "Wizard maps", session.maps());
    return page.text() + findings_text(stream, description, forms, depth) +
           why_text(stream, session, description, forms, depth);
}
