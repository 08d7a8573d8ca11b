#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kivo/export.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"

// What rule_kind says of a rule element.
enum KIVO_RULE_KIND : std::int32_t {
    KIVO_RULE_WHEN_CMD = 0,        // value or state conditioned by WHEN_CMD
    KIVO_RULE_FORCED_RANGE = 1,    // forced range on a parameter
    KIVO_RULE_FORCED_VALUE = 2,    // forced value or state; stimulus; condition of a wizard map
    KIVO_RULE_CONSTANT_RANGE = 3,  // constant range on a port
    KIVO_RULE_REQUIRED = 4,        // value rule, required rule
    KIVO_RULE_NOT_REQUIRED = 5,    // rule that is not required
    KIVO_RULE_PORT_VALUE = 6,      // forced value on a port
    KIVO_RULE_PORT_RANGE = 7,      // forced range on a port
    KIVO_RULE_CRITICAL_WARNING = 8,
    KIVO_RULE_WARNING = 9,
    KIVO_RULE_ERROR = 10,
    KIVO_RULE_INFO = 11,
    KIVO_RULE_NO_MESSAGE_TYPE = 12,  // never stored: a message without a valid type is refused
};

// Which element under a parameter or port a rule element was made from; rule_kind alone does not
// tell where WHEN_CMD gave the condition.
enum KIVO_RULE_ORIGIN : std::int32_t {
    KIVO_ORIGIN_UNKNOWN = 0,  // none of those below, or not made by a load
    KIVO_ORIGIN_FORCE_VALUE = 1,
    KIVO_ORIGIN_FORCE_RANGE = 2,
    KIVO_ORIGIN_STATE = 3,
    KIVO_ORIGIN_CONSTANT_RANGE = 4,
    KIVO_ORIGIN_VALUE_RULE = 5,
};

// A rule, message, value rule, stimulus entry or condition: three texts and a kind. A plain record:
// hosts read and write its fields.
//
// Who deletes it depends on where it stands. One of a store's fn_rule_list or message_list goes
// with the store. The condition of a vector goes with the vector. One that hangs on objects, one of
// a stimulus list and the condition of a wizard map outlive what holds them, until
// KIVO_INFO::delete_detached_objects deletes them, whoever made them.
class KIVO_API KIVO_RULE_ELEMENT : public KIVO_OBJ {
public:
    // Empty texts and kind 0. A copy is the copier's, whoever owns the original.
    KIVO_RULE_ELEMENT();
    KIVO_RULE_ELEMENT(std::string_view first, std::string_view second, std::string_view third,
                      std::int32_t kind, KIVO_MARK declared_at = {});
    ~KIVO_RULE_ELEMENT() override;

    std::string text1;
    std::string text2;
    std::string text3;
    std::int32_t rule_kind = 0;
    KIVO_MARK mark;           // the XML element that made it; see KIVO_INFO::get_place
    std::int32_t origin = 0;  // a KIVO_RULE_ORIGIN

private:
    friend class KIVO_OWNING;

    KIVO_RECORD_NOTE note_;
};
