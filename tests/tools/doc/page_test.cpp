#include "tools/doc/page.h"

#include <algorithm>
#include <map>
#include <set>

#include "tests/tools/doc/page_fixture.h"
#include "tools/doc/table.h"

namespace {

const std::string kExamples = KIVO_EXAMPLES;

TEST_F(PageTest, has_every_section_of_a_complete_description) {
    for (const char* name : {"fifo", "counter", "ram"}) {
        make(kExamples + "/" + name + "_info.xml");
        EXPECT_EQ(texts_of("//section/h2"),
                  (Texts{"Introduction", "Block symbol", "Parameters", "Ports", "Hidden parameters",
                         "Macros", "Rules", "Messages", "Waveforms", "Wizard maps", "Notes",
                         "Simulation"}))
            << name;
    }
}

TEST_F(PageTest, contents_link_to_the_sections) {
    make(kExamples + "/fifo_info.xml");
    EXPECT_EQ(texts_of("//nav//a"), texts_of("//section/h2"));
    for (const pugi::xpath_node& link : document.select_nodes("//nav//a")) {
        const std::string target = link.node().attribute("href").value();
        ASSERT_EQ(target[0], '#');
        EXPECT_TRUE(section(target.c_str() + 1)) << target;
    }
}

TEST_F(PageTest, is_a_page_for_phones_with_language_and_title) {
    make(kExamples + "/fifo_info.xml");
    EXPECT_EQ(page.rfind("<!DOCTYPE html>\n<html lang=\"en\">", 0), 0U);
    EXPECT_EQ(texts_of("/html/head/title"), Texts{"Synchronous FIFO"});
    EXPECT_EQ(texts_of("//h1"), Texts{"Synchronous FIFO"});
    EXPECT_EQ(texts_of("//header/p[@class='subtitle']"),
              Texts{"First-in first-out buffer with one clock"});
    EXPECT_TRUE(document.select_node("//meta[@name='viewport']"));
    EXPECT_TRUE(document.select_node("//meta[@charset='utf-8']"));
}

TEST_F(PageTest, every_table_can_scroll) {
    make(kExamples + "/ram_info.xml");
    const auto tables = document.select_nodes("//table");
    EXPECT_GT(tables.size(), 8U);
    for (const pugi::xpath_node& table : tables) {
        EXPECT_STREQ(table.node().parent().attribute("class").value(), "scroll");
    }
}

TEST_F(PageTest, style_covers_paper_and_the_dark) {
    make(kExamples + "/fifo_info.xml");
    const std::string style = document.select_node("/html/head/style").node().text().get();
    EXPECT_NE(style.find("@media print"), std::string::npos);
    EXPECT_NE(style.find("@media (prefers-color-scheme: dark)"), std::string::npos);
}

TEST_F(PageTest, needs_nothing_but_itself) {
    const std::set<std::string> from_elsewhere = {"script", "link",   "img",   "iframe", "object",
                                                  "embed",  "source", "video", "base",   "use"};
    for (const char* name : {"fifo", "counter", "ram", "faulty"}) {
        make(kExamples + "/" + name + "_info.xml");
        for (const pugi::xpath_node& found : document.select_nodes("//*")) {
            EXPECT_EQ(from_elsewhere.count(found.node().name()), 0U) << found.node().name();
        }
        for (const pugi::xpath_node& found : document.select_nodes("//@src | //@href | //@style")) {
            EXPECT_EQ(found.attribute().value()[0], '#') << found.attribute().value();
        }
        const std::string style = document.select_node("/html/head/style").node().text().get();
        EXPECT_EQ(style.find("url("), std::string::npos);
        EXPECT_EQ(style.find("@import"), std::string::npos);
    }
}

TEST_F(PageTest, an_empty_description_gives_a_page_that_says_so) {
    make_from("");
    EXPECT_EQ(texts_of("//h1"), Texts{"sample"});
    EXPECT_EQ(texts_of("//main"), Texts{"The description is empty."});
    EXPECT_FALSE(document.select_node("//nav"));
}

TEST_F(PageTest, problems_of_the_description_are_listed_with_their_places) {
    make_from("\n<REVISIONS/>");
    EXPECT_EQ(
        rows_of(section("problems")),
        (Rows{{"Place", "Kind", "Problem", "Id"},
              {"sample_info.xml:2:1", "error",
               "Main element tag REVISIONS is not a valid recognized tag", "unknown-section"}}));
}

TEST_F(PageTest, parameters_show_their_default_choices_and_value_rules) {
    make_from(R"(<PARAMETERS>
        <PARAMETER NAME="W" TYPE="INTEGER" VALUE="8" CNX_TYPE="CONSTANT">
          <FORCE_RANGE MIN="1" MAX="64"/>
          <FORCE_RANGE MAX="32" IF="M == 1"/>
          <FORCE_VALUE V="4" WHEN_CMD="shrink"/>
        </PARAMETER>
        <PARAMETER NAME="M" TYPE="STRING" VALUE="UP;DOWN" DEFAULT_VALUE_INDEX="1" LPM_HINT="ON">
          <FORCE_VALUE V="UP" IF="W gt 4" ELSE="DOWN"/>
          <VALUE_RULE>W lt 9</VALUE_RULE>
        </PARAMETER></PARAMETERS>)");
    EXPECT_EQ(rows_of(section("parameters")),
              (Rows{{"Name", "Type", "Default", "Values", "Connection", "LPM hint", "Value rules"},
                    {"W", "integer", "8", "", "constant", "",
                     "range 1 to 64 range at most 32 when M == 1 value 4 when shrink"},
                    {"M", "string", "DOWN", "UP, DOWN", "", "yes",
                     "value UP when W gt 4, otherwise DOWN requires W lt 9"}}));
}

TEST_F(PageTest, a_default_that_the_list_does_not_have_is_its_index) {
    const std::map<std::string, std::string> defaults = {
        {"2", "index 2 (the list has no such item)"},
        {"2147483647", "index 2147483647 (the list has no such item)"},
        {"-1", "A;B"},
        {"-2147483648", "A;B"}};
    for (const auto& [index, shown] : defaults) {
        make_from(
            "<PARAMETERS><PARAMETER NAME='M' TYPE='STRING' VALUE='A;B' DEFAULT_VALUE_INDEX='" +
            index + "'/></PARAMETERS>");
        EXPECT_EQ(rows_of(section("parameters"))[1], (Texts{"M", "string", shown, "A, B"}))
            << index;
    }
}

TEST_F(PageTest, ports_show_what_is_known_of_each_kind) {
    make_from(R"(<PORTS>
        <PORT NAME="clk" TYPE="INPUT" IS_CLOCK_PORT="TRUE" CLOCK_PERIOD="20" CNX_TYPE="USED_PORT"/>
        <PORT NAME="d" TYPE="INPUT" ASYNC="FALSE" WIDTH="W" DEFAULT_VALUE="3"/>
        <PORT NAME="q" TYPE="OUTPUT" INITIAL_VEC_STATE="1" USAGE="VARIABLE">
          <STATE V="UNUSED" IF="W == 0" ELSE="USED"/>
          <CONSTANT_RANGE MIN="0" MAX="7"/>
        </PORT>
        <PORT NAME="io" TYPE="BIDIR" HIGH_PROBABILITY="10" USAGE="UNUSED"/>
        <PORT NAME="cells" TYPE="BURIED" WIDTH="W" WIDTH2D="N"/></PORTS>)");
    EXPECT_EQ(rows_of(section("ports")),
              (Rows{{"Name", "Direction", "Width", "Use", "Timing", "Default", "Initial", "High",
                     "Connection", "Value rules"},
                    {"clk", "input", "1", "used", "clock, period 20", "", "0", "", "used port", ""},
                    {"d", "input", "W", "used", "synchronous", "3", "0", "50 %", "", ""},
                    {"q", "output", "1", "variable", "", "", "1", "", "",
                     "state UNUSED when W == 0, otherwise USED constant 0 to 7"},
                    {"io", "bidirectional", "1", "unused", "", "", "0", "10 %", "", ""},
                    {"cells", "buried", "W \u00D7 N", "used", "", "", "0", "", "", ""}}));
}

TEST_F(PageTest, macros_and_hidden_parameters_have_their_tables) {
    make_from(R"(<HIDDEN_PARAMETERS><PARAMETER NAME="L" VALUE="5"/></HIDDEN_PARAMETERS>
        <MACROS><MACRO NAME="LOG" ARGUMENTS="n" DEFINITION="n * 2"/></MACROS>)");
    EXPECT_EQ(rows_of(section("hidden-parameters")), (Rows{{"Name", "Value"}, {"L", "5"}}));
    EXPECT_EQ(rows_of(section("macros")),
              (Rows{{"Name", "Arguments", "Definition"}, {"LOG", "n", "n * 2"}}));
}

TEST_F(PageTest, rules_stand_in_all_languages) {
    make_from(R"(<PARAMETERS><PARAMETER NAME="W" TYPE="INTEGER">
          <VALUE_RULE>W gte 4</VALUE_RULE></PARAMETER></PARAMETERS>
        <RULES><RULE>A gt 1 and
            B lt 2</RULE><RULE REQUIRED_RULE="OFF">A != 7</RULE></RULES>)");
    const auto in = [](const char* text, KIVO_HDL_LANGUAGE language) {
        return kivo_translate_text_to_hdl(text, language);
    };
    Rows rows = {{"Rule", "Applies to", "Kind", "As written", "NHDL", "Verilog"}};
    for (const auto& [owner, kind, text] :
         {std::tuple("function", "required", "A gt 1 and B lt 2"),
          std::tuple("function", "advised", "A != 7"), std::tuple("W", "required", "W gte 4")}) {
        // VHDL takes the text as it is written.
        EXPECT_EQ(in(text, KIVO_HDL_VHDL), text);
        rows.push_back({std::to_string(rows.size()), owner, kind, text, in(text, KIVO_HDL_NHDL),
                        in(text, KIVO_HDL_VERILOG)});
    }
    EXPECT_EQ(rows_of(section("rules")), rows);
    EXPECT_EQ(rows[1][5], "A > 1 && B < 2");
}

TEST_F(PageTest, messages_are_ordered_by_severity) {
    make_from(R"(<MESSAGES><MESSAGE TYPE="INFO">one</MESSAGE><MESSAGE TYPE="WARNING">two</MESSAGE>
        <MESSAGE TYPE="ERROR"><IF>A gt 1</IF><THEN>three</THEN><ELSE>four</ELSE></MESSAGE>
        <MESSAGE TYPE="CRITICAL_WARNING">five</MESSAGE><MESSAGE TYPE="INFO">six</MESSAGE>
        </MESSAGES>)");
    EXPECT_EQ(texts_of("//section[@id='messages']/h3"),
              (Texts{"Errors", "Critical warnings", "Warnings", "Information"}));
    EXPECT_EQ(texts_of("//section[@id='messages']//p"),
              (Texts{"If A gt 1", "three", "Otherwise", "four", "five", "two", "one", "six"}));
}

TEST_F(PageTest, wizard_maps_show_their_condition_and_objects) {
    make_from(R"(<WIZARD_DATA><WIZARD_MAP NAME="m" WIZARD_NAME="Small" MODULE_NAME="fifo"
          MAP_CONSTANTS="ON"><WIZARD_CONDITION>D lte 64</WIZARD_CONDITION>
        <PARAMETER NAME="D" TYPE="INTEGER" VALUE="16"/><PORT NAME="q" TYPE="OUTPUT" WIDTH="D"/>
        </WIZARD_MAP></WIZARD_DATA>)");
    EXPECT_EQ(texts_of("//section[@id='wizard-maps']//h3"), Texts{"Small"});
    EXPECT_EQ(texts_of("//section[@id='wizard-maps']//dd"),
              (Texts{"m", "fifo", "when D lte 64", "mapped", "not mapped"}));
    EXPECT_EQ(rows_of(section("wizard-maps")), (Rows{{"Name", "Kind", "Default", "Width", "Use"},
                                                     {"D", "integer parameter", "16", "", ""},
                                                     {"q", "output port", "", "D", "used"}}));
}

TEST_F(PageTest, waveforms_show_their_timing_formats_and_stimulus) {
    make_from(R"(<FUNCTION_INFORMATION><TIME_SCALE VALUE="ns"/></FUNCTION_INFORMATION><WAVE_DATA>
        <WAVE NAME="w" MAX_TIME="100" TIME_STEP="5"><CAPTION>A wave</CAPTION>
        <WAVE_CONDITION>D gt 1</WAVE_CONDITION><DESCRIPTION><T>It waves.</T></DESCRIPTION>
        <STIM>force a 0 0,1 10</STIM>
        <IF>X</IF><THEN><STIM>force b 1 0</STIM></THEN><ELSE><STIM>force b 0 0</STIM></ELSE>
        <DISPLAY>add wave -bin a</DISPLAY><DISPLAY>add wave -fixed_point(4.4) b</DISPLAY>
        </WAVE></WAVE_DATA>)");
    EXPECT_EQ(texts_of("//section[@id='waveforms']//h3"), Texts{"A wave"});
    EXPECT_EQ(texts_of("//section[@id='waveforms']//dd"),
              (Texts{"w", "when D gt 1", "100 ns", "5 ns", "a binary, b fixed point 4.4"}));
    EXPECT_EQ(texts_of("//section[@id='waveforms']//p"), Texts{"It waves."});
    EXPECT_EQ(rows_of(section("waveforms")), (Rows{{"Stimulus", "If", "Otherwise"},
                                                   {"force a 0 0,1 10", "", ""},
                                                   {"force b 1 0", "X", "force b 0 0"}}));
}

TEST_F(PageTest, times_of_a_scale_with_a_number_stand_alone) {
    make_from(R"(<FUNCTION_INFORMATION><TIME_SCALE VALUE="10 ns"/></FUNCTION_INFORMATION><WAVE_DATA>
        <WAVE NAME="w" MAX_TIME="100" TIME_STEP="5"/></WAVE_DATA>)");
    EXPECT_EQ(texts_of("//section[@id='waveforms']//dd"), (Texts{"w", "100", "5"}));
}

// The signals that a vector drives, in the order of its commands, by their names.
Texts driven_signals(KIVO_VECTOR_OBJ& vector) {
    Texts names;
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        const std::string name = kivo_get_timeline(entry->text1, 0, 0, 1).signal;
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    }
    return names;
}

Texts without_ranges(Texts labels) {
    for (std::string& label : labels) {
        label = label.substr(0, label.find('['));
    }
    return labels;
}

TEST_F(PageTest, every_vector_has_a_picture_with_a_row_for_each_signal_that_it_drives) {
    for (const char* name : {"fifo", "counter", "ram"}) {
        const std::string path = kExamples + "/" + name + "_info.xml";
        make(path);
        Description description(path);
        std::size_t number = 0;
        description.info().reset_vector_map();
        while (KIVO_VECTOR_OBJ* vector = description.info().get_next_vector_obj()) {
            const std::string article =
                "(//section[@id='waveforms']/article)[" + std::to_string(++number) + "]";
            const std::string main = article + "//div[@class='case']";
            const Texts rows = texts_of((main + "//svg[@class='wave']/g/title").c_str());
            EXPECT_EQ(without_ranges(rows), driven_signals(*vector)) << vector->name;
            EXPECT_EQ(texts_of((main + "//svg[@class='wave']/g/text").c_str()), rows);
        }
        EXPECT_EQ(document.select_nodes("//div[@class='case']//svg[@class='wave']").size(), number)
            << name;
        EXPECT_GT(number, 1U) << name;
    }
}

TEST_F(PageTest, pictures_of_waves_are_named_and_described) {
    make_from(R"(<WAVE_DATA><WAVE NAME="v" MAX_TIME="20"><CAPTION>A bus</CAPTION>
        <STIM>force -hex d CAFE 0</STIM></WAVE><WAVE NAME="w" MAX_TIME="20">
        <STIM>force a 1 0</STIM></WAVE></WAVE_DATA>)");
    EXPECT_EQ(texts_of("//svg[@class='wave']/title"), (Texts{"v: A bus", "Waveform w"}));
    EXPECT_EQ(
        texts_of("//svg[@class='wave']/desc"),
        (Texts{"1 signal from 0 to 20. d[15:0]: CAFE at 0.", "1 signal from 0 to 20. a: 1 at 0."}));
    for (const pugi::xpath_node& picture : document.select_nodes("//svg[@class='wave']")) {
        const std::string names = picture.node().attribute("aria-labelledby").value();
        EXPECT_EQ(names, std::string(picture.node().child("title").attribute("id").value()) + " " +
                             picture.node().child("desc").attribute("id").value());
        EXPECT_STREQ(picture.node().parent().attribute("class").value(), "scroll picture");
        EXPECT_FALSE(picture.node().child("style"));
    }
    EXPECT_EQ(page.find("<?xml"), std::string::npos);
}

TEST_F(PageTest, pictures_say_which_conditions_they_take_as_true) {
    make_from(R"(<WAVE_DATA><WAVE NAME="w" MAX_TIME="20"><STIM>force a 1 0</STIM>
        <IF>X</IF><THEN><STIM>force d 5 0</STIM></THEN><ELSE><STIM>force d 7 0</STIM></ELSE>
        <IF>Y</IF><THEN><STIM>force e 6 0</STIM></THEN>
        <IF>X</IF><THEN><STIM>force f 1 0</STIM></THEN></WAVE></WAVE_DATA>)");
    EXPECT_EQ(texts_of("//div[@class='case']//figcaption"),
              Texts{"Drawn for the case that X and Y hold."});
    EXPECT_EQ(texts_of("//div[@class='case']//text[@class='value']"), (Texts{"5", "6"}));
}

TEST_F(PageTest, the_other_branch_of_each_condition_can_be_chosen) {
    make_from(R"(<WAVE_DATA><WAVE NAME="w" MAX_TIME="20"><STIM>force a 1 0</STIM>
        <IF>X</IF><THEN><STIM>force d 5 0</STIM></THEN><ELSE><STIM>force d 7 0</STIM></ELSE>
        <IF>Y</IF><THEN><STIM>force e 6 0</STIM></THEN></WAVE>
        <WAVE NAME="plain" MAX_TIME="20"><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>)");
    EXPECT_EQ(texts_of("//div[@class='cases']/label"),
              (Texts{"all conditions hold", "not X", "not Y"}));
    EXPECT_EQ(texts_of("//div[@class='case otherwise']//figcaption"),
              (Texts{"Drawn for the case that Y holds and X does not hold.",
                     "Drawn for the case that X holds and Y does not hold."}));
    EXPECT_EQ(texts_of("//div[@class='case otherwise'][1]//text[@class='value']"),
              (Texts{"7", "6"}));
    EXPECT_EQ(texts_of("//div[@class='case otherwise'][2]//text[@class='value']"), Texts{"5"});
    // Each label is that of its own input, of which the first is chosen.
    const auto inputs = document.select_nodes("//div[@class='cases']/input[@type='radio']");
    ASSERT_EQ(inputs.size(), 3U);
    for (const pugi::xpath_node& input : inputs) {
        EXPECT_STREQ(input.node().next_sibling("label").attribute("for").value(),
                     input.node().attribute("id").value());
        EXPECT_EQ(input.node().attribute("name").value(), std::string("cases-1"));
        EXPECT_EQ(!input.node().attribute("checked").empty(), input == inputs.first());
    }
    EXPECT_EQ(document.select_nodes("//article[@id='waveform-plain']//input").size(), 0U);
}

TEST_F(PageTest, of_many_conditions_the_first_are_drawn_as_not_holding) {
    std::string commands;
    for (int i = 0; i < 12; ++i) {
        commands += "<IF>X" + std::to_string(i) + "</IF><THEN><STIM>force s" + std::to_string(i) +
                    " 1 0</STIM></THEN>";
    }
    make_from("<WAVE_DATA><WAVE NAME='w' MAX_TIME='20'>" + commands + "</WAVE></WAVE_DATA>");
    EXPECT_EQ(document.select_nodes("//div[@class='case otherwise']").size(), 8U);
    EXPECT_EQ(texts_of("//p[@class='note']"),
              Texts{"Note: only the first 8 of 12 conditions are drawn as not holding."});
}

TEST_F(PageTest, every_object_rule_and_waveform_has_an_anchor_and_every_link_its_target) {
    for (const char* name : {"fifo", "counter", "ram", "faulty"}) {
        make(kExamples + "/" + name + "_info.xml");
        std::set<std::string> ids;
        for (const pugi::xpath_node& found : document.select_nodes("//@id")) {
            EXPECT_TRUE(ids.insert(found.attribute().value()).second);
        }
        std::size_t links = 0;
        for (const pugi::xpath_node& found : document.select_nodes("//a/@href")) {
            EXPECT_EQ(ids.count(found.attribute().value() + 1), 1U) << found.attribute().value();
            ++links;
        }
        EXPECT_GT(links, 15U);
        const auto rows = document.select_nodes(
            "//table[@class[starts-with(.,'objects') or "
            "starts-with(.,'rule-table')]]/tbody/tr[not(ancestor::article)]");
        EXPECT_GT(rows.size(), 4U);
        for (const pugi::xpath_node& row : rows) {
            EXPECT_TRUE(row.node().attribute("id"));
        }
        EXPECT_FALSE(document.select_node("//section[@id='waveforms']/article[not(@id)]"));
    }
}

TEST_F(PageTest, names_in_texts_link_to_what_has_them) {
    make(kExamples + "/fifo_info.xml");
    const auto links = [this](const char* section) {
        return texts_of(("//section[@id='" + std::string(section) + "']//p//a").c_str());
    };
    EXPECT_EQ(links("introduction"), (Texts{"DEPTH", "DATA_WIDTH", "READ_MODE", "STORAGE"}));
    EXPECT_TRUE(
        document.select_node("//tr[@id='port-data']/td/code/a[@href='#parameter-DATA_WIDTH']"));
    EXPECT_TRUE(
        document.select_node("//tr[@id='hidden-parameter-LEVEL_WIDTH']//a[@href='#macro-CLOG2']"));
    EXPECT_TRUE(
        document.select_node("//article[@id='waveform-streaming']//a[@href='#port-clock']"));
}

TEST_F(PageTest, a_description_with_findings_says_so_at_its_top) {
    make_from("");
    EXPECT_FALSE(document.select_node("//p[starts-with(@class,'alert')]"));
    make_from("<REVISIONS/><PARAMETRS/>");
    EXPECT_EQ(
        texts_of("//header/p[@class='alert error']"),
        Texts{"The description has 2 errors; parts of it may be missing here. What is wrong"});
    EXPECT_TRUE(document.select_node("//header/p/a[@href='#problems']"));
}

TEST_F(PageTest, periods_have_their_unit_and_long_numbers_groups) {
    make_from(R"(<FUNCTION_INFORMATION><TIME_SCALE VALUE="ps"/></FUNCTION_INFORMATION>
        <PORTS><PORT NAME="clk" TYPE="INPUT" IS_CLOCK_PORT="TRUE" CLOCK_PERIOD="20000"/></PORTS>)");
    EXPECT_EQ(rows_of(section("ports"))[1][4], "clock, period 20000 ps");
    EXPECT_EQ(texts_of("//section[@id='ports']//span[@class='group']"), Texts{"000"});
}

TEST_F(PageTest, a_vector_that_cannot_be_drawn_says_why) {
    make_from(R"(<WAVE_DATA><WAVE NAME="v" MAX_TIME="20"/><WAVE NAME="w" MAX_TIME="20">
        <STIM>force</STIM></WAVE></WAVE_DATA>)");
    EXPECT_FALSE(document.select_node("//svg"));
    EXPECT_EQ(texts_of("//p[@class='note']"),
              (Texts{"Note: no picture, since the vector drives no signal.",
                     "Note: sample_info.xml:1:18: WAVE \"v\" has no stimulus: nothing is drawn.",
                     "Note: no picture, since the vector drives no signal.",
                     "Note: sample_info.xml:2:15: the command names no signal."}));
}

TEST_F(PageTest, a_value_that_its_fixed_point_format_cannot_show_is_told) {
    make_from(
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='9'><STIM>force f 5 0,1000 5</STIM>"
        "<DISPLAY>add wave -fixed_point(s4.4) f</DISPLAY></WAVE></WAVE_DATA>");
    EXPECT_EQ(texts_of("//p[@class='note']"),
              Texts{"Note: values of signal 'f' that the fixed-point format s4.4 cannot show are "
                    "shown as written: '1000'."});
}

std::string busy_vector(const std::string& name, std::size_t signals, const std::string& max_time) {
    std::string text = "<WAVE NAME='" + name + "' MAX_TIME='" + max_time + "'>";
    for (std::size_t i = 0; i < signals; ++i) {
        text += "<STIM>force -hex s" + std::to_string(i) + " 00 0,FFEE 1,-r 2</STIM>";
    }
    return text + "</WAVE>";
}

TEST_F(PageTest, a_picture_of_too_many_signals_shows_the_first) {
    make_from("<WAVE_DATA>" + busy_vector("w", 2000, "300") + "</WAVE_DATA>");
    const std::size_t rows = document.select_nodes("//svg[@class='wave']/g").size();
    EXPECT_GT(rows, 10U);
    EXPECT_LT(rows, 2000U);
    EXPECT_EQ(texts_of("//p[@class='note']"),
              Texts{"Note: only the first " + std::to_string(rows) +
                    " of 2000 signals are drawn, more would be too much for a page."});
    const pugi::xml_node svg = document.select_node("//svg[@class='wave']").node();
    EXPECT_LT(svg.attribute("height").as_double(), 34.0 * static_cast<double>(rows) + 100);
}

TEST_F(PageTest, transitions_beyond_count_are_left_out) {
    make_from("<WAVE_DATA>" + busy_vector("w", 1, "2000000000") + "</WAVE_DATA>");
    EXPECT_EQ(texts_of("//p[@class='note']"),
              Texts{"Note: vector 'w' makes too many transitions: only those up to 999999 of "
                    "2000000000 are taken (at most 1000000 in all)."});
}

TEST_F(PageTest, pictures_of_many_vectors_are_bounded_together) {
    std::string vectors;
    for (int i = 0; i < 40; ++i) {
        vectors += busy_vector("v" + std::to_string(i), 20, "300");
    }
    make_from("<WAVE_DATA>" + vectors + "</WAVE_DATA>");
    const std::size_t pictures = document.select_nodes("//svg[@class='wave']").size();
    EXPECT_GT(pictures, 5U);
    EXPECT_LT(pictures, 40U);
    EXPECT_LT(page.size(), 20'000'000U);
    EXPECT_EQ(
        texts_of("//p[@class='note']"),
        Texts(40 - pictures, "Note: no picture, since those before it fill what a page can hold."));
}

// One marker per place, with what would break out of elements and attributes.
class HostileText {
public:
    // As it stands in an attribute value in single quotes, or in element content.
    std::string next() {
        return "m" + std::to_string(count_++) +
               "&lt;/td&gt;&lt;script&gt;alert(&quot;1&quot;)&lt;/script&gt;&apos;/onload=&quot;x"
               "&amp;amp;]]&gt;--&gt;&lt;!--\x01\x1B[31m\xFF\xE2\x80\xAE\x7F";
    }
    int count() const { return count_; }

private:
    int count_ = 0;
};

// Puts a marker in place of each "@".
std::string with_markers(const std::string& text, HostileText& hostile) {
    std::string out;
    for (const char letter : text) {
        out += letter == '@' ? hostile.next() : std::string(1, letter);
    }
    return out;
}

constexpr const char* kHostileDescription = R"(
    <FUNCTION_INFORMATION><VHDL_LIBRARY NAME='@'/><TIME_SCALE VALUE='@'/><TIME_DELTA VALUE='@'/>
    </FUNCTION_INFORMATION>
    <PARAMETERS><PARAMETER NAME='@' TYPE='STRING' VALUE='@;@'>
      <FORCE_RANGE MIN='@' MAX='@' IF='@'/><FORCE_VALUE V='@' ELSE='@' IF='@'/>
      <FORCE_VALUE V='@' WHEN_CMD='@'/><VALUE_RULE>@</VALUE_RULE></PARAMETER></PARAMETERS>
    <PORTS><PORT NAME='@' TYPE='INPUT' WIDTH='@' WIDTH2D='@' DEFAULT_VALUE='@'
      INITIAL_VEC_STATE='@' CLOCK_PERIOD='@' IS_CLOCK_PORT='TRUE'><STATE V='@' IF='@' ELSE='@'/>
      <FORCE_VALUE V='@'/><FORCE_RANGE MIN='@' MAX='@'/><CONSTANT_RANGE MIN='@' MAX='@'/></PORT>
    </PORTS>
    <HIDDEN_PARAMETERS><PARAMETER NAME='@' VALUE='@'/></HIDDEN_PARAMETERS>
    <MACROS><MACRO NAME='@' ARGUMENTS='@' DEFINITION='@'/></MACROS>
    <RULES><RULE>@</RULE><RULE REQUIRED_RULE='OFF'>@</RULE></RULES>
    <MESSAGES><MESSAGE TYPE='ERROR'>@</MESSAGE>
      <MESSAGE TYPE='INFO'><IF>@</IF><THEN>@</THEN><ELSE>@</ELSE></MESSAGE></MESSAGES>
    <WAVE_DATA><WAVE NAME='@' MAX_TIME='10'><CAPTION>@</CAPTION>
      <DESCRIPTION><T>@</T><IF>@</IF><THEN>@</THEN><ELSE>@</ELSE></DESCRIPTION>
      <WAVE_CONDITION>@</WAVE_CONDITION><STIM>force @ 0 0</STIM>
      <IF>@</IF><THEN><STIM>@</STIM></THEN><ELSE><STIM>@</STIM></ELSE>
      <DISPLAY>add wave -fixed_point(4.4) @</DISPLAY></WAVE>
      <WAVE NAME='@' MAX_TIME='9'><STIM>force a@ @ 0,1 5</STIM></WAVE></WAVE_DATA>
    <WIZARD_DATA><WIZARD_MAP NAME='@' WIZARD_NAME='@' MODULE_NAME='@'>
      <WIZARD_CONDITION>@</WIZARD_CONDITION><PARAMETER NAME='@' TYPE='INTEGER' VALUE='@'/>
      <PORT NAME='@' TYPE='BIDIR' WIDTH='@'/></WIZARD_MAP></WIZARD_DATA>
    <HTML_TEXT><TITLE>@</TITLE><HEADER>@</HEADER>
      <INTRO><T>@</T><IF>@</IF><THEN><T>@</T></THEN><ELSE>@</ELSE></INTRO><END><T>@</T></END>
    </HTML_TEXT>)";

TEST_F(PageTest, texts_with_markup_and_control_characters_are_shown_and_do_nothing) {
    HostileText hostile;
    make_from(with_markers(kHostileDescription, hostile));
    EXPECT_FALSE(document.select_node("//script"));
    EXPECT_FALSE(document.select_node("//@onload"));
    EXPECT_FALSE(document.select_node("//comment()"));
    // One of them in both cases of its condition.
    EXPECT_EQ(document.select_nodes("//svg[@class='wave']").size(), 3U);
    std::set<std::string> ids;
    for (const pugi::xpath_node& found : document.select_nodes("//@id")) {
        EXPECT_TRUE(ids.insert(found.attribute().value()).second) << found.attribute().value();
    }
    EXPECT_TRUE(std::none_of(page.begin(), page.end(), [](unsigned char letter) {
        return (letter < 0x20 && letter != '\n') || letter == 0x7F || letter == 0xFF;
    }));
    EXPECT_EQ(page.find("\u202E"), std::string::npos);
    const std::string text = text_of(document);
    for (int index = 0; index < hostile.count(); ++index) {
        const std::string shown = "m" + std::to_string(index) +
                                  "</td><script>alert(\"1\")</script>'/onload=\"x&amp;"
                                  "]]>--><!--\\x01\\x1B[31m\\xFF\\u202E\\x7F";
        EXPECT_NE(text.find(shown), std::string::npos) << shown;
    }
}

TEST_F(PageTest, a_message_about_hostile_text_is_text_too) {
    make_from("<PARAMETERS><PARAMETER NAME='&lt;script&gt;' TYPE='&lt;b&gt;'/></PARAMETERS>");
    EXPECT_FALSE(document.select_node("//script | //b"));
    EXPECT_NE(text_of(section("problems")).find("<b> of parameter <script>"), std::string::npos);
}

TEST_F(PageTest, long_lists_are_cut_with_a_word_about_it) {
    std::string values = "0";
    std::string rules;
    for (int i = 1; i < 502; ++i) {
        values += ";" + std::to_string(i);
        rules += "<FORCE_VALUE V='" + std::to_string(i) + "' IF='A'/>";
    }
    make_from("<PARAMETERS><PARAMETER NAME='A' TYPE='INTEGER' DEFAULT_VALUE_INDEX='0' VALUE='" +
              values + "'/><PARAMETER NAME='B' TYPE='INTEGER' VALUE='1'>" + rules +
              "</PARAMETER></PARAMETERS>");
    const std::string text = text_of(section("parameters"));
    EXPECT_NE(text.find(" 498, 499 ... and 2 more values"), std::string::npos) << text;
    EXPECT_NE(text.find("value 500 when A ... and 1 more rule"), std::string::npos) << text;
    EXPECT_EQ(text.find("501"), std::string::npos);
}

TEST_F(PageTest, wizard_maps_that_share_many_objects_are_bounded_together) {
    std::string generic;
    for (int i = 0; i < 1000; ++i) {
        generic += "<PORT NAME='a_port_of_some_length_" + std::to_string(i) + "' TYPE='INPUT'/>";
    }
    std::string maps;
    for (int i = 0; i < 200; ++i) {
        maps += "<WIZARD_MAP NAME='m" + std::to_string(i) + "'/>";
    }
    make_from("<WIZARD_DATA>" + generic + maps + "</WIZARD_DATA>");
    EXPECT_LT(page.size(), 20'000'000U);
    EXPECT_NE(page.find(" more wizard maps</p>"), std::string::npos);
}

TEST_F(PageTest, names_without_a_row_do_not_link) {
    std::string parameters;
    for (std::size_t i = 0; i < HtmlTable::kMostRows + 1; ++i) {
        parameters += "<PARAMETER NAME='P" + std::to_string(i) + "' TYPE='STRING'/>";
    }
    make_from("<PARAMETERS>" + parameters +
              "</PARAMETERS><RULES><RULE>P19999 lt P20000</RULE></RULES>");
    EXPECT_NE(page.find("<a href=\"#parameter-P19999\">"), std::string::npos);
    EXPECT_EQ(page.find("parameter-P20000"), std::string::npos);
}

TEST_F(PageTest, thousands_of_objects_make_a_page) {
    std::string ports = "<PORTS>";
    for (int index = 0; index < 5000; ++index) {
        ports += "<PORT NAME='p" + std::to_string(index) + "' TYPE='OUTPUT'/>";
    }
    make_from(ports + "</PORTS>");
    EXPECT_EQ(rows_of(section("ports")).size(), 5001U);
}

class ConfiguredPageTest : public PageTest {
protected:
    void configure(const char* example, const std::vector<KIVO_ASSIGNMENT>& settings) {
        make(std::string(KIVO_EXAMPLES) + "/" + example + "_info.xml", settings);
    }

    // Whether a section holds a text.
    bool says(const char* id, const std::string& text) const {
        return text_of(section(id)).find(text) != std::string::npos;
    }
};

TEST_F(ConfiguredPageTest, names_its_settings_and_shows_what_takes_effect) {
    configure("fifo", {{"DEPTH", "1024"}, {"almost_full", "UNUSED"}});
    EXPECT_NE(text_of(document.select_node("//header").node())
                  .find("configured with DEPTH=1024, almost_full=UNUSED"),
              std::string::npos);
    EXPECT_TRUE(says("parameters", "STORAGE string BLOCK AUTO"));
    EXPECT_TRUE(says("hidden-parameters", "LEVEL_WIDTH 11 5"));
    EXPECT_TRUE(says("ports", "almost_full output not connected 1"));
    EXPECT_TRUE(says("ports", "data input connected 8 DATA_WIDTH"));
    EXPECT_FALSE(says("symbol", "almost_full"));
    EXPECT_TRUE(says("symbol", "almost_empty"));
    EXPECT_FALSE(section("verdicts"));
}

TEST_F(ConfiguredPageTest, decides_waves_texts_and_messages) {
    configure("fifo", {{"READ_MODE", "SHOW_AHEAD"}, {"STORAGE", "REGISTERS"}});
    EXPECT_TRUE(says("introduction", "The first word needs one clock"));
    EXPECT_FALSE(says("introduction", "two clocks"));
    EXPECT_FALSE(says("introduction", "If READ_MODE"));
    EXPECT_TRUE(says("waveforms", "force read 0 0,1 180,0 260"));
    EXPECT_FALSE(says("waveforms", "force read 0 0,1 160,0 240"));
    EXPECT_FALSE(says("waveforms", "Drawn for the case"));
    EXPECT_TRUE(says("messages", "A write to a full FIFO is ignored."));
    EXPECT_FALSE(says("messages", "overwrites the oldest word"));

    configure("ram", {{"DATA_WIDTH", "8"}});
    EXPECT_TRUE(says("waveforms", "write_then_read"));
    EXPECT_FALSE(says("waveforms", "shared_bus"));
}

TEST_F(ConfiguredPageTest, lists_what_is_wrong) {
    configure("fifo", {{"DEPTH", "8"}});
    EXPECT_TRUE(
        says("verdicts", "fifo_info.xml:32:7 ALMOST_FULL_LEVEL is 12, and must be from 1 to 7"));
}

TEST_F(ConfiguredPageTest, without_settings_the_page_is_as_ever) {
    configure("fifo", {});
    EXPECT_FALSE(says("parameters", "Now"));
    EXPECT_TRUE(says("introduction", "If READ_MODE"));
    EXPECT_TRUE(says("waveforms", "Drawn for the case"));
    EXPECT_FALSE(section("verdicts"));
}

}  // namespace
