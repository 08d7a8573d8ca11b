#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/export.h"
#include "kivo/objects/message_facts.h"
#include "kivo/objects/obj_info.h"
#include "kivo/toolkit/less_c_string.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/records/obj_list.h"
#include "kivo/toolkit/records/obj_map.h"

class KIVO_CONDITIONAL_TEXT;
class KIVO_RULE_ELEMENT;
class KIVO_TEXT_OBJ;
class KIVO_VECTOR_OBJ;
class KIVO_WIZARD_MAP;
class KIVO_XML_ELEMENT;
struct KIVO_DECLARING_ELEMENT;
struct KIVO_INCLUDE;
struct KIVO_LOADED;
struct KIVO_MESSAGE;

// What description files hold: the one object through which a host uses the library. Loads only
// add to it. Bad input never throws; each problem becomes one message of the error list.
// A store is used by one thread at a time.
//
// Cursors. Every collection has one, so one walk over it can be in progress at a time; a walk that
// is not reset goes on where the last one stopped. A cursor is a position: a load leaves it where
// it is, and a walk that had come to the end reaches what the load added. The one exception is that
// generic objects of a WIZARD_DATA section leave the cursor of the wizard maps at the end.
//
// Exceptions. Only std::bad_alloc leaves a call. A load that it ends has added what it read until
// then: each record in its place, the last one perhaps without some of its fields, and the messages
// with theirs; what was to replace something has replaced it or not. The store can be walked, added
// to, loaded again, released and destroyed. Another call that it ends has added no record.
//
// Limits of one load. It reads at most 100,000 files, each as often as it is included; the file
// that would be the next one is told by a message, and nothing more is included. Wizard maps
// receive at most 1,000,000 copies of generic objects; a map for which they do not suffice is told
// by a message and receives none.
//
// Files that are not there, cannot be opened, cannot be read and are no XML: get_error_id tells
// them apart ("file-not-found", "file-not-opened", "file-not-read" with "read-error",
// "invalid-file" with "xml-syntax"), where the texts of the messages do not.
//
// Ownership. The store owns its objects, function-wide rules, messages and help text: its
// destruction deletes them. It holds vectors, wizard maps and the rule elements of objects, which
// outlive it: delete_detached_objects deletes them, or a host keeps them. Fields that hold records
// are plain pointers. What a host puts there is treated like what a load put there, with one
// difference: once a load replaces it, it is the host's again.
// REQUIRES: no record is held by two stores, and one of a class of the host's own, derived from
// KIVO_OBJ itself, stands in object_map, fn_rule_list and message_list once
class KIVO_API KIVO_INFO {
public:
    KIVO_INFO();
    KIVO_INFO(const KIVO_INFO&) = delete;
    KIVO_INFO& operator=(const KIVO_INFO&) = delete;
    // Deletes the help text, the objects, the function-wide rules and the messages, each once
    // though several names or lists lead to it, and help texts that loads made and replaced.
    // Vectors, wizard maps, rule elements that hang only on objects, and what was replaced in
    // vectors and maps stay; see delete_detached_objects. Takes no memory.
    ~KIVO_INFO();

    // --- Loading. True when the error list is empty afterwards, also of earlier loads' messages.
    // Pieces that a file replaces, as a second DESCRIPTION does, are not deleted then: pointers
    // that a host keeps stay good.

    // Loads DIRECTORY/NAME_info.xml, NAME in lower case; an empty directory stands for the one from
    // which the library was loaded.
    bool set_function_name(const std::string& name, const std::string& directory);
    // Loads a file, and then the files that it includes. A name that does not exist as it stands is
    // looked for in the include directories and in the library's directory too.
    bool process_xml_file(const std::string& file_name);
    // Directories in which loads from now on look for a file, included or not, that does not exist
    // as it is named: in their order, before the library's own directory. A name that begins with
    // "/" is looked for there alone. Replaces those set before; empty ones do not count.
    void set_include_directories(const std::vector<std::string>& directories);
    // Parses one display-format command ("add wave -hex data") and adds the format to the vector,
    // as a load does: an earlier one of the port can be read until delete_detached_objects.
    // REQUIRES: vector != nullptr
    void process_display_format_string(KIVO_VECTOR_OBJ* vector, const std::string& text);

    // --- Errors.

    void post_error_message(const std::string& message);
    void reset_error_message_list();
    // The next message; "" at the end and from then on, until the list is reset.
    std::string get_next_error_message();
    // What is known of message number "index" of error_list. A message is recognised by its text,
    // and those of equal text by their neighbours and their order, so that the host may put in,
    // take away, rearrange and edit messages. One that it posted, put in or edited, and one that it
    // took away and put in again after a further message was posted, is the host's: its id is
    // "host-message", it stands nowhere and has no facts. So is a message that does not exist.
    // The first call after a change takes time in proportion to the list (times its logarithm).

    // Where it arose: the element concerned, or the place that the parser found.
    KIVO_PLACE get_error_place(std::size_t index) const;
    // Its stable id ("unknown-section").
    std::string get_error_id(std::size_t index) const;
    // The element, attribute and word at fault, and the words that are known there.
    KIVO_MESSAGE_FACTS get_error_facts(std::size_t index) const;

    // Where something that carries a mark was declared.
    KIVO_PLACE get_place(const KIVO_MARK& mark) const;

    // --- Parameters, ports, hidden parameters and macros.

    // The object of that name when it has that type or the type is KIVO_OBJ_UNKNOWN, else a new one
    // when the name is new; null with a message otherwise. The object is the store's, which deletes
    // it in its destruction. The cursor stays.
    KIVO_OBJ_INFO* add_kivo_object(const std::string& name, KIVO_OBJ_TYPE type);
    // The object of that name, or null.
    KIVO_OBJ_INFO* get_kivo_obj(const std::string& name) const;
    void reset_kivo_obj_map();
    // The object under the cursor, which advances; null at the end.
    KIVO_OBJ_INFO* get_next_kivo_obj();
    // All objects by name; of names that differ only in case, the one declared last. Leaves the
    // cursor at the end.
    std::map<std::string, KIVO_OBJ_INFO*, LESS_C_STRING> get_sorted_obj_map();

    // --- Function-wide rules and messages, in document order; null at the end.

    void reset_fn_rule_list();
    KIVO_RULE_ELEMENT* get_next_fn_rule_element();
    void reset_message_list();
    KIVO_RULE_ELEMENT* get_next_msg();

    // --- Vectors and wizard maps. "add" returns the one stored under the name or makes it, null
    // when a record of another class stands there, and moves no cursor; walks give null at the end.
    // They outlive the store: delete_detached_objects deletes them, or else the host does.

    KIVO_VECTOR_OBJ* add_vector_object(const std::string& name);
    // The vector of that name, or null.
    KIVO_VECTOR_OBJ* get_vector_obj(const std::string& name) const;
    void reset_vector_map();
    KIVO_VECTOR_OBJ* get_next_vector_obj();
    KIVO_WIZARD_MAP* add_wizard_map(const std::string& name);
    void reset_wizard_map_map();
    KIVO_WIZARD_MAP* get_next_wizard_map();

    // Deletes what the store's destruction leaves alone, each record once however many names and
    // lists lead to it: the vectors and wizard maps with all that they hold, whoever put it there;
    // the rule elements that hang only on objects; and what loads of this store made for vectors
    // and maps and something later replaced. What the store owns stays, also where a vector, a map
    // or an object holds it too; what a host made and a load replaced is left alone. Afterwards
    // vector_map, wizard_map_map and the objects' rule lists are empty and the object cursor stands
    // on the first object; the store can be used and loaded again. When memory is short nothing was
    // deleted, and the call can be repeated.
    // REQUIRES: what it deletes is held by nobody else; a sub-text of a conditional text by that
    // text alone
    void delete_detached_objects();

    // The libraries that a simulator must map, each followed by ";": the entries of vhdl_library
    // without their unit names.
    std::string get_simulation_library() const;

    std::string function_name;
    std::vector<std::string> error_list;
    KIVO_OBJ_MAP object_map;             // of KIVO_OBJ_INFO by name, the store's
    KIVO_OBJ_MAP vector_map;             // of KIVO_VECTOR_OBJ by name, which outlive the store
    KIVO_TEXT_OBJ* html_text = nullptr;  // the store's; null: no help text was read
    std::string vhdl_library;
    std::string time_scale;
    std::string time_delta;
    KIVO_OBJ_LIST fn_rule_list;   // of KIVO_RULE_ELEMENT, the store's
    KIVO_OBJ_LIST message_list;   // of KIVO_RULE_ELEMENT, the store's
    KIVO_OBJ_MAP wizard_map_map;  // of KIVO_WIZARD_MAP by name, which outlive the store
    std::int32_t start_time = 0;  // in units of time_scale

private:
    friend class FileLoader;
    friend class MessagePoster;

    // The section readers, each in the file of its section.
    KIVO_LOCAL void process_function_info(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_hidden_parameters(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_html_text(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_include_info(KIVO_XML_ELEMENT& section,
                                         std::vector<KIVO_INCLUDE>& includes);
    KIVO_LOCAL void process_macros(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_messages(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_parameters(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_ports(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_rules(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_vector_stimulus(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_vector_sub_elements(KIVO_XML_ELEMENT& element, KIVO_VECTOR_OBJ& vector);
    KIVO_LOCAL void process_wizard_map(KIVO_XML_ELEMENT& section);
    KIVO_LOCAL void process_one_wizard_map(KIVO_XML_ELEMENT& element);
    KIVO_LOCAL void process_wizard_parameter(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map);
    KIVO_LOCAL void process_wizard_port(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map);
    KIVO_LOCAL void add_generic_wizard_map_to_all_maps(KIVO_WIZARD_MAP& generic,
                                                       const KIVO_XML_ELEMENT& section);
    // Whether the map can receive what it lacks; a message else.
    KIVO_LOCAL bool has_room_for(const KIVO_WIZARD_MAP& generic, const KIVO_WIZARD_MAP& map,
                                 const KIVO_XML_ELEMENT& section);
    // Null when the element has no sub-elements.
    KIVO_LOCAL std::unique_ptr<KIVO_CONDITIONAL_TEXT> process_conditional_text(
        KIVO_XML_ELEMENT& element);

    KIVO_LOCAL void post(const KIVO_MESSAGE& message);
    // The same as add_kivo_object for an element.
    KIVO_LOCAL KIVO_OBJ_INFO* add_declared_object(const std::string& name, KIVO_OBJ_TYPE type,
                                                  const KIVO_DECLARING_ELEMENT& element);
    // For a command that stands in such an element at that place.
    KIVO_LOCAL void process_display_format_at(KIVO_VECTOR_OBJ* vector, std::string_view text,
                                              std::string_view element, KIVO_MARK mark);

    std::size_t next_error_ = 0;
    bool errors_are_over_ = false;
    std::unique_ptr<KIVO_LOADED> loaded_;
};
