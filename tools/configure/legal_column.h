#pragma once

#include <cstdint>
#include <string>

#include "kivo/session/session.h"

// The values that parameters can take, in the words of a table.
class LegalColumn {
public:
    // REQUIRES: the session outlives the column and does not change
    explicit LegalColumn(const KIVO_SESSION& session);

    // The values with which, all else as it is set, the configuration is legal and the parameter
    // gets them: "1 to 7", "AUTO, BLOCK". In parentheses, when there are none, those that its own
    // list, ranges and rules admit.
    std::string cell(const std::string& parameter);
    // What the parentheses mean, when there were any.
    std::string footnote() const;

private:
    const KIVO_SESSION& session_;
    KIVO_EFFORT effort_;
    bool has_parentheses_ = false;
};
