#pragma once

#include "tools/lint/lint.h"

// Files of which nothing is read because their root is not ROOT.
void find_foreign_roots(Lint& lint);

// Elements, attributes and texts that are not read where they stand.
void find_unread_parts(Lint& lint);

// What the library drops because something is missing in it, and conditions that are empty.
void find_incomplete_parts(Lint& lint);

// Parts of IF, THEN and ELSE that have lost each other.
void find_lost_branches(Lint& lint);

// Words, numbers and lists that are read as others.
void find_wrong_words(Lint& lint);

// Names that no expression can write.
void find_wrong_names(Lint& lint);

// Elements that reach another kind of object, or none, and objects that are declared again.
void find_misplaced_declarations(Lint& lint);

// What is given again where it can be given once.
void find_repetitions(Lint& lint);

// Several words of one meaning in one element.
void find_synonyms(Lint& lint);

// Commands of stimulus and display formats that are not read as they are meant, and vectors
// without stimulus.
void find_wrong_stimulus(Lint& lint);

// Names and expressions: what cannot be judged, and what may be read otherwise than it was meant.
void find_wrong_expressions(Lint& lint);

// Values that the description itself rules out, and those that do not count.
void find_wrong_values(Lint& lint);

// Parameters without a default, and items of lists that do not count or can never be chosen.
void find_wrong_defaults(Lint& lint);

// What a port of its direction cannot be, and widths that are known too late.
void find_wrong_ports(Lint& lint);

// Arguments of macros that are given again or that the definition does not use.
void find_wrong_macros(Lint& lint);
