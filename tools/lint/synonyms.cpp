#include "tools/lint/rooms.h"
#include "tools/lint/slots.h"

namespace {

// clang-format off
constexpr LintRow kSameMeaning = {
    "given-twice", "{} and {} mean the same here: only {} counts"};
constexpr LintRow kSameWord = {
    "given-twice", "{} is given again: only the {} counts"};
// clang-format on

std::string_view which_counts(const Giver& before, const Giver& counting) {
    if (before.element != nullptr && counting.element != nullptr) {
        return "last";
    }
    return counting.element != nullptr ? "element" : "attribute";
}

// An attribute that is given twice under one name is no XML, which others tell.
bool is_repeated_attribute(const Giver& before, const Giver& counting) {
    return before.attribute != nullptr && counting.attribute != nullptr &&
           before.word() == counting.word();
}

void post_pair(Lint& lint, const Spot& spot, const Giver& before, const Giver& counting) {
    const bool is_in_order = before.offset() < counting.offset();
    const Giver& first = is_in_order ? before : counting;
    const Giver& second = is_in_order ? counting : before;
    const Place place = second.place(spot.document);
    Finding& finding = before.word() == counting.word()
                           ? lint.post(kSameWord, spot.element, place, counting.word(),
                                       which_counts(before, counting))
                           : lint.post(kSameMeaning, spot.element, place, before.word(),
                                       counting.word(), counting.word());
    finding.notes.push_back({"first given here", first.place(spot.document)});
}

}  // namespace

void find_synonyms(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        // The sub-elements of a message with a text are not read.
        if (spot.context == Context::kMessage && !spot.element.text.text.empty()) {
            return;
        }
        for (const Slot& slot : slots_of(spot.context)) {
            const std::vector<Giver> givers = givers_of(spot, slot);
            for (std::size_t index = 1; index < givers.size(); ++index) {
                if (!is_repeated_attribute(givers[index - 1], givers[index])) {
                    post_pair(lint, spot, givers[index - 1], givers[index]);
                }
            }
        }
    });
}
