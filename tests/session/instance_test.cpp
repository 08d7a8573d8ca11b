#include "kivo/session/instance.h"

#include <gtest/gtest.h>

#include "tests/session/fixture.h"

namespace {

using Texts = std::vector<std::string>;

// The instance of a description in one language, with what keeps it from compiling.
struct Written {
    explicit Written(KIVO_HDL_LANGUAGE language) { options.language = language; }

    std::string of(std::string_view sections, const std::vector<KIVO_ASSIGNMENT>& settings = {},
                   const char* map = "") {
        Loaded store(sections);
        store.info.function_name = "CORE";
        KIVO_SESSION session(store.info);
        EXPECT_TRUE(session.select_map(map)) << map;
        EXPECT_EQ(session.set_all(settings), KIVO_SET_RESULT::kDone);
        return kivo_write_instance(session, options, &problems);
    }

    KIVO_INSTANCE_OPTIONS options;
    Texts problems;
};

std::string vhdl(std::string_view sections, const std::vector<KIVO_ASSIGNMENT>& settings = {},
                 const char* map = "") {
    return Written(KIVO_HDL_VHDL).of(sections, settings, map);
}

std::string verilog(std::string_view sections, const std::vector<KIVO_ASSIGNMENT>& settings = {},
                    const char* map = "") {
    return Written(KIVO_HDL_VERILOG).of(sections, settings, map);
}

Texts problems_of(KIVO_HDL_LANGUAGE language, std::string_view sections,
                  const std::vector<KIVO_ASSIGNMENT>& settings = {}) {
    Written written(language);
    written.of(sections, settings);
    return written.problems;
}

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

std::string parameter(const std::string& attributes) {
    return "<PARAMETERS><PARAMETER " + attributes + "/></PARAMETERS>";
}

std::string port(const std::string& attributes) {
    return "<PORTS><PORT " + attributes + "/></PORTS>";
}

constexpr const char* kBlock =
    "<PARAMETERS><PARAMETER NAME='HINT' TYPE='STRING' DEFAULT_VALUE='x' LPM_HINT='ON'/>"
    "<PARAMETER NAME='W' TYPE='INTEGER' DEFAULT_VALUE='3' CNX_TYPE='CONSTANT'/>"
    "<PARAMETER NAME='P' TYPE='STRING' DEFAULT_VALUE='s' CNX_TYPE='PRIVATE'/></PARAMETERS>"
    "<PORTS><PORT NAME='clock' TYPE='INPUT' CNX_TYPE='USED_PORT'/>"
    "<PORT NAME='d' TYPE='INPUT' WIDTH='W'/><PORT NAME='t' TYPE='INPUT' USAGE='CONSTANT' "
    "WIDTH='W + 1' DEFAULT_VALUE='-3'/><PORT NAME='one' TYPE='INPUT' USAGE='CONSTANT'/>"
    "<PORT NAME='u' TYPE='INPUT' USAGE='UNUSED'/><PORT NAME='q' TYPE='OUTPUT' WIDTH='1'/>"
    "<PORT NAME='b' TYPE='BIDIR' USAGE='VARIABLE' WIDTH='W' WIDTH2D='2'/>"
    "<PORT NAME='inside' TYPE='BURIED'/></PORTS>";

constexpr const char* kMaps =
    "<PARAMETERS><PARAMETER NAME='C' TYPE='INTEGER' VALUE='1' CNX_TYPE='CONSTANT'/>"
    "<PARAMETER NAME='F' TYPE='INTEGER' VALUE='2'/></PARAMETERS>"
    "<PORTS><PORT NAME='clock' TYPE='INPUT' CNX_TYPE='USED_PORT'/><PORT NAME='a' TYPE='INPUT'/>"
    "<PORT NAME='b' TYPE='INPUT'/></PORTS>"
    "<WIZARD_DATA><WIZARD_MAP NAME='few' MODULE_NAME='other'><PORT NAME='a' TYPE='INPUT'/>"
    "</WIZARD_MAP><WIZARD_MAP NAME='more' MAP_CONSTANTS='ON' MAP_USED_PORTS='ON'>"
    "<PORT NAME='a' TYPE='INPUT' USAGE='UNUSED'/></WIZARD_MAP></WIZARD_DATA>";

}  // namespace

TEST(Instance, vhdl_maps_what_takes_effect) {
    EXPECT_EQ(vhdl(kBlock, {{"one", "CONSTANT:1"}}),
              "u1 : core\n"
              "  generic map (\n"
              "    W => 3,\n"
              "    HINT => \"x\"  -- hint\n"
              "  )\n"
              "  port map (\n"
              "    clock => clock,\n"
              "    d => d,\n"
              "    t => \"1101\",\n"
              "    one => '1',\n"
              "    q => q,\n"
              "    b => b\n"
              "  );\n");
}

TEST(Instance, verilog_maps_what_takes_effect) {
    EXPECT_EQ(verilog(kBlock, {{"one", "CONSTANT:1"}}),
              "core #(\n"
              "  .W(3),\n"
              "  .HINT(\"x\")  // hint\n"
              ") u1 (\n"
              "  .clock(clock),\n"
              "  .d(d),\n"
              "  .t(4'b1101),\n"
              "  .one(1'b1),\n"
              "  .q(q),\n"
              "  .b(b)\n"
              ");\n");
}

TEST(Instance, a_block_without_anything_is_only_its_name) {
    EXPECT_EQ(vhdl(""), "u1 : core;\n");
    EXPECT_EQ(verilog(""), "core u1 ();\n");
}

TEST(Instance, the_component_declares_types_and_widths_as_numbers) {
    Written written(KIVO_HDL_VHDL);
    written.options.component = true;
    const std::string text = written.of(kBlock, {{"W", "-1"}, {"d", "UNUSED"}, {"b", "UNUSED"}});
    EXPECT_TRUE(contains(text,
                         "component core\n  generic (\n    W : integer;\n"
                         "    HINT : string  -- hint\n  );\n"))
        << text;
    const std::string other = written.of(kBlock);
    EXPECT_TRUE(contains(other, "    W : natural;\n")) << other;
    EXPECT_TRUE(contains(other, "    d : in std_logic_vector(2 downto 0);\n")) << other;
    EXPECT_TRUE(contains(other, "    q : out std_logic_vector(0 downto 0);\n")) << other;
    EXPECT_TRUE(contains(other, "    b : inout std_logic_vector(5 downto 0)\n")) << other;
    EXPECT_TRUE(contains(other, "end component;\n\nu1 : core\n")) << other;
}

TEST(Instance, in_verilog_the_declaration_is_a_module_without_content) {
    Written written(KIVO_HDL_VERILOG);
    written.options.component = true;
    const std::string text = written.of(kBlock);
    EXPECT_EQ(text.substr(0, text.find("endmodule")),
              "module core #(\n"
              "  parameter W = 3,\n"
              "  parameter HINT = \"x\"  // hint\n"
              ") (\n"
              "  input clock,\n"
              "  input [2:0] d,\n"
              "  input [3:0] t,\n"
              "  input one,\n"
              "  output [0:0] q,\n"
              "  inout [5:0] b\n"
              ");\n");
}

TEST(Instance, a_unit_has_a_port_for_each_connected_one_and_the_libraries) {
    Written written(KIVO_HDL_VHDL);
    written.options.unit = true;
    written.options.label = "mine";
    written.options.comment = "from\na file";
    const std::string text = written.of(
        "<FUNCTION_INFORMATION><VHDL_LIBRARY NAME=' lpm.lpm_components ; work.own; alone;;"
        "lpm.pack.all'/></FUNCTION_INFORMATION>" +
        std::string(kBlock));
    EXPECT_EQ(text.substr(0, text.find("architecture")),
              "-- from?a file\n"
              "library ieee;\n"
              "use ieee.std_logic_1164.all;\n"
              "library lpm;\n"
              "use lpm.lpm_components.all;\n"
              "-- use work.own.all;\n"
              "library alone;\n"
              "use lpm.pack.all;\n"
              "\n"
              "entity core_mine is\n"
              "  port (\n"
              "    clock : in std_logic;\n"
              "    d : in std_logic_vector(2 downto 0);\n"
              "    q : out std_logic_vector(0 downto 0);\n"
              "    b : inout std_logic_vector(5 downto 0)\n"
              "  );\n"
              "end entity;\n\n");
}

TEST(Instance, a_unit_names_its_own_ports_beside_label_and_block) {
    const std::string ports =
        "<PORTS><PORT NAME='u1' TYPE='INPUT'/><PORT NAME='CORE' TYPE='INPUT'/></PORTS>";
    Written written(KIVO_HDL_VHDL);
    written.options.unit = true;
    EXPECT_TRUE(contains(written.of(ports), "u1 => u1_port,\n"));
    written.options.language = KIVO_HDL_VERILOG;
    EXPECT_TRUE(contains(written.of(ports), ".u1(u1_port),\n"));
    // Without a unit the signals are the designer's.
    written.options.unit = false;
    EXPECT_TRUE(contains(written.of(ports), ".u1(u1),\n"));
}

TEST(Instance, the_module_is_the_maps_and_a_map_leaves_out_what_it_does_not_map) {
    EXPECT_EQ(vhdl(kMaps, {}, "few"),
              "u1 : other\n  generic map (\n    F => 2\n  )\n  port map (\n    a => a\n  );\n");
    EXPECT_EQ(vhdl(kMaps, {}, "more"),
              "u1 : core\n  generic map (\n    C => 1,\n    F => 2\n  )\n"
              "  port map (\n    clock => clock\n  );\n");
}

TEST(Instance, names_that_a_language_does_not_allow_are_escaped) {
    struct Row {
        const char* name;
        const char* vhdl;
        const char* verilog;
    };
    for (const Row& row : {
             Row{"data", "data", "data"},
             Row{"Signal", "\\Signal\\", "Signal"},
             Row{"reg", "reg", "\\reg "},
             Row{"Reg", "Reg", "Reg"},
             Row{"entity", "\\entity\\", "entity"},
             Row{"integer", "\\integer\\", "\\integer "},
             Row{"logic", "logic", "\\logic "},
             Row{"_a", "\\_a\\", "_a"},
             Row{"a_", "\\a_\\", "a_"},
             Row{"a__b", "\\a__b\\", "a__b"},
             Row{"a$b", "\\a$b\\", "a$b"},
             Row{"7a", "\\7a\\", "\\7a "},
             Row{"a.b", "\\a.b\\", "\\a.b "},
             Row{"a\\b", "\\a\\\\b\\", "\\a\\b "},
         }) {
        const std::string sections = port("NAME='" + std::string(row.name) + "' TYPE='INPUT'");
        EXPECT_TRUE(contains(vhdl(sections), std::string("    ") + row.vhdl + " => "))
            << vhdl(sections);
        EXPECT_TRUE(
            contains(verilog(sections), std::string("  .") + row.verilog + "(" + row.verilog + ")"))
            << verilog(sections);
        EXPECT_EQ(problems_of(KIVO_HDL_VHDL, sections), Texts()) << row.name;
        EXPECT_EQ(problems_of(KIVO_HDL_VERILOG, sections), Texts()) << row.name;
    }
}

TEST(Instance, vhdl_tells_names_apart_that_differ_in_case_alone) {
    const std::string text =
        vhdl(parameter("NAME='WIDTH' TYPE='INTEGER' VALUE='1'") +
             "<PORTS><PORT NAME='width' TYPE='INPUT'/><PORT NAME='a' TYPE='INPUT'/>"
             "<PORT NAME='A' TYPE='INPUT'/></PORTS>");
    EXPECT_TRUE(contains(text, "    WIDTH => 1\n")) << text;
    EXPECT_TRUE(contains(text, "    \\width\\ => width,\n    a => a,\n    \\A\\ => \\A\\\n"))
        << text;
}

TEST(Instance, a_name_that_cannot_be_escaped_is_a_problem) {
    const std::string with_blank = port("NAME='a b' TYPE='INPUT'");
    EXPECT_EQ(problems_of(KIVO_HDL_VHDL, with_blank), Texts());
    EXPECT_EQ(problems_of(KIVO_HDL_VERILOG, with_blank),
              Texts{"the name of a port is none in Verilog: a b"});
    const std::string with_control = port("NAME='a&#1;' TYPE='INPUT'");
    EXPECT_EQ(problems_of(KIVO_HDL_VHDL, with_control).size(), 1U);
    Loaded store("");
    EXPECT_EQ(store.info.function_name, "");
    Texts problems;
    kivo_write_instance(KIVO_SESSION(store.info), {}, &problems);
    EXPECT_EQ(problems, Texts{"the block has no name"});
}

TEST(Instance, texts_are_literals_whatever_they_hold) {
    const std::vector<KIVO_ASSIGNMENT> settings = {{"T", "a\"b\\\n\xE9z"}};
    const std::string sections = parameter("NAME='T' TYPE='STRING' DEFAULT_VALUE='x'");
    EXPECT_TRUE(contains(vhdl(sections, settings),
                         "T => \"a\"\"b\\\" & character'val(10) & character'val(233) & \"z\"\n"));
    EXPECT_TRUE(contains(verilog(sections, settings), ".T(\"a\\\"b\\\\\\012\\351z\")\n"));
    EXPECT_TRUE(contains(vhdl(sections, {{"T", "\n"}}), "T => \"\" & character'val(10)\n"));
    EXPECT_TRUE(contains(vhdl(sections, {{"T", ""}}), "T => \"\"\n"));
}

TEST(Instance, large_numbers_are_sized_in_verilog_and_a_problem_in_vhdl) {
    struct Row {
        const char* value;
        const char* verilog;
        bool is_in_vhdl;
    };
    const std::string sections = parameter("NAME='N' TYPE='INTEGER' VALUE='0'");
    for (const Row& row : {
             Row{"0", "0", true},
             Row{"-5", "-5", true},
             Row{"2147483646", "2147483646", true},
             Row{"2147483647", "32'sd2147483647", true},
             Row{"-2147483647", "-2147483647", true},
             Row{"-2147483648", "-32'sd2147483648", false},
             Row{"2147483648", "33'sd2147483648", false},
             Row{"18446744073709551616", "66'sd18446744073709551616", false},
         }) {
        const std::vector<KIVO_ASSIGNMENT> settings = {{"N", row.value}};
        EXPECT_TRUE(contains(verilog(sections, settings), std::string(".N(") + row.verilog + ")"))
            << verilog(sections, settings);
        EXPECT_EQ(problems_of(KIVO_HDL_VHDL, sections, settings).empty(), row.is_in_vhdl)
            << row.value;
        EXPECT_EQ(problems_of(KIVO_HDL_VERILOG, sections, settings), Texts()) << row.value;
    }
}

TEST(Instance, what_is_not_known_is_left_out_and_told) {
    const std::string sections =
        "<PARAMETERS><PARAMETER NAME='N' TYPE='INTEGER'/></PARAMETERS>"
        "<PORTS><PORT NAME='a' TYPE='INPUT' WIDTH='N'/><PORT NAME='b' TYPE='INPUT'>"
        "<STATE V='USED' IF='N gt 1'/></PORT><PORT NAME='c' TYPE='INPUT' USAGE='CONSTANT' "
        "DEFAULT_VALUE='N'/><PORT NAME='d' TYPE='BIDIR' USAGE='CONSTANT'/>"
        "<PORT NAME='e' TYPE='INPUT' WIDTH='2 ^ 40'/></PORTS>";
    EXPECT_EQ(problems_of(KIVO_HDL_VHDL, sections),
              (Texts{"N has no value", "a has no width", "c is tied to a value that is not known",
                     "d is no input, and only inputs can be tied to a constant",
                     "e is wider than 1048576 bits"}));
}
