#pragma once

#include <string>
#include <vector>

#include "kivo/hdl/hdl_translator.h"
#include "kivo/session/export.h"

class KIVO_SESSION;

// What the text of an instance holds.
struct KIVO_INSTANCE_OPTIONS {
    KIVO_HDL_LANGUAGE language = KIVO_HDL_VHDL;  // everything but KIVO_HDL_VERILOG is VHDL
    std::string label = "u1";
    // The declaration of the block before it: a component, in Verilog a module without content.
    bool component = false;
    // A design unit around it, with a port for each port that is connected and, in VHDL, library
    // clauses and the component. VHDL compiles as it is, Verilog together with the module.
    bool unit = false;
    std::string module;   // empty: of the wizard map selected, else the function in lower case
    std::string comment;  // a line before it; empty for none
};

// The instance of what takes effect, legal or not. A connected port gets the signal of its name, a
// tied one a literal of its width, a port with two widths one vector of all its bits; ports that
// are not used or buried are left out, and so are private parameters. A wizard map that is selected
// leaves out the ports that it does not list (but for those always used when it maps them) and,
// unless it maps them, constant parameters. LPM hints come last. Names that the language does not
// allow are escaped.
// "problems" (may be null) becomes what keeps the text from compiling, one line each: a value that
// is not known or too large for the language, a name that cannot even be escaped.
KIVO_SESSION_API std::string kivo_write_instance(const KIVO_SESSION& session,
                                                 const KIVO_INSTANCE_OPTIONS& options,
                                                 std::vector<std::string>* problems = nullptr);
