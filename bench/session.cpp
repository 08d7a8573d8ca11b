#include "kivo/session/session.h"

#include <malloc.h>

#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include "kivo/kivo.h"
#include "settings.h"

namespace {

// As many INTEGER parameters as rules of 16 operations. P0 stands in every rule, each other
// parameter in eight.
std::string rules_description(std::size_t rules) {
    std::string text = "<ROOT><PARAMETERS>";
    const auto parameter = [rules](std::size_t number) {
        return "P" + std::to_string(number % rules);
    };
    for (std::size_t i = 0; i < rules; ++i) {
        text += "<PARAMETER NAME=\"" + parameter(i) + "\" TYPE=\"INTEGER\" VALUE=\"8\"/>\n";
    }
    text += "</PARAMETERS><RULES>";
    for (std::size_t i = 0; i < rules; ++i) {
        const auto near = [&](std::size_t distance) { return parameter(i + distance); };
        text += "<RULE>( ( P0 + " + near(1) + " ) * " + near(2) + " - " + near(3) + " / 2 + " +
                near(4) + " % 3 ) gt 0 and ( " + near(5) + " * 4 lt 1000 or " + near(6) +
                " == 8 ) and " + near(7) + " + " + near(8) + " * 2 gte " + std::to_string(i % 7) +
                "</RULE>\n";
    }
    return text + "</RULES></ROOT>\n";
}

// As many rules, each with a name that nothing has.
std::string faulty_description(std::size_t rules) {
    std::string text =
        "<ROOT><PARAMETERS><PARAMETER NAME=\"P0\" TYPE=\"INTEGER\" "
        "VALUE=\"8\"/></PARAMETERS><RULES>";
    for (std::size_t i = 0; i < rules; ++i) {
        text += "<RULE>P0 gt NOBODY" + std::to_string(i) + "</RULE>\n";
    }
    return text + "</RULES></ROOT>\n";
}

// A loaded description and a session of it.
struct Subject {
    Subject(const Settings& settings, const std::string& name, const std::string& text) {
        const auto path = settings.folder / (name + ".xml");
        std::ofstream file(path, std::ios::binary);
        file << text;
        require(static_cast<bool>(file.flush()), "a file cannot be written");
        const std::size_t before = used_memory();
        info = std::make_unique<KIVO_INFO>();
        require(info->process_xml_file(path.string()), "a description has errors");
        store_bytes = used_memory() - before;
        session = std::make_unique<KIVO_SESSION>(*info);
        session_bytes = used_memory() - before - store_bytes;
    }
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    ~Subject() { info->delete_detached_objects(); }

    static std::size_t used_memory() {
        const auto memory = mallinfo2();
        return memory.uordblks + memory.hblkhd;
    }

    std::unique_ptr<KIVO_INFO> info;
    std::unique_ptr<KIVO_SESSION> session;
    std::size_t store_bytes = 0;
    std::size_t session_bytes = 0;
};

using SharedSubject = std::shared_ptr<Subject>;

SharedSubject make_sound(const Settings& settings, std::size_t rules) {
    auto subject = std::make_shared<Subject>(settings, "rules_" + std::to_string(rules),
                                             rules_description(rules));
    require(subject->session->is_legal(), "a description is not legal");
    return subject;
}

SharedSubject make_faulty(const Settings& settings, std::size_t rules) {
    auto subject = std::make_shared<Subject>(settings, "faulty_" + std::to_string(rules),
                                             faulty_description(rules));
    require(subject->session->faults().size() == rules, "a description has not all the faults");
    return subject;
}

// Faults and verdicts after a setting, which tells all of them anew.
Work tell_faults(const SharedSubject& subject) {
    return timed([subject, is_odd = false]() mutable {
        is_odd = !is_odd;
        subject->session->set("P0", is_odd ? "9" : "10");
        require(subject->session->verdicts().size() == subject->session->faults().size(),
                "not every fault is a verdict");
    });
}

Work compile(const SharedSubject& subject) {
    return timed([subject] { const KIVO_SESSION session(*subject->info); });
}

// Sets a parameter to another value each time and asks what came of it.
Work set(const SharedSubject& subject, const std::string& name) {
    return timed([subject, name, is_odd = false]() mutable {
        is_odd = !is_odd;
        require(subject->session->set(name, is_odd ? "9" : "10") == KIVO_SET_RESULT::kDone,
                "a parameter cannot be set");
        require(subject->session->is_legal(), "a setting is not legal");
    });
}

// A fork with settings that break rules, and one of its verdicts.
struct Broken {
    Broken(const Subject& subject, const std::vector<KIVO_ASSIGNMENT>& settings, bool is_one)
        : session(subject.session->fork()) {
        require(session.set_all(settings) == KIVO_SET_RESULT::kDone, "parameters cannot be set");
        const std::size_t verdicts = session.verdicts().size();
        require(is_one ? verdicts == 1 : verdicts > 500, "the verdicts are not those meant");
        verdict = session.verdicts()[verdicts / 2].subject;
    }

    KIVO_SESSION session;
    KIVO_SUBJECT verdict;
};

using SharedBroken = std::shared_ptr<Broken>;

Work ask_why(const SharedBroken& broken) {
    return timed([broken] {
        require(broken->session.why(broken->verdict).operands.size() >= 2, "nothing decides");
    });
}

Work ask_conflict(const SharedBroken& broken) {
    return timed([broken] {
        const KIVO_CONFLICT conflict = broken->session.conflict(broken->verdict);
        require(!conflict.settings.empty() && !conflict.may_be_smaller, "no least conflict");
    });
}

Work ask_repairs(const SharedBroken& broken) {
    return timed([broken] {
        bool are_all_tried = false;
        const bool is_found = !broken->session.repairs(broken->verdict, {}, &are_all_tried).empty();
        // Where a setting reaches every rule, the effort ends before the search does.
        require(is_found || !are_all_tried, "there is no way out");
    });
}

}  // namespace

void register_session(const Settings& settings, Results& results) {
    const std::size_t rules = settings.session_rules;
    const auto large = make_sound(settings, rules);
    const auto small = make_sound(settings, rules / 10);
    const std::string of = ", " + std::to_string(rules) + " rules";
    const double batch = settings.batch_seconds;
    const auto add_single = [&results, &settings, batch](const std::string& what, const Work& work,
                                                         const std::string& goal) {
        register_rounds(what.c_str(), settings.rounds, [=, &results](benchmark::State& state) {
            results.add_single(what, format_time(measure(state, work, batch)), goal);
        });
    };
    const auto add_cost = [&results, &settings, batch](
                              const std::string& what, const std::string& against, const Work& ours,
                              const Work& theirs, const std::string& goal) {
        register_rounds((what + ", " + against).c_str(), settings.rounds,
                        [=, &results](benchmark::State& state) {
                            results.add_cost(what, against, compare(state, ours, theirs, batch),
                                             goal);
                        });
    };
    const std::string all = "set what every rule reads" + of;
    const std::string few = "set what eight rules read" + of;
    add_single("compile a session" + of, compile(large), "<= 30 ms");
    add_cost("compile a session" + of, "a tenth of it", compile(large), compile(small), "<= 13 x");
    add_single(all, set(large, "P0"), "<= 1 ms");
    add_single(few, set(large, "P50"), "<= 2 us");
    register_rounds(
        (few + ", all rules").c_str(), settings.rounds, [=, &results](benchmark::State& state) {
            results.add_speed(few, "all rules",
                              compare(state, set(large, "P50"), set(large, "P0"), batch),
                              ">= 1000 x");
        });
    add_cost(few, "a tenth of the rules", set(large, "P50"), set(small, "P50"), "<= 1.2 x");
    add_cost("faults of " + std::to_string(rules) + " rules", "a tenth of it",
             tell_faults(make_faulty(settings, rules)),
             tell_faults(make_faulty(settings, rules / 10)), "<= 13 x");
    const std::vector<KIVO_ASSIGNMENT> two = {{"P55", "250"}, {"P56", "9"}};
    const auto one_broken = std::make_shared<Broken>(*large, two, true);
    const auto all_broken =
        std::make_shared<Broken>(*large, std::vector<KIVO_ASSIGNMENT>{{"P0", "-9"}}, false);
    const std::string goal = "<= 50 ms";
    for (const auto& [broken, verdict] : {std::pair(one_broken, " of the only verdict" + of),
                                          std::pair(all_broken, " of one of all verdicts" + of)}) {
        add_single("why" + verdict, ask_why(broken), goal);
        add_single("conflict" + verdict, ask_conflict(broken), goal);
        add_single("repairs" + verdict, ask_repairs(broken), goal);
    }
    results.add({"memory of a session" + of, format_size(large->session_bytes), "its store",
                 format_size(large->store_bytes),
                 format_ratio(static_cast<double>(large->session_bytes) /
                              static_cast<double>(large->store_bytes)) +
                     " x",
                 "<= 3 x"});
}
