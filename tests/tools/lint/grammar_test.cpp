// The grammar is that of the library: what it knows is read without a message, and what the library
// says it knows is what the grammar has.
#include "tools/lint/grammar.h"

#include <gtest/gtest.h>

#include <algorithm>
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
