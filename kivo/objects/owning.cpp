#include "kivo/objects/internal/owning.h"

#include <atomic>

#include "kivo/objects/conditional_text.h"
#include "kivo/objects/text_obj.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// Whether a host gave the format to another port too.
bool holds(KIVO_OBJ_MAP& formats, const KIVO_OBJ* format) {
    bool is_held = false;
    if (KIVO_ITEMS::shares(formats)) {
        KIVO_ITEMS::for_each(formats,
                             [&](const KIVO_OBJ* other) { is_held = is_held || other == format; });
    }
    return is_held;
}

}  // namespace

KIVO_OWNING::Maker KIVO_OWNING::next_store() {
    static std::atomic<Maker> count = 0;
    return kFirstStore + count++ % (kGoing - kFirstStore);
}

void KIVO_OWNING::replace_format(KIVO_VECTOR_OBJ& vector,
                                 std::unique_ptr<KIVO_VECTOR_DISPLAY_OBJ> format, Maker maker) {
    KIVO_OBJ_MAP& formats = vector.display_format_map;
    const std::string& port = format->port_name;
    auto* const earlier = dynamic_cast<KIVO_VECTOR_DISPLAY_OBJ*>(formats.look_up(port));
    format->note_.maker_ = maker;
    const Maker made_earlier = earlier == nullptr ? kHost : earlier->note_.maker_;
    if (made_earlier >= kFirstStore && (made_earlier == maker || maker == kVector)) {
        vector.replaced_.push_back(earlier);
    }
    KIVO_ITEMS::put(formats, port, std::move(format));
    if (made_earlier == kVector && !holds(formats, earlier)) {
        delete earlier;
    }
}

bool KIVO_OWNING::is_first_to_go(KIVO_OBJ* record) {
    Maker* maker = nullptr;
    for (const auto find :
         {maker_if<KIVO_OBJ_INFO>, maker_if<KIVO_RULE_ELEMENT>, maker_if<KIVO_TEXT_OBJ>,
          maker_if<KIVO_CONDITIONAL_TEXT>, maker_if<KIVO_VECTOR_OBJ>,
          maker_if<KIVO_VECTOR_DISPLAY_OBJ>, maker_if<KIVO_WIZARD_MAP>}) {
        maker = maker == nullptr ? find(record) : maker;
    }
    if (maker == nullptr) {
        return true;
    }
    return std::exchange(*maker, kGoing) != kGoing;
}
