#include "kivo/vectors/internal/stimulus_syntax.h"

void read_radix_option(std::string_view option, StimulusHead& head) {
    if (option == "-bin") {
        head.radix = DRO_RADIX_BINARY;
    } else if (option == "-hex") {
        head.radix = DRO_RADIX_HEX;
    } else if (take_token(option, '(') == "-fixed_point") {
        head.fixed_point = take_token(option, ')');
        if (!head.fixed_point.empty()) {
            head.radix = DRO_RADIX_FIXED_POINT;
        }
    }
}

void write_as_binary(const StimulusHead& head, std::string& value) {
    // A value that does not convert stays as it is, after the same prefix.
    if (head.radix == DRO_RADIX_FIXED_POINT) {
        dro_radix_conversion_fixed_point(value, &value, DRO_RADIX_FIXED_POINT, DRO_RADIX_BINARY,
                                         std::string(head.fixed_point));
    } else {
        dro_radix_conversion(value, &value, head.radix, DRO_RADIX_BINARY, 0);
    }
    value.insert(0, "0b");
}
