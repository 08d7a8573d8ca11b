#pragma once

#include <string>
#include <vector>

#include "kivo/toolkit/place.h"

// What a message of the error list is about, for tools that explain it or mend the description.
// A text is empty where there is nothing to tell; all are as the description writes them.
struct KIVO_MESSAGE_FACTS {
    std::string element;    // the tag of the element in which the fault lies
    std::string attribute;  // its attribute that is wrong or missing
    // What is not known, not allowed or not found: the tag of a sub-element, the name or the value
    // of the attribute, a word of the element's text, the name of a file. Empty also when what is
    // wrong is that there is none.
    std::string word;
    std::string object;  // the object, vector or wizard map concerned
    std::string reason;  // why the system did not open or read a file ("Permission denied")
    // The words that could stand in the word's place, in alphabetical order, or one phrase that
    // says which ("whole numbers from 1 to 100"). Empty when none can or any can.
    std::vector<std::string> known_words;
    // What the message has to do with elsewhere: the first declaration of an object whose types
    // clash, the first of several attributes of one name. Else nowhere; see KIVO_INFO::get_place.
    KIVO_MARK related;
};
