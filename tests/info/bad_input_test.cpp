#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/description.h"
#include "tests/support/extent.h"
#include "tests/support/permissions.h"

namespace {

using Messages = std::vector<std::string>;

// Something of every section.
const char* const kRich = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE ROOT>
<!-- a description -->
<ROOT>
  <FUNCTION_INFORMATION>
    <VHDL_LIBRARY NAME="ieee.std_logic_1164; work.pkg"/><START_TIME VALUE="5"/>
    <TIME_SCALE VALUE="ns"/><TIME_DELTA VALUE="10"/>
  </FUNCTION_INFORMATION>
  <PARAMETERS>
    <PARAMETER NAME="width" TYPE="INTEGER" VALUE="1, 2" DEFAULT_VALUE="8" CNX_TYPE="CONSTANT">
      <FORCE_VALUE V="4"><IF>a &lt; b</IF><ELSE>5</ELSE></FORCE_VALUE>
      <FORCE_RANGE MIN="1" MAX="64"/><VALUE_RULE><IF>x</IF><THEN>y</THEN></VALUE_RULE>
    </PARAMETER>
  </PARAMETERS>
  <HIDDEN_PARAMETERS><PARAMETER NAME="h" VALUE="&#228;"/></HIDDEN_PARAMETERS>
  <PORTS>
    <PORT NAME="clk" TYPE="INPUT" IS_CLOCK_PORT="TRUE" HIGH_PROBABILITY="50" WIDTH="width">
      <STATE V="UNUSED"><WHEN_CMD>c</WHEN_CMD></STATE><CONSTANT_RANGE MIN='0' MAX='1'/>
    </PORT>
  </PORTS>
  <RULES><RULE REQUIRED_RULE="OFF"><![CDATA[a < b]]></RULE><CONDITION>c</CONDITION></RULES>
  <MESSAGES><MESSAGE TYPE="ERROR"><IF>x</IF><TEXT>t</TEXT><ELSE>e</ELSE></MESSAGE></MESSAGES>
  <MACROS><MACRO NAME="m" ARGUMENTS="a, b"><DEFINITION>a + b</DEFINITION></MACRO></MACROS>
  <WAVE_DATA>
    <WAVE NAME="w" MAX_TIME="100" TIME_STEP="5" INDEX="1" DISPLAY_TRUNCATION="LOW">
      <CAPTION>c</CAPTION><WAVE_CONDITION>x</WAVE_CONDITION>
      <DESCRIPTION><T>a</T><IF>x</IF><THEN><T>b</T></THEN><ELSE>c</ELSE></DESCRIPTION>
      <DISPLAY>add wave -fixed_point(4.4) a</DISPLAY>
      <IF>x</IF><THEN><STIM>force -hex a 0 0, F 10 -repeat 20</STIM></THEN>
      <ELSE><VECTOR>force b 1 0</VECTOR></ELSE>
    </WAVE>
  </WAVE_DATA>
  <WIZARD_DATA>
    <PARAMETER NAME="g" TYPE="STRING"><VALUE_RULE>v</VALUE_RULE></PARAMETER>
    <WIZARD_MAP NAME="z" WIZARD_NAME="n" MODULE_NAME="o" MAP_CONSTANTS="ON">
      <PORT NAME="p" TYPE="OUTPUT"/><WIZARD_CONDITION>x</WIZARD_CONDITION>
    </WIZARD_MAP>
  </WIZARD_DATA>
  <HTML_TEXT><TITLE>t</TITLE><HEADER>h</HEADER><INTRO><T>i</T></INTRO>
    <END><IF>x</IF><THEN><IF>y</IF><THEN>z</THEN></THEN></END></HTML_TEXT>
  <INCLUDE FILE="no/such.xml"><FILE> no/other.xml </FILE></INCLUDE>
</ROOT>)";

std::string repeated(std::string_view text, std::size_t count) {
    std::string whole;
    whole.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        whole += text;
    }
    return whole;
}

// Loads a document and reads back what every host reads; true when it was clean.
bool load_and_walk(std::string_view document, const TemporaryFolder& folder) {
    LoadedStore store;
    KIVO_INFO& info = store.info;
    const bool clean = info.process_xml_file(folder.write("description.xml", document));
    EXPECT_EQ(clean, info.error_list.empty()) << document;
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        EXPECT_NE(info.get_error_place(i).file, "") << info.error_list[i];
        EXPECT_NE(info.get_error_id(i), "host-message") << info.error_list[i];
    }
    for (const auto& [name, object] : info.get_sorted_obj_map()) {
        EXPECT_EQ(name, object->get_name());
        EXPECT_NE(object->obj_type, KIVO_OBJ_UNKNOWN) << name;
        object->reset_rule_list();
        while (const KIVO_RULE_ELEMENT* rule = object->get_next_rule_element()) {
            EXPECT_NE(info.get_place(rule->mark).line, 0);
        }
    }
    return clean;
}

Messages messages_for(const std::string& path) {
    LoadedStore store;
    EXPECT_FALSE(store.info.process_xml_file(path));
    return store.messages();
}

// The ids of the messages, with the reason of the system if it gave one.
Messages ids_for(const std::string& path) {
    LoadedStore store;
    EXPECT_FALSE(store.info.process_xml_file(path));
    Messages ids;
    for (std::size_t i = 0; i < store.info.error_list.size(); ++i) {
        const std::string reason = store.info.get_error_facts(i).reason;
        ids.push_back(store.info.get_error_id(i) + (reason.empty() ? "" : ": ") + reason);
    }
    return ids;
}

}  // namespace

TEST(BadInput, rich_description_is_well_formed) {
    const TemporaryFolder folder;
    LoadedStore store;
    store.info.process_xml_file(folder.write("description.xml", kRich));
    EXPECT_EQ(store.messages(), (Messages{"XML source file no/such.xml not found",
                                          "XML source file no/other.xml not found"}));
}

TEST(BadInput, every_prefix_of_a_description_is_reported) {
    const TemporaryFolder folder;
    const std::string_view rich = kRich;
    for (std::size_t length = 0; length < rich.size(); ++length) {
        EXPECT_FALSE(load_and_walk(rich.substr(0, length), folder)) << rich.substr(0, length);
    }
}

TEST(BadInput, descriptions_without_one_of_their_bytes_are_survived) {
    const TemporaryFolder folder;
    for (std::size_t at = 0; at < std::string_view(kRich).size(); at += 3) {
        std::string document = kRich;
        document.erase(at, 1);
        load_and_walk(document, folder);
    }
}

TEST(BadInput, changed_descriptions_are_survived) {
    const TemporaryFolder folder;
    const std::string pieces[] = {
        "<",         ">",       "/>",   "</",           "\"", "'", "&", "&#0;", "<!--", "-->",
        "<![CDATA[", "]]>",     "<?",   "?>",           "<!", "=", " ", "\n",   "ROOT", "<IF>",
        "<THEN>",    "</THEN>", "\xFF", "\xEF\xBB\xBF", ";",  "#"};
    std::mt19937 random(20231);
    for (int round = 0; round < 2000; ++round) {
        std::string document = kRich;
        for (std::uint32_t change = random() % 4 + 1; change > 0; --change) {
            const std::size_t at = random() % document.size();
            switch (random() % 4) {
                case 0:
                    document[at] = static_cast<char>(random());
                    break;
                case 1:
                    document.insert(at, pieces[random() % std::size(pieces)]);
                    break;
                case 2:
                    document.erase(at, random() % 40);
                    break;
                default:
                    document.insert(at,
                                    document.substr(random() % document.size(), random() % 200));
            }
        }
        load_and_walk(document, folder);
    }
}

TEST(BadInput, random_bytes_are_reported) {
    const TemporaryFolder folder;
    std::mt19937 random(7);
    for (int round = 0; round < 1000; ++round) {
        std::string document(random() % 300, '\0');
        for (char& letter : document) {
            letter = static_cast<char>(random());
        }
        EXPECT_FALSE(load_and_walk(document, folder));
        EXPECT_FALSE(load_and_walk("<ROOT>" + document, folder));
        load_and_walk("\xFF\xFE" + document, folder);
    }
}

TEST(BadInput, nul_byte_fails_the_load) {
    const TemporaryFolder folder;
    const std::string file = folder.write("a.xml", std::string("<ROOT>\n\0</ROOT>", 15));
    EXPECT_EQ(messages_for(file), (Messages{"Invalid XML source file " + file,
                                            "line 2, column 1 of " + file + ": NUL byte"}));
}

TEST(BadInput, what_is_not_a_regular_file_is_not_found) {
    const TemporaryFolder folder;
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {folder.path(""), pipe, std::string("/dev/null"),
                                    std::string("/dev/zero"), folder.path("missing")}) {
        EXPECT_EQ(messages_for(path), (Messages{"XML source file " + path + " not found"}));
        EXPECT_EQ(Loaded("<INCLUDE FILE='" + path + "'/>").messages(),
                  (Messages{"XML source file " + path + " not found"}));
    }
}

TEST(BadInput, file_that_may_not_be_read_is_not_found) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a.xml", "<ROOT/>");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const ObeysPermissions obeys;
    EXPECT_EQ(messages_for(path), (Messages{"XML source file " + path + " not found"}));
    EXPECT_EQ(ids_for(path), (Messages{"file-not-opened: Permission denied"}));
}

// The system shows a process its own memory as a regular file, and nothing is mapped at its start.
TEST(BadInput, file_that_breaks_off_while_it_is_read_says_so_by_its_ids) {
    const std::string path = "/proc/self/mem";
    EXPECT_EQ(messages_for(path),
              (Messages{"Invalid XML source file " + path,
                        "line 1, column 1 of " + path + ": the text cannot be read"}));
    EXPECT_EQ(ids_for(path),
              (Messages{"file-not-read: Input/output error", "read-error: Input/output error"}));
}

TEST(BadInput, ids_tell_missing_unopened_unread_and_malformed_files_apart) {
    const TemporaryFolder folder;
    EXPECT_EQ(ids_for(folder.path("missing")), (Messages{"file-not-found"}));
    EXPECT_EQ(ids_for(folder.path("")), (Messages{"file-not-opened: Is a directory"}));
    EXPECT_EQ(ids_for("/dev/zero"), (Messages{"file-not-opened: Not a regular file"}));
    EXPECT_EQ(ids_for(folder.write("malformed.xml", "<ROOT>")),
              (Messages{"invalid-file", "xml-syntax"}));
}

TEST(BadInput, without_descriptors_a_file_is_there_and_not_opened) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers take descriptors themselves";
#endif
    const TemporaryFolder folder;
    const std::string path = folder.write("a.xml", "<ROOT/>");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const Messages ids = ids_for(path);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(ids, (Messages{"file-not-opened: Too many open files"}));
}

TEST(BadInput, what_is_included_and_cannot_be_read_does_not_keep_the_rest_from_being_read) {
    Loaded loaded(
        "<INCLUDE FILE='/dev/null'><FILE>/proc/self/mem</FILE></INCLUDE>"
        "<RULES><RULE>r</RULE></RULES>");
    EXPECT_EQ(loaded.info.get_error_id(0), "file-not-opened");
    EXPECT_EQ(loaded.info.get_error_place(0).file, loaded.folder.path("description.xml"));
    EXPECT_EQ(loaded.info.get_error_id(1), "file-not-read");
    EXPECT_EQ(loaded.info.get_error_place(1).file, "/proc/self/mem");
    EXPECT_NE(loaded.info.get_next_fn_rule_element(), nullptr);
}

TEST(BadInput, names_and_values_of_two_megabytes_are_kept) {
    const std::string value = repeated("0123456789ABCDEF", 128 * 1024);
    Loaded loaded("<PARAMETERS><PARAMETER NAME='" + value + "' TYPE='STRING' VALUE='" + value +
                  "'/></PARAMETERS><RULES><RULE>" + value + "</RULE></RULES>");
    EXPECT_TRUE(loaded.clean);
    const KIVO_OBJ_INFO* object = loaded.info.get_kivo_obj(value);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->value_array, value);
    EXPECT_EQ(loaded.info.get_next_fn_rule_element()->text3, value);
}

TEST(BadInput, a_hundred_thousand_attributes_are_each_reported) {
    constexpr int kCount = 100000;
    std::string attributes;
    for (int i = kCount; i-- > 0;) {
        attributes += " a" + std::to_string(kCount + i) + "=''";
    }
    Loaded loaded("<INCLUDE" + attributes + "/>");
    ASSERT_EQ(loaded.info.error_list.size(), static_cast<std::size_t>(kCount));
    EXPECT_EQ(loaded.info.error_list.front(),
              "Attribute a100000 is not a recognized attribute for INCLUDE ");
    EXPECT_EQ(loaded.info.error_list.back(),
              "Attribute a199999 is not a recognized attribute for INCLUDE ");
}

TEST(BadInput, very_many_siblings_are_read) {
    Loaded loaded("<RULES>" + repeated("<RULE>r</RULE>", kVeryMany) + "</RULES>");
    EXPECT_TRUE(loaded.clean);
    std::size_t count = 0;
    while (loaded.info.get_next_fn_rule_element() != nullptr) {
        ++count;
    }
    EXPECT_EQ(count, kVeryMany);
}

TEST(BadInput, very_many_unknown_sections_are_each_reported) {
    Loaded loaded(repeated("<X/>", kVeryMany));
    EXPECT_EQ(loaded.info.error_list.size(), kVeryMany);
}

TEST(BadInput, deeply_nested_elements_are_survived_wherever_they_stand) {
    on_small_stack([] {
        const std::string nest = repeated("<T>", kVeryMany) + repeated("</T>", kVeryMany);
        EXPECT_EQ(Loaded(nest).messages(),
                  (Messages{"Main element tag T is not a valid recognized tag"}));
        EXPECT_TRUE(Loaded("<HTML_TEXT><INTRO>" + nest + "</INTRO></HTML_TEXT>").clean);
        EXPECT_FALSE(Loaded("<RULES>" + nest + "</RULES>").clean);
        Loaded not_closed(repeated("<T>", kVeryMany));
        EXPECT_EQ(not_closed.info.error_list.size(), 2u);
    });
}

TEST(BadInput, deeply_nested_help_texts_are_read_and_destroyed) {
    on_small_stack([] {
        Loaded loaded("<HTML_TEXT><INTRO>" + repeated("<THEN>", kVeryMany) + "x" +
                      repeated("</THEN>", kVeryMany) + "</INTRO></HTML_TEXT>");
        EXPECT_TRUE(loaded.clean);
        std::size_t depth = 0;
        for (KIVO_CONDITIONAL_TEXT* text = loaded.info.html_text->intro; text != nullptr; ++depth) {
            text->text_elements.reset();
            const KIVO_CONDITIONAL_TEXT* piece = text->get_next_text_element();
            text = piece == nullptr ? nullptr : piece->then_sub;
        }
        EXPECT_EQ(depth, kVeryMany);
    });
}
