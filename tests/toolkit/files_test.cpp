#include "kivo/toolkit/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "kivo/toolkit/internal/module_path.h"
#include "tests/support/temporary_folder.h"

TEST(FileExists, only_for_a_regular_file) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file.xml", "");
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(dro_file_exists(file));
    EXPECT_FALSE(dro_file_exists(folder.path("missing.xml")));
    EXPECT_FALSE(dro_file_exists(folder.path("")));
    EXPECT_FALSE(dro_file_exists(pipe));
    EXPECT_FALSE(dro_file_exists("/dev/null"));
    EXPECT_FALSE(dro_file_exists(""));
}

TEST(FileExists, follows_links) {
    const TemporaryFolder folder;
    folder.write("file.xml", "");
    std::filesystem::create_symlink("file.xml", folder.path("link.xml"));
    std::filesystem::create_symlink("missing.xml", folder.path("broken.xml"));
    EXPECT_TRUE(dro_file_exists(folder.path("link.xml")));
    EXPECT_FALSE(dro_file_exists(folder.path("broken.xml")));
}

TEST(FileExists, name_with_a_nul_byte_is_not_cut_off) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file.xml", "");
    EXPECT_FALSE(dro_file_exists(file + std::string("\0.xml", 5)));
}

TEST(LibraryModulePath, is_the_directory_of_the_program_that_the_library_is_linked_into) {
    const std::string path = dro_get_library_module_path();
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(path.back(), '/');
    EXPECT_EQ(path, program.parent_path().string() + "/");
}

TEST(DirectoryOfModule, is_that_of_the_file_that_the_dynamic_linker_names) {
    EXPECT_EQ(directory_of_module("/usr/lib/libkivo.so", nullptr), "/usr/lib/");
    EXPECT_EQ(directory_of_module("/libkivo.so", nullptr), "/");
}

TEST(DirectoryOfModule, is_that_of_the_mapped_file_when_the_linker_tells_no_absolute_path) {
    const auto* const here = reinterpret_cast<const void*>(&dro_get_library_module_path);
    const std::string expected = dro_get_library_module_path();
    EXPECT_EQ(directory_of_module(nullptr, here), expected);
    EXPECT_EQ(directory_of_module("", here), expected);
    EXPECT_EQ(directory_of_module("bin/program", here), expected);
}

TEST(DirectoryOfModule, is_the_working_directory_when_nobody_knows) {
    const int on_the_stack = 0;
    EXPECT_EQ(directory_of_module(nullptr, &on_the_stack), "./");
    EXPECT_EQ(directory_of_module(nullptr, nullptr), "./");
}
