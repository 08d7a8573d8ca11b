// What the program does when the system gives it less than it asks for: memory, files, descriptors,
// room on a disk, rights.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool ends_with(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Every file below a folder with its content, in which the folder is called "FOLDER/".
std::map<std::string, std::string> files_in(const TemporaryFolder& folder) {
    const std::string path = folder.path("");
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            std::ifstream stream(entry.path(), std::ios::binary);
            std::string content = {std::istreambuf_iterator<char>(stream), {}};
            for (std::size_t at = 0; (at = content.find(path, at)) != std::string::npos;) {
                content.replace(at, path.size(), "FOLDER/");
            }
            files[entry.path().filename()] = content;
        }
    }
    return files;
}

struct CommandRow {
    const char* name;
    Words words;  // "OUT" in one of them stands for a folder to write to
};

// Each command, with what makes it do most of its work.
const std::vector<CommandRow> kCommands = {
    // Each piece of memory is one run: what is tried for sense takes more of them than all else.
    {"check", {"check", "--effort", "0", example("fifo_info.xml"), example("faulty_info.xml")}},
    {"check_sense", {"check", "--effort", "1", example("ram_info.xml")}},
    {"check_json", {"check", "--effort", "0", "--format", "json", example("faulty_info.xml")}},
    {"check_sarif", {"check", "--effort", "0", "--format", "sarif", example("faulty_info.xml")}},
    {"completion", {"completion", "bash"}},
    {"configure", {"configure", example("fifo_info.xml"), "DEPTH=1000", "-o", "OUT/report"}},
    {"configure_json", {"configure", example("fifo_info.xml"), "DEPTH=1000", "--format", "json"}},
    {"doc", {"doc", example("fifo_info.xml"), "-o", "OUT/page.html"}},
    {"explain", {"explain", "unknown-section"}},
    {"instance",
     {"instance", example("fifo_info.xml"), "--language", "vhdl", "-o", "OUT/instance.vhd"}},
    {"manual", {"manual"}},
    {"show", {"show", example("counter_info.xml")}},
    {"show_json", {"show", "--format", "json", example("counter_info.xml")}},
    {"translate", {"translate", "--to", "verilog", "A gte 4 and B lt 16"}},
    {"value", {"value", example("fifo_info.xml"), "fill_and_drain", "data", "60"}},
    {"wave",
     {"wave", example("fifo_info.xml"), "fill_and_drain", "--svg", "OUT/a.svg", "--vcd",
      "OUT/a.vcd", "--gtkw", "OUT/a.gtkw", "--wavejson", "OUT/a.json"}},
};

Words with_folder(Words words, const std::string& folder) {
    for (std::string& word : words) {
        if (word.rfind("OUT/", 0) == 0) {
            word = folder + word.substr(3);
        }
    }
    return words;
}

std::string test_name(const testing::TestParamInfo<CommandRow>& info) {
    return info.param.name;
}

// --- outputs that cannot be written

class OutputFault : public testing::TestWithParam<CommandRow> {};

std::vector<CommandRow> writing_commands() {
    std::vector<CommandRow> rows;
    std::copy_if(kCommands.begin(), kCommands.end(), std::back_inserter(rows),
                 [](const CommandRow& row) { return contains(row.words.back(), "OUT/"); });
    return rows;
}

TEST_P(OutputFault, a_missing_folder_is_reported_and_no_file_is_left) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo(with_folder(GetParam().words, folder.path("missing")));
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "cannot write '" + folder.path("missing/"))) << run.err;
    EXPECT_TRUE(ends_with(run.err, "': No such file or directory\n")) << run.err;
    EXPECT_TRUE(files_in(folder).empty());
}

TEST_P(OutputFault, a_folder_that_may_not_be_written_is_reported_and_no_file_is_left) {
    const TemporaryFolder folder;
    fs::create_directory(folder.path("locked"));
    ASSERT_EQ(chmod(folder.path("locked").c_str(), 0500), 0);
    const RunResult run =
        run_kivo(with_folder(GetParam().words, folder.path("locked")), {.obeys_permissions = true});
    ASSERT_NE(run.status, kCannotGiveUp);
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(ends_with(run.err, "': Permission denied\n")) << run.err;
    EXPECT_TRUE(files_in(folder).empty());
}

TEST_P(OutputFault, a_file_that_outgrows_its_limit_is_reported_and_what_stood_there_stays) {
    const TemporaryFolder folder;
    for (const std::string& word : GetParam().words) {
        if (word.rfind("OUT/", 0) == 0) {
            folder.write(word.substr(4), "before");
        }
    }
    const auto before = files_in(folder);
    const RunResult run =
        run_kivo(with_folder(GetParam().words, folder.path(".")), {.limits = {{RLIMIT_FSIZE, 16}}});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(files_in(folder), before);
}

TEST_P(OutputFault, a_full_device_is_reported) {
    Words words = GetParam().words;
    bool is_first = true;
    const TemporaryFolder folder;
    for (std::string& word : words) {
        if (word.rfind("OUT/", 0) == 0) {
            word = is_first ? "/dev/full" : folder.path(word.substr(4));
            is_first = false;
        }
    }
    const RunResult run = run_kivo(words);
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "cannot write '/dev/full': No space left on device\n"))
        << run.err;
}

INSTANTIATE_TEST_SUITE_P(Commands, OutputFault, testing::ValuesIn(writing_commands()), test_name);

TEST(OutputFaults, standard_output_that_outgrows_its_limit_is_reported) {
    const TemporaryFolder folder;
    const RunResult run =
        run_kivo({"show", example("fifo_info.xml")},
                 {.out_path = folder.path("out"), .limits = {{RLIMIT_FSIZE, 16}}});
    EXPECT_EQ(run.status, 3);
}

// --- standard input

TEST(StandardInputFaults, more_than_the_limit_is_refused_whatever_comes_after_it) {
    const std::string text = with_sections("<!--" + std::string(1100000, ' ') + "-->");
    const RunResult above = run_kivo({"check", "--input-limit", "1", "-"}, {.input = text});
    EXPECT_EQ(above.status, 3);
    EXPECT_TRUE(
        contains(above.err, "cannot read '<stdin>': it is longer than --input-limit allows"))
        << above.err;
    EXPECT_EQ(run_kivo({"check", "--input-limit", "2", "-"}, {.input = text}).status, 0);
    const RunResult endless =
        run_kivo({"check", "--input-limit", "1", "-"}, {.input_path = "/dev/zero"});
    EXPECT_EQ(endless.status, 3);
    EXPECT_TRUE(contains(endless.err, "it is longer than --input-limit allows")) << endless.err;
}

TEST(StandardInputFaults, exactly_the_limit_is_read_and_a_byte_more_is_not) {
    const std::string frame = with_sections("<!---->");
    const std::size_t limit = 1024UL * 1024;
    const auto of_size = [&](std::size_t size) {
        return with_sections("<!--" + std::string(size - frame.size(), ' ') + "-->");
    };
    const auto status_of = [&](std::size_t size) {
        return run_kivo({"check", "--input-limit", "1", "-"}, {.input = of_size(size)}).status;
    };
    ASSERT_EQ(of_size(limit).size(), limit);
    EXPECT_EQ(status_of(limit - 1), 0);
    EXPECT_EQ(status_of(limit), 0);
    EXPECT_EQ(status_of(limit + 1), 3);
}

TEST(StandardInputFaults, the_limit_is_a_positive_number) {
    EXPECT_EQ(run_kivo({"check", "--input-limit", "0", "-"}).status, 2);
    EXPECT_EQ(run_kivo({"check", "--input-limit", "many", "-"}).status, 2);
}

// --- files that cannot be read

TEST(ReadingFaults, a_description_that_cannot_be_read_is_no_fault_of_its_xml) {
    for (const Words& words : {Words{"check"}, Words{"show"}, Words{"configure"},
                               Words{"instance", "--language", "vhdl"},
                               Words{"doc", "-o", "/dev/null"}, Words{"wave"}}) {
        Words all = words;
        all.emplace_back("/proc/self/mem");
        const RunResult run = run_kivo(all);
        EXPECT_EQ(run.status, 3) << words[0];
        EXPECT_TRUE(contains(run.err, "cannot read '/proc/self/mem': Input/output error"))
            << run.err;
        EXPECT_FALSE(contains(run.err, "Invalid XML")) << run.err;
    }
}

TEST(ReadingFaults, an_included_file_that_cannot_be_read_is_a_finding_of_its_own) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("<INCLUDE FILE='/proc/self/mem'><FILE>/dev/null</FILE>"
                                    "</INCLUDE>"));
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "[file-not-read]")) << run.err;
    EXPECT_TRUE(contains(run.err, "note: the system says: Input/output error")) << run.err;
    EXPECT_TRUE(contains(run.err, "[file-not-opened]")) << run.err;
    EXPECT_TRUE(contains(run.err, "note: the system says: Not a regular file")) << run.err;
    EXPECT_FALSE(contains(run.err, "[invalid-file]")) << run.err;
    EXPECT_FALSE(contains(run.err, "[xml-")) << run.err;
    EXPECT_EQ(run_kivo({"show", path}).status, 3);
}

#if defined(KIVO_FAULT_LIBRARY)

bool reads_a_description(const CommandRow& row) {
    return std::any_of(row.words.begin(), row.words.end(),
                       [](const std::string& word) { return ends_with(word, "_info.xml"); });
}

RunOptions with_fault(const std::string& variable, const std::string& fault) {
    return {.environment = {{"LD_PRELOAD", KIVO_FAULT_LIBRARY}, {variable, fault}}};
}

// Of a command that reads a file.
RunResult run_with_reading(const std::string& fault, const Words& words,
                           const std::string& input = "") {
    const TemporaryFolder logs;
    RunOptions options = with_fault("KIVO_FAULT_READ", fault);
    options.input = input;
    options.environment["KIVO_FAULT_LOG"] = logs.path("log");
    RunResult run = run_kivo(words, options);
    EXPECT_EQ(files_in(logs)["log"], "broken");
    return run;
}

TEST(ReadingFaults, interruptions_and_pieces_change_nothing) {
    for (const CommandRow& row : kCommands) {
        if (!reads_a_description(row)) {
            continue;
        }
        const TemporaryFolder folder;
        const Words words = with_folder(row.words, folder.path("."));
        const RunResult whole = run_kivo(words);
        const auto files = files_in(folder);
        for (const std::string fault : {"interrupt:0", "pieces:1", "pieces:7"}) {
            const RunResult run = run_with_reading(fault, words);
            EXPECT_EQ(run.status, whole.status) << row.name << ' ' << fault << run.err;
            EXPECT_EQ(run.out, whole.out) << row.name << ' ' << fault;
            EXPECT_EQ(run.err, whole.err) << row.name << ' ' << fault;
            EXPECT_EQ(files_in(folder), files) << row.name << ' ' << fault;
        }
    }
}

TEST(ReadingFaults, standard_input_comes_in_any_pieces_and_its_errors_are_told) {
    const std::string text = with_sections("<ODD/>" + std::string(500, ' '));
    const RunResult whole = run_kivo({"check", "-"}, {.input = text});
    ASSERT_TRUE(contains(whole.err, "<stdin>:2:1: error: ")) << whole.err;
    for (const std::string fault : {"interrupt:0", "pieces:1", "pieces:7"}) {
        const RunResult run = run_with_reading(fault, {"check", "-"}, text);
        EXPECT_EQ(run.status, whole.status) << fault;
        EXPECT_EQ(run.err, whole.err) << fault;
    }
    for (const std::string at : {"0", "3"}) {
        const RunResult run = run_with_reading("error:" + at, {"check", "-"}, text);
        EXPECT_EQ(run.status, 3) << at;
        EXPECT_TRUE(contains(run.err, "cannot read '<stdin>': Input/output error")) << run.err;
    }
}

TEST(ReadingFaults, an_error_in_the_middle_is_told_as_one) {
    for (const std::string at : {"0", "1", "5"}) {
        const RunResult run = run_with_reading("error:" + at, {"check", example("fifo_info.xml")});
        EXPECT_EQ(run.status, 3) << at;
        EXPECT_TRUE(contains(run.err, "Input/output error")) << at << run.err;
        EXPECT_FALSE(contains(run.err, "Invalid XML")) << at << run.err;
    }
}

TEST(ReadingFaults, a_file_that_ends_early_is_a_text_that_ends_there) {
    const RunResult run = run_with_reading("end:3", {"check", example("fifo_info.xml")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.err, "[invalid-file]")) << run.err;
    EXPECT_TRUE(contains(run.err, "[xml-syntax]")) << run.err;
}

// --- descriptors

TEST(DescriptorFaults, without_any_left_a_file_is_not_read_and_that_is_said) {
    for (const CommandRow& row : kCommands) {
        if (!reads_a_description(row)) {
            continue;
        }
        const TemporaryFolder folder;
        const RunResult run = run_kivo(with_folder(row.words, folder.path(".")),
                                       with_fault("KIVO_FAULT_DESCRIPTORS", "free:0"));
        EXPECT_EQ(run.status, 3) << row.name << run.err;
        EXPECT_TRUE(contains(run.err, "cannot read '")) << row.name << run.err;
        EXPECT_TRUE(contains(run.err, "Too many open files")) << row.name << run.err;
        EXPECT_TRUE(files_in(folder).empty()) << row.name;
    }
}

TEST(DescriptorFaults, one_is_enough_to_read_a_description_and_to_write_a_file) {
    const TemporaryFolder folder;
    const RunResult run =
        run_kivo({"doc", example("counter_info.xml"), "-o", folder.path("page.html")},
                 with_fault("KIVO_FAULT_DESCRIPTORS", "free:1"));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(files_in(folder).count("page.html"), 1U);
}

// --- memory

struct Refused {
    RunResult run;
    bool came = false;
    std::map<std::string, std::string> files;
};

class MemoryFault : public testing::TestWithParam<CommandRow> {
protected:
    Refused run_with(const std::string& fault) const {
        const TemporaryFolder folder;
        const TemporaryFolder logs;
        RunOptions options = with_fault("KIVO_FAULT_LOG", logs.path("log"));
        if (!fault.empty()) {
            options.environment["KIVO_FAULT_MEMORY"] = fault;
        }
        Refused refused;
        refused.run = run_kivo(with_folder(GetParam().words, folder.path(".")), options);
        refused.files = files_in(folder);
        const std::string log = files_in(logs)["log"];
        refused.came = log == "refused";
        std::from_chars(log.data(), log.data() + log.size(), allocations_);
        return refused;
    }

    // The program answers as if nothing had been, or says that memory is short.
    static void expect_whole_or_refused(const Refused& refused, const Refused& whole,
                                        const std::string& fault) {
        const RunResult& run = refused.run;
        if (run.status == whole.run.status) {
            EXPECT_EQ(run.err, whole.run.err) << fault;
            EXPECT_EQ(run.out, whole.run.out) << fault;
            EXPECT_EQ(refused.files, whole.files) << fault;
            return;
        }
        EXPECT_EQ(run.status, 3) << fault << run.err;
        EXPECT_TRUE(ends_with(run.err, "kivo: error: out of memory\n") ||
                    contains(run.err, "Cannot allocate memory"))
            << fault << ": " << run.err;
        for (const auto& [name, content] : refused.files) {
            const auto complete = whole.files.find(name);
            ASSERT_NE(complete, whole.files.end()) << fault << " left " << name;
            EXPECT_EQ(content, complete->second) << fault << " left a part of " << name;
        }
    }

    void refuse_each(std::size_t step) const {
        const Refused whole = run_with("");
        const std::size_t count = allocations_;
        ASSERT_GT(count, 50U);
        for (const std::string kind : {"once:", "all:"}) {
            std::size_t refusals = 0;
            for (std::size_t before = 0; before < count; before += step) {
                const std::string fault = kind + std::to_string(before);
                const Refused refused = run_with(fault);
                refusals += refused.came ? 1 : 0;
                expect_whole_or_refused(refused, whole, fault);
                ASSERT_FALSE(HasFailure()) << fault;
            }
            // Without memory, the program comes to an end sooner; it takes as much until then.
            EXPECT_EQ(refusals, (count + step - 1) / step) << kind;
        }
    }

    mutable std::size_t allocations_ = 0;
};

TEST_P(MemoryFault, ends_the_program_in_order_wherever_it_comes) {
    run_with("");
    refuse_each(allocations_ / 20 + 1);
}

INSTANTIATE_TEST_SUITE_P(Commands, MemoryFault, testing::ValuesIn(kCommands), test_name);

// Samples, a prime number apart; with KIVO_EACH_ALLOCATION set all of them, which takes very long.
std::size_t step() {
    return std::getenv("KIVO_EACH_ALLOCATION") != nullptr ? 1 : 61;
}

class LongMemoryFault : public MemoryFault {};

TEST_P(LongMemoryFault, each_of_many_ends_the_program_in_order) {
    refuse_each(step());
}

INSTANTIATE_TEST_SUITE_P(Commands, LongMemoryFault, testing::ValuesIn(kCommands), test_name);

#endif

}  // namespace
