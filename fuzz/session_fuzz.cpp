// Sets everything of a description that can be set, in a way that follows from its bytes, and holds
// what a session says after changes against what a new one says, and the answers to questions
// against what happens when they are followed.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "fuzz/support/expect.h"
#include "fuzz/support/memory_file.h"
#include "kivo/kivo.h"
#include "kivo/session/sense.h"
#include "kivo/session/session.h"
#include "tests/session/asked.h"
#include "tests/session/told.h"

namespace {

constexpr const char* kValues[] = {
    "0",          "1",          "2",    "-7",     "128",
    "ON",         "AUTO",       "USED", "UNUSED", "VARIABLE",
    "CONSTANT",   "CONSTANT:3", "",     "1 / 0",  "99999999999999999999",
    "CONSTANT:-1"};

std::vector<std::string> names_of(const KIVO_SESSION& session) {
    std::vector<std::string> names;
    for (const KIVO_SETTING& each : session.settings()) {
        names.push_back(each.name);
    }
    for (const KIVO_PORT& each : session.ports()) {
        names.push_back(each.name);
    }
    return names;
}

void check_counters(const KIVO_SESSION& session) {
    bool is_legal = true;
    bool is_granted = true;
    for (const KIVO_VERDICT& each : session.verdicts()) {
        is_legal = is_legal && each.severity != KIVO_SEVERITY::kError;
        is_granted = is_granted && each.id != "overridden";
    }
    expect(session.is_legal() == is_legal, "legality is what the verdicts say");
    expect(session.is_granted() == is_granted, "what is granted is what the verdicts say");
}

void check_fresh(const KIVO_SESSION& session, KIVO_INFO& info) {
    KIVO_SESSION fresh(info);
    std::vector<KIVO_ASSIGNMENT> assignments = session.assignments();
    std::reverse(assignments.begin(), assignments.end());
    expect(fresh.set_all(assignments) == KIVO_SET_RESULT::kDone, "what was set can be set again");
    expect(fresh.select_map(session.map()), "the map that was selected can be selected again");
    expect_same(everything(session, info), everything(fresh, info),
                "changes leave what a new session says");
}

// Counted alone: answers must not depend on how fast they are found.
constexpr KIVO_EFFORT kLittle = {1000, 50, 1000000};
constexpr std::size_t kMostAsked = 8;

bool is_error(const KIVO_SESSION& session, const KIVO_SUBJECT& subject) {
    const std::vector<KIVO_VERDICT>& verdicts = session.verdicts();
    return std::any_of(verdicts.begin(), verdicts.end(), [&](const KIVO_VERDICT& each) {
        return each.severity == KIVO_SEVERITY::kError && each.subject.name == subject.name &&
               each.subject.number == subject.number;
    });
}

void check_repairs(const KIVO_SESSION& session, const KIVO_SUBJECT& subject) {
    for (const KIVO_REPAIR& repair : session.repairs(subject, kLittle)) {
        KIVO_SESSION repaired = session.fork();
        expect(repaired.set_all(repair.set) == KIVO_SET_RESULT::kDone, "a way out can be set",
               repair.text);
        expect(repaired.is_legal(), "a way out leads to a legal configuration", repair.text);
        expect(!is_error(repaired, subject), "a way out mends what it is for", repair.text);
    }
}

void check_legal_value(const KIVO_SESSION& session, const std::string& name,
                       const std::string& value) {
    KIVO_SESSION changed = session.fork();
    expect(changed.set(name, value) == KIVO_SET_RESULT::kDone, "a legal value can be set", value);
    expect(changed.is_legal(), "a legal value leads to a legal configuration", value);
}

void check_legal_values(const KIVO_SESSION& session, const std::string& name) {
    const KIVO_LEGAL_VALUES legal = session.legal_values(name, KIVO_LEGAL_SCOPE::kWhole, kLittle);
    for (const std::string& value : legal.values) {
        check_legal_value(session, name, value);
    }
    for (const KIVO_RUN& run : legal.runs) {
        check_legal_value(session, name, run.first);
        check_legal_value(session, name, run.last);
    }
}

void check_questions(const KIVO_SESSION& session, KIVO_INFO& info) {
    const std::string before = everything(session, info);
    const std::string first = answers(session, info, kLittle, kMostAsked);
    const std::vector<std::string> names = names_of(session);
    for (std::size_t i = 0; i < std::min(names.size(), kMostAsked); ++i) {
        check_legal_values(session, names[i]);
        session.holds(names[i] + " gt 1");
    }
    const std::vector<KIVO_VERDICT> verdicts = session.verdicts();
    for (std::size_t i = 0; i < std::min(verdicts.size(), kMostAsked); ++i) {
        check_repairs(session, verdicts[i].subject);
    }
    expect_same(everything(session, info), before, "questions change nothing");
    expect_same(answers(session, info, kLittle, kMostAsked), first,
                "the same question has the same answer");
}

void check(KIVO_INFO& info, std::uint32_t seed) {
    KIVO_SESSION session(info);
    const std::string at_first = everything(session, info);
    const std::vector<std::string> names = names_of(session);
    std::mt19937 random(seed);
    for (std::size_t i = 0; i < std::min<std::size_t>(names.size() * 2, 40); ++i) {
        const std::string& name = names[random() % names.size()];
        session.set(name, kValues[random() % std::size(kValues)]);
        if (random() % 4 == 0) {
            session.unset(name);
        }
    }
    const std::vector<KIVO_APPLICATION> maps = session.maps();
    if (!maps.empty()) {
        session.select_map(maps[random() % maps.size()].name);
    }
    check_counters(session);
    check_fresh(session, info);
    check_questions(session, info);
    session.take_changes();
    session.select_map("");
    for (const std::string& name : names) {
        session.unset(name);
    }
    expect_same(everything(session, info), at_first, "what is taken back leaves nothing");
    kivo_judge_sense(session, {20000, 100, 1000});
    expect_same(everything(session, info), at_first, "judging the description changes nothing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KIVO_INFO info;
    info.process_xml_file(input_file({reinterpret_cast<const char*>(data), size}));
    std::uint32_t seed = 0;
    for (std::size_t i = 0; i < size; ++i) {
        seed = seed * 31 + data[i];
    }
    check(info, seed);
    info.delete_detached_objects();
    return 0;
}
