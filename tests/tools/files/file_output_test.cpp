#include "tools/files/file_output.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/temporary_folder.h"

namespace fs = std::filesystem;

namespace {

class FileOutputTest : public testing::Test {
protected:
    static std::string content_of(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    TemporaryFolder temporary;
    fs::path folder = temporary.path("");
};

// Lets no file grow beyond some bytes, as a disk does that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_ = {};
    void (*handler_)(int);
};

TEST_F(FileOutputTest, writes_a_new_file) {
    const std::string content("a\0b\n", 4);
    EXPECT_EQ(write_file(folder / "new", content), std::nullopt);
    EXPECT_EQ(content_of(folder / "new"), content);
    EXPECT_EQ(files(), 1U);
}

TEST_F(FileOutputTest, new_files_have_the_usual_permissions) {
    const mode_t mask = umask(027);
    EXPECT_EQ(write_file(folder / "new", "x"), std::nullopt);
    umask(mask);
    EXPECT_EQ(fs::status(folder / "new").permissions(), fs::perms(0640));
}

TEST_F(FileOutputTest, replaces_a_file_and_keeps_its_permissions) {
    std::ofstream(folder / "old") << "a much longer content";
    fs::permissions(folder / "old", fs::perms(0604));
    EXPECT_EQ(write_file(folder / "old", "new"), std::nullopt);
    EXPECT_EQ(content_of(folder / "old"), "new");
    EXPECT_EQ(fs::status(folder / "old").permissions(), fs::perms(0604));
    EXPECT_EQ(files(), 1U);
}

TEST_F(FileOutputTest, follows_a_link) {
    std::ofstream(folder / "old") << "old";
    fs::create_symlink("old", folder / "link");
    EXPECT_EQ(write_file(folder / "link", "new"), std::nullopt);
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(content_of(folder / "old"), "new");
}

TEST_F(FileOutputTest, writes_a_name_of_the_greatest_length) {
    const std::string name(255, 'n');
    EXPECT_EQ(write_file(folder / name, "x"), std::nullopt);
    EXPECT_EQ(content_of(folder / name), "x");
}

TEST_F(FileOutputTest, tells_why_it_cannot_write) {
    EXPECT_EQ(write_file(folder / "none" / "new", "x"), "No such file or directory");
    EXPECT_EQ(write_file(folder, "x"), "Is a directory");
    EXPECT_EQ(write_file("", "x"), "No such file or directory");
    EXPECT_EQ(write_file("/dev/full", "x"), "No space left on device");
    EXPECT_EQ(files(), 0U);
}

TEST_F(FileOutputTest, devices_stay_devices) {
    EXPECT_EQ(write_file("/dev/null", "x"), std::nullopt);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(FileOutputTest, a_full_disk_leaves_no_new_file) {
    {
        const FullDisk disk(1000);
        EXPECT_EQ(write_file(folder / "new", std::string(1001, 'x')), "File too large");
    }
    EXPECT_EQ(files(), 0U);
}

TEST_F(FileOutputTest, a_full_disk_leaves_the_file_that_was_there) {
    std::ofstream(folder / "old") << "old";
    {
        const FullDisk disk(1000);
        EXPECT_EQ(write_file(folder / "old", std::string(1001, 'x')), "File too large");
    }
    EXPECT_EQ(content_of(folder / "old"), "old");
    EXPECT_EQ(files(), 1U);
}

}  // namespace
