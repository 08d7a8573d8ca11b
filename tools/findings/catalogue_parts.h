#pragma once

#include <vector>

#include "tools/findings/catalogue.h"

// Parts of the catalogue. First the messages of the library.

// Of files, sections and settings of the function.
std::vector<MessageDescription> document_messages();
// Of parameters and ports.
std::vector<MessageDescription> object_messages();
// Of rules, messages and macros.
std::vector<MessageDescription> rule_messages();
// Of waveforms, wizard maps and help texts.
std::vector<MessageDescription> display_messages();

// Files that the library reads although they are not well-formed XML.
std::vector<MessageDescription> xml_warnings();

// Warnings about what the library silently reads.

// What is not read, or not as a part of what it should be a part of.
std::vector<MessageDescription> structure_warnings();
// Words, numbers, lists and names that are taken for others.
std::vector<MessageDescription> word_warnings();
// Names and expressions.
std::vector<MessageDescription> expression_warnings();
// Values that the description itself rules out.
std::vector<MessageDescription> value_warnings();
// Parameters without a default, and items of lists.
std::vector<MessageDescription> default_warnings();
// What a port cannot be.
std::vector<MessageDescription> port_warnings();
// What can be read and does not make sense.
std::vector<MessageDescription> sense_warnings();
// What is declared or given again.
std::vector<MessageDescription> repetition_warnings();
// Of stimulus commands and display formats.
std::vector<MessageDescription> stimulus_warnings();
