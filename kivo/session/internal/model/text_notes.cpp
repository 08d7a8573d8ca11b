#include "kivo/session/internal/model/text_notes.h"

#include <algorithm>
#include <utility>

#include "kivo/session/internal/expression/author_notes.h"
#include "kivo/session/internal/expression/lexer.h"

namespace kivo_session {

namespace {

// Whether a text has the marks of an expression: something with arguments or an operator, and a
// name that the description or the language knows.
bool looks_like_expression(std::string_view text, const Model& model) {
    bool has_sign = false;
    bool has_name = false;
    Lexer lexer(text);
    for (Token token = lexer.next(); token.kind != TokenKind::kEnd; token = lexer.next()) {
        const std::string_view word = text.substr(token.offset, token.length);
        has_sign = has_sign || token.kind == TokenKind::kOperator || token.kind == TokenKind::kOpen;
        has_name = has_name || (token.kind == TokenKind::kName &&
                                (model.find(word) != kNone ||
                                 (find_function(word) != nullptr && lexer.is_before_open())));
    }
    return has_sign && has_name;
}

// The condition of a value rule stands twice in its text: notes on the second one say nothing new.
Range repeated_condition(std::string_view text, const std::vector<Node>& nodes) {
    const std::optional<Implication> found = find_implication(text, nodes);
    if (!found) {
        return {};
    }
    const auto right = static_cast<std::uint32_t>(nodes.size()) - 2;
    const std::uint32_t negated = found->alternative ? nodes[*found->alternative].begin - 1 : right;
    const Node& condition = nodes[negated - 1];
    return {condition.source_begin, condition.source_end};
}

class TextNotes {
public:
    explicit TextNotes(const Model& model) : model_(model), description_(*model.description) {}

    std::vector<TextNote> run() {
        for (text_ = 0; text_ < description_.texts.size(); ++text_) {
            switch (source().role) {
                case TextRole::kTextValue:
                case TextRole::kStateValue:
                    break;
                case TextRole::kUntypedValue:
                    look_at_untyped();
                    break;
                case TextRole::kMacro:
                    look_at_macro();
                    break;
                default:
                    look_at();
                    break;
            }
        }
        return std::move(notes_);
    }

private:
    const SourceText& source() const { return description_.texts[text_]; }

    bool parse_source() {
        parse(source().text, expression_);
        return !expression_.fault;
    }

    void resolve_source(const std::vector<std::string_view>& arguments) {
        resolve(source().text, expression_.nodes, model_, arguments, searches_, resolution_);
    }

    void look_at() {
        if (!source().text.empty() && parse_source()) {
            resolve_source({});
            add_author_notes();
        }
    }

    void look_at_untyped() {
        const bool is_expression = parse_source();
        if (is_expression) {
            resolve_source({});
            const bool has_names =
                std::none_of(resolution_.faults.begin(), resolution_.faults.end(),
                             [](const Fault& fault) { return fault.id == FaultId::kUnknownName; });
            if (has_names) {
                return add_author_notes();
            }
        }
        if (looks_like_expression(source().text, model_)) {
            const Fault& fault = is_expression ? resolution_.faults.front() : *expression_.fault;
            notes_.push_back({text_, "value-read-as-text", fault.offset, fault.length,
                              "the value is read as a text, since " + fault.text});
        }
    }

    void look_at_macro() {
        add_unused_faults();
        if (parse_source()) {
            resolve_source(model_.macro_arguments[source().object]);
            if (!is_recursive()) {
                add_author_notes();
            }
        }
    }

    void add_unused_faults() {
        const auto first =
            std::partition_point(model_.unused_faults.begin(), model_.unused_faults.end(),
                                 [this](const TextFault& each) { return each.text < text_; });
        for (auto each = first; each != model_.unused_faults.end() && each->text == text_; ++each) {
            const Fault& fault = each->fault;
            notes_.push_back({text_, fault_name(fault.id), fault.offset, fault.length, fault.text});
        }
    }

    bool is_recursive() const {
        const std::uint32_t spoiled = model_.texts[text_].spoiled;
        return spoiled != kNone &&
               std::any_of(model_.spoiled[spoiled].begin(), model_.spoiled[spoiled].end(),
                           [this](Reason reason) {
                               return reason.text() == text_ &&
                                      reason.fault_id() == FaultId::kMacroRecursion;
                           });
    }

    void add_author_notes() {
        const Range repeated = source().role == TextRole::kValueRule
                                   ? repeated_condition(source().text, expression_.nodes)
                                   : Range();
        const auto add = [&](std::vector<Note> notes) {
            for (Note& note : notes) {
                if (note.offset < repeated.begin || note.offset >= repeated.end) {
                    notes_.push_back({text_, note_name(note.id), note.offset, note.length,
                                      std::move(note.text)});
                }
            }
        };
        add(notes_of_syntax(source().text, expression_.nodes));
        add(notes_of_names(source().text, expression_.nodes, resolution_, model_, searches_));
    }

    const Model& model_;
    const Description& description_;
    std::uint32_t text_ = 0;
    Expression expression_;
    Resolution resolution_;
    NearSearches searches_;
    std::vector<TextNote> notes_;
};

}  // namespace

std::vector<TextNote> notes_of_texts(const Model& model) {
    return TextNotes(model).run();
}

}  // namespace kivo_session
