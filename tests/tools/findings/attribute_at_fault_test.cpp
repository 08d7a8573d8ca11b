#include "tools/findings/attribute_at_fault.h"

#include <gtest/gtest.h>

#include <string>

#include "tools/findings/catalogue.h"

namespace {

TEST(AttributeAtFaultTest, TheAttributeOfTheMessageIsFoundWithItsValue) {
    EXPECT_EQ(attribute_at_fault("port-type", "", "<PORT NAME='TYPE=' TYPE = \"IN\"/>"),
              "TYPE = \"IN\"");
    EXPECT_EQ(attribute_at_fault("function-information-attribute",
                                 "Sub tagUNIT is not a recognized sub-tag for TIME_SCALE ",
                                 "<TIME_SCALE\n\tUNIT='ns'>"),
              "UNIT='ns'");
    EXPECT_EQ(attribute_at_fault("parameter-attribute",
                                 "Attribute B is not a recognized attribute for parameters",
                                 "<PARAMETER B='1' B='2'/>"),
              "B='2'");
}

TEST(AttributeAtFaultTest, AnUnknownObjectIsWrongInItsTypeOrElseInItsName) {
    EXPECT_EQ(attribute_at_fault("unknown-type", "", "<PORT NAME='a' TYPE='IN'/>"), "TYPE='IN'");
    EXPECT_EQ(attribute_at_fault("unknown-type", "", "<PORT NAME='a'/>"), "NAME='a'");
}

TEST(AttributeAtFaultTest, OtherMessagesAreAboutTheElement) {
    EXPECT_EQ(attribute_at_fault("message-type", "", "<MESSAGE>TYPE='INFO'</MESSAGE>"), "");
    EXPECT_EQ(attribute_at_fault("unknown-section", "", "<ODD NAME='a' TYPE='b'/>"), "");
    EXPECT_EQ(attribute_at_fault("port-attribute", "ODD", "<PORT ODD='a'/>"), "");
}

TEST(AttributeAtFaultTest, AnySourceIsSurvived) {
    for (const MessageDescription& row : message_catalogue()) {
        for (const std::string_view source : {"", "<", "<PORT", "<PORT TYPE", "<PORT TYPE=",
                                              "<PORT TYPE='", "<PORT ='A'", "PORT"}) {
            EXPECT_LE(attribute_at_fault(row.id, "Attribute TYPE is", source).size(), source.size())
                << row.id << ' ' << source;
        }
    }
}

}  // namespace
