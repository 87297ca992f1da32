#pragma once
// Pixels on their way to the port. Strokes of any length go out in runs of up to 100 points; a run starts
// with the last point of the one before, so that a long line has no gap. As the port leaves out the last
// pixel of what it draws, no pixel is touched twice there, which exclusive-or depends on.

#include "port/port.h"

#include <array>

namespace norva {

class line_run {
public:
    explicit line_run(port_win dc) : out_(the_port()), dc_(dc) {}
    ~line_run() { end(); }
    line_run(const line_run&) = delete;
    line_run& operator=(const line_run&) = delete;

    void move(port_point p) {
        end();
        pts_[0] = p;
        n_ = 1;
        starts_stroke_ = true;
    }
    // Without a move before it, the first draw gives the start.
    void draw(port_point p) {
        if (n_ == 0) return move(p);
        if (n_ > 1 && p == pts_[n_ - 1]) return; // many points of a dense curve share a pixel
        if (n_ == max_points) {
            flush();
            pts_[0] = pts_[max_points - 1];
            n_ = 1;
            starts_stroke_ = false;
        }
        pts_[n_++] = p;
    }
    // Sends what is pending; a lone point draws nothing.
    void end();
    int strokes() const { return strokes_; }

private:
    static constexpr int max_points = 100;
    void flush();

    port& out_;
    port_win dc_;
    std::array<port_point, max_points> pts_;
    int n_ = 0;
    bool starts_stroke_ = false;
    int strokes_ = 0;
};

} // namespace norva
