#pragma once

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"
#include "tests/session/told.h"
#include "tests/support/description.h"

// One of the examples, loaded.
struct Example : LoadedStore {
    explicit Example(const std::string& name) {
        info.process_xml_file(std::string(KIVO_EXAMPLES) + "/" + name + "_info.xml");
    }
};

using Texts = std::vector<std::string>;

// A session of a description, given by what stands inside its ROOT.
struct Described : Loaded {
    explicit Described(const std::string& sections) : Loaded(sections), session(info) {}

    KIVO_SESSION session;
};

inline std::string integer(const std::string& name, const std::string& attributes,
                           const std::string& elements = "") {
    return "<PARAMETER NAME='" + name + "' TYPE='INTEGER' " + attributes + ">" + elements +
           "</PARAMETER>";
}

inline std::string in(const std::string& section, const std::string& content) {
    return "<" + section + ">" + content + "</" + section + ">";
}

// "id@offset", blanks between.
inline std::string fault_ids(const KIVO_SESSION& session) {
    std::string ids;
    for (const KIVO_FAULT& fault : session.faults()) {
        ids += (ids.empty() ? "" : " ") + fault.id + "@" + std::to_string(fault.offset);
    }
    return ids;
}
