#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/description.h"

namespace {

using Messages = std::vector<std::string>;

const std::string kNoRoot = "Root tag in XML rules file should be ROOT";

std::string not_found(const std::string& name) {
    return "XML source file " + name + " not found";
}

std::string invalid(const std::string& name) {
    return "Invalid XML source file " + name;
}

Messages loaded_messages(const std::string& path) {
    LoadedStore store;
    const bool clean = store.info.process_xml_file(path);
    EXPECT_EQ(clean, store.info.error_list.empty()) << path;
    return store.messages();
}

// A file in the library's own directory, which for a linked-in library is the program's.
class FileBesideLibrary {
public:
    explicit FileBesideLibrary(const std::string& content)
        : name_("kivo-test-" + std::to_string(getpid()) + "_info.xml") {
        std::ofstream(dro_get_library_module_path() + name_) << content;
    }
    FileBesideLibrary(const FileBesideLibrary&) = delete;
    FileBesideLibrary& operator=(const FileBesideLibrary&) = delete;
    ~FileBesideLibrary() { std::filesystem::remove(dro_get_library_module_path() + name_); }

    const std::string& name() const { return name_; }

private:
    std::string name_;
};

// Enters a folder for the duration of a test.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::string& path) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { std::filesystem::current_path(before_); }

private:
    std::filesystem::path before_;
};

}  // namespace

TEST(SetFunctionName, loads_the_lower_case_name_from_the_directory) {
    const TemporaryFolder folder;
    folder.write("fifo_info.xml", "<ROOT><RULES><RULE>r</RULE></RULES></ROOT>");
    LoadedStore store;
    EXPECT_TRUE(store.info.set_function_name("FiFo", folder.path("")));
    EXPECT_EQ(store.info.function_name, "FiFo");
    EXPECT_NE(store.info.get_next_fn_rule_element(), nullptr);
}

TEST(SetFunctionName, directory_gets_a_separator_when_it_has_none) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("d"));
    folder.write("d/fifo_info.xml", "<ROOT/>");
    folder.write("d\\fifo_info.xml", "<ROOT/>");
    for (const char* directory : {"d", "d/", "d\\"}) {
        LoadedStore store;
        EXPECT_TRUE(store.info.set_function_name("Fifo", folder.path(directory))) << directory;
    }
    const WorkingDirectory inside(folder.path(""));
    LoadedStore store;
    EXPECT_TRUE(store.info.set_function_name("Fifo", "d"));
    EXPECT_FALSE(store.info.set_function_name("None", "d"));
    EXPECT_FALSE(store.info.set_function_name("None", "d\\"));
    EXPECT_FALSE(store.info.set_function_name("None", "/"));
    EXPECT_EQ(store.messages(),
              (Messages{not_found("d/none_info.xml"), not_found("d\\none_info.xml"),
                        not_found("/none_info.xml")}));
}

TEST(SetFunctionName, empty_directory_stands_for_that_of_the_library) {
    const FileBesideLibrary file("<ROOT/>");
    LoadedStore store;
    std::string name = file.name().substr(0, file.name().size() - std::string("_info.xml").size());
    EXPECT_TRUE(store.info.set_function_name(name, ""));
    EXPECT_FALSE(store.info.set_function_name("No-Such", ""));
    EXPECT_EQ(store.messages(),
              (Messages{not_found(dro_get_library_module_path() + "no-such_info.xml")}));
}

TEST(Load, name_that_does_not_exist_is_looked_for_in_the_directory_of_the_library) {
    const FileBesideLibrary file("<ROOT><BAD/></ROOT>");
    const TemporaryFolder elsewhere;
    const WorkingDirectory inside(elsewhere.path(""));
    EXPECT_EQ(loaded_messages(file.name()),
              (Messages{"Main element tag BAD is not a valid recognized tag"}));
    const FileBesideLibrary malformed("<ROOT>");
    EXPECT_EQ(loaded_messages(malformed.name())[0], invalid(malformed.name()));
}

TEST(Load, name_as_it_stands_comes_before_the_directory_of_the_library) {
    const FileBesideLibrary file("<ROOT><BESIDE/></ROOT>");
    const TemporaryFolder folder;
    folder.write(file.name(), "<ROOT><HERE/></ROOT>");
    const WorkingDirectory inside(folder.path(""));
    EXPECT_EQ(loaded_messages(file.name()),
              (Messages{"Main element tag HERE is not a valid recognized tag"}));
}

TEST(Load, included_files_are_looked_for_in_the_directory_of_the_library_too) {
    const FileBesideLibrary file("<ROOT><BESIDE/></ROOT>");
    EXPECT_EQ(Loaded("<INCLUDE FILE='" + file.name() + "'/>").messages(),
              (Messages{"Main element tag BESIDE is not a valid recognized tag"}));
}

TEST(Load, file_that_cannot_be_opened_brings_one_message_with_the_name_as_it_was_given) {
    const TemporaryFolder folder;
    const std::string directory = folder.path("");
    for (const std::string& name : {std::string("no/such.xml"), std::string(), directory}) {
        EXPECT_EQ(loaded_messages(name), (Messages{not_found(name)}));
    }
}

TEST(Load, malformed_file_brings_the_message_and_then_those_of_the_parser) {
    const TemporaryFolder folder;
    const std::string file =
        folder.write("bad.xml", "<ROOT><RULES><RULE>r</RULE></RULES>\n</OTHER>");
    LoadedStore store;
    EXPECT_FALSE(store.info.process_xml_file(file));
    const Messages messages = store.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0], invalid(file));
    EXPECT_EQ(messages[1].rfind("line 2, column ", 0), 0u) << messages[1];
    EXPECT_NE(messages[1].find(file), std::string::npos) << messages[1];
    EXPECT_EQ(store.info.get_next_fn_rule_element(), nullptr);
}

TEST(Load, document_without_a_root_brings_one_message) {
    const TemporaryFolder folder;
    for (const char* document : {"", " \n", "<!-- c -->", "<?xml version='1.0'?>"}) {
        EXPECT_EQ(loaded_messages(folder.write("a.xml", document)), (Messages{kNoRoot}))
            << document;
    }
}

TEST(Load, other_root_loads_nothing_and_posts_nothing) {
    for (const char* root : {"root", "Root", "ROOTS", "RULES"}) {
        Loaded loaded("");
        const std::string tag = root;
        EXPECT_TRUE(
            loaded.load_document("<" + tag + "><RULES><RULE>r</RULE></RULES><BAD/></" + tag + ">"))
            << root;
        EXPECT_EQ(loaded.info.get_next_fn_rule_element(), nullptr) << root;
    }
}

TEST(Load, parser_messages_of_another_root_are_posted) {
    const TemporaryFolder folder;
    const std::string file = folder.write("a.xml", "<root N='1' N='2'/>");
    EXPECT_EQ(loaded_messages(file),
              (Messages{"line 1, column 13 of " + file + ": attribute N is given more than once"}));
}

TEST(Load, root_without_sections_is_clean) {
    EXPECT_TRUE(Loaded("").clean);
    EXPECT_TRUE(Loaded("text <!-- c -->").clean);
}

TEST(Load, attributes_of_the_root_are_not_looked_at) {
    Loaded loaded("");
    EXPECT_TRUE(loaded.load_document("<ROOT NAME='x' VERSION='1'/>"));
}

TEST(Load, unknown_sections_are_reported_and_skipped) {
    Loaded loaded("<rules/><RULE><RULE>x</RULE></RULE><RULES><RULE>r</RULE></RULES><Include/>");
    EXPECT_FALSE(loaded.clean);
    EXPECT_EQ(loaded.messages(),
              (Messages{"Main element tag rules is not a valid recognized tag",
                        "Main element tag RULE is not a valid recognized tag",
                        "Main element tag Include is not a valid recognized tag"}));
    EXPECT_EQ(loaded.info.get_next_fn_rule_element()->text3, "r");
    EXPECT_EQ(loaded.info.get_next_fn_rule_element(), nullptr);
}

TEST(Load, each_section_goes_to_its_reader) {
    // What each reader says of a sub-element or attribute that it does not know.
    const struct {
        const char* tag;
        const char* content;
        const char* message;
    } rows[] = {
        {"MACROS", "<X/>", "Sub element tag X is not a valid sub tag of the main tag MACROS"},
        {"HIDDEN_PARAMETERS", "<PARAMETER NAME='p' X=''/>",
         "Attribute X is not a recognized attribute for hidden parameters "},
        {"PORT_RULES", "<PORT/>", "Name atrribute is missing from PORT tag "},
        {"PORTS", "<PORT/>", "Name atrribute is missing from PORT tag "},
        {"PARAMETER_RULES", "<PARAMETER/>", "Name atrribute is missing from PARAMETER tag "},
        {"PARAMETERS", "<PARAMETER/>", "Name atrribute is missing from PARAMETER tag "},
        {"FUNCTION_INFORMATION", "<X/>",
         "Sub element tag X is not a valid sub tag of the main tag FUNCTION_INFORMATION"},
        {"WAVE_DATA", "<WAVE/>", "Name atrribute is missing from WAVE tag "},
        {"CUSTOM_VECTORS", "<CUSTOM_VECTOR/>", "Name atrribute is missing from CUSTOM_VECTOR tag "},
        {"HTML_TEXT", "<INTRO><IF><X/></IF></INTRO>",
         "IF tag in conditional text sequences cannot have sub-tags"},
        {"RULES", "<X/>", "Sub element tag X is not a valid sub tag of the main tag RULES"},
        {"MESSAGES", "<X/>", "Sub element tag X is not a valid sub tag of the main tag MESSAGES"},
        {"MSGS", "<X/>", "Sub element tag X is not a valid sub tag of the main tag MESSAGES"},
        {"WIZARD_DATA", "<WIZARD_MAP/>", "Name atrribute is missing from WIZARD_MAP tag "},
        {"INCLUDE", "<X/>", "Sub element tag X is not a valid sub tag of the main tag INCLUDE"},
    };
    for (const auto& row : rows) {
        const std::string tag = row.tag;
        EXPECT_EQ(Loaded("<" + tag + ">" + row.content + "</" + tag + ">").messages(),
                  (Messages{row.message}))
            << tag;
    }
}

TEST(Load, sections_are_read_in_document_order_however_often_they_come) {
    Loaded loaded(
        "<PORTS><PORT NAME='b' TYPE='INPUT' WIDTH='1'/></PORTS>"
        "<PORT_RULES><PORT NAME='b' WIDTH='2'/><PORT NAME='c'/></PORT_RULES>"
        "<PORTS><PORT NAME='a' TYPE='INPUT'/><PORT NAME='c' TYPE='INPUT'/></PORTS>");
    EXPECT_EQ(loaded.messages(), (Messages{"Kivofunction Object c is of unknown type "}));
    EXPECT_EQ(loaded.info.get_kivo_obj("b")->port_width, "2");
    EXPECT_EQ(loaded.info.get_next_kivo_obj()->name, "b");
    EXPECT_EQ(loaded.info.get_next_kivo_obj()->name, "a");
    EXPECT_EQ(loaded.info.get_next_kivo_obj()->name, "c");
}

TEST(Load, parser_messages_come_after_those_of_the_sections) {
    const TemporaryFolder folder;
    const std::string file = folder.write("a.xml", "<ROOT><BAD N='1' N='2'/><WORSE/></ROOT>");
    EXPECT_EQ(loaded_messages(file),
              (Messages{"Main element tag BAD is not a valid recognized tag",
                        "Main element tag WORSE is not a valid recognized tag",
                        "line 1, column 18 of " + file + ": attribute N is given more than once"}));
}

TEST(Load, included_malformed_file_comes_before_parser_messages_of_the_including_one) {
    const TemporaryFolder folder;
    const std::string b = folder.write("b.xml", "<ROOT></OTHER>");
    const std::string a =
        folder.write("a.xml", "<ROOT N='1' N='2'><INCLUDE FILE='" + b + "'/></ROOT>");
    const Messages messages = loaded_messages(a);
    ASSERT_EQ(messages.size(), 3u);
    EXPECT_EQ(messages[0], invalid(b));
    EXPECT_NE(messages[1].find(b), std::string::npos) << messages[1];
    EXPECT_NE(messages[2].find(a), std::string::npos) << messages[2];
}

TEST(Load, malformed_file_includes_nothing) {
    Messages messages = Loaded("<INCLUDE FILE='no/such'/></OTHER>").messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].rfind("Invalid XML source file ", 0), 0u) << messages[0];
}

TEST(Load, second_load_adds_to_the_store) {
    Loaded loaded("<PORTS><PORT NAME='a' TYPE='INPUT'/></PORTS>");
    EXPECT_TRUE(loaded.load("<PORTS><PORT NAME='b' TYPE='INPUT'/></PORTS>"));
    EXPECT_NE(loaded.info.get_kivo_obj("a"), nullptr);
    EXPECT_NE(loaded.info.get_kivo_obj("b"), nullptr);
}

TEST(Load, clean_load_into_a_store_with_messages_is_false) {
    Loaded loaded("<BAD/>");
    EXPECT_FALSE(loaded.clean);
    EXPECT_FALSE(loaded.load(""));
    EXPECT_EQ(loaded.info.error_list.size(), 1u);
    loaded.info.error_list.clear();
    EXPECT_TRUE(loaded.load(""));
}

TEST(Load, message_of_the_host_makes_the_result_false_too) {
    Loaded loaded("");
    EXPECT_TRUE(loaded.clean);
    loaded.info.post_error_message("mine");
    EXPECT_FALSE(loaded.load(""));
}

TEST(ErrorList, messages_come_in_the_order_in_which_they_were_posted) {
    KIVO_INFO info;
    info.post_error_message("one");
    info.post_error_message("two");
    EXPECT_EQ(info.error_list, (Messages{"one", "two"}));
    EXPECT_EQ(info.get_next_error_message(), "one");
    EXPECT_EQ(info.get_next_error_message(), "two");
    EXPECT_EQ(info.get_next_error_message(), "");
}

TEST(ErrorList, end_stays_the_end_until_the_reset) {
    KIVO_INFO info;
    info.post_error_message("one");
    info.get_next_error_message();
    EXPECT_EQ(info.get_next_error_message(), "");
    EXPECT_EQ(info.get_next_error_message(), "");
    info.post_error_message("two");
    EXPECT_EQ(info.get_next_error_message(), "");
    info.reset_error_message_list();
    EXPECT_EQ(info.get_next_error_message(), "one");
    EXPECT_EQ(info.get_next_error_message(), "two");
}

TEST(ErrorList, message_posted_before_the_end_was_seen_is_reached) {
    KIVO_INFO info;
    info.post_error_message("one");
    info.get_next_error_message();
    info.post_error_message("two");
    EXPECT_EQ(info.get_next_error_message(), "two");
}

TEST(ErrorList, empty_message_ends_the_walk) {
    KIVO_INFO info;
    info.post_error_message("one");
    info.post_error_message("");
    info.post_error_message("three");
    EXPECT_EQ(messages_of(info), (Messages{"one"}));
    EXPECT_EQ(info.error_list.size(), 3u);
}
