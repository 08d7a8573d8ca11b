#include <algorithm>
#include <utility>

#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/message.h"

namespace {

#define KIVO_MESSAGE_TEXT(name, id) id,
constexpr const char* kIds[] = {KIVO_MESSAGE_IDS(KIVO_MESSAGE_TEXT)};
#undef KIVO_MESSAGE_TEXT

// Of message number "index" of "count"; nowhere for one that a host put in or has taken away.
KIVO_LOADED::Origin origin_of(const KIVO_LOADED& loaded, std::size_t count, std::size_t index) {
    const std::size_t known = std::min(count, loaded.origins.size());
    return index < known ? loaded.origins[index] : KIVO_LOADED::Origin();
}

}  // namespace

void KIVO_INFO::post_error_message(const std::string& message) {
    post({KIVO_MESSAGE_ID::kHostMessage, {}, message});
}

void KIVO_INFO::post(KIVO_MESSAGE message) {
    // A host that writes to error_list itself leaves messages without an origin behind.
    loaded_->origins.resize(error_list.size());
    loaded_->origins.push_back({message.id, message.mark});
    error_list.push_back(std::move(message.text));
}

void KIVO_INFO::copy_messages(KIVO_MESSAGE_LIST messages) {
    for (KIVO_MESSAGE& message : messages) {
        post(std::move(message));
    }
}

void KIVO_INFO::reset_error_message_list() {
    next_error_ = 0;
    errors_are_over_ = false;
}

std::string KIVO_INFO::get_next_error_message() {
    // An empty message looks like the end, and so it is one.
    if (errors_are_over_ || next_error_ >= error_list.size() || error_list[next_error_].empty()) {
        errors_are_over_ = true;
        return "";
    }
    return error_list[next_error_++];
}

KIVO_PLACE KIVO_INFO::get_error_place(std::size_t index) const {
    return get_place(origin_of(*loaded_, error_list.size(), index).mark);
}

std::string KIVO_INFO::get_error_id(std::size_t index) const {
    return kIds[static_cast<std::size_t>(origin_of(*loaded_, error_list.size(), index).id)];
}

KIVO_PLACE KIVO_INFO::get_place(const KIVO_MARK& mark) const {
    if (mark.file == 0 || mark.file > loaded_->files.size()) {
        return {};
    }
    const KIVO_LOADED::File& file = loaded_->files[mark.file - 1];
    if (mark.offset == KIVO_LOADED::kWholeFile) {
        return {file.path, 0, 0};
    }
    const LineTable::Position at = file.lines.locate(mark.offset);
    return {file.path, at.line, at.column};
}
