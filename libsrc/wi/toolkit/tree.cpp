// The tree: objects and their windows, who may hold whom, the two process-wide tables.
#include "toolkit_int.h"

#include <memory>
#include <unordered_map>

namespace norva {

void reset_start();

static constexpr std::size_t max_windows = 20000;
static constexpr std::size_t max_menus = 400;

// Everything lives until the process ends, so that handles stay valid.
static struct {
    std::vector<std::unique_ptr<wi_obj>> objects;
    std::unordered_map<port_win, wi_obj*> windows;
    std::vector<wi_menuinfo> menus;
    std::string window_name;
} tree;

void wi_reset_for_tests() {
    tree = {};
    reset_start();
    reset_menus();
}

// --- Tables

wi_obj* getwiobject(port_win win) {
    const auto it = tree.windows.find(win);
    return it == tree.windows.end() ? nullptr : it->second;
}

void setwiobject(port_win win, wi_obj* wo) {
    if (win == 0 || (tree.windows.size() >= max_windows && !tree.windows.contains(win))) return;
    tree.windows[win] = wo;
}

int setmenuinfo(const wi_menuinfo& info) {
    if (tree.menus.size() >= max_menus) return -1;
    tree.menus.push_back(info);
    return static_cast<int>(tree.menus.size()) - 1;
}

const wi_menuinfo* getmenuinfo(int id) {
    return id >= 0 && id < static_cast<int>(tree.menus.size()) ? &tree.menus[static_cast<std::size_t>(id)]
                                                               : nullptr;
}

int getmenuid(const wi_menuinfo& info) {
    for (std::size_t i = 0; i < tree.menus.size(); ++i)
        if (tree.menus[i] == info) return static_cast<int>(i);
    return -1;
}

// --- Kinds

bool is_box(int type) {
    return type >= wi_type::filebox && type <= wi_type::ynbox;
}

bool is_known(int type) {
    return (type >= wi_type::form && type <= wi_type::menubar && type != 10 && type != 30) || is_box(type);
}

// --- Making

static wi_obj* new_obj(int type, wi_union record) {
    wi_obj* wo = tree.objects.emplace_back(std::make_unique<wi_obj>()).get();
    wo->type = type;
    wo->obj = std::move(record);
    wo->ison = 1;
    return wo;
}

wi_obj* new_window(const std::string& title, int qenable) {
    port& p = the_port();
    p.set_events(&toolkit_events());
    wi_zuvapp record;
    record.label = title;
    record.qenable = qenable;
    wi_obj* top = new_obj(wi_type::zuvapp, record);
    top->handle = p.create(port_kind::top, 0, 0, title);
    top->shell = top;
    top->visible = false;
    setwiobject(top->handle, top);
    wi_size(top, 600, 600);
    return top;
}

static wi_obj* attach(wi_obj* wo, wi_obj* parent, const std::string& title, int qenable) {
    if (!parent) {
        parent = new_window(title, qenable);
        wo->shell = parent;
    }
    addchild(wo, parent);
    wo->handle = getparenthandle(parent);
    return wo;
}

wi_obj* new_layout(wi_obj* parent, int type, wi_union record, const std::string& title) {
    return attach(new_obj(type, std::move(record)), parent, title, 0);
}

wi_obj* new_widget(wi_obj* parent, int type, wi_union record, const std::string& label) {
    wi_obj* wo = attach(new_obj(type, std::move(record)), parent, {}, 1);
    wi_hlp_setstr(wo, label);
    return wo;
}

wi_obj* new_place(wi_obj* form, wi_null where) {
    wi_obj* place = new_obj(wi_type::place, where);
    place->parent = form;
    place->handle = form->handle;
    wi_form& f = std::get<wi_form>(form->obj);
    (f.last ? std::get<wi_null>(f.last->obj).next : form->child) = place;
    f.last = place;
    return place;
}

wi_obj* new_box(wi_obj* parent, int type, wi_union record) {
    wi_obj* wo = new_obj(type, std::move(record));
    wo->parent = parent;
    wo->handle = parent ? getparenthandle(parent) : 0;
    return wo;
}

port_win add_win(wi_obj* wo, port_kind kind, int style, const std::string& text) {
    const port_win win = the_port().create(kind, getparenthandle(wo->parent), style, text);
    setwiobject(win, wo);
    wo->wins.push_back(win);
    if (!wi_isenabled(wo)) the_port().enable(win, false);
    // What is made in a part of the window that is off comes up with that part.
    for (const wi_obj* above = wo; above && above->type != wi_type::zuvapp; above = above->parent) {
        if (above->visible) continue;
        wo->visible = false;
        the_port().show(win, false);
        break;
    }
    return win;
}

wi_obj* wi_mk_holder(wi_obj* parent, int type, std::shared_ptr<void> record) {
    wi_obj* wo = new_widget(parent, type, wi_holder{.record = std::move(record)}, {});
    wo->open = true;
    return wo;
}

void* wi_holder_record(const wi_obj* wo, int type) {
    const wi_holder* h = wo && wo->type == type ? std::get_if<wi_holder>(&wo->obj) : nullptr;
    return h ? h->record.get() : nullptr;
}

// --- Windows of their own

wi_obj* wi_mk_zuvapp(wi_obj*, const std::string& label) {
    return new_window(label, 0);
}

static wi_zuvapp& window_rec(wi_obj* wo, int pe) {
    wi_obj* top = wo ? wo->shell : nullptr;
    return wi_rec<wi_zuvapp>(top, wi_type::zuvapp, pe, "wizuvapp.c");
}

void wi_zuvapp_quit(wi_obj* wo, int enable, const std::string& name, wi_cb cbfunc, int tag) {
    wi_zuvapp& z = window_rec(wo, 2);
    z.qenable = enable;
    z.qname = name;
    z.cbquit = cbfunc;
    z.qtag = tag;
}

void wi_zuvapp_label(wi_obj* wo, const std::string& str) {
    window_rec(wo, 3).label = str;
    the_port().set_text(wo->shell->handle, str);
}

void wi_settitle(wi_obj* wo, const std::string& str) {
    if (!wo || !wo->shell) wi_pe(6, "wi.c");
    wi_zuvapp_label(wo, str);
}

void wi_set_window_name(const std::string& label) {
    tree.window_name = label;
}

wi_obj* wi_mk_form(wi_obj* parent, double xsize, double ysize) {
    if (!(xsize > 0 && ysize > 0)) wi_pe(1, "wiform.c", "Bad arg.");
    const std::string title = parent ? std::string() : std::exchange(tree.window_name, {});
    return new_layout(parent, wi_type::form, wi_form{.xsize = xsize, .ysize = ysize, .last = nullptr}, title);
}

// --- Both ways of the tree

port_win getparenthandle(const wi_obj* parent) {
    if (!parent) return 0;
    return parent->type == wi_type::frame ? getparenthandle(parent->parent) : parent->handle;
}

wi_obj* top_of(wi_obj* wo) {
    while (wo && wo->type != wi_type::zuvapp) wo = wo->parent;
    return wo;
}

void addchild(wi_obj* child, wi_obj* parent) {
    if (!parent || !child) wi_exit("Bad parameter to addchild");
    switch (parent->type) {
    case wi_type::zuvapp:
    case wi_type::frame:
    case wi_type::crop:
    case wi_type::place:
        if (parent->child)
            wi_exit("You attempted to add a child to an object, but it already has a child.  The object only "
                    "supports one child.");
        parent->child = child;
        break;
    case wi_type::drect: {
        wi_drect& d = std::get<wi_drect>(parent->obj);
        if (d.nchild >= 2)
            wi_exit("You attempted to add a child to a double rectangle, but it already has 2 children.  The "
                    "object "
                    "only support 2 children.");
        (d.nchild++ == 0 ? parent->child : d.child2) = child;
        break;
    }
    case wi_type::rectary: {
        wi_rectary& r = std::get<wi_rectary>(parent->obj);
        if (static_cast<int>(r.children.size()) >= r.maxchildren)
            wi_exit("You attempted to add a child to a rectangle array, but it already is filled.");
        r.children.push_back(child);
        break;
    }
    default:
        if (!parent->open || parent->child) wi_exit("Error: cannot add a child to that object.");
        parent->child = child;
    }
    child->parent = parent;
    if (wi_obj* top = top_of(parent)) std::get<wi_zuvapp>(top->obj).stale = true;
}

std::vector<wi_obj*> children_of(const wi_obj* wo) {
    std::vector<wi_obj*> below;
    if (const auto* r = std::get_if<wi_rectary>(&wo->obj)) {
        for (wi_obj* c : r->children)
            if (c) below.push_back(c);
        return below;
    }
    if (wo->type == wi_type::form) {
        for (wi_obj* p = wo->child; p; p = std::get<wi_null>(p->obj).next) below.push_back(p);
        return below;
    }
    if (wo->child) below.push_back(wo->child);
    if (const auto* d = std::get_if<wi_drect>(&wo->obj); d && d->child2) below.push_back(d->child2);
    return below;
}

} // namespace norva
