#pragma once
// The image window of a running workstation on the recording port, over scenes of point targets, driven by
// clicks on its picture.

#include "../app/workstation.h"

#include "draw/image_picture.h"
#include "image/ximag.h"
#include "journal/store.h"
#include "scene/scene_file.h"
#include "state/defaults.h"
#include "ximag_int.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace norva::test {

struct image_point {
    double crossrange = 0, range = 0, amplitude = 1; // gates
};

class image_test : public workstation {
protected:
    void SetUp() override {
        start();
        rec->rasters = true;
    }

    void TearDown() override { jrnl(95); }

    // A raw file of 64 frequencies by 64 records (or as told), points that stand where told in gates.
    static scene make_scene(const std::vector<image_point>& points, int nf = 64, int nt = 64) {
        scene s;
        s.nf = nf;
        s.nt = nt;
        for (const image_point& p : points) {
            const double doppler = p.crossrange / (nt * s.dt);
            // It comes nearer during the run, and is at its place in the middle.
            const double way = doppler / scene_centre(s) * 0.5 * (nt - 1) * s.dt;
            s.points.push_back(
                {.amplitude = p.amplitude, .delay = p.range * scene_gate(s) + way, .doppler = doppler});
        }
        return s;
    }
    void load(const scene& s, const std::string& name = "raw.pfx") {
        ASSERT_EQ(write_scene(s, {}, name), 1);
        open(name);
    }
    // Three points, no two of them alike in place or strength.
    void open_three() {
        load(make_scene({{10, 5, 1}, {-14, 12, 0.6}, {3, -17, 0.4}}));
        ASSERT_TRUE(click("Image"));
        ASSERT_EQ(imgwinon, 1);
    }

    port_win top() { return getparenthandle(ximag_window()); }
    port_win area() { return rec->all(port_kind::draw, top()).at(0); }
    // What the picture's draw area shows, as one number.
    std::size_t digest() {
        rec->run_pending();
        std::size_t hash = 14695981039346656037u;
        for (std::uint32_t p : rec->window(area()).pixels) hash = (hash ^ p) * 1099511628211u;
        return hash;
    }
    port_point pixel(double crossrange, double range) {
        const _vgdataframe& df = xi_picture.xy_df;
        return vg_to_pixel(*xi.disp, vg_x_loc(df, crossrange), vg_y_loc(df, range));
    }
    // Gates that a click may be off: the pixel it falls on.
    double slack() { return 1.01 / (xi_picture.xy_df.xscale * xi.disp->xpinch); }
    void press_pixel(port_point p, int button) {
        rec->press(area(), p.x, p.y, button);
        rec->release(area(), p.x, p.y, button);
        rec->run_pending();
    }
    void press(double crossrange, double range, int button = LEFT_BUTTON) {
        press_pixel(pixel(crossrange, range), button);
    }
    void move(double crossrange, double range) {
        const port_point p = pixel(crossrange, range);
        rec->free_move(area(), p.x, p.y);
    }
    void press_control_box(int button) { press_pixel({5, 5}, button); }
    bool button_down(const std::string& text) {
        return rec->window(rec->find(port_kind::toggle, text, top())).checked;
    }
    void choose_style(const std::string& name) {
        ASSERT_TRUE(rec->click(rec->find(port_kind::button, "Image type", top())));
        ASSERT_TRUE(rec->choose_menu(name));
        rec->run_pending();
    }
    // The entry of the field with this label, in any window that shows one.
    double field(const std::string& label) { return std::stod(rec->window(entry(label)).text); }
    std::string field_text(const std::string& label) { return rec->window(entry(label)).text; }
    void set_field(const std::string& label, const std::string& text) {
        EXPECT_TRUE(rec->enter(entry(label), text)) << label;
        rec->run_pending();
    }
    void step_field(const std::string& label, bool up) {
        port_win next = 0;
        for (port_win w : rec->all(port_kind::up_down))
            if (w > entry(label) && rec->visible(w) && (!next || w < next)) next = w;
        EXPECT_TRUE(rec->click_up_down(next, up)) << label;
        rec->run_pending();
    }
    // Amplitude of the image, over its largest, near a place: the largest within a gate.
    static float level(double crossrange, double range) {
        float most = 0;
        for (double dx = -1; dx <= 1; dx += 0.25)
            for (double dy = -1; dy <= 1; dy += 0.25)
                most = std::max(most, image_amplitude(crossrange + dx, range + dy));
        return most;
    }
    static std::vector<int> journal_tags() {
        std::vector<int> tags;
        for (int i = 0; i <= eoj; i++) {
            std::vector<std::int32_t> out;
            journal(std::vector<std::int32_t>{JOURNAL_GOTO, i}, out);
            tags.push_back(out.at(1));
        }
        return tags;
    }

private:
    // Fields are made label first.
    port_win entry(const std::string& label) {
        for (port_win w : rec->all(port_kind::label)) {
            if (rec->window(w).text != label || !rec->visible(w)) continue;
            port_win next = 0;
            for (port_win f : rec->all(port_kind::field))
                if (f > w && (!next || f < next)) next = f;
            return next;
        }
        ADD_FAILURE() << "no field " << label;
        return 0;
    }
};

} // namespace norva::test
