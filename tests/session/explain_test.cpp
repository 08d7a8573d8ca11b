#include <gtest/gtest.h>

#include "tests/session/fixture.h"

namespace {

// A session of an example with settings "NAME=VALUE".
struct Configured : Example {
    Configured(const char* example, const std::vector<KIVO_ASSIGNMENT>& settings)
        : Example(example), session(info) {
        EXPECT_EQ(session.set_all(settings), KIVO_SET_RESULT::kDone);
    }

    // The first verdict with this id.
    KIVO_SUBJECT subject(const std::string& id) const {
        for (const KIVO_VERDICT& verdict : session.verdicts()) {
            if (verdict.id == id) {
                return verdict.subject;
            }
        }
        ADD_FAILURE() << "no verdict " << id;
        return {};
    }

    Texts repairs(const std::string& id) const {
        Texts texts;
        for (const KIVO_REPAIR& repair : session.repairs(subject(id))) {
            texts.push_back(repair.text);
        }
        return texts;
    }

    Texts conflict(const std::string& id) const {
        const KIVO_CONFLICT found = session.conflict(subject(id));
        EXPECT_FALSE(found.may_be_smaller);
        Texts texts;
        for (const KIVO_ASSIGNMENT& each : found.settings) {
            texts.push_back(each.name + "=" + each.value);
        }
        return texts;
    }

    // "first..last" for each run, or the values.
    Texts legal(const std::string& name, KIVO_LEGAL_SCOPE scope) const {
        const KIVO_LEGAL_VALUES found = session.legal_values(name, scope);
        EXPECT_TRUE(found.is_setting) << name;
        EXPECT_TRUE(found.undecided.empty()) << name;
        Texts texts = found.values;
        for (const KIVO_RUN& run : found.runs) {
            texts.push_back(run.first + ".." + run.last);
        }
        return texts;
    }

    std::string told(const std::string& id) const {
        const KIVO_SUBJECT asked = subject(id);
        return kivo_why_text(session.why(asked), session.conflict(asked), session.repairs(asked),
                             info);
    }

    KIVO_SESSION session;
};

}  // namespace

TEST(Explain, fifo_of_128_words_in_registers) {
    const Configured fifo("fifo", {{"DEPTH", "128"}, {"STORAGE", "REGISTERS"}});
    EXPECT_EQ(fifo.repairs("out-of-range"), (Texts{"STORAGE=AUTO", "STORAGE=BLOCK", "DEPTH=64"}));
    EXPECT_EQ(fifo.conflict("out-of-range"), (Texts{"DEPTH=128", "STORAGE=REGISTERS"}));
    EXPECT_EQ(fifo.legal("STORAGE", KIVO_LEGAL_SCOPE::kWhole), (Texts{"AUTO", "BLOCK"}));
}

TEST(Explain, fifo_of_wide_words) {
    const Configured fifo("fifo", {{"DATA_WIDTH", "200"}});
    EXPECT_EQ(fifo.repairs("value-rule"), (Texts{"STORAGE=BLOCK", "DEPTH=21", "DATA_WIDTH=128"}));
}

TEST(Explain, fifo_whose_level_lies_above_its_depth) {
    const Configured fifo("fifo", {{"DEPTH", "8"}});
    EXPECT_EQ(fifo.repairs("out-of-range"), (Texts{"ALMOST_FULL_LEVEL=7", "DEPTH=13"}));
    EXPECT_EQ(fifo.legal("DEPTH", KIVO_LEGAL_SCOPE::kWhole), Texts{"13..131072"});
}

TEST(Explain, three_faults_of_one_conflict) {
    const Configured fifo("fifo", {{"ALMOST_FULL_LEVEL", "4"}});
    for (const char* id : {"value-rule", "rule", "message-error"}) {
        EXPECT_EQ(fifo.conflict(id), (Texts{"ALMOST_FULL_LEVEL=4", "ALMOST_EMPTY_LEVEL=4"}));
        EXPECT_EQ(fifo.repairs(id), (Texts{"ALMOST_EMPTY_LEVEL=3", "ALMOST_FULL_LEVEL=5"}));
    }
}

TEST(Explain, ram_on_a_shared_bus) {
    const Configured ram("ram", {{"BUS_STYLE", "SHARED"}, {"ADDRESS_WIDTH", "13"}});
    EXPECT_EQ(ram.repairs("value-rule"),
              (Texts{"DATA_WIDTH=8", "ADDRESS_WIDTH=12", "BUS_STYLE=SEPARATE"}));
    EXPECT_EQ(ram.conflict("value-rule"),
              (Texts{"ADDRESS_WIDTH=13", "BUS_STYLE=SHARED", "DATA_WIDTH=16"}));
}

// The list judges what is asked for, whatever could force something else.
TEST(Explain, a_word_outside_its_list_is_a_conflict_of_one) {
    const Configured fifo("fifo", {{"STORAGE", "BLOK"}});
    EXPECT_EQ(fifo.conflict("not-in-list"), Texts{"STORAGE=BLOK"});
    EXPECT_EQ(fifo.repairs("not-in-list").front(), "STORAGE=AUTO");
}

TEST(Explain, a_conflict_that_may_be_smaller_says_so) {
    const Configured fifo("fifo", {{"DEPTH", "128"}, {"STORAGE", "REGISTERS"}});
    const KIVO_SUBJECT subject = fifo.subject("out-of-range");
    EXPECT_EQ(fifo.session.conflict(subject).text, "DEPTH=128 STORAGE=REGISTERS");
    const KIVO_CONFLICT large = fifo.session.conflict(subject, {1, 1, 1000000});
    EXPECT_TRUE(large.may_be_smaller);
    const std::string told = kivo_why_text(fifo.session.why(subject), large, {}, fifo.info);
    EXPECT_NE(told.find("  conflict of: " + large.text + "\n"), std::string::npos) << told;
    EXPECT_EQ(large.text.substr(large.text.size() - 16), " (perhaps fewer)");
}
