#include "tools/findings/waivers.h"

#include <gtest/gtest.h>

#include "tests/tools/program.h"

namespace {

class WaiversTest : public testing::Test {
protected:
    // The settings file with this text.
    Waivers settings(const std::string& text) { return Waivers(folder_.write("kivo.toml", text)); }

    Finding finding(const std::string& id, const std::string& file,
                    const std::string& object = "") {
        Finding made;
        made.id = id;
        made.place.file = folder_.path(file);
        made.object = object;
        return made;
    }

    // Which of the findings of a description of these files are left.
    std::string left(Waivers& waivers, std::vector<Finding> findings,
                     const std::vector<std::string>& files) {
        std::vector<std::string> paths;
        for (const std::string& file : files) {
            paths.push_back(folder_.path(file));
        }
        waivers.apply(findings, paths);
        std::string text;
        for (const Finding& finding : findings) {
            text += finding.id + ' ';
        }
        return text;
    }

    TemporaryFolder folder_;
};

constexpr const char* kOne =
    "[[waiver]]\nid = \"unread-text\"\nfile = \"a_info.xml\"\nreason = \"a note\"\n";
constexpr const char* kNamed =
    "[[waiver]]\nid = \"not-a-number\"\nfile = \"a_info.xml\"\nname = \"w\"\nreason = \"later\"\n";

TEST_F(WaiversTest, a_finding_of_that_id_in_that_file_is_waived) {
    Waivers waivers = settings(kOne);
    EXPECT_EQ(waivers.failure(), std::nullopt);
    EXPECT_EQ(left(waivers,
                   {finding("unread-text", "a_info.xml"), finding("overridden", "a_info.xml"),
                    finding("unread-text", "part.xml")},
                   {"a_info.xml", "part.xml"}),
              "overridden unread-text ");
    EXPECT_TRUE(waivers.unused().empty());
}

TEST_F(WaiversTest, a_name_narrows_a_waiver) {
    Waivers waivers = settings(kNamed);
    EXPECT_EQ(left(waivers,
                   {finding("not-a-number", "a_info.xml", "w"),
                    finding("not-a-number", "a_info.xml", "v")},
                   {"a_info.xml"}),
              "not-a-number ");
}

TEST_F(WaiversTest, a_waiver_without_use_is_told_when_its_file_was_checked) {
    Waivers waivers = settings(std::string(kOne) + "\n" + kNamed);
    EXPECT_TRUE(waivers.unused().empty());
    EXPECT_EQ(left(waivers, {}, {"b_info.xml"}), "");
    EXPECT_TRUE(waivers.unused().empty());
    EXPECT_EQ(left(waivers, {finding("unread-text", "a_info.xml")}, {"a_info.xml"}), "");
    const std::vector<Finding> unused = waivers.unused();
    ASSERT_EQ(unused.size(), 1U);
    EXPECT_EQ(unused[0].id, "unused-waiver");
    EXPECT_EQ(unused[0].text, "nothing to waive: there is no not-a-number here");
    EXPECT_EQ(unused[0].place.start->line, 6);
}

TEST_F(WaiversTest, files_are_named_from_the_directory_of_the_settings) {
    std::filesystem::create_directory(folder_.path("sub"));
    Waivers waivers = settings(
        "[[waiver]]\nid = \"unread-text\"\nfile = \"./sub/../sub/a.xml\"\nreason = \"x\"\n");
    EXPECT_EQ(left(waivers, {finding("unread-text", "sub/a.xml")}, {"sub/a.xml"}), "");
}

TEST_F(WaiversTest, what_is_wrong_with_the_settings_is_said_with_its_place) {
    EXPECT_EQ(settings("[[waiver]]\nid = \"unread-text\"\n").failure(),
              "line 1, column 1: a waiver needs \"id\", \"file\" and \"reason\"");
    EXPECT_EQ(settings("[[waiver]]\nid = 1\n").failure(),
              "line 2, column 1: a waiver has texts \"id\", \"file\", \"reason\" and perhaps "
              "\"name\"");
    EXPECT_EQ(settings("\nwaivers = 1\n").failure(),
              "line 2, column 1: only tables [[waiver]] are known here");
    EXPECT_EQ(settings("[waiver]\n").failure(),
              "line 1, column 2: only tables [[waiver]] are known here");
    EXPECT_EQ(settings("[[waiver]]\nid = \"x\"\nfile = \"a\"\nreason = \"b\"\n").failure(),
              "line 1, column 1: there is no message 'x'");
    EXPECT_EQ(
        settings("[[waiver]]\nid = \"unknown-section\"\nfile = \"a\"\nreason = \"b\"\n").failure(),
        "line 1, column 1: 'unknown-section' is an error, which cannot be waived");
    const auto failure = settings("[[waiver]\n").failure();
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->substr(0, 7), "line 1,");
    EXPECT_EQ(Waivers(folder_.path("none.toml")).failure(), "No such file or directory");
    EXPECT_EQ(settings("").failure(), std::nullopt);
}

TEST_F(WaiversTest, settings_are_taken_from_beside_the_description_unless_they_are_given) {
    folder_.write("kivo.toml", kOne);
    std::filesystem::create_directory(folder_.path("sub"));
    WaiverFiles beside("");
    EXPECT_NE(beside.of_description(folder_.path("a_info.xml")), nullptr);
    EXPECT_EQ(beside.of_description(folder_.path("sub/a_info.xml")), nullptr);
    EXPECT_TRUE(beside.report().empty());
    WaiverFiles given(folder_.path("kivo.toml"));
    EXPECT_NE(given.of_description(folder_.path("sub/a_info.xml")), nullptr);
    WaiverFiles missing(folder_.path("none.toml"));
    ASSERT_NE(missing.of_description(folder_.path("a_info.xml")), nullptr);
    ASSERT_EQ(missing.report().size(), 1U);
    EXPECT_EQ(missing.report()[0].failure, "No such file or directory");
}

}  // namespace
