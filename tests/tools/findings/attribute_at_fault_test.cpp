#include "tools/findings/attribute_at_fault.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(AttributeAtFault, the_attribute_of_that_name_is_found_with_its_value) {
    EXPECT_EQ(attribute_at_fault("TYPE", "<PORT NAME='TYPE=' TYPE = \"IN\"/>"), "TYPE = \"IN\"");
    EXPECT_EQ(attribute_at_fault("UNIT", "<TIME_SCALE\n\tUNIT='ns'>"), "UNIT='ns'");
}

TEST(AttributeAtFault, of_several_the_last_is_the_one_that_is_read) {
    EXPECT_EQ(attribute_at_fault("B", "<PARAMETER B='1' B='2'/>"), "B='2'");
}

TEST(AttributeAtFault, an_attribute_that_is_not_there_is_not_found) {
    EXPECT_EQ(attribute_at_fault("TYPE", "<MESSAGE>TYPE='INFO'</MESSAGE>"), "");
    EXPECT_EQ(attribute_at_fault("", "<ODD NAME='a' TYPE='b'/>"), "");
    EXPECT_EQ(attribute_at_fault("ODD", "<PORT odd='a'/>"), "");
}

TEST(AttributeAtFault, any_source_is_survived) {
    for (const std::string_view source :
         {"", "<", "<PORT", "<PORT TYPE", "<PORT TYPE=", "<PORT TYPE='", "<PORT ='A'", "PORT"}) {
        for (const std::string_view name : {"TYPE", ""}) {
            EXPECT_LE(attribute_at_fault(name, source).size(), source.size()) << source;
        }
    }
}

}  // namespace
