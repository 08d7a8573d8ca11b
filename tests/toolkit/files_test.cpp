#include "kivo/toolkit/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

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
