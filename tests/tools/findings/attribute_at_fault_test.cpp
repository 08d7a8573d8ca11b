#include "tools/findings/attribute_at_fault.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(AttributeAtFaultTest, TheAttributeOfThatNameIsFoundWithItsValue) {
    EXPECT_EQ(attribute_at_fault("TYPE", "<PORT NAME='TYPE=' TYPE = \"IN\"/>"), "TYPE = \"IN\"");
    EXPECT_EQ(attribute_at_fault("UNIT", "<TIME_SCALE\n\tUNIT='ns'>"), "UNIT='ns'");
}

TEST(AttributeAtFaultTest, OfSeveralTheLastIsTheOneThatIsRead) {
    EXPECT_EQ(attribute_at_fault("B", "<PARAMETER B='1' B='2'/>"), "B='2'");
}

TEST(AttributeAtFaultTest, AnAttributeThatIsNotThereIsNotFound) {
    EXPECT_EQ(attribute_at_fault("TYPE", "<MESSAGE>TYPE='INFO'</MESSAGE>"), "");
    EXPECT_EQ(attribute_at_fault("", "<ODD NAME='a' TYPE='b'/>"), "");
    EXPECT_EQ(attribute_at_fault("ODD", "<PORT odd='a'/>"), "");
}

TEST(AttributeAtFaultTest, AnySourceIsSurvived) {
    for (const std::string_view source :
         {"", "<", "<PORT", "<PORT TYPE", "<PORT TYPE=", "<PORT TYPE='", "<PORT ='A'", "PORT"}) {
        for (const std::string_view name : {"TYPE", ""}) {
            EXPECT_LE(attribute_at_fault(name, source).size(), source.size()) << source;
        }
    }
}

}  // namespace
