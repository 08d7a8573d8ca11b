#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> stimulus_warnings() {
    // clang-format off
    return {
    {"stimulus-command", Severity::kWarning,
     R"(A stimulus command does nothing as a whole: its first word is not "force", or it names
        no signal, or it has no items. A command is "force", perhaps a radix, the signal and
        items: "force clock 0 0,1 10". Correct it, or remove it.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>frce clock 0 0,1 10</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"command-blank", Severity::kWarning,
     R"(White space keeps a command from being read as it looks. "force" is the first
        character of the text, one blank stands after "force", after the radix and after the
        signal, and after each value. A second blank, a line break, a tab or a no-break space
        there becomes a part of a word. Only before an item and around a time may white space
        stand as it likes.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>
        force clock 0 0,1 10
      </STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"stimulus-option", Severity::kWarning,
     R"(An option of a stimulus command is not known. Before the signal stands one of -bin,
        -hex, -signed, -unsigned and -fixed_point(I.F), with any other the values are decimal
        numbers; in the place of a value stands one of -repeat, -r, -cancel and -c, any other
        is taken for a value.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force clock 0 0,1 10,-repaet 20</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"stimulus-item", Severity::kWarning,
     R"(An item of a stimulus command is not read as it is meant. Items are separated by ",",
        and each is a value, a blank and a time; one without a time is silently ignored. After two
        commas that follow each other all the rest is one item. Write the comma, the value or
        the time that is missing, or remove what is too much.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force enable 0 0,1</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"stimulus-time", Severity::kWarning,
     R"(A time of a stimulus command is none, or lies where the wave does not reach. Times are
        whole numbers in the unit of TIME_SCALE, read up to the first character that is no
        digit: "2.5" is 2, "10ns" is 10 and "abc" is 0. Choose a smaller unit in TIME_SCALE for
        fractions, and a larger MAX_TIME for what comes late.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force enable 0 0,1 2.5</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"stimulus-order", Severity::kWarning,
     R"(The items of a stimulus command are not in the order of their times. Of two items at
        one time the first counts. A cancel stands last: it takes the signal's name away from
        its time on, and what comes after it belongs to no signal. Sort the items.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force enable 0 0,0 40,1 20</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"stimulus-repeat", Severity::kWarning,
     R"(A repeat does not repeat what it looks like. It brings the first two items of the
        command again, and they stand before it; no blank may stand before the second one. Its
        period is counted from 0 and lies beyond the times of both. Write a longer wave form
        without a repeat, as single items.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force clock 0 0, 1 10,-repeat 20</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"stimulus-value", Severity::kWarning,
     R"(A value of a stimulus command is no number of its radix, does not fit its port, or
        lies outside a FORCE_RANGE of the port that always counts.
        Without a radix values are decimal numbers. Hexadecimal ones have neither "0x" in front
        nor a sign, since "x" and "-" stand for unknown bits. X, Z and the other letters of
        multi-valued logic may stand in every radix.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force -hex data 0x00 0</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"fixed-point", Severity::kWarning,
     R"(The description of a fixed-point format is none, so that values are not converted. It
        is the number of bits before the point, a point and the number of bits after it, with
        "s" in front for signed numbers, whose sign is one of the bits before the point:
        -fixed_point(s4.12).)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force -fixed_point(16) gain 0.5 0</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"unknown-port", Severity::kWarning,
     R"(A stimulus command or a display format names a port that the description does not
        declare, so that it has no effect. Names are compared exactly, and a command is for a
        whole port, not for some of its bits. Correct the name, or declare the port. A
        description without any port is not warned of.)",
     R"(<ROOT>
  <PORTS>
    <PORT NAME="clock" TYPE="INPUT"/>
  </PORTS>
  <WAVE_DATA>
    <WAVE NAME="count">
      <STIM>force clk 0 0,1 10,-repeat 20</STIM>
    </WAVE>
  </WAVE_DATA>
</ROOT>
)"},

    {"wave-without-stimulus", Severity::kWarning,
     R"(A WAVE or CUSTOM_VECTOR has no stimulus command, so that there is nothing to draw. Give
        it one in STIM or VECTOR, or remove it.)",
     R"(<ROOT>
  <WAVE_DATA>
    <WAVE NAME="count" MAX_TIME="200"/>
  </WAVE_DATA>
</ROOT>
)"},
    };
    // clang-format on
}
