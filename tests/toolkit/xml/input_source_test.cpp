#include "kivo/toolkit/xml/internal/input_source.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/support/permissions.h"
#include "tests/support/temporary_folder.h"

namespace {

std::string content_of(const std::string& path) {
    KIVO_FILE file;
    KIVO_XML_FILE_INPUT_SOURCE source(&file);
    TextBuffer text;
    EXPECT_TRUE(source.open_xml_file(path)) << path;
    EXPECT_TRUE(source.read_text(text)) << path;
    EXPECT_EQ(text.data[text.size], '\0');
    source.close_xml_file();
    return std::string(text.view());
}

bool can_open(const std::string& path) {
    KIVO_FILE file;
    KIVO_XML_FILE_INPUT_SOURCE source(&file);
    const bool is_open = source.open_xml_file(path);
    EXPECT_EQ(source.is_open, is_open) << path;
    return is_open;
}

// Of a file that cannot be opened.
std::string failure_of(const std::string& path) {
    KIVO_FILE file;
    EXPECT_FALSE(file.open(path)) << path;
    return (file.is_there() ? "there: " : "not there: ") + file.failure();
}

std::size_t open_descriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}

}  // namespace

TEST(FileInputSource, new_source_is_not_open_and_has_no_name) {
    KIVO_FILE file;
    KIVO_XML_FILE_INPUT_SOURCE source(&file);
    TextBuffer text;
    EXPECT_FALSE(source.is_open);
    EXPECT_EQ(source.name, "");
    EXPECT_FALSE(source.read_text(text));
}

TEST(FileInputSource, reads_the_whole_file) {
    const TemporaryFolder folder;
    for (const std::size_t size : {0u, 1u, 4095u, 4096u, 65535u, 65536u, 65537u, 3000000u}) {
        std::string content(size, 'x');
        for (std::size_t i = 0; i < size; ++i) {
            content[i] = static_cast<char>(i * 31);
        }
        EXPECT_EQ(content_of(folder.write("file.xml", content)), content) << size;
    }
}

TEST(FileInputSource, reads_a_file_whose_size_is_not_told_beforehand) {
    const std::string status = content_of("/proc/self/status");
    EXPECT_NE(status.find("Pid:"), std::string::npos);
}

TEST(FileInputSource, reads_what_a_growing_file_holds) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file.xml", "ab");
    KIVO_FILE file;
    ASSERT_TRUE(file.open(path));
    const std::string longer(200000, 'y');
    folder.write("file.xml", longer);
    TextBuffer text;
    ASSERT_TRUE(file.read_all(text));
    EXPECT_EQ(text.view(), longer);
}

TEST(FileInputSource, reads_what_is_left_of_a_shrinking_file) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file.xml", std::string(200000, 'y'));
    for (const std::string shorter : {"ab", ""}) {
        KIVO_FILE file;
        ASSERT_TRUE(file.open(path));
        folder.write("file.xml", shorter);
        TextBuffer text;
        ASSERT_TRUE(file.read_all(text));
        EXPECT_EQ(text.view(), shorter);
        EXPECT_EQ(text.data[text.size], '\0');
    }
}

TEST(FileInputSource, opens_regular_files_only) {
    const TemporaryFolder folder;
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(can_open(folder.write("file.xml", "x")));
    EXPECT_FALSE(can_open(pipe));
    EXPECT_FALSE(can_open(folder.path("")));
    EXPECT_FALSE(can_open(folder.path("missing.xml")));
    EXPECT_FALSE(can_open("/dev/null"));
    EXPECT_FALSE(can_open("/dev/zero"));
    EXPECT_FALSE(can_open(""));
    EXPECT_FALSE(can_open(folder.path("file.xml") + std::string("\0x", 2)));
}

TEST(FileInputSource, file_that_may_not_be_read_is_not_opened) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file.xml", "x");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const ObeysPermissions obeys;
    EXPECT_FALSE(can_open(path));
    EXPECT_EQ(failure_of(path), "there: Permission denied");
}

TEST(FileInputSource, tells_why_a_file_is_not_opened) {
    const TemporaryFolder folder;
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", folder.path("loop"));
    EXPECT_EQ(failure_of(folder.path("missing.xml")), "not there: No such file or directory");
    EXPECT_EQ(failure_of(folder.write("a", "") + "/b"), "not there: Not a directory");
    EXPECT_EQ(failure_of(folder.path(std::string(300, 'n'))), "not there: File name too long");
    EXPECT_EQ(failure_of(""), "not there: No such file or directory");
    EXPECT_EQ(failure_of(std::string("a\0b", 3)), "not there: No such file or directory");
    EXPECT_EQ(failure_of(folder.path("")), "there: Is a directory");
    EXPECT_EQ(failure_of(pipe), "there: Not a regular file");
    EXPECT_EQ(failure_of("/dev/null"), "there: Not a regular file");
    EXPECT_EQ(failure_of(folder.path("loop")), "there: Too many levels of symbolic links");
}

// The system shows a process its own memory as a regular file, and nothing is mapped at its start.
TEST(FileInputSource, file_that_opens_and_cannot_be_read_is_no_text) {
    KIVO_FILE file;
    KIVO_XML_FILE_INPUT_SOURCE source(&file);
    ASSERT_TRUE(source.open_xml_file("/proc/self/mem"));
    TextBuffer text;
    EXPECT_FALSE(source.read_text(text));
    EXPECT_EQ(text.size, 0u);
    EXPECT_EQ(file.failure(), "Input/output error");
}

TEST(FileInputSource, closing_ends_reading) {
    const TemporaryFolder folder;
    KIVO_FILE file;
    KIVO_XML_FILE_INPUT_SOURCE source(&file);
    ASSERT_TRUE(source.open_xml_file(folder.write("file.xml", "x")));
    source.close_xml_file();
    TextBuffer text;
    EXPECT_FALSE(source.is_open);
    EXPECT_FALSE(source.read_text(text));
    source.close_xml_file();
}

TEST(FileInputSource, leaves_no_descriptor_open) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file.xml", "x");
    const std::size_t before = open_descriptors();
    {
        KIVO_FILE file;
        KIVO_XML_FILE_INPUT_SOURCE source(&file);
        EXPECT_TRUE(source.open_xml_file(path));
        EXPECT_TRUE(source.open_xml_file(path));
        EXPECT_EQ(open_descriptors(), before + 1);
        EXPECT_FALSE(source.open_xml_file(folder.path("")));
        EXPECT_EQ(open_descriptors(), before);
        EXPECT_TRUE(source.open_xml_file(path));
    }
    EXPECT_EQ(open_descriptors(), before);
}

TEST(FileInputSource, identity_is_that_of_the_file_and_not_of_its_spelling) {
    const TemporaryFolder folder;
    folder.write("file.xml", "x");
    folder.write("other.xml", "x");
    std::filesystem::create_symlink("file.xml", folder.path("link.xml"));
    const auto identity = [&folder](const char* name) {
        KIVO_FILE file;
        EXPECT_TRUE(file.open(folder.path(name))) << name;
        return file.identity();
    };
    EXPECT_EQ(identity("file.xml"), identity("./file.xml"));
    EXPECT_EQ(identity("file.xml"), identity("link.xml"));
    EXPECT_NE(identity("file.xml"), identity("other.xml"));
}
