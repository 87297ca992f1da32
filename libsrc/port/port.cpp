#include "port/port.h"

#include <cstdio>
#include <cstdlib>

namespace norva {

static port* current_port = nullptr;

port& the_port() {
    if (!current_port) {
        std::fputs("no platform port is set\n", stderr);
        std::abort();
    }
    return *current_port;
}

void set_port(port* p) {
    current_port = p;
}

} // namespace norva
