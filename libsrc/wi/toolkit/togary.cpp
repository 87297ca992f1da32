// A column of toggles, held together by the rule of its mode.
#include "toolkit/buttons.h"

#include "toolkit_int.h"

#include <algorithm>

namespace norva {

static auto& tog(auto* wo, int pe) {
    return wi_rec<wi_togary>(wo, wi_type::togary, pe, "witogary.c");
}

wi_obj* wi_mk_togary(wi_obj* parent, const std::vector<std::string>& labels) {
    if (labels.empty()) wi_pe(1, "witogary.c");
    wi_obj* wo = new_widget(parent, wi_type::togary, wi_togary{}, {});
    wo->open = true;
    wi_obj* buttons = wi_mk_butary(wo, static_cast<int>(labels.size()), 1);
    wo->open = false;
    std::get<wi_butary>(buttons->obj).togary = wo;
    wi_togary& t = std::get<wi_togary>(wo->obj);
    t.butary = buttons;
    for (const std::string& label : labels)
        t.ary.push_back({.state = 0, .button = wi_butary_button(buttons, label, 1, nullptr, 0)});
    wi_togary_setary(wo, {});
    return wo;
}

static bool any_on(const wi_togary& t) {
    return std::any_of(t.ary.begin(), t.ary.end(), [](const wi_togslot& s) { return s.state != 0; });
}

// One toggle by the rule; the others follow.
static void set_one(wi_togary& t, std::size_t index, bool on) {
    const bool single = t.mode == 0 || t.mode == 1;
    if (on && single)
        for (wi_togslot& s : t.ary) s.state = 0;
    t.ary[index].state = on;
    if ((t.mode == 0 || t.mode == 2) && !any_on(t)) t.ary.front().state = 1;
}

static void show_states(const wi_togary& t) {
    for (const wi_togslot& s : t.ary) wi_button_setstate(s.button, s.state);
}

void togary_pressed(wi_obj* wo, const wi_obj* button) {
    wi_togary& t = std::get<wi_togary>(wo->obj);
    const auto it =
        std::find_if(t.ary.begin(), t.ary.end(), [&](const wi_togslot& s) { return s.button == button; });
    if (it == t.ary.end() || !t.editable) return;
    t.activated = static_cast<int>(it - t.ary.begin());
    set_one(t, static_cast<std::size_t>(t.activated), !it->state);
    show_states(t);
    if (t.chng_cb) t.chng_cb(wo, t.tag);
}

static bool is_index(const wi_togary& t, int index) {
    return index >= 0 && index < static_cast<int>(t.ary.size());
}

int wi_togary_getindex(const wi_obj* wo) {
    const wi_togary& t = tog(wo, 2);
    for (std::size_t i = 0; i < t.ary.size(); ++i)
        if (t.ary[i].state) return static_cast<int>(i);
    return -1;
}

int wi_togary_getstate(const wi_obj* wo, int index) {
    const wi_togary& t = tog(wo, 3);
    if (!is_index(t, index)) wi_exit("Bad index passed to wi_togary_getstate.");
    return t.ary[static_cast<std::size_t>(index)].state;
}

void wi_togary_setstate(wi_obj* wo, int index, int state) {
    wi_togary& t = tog(wo, 4);
    if (!is_index(t, index)) wi_exit("Bad index passed to wi_togary_setstate.");
    set_one(t, static_cast<std::size_t>(index), state != 0);
    show_states(t);
}

std::vector<int> wi_togary_getary(const wi_obj* wo) {
    std::vector<int> states;
    for (const wi_togslot& s : tog(wo, 5).ary) states.push_back(s.state);
    return states;
}

void wi_togary_setary(wi_obj* wo, std::span<const int> states) {
    wi_togary& t = tog(wo, 6);
    const bool single = t.mode == 0 || t.mode == 1;
    bool found = false; // with a single one, the first that is on wins
    for (std::size_t i = 0; i < t.ary.size(); ++i) {
        const bool on = i < states.size() && states[i] != 0 && !(single && found);
        t.ary[i].state = on;
        found = found || on;
    }
    if (!found && (t.mode == 0 || t.mode == 2)) t.ary.front().state = 1;
    show_states(t);
}

void wi_togary_setmode(wi_obj* wo, int mode) {
    wi_togary& t = tog(wo, 7);
    if (mode < 0 || mode > 3) wi_pe(8, "witogary.c");
    t.mode = mode;
    wi_togary_setary(wo, wi_togary_getary(wo));
}

void wi_togary_editable(wi_obj* wo, int flag) {
    tog(wo, 9).editable = flag != 0;
}

void wi_togary_chng_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_togary& t = tog(wo, 10);
    t.chng_cb = cb;
    t.tag = tag;
}

} // namespace norva
