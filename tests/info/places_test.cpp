#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/description.h"

namespace {

// "FILE:LINE:COLUMN", with the folder of the test taken off.
std::string short_form(const KIVO_PLACE& place, const TemporaryFolder& folder) {
    const std::string prefix = folder.path("");
    const std::string file =
        place.file.rfind(prefix, 0) == 0 ? place.file.substr(prefix.size()) : place.file;
    return file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
}

std::vector<std::string> error_places(Loaded& loaded) {
    std::vector<std::string> places;
    for (std::size_t i = 0; i < loaded.info.error_list.size(); ++i) {
        places.push_back(short_form(loaded.info.get_error_place(i), loaded.folder));
    }
    return places;
}

std::vector<std::string> error_ids(const KIVO_INFO& info) {
    std::vector<std::string> ids;
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        ids.push_back(info.get_error_id(i));
    }
    return ids;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(ErrorPlace, is_that_of_the_element_concerned) {
    Loaded loaded("\n  <BAD/>\n<RULES>\n\t<X/></RULES>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:2:3", "description.xml:4:2"}));
    EXPECT_EQ(error_ids(loaded.info), (Texts{"unknown-section", "rules-sub-tag"}));
}

TEST(ErrorPlace, of_an_element_on_the_first_line_counts_from_1) {
    Loaded loaded("<BAD/>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:1:7"}));
}

TEST(ErrorPlace, byte_order_mark_does_not_count) {
    Loaded loaded("");
    loaded.load_document("\xEF\xBB\xBF<ROOT><BAD/></ROOT>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:1:7"}));
}

TEST(ErrorPlace, of_a_file_without_a_root_is_the_file) {
    Loaded loaded("");
    loaded.load_document("");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:0:0"}));
    EXPECT_EQ(error_ids(loaded.info), (Texts{"no-root"}));
}

TEST(ErrorPlace, of_a_malformed_file_is_the_file_and_then_what_the_parser_found) {
    Loaded loaded("");
    loaded.load_document("<ROOT>\n  <A></B></ROOT>");
    const Texts places = error_places(loaded);
    ASSERT_EQ(places.size(), 2u);
    EXPECT_EQ(places[0], "description.xml:0:0");
    EXPECT_EQ(places[1].rfind("description.xml:2:", 0), 0u) << places[1];
    EXPECT_EQ(error_ids(loaded.info), (Texts{"invalid-file", "xml-syntax"}));
}

TEST(ErrorPlace, of_a_parser_message_is_the_one_that_it_names) {
    Loaded loaded("\n<RULES N='1' N='2'/>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:2:14"}));
    EXPECT_EQ(loaded.messages()[0], "line 2, column 14 of " +
                                        loaded.folder.path("description.xml") +
                                        ": attribute N is given more than once");
}

TEST(ErrorPlace, of_a_missing_file_is_the_element_that_names_it) {
    Loaded loaded("<INCLUDE FILE='no/such'>\n<FILE>no/other</FILE></INCLUDE>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:1:7", "description.xml:2:1"}));
    EXPECT_EQ(error_ids(loaded.info), (Texts{"file-not-found", "file-not-found"}));
}

TEST(ErrorPlace, of_a_missing_file_that_the_host_names_is_that_file) {
    KIVO_INFO info;
    info.process_xml_file("no/such");
    EXPECT_EQ(info.get_error_place(0).file, "no/such");
    EXPECT_EQ(info.get_error_place(0).line, 0);
}

TEST(ErrorPlace, of_an_included_file_names_it) {
    Loaded loaded("");
    const std::string included = loaded.folder.write("included.xml", "<ROOT>\n\n<BAD/></ROOT>");
    loaded.load("<WORSE/><INCLUDE FILE='" + included + "'/>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:1:7", "included.xml:3:1"}));
}

TEST(ErrorPlace, of_a_cycle_is_the_include_that_closes_it) {
    Loaded loaded("");
    loaded.load("\n<INCLUDE FILE='" + loaded.folder.path("description.xml") + "'/>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:2:1"}));
    EXPECT_EQ(error_ids(loaded.info), (Texts{"include-cycle"}));
}

TEST(ErrorPlace, message_of_the_host_has_none) {
    Loaded loaded("<BAD/>");
    loaded.info.post_error_message("mine");
    loaded.info.error_list.push_back("pushed");
    loaded.load("<WORSE/>");
    EXPECT_EQ(error_ids(loaded.info),
              (Texts{"unknown-section", "host-message", "host-message", "unknown-section"}));
    EXPECT_EQ(error_places(loaded),
              (Texts{"description.xml:1:7", ":0:0", ":0:0", "description.xml:1:7"}));
}

TEST(ErrorPlace, message_that_does_not_exist_has_none) {
    Loaded loaded("<BAD/>");
    for (const std::size_t index : {std::size_t{1}, std::size_t{1000}, ~std::size_t{0}}) {
        EXPECT_EQ(short_form(loaded.info.get_error_place(index), loaded.folder), ":0:0");
        EXPECT_EQ(loaded.info.get_error_id(index), "host-message");
    }
}

TEST(ErrorPlace, messages_that_the_host_took_away_have_none) {
    Loaded loaded("<BAD/><WORSE/>");
    loaded.info.error_list.clear();
    EXPECT_EQ(short_form(loaded.info.get_error_place(0), loaded.folder), ":0:0");
    EXPECT_EQ(loaded.info.get_error_id(0), "host-message");
    loaded.load("\n<BAD/>");
    EXPECT_EQ(error_places(loaded), (Texts{"description.xml:2:1"}));
}

TEST(Place, of_an_object_is_the_element_that_declared_it_first) {
    Loaded loaded(
        "\n<PORTS> <PORT NAME='a' TYPE='INPUT'/></PORTS>"
        "\n<PORT_RULES><PORT NAME='a' WIDTH='2'/></PORT_RULES>"
        "\n<PARAMETERS>\n<PARAMETER NAME='p' TYPE='STRING'/></PARAMETERS>"
        "<HIDDEN_PARAMETERS>\n <PARAMETER NAME='h'/></HIDDEN_PARAMETERS>"
        "\n<MACROS><MACRO NAME='m' DEFINITION='d'/></MACROS>");
    EXPECT_EQ(loaded.messages(), Texts());
    const auto place_of = [&loaded](const char* name) {
        const KIVO_OBJ_INFO* object = loaded.info.get_kivo_obj(name);
        return short_form(loaded.info.get_place(object->mark), loaded.folder);
    };
    EXPECT_EQ(place_of("a"), "description.xml:2:9");
    EXPECT_EQ(place_of("p"), "description.xml:5:1");
    EXPECT_EQ(place_of("h"), "description.xml:6:2");
    EXPECT_EQ(place_of("m"), "description.xml:7:9");
}

TEST(Place, of_rules_messages_vectors_and_wizard_maps) {
    Loaded loaded(
        "<RULES>\n<RULE>r</RULE></RULES>\n<MESSAGES><MESSAGE TYPE='INFO'>m</MESSAGE>"
        "</MESSAGES>\n<WAVE_DATA>\n<WAVE NAME='w'>\n<STIM>force a 0 0</STIM></WAVE>"
        "</WAVE_DATA>\n<WIZARD_DATA> <WIZARD_MAP NAME='z'/></WIZARD_DATA>");
    EXPECT_EQ(loaded.messages(), Texts());
    KIVO_INFO& info = loaded.info;
    const auto shown = [&](const KIVO_MARK& mark) {
        return short_form(info.get_place(mark), loaded.folder);
    };
    EXPECT_EQ(shown(info.get_next_fn_rule_element()->mark), "description.xml:2:1");
    EXPECT_EQ(shown(info.get_next_msg()->mark), "description.xml:3:11");
    KIVO_VECTOR_OBJ* vector = info.get_vector_obj("w");
    EXPECT_EQ(shown(vector->mark), "description.xml:5:1");
    EXPECT_EQ(shown(vector->get_next_vector_stimulus()->mark), "description.xml:6:1");
    EXPECT_EQ(shown(info.get_next_wizard_map()->mark), "description.xml:7:15");
}

TEST(Place, of_something_that_no_file_declared_is_nowhere) {
    Loaded loaded("");
    const KIVO_OBJ_INFO* object = loaded.info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(short_form(loaded.info.get_place(object->mark), loaded.folder), ":0:0");
    EXPECT_EQ(short_form(loaded.info.get_place({99, 0}), loaded.folder), ":0:0");
}

TEST(Place, stays_known_after_further_loads) {
    Loaded loaded("\n<PORTS><PORT NAME='a' TYPE='INPUT'/></PORTS>");
    for (int i = 0; i < 20; ++i) {
        loaded.load("");
    }
    EXPECT_EQ(short_form(loaded.info.get_place(loaded.info.get_kivo_obj("a")->mark), loaded.folder),
              "description.xml:2:8");
}

TEST(Place, of_a_text_is_the_element_that_opened_it) {
    Loaded loaded(
        "<HTML_TEXT>\n<INTRO>\n<T>a</T>\n <IF>p</IF>\n<THEN>\n<TEXT>b</TEXT></THEN>"
        "<ELSE><IF>q</IF><THEN>c</THEN></ELSE><T>d</T>\n  <THEN>e</THEN></INTRO></HTML_TEXT>");
    EXPECT_EQ(loaded.messages(), Texts());
    const auto shown = [&](const KIVO_CONDITIONAL_TEXT* text) {
        return text == nullptr ? "no text"
                               : short_form(loaded.info.get_place(text->mark), loaded.folder);
    };
    KIVO_CONDITIONAL_TEXT* sequence = loaded.info.html_text->intro;
    EXPECT_EQ(shown(sequence), "description.xml:2:1");
    EXPECT_EQ(shown(sequence->get_next_text_element()), "description.xml:3:1");
    KIVO_CONDITIONAL_TEXT* piece = sequence->get_next_text_element();
    EXPECT_EQ(shown(piece), "description.xml:4:2");
    ASSERT_NE(piece->then_sub, nullptr);
    ASSERT_NE(piece->else_sub, nullptr);
    EXPECT_EQ(shown(piece->then_sub), "description.xml:5:1");
    EXPECT_EQ(shown(piece->then_sub->get_next_text_element()), "description.xml:6:1");
    EXPECT_EQ(shown(piece->else_sub), "description.xml:6:22");
    EXPECT_EQ(shown(piece->else_sub->get_next_text_element()), "description.xml:6:28");
    EXPECT_EQ(shown(sequence->get_next_text_element()), "description.xml:6:59");
    EXPECT_EQ(shown(sequence->get_next_text_element()), "description.xml:7:3");
}
