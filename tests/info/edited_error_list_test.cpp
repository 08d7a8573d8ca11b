// What a host does to error_list does not lead a message to the place or id of another one.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/description.h"
#include "tests/support/extent.h"

namespace {

// "ID LINE" of each message; line 0 for those that stand nowhere.
std::vector<std::string> origins(const KIVO_INFO& info) {
    std::vector<std::string> origins;
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        origins.push_back(info.get_error_id(i) + ' ' +
                          std::to_string(info.get_error_place(i).line));
    }
    return origins;
}

using Texts = std::vector<std::string>;

const std::string kHost = "host-message 0";

std::string unknown(int line) {
    return "unknown-section " + std::to_string(line);
}

// One unknown section in each line, from line 2 on.
std::string sections(const std::vector<std::string>& tags) {
    std::string text;
    for (const std::string& tag : tags) {
        text += "\n<" + tag + "/>";
    }
    return text;
}

}  // namespace

TEST(EditedErrorList, message_that_the_host_puts_in_is_the_hosts_wherever_it_stands) {
    Loaded loaded(sections({"A", "B"}));
    Texts& list = loaded.info.error_list;
    list.insert(list.begin(), "first");
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, unknown(2), unknown(3)}));
    list.insert(list.begin() + 2, "middle");
    list.push_back("last");
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, unknown(2), kHost, unknown(3), kHost}));
}

TEST(EditedErrorList, messages_that_follow_one_taken_away_keep_their_places) {
    Loaded loaded(sections({"A", "B", "C"}));
    Texts& list = loaded.info.error_list;
    list.erase(list.begin() + 1);
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(2), unknown(4)}));
    list.erase(list.begin());
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(4)}));
}

TEST(EditedErrorList, message_whose_text_the_host_changed_is_the_hosts) {
    Loaded loaded(sections({"A", "B", "C"}));
    loaded.info.error_list[1] += " indeed";
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(2), kHost, unknown(4)}));
}

TEST(EditedErrorList, messages_in_another_order_keep_their_places) {
    Loaded loaded(sections({"C", "A", "B"}));
    Texts& list = loaded.info.error_list;
    std::sort(list.begin(), list.end());
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(3), unknown(4), unknown(2)}));
    std::swap(list.front(), list.back());
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(2), unknown(4), unknown(3)}));
}

TEST(EditedErrorList, one_out_and_one_in_is_noticed_though_the_length_stays) {
    Loaded loaded(sections({"A", "B", "C"}));
    Texts& list = loaded.info.error_list;
    list.erase(list.begin());
    list.push_back("mine");
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(3), unknown(4), kHost}));
}

TEST(EditedErrorList, repeated_texts_are_told_apart_by_what_stands_beside_them) {
    Loaded loaded(sections({"X", "A", "X", "B", "X"}));
    Texts& list = loaded.info.error_list;
    list.erase(list.begin());
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(3), unknown(4), unknown(5), unknown(6)}));
    list.erase(list.begin() + 1);
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(3), unknown(5), unknown(6)}));
}

TEST(EditedErrorList, repeated_texts_keep_their_order_around_what_the_host_puts_in) {
    Loaded loaded(sections({"X", "X", "X"}));
    Texts& list = loaded.info.error_list;
    list.insert(list.begin() + 1, "mine");
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(2), kHost, unknown(3), unknown(4)}));
    list.insert(list.begin(), "mine too");
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, unknown(2), kHost, unknown(3), unknown(4)}));
}

TEST(EditedErrorList, copy_of_a_message_that_the_host_puts_in_is_the_hosts) {
    Loaded loaded(sections({"A", "B", "C"}));
    Texts& list = loaded.info.error_list;
    list.insert(list.begin(), std::string(list[2]));
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, unknown(2), unknown(3), unknown(4)}));
}

TEST(EditedErrorList, message_that_the_host_posted_is_not_taken_for_the_librarys) {
    Loaded loaded(sections({"A", "B"}));
    loaded.info.post_error_message(loaded.info.error_list.front());
    loaded.info.error_list.erase(loaded.info.error_list.begin());
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(3), kHost}));
}

TEST(EditedErrorList, cleared_list_starts_anew_with_the_next_load) {
    Loaded loaded(sections({"A", "B"}));
    loaded.info.error_list.clear();
    loaded.load("\n\n" + sections({"A", "B"}));
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(4), unknown(5)}));
    loaded.info.error_list.erase(loaded.info.error_list.begin());
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(5)}));
}

TEST(EditedErrorList, each_load_after_a_change_fits) {
    Loaded loaded(sections({"A", "B", "C"}));
    Texts& list = loaded.info.error_list;
    list.erase(list.begin());
    loaded.load("\n\n\n" + sections({"A"}));
    EXPECT_EQ(origins(loaded.info), (Texts{unknown(3), unknown(4), unknown(5)}));
    list = {"mine"};
    loaded.load("\n\n\n\n" + sections({"A"}));
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, unknown(6)}));
    list.insert(list.begin(), "mine too");
    loaded.load(sections({"B"}));
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, kHost, unknown(6), unknown(2)}));
}

TEST(EditedErrorList, what_was_taken_away_and_comes_back_after_a_load_is_the_hosts) {
    Loaded loaded(sections({"A", "B"}));
    const Texts saved = std::move(loaded.info.error_list);
    loaded.info.error_list.clear();
    loaded.load("\n" + sections({"C"}));
    loaded.info.error_list.insert(loaded.info.error_list.begin(), saved.begin(), saved.end());
    EXPECT_EQ(origins(loaded.info), (Texts{kHost, kHost, unknown(3)}));
}

TEST(EditedErrorList, very_many_messages_are_asked_for_after_each_kind_of_change) {
    Loaded loaded("");
    for (std::size_t i = 0; i < kVeryMany; ++i) {
        loaded.info.post_error_message(std::to_string(i % 1000));
    }
    loaded.load(sections({"A"}));
    Texts& list = loaded.info.error_list;
    const auto count_known = [&] {
        std::size_t known = 0;
        for (std::size_t i = 0; i < list.size(); ++i) {
            known += loaded.info.get_error_id(i) == "unknown-section" ? 1 : 0;
        }
        return known;
    };
    list.insert(list.begin(), "mine");
    EXPECT_EQ(count_known(), 1U);
    list.erase(list.begin() + kVeryMany / 2);
    EXPECT_EQ(count_known(), 1U);
    std::reverse(list.begin(), list.end());
    EXPECT_EQ(count_known(), 1U);
    std::size_t known = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        list[i] += '!';
        known += loaded.info.get_error_id(i) == "unknown-section" ? 1 : 0;
    }
    EXPECT_EQ(known, 0U);
}
