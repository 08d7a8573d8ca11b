#include "tools/files/inputs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

using Paths = std::vector<std::string>;

class InputsTest : public testing::Test {
protected:
    void make(const std::string& directory) {
        std::filesystem::create_directories(folder_.path(directory));
    }
    void link(const std::string& target, const std::string& name) {
        std::filesystem::create_symlink(target, folder_.path(name));
    }
    // The paths below the folder, of which all can be read.
    Paths found(const std::string& directory) { return found_in({folder_.path(directory)}); }
    Paths found_in(const Paths& arguments) {
        Paths paths;
        for (const Input& input : find_inputs(arguments)) {
            EXPECT_FALSE(input.failure) << input.path;
            paths.push_back(input.path.substr(folder_.path("").size()));
        }
        return paths;
    }

    TemporaryFolder folder_;
};

TEST_F(InputsTest, files_stay_as_they_are) {
    const std::vector<Input> inputs = find_inputs({"b", "-", "a"});
    ASSERT_EQ(inputs.size(), 3U);
    EXPECT_EQ(inputs[0].path, "b");
    EXPECT_EQ(inputs[1].path, "-");
    EXPECT_EQ(inputs[2].path, "a");
}

TEST_F(InputsTest, a_file_named_twice_counts_once) {
    make("d");
    const std::string path = folder_.write("d/a_info.xml", "");
    const std::string other = folder_.path("d/../d/a_info.xml");
    EXPECT_EQ(found_in({path, other, path}), Paths{"d/a_info.xml"});
    EXPECT_EQ(found_in({other, path}), Paths{"d/../d/a_info.xml"});
    // One that is not there, too.
    EXPECT_EQ(find_inputs({"none", "a", "none", "./none"}).size(), 2U);
    EXPECT_EQ(find_inputs({"none/a", "none/a", "none/b"}).size(), 2U);
}

TEST_F(InputsTest, a_directory_named_twice_counts_once) {
    make("d/deep");
    const std::string top = folder_.path("d");
    const std::string deep = folder_.path("d/deep");
    const std::string a = folder_.write("d/a_info.xml", "");
    const std::string b = folder_.write("d/deep/b_info.xml", "");
    EXPECT_EQ(found_in({top, top, top + '/'}), (Paths{"d/a_info.xml", "d/deep/b_info.xml"}));
    EXPECT_EQ(found_in({top, deep}), (Paths{"d/a_info.xml", "d/deep/b_info.xml"}));
    EXPECT_EQ(found_in({deep, top}), (Paths{"d/deep/b_info.xml", "d/a_info.xml"}));
    EXPECT_EQ(found_in({b, top}), (Paths{"d/deep/b_info.xml", "d/a_info.xml"}));
    EXPECT_EQ(found_in({top, a}), (Paths{"d/a_info.xml", "d/deep/b_info.xml"}));
    // What has been named already is no directory without descriptions.
    EXPECT_EQ(found_in({b, deep}), Paths{"d/deep/b_info.xml"});
}

TEST_F(InputsTest, another_name_of_a_file_is_a_file_of_its_own) {
    make("d");
    const std::string path = folder_.write("d/a_info.xml", "");
    link("a_info.xml", "d/b_info.xml");
    EXPECT_EQ(found("d"), (Paths{"d/a_info.xml", "d/b_info.xml"}));
    EXPECT_EQ(found_in({path, folder_.path("d/b_info.xml")}),
              (Paths{"d/a_info.xml", "d/b_info.xml"}));
}

TEST_F(InputsTest, a_directory_stands_for_its_descriptions_sorted) {
    make("d/deep/er");
    for (const char* const name :
         {"d/b_info.xml", "d/deep/er/a_info.xml", "d/a_info.xml", "d/deep/B_info.xml"}) {
        folder_.write(name, "");
    }
    EXPECT_EQ(found("d"),
              (Paths{"d/a_info.xml", "d/b_info.xml", "d/deep/B_info.xml", "d/deep/er/a_info.xml"}));
    EXPECT_EQ(found("d/"), found("d"));
}

TEST_F(InputsTest, other_names_do_not_count) {
    make("d/dir_info.xml");
    for (const char* const name : {"d/_info.xml", "d/a_info.xml.bak", "d/info.xml", "d/a_INFO.xml",
                                   "d/ainfo.xml", "d/dir_info.xml/x_info.xml"}) {
        folder_.write(name, "");
    }
    EXPECT_EQ(found("d"), Paths{"d/dir_info.xml/x_info.xml"});
}

TEST_F(InputsTest, links_in_a_circle_do_no_harm) {
    make("d/e");
    folder_.write("d/e/a_info.xml", "");
    link("..", "d/e/up");
    link(".", "d/e/self");
    link("loop", "d/loop");
    EXPECT_EQ(found("d"), Paths{"d/e/a_info.xml"});
}

TEST_F(InputsTest, links_are_followed) {
    make("d");
    make("other");
    folder_.write("other/a_info.xml", "");
    link("../other", "d/linked");
    link("../other/a_info.xml", "d/b_info.xml");
    EXPECT_EQ(found("d"), (Paths{"d/b_info.xml", "d/linked/a_info.xml"}));
}

TEST_F(InputsTest, a_link_to_nothing_is_left_to_who_reads_it) {
    make("d");
    link("none", "d/a_info.xml");
    EXPECT_EQ(found("d"), Paths{"d/a_info.xml"});
}

TEST_F(InputsTest, a_directory_without_descriptions_is_a_failure) {
    make("d/e");
    folder_.write("d/e/other.xml", "");
    const std::vector<Input> inputs = find_inputs({folder_.path("d")});
    ASSERT_EQ(inputs.size(), 1U);
    EXPECT_EQ(inputs[0].path, folder_.path("d"));
    EXPECT_EQ(inputs[0].failure, "no file *_info.xml is below this directory");
}

TEST_F(InputsTest, deep_directories_are_searched) {
    std::string path = "d";
    for (int i = 0; i < 300; ++i) {
        path += "/x";
    }
    make(path);
    folder_.write(path + "/a_info.xml", "");
    EXPECT_EQ(found("d"), Paths{path + "/a_info.xml"});
}

}  // namespace
