#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/toolkit/place.h"

namespace kivo_session {

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

// What a text of the description is for: decides how it is read.
enum class TextRole : std::uint8_t {
    kWholeValue,    // an expression that gives a whole number
    kTextValue,     // a text, or the name of an object whose value it is
    kUntypedValue,  // an expression when it is one, else a text
    kStateValue,    // a state of a port
    kLimit,         // an expression that gives a number
    kWidth,         // an expression that should give a whole number
    kCondition,
    kValueRule,  // a condition that may be an implication
    kMacro,
};

// One text with the place where it stands.
struct SourceText {
    std::string_view text;
    TextRole role = TextRole::kCondition;
    std::uint32_t object = kNone;  // whose it is; kNone for the whole function
    KIVO_MARK mark;
    const char* element = "";    // "FORCE_RANGE", "RULE", ...
    const char* attribute = "";  // "MAX", "IF", ...; empty: the text of the element
};

enum class ObjectKind : std::uint8_t {
    kInteger,
    kString,
    kHidden,
    kInput,
    kOutput,
    kBidir,
    kBuried,
    kMacro,
};

inline bool is_parameter(ObjectKind kind) {
    return kind <= ObjectKind::kHidden;
}
inline bool is_port(ObjectKind kind) {
    return kind >= ObjectKind::kInput && kind <= ObjectKind::kBuried;
}

enum class ElementKind : std::uint8_t {
    kForce,          // FORCE_VALUE of parameters and hidden parameters
    kState,          // STATE of ports
    kPortForce,      // FORCE_VALUE of ports
    kRange,          // FORCE_RANGE of parameters
    kPortRange,      // FORCE_RANGE of ports
    kConstantRange,  // CONSTANT_RANGE of ports
    kValueRule,
};

// One rule element of an object. Texts are positions in Description::texts, kNone without one.
struct Element {
    ElementKind kind = ElementKind::kForce;
    bool is_required = true;
    std::uint32_t object = kNone;
    std::uint32_t map = kNone;     // the wizard map that adds it; kNone: always there
    std::uint32_t first = kNone;   // the value, or the greatest one of a range
    std::uint32_t second = kNone;  // the value of ELSE, or the least one of a range
    std::uint32_t condition = kNone;
    KIVO_MARK mark;
};

struct Range {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

struct Object {
    std::string_view name;
    std::string_view arguments;  // of a macro
    ObjectKind kind = ObjectKind::kMacro;
    std::uint8_t usage = 1;       // a PortState
    std::uint8_t connection = 3;  // the CNX_TYPE: 0 private, 1 constant, 2 used port, 3 not given
    bool is_always_used = false;
    bool is_hint = false;
    bool has_list = false;
    KIVO_MARK mark;
    std::uint32_t default_text = kNone;   // of a macro: its definition
    std::uint32_t default_fault = kNone;  // the text of a default index outside the list
    std::uint32_t width = kNone;
    std::uint32_t width2d = kNone;
    Range items;     // in Description::items
    Range elements;  // in Description::elements
};

struct Rule {
    std::uint32_t condition = kNone;
    bool is_required = true;
    KIVO_MARK mark;
};

enum class Severity : std::uint8_t { kError, kCriticalWarning, kWarning, kInfo };

struct Message {
    Severity severity = Severity::kInfo;
    std::string_view shown;
    std::string_view otherwise;
    std::uint32_t condition = kNone;
    KIVO_MARK mark;
};

struct Stimulus {
    std::string_view shown;
    std::string_view otherwise;
    std::uint32_t condition = kNone;
};

struct Vector {
    std::string_view name;
    std::uint32_t condition = kNone;
    Range stimuli;  // in Description::stimuli
};

// What a wizard map says of one object.
struct Preset {
    std::uint32_t object = kNone;
    std::uint32_t value = kNone;  // of a parameter; kNone without one
    std::uint8_t usage = 1;       // of a port
};

struct WizardMap {
    std::string_view name;
    std::string_view module_name;
    bool maps_constants = false;
    bool maps_used_ports = false;
    std::uint32_t condition = kNone;
    Range presets;  // in Description::presets
    KIVO_MARK mark;
};

// A piece of a help text or of the description of a vector; "key" is the record's address.
struct Piece {
    const void* key = nullptr;
    std::uint32_t condition = kNone;
    bool has_otherwise = false;
};

// A description as the session reads it: plain records that refer to one another by position. The
// bytes of all texts stand in "bytes".
struct Description {
    Description() = default;
    Description(const Description&) = delete;
    Description& operator=(const Description&) = delete;

    // A copy that lives as long as this does.
    std::string_view keep(std::string_view text);
    std::uint32_t add_text(const SourceText& text);

    std::string_view function_name;
    std::string_view vhdl_library;
    std::vector<SourceText> texts;
    std::vector<Object> objects;
    std::vector<std::uint32_t> items;
    std::vector<Element> elements;
    std::vector<Rule> rules;
    std::vector<Message> messages;
    std::vector<Vector> vectors;
    std::vector<Stimulus> stimuli;
    std::vector<WizardMap> maps;
    std::vector<Preset> presets;
    std::vector<Piece> pieces;

private:
    std::vector<std::string> bytes_;  // each reserved once, so that its bytes stay in place
};

}  // namespace kivo_session
