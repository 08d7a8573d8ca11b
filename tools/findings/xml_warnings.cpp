#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> xml_warnings() {
    // clang-format off
    return {
    {"xml-raw-ampersand", Severity::kWarning,
     R"(In XML "&" begins a reference such as "&lt;". The library takes an "&" without a
        reference for the character itself, but other programs refuse the file. Write "&amp;".)",
     R"(<ROOT>
  <RULES>
    <RULE>WIDTH gt 0 && DEPTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"xml-raw-less-than", Severity::kWarning,
     R"(In XML "<" begins a tag, also within the value of an attribute. The library takes one in a
        value for the character itself, but other programs refuse the file. Write "&lt;" for the
        character, or "lt" in a condition.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <MACROS>
    <MACRO NAME="IS_NARROW" DEFINITION="WIDTH < 9"/>
  </MACROS>
  <RULES>
    <RULE>IS_NARROW</RULE>
  </RULES>
</ROOT>
)"},

    {"xml-undeclared-entity", Severity::kWarning,
     R"(XML knows the entities "amp", "apos", "gt", "lt" and "quot"; others, such as those of HTML,
        are unknown unless the file declares them. The library leaves the reference in the text as
        it is written, and other programs refuse the file. Write the character itself, or its number
        as in "&#176;".)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="WARNING">Above 85&nbsp;C the memory fails.</MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"xml-repeated-attribute", Severity::kWarning,
     R"(An element has the same attribute twice. This warning is for a file of which the library can
        read nothing because of something else further on; otherwise it says the same as an error
        xml-syntax. Keep one of the two attributes.)",
     R"(<ROOT>
  <RULES>
    <RULE ENABLED="ON" ENABLED="ON">WIDTH gt 0</RULE>
  <RULES>
</ROOT>
)"},

    {"xml-control-character", Severity::kWarning,
     R"(XML allows no control characters but tab, line feed and carriage return. The library takes
        them as they are, but other programs refuse the file. They are mostly invisible and come
        from copying: remove what stands at the place, and write the text again.)",
     "<ROOT>\n"
     "  <MESSAGES>\n"
     "    <MESSAGE TYPE=\"INFO\">The output is\b registered.</MESSAGE>\n"
     "  </MESSAGES>\n"
     "</ROOT>\n"},

    {"xml-bad-character-reference", Severity::kWarning,
     R"(A reference such as "&#65;" or "&#x41;" stands for the character of that number. This one has
        no number, or that of a character that XML does not allow, and other programs refuse the
        file. Correct the number, or remove the reference.)",
     R"(<ROOT>
  <MESSAGES>
    <MESSAGE TYPE="INFO">The output is&#8; registered.</MESSAGE>
  </MESSAGES>
</ROOT>
)"},

    {"xml-bad-utf8", Severity::kWarning,
     R"(A byte is not part of any character of UTF-8, the encoding of a file that declares it or
        none. The library hands it on as it is, so that a wizard shows a wrong character, and other
        programs refuse the file. Save the file as UTF-8 with the editor that wrote it.)",
     "<ROOT>\n"
     "  <MESSAGES>\n"
     "    <MESSAGE TYPE=\"WARNING\">Above 85 \xB0" "C the memory fails.</MESSAGE>\n"
     "  </MESSAGES>\n"
     "</ROOT>\n"},

    {"xml-comment-hyphens", Severity::kWarning,
     R"(Two hyphens within a comment are its end for some programs, which then refuse the file; the
        library reads on to "-->". Write one hyphen, or a blank between the two.)",
     R"(<ROOT>
  <!-- Ports -- see the manual -->
</ROOT>
)"},

    {"xml-entity-expansion", Severity::kWarning,
     R"(The file declares entities that contain others, or are used, so many times over that what
        they stand for could be far larger than the file. The check stops there. The library does
        not replace entities that a file declares, so they are of no use in a description: write
        the texts themselves.)",
     R"(<!DOCTYPE ROOT [
  <!ENTITY a "0123456789">
  <!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">
  <!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">
  <!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;">
  <!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;">
  <!ENTITY f "&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;">
  <!ENTITY g "&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;">
]>
<ROOT><RULES ODD="&g;"/></ROOT>
)"},

    {"xml-not-well-formed", Severity::kWarning,
     R"(The file breaks another rule of XML, as the text of the message says. The library reads the
        file in its own way or has found something else before, but other programs refuse it.)",
     R"(<!-- counter -->
<?xml version="1.0"?>
<ROOT/>
)"},
    };
    // clang-format on
}
