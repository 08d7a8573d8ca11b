#include <string>

#include "kivo/session/internal/engine/report.h"
#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

void judge_width(SenseRun& run, std::uint32_t number) {
    const Leaf& leaf = run.asker.model().leaves[number];
    const Object& port = run.asker.description().objects[leaf.object];
    const std::uint32_t text = leaf.kind == LeafKind::kPortWidth ? port.width : port.width2d;
    Question question;
    want(question.wanted, WantedKind::kTold, number);
    question.is_legal = question.is_certain = true;
    question.except = number;
    if (Engine* engine = run.asker.find(question)) {
        run.add_text("port-width-never", text,
                     Reporter(*engine).verdict(number, false).text + ":" + run.found_text());
    }
}

void judge_range(SenseRun& run, const Element& range) {
    if (range.first == kNone || range.second == kNone) {
        return;
    }
    Question question;
    want(question.wanted, WantedKind::kConnected, range.object);
    want(question.wanted, WantedKind::kHolds, range.condition);
    question.wanted.push_back({WantedKind::kAbove, range.second, range.first, {}, {}});
    question.is_legal = question.is_certain = true;
    if (Engine* engine = run.asker.find(question)) {
        run.add_text("range-empty", range.second,
                     "no value is in the " + run.name_of(range) + run.found_text() + ": it is " +
                         Reporter(*engine).limits_text(range));
    }
}

}  // namespace

void judge_ports(SenseRun& run) {
    const Model& model = run.asker.model();
    for (std::uint32_t number = 0; number < model.leaves.size(); ++number) {
        const Leaf& leaf = model.leaves[number];
        if (leaf.kind == LeafKind::kPortWidth || leaf.kind == LeafKind::kPortWidth2d) {
            judge_width(run, number);
        } else if (leaf.kind == LeafKind::kPortRange &&
                   run.asker.description().elements[leaf.item].map == kNone) {
            judge_range(run, run.asker.description().elements[leaf.item]);
        }
    }
}

}  // namespace kivo_session
