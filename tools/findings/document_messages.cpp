#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> document_messages() {
    // clang-format off
    return {
    {"host-message", Severity::kError,
     R"(The program that loads the description posted this message itself, about something that the
        library does not know of. No description gives it, and it has no place in a file: what it
        asks for is said by its text and by the manual of that program.)",
     R"(// C++ of the host, not a description:
info.post_error_message("The wizard cannot write into the project folder");
)"},

    {"file-not-found", Severity::kError,
     R"(The named file does not exist, so everything that it declares is missing.
        Names of included files are taken as they stand, relative to the directory in which the
        program runs, and then beside the library; not relative to the file that includes them.
        Correct the name, or run the program where the name is right.)",
     R"(<ROOT>
  <INCLUDE FILE="no_such_file.xml"/>
</ROOT>
)"},

    {"file-not-opened", Severity::kError,
     R"(The named file is there and cannot be opened, so everything that it declares is missing. The
        text of the message is that of a missing file; a note gives the reason that the system gives.
        Permissions may not allow it, too many files may be open, or the name is that of a directory, a
        device or a pipe: see to that, or name another file.)",
     R"(<ROOT>
  <INCLUDE FILE="/dev/null"/>
</ROOT>
)"},

    {"file-not-read", Severity::kError,
     R"(The named file is there and could not be read to its end, so nothing of it is read. The text
        of the message is that of a file that is not well-formed XML; it may be that all the same. A
        note gives the reason that the system gives, which is a fault of the disk, of the network or
        of what else the file stands for: see to that and check again.)",
     R"(<ROOT>
  <INCLUDE FILE="/proc/self/mem"/>
</ROOT>
)"},

    {"read-error", Severity::kError,
     R"(The XML parser was given no text, because the file could not be read. This message always
        follows file-not-read, which says more: nothing has to be mended at the place that it
        names.)",
     R"(<ROOT>
  <INCLUDE FILE="/proc/self/mem"/>
</ROOT>
)"},

    {"too-many-files", Severity::kError,
     R"(More than 100,000 files are to be read, each counted as often as it is included. This one and
        all that would follow are not read. Files that each include the next one twice double their
        number with every step: include each file once, from one place. The example does so when it is
        saved as part_1.xml and files up to part_20.xml go on in the same way.)",
     R"(<ROOT>
  <INCLUDE FILE="part_2.xml"/>
  <INCLUDE FILE="part_2.xml"/>
</ROOT>
)"},

    {"invalid-file", Severity::kError,
     R"(The file is not well-formed XML, so nothing of it is read. A message xml-syntax with the
        line and column of the first fault always follows: mend that place and check again, because the
        parser does not look beyond it.)",
     R"(<ROOT>
  <PARAMETERS>
</ROOT>
)"},

    {"xml-syntax", Severity::kError,
     R"(The XML parser found a fault at this place. When a tag is not closed, a quote is missing or a
        character is not allowed, the file is not read at all, as the message invalid-file says.
        When an element has the same attribute twice, the file is read and the last value counts,
        which other readers of XML do not accept: keep one of them.)",
     R"(<ROOT>
  <RULES>
    <RULE ENABLED="ON" ENABLED="ON">WIDTH gt 0</RULE>
  </RULES>
</ROOT>
)"},

    {"no-root", Severity::kError,
     R"(The file holds no element at all, perhaps because everything in it is commented out. A
        description is one ROOT element with its sections inside: write one, even if it is
        empty.)",
     R"(<!-- nothing -->
)"},

    {"include-cycle", Severity::kError,
     R"(A file includes itself, directly or through files that it includes. It is not read again, so
        nothing is lost, but one of the INCLUDE elements is superfluous: remove the one that leads
        back. The example does so when it is saved as counter_info.xml and checked in its own
        directory.)",
     R"(<ROOT>
  <INCLUDE FILE="counter_info.xml"/>
</ROOT>
)"},

    {"unknown-section", Severity::kError,
     R"(An element directly in ROOT is not a section of a description, so nothing in it is read.
        Tags are compared exactly and are written in upper case: correct the tag, or remove the
        element. The sections are FUNCTION_INFORMATION, PARAMETERS, PARAMETER_RULES, PORTS,
        PORT_RULES, HIDDEN_PARAMETERS, MACROS, RULES, MESSAGES, MSGS, WAVE_DATA, CUSTOM_VECTORS,
        WIZARD_DATA, HTML_TEXT and INCLUDE.)",
     R"(<ROOT>
  <PARAMETRS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETRS>
</ROOT>
)"},

    {"include-attribute", Severity::kError,
     R"(INCLUDE has an attribute other than FILE, which is ignored. A path belongs in FILE itself:
        there is no attribute for a directory.)",
     R"(<ROOT>
  <INCLUDE PATH="common"/>
</ROOT>
)"},

    {"include-sub-tag", Severity::kError,
     R"(INCLUDE holds an element other than FILE, which is ignored. Name every further file in an
        element FILE of its own, or in the attribute FILE.)",
     R"(<ROOT>
  <INCLUDE>
    <DIRECTORY>common</DIRECTORY>
  </INCLUDE>
</ROOT>
)"},

    {"function-information-sub-tag", Severity::kError,
     R"(FUNCTION_INFORMATION holds an element that is not a setting, so it is ignored and the
        setting that was meant keeps its default. The settings are VHDL_LIBRARY, START_TIME, TIME_SCALE and
        TIME_DELTA.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_UNIT VALUE="ns"/>
  </FUNCTION_INFORMATION>
</ROOT>
)"},

    {"function-information-attribute", Severity::kError,
     R"(A setting has an attribute that it does not know, which is ignored. VHDL_LIBRARY is set by
        NAME; START_TIME, TIME_SCALE and TIME_DELTA are set by VALUE.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_SCALE UNIT="ns"/>
  </FUNCTION_INFORMATION>
</ROOT>
)"},

    {"function-information-nested-tag", Severity::kError,
     R"(A setting holds an element. Settings have an attribute and nothing inside, so what stands
        there is ignored: write the value as the attribute VALUE, or NAME for VHDL_LIBRARY.)",
     R"(<ROOT>
  <FUNCTION_INFORMATION>
    <TIME_DELTA><STEP>10</STEP></TIME_DELTA>
  </FUNCTION_INFORMATION>
</ROOT>
)"},
    };
    // clang-format on
}
