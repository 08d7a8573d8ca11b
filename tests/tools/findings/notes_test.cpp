// What the notes on a message say where its own text misleads or leaves off.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

using Notes = std::vector<std::string>;

// "LINE:COLUMN: TEXT" of each note that a check of the file gives.
Notes notes_of_file(const std::string& path, const std::vector<std::string>& options = {},
                    const std::string& directory = {}) {
    std::vector<std::string> arguments = {"check", path};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const std::string err = run_kivo(arguments, {.directory = directory}).err;
    Notes notes;
    for (const std::string& line : places_in(err, path)) {
        const std::size_t at = line.find(" note: ");
        if (at != std::string::npos) {
            notes.push_back(line.substr(0, at) + line.substr(at + 6));
        }
    }
    return notes;
}

Notes notes_of(const std::string& document) {
    const TemporaryFolder folder;
    return notes_of_file(folder.write("a_info.xml", document));
}

Notes notes_of_sections(const std::string& sections) {
    return notes_of("<ROOT>\n" + sections + "\n</ROOT>\n");
}

TEST(Notes, a_sub_tag_of_a_parameter_is_not_called_one_of_a_port) {
    EXPECT_EQ(notes_of_sections("<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER'>\n<STATE V='1'/>"
                                "</PARAMETER></PARAMETERS>"),
              (Notes{"3:1: this is a PARAMETER; the message says PORT of any element",
                     "3:1: known here: FORCE_RANGE, FORCE_VALUE, VALUE_RULE"}));
    EXPECT_EQ(notes_of_sections("<PORTS><PORT NAME='w' TYPE='INPUT'>\n<VALUE_RULE>1</VALUE_RULE>"
                                "</PORT></PORTS>"),
              (Notes{"3:1: known here: CONSTANT_RANGE, FORCE_RANGE, FORCE_VALUE, STATE"}));
}

TEST(Notes, an_attribute_of_a_map_is_not_called_one_of_a_vector) {
    EXPECT_EQ(notes_of_sections("<WIZARD_DATA>\n<WIZARD_MAP NAME='m' MODUL_NAME='c'/>"
                                "</WIZARD_DATA>"),
              (Notes{"3:1: this is a WIZARD_MAP; the message says vector stimulus of maps too",
                     "3:1: did you mean \"MODULE_NAME\"?"}));
    EXPECT_EQ(notes_of_sections("<WAVE_DATA>\n<WAVE NAME='m' MAX_TIMES='9'><STIM>force a 0 0"
                                "</STIM></WAVE></WAVE_DATA>")[0],
              "3:1: did you mean \"MAX_TIME\"?");
}

TEST(Notes, a_rule_without_data_is_told_why) {
    EXPECT_EQ(notes_of_sections("<RULES>\n<RULE CONDITION='W gt 0'/></RULES>")[0],
              "3:1: the condition is the text between the tags; no attribute holds it");
    EXPECT_EQ(notes_of_sections("<RULES>\n<RULE ENABLED='OFF'>1 gt 0</RULE></RULES>"),
              (Notes{"3:1: ENABLED switches it off, so it is not stored"}));
}

TEST(Notes, an_unclosed_element_says_where_it_was_opened) {
    EXPECT_EQ(notes_of("<ROOT>\n<PARAMETERS>\n<PARAMETER NAME='W' TYPE='INTEGER'>\n</PARAMETERS>\n"
                       "</ROOT>\n"),
              (Notes{"3:1: element PARAMETER is opened here"}));
    EXPECT_EQ(notes_of("<ROOT>\n<RULES>\n<RULE>1 gt 0</RULE>\n"),
              (Notes{"2:1: element RULES is opened here"}));
    EXPECT_EQ(notes_of("<ROOT>\n<RULES>\n</RULE>\n</ROOT>\n"),
              (Notes{"2:1: element RULES is opened here"}));
}

TEST(Notes, what_is_no_element_opens_none) {
    EXPECT_EQ(notes_of("<?xml version='1.0'?>\n<!DOCTYPE ROOT>\n<ROOT>\n<RULES><!-- <RULE> -->\n"
                       "<RULE><![CDATA[<A>]]></RULE><MESSAGES A='>' B='<C>'/>\n"),
              (Notes{"4:1: element RULES is opened here"}));
}

TEST(Notes, a_less_than_sign_in_a_text_names_its_spellings) {
    const std::string less = "to compare with \"<\", write \"lt\" or \"&lt;\"";
    for (const char* condition : {"A < 8", "A <8", "A<8", "A <B", "A <B and C"}) {
        const Notes notes =
            notes_of_sections("<RULES>\n<RULE>" + std::string(condition) + "</RULE></RULES>");
        const std::string column = std::to_string(7 + std::string(condition).find('<'));
        EXPECT_EQ(notes, Notes{"3:" + column + ": " + less}) << condition;
    }
    EXPECT_EQ(notes_of_sections("<RULES>\n<RULE>A <= 8</RULE></RULES>"),
              Notes{"3:9: to compare with \"<=\", write \"lte\" or \"&lt;=\""});
    EXPECT_EQ(notes_of_sections("<RULES>\n< RULE>A</RULE></RULES>"), Notes{});
    EXPECT_EQ(notes_of_sections("<PORTS>\n<PORT NAME='a' <STATE/></PORTS>"), Notes{});
}

class IncludeNotesTest : public testing::Test {
protected:
    // A description that includes the name.
    std::string including(const std::string& name) {
        return folder.write("a_info.xml", "<ROOT>\n<INCLUDE FILE='" + name + "'/></ROOT>");
    }
    // What comes first: where the file was looked for.
    std::string searched(const std::string& directories = "") {
        return "2:1: looked for in '" +
               std::filesystem::path(elsewhere.path(".")).parent_path().string() + "'" +
               directories + " and beside the library";
    }

    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
};

TEST_F(IncludeNotesTest, a_file_that_is_not_found_says_where_it_was_looked_for) {
    EXPECT_EQ(notes_of_file(including("common.xml"), {}, elsewhere.path("")), Notes{searched()});
    EXPECT_EQ(notes_of_file(including("common.xml"), {"-I", "lib"}, elsewhere.path("")),
              Notes{searched(", 'lib'")});
    EXPECT_EQ(notes_of_file(including(folder.path("common.xml")), {}, elsewhere.path("")),
              Notes{"2:1: looked for there alone"});
}

TEST_F(IncludeNotesTest, the_nearest_name_is_told) {
    elsewhere.write("comon.xml", "<ROOT/>");
    EXPECT_EQ(notes_of_file(including("common.xml"), {}, elsewhere.path("")),
              (Notes{searched(), "2:1: did you mean \"comon.xml\"?"}));
    const TemporaryFolder library;
    library.write("parts.xml", "<ROOT/>");
    EXPECT_EQ(
        notes_of_file(including("part.xml"), {"-I", library.path("")}, elsewhere.path("")),
        (Notes{searched(", '" + library.path("") + "'"), "2:1: did you mean \"parts.xml\"?"}));
}

TEST_F(IncludeNotesTest, a_file_beside_the_one_that_includes_it_is_told_to_be_elsewhere) {
    const std::string common = folder.write("common.xml", "<ROOT/>");
    EXPECT_EQ(notes_of_file(including("common.xml"), {}, elsewhere.path("")),
              (Notes{searched(), "2:1: there is a file \"" + common +
                                     "\"; names are not relative to the file that includes them"}));
    EXPECT_EQ(notes_of_file(including("common.xml"), {"-I", folder.path("")}, elsewhere.path("")),
              Notes{});
}

// What follows the file, for every command that reads a description, and for those that write one.
const std::vector<std::vector<std::string>> kReaders = {{"check"},
                                                        {"configure"},
                                                        {"instance", "--language", "vhdl"},
                                                        {"show"},
                                                        {"value", "w", "a", "5"},
                                                        {"wave"}};
const std::vector<std::vector<std::string>> kWriters = {{"configure", "-o"},
                                                        {"doc", "-o"},
                                                        {"instance", "--language", "vhdl", "-o"},
                                                        {"wave", "--svg"}};

TEST_F(IncludeNotesTest, the_description_is_looked_for_in_the_directories_too) {
    const std::string path = folder.write(
        "b_info.xml", with_sections("<PORTS><PORT NAME='a' TYPE='INPUT' WIDTH='1'/></PORTS>"
                                    "<WAVE_DATA><WAVE NAME='w'><STIM>force a 0 0,1 5</STIM></WAVE>"
                                    "</WAVE_DATA>"));
    const auto run = [&](std::vector<std::string> words, const std::vector<std::string>& last) {
        words.insert(words.begin() + 1, "b_info.xml");
        words.insert(words.end(), last.begin(), last.end());
        return run_kivo(words, {.directory = elsewhere.path("")});
    };
    for (const auto& reader : kReaders) {
        const RunResult found = run(reader, {"-I", folder.path("")});
        EXPECT_EQ(found.status, 0) << reader.front() << found.err;
        EXPECT_EQ(run(reader, {}).status, 3) << reader.front();
    }
    // It is the description by whatever name, which no output may take the place of.
    for (const auto& writer : kWriters) {
        const RunResult refused = run(writer, {path, "-I", folder.path("")});
        EXPECT_EQ(refused.status, 2) << writer.front() << refused.err;
    }
}

}  // namespace
