#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/description.h"
#include "tests/support/extent.h"

namespace {

using Messages = std::vector<std::string>;

std::string root(const std::string& sections) {
    return "<ROOT>" + sections + "</ROOT>";
}

std::string include(const std::string& file_name) {
    return "<INCLUDE FILE='" + file_name + "'/>";
}

std::string rule(const std::string& text) {
    return "<RULES><RULE>" + text + "</RULE></RULES>";
}

// The texts of all function-wide rules, each with a blank after it.
std::string rules_of(KIVO_INFO& info) {
    std::string rules;
    info.reset_fn_rule_list();
    while (KIVO_RULE_ELEMENT* element = info.get_next_fn_rule_element()) {
        rules += element->text3 + " ";
    }
    return rules;
}

std::string not_found(const std::string& name) {
    return "XML source file " + name + " not found";
}

std::string includes_itself(const std::string& name) {
    return "XML source file " + name + " includes itself";
}

// Files 0 to count - 1, each with a rule and including the next.
void write_chain(const TemporaryFolder& folder, int count) {
    for (int i = 0; i < count; ++i) {
        const std::string next = i + 1 < count ? include(folder.path(std::to_string(i + 1))) : "";
        folder.write(std::to_string(i), root(rule(std::to_string(i)) + next));
    }
}

std::size_t count_rules(KIVO_INFO& info) {
    std::size_t count = 0;
    info.reset_fn_rule_list();
    while (info.get_next_fn_rule_element() != nullptr) {
        ++count;
    }
    return count;
}

}  // namespace

TEST(Include, directories_of_the_host_are_searched_in_their_order) {
    const TemporaryFolder first;
    const TemporaryFolder second;
    second.write("both.xml", root(rule("second")));
    second.write("only.xml", root(rule("only")));
    first.write("both.xml", root(rule("first")));
    const std::string main =
        first.write("main.xml", root(include("both.xml") + include("only.xml")));
    KIVO_INFO info;
    info.set_include_directories({"", first.path(""), second.path("")});
    EXPECT_TRUE(info.process_xml_file(main)) << info.get_next_error_message();
    EXPECT_EQ(rules_of(info), "first only ");
    info.delete_detached_objects();
}

TEST(Include, a_name_as_it_stands_comes_before_the_directories_of_the_host) {
    const TemporaryFolder folder;
    const TemporaryFolder other;
    const std::string whole = folder.write("part.xml", root(rule("whole")));
    other.write("part.xml", root(rule("other")));
    const std::string below = whole.substr(1);
    std::filesystem::create_directories(std::filesystem::path(other.path(below)).parent_path());
    other.write(below, root(rule("below")));
    const std::string main = folder.write("main.xml", root(include(whole)));
    KIVO_INFO info;
    info.set_include_directories({other.path("")});
    EXPECT_TRUE(info.process_xml_file(main));
    EXPECT_EQ(rules_of(info), "whole ");
    std::filesystem::remove(whole);
    EXPECT_FALSE(info.process_xml_file(main));
    EXPECT_EQ(info.error_list, Messages{not_found(whole)});
    info.delete_detached_objects();
}

TEST(Include, directories_of_the_host_hold_until_others_are_set) {
    const TemporaryFolder folder;
    folder.write("part.xml", root(rule("part")));
    const std::string main = folder.write("main.xml", root(include("part.xml")));
    KIVO_INFO info;
    info.set_include_directories({folder.path("")});
    EXPECT_TRUE(info.process_xml_file(main));
    info.set_include_directories({});
    EXPECT_FALSE(info.process_xml_file(main));
    EXPECT_EQ(info.error_list, Messages{not_found("part.xml")});
    info.delete_detached_objects();
}

TEST(Include, attribute_comes_before_sub_elements) {
    const TemporaryFolder folder;
    for (const char* name : {"a", "b", "c"}) {
        folder.write(name, root(rule(name)));
    }
    Loaded loaded("<INCLUDE FILE='" + folder.path("c") + "'><FILE>" + folder.path("a") +
                  "</FILE><FILE>" + folder.path("b") + "</FILE></INCLUDE>");
    EXPECT_EQ(loaded.messages(), Messages());
    EXPECT_EQ(rules_of(loaded.info), "c a b ");
}

TEST(Include, included_files_are_read_after_the_sections_of_the_including_one) {
    const TemporaryFolder folder;
    folder.write("a", root(rule("3")));
    folder.write("b", root(rule("4")));
    Loaded loaded(include(folder.path("a")) + rule("1") + include(folder.path("b")) + rule("2"));
    EXPECT_EQ(rules_of(loaded.info), "1 2 3 4 ");
}

TEST(Include, included_file_is_read_with_its_own_includes_before_the_next) {
    const TemporaryFolder folder;
    folder.write("a", root(rule("a") + include(folder.path("a1"))));
    folder.write("a1", root(rule("a1")));
    folder.write("b", root(rule("b")));
    Loaded loaded(include(folder.path("a")) + include(folder.path("b")));
    EXPECT_EQ(rules_of(loaded.info), "a a1 b ");
}

TEST(Include, file_name_of_a_sub_element_is_trimmed) {
    const TemporaryFolder folder;
    folder.write("a", root(rule("a")));
    Loaded loaded("<INCLUDE><FILE>\n\t " + folder.path("a") + " \n</FILE></INCLUDE>");
    EXPECT_EQ(loaded.messages(), Messages());
    EXPECT_EQ(rules_of(loaded.info), "a ");
}

TEST(Include, file_name_of_an_attribute_is_not_trimmed) {
    Loaded loaded("<INCLUDE FILE=' no/file '/>");
    EXPECT_EQ(loaded.messages(), (Messages{not_found(" no/file ")}));
}

TEST(Include, empty_attribute_is_an_empty_name) {
    Loaded loaded("<INCLUDE FILE=''/>");
    EXPECT_EQ(loaded.messages(), (Messages{not_found("")}));
}

TEST(Include, sub_element_without_text_names_nothing) {
    Loaded loaded("<INCLUDE><FILE/><FILE></FILE></INCLUDE>");
    EXPECT_TRUE(loaded.clean);
}

TEST(Include, sub_element_of_blanks_is_an_empty_name) {
    Loaded loaded("<INCLUDE><FILE>  </FILE></INCLUDE>");
    EXPECT_EQ(loaded.messages(), (Messages{not_found("")}));
}

TEST(Include, empty_section_names_nothing) {
    EXPECT_TRUE(Loaded("<INCLUDE/>").clean);
}

TEST(Include, unknown_attributes_and_sub_elements_are_reported_and_skipped) {
    const TemporaryFolder folder;
    folder.write("a", root(rule("a")));
    Loaded loaded("<INCLUDE NAME='x' FILE='" + folder.path("a") +
                  "' DIR='y'><DIR>z</DIR><file>w</file></INCLUDE>");
    EXPECT_EQ(loaded.messages(),
              (Messages{"Attribute DIR is not a recognized attribute for INCLUDE ",
                        "Attribute NAME is not a recognized attribute for INCLUDE ",
                        "Sub element tag DIR is not a valid sub tag of the main tag INCLUDE",
                        "Sub element tag file is not a valid sub tag of the main tag INCLUDE"}));
    EXPECT_EQ(rules_of(loaded.info), "a ");
}

TEST(Include, lower_case_attribute_is_unknown) {
    Loaded loaded("<INCLUDE file='x'/>");
    EXPECT_EQ(loaded.messages(),
              (Messages{"Attribute file is not a recognized attribute for INCLUDE "}));
}

TEST(Include, name_is_not_taken_relative_to_the_including_file) {
    const TemporaryFolder folder;
    folder.write("beside.xml", root(""));
    const std::string file = folder.write("main.xml", root(include("beside.xml")));
    LoadedStore store;
    EXPECT_FALSE(store.info.process_xml_file(file));
    EXPECT_EQ(store.messages(), (Messages{not_found("beside.xml")}));
}

TEST(Include, missing_file_does_not_keep_the_next_from_being_read) {
    const TemporaryFolder folder;
    folder.write("a", root(rule("a")));
    Loaded loaded(include("no/file") + include(folder.path("a")));
    EXPECT_FALSE(loaded.clean);
    EXPECT_EQ(loaded.messages(), (Messages{not_found("no/file")}));
    EXPECT_EQ(rules_of(loaded.info), "a ");
}

TEST(Include, message_of_an_included_file_comes_before_parser_messages_of_the_including_one) {
    const TemporaryFolder folder;
    const std::string b = folder.write("b.xml", root("<BAD N='1' N='2'/>"));
    const std::string a = folder.write("a.xml", root("<WORSE M='1' M='2'/>" + include(b)));
    LoadedStore store;
    EXPECT_FALSE(store.info.process_xml_file(a));
    EXPECT_EQ(store.messages(),
              (Messages{"Main element tag WORSE is not a valid recognized tag",
                        "Main element tag BAD is not a valid recognized tag",
                        "line 1, column 18 of " + b + ": attribute N is given more than once",
                        "line 1, column 20 of " + a + ": attribute M is given more than once"}));
}

TEST(Include, file_that_includes_itself_is_read_once) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.xml");
    folder.write("a.xml", root(rule("a") + include(file)));
    LoadedStore store;
    EXPECT_FALSE(store.info.process_xml_file(file));
    EXPECT_EQ(store.messages(), (Messages{includes_itself(file)}));
    EXPECT_EQ(rules_of(store.info), "a ");
}

TEST(Include, cycle_over_several_files_ends) {
    const TemporaryFolder folder;
    const std::string a = folder.path("a.xml");
    const std::string b = folder.write("b.xml", root(rule("b") + include(a) + rule("b2")));
    folder.write("a.xml", root(rule("a") + include(b)));
    LoadedStore store;
    store.info.process_xml_file(a);
    EXPECT_EQ(store.messages(), (Messages{includes_itself(a)}));
    EXPECT_EQ(rules_of(store.info), "a b b2 ");
}

TEST(Include, cycle_is_known_under_another_spelling) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.xml");
    std::filesystem::create_symlink("a.xml", folder.path("link.xml"));
    std::filesystem::create_hard_link(folder.write("a.xml", ""), folder.path("hard.xml"));
    std::filesystem::create_directory(folder.path("sub"));
    for (const char* spelling : {"./a.xml", "sub/../a.xml", "link.xml", "hard.xml", ".//a.xml"}) {
        const std::string name = folder.path(spelling);
        folder.write("a.xml", root(rule("a") + include(name)));
        LoadedStore store;
        store.info.process_xml_file(file);
        EXPECT_EQ(store.messages(), (Messages{includes_itself(name)})) << spelling;
        EXPECT_EQ(rules_of(store.info), "a ") << spelling;
    }
}

TEST(Include, other_includes_of_a_cycle_are_still_read) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.xml");
    folder.write("b.xml", root(rule("b")));
    folder.write("a.xml", root(include(file) + include(folder.path("b.xml"))));
    LoadedStore store;
    store.info.process_xml_file(file);
    EXPECT_EQ(store.messages(), (Messages{includes_itself(file)}));
    EXPECT_EQ(rules_of(store.info), "b ");
}

TEST(Include, files_included_twice_side_by_side_are_read_twice) {
    const TemporaryFolder folder;
    const std::string a = folder.write("a", root(rule("a")));
    const std::string b = folder.write("b", root(include(a)));
    const std::string c = folder.write("c", root(include(a)));
    Loaded loaded(include(a) + include(a) + include(b) + include(c));
    EXPECT_EQ(loaded.messages(), Messages());
    EXPECT_EQ(rules_of(loaded.info), "a a a a ");
}

TEST(Include, cycle_is_over_with_its_load) {
    const TemporaryFolder folder;
    const std::string a = folder.write("a", root(rule("a")));
    LoadedStore store;
    EXPECT_TRUE(store.info.process_xml_file(a));
    EXPECT_TRUE(store.info.process_xml_file(a));
    EXPECT_EQ(rules_of(store.info), "a a ");
}

TEST(Include, chain_of_ten_thousand_files_loads_with_a_small_stack_and_few_descriptors) {
    constexpr int kCount = 10000;
    const TemporaryFolder folder;
    write_chain(folder, kCount);
    LoadedStore store;
    bool clean = false;

    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit few = before;
    few.rlim_cur = 32;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    on_small_stack([&] { clean = store.info.process_xml_file(folder.path("0")); });
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(clean);
    EXPECT_EQ(store.messages(), Messages());
    EXPECT_EQ(count_rules(store.info), static_cast<std::size_t>(kCount));
}
