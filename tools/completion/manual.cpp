#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

#include "tools/arguments/usage.h"
#include "tools/completion/scopes.h"
#include "tools/completion/writers.h"
#include "tools/text/letters.h"
#include "tools/text/text_steps.h"

namespace {

constexpr const char* kIntroduction = R"(.SH DESCRIPTION
A description is an XML file that tells of a configurable hardware function: its parameters, ports,
rules, messages, waveforms and help texts.
.B kivo
reads descriptions as wizards do, and shows their authors what is made of them.
Messages go to standard error, each with its place, its source line and its id, which
.B kivo explain
explains; what a command was asked for goes to standard output or into the file that it was given.
)";

constexpr const char* kConclusion = R"(.SH EXIT STATUS
.TP
.B 0
Done, and the description gave no messages.
.TP
.B 1
Done, but the description gave messages, or what was asked for is not in it.
.TP
.B 2
Wrong usage. One line on standard error says what is right.
.TP
.B 3
A file cannot be read, or the output not be written. No file is left half written.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When set and not empty, nothing is coloured.
.TP
.B FORCE_COLOR
When set, not empty and not 0, colours are used without a terminal too, unless
.B NO_COLOR
is set.
.TP
.B TERM
A terminal that is
.B dumb
gets no colours.
.TP
.BR LC_ALL ", " LC_CTYPE ", " LANG
The first of them that is set decides whether
.B kivo wave
draws with characters beyond ASCII.
.PP
The option
.B \-\-color
goes before all that the environment says of colours, unless it is
.BR auto .
.SH FILES
.TP
.IB function _info.xml
The description of a function, whose name in lower case begins the name of the file.
)";

bool is_word_letter(char letter) {
    return is_letter_or_digit(letter) || letter == '-' || letter == '_';
}

// The length of the word that a text begins with; a dot belongs to it when more follows.
std::size_t word_length(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() &&
           (is_word_letter(text[length]) ||
            (length > 0 && text[length] == '.' && length + 1 < text.size() &&
             is_word_letter(text[length + 1])))) {
        ++length;
    }
    return length;
}

// A text in which nothing is a request or an escape, and every character stays what it is.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char letter : text) {
        switch (letter) {
            case '\\':
                out += "\\e";
                break;
            case '-':
                out += "\\-";
                break;
            case '\'':
                out += "\\(aq";
                break;
            case '"':
                out += "\\(dq";
                break;
            case '`':
                out += "\\(ga";
                break;
            case '^':
                out += "\\(ha";
                break;
            case '~':
                out += "\\(ti";
                break;
            default:
                out += letter;
        }
    }
    return !out.empty() && out.front() == '.' ? "\\&" + out : out;
}

// Bold for what is typed as it stands, italics for what stands for something. What stands in
// brackets stays in one line.
std::string styled_usage(std::string_view usage) {
    std::string out;
    int depth = 0;
    while (!usage.empty()) {
        const std::size_t length = word_length(usage);
        if (length == 0) {
            const char sign = usage[0];
            depth += sign == '[' ? 1 : sign == ']' ? -1 : 0;
            out += sign == ' ' && depth > 0 ? "\\ " : std::string(1, sign);
            usage.remove_prefix(1);
            continue;
        }
        const bool stands_for = usage[0] >= 'A' && usage[0] <= 'Z';
        out += (stands_for ? "\\fI" : "\\fB") + escaped(usage.substr(0, length)) + "\\fR";
        usage.remove_prefix(length);
    }
    return out;
}

// Paragraphs between empty lines and before the exit status; indented lines are shown as they are.
std::string paragraphs(std::string_view text) {
    constexpr std::string_view kStatus = "Exit status:";
    std::string out;
    bool is_example = false;
    bool is_begun = false;
    while (!text.empty()) {
        const std::string_view line = taken_line(text);
        const bool is_indented = line.substr(0, 2) == "  ";
        if (is_indented != is_example) {
            out += is_indented ? ".RS 4\n.EX\n" : ".EE\n.RE\n";
            is_example = is_indented;
        }
        if (line.empty()) {
            is_begun = false;
            continue;
        }
        const bool begins = !is_begun || line.substr(0, kStatus.size()) == kStatus;
        out += begins && !is_indented ? ".PP\n" : "";
        is_begun = true;
        out += escaped(is_indented ? line.substr(2) : line) + '\n';
    }
    return is_example ? out + ".EE\n.RE\n" : out;
}

std::string option_entry(const OptionRow& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names()) {
        names.push_back("\\fB" + escaped(name) + "\\fR");
    }
    std::string entry = fmt::format(".TP\n{}", fmt::join(names, ", "));
    if (!option.is_switch()) {
        entry += " \\fI" + escaped(option.value_name) + "\\fR";
    }
    return entry + '\n' + escaped(option.help) + ".\n";
}

std::string argument_entry(const OptionRow& argument) {
    return fmt::format(".TP\n\\fI{}\\fR{}\n{}.\n", escaped(argument.name),
                       argument.is_repeated() ? " ..." : "", escaped(argument.help));
}

// What the options common to all sub-commands do is said once.
std::string command_part(const Command& command) {
    std::string part = ".SS kivo " + command.name + "\n" + escaped(command.summary) + ".\n";
    for (const OptionRow* const argument : arguments_of(command)) {
        part += argument_entry(*argument);
    }
    for (const OptionRow& row : command.rows) {
        part += row.is_argument() ? "" : option_entry(row);
    }
    return part + paragraphs(command.footer);
}

std::string synopsis(const Program& program) {
    std::string lines;
    for (const Command* const command : shown_commands(program)) {
        const std::string usage = usage_of(program, *command);
        lines += ".SY kivo\n" + styled_usage(usage.substr(usage.find(' ') + 1)) + "\n.YS\n";
    }
    return lines;
}

}  // namespace

std::string manual_page(const Program& program) {
    std::string page = fmt::format(
        ".\\\" Printed by 'kivo manual'.\n"
        ".TH KIVO 1 \"\" \"{}\" \"User Commands\"\n"
        ".SH NAME\nkivo \\- check, show and document descriptions of hardware functions\n"
        ".SH SYNOPSIS\n",
        escaped(program.version));
    page += synopsis(program);
    page += kIntroduction;
    page += ".SH OPTIONS\nBefore or after the sub\\-command:\n";
    for (const OptionRow* const option : options_of(program)) {
        page += option_entry(*option);
    }
    page += ".SH COMMANDS\n";
    for (const Command* const command : shown_commands(program)) {
        page += command_part(*command);
    }
    page += kConclusion;
    constexpr std::string_view kExamples = "Examples:\n";
    const std::string_view footer = program.footer;
    return page + ".SH EXAMPLES\n" +
           paragraphs(footer.substr(footer.rfind(kExamples) + kExamples.size()));
}
