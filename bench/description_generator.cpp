#include "description_generator.h"

namespace {

// One of each kind, and a wave with every fourth: what "size" is made of.
struct Sections {
    std::string parameters;
    std::string ports;
    std::string rules;
    std::string messages;
    std::string waves;

    std::size_t size() const {
        return parameters.size() + ports.size() + rules.size() + messages.size() + waves.size();
    }
};

void add_parameter(std::string& to, const std::string& n) {
    to += "    <PARAMETER NAME=\"PARAM_" + n + "\" TYPE=\"INTEGER\" VALUE=\"8\" LPM_HINT=\"ON\">\n";
    to += "      <FORCE_VALUE V=\"16\" IF=\"MODE_" + n + " gt 3\"/>\n";
    to +=
        "      <VALUE_RULE><IF>PARAM_" + n + " gt 8</IF><THEN>DEPTH lte 1024</THEN></VALUE_RULE>\n";
    to += "    </PARAMETER>\n";
}

void add_port(std::string& to, const std::string& n) {
    to += "    <PORT NAME=\"data_" + n + "\" TYPE=\"INPUT\" WIDTH=\"PARAM_" + n +
          "\" USAGE=\"VARIABLE\" DEFAULT_VALUE=\"0\">\n";
    to += "      <STATE V=\"1\" IF=\"PARAM_" + n + " gt 4\"/>\n";
    to += "    </PORT>\n";
}

void add_rule(std::string& to, const std::string& n) {
    to += "    <RULE REQUIRED_RULE=\"ON\">PARAM_" + n + " gt 0 and PARAM_" + n + " lte 64</RULE>\n";
}

void add_message(std::string& to, const std::string& n) {
    to += "    <MESSAGE TYPE=\"WARNING\"><IF>PARAM_" + n + " gt 32</IF><THEN>Parameter " + n +
          " makes the block slow.</THEN></MESSAGE>\n";
}

void add_wave(std::string& to, const std::string& n) {
    to += "    <WAVE NAME=\"wave_" + n + "\" MAX_TIME=\"1000\" TIME_STEP=\"10\">\n";
    to += "      <STIM>force clock 0 0,1 10,-repeat 20</STIM>\n";
    to += "      <IF>PARAM_" + n + " gt 4</IF>\n";
    to += "      <THEN><STIM>force -hex data_" + n + " 0 0,F 20,A 40,3 80</STIM></THEN>\n";
    to += "      <ELSE><STIM>force -hex data_" + n + " 0 0,1 20</STIM></ELSE>\n";
    to += "      <DISPLAY>add wave -hex data_" + n + "</DISPLAY>\n";
    to += "    </WAVE>\n";
}

std::string section(const std::string& tag, const std::string& body) {
    return "  <" + tag + ">\n" + body + "  </" + tag + ">\n";
}

}  // namespace

std::string generate_description(std::size_t size) {
    Sections sections;
    for (std::size_t i = 0; sections.size() < size; ++i) {
        const std::string n = std::to_string(i);
        add_parameter(sections.parameters, n);
        add_port(sections.ports, n);
        add_rule(sections.rules, n);
        add_message(sections.messages, n);
        if (i % 4 == 0) {
            add_wave(sections.waves, n);
        }
    }
    return "<?xml version=\"1.0\"?>\n<ROOT>\n" + section("PARAMETERS", sections.parameters) +
           section("PORTS", sections.ports) + section("RULES", sections.rules) +
           section("MESSAGES", sections.messages) + section("WAVE_DATA", sections.waves) +
           "</ROOT>\n";
}
