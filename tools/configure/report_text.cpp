#include <fmt/format.h>

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

void add_settings(Page& page, const char* title, const std::vector<KIVO_SETTING>& settings) {
    Table table({"Name", "Value", "Source", "Asked for"});
    for (const KIVO_SETTING& each : settings) {
        const std::string value = each.value.value_or(kNotKnown);
        table.add_row(
            {each.name, value, source_word(each.source, false), asked_if_other(each.asked, value)});
    }
    add_table(page, title, table);
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

std::string findings_text(const Stream& stream, const KIVO_SESSION& session,
                          const Description& description) {
    std::string text;
    for (const VerdictForm& form : verdict_forms(session, description)) {
        text += finding_text(stream, description.name(), form.finding);
    }
    return text.empty() ? text : "\n" + stream.paint(Style::kBold, "Findings") + "\n" + text;
}

}  // namespace

std::string configuration_text(const Stream& stream, const KIVO_SESSION& session,
                               const Description& description) {
    const std::string& function = description.info().function_name;
    Page page(stream);
    page.heading((function.empty() ? description.name() : function) + ": " + standing_of(session));
    Facts facts;
    facts.add("Asked for", asked_for(session));
    facts.add("Wizard map", session.map());
    page.table(facts.table(), 2);
    add_settings(page, "Settings", session.settings());
    add_settings(page, "Hidden parameters", session.hidden());
    add_ports(page, session);
    add_messages(page, session);
    add_applications(page, "Waves", session.vectors());
    add_applications(page, "Wizard maps", session.maps());
    return page.text() + findings_text(stream, session, description);
}
