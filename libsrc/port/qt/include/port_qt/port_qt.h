#pragma once
// The Qt 6 port. make_qt_port starts QApplication; one may exist in a process.

#include "port/port.h"

#include <memory>
#include <string>

namespace norva {

struct qt_port_options {
    // No user is there: messages go to standard error, questions are answered no, files are not chosen, a
    // page goes to its file. The offscreen platform is used.
    bool unattended = false;
};

std::unique_ptr<port> make_qt_port(const qt_port_options&);

} // namespace norva
