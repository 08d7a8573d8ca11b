#pragma once

#include <string>
#include <string_view>
#include <vector>

// Advice is given of configurations alone, never of descriptions.
enum class Severity { kError, kWarning, kAdvice };

// What an author wants to know of one kind of message.
struct MessageDescription {
    std::string_view id;
    Severity severity;
    // What is wrong, why it matters and how to mend it: one paragraph, its lines broken for the
    // sake of the source only.
    std::string_view explanation;
    // A whole description that gives this message; program text for a message that no description
    // gives.
    std::string_view example;
    // Warnings that are a matter of taste are told only when they are asked for.
    bool is_on = true;
};

// Every message that the program knows, in the order of the handbook.
const std::vector<MessageDescription>& message_catalogue();

// "error", "warning" or "advice".
const char* severity_word(Severity severity);

// The first sentence of an explanation, in one line.
std::string first_sentence(std::string_view explanation);

// The message of that id, or null.
const MessageDescription* find_message(std::string_view id);
