#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/objects/obj_info.h"
#include "kivo/objects/usage_state.h"
#include "kivo/session/export.h"
#include "kivo/toolkit/place.h"

class KIVO_CONDITIONAL_TEXT;
class KIVO_INFO;
class KIVO_VECTOR_OBJ;
struct KIVO_INSTANCE_OPTIONS;
struct KIVO_SENSE;

// How a request to set something ended. Nothing is changed by any but kDone.
enum class KIVO_SET_RESULT {
    kDone,
    kUnknownName,
    kNotASetting,  // hidden, buried or always used; or CONSTANT for an output
    kNotANumber,   // not a whole decimal number of at most 128 bits
    kNotAState,    // of a port: not a state, nor "CONSTANT:" and a number
};

// A truth that may not be known.
enum class KIVO_TRUTH { kNo, kYes, kUnknown };

// Where a value or state comes from; in rising order of what goes before what.
enum class KIVO_VALUE_SOURCE {
    kDefault,
    kPreset,  // of the wizard map that is selected
    kGiven,   // set by the user
    kForced,  // by a rule of the description; of a port: by a STATE rule
};

enum class KIVO_SEVERITY { kError, kCriticalWarning, kWarning, kAdvice, kInfo };

// What is set: the name of a parameter or port and the text as a user types it.
struct KIVO_ASSIGNMENT {
    std::string name;
    std::string value;
};

// One parameter or hidden parameter. Values are texts; none when not known.
struct KIVO_SETTING {
    std::string name;
    KIVO_OBJ_TYPE type = KIVO_OBJ_UNKNOWN;
    std::optional<std::string> asked;  // the user's value, else the map's, else the default
    std::optional<std::string> value;  // what takes effect
    KIVO_VALUE_SOURCE source = KIVO_VALUE_SOURCE::kDefault;
    bool settable = false;
};

// One port.
struct KIVO_PORT {
    std::string name;
    KIVO_OBJ_TYPE type = KIVO_OBJ_UNKNOWN;
    std::optional<std::string> asked;  // the state asked for; "CONSTANT:5" with the user's constant
    std::optional<KIVO_OBJ_USAGE_STATE> state;  // none when not known
    KIVO_VALUE_SOURCE source = KIVO_VALUE_SOURCE::kDefault;
    std::optional<std::int64_t> width;  // none when not known, not whole or beyond 64 bits
    std::optional<std::string> tied;    // the constant at the port; none when nothing ties it
    bool settable = false;
};

// What is wrong with a text of the description.
struct KIVO_FAULT {
    std::string id;  // "unknown-name", ...
    std::string text;
    std::string object;        // whose text it is; empty for the function
    std::string element;       // "FORCE_RANGE", "RULE", ...
    std::string attribute;     // "MAX", "IF", ...; empty for the text of the element
    std::string source;        // the text itself
    KIVO_MARK mark;            // the element; see KIVO_INFO::get_place
    std::uint32_t offset = 0;  // in the text, in bytes from 0
    std::uint32_t length = 0;  // of what is wrong; 0 where something is missing
};

// What a verdict is about. "name" is an object's, empty for the whole function; "number" tells
// apart what else is judged and means the same in every session of one description. A name alone
// is about the value of that parameter, hidden parameter or macro, or the state of that port.
struct KIVO_SUBJECT {
    static constexpr std::uint32_t kValue = 0xFFFFFFFF;

    std::string name;
    std::uint32_t number = kValue;
};

// One thing that is not as it should be.
struct KIVO_VERDICT {
    std::string id;  // "out-of-range", ...: stable
    KIVO_SEVERITY severity = KIVO_SEVERITY::kError;
    bool is_undecided = false;  // else it fails
    KIVO_SUBJECT subject;
    std::string text;
    KIVO_MARK mark;  // the element that it comes from; see KIVO_INFO::get_place
};

// A message that the configuration shows.
struct KIVO_SHOWN_MESSAGE {
    KIVO_SEVERITY severity = KIVO_SEVERITY::kInfo;
    std::string text;
    KIVO_MARK mark;
};

// Whether a vector or wizard map applies.
struct KIVO_APPLICATION {
    std::string name;
    KIVO_TRUTH applies = KIVO_TRUTH::kUnknown;
};

enum class KIVO_CHANGE_KIND { kSetting, kPort, kVerdict, kMessage, kVector, kMap, kText };

// Something that may have changed. "name" is that of the object, vector or map; empty for the rest:
// the stimulus of any vector, and of verdicts those about rules, faults and circles.
struct KIVO_CHANGE {
    KIVO_CHANGE_KIND kind = KIVO_CHANGE_KIND::kSetting;
    std::string name;
};

enum class KIVO_VALUE_KIND { kUnknown, kTruth, kInteger, kReal, kText };

// What an expression gives now.
struct KIVO_EVALUATION {
    KIVO_VALUE_KIND kind = KIVO_VALUE_KIND::kUnknown;
    std::string value;                 // as text; empty when unknown
    std::vector<std::string> reasons;  // why it is unknown: "run-time q", "unset P", "cycle",
                                       // "fault division-by-zero"; sorted
    std::vector<KIVO_FAULT> faults;    // of the expression itself
};

// Which values are asked for.
enum class KIVO_LEGAL_SCOPE {
    kOwn,    // what its own list, ranges and required value rules admit, its forces aside
    kWhole,  // with which, all else as it is set, the configuration is legal and gets this value
};

// All whole numbers from "first" to "last", as decimal texts.
struct KIVO_RUN {
    std::string first;
    std::string last;
};

// The values of one setting: of a whole number without a list "runs", else "values". Runs are
// sorted and do not touch one another.
struct KIVO_LEGAL_VALUES {
    bool is_setting = false;          // else all is empty
    std::vector<std::string> values;  // items of a list, or states of a port, in their order; of
                                      // any other text those that the description mentions
    bool are_others_legal = false;    // texts without a list: one that is mentioned nowhere
    std::vector<KIVO_RUN> runs;
    std::vector<KIVO_RUN> undecided;  // numbers that the effort did not suffice for; not in "runs"
};

// How much is tried before an answer is given up. Counted, so that answers are the same on every
// machine; the time is only a last bound.
struct KIVO_EFFORT {
    std::uint32_t evaluations = 200000;  // of texts of the description
    std::uint32_t steps = 20000;         // intervals that are looked at
    std::uint32_t milliseconds = 2000;
};

// One expression inside another. Those of one text stand in postfix order: the operands of each
// directly before it.
struct KIVO_PART {
    std::string text;   // as its author might have written it
    std::string value;  // empty when not known
    bool is_known = false;
    std::uint32_t operands = 0;  // how many parts it is made of
    bool is_deciding = false;    // not so where another side of "and" or "or" already decides
    std::uint32_t offset = 0;    // of its name or operator in the text, in bytes
};

enum class KIVO_OPERAND_SOURCE {
    kGiven,
    kPreset,
    kDefault,  // the description's default, or the state that it declares
    kForced,   // a FORCE_VALUE
    kState,    // a STATE rule of a port
    kTied,     // the constant at a port
    kMacro,
    kRunTime,  // carried by a port; never known
};

// One value that decides, and how it comes about.
struct KIVO_OPERAND {
    std::string name;
    std::string value;  // empty when not known
    bool is_known = false;
    KIVO_OPERAND_SOURCE source = KIVO_OPERAND_SOURCE::kDefault;
    std::string source_text;  // "given", "preset small", "default", "forced, A gt 4", "A * B"
    KIVO_MARK mark;           // of what the source is; none of what is given
    std::vector<KIVO_PART> expression;    // the condition or definition that gave the value
    std::vector<std::uint32_t> operands;  // positions in KIVO_WHY::operands of what decides it
};

enum class KIVO_BRANCH { kNone, kThen, kElse };

// Why something is as it is.
struct KIVO_WHY {
    KIVO_SUBJECT subject;
    bool is_known = false;  // false for a subject that the description does not have
    KIVO_TRUTH holds = KIVO_TRUTH::kUnknown;  // of a value: whether it is known
    std::string id;                           // of the verdict; "value" of a value
    std::string text;  // "out-of-range DEPTH: ..." as the verdict has it, or the value
    std::string rule;  // the text of the rule, with an implication written out
    KIVO_MARK mark;    // of the rule
    KIVO_BRANCH branch = KIVO_BRANCH::kNone;  // of "if A then B else C", or of a value and its ELSE
    std::vector<KIVO_PART> expression;        // the condition, or the limits that count
    std::vector<std::uint32_t> decided_by;    // positions in "operands"
    std::vector<KIVO_OPERAND> operands;       // all, each once, followed to the settings
};

// Settings that cannot stand together; with any one of them free there is a way out.
struct KIVO_CONFLICT {
    std::vector<KIVO_ASSIGNMENT> settings;  // what is given first, then what is at its default
    bool may_be_smaller = false;            // the effort did not suffice to leave more out
    std::string
        text;  // "DEPTH=128 STORAGE=REGISTERS"; with " (perhaps fewer)" when it may be smaller
};

// A change after which what failed holds and the configuration is legal.
struct KIVO_REPAIR {
    std::vector<KIVO_ASSIGNMENT> set;
    std::string text;  // "DEPTH=64 STORAGE=AUTO"
};

// A configuration of one description: what is asked for, what follows from it, and what is wrong
// with it. Made from a store, which it reads once; later loads are not seen. The store is needed
// afterwards for places alone, and its texts for text().
// Bad input never throws; memory exhaustion throws std::bad_alloc and leaves a session that can be
// destroyed. One session is used by one thread at a time; forks of one session may be used by
// different threads. References and pointers that it returns live until the next change. A session
// that was moved from can only be destroyed or assigned to.
class KIVO_SESSION_API KIVO_SESSION {
public:
    // Everything at its default.
    explicit KIVO_SESSION(const KIVO_INFO& info);
    KIVO_SESSION(KIVO_SESSION&& other) noexcept;
    KIVO_SESSION& operator=(KIVO_SESSION&& other) noexcept;
    ~KIVO_SESSION();
    // An independent copy that shares the compiled description.
    KIVO_SESSION fork() const;

    // --- Setting. A request against a rule of the description is kept, and shows in verdicts().

    // A parameter's value (of an INTEGER parameter a whole decimal number, of a STRING parameter
    // any text, never an expression), or a port's state: UNUSED, USED, VARIABLE, CONSTANT or
    // "CONSTANT:5".
    KIVO_SET_RESULT set(std::string_view name, std::string_view value);
    // All or none; of several for one name the last counts. "refused" becomes the position of the
    // first that was refused; it may be null.
    KIVO_SET_RESULT set_all(const std::vector<KIVO_ASSIGNMENT>& assignments,
                            std::size_t* refused = nullptr);
    // Takes back what was set; nothing for an unknown name or one that was not set.
    void unset(std::string_view name);
    // What is set, with the texts that were given, in the order of the store's objects.
    std::vector<KIVO_ASSIGNMENT> assignments() const;
    // Takes the presets and rules of a wizard map; "" for none. False for an unknown map.
    bool select_map(std::string_view map);
    // The map that is selected, "" for none.
    std::string map() const;
    // Whether hidden parameters can be set; at first they cannot.
    void allow_hidden(bool is_allowed);
    // The known name that was probably meant, "" for none.
    std::string nearest_name(std::string_view name) const;

    // --- What follows.

    // No verdict is an error.
    bool is_legal() const;
    // Everything that was set is what took effect.
    bool is_granted() const;
    // What is wrong with the texts of the description, whether or not anything needs them; and
    // what is wrong with their values as things are set now.
    const std::vector<KIVO_FAULT>& faults() const;
    // What may not have been meant, in texts that can be judged as they stand: see the handbook for
    // the ids. And what is wrong with macros that nothing uses, with the ids of faults. In the
    // order in which the store holds the texts; the same whatever is set. Worked out at each call.
    std::vector<KIVO_FAULT> notes() const;
    // Only what does not hold or is not decided; see the handbook for the ids.
    const std::vector<KIVO_VERDICT>& verdicts() const;
    // A parameter or hidden parameter; null for any other name.
    const KIVO_SETTING* find(std::string_view name) const;
    // A port; null for any other name.
    const KIVO_PORT* find_port(std::string_view name) const;
    // All of a kind, in the order of the store's objects.
    std::vector<KIVO_SETTING> settings() const;
    std::vector<KIVO_SETTING> hidden() const;
    std::vector<KIVO_PORT> ports() const;
    std::vector<KIVO_SHOWN_MESSAGE> messages() const;
    std::vector<KIVO_APPLICATION> vectors() const;
    std::vector<KIVO_APPLICATION> maps() const;
    // The commands of a vector that apply; of an undecided entry the first one. Empty for a vector
    // that the store did not hold.
    std::vector<std::string> stimulus(const KIVO_VECTOR_OBJ& vector) const;
    // The pieces of a text whose conditions hold, one a line; of an undecided piece nothing. Null
    // gives "". The walk uses the cursors of no list of the text.
    std::string text(const KIVO_CONDITIONAL_TEXT* text) const;

    // --- Questions. Neither changes anything.

    // Any text of the rule language, as a condition; "fault" (may be null) becomes the first thing
    // that is wrong with it, with an empty id when nothing is.
    KIVO_TRUTH holds(std::string_view condition, KIVO_FAULT* fault = nullptr) const;
    // The same for its value.
    KIVO_EVALUATION evaluate(std::string_view expression) const;

    // The values that a setting can take.
    KIVO_LEGAL_VALUES legal_values(std::string_view name, KIVO_LEGAL_SCOPE scope,
                                   KIVO_EFFORT effort = {}) const;
    // How a verdict or a value comes about, whether it holds or not.
    KIVO_WHY why(const KIVO_SUBJECT& subject) const;
    // The settings that make a verdict fail, of which none can be left out; what is at its default
    // is left out first. Empty when it holds, or fails whatever is set.
    KIVO_CONFLICT conflict(const KIVO_SUBJECT& subject, KIVO_EFFORT effort = {}) const;
    // Changes of one setting after which a verdict holds, the configuration is legal and nothing
    // that was granted is overridden: every item of lists, the nearest whole numbers below and
    // above. When there are none, changes of two settings. The best first: those that change the
    // fewest given settings, then the nearest values.
    // "are_all_tried" (may be null) becomes false when the effort did not suffice: there may be
    // more of them then, or better ones.
    std::vector<KIVO_REPAIR> repairs(const KIVO_SUBJECT& subject, KIVO_EFFORT effort = {},
                                     bool* are_all_tried = nullptr) const;

    // What may have changed since the last call, each once.
    std::vector<KIVO_CHANGE> take_changes();

private:
    friend KIVO_SESSION_API void kivo_store_results(const KIVO_SESSION& session, KIVO_INFO& info);
    friend KIVO_SESSION_API std::string kivo_write_instance(const KIVO_SESSION& session,
                                                            const KIVO_INSTANCE_OPTIONS& options,
                                                            std::vector<std::string>* problems);
    friend KIVO_SESSION_API KIVO_SENSE kivo_judge_sense(const KIVO_SESSION& session,
                                                        const KIVO_EFFORT& effort);

    struct KIVO_SESSION_LOCAL Inside;
    KIVO_SESSION_LOCAL explicit KIVO_SESSION(std::unique_ptr<Inside> inside);
    std::unique_ptr<Inside> inside_;
};

// The usual text of an answer: the rule with its place, below it what decides, each with its
// source, indented below what it decides; then the conflict and the repairs, when there are any.
// Places are those that the store knows. Lines end with a newline.
KIVO_SESSION_API std::string kivo_why_text(const KIVO_WHY& why, const KIVO_CONFLICT& conflict,
                                           const std::vector<KIVO_REPAIR>& repairs,
                                           const KIVO_INFO& info);

// Writes what takes effect into current_value of the store's objects (of a port its constant, else
// its state) and their order of dependency, from 0, into dependency_position. Objects that the
// session does not know are left alone.
KIVO_SESSION_API void kivo_store_results(const KIVO_SESSION& session, KIVO_INFO& info);
