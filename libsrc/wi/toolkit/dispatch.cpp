// From the port's events to the widgets. No platform message reaches application code.
#include "toolkit_int.h"

namespace norva {

namespace {

class dispatcher final : public port_events {
    void on_size(port_win top, int w, int h) override {
        wi_obj* wo = getwiobject(top);
        if (!wo || wo->type != wi_type::zuvapp) return;
        std::get<wi_zuvapp>(wo->obj).stale = false;
        onresize(wo, 0, 0, w, h);
    }

    void on_paint(port_win draw) override {
        if (wi_obj* wo = getwiobject(draw); wo && wo->type == wi_type::drawarea) drawarea_paint(wo);
    }

    void on_mouse(port_win draw, port_mouse kind, int x, int y, int button) override {
        if (wi_obj* wo = getwiobject(draw); wo && wo->type == wi_type::drawarea)
            drawarea_mouse(wo, kind, x, y, button);
    }

    void on_command(port_win control) override {
        wi_obj* wo = getwiobject(control);
        if (!wo) return;
        switch (wo->type) {
        case wi_type::button: return button_pressed(wo);
        case wi_type::colorbut: return colorbut_pressed(wo);
        case wi_type::menubar: return menubar_pressed(wo, control);
        default: return;
        }
    }

    void on_command_part(port_win control, bool up) override {
        if (wi_obj* wo = getwiobject(control); wo && wo->type == wi_type::updownbut)
            updownbut_pressed(wo, up);
    }

    void on_select(port_win combo, int index) override {
        if (wi_obj* wo = getwiobject(combo); wo && wo->type == wi_type::listsel) listsel_chosen(wo, index);
    }

    bool on_char(port_win field, char32_t ch) override {
        const wi_obj* wo = getwiobject(field);
        return !wo || wo->type != wi_type::numfld || numfld_takes(ch);
    }

    void on_return(port_win field) override {
        if (wi_obj* wo = getwiobject(field)) entry_return(wo);
    }

    void on_tab(port_win control, bool back) override {
        if (wi_obj* wo = getwiobject(control); wo && top_of(wo)) focus_next(wo, control, back);
    }

    void on_help(port_win control) override {
        if (const wi_obj* wo = getwiobject(control)) wi_hlp_srch(wi_hlp_getstr(wo));
    }

    void on_menu(int id) override {
        if (!listsel_popup_chosen(id)) menudispatcher(id);
    }

    bool on_close(port_win win) override {
        wi_obj* top = getwiobject(win);
        if (!top || top->type != wi_type::zuvapp) return true;
        const wi_zuvapp z = std::get<wi_zuvapp>(top->obj);
        if (!z.qenable) return false;
        if (z.cbquit) {
            z.cbquit(top, z.qtag);
            return false;
        }
        if (wi_hooks.crsh_safe && !wi_hooks.crsh_safe()) return false;
        top->visible = false;
        the_port().quit(0);
        return true;
    }

    bool on_shortcut(port_win win, char key) override {
        wi_obj* top = getwiobject(win);
        return top && wi_hooks.shortcut && wi_hooks.shortcut(top, key);
    }
};

} // namespace

port_events& toolkit_events() {
    static dispatcher events;
    return events;
}

} // namespace norva
