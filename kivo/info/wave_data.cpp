#include <memory>
#include <utility>
#include <vector>

#include "kivo/info/internal/attribute_table.h"
#include "kivo/info/internal/reader.h"
#include "kivo/objects/conditional_text.h"
#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/owning.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/toolkit/internal/text_view.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
constexpr MessageText kUnknownAttribute = {
    MessageId::kVectorAttribute,
    "Attribute {word} is not a recognized attribute for vector stimulus (found in vector {object} )"};
// Says "wave" for custom vectors too; hosts match on the text.
constexpr MessageText kUnknownTruncation = {
    MessageId::kVectorTruncation,
    "Attribute DISPLAY_TRUNCATION has illegal value {word} in wave ( {object} ). Valid values are HIGH and LOW"};
constexpr MessageText kUnknownSubTag = {
    MessageId::kVectorSubTag,
    "Unrecognized Sub tag {word} for {element} tag"};
constexpr MessageText kNoStimulusInThen = {
    MessageId::kThenWithoutStimulus,
    "THEN tag under WAVE tag should have a STIM or VECTOR sub-tag"};
constexpr MessageText kNoStimulusInElse = {
    MessageId::kElseWithoutStimulus,
    "ELSE tag under WAVE tag should have a STIM or VECTOR sub-tag"};
constexpr MessageText kSurplusElse = {
    MessageId::kSurplusElse,
    "There are more stimulus in the ELSE part of the condition, rather than in the THEN section"};

enum class SubTag {
    kUnknown, kCaption, kDescription, kDisplay, kElse, kIf, kStimulus, kThen, kWaveCondition,
};

struct SubTagRow {
    std::string_view word;
    SubTag tag;
};

constexpr SubTagRow kSubTags[] = {
    { "CAPTION",        SubTag::kCaption       },
    { "DESCRIPTION",    SubTag::kDescription   },
    { "DISPLAY",        SubTag::kDisplay       },
    { "ELSE",           SubTag::kElse          },
    { "IF",             SubTag::kIf            },
    { "STIM",           SubTag::kStimulus      },
    { "THEN",           SubTag::kThen          },
    { "VECTOR",         SubTag::kStimulus      },
    { "WAVE_CONDITION", SubTag::kWaveCondition },
};

struct TruncationRow {
    std::string_view word;
    bool truncates_low;
};

constexpr TruncationRow kTruncations[] = {
    { "HIGH", false },
    { "LOW",  true  },
};
// clang-format on

SubTag sub_tag(std::string_view tag) {
    const SubTagRow* const row = find_row(kSubTags, tag);
    return row == nullptr ? SubTag::kUnknown : row->tag;
}

void gather_stimulus_tags(std::uint32_t, std::vector<std::string>& words) {
    for (const SubTagRow& row : kSubTags) {
        if (row.tag == SubTag::kStimulus) {
            words.emplace_back(row.word);
        }
    }
}

using Reading = AttributeReading<KIVO_VECTOR_OBJ>;

void set_truncation(const Reading& reading, std::string_view value) {
    if (const TruncationRow* row = find_row(kTruncations, value)) {
        reading.object.truncate_low = row->truncates_low;
    } else {
        reading.refuse(kUnknownTruncation, "DISPLAY_TRUNCATION", value, kWordsOf<kTruncations>);
    }
}

// clang-format off
constexpr AttributeRow<KIVO_VECTOR_OBJ> kAttributes[] = {
    { "DISPLAY_TRUNCATION", set_truncation                          },
    { "INDEX",              set_number<&KIVO_VECTOR_OBJ::index>     },
    { "MAX_TIME",           set_number<&KIVO_VECTOR_OBJ::max_time>  },
    { "NAME",               nullptr                                 },
    { "TIME_STEP",          set_number<&KIVO_VECTOR_OBJ::time_step> },
};
// clang-format on

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
            KIVO_ITEMS::add(
                vector_.stimulus_list,
                std::make_unique<KIVO_RULE_ELEMENT>(pending_[i].text, alternatives[i], condition_,
                                                    KIVO_RULE_FORCED_VALUE, pending_[i].mark));
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

KIVO_MESSAGE no_stimulus(const MessageText& says, const KIVO_XML_ELEMENT& parent,
                         const KIVO_XML_ELEMENT& sub) {
    return unknown_sub_tag(says, parent, sub, {gather_stimulus_tags, 0});
}

void read_then(KIVO_XML_ELEMENT& element, StimulusGroups& groups, const MessagePoster& poster) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        if (sub_tag(sub.tag_name()) == SubTag::kStimulus) {
            groups.add_command(sub);
        } else {
            poster.post(no_stimulus(kNoStimulusInThen, element, sub));
        }
    }
}

void read_else(KIVO_XML_ELEMENT& element, StimulusGroups& groups, const MessagePoster& poster) {
    std::vector<std::string_view> alternatives;
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        if (sub_tag(sub.tag_name()) == SubTag::kStimulus) {
            alternatives.push_back(sub.text());
        } else {
            poster.post(no_stimulus(kNoStimulusInElse, element, sub));
        }
    }
    if (!groups.end_group(std::move(alternatives))) {
        poster.post({.says = kSurplusElse, .mark = element.mark(), .element = element.tag_name()});
    }
}

std::unique_ptr<KIVO_RULE_ELEMENT> make_condition(KIVO_XML_ELEMENT& element) {
    return std::make_unique<KIVO_RULE_ELEMENT>("", "", element.text(), KIVO_RULE_FORCED_VALUE,
                                               element.mark());
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
            post(missing_name(MessageId::kVectorName, element));
            continue;
        }
        KIVO_VECTOR_OBJ* vector = add_vector_object(name);
        if (vector == nullptr) {
            continue;
        }
        if (vector->mark.file == 0) {
            vector->mark = element.mark();
        }
        read_attributes<kAttributes>(
            Reading{*vector, element, MessagePoster(this).about(vector->name)}, kUnknownAttribute);
        process_vector_sub_elements(element, *vector);
    }
}

void KIVO_INFO::process_vector_sub_elements(KIVO_XML_ELEMENT& element, KIVO_VECTOR_OBJ& vector) {
    const MessagePoster poster = MessagePoster(this).about(vector.name);
    StimulusGroups groups(vector);
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        switch (sub_tag(sub.tag_name())) {
            case SubTag::kStimulus:
                groups.flush();
                groups.add_command(sub);
                break;
            case SubTag::kIf:
                groups.flush();
                groups.begin_condition(sub.text());
                break;
            case SubTag::kThen:
                read_then(sub, groups, poster);
                break;
            case SubTag::kElse:
                read_else(sub, groups, poster);
                break;
            case SubTag::kCaption:
                vector.caption = sub.text();
                break;
            case SubTag::kDescription:
                KIVO_OWNING::replace(vector, &KIVO_VECTOR_OBJ::description,
                                     process_conditional_text(sub), loaded_->store);
                break;
            case SubTag::kWaveCondition:
                KIVO_OWNING::replace(vector, &KIVO_VECTOR_OBJ::wave_condition, make_condition(sub),
                                     loaded_->store);
                break;
            case SubTag::kDisplay:
                process_display_format_at(&vector, sub.text(), sub.tag_name(), sub.mark());
                break;
            case SubTag::kUnknown:
                poster.post(unknown_sub_tag(kUnknownSubTag, element, sub, kWordsOf<kSubTags>));
                break;
        }
    }
    groups.flush();
}
