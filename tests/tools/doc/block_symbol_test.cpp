#include "tools/doc/block_symbol.h"

#include "tests/tools/doc/page_fixture.h"

namespace {

class BlockSymbolTest : public PageTest {
protected:
    void draw(const std::string& ports) { make_from("<PORTS>" + ports + "</PORTS>"); }

    std::size_t count(const std::string& xpath) const {
        return document.select_nodes(("//*[name()='svg'][@class='symbol']" + xpath).c_str()).size();
    }

    pugi::xml_node pin(const std::string& name) const {
        return document.select_node(("//g[text[contains(@class,'name')]='" + name + "']").c_str())
            .node();
    }
};

TEST_F(BlockSymbolTest, has_a_pin_for_every_port_that_leaves_the_block) {
    draw(
        "<PORT NAME='a' TYPE='INPUT'/><PORT NAME='b' TYPE='OUTPUT'/>"
        "<PORT NAME='c' TYPE='BIDIR'/><PORT NAME='d' TYPE='BURIED'/>");
    EXPECT_EQ(texts_of("//g/text[contains(@class,'name')]"), (Texts{"a", "b", "c"}));
}

TEST_F(BlockSymbolTest, names_the_function) {
    draw("<PORT NAME='a' TYPE='INPUT'/>");
    EXPECT_EQ(texts_of("//*[@class='function']"), Texts{"sample"});
    EXPECT_EQ(count("[@aria-label='Block symbol of sample']"), 1U);
}

TEST_F(BlockSymbolTest, inputs_stand_left_and_point_inwards) {
    draw("<PORT NAME='a' TYPE='INPUT'/>");
    const double box = document.select_node("//rect").node().attribute("x").as_double();
    EXPECT_EQ(pin("a").child("polygon").attribute("points").as_double(), box);
    EXPECT_STREQ(pin("a").child("text").attribute("class").value(), "name");
}

TEST_F(BlockSymbolTest, outputs_stand_right_and_point_outwards) {
    draw("<PORT NAME='b' TYPE='OUTPUT'/>");
    const pugi::xml_node box = document.select_node("//rect").node();
    EXPECT_GT(pin("b").child("polygon").attribute("points").as_double(),
              box.attribute("x").as_double() + box.attribute("width").as_double());
    EXPECT_STREQ(pin("b").child("text").attribute("class").value(), "name end");
}

TEST_F(BlockSymbolTest, bidirectional_ports_point_both_ways) {
    draw("<PORT NAME='a' TYPE='INPUT'/><PORT NAME='c' TYPE='BIDIR'/>");
    EXPECT_EQ(pin("a").select_nodes("polygon").size(), 1U);
    EXPECT_EQ(pin("c").select_nodes("polygon").size(), 2U);
}

TEST_F(BlockSymbolTest, clocks_are_marked) {
    draw(
        "<PORT NAME='a' TYPE='INPUT' IS_CLOCK_PORT='TRUE'/><PORT NAME='b' TYPE='INPUT'/>"
        "<PORT NAME='c' TYPE='OUTPUT' IS_CLOCK_PORT='TRUE'/>");
    EXPECT_EQ(count("//polyline[@class='clock']"), 1U);
    EXPECT_TRUE(pin("a").child("polyline"));
}

TEST_F(BlockSymbolTest, buses_show_their_widths) {
    draw(
        "<PORT NAME='a' TYPE='INPUT' WIDTH='N + 1'/><PORT NAME='b' TYPE='INPUT' WIDTH='1'/>"
        "<PORT NAME='c' TYPE='OUTPUT' WIDTH='8' WIDTH2D='4'/>");
    EXPECT_EQ(texts_of("//*[@class='width']"), (Texts{"N + 1", "8 \u00D7 4"}));
    EXPECT_EQ(count("//line[@class='wire bus']"), 2U);
}

TEST_F(BlockSymbolTest, ports_that_are_not_used_by_default_are_marked) {
    draw("<PORT NAME='a' TYPE='INPUT' USAGE='UNUSED'/><PORT NAME='b' TYPE='INPUT'/>");
    EXPECT_STREQ(pin("a").attribute("class").value(), "pin optional");
    EXPECT_STREQ(pin("b").attribute("class").value(), "pin");
}

TEST_F(BlockSymbolTest, long_names_are_shortened_at_a_character) {
    std::string name;
    std::string shown;
    for (int index = 0; index < 40; ++index) {
        name += "\u00E9";
        shown += index < 31 ? "\u00E9" : "";
    }
    draw("<PORT NAME='" + name + "' TYPE='INPUT'/>");
    EXPECT_EQ(texts_of("//g/text"), Texts{shown + "\u2026"});
    EXPECT_EQ(texts_of("//g/title"), Texts{name + ": Input port"});
}

TEST_F(BlockSymbolTest, there_is_none_without_pins) {
    draw("<PORT NAME='d' TYPE='BURIED'/>");
    EXPECT_FALSE(section("symbol"));
    EXPECT_TRUE(section("ports"));
}

}  // namespace
