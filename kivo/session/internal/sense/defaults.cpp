#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_set>

#include "kivo/session/internal/engine/report.h"
#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/search/verdict_kind.h"
#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

constexpr std::size_t kMostMaps = 256;    // that are looked at
constexpr std::size_t kMostDefaults = 4;  // that are named for one rule

// What a default can break; what is told under an id of its own is left out.
bool is_broken_rule(LeafKind kind) {
    switch (kind) {
        case LeafKind::kNotInList:
        case LeafKind::kRange:
        case LeafKind::kValueRule:
        case LeafKind::kConstantRange:
        case LeafKind::kRule:
        case LeafKind::kMessage:
            return true;
        default:
            return false;
    }
}

class BrokenDefaults {
public:
    explicit BrokenDefaults(SenseRun& run)
        : run_(run), model_(run.asker.model()), description_(run.asker.description()) {}

    void run() {
        Engine engine(run_.asker.start());
        pass(engine, kNone);
        const std::size_t maps = std::min(description_.maps.size(), kMostMaps);
        for (std::uint32_t map = 0; map < maps; ++map) {
            engine.select_map(map);
            pass(engine, map);
        }
        for (std::size_t map = maps; map < description_.maps.size(); ++map) {
            run_.asker.count_undecided();
        }
    }

private:
    void pass(Engine& engine, std::uint32_t map) {
        if (engine.is_legal()) {
            return;
        }
        for (std::uint32_t leaf = 0; leaf < model_.leaves.size(); ++leaf) {
            const bool is_broken = is_broken_rule(model_.leaves[leaf].kind) &&
                                   takes_legality(description_, model_.leaves[leaf]) &&
                                   !engine.result(leaf).is_unknown() &&
                                   !engine.needs_spoiled_text(leaf) &&
                                   run_.told_leaves.count(leaf) == 0 && is_told(engine, leaf);
            if (is_broken && broken_.insert(leaf).second) {
                tell(engine, leaf, map);
            }
        }
    }

    void tell(Engine& engine, std::uint32_t number, std::uint32_t map) {
        const Leaf& leaf = model_.leaves[number];
        const KIVO_VERDICT verdict = Reporter(engine).verdict(number, false);
        const std::string when =
            map == kNone ? "with everything at its default "
                         : "with the wizard map " + std::string(description_.maps[map].name) + " ";
        const std::string says =
            when + (leaf.kind == LeafKind::kMessage ? "an ERROR is shown: " : "") + verdict.text;
        const bool is_own = leaf.object != kNone && engine.source(leaf.object) != Source::kForced &&
                            engine.asked_text(leaf.object) != kNone;
        if (is_own) {
            KIVO_SENSE_FINDING& finding =
                run_.add_text("default-breaks-rule", engine.asked_text(leaf.object), says);
            if (leaf.kind != LeafKind::kNotInList) {
                finding.notes.push_back({"the rule", verdict.mark});
            }
            return;
        }
        KIVO_SENSE_FINDING& finding =
            run_.add_mark("default-breaks-rule", leaf.object, verdict.mark, says);
        add_defaults(engine, number, finding);
    }

    // What the rule is about, and where it is given.
    void add_defaults(Engine& engine, std::uint32_t leaf, KIVO_SENSE_FINDING& finding) const {
        const Cone below = cone_below(model_, {}, {leaf});
        for (const std::uint32_t object : settings_in(engine, below)) {
            const std::uint32_t text = engine.asked_text(object);
            if (is_parameter(description_.objects[object].kind) && text != kNone &&
                finding.notes.size() < kMostDefaults) {
                finding.notes.push_back(
                    {run_.name_of(object) + " is " + Reporter(engine).effective_text(object),
                     description_.texts[text].mark});
            }
        }
    }

    SenseRun& run_;
    const Model& model_;
    const Description& description_;
    std::unordered_set<std::uint32_t> broken_;  // leaves
};

class UnusedDefaults {
public:
    explicit UnusedDefaults(SenseRun& run)
        : run_(run), model_(run.asker.model()), description_(run.asker.description()) {}

    void run() {
        for (std::uint32_t object = 0; object < model_.object_count(); ++object) {
            const Object& each = description_.objects[object];
            const bool is_visible =
                each.kind == ObjectKind::kInteger || each.kind == ObjectKind::kString;
            if (is_visible && each.default_text != kNone && each.default_fault == kNone) {
                pass(object);
            }
        }
    }

private:
    bool reads_own(std::uint32_t text, std::uint32_t object) const {
        if (text == kNone) {
            return false;
        }
        const Program& program = model_.texts[text].program;
        const auto code = model_.code.instructions.begin();
        return model_.is_spoiled(text) ||
               std::any_of(code + program.begin, code + program.end,
                           [object](const Instruction& each) {
                               return each.action == Action::kValue && each.index == object;
                           });
    }

    // Own rules may be made from what is asked for, then the default is.
    bool may_count(std::uint32_t object) const {
        const Range range = description_.objects[object].elements;
        return model_.expansion[object] != kNone ||
               std::any_of(description_.elements.begin() + range.begin,
                           description_.elements.begin() + range.end, [&](const Element& each) {
                               return each.kind == ElementKind::kForce &&
                                      (reads_own(each.first, object) ||
                                       reads_own(each.second, object) ||
                                       reads_own(each.condition, object));
                           });
    }

    void pass(std::uint32_t object) {
        const Range range = description_.objects[object].elements;
        Question question;
        std::uint32_t last = kNone;
        bool is_always = false;
        for (std::uint32_t i = range.begin; i < range.end && !is_always; ++i) {
            const Element& each = description_.elements[i];
            if (each.kind != ElementKind::kForce || each.first == kNone || each.map != kNone) {
                continue;
            }
            last = i;
            is_always = each.condition == kNone || each.second != kNone;
            want(question.wanted, WantedKind::kFails, each.condition);
        }
        if (last == kNone || may_count(object) ||
            (!is_always && run_.asker.ask(question) != Finding::kNo)) {
            return;
        }
        KIVO_SENSE_FINDING& finding =
            run_.add_text("default-never-used", description_.objects[object].default_text,
                          "the default of " + run_.name_of(object) +
                              " never counts: rules always force its value");
        finding.notes.push_back({"always forced with this one", description_.elements[last].mark});
    }

    SenseRun& run_;
    const Model& model_;
    const Description& description_;
};

}  // namespace

void judge_defaults(SenseRun& run) {
    BrokenDefaults(run).run();
    UnusedDefaults(run).run();
}

void judge_values(SenseRun& run) {
    const Description& description = run.asker.description();
    for (std::uint32_t object = 0; object < description.objects.size(); ++object) {
        const Object& each = description.objects[object];
        if (!each.has_list || run.asker.axis(object).is_wild) {
            continue;
        }
        const Domain domain = run.asker.axis(object).domain;
        for (std::size_t i = 0; i < domain.values.size(); ++i) {
            Question question;
            question.wanted.push_back(
                {WantedKind::kIs, object, kNone, domain.spans[i], domain.values[i]});
            question.is_legal = true;
            if (run.asker.ask(question) != Finding::kNo) {
                continue;
            }
            const auto items = description.items.begin();
            const auto item = std::find_if(
                items + each.items.begin, items + each.items.end, [&](std::uint32_t text) {
                    return description.texts[text].text == domain.values[i];
                });
            std::string says = "no legal configuration gives " + run.name_of(object) +
                               " the value " + domain.values[i];
            if (item == items + each.items.end) {
                run.add_object("value-never-legal", object, std::move(says));
            } else {
                run.add_text("value-never-legal", *item, std::move(says));
            }
        }
    }
}

}  // namespace kivo_session
