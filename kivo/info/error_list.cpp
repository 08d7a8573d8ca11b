#include <utility>

#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/message.h"

void KIVO_INFO::post_error_message(const std::string& message) {
    post({.detail = message});
}

void KIVO_INFO::post(const KIVO_MESSAGE& message) {
    std::string text = fill_in(message);
    // An origin without its message, should memory run short now, is noticed and dropped.
    loaded_->origins.add(error_list, message, text);
    error_list.push_back(std::move(text));
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
    return get_place(loaded_->origins.find(error_list, index).mark);
}

std::string KIVO_INFO::get_error_id(std::size_t index) const {
    return kivo_message_id_name(loaded_->origins.find(error_list, index).id);
}

KIVO_MESSAGE_FACTS KIVO_INFO::get_error_facts(std::size_t index) const {
    return loaded_->origins.facts(loaded_->origins.find(error_list, index));
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
