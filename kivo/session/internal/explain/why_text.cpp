#include <algorithm>

#include "kivo/objects/info.h"
#include "kivo/session/session.h"

namespace {

struct PhraseRow {
    std::string_view id;
    const char* fails;
};

// clang-format off
constexpr PhraseRow kPhrases[] = {
    { "advice",               "is not followed"             },
    { "fault",                "cannot be judged"            },
    { "forced-but-connected", "is forced and connected"     },
    { "forces-disagree",      "is forced to several values" },
    { "message-error",        "the message is shown"        },
    { "needs-value",          "needs a value"               },
    { "not-in-list",          "is not in its list"          },
    { "out-of-range",         "is out of range"             },
    { "overridden",           "is overridden"               },
    { "port-needs-value",     "needs a value"               },
    { "port-range",           "breaks its range"            },
    { "port-width",           "has no width"                },
    { "rule",                 "the rule fails"              },
    { "value-rule",           "its rule fails"              },
};
// clang-format on

std::string headline(const KIVO_WHY& why) {
    const std::string subject = why.subject.name.empty() ? std::string() : why.subject.name + ": ";
    if (why.id == "value") {
        return why.text;
    }
    if (why.holds == KIVO_TRUTH::kYes) {
        return subject + "holds";
    }
    const auto row = std::find_if(std::begin(kPhrases), std::end(kPhrases),
                                  [&why](const PhraseRow& each) { return each.id == why.id; });
    if (row == std::end(kPhrases)) {
        return subject + (why.holds == KIVO_TRUTH::kNo ? "does not hold" : "is not decided");
    }
    return subject +
           (why.holds == KIVO_TRUTH::kUnknown && why.id != "fault" ? "is not decided" : row->fails);
}

// A line of three columns; the last two only where there is something in them.
class Table {
public:
    void add(std::string first, std::string second, std::string third) {
        widths_[0] = std::max(widths_[0], first.size());
        widths_[1] = std::max(widths_[1], second.size());
        rows_.push_back({std::move(first), std::move(second), std::move(third)});
    }

    std::string text() const {
        std::string result;
        for (const Row& row : rows_) {
            std::string line = row.first;
            const auto pad = [&line](std::size_t width) {
                line.append(line.size() < width ? width - line.size() : 0, ' ');
            };
            if (!row.second.empty()) {
                pad(std::min(widths_[0], kWidest));
                line += "  " + row.second;
            }
            if (!row.third.empty()) {
                pad(std::min(widths_[0], kWidest) + 2 + std::min(widths_[1], kWidest));
                line += "  " + row.third;
            }
            result += line + "\n";
        }
        return result;
    }

private:
    // One long line must not push all others apart.
    static constexpr std::size_t kWidest = 48;

    struct Row {
        std::string first;
        std::string second;
        std::string third;
    };
    std::vector<Row> rows_;
    std::size_t widths_[2] = {0, 0};
};

std::string place_text(const KIVO_INFO& info, KIVO_MARK mark) {
    if (mark.file == 0) {
        return {};
    }
    const KIVO_PLACE place = info.get_place(mark);
    const std::string file = place.file.substr(place.file.find_last_of("/\\") + 1);
    return place.line > 0 ? file + ":" + std::to_string(place.line) : file;
}

// Each operand where it is first named, those that decide it below.
void add_operands(const KIVO_WHY& why, const KIVO_INFO& info, Table& table) {
    constexpr std::size_t kDeepest = 20;
    struct Step {
        std::uint32_t operand;
        std::size_t depth;
    };
    std::vector<Step> waiting;  // the next one last
    const auto wait_for = [&waiting](const std::vector<std::uint32_t>& operands,
                                     std::size_t depth) {
        for (auto each = operands.rbegin(); each != operands.rend(); ++each) {
            waiting.push_back({*each, depth});
        }
    };
    wait_for(why.decided_by, 1);
    std::vector<bool> is_told(why.operands.size());
    while (!waiting.empty()) {
        const Step step = waiting.back();
        waiting.pop_back();
        const KIVO_OPERAND& operand = why.operands[step.operand];
        const std::string value = operand.is_known ? operand.value : "not known";
        std::string name(2 * std::min(step.depth, kDeepest), ' ');
        name.append(operand.name).append(" = ").append(value);
        const bool is_again = is_told[step.operand] && !operand.operands.empty();
        table.add(std::move(name), is_again ? "see above" : operand.source_text,
                  is_again ? std::string() : place_text(info, operand.mark));
        if (!is_told[step.operand]) {
            is_told[step.operand] = true;
            wait_for(operand.operands, step.depth + 1);
        }
    }
}

}  // namespace

std::string kivo_why_text(const KIVO_WHY& why, const KIVO_CONFLICT& conflict,
                          const std::vector<KIVO_REPAIR>& repairs, const KIVO_INFO& info) {
    if (!why.is_known) {
        return {};
    }
    const std::string place = place_text(info, why.mark);
    std::string result = headline(why) + (place.empty() ? "" : "   " + place) + "\n";
    if (!why.rule.empty()) {
        result += "  " + why.rule + "\n";
    }
    Table table;
    add_operands(why, info, table);
    result += table.text();
    if (!conflict.settings.empty()) {
        result += "  conflict of: " + conflict.text + "\n";
    }
    for (std::size_t i = 0; i < repairs.size(); ++i) {
        result += (i == 0 ? "  would be legal with: " : ", or ") + repairs[i].text;
    }
    return result + (repairs.empty() ? "" : "\n");
}
