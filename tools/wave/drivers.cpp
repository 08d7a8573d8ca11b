#include "tools/wave/drivers.h"

#include <algorithm>
#include <limits>

#include "tools/text/text_escape.h"

namespace {

bool contains(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::int64_t last_stimulus_time(const std::vector<Driver>& drivers, std::int32_t start) {
    std::int64_t last = start;
    for (const Driver& driver : drivers) {
        last = std::max(last, kivo_get_timeline(driver.command, start, start, 0).last_item_time);
    }
    return last;
}

// Evaluates all commands, up to "limit" transitions together or of each. Returns the last time up
// to which all of them are known.
std::int64_t evaluate(std::vector<Driver>& drivers, std::int32_t start, std::int32_t end,
                      std::size_t limit, bool is_limit_of_each) {
    std::int64_t reached = std::int64_t{end} + 1;
    std::size_t used = 0;
    for (Driver& driver : drivers) {
        driver.timeline =
            kivo_get_timeline(driver.command, start, end, is_limit_of_each ? limit : limit - used);
        used = std::min(limit, used + driver.timeline.runs.size());
        reached = std::min(reached, driver.timeline.end);
    }
    return reached - 1;
}

}  // namespace

std::vector<Driver> find_drivers(KIVO_VECTOR_OBJ& vector, const WaveCase& drawn) {
    std::vector<Driver> drivers;
    if (drawn.session != nullptr) {
        for (const std::string& command : drawn.session->stimulus(vector)) {
            drivers.push_back({command, {}});
        }
        return drivers;
    }
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        const bool is_else =
            !entry->text3.empty() && contains(drawn.otherwise, join_lines(entry->text3));
        const std::string& command = is_else ? entry->text2 : entry->text1;
        if (!is_else || !command.empty()) {
            drivers.push_back({command, {}});
        }
    }
    return drivers;
}

std::set<std::string> vectors_left_out(const KIVO_SESSION* session) {
    std::set<std::string> names;
    if (session != nullptr) {
        for (const KIVO_APPLICATION& each : session->vectors()) {
            if (each.applies == KIVO_TRUTH::kNo) {
                names.insert(each.name);
            }
        }
    }
    return names;
}

std::vector<std::string> wave_conditions(KIVO_VECTOR_OBJ& vector) {
    std::vector<std::string> conditions;
    std::set<std::string> known;
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        const std::string condition = join_lines(entry->text3);
        if (!condition.empty() && known.insert(condition).second) {
            conditions.push_back(condition);
        }
    }
    return conditions;
}

std::int32_t end_of_vector(const std::vector<Driver>& drivers, const KIVO_VECTOR_OBJ& vector,
                           std::int32_t start) {
    if (vector.max_time >= 0) {
        return vector.max_time;
    }
    const std::int64_t end =
        last_stimulus_time(drivers, start) + std::max<std::int64_t>(1, vector.time_step);
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(end, std::numeric_limits<std::int32_t>::max()));
}

std::int64_t evaluate_drivers(std::vector<Driver>& drivers, std::int32_t start, std::int32_t end,
                              std::size_t limit) {
    const std::int64_t reached = evaluate(drivers, start, end, limit, false);
    // Too many for all, so that each gets a fair share.
    return reached < end ? evaluate(drivers, start, end, limit / drivers.size(), true) : reached;
}
