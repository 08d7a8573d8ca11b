#include "fuzz/support/store_walk.h"

#include <set>
#include <string>
#include <vector>

#include "fuzz/support/expect.h"

namespace {

class StoreWalk {
public:
    explicit StoreWalk(KIVO_INFO& info) : info_(info) {}

    void run() {
        walk_errors();
        walk_objects();
        walk_rules();
        walk_vectors();
        walk_wizard_maps();
        if (const KIVO_TEXT_OBJ* text = info_.html_text) {
            walk_text(text->intro);
            walk_text(text->end);
        }
        info_.get_simulation_library();
    }

private:
    void expect_place(const KIVO_MARK& mark, std::string_view what) {
        const KIVO_PLACE place = info_.get_place(mark);
        expect(!place.file.empty() && place.line > 0 && place.column > 0, what);
    }

    void walk_errors() {
        info_.reset_error_message_list();
        for (std::size_t i = 0; i < info_.error_list.size(); ++i) {
            const KIVO_PLACE place = info_.get_error_place(i);
            expect(!place.file.empty(), "a message of a load has the place of a file",
                   info_.error_list[i]);
            expect((place.line > 0) == (place.column > 0), "a line has a column",
                   info_.error_list[i]);
            expect(info_.get_error_id(i) != "host-message", "a message of a load is no host's",
                   info_.error_list[i]);
            expect_same(info_.get_next_error_message(), info_.error_list[i],
                        "the messages are walked in their order");
        }
        expect_same(info_.get_next_error_message(), "", "the messages end with an empty one");
    }

    void walk_object(KIVO_OBJ_INFO& object) {
        expect_place(object.mark, "an object stands in a file");
        object.reset_rule_list();
        while (const KIVO_RULE_ELEMENT* rule = object.get_next_rule_element()) {
            expect_place(rule->mark, "a value rule stands in a file");
        }
        expect(object.get_high_probability() >= 1 && object.get_high_probability() <= 100,
               "a probability is one in percent");
        object.get_obj_type_as_string();
    }

    void walk_objects() {
        std::size_t count = 0;
        info_.reset_kivo_obj_map();
        while (KIVO_OBJ_INFO* object = info_.get_next_kivo_obj()) {
            expect(!object->name.empty() || object->obj_type == KIVO_OBJ_MACRO,
                   "an object has a name, unless it is a macro");
            expect(info_.get_kivo_obj(object->name) == object, "an object is found by its name",
                   object->name);
            walk_object(*object);
            ++count;
        }
        const auto sorted = info_.get_sorted_obj_map();
        expect(sorted.size() <= count && sorted.empty() == (count == 0),
               "sorting makes and loses no objects");
    }

    void walk_rules() {
        info_.reset_fn_rule_list();
        while (const KIVO_RULE_ELEMENT* rule = info_.get_next_fn_rule_element()) {
            expect_place(rule->mark, "a rule stands in a file");
            expect(!rule->text3.empty(), "a rule has a condition");
        }
        info_.reset_message_list();
        while (const KIVO_RULE_ELEMENT* message = info_.get_next_msg()) {
            expect_place(message->mark, "a message stands in a file");
            expect(message->rule_kind >= KIVO_RULE_CRITICAL_WARNING &&
                       message->rule_kind <= KIVO_RULE_INFO,
                   "a message has one of four kinds");
        }
    }

    void walk_vectors() {
        info_.reset_vector_map();
        while (KIVO_VECTOR_OBJ* vector = info_.get_next_vector_obj()) {
            expect(info_.get_vector_obj(vector->name) == vector, "a vector is found by its name",
                   vector->name);
            expect_place(vector->mark, "a vector stands in a file");
            walk_text(vector->description);
            walk_stimulus(*vector);
        }
    }

    void walk_stimulus(KIVO_VECTOR_OBJ& vector) {
        std::string signal;
        std::string value;
        for (const std::int32_t time : {-1, 0, 10, 2147483647}) {
            vector.stimulus_list.reset();
            while (kivo_get_vector_transition(&vector.stimulus_list, time, signal, value)) {
                expect(signal.empty() || is_driven(vector, signal),
                       "a signal that changes is driven", signal);
                vector.format_display_string(signal, value, DRO_RADIX_BINARY);
            }
        }
    }

    // Without moving the cursor.
    static bool is_driven(const KIVO_VECTOR_OBJ& vector, const std::string& signal) {
        KIVO_OBJ_LIST list = vector.stimulus_list;
        return kivo_stimulus_exists(&list, signal);
    }

    void walk_wizard_maps() {
        info_.reset_wizard_map_map();
        while (KIVO_WIZARD_MAP* map = info_.get_next_wizard_map()) {
            expect_place(map->mark, "a wizard map stands in a file");
            map->obj_map.reset();
            while (KIVO_OBJ_INFO* object = map->get_next_kivo_obj()) {
                walk_object(*object);
            }
        }
    }

    // Without calls that go as deep as the text does.
    static void walk_text(KIVO_CONDITIONAL_TEXT* text) {
        std::vector<KIVO_CONDITIONAL_TEXT*> open{text};
        std::set<const KIVO_CONDITIONAL_TEXT*> seen;
        while (!open.empty()) {
            KIVO_CONDITIONAL_TEXT* const piece = open.back();
            open.pop_back();
            if (piece == nullptr) {
                continue;
            }
            expect(seen.insert(piece).second, "a text stands in one place");
            open.push_back(piece->then_sub);
            open.push_back(piece->else_sub);
            piece->text_elements.reset();
            while (KIVO_CONDITIONAL_TEXT* next = piece->get_next_text_element()) {
                open.push_back(next);
            }
        }
    }

    KIVO_INFO& info_;
};

}  // namespace

void walk_store(KIVO_INFO& info) {
    StoreWalk(info).run();
}

StoreCounts count_store(KIVO_INFO& info) {
    const auto count = [&info](auto reset, auto next) {
        std::size_t items = 0;
        (info.*reset)();
        while ((info.*next)() != nullptr) {
            ++items;
        }
        return items;
    };
    return {count(&KIVO_INFO::reset_kivo_obj_map, &KIVO_INFO::get_next_kivo_obj),
            count(&KIVO_INFO::reset_fn_rule_list, &KIVO_INFO::get_next_fn_rule_element),
            count(&KIVO_INFO::reset_message_list, &KIVO_INFO::get_next_msg),
            count(&KIVO_INFO::reset_vector_map, &KIVO_INFO::get_next_vector_obj),
            count(&KIVO_INFO::reset_wizard_map_map, &KIVO_INFO::get_next_wizard_map)};
}
