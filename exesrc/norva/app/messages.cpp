// The message window.
#include "app/messages.h"

#include "app/main_window.h"
#include "app/message_text.h"
#include "image/ximag.h"
#include "profiles/doppler_window.h"
#include "profiles/range_window.h"
#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>

namespace norva {

static struct {
    wi_obj* fm = nullptr;
    wi_obj* label = nullptr;
    message_text text;
} mw;

// Units of wi_size that one line of text needs, button and borders aside.
static int units_for(int lines) {
    const int line_height = the_port().char_height(), screen = std::max(1, the_port().screen_size().h);
    return 70 + lines * line_height * 768 * 4 / (screen * 5);
}

void msgwin_init() {
    mw = {};
    wi_set_window_name("Message");
    mw.fm = wi_mk_form(nullptr, 100, 100);
    wi_zuvapp_quit(mw.fm, 1, "Close", msgwin_cb, 0);
    mw.label = wi_mk_label(wi_form_parent(mw.fm, 4, 4, 96, 74), "", 0);
    wi_mk_button(wi_form_parent(mw.fm, 34, 78, 66, 95), "ACKNOWLEDGE", 0, msgwin_cb, 0);
    wi_size(mw.fm, 350, 140);
    wi_position(mw.fm, 300, 300);
    norva_reg(mw.fm, "Message");
    the_port().keep_above(getparenthandle(mw.fm));
}

// Controls whose handlers ignore the user while a message is up.
static void refresh_all_controls() {
    refresh_controls();
    xrp_refresh_controls();
    xdp_refresh_controls();
    ximag_refresh_controls();
}

void msgwin_cb(wi_obj*, int) {
    wi_off(mw.fm);
    msgwinon = 0;
    refresh_all_controls();
}

void msgwin_show(const std::string& text) {
    mw.text.add(text, msgwinon != 0);
    wi_label(mw.label, mw.text.text);
    wi_size(mw.fm, 450, std::max(mw.text.lines * 5 + 140, units_for(mw.text.lines)));
    msgwinon = 1;
    refresh_all_controls();
    wi_on(mw.fm);
}

} // namespace norva
