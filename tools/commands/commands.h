#pragma once

#include "tools/arguments/command.h"

// Each declares a sub-command, in the file of its name.
Command make_check();
Command make_configure();
Command make_doc();
Command make_explain();
Command make_instance();
Command make_show();
Command make_translate();
Command make_value();
Command make_wave();

// Print what is made of all the sub-commands, once these are known; the program must live on.
Command make_completion(const Program& program);
Command make_manual(const Program& program);
