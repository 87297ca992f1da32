#pragma once
// placeholder, replaced by the recording port
#include "port/port.h"
