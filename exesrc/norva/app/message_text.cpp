#include "app/message_text.h"

#include <algorithm>

namespace norva {

static std::string broken(const std::string& message) {
    std::string out;
    std::size_t on_line = 0;
    for (char c : message) {
        if (c == '\n' || (c == ' ' && on_line >= message_text::LINE_LENGTH)) {
            out += '\n';
            on_line = 0;
        } else {
            out += c;
            on_line++;
        }
    }
    return out;
}

void message_text::add(const std::string& message, bool showing) {
    const std::string fresh = broken(message);
    if (showing && !text.empty() && text.size() + 2 + fresh.size() <= MOST)
        text += "\n\n" + fresh;
    else
        text = fresh.substr(0, MOST);
    lines = 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace norva
