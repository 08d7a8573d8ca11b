#include "tools/findings/catalogue.h"

#include <algorithm>

#include "tools/findings/catalogue_parts.h"
#include "tools/text/text_escape.h"

namespace {

using Part = std::vector<MessageDescription> (*)();

constexpr Part kParts[] = {
    document_messages, object_messages,    rule_messages, display_messages,
    xml_warnings,      structure_warnings, word_warnings, expression_warnings,
    value_warnings,    default_warnings,   port_warnings, repetition_warnings,
    stimulus_warnings, sense_warnings,
};

std::vector<MessageDescription> all_messages() {
    std::vector<MessageDescription> all;
    for (const Part part : kParts) {
        const std::vector<MessageDescription> rows = part();
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}

}  // namespace

const std::vector<MessageDescription>& message_catalogue() {
    static const std::vector<MessageDescription> catalogue = all_messages();
    return catalogue;
}

const char* severity_word(Severity severity) {
    return severity == Severity::kError     ? "error"
           : severity == Severity::kWarning ? "warning"
                                            : "advice";
}

std::string first_sentence(std::string_view explanation) {
    const std::string text = join_lines(explanation);
    const std::size_t end = text.find(". ");
    return end == std::string::npos ? text : text.substr(0, end + 1);
}

const MessageDescription* find_message(std::string_view id) {
    const std::vector<MessageDescription>& rows = message_catalogue();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [id](const MessageDescription& row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}
