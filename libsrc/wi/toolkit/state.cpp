// On and off, size and position, grey, tooltips, the application's pointer.
#include "toolkit_int.h"

#include "toolkit/boxes.h"

namespace norva {

// --- On and off

static void show_windows(const wi_obj* wo, bool on) {
    if (const auto* list = std::get_if<wi_listsel>(&wo->obj)) {
        the_port().show(list->labelarea, on);
        the_port().show(shown_list(*list), on);
        return;
    }
    for (const port_win win : wo->wins) the_port().show(win, on);
}

static void show_branch(wi_obj* wo, bool on) {
    if (wo->visible != on || wo->type == wi_type::listsel) show_windows(wo, on);
    wo->visible = on;
    for (wi_obj* c : children_of(wo)) show_branch(c, on);
}

static void pop_up(wi_obj* wo) {
    switch (wo->type) {
    case wi_type::filebox: wi_filebox_popup(wo); break;
    case wi_type::editbox: wi_editbox_popup(wo); break;
    case wi_type::msgbox: wi_msgbox_popup(wo); break;
    default: wi_ynbox_popup(wo);
    }
}

void wi_on(wi_obj* wo) {
    if (!wo || !is_known(wo->type)) wi_exit("You cannot turn on that object with wi_on");
    if (is_box(wo->type)) return pop_up(wo);
    wi_obj* top = wo->shell;
    layout_if_stale(top_of(wo));
    show_branch(top ? top : wo, true);
    if (!top) return;
    the_port().show(top->handle, true);
    the_port().raise(top->handle);
}

// A window takes its contents with it, so these keep their own state.
void wi_off(wi_obj* wo) {
    if (!wo || !is_known(wo->type)) wi_exit("You cannot turn off that object with wi_off");
    if (is_box(wo->type)) {
        const auto* box = std::get_if<wi_editbox>(&wo->obj);
        if (box && box->window) wi_off(box->window);
    } else if (wo->shell) {
        wo->shell->visible = false;
        the_port().show(wo->shell->handle, false);
    } else {
        show_branch(wo, false);
    }
}

bool wi_isvisible(const wi_obj* wo) {
    if (!wo) wi_pe(1, "wi.c");
    for (; wo; wo = wo->parent)
        if (!wo->visible) return false;
    return true;
}

// --- Size and position

static wi_obj* shell_of(wi_obj* wo) {
    if (!wo || !wo->shell) wi_exit("Bad parameter to wi_size");
    return wo->shell;
}

void wi_size(wi_obj* wo, int x, int y) {
    const port_win top = shell_of(wo)->handle;
    const port_size screen = the_port().screen_size();
    port_rect r = the_port().window_rect(top);
    r.w = static_cast<int>(static_cast<double>(x) * screen.w * 1.25 / 1024);
    r.h = static_cast<int>(static_cast<double>(y) * screen.h * 1.25 / 768);
    the_port().move(top, r);
}

void wi_position(wi_obj* wo, int x, int y) {
    const port_win top = shell_of(wo)->handle;
    const port_size screen = the_port().screen_size();
    port_rect r = the_port().window_rect(top);
    r.x = x * screen.w / 1024;
    r.y = y * screen.h / 768;
    the_port().move(top, r);
}

// --- Grey

int wi_isenabled(const wi_obj* wo) {
    if (!wo) wi_pe(2, "wi.c");
    for (; wo; wo = wo->parent)
        if (!wo->enabled) return 0;
    return 1;
}

static void pass_enabled(const wi_obj* wo, bool on) {
    on = on && wo->enabled;
    for (const port_win win : wo->wins) the_port().enable(win, on);
    for (const wi_obj* c : children_of(wo)) pass_enabled(c, on);
}

void refresh_enabled(wi_obj* wo) {
    pass_enabled(wo, !wo->parent || wi_isenabled(wo->parent));
}

void wi_enable(wi_obj* wo, int on) {
    if (!wo) wi_pe(3, "wi.c");
    if (wo->enabled == (on != 0)) return;
    wo->enabled = on != 0;
    refresh_enabled(wo);
}

// --- The rest

void wi_set_tooltip(wi_obj* wo, const std::string& text) {
    if (!wo) wi_pe(4, "wi.c");
    for (const port_win win : wo->wins) the_port().tooltip(win, text);
    for (wi_obj* c : children_of(wo)) wi_set_tooltip(c, text);
}

void wi_store(wi_obj* wo, void* ptr) {
    if (!wo) wi_pe(5, "wi.c");
    wo->point = ptr;
}

void* wi_recall(const wi_obj* wo) {
    if (!wo) wi_pe(7, "wi.c");
    return wo->point;
}

} // namespace norva
