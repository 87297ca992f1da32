#include "zuvsys/strprintf.h"

#include <cstdarg>
#include <cstdio>

namespace norva {

std::string strprintf(const char* format, ...) {
    va_list args, again;
    va_start(args, format);
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string out(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(out.data(), out.size() + 1, format, again);
    va_end(again);
    return out;
}

} // namespace norva
