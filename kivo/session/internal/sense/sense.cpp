#include "kivo/session/internal/sense/sense.h"

#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

// What explains others comes before them; what is least is asked last.
constexpr void (*kTopics[])(SenseRun&) = {
    judge_cycles,       judge_uses,   judge_ranges, judge_elements, judge_rules,  judge_messages,
    judge_applications, judge_forces, judge_ports,  judge_defaults, judge_values, judge_always,
};

}  // namespace

KIVO_SENSE_FINDING& SenseRun::add_mark(const char* id, std::uint32_t object, KIVO_MARK mark,
                                       std::string says) {
    KIVO_SENSE_FINDING& finding = result.findings.emplace_back();
    finding.id = id;
    finding.text = std::move(says);
    finding.object = name_of(object);
    finding.mark = mark;
    return finding;
}

KIVO_SENSE_FINDING& SenseRun::add_text(const char* id, std::uint32_t text, std::string says) {
    const SourceText& source = asker.description().texts[text];
    KIVO_SENSE_FINDING& finding = add_mark(id, source.object, source.mark, std::move(says));
    finding.element = source.element;
    finding.attribute = source.attribute;
    finding.source = source.text;
    return finding;
}

KIVO_SENSE_FINDING& SenseRun::add_object(const char* id, std::uint32_t object, std::string says) {
    const Object& each = asker.description().objects[object];
    KIVO_SENSE_FINDING& finding = add_mark(id, object, each.mark, std::move(says));
    finding.element = is_port(each.kind) ? "PORT" : is_parameter(each.kind) ? "PARAMETER" : "MACRO";
    finding.attribute = "NAME";
    finding.source = each.name;
    return finding;
}

KIVO_SENSE_FINDING& SenseRun::add_element(const char* id, const Element& element,
                                          std::string says) {
    const std::uint32_t text = element.condition != kNone ? element.condition
                               : element.first != kNone   ? element.first
                                                          : element.second;
    return text != kNone ? add_text(id, text, std::move(says))
                         : add_mark(id, element.object, element.mark, std::move(says));
}

std::string SenseRun::name_of(std::uint32_t object) const {
    return object == kNone ? std::string() : std::string(asker.description().objects[object].name);
}

std::string SenseRun::name_of(const Element& element) const {
    const std::uint32_t text = element.first != kNone ? element.first : element.condition;
    return std::string(text == kNone ? "rule" : asker.description().texts[text].element) + " of " +
           name_of(element.object);
}

std::string SenseRun::found_text() {
    std::string text;
    for (const Change& change : asker.found()) {
        if (change.text != asked_text_of(asker.start(), change.object)) {
            text += " " + name_of(change.object) + "=" + change.text;
        }
    }
    return text.empty() ? " with everything at its default" : " with" + text;
}

void want(std::vector<Wanted>& wanted, WantedKind kind, std::uint32_t item) {
    if (item != kNone) {
        wanted.push_back({kind, item, kNone, {}, {}});
    }
}

KIVO_SENSE judge_sense(std::shared_ptr<const Model> model, const KIVO_EFFORT& effort) {
    KIVO_SENSE result;
    Asker asker(std::move(model), effort);
    SenseRun run{asker, result, {}, {}};
    for (const auto topic : kTopics) {
        topic(run);
    }
    result.undecided = asker.undecided();
    return result;
}

}  // namespace kivo_session
