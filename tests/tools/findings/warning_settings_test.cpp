#include "tools/findings/warning_settings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tools/findings/catalogue.h"

namespace {

Finding finding(Severity severity, const std::string& id) {
    Finding made;
    made.severity = severity;
    made.id = id;
    return made;
}

// What the settings make of a warning of two kinds and an error: "error ID" and so on.
std::string applied(const std::vector<std::string>& settings) {
    WarningSettings made;
    for (const std::string& setting : settings) {
        EXPECT_EQ(made.take(setting), "") << setting;
    }
    std::vector<Finding> findings = {finding(Severity::kWarning, "unread-text"),
                                     finding(Severity::kError, "port-type"),
                                     finding(Severity::kWarning, "not-a-number")};
    made.apply(findings);
    std::string text;
    for (const Finding& left : findings) {
        text += (left.severity == Severity::kError ? "E:" : "W:") + left.id + ' ';
    }
    return text;
}

TEST(WarningSettings, all_that_are_no_matter_of_taste_are_on) {
    EXPECT_EQ(applied({}), "W:unread-text E:port-type W:not-a-number ");
}

TEST(WarningSettings, warnings_are_switched_off_and_on_again) {
    EXPECT_EQ(applied({"no-unread-text"}), "E:port-type W:not-a-number ");
    EXPECT_EQ(applied({"no-unread-text", "unread-text"}),
              "W:unread-text E:port-type W:not-a-number ");
    EXPECT_EQ(applied({"no-unread-text", "no-not-a-number"}), "E:port-type ");
    EXPECT_EQ(applied({"no-unread-text", "all"}), "W:unread-text E:port-type W:not-a-number ");
    EXPECT_EQ(applied({"all", "no-unread-text"}), "E:port-type W:not-a-number ");
}

TEST(WarningSettings, warnings_can_count_as_errors) {
    EXPECT_EQ(applied({"error=unread-text"}), "E:unread-text E:port-type W:not-a-number ");
    EXPECT_EQ(applied({"error=all"}), "E:unread-text E:port-type E:not-a-number ");
    EXPECT_EQ(applied({"error=all", "no-unread-text"}), "E:port-type E:not-a-number ");
}

TEST(WarningSettings, a_matter_of_taste_is_off_until_it_is_asked_for) {
    const auto& rows = message_catalogue();
    for (const MessageDescription& row : rows) {
        EXPECT_TRUE(row.is_on || row.severity == Severity::kWarning) << row.id;
    }
}

TEST(WarningSettings, what_is_no_warning_is_refused) {
    WarningSettings settings;
    EXPECT_EQ(settings.take("unread-tex"), "no warning 'unread-tex', perhaps 'unread-text'");
    EXPECT_EQ(settings.take("no-unread-tex"), "no warning 'unread-tex', perhaps 'unread-text'");
    EXPECT_EQ(settings.take("error=zzz"), "no warning 'zzz'");
    EXPECT_EQ(settings.take(""), "no warning ''");
    EXPECT_EQ(settings.take("no-port-type"), "'port-type' is an error, which cannot be switched");
}

}  // namespace
