// The process entry: chooses the platform port and hands over to the toolkit. The only file that knows every
// module and the port.
#include "app/start.h"
#include "port/port.h"
#include "port_qt/port_qt.h"
#include "toolkit/wi.h"

#include <cstdio>

int main(int argc, char** argv) {
    using namespace norva;
    const start_options options = parse_options(argc, argv);
    if (!options.fault.empty()) {
        std::fprintf(stderr, "norva: %s; see norva --help\n", options.fault.c_str());
        return 2;
    }
    if (!options.answer.empty()) {
        std::fputs(options.answer.c_str(), stdout);
        return 0;
    }
    const auto platform = make_qt_port({.unattended = !options.replay.empty()});
    set_port(platform.get());
    norva_start_with(options);
    return WinMain(argc, argv, norva_main);
}
