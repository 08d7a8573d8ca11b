#include "tools/wave/port_width.h"

#include <charconv>
#include <string_view>

#include "tools/text/text_escape.h"

namespace {

// Wider ports are drawn as wide as their values: no file should need 100 MB for a typing error.
constexpr std::size_t kMaxWidth = 65536;

std::optional<std::size_t> read_width(std::string_view text) {
    std::size_t width = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, width);
    const bool is_number = read.ec == std::errc() && read.ptr == end;
    return is_number && width >= 1 && width <= kMaxWidth ? std::optional(width) : std::nullopt;
}

std::string default_of(const KIVO_OBJ_INFO& parameter) {
    if (parameter.default_index < 0) {
        return parameter.default_value;
    }
    std::string_view rest = parameter.value_array;
    for (std::int32_t i = 0; i < parameter.default_index && !rest.empty(); ++i) {
        const std::size_t end = rest.find(';');
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return std::string(rest.substr(0, rest.find(';')));
}

}  // namespace

std::optional<std::size_t> declared_width(const KIVO_INFO& info, const std::string& port) {
    const KIVO_OBJ_INFO* const object = info.get_kivo_obj(port);
    if (object == nullptr || !kivo_is_port(object->obj_type)) {
        return std::nullopt;
    }
    const std::string width = join_lines(object->port_width);
    if (const auto number = read_width(width)) {
        return number;
    }
    const KIVO_OBJ_INFO* const parameter = info.get_kivo_obj(width);
    return parameter != nullptr && kivo_is_parameter(parameter->obj_type)
               ? read_width(join_lines(default_of(*parameter)))
               : std::nullopt;
}
