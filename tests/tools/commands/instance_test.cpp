#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

using Words = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

RunResult instance(const std::string& name, Words words) {
    words.insert(words.begin(), {"instance", example(name + "_info.xml")});
    return run_kivo(words);
}

void expect_refused(const std::string& name, const Words& words, const std::string& reason) {
    for (const char* const language : {"vhdl", "verilog"}) {
        Words all = words;
        all.insert(all.end(), {"--language", language});
        const RunResult run = instance(name, all);
        EXPECT_EQ(run.status, 1) << testing::PrintToString(all);
        EXPECT_EQ(run.out, "") << testing::PrintToString(all);
        EXPECT_TRUE(contains(run.err, reason)) << run.err;
    }
}

}  // namespace

TEST(Instance, the_fifo_in_vhdl) {
    const RunResult run = instance("fifo", {"DEPTH=1024", "--language", "vhdl"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              "-- from fifo_info.xml with DEPTH=1024, by kivo instance\n"
              "u1 : fifo\n"
              "  generic map (\n"
              "    DATA_WIDTH => 8,\n"
              "    DEPTH => 1024,\n"
              "    READ_MODE => \"NORMAL\",\n"
              "    ALMOST_FULL_LEVEL => 12,\n"
              "    ALMOST_EMPTY_LEVEL => 4,\n"
              "    STORAGE => \"BLOCK\"  -- hint\n"
              "  )\n"
              "  port map (\n"
              "    clock => clock,\n"
              "    reset => reset,\n"
              "    write => write,\n"
              "    data => data,\n"
              "    read => read,\n"
              "    q => q,\n"
              "    full => full,\n"
              "    empty => empty,\n"
              "    almost_full => almost_full,\n"
              "    almost_empty => almost_empty\n"
              "  );\n");
}

TEST(Instance, the_ram_in_verilog_ties_what_is_not_connected) {
    const RunResult run =
        instance("ram", {"byte_enable=CONSTANT:2", "--language", "verilog", "--label", "store"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "// from ram_info.xml with byte_enable=CONSTANT:2, by kivo instance\n"
              "ram #(\n"
              "  .DATA_WIDTH(16),\n"
              "  .ADDRESS_WIDTH(8),\n"
              "  .BUS_STYLE(\"SEPARATE\"),\n"
              "  .OUTPUT_REGISTER(\"ON\"),\n"
              "  .BYTE_ENABLES(\"OFF\"),\n"
              "  .BLOCK_TYPE(\"AUTO\")  // hint\n"
              ") store (\n"
              "  .clock(clock),\n"
              "  .address(address),\n"
              "  .write_enable(write_enable),\n"
              "  .byte_enable(2'b10),\n"
              "  .output_enable(1'b1),\n"
              "  .data(data),\n"
              "  .q(q)\n"
              ");\n");
}

TEST(Instance, nothing_is_written_unless_it_is_legal_and_as_asked_for) {
    expect_refused("fifo", {"DEPTH=128", "STORAGE=REGISTERS"},
                   "fifo_info.xml:17:7: error: DEPTH is 128, and must be from 4 to 64 "
                   "[out-of-range]\n");
    expect_refused("ram", {"DATA_WIDTH=18", "BYTE_ENABLES=ON"},
                   "BYTE_ENABLES was set to ON, but a rule makes it \"OFF\" [overridden]\n");
    expect_refused("fifo", {"DEPTH=8"},
                   "kivo: error: no instance is written; --force writes it all the same\n");
}

TEST(Instance, force_writes_it_all_the_same) {
    const RunResult run = instance("fifo", {"DEPTH=8", "--language", "vhdl", "--force"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.out, "    DEPTH => 8,\n")) << run.out;
    EXPECT_TRUE(contains(run.err, "[out-of-range]")) << run.err;
}

TEST(Instance, a_value_that_vhdl_cannot_hold_is_refused_there_alone) {
    const Words words = {"WIDTH=64", "MODULUS=18446744073709551616", "--language"};
    Words vhdl = words;
    vhdl.emplace_back("vhdl");
    const RunResult refused = instance("counter", vhdl);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_TRUE(contains(refused.err,
                         "kivo: error: MODULUS is 18446744073709551616, and the integers of VHDL "
                         "end at 2147483647\n"))
        << refused.err;
    Words verilog = words;
    verilog.emplace_back("verilog");
    EXPECT_EQ(instance("counter", verilog).status, 0);
}

TEST(Instance, a_map_names_the_module_and_leaves_out_ports) {
    const RunResult run =
        instance("counter", {"--wizard", "clock_divider", "--language", "verilog"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.substr(run.out.find(" u1 ")),
              " u1 (\n  .clock(clock),\n  .carry_out(carry_out)\n);\n");
}

TEST(Instance, a_file_without_the_usual_name_is_no_module) {
    const TemporaryFolder folder;
    const std::string path = folder.write("odd.xml", with_sections(""));
    const RunResult run = run_kivo({"instance", path, "--language", "vhdl"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(contains(run.out, "u1 : odd;\n")) << run.out;
}

TEST(Instance, the_language_is_needed_and_wrong_names_are_refused) {
    EXPECT_EQ(instance("fifo", {}).status, 2);
    EXPECT_EQ(instance("fifo", {"--language", "ada"}).status, 2);
    EXPECT_EQ(instance("fifo", {"DEPHT=8", "--language", "vhdl"}).status, 2);
    EXPECT_EQ(run_kivo({"instance", "/no/such", "--language", "vhdl"}).status, 3);
}

TEST(Instance, saved_configurations_and_files_serve_too) {
    const TemporaryFolder folder;
    const std::string saved = folder.path("saved.json");
    run_kivo(
        {"configure", example("fifo_info.xml"), "DEPTH=1024", "--format", "json", "-o", saved});
    const std::string out = folder.path("fifo.vhd");
    const RunResult run =
        instance("fifo", {"--from", saved, "--language", "vhdl", "--unit", "-o", out});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    std::ifstream stream(out);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_TRUE(contains(text, "entity fifo_u1 is\n")) << text;
    EXPECT_TRUE(contains(text, "DEPTH => 1024")) << text;
    EXPECT_EQ(instance("fifo", {"--language", "vhdl", "-o", example("fifo_info.xml")}).status, 2);
}
