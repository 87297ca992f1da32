// Objects and frames: lists of pen vectors and lists of objects.

#include "vgph/vgph.h"

#include <algorithm>
#include <cstddef>

namespace norva {

static bool is_radius(int pen) {
    return pen >= vg_pen_circle;
}

vgobject_ptr vg_new_object() {
    auto obj = std::make_unique<_vgobject>();
    obj->veclst.reserve(128);
    return obj;
}

void vg_del_object(vgobject_ptr& obj) {
    obj.reset();
}

void vg_plot_obj(_vgobject& obj, float x, float y, int pen) {
    obj.veclst.push_back({pen, x, y});
    if (pen != vg_pen_move && pen != vg_pen_draw) obj.extended = 1;
}

void vg_plot_object(_vgobject& obj, float x, float y, int pendown) {
    obj.veclst.push_back({pendown ? vg_pen_draw : vg_pen_move, x, y});
}

void vg_attr_object(_vgobject& obj, int color, int linetype, int linethick) {
    obj.color = std::clamp(color, 0, vg_overlay_color);
    obj.linetype = linetype;
    obj.linethick = linethick;
}

void vg_scale_object(_vgobject& obj, float xfact, float yfact, float xmove, float ymove) {
    for (_vgvec& v : obj.veclst) {
        if (is_radius(v.pen)) {
            v.x *= xfact;
        } else {
            v.x = v.x * xfact + xmove;
            v.y = v.y * yfact + ymove;
        }
    }
}

void vg_move_object(_vgobject& obj, float xmove, float ymove) {
    for (_vgvec& v : obj.veclst) {
        if (is_radius(v.pen)) continue;
        v.x += xmove;
        v.y += ymove;
    }
}

void vg_merge_object(_vgobject& obj1, vgobject_ptr obj2) {
    if (!obj2) return;
    obj1.veclst.insert(obj1.veclst.end(), obj2->veclst.begin(), obj2->veclst.end());
    if (obj2->extended) obj1.extended = 1;
}

void vg_obj_extent(const _vgobject& obj, float& x0, float& y0, float& x1, float& y1) {
    x0 = y0 = x1 = y1 = 0;
    if (obj.veclst.empty()) return;
    x0 = x1 = obj.veclst.front().x;
    y0 = y1 = obj.veclst.front().y;
    for (const _vgvec& v : obj.veclst) {
        x0 = std::min(x0, v.x);
        x1 = std::max(x1, v.x);
        y0 = std::min(y0, v.y);
        y1 = std::max(y1, v.y);
    }
}

void vg_box_obj(_vgobject& obj, float gap) {
    float x0, y0, x1, y1;
    vg_obj_extent(obj, x0, y0, x1, y1);
    vg_plot_object(obj, x0 - gap, y0 - gap, 0);
    vg_plot_object(obj, x1 + gap, y0 - gap, 1);
    vg_plot_object(obj, x1 + gap, y1 + gap, 1);
    vg_plot_object(obj, x0 - gap, y1 + gap, 1);
    vg_plot_object(obj, x0 - gap, y0 - gap, 1);
}

vgframe_ptr vg_new_frame() {
    return std::make_unique<_vgframe>();
}

void vg_del_frame(vgframe_ptr& frame) {
    frame.reset();
}

_vgobject* vg_add_object(_vgframe& frame, vgobject_ptr obj) {
    if (!obj) return nullptr;
    frame.objptr.push_back(std::move(obj));
    return frame.objptr.back().get();
}

vgobject_ptr vg_remove_object(_vgframe& frame, const _vgobject* obj) {
    auto at = std::find_if(frame.objptr.begin(), frame.objptr.end(),
                           [obj](const vgobject_ptr& held) { return held.get() == obj; });
    if (at == frame.objptr.end()) return nullptr;
    vgobject_ptr out = std::move(*at);
    frame.objptr.erase(at);
    return out;
}

} // namespace norva
