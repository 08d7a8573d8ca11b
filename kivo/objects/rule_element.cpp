#include "kivo/objects/rule_element.h"

KIVO_RULE_ELEMENT::KIVO_RULE_ELEMENT() = default;

KIVO_RULE_ELEMENT::KIVO_RULE_ELEMENT(std::string_view first, std::string_view second,
                                     std::string_view third, std::int32_t kind,
                                     KIVO_MARK declared_at)
    : text1(first), text2(second), text3(third), rule_kind(kind), mark(declared_at) {}

KIVO_RULE_ELEMENT::~KIVO_RULE_ELEMENT() = default;
