#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Check, the_examples_are_clean) {
    const RunResult run = run_kivo(
        {"check", example("fifo_info.xml"), example("counter_info.xml"), example("ram_info.xml")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "3 files checked: no messages\n");
}

TEST(Check, the_examples_are_clean_wherever_the_program_runs) {
    const TemporaryFolder elsewhere;
    const RunResult run =
        run_kivo({"check", example("fifo_info.xml")}, {.directory = elsewhere.path("")});
    EXPECT_EQ(run.status, 0) << run.err;
}

TEST(Check, the_faulty_example_gives_exactly_its_messages_and_notes) {
    const std::string path = example("faulty_info.xml");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    const std::vector<std::string> expected = {
        "6:5: error: Sub element tag TIME_UNIT is not a valid sub tag of the main tag "
        "FUNCTION_INFORMATION [function-information-sub-tag]",
        "6:5: note: known here: START_TIME, TIME_DELTA, TIME_SCALE, VHDL_LIBRARY",
        "10:5: error: Attribute UNITS is not a recognized attribute for parameters (found in "
        "parameter WIDTH ) [parameter-attribute]",
        "10:5: note: known here: CNX_TYPE, DEFAULT_VALUE, DEFAULT_VALUE_INDEX, LPM_HINT, NAME, "
        "TYPE, VALUE",
        "11:5: error: Parameter type ENUM of parameter MODE is not a recognized parameter type  "
        "[parameter-type]",
        "11:5: note: known here: INTEGER, STRING",
        "11:5: error: Kivofunction Object MODE is of unknown type  [unknown-type]",
        "12:5: error: Name atrribute is missing from PARAMETER tag  [parameter-name]",
        "16:5: error: Kivofunction Object WITDH is of unknown type  [unknown-type]",
        "16:5: note: did you mean \"WIDTH\"?",
        "22:5: error: Invalid value for high probability 150, it should be an integer between 0 "
        "and 100 [high-probability]",
        "22:5: note: known here: whole numbers from 1 to 100",
        "23:5: error: Port type IN of port start is not a recognized port type  [port-type]",
        "23:5: note: known here: BIDIR, BURIED, INPUT, OUTPUT",
        "23:5: error: Kivofunction Object start is of unknown type  [unknown-type]",
        "24:5: error: Attribute value CONSTANT is not a recognized value for attribute CNX_TYPE "
        "(found for port expired ) [port-cnx-type]",
        "24:5: note: known here: USED_PORT",
        "25:5: error: Kivofunction Object WIDTH of different type Integer parameter already exists "
        " [type-clash]",
        "10:5: note: first declared here",
        "30:7: error: Sub tag VALUE_RULE is not a valid sub tag of PORT  [object-sub-tag]",
        "30:7: note: known here: CONSTANT_RANGE, FORCE_RANGE, FORCE_VALUE, STATE",
        "35:5: error: Sub element tag RULE doesn't have any valid element data [rule-without-data]",
        "35:5: note: the condition is the text between the tags; no attribute holds it",
        "39:5: error: Required attribute TYPE not specified for MESSAGE [message-type]",
        "39:5: note: did you mean \"WARNING\"?",
        "43:5: error: Attribute DISPLAY_TRUNCATION has illegal value low in wave ( one_shot ). "
        "Valid values are HIGH and LOW [vector-display-truncation]",
        "43:5: note: did you mean \"LOW\"?",
        "49:7: error: There are more stimulus in the ELSE part of the condition, rather than in "
        "the THEN section [surplus-else]",
        "53:7: error: Unknown radix used to specify display format for port expired "
        "[display-radix]",
        "53:7: note: known here: -bin, -fixed_point, -hex, -signed, -unsigned",
        "53:7: error: Invalid display format specification string add wave -oct expired "
        "[display-command]",
        "60:7: error: Can't have conditional text as well as sub-tags at the same level T "
        "[text-with-sub-tags]",
        "65:5: error: Attribute TYPE is not a recognized attribute for hidden parameters  "
        "[hidden-parameter-attribute]",
        "65:5: note: known here: NAME, VALUE",
        "69:5: error: Sub element tag DEFINE is not a valid sub tag of the main tag MACROS "
        "[macros-sub-tag]",
        "69:5: note: known here: MACRO",
        "74:5: error: Attribute MODUL_NAME is not a recognized attribute for vector stimulus "
        "(found in vector plain ) [wizard-map-attribute]",
        "74:5: note: this is a WIZARD_MAP; the message says vector stimulus of maps too",
        "74:5: note: did you mean \"MODULE_NAME\"?",
        "77:3: error: Main element tag REVISIONS is not a valid recognized tag [unknown-section]",
        "70:51: warning: \"&\" begins a reference such as \"&lt;\"; write \"&amp;\" for the "
        "character itself [xml-raw-ampersand]",
        "70:18: warning: nothing names the macro IS_SHORT [unused-macro]",
        "85:30: warning: two rules force different values on COUNTERS with PERIOD=99 PRESCALER=4 "
        "[forces-disagree]",
        "84:7: note: this one counts",
        "87:52: warning: with everything at its default RELOAD is 20, and must be from 0 to 16 "
        "(PERIOD) [default-breaks-rule]",
        "88:7: note: the rule",
        "89:30: warning: the condition of the FORCE_VALUE of RELOAD is never true [dead-rule]",
        "91:52: warning: the default of TRIGGER never counts: rules always force its value "
        "[default-never-used]",
        "92:7: note: always forced with this one",
        "94:57: warning: no legal configuration gives SOURCE the value PIN [value-never-legal]",
        "99:41: warning: two ranges of GUARD that can count at once never have a value in common "
        "[ranges-exclude]",
        "98:7: note: the other range",
        "101:22: warning: values depend on one another in a circle: COARSE, FINE, COARSE "
        "[force-cycle]",
        "104:5: note: FINE is part of it",
        "107:22: warning: nothing names the parameter SPARE [unused-parameter]",
        "111:45: warning: the width of lanes is 0 (PRESCALER / 2), and must be a whole number "
        "above "
        "0: with PERIOD=99 [port-width-never]",
        "113:29: warning: the condition of the STATE of preload is true only in configurations "
        "that are not legal [dead-in-legal]",
        "114:25: warning: no value is in the FORCE_RANGE of preload with PERIOD=8 PRESCALER=2 "
        "RELOAD=8: it is from 0 to -1 (PERIOD - 9) [range-empty]",
        "120:11: warning: no configuration meets this rule [impossible-rule]",
        "125:11: warning: this message is never shown [unreachable-message]",
    };
    EXPECT_EQ(places_in(run.err, path), expected);
    EXPECT_EQ(lines_of(run.err).back(), "1 file checked: 23 errors and 15 warnings in 1 file");
}

TEST(Check, the_source_line_stands_below_its_message_with_a_pointer) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("  <PORTS>\n\t<PORT TYPE=\"INPUT\"/>\n  </PORTS>"));
    EXPECT_EQ(run_kivo({"check", path}).err,
              path +
                  ":3:2: error: Name atrribute is missing from PORT tag  [port-name]\n"
                  "     3 |  <PORT TYPE=\"INPUT\"/>\n"
                  "       |  ^\n"
                  "1 file checked: 1 error in 1 file\n");
}

// The source line that a check of these sections shows first, and the line below it.
std::string excerpt_of(const std::string& sections) {
    const std::vector<std::string> lines =
        lines_of(run_kivo({"check", "-"}, {.input = with_sections(sections)}).err);
    return lines.size() < 3 ? "" : lines[1].substr(9) + '\n' + lines[2].substr(9);
}

TEST(Check, the_attribute_of_a_message_is_underlined) {
    EXPECT_EQ(excerpt_of("<PORTS><PORT NAME='a' TYPE='IN' WIDTH='1'/></PORTS>"),
              "<PORTS><PORT NAME='a' TYPE='IN' WIDTH='1'/></PORTS>\n"
              "       ^              ~~~~~~~~~");
    EXPECT_EQ(
        excerpt_of(
            "<MESSAGES><MSG TITLE='TYPE=\xC3\xA4\x7F' TYPE = \"\xC3\xA4\x7F\">b</MSG></MESSAGES>"),
        "<MESSAGES><MSG TITLE='TYPE=\xC3\xA4\\x7F' TYPE = \"\xC3\xA4\\x7F\">b</MSG></MESSAGES>\n"
        "          ^                       ~~~~~~~~~~~~~~");
    EXPECT_EQ(excerpt_of("<PORT_RULES><PORT NAME='a'/></PORT_RULES>"),
              "<PORT_RULES><PORT NAME='a'/></PORT_RULES>\n"
              "            ^     ~~~~~~~~");
}

TEST(Check, the_pointer_stands_below_its_place_after_tabs_wide_and_combining_characters) {
    EXPECT_EQ(
        excerpt_of("<PORTS><!--\u5E45e\u0301\t--><PORT NAME='\u5E45' TYPE='IN\u5E45'/></PORTS>"),
        "<PORTS><!--\u5E45e\u0301 --><PORT NAME='\u5E45' TYPE='IN\u5E45'/></PORTS>\n" +
            std::string(18, ' ') + '^' + std::string(15, ' ') + std::string(11, '~'));
}

TEST(Check, an_attribute_that_is_not_shown_is_not_underlined) {
    EXPECT_EQ(excerpt_of("<PORTS><PORT NAME='a'\n TYPE='IN'/></PORTS>"),
              "<PORTS><PORT NAME='a'\n       ^");
    const std::string line =
        excerpt_of("<PORTS><PORT NAME='" + std::string(200, 'a') + "' TYPE='IN'/></PORTS>");
    EXPECT_FALSE(contains(line, "~")) << line;
}

TEST(Check, a_long_source_line_is_cut_around_its_place) {
    const TemporaryFolder folder;
    const std::string filler = "<!--" + std::string(5000, 'x') + "-->";
    const std::string path =
        folder.write("a_info.xml", "<ROOT>" + filler + "<ODD/>" + filler + "</ROOT>");
    const RunResult run = run_kivo({"check", path});
    for (const std::string& line : lines_of(run.err)) {
        EXPECT_LE(line.size(), path.size() + 200) << line;
    }
    const std::vector<std::string> lines = lines_of(run.err);
    ASSERT_EQ(lines.size(), 4U) << run.err;
    EXPECT_EQ(lines[2].find('^'), lines[1].find("<ODD/>")) << run.err;
}

TEST(Check, the_pointer_counts_characters_and_escapes) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("a_info.xml", "<ROOT><!-- \xC3\xA4\xC3\xB6 \xE9 \x7F --><ODD/></ROOT>");
    const std::vector<std::string> lines = lines_of(run_kivo({"check", path}).err);
    ASSERT_GT(lines.size(), 3U);
    EXPECT_EQ(lines[1], "     1 | <ROOT><!-- \xC3\xA4\xC3\xB6 \\xE9 \\x7F --><ODD/></ROOT>");
    EXPECT_EQ(lines[2].find('^'), lines[1].find("<ODD/>") - 2);
}

TEST(Check, a_message_in_an_included_file_names_that_file) {
    const TemporaryFolder folder;
    const std::string inner = folder.write("common.xml", with_sections("<INNER/>"));
    const std::string outer =
        folder.write("a_info.xml", with_sections("<INCLUDE FILE=\"" + inner + "\"/>"));
    const RunResult run = run_kivo({"check", outer});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, inner).size(), 1U) << run.err;
}

TEST(Check, broken_xml_is_a_message_and_no_failure) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", "<ROOT><PORTS></ROOT>");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.err, "Invalid XML source file")) << run.err;
}

TEST(Check, control_characters_of_a_description_never_reach_the_terminal) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("<PORTS><PORT NAME=\"p&#27;[31m&#10;q&#x202E;r\xE9\" "
                                    "TYPE=\"INPUT\" ODD=\"1\"/></PORTS>"));
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.err, "(found for port p\\x1B[31m\\nq\\u202Er\\xE9 )")) << run.err;
    EXPECT_EQ(run.err.find('\033'), std::string::npos);
}

TEST(Check, files_are_checked_each_by_itself) {
    const TemporaryFolder folder;
    const std::string first = folder.write("a_info.xml", with_sections("<ODD/>"));
    const std::string second = folder.write("b_info.xml", with_sections("<ODD/><ODDER/>"));
    const RunResult run = run_kivo({"check", first, example("ram_info.xml"), second});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, first).size(), 1U);
    EXPECT_EQ(messages_in(run.err, second).size(), 2U);
    EXPECT_EQ(lines_of(run.err).back(), "3 files checked: 3 errors in 2 files");
}

TEST(Check, a_missing_file_is_named_with_the_reason) {
    const TemporaryFolder folder;
    const std::string path = folder.path("none_info.xml");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(lines_of(run.err).front(),
              "kivo: error: cannot read '" + path + "': No such file or directory");
}

TEST(Check, a_directory_stands_for_the_descriptions_below_it) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.path("b/deeper"));
    folder.write("c_info.xml", with_sections("<C/>"));
    folder.write("b/deeper/a_info.xml", with_sections("<A/>"));
    folder.write("b/other.xml", with_sections("<OTHER/>"));
    const RunResult run = run_kivo({"check", "."}, {.directory = folder.path("")});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, "./b/deeper/a_info.xml").size(), 1U) << run.err;
    EXPECT_EQ(messages_in(run.err, "./c_info.xml").size(), 1U) << run.err;
    EXPECT_LT(run.err.find("a_info.xml"), run.err.find("c_info.xml"));
    EXPECT_EQ(lines_of(run.err).back(), "2 files checked: 2 errors in 2 files");
}

TEST(Check, a_directory_without_descriptions_is_said_so) {
    const TemporaryFolder folder;
    folder.write("other.xml", with_sections("<OTHER/>"));
    const RunResult run = run_kivo({"check", folder.path("")});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(lines_of(run.err).front(), "kivo: error: cannot read '" + folder.path("") +
                                             "': no file *_info.xml is below this directory");
}

TEST(Check, standard_input_has_a_name_of_its_own) {
    const RunResult run = run_kivo({"check", "-"}, {.input = "<ROOT><ODD/></ROOT>"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              "<stdin>:1:7: error: Main element tag ODD is not a valid recognized tag "
              "[unknown-section]\n"
              "     1 | <ROOT><ODD/></ROOT>\n"
              "       |       ^\n"
              "1 file checked: 1 error in 1 file\n");
}

TEST(Check, no_message_tells_where_standard_input_is_kept) {
    const std::string broken = run_kivo({"check", "-"}, {.input = "<ROOT><A></ROOT>"}).err;
    EXPECT_TRUE(contains(broken, "Invalid XML source file <stdin> [invalid-file]")) << broken;
    EXPECT_TRUE(contains(broken, "<stdin>:1:12: error: line 1, column 12 of <stdin>: ")) << broken;
    for (const char* const format : {"text", "json", "sarif"}) {
        const RunResult run =
            run_kivo({"check", "--format", format, "-"}, {.input = "<ROOT><A></ROOT>"});
        EXPECT_FALSE(contains(run.out + run.err, "/proc/self/fd")) << run.out << run.err;
    }
}

TEST(Check, a_warning_in_standard_input_has_its_name_too) {
    const RunResult run =
        run_kivo({"check", "-"}, {.input = with_sections("<RULES><RULE>a && b</RULE></RULES>")});
    EXPECT_EQ(messages_in(run.err, "<stdin>").size(), 1U) << run.err;
}

TEST(Check, standard_input_includes_files_of_the_working_directory) {
    const TemporaryFolder folder;
    folder.write("part.xml", with_sections("<INNER/>"));
    const RunResult run = run_kivo(
        {"check", "-"},
        {.input = "<ROOT><INCLUDE FILE='part.xml'/></ROOT>", .directory = folder.path("")});
    EXPECT_EQ(messages_in(run.err, "part.xml").size(), 1U) << run.err;
}

TEST(Check, standard_input_stands_among_files) {
    const RunResult run = run_kivo(
        {"check", example("ram_info.xml"), "-", example("fifo_info.xml")}, {.input = "<ROOT/>"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "3 files checked: no messages\n");
}

TEST(Check, standard_input_is_read_once) {
    const RunResult run = run_kivo({"check", "-", "-"}, {.input = "<ROOT/>"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, "'-' is given more than once")) << run.err;
}

TEST(Check, standard_input_that_cannot_be_read_is_named_with_the_reason) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo({"check", "-"}, {.input_path = folder.path("")});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(lines_of(run.err).front(), "kivo: error: cannot read '<stdin>': Is a directory");
}

TEST(Check, a_file_called_like_standard_input_is_reached_by_its_directory) {
    const TemporaryFolder folder;
    folder.write("-", with_sections("<ODD/>"));
    const RunResult run = run_kivo({"check", "./-"}, {.directory = folder.path("")});
    EXPECT_EQ(messages_in(run.err, "./-").size(), 1U) << run.err;
}

TEST(Check, an_unknown_format_is_answered_with_the_known_ones) {
    const RunResult run = run_kivo({"check", "--format", "xml", "a.xml"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, "'text', 'json' or 'sarif'")) << run.err;
}

TEST(Check, a_format_for_programs_leaves_the_error_stream_empty) {
    for (const char* const format : {"json", "sarif"}) {
        const RunResult run = run_kivo({"check", "--format", format, example("faulty_info.xml")});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "");
        EXPECT_TRUE(contains(run.out, "\"unknown-section\"")) << format;
    }
}

TEST(Check, the_output_for_programs_cannot_steer_a_terminal) {
    const std::string text = with_sections(
        "<PARAMETERS><PARAMETER NAME='a' TYPE='\x7F\xC2\x9B\xE2\x80\xAE\xC3\xA4'/></PARAMETERS>");
    for (const char* const format : {"json", "sarif"}) {
        const RunResult run = run_kivo({"check", "--format", format, "-"}, {.input = text});
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(contains(run.out, "Parameter type \\u007f\\u009b\\u202e\\u00e4")) << run.out;
    }
}

TEST(Check, a_file_that_cannot_be_read_is_in_the_output_for_programs) {
    for (const char* const format : {"json", "sarif"}) {
        const RunResult run = run_kivo({"check", "--format", format, "/none_info.xml"});
        EXPECT_EQ(run.status, 3);
        EXPECT_EQ(run.err,
                  "kivo: error: cannot read '/none_info.xml': No such file or directory\n");
        EXPECT_TRUE(contains(run.out, "No such file or directory")) << run.out;
    }
}

TEST(Check, the_shape_of_the_json_output_is_constant) {
    const RunResult run = run_kivo({"check", "--format", "json", "-"}, {.input = ""});
    EXPECT_EQ(run.out, R"({
  "version": 1,
  "files": [
    {
      "name": "<stdin>",
      "read": true,
      "reason": null,
      "findings": [
        {
          "severity": "error",
          "id": "no-root",
          "text": "Root tag in XML rules file should be ROOT",
          "place": {
            "file": "<stdin>",
            "start": null,
            "end": null
          },
          "notes": []
        }
      ]
    }
  ],
  "summary": {
    "files_read": 1,
    "files_not_read": 0,
    "errors": 1,
    "warnings": 0,
    "undecided": 0
  }
}
)");
}

// Rules over products of numbers without ranges, which no effort suffices for.
std::string hard_description() {
    return with_sections(
        "<PARAMETERS><PARAMETER NAME='X' TYPE='INTEGER' VALUE='1'/><PARAMETER NAME='Y' "
        "TYPE='INTEGER' VALUE='1'/></PARAMETERS><MESSAGES><MESSAGE TYPE='ERROR'><IF>( X * X * X + "
        "Y * Y * Y == 30 ) and ( X * Y gt X + Y + 1000 )</IF><THEN>No.</THEN></MESSAGE>"
        "</MESSAGES>");
}

TEST(Check, what_the_effort_does_not_suffice_for_is_counted_at_the_end) {
    const RunResult run = run_kivo({"check", "--effort", "20", "-"}, {.input = hard_description()});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err,
              "1 file checked: no messages\n"
              "1 question of sense not decided; a greater --effort decides more\n");
    const RunResult json = run_kivo({"check", "--effort", "20", "--format", "json", "-"},
                                    {.input = hard_description()});
    EXPECT_TRUE(contains(json.out, "\"undecided\": 1\n")) << json.out;
    EXPECT_EQ(run_kivo({"check", "--effort", "0", "-"}, {.input = hard_description()}).err,
              "1 file checked: no messages\n");
}

TEST(Check, the_effort_is_a_number_within_bounds) {
    for (const char* const effort : {"-1", "200001", "much"}) {
        EXPECT_EQ(run_kivo({"check", "--effort", effort, example("ram_info.xml")}).status, 2)
            << effort;
    }
    EXPECT_EQ(run_kivo({"check", "--effort", "200000", example("ram_info.xml")}).status, 0);
}

TEST(Check, what_makes_no_sense_is_a_warning_like_any_other) {
    const std::string dead = with_sections(
        "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='2;3'/></PARAMETERS>"
        "<MESSAGES><MESSAGE TYPE='INFO'><IF>W == 4</IF><THEN>No.</THEN></MESSAGE></MESSAGES>");
    EXPECT_EQ(run_kivo({"check", "-"}, {.input = dead}).status, 1);
    EXPECT_EQ(run_kivo({"check", "-W", "no-unreachable-message", "-"}, {.input = dead}).status, 0);
    EXPECT_EQ(run_kivo({"check", "--effort", "0", "-"}, {.input = dead}).status, 0);
    EXPECT_TRUE(contains(run_kivo({"check", "--format", "sarif", "-"}, {.input = dead}).out,
                         "\"ruleId\": \"unreachable-message\""));
    EXPECT_TRUE(
        contains(run_kivo({"check", "-W", "error=unreachable-message", "-"}, {.input = dead}).err,
                 "error: this message is never shown [unreachable-message]"));
}

TEST(Check, output_that_cannot_be_written_is_an_error) {
    for (const char* const format : {"json", "sarif"}) {
        const RunResult run = run_kivo({"check", "--format", format, example("faulty_info.xml")},
                                       {.out_path = "/dev/full"});
        EXPECT_EQ(run.status, 3);
        EXPECT_TRUE(contains(run.err, "No space left on device")) << run.err;
    }
}

TEST(Check, a_clash_names_the_first_declaration) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml",
        with_sections("<PARAMETERS><PARAMETER NAME=\"A\" TYPE=\"INTEGER\" VALUE=\"1\"/>"
                      "</PARAMETERS>\n"
                      "<PORTS><PORT NAME=\"A\" TYPE=\"INPUT\"/></PORTS>"));
    EXPECT_EQ(run_kivo({"check", path}).err,
              path +
                  ":3:8: error: Kivofunction Object A of different type Integer parameter already "
                  "exists  [type-clash]\n"
                  "     3 | <PORTS><PORT NAME=\"A\" TYPE=\"INPUT\"/></PORTS>\n"
                  "       |        ^              ~~~~~~~~~~~~\n" +
                  path +
                  ":2:13: note: first declared here\n"
                  "     2 | <PARAMETERS><PARAMETER NAME=\"A\" TYPE=\"INTEGER\" "
                  "VALUE=\"1\"/></PARAMETERS>\n"
                  "       |             ^\n"
                  "1 file checked: 1 error in 1 file\n");
}

TEST(Check, a_clash_of_a_name_that_reads_like_the_message_names_the_first_declaration) {
    const TemporaryFolder folder;
    const std::string name = "A of different type B";
    const std::string path = folder.write(
        "a_info.xml", with_sections("<PARAMETERS><PARAMETER NAME='" + name +
                                    "' TYPE='STRING'/></PARAMETERS>\n<PORTS><PORT NAME='" + name +
                                    "' TYPE='INPUT'/></PORTS>"));
    const std::vector<std::string> found =
        places_in(run_kivo({"check", "-W", "no-unwritable-name", path}).err, path);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1], "2:13: note: first declared here");
}

TEST(Check, a_misspelt_word_names_the_one_that_was_meant) {
    const RunResult run = run_kivo({"check", "-"}, {.input = "<ROOT><PORST/></ROOT>"});
    EXPECT_EQ(run.err,
              "<stdin>:1:7: error: Main element tag PORST is not a valid recognized tag "
              "[unknown-section]\n"
              "     1 | <ROOT><PORST/></ROOT>\n"
              "       |       ^\n"
              "<stdin>:1:7: note: did you mean \"PORTS\"?\n"
              "1 file checked: 1 error in 1 file\n");
}

TEST(Check, a_word_that_is_like_no_other_names_those_that_are_known) {
    const RunResult run = run_kivo(
        {"check", "-"}, {.input = "<ROOT><PORTS><PORT NAME='start' TYPE='IN'/></PORTS></ROOT>"});
    EXPECT_TRUE(contains(run.err,
                         "[port-type]\n"
                         "     1 | <ROOT><PORTS><PORT NAME='start' TYPE='IN'/></PORTS>"
                         "</ROOT>\n"
                         "       |              ^                  ~~~~~~~~~\n"
                         "<stdin>:1:14: note: known here: BIDIR, BURIED, INPUT, OUTPUT\n"))
        << run.err;
}

// The notes of a check of these sections, without what stands before them.
std::vector<std::string> notes_of(const std::string& sections) {
    std::vector<std::string> notes;
    for (const std::string& line :
         lines_of(run_kivo({"check", "-"}, {.input = with_sections(sections)}).err)) {
        if (const std::size_t at = line.find("note: "); at != std::string::npos) {
            notes.push_back(line.substr(at + 6));
        }
    }
    return notes;
}

using Notes = std::vector<std::string>;

const std::string kWidthAndClock =
    "<PARAMETERS><PARAMETER NAME='WIDTH' TYPE='INTEGER' VALUE='8'/></PARAMETERS>"
    "<PORTS><PORT NAME='clock' TYPE='INPUT'/></PORTS>";

TEST(Check, a_misspelt_name_names_the_declared_one_of_its_kind) {
    const Notes width = {"did you mean \"WIDTH\"?"};
    for (const char* name : {"WITDH", "WIDT", "WIDTHS", "WIDTG", "width", "_WIDTH"}) {
        EXPECT_EQ(notes_of(kWidthAndClock + "<PARAMETER_RULES><PARAMETER NAME='" + name +
                           "'/></PARAMETER_RULES>"),
                  width)
            << name;
    }
    EXPECT_EQ(notes_of(kWidthAndClock + "<PORT_RULES><PORT NAME='clok'/></PORT_RULES>"),
              Notes{"did you mean \"clock\"?"});
}

TEST(Check, a_name_that_is_like_none_of_its_kind_gets_no_note) {
    for (const char* rules : {"<PORT_RULES><PORT NAME='WITDH'/></PORT_RULES>",
                              "<PARAMETER_RULES><PARAMETER NAME='DEPTH'/></PARAMETER_RULES>",
                              "<PARAMETER_RULES><PARAMETER NAME='WIHDT'/></PARAMETER_RULES>",
                              "<PARAMETER_RULES><PARAMETER NAME=''/></PARAMETER_RULES>"}) {
        EXPECT_EQ(notes_of(kWidthAndClock + rules), Notes()) << rules;
    }
}

TEST(Check, an_element_with_a_wrong_type_declares_a_name_of_its_own) {
    EXPECT_EQ(notes_of(kWidthAndClock + "<PORTS><PORT NAME='clock2' TYPE='IN'/></PORTS>"),
              Notes{"known here: BIDIR, BURIED, INPUT, OUTPUT"});
}

TEST(Check, rules_before_the_declaration_name_it) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml",
        with_sections("<PORT_RULES><PORT NAME='clock'/></PORT_RULES>\n" + kWidthAndClock));
    const std::vector<std::string> found = places_in(run_kivo({"check", path}).err, path);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1], "3:83: note: declared later, here");
}

TEST(Check, a_repeated_attribute_names_the_first) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("a_info.xml", "<ROOT>\n<RULES A='>' B = \"A='2'\"\n  A='3'/></ROOT>");
    const std::vector<std::string> found =
        places_in(run_kivo({"check", "-W", "no-unknown-attribute", path}).err, path);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], "3:3: error: line 3, column 3 of " + path +
                            ": attribute A is given more than once [xml-syntax]");
    EXPECT_EQ(found[1], "2:8: note: first given here");
}

TEST(Check, a_file_that_the_library_reads_although_it_is_no_xml_gives_a_warning) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("a_info.xml", "<ROOT>\n  <RULES><RULE>a && b</RULE></RULES>\n</ROOT>");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              path +
                  ":2:18: warning: \"&\" begins a reference such as \"&lt;\"; write \"&amp;\" for "
                  "the character itself [xml-raw-ampersand]\n"
                  "     2 |   <RULES><RULE>a && b</RULE></RULES>\n"
                  "       |                  ^\n"
                  "1 file checked: 1 warning in 1 file\n");
}

TEST(Check, included_files_are_checked_for_strict_xml_once) {
    const TemporaryFolder folder;
    const std::string inner =
        folder.write("part.xml", with_sections("<MSGS><MSG TYPE='INFO'>\n&nbsp;</MSG></MSGS>"));
    const std::string outer = folder.write(
        "a_info.xml",
        with_sections("<INCLUDE FILE='" + inner + "'/><INCLUDE FILE='" + inner + "'/>"));
    const std::vector<std::string> found = messages_in(run_kivo({"check", outer}).err, inner);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(contains(found[0], "3:1: warning: entity \"nbsp\" is not declared")) << found[0];
}

TEST(Check, what_the_library_says_of_one_file_hides_nothing_in_another) {
    const TemporaryFolder folder;
    const std::string broken = folder.write("broken.xml", "<ROOT><A></B></ROOT>");
    const std::string loose =
        folder.write("loose.xml", with_sections("<RULES><RULE>a && b</RULE></RULES>"));
    const std::string outer = folder.write(
        "a_info.xml",
        with_sections("<INCLUDE FILE='" + broken + "'/><INCLUDE FILE='" + loose + "'/>"));
    const std::string err = run_kivo({"check", outer}).err;
    EXPECT_EQ(messages_in(err, broken).size(), 2U) << err;
    const std::vector<std::string> found = messages_in(err, loose);
    ASSERT_EQ(found.size(), 1U) << err;
    EXPECT_TRUE(contains(found[0], "[xml-raw-ampersand]")) << found[0];
}

TEST(Check, what_the_library_says_is_not_said_twice) {
    const std::vector<std::string> documents = {
        "",
        "<!-- nothing -->",
        "<ROOT>\n<P>\n</ROOT>",
        "<ROOT>\n<P>\n\n\n",
        "<ROOT/>\n\ntext",
        "<ROOT/>\n<ROOT/>",
        "text<ROOT/>",
        "<ROOT A=b/>",
        "<ROOT A='1'B='2'/>",
        "<ROOT>a < b</ROOT>",
        "<ROOT><RULES><RULE ENABLED='ON' REQUIRED_RULE='ON' ENABLED='ON'>a</RULE></RULES></ROOT>",
        std::string("<ROOT>\0</ROOT>", 14),
        "<ROOT",
    };
    for (const std::string& document : documents) {
        const RunResult run = run_kivo({"check", "-"}, {.input = document});
        EXPECT_TRUE(contains(run.err, "error:")) << document << run.err;
        EXPECT_FALSE(contains(run.err, "warning:")) << document << run.err;
    }
}

TEST(Check, another_fault_in_a_file_that_the_library_cannot_read_is_said) {
    const RunResult run = run_kivo({"check", "-"}, {.input = "<ROOT>&\n<P></ROOT>"});
    EXPECT_TRUE(contains(run.err, "[xml-raw-ampersand]")) << run.err;
    EXPECT_TRUE(contains(run.err, "[xml-syntax]")) << run.err;
    EXPECT_EQ(lines_of(run.err).back(), "1 file checked: 2 errors and 1 warning in 1 file");
}

TEST(Check, other_commands_do_not_warn_about_strict_xml) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", "<ROOT>&</ROOT>");
    EXPECT_EQ(run_kivo({"show", path}).err, "");
}

TEST(Check, a_place_in_a_wide_encoding_is_that_of_its_utf_8) {
    std::string document = "\xFF\xFE";
    for (const char letter : std::string_view("<ROOT><!--\xE4--><O/></ROOT>")) {
        document += {letter, '\0'};
    }
    const RunResult run = run_kivo({"check", "-"}, {.input = document});
    EXPECT_EQ(run.err,
              "<stdin>:1:16: error: Main element tag O is not a valid recognized tag "
              "[unknown-section]\n"
              "     1 | <ROOT><!--\xC3\xA4--><O/></ROOT>\n"
              "       |               ^\n"
              "1 file checked: 1 error in 1 file\n");
}

TEST(Check, a_pipe_is_not_waited_for) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "it is not a regular file")) << run.err;
}

TEST(Check, a_file_without_permission_is_named_with_the_reason) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", with_sections(""));
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const RunResult run = run_kivo({"check", path}, {.obeys_permissions = true});
    if (run.status == kCannotGiveUp) {
        GTEST_SKIP() << "the superuser reads every file here";
    }
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "Permission denied")) << run.err;
}

TEST(Check, an_unreadable_file_does_not_stop_the_others) {
    const TemporaryFolder folder;
    const std::string faulty = folder.write("a_info.xml", with_sections("<ODD/>"));
    const RunResult run = run_kivo({"check", folder.path("none"), faulty});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(messages_in(run.err, faulty).size(), 1U) << run.err;
    EXPECT_EQ(lines_of(run.err).back(), "1 file checked: 1 error in 1 file; 1 could not be read");
}

TEST(Check, a_file_may_be_called_like_a_sub_command) {
    const TemporaryFolder folder;
    folder.write("show", with_sections(""));
    const RunResult run = run_kivo({"check", "show"}, {.directory = folder.path("")});
    EXPECT_EQ(run.status, 0) << run.err;
}

// A description with one warning, in a folder of its own.
class CheckWarningTest : public testing::Test {
protected:
    RunResult check(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "check");
        arguments.push_back(path_);
        return run_kivo(arguments);
    }

    TemporaryFolder folder_;
    std::string path_ = folder_.write("a_info.xml", with_sections("<PORTS>clock</PORTS>"));
};

constexpr const char* kWaiver =
    "[[waiver]]\nid = \"unread-text\"\nfile = \"a_info.xml\"\nreason = \"a note\"\n";

TEST_F(CheckWarningTest, what_vanishes_is_a_warning_with_its_place) {
    const RunResult run = check({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, path_ +
                           ":2:8: warning: the text of PORTS is not read [unread-text]\n"
                           "     2 | <PORTS>clock</PORTS>\n"
                           "       |        ^\n"
                           "1 file checked: 1 warning in 1 file\n");
}

TEST_F(CheckWarningTest, warnings_are_switched) {
    EXPECT_EQ(check({"-W", "no-unread-text"}).status, 0);
    EXPECT_EQ(check({"-W", "no-unread-text", "-W", "all"}).status, 1);
    const RunResult run = check({"-W", "error=unread-text"});
    EXPECT_TRUE(contains(run.err, ": error: the text of PORTS is not read [unread-text]"));
    EXPECT_TRUE(contains(run.err, "1 file checked: 1 error in 1 file"));
}

TEST_F(CheckWarningTest, an_unknown_warning_is_wrong_usage) {
    const RunResult run = check({"-W", "no-unread-tex"});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(contains(run.err, "no warning 'unread-tex', perhaps 'unread-text'")) << run.err;
}

TEST_F(CheckWarningTest, the_exit_status_is_that_of_what_the_run_shall_fail_on) {
    EXPECT_EQ(check({"--fail-on", "warning"}).status, 1);
    EXPECT_EQ(check({"--fail-on", "error"}).status, 0);
    EXPECT_EQ(check({"--fail-on", "error", "-W", "error=unread-text"}).status, 1);
    EXPECT_EQ(check({"--fail-on", "never", "-W", "error=unread-text"}).status, 0);
    EXPECT_EQ(check({"--fail-on", "note"}).status, 2);
}

TEST_F(CheckWarningTest, a_waiver_beside_the_description_holds_for_good) {
    folder_.write("kivo.toml", kWaiver);
    const RunResult run = check({});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "1 file checked: no messages\n");
}

TEST_F(CheckWarningTest, settings_can_be_given) {
    const TemporaryFolder elsewhere;
    const std::string settings =
        elsewhere.write("w.toml", "[[waiver]]\nid = \"unread-text\"\nfile = \"" + path_ +
                                      "\"\nreason = \"a note\"\n");
    EXPECT_EQ(check({"--config", settings}).status, 0);
    const RunResult run = check({"--config", elsewhere.path("none.toml")});
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(
        run.err, "cannot read '" + elsewhere.path("none.toml") + "': No such file or directory"))
        << run.err;
}

TEST_F(CheckWarningTest, a_waiver_with_nothing_to_waive_is_told) {
    const std::string settings = folder_.write("kivo.toml", kWaiver);
    folder_.write("a_info.xml", with_sections("<PORTS/>"));
    const RunResult run = check({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, settings),
              std::vector<std::string>({"1:1: warning: nothing to waive: there is no unread-text "
                                        "here [unused-waiver]"}));
    EXPECT_EQ(check({"-W", "no-unused-waiver"}).status, 0);
}

TEST_F(CheckWarningTest, json_and_sarif_tell_them_like_all_others) {
    EXPECT_TRUE(contains(check({"--format", "json"}).out, "\"id\": \"unread-text\""));
    EXPECT_TRUE(contains(check({"--format", "sarif"}).out, "\"ruleId\": \"unread-text\""));
}

}  // namespace
