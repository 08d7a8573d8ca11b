#include <string>
#include <string_view>

#include "tools/doc/help_text.h"
#include "tools/doc/sections.h"
#include "tools/doc/table.h"
#include "tools/text/text_escape.h"

namespace {

std::string in_language(const std::string& rule, KIVO_HDL_LANGUAGE language) {
    return code_cell(kivo_translate_text_to_hdl(join_lines(rule), language));
}

void add_rule(HtmlTable& table, const std::string& owner, const KIVO_RULE_ELEMENT& rule) {
    table.add_row({owner, rule.rule_kind == KIVO_RULE_NOT_REQUIRED ? "advised" : "required",
                   in_language(rule.text3, KIVO_HDL_NHDL), in_language(rule.text3, KIVO_HDL_VHDL),
                   in_language(rule.text3, KIVO_HDL_VERILOG)});
}

void add_value_rules(HtmlTable& table, KIVO_OBJ_INFO& parameter) {
    parameter.reset_rule_list();
    while (const KIVO_RULE_ELEMENT* rule = parameter.get_next_rule_element()) {
        if (rule->rule_kind == KIVO_RULE_REQUIRED) {
            add_rule(table, code_cell(parameter.name), *rule);
        }
    }
}

struct SeverityRow {
    KIVO_RULE_KIND kind;
    KIVO_SEVERITY severity;
    const char* style;
    const char* title;
};

// The gravest first.
// clang-format off
constexpr SeverityRow kSeverities[] = {
    { KIVO_RULE_ERROR,            KIVO_SEVERITY::kError,           "error",    "Errors" },
    { KIVO_RULE_CRITICAL_WARNING, KIVO_SEVERITY::kCriticalWarning, "critical", "Critical warnings" },
    { KIVO_RULE_WARNING,          KIVO_SEVERITY::kWarning,         "warning",  "Warnings" },
    { KIVO_RULE_INFO,             KIVO_SEVERITY::kInfo,            "info",     "Information" },
};
// clang-format on

void write_message(HtmlWriter& html, const KIVO_RULE_ELEMENT& message) {
    const HtmlScope item(html, "li");
    if (!message.text3.empty()) {
        const HtmlScope line(html, "p", {{"class", "condition"}});
        html.text("If ");
        html.element("code", join_lines(message.text3));
    }
    write_paragraphs(html, message.text1);
    if (!message.text2.empty()) {
        html.element("p", {{"class", "condition"}}, "Otherwise");
        write_paragraphs(html, message.text2);
    }
}

void write_all_messages(HtmlWriter& html, KIVO_INFO& info, const SeverityRow& row) {
    info.reset_message_list();
    while (const KIVO_RULE_ELEMENT* message = info.get_next_msg()) {
        if (message->rule_kind == row.kind) {
            write_message(html, *message);
        }
    }
}

void write_shown_messages(HtmlWriter& html, const KIVO_SESSION& session, const SeverityRow& row) {
    for (const KIVO_SHOWN_MESSAGE& message : session.messages()) {
        if (message.severity == row.severity) {
            const HtmlScope item(html, "li");
            write_paragraphs(html, message.text);
        }
    }
}

void write_severity(HtmlWriter& html, DocSource& source, const SeverityRow& row) {
    HtmlWriter items;
    source.session == nullptr ? write_all_messages(items, source.info, row)
                              : write_shown_messages(items, *source.session, row);
    if (!items.empty()) {
        html.element("h3", row.title);
        const HtmlScope list(html, "ul", {{"class", std::string("messages ") + row.style}});
        html.markup(items.result());
    }
}

std::string place_text(const KIVO_PLACE& place) {
    const std::string file = place.file.substr(place.file.find_last_of('/') + 1);
    return place.line == 0
               ? file
               : file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
}

}  // namespace

void write_rules(HtmlWriter& html, DocSource& source) {
    HtmlTable table("rule-table", "Rules", {"Applies to", "Kind", "NHDL", "VHDL", "Verilog"});
    source.info.reset_fn_rule_list();
    while (const KIVO_RULE_ELEMENT* rule = source.info.get_next_fn_rule_element()) {
        add_rule(table, "function", *rule);
    }
    for (KIVO_OBJ_INFO* parameter : source.parameters) {
        add_value_rules(table, *parameter);
    }
    table.write(html);
}

void write_messages(HtmlWriter& html, DocSource& source) {
    for (const SeverityRow& row : kSeverities) {
        write_severity(html, source, row);
    }
}

void write_verdicts(HtmlWriter& html, DocSource& source) {
    if (source.session == nullptr) {
        return;
    }
    HtmlTable table("problems", "Findings of this configuration", {"Place", "Finding", "Id"});
    for (const KIVO_VERDICT& verdict : source.session->verdicts()) {
        table.add_row({text_cell(place_text(source.info.get_place(verdict.mark))),
                       text_cell(verdict.text), code_cell(verdict.id)});
    }
    table.write(html);
}

void write_problems(HtmlWriter& html, DocSource& source) {
    HtmlTable table("problems", "Problems in the description", {"Place", "Problem", "Id"});
    for (std::size_t index = 0; index < source.info.error_list.size(); ++index) {
        table.add_row({text_cell(place_text(source.info.get_error_place(index))),
                       text_cell(source.info.error_list[index]),
                       code_cell(source.info.get_error_id(index))});
    }
    if (!source.info.error_list.empty()) {
        html.element("p",
                     "The description has mistakes; what they concern is missing from this page.");
    }
    table.write(html);
}
