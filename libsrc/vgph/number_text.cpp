// Numbers as axis labels.

#include "number_text.h"

#include "zuvsys/numparse.h"

#include <cctype>

namespace norva {

static std::string finish(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    const std::string mantissa = text.substr(0, text.find('E'));
    const bool is_zero =
        mantissa.find_first_of("123456789") == std::string::npos && mantissa.find('0') != std::string::npos;
    if (text.starts_with('-') && is_zero) text.erase(0, 1);
    return text;
}

std::string label_fixed(double value, int decimals) {
    return finish(format_fixed(value, decimals));
}
std::string label_exponent(double value, int decimals) {
    return finish(format_exponent(value, decimals));
}
std::string label_general(double value, int digits) {
    return finish(format_general(value, digits));
}

} // namespace norva
