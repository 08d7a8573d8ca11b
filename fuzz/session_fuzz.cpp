// Sets everything of a description that can be set, in a way that follows from its bytes, and holds
// what a session says after changes against what a new one says.

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
