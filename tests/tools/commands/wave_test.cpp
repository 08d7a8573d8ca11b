#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/program.h"
#include "tools/text/text_width.h"

namespace {

std::string content_of(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// A description with one vector "w" that holds these elements.
std::string with_wave(const std::string& elements) {
    return with_sections(
        "<FUNCTION_INFORMATION><TIME_SCALE VALUE='ns'/></FUNCTION_INFORMATION>"
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='40' TIME_STEP='10'>" +
        elements + "</WAVE></WAVE_DATA>");
}

RunOptions in_utf8() {
    return {.environment = {{"LC_ALL", "C.UTF-8"}}};
}

std::size_t files_beside(const std::string& path) {
    const auto folder = std::filesystem::path(path).parent_path();
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                  std::filesystem::directory_iterator()));
}

std::string draw(const std::string& elements, const std::vector<std::string>& options = {}) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"wave", folder.write("a_info.xml", with_wave(elements))};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const RunResult run = run_kivo(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return run.out;
}

std::string draw_in_utf8(const std::string& elements) {
    const TemporaryFolder folder;
    const RunResult run =
        run_kivo({"wave", folder.write("a_info.xml", with_wave(elements))}, in_utf8());
    EXPECT_EQ(run.status, 0) << run.err;
    return run.out;
}

// What the program writes for the vector "w" with one output option.
std::string written(const std::string& elements, const std::string& option) {
    const TemporaryFolder folder;
    const std::string out = folder.path("out");
    const RunResult run =
        run_kivo({"wave", folder.write("a_info.xml", with_wave(elements)), "w", option, out});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    return content_of(out);
}

TEST(Wave, draws_levels_values_and_releases) {
    EXPECT_EQ(
        draw("<STIM>force c 0 0,1 10,-r 20</STIM><STIM>force -hex d 0A 10,FF 20,-c 30</STIM>"),
        "w\n"
        "     c  ______/~~~~~\\_____/~~~~~\n"
        "d[7:0]  ......|=0A==|=FF==zzzzzz\n"
        "        +-----------+-----------+\n"
        "    ns  0           20          40\n"
        "        z released   . not driven yet\n");
}

TEST(Wave, draws_in_unicode_under_a_utf_8_locale) {
    const RunResult run = run_kivo({"wave", example("ram_info.xml"), "shared_bus"}, in_utf8());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(has(run.out, "dq[15:0]  ╳══CAFE═══╳═══1234═══╌╌╌╌")) << run.out;
    const RunResult ascii =
        run_kivo({"wave", "--ascii", example("ram_info.xml"), "shared_bus"}, in_utf8());
    EXPECT_TRUE(has(ascii.out, "dq[15:0]  |==CAFE===|===1234===zzzz")) << ascii.out;
}

// The longest line of a drawing, in columns.
std::size_t columns_of(const std::string& drawing) {
    std::size_t columns = 0;
    for (const std::string& line : lines_of(drawing)) {
        columns = std::max(columns, text_width(line));
    }
    return columns;
}

// A clock that changes in each of so many steps of one.
std::string clock_of(int steps) {
    return with_sections("<WAVE_DATA><WAVE NAME='w' MAX_TIME='" + std::to_string(steps) +
                         "'><STIM>force c 0 0,1 1,-r 2</STIM></WAVE></WAVE_DATA>");
}

TEST(Wave, the_drawing_takes_the_columns_there_are) {
    const TemporaryFolder folder;
    for (const int steps : {20, 30, 33, 47, 48, 49, 60, 99, 1000, 12345}) {
        const std::string description = folder.write("a_info.xml", clock_of(steps));
        for (const char* columns : {"40", "76", "99", "100", "131"}) {
            const RunResult run = run_kivo({"wave", description, "--width", columns});
            // The row, in front of the column where the last number of the axis may begin.
            const std::size_t taken = text_width(lines_of(run.out)[1]);
            const std::size_t room = std::stoul(columns) - std::to_string(steps).size();
            EXPECT_EQ(taken, std::min<std::size_t>(room, 3 + 6 * steps)) << steps << run.out;
            EXPECT_LE(columns_of(run.out), std::stoul(columns)) << steps << run.out;
        }
    }
}

TEST(Wave, steps_differ_by_a_column_at_most) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo({"wave", folder.write("a_info.xml", clock_of(36))});
    // 95 columns of 36 steps, two or three each; edges are drawn in the first one.
    std::size_t narrow = 0;
    std::size_t wide = 0;
    std::string row = lines_of(run.out)[1].substr(3);
    for (std::size_t edge = row.find_first_of("/\\"); edge != std::string::npos;) {
        const std::size_t next = row.find_first_of("/\\", edge + 1);
        const std::size_t columns = std::min(next, row.size()) - edge;
        EXPECT_TRUE(columns == 2 || columns == 3) << columns << '\n' << run.out;
        narrow += columns == 2 ? 1 : 0;
        wide += columns == 3 ? 1 : 0;
        edge = next;
    }
    EXPECT_EQ(narrow + wide, 35U);
    EXPECT_GT(narrow, 0U);
    EXPECT_GT(wide, narrow);
}

TEST(Wave, a_step_is_as_long_as_its_value_needs) {
    const std::string drawing =
        draw("<STIM>force d -1234567 0,1 10</STIM><DISPLAY>add wave -signed d</DISPLAY>");
    EXPECT_TRUE(has(drawing, "d[21:0]  |-1234567=|==============1==============\n")) << drawing;
}

TEST(Wave, wide_and_combining_characters_keep_the_rows_aligned) {
    const std::string drawing = draw_in_utf8(
        "<STIM>force \u5E45 0 0,1 20</STIM><STIM>force e\u0301t \u503C 0,x\u0301 20</STIM>"
        "<STIM>force plain 1 0</STIM>");
    EXPECT_EQ(drawing,
              "w\n"
              "   \u5E45  ▁▁▁▁▁▁╱▔▔▔▔▔\n"
              "   e\u0301t  ╳═\u503C══╳══x\u0301══\n"
              "plain  ▔▔▔▔▔▔▔▔▔▔▔▔\n"
              "       ┬───────────\n"
              "   ns  0\n");
}

TEST(Wave, in_ascii_a_character_of_another_set_is_one_mark) {
    const std::string drawing = draw("<STIM>force \u5E45e\u0301 0 0</STIM>");
    EXPECT_TRUE(has(drawing, "??  ")) << drawing;
    EXPECT_FALSE(has(drawing, "???")) << drawing;
}

TEST(Wave, a_long_name_is_cut_by_its_columns) {
    std::string name;
    for (int i = 0; i < 20; ++i) {
        name += "\u5E45";
    }
    const std::string row = lines_of(draw_in_utf8("<STIM>force " + name + " 0 0</STIM>"))[1];
    EXPECT_EQ(row.substr(0, row.find("  ")), name.substr(0, 13 * 3) + "…");
}

// Two signals that change every four units, which is less than their values need.
std::string cramped(const std::string& cut_end, int max_time) {
    return with_sections("<WAVE_DATA><WAVE NAME='w' MAX_TIME='" + std::to_string(max_time) +
                         "' DISPLAY_TRUNCATION='" + cut_end +
                         "'><STIM>force -hex h CAFE 0,BEEF 4,-r 8</STIM>"
                         "<STIM>force s -128 0,64 4,-r 8</STIM><STIM>force t 0 0,1 1</STIM>"
                         "<DISPLAY>add wave -signed s</DISPLAY></WAVE></WAVE_DATA>");
}

TEST(Wave, a_value_is_cut_where_no_wrong_number_can_be_read) {
    const TemporaryFolder folder;
    const auto rows = [&](const char* cut_end) {
        // A column for each unit.
        const RunResult run =
            run_kivo({"wave", folder.write("a_info.xml", cramped(cut_end, 32)), "--width", "43"});
        EXPECT_EQ(run.status, 0) << run.err;
        return lines_of(run.out);
    };
    EXPECT_EQ(rows("HIGH")[1], "h[15:0]  |~FE|~EF|~FE|~EF|~FE|~EF|~FE|~EF");
    EXPECT_EQ(rows("LOW")[1], "h[15:0]  |CA~|BE~|CA~|BE~|CA~|BE~|CA~|BE~");
    EXPECT_EQ(rows("HIGH")[2], " s[7:0]  |=~=|64=|=~=|64=|=~=|64=|=~=|64=");
    EXPECT_EQ(rows("LOW")[2], " s[7:0]  |=~=|64=|=~=|64=|=~=|64=|=~=|64=");
}

TEST(Wave, a_picture_cuts_values_as_a_terminal_does) {
    const TemporaryFolder folder;
    const std::string out = folder.path("a.svg");
    const auto values = [&](const char* cut_end) {
        const RunResult run = run_kivo(
            {"wave", folder.write("a_info.xml", cramped(cut_end, 200)), "w", "--svg", out});
        EXPECT_EQ(run.status, 0) << run.err;
        pugi::xml_document document;
        EXPECT_TRUE(document.load_string(content_of(out).c_str()));
        std::set<std::string> texts;
        for (const pugi::xpath_node& text : document.select_nodes("//text[@class='value']")) {
            texts.insert(text.node().child_value());
        }
        return texts;
    };
    EXPECT_EQ(values("HIGH"), (std::set<std::string>{"…FE", "…EF", "…", "64"}));
    EXPECT_EQ(values("LOW"), (std::set<std::string>{"CA…", "BE…", "…", "64"}));
}

// Numbers within the format, one beyond it, one that is no integer, and no number at all.
constexpr const char* kFixedPointValues =
    "<STIM>force f 5 0,1000 10,3.14159 20</STIM><STIM>force -hex g 7F 0,FFF 10,-c 20</STIM>"
    "<STIM>force -bin z zzzz 0</STIM><DISPLAY>add wave -fixed_point(s4.4) f</DISPLAY>"
    "<DISPLAY>add wave -fixed_point(s4.4) g</DISPLAY>"
    "<DISPLAY>add wave -fixed_point(s4.4) z</DISPLAY>";
const std::string kFixedPointNotes[] = {
    "values of signal 'f' that the fixed-point format s4.4 cannot show are shown as written: "
    "'1000', '3.14159'",
    "values of signal 'g' that the fixed-point format s4.4 cannot show are shown as written: "
    "'0b111111111111'"};

TEST(Wave, a_value_that_its_fixed_point_format_cannot_show_is_told) {
    const TemporaryFolder folder;
    const std::string description = folder.write("a_info.xml", with_wave(kFixedPointValues));
    const RunResult run = run_kivo({"wave", description});
    EXPECT_TRUE(has(run.out, "=0.3125=")) << run.out;
    EXPECT_TRUE(has(run.out, "=7.9375=")) << run.out;
    const std::vector<std::string> told = lines_of(run.err);
    ASSERT_EQ(told.size(), 5U) << run.err;
    EXPECT_EQ(told[0], "kivo: note: " + kFixedPointNotes[0]);
    EXPECT_EQ(told[1], "kivo: note: " + kFixedPointNotes[1]);
    EXPECT_EQ(told[2],
              description + ":2:151: warning: \"3.14159\" is no decimal number [stimulus-value]");
}

// A value that is too wide, a command that is none, and one of a vector that is not drawn.
const std::string kWithWarnings = with_sections(
    "<PORTS><PORT NAME='d' TYPE='INPUT' WIDTH='4'/></PORTS><WAVE_DATA><WAVE NAME='w'>\n"
    "<STIM>force d 16 0</STIM>\n<STIM>frce d 1 10</STIM></WAVE>\n"
    "<WAVE NAME='v'><STIM>force d 1</STIM></WAVE></WAVE_DATA>");

TEST(Wave, what_is_warned_of_a_vector_is_said_in_the_words_of_the_check) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", kWithWarnings);
    std::vector<std::string> expected = messages_in(run_kivo({"check", path}).err, path);
    ASSERT_EQ(expected.size(), 3U);
    const RunResult all = run_kivo({"wave", path});
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(messages_in(all.err, path), expected);
    expected.pop_back();
    EXPECT_EQ(messages_in(run_kivo({"wave", path, "w"}).err, path), expected);
    EXPECT_EQ(expected[0],
              "3:15: warning: \"16\" does not fit into the 4 bits of port \"d\" [stimulus-value]");
    folder.write("kivo.toml",
                 "[[waiver]]\nid = 'stimulus-value'\nfile = 'a_info.xml'\n"
                 "reason = 'it wraps around'\n");
    expected.erase(expected.begin());
    EXPECT_EQ(messages_in(run_kivo({"wave", path, "w"}).err, path), expected);
}

TEST(Wave, warnings_are_switched_and_waived_as_in_the_check) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", kWithWarnings);
    const auto told = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"wave", path, "w"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run_kivo(arguments);
    };
    EXPECT_EQ(messages_in(told({}).err, path).size(), 2U);
    EXPECT_EQ(messages_in(told({"-W", "no-stimulus-value"}).err, path).size(), 1U);
    const RunResult strict = told({"-W", "error=stimulus-value"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_TRUE(has(strict.err, ":3:15: error: \"16\" does not fit")) << strict.err;
    EXPECT_EQ(told({"-W", "no-such"}).status, 2);
    const std::string settings = folder.write("w.toml",
                                              "[[waiver]]\nid = 'stimulus-command'\n"
                                              "file = 'a_info.xml'\nreason = 'later'\n");
    EXPECT_EQ(messages_in(told({"--config", settings}).err, path).size(), 1U);
    const RunResult missing = told({"--config", folder.path("none.toml")});
    EXPECT_EQ(missing.status, 3);
    EXPECT_TRUE(has(missing.err, "cannot read '" + folder.path("none.toml") + "'")) << missing.err;
}

// The default of a parameter in those waves alone that apply with it.
TEST(Wave, the_default_width_is_that_of_waves_that_apply_by_default) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml",
        with_sections("<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'/></PARAMETERS>"
                      "<HIDDEN_PARAMETERS><PARAMETER NAME='B' VALUE='2 * W'/></HIDDEN_PARAMETERS>"
                      "<PORTS><PORT NAME='d' TYPE='INPUT' WIDTH='W'/><PORT NAME='e' TYPE='INPUT' "
                      "WIDTH='B'/></PORTS><WAVE_DATA><WAVE NAME='narrow'><STIM>force d 1 0</STIM>"
                      "<STIM>force e 1 0</STIM></WAVE><WAVE NAME='wide'><WAVE_CONDITION>W == 8"
                      "</WAVE_CONDITION><STIM>force -hex d 7F 0</STIM></WAVE></WAVE_DATA>"));
    const RunResult narrow = run_kivo({"wave", path, "narrow"});
    EXPECT_TRUE(has(narrow.out, "d[3:0]")) << narrow.out;
    EXPECT_TRUE(has(narrow.out, "e[7:0]")) << narrow.out;
    const RunResult wide = run_kivo({"wave", path, "wide"});
    EXPECT_TRUE(has(wide.out, "7F")) << wide.out;
    EXPECT_FALSE(has(wide.out, "d[3:0]")) << wide.out;
    EXPECT_EQ(wide.err, "");
}

TEST(Wave, a_picture_tells_the_warnings_of_its_vector) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", kWithWarnings);
    const std::string svg = folder.path("a.svg");
    EXPECT_EQ(run_kivo({"wave", path, "w", "--svg", svg}).status, 0);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(content_of(svg).c_str()));
    const std::string told = document.child("svg").child_value("desc");
    EXPECT_TRUE(has(told,
                    "Note: a_info.xml:3:15: \"16\" does not fit into the 4 bits of port "
                    "\"d\"."))
        << told;
    EXPECT_TRUE(has(told,
                    "Note: a_info.xml:4:7: \"frce\" is no \"force\": the command is not "
                    "evaluated."))
        << told;
    EXPECT_FALSE(has(told, "has no time")) << told;
}

TEST(Wave, of_many_warnings_a_picture_tells_the_first) {
    const TemporaryFolder folder;
    std::string commands;
    for (int number = 0; number < 30; ++number) {
        commands += "<STIM>force d 1</STIM>";
    }
    const std::string svg = folder.path("a.svg");
    run_kivo({"wave", folder.write("a_info.xml", with_wave(commands)), "w", "--svg", svg});
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(content_of(svg).c_str()));
    const std::string told = document.child("svg").child_value("desc");
    EXPECT_TRUE(has(told, "Note: 'kivo check' warns of 10 more.")) << told;
}

TEST(Wave, a_picture_is_as_wide_as_its_values_need) {
    const auto texts_of = [](const std::string& option_value) {
        const std::string svg = written("<STIM>force -signed d " + option_value +
                                            " 0,1 10</STIM><STIM>force c 0 0,1 10,-r 20</STIM>"
                                            "<DISPLAY>add wave -signed d</DISPLAY>",
                                        "--svg");
        pugi::xml_document document;
        EXPECT_TRUE(document.load_string(svg.c_str())) << svg;
        return std::string(document.select_node("//text[@class='value']").node().child_value());
    };
    const std::string number = "-1234567890123456789012345678901234567890";
    EXPECT_EQ(texts_of(number), number);
    // There is an end to it.
    EXPECT_EQ(texts_of(number + number.substr(1) + number.substr(1)), "…");
}

TEST(Wave, a_picture_tells_its_notes_in_the_same_words) {
    const std::string svg = written(kFixedPointValues, "--svg");
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(svg.c_str())) << svg;
    const pugi::xml_node root = document.child("svg");
    std::string shown;
    double lowest = 0;
    for (const pugi::xml_node text : root.children("text")) {
        const std::string line = text.child_value();
        shown += (shown.empty() ? "" : " ") + line;
        lowest = std::max(lowest, text.attribute("y").as_double());
        EXPECT_LE(20 + 7.25 * static_cast<double>(text_width(line)),
                  root.attribute("width").as_double());
    }
    EXPECT_LT(lowest, root.attribute("height").as_double());
    for (const std::string& note : kFixedPointNotes) {
        EXPECT_TRUE(has(shown, "Note: " + note + ".")) << svg;
        EXPECT_TRUE(has(root.child_value("desc"), "Note: " + note + ".")) << svg;
    }
}

TEST(Wave, of_many_values_that_a_format_cannot_show_the_first_are_named) {
    const TemporaryFolder folder;
    const std::string description = folder.write(
        "a_info.xml", with_wave("<STIM>force -unsigned f 500 0,501 1,502 2,503 3,504 4</STIM>"
                                "<DISPLAY>add wave -fixed_point(4.0) f</DISPLAY>"));
    EXPECT_EQ(run_kivo({"wave", description}).err,
              "kivo: note: values of signal 'f' that the fixed-point format 4.0 cannot show are "
              "shown as written: '500', '501', '502' and 2 more\n");
}

TEST(Wave, a_number_that_its_fixed_point_format_shows_unchanged_is_no_matter) {
    const TemporaryFolder folder;
    const std::string description =
        folder.write("a_info.xml", with_wave("<STIM>force f 5 0,-5 10,0 20,-0 30</STIM>"
                                             "<DISPLAY>add wave -fixed_point(s4.0) f</DISPLAY>"));
    EXPECT_EQ(run_kivo({"wave", description}).err, "");
}

TEST(Wave, without_a_vector_draws_all_of_them) {
    const RunResult run = run_kivo({"wave", example("fifo_info.xml")});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_LT(run.out.find("fill_and_drain - "), run.out.find("streaming - "));
    EXPECT_TRUE(has(run.out, "overflow"));
}

TEST(Wave, a_file_needs_one_vector) {
    const TemporaryFolder folder;
    const std::string out = folder.path("out.svg");
    const RunResult run = run_kivo({"wave", example("fifo_info.xml"), "--svg", out});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(has(run.err, "'fill_and_drain', 'streaming', 'overflow'")) << run.err;
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST(Wave, an_unknown_vector_is_answered_with_the_known_ones) {
    const RunResult run = run_kivo({"wave", example("fifo_info.xml"), "fill"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.err, "no vector 'fill'; the vectors are: 'fill_and_drain'")) << run.err;
}

constexpr const char* kConditional =
    "<STIM>force a 0 0</STIM><IF>MODE == 1</IF><THEN><STIM>force d 5 0</STIM></THEN>"
    "<ELSE><STIM>force d 7 0</STIM></ELSE>";

TEST(Wave, the_then_part_counts_unless_else_names_the_condition) {
    EXPECT_TRUE(has(draw(kConditional), "=5=")) << draw(kConditional);
    const std::string otherwise = draw(kConditional, {"--else", "MODE == 1"});
    EXPECT_TRUE(has(otherwise, "=7=")) << otherwise;
}

TEST(Wave, an_unknown_condition_is_answered_with_the_known_ones) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo(
        {"wave", folder.write("a_info.xml", with_wave(kConditional)), "--else", "MODE == 2"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.err, "the conditions are: 'MODE == 1'")) << run.err;
}

TEST(Wave, of_several_commands_of_a_signal_the_last_goes_first) {
    const std::string vcd =
        written("<STIM>force a 1 0,0 10,1 20</STIM><STIM>force a 0 20,1 30</STIM>", "--vcd");
    EXPECT_TRUE(has(vcd, "$dumpvars\n1!\n$end\n#10\n0!\n#30\n1!\n#40\n")) << vcd;
}

TEST(Wave, dump_has_widths_releases_and_undriven_signals) {
    EXPECT_EQ(written("<STIM>force c 0 0,1 10,-r 20</STIM>"
                      "<STIM>force -hex d 0A 10,FF 20,-c 30</STIM>",
                      "--vcd"),
              "$version kivo $end\n$timescale 1 ns $end\n$scope module w $end\n"
              "$var wire 1 ! c $end\n$var wire 8 \" d [7:0] $end\n$upscope $end\n"
              "$enddefinitions $end\n#0\n$dumpvars\n0!\nbxxxxxxxx \"\n$end\n"
              "#10\n1!\nb00001010 \"\n#20\n0!\nb11111111 \"\n#30\n1!\nbzzzzzzzz \"\n"
              "#40\n0!\n");
}

// The values of a dump by time and name, whatever codes and order it uses.
std::vector<std::string> changes_of(const std::string& dump) {
    std::vector<std::string> changes;
    std::map<std::string, std::string> names;
    std::string time;
    for (const std::string& line : lines_of(dump)) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "$var") {
            std::string kind;
            std::string width;
            std::string code;
            std::string name;
            words >> kind >> width >> code >> name;
            names[code] = name + ':' + width;
        } else if (word.rfind('#', 0) == 0) {
            time = word;
        } else if (word.rfind('b', 0) == 0) {
            std::string code;
            words >> code;
            changes.push_back(time + ' ' + names[code] + ' ' + word.substr(1));
        } else if (!time.empty() && !word.empty() && word.front() != '$') {
            changes.push_back(time + ' ' + names[word.substr(1)] + ' ' + word.front());
        }
    }
    std::sort(changes.begin(), changes.end());
    return changes;
}

void expect_round_trip(const std::string& description, const std::string& vector) {
    const TemporaryFolder folder;
    const std::string dump = folder.path("a.vcd");
    const RunResult run = run_kivo({"wave", description, vector, "--vcd", dump});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string convert = "vcd2fst '" + dump + "' '" + folder.path("a.fst") +
                                "' >/dev/null 2>&1 && fst2vcd '" + folder.path("a.fst") + "' -o '" +
                                folder.path("b.vcd") + "' >/dev/null 2>&1";
    ASSERT_EQ(std::system(convert.c_str()), 0) << convert;
    const std::vector<std::string> changes = changes_of(content_of(dump));
    EXPECT_FALSE(changes.empty());
    EXPECT_EQ(changes_of(content_of(folder.path("b.vcd"))), changes) << vector;
}

TEST(Wave, other_programs_read_the_dump) {
    expect_round_trip(example("fifo_info.xml"), "fill_and_drain");
    expect_round_trip(example("ram_info.xml"), "shared_bus");
    expect_round_trip(example("ram_info.xml"), "write_then_read");
    expect_round_trip(example("counter_info.xml"), "signed_offset");
}

TEST(Wave, save_file_carries_the_display_formats) {
    const TemporaryFolder folder;
    const std::string description = folder.write(
        "a_info.xml",
        with_wave("<STIM>force -hex u 0A 0</STIM><STIM>force -hex s 0A 0</STIM>"
                  "<STIM>force -hex f 0A 0</STIM><STIM>force -hex h 0A 0</STIM>"
                  "<DISPLAY>add wave -unsigned u</DISPLAY><DISPLAY>add wave -signed s</DISPLAY>"
                  "<DISPLAY>add wave -fixed_point(s4.4) f</DISPLAY>"));
    const RunResult run = run_kivo(
        {"wave", description, "w", "--vcd", folder.path("a.vcd"), "--gtkw", folder.path("a.gtkw")});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string saved = content_of(folder.path("a.gtkw"));
    EXPECT_TRUE(has(saved, "[dumpfile] \"" + folder.path("a.vcd") + "\"\n")) << saved;
    EXPECT_TRUE(has(saved,
                    "@24\nw.u[7:0]\n@420\nw.s[7:0]\n[fpshift_count] 4\n@40000420\n"
                    "w.f[7:0]\n@22\nw.h[7:0]\n"))
        << saved;
}

TEST(Wave, save_file_needs_a_dump) {
    const TemporaryFolder folder;
    const RunResult run =
        run_kivo({"wave", example("ram_info.xml"), "shared_bus", "--gtkw", folder.path("a.gtkw")});
    EXPECT_EQ(run.status, 2);
}

TEST(Wave, wave_json_is_strict) {
    const std::string text =
        written("<STIM>force c 0 0,1 10,-r 20</STIM><STIM>force -hex d 0A 10,FF 20,-c 30</STIM>",
                "--wavejson");
    const auto json = nlohmann::json::parse(text);
    ASSERT_EQ(json["signal"].size(), 2U) << text;
    EXPECT_EQ(json["signal"][0]["name"], "c");
    EXPECT_EQ(json["signal"][0]["wave"], "0101");
    EXPECT_EQ(json["signal"][1]["name"], "d[7:0]");
    EXPECT_EQ(json["signal"][1]["wave"], "x==z");
    EXPECT_EQ(json["signal"][1]["data"], (std::vector<std::string>{"0A", "FF"}));
    EXPECT_EQ(json["head"]["text"], "w");
    EXPECT_EQ(json["foot"]["text"], "from 0 ns to 40 ns in steps of 10 ns");
}

TEST(Wave, svg_has_a_title_text_and_no_reference_to_anything_else) {
    const std::string svg =
        written("<CAPTION>A bus</CAPTION><STIM>force -hex d CAFE 0</STIM>", "--svg");
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(svg.c_str())) << svg;
    const pugi::xml_node root = document.child("svg");
    EXPECT_STREQ(root.attribute("role").value(), "img");
    EXPECT_STREQ(root.child_value("title"), "w: A bus");
    EXPECT_TRUE(has(root.child_value("desc"), "d[15:0]: CAFE at 0."));
    EXPECT_TRUE(has(svg, "prefers-color-scheme: dark"));
    EXPECT_TRUE(has(svg, ">CAFE</text>")) << svg;
    EXPECT_FALSE(has(svg, "href")) << svg;
}

// Markup, escape sequences and what closes things, in every name and text.
const std::string kHostileText = "&lt;/title&gt;&lt;script&gt;\"' &amp; $end \\ &#x9b;31m\xFF";

std::string hostile_description() {
    const std::string signal = "&lt;s&gt;&amp;\"'$end&#x9;&#x85;\xFE";
    return with_sections(
        "<FUNCTION_INFORMATION><TIME_SCALE VALUE='&lt;n&gt; &#x9b;$end'/>"
        "</FUNCTION_INFORMATION><WAVE_DATA><WAVE NAME='&lt;w&gt; $end &#x85;'>"
        "<CAPTION>" +
        kHostileText + "</CAPTION><WAVE_CONDITION>" + kHostileText +
        "</WAVE_CONDITION><STIM>force " + signal +
        " &lt;v&gt;&amp;\"&#x85; 0,1 5</STIM><STIM>force $end 1 0</STIM>"
        "</WAVE></WAVE_DATA>");
}

void expect_harmless(const std::string& text) {
    for (const char letter : text) {
        EXPECT_TRUE(letter == '\n' || static_cast<unsigned char>(letter) >= ' ') << text;
    }
    // C1 control characters, as UTF-8.
    EXPECT_FALSE(has(text, "\xC2\x85")) << text;
    EXPECT_FALSE(has(text, "\xC2\x9B")) << text;
    EXPECT_FALSE(has(text, "\xFF")) << text;
    EXPECT_FALSE(has(text, "\xFE")) << text;
}

// The signals of a dump, as a save file names them.
std::vector<std::string> signals_of(const std::string& dump) {
    std::vector<std::string> signals;
    std::string scope;
    for (const std::string& line : lines_of(dump)) {
        std::istringstream stream(line);
        const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
        if (words[0] == "$scope") {
            scope = words[2];
        } else if (words[0] == "$var") {
            signals.push_back(scope + "." + words[4] + (words.size() > 6 ? words[5] : ""));
        }
    }
    return signals;
}

TEST(Wave, texts_of_the_description_cannot_break_out) {
    const TemporaryFolder folder;
    const std::string description = folder.write("a_info.xml", hostile_description());
    const RunResult drawn = run_kivo({"wave", description}, in_utf8());
    EXPECT_EQ(drawn.status, 0) << drawn.err;
    expect_harmless(drawn.out);
    expect_harmless(drawn.err);

    const RunResult run =
        run_kivo({"wave", description, "--svg", folder.path("a.svg"), "--vcd", folder.path("a.vcd"),
                  "--gtkw", folder.path("a.gtkw"), "--wavejson", folder.path("a.json")});
    ASSERT_EQ(run.status, 0) << run.err;

    const std::string svg = content_of(folder.path("a.svg"));
    expect_harmless(svg);
    EXPECT_FALSE(has(svg, "<script")) << svg;
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(svg.c_str())) << svg;

    const std::string vcd = content_of(folder.path("a.vcd"));
    expect_harmless(vcd);
    for (const std::string& line : lines_of(vcd)) {
        const std::size_t closed = line.find(" $end");
        EXPECT_TRUE(closed == std::string::npos || closed + 5 == line.size()) << line;
    }
    expect_round_trip(description, "<w> $end \xC2\x85");

    const std::string saved = content_of(folder.path("a.gtkw"));
    expect_harmless(saved);
    std::vector<std::string> names;
    for (const std::string& line : lines_of(saved)) {
        if (line.front() != '[' && line.front() != '@') {
            names.push_back(line);
        }
    }
    EXPECT_EQ(names, signals_of(vcd)) << saved;
    EXPECT_EQ(names.size(), 2U);

    const std::string wavejson = content_of(folder.path("a.json"));
    expect_harmless(wavejson);
    const auto json = nlohmann::json::parse(wavejson, nullptr, false);
    ASSERT_EQ(json["signal"].size(), 2U) << wavejson;
    EXPECT_EQ(json["signal"][0]["name"], "<s>&\"'$end\t\u0085\uFFFD");
    EXPECT_EQ(json["signal"][0]["data"][0], "<v>&\"\u0085");
    EXPECT_TRUE(has(json["head"]["text"], "</title><script>\"' & $end \\ \u009B31m\uFFFD"));
}

TEST(Wave, a_file_that_cannot_be_written_leaves_nothing_behind) {
    const TemporaryFolder folder;
    const std::string description =
        folder.write("a_info.xml", with_wave("<STIM>force a 1 0</STIM>"));
    for (const std::string option : {"--svg", "--vcd", "--wavejson"}) {
        const RunResult missing =
            run_kivo({"wave", description, "w", option, folder.path("no/such/out")});
        EXPECT_EQ(missing.status, 3) << option;
        EXPECT_TRUE(has(missing.err, "No such file or directory")) << missing.err;
        const RunResult full = run_kivo({"wave", description, "w", option, "/dev/full"});
        EXPECT_EQ(full.status, 3) << option;
        EXPECT_TRUE(has(full.err, "No space left on device")) << full.err;
    }
    EXPECT_EQ(files_beside(description), 1U);
    std::filesystem::create_directory(folder.path("taken"));
    EXPECT_EQ(run_kivo({"wave", description, "w", "--svg", folder.path("taken")}).status, 3);
    EXPECT_EQ(files_beside(description), 2U);
}

TEST(Wave, a_million_steps_are_drawn_at_once) {
    const TemporaryFolder folder;
    const std::string description = folder.write(
        "a_info.xml", with_sections("<WAVE_DATA><WAVE NAME='w' MAX_TIME='1000000'>"
                                    "<STIM>force c 0 0,1 10,-r 20</STIM></WAVE></WAVE_DATA>"));
    const RunResult run = run_kivo({"wave", description});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(has(run.out, "c  ####")) << run.out;
}

std::string with_wide_port(const std::string& command, const std::string& max_time) {
    return with_sections(
        "<PORTS><PORT NAME='d' TYPE='INPUT' WIDTH='65536'/></PORTS>"
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='" +
        max_time + "'><STIM>" + command + "</STIM></WAVE></WAVE_DATA>");
}

TEST(Wave, a_very_wide_port_of_many_values_is_as_wide_as_the_values) {
    const TemporaryFolder folder;
    std::string command = "force d 0 0";
    for (int value = 1; value < 2000; ++value) {
        command += "," + std::to_string(value) + " " + std::to_string(value);
    }
    const std::string dump = folder.path("a.vcd");
    const RunResult run = run_kivo(
        {"wave", folder.write("a_info.xml", with_wide_port(command, "2000")), "w", "--vcd", dump});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err,
              "kivo: note: signal 'd' is taken as 11 bits wide, which its values need, not as "
              "65536\n");
    EXPECT_TRUE(has(content_of(dump), "$var wire 11 ! d [10:0] $end\n"));
    EXPECT_LT(std::filesystem::file_size(dump), 100'000U);
}

TEST(Wave, a_dump_that_would_fill_a_disk_is_refused) {
    const TemporaryFolder folder;
    const std::string dump = folder.path("a.vcd");
    const RunResult run = run_kivo(
        {"wave", folder.write("a_info.xml", with_wide_port("force d 0 0,1 1,-r 2", "1000000")), "w",
         "--vcd", dump});
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(has(run.err, "the values of vector 'w' are too wide and change too often"))
        << run.err;
    EXPECT_EQ(files_beside(dump), 1U);
}

TEST(Wave, a_tiny_period_is_bounded_and_says_so) {
    const TemporaryFolder folder;
    const std::string description = folder.write(
        "a_info.xml", with_sections("<WAVE_DATA><WAVE NAME='w' MAX_TIME='2000000000'>"
                                    "<STIM>force c 0 0,1 1,-r 2</STIM></WAVE></WAVE_DATA>"));
    const RunResult run = run_kivo({"wave", description});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(has(run.err, "only those up to 3999999 of 2000000000 are taken")) << run.err;
}

TEST(Wave, many_vectors_of_many_transitions_are_bounded_together) {
    const TemporaryFolder folder;
    std::string waves;
    for (int number = 0; number < 100; ++number) {
        waves += "<WAVE NAME='w" + std::to_string(number) +
                 "' MAX_TIME='2000000000'><STIM>force c 0 0,1 1,-r 2</STIM></WAVE>";
    }
    const std::string description =
        folder.write("a_info.xml", with_sections("<WAVE_DATA>" + waves + "</WAVE_DATA>"));
    const RunResult run = run_kivo({"wave", description});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(has(run.out, "w3\n")) << run.out;
    EXPECT_FALSE(has(run.out, "w4\n")) << run.out;
    EXPECT_TRUE(has(run.err, "the last 96 of 100 vectors are left out")) << run.err;
}

TEST(Wave, no_output_replaces_the_description) {
    const TemporaryFolder folder;
    const std::string content = with_wave("<STIM>force a 1 0</STIM>");
    const std::string description = folder.write("a_info.xml", content);
    std::filesystem::create_symlink("a_info.xml", folder.path("link"));
    for (const std::string option : {"--svg", "--vcd", "--wavejson"}) {
        for (const std::string& output : {description, folder.path("link")}) {
            const RunResult run = run_kivo({"wave", description, "w", option, output});
            EXPECT_EQ(run.status, 2) << option;
            EXPECT_EQ(run.err,
                      "kivo: error: '" + output + "' is the description; name another output\n");
        }
    }
    EXPECT_EQ(content_of(description), content);
}

TEST(Wave, two_outputs_need_two_files) {
    const TemporaryFolder folder;
    const std::string description =
        folder.write("a_info.xml", with_wave("<STIM>force a 1 0</STIM>"));
    const std::string other = folder.path("./out");
    const RunResult run =
        run_kivo({"wave", description, "w", "--svg", folder.path("out"), "--vcd", other});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(has(run.err, "'" + other + "' is the file of two outputs")) << run.err;
    EXPECT_EQ(files_beside(description), 1U);
    EXPECT_EQ(
        run_kivo({"wave", description, "w", "--svg", "/dev/null", "--vcd", "/dev/null"}).status, 0);
}

TEST(Wave, an_output_needs_a_name) {
    for (const std::string option : {"--svg", "--vcd", "--wavejson"}) {
        const RunResult run = run_kivo({"wave", example("fifo_info.xml"), option, ""});
        EXPECT_EQ(run.status, 2) << option;
        EXPECT_EQ(run.out, "");
        EXPECT_TRUE(has(run.err, option + ": the name of a file is missing")) << run.err;
    }
}

// Of a description in which MODE decides: the vector, its command and the width of d.
std::string with_mode(const std::string& elements) {
    return with_sections(
        "<PARAMETERS><PARAMETER NAME='MODE' TYPE='INTEGER' VALUE='1'/></PARAMETERS>"
        "<PORTS><PORT NAME='a' TYPE='INPUT'/><PORT NAME='d' TYPE='INPUT' WIDTH='MODE * 8'/>"
        "<PORT NAME='e' TYPE='INPUT'/><PORT NAME='q' TYPE='OUTPUT'/></PORTS>"
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='40' TIME_STEP='10'>" +
        elements +
        "</WAVE><WAVE NAME='v' MAX_TIME='40' TIME_STEP='10'>"
        "<WAVE_CONDITION>MODE == 2</WAVE_CONDITION><STIM>force e 1 0</STIM></WAVE></WAVE_DATA>");
}

RunResult draw_mode(const std::string& elements, const std::vector<std::string>& words) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"wave", folder.write("a_info.xml", with_mode(elements))};
    arguments.insert(arguments.end(), words.begin(), words.end());
    return run_kivo(arguments);
}

TEST(Wave, settings_decide_conditions_and_widths) {
    const RunResult first = draw_mode(kConditional, {"w", "MODE=1"});
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_TRUE(has(first.out, "d[7:0]")) << first.out;
    EXPECT_TRUE(has(first.out, "=5=")) << first.out;
    const RunResult second = draw_mode(kConditional, {"w", "MODE=3"});
    EXPECT_TRUE(has(second.out, "d[23:0]")) << second.out;
    EXPECT_TRUE(has(second.out, "=7=")) << second.out;
    EXPECT_EQ(second.err, "");
}

TEST(Wave, only_the_vectors_that_apply_are_drawn) {
    EXPECT_FALSE(has(draw_mode(kConditional, {"MODE=1"}).out, "applies if MODE == 2"));
    EXPECT_TRUE(has(draw_mode(kConditional, {"MODE=2"}).out, "applies if MODE == 2"));
    EXPECT_TRUE(has(draw_mode(kConditional, {}).out, "applies if MODE == 2"));
    const RunResult run = draw_mode(kConditional, {"v", "MODE=1"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivo: error: vector 'v' does not apply to this configuration\n");
}

TEST(Wave, a_condition_that_is_not_decided_is_noted) {
    const RunResult run = draw_mode(
        "<IF>q == 1</IF><THEN><STIM>force d 5 0</STIM></THEN><ELSE><STIM>force d 7 0</STIM></ELSE>",
        {"w", "MODE=1"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(has(run.out, "=5=")) << run.out;
    EXPECT_EQ(run.err,
              "kivo: note: whether 'q == 1' holds is not decided: its THEN part is drawn\n");
}

TEST(Wave, settings_that_are_wrong_or_not_legal_are_told) {
    EXPECT_EQ(draw_mode(kConditional, {"MOD=1"}).status, 2);
    EXPECT_EQ(draw_mode(kConditional, {"MODE=1", "--else", "MODE == 1"}).status, 2);
    const RunResult run = draw_mode(kConditional, {"w", "MODE=0"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              "kivo: note: the configuration is not legal: 1 error; 'kivo configure' tells more\n");
    EXPECT_TRUE(has(run.out, "=7=")) << run.out;
}

}  // namespace
