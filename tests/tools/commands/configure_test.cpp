#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/tools/commands/configured.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

Words texts_of(const Json& document) {
    Words texts;
    for (const Json& each : document["messages"]) {
        texts.push_back(each["text"]);
    }
    return texts;
}

// A refusal is one line that names what is wrong, and nothing is shown.
void expect_refused(const Words& words, int status, const std::string& expected) {
    const RunResult run = configure(example("fifo_info.xml"), words);
    EXPECT_EQ(run.status, status) << testing::PrintToString(words);
    EXPECT_EQ(run.out, "") << testing::PrintToString(words);
    EXPECT_EQ(run.err, "kivo: error: " + expected + "\n");
}

// The fifo with what a file says.
RunResult configure_from(const std::string& content, Words words = {}) {
    const TemporaryFolder folder;
    words.insert(words.end(), {"--from", folder.write("saved.json", content), "--format", "json"});
    RunResult run = configure(example("fifo_info.xml"), words);
    const std::size_t at = run.err.find(folder.path(""));
    return at == std::string::npos
               ? run
               : RunResult{run.status, run.out, run.err.erase(at, folder.path("").size())};
}

}  // namespace

TEST(Configure, the_fifo_at_its_defaults_is_legal) {
    const Json fifo = configured("fifo", {}, 0);
    EXPECT_EQ(fifo["format"], "kivo.configuration/1");
    EXPECT_TRUE(fifo["legal"]);
    EXPECT_TRUE(fifo["granted"]);
    EXPECT_EQ(fifo["settings"], Json::object());
    EXPECT_EQ(fifo["map"], Json());
    EXPECT_EQ(fifo["verdicts"], Json::array());
    EXPECT_EQ(named(fifo["parameters"], "UNDERFLOW_CHECKING"), (Json{{"name", "UNDERFLOW_CHECKING"},
                                                                     {"type", "STRING"},
                                                                     {"asked", "ON"},
                                                                     {"value", "OFF"},
                                                                     {"source", "forced"},
                                                                     {"settable", true}}));
    EXPECT_EQ(named(fifo["hidden"], "LEVEL_WIDTH"),
              (Json{{"name", "LEVEL_WIDTH"}, {"value", "5"}}));
    EXPECT_EQ(named(fifo["ports"], "used_words"), (Json{{"name", "used_words"},
                                                        {"asked", "UNUSED"},
                                                        {"state", "UNUSED"},
                                                        {"source", "default"},
                                                        {"width", 5},
                                                        {"tied", nullptr}}));
    for (const Json& vector : fifo["vectors"]) {
        EXPECT_EQ(vector["applies"], true) << vector;
    }
    EXPECT_EQ(named(fifo["maps"], "simple_fifo")["applies"], true);
    EXPECT_EQ(named(fifo["maps"], "stream_buffer")["applies"], false);
}

TEST(Configure, a_force_follows_a_setting) {
    const Json fifo = configured("fifo", {"DEPTH=1024"}, 0);
    EXPECT_EQ(fifo["settings"], (Json{{"DEPTH", "1024"}}));
    EXPECT_EQ(named(fifo["parameters"], "DEPTH")["source"], "given");
    EXPECT_EQ(named(fifo["parameters"], "STORAGE")["asked"], "AUTO");
    EXPECT_EQ(named(fifo["parameters"], "STORAGE")["value"], "BLOCK");
    EXPECT_EQ(named(fifo["parameters"], "STORAGE")["source"], "forced");
    EXPECT_EQ(named(fifo["hidden"], "LEVEL_WIDTH")["value"], "11");
    EXPECT_EQ(named(fifo["maps"], "simple_fifo")["applies"], false);
}

TEST(Configure, every_verdict_has_its_own_place) {
    EXPECT_EQ(verdicts_of(configured("fifo", {"DEPTH=128", "STORAGE=REGISTERS"}, 1)),
              Words{"out-of-range DEPTH 17"});
    EXPECT_EQ(verdicts_of(configured("fifo", {"DATA_WIDTH=200"}, 1)),
              Words{"value-rule STORAGE 40"});
    EXPECT_EQ(verdicts_of(configured("fifo", {"DATA_WIDTH=200", "DEPTH=32"}, 0)), Words());
    EXPECT_EQ(verdicts_of(configured("fifo", {"ALMOST_FULL_LEVEL=4"}, 1)),
              (Words{"value-rule ALMOST_FULL_LEVEL 33", "rule  107", "message-error  122"}));
}

TEST(Configure, a_verdict_names_what_is_in_conflict_and_every_way_out) {
    const Json fifo = configured("fifo", {"DEPTH=128", "STORAGE=REGISTERS"}, 1);
    const Json& range = fifo["verdicts"][0];
    EXPECT_EQ(range["conflict"], (Json{"DEPTH", "STORAGE"}));
    EXPECT_EQ(repairs_of(range), (Words{"STORAGE=AUTO", "STORAGE=BLOCK", "DEPTH=64"}));
    EXPECT_EQ(range["repairs"][2]["set"], (Json{{"DEPTH", "64"}}));
}

TEST(Configure, the_text_tells_the_best_way_out_and_all_of_them_when_asked) {
    const Words settings = {"DEPTH=128", "STORAGE=REGISTERS"};
    const RunResult best = configure(example("fifo_info.xml"), settings);
    EXPECT_TRUE(contains(best.out,
                         "\n  conflict of: DEPTH=128 STORAGE=REGISTERS\n"
                         "  would be legal with: STORAGE=AUTO\n"))
        << best.out;
    EXPECT_FALSE(contains(best.out, "\nWhy\n")) << best.out;
    Words words = settings;
    words.push_back("--repairs");
    const RunResult all = configure(example("fifo_info.xml"), words);
    EXPECT_TRUE(contains(all.out, "with: STORAGE=AUTO, or STORAGE=BLOCK, or DEPTH=64\n"))
        << all.out;
}

TEST(Configure, why_says_what_decides_and_where_it_comes_from) {
    const RunResult run = configure(example("ram_info.xml"),
                                    {"BUS_STYLE=SHARED", "ADDRESS_WIDTH=13", "--why", "all"});
    EXPECT_EQ(run.status, 1);
    const std::size_t why = run.out.find("\nWhy\n");
    ASSERT_NE(why, std::string::npos) << run.out;
    for (const char* const part :
         {"OUTPUT_REGISTER: its rule fails", "BLOCK_TYPE = LARGE", "forced, CAPACITY gt 65536",
          "ADDRESS_WIDTH = 13  given", "BUS_STYLE = SHARED"}) {
        EXPECT_NE(run.out.find(part, why), std::string::npos) << part << run.out;
    }
    const RunResult value = configure(example("fifo_info.xml"), {"DEPTH=1024", "--why", "STORAGE"});
    EXPECT_EQ(value.status, 0);
    EXPECT_TRUE(contains(value.out, "forced, DEPTH * DATA_WIDTH gt 4096")) << value.out;
}

TEST(Configure, a_limit_is_told_with_the_text_that_it_comes_from) {
    const Json fifo = configured("fifo", {"DEPTH=8"}, 1);
    EXPECT_EQ(verdicts_of(fifo), Words{"out-of-range ALMOST_FULL_LEVEL 32"});
    EXPECT_EQ(fifo["verdicts"][0]["text"],
              "ALMOST_FULL_LEVEL is 12, and must be from 1 to 7 (DEPTH - 1)");
    EXPECT_EQ(fifo["verdicts"][0]["severity"], "error");
    EXPECT_EQ(fifo["verdicts"][0]["result"], "fails");
}

TEST(Configure, a_request_that_is_overridden_is_legal_but_not_granted) {
    const Json ram = configured("ram", {"DATA_WIDTH=18", "BYTE_ENABLES=ON"}, 1);
    EXPECT_TRUE(ram["legal"]);
    EXPECT_FALSE(ram["granted"]);
    EXPECT_EQ(verdicts_of(ram), Words{"overridden BYTE_ENABLES 20"});
    EXPECT_EQ(named(ram["parameters"], "BYTE_ENABLES")["asked"], "ON");
    EXPECT_EQ(named(ram["parameters"], "BYTE_ENABLES")["value"], "OFF");

    const Json counter = configured("counter", {"MODULUS=10", "STEP=3"}, 1);
    EXPECT_FALSE(counter["granted"]);
    EXPECT_EQ(named(counter["parameters"], "STEP")["value"], "1");
    EXPECT_EQ(named(counter["hidden"], "LAST_COUNT")["value"], "9");
    EXPECT_EQ(named(counter["maps"], "clock_divider")["applies"], true);
    for (const std::string& text : texts_of(counter)) {
        EXPECT_NE(text, "Counting down needs a step of one.");
    }
}

TEST(Configure, advice_is_told_beside_the_errors) {
    const Json counter = configured("counter", {"MODULUS=1"}, 1);
    EXPECT_FALSE(counter["legal"]);
    const Words verdicts = verdicts_of(counter);
    EXPECT_EQ(Words(verdicts.end() - 2, verdicts.end()), (Words{"rule  85", "advice  86"}));
}

TEST(Configure, ports_are_set_like_parameters) {
    const Json counter = configured("counter", {"DIRECTION=PORT", "load=USED", "WIDTH=4"}, 0);
    EXPECT_EQ(named(counter["ports"], "up_down")["state"], "USED");
    EXPECT_EQ(named(counter["ports"], "up_down")["source"], "state");
    EXPECT_EQ(named(counter["ports"], "load")["source"], "given");
    EXPECT_EQ(named(counter["ports"], "data")["width"], 4);
    EXPECT_EQ(verdicts_of(counter), Words());
    EXPECT_EQ(named(counter["vectors"], "load_and_turn")["applies"], true);

    const Json tied = configured("counter", {"offset=CONSTANT:+07"}, 0);
    EXPECT_EQ(named(tied["ports"], "offset")["asked"], "CONSTANT:7");
    EXPECT_EQ(named(tied["ports"], "offset")["tied"], "7");
    EXPECT_EQ(tied["settings"], (Json{{"offset", "CONSTANT:+07"}}));
}

TEST(Configure, numbers_keep_all_their_digits) {
    configured("counter", {"WIDTH=64", "MODULUS=18446744073709551616"}, 0);
    const Json beyond = configured("counter", {"WIDTH=64", "MODULUS=18446744073709551617"}, 1);
    EXPECT_EQ(beyond["verdicts"][0]["text"],
              "MODULUS is 18446744073709551617, and must be from 0 to 18446744073709551616 (2 ^ "
              "WIDTH)");
}

// The counter with a range of its data that is empty without a modulus.
std::string counter_with_empty_range(const TemporaryFolder& folder) {
    std::ifstream file(example("counter_info.xml"));
    std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string condition = " IF=\"MODULUS gt 0\"/>\n    </PORT>";
    text.erase(text.find(condition), condition.find('/'));
    return folder.write("counter_info.xml", text);
}

TEST(Configure, an_empty_range_is_told_as_a_warning) {
    const TemporaryFolder folder;
    const RunResult run = configure(counter_with_empty_range(folder),
                                    {"DIRECTION=PORT", "load=USED", "WIDTH=4", "--format", "json"});
    EXPECT_EQ(run.status, 0);
    const Json counter = Json::parse(run.out);
    EXPECT_EQ(verdicts_of(counter), Words{"port-range data 63"});
    EXPECT_EQ(counter["verdicts"][0]["severity"], "warning");
}

TEST(Configure, the_text_shows_what_the_json_holds) {
    const TemporaryFolder folder;
    const RunResult run =
        configure(counter_with_empty_range(folder), {"DIRECTION=PORT", "load=USED", "WIDTH=4"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    for (const char* const part : {
             "counter: legal\n  Asked for  WIDTH=4 DIRECTION=PORT load=USED\n",
             "\nSettings\n  Name         Value  Source   Legal values\n"
             "  WIDTH        4      given    1 to 64\n"
             "  DIRECTION    PORT   given    UP, DOWN, PORT\n",
             "\nHidden parameters\n  Name        Value  Source  Asked for\n"
             "  LAST_COUNT  15     forced  255\n",
             "\nPorts\n  Name        State     Width  Tied to  Source   Asked for\n",
             "\n  up_down     USED      1               state    UNUSED\n",
             "\n  offset      CONSTANT  4      0        default\n",
             "\nMessages\n  Severity  Message\n  info      The counter starts at zero",
             "\nWaves\n  Name           Applies\n  count_up       yes\n",
             "\nWizard maps\n  Name           Applies\n  up_counter     yes\n"
             "  clock_divider  no\n",
             "warning: the range of data is empty: from 0 to -1 (MODULUS - 1) [port-range]\n",
             "    63 |       <FORCE_RANGE MIN=\"0\" MAX=\"MODULUS - 1\"/>\n       |       ^\n",
         }) {
        EXPECT_TRUE(contains(run.out, part)) << part << "in:\n" << run.out;
    }
}

TEST(Configure, the_first_line_says_how_things_stand) {
    const auto first = [](const Words& words) {
        return lines_of(configure(example("fifo_info.xml"), words).out)[0];
    };
    EXPECT_EQ(first({}), "fifo: legal");
    EXPECT_EQ(first({"DEPTH=8"}), "fifo: not legal: 1 error");
    EXPECT_EQ(first({"ALMOST_FULL_LEVEL=4"}), "fifo: not legal: 3 errors");
    EXPECT_EQ(first({"DEPTH=1024", "STORAGE=REGISTERS"}),
              "fifo: legal, but not what was asked for");
}

TEST(Configure, a_wrong_name_or_value_is_answered_with_the_near_one) {
    expect_refused({"DEPHT=4"}, 2, "no parameter or port is called 'DEPHT'; did you mean 'DEPTH'?");
    expect_refused({"xyzzy=4"}, 2, "no parameter or port is called 'xyzzy'");
    expect_refused({"=4"}, 2, "no parameter or port is called ''");
    expect_refused({"CLOG3=4"}, 2, "no parameter or port is called 'CLOG3'");
    expect_refused({"DEPTH=4x"}, 2, "'DEPTH' takes a whole number of at most 128 bits, not '4x'");
    expect_refused(
        {"DEPTH=" + std::string(39, '9')}, 2,
        "'DEPTH' takes a whole number of at most 128 bits, not '" + std::string(39, '9') + "'");
    expect_refused({"reset=USD"}, 2,
                   "'reset' takes USED, UNUSED, VARIABLE, CONSTANT or CONSTANT:NUMBER, not 'USD'; "
                   "did you mean 'USED'?");
    expect_refused({"reset=CONSTANT:x"}, 2,
                   "'reset' takes CONSTANT: with a whole number of at most 128 bits, not "
                   "'CONSTANT:x'");
    expect_refused({"--wizard", "simple_fif"}, 2,
                   "no wizard map 'simple_fif'; did you mean 'simple_fifo'?");
    expect_refused({"--wizard", "x"}, 2,
                   "no wizard map 'x'; the wizard maps are: 'simple_fifo', 'stream_buffer'");
}

TEST(Configure, what_is_no_setting_is_refused) {
    expect_refused({"clock=UNUSED"}, 2, "'clock' is a port that is always used");
    expect_refused({"read_pointer=USED"}, 2, "'read_pointer' is a buried port and cannot be set");
    expect_refused({"full=CONSTANT"}, 2, "'full' is an output, which cannot be CONSTANT");
    expect_refused({"REPORT_LEVEL=1"}, 2,
                   "'REPORT_LEVEL' is a hidden parameter, which only --allow-hidden sets");
    const Json shown = configured("fifo", {"REPORT_LEVEL=1", "--allow-hidden"}, 0);
    EXPECT_EQ(named(shown["ports"], "used_words")["state"], "USED");
}

TEST(Configure, a_value_beside_its_list_is_told_with_the_near_item) {
    const RunResult run = configure(example("fifo_info.xml"), {"STORAGE=BLOK"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.out, "[not-in-list]\n")) << run.out;
    EXPECT_TRUE(contains(run.out, "note: did you mean \"BLOCK\"?\n")) << run.out;
}

TEST(Configure, of_two_settings_of_one_name_the_later_counts) {
    EXPECT_EQ(configured("fifo", {"DEPTH=8", "DEPTH=32"}, 0)["settings"], (Json{{"DEPTH", "32"}}));
    EXPECT_EQ(configured("ram", {"INIT_FILE=a=b"}, 0)["settings"], (Json{{"INIT_FILE", "a=b"}}));
}

TEST(Configure, a_map_gives_presets_below_the_user) {
    const Json map = configured("counter", {"--wizard", "clock_divider"}, 0);
    EXPECT_EQ(map["map"], "clock_divider");
    EXPECT_EQ(map["settings"], Json::object());
    EXPECT_EQ(named(map["parameters"], "MODULUS")["source"], "preset");
    EXPECT_EQ(named(map["ports"], "count")["state"], "UNUSED");
    const Json given = configured("counter", {"--wizard", "clock_divider", "MODULUS=6"}, 0);
    EXPECT_EQ(named(given["parameters"], "MODULUS")["value"], "6");
}

TEST(Configure, a_map_that_does_not_apply_is_warned_of) {
    const RunResult run = configure(example("ram_info.xml"), {"--wizard", "coefficient_store"});
    EXPECT_EQ(run.err,
              "kivo: warning: the condition of wizard map 'coefficient_store' does not hold\n");
    EXPECT_EQ(configure(example("ram_info.xml"), {"--wizard", "scratch_memory"}).err, "");
}

TEST(Configure, what_was_asked_for_is_read_back) {
    const Words words = {"DATA_WIDTH=9", "used_words=USED", "--wizard", "simple_fifo"};
    const Json first = configured("fifo", words, 0);
    const RunResult again = configure_from(first.dump());
    EXPECT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(Json::parse(again.out), first);

    const Json other = Json::parse(configure_from(first.dump(), {"DATA_WIDTH=5"}).out);
    EXPECT_EQ(other["settings"], (Json{{"DATA_WIDTH", "5"}, {"used_words", "USED"}}));
    EXPECT_EQ(other["map"], "simple_fifo");
}

TEST(Configure, only_settings_and_map_are_read_back) {
    const RunResult run = configure_from(
        R"({"legal": 7, "parameters": [{"name": "DEPTH", "asked": "8"}], "map": null})");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Json::parse(run.out)["settings"], Json::object());
}

TEST(Configure, a_file_that_cannot_be_read_back_is_answered_in_one_line) {
    struct Row {
        const char* content;
        int status;
        const char* expected;
    };
    for (const Row& row : {
             Row{"{\n \"settings\": {\n", 3, "it is not JSON, as line 3 shows"},
             Row{"", 3, "it is not JSON, as line 1 shows"},
             Row{"{} {}", 3, "it is not JSON, as line 1 shows"},
             Row{"[]", 3, "it is no JSON object"},
             Row{R"({"settings": []})", 3, "its \"settings\" are no object"},
             Row{R"({"settings": {"DEPTH": 8}})", 3, "its setting 'DEPTH' is no text"},
             Row{R"({"settings": {"DEPTH": null}})", 3, "its setting 'DEPTH' is no text"},
             Row{R"({"map": 3})", 3, "its \"map\" is neither a text nor null"},
         }) {
        const RunResult run = configure_from(row.content);
        EXPECT_EQ(run.status, row.status) << row.content;
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err,
                  std::string("kivo: error: cannot read 'saved.json': ") + row.expected + "\n");
    }
    EXPECT_EQ(configure_from(R"({"settings": {"DEPHT": "8"}})").err,
              "kivo: error: no parameter or port is called 'DEPHT'; did you mean 'DEPTH'?\n");
    EXPECT_EQ(configure_from(R"({"map": "nope"})").status, 2);
    EXPECT_EQ(configure_from(std::string(200000, '[')).status, 3);
    EXPECT_EQ(configure_from("{\"a\": " + std::string(200000, '[') + std::string(200000, ']') + "}")
                  .status,
              0);
    expect_refused({"--from", "/no/such"}, 3, "cannot read '/no/such': No such file or directory");
    expect_refused({"--from", "/"}, 3, "cannot read '/': Is a directory");
}

TEST(Configure, the_output_goes_to_a_file) {
    const TemporaryFolder folder;
    const std::string path = folder.path("out.json");
    const RunResult run =
        configure(example("fifo_info.xml"), {"--format", "json", "--output", path});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(configure(example("fifo_info.xml"), {"--from", path}).status, 0);

    const RunResult over = configure(example("fifo_info.xml"), {"-o", path, "--from", path});
    EXPECT_EQ(over.status, 2);
    EXPECT_EQ(over.err, "kivo: error: '" + path + "' is read; name another output\n");
    EXPECT_EQ(configure(example("fifo_info.xml"), {"-o", example("fifo_info.xml")}).status, 2);
    EXPECT_EQ(configure(example("fifo_info.xml"), {"-o", folder.path("no/such")}).status, 3);
}

TEST(Configure, a_description_with_messages_is_shown_all_the_same) {
    const RunResult run = configure(example("faulty_info.xml"), {"--format", "json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_FALSE(messages_in(run.err, example("faulty_info.xml")).empty());
    EXPECT_EQ(Json::parse(run.out)["format"], "kivo.configuration/1");
    EXPECT_EQ(configure("/no/such", {}).status, 3);
}

TEST(Configure, a_fault_is_shown_at_the_very_character) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "some_info.xml",
        "<ROOT>\n<PARAMETERS><PARAMETER NAME='DEPTH' TYPE='INTEGER' VALUE='8'>\n"
        "  <FORCE_RANGE MIN='1' MAX='DEPTH &lt; 3 &amp;&amp; DEPHT'/></PARAMETER></PARAMETERS>\n"
        "<RULES><RULE>\n   DEPTH gt HEIGHT</RULE><RULE>X gt X</RULE></RULES>\n"
        "</ROOT>\n");
    const RunResult run = configure(path, {});
    EXPECT_EQ(run.status, 1);
    for (const char* const part : {
             ":3:53: error: FORCE_RANGE, MAX: \"DEPTH < 3 && DEPHT\": no parameter, port or macro "
             "is called DEPHT; did you mean DEPTH? [unknown-name] [fault]\n",
             ":5:13: error: RULE: \" DEPTH gt HEIGHT\": ",
             ":5:32: error: RULE: \"X gt X\": ",
             ":5:37: error: RULE: \"X gt X\": ",
         }) {
        EXPECT_TRUE(contains(run.out, path + part)) << part << "in:\n" << run.out;
    }
}

TEST(Configure, why_of_what_nothing_is_called_is_refused) {
    expect_refused({"--why", "DEPHT"}, 2,
                   "--why: no parameter, port or macro is called 'DEPHT'; did you mean 'DEPTH'?");
    expect_refused({"--why", "DEPTH", "--why", "xyzzy"}, 2,
                   "--why: no parameter, port or macro is called 'xyzzy'");
    EXPECT_EQ(configure(example("fifo_info.xml"), {"--why", "STORAGE_BITS"}).status, 0);
    EXPECT_EQ(configure(example("fifo_info.xml"), {"--why", "reset", "--why", "all"}).status, 0);
}

TEST(Configure, where_there_is_no_way_out_that_is_said) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "some_info.xml",
        with_sections(
            "<PARAMETERS><PARAMETER NAME='A' TYPE='INTEGER' VALUE='1'>"
            "<FORCE_RANGE MIN='0' MAX='9'/></PARAMETER></PARAMETERS>"
            "<RULES><RULE>A gt 9</RULE><RULE REQUIRED_RULE='OFF'>A gt 99</RULE></RULES>"));
    const RunResult run = configure(path, {});
    EXPECT_EQ(run.status, 1);
    const std::string none = "\n  no change of at most two settings makes it legal\n";
    const std::size_t at = run.out.find(none);
    EXPECT_NE(at, std::string::npos) << run.out;
    // Not of advice, which keeps nothing from being legal.
    EXPECT_EQ(run.out.find(none, at + 1), std::string::npos) << run.out;
    EXPECT_EQ(Json::parse(configure(path, {"--format", "json"}).out)["verdicts"][0]["repairs"],
              Json::array());
}

TEST(Configure, a_way_out_of_very_many_is_told_as_far_as_was_tried) {
    const TemporaryFolder folder;
    std::string parameters;
    std::string sum;
    for (int i = 0; i < 12; ++i) {
        const std::string name = "P" + std::to_string(i);
        parameters += "<PARAMETER NAME='" + name + "' TYPE='INTEGER' VALUE='1'/>";
        sum += name + " * " + name + " * " + std::to_string(i + 3) + " + ";
    }
    const std::string path =
        folder.write("some_info.xml",
                     with_sections("<PARAMETERS>" + parameters + "</PARAMETERS><RULES><RULE>( " +
                                   sum + "0 ) % 1000003 == 999999</RULE></RULES>"));
    const RunResult run = configure(path, {"--repairs"});
    EXPECT_EQ(run.status, 1);
    const bool is_told =
        contains(run.out, "\n  no change that was tried makes it legal; there are more\n") ||
        contains(run.out, " (not all changes were tried)\n");
    EXPECT_TRUE(is_told) << run.out;
}

TEST(Configure, legal_values_stand_beside_each_parameter) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "some_info.xml",
        with_sections(
            "<PARAMETERS><PARAMETER NAME='EVEN' TYPE='INTEGER' VALUE='4'>"
            "<FORCE_RANGE MIN='1' MAX='64'/><VALUE_RULE>EVEN % 2 == 0</VALUE_RULE></PARAMETER>"
            "<PARAMETER NAME='SPLIT' TYPE='INTEGER' VALUE='4'><FORCE_RANGE MIN='0' MAX='64'/>"
            "<VALUE_RULE>SPLIT == 0 || SPLIT gt 2 and SPLIT != 9</VALUE_RULE></PARAMETER>"
            "<PARAMETER NAME='FILE' TYPE='STRING'/>"
            "<PARAMETER NAME='STYLE' TYPE='STRING' VALUE='A;B;C' DEFAULT_VALUE_INDEX='0'/>"
            "</PARAMETERS>"
            "<RULES><RULE>STYLE != \"B\"</RULE><RULE>FILE != \"none\"</RULE></RULES>"));
    const RunResult run = configure(path, {});
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_TRUE(contains(run.out,
                         "\n  Name   Value  Source   Legal values\n"
                         "  EVEN   4      default  2, 4, 6, 8, ..., 64\n"
                         "  SPLIT  4      default  0, 3 to 8, 10 to 64\n"
                         "  FILE          default  \"\", any other text\n"
                         "  STYLE  A      default  A, C\n"))
        << run.out;
}

TEST(Configure, values_that_take_too_long_to_find_are_called_not_decided) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "some_info.xml",
        with_sections("<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'>"
                      "<VALUE_RULE>W * W % 5 != 2</VALUE_RULE><VALUE_RULE>W % 3 != 2</VALUE_RULE>"
                      "</PARAMETER></PARAMETERS>"));
    const RunResult run = configure(path, {});
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_TRUE(contains(run.out, "not decided")) << run.out;
}

TEST(Configure, of_very_many_errors_the_first_are_explained) {
    const TemporaryFolder folder;
    std::string rules;
    for (int i = 0; i < 130; ++i) {
        rules += "<RULE>A != 1</RULE>\n";
    }
    const std::string path = folder.write(
        "some_info.xml", with_sections("<PARAMETERS><PARAMETER NAME='A' TYPE='INTEGER' VALUE='1'>"
                                       "<FORCE_RANGE MIN='0' MAX='9'/></PARAMETER></PARAMETERS>"
                                       "<RULES>" +
                                       rules + "</RULES>"));
    const Json verdicts = Json::parse(configure(path, {"--format", "json"}).out)["verdicts"];
    ASSERT_EQ(verdicts.size(), 130U);
    EXPECT_EQ(repairs_of(verdicts[99]), (Words{"A=0", "A=2"}));
    EXPECT_EQ(verdicts[99]["conflict"], Json{"A"});
    EXPECT_EQ(verdicts[100]["repairs"], Json::array());
    EXPECT_EQ(verdicts[100]["conflict"], Json::array());
    const RunResult run = configure(path, {});
    EXPECT_EQ(lines_of(run.out)[0], "some: not legal: 130 errors");
    EXPECT_FALSE(contains(run.out, "no change")) << run.out;
}
