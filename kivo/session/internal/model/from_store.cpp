#include "kivo/session/internal/model/from_store.h"

#include <algorithm>
#include <unordered_map>

#include "kivo/objects/conditional_text.h"
#include "kivo/objects/info.h"
#include "kivo/objects/text_obj.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/objects/wizard_map.h"
#include "kivo/session/internal/model/description.h"

namespace kivo_session {

namespace {

constexpr const char* kOriginWords[] = {"",      "FORCE_VALUE",    "FORCE_RANGE",
                                        "STATE", "CONSTANT_RANGE", "VALUE_RULE"};

// The items of a list are cut as the store cuts them: it knows more blanks than the rule language.
std::string_view without_white_space(std::string_view text) {
    constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
}

ObjectKind kind_of(KIVO_OBJ_TYPE type) {
    switch (type) {
        case KIVO_OBJ_HIDDEN_PARAMETER:
            return ObjectKind::kHidden;
        case KIVO_OBJ_INPUT_PORT:
            return ObjectKind::kInput;
        case KIVO_OBJ_OUTPUT_PORT:
            return ObjectKind::kOutput;
        case KIVO_OBJ_BIDIR_PORT:
            return ObjectKind::kBidir;
        case KIVO_OBJ_BURIED_PORT:
            return ObjectKind::kBuried;
        case KIVO_OBJ_INTEGER_PARAMETER:
            return ObjectKind::kInteger;
        case KIVO_OBJ_STRING_PARAMETER:
            return ObjectKind::kString;
        case KIVO_OBJ_MACRO:
        case KIVO_OBJ_UNKNOWN:
            break;
    }
    return ObjectKind::kMacro;
}

TextRole value_role(ObjectKind kind) {
    return kind == ObjectKind::kInteger  ? TextRole::kWholeValue
           : kind == ObjectKind::kString ? TextRole::kTextValue
           : kind == ObjectKind::kHidden ? TextRole::kUntypedValue
                                         : TextRole::kWholeValue;
}

// The element that a rule element was made from, also when a host made it and did not say.
std::int32_t origin_of(const KIVO_RULE_ELEMENT& rule, ObjectKind kind) {
    if (rule.origin > KIVO_ORIGIN_UNKNOWN && rule.origin <= KIVO_ORIGIN_VALUE_RULE) {
        return rule.origin;
    }
    switch (rule.rule_kind) {
        case KIVO_RULE_FORCED_RANGE:
        case KIVO_RULE_PORT_RANGE:
            return KIVO_ORIGIN_FORCE_RANGE;
        case KIVO_RULE_CONSTANT_RANGE:
            return KIVO_ORIGIN_CONSTANT_RANGE;
        case KIVO_RULE_REQUIRED:
        case KIVO_RULE_NOT_REQUIRED:
            return KIVO_ORIGIN_VALUE_RULE;
        case KIVO_RULE_PORT_VALUE:
            return KIVO_ORIGIN_FORCE_VALUE;
        default:
            return is_port(kind) ? KIVO_ORIGIN_STATE : KIVO_ORIGIN_FORCE_VALUE;
    }
}

ElementKind element_kind(std::int32_t origin, ObjectKind kind) {
    switch (origin) {
        case KIVO_ORIGIN_FORCE_RANGE:
            return is_port(kind) ? ElementKind::kPortRange : ElementKind::kRange;
        case KIVO_ORIGIN_STATE:
            return ElementKind::kState;
        case KIVO_ORIGIN_CONSTANT_RANGE:
            return ElementKind::kConstantRange;
        case KIVO_ORIGIN_VALUE_RULE:
            return ElementKind::kValueRule;
        default:
            return is_port(kind) ? ElementKind::kPortForce : ElementKind::kForce;
    }
}

class StoreReader {
public:
    StoreReader(const KIVO_INFO& info, Description& description)
        : info_(info), description_(description) {}

    void run() {
        description_.function_name = description_.keep(info_.function_name);
        description_.vhdl_library = description_.keep(info_.vhdl_library);
        read_objects();
        read_maps();
        place_elements();
        read_rules();
        read_messages();
        read_vectors();
        read_help();
    }

private:
    struct Made {
        std::uint32_t object;
        Element element;
    };

    void read_objects();
    void read_object(const KIVO_OBJ_INFO& source, const std::string& key);
    void read_list(const KIVO_OBJ_INFO& source, std::uint32_t index);
    void read_elements(const KIVO_OBJ_INFO& source, std::uint32_t object, std::uint32_t map);
    Element read_element(const KIVO_RULE_ELEMENT& rule, std::uint32_t object, std::uint32_t map);
    void read_maps();
    void read_map(const KIVO_WIZARD_MAP& source);
    std::uint32_t preset_of(const KIVO_OBJ_INFO& source, std::uint32_t object);
    void place_elements();
    void read_rules();
    void read_messages();
    void read_vectors();
    void read_help();
    void read_pieces(KIVO_CONDITIONAL_TEXT* sequence);

    // The number of a text; kNone for an empty one.
    std::uint32_t add(std::string_view text, TextRole role, std::uint32_t object, KIVO_MARK mark,
                      const char* element, const char* attribute) {
        return text.empty() ? kNone
                            : description_.add_text({text, role, object, mark, element, attribute});
    }
    std::uint32_t add_condition(std::string_view text, KIVO_MARK mark, const char* element) {
        return add(text, TextRole::kCondition, kNone, mark, element, "");
    }

    const KIVO_INFO& info_;
    Description& description_;
    std::unordered_map<std::string_view, std::uint32_t> numbers_;
    std::vector<Made> made_;
};

void StoreReader::read_objects() {
    KIVO_OBJ_MAP map = info_.object_map;
    map.reset();
    std::string key;
    while (KIVO_OBJ* record = map.get_next_entry(key)) {
        if (const auto* object = dynamic_cast<KIVO_OBJ_INFO*>(record)) {
            read_object(*object, key);
        }
    }
}

void StoreReader::read_object(const KIVO_OBJ_INFO& source, const std::string& key) {
    const auto index = static_cast<std::uint32_t>(description_.objects.size());
    description_.objects.emplace_back();
    Object& object = description_.objects.back();
    object.name = description_.keep(key);
    object.kind = kind_of(source.obj_type);
    object.mark = source.mark;
    object.connection = static_cast<std::uint8_t>(source.cnx_type & 3);
    object.is_hint = source.is_lpm_hint();
    numbers_.emplace(object.name, index);
    if (object.kind == ObjectKind::kMacro) {
        object.arguments = description_.keep(source.arguments);
        object.default_text = description_.add_text(
            {source.default_value, TextRole::kMacro, index, source.mark, "MACRO", "DEFINITION"});
        return;
    }
    if (is_port(object.kind)) {
        object.is_always_used = source.cnx_type == 2;
        object.usage = static_cast<std::uint8_t>(object.is_always_used ? KIVO_USAGE_USED
                                                                       : source.usage_state & 3);
        object.default_text = add(source.default_value, TextRole::kWholeValue, index, source.mark,
                                  "PORT", "DEFAULT_VALUE");
        object.width =
            add(source.port_width, TextRole::kWidth, index, source.mark, "PORT", "WIDTH");
        object.width2d =
            add(source.port_width2d, TextRole::kWidth, index, source.mark, "PORT", "WIDTH2D");
    } else if (object.kind == ObjectKind::kHidden) {
        object.default_text = add(source.default_value, TextRole::kUntypedValue, index, source.mark,
                                  "PARAMETER", "VALUE");
    } else {
        read_list(source, index);
    }
    read_elements(source, index, kNone);
}

void StoreReader::read_list(const KIVO_OBJ_INFO& source, std::uint32_t index) {
    const TextRole role = value_role(description_.objects[index].kind);
    const auto begin = static_cast<std::uint32_t>(description_.items.size());
    std::uint32_t chosen = kNone;
    const std::string_view wanted = without_white_space(source.default_value);
    if (source.value_array.find(';') != std::string::npos || source.default_index >= 0) {
        for (std::string_view rest = source.value_array; !rest.empty();) {
            const std::size_t end = std::min(rest.find(';'), rest.size());
            const std::string_view item = without_white_space(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
            const std::uint32_t text = add(item, role, index, source.mark, "PARAMETER", "VALUE");
            if (text != kNone) {
                description_.items.push_back(text);
                chosen = chosen == kNone && item == wanted ? text : chosen;
            }
        }
    }
    Object& object = description_.objects[index];
    object.items = {begin, static_cast<std::uint32_t>(description_.items.size())};
    const std::uint32_t size = object.items.end - begin;
    object.has_list = size > 0;
    if (source.default_index >= 0) {
        const auto position = static_cast<std::uint32_t>(source.default_index);
        if (position >= size) {
            object.default_fault = description_.add_text(
                {"", role, index, source.mark, "PARAMETER", "DEFAULT_VALUE_INDEX"});
        }
        chosen = size == 0 ? kNone : description_.items[begin + (position < size ? position : 0)];
    } else if (size > 0 && chosen == kNone) {
        chosen = description_.items[begin];
    }
    object.default_text = size > 0 ? chosen
                                   : add(source.default_value, role, index, source.mark,
                                         "PARAMETER", "DEFAULT_VALUE");
}

void StoreReader::read_elements(const KIVO_OBJ_INFO& source, std::uint32_t object,
                                std::uint32_t map) {
    KIVO_OBJ_LIST rules = source.rule_list;
    rules.reset();
    while (KIVO_OBJ* record = rules.get_next_value()) {
        if (const auto* rule = dynamic_cast<KIVO_RULE_ELEMENT*>(record)) {
            made_.push_back({object, read_element(*rule, object, map)});
        }
    }
}

Element StoreReader::read_element(const KIVO_RULE_ELEMENT& rule, std::uint32_t object,
                                  std::uint32_t map) {
    const ObjectKind kind = description_.objects[object].kind;
    const std::int32_t origin = origin_of(rule, kind);
    const char* word = kOriginWords[origin];
    Element element;
    element.kind = element_kind(origin, kind);
    element.is_required = rule.rule_kind != KIVO_RULE_NOT_REQUIRED;
    element.object = object;
    element.map = map;
    element.mark = rule.mark;
    if (element.kind == ElementKind::kValueRule) {
        element.condition = add(rule.text3, TextRole::kValueRule, object, rule.mark, word, "");
        return element;
    }
    const bool is_range = origin == KIVO_ORIGIN_FORCE_RANGE || origin == KIVO_ORIGIN_CONSTANT_RANGE;
    const TextRole role = is_range                              ? TextRole::kLimit
                          : element.kind == ElementKind::kState ? TextRole::kStateValue
                                                                : value_role(kind);
    element.first = add(rule.text1, role, object, rule.mark, word, is_range ? "MAX" : "V");
    element.second = add(rule.text2, role, object, rule.mark, word, is_range ? "MIN" : "ELSE");
    element.condition = add(rule.text3, TextRole::kCondition, object, rule.mark, word, "IF");
    return element;
}

void StoreReader::read_maps() {
    KIVO_OBJ_MAP maps = info_.wizard_map_map;
    maps.reset();
    std::string key;
    while (KIVO_OBJ* record = maps.get_next_entry(key)) {
        if (const auto* map = dynamic_cast<KIVO_WIZARD_MAP*>(record)) {
            read_map(*map);
        }
    }
}

void StoreReader::read_map(const KIVO_WIZARD_MAP& source) {
    const auto number = static_cast<std::uint32_t>(description_.maps.size());
    WizardMap map;
    map.name = description_.keep(source.name);
    map.module_name = description_.keep(source.module_name);
    map.maps_constants = source.map_constants;
    map.maps_used_ports = source.map_used_ports;
    map.mark = source.mark;
    if (source.condition != nullptr) {
        map.condition =
            add_condition(source.condition->text3, source.condition->mark, "WIZARD_CONDITION");
    }
    map.presets.begin = static_cast<std::uint32_t>(description_.presets.size());
    KIVO_OBJ_MAP objects = source.obj_map;
    objects.reset();
    std::string key;
    while (KIVO_OBJ* record = objects.get_next_entry(key)) {
        const auto* listed = dynamic_cast<KIVO_OBJ_INFO*>(record);
        const auto known = numbers_.find(key);
        if (listed == nullptr || known == numbers_.end() ||
            description_.objects[known->second].kind == ObjectKind::kMacro) {
            continue;
        }
        Preset preset;
        preset.object = known->second;
        preset.usage = static_cast<std::uint8_t>(listed->usage_state & 3);
        preset.value = preset_of(*listed, known->second);
        description_.presets.push_back(preset);
        read_elements(*listed, known->second, number);
    }
    map.presets.end = static_cast<std::uint32_t>(description_.presets.size());
    description_.maps.push_back(map);
}

std::uint32_t StoreReader::preset_of(const KIVO_OBJ_INFO& source, std::uint32_t object) {
    const ObjectKind kind = description_.objects[object].kind;
    if (!is_parameter(kind)) {
        return kNone;
    }
    return add(source.default_value, value_role(kind), object, source.mark, "PARAMETER", "VALUE");
}

// Elements of one object stand together: its own first, then those of each map.
void StoreReader::place_elements() {
    std::stable_sort(made_.begin(), made_.end(), [](const Made& left, const Made& right) {
        return left.object < right.object;
    });
    description_.elements.reserve(made_.size());
    for (const Made& made : made_) {
        Range& range = description_.objects[made.object].elements;
        if (range.end == 0) {
            range.begin = static_cast<std::uint32_t>(description_.elements.size());
        }
        description_.elements.push_back(made.element);
        range.end = static_cast<std::uint32_t>(description_.elements.size());
    }
    made_.clear();
}

void StoreReader::read_rules() {
    KIVO_OBJ_LIST rules = info_.fn_rule_list;
    rules.reset();
    while (KIVO_OBJ* record = rules.get_next_value()) {
        if (const auto* rule = dynamic_cast<KIVO_RULE_ELEMENT*>(record)) {
            description_.rules.push_back({add_condition(rule->text3, rule->mark, "RULE"),
                                          rule->rule_kind != KIVO_RULE_NOT_REQUIRED, rule->mark});
        }
    }
}

void StoreReader::read_messages() {
    KIVO_OBJ_LIST messages = info_.message_list;
    messages.reset();
    while (KIVO_OBJ* record = messages.get_next_value()) {
        const auto* source = dynamic_cast<KIVO_RULE_ELEMENT*>(record);
        if (source == nullptr) {
            continue;
        }
        Message message;
        message.severity = source->rule_kind == KIVO_RULE_ERROR     ? Severity::kError
                           : source->rule_kind == KIVO_RULE_WARNING ? Severity::kWarning
                           : source->rule_kind == KIVO_RULE_CRITICAL_WARNING
                               ? Severity::kCriticalWarning
                               : Severity::kInfo;
        message.shown = description_.keep(source->text1);
        message.otherwise = description_.keep(source->text2);
        message.condition = add_condition(source->text3, source->mark, "MESSAGE");
        message.mark = source->mark;
        description_.messages.push_back(message);
    }
}

void StoreReader::read_vectors() {
    KIVO_OBJ_MAP vectors = info_.vector_map;
    vectors.reset();
    std::string key;
    while (KIVO_OBJ* record = vectors.get_next_entry(key)) {
        const auto* source = dynamic_cast<KIVO_VECTOR_OBJ*>(record);
        if (source == nullptr) {
            continue;
        }
        Vector vector;
        vector.name = description_.keep(key);
        if (source->wave_condition != nullptr) {
            vector.condition = add_condition(source->wave_condition->text3,
                                             source->wave_condition->mark, "WAVE_CONDITION");
        }
        vector.stimuli.begin = static_cast<std::uint32_t>(description_.stimuli.size());
        KIVO_OBJ_LIST stimuli = source->stimulus_list;
        stimuli.reset();
        while (KIVO_OBJ* entry = stimuli.get_next_value()) {
            if (const auto* rule = dynamic_cast<KIVO_RULE_ELEMENT*>(entry)) {
                description_.stimuli.push_back({description_.keep(rule->text1),
                                                description_.keep(rule->text2),
                                                add_condition(rule->text3, rule->mark, "STIM")});
            }
        }
        vector.stimuli.end = static_cast<std::uint32_t>(description_.stimuli.size());
        description_.vectors.push_back(vector);
        read_pieces(source->description);
    }
}

void StoreReader::read_help() {
    if (info_.html_text != nullptr) {
        read_pieces(info_.html_text->intro);
        read_pieces(info_.html_text->end);
    }
}

void StoreReader::read_pieces(KIVO_CONDITIONAL_TEXT* sequence) {
    std::vector<KIVO_CONDITIONAL_TEXT*> waiting{sequence};
    while (!waiting.empty()) {
        KIVO_CONDITIONAL_TEXT* text = waiting.back();
        waiting.pop_back();
        if (text == nullptr) {
            continue;
        }
        if (!text->condition.empty()) {
            description_.pieces.push_back({text, add_condition(text->condition, text->mark, "IF"),
                                           text->else_sub != nullptr || !text->else_text.empty()});
        }
        waiting.push_back(text->then_sub);
        waiting.push_back(text->else_sub);
        KIVO_OBJ_LIST pieces = text->text_elements;
        pieces.reset();
        while (KIVO_OBJ* piece = pieces.get_next_value()) {
            waiting.push_back(dynamic_cast<KIVO_CONDITIONAL_TEXT*>(piece));
        }
    }
}

}  // namespace

void read_store(const KIVO_INFO& info, Description& description) {
    StoreReader(info, description).run();
}

}  // namespace kivo_session
