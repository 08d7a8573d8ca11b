// What one load reads and makes at most: at the limit, below and above it.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/description.h"

namespace {

using Messages = std::vector<std::string>;

constexpr std::size_t kMostFiles = 100000;
constexpr std::size_t kMostCopies = 1000000;

std::string root(const std::string& sections) {
    return "<ROOT>" + sections + "</ROOT>";
}

std::string include(const std::string& file_name) {
    return "<INCLUDE FILE='" + file_name + "'/>";
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string whole;
    for (std::size_t i = 0; i < count; ++i) {
        whole += text;
    }
    return whole;
}

// Files "0", "1" and so on, each of which includes the next one twice. The last has a rule.
std::string write_doubling_files(const TemporaryFolder& folder, int count) {
    for (int i = 0; i + 1 < count; ++i) {
        folder.write(std::to_string(i),
                     root(repeated(include(folder.path(std::to_string(i + 1))), 2)));
    }
    folder.write(std::to_string(count - 1), root("<RULES><RULE>r</RULE></RULES>"));
    return folder.path("0");
}

std::size_t count_rules(KIVO_INFO& info) {
    std::size_t count = 0;
    info.reset_fn_rule_list();
    while (info.get_next_fn_rule_element() != nullptr) {
        ++count;
    }
    return count;
}

// A file that is read in no time, included so often that with the including file so many are read.
Messages messages_of_reading(std::size_t files, LoadedStore& store) {
    const TemporaryFolder folder;
    const std::string part = folder.write("part", "<X/>");
    store.info.process_xml_file(folder.write("main", root(repeated(include(part), files - 1))));
    return store.messages();
}

std::string too_many(const std::string& file) {
    return "XML source file " + file + " not read, too many files are included";
}

std::string ports(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += "<PORT NAME='p" + std::to_string(i) + "' TYPE='INPUT'/>";
    }
    return text;
}

std::string maps(std::size_t count, const std::string& content = "") {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += "<WIZARD_MAP NAME='m" + std::to_string(i) + "'>" + content + "</WIZARD_MAP>";
    }
    return text;
}

std::string wizard(const std::string& content) {
    return "<WIZARD_DATA>" + content + "</WIZARD_DATA>";
}

std::size_t count_objects(KIVO_INFO& info, const std::string& map_name) {
    std::size_t count = 0;
    auto* const map = dynamic_cast<KIVO_WIZARD_MAP*>(info.wizard_map_map.look_up(map_name));
    while (map != nullptr && map->get_next_kivo_obj() != nullptr) {
        ++count;
    }
    return count;
}

std::string receives_too_many(const std::string& map) {
    return "Wizard map " + map + " receives too many objects";
}

}  // namespace

TEST(LongLimits, a_load_reads_a_hundred_thousand_files_and_not_one_more) {
    LoadedStore below;
    EXPECT_EQ(messages_of_reading(kMostFiles - 1, below), Messages());
    LoadedStore at;
    EXPECT_EQ(messages_of_reading(kMostFiles, at), Messages());
    LoadedStore above;
    EXPECT_EQ(messages_of_reading(kMostFiles + 10, above).size(), 1U);
    EXPECT_EQ(above.info.get_error_id(0), "too-many-files");
    EXPECT_EQ(above.info.get_error_facts(0).element, "INCLUDE");
    EXPECT_EQ(above.info.get_error_facts(0).attribute, "FILE");
}

TEST(LongLimits, files_that_double_end_with_one_message_at_the_include_that_goes_too_far) {
    const TemporaryFolder folder;
    LoadedStore store;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(store.info.process_xml_file(write_doubling_files(folder, 40)));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
    ASSERT_EQ(store.messages().size(), 1U);
    const std::string included = store.info.get_error_facts(0).word;
    EXPECT_EQ(store.messages(), Messages{too_many(included)});
    // The file that names the next one.
    const std::string number = included.substr(folder.path("").size());
    EXPECT_EQ(store.info.get_error_place(0).file,
              folder.path(std::to_string(std::stoi(number) - 1)));
    EXPECT_EQ(store.info.get_error_place(0).line, 1);
}

TEST(LongLimits, each_load_counts_its_own_files) {
    const TemporaryFolder folder;
    LoadedStore store;
    const std::string first = write_doubling_files(folder, 16);  // 65,535 files
    EXPECT_TRUE(store.info.process_xml_file(first));
    EXPECT_TRUE(store.info.process_xml_file(first));
    EXPECT_EQ(count_rules(store.info), 2U << 15U);
}

TEST(LongLimits, wizard_maps_receive_a_million_copies_and_not_one_more) {
    Loaded loaded("");
    // Just below, and with the last one at the limit: 999 ports for 1,001 maps, and one for one
    // map.
    const std::string below = wizard(ports(999) + maps(1001));
    const std::string last = wizard("<PORT NAME='last' TYPE='INPUT'/><WIZARD_MAP NAME='other'/>");
    static_assert(999 * 1001 + 1 == kMostCopies);
    EXPECT_TRUE(loaded.load(below));
    loaded.info.delete_detached_objects();
    EXPECT_FALSE(loaded.load(below + wizard("<PORT NAME='last' TYPE='INPUT'/>")));
    EXPECT_EQ(count_objects(loaded.info, "m0"), 1000U);
    EXPECT_EQ(count_objects(loaded.info, "m1"), 999U);
    EXPECT_EQ(loaded.messages().size(), 1000U);
    EXPECT_EQ(loaded.messages().front(), receives_too_many("m1"));
}
