#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

RunResult show_sections(const std::string& sections) {
    const TemporaryFolder folder;
    return run_kivo({"show", folder.write("some_info.xml", with_sections(sections))});
}

void expect_shown(const std::string& sections, const std::string& expected) {
    const RunResult run = show_sections(sections);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "some\n" + expected);
}

std::vector<std::string> section_titles(const std::string& text) {
    std::vector<std::string> titles;
    for (const std::string& line : lines_of(text)) {
        if (!line.empty() && line.front() != ' ') {
            titles.push_back(line);
        }
    }
    return titles;
}

TEST(Show, an_empty_description_is_only_its_name) {
    expect_shown("", "");
}

TEST(Show, function_information_is_shown) {
    expect_shown(
        "<FUNCTION_INFORMATION><VHDL_LIBRARY NAME='ieee.all; work.pkg'/><START_TIME VALUE='-5'/>"
        "<TIME_SCALE VALUE='ns'/><TIME_DELTA VALUE='2'/></FUNCTION_INFORMATION>",
        "\nFunction information\n"
        "  VHDL library        ieee.all; work.pkg\n"
        "  Simulation library  ieee;work;\n"
        "  Start time          -5 ns\n"
        "  Time scale          ns\n"
        "  Time delta          2\n");
}

TEST(Show, of_a_very_long_value_the_beginning_is_shown) {
    const std::string value(20000, 'v');
    const auto shown = [](const std::string& definition) {
        const RunResult run =
            show_sections("<MACROS><MACRO NAME='A' DEFINITION='" + definition + "'/></MACROS>");
        return std::count(run.out.begin(), run.out.end(), 'v') == 20000 &&
               contains(run.out, "... and 1 more character");
    };
    EXPECT_FALSE(shown(value));
    EXPECT_TRUE(shown(value + 'w'));
}

TEST(Show, parameters_have_their_rules_below_them) {
    expect_shown(
        "<PARAMETERS>"
        "<PARAMETER NAME='WIDTH' TYPE='INTEGER' VALUE='8' CNX_TYPE='CONSTANT'>"
        "<FORCE_RANGE MIN='1' MAX='64' IF='A == 1'/><FORCE_RANGE MAX='9'/>"
        "<FORCE_VALUE V='4' ELSE='5' IF='B'/><FORCE_VALUE V='6' WHEN_CMD='C'/>"
        "<VALUE_RULE>WIDTH gt 0</VALUE_RULE></PARAMETER>"
        "<PARAMETER NAME='M' TYPE='STRING' VALUE='X;Y' DEFAULT_VALUE_INDEX='1' LPM_HINT='ON'/>"
        "</PARAMETERS>",
        "\nParameters\n"
        "  Name   Type     Default  Values  Connection  LPM hint\n"
        "  WIDTH  integer  8                constant\n"
        "      range 1 to 64 if A == 1\n"
        "      range up to 9\n"
        "      value 4 if B, else 5\n"
        "      on command C: 6\n"
        "      rule WIDTH gt 0\n"
        "  M      string   Y        X;Y                 yes\n");
}

constexpr const char* kBeyondItsList =
    "<PARAMETERS><PARAMETER NAME='M' TYPE='STRING' VALUE='A;B' DEFAULT_VALUE_INDEX='7'/>"
    "</PARAMETERS>";

TEST(Show, a_default_that_the_list_does_not_have_is_its_index) {
    expect_shown(kBeyondItsList,
                 "\nParameters\n"
                 "  Name  Type    Default                              Values\n"
                 "  M     string  index 7 (the list has no such item)  A;B\n");
}

TEST(Show, a_list_that_is_wider_than_its_column_is_broken_between_its_items) {
    const std::string name(40, 'n');
    std::string list = "first";
    for (int item = 2; item < 9; ++item) {
        list += ";item_" + std::to_string(item);
    }
    expect_shown("<PARAMETERS><PARAMETER NAME='" + name + "' TYPE='STRING' VALUE='" + list +
                     "' DEFAULT_VALUE_INDEX='0' CNX_TYPE='CONSTANT'/></PARAMETERS>",
                 "\nParameters\n"
                 "  Name                                      Type    Default  Values              "
                 "         Connection\n"
                 "  " +
                     name + "  string  first    first;item_2;item_3;item_4;  constant\n" +
                     std::string(61, ' ') + "item_5;item_6;item_7;item_8\n");
}

TEST(Show, a_cell_that_cannot_be_broken_moves_the_next_one) {
    const std::string name(60, 'n');
    const std::string value(60, 'v');
    const RunResult run =
        show_sections("<PARAMETERS><PARAMETER NAME='" + name + "' TYPE='STRING' VALUE='" + value +
                      "' CNX_TYPE='CONSTANT'/></PARAMETERS>");
    EXPECT_TRUE(contains(run.out, "  " + name + "  string  " + value + "  constant\n")) << run.out;
}

TEST(Show, columns_are_aligned_by_what_a_terminal_shows) {
    expect_shown(
        "<PARAMETERS><PARAMETER NAME='\u5E45' TYPE='STRING' VALUE='\u5E7F\u6771'/>"
        "<PARAMETER NAME='e\u0301te\u0301' TYPE='STRING' VALUE='\U0001F600'/>"
        "<PARAMETER NAME='plain' TYPE='INTEGER' VALUE='1'/></PARAMETERS>",
        "\nParameters\n"
        "  Name   Type     Default\n"
        "  \u5E45     string   \u5E7F\u6771\n"
        "  e\u0301te\u0301    string   \U0001F600\n"
        "  plain  integer  1\n");
}

TEST(Show, ports_have_their_rules_below_them) {
    expect_shown(
        "<PORTS>"
        "<PORT NAME='clock' TYPE='INPUT' IS_CLOCK_PORT='TRUE' CLOCK_PERIOD='20'"
        " CNX_TYPE='USED_PORT'/>"
        "<PORT NAME='d' TYPE='INPUT' ASYNC='FALSE' WIDTH='W' WIDTH2D='2' USAGE='VARIABLE'"
        " DEFAULT_VALUE='7' INITIAL_VEC_STATE='1' HIGH_PROBABILITY='30'>"
        "<STATE V='USED' IF='A' ELSE='UNUSED'/><FORCE_VALUE V='0'/><FORCE_RANGE MIN='0' MAX='3'/>"
        "<CONSTANT_RANGE MIN='0' MAX='7' IF='B'/></PORT>"
        "<PORT NAME='q' TYPE='OUTPUT'/><PORT NAME='dq' TYPE='BIDIR'/><PORT NAME='r' TYPE='BURIED'/>"
        "</PORTS>",
        "\nPorts\n"
        "  Name   Type    Width  Usage     Timing  Period  Default  Init  High %  Connection\n"
        "  clock  input          USED      clock   20               0     50      used port\n"
        "  d      input   W x 2  VARIABLE  sync            7        1     30\n"
        "      state USED if A, else UNUSED\n"
        "      value 0\n"
        "      range 0 to 3\n"
        "      constant range 0 to 7 if B\n"
        "  q      output         USED                               0\n"
        "  dq     bidir          USED                               0     50\n"
        "  r      buried         USED                               0\n");
}

TEST(Show, hidden_parameters_and_macros_are_shown) {
    expect_shown(
        "<HIDDEN_PARAMETERS><PARAMETER NAME='H' VALUE='1'><FORCE_VALUE V='2' IF='A'/></PARAMETER>"
        "</HIDDEN_PARAMETERS>"
        "<MACROS><MACRO NAME='M' ARGUMENTS='a,b'><DEFINITION>a +\n   b</DEFINITION></MACRO>"
        "</MACROS>",
        "\nHidden parameters\n"
        "  Name  Value\n"
        "  H     1\n"
        "      value 2 if A\n"
        "\nMacros\n"
        "  Name  Arguments  Definition\n"
        "  M     a,b        a + b\n");
}

TEST(Show, rules_and_messages_are_shown) {
    expect_shown(
        "<RULES><RULE>A gt 0</RULE><RULE REQUIRED_RULE='OFF'>B</RULE></RULES>"
        "<MESSAGES><MESSAGE TYPE='INFO'>hello</MESSAGE><MESSAGE TYPE='CRITICAL_WARNING'>"
        "<IF>C</IF><THEN>bad</THEN><ELSE>good</ELSE></MESSAGE></MESSAGES>",
        "\nRules\n"
        "  Kind      Rule\n"
        "  required  A gt 0\n"
        "  optional  B\n"
        "\nMessages\n"
        "  Severity          Message\n"
        "  info              hello\n"
        "  critical warning  bad\n"
        "      if C\n"
        "      else: good\n");
}

TEST(Show, vectors_have_their_stimulus_and_display_formats) {
    expect_shown(
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='100' TIME_STEP='10' INDEX='3'"
        " DISPLAY_TRUNCATION='LOW'><CAPTION>A wave</CAPTION><WAVE_CONDITION>E</WAVE_CONDITION>"
        "<DESCRIPTION><T>Something moves.</T></DESCRIPTION>"
        "<STIM>force a 0 0</STIM>"
        "<IF>C == 1</IF><THEN><STIM>force b 1 0</STIM><STIM>force c 1 0</STIM></THEN>"
        "<ELSE><STIM>force b 0 0</STIM></ELSE>"
        "<DISPLAY>add wave -fixed_point(s4.4) a</DISPLAY><DISPLAY>add wave -bin b</DISPLAY>"
        "</WAVE></WAVE_DATA><CUSTOM_VECTORS><CUSTOM_VECTOR NAME='v'/></CUSTOM_VECTORS>",
        "\nVectors\n"
        "\n  w\n"
        "    Caption     A wave\n"
        "    Index       3\n"
        "    Max time    100\n"
        "    Time step   10\n"
        "    Truncation  low\n"
        "    Applies if  E\n"
        "    Description\n"
        "      Something moves.\n"
        "    Stimulus\n"
        "      force a 0 0\n"
        "      if C == 1\n"
        "        then  force b 1 0\n"
        "        else  force b 0 0\n"
        "        then  force c 1 0\n"
        "    Display formats\n"
        "      a  fixed point s4.4\n"
        "      b  binary\n"
        "\n  v\n"
        "    Time step   1\n"
        "    Truncation  high\n");
}

TEST(Show, wizard_maps_are_shown_with_generic_objects) {
    expect_shown(
        "<WIZARD_DATA><PORT NAME='clock' TYPE='INPUT' IS_CLOCK_PORT='TRUE'/>"
        "<WIZARD_MAP NAME='m' WIZARD_NAME='Some wizard' MAP_CONSTANTS='ON'>"
        "<WIZARD_CONDITION>A</WIZARD_CONDITION>"
        "<PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'/></WIZARD_MAP></WIZARD_DATA>",
        "\nWizard maps\n"
        "\n  m\n"
        "    Wizard           Some wizard\n"
        "    Module           some\n"
        "    Maps constants   yes\n"
        "    Maps used ports  no\n"
        "    Applies if       A\n"
        "      Name   Kind     Usage  Timing  Default\n"
        "      W      integer                 4\n"
        "      clock  input    USED   clock\n");
}

TEST(Show, help_text_is_indented_by_its_conditions) {
    expect_shown(
        "<HTML_TEXT><TITLE>T</TITLE><HEADER>H</HEADER><INTRO><T>one</T>"
        "<IF>A</IF><THEN><T>two</T><IF>B</IF><THEN>three</THEN><ELSE>four</ELSE></THEN>"
        "<ELSE>five</ELSE></INTRO><END><T>six</T></END></HTML_TEXT>",
        "\nHelp text\n"
        "  Title   T\n"
        "  Header  H\n"
        "  Introduction\n"
        "    one\n"
        "    if A\n"
        "      two\n"
        "      if B\n"
        "        three\n"
        "      else\n"
        "        four\n"
        "    else\n"
        "      five\n"
        "  End\n"
        "    six\n");
}

TEST(Show, the_examples_have_every_section) {
    const std::vector<std::string> others = {"Function information",
                                             "Parameters",
                                             "Ports",
                                             "Hidden parameters",
                                             "Macros",
                                             "Rules",
                                             "Messages",
                                             "Vectors",
                                             "Wizard maps",
                                             "Help text"};
    for (const std::string name : {"fifo", "counter", "ram"}) {
        const RunResult run = run_kivo({"show", example(name + "_info.xml")});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "");
        std::vector<std::string> expected = others;
        expected.insert(expected.begin(), name);
        EXPECT_EQ(section_titles(run.out), expected) << name;
    }
}

TEST(Show, the_examples_fit_their_page) {
    for (const std::string name : {"fifo", "counter", "ram"}) {
        for (const std::string& line :
             lines_of(run_kivo({"show", example(name + "_info.xml")}).out)) {
            EXPECT_LE(line.size(), 100U) << name;
            EXPECT_TRUE(line.empty() || line.back() != ' ') << '"' << line << '"';
        }
    }
}

TEST(Show, a_faulty_description_is_shown_and_its_messages_reported) {
    const std::string path = example("faulty_info.xml");
    const RunResult run = run_kivo({"show", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, path).size(), 23U) << run.err;
    EXPECT_TRUE(contains(run.out, "  WIDTH      integer  16\n")) << run.out;
}

TEST(Show, a_missing_file_is_a_failure) {
    const RunResult run = run_kivo({"show", "none_info.xml"});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivo: error: cannot read 'none_info.xml': No such file or directory\n");
}

TEST(Show, control_characters_are_escaped_in_every_section) {
    const std::string evil = "x&#27;[2J&#7;y";
    const RunResult run =
        show_sections("<FUNCTION_INFORMATION><TIME_SCALE VALUE='" + evil +
                      "'/></FUNCTION_INFORMATION>"
                      "<PARAMETERS><PARAMETER NAME='" +
                      evil + "' TYPE='STRING' VALUE='" + evil +
                      "'>"
                      "<FORCE_VALUE V='" +
                      evil +
                      "'/></PARAMETER></PARAMETERS>"
                      "<RULES><RULE>" +
                      evil +
                      "</RULE></RULES>"
                      "<MESSAGES><MESSAGE TYPE='INFO'>" +
                      evil +
                      "</MESSAGE></MESSAGES>"
                      "<WAVE_DATA><WAVE NAME='" +
                      evil + "'><STIM>force " + evil +
                      " 0 0</STIM>"
                      "<IF>" +
                      evil + "</IF><THEN><STIM>" + evil +
                      "</STIM></THEN></WAVE></WAVE_DATA>"
                      "<WIZARD_DATA><WIZARD_MAP NAME='" +
                      evil +
                      "'/></WIZARD_DATA>"
                      "<HTML_TEXT><TITLE>" +
                      evil + "</TITLE><INTRO><T>" + evil + "</T></INTRO></HTML_TEXT>");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.find('\033'), std::string::npos);
    EXPECT_EQ(run.out.find('\007'), std::string::npos);
    EXPECT_TRUE(contains(run.out, "x\\x1B[2J\\x07y")) << run.out;
}

TEST(Show, columns_are_aligned_by_characters) {
    expect_shown(
        "<HIDDEN_PARAMETERS><PARAMETER NAME='\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F' VALUE='1'/>"
        "<PARAMETER NAME='abcd' VALUE='2'/></HIDDEN_PARAMETERS>",
        "\nHidden parameters\n"
        "  Name  Value\n"
        "  \xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F  1\n"
        "  abcd  2\n");
}

TEST(Show, deep_nesting_neither_overflows_nor_outgrows_the_page) {
    constexpr int kDepth = 20000;
    std::string text;
    for (int level = 0; level < kDepth; ++level) {
        text += "<IF>A</IF><THEN>";
    }
    text += "<T>inside</T>";
    for (int level = 0; level < kDepth; ++level) {
        text += "</THEN>";
    }
    const RunResult run = show_sections("<HTML_TEXT><INTRO>" + text + "</INTRO></HTML_TEXT>");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(contains(run.out, "inside"));
    EXPECT_LT(run.out.size(), 100U * kDepth);
}

using Json = nlohmann::ordered_json;

// The document of a description "some_info.xml" with these sections, which begin in line 2.
Json json_of(const std::string& sections, int status = 0) {
    const TemporaryFolder folder;
    folder.write("some_info.xml", with_sections(sections));
    const RunResult run =
        run_kivo({"show", "--format", "json", "some_info.xml"}, {.directory = folder.path("")});
    EXPECT_EQ(run.status, status) << run.err;
    EXPECT_EQ(run.err.empty(), status == 0) << run.err;
    return Json::parse(run.out, nullptr, false);
}

Json place(int line, int column) {
    return {{"file", "some_info.xml"}, {"line", line}, {"column", column}};
}

TEST(Show, json_of_an_empty_description_has_every_key) {
    EXPECT_EQ(json_of("").dump(),
              R"({"version":2,"file":"some_info.xml","function_name":"some","vhdl_library":"",)"
              R"("simulation_library":"","time_scale":"","time_delta":"","start_time":0,)"
              R"("object_map":[],"fn_rule_list":[],"message_list":[],"vector_map":[],)"
              R"("wizard_map_map":[],"html_text":null,"error_list":[]})");
}

TEST(Show, json_holds_the_function_information) {
    const Json json = json_of(
        "<FUNCTION_INFORMATION><VHDL_LIBRARY NAME='ieee.all; work.pkg'/><START_TIME VALUE='-5'/>"
        "<TIME_SCALE VALUE='10 ns'/><TIME_DELTA VALUE='2'/></FUNCTION_INFORMATION>");
    EXPECT_EQ(json["vhdl_library"], "ieee.all; work.pkg");
    EXPECT_EQ(json["simulation_library"], "ieee;work;");
    EXPECT_EQ(json["start_time"], -5);
    EXPECT_EQ(json["time_scale"], "10 ns");
    EXPECT_EQ(json["time_delta"], "2");
}

TEST(Show, json_holds_every_field_of_an_object) {
    const Json json = json_of(
        "<PORTS><PORT NAME='d' TYPE='INPUT' ASYNC='FALSE' WIDTH='W' WIDTH2D='2' USAGE='VARIABLE'"
        " DEFAULT_VALUE='7' INITIAL_VEC_STATE='1' HIGH_PROBABILITY='30' CLOCK_PERIOD='20'"
        " CNX_TYPE='USED_PORT'>\n  <STATE V='USED' IF='A' ELSE='UNUSED'/></PORT></PORTS>");
    const Json rule = {{"rule_kind", "forced_value"},
                       {"text1", "USED"},
                       {"text2", "UNUSED"},
                       {"text3", "A"},
                       {"place", place(3, 3)}};
    const Json port = {{"name", "d"},
                       {"obj_type", "input_port"},
                       {"default_value", "7"},
                       {"value_array", ""},
                       {"default_index", -1},
                       {"default", "7"},
                       {"is_lpm_hint", false},
                       {"is_async", false},
                       {"is_clock", false},
                       {"initial_vec_state", "1"},
                       {"clock_period", "20"},
                       {"port_width", "W"},
                       {"port_width2d", "2"},
                       {"high_probability", 30},
                       {"usage_state", "VARIABLE"},
                       {"dependency_position", -1},
                       {"current_value", ""},
                       {"arguments", ""},
                       {"cnx_type", 2},
                       {"rule_list", Json::array({rule})},
                       {"place", place(2, 8)}};
    EXPECT_EQ(json["object_map"], Json::array({port})) << json.dump(2);
}

TEST(Show, json_keeps_the_order_of_the_file) {
    const Json json = json_of(
        "<MACROS><MACRO NAME='z' DEFINITION='1'/></MACROS>"
        "<PORTS><PORT NAME='y' TYPE='BURIED'/><PORT NAME='a' TYPE='BIDIR'/></PORTS>"
        "<HIDDEN_PARAMETERS><PARAMETER NAME='x' VALUE='1'/></HIDDEN_PARAMETERS>"
        "<PARAMETERS><PARAMETER NAME='b' TYPE='STRING' VALUE='U;V' DEFAULT_VALUE_INDEX='1'/>"
        "<PARAMETER NAME='c' TYPE='INTEGER' LPM_HINT='ON'/></PARAMETERS>"
        "<PORTS><PORT NAME='o' TYPE='OUTPUT'/></PORTS>");
    std::vector<std::string> objects;
    for (const Json& object : json["object_map"]) {
        objects.push_back(object["name"].get<std::string>() + " " +
                          object["obj_type"].get<std::string>());
    }
    EXPECT_EQ(objects, (std::vector<std::string>{"z macro", "y buried_port", "a bidir_port",
                                                 "x hidden_parameter", "b string_parameter",
                                                 "c integer_parameter", "o output_port"}));
    EXPECT_EQ(json["object_map"][4]["default_index"], 1);
    EXPECT_EQ(json["object_map"][4]["value_array"], "U;V");
    EXPECT_EQ(json["object_map"][4]["default"], "V");
    EXPECT_EQ(json["object_map"][5]["is_lpm_hint"], true);
}

TEST(Show, json_has_no_default_where_the_list_does_not_have_it) {
    const Json json = json_of(kBeyondItsList);
    EXPECT_EQ(json["object_map"][0]["default_index"], 7);
    EXPECT_TRUE(json["object_map"][0]["default"].is_null());
}

std::vector<std::string> kinds_of(const Json& rules) {
    std::vector<std::string> kinds;
    for (const Json& rule : rules) {
        kinds.push_back(rule["rule_kind"]);
    }
    return kinds;
}

using Kinds = std::vector<std::string>;

TEST(Show, json_names_the_kind_of_every_rule) {
    const Json json = json_of(
        "<PARAMETERS><PARAMETER NAME='p' TYPE='STRING'><FORCE_VALUE V='1' WHEN_CMD='C'/>"
        "<FORCE_RANGE MIN='1' MAX='2'/><FORCE_VALUE V='1'/><VALUE_RULE>p</VALUE_RULE></PARAMETER>"
        "</PARAMETERS><PORTS><PORT NAME='q' TYPE='INPUT'><CONSTANT_RANGE MIN='1' MAX='2'/>"
        "<FORCE_VALUE V='1'/><FORCE_RANGE MIN='1' MAX='2'/></PORT></PORTS>"
        "<RULES><RULE>A</RULE><RULE REQUIRED_RULE='OFF'>B</RULE></RULES>"
        "<MESSAGES><MESSAGE TYPE='ERROR'>a</MESSAGE><MESSAGE TYPE='CRITICAL_WARNING'>b</MESSAGE>"
        "<MESSAGE TYPE='WARNING'>c</MESSAGE><MESSAGE TYPE='INFO'>d</MESSAGE></MESSAGES>");
    EXPECT_EQ(kinds_of(json["object_map"][0]["rule_list"]),
              (Kinds{"when_cmd", "forced_range", "forced_value", "required"}));
    EXPECT_EQ(kinds_of(json["object_map"][1]["rule_list"]),
              (Kinds{"constant_range", "port_value", "port_range"}));
    EXPECT_EQ(kinds_of(json["fn_rule_list"]), (Kinds{"required", "not_required"}));
    EXPECT_EQ(kinds_of(json["message_list"]),
              (Kinds{"error", "critical_warning", "warning", "info"}));
    EXPECT_EQ(json["message_list"][1]["text1"], "b");
}

TEST(Show, json_holds_vectors) {
    const Json json = json_of(
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='100' TIME_STEP='10' INDEX='3'"
        " DISPLAY_TRUNCATION='LOW'><CAPTION>A wave</CAPTION><WAVE_CONDITION>E</WAVE_CONDITION>"
        "<DESCRIPTION><T>Something moves.</T></DESCRIPTION>"
        "<IF>C</IF><THEN><STIM>force b 1 0</STIM></THEN><ELSE><STIM>force b 0 0</STIM></ELSE>"
        "<DISPLAY>add wave -fixed_point(s4.4) a</DISPLAY><DISPLAY>add wave -hex b</DISPLAY>"
        "</WAVE></WAVE_DATA><CUSTOM_VECTORS><CUSTOM_VECTOR NAME='v'/></CUSTOM_VECTORS>");
    const Json& wave = json["vector_map"][0];
    EXPECT_EQ(wave["name"], "w");
    EXPECT_EQ(wave["max_time"], 100);
    EXPECT_EQ(wave["time_step"], 10);
    EXPECT_EQ(wave["index"], 3);
    EXPECT_EQ(wave["truncate_low"], true);
    EXPECT_EQ(wave["caption"], "A wave");
    EXPECT_EQ(wave["wave_condition"]["text3"], "E");
    EXPECT_EQ(wave["description"][0]["then_text"], "Something moves.");
    EXPECT_EQ(wave["stimulus_list"][0]["text1"], "force b 1 0");
    EXPECT_EQ(wave["stimulus_list"][0]["text2"], "force b 0 0");
    EXPECT_EQ(wave["stimulus_list"][0]["text3"], "C");
    EXPECT_EQ(wave["display_format_map"].dump(),
              R"([{"port_name":"a","radix":"fixed_point","description":"s4.4"},)"
              R"({"port_name":"b","radix":"hex","description":""}])");
    const Json& custom = json["vector_map"][1];
    EXPECT_EQ(custom["name"], "v");
    EXPECT_EQ(custom["max_time"], -1);
    EXPECT_TRUE(custom["wave_condition"].is_null());
    EXPECT_TRUE(custom["description"].is_null());
    EXPECT_EQ(custom["stimulus_list"], Json::array());
}

TEST(Show, json_holds_wizard_maps_with_generic_objects) {
    const Json json = json_of(
        "<WIZARD_DATA><PORT NAME='clock' TYPE='INPUT' IS_CLOCK_PORT='TRUE'/>"
        "<WIZARD_MAP NAME='m' WIZARD_NAME='Some wizard' MAP_CONSTANTS='ON'>"
        "<WIZARD_CONDITION>A</WIZARD_CONDITION>"
        "<PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'/></WIZARD_MAP></WIZARD_DATA>");
    const Json& map = json["wizard_map_map"][0];
    EXPECT_EQ(map["name"], "m");
    EXPECT_EQ(map["wizard_name"], "Some wizard");
    EXPECT_EQ(map["module_name"], "some");
    EXPECT_EQ(map["map_constants"], true);
    EXPECT_EQ(map["map_used_ports"], false);
    EXPECT_EQ(map["condition"]["text3"], "A");
    EXPECT_EQ(map["obj_map"][0]["name"], "W");
    EXPECT_EQ(map["obj_map"][1]["is_clock"], true);
}

TEST(Show, json_lists_the_pieces_of_a_text_in_reading_order) {
    const Json json = json_of(
        "<HTML_TEXT><TITLE>T</TITLE><HEADER>H</HEADER><INTRO><T>one</T>"
        "<IF>A</IF><THEN><T>two</T><IF>B</IF><THEN>three</THEN><ELSE>four</ELSE></THEN>"
        "<ELSE><T>five</T></ELSE><T>six</T></INTRO></HTML_TEXT>");
    EXPECT_EQ(json["html_text"]["title"], "T");
    EXPECT_EQ(json["html_text"]["header"], "H");
    EXPECT_TRUE(json["html_text"]["end"].is_null());
    std::string shown;
    for (const Json& piece : json["html_text"]["intro"]) {
        shown += piece["parent"].dump() + " " + piece["branch"].get<std::string>() + ": " +
                 piece["condition"].get<std::string>() + "?" +
                 piece["then_text"].get<std::string>() + (piece["then_sub"] ? "(pieces)" : "") +
                 ":" + piece["else_text"].get<std::string>() +
                 (piece["else_sub"] ? "(pieces)" : "") + "\n";
    }
    EXPECT_EQ(shown,
              "-1 none: ?one:\n"
              "-1 none: A?(pieces):(pieces)\n"
              "1 then: ?two:\n"
              "1 then: B?three:four\n"
              "1 else: ?five:\n"
              "-1 none: ?six:\n");
}

TEST(Show, json_of_deep_nesting_is_flat) {
    constexpr int kDepth = 20000;
    std::string text;
    for (int level = 0; level < kDepth; ++level) {
        text += "<IF>A</IF><THEN>";
    }
    text += "<T>inside</T>";
    for (int level = 0; level < kDepth; ++level) {
        text += "</THEN>";
    }
    const Json json = json_of("<HTML_TEXT><INTRO>" + text + "</INTRO></HTML_TEXT>");
    const Json& intro = json["html_text"]["intro"];
    ASSERT_EQ(intro.size(), kDepth + 1U);
    EXPECT_EQ(intro[kDepth]["then_text"], "inside");
    EXPECT_EQ(intro[kDepth]["parent"], kDepth - 1);
}

TEST(Show, json_holds_the_messages_with_ids_and_places) {
    const Json json = json_of("<REVISIONS/>\n <NEWS/>", 1);
    EXPECT_EQ(json["error_list"],
              Json::array({{{"id", "unknown-section"},
                            {"text", "Main element tag REVISIONS is not a valid recognized tag"},
                            {"place", place(2, 1)}},
                           {{"id", "unknown-section"},
                            {"text", "Main element tag NEWS is not a valid recognized tag"},
                            {"place", place(3, 2)}}}));
}

TEST(Show, json_keeps_texts_and_is_plain_ascii) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("some_info.xml",
                     with_sections("<RULES><RULE>\u00E4 \"\\\" &lt;b&gt; &#27;[2J&#x9b;\xFF</RULE>"
                                   "</RULES>"));
    const RunResult run = run_kivo({"show", "--format", "json", path});
    EXPECT_TRUE(std::all_of(run.out.begin(), run.out.end(), [](char letter) {
        return letter == '\n' || (letter >= ' ' && letter <= '~');
    })) << run.out;
    EXPECT_EQ(Json::parse(run.out)["fn_rule_list"][0]["text3"],
              "\u00E4 \"\\\" <b> \x1B[2J\u009B\uFFFD");
}

TEST(Show, an_unknown_format_is_answered_with_the_known_ones) {
    const RunResult run = run_kivo({"show", "--format", "xml", example("fifo_info.xml")});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, "'text' or 'json' is wanted, not 'xml'")) << run.err;
}

TEST(Show, json_that_finds_no_room_is_a_failure) {
    RunOptions options;
    options.out_path = "/dev/full";
    const RunResult run = run_kivo({"show", "--format", "json", example("fifo_info.xml")}, options);
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "No space left on device")) << run.err;
}

TEST(Show, settings_show_what_takes_effect) {
    const RunResult run =
        run_kivo({"show", example("counter_info.xml"), "DIRECTION=PORT", "offset=CONSTANT:5"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    for (const char* const part : {
             "  Name         Type     Now   Default  Values        Connection  LPM hint\n",
             "  DIRECTION    string   PORT  UP       UP;DOWN;PORT\n",
             "\n  up_down     input   USED             UNUSED    sync",
             "\n  offset      input   5         WIDTH  CONSTANT  sync",
             "\n  Name        Now  Value\n  LAST_COUNT  255  255\n",
         }) {
        EXPECT_TRUE(contains(run.out, part)) << part << "in:\n" << run.out;
    }
}

TEST(Show, settings_are_in_the_json_too) {
    const RunResult run =
        run_kivo({"show", example("fifo_info.xml"), "DEPTH=1024", "--format", "json"});
    const nlohmann::json document = nlohmann::json::parse(run.out);
    for (const nlohmann::json& object : document["object_map"]) {
        if (object["name"] == "STORAGE") {
            EXPECT_EQ(object["current_value"], "BLOCK");
            EXPECT_GE(object["dependency_position"], 0);
        }
    }
    const RunResult plain = run_kivo({"show", example("fifo_info.xml"), "--format", "json"});
    const nlohmann::json without = nlohmann::json::parse(plain.out);
    for (const nlohmann::json& object : without["object_map"]) {
        EXPECT_EQ(object["current_value"], "");
    }
}

TEST(Show, settings_that_are_wrong_or_not_legal_are_told) {
    const RunResult wrong = run_kivo({"show", example("fifo_info.xml"), "DEPHT=8"});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(wrong.out, "");
    const RunResult illegal = run_kivo({"show", example("fifo_info.xml"), "DEPTH=8"});
    EXPECT_EQ(illegal.status, 1);
    EXPECT_EQ(illegal.err,
              "kivo: note: the configuration is not legal: 1 error; 'kivo configure' tells more\n");
}

}  // namespace
