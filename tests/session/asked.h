#pragma once

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
// what does not make sense.
inline std::string answers(const KIVO_SESSION& session, const KIVO_INFO& info,
                           const KIVO_EFFORT& effort) {
    std::string all;
    for (const KIVO_SETTING& each : session.settings()) {
        append_legal(session, each.name, effort, all);
        all += kivo_why_text(session.why({each.name}), {}, {}, info);
    }
    for (const KIVO_PORT& each : session.ports()) {
        append_legal(session, each.name, effort, all);
        all += kivo_why_text(session.why({each.name}), {}, {}, info);
    }
    for (const KIVO_VERDICT& each : session.verdicts()) {
        all += kivo_why_text(session.why(each.subject), session.conflict(each.subject, effort),
                             session.repairs(each.subject, effort), info);
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
