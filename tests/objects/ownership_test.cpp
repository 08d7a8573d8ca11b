#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kivo/kivo.h"
#include "tests/support/conditional_text.h"
#include "tests/support/counted.h"
#include "tests/support/description.h"
#include "tests/support/memory_shortage.h"

namespace {

std::string wave(const std::string& content) {
    return "<WAVE_DATA><WAVE NAME='w'>" + content + "</WAVE></WAVE_DATA>";
}

std::string wizard(const std::string& content) {
    return "<WIZARD_DATA><WIZARD_MAP NAME='m'>" + content + "</WIZARD_MAP></WIZARD_DATA>";
}

const std::string kPieces =
    wave(
        "<DESCRIPTION><T>one description</T></DESCRIPTION><WAVE_CONDITION>one</WAVE_CONDITION>"
        "<DISPLAY>add wave -hex port</DISPLAY>") +
    wizard("<WIZARD_CONDITION>one condition</WIZARD_CONDITION>");

const std::string kOtherPieces = wave(
                                     "<DESCRIPTION/><WAVE_CONDITION>two</WAVE_CONDITION>"
                                     "<DISPLAY>add wave -bin port</DISPLAY>") +
                                 wizard("<WIZARD_CONDITION>two conditions</WIZARD_CONDITION>");

// What a host holds on to.
struct Pieces {
    explicit Pieces(KIVO_INFO& info) : vector(info.get_vector_obj("w")) {
        info.reset_wizard_map_map();
        map = info.get_next_wizard_map();
        description = vector->description;
        wave_condition = vector->wave_condition;
        condition = map->condition;
        format = dynamic_cast<KIVO_VECTOR_DISPLAY_OBJ*>(vector->display_format_map.look_up("port"));
    }

    void expect_readable() const {
        EXPECT_EQ(written(description), "[?one description]");
        EXPECT_EQ(wave_condition->text3, "one");
        EXPECT_EQ(condition->text3, "one condition");
        EXPECT_EQ(format->radix, DRO_RADIX_HEX);
    }

    KIVO_VECTOR_OBJ* vector;
    KIVO_WIZARD_MAP* map = nullptr;
    KIVO_CONDITIONAL_TEXT* description;
    KIVO_RULE_ELEMENT* wave_condition;
    KIVO_RULE_ELEMENT* condition;
    KIVO_VECTOR_DISPLAY_OBJ* format;
};

// Deletes the piece in a unique_ptr; what is null is nothing.
template <class... Piece>
void delete_all(Piece*... piece) {
    (static_cast<void>(std::unique_ptr<Piece>(piece)), ...);
}

}  // namespace

TEST(ReplacedPieces, that_loads_made_can_be_read_until_the_detached_objects_are_deleted) {
    const std::ptrdiff_t before = living_pieces();
    {
        Loaded loaded(kPieces);
        const Pieces first(loaded.info);
        EXPECT_TRUE(loaded.load(kOtherPieces));
        const Pieces second(loaded.info);
        EXPECT_EQ(second.description, nullptr);
        EXPECT_NE(second.wave_condition, first.wave_condition);
        EXPECT_NE(second.condition, first.condition);
        EXPECT_NE(second.format, first.format);
        first.expect_readable();
    }
    EXPECT_EQ(living_pieces(), before);
}

TEST(ReplacedPieces, outlive_the_store_as_the_vectors_and_maps_do) {
    const std::ptrdiff_t before = living_pieces();
    {
        const TemporaryFolder folder;
        auto info = std::make_unique<KIVO_INFO>();
        info->process_xml_file(folder.write("a.xml", "<ROOT>" + kPieces + "</ROOT>"));
        const Pieces first(*info);
        info->process_xml_file(folder.write("b.xml", "<ROOT>" + kOtherPieces + "</ROOT>"));
        const Pieces second(*info);
        info.reset();
        first.expect_readable();
        delete_all(second.vector, second.map, second.condition, second.format);
        first.expect_readable();
        delete_all(first.description, first.wave_condition, first.condition, first.format);
    }
    EXPECT_EQ(living_pieces(), before);
}

TEST(ReplacedPieces, of_a_host_are_the_hosts_for_ever) {
    int deaths = 0;
    Counted<KIVO_CONDITIONAL_TEXT> description(&deaths);
    Counted<KIVO_RULE_ELEMENT> wave_condition(&deaths);
    Counted<KIVO_RULE_ELEMENT> condition(&deaths);
    Counted<KIVO_VECTOR_DISPLAY_OBJ> format(&deaths);
    {
        Loaded loaded(kPieces);
        const Pieces made(loaded.info);
        made.vector->description = &description;
        made.vector->wave_condition = &wave_condition;
        made.map->condition = &condition;
        made.vector->display_format_map.set_at("port", &format);
        delete_all(made.description, made.wave_condition, made.condition, made.format);
        EXPECT_TRUE(loaded.load(kOtherPieces));
        EXPECT_EQ(deaths, 0);
        loaded.info.delete_detached_objects();
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 0);
}

TEST(ReplacedPieces, of_a_host_may_be_deleted_by_it_at_once) {
    int deaths = 0;
    {
        Loaded loaded(kPieces);
        const Pieces made(loaded.info);
        auto* const mine = new Counted<KIVO_CONDITIONAL_TEXT>(&deaths);
        delete_all(made.description);
        made.vector->description = mine;
        loaded.info.html_text = new Counted<KIVO_TEXT_OBJ>(&deaths);
        const std::unique_ptr<KIVO_TEXT_OBJ> my_help(loaded.info.html_text);
        EXPECT_TRUE(loaded.load(kOtherPieces + "<HTML_TEXT/>"));
        EXPECT_NE(loaded.info.html_text, my_help.get());
        delete mine;
        EXPECT_EQ(deaths, 1);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(ReplacedPieces, that_another_store_made_are_left_alone) {
    Loaded one(kPieces);
    Loaded other(kPieces);
    const Pieces ones(one.info);
    const Pieces others(other.info);
    std::swap(ones.vector->description, others.vector->description);
    std::swap(ones.map->condition, others.map->condition);
    one.load(kOtherPieces);
    one.info.delete_detached_objects();
    EXPECT_EQ(written(others.description), "[?one description]");
    EXPECT_EQ(others.condition->text3, "one condition");
    delete_all(others.description, others.condition);
}

TEST(ReplacedPieces, copies_of_what_a_load_made_are_the_hosts) {
    Loaded loaded(kPieces);
    const Pieces made(loaded.info);
    const auto copy = std::make_unique<KIVO_RULE_ELEMENT>(*made.wave_condition);
    made.vector->wave_condition = copy.get();
    delete_all(made.wave_condition);
    EXPECT_TRUE(loaded.load(kOtherPieces));
    EXPECT_EQ(copy->text3, "one");
}

TEST(ReplacedPieces, may_be_put_back_and_replaced_again) {
    const std::ptrdiff_t before = living_pieces();
    {
        Loaded loaded(kPieces + "<HTML_TEXT><TITLE>one</TITLE></HTML_TEXT>");
        const Pieces first(loaded.info);
        KIVO_TEXT_OBJ* const help = loaded.info.html_text;
        for (int round = 0; round < 3; ++round) {
            loaded.load(kOtherPieces + "<HTML_TEXT><TITLE>two</TITLE></HTML_TEXT>");
            delete_all(first.vector->wave_condition, first.map->condition);
            first.vector->description = first.description;
            first.vector->wave_condition = first.wave_condition;
            first.map->condition = first.condition;
        }
        first.expect_readable();
        KIVO_TEXT_OBJ* const last_help = loaded.info.html_text;
        loaded.info.html_text = help;
        delete_all(last_help);
        EXPECT_EQ(help->title, "one");
    }
    EXPECT_EQ(living_pieces(), before);
}

TEST(ReplacedPieces, that_a_display_format_of_the_host_replaced_go_with_their_vector) {
    const std::ptrdiff_t before = living_pieces();
    {
        Loaded loaded(kPieces);
        const Pieces first(loaded.info);
        first.vector->add_vector_display_format("port", DRO_RADIX_BINARY, "");
        first.expect_readable();
        loaded.info.process_display_format_string(first.vector, "add wave -signed port");
        first.expect_readable();
        EXPECT_EQ(first.vector->get_vector_display_format("port"), DRO_RADIX_SIGNED);
    }
    EXPECT_EQ(living_pieces(), before);
}

TEST(Destruction, deletes_an_object_under_two_names_once) {
    int deaths = 0;
    {
        KIVO_INFO info;
        info.object_map.set_at("b", info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT));
        auto* const mine = new Counted<KIVO_OBJ_INFO>(&deaths, "c", KIVO_OBJ_INPUT_PORT);
        for (const char* name : {"c", "d", "e"}) {
            info.object_map.set_at(name, mine);
        }
        EXPECT_EQ(info.get_kivo_obj("b"), info.get_kivo_obj("a"));
    }
    EXPECT_EQ(deaths, 1);
}

TEST(Destruction, deletes_what_stands_in_several_lists_once) {
    int deaths = 0;
    {
        KIVO_INFO info;
        auto* const rule = new Counted<KIVO_RULE_ELEMENT>(&deaths);
        info.fn_rule_list.add_at_tail(rule);
        info.fn_rule_list.add_at_tail(rule);
        info.message_list.add_at_tail(rule);
        info.object_map.set_at("rule", rule);
    }
    EXPECT_EQ(deaths, 1);
    Loaded loaded("<RULES><RULE>one</RULE><RULE>two</RULE><RULE>three</RULE></RULES>");
    loaded.info.message_list = loaded.info.fn_rule_list;
    EXPECT_EQ(loaded.info.get_next_msg()->text3, "one");
}

TEST(Destruction, goes_past_names_without_a_record) {
    int deaths = 0;
    {
        KIVO_INFO info;
        info.object_map.set_at("nothing", nullptr);
        info.object_map.set_at("a", new Counted<KIVO_OBJ_INFO>(&deaths, "a", KIVO_OBJ_MACRO));
        info.fn_rule_list.add_at_tail(nullptr);
        info.fn_rule_list.add_at_tail(new Counted<KIVO_RULE_ELEMENT>(&deaths));
        EXPECT_NE(info.add_kivo_object("nothing", KIVO_OBJ_MACRO), nullptr);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(Destruction, deletes_in_the_order_in_which_things_stand) {
    std::string order;
    class Traced : public KIVO_RULE_ELEMENT {
    public:
        Traced(std::string& trace, char letter) : trace_(trace), letter_(letter) {}
        ~Traced() override { trace_ += letter_; }

    private:
        std::string& trace_;
        char letter_;
    };
    {
        KIVO_INFO info;
        auto* const twice = new Traced(order, 'b');
        info.message_list.add_at_tail(new Traced(order, 'f'));
        info.message_list.add_at_tail(twice);
        info.fn_rule_list.add_at_tail(new Traced(order, 'e'));
        info.object_map.set_at("2", new Traced(order, 'a'));
        info.object_map.set_at("1", twice);
        info.object_map.set_at("3", new Traced(order, 'd'));
    }
    EXPECT_EQ(order, "abdef");
}

TEST(DetachedObjects, that_are_reachable_in_several_ways_are_deleted_once) {
    int rules = 0;
    int texts = 0;
    int objects = 0;
    int maps = 0;
    {
        LoadedStore store;
        KIVO_INFO& info = store.info;
        auto* const rule = new Counted<KIVO_RULE_ELEMENT>(&rules);
        auto* const text = new Counted<KIVO_CONDITIONAL_TEXT>(&texts);
        for (const char* name : {"v", "w"}) {
            KIVO_VECTOR_OBJ* const vector = info.add_vector_object(name);
            vector->wave_condition = rule;
            vector->description = text;
            vector->add_vector_stimulus(rule);
        }
        info.vector_map.set_at("w again", info.get_vector_obj("w"));
        auto* const map = new Counted<KIVO_WIZARD_MAP>(&maps, "m");
        info.wizard_map_map.set_at("m", map);
        info.wizard_map_map.set_at("m again", map);
        auto* const object = new Counted<KIVO_OBJ_INFO>(&objects, "a", KIVO_OBJ_MACRO);
        map->condition = rule;
        map->obj_map.set_at("a", object);
        map->obj_map.set_at("a again", object);
        object->add_rule(rule);
        info.delete_detached_objects();
        EXPECT_EQ(rules, 1);
        EXPECT_EQ(texts, 1);
        EXPECT_EQ(objects, 1);
        EXPECT_EQ(maps, 1);
    }
    EXPECT_EQ(rules + texts + objects + maps, 4);
}

TEST(DetachedObjects, that_the_store_holds_too_stay_until_its_destruction) {
    int deaths = 0;
    {
        LoadedStore store;
        KIVO_INFO& info = store.info;
        auto* const rule = new Counted<KIVO_RULE_ELEMENT>(&deaths);
        auto* const object = new Counted<KIVO_OBJ_INFO>(&deaths, "a", KIVO_OBJ_MACRO);
        auto* const text = new Counted<KIVO_CONDITIONAL_TEXT>(&deaths);
        info.fn_rule_list.add_at_tail(rule);
        info.object_map.set_at("a", object);
        info.html_text = new KIVO_TEXT_OBJ;
        info.html_text->intro = text;
        info.html_text->end = text;
        KIVO_WIZARD_MAP* const map = info.add_wizard_map("m");
        map->condition = rule;
        map->obj_map.set_at("a", object);
        map->obj_map.set_at("made by the store", info.add_kivo_object("b", KIVO_OBJ_MACRO));
        KIVO_VECTOR_OBJ* const vector = info.add_vector_object("v");
        vector->wave_condition = rule;
        vector->description = text;
        info.delete_detached_objects();
        EXPECT_EQ(deaths, 0);
        EXPECT_EQ(info.get_kivo_obj("a"), object);
        EXPECT_EQ(info.get_next_fn_rule_element(), rule);
        EXPECT_EQ(info.get_kivo_obj("b")->name, "b");
    }
    EXPECT_EQ(deaths, 3);
}

TEST(DetachedObjects, are_found_after_what_is_none) {
    int deaths = 0;
    KIVO_RULE_ELEMENT stranger;
    KIVO_INFO info;
    info.vector_map.set_at("nothing", nullptr);
    info.vector_map.set_at("stranger", &stranger);
    info.wizard_map_map.set_at("nothing", nullptr);
    info.wizard_map_map.set_at("stranger", &stranger);
    info.vector_map.set_at("v", new Counted<KIVO_VECTOR_OBJ>(&deaths, "v"));
    auto* const map = new Counted<KIVO_WIZARD_MAP>(&deaths, "m");
    info.wizard_map_map.set_at("m", map);
    map->obj_map.set_at("nothing", nullptr);
    map->obj_map.set_at("stranger", &stranger);
    auto* const object = new Counted<KIVO_OBJ_INFO>(&deaths, "a", KIVO_OBJ_MACRO);
    map->obj_map.set_at("a", object);
    object->rule_list.add_at_tail(nullptr);
    object->add_rule(new Counted<KIVO_RULE_ELEMENT>(&deaths));
    info.delete_detached_objects();
    EXPECT_EQ(deaths, 4);
}
