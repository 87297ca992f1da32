#pragma once
// A device context: one painter kept open on a picture or a page, with the pen, the mode, the current point
// and the place in the dash pattern that the next lines start from.

#include "port/port.h"

#include <QImage>
#include <QPainter>
#include <QPoint>

#include <vector>

namespace norva {

// The pixels as a picture; a null one when there are fewer than w times h.
QImage to_qimage(std::span<const std::uint32_t> rgb, int w, int h);

class canvas {
public:
    canvas() = default;
    ~canvas();
    canvas(const canvas&) = delete;
    canvas& operator=(const canvas&) = delete;

    // Pen and mode are kept from one device to the next. A picture is drawn on at once; on a page the runs of
    // a line are gathered into one path (the page writer starts the dashes anew with every path).
    // unit: device units of the thinnest pen.
    bool begin(QPaintDevice* device, bool page, double unit);
    bool end();
    bool active() const { return painter_.isActive(); }

    void pen(std::uint32_t rgb, int style, int width);
    void rop(port_rop mode);
    void move_to(port_point to);
    void polyline_to(std::span<const port_point> points);
    void fill(port_rect area, std::uint32_t rgb);
    void image(port_rect area, const QImage& picture);

private:
    void apply_pen();
    void apply_rop();
    void draw_run();
    double run_length() const;

    QPainter painter_;
    bool page_ = false;
    double unit_ = 1;

    std::uint32_t rgb_ = 0;
    int style_ = 0, width_ = 1;
    port_rop rop_ = port_rop::copy;
    QPoint at_;
    double phase_ = 0;        // in pen widths, inside the dash pattern
    std::vector<QPoint> run_; // points of the run that is drawn, or of the path gathered for a page
};

} // namespace norva
