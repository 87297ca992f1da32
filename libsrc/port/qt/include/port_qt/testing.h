#pragma once
// For tests of the Qt port only: the widget behind a window, to inject events into and to look at.

#include "port/port.h"

class QWidget;

namespace norva {

QWidget* port_qt_widget(port&, port_win); // null for an unknown window or another port

} // namespace norva
