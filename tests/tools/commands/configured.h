#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/tools/program.h"

// What "kivo configure" tells, for tests.

using Json = nlohmann::json;
using Words = std::vector<std::string>;

inline RunResult configure(const std::string& path, Words words) {
    words.insert(words.begin(), {"configure", path});
    return run_kivo(words);
}

// A configuration of an example as JSON, with the expected exit status.
inline Json configured(const std::string& name, const Words& words, int status) {
    Words all = words;
    all.insert(all.end(), {"--format", "json"});
    const RunResult run = configure(example(name + "_info.xml"), all);
    EXPECT_EQ(run.status, status) << testing::PrintToString(words) << run.err;
    return Json::parse(run.out);
}

inline const Json& named(const Json& list, const std::string& name) {
    for (const Json& each : list) {
        if (each["name"] == name) {
            return each;
        }
    }
    throw std::runtime_error("nothing is called " + name);
}

// "id subject line" of each verdict.
inline Words verdicts_of(const Json& document) {
    Words verdicts;
    for (const Json& each : document["verdicts"]) {
        verdicts.push_back(each["id"].get<std::string>() + " " +
                           each["subject"].get<std::string>() + " " + each["place"]["line"].dump());
    }
    return verdicts;
}

inline Words repairs_of(const Json& verdict) {
    Words texts;
    for (const Json& repair : verdict["repairs"]) {
        texts.push_back(repair["text"]);
    }
    return texts;
}
