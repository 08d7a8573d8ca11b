#include "kivo/session/internal/engine/report.h"

#include <algorithm>
#include <utility>

#include "kivo/session/internal/engine/leaf_rows.h"

namespace kivo_session {

namespace {

KIVO_SEVERITY severity_of_message(Severity severity) {
    switch (severity) {
        case Severity::kError:
            return KIVO_SEVERITY::kError;
        case Severity::kCriticalWarning:
            return KIVO_SEVERITY::kCriticalWarning;
        case Severity::kWarning:
            return KIVO_SEVERITY::kWarning;
        case Severity::kInfo:
            break;
    }
    return KIVO_SEVERITY::kInfo;
}

KIVO_OBJ_TYPE type_of(ObjectKind kind) {
    switch (kind) {
        case ObjectKind::kInteger:
            return KIVO_OBJ_INTEGER_PARAMETER;
        case ObjectKind::kString:
            return KIVO_OBJ_STRING_PARAMETER;
        case ObjectKind::kHidden:
            return KIVO_OBJ_HIDDEN_PARAMETER;
        case ObjectKind::kInput:
            return KIVO_OBJ_INPUT_PORT;
        case ObjectKind::kOutput:
            return KIVO_OBJ_OUTPUT_PORT;
        case ObjectKind::kBidir:
            return KIVO_OBJ_BIDIR_PORT;
        case ObjectKind::kBuried:
            return KIVO_OBJ_BURIED_PORT;
        case ObjectKind::kMacro:
            break;
    }
    return KIVO_OBJ_MACRO;
}

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

// What was found wrong with a text when it was compiled; null when it was found later.
const Fault* fault_that_spoils(const Model& model, Reason reason) {
    const auto wanted = std::make_pair(reason.text(), reason.offset());
    auto each = std::partition_point(
        model.faults.begin(), model.faults.end(), [&wanted](const TextFault& fault) {
            return std::make_pair(fault.text, fault.fault.offset) < wanted;
        });
    for (; each != model.faults.end() && each->text == wanted.first &&
           each->fault.offset == wanted.second;
         ++each) {
        if (each->fault.id == reason.fault_id()) {
            return &each->fault;
        }
    }
    return nullptr;
}

}  // namespace

std::vector<KIVO_VERDICT> Reporter::verdicts() {
    verdicts_.clear();
    told_.clear();
    collect_value_faults();
    for (std::uint32_t leaf = 0; leaf < model_.leaves.size(); ++leaf) {
        collect_leaf(leaf);
    }
    return std::move(verdicts_);
}

void Reporter::collect_value_faults() {
    for (std::uint32_t i = 0; i < model_.object_count(); ++i) {
        const ObjectKind kind = description_.objects[i].kind;
        if (kind == ObjectKind::kMacro) {
            continue;
        }
        collect_faults(engine_.value(i), KIVO_SEVERITY::kError);
        if (is_port(kind)) {
            collect_faults(engine_.constant(i), KIVO_SEVERITY::kError);
        }
        if (engine_.needs_missing_default(i)) {
            add_fault(
                Reason::fault(FaultId::kDefaultIndex, description_.objects[i].default_fault, 0),
                KIVO_SEVERITY::kError);
        }
        if (engine_.is_lost_in_cycle(i)) {
            add_cycle(i);
        }
    }
}

void Reporter::collect_leaf(std::uint32_t number) {
    const Leaf& leaf = model_.leaves[number];
    const Value result = engine_.result(number);
    if (leaf.kind == LeafKind::kMessage) {
        collect_message(number);
    }
    if (!is_judged(leaf.kind)) {
        if (result.is_unknown()) {
            collect_faults(result, KIVO_SEVERITY::kWarning);
        }
        return;
    }
    const bool is_spoiled = engine_.needs_spoiled_text(number);
    if (is_spoiled) {
        collect_own_faults(leaf);
    }
    if (result.is_false()) {
        add(number, false);
    } else if (result.is_unknown() && !is_spoiled &&
               engine_.reasons().is_more_than_run_time(result.reasons())) {
        add(number, true);
    }
}

void Reporter::collect_message(std::uint32_t number) {
    const Message& message = description_.messages[model_.leaves[number].item];
    if (message.severity == Severity::kError && is_shown(message, engine_.result(number))) {
        add(number, false);
    }
}

void Reporter::collect_faults(Value unknown, KIVO_SEVERITY severity) {
    if (!unknown.is_unknown()) {
        return;
    }
    for (const Reason reason : engine_.reasons().reasons(unknown.reasons())) {
        if (reason.kind() == ReasonKind::kFault) {
            add_fault(reason, severity);
        }
    }
}

void Reporter::collect_own_faults(const Leaf& leaf) {
    const KIVO_SEVERITY severity = severity_of(description_, leaf) == KIVO_SEVERITY::kError
                                       ? KIVO_SEVERITY::kError
                                       : KIVO_SEVERITY::kWarning;
    std::vector<std::uint32_t> texts;
    own_texts(description_, leaf, texts);
    for (const std::uint32_t text : texts) {
        if (model_.is_spoiled(text)) {
            for (const Reason reason : model_.spoiled[model_.texts[text].spoiled]) {
                add_fault(reason, severity);
            }
        }
    }
}

void Reporter::add_fault(Reason reason, KIVO_SEVERITY severity) {
    const auto [place, is_new] = told_.try_emplace(reason, verdicts_.size());
    if (!is_new) {
        KIVO_VERDICT& earlier = verdicts_[place->second];
        earlier.severity = std::min(earlier.severity, severity);
        return;
    }
    const KIVO_FAULT found = fault(reason);
    KIVO_VERDICT verdict;
    verdict.id = "fault";
    verdict.severity = severity;
    verdict.is_undecided = true;
    verdict.subject = {found.object,
                       static_cast<std::uint32_t>(model_.leaves.size()) + reason.text()};
    verdict.mark = found.mark;
    verdict.text = found.element + (found.attribute.empty() ? "" : ", " + found.attribute) + ": " +
                   (found.source.empty() ? "" : quoted(found.source) + ": ") + found.text + " [" +
                   found.id + "]";
    verdicts_.push_back(std::move(verdict));
}

void Reporter::add_cycle(std::uint32_t object) {
    KIVO_VERDICT verdict;
    verdict.id = "fault";
    verdict.is_undecided = true;
    verdict.subject = {name_of(object), static_cast<std::uint32_t>(model_.leaves.size() +
                                                                   model_.texts.size() + object)};
    verdict.mark = description_.objects[object].mark;
    verdict.text = name_of(object) +
                   " is not known: rules that depend on one another in a circle "
                   "do not come to rest";
    verdicts_.push_back(std::move(verdict));
}

void Reporter::add(std::uint32_t number, bool is_undecided) {
    verdicts_.push_back(verdict(number, is_undecided));
}

KIVO_VERDICT Reporter::verdict(std::uint32_t number, bool is_undecided) {
    const Leaf& leaf = model_.leaves[number];
    KIVO_VERDICT verdict;
    verdict.severity = severity_of(description_, leaf);
    const bool is_advice =
        leaf.kind == LeafKind::kRule && verdict.severity == KIVO_SEVERITY::kAdvice;
    verdict.id = is_advice ? "advice" : row_of(leaf.kind).id;
    verdict.is_undecided = is_undecided;
    verdict.subject = {name_of(leaf.object), number};
    verdict.mark = mark_of(number);
    verdict.text = text_of(number, is_undecided);
    return verdict;
}

KIVO_MARK Reporter::mark_of(std::uint32_t number) const {
    const Leaf& leaf = model_.leaves[number];
    switch (leaf.kind) {
        case LeafKind::kForcesDisagree:
        case LeafKind::kStatesDisagree:
        case LeafKind::kPortForcesDisagree:
        case LeafKind::kForcedButConnected: {
            const std::uint32_t culprit = engine_.culprit(number);
            return culprit == kNone ? description_.objects[leaf.object].mark
                                    : description_.elements[culprit].mark;
        }
        case LeafKind::kRange:
        case LeafKind::kValueRule:
        case LeafKind::kConstantRange:
        case LeafKind::kPortRange:
            return description_.elements[leaf.item].mark;
        case LeafKind::kRule:
            return description_.rules[leaf.item].mark;
        case LeafKind::kMessage:
            return description_.messages[leaf.item].mark;
        default:
            return leaf.object == kNone ? KIVO_MARK() : description_.objects[leaf.object].mark;
    }
}

std::string Reporter::value_text(std::uint32_t object) const {
    const Value value = engine_.value(object);
    return value.is_unknown() ? "not known"
           : value.is_text()  ? quoted(engine_.text_of(value))
                              : engine_.text_of(value);
}

std::string Reporter::state_text(std::uint32_t port) const {
    const Value state = engine_.value(port);
    if (state.is_unknown()) {
        return "not known";
    }
    const std::string word = word_of(static_cast<PortState>(state.low));
    return engine_.is_tied(port) ? word + ":" + engine_.text_of(engine_.constant(port)) : word;
}

std::string Reporter::effective_text(std::uint32_t object) const {
    return is_port(description_.objects[object].kind) ? state_text(object) : value_text(object);
}

std::string Reporter::limit_text(std::uint32_t text) {
    const Value value = engine_.evaluate_text(text);
    std::string source(description_.texts[text].text);
    if (value.is_unknown() || engine_.text_of(value) == source) {
        return source;
    }
    return engine_.text_of(value) + " (" + source + ")";
}

std::string Reporter::limits_text(const Element& element) {
    const std::string greatest = element.first == kNone ? std::string() : limit_text(element.first);
    if (element.second == kNone) {
        return "at most " + greatest;
    }
    return "from " + limit_text(element.second) + " to " + greatest;
}

std::string Reporter::rule_text(std::uint32_t text) const {
    Expression expression;
    const std::string_view source = description_.texts[text].text;
    parse(source, expression);
    if (expression.fault) {
        return std::string(source);
    }
    const auto part = [&](std::uint32_t root) { return print(source, expression.nodes, root); };
    const bool is_rule = description_.texts[text].role == TextRole::kValueRule;
    if (const auto found = is_rule ? find_implication(source, expression.nodes) : std::nullopt) {
        return "if " + part(found->condition) + " then " + part(found->consequence) +
               (found->alternative ? " else " + part(*found->alternative) : "");
    }
    return part(static_cast<std::uint32_t>(expression.nodes.size()) - 1);
}

std::string Reporter::text_of(std::uint32_t number, bool is_undecided) {
    const Leaf& leaf = model_.leaves[number];
    const std::string name = name_of(leaf.object);
    const std::string fails = is_undecided ? " is not decided: " : " fails: ";
    switch (leaf.kind) {
        case LeafKind::kNeedsValue:
            return name + " needs a value";
        case LeafKind::kNotInList: {
            std::string list;
            const Range items = description_.objects[leaf.object].items;
            for (std::uint32_t i = items.begin; i < items.end; ++i) {
                list += (list.empty() ? "" : ", ") +
                        std::string(description_.texts[description_.items[i]].text);
            }
            return name + " is " + value_text(leaf.object) + ", not one of " + list;
        }
        case LeafKind::kOverridden: {
            const Given* given = engine_.given(leaf.object);
            return name + " was set to " + (given == nullptr ? "" : given->text) +
                   ", but a rule makes it " + effective_text(leaf.object);
        }
        case LeafKind::kForcesDisagree:
        case LeafKind::kPortForcesDisagree:
            return "two rules force different values on " + name + "; the first counts";
        case LeafKind::kStatesDisagree:
            return "two rules give " + name + " different states; the first counts";
        case LeafKind::kRange: {
            const Element& element = description_.elements[leaf.item];
            return name + " is " + value_text(leaf.object) + ", and must be " +
                   limits_text(element);
        }
        case LeafKind::kValueRule:
            return "the rule of " + name + fails +
                   rule_text(description_.elements[leaf.item].condition);
        case LeafKind::kConstantRange:
        case LeafKind::kPortRange: {
            const Element& element = description_.elements[leaf.item];
            return engine_.is_tied(leaf.object)
                       ? name + " is tied to " + engine_.text_of(engine_.constant(leaf.object)) +
                             ", and must be " + limits_text(element)
                       : "the range of " + name + " is empty: " + limits_text(element);
        }
        case LeafKind::kTooWide:
            return name + " is tied to " + engine_.text_of(engine_.constant(leaf.object)) +
                   ", which does not fit its " + engine_.text_of(engine_.width(leaf.object)) +
                   " bits";
        case LeafKind::kPortWidth:
            return "the width of " + name + " is " +
                   limit_text(description_.objects[leaf.object].width) +
                   ", and must be a whole number above 0";
        case LeafKind::kPortWidth2d:
            return "the second width of " + name + " is " +
                   limit_text(description_.objects[leaf.object].width2d) +
                   ", and must be a whole number above 0";
        case LeafKind::kPortNeedsValue:
            return name + " is not connected and has no value";
        case LeafKind::kForcedButConnected:
            return "a rule forces a value on " + name + ", which is connected";
        case LeafKind::kRule:
            return "the rule" + fails + rule_text(description_.rules[leaf.item].condition);
        case LeafKind::kMessage: {
            const Message& message = description_.messages[leaf.item];
            return std::string(engine_.result(number).is_true() ? message.shown
                                                                : message.otherwise);
        }
        default:
            return {};
    }
}

std::vector<KIVO_FAULT> Reporter::faults() {
    std::vector<KIVO_FAULT> result;
    std::vector<Reason> known;
    for (const TextFault& each : model_.faults) {
        const Reason reason = Reason::fault(each.fault.id, each.text, each.fault.offset);
        known.push_back(reason);
        result.push_back(fault(reason));
        result.back().text = each.fault.text;
        result.back().length = each.fault.length;
    }
    std::vector<Reason> found;
    for (std::uint32_t text = 0; text < model_.texts.size(); ++text) {
        const bool is_read = description_.texts[text].role != TextRole::kMacro &&
                             !description_.texts[text].text.empty();
        const Value value = is_read ? engine_.evaluate_text(text) : Value::truth(true);
        if (!value.is_unknown()) {
            continue;
        }
        for (const Reason reason : engine_.reasons().reasons(value.reasons())) {
            if (reason.kind() == ReasonKind::kFault && reason.fault_id() >= FaultId::kIllTyped) {
                found.push_back(reason);
            }
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    for (const Reason reason : found) {
        result.push_back(fault(reason));
    }
    return result;
}

KIVO_FAULT Reporter::fault(Reason reason) const {
    KIVO_FAULT result;
    result.id = fault_name(reason.fault_id());
    result.text = fault_text(reason.fault_id());
    result.offset = reason.offset();
    if (reason.text() >= description_.texts.size()) {
        return result;
    }
    const SourceText& source = description_.texts[reason.text()];
    result.object = name_of(source.object);
    result.element = source.element;
    result.attribute = source.attribute;
    result.source = source.text;
    result.mark = source.mark;
    if (const Fault* const spoils = fault_that_spoils(model_, reason)) {
        result.text = spoils->text;
        result.length = spoils->length;
    }
    return result;
}

std::string Reporter::reason_text(Reason reason) const {
    switch (reason.kind()) {
        case ReasonKind::kFault:
            return std::string("fault ") + fault_name(reason.fault_id());
        case ReasonKind::kCycle:
            return "cycle";
        case ReasonKind::kUnset:
            return "unset " + name_of(reason.object());
        case ReasonKind::kRunTime:
            break;
    }
    return "run-time " + name_of(reason.object());
}

std::vector<KIVO_SHOWN_MESSAGE> Reporter::messages() const {
    std::vector<KIVO_SHOWN_MESSAGE> shown;
    for (std::uint32_t i = 0; i < description_.messages.size(); ++i) {
        const Message& message = description_.messages[i];
        const Value result = engine_.result(model_.first_message + i);
        if (is_shown(message, result)) {
            shown.push_back({severity_of_message(message.severity),
                             std::string(result.is_true() ? message.shown : message.otherwise),
                             message.mark});
        }
    }
    return shown;
}

KIVO_SETTING Reporter::setting(std::uint32_t object) const {
    const auto shown = [this](Value value) {
        return value.is_unknown() ? std::nullopt : std::optional(engine_.text_of(value));
    };
    KIVO_SETTING setting;
    setting.name = name_of(object);
    setting.type = type_of(description_.objects[object].kind);
    setting.asked = shown(engine_.asked(object));
    setting.value = shown(engine_.value(object));
    setting.source = static_cast<KIVO_VALUE_SOURCE>(engine_.source(object));
    setting.settable = engine_.is_settable(object);
    return setting;
}

KIVO_PORT Reporter::port(std::uint32_t object) const {
    KIVO_PORT port;
    port.name = name_of(object);
    port.type = type_of(description_.objects[object].kind);
    const Given* given = engine_.given(object);
    const Value asked = engine_.asked(object);
    if (!asked.is_unknown()) {
        port.asked = word_of(static_cast<PortState>(asked.low));
        if (given != nullptr && given->constant) {
            *port.asked += ":" + engine_.text_of(*given->constant);
        }
    }
    const Value state = engine_.value(object);
    if (!state.is_unknown()) {
        port.state = static_cast<KIVO_OBJ_USAGE_STATE>(state.low);
    }
    port.source = static_cast<KIVO_VALUE_SOURCE>(engine_.source(object));
    const Value width = engine_.width(object);
    if (width.kind == ValueKind::kInteger) {
        port.width = width.low;
    }
    const Value constant = engine_.constant(object);
    if (!constant.is_unknown()) {
        port.tied = engine_.text_of(constant);
    }
    port.settable = engine_.is_settable(object);
    return port;
}

}  // namespace kivo_session
