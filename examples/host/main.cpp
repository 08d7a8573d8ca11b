// A complete small host: loads a description, prints what is wrong with it and a wizard's first
// page, and asks what a waveform does.

#include <cstdint>
#include <iostream>
#include <string>

#include "kivo/kivo.h"

namespace {

void print_errors(KIVO_INFO& info) {
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        const KIVO_PLACE place = info.get_error_place(i);
        std::cerr << place.file << ':' << place.line << ':' << place.column << ": "
                  << info.error_list[i] << '\n';
    }
}

void print_objects(KIVO_INFO& info) {
    for (const auto& [name, object] : info.get_sorted_obj_map()) {
        std::cout << name << ": " << object->get_obj_type_as_string();
        if (!object->get_default_value().empty()) {
            std::cout << ", default " << object->get_default_value();
        }
        std::cout << '\n';
        object->reset_rule_list();
        while (KIVO_RULE_ELEMENT* rule = object->get_next_rule_element()) {
            std::cout << "  " << rule->text1 << ' ' << rule->text2 << ' '
                      << kivo_translate_text_to_hdl(rule->text3, KIVO_HDL_VERILOG) << '\n';
        }
    }
}

// What every signal of a waveform does at one time, in the unit of info.time_scale.
void print_transitions(KIVO_INFO& info, KIVO_VECTOR_OBJ& vector, std::int32_t time) {
    std::string signal;
    std::string value;
    vector.stimulus_list.reset();
    // Each call answers for the next command that makes a transition, until none is left.
    while (kivo_get_vector_transition(&vector.stimulus_list, time, signal, value)) {
        const DRO_MEMORY_RADIXES radix =
            value.compare(0, 2, "0b") == 0 ? DRO_RADIX_BINARY : DRO_RADIX_SIGNED;
        std::cout << vector.name << ", " << time << ' ' << info.time_scale << ": " << signal
                  << " becomes " << vector.format_display_string(signal, value, radix) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " DIRECTORY FUNCTION\n";
        return 2;
    }
    KIVO_INFO info;
    const bool is_clean = info.set_function_name(argv[2], argv[1]);
    print_errors(info);
    print_objects(info);
    info.reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        print_transitions(info, *vector, info.start_time);
    }
    // The store goes at the end of this function; vectors, wizard maps and the rules of objects
    // would outlive it.
    info.delete_detached_objects();
    return is_clean ? 0 : 1;
}
