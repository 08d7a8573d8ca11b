#include <string>

#include "tools/description/message_severity.h"
#include "tools/doc/cell.h"
#include "tools/doc/help_text.h"
#include "tools/doc/sections.h"
#include "tools/doc/table.h"
#include "tools/doc/value_rules.h"
#include "tools/text/text_escape.h"

namespace {

// The rules of a description in one table, numbered from 1.
class RuleTable {
public:
    explicit RuleTable(const PageNames& names) : names_(names) {}

    void add(const std::string& owner, const KIVO_RULE_ELEMENT& rule) {
        const std::string number = std::to_string(++rules_);
        table_.add_row({"<a href=\"#rule-" + number + "\">" + number + "</a>", owner,
                        rule.rule_kind == KIVO_RULE_NOT_REQUIRED ? "advised" : "required",
                        requirement(names_, rule.text3), in_language(rule.text3, KIVO_HDL_NHDL),
                        in_language(rule.text3, KIVO_HDL_VERILOG)},
                       "rule-" + number);
    }

    void add_value_rules(KIVO_OBJ_INFO& parameter) {
        parameter.reset_rule_list();
        while (const KIVO_RULE_ELEMENT* rule = parameter.get_next_rule_element()) {
            if (rule->rule_kind == KIVO_RULE_REQUIRED) {
                add(expression_cell(names_, parameter.name), *rule);
            }
        }
    }

    void write(HtmlWriter& html) const {
        table_.write(html);
        if (rules_ > 0) {
            html.element("p", {{"class", "note"}}, "For VHDL a rule is left as it is written.");
        }
    }

private:
    static std::string in_language(const std::string& rule, KIVO_HDL_LANGUAGE language) {
        return code_cell(kivo_translate_text_to_hdl(join_lines(rule), language));
    }

    const PageNames& names_;
    HtmlTable table_{
        "rule-table", "Rules", {"Rule", "Applies to", "Kind", "As written", "NHDL", "Verilog"}};
    std::size_t rules_ = 0;
};

void write_message(HtmlWriter& html, const PageNames& names, const KIVO_RULE_ELEMENT& message) {
    const HtmlScope item(html, "li");
    if (!message.text3.empty()) {
        const HtmlScope line(html, "p", {{"class", "condition"}});
        html.text("If ");
        html.markup(expression_cell(names, join_lines(message.text3)));
    }
    write_paragraphs(html, names, message.text1);
    if (!message.text2.empty()) {
        html.element("p", {{"class", "condition"}}, "Otherwise");
        write_paragraphs(html, names, message.text2);
    }
}

void write_all_messages(HtmlWriter& html, DocSource& source, const MessageSeverity& row) {
    source.info.reset_message_list();
    while (const KIVO_RULE_ELEMENT* message = source.info.get_next_msg()) {
        if (message->rule_kind == row.kind) {
            write_message(html, source.names, *message);
        }
    }
}

void write_shown_messages(HtmlWriter& html, DocSource& source, const MessageSeverity& row) {
    for (const KIVO_SHOWN_MESSAGE& message : source.session->messages()) {
        if (message.severity == row.severity) {
            const HtmlScope item(html, "li");
            write_paragraphs(html, source.names, message.text);
        }
    }
}

void write_severity(HtmlWriter& html, DocSource& source, const MessageSeverity& row) {
    HtmlWriter items;
    source.session == nullptr ? write_all_messages(items, source, row)
                              : write_shown_messages(items, source, row);
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

std::string place_text(const Place& place) {
    const std::string file = place.file.substr(place.file.find_last_of('/') + 1);
    return place.start ? file + ":" + std::to_string(place.start->line) + ":" +
                             std::to_string(place.start->column)
                       : file;
}

}  // namespace

void write_rules(HtmlWriter& html, DocSource& source) {
    RuleTable table(source.names);
    source.info.reset_fn_rule_list();
    while (const KIVO_RULE_ELEMENT* rule = source.info.get_next_fn_rule_element()) {
        table.add("function", *rule);
    }
    for (KIVO_OBJ_INFO* parameter : source.parameters) {
        table.add_value_rules(*parameter);
    }
    table.write(html);
}

void write_messages(HtmlWriter& html, DocSource& source) {
    for (const MessageSeverity& row : kMessageSeverities) {
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
    HtmlTable table("problems", "Problems in the description", {"Place", "Kind", "Problem", "Id"});
    for (const Finding& finding : source.findings) {
        table.add_row({text_cell(place_text(finding.place)), severity_word(finding.severity),
                       text_cell(finding.text), code_cell(finding.id)});
    }
    if (!source.findings.empty()) {
        html.element("p",
                     "What an error concerns is missing from this page; what a warning concerns "
                     "stands here as it was read, which is surely not what was meant.");
    }
    table.write(html);
}
