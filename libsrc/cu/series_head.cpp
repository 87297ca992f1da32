#include "series_head.h"

namespace norva {

void head_put_text(std::span<std::byte> field, const std::string& text) {
    std::ranges::fill(field, static_cast<std::byte>(' '));
    field.back() = std::byte{0};
    const std::size_t n = std::min({text.size(), text.find('\0'), field.size() - 1});
    std::memcpy(field.data(), text.data(), n);
}

std::string head_get_text(std::span<const std::byte> field) {
    const auto* chars = reinterpret_cast<const char*>(field.data());
    std::string text(chars, std::find(chars, chars + field.size(), '\0'));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace norva
