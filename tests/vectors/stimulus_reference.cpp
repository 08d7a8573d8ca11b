#include "tests/vectors/stimulus_reference.h"

#include <cstdlib>
#include <limits>

#include "kivo/objects/rule_element.h"
#include "kivo/toolkit/radix/radix.h"

namespace stimulus_reference {
namespace {

std::string take_token(std::string& text, const std::string& delimiters) {
    std::string token;
    const std::size_t end = text.find_first_of(delimiters);
    if (end == std::string::npos) {
        token = text;
        text = "";
    } else {
        token = text.substr(0, end);
        text = text.substr(end + 1);
    }
    return token;
}

std::string without_leading_blanks(const std::string& text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    return start == std::string::npos ? "" : text.substr(start);
}

std::int32_t number(const std::string& text) {
    return static_cast<std::int32_t>(std::strtol(text.c_str(), nullptr, 10));
}

std::int32_t quotient(std::int32_t dividend, std::int32_t divisor) {
    if (dividend == std::numeric_limits<std::int32_t>::min() && divisor == -1) {
        return dividend;
    }
    return dividend / divisor;
}

std::int32_t remainder(std::int32_t dividend, std::int32_t divisor) {
    if (divisor == -1) {
        return 0;
    }
    return dividend % divisor;
}

}  // namespace

bool get_transition_at_time(std::string command, std::int32_t time, std::string& signal,
                            std::string& value) {
    signal = "";
    value = "";
    int radix = 1;
    std::string description = "";
    bool result = false;

    if (take_token(command, " ") != "force") {
        return result;
    }

    signal = take_token(command, " ");
    if (signal.substr(0, 1) == "-") {
        std::string option = signal;
        if (option == "-bin") {
            radix = 0;
        } else if (option == "-hex") {
            radix = 3;
        } else if (option == "-signed" || option == "-unsigned") {
            radix = 1;
        } else {
            std::string before = take_token(option, "(");
            if (before == "-fixed_point") {
                std::string inside = take_token(option, ")");
                if (inside != "") {
                    radix = 5;
                    description = inside;
                }
            }
        }
        signal = take_token(command, " ");
    }

    std::string rest = without_leading_blanks(command);
    std::string blanks = "";  // skipped in front of "rest"
    std::string first = "";
    std::string second = "";

    bool stopped = false;
    while (rest != "" && !stopped) {
        std::string item = take_token(rest, ",");
        if (item != "") {
            if (first == "") {
                first = blanks + item;
            } else if (second == "") {
                second = blanks + item;
            }
        } else {
            item = rest;
            rest = "";
        }

        item = without_leading_blanks(item);
        std::string trimmed = without_leading_blanks(rest);
        blanks = rest.substr(0, rest.size() - trimmed.size());
        rest = trimmed;
        std::string v = take_token(item, " ");
        std::string t = item;
        if (v == "" || t == "") {
            continue;
        }
        if (t.substr(0, 1) == "@") {
            t = t.substr(1);
        }

        if (v == "-r" || v == "-repeat") {
            std::int32_t p = number(t);
            if (p > time) {
                continue;
            }
            if (first == "" || second == "") {
                continue;
            }
            std::string t1 = first;
            std::string v1 = take_token(t1, " ");
            if (t1.substr(0, 1) == "@") {
                t1 = t1.substr(1);
            }
            if (v1 == "") {
                continue;
            }
            if (p == 0 && number(t1) != 0 && quotient(time, number(t1)) == 0) {
                value = v1;
            } else if (p != 0 && remainder(time, p) == number(t1)) {
                value = v1;
            }
            if (value == "") {
                std::string t2 = second;
                std::string v2 = take_token(t2, " ");
                if (t2.substr(0, 1) == "@") {
                    t2 = t2.substr(1);
                }
                if (p == 0 && number(t2) == 0) {
                    continue;  // a division by zero matches nothing
                }
                if (p == 0 && quotient(time, number(t2)) == 0) {
                    value = v2;
                } else if (p != 0 && remainder(time, p) == number(t2)) {
                    value = v2;
                }
            }
        } else if (v == "-c" || v == "-cancel") {
            std::int32_t c = number(t);
            if (time < c) {
                continue;
            }
            value = "";
            signal = "";
            result = false;
        } else {
            if (number(t) == time) {
                value = v;
                result = true;
                stopped = true;
            }
        }
    }

    if (value != "") {
        result = true;
    }

    if (result && value != "" && radix != 1 && radix != 2) {
        if (radix == 5) {
            dro_radix_conversion_fixed_point(value, &value, DRO_RADIX_FIXED_POINT, DRO_RADIX_BINARY,
                                             description);
        } else {
            dro_radix_conversion(value, &value, static_cast<DRO_MEMORY_RADIXES>(radix),
                                 DRO_RADIX_BINARY, 0);
        }
        value = "0b" + value;
    }
    return result;
}

bool get_vector_transition(KIVO_OBJ_LIST* stimulus, std::int32_t time, std::string& signal,
                           std::string& value) {
    while (KIVO_OBJ* object = stimulus->get_next_value()) {
        KIVO_RULE_ELEMENT* element = dynamic_cast<KIVO_RULE_ELEMENT*>(object);
        if (element == nullptr) {
            continue;
        }
        std::string command = element->text1;
        if (get_transition_at_time(command, time, signal, value)) {
            return true;
        }
    }
    stimulus->reset();
    return false;
}

bool stimulus_exists(KIVO_OBJ_LIST* stimulus, const std::string& signal) {
    stimulus->reset();
    while (KIVO_OBJ* object = stimulus->get_next_value()) {
        KIVO_RULE_ELEMENT* element = dynamic_cast<KIVO_RULE_ELEMENT*>(object);
        if (element == nullptr) {
            continue;
        }
        std::string command = element->text1;
        if (take_token(command, " ") != "force") {
            continue;
        }
        std::string name = take_token(command, " ");
        if (name.substr(0, 1) == "-") {
            name = take_token(command, " ");
        }
        if (name == signal) {
            return true;
        }
    }
    return false;
}

}  // namespace stimulus_reference
