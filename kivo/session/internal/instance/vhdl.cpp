#include <algorithm>
#include <set>
#include <utility>

#include "kivo/session/internal/instance/words.h"
#include "kivo/session/internal/instance/write.h"

namespace kivo_session {

namespace {

constexpr Whole kGreatestInteger = 2147483647;
constexpr const char* kHint = "  -- hint";

bool is_letter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

// What stands as it is: no underscore at an end or beside another, no word of the language.
bool is_basic(std::string_view name) {
    const bool has_known_letters = std::all_of(name.begin(), name.end(), [](char letter) {
        return is_letter(letter) || is_digit(letter) || letter == '_';
    });
    return !name.empty() && is_letter(name.front()) && has_known_letters && name.back() != '_' &&
           name.find("__") == std::string_view::npos && !is_vhdl_word(name);
}

bool is_graphic(char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return (code >= 0x20 && code < 0x7F) || code >= 0xA0;
}

std::string extended(std::string_view name) {
    std::string text = "\\";
    for (const char letter : name) {
        text += is_graphic(letter) ? letter : '?';
        text += letter == '\\' ? "\\" : "";
    }
    return text + "\\";
}

std::string literal(std::string_view text) {
    std::string out = "\"";
    bool is_open = true;
    for (const char letter : text) {
        const bool is_plain = letter >= ' ' && letter <= '~';
        if (is_plain && !is_open) {
            out += " & \"";
        } else if (!is_plain) {
            out += is_open ? "\" & character'val(" : " & character'val(";
            out += std::to_string(static_cast<unsigned char>(letter)) + ")";
        }
        if (is_plain) {
            out += letter == '"' ? "\"\"" : std::string(1, letter);
        }
        is_open = is_plain;
    }
    return is_open ? out + "\"" : out;
}

// The names of one region, in which case tells none apart: the first of several stays as it is.
class Region {
public:
    std::string take(std::string_view name) {
        return is_basic(name) && taken_.insert(folded(name)).second ? std::string(name)
                                                                    : extended(name);
    }
    bool is_taken(std::string_view name) const { return taken_.count(folded(name)) > 0; }

private:
    std::set<std::string> taken_;
};

class Vhdl {
public:
    Vhdl(InstanceParts& parts, const KIVO_INSTANCE_OPTIONS& options)
        : parts_(parts), options_(options) {
        Region unit;
        module_ = unit.take(named(parts_.module, "the block"));
        label_ = unit.take(named(options_.label, "the label"));
        Region component;
        for (const InstanceGeneric& generic : parts_.generics) {
            generics_.push_back(component.take(named(generic.name, "a parameter")));
            check_number(generic);
        }
        Region outside;
        for (const InstancePort& port : parts_.ports) {
            ports_.push_back(component.take(named(port.name, "a port")));
            std::string signal = port.name;
            // A unit chooses the names of its own ports.
            while (options_.unit && unit.is_taken(signal)) {
                signal += "_port";
            }
            signals_.push_back(outside.take(signal));
        }
    }

    std::string write() const {
        if (options_.unit) {
            return write_unit();
        }
        std::string out = write_comment("--", options_.comment);
        if (options_.component) {
            out += write_component("") + "\n";
        }
        return out + write_instance("");
    }

private:
    const std::string& named(const std::string& name, const char* what) {
        if (name.empty()) {
            parts_.problems.push_back(std::string(what) + " has no name");
        } else if (!std::all_of(name.begin(), name.end(), is_graphic)) {
            parts_.problems.push_back("the name of " + (what + (" is none in VHDL: " + name)));
        }
        return name;
    }

    void check_number(const InstanceGeneric& generic) {
        if (generic.number &&
            (*generic.number > kGreatestInteger || *generic.number < -kGreatestInteger)) {
            parts_.problems.push_back(generic.name + " is " + generic.text +
                                      ", and the integers of VHDL end at " +
                                      to_text(kGreatestInteger));
        }
    }

    static std::string type_of(const InstancePort& port) {
        return port.is_scalar ? "std_logic"
                              : "std_logic_vector(" + std::to_string(port.width - 1) + " downto 0)";
    }

    static std::string declaration(const std::string& name, const InstancePort& port) {
        constexpr const char* kModes[] = {"in", "out", "inout"};
        return name + " : " + kModes[static_cast<std::size_t>(port.direction)] + " " +
               type_of(port);
    }

    static std::string section(const std::string& indent, const char* title,
                               const std::vector<ListLine>& lines, const char* separator,
                               const char* end) {
        return lines.empty()
                   ? std::string()
                   : indent + title + " (\n" + write_list(lines, indent + "  ", separator, kHint) +
                         indent + ")" + end + "\n";
    }

    std::string write_component(const std::string& indent) const {
        std::vector<ListLine> generics;
        for (std::size_t i = 0; i < generics_.size(); ++i) {
            const InstanceGeneric& generic = parts_.generics[i];
            const char* type = !generic.number       ? "string"
                               : *generic.number < 0 ? "integer"
                                                     : "natural";
            generics.push_back({generics_[i] + " : " + type, generic.is_hint});
        }
        std::vector<ListLine> ports;
        for (std::size_t i = 0; i < ports_.size(); ++i) {
            ports.push_back({declaration(ports_[i], parts_.ports[i])});
        }
        return indent + "component " + module_ + "\n" +
               section(indent + "  ", "generic", generics, ";", ";") +
               section(indent + "  ", "port", ports, ";", ";") + indent + "end component;\n";
    }

    std::string write_instance(const std::string& indent) const {
        std::vector<ListLine> generics;
        for (std::size_t i = 0; i < generics_.size(); ++i) {
            const InstanceGeneric& generic = parts_.generics[i];
            generics.push_back(
                {generics_[i] + " => " + (generic.number ? generic.text : literal(generic.text)),
                 generic.is_hint});
        }
        std::vector<ListLine> ports;
        for (std::size_t i = 0; i < ports_.size(); ++i) {
            const InstancePort& port = parts_.ports[i];
            const char* quote = port.is_scalar ? "'" : "\"";
            ports.push_back(
                {ports_[i] + " => " + (port.bits ? quote + *port.bits + quote : signals_[i])});
        }
        std::string out = indent + label_ + " : " + module_ + "\n" +
                          section(indent + "  ", "generic map", generics, ",", "") +
                          section(indent + "  ", "port map", ports, ",", "");
        out.insert(out.size() - 1, ";");
        return out;
    }

    // What the description names of "work" declares the component, as the unit does itself: it
    // compiles without.
    std::string write_libraries() const {
        std::set<std::string> declared = {"work", "std"};
        std::string out;
        const auto add = [&](const std::string& entry) {
            const std::string library = entry.substr(0, entry.find('.'));
            const bool is_own = folded(library) == "work";
            if (declared.insert(folded(library)).second) {
                out += "library " + library + ";\n";
            }
            const std::size_t dot = entry.find('.');
            if (dot == std::string::npos) {
                return;
            }
            const bool is_whole = entry.find('.', dot + 1) != std::string::npos ||
                                  folded(entry.substr(dot + 1)) == "all";
            out += (is_own ? "-- use " : "use ") + entry + (is_whole ? ";\n" : ".all;\n");
        };
        const bool has_logic = std::any_of(
            parts_.libraries.begin(), parts_.libraries.end(), [](const std::string& entry) {
                return folded(entry).rfind("ieee.std_logic_1164", 0) == 0;
            });
        if (!has_logic) {
            add("ieee.std_logic_1164");
        }
        for (const std::string& entry : parts_.libraries) {
            add(entry);
        }
        return out;
    }

    std::string write_unit() const {
        const std::string name = Region().take(parts_.module + "_" + options_.label);
        std::vector<ListLine> ports;
        for (std::size_t i = 0; i < ports_.size(); ++i) {
            if (!parts_.ports[i].bits) {
                ports.push_back({declaration(signals_[i], parts_.ports[i])});
            }
        }
        return write_comment("--", options_.comment) + write_libraries() + "\nentity " + name +
               " is\n" + section("  ", "port", ports, ";", ";") + "end entity;\n\n" +
               "architecture instance of " + name + " is\n" + write_component("  ") + "begin\n" +
               write_instance("  ") + "end architecture;\n";
    }

    InstanceParts& parts_;
    const KIVO_INSTANCE_OPTIONS& options_;
    std::string module_;
    std::string label_;
    std::vector<std::string> generics_;
    std::vector<std::string> ports_;
    std::vector<std::string> signals_;
};

}  // namespace

std::string write_vhdl(InstanceParts& parts, const KIVO_INSTANCE_OPTIONS& options) {
    return Vhdl(parts, options).write();
}

}  // namespace kivo_session
