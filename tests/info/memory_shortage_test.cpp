#include "tests/support/memory_shortage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/conditional_text.h"
#include "tests/support/rules.h"
#include "tests/support/temporary_folder.h"

namespace {

// The long runs refuse every single piece of memory; the daily one takes samples, of which the
// step, a prime number, shares no period with the description.
#if defined(KIVO_STRESS) || defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kStep = 1;
#else
constexpr std::size_t kStep = 7;
#endif

// Every section, with names and texts that are too long to need no memory; and what is wrong.
constexpr const char* kSections = R"(
<MACROS><MACRO NAME="a macro of the description" DEFINITION="its definition, which is long"
    ARGUMENTS="arguments of the macro"/><WRONG_TAG_OF_MACROS/></MACROS>
<HIDDEN_PARAMETERS><PARAMETER NAME="a hidden parameter, hardly seen" VALUE="one value or another"
    WRONG_ATTRIBUTE_OF_IT="x"><FORCE_VALUE V="a value that is forced" IF="some condition holds"/>
    </PARAMETER><PARAMETER/></HIDDEN_PARAMETERS>
<PORTS><PORT NAME="input port number one" TYPE="INPUT" WIDTH="the width of the data bus"
    DEFAULT_VALUE="the default value of it" WRONG_ATTRIBUTE_OF_IT="x">
    <STATE V="a state of the port" WHEN="the condition of the state"/><CONSTANT_RANGE MAX="a largest
    value" MIN="a smallest value"/><FORCE_RANGE MAX="another largest value"/></PORT>
    <PORT NAME="output port number one" TYPE="OUTPUT"/><PORT TYPE="SIDEWAYS AND BACKWARDS"/></PORTS>
<PORT_RULES><PORT NAME="output port number one"/><PORT NAME="macro"/></PORT_RULES>
<PARAMETERS><PARAMETER NAME="parameter with rules" TYPE="INTEGER" VALUE="1, 2, 3, 4, 5, 6, 7, 8"
    LPM_HINT="ON"><VALUE_RULE><IF>a condition of some length</IF><THEN>a consequence of it</THEN>
    </VALUE_RULE><VALUE_RULE>another rule for the value</VALUE_RULE></PARAMETER>
    <PARAMETER NAME="parameter, second" TYPE="STRING"/><PARAMETER NAME="parameter, third"
    TYPE="STRING"/><PARAMETER NAME="parameter, fourth" TYPE="STRING"/><PARAMETER NAME="parameter, 5"
    TYPE="STRING"/><PARAMETER NAME="parameter, sixth" TYPE="STRING"/></PARAMETERS>
<PARAMETER_RULES><PARAMETER NAME="parameter with rules"><FORCE_VALUE TO="a forced value of it"
    ELSE="otherwise something else"/></PARAMETER></PARAMETER_RULES>
<FUNCTION_INFORMATION><VHDL_LIBRARY NAME="a_library.of_some_length;another.library"/>
    <TIME_SCALE VALUE="one nanosecond, no less"/><START_TIME VALUE="17" WRONG_ATTRIBUTE="x"/>
    </FUNCTION_INFORMATION>
<WAVE_DATA><WAVE NAME="a waveform of some length" MAX_TIME="100" DISPLAY_TRUNCATION="WRONG WORD">
    <CAPTION>The caption of the waveform</CAPTION><STIM>force a_signal 0 0, 1 10</STIM>
    <IF>condition of the stimulus</IF><THEN><STIM>force a_signal 0 20, 1 30</STIM><STIM>force a
    0</STIM><WRONG_TAG_OF_THEN/></THEN><ELSE><VECTOR>force a_signal 1 20</VECTOR></ELSE>
    <DESCRIPTION><T>a piece of text, plain</T><IF>a condition of the text</IF><THEN><T>what is shown
    then</T><IF>a nested condition</IF><THEN><T>deeper and deeper</T></THEN></THEN>
    <ELSE><T>what is shown otherwise</T></ELSE></DESCRIPTION>
    <WAVE_CONDITION>condition of the waveform</WAVE_CONDITION>
    <DISPLAY>add wave -hex a_signal_of_some_length</DISPLAY>
    <DISPLAY>add wave -fixed_point(s8.4) another_signal_of_length</DISPLAY><DISPLAY>add wave</DISPLAY>
    </WAVE></WAVE_DATA>
<CUSTOM_VECTORS><CUSTOM_VECTOR NAME="a custom vector of length"><STIM>force b 0 0</STIM>
    </CUSTOM_VECTOR></CUSTOM_VECTORS>
<HTML_TEXT><TITLE>The title of the help text</TITLE><HEADER>The header of the help text</HEADER>
    <INTRO><T>introduction of some length</T><IF>some condition of length</IF><ELSE>otherwise text,
    also long</ELSE></INTRO><INTRO><T>another introduction, long</T><WRONG><T>x</T></WRONG></INTRO>
    <END><T>the end of the help text</T><T>text beside a sub-tag<T>x</T></T></END></HTML_TEXT>
<RULES><RULE>a rule of the whole function</RULE><CONDITION>another rule of the function</CONDITION>
    <RULE>a third rule of the function</RULE><RULE/></RULES>
<MESSAGES><MESSAGE TYPE="INFO">a message to be shown to users</MESSAGE><MESSAGE TYPE="ERROR"><IF>its
    condition, at length</IF><THEN>the text of a message</THEN><WRONG_TAG_OF_IT/></MESSAGE>
    </MESSAGES>
<MSGS><MSG TYPE="WARNING">another message to be shown</MSG><MSG>without any type at all</MSG></MSGS>
<WIZARD_DATA><PARAMETER NAME="a generic parameter" TYPE="INTEGER"><VALUE_RULE>a rule of the generic
    parameter</VALUE_RULE></PARAMETER><PORT NAME="a generic port of length" TYPE="INPUT">
    <STATE V="the state of a generic port"/></PORT><WIZARD_MAP NAME="a wizard map of some length"
    WRONG_ATTRIBUTE_OF_IT="x"><PARAMETER NAME="parameter of the map" TYPE="STRING"
    VALUE="the values of it"><VALUE_RULE>a rule of the map's own</VALUE_RULE></PARAMETER>
    <WIZARD_CONDITION>a condition of the map</WIZARD_CONDITION>
    </WIZARD_MAP>
    <WIZARD_MAP NAME="another wizard map, second"><PORT NAME="a generic port of length"
    TYPE="OUTPUT"/></WIZARD_MAP></WIZARD_DATA>
<WIZARD_DATA><WIZARD_MAP NAME="a third wizard map, of length"/></WIZARD_DATA>
<SECTION_THAT_NOBODY_KNOWS/>
)";

// The description, which includes another, in files of its own.
class Description {
public:
    Description() {
        const std::string included =
            folder_.write("included.xml",
                          "<ROOT>\n<PORTS><PORT NAME='port of the included file' TYPE='INPUT'/>"
                          "</PORTS><RULES><RULE>a rule of the included file</RULE></RULES>"
                          "<A B='1' B='2'/></ROOT>");
        const std::string invalid = folder_.write("invalid.xml", "<ROOT><RULES></ROOT>");
        const std::string sections = kSections;
        const std::string includes = "<INCLUDE FILE='" + included + "'><FILE>" + invalid +
                                     "</FILE><FILE>a file that does not exist</FILE>"
                                     "<WRONG_TAG_OF_INCLUDE/></INCLUDE>";
        once_ = folder_.write("once.xml", "<ROOT>" + sections + includes + "</ROOT>");
        twice_ = folder_.write("twice.xml",
                               "<ROOT>" + sections + includes + sections + includes + "</ROOT>");
    }

    const std::string& once() const { return once_; }
    // Every section stands twice: the second replaces, adds to and repeats what the first made.
    const std::string& twice() const { return twice_; }

private:
    TemporaryFolder folder_;
    std::string once_;
    std::string twice_;
};

std::string written(KIVO_RULE_ELEMENT* rule) {
    return rule == nullptr ? "none"
                           : rule->text1 + "|" + rule->text2 + "|" + rule->text3 +
                                 std::to_string(rule->rule_kind);
}

std::string written(KIVO_OBJ_LIST& list) {
    std::string text;
    list.reset();
    while (KIVO_OBJ* item = list.get_next_value()) {
        text += written(dynamic_cast<KIVO_RULE_ELEMENT*>(item)) + ", ";
    }
    list.reset();
    return text + "\n";
}

std::string written(KIVO_OBJ_INFO& object) {
    return object.name + ": " + object.value_array + object.default_value + object.port_width +
           object.current_value + object.arguments + written(object.rule_list);
}

std::string written(KIVO_VECTOR_OBJ& vector) {
    std::string text = vector.name + ": " + vector.caption + written(vector.wave_condition) +
                       written(vector.description) + written(vector.stimulus_list);
    std::string port;
    vector.display_format_map.reset();
    while (vector.display_format_map.get_next_entry(port) != nullptr) {
        text += port + vector.get_vector_display_format_description(port) + ", ";
    }
    return text + "\n";
}

std::string written(KIVO_WIZARD_MAP& map) {
    std::string text = map.name + ": " + map.module_name + written(map.condition) + "\n";
    map.obj_map.reset();
    while (KIVO_OBJ_INFO* object = map.get_next_kivo_obj()) {
        text += "  " + written(*object);
    }
    return text;
}

// Everything that walks over a store reach, so that the sanitizer sees what nobody may look at any
// more. Leaves the cursors at the start.
std::string written(KIVO_INFO& info) {
    std::string text;
    info.reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = info.get_next_kivo_obj()) {
        text += written(*object);
    }
    info.reset_kivo_obj_map();
    info.reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        text += written(*vector);
    }
    info.reset_vector_map();
    info.reset_wizard_map_map();
    while (KIVO_WIZARD_MAP* map = info.get_next_wizard_map()) {
        text += written(*map);
    }
    info.reset_wizard_map_map();
    text += written(info.fn_rule_list) + written(info.message_list) + info.vhdl_library;
    if (info.html_text != nullptr) {
        text += info.html_text->title + info.html_text->header + written(info.html_text->intro) +
                written(info.html_text->end);
    }
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        text += info.error_list[i] + info.get_error_id(i) + info.get_error_place(i).file;
    }
    return text;
}

// The keys of a map as a walk gives them: an entry without a record would end it.
Messages keys_of(KIVO_OBJ_MAP& map) {
    Messages keys;
    std::string key;
    map.reset();
    while (map.get_next_entry(key) != nullptr) {
        keys.push_back(key);
    }
    map.reset();
    return keys;
}

// The names of everything that has one.
Messages names_in(KIVO_INFO& info) {
    Messages names;
    const auto add = [&names](KIVO_OBJ_MAP& map) {
        for (const std::string& key : keys_of(map)) {
            names.push_back(key);
        }
    };
    add(info.object_map);
    add(info.vector_map);
    add(info.wizard_map_map);
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        add(vector->display_format_map);
    }
    info.reset_vector_map();
    return names;
}

// Loads a file in a shortage of memory. False when the load came to its end without any refusal.
bool load_in_shortage(KIVO_INFO& info, const std::string& file, std::size_t pieces,
                      Refusal refusal) {
    const MemoryShortage shortage(pieces, refusal);
    try {
        info.process_xml_file(file);
        EXPECT_FALSE(shortage.came()) << "want of memory was taken for something else";
    } catch (const std::bad_alloc&) {
        EXPECT_TRUE(shortage.came());
    }
    return shortage.came();
}

// Adds one of each to a store, which a host may do at any time.
void add_to(KIVO_INFO& info) {
    EXPECT_NE(info.add_kivo_object("an object of the host's own", KIVO_OBJ_INPUT_PORT), nullptr);
    KIVO_VECTOR_OBJ* const vector = info.add_vector_object("a vector of the host's own");
    ASSERT_NE(vector, nullptr);
    info.process_display_format_string(vector, "add wave -hex a_signal_of_some_length");
    KIVO_WIZARD_MAP* const map = info.add_wizard_map("a wizard map of the host's own");
    ASSERT_NE(map, nullptr);
    EXPECT_NE(map->add_kivo_object("an object of the host's own", KIVO_OBJ_INPUT_PORT), nullptr);
    info.post_error_message("a message of the host's own");
}

// What a host does that keeps what outlives the store, and deletes it piece by piece.
void destroy_and_delete_the_rest(std::unique_ptr<KIVO_INFO> info) {
    std::vector<KIVO_OBJ*> rest;
    const auto add_list = [&rest](KIVO_OBJ_LIST& list) {
        list.reset();
        while (KIVO_OBJ* item = list.get_next_value()) {
            rest.push_back(item);
        }
    };
    const auto add_map = [&rest](KIVO_OBJ_MAP& map) {
        std::string key;
        map.reset();
        while (KIVO_OBJ* item = map.get_next_entry(key)) {
            rest.push_back(item);
        }
    };
    info->reset_wizard_map_map();  // copying generic objects moves this cursor
    while (KIVO_OBJ_INFO* object = info->get_next_kivo_obj()) {
        add_list(object->rule_list);
    }
    while (KIVO_VECTOR_OBJ* vector = info->get_next_vector_obj()) {
        add_list(vector->stimulus_list);
        add_map(vector->display_format_map);
    }
    while (KIVO_WIZARD_MAP* map = info->get_next_wizard_map()) {
        rest.push_back(map->condition);
        map->obj_map.reset();
        while (KIVO_OBJ_INFO* object = map->get_next_kivo_obj()) {
            add_list(object->rule_list);
        }
        add_map(map->obj_map);
    }
    add_map(info->vector_map);
    add_map(info->wizard_map_map);
    std::sort(rest.begin(), rest.end());
    rest.erase(std::unique(rest.begin(), rest.end()), rest.end());
    info.reset();
    for (const KIVO_OBJ* item : rest) {
        delete item;
    }
}

// Destructors have to do with the memory that there is.
void destroy_in_shortage(std::unique_ptr<KIVO_INFO> info) {
    const MemoryShortage shortage(0, Refusal::kFromThenOn);
    info.reset();
    EXPECT_FALSE(shortage.came());
}

class MemoryShortageInLoad : public testing::TestWithParam<Refusal> {
protected:
    // Calls "check" with a store for each piece of memory that its load was refused, and expects
    // that nothing is left of it afterwards. "check" gets how many pieces were given before.
    template <class Check>
    static void for_each_refusal(const std::string& file, Check check) {
        std::size_t pieces = 0;
        for (bool is_refused = true; is_refused; pieces += kStep) {
            SCOPED_TRACE("refused after " + std::to_string(pieces));
            const std::ptrdiff_t before = living_pieces();
            {
                auto info = std::make_unique<KIVO_INFO>();
                is_refused = load_in_shortage(*info, file, pieces, GetParam());
                check(std::move(info));
            }
            ASSERT_EQ(living_pieces(), before);
            ASSERT_FALSE(HasFailure());
        }
        EXPECT_GT(pieces, 250u);
    }
};

}  // namespace

TEST_P(MemoryShortageInLoad, leaves_a_store_that_can_be_walked_added_to_loaded_and_released) {
    const Description description;
    KIVO_INFO whole;
    add_to(whole);
    whole.process_xml_file(description.twice());
    const Messages names = names_in(whole);
    whole.delete_detached_objects();
    Messages sorted_names = names;
    std::sort(sorted_names.begin(), sorted_names.end());
    for_each_refusal(description.twice(), [&](std::unique_ptr<KIVO_INFO> info) {
        EXPECT_FALSE(written(*info).empty());
        add_to(*info);
        info->process_xml_file(description.twice());
        EXPECT_FALSE(written(*info).empty());
        Messages found = names_in(*info);
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, sorted_names);
        info->delete_detached_objects();
        EXPECT_FALSE(written(*info).empty());
        destroy_in_shortage(std::move(info));
    });
}

TEST_P(MemoryShortageInLoad, leaves_what_outlives_the_store_to_the_host) {
    const Description description;
    for_each_refusal(description.once(), [](std::unique_ptr<KIVO_INFO> info) {
        add_to(*info);
        destroy_and_delete_the_rest(std::move(info));
    });
}

// What a load that an exception ended had to say keeps its places.
TEST_P(MemoryShortageInLoad, leaves_the_places_of_what_was_read) {
    const Description description;
    KIVO_INFO whole;
    whole.process_xml_file(description.twice());
    const auto place_of = [](const KIVO_INFO& info, std::size_t message) {
        const KIVO_PLACE place = info.get_error_place(message);
        return place.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
    };
    for_each_refusal(description.twice(), [&](std::unique_ptr<KIVO_INFO> info) {
        ASSERT_LE(info->error_list.size(), whole.error_list.size());
        for (std::size_t i = 0; i < info->error_list.size(); ++i) {
            ASSERT_EQ(info->error_list[i], whole.error_list[i]);
            ASSERT_EQ(place_of(*info, i), place_of(whole, i)) << info->error_list[i];
        }
        while (const KIVO_OBJ_INFO* object = info->get_next_kivo_obj()) {
            ASSERT_GT(info->get_place(object->mark).line, 1) << object->name;
        }
        info->delete_detached_objects();
    });
    whole.delete_detached_objects();
}

INSTANTIATE_TEST_SUITE_P(Refusals, MemoryShortageInLoad,
                         testing::Values(Refusal::kOnce, Refusal::kFromThenOn),
                         [](const testing::TestParamInfo<Refusal>& refusal) {
                             return refusal.param == Refusal::kOnce ? "once" : "from_then_on";
                         });

TEST(MemoryShortage, release_that_is_refused_memory_leaves_everything_and_can_be_repeated) {
    const Description description;
    bool is_refused = true;
    for (std::size_t pieces = 0; is_refused; ++pieces) {
        const std::ptrdiff_t before = living_pieces();
        {
            KIVO_INFO info;
            info.process_xml_file(description.twice());
            const std::string whole = written(info);
            try {
                const MemoryShortage shortage(pieces);
                info.delete_detached_objects();
                is_refused = shortage.came();
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(written(info), whole);
            }
            EXPECT_EQ(info.get_next_vector_obj() == nullptr, !is_refused);
            info.delete_detached_objects();
            EXPECT_EQ(info.get_next_vector_obj(), nullptr);
        }
        ASSERT_EQ(living_pieces(), before) << "after " << pieces;
    }
}

TEST(MemoryShortage, additions_of_a_host_leave_the_store_as_it_was) {
    for (std::size_t pieces = 0; pieces < 60; ++pieces) {
        const std::ptrdiff_t before = living_pieces();
        {
            KIVO_INFO info;
            try {
                const MemoryShortage shortage(pieces);
                add_to(info);
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(keys_of(info.object_map).size(), info.get_sorted_obj_map().size());
            }
            add_to(info);
            EXPECT_EQ(keys_of(info.object_map).size(), 1u);
            EXPECT_EQ(keys_of(info.vector_map).size(), 1u);
            EXPECT_EQ(keys_of(info.wizard_map_map).size(), 1u);
            info.delete_detached_objects();
        }
        ASSERT_EQ(living_pieces(), before) << "after " << pieces;
    }
}
