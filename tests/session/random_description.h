#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/session/fixture.h"

// A small description with rules of all kinds, the same for the same seed: whole numbers N0.. with
// a range, texts T0.. with a list, a hidden parameter H, macros M and D(a), ports p0.. and rules.
class RandomDescription {
public:
    struct Setting {
        std::string name;
        bool is_number = false;
        int least = 0;
        int greatest = 0;
        bool has_force = false;
        std::vector<std::string> values;  // all that are worth trying, in order
    };

    RandomDescription(std::uint32_t seed, int size, int widest) : random_(seed) {
        for (int i = 0; i < size; ++i) {
            settings_.push_back(i % 3 == 2 ? text_setting(i) : number_setting(i, widest));
        }
        for (int i = 0; i < 2; ++i) {
            Setting port;
            port.name = "p" + std::to_string(i);
            port.values = {"UNUSED", "USED", "VARIABLE", "CONSTANT"};
            ports_.push_back(port);
        }
        write();
    }

    const std::string& sections() const { return sections_; }
    const std::vector<Setting>& settings() const { return settings_; }
    // With the ports.
    std::vector<Setting> all_settings() const {
        std::vector<Setting> all = settings_;
        all.insert(all.end(), ports_.begin(), ports_.end());
        return all;
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }
    bool chance(std::size_t percent) { return below(100) < percent; }
    template <class List>
    auto pick(const List& list) {
        return list[below(list.size())];
    }
    // Some settings at random values.
    std::vector<KIVO_ASSIGNMENT> assignments() {
        std::vector<KIVO_ASSIGNMENT> result;
        for (const Setting& setting : all_settings()) {
            if (chance(50)) {
                result.push_back({setting.name, pick(setting.values)});
            }
        }
        return result;
    }

private:
    using Words = std::vector<std::string>;

    Setting number_setting(int index, int widest) {
        Setting setting;
        setting.name = "N" + std::to_string(index);
        setting.is_number = true;
        setting.least = static_cast<int>(below(4)) - 2;
        setting.greatest = setting.least + 2 + static_cast<int>(below(widest));
        setting.has_force = chance(25);
        for (int value = setting.least; value <= setting.greatest; ++value) {
            setting.values.push_back(std::to_string(value));
        }
        return setting;
    }

    Setting text_setting(int index) {
        Setting setting;
        setting.name = "T" + std::to_string(index);
        setting.has_force = chance(30);
        setting.values = {"ON", "OFF", "SLOW"};
        setting.values.resize(2 + below(2));
        return setting;
    }

    std::string number(int depth) {
        if (depth == 0 || chance(25)) {
            const Setting& setting = settings_[below(settings_.size())];
            const std::string name = setting.is_number ? setting.name : "N0";
            const Words leaves{name, name, name, std::to_string(below(9)), "H", "M", "p0"};
            return pick(leaves);
        }
        const std::string left = number(depth - 1);
        const std::string right = number(depth - 1);
        static const Words kOperators{"+", "+", "-", "*", "*", "/", "%", "mod", "div", "^"};
        switch (below(12)) {
            case 0:
                return "min( " + left + ", " + right + " )";
            case 1:
                return "max( " + left + ", " + right + " )";
            case 2:
                return "abs( " + left + " - " + right + " )";
            case 3:
                return "ceil( log2( " + left + " ) )";
            case 4:
                return "floor( ( " + left + " ) / 3.0 )";
            case 5:
                return "D( " + left + " )";
            default:
                return "( " + left + " " + pick(kOperators) + " " + right + " )";
        }
    }

    std::string condition(int depth) {
        static const Words kComparisons{"==", "!=", "lt", "lte", "gt", "gte"};
        if (depth > 0 && chance(50)) {
            const std::string left = condition(depth - 1);
            const std::string right = condition(depth - 1);
            return chance(20)   ? "!( " + left + " )"
                   : chance(50) ? "( " + left + " and " + right + " )"
                                : "( " + left + " or " + right + " )";
        }
        if (chance(30)) {
            const Setting& setting = settings_[below(settings_.size())];
            if (!setting.is_number) {
                return "( " + setting.name + (chance(50) ? " == " : " != ") + "\"" +
                       pick(setting.values) + "\" )";
            }
        }
        if (chance(10)) {
            const Words asked{"p0", "p1", "( p0 == USED )", "( p1 != \"CONSTANT\" )"};
            return pick(asked);
        }
        return "( " + number(2) + " " + pick(kComparisons) + " " + number(1) + " )";
    }

    static std::string escaped(const std::string& text) {
        std::string result;
        for (const char letter : text) {
            result += letter == '"' ? std::string("&quot;") : std::string(1, letter);
        }
        return result;
    }

    static std::string attribute(const std::string& name, const std::string& text) {
        return " " + name + "=\"" + escaped(text) + "\"";
    }

    std::string value_of(const Setting& setting) {
        return setting.is_number ? (chance(50) ? number(1) : pick(setting.values))
                                 : pick(setting.values);
    }

    std::string elements(const Setting& setting) {
        std::string result;
        if (setting.is_number) {
            result += "<FORCE_RANGE" + attribute("MIN", std::to_string(setting.least)) +
                      attribute("MAX", std::to_string(setting.greatest)) + "/>";
        }
        for (int i = 0; setting.has_force && i < 2; ++i) {
            result += "<FORCE_VALUE" + attribute("V", value_of(setting)) +
                      attribute("IF", condition(1)) +
                      (chance(15) ? attribute("ELSE", value_of(setting)) : std::string()) + "/>";
        }
        if (setting.is_number && chance(40)) {
            result += "<FORCE_RANGE" + attribute("MIN", number(1)) + attribute("MAX", number(1)) +
                      attribute("IF", condition(1)) + "/>";
        }
        if (chance(40)) {
            result += "<VALUE_RULE><IF>" + condition(1) + "</IF><THEN>" + condition(1) + "</THEN>" +
                      (chance(40) ? "<ELSE>" + condition(0) + "</ELSE>" : std::string()) +
                      "</VALUE_RULE>";
        }
        return result;
    }

    std::string parameter(const Setting& setting) {
        std::string list;
        for (const std::string& value : setting.values) {
            list += (list.empty() ? "" : ";") + value;
        }
        const std::string head =
            setting.is_number ? "' TYPE='INTEGER' VALUE='" + pick(setting.values) + "'>"
                              : "' TYPE='STRING' VALUE='" + list + "' DEFAULT_VALUE_INDEX='0'>";
        return "<PARAMETER NAME='" + setting.name + head + elements(setting) + "</PARAMETER>";
    }

    std::string port(const Setting& setting) {
        return "<PORT NAME='" + setting.name + "' TYPE='INPUT' USAGE='" + pick(setting.values) +
               "' DEFAULT_VALUE='" + std::to_string(below(3)) + "'" +
               (chance(50) ? attribute("WIDTH", number(1)) : std::string()) + "/>";
    }

    std::string port_rules(const Setting& setting) {
        std::string result = "<PORT NAME='" + setting.name + "'>";
        if (chance(40)) {
            result += "<STATE" + attribute("V", pick(setting.values)) +
                      attribute("IF", condition(1)) + "/>";
        }
        if (chance(30)) {
            result +=
                "<FORCE_VALUE" + attribute("V", number(0)) + attribute("IF", condition(0)) + "/>";
        }
        if (chance(30)) {
            result +=
                "<CONSTANT_RANGE" + attribute("MIN", "0") + attribute("MAX", number(1)) + "/>";
        }
        return result + "</PORT>";
    }

    void write() {
        std::string parameters;
        for (const Setting& setting : settings_) {
            parameters += parameter(setting);
        }
        std::string ports;
        std::string rules_of_ports;
        for (const Setting& setting : ports_) {
            ports += port(setting);
            rules_of_ports += port_rules(setting);
        }
        std::string rules;
        for (int i = 0; i < 2; ++i) {
            rules +=
                (chance(70) ? "<RULE>" : "<RULE REQUIRED_RULE='OFF'>") + condition(2) + "</RULE>";
        }
        sections_ = in("PARAMETERS", parameters) + in("PORTS", ports) +
                    in("PORT_RULES", rules_of_ports) +
                    in("HIDDEN_PARAMETERS", "<PARAMETER NAME='H' VALUE='2'><FORCE_VALUE" +
                                                attribute("V", "N0 + 1") + "/></PARAMETER>") +
                    in("MACROS",
                       "<MACRO NAME='M' DEFINITION='N0 * 2 - H'/>"
                       "<MACRO NAME='D' ARGUMENTS='a' DEFINITION='a * a + N0'/>") +
                    in("RULES", rules) +
                    in("MESSAGES", chance(50) ? "<MESSAGE TYPE='ERROR'><IF>" + condition(1) +
                                                    "</IF><THEN>no</THEN></MESSAGE>"
                                              : std::string());
    }

    std::mt19937 random_;
    std::vector<Setting> settings_;
    std::vector<Setting> ports_;
    std::string sections_;
};
