#include "state/window_register.h"

namespace norva {

void norva_regwin_init() {}

void norva_reg(wi_obj*, const char*) {}

void norva_reg_status(wi_obj*) {}

} // namespace norva
