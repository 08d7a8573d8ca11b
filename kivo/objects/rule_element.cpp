#include "kivo/objects/rule_element.h"

#include <utility>

KIVO_RULE_ELEMENT::KIVO_RULE_ELEMENT() = default;

KIVO_RULE_ELEMENT::KIVO_RULE_ELEMENT(std::string first, std::string second, std::string third,
                                     std::int32_t kind, KIVO_MARK declared_at)
    : text1(std::move(first)),
      text2(std::move(second)),
      text3(std::move(third)),
      rule_kind(kind),
      mark(declared_at) {}

KIVO_RULE_ELEMENT::~KIVO_RULE_ELEMENT() = default;
