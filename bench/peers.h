#pragma once

#include <string>

// Each parses the text, does nothing with it and frees what it made. A failed parse ends the
// program.

// In place, so it spoils the text.
void parse_with_pugixml(std::string& text);
// What every reader over this parser's tree does at least: opens and reads the file, parses it in
// place, keeping white space where it may count, and looks at each name and value.
void visit_with_pugixml(const std::string& path);
// With handlers for elements and text that do nothing.
void parse_with_expat(const std::string& text);
void parse_with_tinyxml2(const std::string& text);
void parse_with_libxml2(const std::string& text);
