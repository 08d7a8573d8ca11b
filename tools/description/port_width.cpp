#include "tools/description/port_width.h"

#include <string_view>

#include "tools/text/text_escape.h"
#include "tools/text/whole_number.h"

namespace {

// Wider ports are drawn as wide as their values: no file should need 100 MB for a typing error.
constexpr std::size_t kMaxWidth = 65536;

std::optional<std::size_t> read_width(std::string_view text) {
    const auto width = whole_number<std::size_t>(text);
    return width && *width >= 1 && *width <= kMaxWidth ? width : std::nullopt;
}

const KIVO_OBJ_INFO* find_port(const KIVO_INFO& info, const std::string& name) {
    const KIVO_OBJ_INFO* const object = info.get_kivo_obj(name);
    return object != nullptr && kivo_is_port(object->obj_type) ? object : nullptr;
}

}  // namespace

std::optional<std::size_t> configured_width(const KIVO_SESSION& session, const std::string& port) {
    const KIVO_PORT* const found = session.find_port(port);
    return found == nullptr || !found->width ? std::nullopt
                                             : read_width(std::to_string(*found->width));
}

std::optional<std::size_t> numeric_width(const KIVO_INFO& info, const std::string& port) {
    const KIVO_OBJ_INFO* const object = find_port(info, port);
    return object != nullptr && object->port_width2d.empty()
               ? read_width(join_lines(object->port_width))
               : std::nullopt;
}
