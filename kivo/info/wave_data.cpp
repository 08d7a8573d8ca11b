#include <utility>
#include <vector>

#include "kivo/info/internal/reader.h"
#include "kivo/objects/conditional_text.h"
#include "kivo/objects/info.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

bool is_stimulus(std::string_view tag) {
    return tag == "STIM" || tag == "VECTOR";
}

// Gathers the commands of one vector element into stimulus entries. Commands are pending until it
// is known whether an ELSE belongs to them.
class StimulusGroups {
public:
    explicit StimulusGroups(KIVO_VECTOR_OBJ& vector) : vector_(vector) {}

    void add_command(KIVO_XML_ELEMENT& element) {
        pending_.push_back({element.text(), element.mark()});
    }

    void begin_condition(std::string_view condition) { condition_ = condition; }

    // Ends the group: every pending command becomes an entry without alternative.
    void flush() { end_group({}); }

    // Ends the group with the alternatives, position by position. False when there are more of
    // them than commands; those of an empty group are dropped.
    bool end_group(std::vector<std::string_view> alternatives) {
        const bool fits = pending_.empty() || alternatives.size() <= pending_.size();
        alternatives.resize(pending_.size());
        for (std::size_t i = 0; i < pending_.size(); ++i) {
            vector_.add_vector_stimulus(new KIVO_RULE_ELEMENT(pending_[i].text, alternatives[i],
                                                              condition_, KIVO_RULE_FORCED_VALUE,
                                                              pending_[i].mark));
        }
        pending_.clear();
        condition_ = {};
        return fits;
    }

private:
    struct Command {
        std::string_view text;
        KIVO_MARK mark;
    };

    KIVO_VECTOR_OBJ& vector_;
    std::vector<Command> pending_;
    std::string_view condition_;
};

void read_then(KIVO_XML_ELEMENT& element, StimulusGroups& groups, KIVO_MESSAGE_LIST& messages) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        if (is_stimulus(sub.tag_name())) {
            groups.add_command(sub);
        } else {
            MessageCollector(messages, sub.mark())
                .add(KIVO_MESSAGE_ID::kThenWithoutStimulus,
                     "THEN tag under WAVE tag should have a STIM or VECTOR sub-tag");
        }
    }
}

void read_else(KIVO_XML_ELEMENT& element, StimulusGroups& groups, KIVO_MESSAGE_LIST& messages) {
    std::vector<std::string_view> alternatives;
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        if (is_stimulus(sub.tag_name())) {
            alternatives.push_back(sub.text());
        } else {
            MessageCollector(messages, sub.mark())
                .add(KIVO_MESSAGE_ID::kElseWithoutStimulus,
                     "ELSE tag under WAVE tag should have a STIM or VECTOR sub-tag");
        }
    }
    if (!groups.end_group(std::move(alternatives))) {
        MessageCollector(messages, element.mark())
            .add(KIVO_MESSAGE_ID::kSurplusElse,
                 "There are more stimulus in the ELSE part of the condition, rather than in the "
                 "THEN section");
    }
}

}  // namespace

void KIVO_INFO::process_vector_stimulus(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        const std::string_view tag = element.tag_name();
        if (tag != "WAVE" && tag != "CUSTOM_VECTOR") {
            continue;
        }
        const std::string name(name_attribute(element));
        if (name.empty()) {
            post({KIVO_MESSAGE_ID::kVectorName, element.mark(),
                  compose("Name atrribute is missing from ", tag, " tag ")});
            continue;
        }
        KIVO_VECTOR_OBJ* vector = add_vector_object(name);
        if (vector == nullptr) {
            continue;
        }
        if (vector->mark.file == 0) {
            vector->mark = element.mark();
        }
        process_vector_attributes(element, *vector);
        process_vector_sub_elements(element, *vector);
    }
}

void KIVO_INFO::process_vector_attributes(KIVO_XML_ELEMENT& element, KIVO_VECTOR_OBJ& vector) {
    for (const auto& [name, value] : element.attributes()) {
        if (name == "MAX_TIME") {
            vector.max_time = to_int32(value);
        } else if (name == "TIME_STEP") {
            vector.time_step = to_int32(value);
        } else if (name == "INDEX") {
            vector.index = to_int32(value);
        } else if (name == "DISPLAY_TRUNCATION") {
            if (value == "HIGH" || value == "LOW") {
                vector.truncate_low = value == "LOW";
                continue;
            }
            // Says "wave" for custom vectors too; hosts match on the text.
            post({KIVO_MESSAGE_ID::kVectorTruncation, element.mark(),
                  compose("Attribute DISPLAY_TRUNCATION has illegal value ", value, " in wave ( ",
                          vector.name, " ). Valid values are HIGH and LOW")});
        } else if (name != "NAME") {
            post({KIVO_MESSAGE_ID::kVectorAttribute, element.mark(),
                  compose("Attribute ", name,
                          " is not a recognized attribute for vector stimulus (found in vector ",
                          vector.name, " )")});
        }
    }
}

void KIVO_INFO::process_vector_sub_elements(KIVO_XML_ELEMENT& element, KIVO_VECTOR_OBJ& vector) {
    StimulusGroups groups(vector);
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        const std::string_view tag = sub.tag_name();
        KIVO_MESSAGE_LIST messages;
        if (is_stimulus(tag) || tag == "IF") {
            groups.flush();
        }
        if (is_stimulus(tag)) {
            groups.add_command(sub);
        } else if (tag == "IF") {
            groups.begin_condition(sub.text());
        } else if (tag == "THEN") {
            read_then(sub, groups, messages);
        } else if (tag == "ELSE") {
            read_else(sub, groups, messages);
        } else if (tag == "CAPTION") {
            vector.caption = sub.text();
        } else if (tag == "DESCRIPTION") {
            retire(vector.description);
            vector.description = process_conditional_text(sub);
        } else if (tag == "WAVE_CONDITION") {
            retire(vector.wave_condition);
            vector.wave_condition =
                new KIVO_RULE_ELEMENT("", "", sub.text(), KIVO_RULE_FORCED_VALUE, sub.mark());
        } else if (tag == "DISPLAY") {
            process_display_format_at(&vector, sub.text(), sub.mark());
        } else {
            post({KIVO_MESSAGE_ID::kVectorSubTag, sub.mark(),
                  compose("Unrecognized Sub tag ", tag, " for ", element.tag_name(), " tag")});
        }
        copy_messages(std::move(messages));
    }
    groups.flush();
}
