#pragma once

#include <string>

#include "kivo/session/sense.h"
#include "tests/session/fixture.h"

// What is found in a description, "id OBJECT ELEMENT" each; what is a matter of taste is left out.
inline Texts sense_of(const std::string& sections,
                      const KIVO_EFFORT& effort = {4000000, 2000, 2000}) {
    const Described described(sections);
    Texts found;
    for (const KIVO_SENSE_FINDING& finding : kivo_judge_sense(described.session, effort).findings) {
        if (finding.id != "always-condition") {
            found.push_back(finding.id + " " + finding.object + " " + finding.element);
        }
    }
    return found;
}

struct SenseCase {
    std::string sections;
    Texts found;
};

template <std::size_t kCount>
void expect_sense(const SenseCase (&cases)[kCount]) {
    for (const SenseCase& row : cases) {
        EXPECT_EQ(sense_of(row.sections), row.found) << row.sections;
    }
}

inline std::string parameters(const std::string& content) {
    return in("PARAMETERS", content);
}

// A parameter that hosts use, so that nothing has to name it.
inline std::string constant(const std::string& name, const std::string& attributes,
                            const std::string& elements = "") {
    return integer(name, attributes + " CNX_TYPE='CONSTANT'", elements);
}

inline std::string text_parameter(const std::string& name, const std::string& attributes,
                                  const std::string& elements = "") {
    return "<PARAMETER NAME='" + name + "' TYPE='STRING' CNX_TYPE='CONSTANT' " + attributes + ">" +
           elements + "</PARAMETER>";
}
