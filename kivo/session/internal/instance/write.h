#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kivo/session/internal/instance/parts.h"

namespace kivo_session {

// The parts as text of a language. What it cannot say joins the problems of the parts.
std::string write_vhdl(InstanceParts& parts, const KIVO_INSTANCE_OPTIONS& options);
std::string write_verilog(InstanceParts& parts, const KIVO_INSTANCE_OPTIONS& options);

// One line of a list, and whether a comment says that it is a hint.
struct ListLine {
    std::string text;
    bool is_hint = false;
};

// The lines, each indented, with the separator after all but the last.
std::string write_list(const std::vector<ListLine>& lines, std::string_view indent,
                       std::string_view separator, std::string_view hint);

// The line of a comment, whatever its text holds.
std::string write_comment(std::string_view sign, const std::string& text);

}  // namespace kivo_session
