#pragma once
// The text of the message window: messages that arrive while it is up are appended, and lines are broken.

#include <string>

namespace norva {

struct message_text {
    static constexpr std::size_t MOST = 2000;      // characters held
    static constexpr std::size_t LINE_LENGTH = 50; // a line is broken at the next blank after this many

    std::string text;
    int lines = 0;

    // Adds a message behind a blank line while the window is showing and the message fits; otherwise the text
    // starts afresh with it.
    void add(const std::string& message, bool showing);
};

} // namespace norva
