#pragma once

#include <cstddef>
#include <string>

#include "kivo/kivo.h"

// The bits that values stand for.
class BitConverter {
public:
    BitConverter();
    BitConverter(const BitConverter&) = delete;
    BitConverter& operator=(const BitConverter&) = delete;
    ~BitConverter();

    // Of a value as the library answers it, of 0, 1, x and z; empty when it stands for none.
    std::string bits_of(const std::string& value, bool is_binary) const;

private:
    KIVO_VECTOR_OBJ formats_{""};
};

// Brings bits to a width: in front a short pattern gets zeros, ones for a negative number, or its
// own first digit when that is x or z; a long one loses digits at the high or the low end. False
// when it lost something.
bool fit_bits(std::string& bits, std::size_t width, bool is_negative, bool truncate_low);

// "value" in the display format of the port.
std::string shown_value(const KIVO_VECTOR_OBJ& vector, const std::string& port,
                        const std::string& value, bool is_binary);

// Whether the port has a fixed-point format that cannot show "value", so that it is shown as it is
// written.
bool is_beyond_fixed_point(const KIVO_VECTOR_OBJ& vector, const std::string& port,
                           const std::string& value, bool is_binary);
