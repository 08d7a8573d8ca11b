#include "tools/lint/grammar.h"

#include <algorithm>
#include <iterator>

namespace {

static_assert(static_cast<std::size_t>(Context::kCount) <= 64, "contexts are bits of 64");

template <class... More>
constexpr std::uint64_t bits(Context first, More... more) {
    const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(first);
    if constexpr (sizeof...(more) == 0) {
        return bit;
    } else {
        return bit | bits(more...);
    }
}

using enum Context;

constexpr std::uint64_t kForces = bits(kForceValue, kHiddenForceValue, kState);
constexpr std::uint64_t kRanges = bits(kParameterRange, kPortRange, kConstantRange);
constexpr std::uint64_t kForcesWithValue = bits(kForceValue, kHiddenForceValue);

struct ElementRule {
    std::uint64_t parents;
    std::string_view tag;
    Context context;
};

// clang-format off
constexpr ElementRule kElements[] = {
    { bits(kRoot),                "CUSTOM_VECTORS",       kVectors             },
    { bits(kRoot),                "FUNCTION_INFORMATION", kFunctionInformation },
    { bits(kRoot),                "HIDDEN_PARAMETERS",    kHiddenParameters    },
    { bits(kRoot),                "HTML_TEXT",            kHtmlText            },
    { bits(kRoot),                "INCLUDE",              kInclude             },
    { bits(kRoot),                "MACROS",               kMacros              },
    { bits(kRoot),                "MESSAGES",             kMessages            },
    { bits(kRoot),                "MSGS",                 kMessages            },
    { bits(kRoot),                "PARAMETERS",           kParameters          },
    { bits(kRoot),                "PARAMETER_RULES",      kParameters          },
    { bits(kRoot),                "PORTS",                kPorts               },
    { bits(kRoot),                "PORT_RULES",           kPorts               },
    { bits(kRoot),                "RULES",                kRules               },
    { bits(kRoot),                "WAVE_DATA",            kVectors             },
    { bits(kRoot),                "WIZARD_DATA",          kWizardData          },
    { bits(kInclude),             "FILE",                 kIncludedFile        },
    { bits(kFunctionInformation), "START_TIME",           kStartTime           },
    { bits(kFunctionInformation), "TIME_DELTA",           kTimeDelta           },
    { bits(kFunctionInformation), "TIME_SCALE",           kTimeScale           },
    { bits(kFunctionInformation), "VHDL_LIBRARY",         kVhdlLibrary         },
    { bits(kParameters, kWizardData, kWizardMap), "PARAMETER", kParameter      },
    { bits(kPorts, kWizardData, kWizardMap),      "PORT",      kPort           },
    { bits(kHiddenParameters),    "PARAMETER",            kHiddenParameter     },
    { bits(kWizardData),          "WIZARD_MAP",           kWizardMap           },
    { bits(kWizardMap),           "WIZARD_CONDITION",     kWizardCondition     },
    { bits(kParameter, kPort),    "FORCE_VALUE",          kForceValue          },
    { bits(kHiddenParameter),     "FORCE_VALUE",          kHiddenForceValue    },
    { bits(kParameter),           "FORCE_RANGE",          kParameterRange      },
    { bits(kParameter),           "VALUE_RULE",           kValueRule           },
    { bits(kPort),                "CONSTANT_RANGE",       kConstantRange       },
    { bits(kPort),                "FORCE_RANGE",          kPortRange           },
    { bits(kPort),                "STATE",                kState               },
    { kForces | kRanges,          "IF",                   kCondition           },
    { kForces | kRanges,          "WHEN",                 kCondition           },
    { kForces | kRanges,          "WHEN_CMD",             kCondition           },
    { kForcesWithValue,           "ELSE",                 kValueText           },
    { bits(kState),               "ELSE",                 kStateText           },
    { bits(kState),               "THEN",                 kStateText           },
    { bits(kState),               "TO",                   kStateText           },
    { bits(kState),               "V",                    kStateText           },
    { kForcesWithValue,           "THEN",                 kValueText           },
    { kForcesWithValue,           "TO",                   kValueText           },
    { kForcesWithValue,           "V",                    kValueText           },
    { bits(kConstantRange),       "THEN",                 kLimit               },
    { bits(kConstantRange),       "TO",                   kLimit               },
    { bits(kConstantRange),       "V",                    kLimit               },
    { bits(kParameterRange, kPortRange), "MAX",           kLimit               },
    { bits(kParameterRange, kPortRange), "MIN",           kLimit               },
    { bits(kValueRule),           "ELSE",                 kCondition           },
    { bits(kValueRule),           "IF",                   kCondition           },
    { bits(kValueRule),           "THEN",                 kCondition           },
    { bits(kMacros),              "MACRO",                kMacro               },
    { bits(kMacro),               "DEFINITION",           kDefinition          },
    { bits(kRules),               "CONDITION",            kRule                },
    { bits(kRules),               "RULE",                 kRule                },
    { bits(kMessages),            "MESSAGE",              kMessage             },
    { bits(kMessages),            "MSG",                  kMessage             },
    { bits(kMessage),             "ELSE",                 kPlainText           },
    { bits(kMessage),             "IF",                   kCondition           },
    { bits(kMessage),             "TEXT",                 kPlainText           },
    { bits(kMessage),             "THEN",                 kPlainText           },
    { bits(kMessage),             "WHEN",                 kCondition           },
    { bits(kVectors),             "CUSTOM_VECTOR",        kVector              },
    { bits(kVectors),             "WAVE",                 kVector              },
    { bits(kVector),              "CAPTION",              kPlainText           },
    { bits(kVector),              "DESCRIPTION",          kSequence            },
    { bits(kVector),              "DISPLAY",              kDisplay             },
    { bits(kVector),              "ELSE",                 kCommands            },
    { bits(kVector),              "IF",                   kCondition           },
    { bits(kVector),              "THEN",                 kCommands            },
    { bits(kVector),              "WAVE_CONDITION",       kWaveCondition       },
    { bits(kVector, kCommands),   "STIM",                 kStimulus            },
    { bits(kVector, kCommands),   "VECTOR",               kStimulus            },
    { bits(kHtmlText),            "END",                  kSequence            },
    { bits(kHtmlText),            "HEADER",               kPlainText           },
    { bits(kHtmlText),            "INTRO",                kSequence            },
    { bits(kHtmlText),            "TITLE",                kPlainText           },
    { bits(kSequence, kSequencePart), "ELSE",             kSequencePart        },
    { bits(kSequence, kSequencePart), "IF",               kSequenceCondition   },
    { bits(kSequence, kSequencePart), "T",                kSequencePart        },
    { bits(kSequence, kSequencePart), "TEXT",             kSequencePart        },
    { bits(kSequence, kSequencePart), "THEN",             kSequencePart        },
};

constexpr std::string_view kOnOffWords[] = { "OFF", "ON" };
constexpr std::string_view kTrueFalseWords[] = { "FALSE", "TRUE" };
constexpr std::string_view kUsageWords[] = { "CONSTANT", "UNUSED", "USED", "VARIABLE" };
constexpr Keywords kOnOff = { kOnOffWords, std::size(kOnOffWords), "OFF" };
constexpr Keywords kTrueFalse = { kTrueFalseWords, std::size(kTrueFalseWords), "FALSE" };
constexpr Keywords kUsages = { kUsageWords, std::size(kUsageWords), "USED" };

constexpr AttributeRule kAttributes[] = {
    { bits(kInclude),         "FILE",                Meaning::kFileName,    nullptr     },
    { bits(kVhdlLibrary),     "NAME",                Meaning::kLibraries,   nullptr     },
    { bits(kStartTime),       "VALUE",               Meaning::kWholeNumber, nullptr     },
    { bits(kTimeScale),       "VALUE",               Meaning::kTimeScale,   nullptr     },
    { bits(kTimeDelta),       "VALUE",               Meaning::kTime,        nullptr     },
    { bits(kParameter, kPort, kHiddenParameter, kMacro),
                              "NAME",                Meaning::kName,        nullptr     },
    { bits(kParameter, kPort, kMessage), "TYPE",     Meaning::kType,        nullptr     },
    { bits(kParameter, kPort), "CNX_TYPE",           Meaning::kType,        nullptr     },
    { bits(kParameter, kPort), "DEFAULT_VALUE",      Meaning::kValue,       nullptr     },
    { bits(kParameter),       "DEFAULT_VALUE_INDEX", Meaning::kWholeNumber, nullptr     },
    { bits(kParameter),       "LPM_HINT",            Meaning::kWord,        &kOnOff     },
    { bits(kParameter),       "VALUE",               Meaning::kList,        nullptr     },
    { bits(kPort),            "ASYNC",               Meaning::kWord,        &kTrueFalse },
    { bits(kPort),            "CLOCK_PERIOD",        Meaning::kTime,        nullptr     },
    { bits(kPort),            "HIGH_PROBABILITY",    Meaning::kWholeNumber, nullptr     },
    { bits(kPort),            "INITIAL_VEC_STATE",   Meaning::kInitialValue,nullptr     },
    { bits(kPort),            "IS_CLOCK_PORT",       Meaning::kWord,        &kTrueFalse },
    { bits(kPort),            "USAGE",               Meaning::kWord,        &kUsages    },
    { bits(kPort),            "WIDTH",               Meaning::kExpression,  nullptr     },
    { bits(kPort),            "WIDTH2D",             Meaning::kExpression,  nullptr     },
    { bits(kHiddenParameter), "VALUE",               Meaning::kValue,       nullptr     },
    { kForcesWithValue,       "ELSE",                Meaning::kValue,       nullptr     },
    { kForcesWithValue,       "THEN",                Meaning::kValue,       nullptr     },
    { kForcesWithValue,       "TO",                  Meaning::kValue,       nullptr     },
    { kForcesWithValue,       "V",                   Meaning::kValue,       nullptr     },
    { bits(kState),           "ELSE",                Meaning::kState,       &kUsages    },
    { bits(kState),           "THEN",                Meaning::kState,       &kUsages    },
    { bits(kState),           "TO",                  Meaning::kState,       &kUsages    },
    { bits(kState),           "V",                   Meaning::kState,       &kUsages    },
    { bits(kParameterRange, kConstantRange), "THEN", Meaning::kExpression,  nullptr     },
    { bits(kParameterRange, kConstantRange), "TO",   Meaning::kExpression,  nullptr     },
    { bits(kParameterRange, kConstantRange), "V",    Meaning::kExpression,  nullptr     },
    { kRanges,                "MAX",                 Meaning::kExpression,  nullptr     },
    { kRanges,                "MIN",                 Meaning::kExpression,  nullptr     },
    { kForces | kRanges,      "IF",                  Meaning::kCondition,   nullptr     },
    { kForces | kRanges,      "WHEN",                Meaning::kCondition,   nullptr     },
    { kForces | kRanges,      "WHEN_CMD",            Meaning::kCondition,   nullptr     },
    { bits(kMacro),           "ARGUMENTS",           Meaning::kArguments,   nullptr     },
    { bits(kMacro),           "DEFINITION",          Meaning::kExpression,  nullptr     },
    // A rule that is off is told of.
    { bits(kRule),            "ENABLED",             Meaning::kType,        nullptr     },
    { bits(kRule),            "REQUIRED_RULE",       Meaning::kWord,        &kOnOff     },
    { bits(kVector, kWizardMap), "NAME",             Meaning::kTitle,       nullptr     },
    { bits(kVector),          "DISPLAY_TRUNCATION",  Meaning::kType,        nullptr     },
    { bits(kVector),          "INDEX",               Meaning::kWholeNumber, nullptr     },
    { bits(kVector),          "MAX_TIME",            Meaning::kWholeNumber, nullptr     },
    { bits(kVector),          "TIME_STEP",           Meaning::kWholeNumber, nullptr     },
    { bits(kWizardMap),       "MAP_CONSTANTS",       Meaning::kWord,        &kOnOff     },
    { bits(kWizardMap),       "MAP_USED_PORTS",      Meaning::kWord,        &kOnOff     },
    { bits(kWizardMap),       "MODULE_NAME",         Meaning::kText,        nullptr     },
    { bits(kWizardMap),       "WIZARD_NAME",         Meaning::kText,        nullptr     },
    { bits(kWizardCondition), "CONDITION",           Meaning::kCondition,   nullptr     },
};

// One row for each context, in their order.
constexpr ContextRule kContexts[] = {
    { kUnread,              Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kRoot,                Telling::kAlways,  Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kInclude,             Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kIncludedFile,        Telling::kNever,   Telling::kNever,  Meaning::kFileName,       Form::kOther           },
    { kFunctionInformation, Telling::kAlways,  Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kVhdlLibrary,         Telling::kOfFirst, Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kStartTime,           Telling::kOfFirst, Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kTimeScale,           Telling::kOfFirst, Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kTimeDelta,           Telling::kOfFirst, Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kParameters,          Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kPorts,               Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kHiddenParameters,    Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kMacros,              Telling::kAlways,  Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kRules,               Telling::kAlways,  Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kMessages,            Telling::kAlways,  Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kVectors,             Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kWizardData,          Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kHtmlText,            Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kParameter,           Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kPort,                Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kHiddenParameter,     Telling::kNever,   Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kForceValue,          Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kForce           },
    { kHiddenForceValue,    Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kForce           },
    { kState,               Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kForce           },
    { kParameterRange,      Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kRange           },
    { kPortRange,           Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kRange           },
    { kConstantRange,       Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kRange           },
    { kValueRule,           Telling::kAlways,  Telling::kNever,  Meaning::kCondition,      Form::kValueRule       },
    { kMacro,               Telling::kOfFirst, Telling::kNever,  Meaning::kNotRead,        Form::kMacro           },
    { kDefinition,          Telling::kNever,   Telling::kNever,  Meaning::kExpression,     Form::kOther           },
    { kRule,                Telling::kNever,   Telling::kNever,  Meaning::kCondition,      Form::kRule            },
    { kMessage,             Telling::kAlways,  Telling::kNever,  Meaning::kText,           Form::kMessage         },
    { kVector,              Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kVector          },
    { kCommands,            Telling::kAlways,  Telling::kNever,  Meaning::kNotRead,        Form::kOther           },
    { kWaveCondition,       Telling::kNever,   Telling::kNever,  Meaning::kCondition,      Form::kCondition       },
    { kWizardMap,           Telling::kAlways,  Telling::kAlways, Meaning::kNotRead,        Form::kOther           },
    { kWizardCondition,     Telling::kNever,   Telling::kNever,  Meaning::kCondition,      Form::kWizardCondition },
    { kSequence,            Telling::kNever,   Telling::kNever,  Meaning::kNotRead,        Form::kSequence        },
    { kSequencePart,        Telling::kNever,   Telling::kNever,  Meaning::kText,           Form::kSequence        },
    { kSequenceCondition,   Telling::kAlways,  Telling::kNever,  Meaning::kCondition,      Form::kCondition       },
    { kCondition,           Telling::kNever,   Telling::kNever,  Meaning::kCondition,      Form::kCondition       },
    { kValueText,           Telling::kNever,   Telling::kNever,  Meaning::kValue,          Form::kOther           },
    { kStateText,           Telling::kNever,   Telling::kNever,  Meaning::kState,          Form::kOther           },
    { kLimit,               Telling::kNever,   Telling::kNever,  Meaning::kExpression,     Form::kOther           },
    { kStimulus,            Telling::kNever,   Telling::kNever,  Meaning::kCommand,        Form::kOther           },
    { kDisplay,             Telling::kNever,   Telling::kNever,  Meaning::kDisplayFormat,  Form::kOther           },
    { kPlainText,           Telling::kNever,   Telling::kNever,  Meaning::kText,           Form::kOther           },
};
// clang-format on

static_assert(std::size(kContexts) == static_cast<std::size_t>(Context::kCount));

constexpr bool has_a_row_for_each_context_in_order() {
    for (std::size_t index = 0; index < std::size(kContexts); ++index) {
        if (kContexts[index].context != static_cast<Context>(index)) {
            return false;
        }
    }
    return true;
}

static_assert(has_a_row_for_each_context_in_order());

}  // namespace

const Keywords kUsageStates = kUsages;

bool Keywords::has(std::string_view word) const {
    return std::find(words, words + count, word) != words + count;
}

const ContextRule& rule_of(Context context) {
    return kContexts[static_cast<std::size_t>(context)];
}

const AttributeRule* find_attribute_rule(Context context, std::string_view name) {
    const auto* const found = std::find_if(
        std::begin(kAttributes), std::end(kAttributes), [&](const AttributeRule& rule) {
            return (rule.contexts & bits(context)) != 0 && rule.name == name;
        });
    return found == std::end(kAttributes) ? nullptr : found;
}

Context context_in(Context parent, std::string_view tag) {
    const auto* const found =
        std::find_if(std::begin(kElements), std::end(kElements), [&](const ElementRule& rule) {
            return (rule.parents & bits(parent)) != 0 && rule.tag == tag;
        });
    return found == std::end(kElements) ? kUnread : found->context;
}

std::vector<std::string_view> tags_in(Context context) {
    std::vector<std::string_view> tags;
    for (const ElementRule& rule : kElements) {
        if ((rule.parents & bits(context)) != 0) {
            tags.push_back(rule.tag);
        }
    }
    std::sort(tags.begin(), tags.end());
    return tags;
}

std::vector<std::string_view> attributes_in(Context context) {
    std::vector<std::string_view> names;
    for (const AttributeRule& rule : kAttributes) {
        if ((rule.contexts & bits(context)) != 0) {
            names.push_back(rule.name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool is_condition_word(std::string_view word) {
    return word == "CONDITION" || word == "IF" || word == "WHEN" || word == "WHEN_CMD";
}

std::vector<Context> contexts_of(const Document& document) {
    const std::vector<DocumentElement>& elements = document.elements();
    std::vector<Context> contexts;
    contexts.reserve(elements.size());
    for (const DocumentElement& element : elements) {
        if (element.parent == nullptr) {
            contexts.push_back(element.tag == "ROOT" ? kRoot : kUnread);
            continue;
        }
        const auto parent = static_cast<std::size_t>(element.parent - elements.data());
        contexts.push_back(context_in(contexts[parent], element.tag));
    }
    return contexts;
}
