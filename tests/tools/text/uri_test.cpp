#include "tools/text/uri.h"

#include <gtest/gtest.h>

namespace {

TEST(Uri, a_relative_path_stays_relative) {
    EXPECT_EQ(uri_of_path("examples/fifo_info.xml"), "examples/fifo_info.xml");
    EXPECT_EQ(uri_of_path("../a~b-c.d"), "../a~b-c.d");
}

TEST(Uri, an_absolute_path_names_the_file_system) {
    EXPECT_EQ(uri_of_path("/a/b.xml"), "file:///a/b.xml");
}

TEST(Uri, what_means_something_else_is_encoded) {
    EXPECT_EQ(uri_of_path("a b%41#?"), "a%20b%2541%23%3F");
    EXPECT_EQ(uri_of_path("c:d\\e"), "c%3Ad%5Ce");
    EXPECT_EQ(uri_of_path("<stdin>"), "%3Cstdin%3E");
    EXPECT_EQ(uri_of_path("/\xC3\xA4\xFF\n"), "file:///%C3%A4%FF%0A");
}

}  // namespace
