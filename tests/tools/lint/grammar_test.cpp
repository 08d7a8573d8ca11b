// The grammar is that of the library: what it knows is read without a message, and what the library
// says it knows is what the grammar has.
#include "tools/lint/grammar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "kivo/kivo.h"
#include "tests/tools/program.h"

namespace {

// An element of a context and what stands around it.
struct Sample {
    Context context;
    std::string before;
    std::string tag;
    // Attributes without which the element would be refused for another reason.
    std::string attributes;
    std::string after;
};

const std::string kDeclared =
    "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER'/></PARAMETERS>"
    "<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>";
const std::string kInParameter = kDeclared + "<PARAMETER_RULES><PARAMETER NAME='W'>";
const std::string kAfterParameter = "</PARAMETER></PARAMETER_RULES>";
const std::string kInPort = kDeclared + "<PORT_RULES><PORT NAME='q'>";
const std::string kAfterPort = "</PORT></PORT_RULES>";
const std::string kInVector = "<WAVE_DATA><WAVE NAME='w'>";
const std::string kAfterVector = "</WAVE></WAVE_DATA>";

// clang-format off
const Sample kSamples[] = {
    {Context::kInclude, "", "INCLUDE", "", ""},
    {Context::kFunctionInformation, "", "FUNCTION_INFORMATION", "", ""},
    {Context::kVhdlLibrary, "<FUNCTION_INFORMATION>", "VHDL_LIBRARY", "",
     "</FUNCTION_INFORMATION>"},
    {Context::kStartTime, "<FUNCTION_INFORMATION>", "START_TIME", "", "</FUNCTION_INFORMATION>"},
    {Context::kTimeScale, "<FUNCTION_INFORMATION>", "TIME_SCALE", "", "</FUNCTION_INFORMATION>"},
    {Context::kTimeDelta, "<FUNCTION_INFORMATION>", "TIME_DELTA", "", "</FUNCTION_INFORMATION>"},
    {Context::kParameter, kDeclared + "<PARAMETER_RULES>", "PARAMETER", "NAME='W'",
     "</PARAMETER_RULES>"},
    {Context::kPort, kDeclared + "<PORT_RULES>", "PORT", "NAME='q'", "</PORT_RULES>"},
    {Context::kHiddenParameter, "<HIDDEN_PARAMETERS>", "PARAMETER", "NAME='H'",
     "</HIDDEN_PARAMETERS>"},
    {Context::kForceValue, kInParameter, "FORCE_VALUE", "", kAfterParameter},
    {Context::kForceValue, kInPort, "FORCE_VALUE", "", kAfterPort},
    {Context::kState, kInPort, "STATE", "", kAfterPort},
    {Context::kParameterRange, kInParameter, "FORCE_RANGE", "", kAfterParameter},
    {Context::kPortRange, kInPort, "FORCE_RANGE", "", kAfterPort},
    {Context::kConstantRange, kInPort, "CONSTANT_RANGE", "", kAfterPort},
    {Context::kValueRule, kInParameter, "VALUE_RULE", "", kAfterParameter},
    {Context::kMacros, "", "MACROS", "", ""},
    {Context::kMacro, "<MACROS>", "MACRO", "NAME='M'", "</MACROS>"},
    {Context::kRules, "", "RULES", "", ""},
    {Context::kMessages, "", "MESSAGES", "", ""},
    {Context::kMessage, "<MESSAGES>", "MESSAGE", "TYPE='INFO'", "</MESSAGES>"},
    {Context::kVector, "<WAVE_DATA>", "WAVE", "NAME='w'", "</WAVE_DATA>"},
    {Context::kCommands, kInVector + "<IF>A</IF>", "THEN", "", kAfterVector},
    {Context::kWizardMap, "<WIZARD_DATA>", "WIZARD_MAP", "NAME='m'", "</WIZARD_DATA>"},
};
// clang-format on

// What the library says about a description.
struct Said {
    std::set<std::string> ids;
    std::vector<std::string> known_words;  // of the first message
};

Said said_of(const std::string& sections) {
    const TemporaryFolder folder;
    KIVO_INFO info;
    info.process_xml_file(folder.write("a.xml", with_sections(sections)));
    Said said;
    for (std::size_t index = 0; index < info.error_list.size(); ++index) {
        said.ids.insert(info.get_error_id(index));
    }
    if (!info.error_list.empty()) {
        said.known_words = info.get_error_facts(0).known_words;
    }
    info.delete_detached_objects();
    return said;
}

std::string element(const Sample& sample, const std::string& attributes,
                    const std::string& content) {
    return sample.before + '<' + sample.tag + ' ' + sample.attributes + ' ' + attributes + '>' +
           content + "</" + sample.tag + '>' + sample.after;
}

std::vector<std::string> as_strings(const std::vector<std::string_view>& words) {
    return {words.begin(), words.end()};
}

TEST(Grammar, the_library_knows_the_same_attributes) {
    for (const Sample& sample : kSamples) {
        if (rule_of(sample.context).of_attributes != Telling::kAlways) {
            EXPECT_TRUE(said_of(element(sample, "ODD='1'", "")).ids ==
                        said_of(element(sample, "", "")).ids)
                << sample.tag;
            continue;
        }
        EXPECT_EQ(said_of(element(sample, "ODD='1'", "")).known_words,
                  as_strings(attributes_in(sample.context)))
            << sample.before << sample.tag;
    }
}

TEST(Grammar, the_library_knows_the_same_sub_elements) {
    for (const Sample& sample : kSamples) {
        if (rule_of(sample.context).of_sub_elements == Telling::kNever) {
            EXPECT_EQ(said_of(element(sample, "", "<ODD/>")).ids,
                      said_of(element(sample, "", "")).ids)
                << sample.tag;
            continue;
        }
        EXPECT_EQ(said_of(element(sample, "", "<ODD/>")).known_words,
                  as_strings(tags_in(sample.context)))
            << sample.before << sample.tag;
    }
}

TEST(Grammar, the_library_knows_the_same_sections) {
    EXPECT_EQ(said_of("<ODD/>").known_words, as_strings(tags_in(Context::kRoot)));
}

// An element with an attribute of few words, and what the library makes of the word in it.
struct WordSample {
    Context context;
    std::string name;
    std::string before;
    std::string after;
    std::function<int(KIVO_INFO&)> value;
};

KIVO_OBJ_INFO& object(KIVO_INFO& info, const std::string& name) {
    return *info.get_kivo_obj(name);
}

KIVO_WIZARD_MAP& wizard_map(KIVO_INFO& info) {
    info.reset_wizard_map_map();
    return *info.get_next_wizard_map();
}

std::vector<WordSample> word_samples() {
    const std::string parameter = "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' ";
    const std::string port = "<PORTS><PORT NAME='q' TYPE='INPUT' ";
    const std::string map = "<WIZARD_DATA><WIZARD_MAP NAME='m' ";
    const auto of_port = [&](const std::string& name, auto member) {
        return WordSample{Context::kPort, name, port, "/></PORTS>", [member](KIVO_INFO& info) {
                              return static_cast<int>(object(info, "q").*member);
                          }};
    };
    const auto of_map = [&](const std::string& name, auto member) {
        return WordSample{
            Context::kWizardMap, name, map, "/></WIZARD_DATA>",
            [member](KIVO_INFO& info) { return static_cast<int>(wizard_map(info).*member); }};
    };
    return {
        {Context::kParameter, "LPM_HINT", parameter, "/></PARAMETERS>",
         [](KIVO_INFO& info) { return static_cast<int>(object(info, "W").lpm_hint); }},
        of_port("ASYNC", &KIVO_OBJ_INFO::async),
        of_port("IS_CLOCK_PORT", &KIVO_OBJ_INFO::clock),
        of_port("USAGE", &KIVO_OBJ_INFO::usage_state),
        of_map("MAP_CONSTANTS", &KIVO_WIZARD_MAP::map_constants),
        of_map("MAP_USED_PORTS", &KIVO_WIZARD_MAP::map_used_ports),
        {Context::kRule, "REQUIRED_RULE", "<RULES><RULE ", ">1</RULE></RULES>",
         [](KIVO_INFO& info) { return info.get_next_fn_rule_element()->rule_kind; }},
    };
}

int read_with(const WordSample& sample, const std::string& word) {
    const TemporaryFolder folder;
    KIVO_INFO info;
    info.process_xml_file(folder.write(
        "a.xml", with_sections(sample.before + sample.name + "='" + word + "'" + sample.after)));
    EXPECT_EQ(info.error_list, std::vector<std::string>{}) << sample.name << ' ' << word;
    const int value = sample.value(info);
    info.delete_detached_objects();
    return value;
}

TEST(Grammar, the_library_tells_the_same_words_apart) {
    for (const WordSample& sample : word_samples()) {
        const AttributeRule* const rule = find_attribute_rule(sample.context, sample.name);
        ASSERT_TRUE(rule != nullptr && rule->keywords != nullptr) << sample.name;
        std::set<int> values;
        for (const std::string_view word : rule->keywords->all()) {
            values.insert(read_with(sample, std::string(word)));
        }
        EXPECT_EQ(values.size(), rule->keywords->count) << sample.name;
        EXPECT_EQ(read_with(sample, "ODD"),
                  read_with(sample, std::string(rule->keywords->otherwise)))
            << sample.name;
    }
}

TEST(Grammar, the_library_has_the_same_states_of_ports) {
    std::set<std::string> states;
    for (int state = KIVO_USAGE_UNUSED; state <= KIVO_USAGE_CONSTANT; ++state) {
        states.insert(kivo_get_usage_state_as_string(static_cast<KIVO_OBJ_USAGE_STATE>(state)));
    }
    const std::vector<std::string> words = as_strings(kUsageStates.all());
    EXPECT_EQ(std::set<std::string>(words.begin(), words.end()), states);
    EXPECT_EQ(kivo_get_usage_state_as_string(translate_usage_state("ODD")), kUsageStates.otherwise);
}

TEST(Grammar, words_are_found_in_their_context_alone) {
    ASSERT_NE(find_attribute_rule(Context::kPort, "USAGE"), nullptr);
    EXPECT_TRUE(find_attribute_rule(Context::kPort, "USAGE")->keywords->has("UNUSED"));
    EXPECT_FALSE(find_attribute_rule(Context::kPort, "USAGE")->keywords->has("unused"));
    EXPECT_EQ(find_attribute_rule(Context::kParameter, "USAGE"), nullptr);
    EXPECT_EQ(context_in(Context::kPorts, "PORT"), Context::kPort);
    EXPECT_EQ(context_in(Context::kPorts, "PARAMETER"), Context::kUnread);
    EXPECT_EQ(context_in(Context::kUnread, "PORT"), Context::kUnread);
}

TEST(Grammar, every_context_but_the_outermost_stands_in_another) {
    std::set<Context> reached = {Context::kUnread, Context::kRoot};
    for (unsigned parent = 0; parent < static_cast<unsigned>(Context::kCount); ++parent) {
        for (const std::string_view tag : tags_in(static_cast<Context>(parent))) {
            reached.insert(context_in(static_cast<Context>(parent), tag));
        }
    }
    EXPECT_EQ(reached.size(), static_cast<std::size_t>(Context::kCount));
}

}  // namespace
