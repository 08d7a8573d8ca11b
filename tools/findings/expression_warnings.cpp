#include "tools/findings/catalogue_parts.h"

std::vector<MessageDescription> expression_warnings() {
    // clang-format off
    return {
    {"expression-syntax", Severity::kWarning,
     R"(A condition, width, value or macro cannot be read as an expression: a parenthesis, an operand
        or an operator is missing, or something stands there that is none, such as "=" for "==", or a
        quotation mark, dash or blank of typesetting. No host can judge it. Mend it at the place that
        is shown.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <RULES>
    <RULE>WIDTH = 8</RULE>
  </RULES>
</ROOT>
)"},

    {"expression-too-large", Severity::kWarning,
     R"(An expression is longer than 65536 bytes, more than 256 of its operators and parentheses are
        open at once, or it takes more than a million steps, because macros use macros many times
        over: hosts do not judge it. Write it with fewer of them, and put parts of it into
        macros.)",
     R"(<ROOT>
  <RULES>
    <RULE>
      ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((
      ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((
      ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((
      ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((
      ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((
      8 gt 4
      ))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))
      ))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))
      ))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))
      ))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))
      ))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))))
    </RULE>
  </RULES>
</ROOT>
)"},

    {"unknown-name", Severity::kWarning,
     R"(An expression names what is no parameter, port, hidden parameter or macro, or a map lists it,
        so nothing can be said of it. Names are compared exactly, also in letter case; a text stands
        in double quotes. Correct the name, or declare it. In a description that declares nothing,
        and in one of which a file is missing, names are not looked for.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <RULES>
    <RULE>DEPHT gt 3</RULE>
  </RULES>
</ROOT>
)"},

    {"macro-arguments", Severity::kWarning,
     R"(A macro or function is called with more or fewer arguments than it takes, or something that
        takes none is called. Write as many arguments as ARGUMENTS of the macro names.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <MACROS>
    <MACRO NAME="BYTES" ARGUMENTS="bits" DEFINITION="( bits + 7 ) quot 8"/>
  </MACROS>
  <RULES>
    <RULE>BYTES(DEPTH, 8) gt 3</RULE>
  </RULES>
</ROOT>
)"},

    {"macro-recursion", Severity::kWarning,
     R"(The definition of a macro leads back to the macro itself, directly or through others, so it
        has no end. Write what it stands for without it.)",
     R"(<ROOT>
  <MACROS>
    <MACRO NAME="LIMIT" DEFINITION="LIMIT + 1"/>
  </MACROS>
</ROOT>
)"},

    {"ill-typed", Severity::kWarning,
     R"(With everything at its default a value of another kind stands where a number, a condition or
        a text is needed: texts have no order, and conditions are no numbers. Compare with a value of
        the same kind.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>
  </PARAMETERS>
  <RULES>
    <RULE>STYLE gt "AUTO"</RULE>
  </RULES>
</ROOT>
)"},

    {"division-by-zero", Severity::kWarning,
     R"(With everything at its default an expression that is needed divides by 0 and has no value.
        Choose another default, or let the part apply only where the divisor is not 0.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="BANKS" TYPE="INTEGER" VALUE="0"/>
  </PARAMETERS>
  <RULES>
    <RULE>64 quot BANKS gt 3</RULE>
  </RULES>
</ROOT>
)"},

    {"domain", Severity::kWarning,
     R"(With everything at its default an expression that is needed has no result: a logarithm of 0 or
        of a negative number, or a whole number to a negative power. Choose another default, or let
        the part apply only where there is a result.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="0"/>
  </PARAMETERS>
  <RULES>
    <RULE>log2(DEPTH) lt 9</RULE>
  </RULES>
</ROOT>
)"},

    {"too-large", Severity::kWarning,
     R"(With everything at its default an expression that is needed gives a number that does not fit
        128 bits. Write it with smaller numbers: compare the exponents and not the powers.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="200"/>
  </PARAMETERS>
  <RULES>
    <RULE>2 ^ WIDTH gt 8</RULE>
  </RULES>
</ROOT>
)"},

    {"mixed-and-or", Severity::kWarning,
     R"("and" stands beside "or" without parentheses. Here "and" binds tighter, other languages read
        from left to right or refuse it. Write parentheses around what belongs together.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <RULES>
    <RULE>WIDTH == 8 or WIDTH gt 16 and WIDTH lt 32</RULE>
  </RULES>
</ROOT>
)"},

    {"sign-before-power", Severity::kWarning,
     R"(A sign stands before a power. Here it applies to the power, so that -2 ^ 2 is -4; some
        languages apply it to the base. Write parentheses around the one that is meant.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
    <PARAMETER NAME="STEP" TYPE="INTEGER" VALUE="1"/>
  </PARAMETERS>
  <RULES>
    <RULE>STEP gt -2 ^ WIDTH</RULE>
  </RULES>
</ROOT>
)"},

    {"not-before-comparison", Severity::kWarning,
     R"("not" stands before a comparison without parentheses and applies to its first operand alone:
        ! WIDTH == 8 compares a condition with 8. Write parentheses around the comparison, or the
        opposite comparison.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="ON;OFF"/>
  </PARAMETERS>
  <RULES>
    <RULE REQUIRED_RULE="OFF">!STYLE == TRUE</RULE>
  </RULES>
</ROOT>
)"},

    {"sign-of-remainder", Severity::kWarning,
     R"(An operand of "%" may be negative. The sign of the result is then that of the dividend;
        "mod" takes the sign of the divisor, and translation writes one for the other. Let a
        FORCE_RANGE say that the parameters are not negative, or write "mod".)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STEP" TYPE="INTEGER" VALUE="3"/>
  </PARAMETERS>
  <RULES>
    <RULE>STEP % 4 == 3</RULE>
  </RULES>
</ROOT>
)"},

    {"bare-word", Severity::kWarning,
     R"(A text is compared without quotes. It is understood because nothing has that name and the
        list of the parameter holds it, or because it is a state of the port: an object of that name
        would change the meaning. Write the text in double quotes.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>
  </PARAMETERS>
  <RULES>
    <RULE REQUIRED_RULE="OFF">STYLE == AUTO</RULE>
  </RULES>
</ROOT>
)"},

    {"mixed-comparison", Severity::kWarning,
     R"(A number is compared with a text that is none, so the two are never equal. Compare with a
        number, or with a parameter of type STRING.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <RULES>
    <RULE>WIDTH != "WIDE"</RULE>
  </RULES>
</ROOT>
)"},

    {"text-not-in-list", Severity::kWarning,
     R"(A parameter is compared with a text that its list does not hold, so it never has that value.
        Texts are compared exactly, also in letter case. Correct the text, or add it to the
        list.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>
  </PARAMETERS>
  <RULES>
    <RULE>STYLE != "Block"</RULE>
  </RULES>
</ROOT>
)"},

    {"ceil-of-integer", Severity::kWarning,
     R"(The quotient of two whole numbers has no fraction, so there is nothing to round: ceil(7 / 2)
        is 3. Divide by a number with a decimal point, or add the divisor less 1 to the dividend
        before the division.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="9">
      <FORCE_RANGE MIN="8" MAX="64"/>
    </PARAMETER>
  </PARAMETERS>
  <PORTS>
    <PORT NAME="q" TYPE="OUTPUT" WIDTH='ceil(WIDTH / 8)'/>
  </PORTS>
</ROOT>
)"},

    {"macro-precedence", Severity::kWarning,
     R"(A macro or its argument is a sum or the like, beside an operator that binds tighter. Here a
        macro is a value; a host that puts in its text reads something else. Write parentheses
        around the definition, its arguments or the call.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <MACROS>
    <MACRO NAME="TOTAL" DEFINITION="WIDTH + 1"/>
  </MACROS>
  <RULES>
    <RULE>2 * TOTAL lt 64</RULE>
  </RULES>
</ROOT>
)"},

    {"translator-blind", Severity::kWarning,
     R"(An operator word stands beside a parenthesis, a tab or the end of a line. Translation into a
        hardware description language knows such words only between blanks and passes this one by.
        Write a blank before and after it.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETERS>
  <RULES>
    <RULE>(WIDTH gt 4)and (WIDTH lt 64)</RULE>
  </RULES>
</ROOT>
)"},

    {"value-read-as-text", Severity::kWarning,
     R"(The value of a hidden parameter looks like an expression and cannot be read as one, so it is
        a text, and the parameter has no number. Correct what the warning names; a text that is meant
        as one stands in double quotes.)",
     R"(<ROOT>
  <PARAMETERS>
    <PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16"/>
  </PARAMETERS>
  <HIDDEN_PARAMETERS>
    <PARAMETER NAME="ADDRESS_WIDTH" VALUE='ceil(log2(DEPHT))'/>
  </HIDDEN_PARAMETERS>
</ROOT>
)"},
    };
    // clang-format on
}
