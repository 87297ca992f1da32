#pragma once
// Draw area: the window in which pictures are drawn. Nothing is erased between paints.

#include "toolkit/wi.h"

namespace norva {

// The first paint and each change of size call resize (expose when there is no resize callback); the
// program's own request for a paint calls expose. Either may be empty.
wi_obj* wi_mk_drawarea(wi_obj* parent, wi_cb expose_cb, int expose_tag, wi_cb resize_cb, int resize_tag);
// The window to draw in, for the drawing calls of the port.
port_win wi_drawarea_getwidget(const wi_obj* wo);
void wi_drawarea_expose_cb(wi_obj* wo, wi_cb cb, int tag);
void wi_drawarea_resize_cb(wi_obj* wo, wi_cb cb, int tag);
// kind 0: button down, 1: button up, 2: move with a button down, 3: move with none. Null takes it away.
void wi_drawarea_mouse_cb(wi_obj* wo, int kind, wi_mouse_cb cb, int tag);

} // namespace norva
