#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "tools/findings/notes.h"
#include "tools/lint/expressions_source.h"
#include "tools/lint/rooms.h"
#include "tools/text/text_steps.h"
#include "tools/text/whole_number.h"

namespace {

// Where faults of a text are told.
enum class Told {
    kAlways,
    kOnceParsed,   // for a composed text, of each part alone
    kWhereNeeded,  // arises with values, and may arise with defaults that no rule lets through
};

struct FaultRow {
    std::string_view fault;  // as the session calls it
    LintRow row;
    Told told;
};

// The texts are those of the session. An index outside a list and words of states have rooms of
// their own.
// clang-format off
constexpr FaultRow kFaults[] = {
    { "expression-syntax",      {"expression-syntax",      "{}"}, Told::kOnceParsed  },
    { "text-too-long",          {"expression-too-large",   "{}"}, Told::kOnceParsed  },
    { "too-deep",               {"expression-too-large",   "{}"}, Told::kOnceParsed  },
    { "unknown-name",           {"unknown-name",           "{}"}, Told::kAlways      },
    { "macro-arguments",        {"macro-arguments",        "{}"}, Told::kAlways      },
    { "macro-recursion",        {"macro-recursion",        "{}"}, Told::kAlways      },
    { "ill-typed",              {"ill-typed",              "{}"}, Told::kWhereNeeded },
    { "division-by-zero",       {"division-by-zero",       "{}"}, Told::kWhereNeeded },
    { "domain",                 {"domain",                 "{}"}, Told::kWhereNeeded },
    { "too-large",              {"too-large",              "{}"}, Told::kWhereNeeded },
    { "too-many-steps",         {"expression-too-large",   "{}"}, Told::kWhereNeeded },
    { "mixed-and-or",           {"mixed-and-or",           "{}"}, Told::kAlways      },
    { "sign-before-power",      {"sign-before-power",      "{}"}, Told::kAlways      },
    { "not-before-comparison",  {"not-before-comparison",  "{}"}, Told::kAlways      },
    { "sign-of-remainder",      {"sign-of-remainder",      "{}"}, Told::kAlways      },
    { "bare-word",              {"bare-word",              "{}"}, Told::kAlways      },
    { "mixed-comparison",       {"mixed-comparison",       "{}"}, Told::kAlways      },
    { "text-not-in-list",       {"text-not-in-list",       "{}"}, Told::kAlways      },
    { "ceil-of-integer",        {"ceil-of-integer",        "{}"}, Told::kAlways      },
    { "macro-precedence",       {"macro-precedence",       "{}"}, Told::kAlways      },
    { "translator-blind",       {"translator-blind",       "{}"}, Told::kAlways      },
    { "value-read-as-text",     {"value-read-as-text",     "{}"}, Told::kAlways      },
};
constexpr LintRow kNotDeclared = {
    "unknown-name", "no {} is called {}: the map says nothing of any"};
// clang-format on

const FaultRow* find_row(std::string_view id) {
    const auto* const row = std::find_if(std::begin(kFaults), std::end(kFaults),
                                         [id](const FaultRow& each) { return each.fault == id; });
    return row == std::end(kFaults) ? nullptr : row;
}

// What the session says, in parts.
struct Saying {
    std::string text;
    std::string meant;                      // the word that was probably meant
    std::optional<std::size_t> look_alike;  // where the character stands that was the reason
};

// Cuts a text in two at a mark; the mark goes.
bool cut_at(std::string& text, std::string_view mark, std::string& after) {
    const std::size_t at = text.rfind(mark);
    if (at == std::string::npos) {
        return false;
    }
    after = text.substr(at + mark.size());
    text.resize(at);
    return true;
}

// Within quotes every character is as good as another.
bool is_in_quotes(std::string_view text, std::size_t at) {
    return std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '"') % 2 != 0;
}

constexpr std::string_view kHolds = "; it holds ";

// A name that holds a character of typesetting was not meant as a name.
bool has_look_alike(const KIVO_FAULT& fault) {
    return fault.id == "unknown-name" && fault.text.find(kHolds) != std::string::npos;
}

std::size_t first_beyond_ascii(std::string_view text, std::size_t at) {
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) {
        ++at;
    }
    return at;
}

Saying saying_of(const KIVO_FAULT& fault) {
    Saying saying{fault.text, {}, {}};
    std::string after;
    if (cut_at(saying.text, "; did you mean ", after)) {
        saying.meant = after.substr(0, after.size() - 1);
    } else if (has_look_alike(fault) && cut_at(saying.text, kHolds, after)) {
        saying.text = "this is " + after;
        saying.look_alike = first_beyond_ascii(fault.source, fault.offset);
    } else if (cut_at(saying.text, "; column ", after)) {
        const std::size_t end = after.find(' ');
        const auto column = whole_number<std::size_t>(std::string_view(after).substr(0, end));
        const bool is_reason = column && *column <= fault.offset + fault.length &&
                               !is_in_quotes(fault.source, *column - 1);
        if (is_reason) {
            saying.text = "this is" + after.substr(after.find(' ', end + 1));
            saying.look_alike = *column - 1;
        }
    }
    return saying;
}

class Expressions {
public:
    explicit Expressions(Lint& lint) : lint_(lint), source_(lint) {}

    void run() {
        collect_names();
        for (const KIVO_VERDICT& verdict : lint_.session().verdicts()) {
            if (verdict.is_undecided) {
                undecided_.insert({verdict.mark.file, verdict.mark.offset});
            }
        }
        const std::vector<KIVO_FAULT> notes = lint_.session().notes();
        for (const KIVO_FAULT& note : notes) {
            if (note.id == "not-before-comparison") {
                misread_.insert({note.mark.file, note.mark.offset});
            }
        }
        for (const KIVO_FAULT& fault : lint_.session().faults()) {
            pass(fault);
        }
        for (const KIVO_FAULT& note : notes) {
            pass(note);
        }
        lint_.for_each([this](const Spot& spot) { pass_mapped(spot); });
    }

private:
    using Mark = std::pair<std::uint32_t, std::uint32_t>;

    // All names that a declaration has, also one that the library refused and told of.
    void collect_names() {
        for (const Document& document : lint_.documents()) {
            are_all_known_ =
                are_all_known_ && document.root() != nullptr && document.root()->tag == "ROOT";
            for (const DocumentElement& element : document.elements()) {
                const bool is_object =
                    element.parent != nullptr && element.tag != "WAVE" &&
                    element.tag != "CUSTOM_VECTOR" && element.tag != "WIZARD_MAP" &&
                    element.parent->tag != "WIZARD_MAP" && element.parent->tag != "WIZARD_DATA" &&
                    element.tag != "VHDL_LIBRARY";
                if (is_object && element.attribute("NAME") != nullptr) {
                    declared_.insert(element.value_of("NAME"));
                }
            }
        }
        const KIVO_INFO& info = lint_.info();
        for (std::size_t index = 0; index < info.error_list.size(); ++index) {
            const std::string id = info.get_error_id(index);
            are_all_known_ = are_all_known_ && id != "file-not-found" && id != "invalid-file" &&
                             id != "too-many-files" && !is_about_unread_file(id);
        }
    }

    // A description that declares nothing is a part of another one.
    bool is_surely_unknown(std::string_view name) const {
        return are_all_known_ && !declared_.empty() && declared_.count(name) == 0;
    }

    // Whether something is not decided because of it, with everything at its default; what follows
    // from a misplaced "not" is told of with that.
    bool is_needed(const KIVO_FAULT& fault) const {
        const Mark mark = {fault.mark.file, fault.mark.offset};
        return undecided_.count(mark) != 0 && misread_.count(mark) == 0;
    }

    // A text that has a value, but none that is a number: told of with the values.
    bool is_no_number(const KIVO_FAULT& fault) const {
        const bool is_condition = fault.attribute.empty() || fault.attribute == "IF";
        return !is_condition &&
               lint_.session().evaluate(fault.source).kind != KIVO_VALUE_KIND::kUnknown;
    }

    void pass(const KIVO_FAULT& fault) {
        const FaultRow* const row =
            find_row(has_look_alike(fault) ? "expression-syntax" : std::string_view(fault.id));
        const std::string_view word =
            std::string_view(fault.source)
                .substr(std::min<std::size_t>(fault.offset, fault.source.size()), fault.length);
        // What is empty is told of as such.
        const bool is_silent =
            row == nullptr || is_blank(fault.source) ||
            (row->fault == "unknown-name" && !is_surely_unknown(word)) ||
            (row->told == Told::kWhereNeeded && (!is_needed(fault) || is_no_number(fault)));
        if (is_silent) {
            return;
        }
        const std::vector<ExpressionSource::Part> parts = source_.parts_of(fault);
        if (parts.empty()) {
            if (const auto where = source_.find(fault)) {
                post(*row, fault, *where);
            }
        } else if (row->told == Told::kOnceParsed) {
            pass_parts(*row, parts);
        } else {
            pass_part(*row, fault, parts);
        }
    }

    // Each part has to be an expression, whatever the whole of them looks like.
    void pass_parts(const FaultRow& row, const std::vector<ExpressionSource::Part>& parts) {
        bool is_told = false;
        for (const ExpressionSource::Part& part : parts) {
            for (const KIVO_FAULT& fault : lint_.session().evaluate(part.where.text->text).faults) {
                const FaultRow* const own = find_row(fault.id);
                if (own != nullptr && own->told == Told::kOnceParsed) {
                    is_told = true;
                    post(*own, fault, part.where);
                }
            }
        }
        if (!is_told) {
            TextInSource rule = parts.front().where;
            rule.text = nullptr;
            KIVO_FAULT whole;
            whole.text = "the parts of this rule are no expression together";
            post(row, whole, rule);
        }
    }

    void pass_part(const FaultRow& row, KIVO_FAULT fault,
                   const std::vector<ExpressionSource::Part>& parts) {
        for (const ExpressionSource::Part& part : parts) {
            if (fault.offset >= part.begin && fault.offset < part.begin + part.size) {
                fault.offset -= static_cast<std::uint32_t>(part.begin);
                return post(row, fault, part.where);
            }
        }
    }

    void post(const FaultRow& row, const KIVO_FAULT& fault, const TextInSource& where) {
        const Saying saying = saying_of(fault);
        const std::size_t offset = saying.look_alike.value_or(fault.offset);
        const Place place = where.place(offset, saying.look_alike ? 1 : fault.length);
        const Position start = place.start.value_or(Position{});
        // A text that several records share is one in the file.
        if (!told_.emplace(place.file, start.line, start.column, row.row.id).second) {
            return;
        }
        Finding& finding = lint_.post(row.row, *where.element, place, saying.text);
        if (!saying.meant.empty()) {
            finding.notes.push_back(did_you_mean(saying.meant, finding.place));
        }
    }

    // A map can say something of what is declared alone.
    void pass_mapped(const Spot& spot) {
        const bool is_object =
            spot.context == Context::kParameter || spot.context == Context::kPort;
        const DocumentAttribute* const name = spot.element.attribute("NAME");
        const bool is_in_map = is_object && (spot.element.parent->tag == "WIZARD_MAP" ||
                                             spot.element.parent->tag == "WIZARD_DATA");
        if (!is_in_map || name == nullptr || is_blank(name->value.text) ||
            spot.element.attribute("TYPE") == nullptr || !is_surely_unknown(name->value.text) ||
            lint_.info().get_kivo_obj(std::string(name->value.text)) != nullptr) {
            return;
        }
        Finding& finding =
            lint_.post(kNotDeclared, spot.element, spot.document.place(name->value),
                       spot.context == Context::kPort ? "port" : "parameter", name->value.text);
        const std::string meant = lint_.session().nearest_name(name->value.text);
        if (!meant.empty()) {
            finding.notes.push_back(did_you_mean(meant, finding.place));
        }
    }

    Lint& lint_;
    ExpressionSource source_;
    std::unordered_set<std::string_view> declared_;
    bool are_all_known_ = true;
    std::set<Mark> undecided_;  // where something is not decided
    std::set<Mark> misread_;    // where a "not" applies to less than was meant
    std::set<std::tuple<std::string, std::int32_t, std::int32_t, std::string_view>> told_;
};

}  // namespace

void find_wrong_expressions(Lint& lint) {
    Expressions(lint).run();
}
