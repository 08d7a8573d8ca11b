// A host that configures a description: it sets what the command line asks for, tells what is wrong
// with that, why and what would be right, or else prints an instance.

#include <iostream>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/instance.h"
#include "kivo/session/session.h"

namespace {

std::vector<KIVO_ASSIGNMENT> settings_in(int argc, char** argv) {
    std::vector<KIVO_ASSIGNMENT> settings;
    for (int i = 3; i < argc; ++i) {
        const std::string word = argv[i];
        const std::size_t sign = word.find('=');
        const std::string value = sign == std::string::npos ? "" : word.substr(sign + 1);
        settings.push_back({word.substr(0, sign), value});
    }
    return settings;
}

// All or nothing: of a request that is refused, nothing is set.
bool set_all(KIVO_SESSION& session, const std::vector<KIVO_ASSIGNMENT>& settings) {
    std::size_t refused = 0;
    if (session.set_all(settings, &refused) == KIVO_SET_RESULT::kDone) {
        return true;
    }
    std::cerr << "cannot set " << settings[refused].name << " to '" << settings[refused].value
              << "'\n";
    const std::string near = session.nearest_name(settings[refused].name);
    if (!near.empty() && near != settings[refused].name) {
        std::cerr << "there is a " << near << '\n';
    }
    return false;
}

void print_verdict(const KIVO_INFO& info, const KIVO_SESSION& session,
                   const KIVO_VERDICT& verdict) {
    const KIVO_PLACE place = info.get_place(verdict.mark);
    std::cout << "line " << place.line << ": " << verdict.text << " [" << verdict.id << "]\n";
    for (const KIVO_OPERAND& operand : session.why(verdict.subject).operands) {
        std::cout << "  " << operand.name << " = " << operand.value << ", " << operand.source_text
                  << '\n';
    }
    for (const KIVO_REPAIR& repair : session.repairs(verdict.subject)) {
        std::cout << "  legal with " << repair.text << '\n';
    }
}

int configure(const KIVO_INFO& info, const std::vector<KIVO_ASSIGNMENT>& settings) {
    KIVO_SESSION session(info);
    if (!set_all(session, settings)) {
        return 2;
    }
    for (const KIVO_VERDICT& verdict : session.verdicts()) {
        print_verdict(info, session, verdict);
    }
    if (!session.is_legal() || !session.is_granted()) {
        return 1;
    }
    KIVO_INSTANCE_OPTIONS options;
    options.label = "u_block";
    std::cout << kivo_write_instance(session, options);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: " << argv[0] << " DIRECTORY FUNCTION [NAME=VALUE...]\n";
        return 2;
    }
    KIVO_INFO info;
    if (!info.set_function_name(argv[2], argv[1])) {
        std::cerr << info.error_list[0] << '\n';
        return 3;
    }
    const int status = configure(info, settings_in(argc, argv));
    info.delete_detached_objects();
    return status;
}
