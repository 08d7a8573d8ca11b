// Whatever is told of small random descriptions is so in every one of their configurations.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/model/from_store.h"
#include "kivo/session/internal/search/verdict_kind.h"
#include "kivo/session/sense.h"
#include "tests/session/random_description.h"

namespace {

using kivo_session::Engine;
using kivo_session::LeafKind;
using kivo_session::Model;
using kivo_session::Value;

std::shared_ptr<const Model> model_of(const KIVO_INFO& info) {
    auto description = std::make_unique<kivo_session::Description>();
    kivo_session::read_store(info, *description);
    return std::make_shared<const Model>(std::move(description));
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

constexpr KIVO_EFFORT kLittle = {400000, 500, 60000};

// A finding, and whether a configuration is as it says none is.
class Claim {
public:
    Claim(const Model& model, const KIVO_SENSE_FINDING& finding)
        : model_(model), finding_(finding), object_(model.find(finding.object)) {
        const auto& texts = model.description->texts;
        for (std::uint32_t i = 0; i < texts.size(); ++i) {
            const bool is_it =
                texts[i].element == finding.element && texts[i].attribute == finding.attribute &&
                texts[i].text == finding.source && texts[i].mark.offset == finding.mark.offset;
            text_ = is_it && text_ == kivo_session::kNone ? i : text_;
        }
        for (std::uint32_t i = 0; i < model.leaves.size(); ++i) {
            leaf_ = is_judged_by_text(model.leaves[i]) ? i : leaf_;
        }
    }

    bool is_refuted_by(Engine& engine) const {
        if (finding_.id == "dead-rule" || finding_.id == "always-condition") {
            return may_be(engine, contains(finding_.text, "never true"));
        }
        if (finding_.id == "dead-in-legal") {
            return engine.is_legal() && may_be(engine, true);
        }
        if (finding_.id == "unreachable-message") {
            const bool is_else = contains(finding_.text, "ELSE");
            const bool is_for_legal = contains(finding_.text, "legal");
            return (engine.is_legal() || !is_for_legal) && may_be(engine, !is_else);
        }
        if (finding_.id == "impossible-rule") {
            return !is_told(engine, leaf_);
        }
        if (finding_.id == "value-never-legal") {
            return engine.is_legal() && engine.text_of(engine.value(object_)) == finding_.source;
        }
        if (finding_.id == "default-never-used") {
            return engine.source(object_) != kivo_session::Source::kForced;
        }
        return false;
    }

private:
    bool is_judged_by_text(const kivo_session::Leaf& leaf) const {
        const auto& description = *model_.description;
        return (leaf.kind == LeafKind::kRule && description.rules[leaf.item].condition == text_) ||
               (leaf.kind == LeafKind::kValueRule &&
                description.elements[leaf.item].condition == text_);
    }

    // Of something that always decides nothing more is asked. What has no value is not true.
    bool may_be(Engine& engine, bool wanted) const {
        if (contains(finding_.text, "one before it")) {
            return false;
        }
        const Value value = engine.condition_of(text_);
        return value.is_unknown()
                   ? !wanted || !engine.reasons().is_more_than_run_time(value.reasons())
                   : value == Value::truth(wanted);
    }

    const Model& model_;
    const KIVO_SENSE_FINDING& finding_;
    std::uint32_t object_;
    std::uint32_t text_ = kivo_session::kNone;
    std::uint32_t leaf_ = kivo_session::kNone;
};

// Calls "use" with an engine in each configuration.
template <class Use>
void for_each_configuration(Engine& engine, const std::vector<RandomDescription::Setting>& settings,
                            Use use) {
    std::vector<std::size_t> positions(settings.size());
    std::size_t moved = 0;
    while (moved < settings.size()) {
        std::vector<kivo_session::Assignment> assignments;
        for (std::size_t i = 0; i < settings.size(); ++i) {
            assignments.push_back({settings[i].name, settings[i].values[positions[i]]});
        }
        std::size_t refused = 0;
        ASSERT_EQ(engine.set(assignments, &refused), kivo_session::SetResult::kDone);
        use(engine);
        for (moved = 0; moved < settings.size(); ++moved) {
            if (++positions[moved] < settings[moved].values.size()) {
                break;
            }
            positions[moved] = 0;
        }
    }
}

TEST(SenseProperty, what_is_told_is_so_in_every_configuration) {
#ifdef KIVO_STRESS
    constexpr std::uint32_t kSeeds = 3000;
#else
    constexpr std::uint32_t kSeeds = 80;
#endif
    std::map<std::string, int> told;
    for (std::uint32_t seed = 1; seed <= kSeeds; ++seed) {
        const RandomDescription random(seed, 2 + static_cast<int>(seed % 3), 4);
        const Described described(random.sections());
        const KIVO_SENSE sense = kivo_judge_sense(described.session, kLittle);
        const std::shared_ptr<const Model> model = model_of(described.info);
        std::vector<Claim> claims;
        for (const KIVO_SENSE_FINDING& finding : sense.findings) {
            claims.emplace_back(*model, finding);
            ++told[finding.id];
        }
        Engine engine(model);
        for_each_configuration(engine, random.all_settings(), [&](Engine& each) {
            for (std::size_t i = 0; i < claims.size() && !HasFailure(); ++i) {
                EXPECT_FALSE(claims[i].is_refuted_by(each))
                    << "seed " << seed << ": " << sense.findings[i].id << ": "
                    << sense.findings[i].text << " \"" << sense.findings[i].source << "\"\n"
                    << random.sections();
            }
        });
    }
    // The test would pass if nothing were told.
    for (const char* const id :
         {"dead-rule", "dead-in-legal", "unreachable-message", "impossible-rule",
          "value-never-legal", "default-never-used", "always-condition"}) {
        EXPECT_GT(told[id], 0) << id;
    }
}

TEST(SenseProperty, small_descriptions_are_decided) {
    std::size_t findings = 0;
    std::size_t undecided = 0;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        const RandomDescription random(seed, 3, 4);
        const Described described(random.sections());
        const KIVO_SENSE sense = kivo_judge_sense(described.session, kLittle);
        findings += sense.findings.size();
        undecided += sense.undecided;
    }
    EXPECT_GT(findings, undecided);
}

}  // namespace
