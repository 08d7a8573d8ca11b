#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "tests/session/random_description.h"

namespace {

using Setting = RandomDescription::Setting;

std::set<std::string> overridden(const KIVO_SESSION& session) {
    std::set<std::string> names;
    for (const KIVO_VERDICT& verdict : session.verdicts()) {
        if (verdict.id == "overridden") {
            names.insert(verdict.subject.name);
        }
    }
    return names;
}

bool is_told(const KIVO_SESSION& session, std::uint32_t number) {
    const std::vector<KIVO_VERDICT>& verdicts = session.verdicts();
    return std::any_of(verdicts.begin(), verdicts.end(), [number](const KIVO_VERDICT& verdict) {
        return verdict.subject.number == number;
    });
}

bool is_legal_with(const KIVO_SESSION& session, const std::string& name, const std::string& value) {
    KIVO_SESSION changed = session.fork();
    EXPECT_EQ(changed.set(name, value), KIVO_SET_RESULT::kDone) << name << "=" << value;
    return changed.is_legal() && overridden(changed).count(name) == 0;
}

bool is_own_legal_with(const KIVO_SESSION& session, const std::string& name,
                       const std::string& value) {
    KIVO_SESSION changed = session.fork();
    changed.set(name, value);
    const std::vector<KIVO_VERDICT>& verdicts = changed.verdicts();
    return std::none_of(verdicts.begin(), verdicts.end(), [&](const KIVO_VERDICT& verdict) {
        return verdict.subject.name == name && verdict.severity == KIVO_SEVERITY::kError &&
               verdict.id != "fault" && verdict.id != "forces-disagree";
    });
}

// The values that an answer holds, of numbers those between two limits.
Texts listed(const KIVO_LEGAL_VALUES& legal, int least, int greatest) {
    Texts result = legal.values;
    for (const KIVO_RUN& run : legal.runs) {
        const long long first = std::max<long long>(std::stoll(run.first), least);
        const long long last = std::min<long long>(std::stoll(run.last), greatest);
        for (long long value = first; value <= last; ++value) {
            result.push_back(std::to_string(value));
        }
    }
    return result;
}

// Calls "use" with every combination of values of the settings.
void for_each_combination(const std::vector<Setting>& settings,
                          const std::function<bool(const std::vector<KIVO_ASSIGNMENT>&)>& use) {
    std::vector<std::size_t> positions(settings.size());
    for (;;) {
        std::vector<KIVO_ASSIGNMENT> assignments;
        for (std::size_t i = 0; i < settings.size(); ++i) {
            assignments.push_back({settings[i].name, settings[i].values[positions[i]]});
        }
        if (!use(assignments)) {
            return;
        }
        std::size_t i = 0;
        while (i < settings.size() && ++positions[i] == settings[i].values.size()) {
            positions[i++] = 0;
        }
        if (i == settings.size()) {
            return;
        }
    }
}

std::string asked(const KIVO_SESSION& session, const std::string& name) {
    const KIVO_SETTING* setting = session.find(name);
    return setting != nullptr ? or_none(setting->asked) : or_none(session.find_port(name)->asked);
}

using Change = std::vector<KIVO_ASSIGNMENT>;

bool does_repair(const KIVO_SESSION& session, std::uint32_t number, const Change& change) {
    KIVO_SESSION changed = session.fork();
    EXPECT_EQ(changed.set_all(change), KIVO_SET_RESULT::kDone);
    std::set<std::string> allowed = overridden(session);
    for (const KIVO_ASSIGNMENT& each : change) {
        allowed.erase(each.name);
    }
    const std::set<std::string> now = overridden(changed);
    return changed.is_legal() && !is_told(changed, number) &&
           std::includes(allowed.begin(), allowed.end(), now.begin(), now.end());
}

std::string text_of(const Change& change) {
    std::string text;
    for (const KIVO_ASSIGNMENT& each : change) {
        text += (text.empty() ? "" : " ") + each.name + "=" + each.value;
    }
    return text;
}

// What must be offered, found by trying every value: all of lists, the nearest numbers.
std::set<std::string> single_repairs(const KIVO_SESSION& session, const Setting& setting,
                                     std::uint32_t number) {
    std::set<std::string> all;
    std::map<bool, std::pair<long, std::string>> nearest;  // by whether it lies above
    const std::string current = asked(session, setting.name);
    for (const std::string& value : setting.values) {
        const Change change{{setting.name, value}};
        if (value == current || !does_repair(session, number, change)) {
            continue;
        }
        if (!setting.is_number) {
            all.insert(text_of(change));
            continue;
        }
        const long distance = std::stol(value) - std::stol(current);
        auto& best = nearest[distance > 0];
        if (best.second.empty() || std::abs(distance) < best.first) {
            best = {std::abs(distance), text_of(change)};
        }
    }
    for (const auto& [is_above, best] : nearest) {
        all.insert(best.second);
    }
    return all;
}

}  // namespace

TEST(Search, legal_values_are_those_that_trying_each_finds) {
    std::size_t legal_ones = 0;
    std::size_t tried = 0;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        RandomDescription random(seed, 4, seed % 3 == 0 ? 120 : 8);
        Described described(random.sections());
        described.session.set_all(random.assignments());
        for (const Setting& setting : random.all_settings()) {
            Texts expected;
            for (const std::string& value : setting.values) {
                if (is_legal_with(described.session, setting.name, value)) {
                    expected.push_back(value);
                }
            }
            const KIVO_LEGAL_VALUES found =
                described.session.legal_values(setting.name, KIVO_LEGAL_SCOPE::kWhole);
            EXPECT_TRUE(found.is_setting);
            EXPECT_TRUE(found.undecided.empty());
            EXPECT_EQ(listed(found, setting.least - 1, setting.greatest + 1), expected)
                << setting.name << " seed " << seed << "\n"
                << random.sections();
            legal_ones += expected.size();
            tried += setting.values.size();
        }
    }
    // The descriptions ask something.
    EXPECT_GT(legal_ones, tried / 50);
    EXPECT_LT(legal_ones, tried);
}

TEST(Search, own_legal_values_leave_the_rules_of_others_aside) {
    std::size_t compared = 0;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        RandomDescription random(seed, 4, 10);
        Described described(random.sections());
        described.session.set_all(random.assignments());
        for (const Setting& setting : random.settings()) {
            if (setting.has_force) {
                continue;
            }
            Texts expected;
            for (const std::string& value : setting.values) {
                if (is_own_legal_with(described.session, setting.name, value)) {
                    expected.push_back(value);
                }
            }
            const KIVO_LEGAL_VALUES found =
                described.session.legal_values(setting.name, KIVO_LEGAL_SCOPE::kOwn);
            EXPECT_EQ(listed(found, setting.least, setting.greatest), expected)
                << setting.name << " seed " << seed << "\n"
                << random.sections();
            ++compared;
        }
    }
    EXPECT_GT(compared, 60u);
}

TEST(Search, repairs_repair_and_no_single_one_is_missing) {
    std::size_t singles = 0;
    std::size_t pairs = 0;
    std::size_t none = 0;
    for (std::uint32_t seed = 100; seed < 180; ++seed) {
        RandomDescription random(seed, 3, 6);
        Described described(random.sections());
        described.session.set_all(random.assignments());
        const std::vector<KIVO_VERDICT> verdicts = described.session.verdicts();
        for (const KIVO_VERDICT& verdict : verdicts) {
            std::set<std::string> expected;
            for (const Setting& setting : random.all_settings()) {
                expected.merge(single_repairs(described.session, setting, verdict.subject.number));
            }
            std::set<std::string> found;
            for (const KIVO_REPAIR& repair : described.session.repairs(verdict.subject)) {
                EXPECT_TRUE(does_repair(described.session, verdict.subject.number, repair.set))
                    << repair.text << " seed " << seed;
                EXPECT_EQ(text_of(repair.set), repair.text);
                EXPECT_TRUE(found.insert(repair.text).second) << repair.text;
            }
            const std::string about = verdict.id + " " + verdict.subject.name + " seed " +
                                      std::to_string(seed) + "\n" + random.sections();
            if (!expected.empty()) {
                EXPECT_EQ(found, expected) << about;
                singles += found.size();
                continue;
            }
            bool has_pair = false;
            const std::vector<Setting> all = random.all_settings();
            for (std::size_t i = 0; i < all.size() && !has_pair; ++i) {
                for (std::size_t j = i + 1; j < all.size() && !has_pair; ++j) {
                    for_each_combination({all[i], all[j]}, [&](const Change& change) {
                        has_pair = does_repair(described.session, verdict.subject.number, change);
                        return !has_pair;
                    });
                }
            }
            EXPECT_EQ(!found.empty(), has_pair) << about;
            ++(has_pair ? pairs : none);
        }
    }
    EXPECT_GT(singles, 20u);
    EXPECT_GT(pairs, 5u);
    EXPECT_GT(none, 5u);
}

TEST(Search, conflicts_suffice_and_none_of_them_can_be_left_out) {
    std::size_t compared = 0;
    for (std::uint32_t seed = 200; seed < 220; ++seed) {
        RandomDescription random(seed, 3, 4);
        Described described(random.sections());
        described.session.set_all(random.assignments());
        const std::set<std::string> lost = overridden(described.session);
        std::set<std::string> given;
        for (const KIVO_ASSIGNMENT& each : described.session.assignments()) {
            given.insert(each.name);
        }
        const std::vector<KIVO_VERDICT> verdicts = described.session.verdicts();
        for (const KIVO_VERDICT& verdict : verdicts) {
            const KIVO_CONFLICT conflict = described.session.conflict(verdict.subject);
            EXPECT_FALSE(conflict.may_be_smaller);
            std::set<std::string> kept;
            for (const KIVO_ASSIGNMENT& each : conflict.settings) {
                kept.insert(each.name);
                EXPECT_EQ(each.value, asked(described.session, each.name));
            }
            // Whether the verdict can go away while these stay and are granted.
            const auto is_way_out = [&](const std::set<std::string>& fixed) {
                std::vector<Setting> free;
                for (const Setting& setting : random.all_settings()) {
                    if (fixed.count(setting.name) == 0) {
                        free.push_back(setting);
                    }
                }
                bool is_found = false;
                KIVO_SESSION changed = described.session.fork();
                for_each_combination(free, [&](const Change& change) {
                    changed.set_all(change);
                    is_found = !is_told(changed, verdict.subject.number);
                    for (const std::string& name :
                         is_found ? overridden(changed) : std::set<std::string>()) {
                        is_found = is_found && (fixed.count(name) == 0 || given.count(name) == 0 ||
                                                lost.count(name) > 0);
                    }
                    return !is_found;
                });
                return is_found;
            };
            const std::string about = verdict.id + " " + verdict.subject.name + " seed " +
                                      std::to_string(seed) + "\n" + random.sections();
            EXPECT_FALSE(is_way_out(kept)) << about;
            for (const std::string& name : kept) {
                std::set<std::string> fewer = kept;
                fewer.erase(name);
                EXPECT_TRUE(is_way_out(fewer)) << "without " << name << ": " << about;
            }
            ++compared;
        }
    }
    EXPECT_GT(compared, 30u);
}

TEST(Search, answers_leave_the_session_as_it_is) {
    RandomDescription random(7, 4, 10);
    Described described(random.sections());
    described.session.set_all(random.assignments());
    const std::string before = everything(described.session, described.info);
    described.session.take_changes();
    for (const Setting& setting : random.all_settings()) {
        described.session.legal_values(setting.name, KIVO_LEGAL_SCOPE::kWhole);
        described.session.legal_values(setting.name, KIVO_LEGAL_SCOPE::kOwn);
    }
    for (const KIVO_VERDICT& verdict : std::vector<KIVO_VERDICT>(described.session.verdicts())) {
        described.session.why(verdict.subject);
        described.session.conflict(verdict.subject);
        described.session.repairs(verdict.subject);
    }
    EXPECT_EQ(everything(described.session, described.info), before);
    EXPECT_TRUE(described.session.take_changes().empty());
}
