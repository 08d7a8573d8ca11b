#pragma once

#include <string>
#include <string_view>

// The text as it stands in an element or attribute of XML or HTML: markup stands for itself, and
// what cannot stand there comes as escape_text writes it ("\x1B").
std::string escape_xml(std::string_view text);

// A reference that every XML document knows.
struct XmlEntity {
    std::string_view reference;
    char character;
};

// clang-format off
constexpr XmlEntity kXmlEntities[] = {
    { "&amp;",  '&'  },
    { "&apos;", '\'' },
    { "&gt;",   '>'  },
    { "&lt;",   '<'  },
    { "&quot;", '"'  },
};
// clang-format on
