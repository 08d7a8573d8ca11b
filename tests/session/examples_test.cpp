#include <gtest/gtest.h>

#include "tests/session/fixture.h"

namespace {

using Texts = std::vector<std::string>;

struct Row {
    const char* text;
    const char* expected;
};

void expect_values(const char* example, std::initializer_list<Row> rows) {
    Example store(example);
    const KIVO_SESSION session(store.info);
    for (const Row& row : rows) {
        EXPECT_EQ(evaluated(session, row.text), row.expected) << row.text;
    }
}

// A session of an example with settings "NAME=VALUE".
struct Configured : Example {
    Configured(const char* example, const std::vector<KIVO_ASSIGNMENT>& settings)
        : Example(example), session(info) {
        EXPECT_EQ(session.set_all(settings), KIVO_SET_RESULT::kDone);
    }

    int line_of(std::size_t verdict) const {
        return info.get_place(session.verdicts().at(verdict).mark).line;
    }

    KIVO_SESSION session;
};

}  // namespace

TEST(Examples, expressions_over_the_fifo) {
    expect_values("fifo", {
                              {"DEPTH * DATA_WIDTH gt 4096", "false"},
                              {"CLOG2(DEPTH + 1)", "5"},
                              {"CLOG2(536870912)", "29"},
                              {"STORAGE_BITS gt 2048", "false"},
                              {"CROSSES(DEPTH - 4, ALMOST_FULL_LEVEL)", "true"},
                              {"RESET_STYLE == \"NONE\"", "false"},
                              {"1 + 2 * 3 ^ 2", "19"},
                              {"2 ^ 3 ^ 2", "[fault expression-syntax]"},
                              {"-2 ^ 2", "-4"},
                              {"-7 / 2", "-3"},
                              {"-7 % 2", "-1"},
                              {"-7 mod 2", "1"},
                              {"7 quot 2 * 2", "6"},
                              {"7 / 2.0", "3.5"},
                              {"ceil(7 / 2)", "3"},
                              {"1 / 0", "[fault division-by-zero]"},
                              {"DEPTH gt 1 || 1 / 0", "true"},
                              {"DEPTH lt 1 and 1 / 0 == 1", "false"},
                              {"0 lt DEPTH lt 32", "[fault expression-syntax]"},
                              {"!DEPTH == 16", "[fault ill-typed]"},
                              {"DEPTH Gte 16 AND 1", "true"},
                              {"DEPTH>=16", "true"},
                              {"STORAGE == AUTO", "true"},
                              {"DEPTH == \"16\"", "true"},
                              {"STORAGE gt 3", "[fault ill-typed]"},
                              {"used_words", "false"},
                              {"reset", "true"},
                              {"2 ^ 64", "18446744073709551616"},
                              {"2 ^ 127", "[fault too-large]"},
                          });
}

TEST(Examples, expressions_over_the_counter_and_the_ram) {
    expect_values("counter", {
                                 {"load", "false"},
                                 {"count == LAST_COUNT", "[run-time count]"},
                                 {"WRAPS", "false"},
                                 {"offset == 0", "true"},
                                 {"ALL_ONES(WIDTH)", "255"},
                                 {"ALL_ONES()", "[fault macro-arguments]"},
                             });
    expect_values("ram", {
                             {"( 2 ^ ( DATA_WIDTH / 8 ) ) - 1", "3"},
                             {"output_enable == 1", "true"},
                             {"dq == \"UNUSED\"", "true"},
                             {"WIDHT gt 1", "[fault unknown-name]"},
                             {"( DATA_WIDTH gt 1", "[fault expression-syntax]"},
                         });
}

TEST(Examples, fifo_at_its_defaults) {
    const Configured fifo("fifo", {});
    EXPECT_TRUE(fifo.session.is_legal());
    EXPECT_TRUE(fifo.session.is_granted());
    EXPECT_EQ(verdicts_of(fifo.session), Texts());
    EXPECT_EQ(value_of(fifo.session, "LEVEL_WIDTH"), "5");
    EXPECT_EQ(value_of(fifo.session, "UNDERFLOW_CHECKING"), "OFF");
    EXPECT_EQ(fifo.session.find("UNDERFLOW_CHECKING")->source, KIVO_VALUE_SOURCE::kForced);
    EXPECT_EQ(state_of(fifo.session, "used_words"), "UNUSED");
    EXPECT_EQ(fifo.session.find_port("used_words")->width, 5);
    const std::vector<KIVO_APPLICATION> maps = fifo.session.maps();
    ASSERT_EQ(maps.size(), 2u);
    EXPECT_EQ(maps[0].applies, KIVO_TRUTH::kYes);
    EXPECT_EQ(maps[1].applies, KIVO_TRUTH::kNo);
}

TEST(Examples, fifo_of_1024_words_is_built_from_blocks) {
    const Configured fifo("fifo", {{"DEPTH", "1024"}});
    EXPECT_TRUE(fifo.session.is_legal());
    EXPECT_EQ(value_of(fifo.session, "STORAGE"), "BLOCK");
    EXPECT_EQ(fifo.session.find("STORAGE")->asked, "AUTO");
    EXPECT_EQ(value_of(fifo.session, "LEVEL_WIDTH"), "11");
    EXPECT_EQ(fifo.session.maps()[0].applies, KIVO_TRUTH::kNo);
}

TEST(Examples, fifo_faults_have_their_own_places) {
    const Configured registers("fifo", {{"DEPTH", "128"}, {"STORAGE", "REGISTERS"}});
    EXPECT_EQ(verdicts_of(registers.session), Texts{"out-of-range DEPTH"});
    EXPECT_EQ(registers.line_of(0), 17);
    EXPECT_EQ(registers.session.verdicts()[0].text, "DEPTH is 128, and must be from 4 to 64");

    const Configured wide("fifo", {{"DATA_WIDTH", "200"}});
    EXPECT_EQ(verdicts_of(wide.session), Texts{"value-rule STORAGE"});
    EXPECT_EQ(wide.session.verdicts()[0].text,
              "the rule of STORAGE fails: if DATA_WIDTH gt 128 then STORAGE == \"BLOCK\" else "
              "DEPTH lte 131072");
    EXPECT_TRUE(Configured("fifo", {{"DATA_WIDTH", "200"}, {"DEPTH", "32"}}).session.is_legal());

    const Configured level("fifo", {{"ALMOST_FULL_LEVEL", "4"}});
    EXPECT_EQ(verdicts_of(level.session),
              (Texts{"value-rule ALMOST_FULL_LEVEL", "rule ", "message-error "}));
    EXPECT_EQ(level.line_of(1), 107);

    const Configured shallow("fifo", {{"DEPTH", "8"}});
    EXPECT_EQ(verdicts_of(shallow.session), Texts{"out-of-range ALMOST_FULL_LEVEL"});
    EXPECT_EQ(shallow.session.verdicts()[0].text,
              "ALMOST_FULL_LEVEL is 12, and must be from 1 to 7 (DEPTH - 1)");
}

TEST(Examples, ram_on_a_shared_bus_cannot_be_large) {
    const Configured ram("ram", {{"BUS_STYLE", "SHARED"}, {"ADDRESS_WIDTH", "13"}});
    EXPECT_EQ(verdicts_of(ram.session),
              (Texts{"value-rule OUTPUT_REGISTER", "port-needs-value data"}));
    EXPECT_FALSE(ram.session.is_legal());
    EXPECT_TRUE(ram.session.is_granted());
    EXPECT_EQ(value_of(ram.session, "BLOCK_TYPE"), "LARGE");
    EXPECT_EQ(value_of(ram.session, "WORDS"), "8192");
    EXPECT_EQ(state_of(ram.session, "dq"), "USED");
}

TEST(Examples, ram_request_that_a_force_overrides_is_kept) {
    Configured ram("ram", {{"DATA_WIDTH", "18"}, {"BYTE_ENABLES", "ON"}});
    EXPECT_TRUE(ram.session.is_legal());
    EXPECT_FALSE(ram.session.is_granted());
    EXPECT_EQ(verdicts_of(ram.session), Texts{"overridden BYTE_ENABLES"});
    EXPECT_EQ(ram.session.verdicts()[0].text,
              "BYTE_ENABLES was set to ON, but a rule makes it \"OFF\"");
    ram.session.set("DATA_WIDTH", "16");
    EXPECT_EQ(value_of(ram.session, "BYTE_ENABLES"), "ON");
    EXPECT_TRUE(ram.session.is_granted());
}

TEST(Examples, counter_with_a_modulus) {
    const Configured overridden("counter", {{"MODULUS", "10"}, {"STEP", "3"}});
    EXPECT_TRUE(overridden.session.is_legal());
    EXPECT_FALSE(overridden.session.is_granted());
    EXPECT_EQ(value_of(overridden.session, "STEP"), "1");
    EXPECT_EQ(value_of(overridden.session, "LAST_COUNT"), "9");
    EXPECT_EQ(overridden.session.maps()[1].applies, KIVO_TRUTH::kYes);

    const Configured one("counter", {{"MODULUS", "1"}});
    EXPECT_EQ(verdicts_of(one.session),
              (Texts{"port-needs-value load", "port-needs-value data", "rule ", "advice "}));

    EXPECT_TRUE(Configured("counter", {{"WIDTH", "64"}, {"MODULUS", "18446744073709551616"}})
                    .session.is_legal());
    const Configured large("counter", {{"WIDTH", "64"}, {"MODULUS", "18446744073709551617"}});
    ASSERT_EQ(verdicts_of(large.session)[0], "out-of-range MODULUS");
    EXPECT_EQ(large.session.verdicts()[0].text,
              "MODULUS is 18446744073709551617, and must be from 0 to 18446744073709551616 (2 ^ "
              "WIDTH)");
}

TEST(Examples, counter_that_is_loaded) {
    const Configured counter("counter", {{"DIRECTION", "PORT"}, {"load", "USED"}, {"WIDTH", "4"}});
    EXPECT_TRUE(counter.session.is_legal());
    EXPECT_EQ(verdicts_of(counter.session), Texts());
    EXPECT_EQ(state_of(counter.session, "up_down"), "USED");
    EXPECT_EQ(counter.session.find_port("data")->width, 4);
    EXPECT_EQ(counter.session.vectors()[2].applies, KIVO_TRUTH::kYes);
}

TEST(Examples, wizard_map_presets_below_the_user) {
    Configured counter("counter", {});
    EXPECT_TRUE(counter.session.select_map("clock_divider"));
    EXPECT_EQ(value_of(counter.session, "MODULUS"), "10");
    EXPECT_EQ(counter.session.find("MODULUS")->source, KIVO_VALUE_SOURCE::kPreset);
    EXPECT_EQ(state_of(counter.session, "count"), "UNUSED");
    counter.session.set("MODULUS", "6");
    EXPECT_EQ(value_of(counter.session, "MODULUS"), "6");
    EXPECT_FALSE(counter.session.select_map("no_such_map"));
    EXPECT_EQ(counter.session.map(), "clock_divider");
    counter.session.select_map("");
    counter.session.unset("MODULUS");
    EXPECT_EQ(value_of(counter.session, "MODULUS"), "0");
}

TEST(Examples, texts_follow_their_conditions) {
    Configured fifo("fifo", {{"READ_MODE", "SHOW_AHEAD"}, {"STORAGE", "BLOCK"}});
    const std::string intro = fifo.session.text(fifo.info.html_text->intro);
    EXPECT_NE(intro.find("needs two clocks"), std::string::npos);
    EXPECT_EQ(intro.find("needs one clock"), std::string::npos);
    EXPECT_NE(fifo.session.text(fifo.info.html_text->end).find("All flags"), std::string::npos);
    EXPECT_EQ(fifo.session.text(nullptr), "");
    const auto stimulus = fifo.session.stimulus(*fifo.info.get_vector_obj("fill_and_drain"));
    ASSERT_EQ(stimulus.size(), 5u);
    EXPECT_EQ(stimulus[4], "force read 0 0,1 180,0 260");
}
