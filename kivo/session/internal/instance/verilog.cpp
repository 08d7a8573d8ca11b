#include <algorithm>
#include <set>
#include <utility>

#include "kivo/session/internal/instance/words.h"
#include "kivo/session/internal/instance/write.h"

namespace kivo_session {

namespace {

constexpr const char* kHint = "  // hint";
// A number without a size has 32 bits at least.
constexpr Whole kGreatestPlain = 2147483647;

bool is_simple(std::string_view name) {
    const auto is_start = [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               letter == '_';
    };
    const bool has_known_letters = std::all_of(name.begin(), name.end(), [&](char letter) {
        return is_start(letter) || (letter >= '0' && letter <= '9') || letter == '$';
    });
    return !name.empty() && is_start(name.front()) && has_known_letters && !is_verilog_word(name);
}

bool is_printable(char letter) {
    return letter > ' ' && letter <= '~';
}

// An escaped name goes on until a blank.
std::string identifier(std::string_view name) {
    if (is_simple(name)) {
        return std::string(name);
    }
    std::string text = "\\" + std::string(name);
    std::replace_if(
        text.begin(), text.end(), [](char letter) { return !is_printable(letter); }, '?');
    return text + " ";
}

std::string literal(std::string_view text) {
    std::string out = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') {
            out += std::string("\\") + letter;
        } else if (letter == ' ' || is_printable(letter)) {
            out += letter;
        } else {
            const auto code = static_cast<unsigned char>(letter);
            out += '\\';
            for (const int digit : {code >> 6, code >> 3 & 7, code & 7}) {
                out += static_cast<char>('0' + digit);
            }
        }
    }
    return out + "\"";
}

std::string number(Whole value) {
    const bool is_negative = value < 0;
    const Whole positive = is_negative ? -(value + 1) : value;
    if (positive < kGreatestPlain) {
        return to_text(value);
    }
    int bits = 1;
    while (positive >> bits != 0) {
        ++bits;
    }
    const std::string digits = to_text(value).substr(is_negative ? 1 : 0);
    return (is_negative ? "-" : "") + std::to_string(bits + 1) + "'sd" + digits;
}

class Verilog {
public:
    Verilog(InstanceParts& parts, const KIVO_INSTANCE_OPTIONS& options)
        : parts_(parts), options_(options) {
        check_name(parts_.module, "the block");
        check_name(options_.label, "the label");
        for (const InstanceGeneric& generic : parts_.generics) {
            check_name(generic.name, "a parameter");
        }
        for (const InstancePort& port : parts_.ports) {
            check_name(port.name, "a port");
        }
    }

    std::string write() const {
        const std::string comment = write_comment("//", options_.comment);
        const std::string declared = options_.component ? write_module() + "\n" : "";
        return comment + declared + (options_.unit ? write_unit() : write_instance(""));
    }

private:
    void check_name(const std::string& name, const char* what) {
        if (name.empty()) {
            parts_.problems.push_back(std::string(what) + " has no name");
        } else if (!std::all_of(name.begin(), name.end(), is_printable)) {
            parts_.problems.push_back("the name of " + (what + (" is none in Verilog: " + name)));
        }
    }

    // Of a unit, which chooses the names of its own ports: the label is taken.
    std::string signal(const InstancePort& port) const {
        return identifier(options_.unit && port.name == options_.label ? port.name + "_port"
                                                                       : port.name);
    }

    static std::string declaration(const std::string& name, const InstancePort& port) {
        constexpr const char* kDirections[] = {"input ", "output ", "inout "};
        return kDirections[static_cast<std::size_t>(port.direction)] +
               (port.is_scalar ? "" : "[" + std::to_string(port.width - 1) + ":0] ") + name;
    }

    static std::string value_of(const InstanceGeneric& generic) {
        return generic.number ? number(*generic.number) : literal(generic.text);
    }

    static std::string list(const char* before, const std::vector<ListLine>& lines,
                            const std::string& indent, const char* after) {
        return before +
               (lines.empty()
                    ? "()"
                    : "(\n" + write_list(lines, indent + "  ", ",", kHint) + indent + ")") +
               after;
    }

    std::string write_module() const {
        std::vector<ListLine> generics;
        for (const InstanceGeneric& generic : parts_.generics) {
            generics.push_back({"parameter " + identifier(generic.name) + " = " + value_of(generic),
                                generic.is_hint});
        }
        std::vector<ListLine> ports;
        for (const InstancePort& port : parts_.ports) {
            ports.push_back({declaration(identifier(port.name), port)});
        }
        return "module " + identifier(parts_.module) + " " +
               (generics.empty() ? "" : list("#", generics, "", " ")) + list("", ports, "", ";\n") +
               "endmodule\n";
    }

    std::string write_instance(const std::string& indent) const {
        std::vector<ListLine> generics;
        for (const InstanceGeneric& generic : parts_.generics) {
            generics.push_back(
                {"." + identifier(generic.name) + "(" + value_of(generic) + ")", generic.is_hint});
        }
        std::vector<ListLine> ports;
        for (const InstancePort& port : parts_.ports) {
            const std::string actual =
                port.bits ? std::to_string(port.width) + "'b" + *port.bits : signal(port);
            ports.push_back({"." + identifier(port.name) + "(" + actual + ")"});
        }
        return indent + identifier(parts_.module) + " " +
               (generics.empty() ? "" : list("#", generics, indent, " ")) +
               identifier(options_.label) + " " + list("", ports, indent, ";\n");
    }

    std::string write_unit() const {
        std::vector<ListLine> ports;
        for (const InstancePort& port : parts_.ports) {
            if (!port.bits) {
                ports.push_back({declaration(signal(port), port)});
            }
        }
        return "module " + identifier(parts_.module + "_" + options_.label) + " " +
               list("", ports, "", ";\n") + "\n" + write_instance("  ") + "\nendmodule\n";
    }

    InstanceParts& parts_;
    const KIVO_INSTANCE_OPTIONS& options_;
};

}  // namespace

std::string write_verilog(InstanceParts& parts, const KIVO_INSTANCE_OPTIONS& options) {
    return Verilog(parts, options).write();
}

}  // namespace kivo_session
