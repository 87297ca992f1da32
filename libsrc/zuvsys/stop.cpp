#include "zuvsys/stop.h"

#include <cstdio>
#include <cstdlib>

namespace norva {

void stop(const char* text) {
    std::fputs(text, stderr);
    std::fputc('\n', stderr);
    std::fflush(nullptr);
    std::_Exit(1);
}

} // namespace norva
