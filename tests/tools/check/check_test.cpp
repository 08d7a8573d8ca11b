#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(CheckTest, TheExamplesAreClean) {
    const RunResult run = run_kivo(
        {"check", example("fifo_info.xml"), example("counter_info.xml"), example("ram_info.xml")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "3 files checked: no messages\n");
}

TEST(CheckTest, TheExamplesAreCleanWhereverTheProgramRuns) {
    const TemporaryFolder elsewhere;
    const RunResult run =
        run_kivo({"check", example("fifo_info.xml")}, {.directory = elsewhere.path("")});
    EXPECT_EQ(run.status, 0) << run.err;
}

TEST(CheckTest, TheFaultyExampleGivesExactlyItsMessages) {
    const std::string path = example("faulty_info.xml");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    const std::vector<std::string> expected = {
        "6:5: error: Sub element tag TIME_UNIT is not a valid sub tag of the main tag "
        "FUNCTION_INFORMATION [function-information-sub-tag]",
        "10:5: error: Attribute UNITS is not a recognized attribute for parameters (found in "
        "parameter WIDTH ) [parameter-attribute]",
        "11:5: error: Parameter type ENUM of parameter MODE is not a recognized parameter type  "
        "[parameter-type]",
        "11:5: error: Kivofunction Object MODE is of unknown type  [unknown-type]",
        "12:5: error: Name atrribute is missing from PARAMETER tag  [parameter-name]",
        "16:5: error: Kivofunction Object WITDH is of unknown type  [unknown-type]",
        "22:5: error: Invalid value for high probability 150, it should be an integer between 0 "
        "and 100 [high-probability]",
        "23:5: error: Port type IN of port start is not a recognized port type  [port-type]",
        "23:5: error: Kivofunction Object start is of unknown type  [unknown-type]",
        "24:5: error: Attribute value CONSTANT is not a recognized value for attribute CNX_TYPE "
        "(found for port expired ) [port-cnx-type]",
        "25:5: error: Kivofunction Object WIDTH of different type Integer parameter already exists "
        " [type-clash]",
        "30:7: error: Sub tag VALUE_RULE is not a valid sub tag of PORT  [object-sub-tag]",
        "35:5: error: Sub element tag RULE doesn't have any valid element data "
        "[rule-without-data]",
        "39:5: error: Required attribute TYPE not specified for MESSAGE [message-type]",
        "43:5: error: Attribute DISPLAY_TRUNCATION has illegal value low in wave ( one_shot ). "
        "Valid values are HIGH and LOW [vector-display-truncation]",
        "49:7: error: There are more stimulus in the ELSE part of the condition, rather than in "
        "the THEN section [surplus-else]",
        "53:7: error: Unknown radix used to specify display format for port expired "
        "[display-radix]",
        "53:7: error: Invalid display format specification string add wave -oct expired "
        "[display-command]",
        "60:7: error: Can't have conditional text as well as sub-tags at the same level T "
        "[text-with-sub-tags]",
        "64:3: error: Main element tag REVISIONS is not a valid recognized tag [unknown-section]",
    };
    std::vector<std::string> found = messages_in(run.err, path);
    for (std::string& message : found) {
        message.erase(0, message.find_first_not_of(' '));
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(lines_of(run.err).back(), "1 file checked: 20 messages in 1 file");
}

TEST(CheckTest, TheSourceLineStandsBelowItsMessageWithAPointer) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("  <PORTS>\n\t<PORT TYPE=\"INPUT\"/>\n  </PORTS>"));
    EXPECT_EQ(run_kivo({"check", path}).err,
              path +
                  ":3:2: error: Name atrribute is missing from PORT tag  [port-name]\n"
                  "     3 |  <PORT TYPE=\"INPUT\"/>\n"
                  "       |  ^\n"
                  "1 file checked: 1 message in 1 file\n");
}

TEST(CheckTest, ALongSourceLineIsCutAroundItsPlace) {
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

TEST(CheckTest, ThePointerCountsCharactersAndEscapes) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("a_info.xml", "<ROOT><!-- \xC3\xA4\xC3\xB6 \xE9 \x7F --><ODD/></ROOT>");
    const std::vector<std::string> lines = lines_of(run_kivo({"check", path}).err);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1], "     1 | <ROOT><!-- \xC3\xA4\xC3\xB6 \\xE9 \\x7F --><ODD/></ROOT>");
    EXPECT_EQ(lines[2].find('^'), lines[1].find("<ODD/>") - 2);
}

TEST(CheckTest, AMessageInAnIncludedFileNamesThatFile) {
    const TemporaryFolder folder;
    const std::string inner = folder.write("common.xml", with_sections("<INNER/>"));
    const std::string outer =
        folder.write("a_info.xml", with_sections("<INCLUDE FILE=\"" + inner + "\"/>"));
    const RunResult run = run_kivo({"check", outer});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, inner).size(), 1U) << run.err;
}

TEST(CheckTest, BrokenXmlIsAMessageAndNoFailure) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", "<ROOT><PORTS></ROOT>");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.err, "Invalid XML source file")) << run.err;
}

TEST(CheckTest, ControlCharactersOfADescriptionNeverReachTheTerminal) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("<PORTS><PORT NAME=\"p&#27;[31m&#10;q&#x202E;r\xE9\" "
                                    "TYPE=\"INPUT\" ODD=\"1\"/></PORTS>"));
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.err, "(found for port p\\x1B[31m\\nq\\u202Er\\xE9 )")) << run.err;
    EXPECT_EQ(run.err.find('\033'), std::string::npos);
}

TEST(CheckTest, FilesAreCheckedEachByItself) {
    const TemporaryFolder folder;
    const std::string first = folder.write("a_info.xml", with_sections("<ODD/>"));
    const std::string second = folder.write("b_info.xml", with_sections("<ODD/><ODDER/>"));
    const RunResult run = run_kivo({"check", first, example("ram_info.xml"), second});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, first).size(), 1U);
    EXPECT_EQ(messages_in(run.err, second).size(), 2U);
    EXPECT_EQ(lines_of(run.err).back(), "3 files checked: 3 messages in 2 files");
}

TEST(CheckTest, AMissingFileIsNamedWithTheReason) {
    const TemporaryFolder folder;
    const std::string path = folder.path("none_info.xml");
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(lines_of(run.err).front(),
              "kivo: error: cannot read '" + path + "': No such file or directory");
}

TEST(CheckTest, ADirectoryCannotBeRead) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo({"check", folder.path("")});
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "it is a directory")) << run.err;
}

TEST(CheckTest, APipeIsNotWaitedFor) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const RunResult run = run_kivo({"check", path});
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(contains(run.err, "it is not a regular file")) << run.err;
}

TEST(CheckTest, AFileWithoutPermissionIsNamedWithTheReason) {
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

TEST(CheckTest, AnUnreadableFileDoesNotStopTheOthers) {
    const TemporaryFolder folder;
    const std::string faulty = folder.write("a_info.xml", with_sections("<ODD/>"));
    const RunResult run = run_kivo({"check", folder.path("none"), faulty});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(messages_in(run.err, faulty).size(), 1U) << run.err;
    EXPECT_EQ(lines_of(run.err).back(),
              "1 file checked: 1 message in 1 file; 1 file could not be read");
}

TEST(CheckTest, AFileMayBeCalledLikeASubCommand) {
    const TemporaryFolder folder;
    folder.write("show", with_sections(""));
    const RunResult run = run_kivo({"check", "show"}, {.directory = folder.path("")});
    EXPECT_EQ(run.status, 0) << run.err;
}

}  // namespace
