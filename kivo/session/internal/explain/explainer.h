#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/engine/report.h"

namespace kivo_session {

// What is asked of an object: its value or state; what was asked for; the constant at a port.
enum class Aspect : std::uint8_t { kValue, kAsked, kConstant };

// Follows what decides to the settings. Each aspect of an object is told once.
class Explainer {
public:
    explicit Explainer(Engine& engine)
        : engine_(engine),
          model_(engine.model()),
          description_(*model_.description),
          reporter_(engine) {}

    // The position of an operand, which finish() tells.
    std::uint32_t operand(std::uint32_t object, Aspect aspect);
    // Appends the expressions of a text and what decides its value; gives the branch of an
    // implication that counts.
    KIVO_BRANCH explain(std::uint32_t text, std::vector<KIVO_PART>& parts,
                        std::vector<std::uint32_t>& operands);
    // All operands, with those that they depend on.
    std::vector<KIVO_OPERAND> finish();

private:
    struct Parsed {
        std::uint32_t text = kNone;
        std::string_view source;
        Expression expression;
        Resolution resolution;
    };

    bool parse_text(std::uint32_t text, Parsed& parsed) const;
    void explain_part(const Parsed& parsed, std::uint32_t root, const Program& program,
                      std::vector<KIVO_PART>& parts, std::vector<std::uint32_t>& operands);
    void explain_name(std::uint32_t text, std::vector<std::uint32_t>& operands);
    std::vector<bool> deciding(const Parsed& parsed, std::uint32_t root,
                               const std::vector<Value>& values) const;
    void add_names(const Parsed& parsed, std::uint32_t root, const std::vector<bool>& is_deciding,
                   const std::vector<Value>& values, std::vector<std::uint32_t>& operands);
    std::uint32_t named(const Parsed& parsed, std::uint32_t position, std::uint32_t parent);
    std::uint32_t call(const Parsed& parsed, std::uint32_t position, Value value);
    void add_names_of_macro(std::uint32_t macro, std::vector<std::uint32_t>& operands);
    Aspect aspect_of_port(const Parsed& parsed, std::uint32_t position, std::uint32_t parent) const;
    bool is_own(const Parsed& parsed, std::uint32_t object) const;
    std::string value_text(Value value) const;

    void tell(std::uint32_t position);
    void tell_macro(std::uint32_t object, KIVO_OPERAND& told);
    void tell_asked(std::uint32_t object, KIVO_OPERAND& told);
    void tell_constant(std::uint32_t port, KIVO_OPERAND& told);
    void tell_force(const Engine::Forcing& forcing, const char* word, KIVO_OPERAND& told);

    Engine& engine_;
    const Model& model_;
    const Description& description_;
    Reporter reporter_;
    std::vector<KIVO_OPERAND> operands_;
    std::vector<std::pair<std::uint32_t, Aspect>> keys_;  // by operand; kNone for calls of macros
    std::map<std::pair<std::uint32_t, Aspect>, std::uint32_t> known_;
};

}  // namespace kivo_session
