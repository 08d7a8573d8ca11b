#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/instance.h"
#include "kivo/session/sense.h"
#include "kivo/session/session.h"

inline void append_legal(const KIVO_SESSION& session, const std::string& name,
                         const KIVO_EFFORT& effort, std::string& all) {
    for (const KIVO_LEGAL_SCOPE scope : {KIVO_LEGAL_SCOPE::kOwn, KIVO_LEGAL_SCOPE::kWhole}) {
        const KIVO_LEGAL_VALUES legal = session.legal_values(name, scope, effort);
        all += name + ":";
        for (const std::string& value : legal.values) {
            all += " " + value;
        }
        for (const auto& runs : {legal.runs, legal.undecided}) {
            for (const KIVO_RUN& run : runs) {
                all += " " + run.first + ".." + run.last;
            }
            all += ";";
        }
        all += legal.are_others_legal ? " others\n" : "\n";
    }
}

// What a session answers to the questions that one can ask of it, for comparing sessions: what each
// setting and port can be, why each verdict is as it is and what would mend it, its instances, and
// what does not make sense; of settings, ports and verdicts the first "most".
inline std::string answers(const KIVO_SESSION& session, const KIVO_INFO& info,
                           const KIVO_EFFORT& effort, std::size_t most) {
    std::string all;
    const auto ask_of_each = [&](const auto& list) {
        for (std::size_t i = 0; i < std::min(list.size(), most); ++i) {
            append_legal(session, list[i].name, effort, all);
            all += kivo_why_text(session.why({list[i].name}), {}, {}, info);
        }
    };
    ask_of_each(session.settings());
    ask_of_each(session.ports());
    const std::vector<KIVO_VERDICT> verdicts = session.verdicts();
    for (std::size_t i = 0; i < std::min(verdicts.size(), most); ++i) {
        const KIVO_SUBJECT& subject = verdicts[i].subject;
        all += kivo_why_text(session.why(subject), session.conflict(subject, effort),
                             session.repairs(subject, effort), info);
    }
    for (const KIVO_FAULT& each : session.notes()) {
        all += each.id + " " + each.text + "\n";
    }
    for (const KIVO_HDL_LANGUAGE language : {KIVO_HDL_VHDL, KIVO_HDL_VERILOG}) {
        KIVO_INSTANCE_OPTIONS options;
        options.language = language;
        options.unit = true;
        options.component = true;
        std::vector<std::string> problems;
        all += kivo_write_instance(session, options, &problems);
        for (const std::string& problem : problems) {
            all += problem + "\n";
        }
    }
    const KIVO_SENSE sense = kivo_judge_sense(session, effort);
    for (const KIVO_SENSE_FINDING& each : sense.findings) {
        all += each.id + " " + each.text + "\n";
    }
    return all + std::to_string(sense.undecided) + "\n";
}
