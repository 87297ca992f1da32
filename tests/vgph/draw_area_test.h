#pragma once
// A draw area on the recording port, ready to be drawn on, for the tests of displays and paper.

#include "port_record/port_record.h"
#include "vgph/vgxw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace norva::test {

class draw_area_test : public testing::Test {
protected:
    record_port rec;
    port_win area = 0;

    void SetUp() override {
        set_port(&rec);
        rec.rasters = true;
    }
    void TearDown() override { set_port(nullptr); }

    vgdisplay_ptr display(int w, int h, float xsize, float ysize, int invxy = 0) {
        const port_win top = rec.create(port_kind::top, 0, 0, "");
        area = rec.create(port_kind::draw, top, 0, "");
        rec.move(top, {0, 0, w, h});
        rec.move(area, {0, 0, w, h});
        rec.show(area, true);
        rec.show(top, true);
        rec.run_pending();
        return vg_xw_init(area, xsize, ysize, invxy);
    }
    const std::vector<std::uint32_t>& pixels() { return rec.window(area).pixels; }
    std::uint32_t pixel(int x, int y) {
        return pixels().at(static_cast<std::size_t>(y * rec.window(area).picture.w + x));
    }
    int pixels_of(std::uint32_t rgb) {
        return static_cast<int>(std::count(pixels().begin(), pixels().end(), rgb));
    }
    // The calls of one operation on a target, since the log was cleared.
    std::vector<record_call> calls(const std::string& op, port_win dc) {
        std::vector<record_call> out;
        for (const record_call& c : rec.log)
            if (c.op == op && c.win == dc) out.push_back(c);
        return out;
    }
};

inline vgobject_ptr line(std::vector<std::pair<float, float>> points, int color = 1) {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, color, 0, 0);
    for (std::size_t i = 0; i < points.size(); i++)
        vg_plot_object(*obj, points[i].first, points[i].second, i > 0);
    return obj;
}

} // namespace norva::test
