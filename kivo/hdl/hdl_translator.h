#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "kivo/export.h"
#include "kivo/toolkit/less_c_string.h"

enum KIVO_HDL_LANGUAGE : std::int32_t {
    KIVO_HDL_NHDL = 0,
    KIVO_HDL_VHDL = 1,
    KIVO_HDL_VERILOG = 2,
};

// Operator words of rule text (any letter case) and what a language writes for them.
using KIVO_HDL_TRANSLATOR_MAP = std::map<std::string, std::string, LESS_C_STRING>;

KIVO_API KIVO_HDL_TRANSLATOR_MAP init_nhdl_translator_map();
// Empty: VHDL text is re-spaced only.
KIVO_API KIVO_HDL_TRANSLATOR_MAP init_vhdl_translator_map();
KIVO_API KIVO_HDL_TRANSLATOR_MAP init_verilog_translator_map();

// Replaces every blank-separated token of "text" that is an operator word of the language by the
// language's own operator and joins the tokens with single blanks. Only whole tokens are
// translated. A language that is none of the three translates nothing. Keeps no state.
KIVO_API std::string kivo_translate_text_to_hdl(const std::string& text,
                                                KIVO_HDL_LANGUAGE language);
