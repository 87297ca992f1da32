// Drawing and pages of the recording port: every call with its points, and on demand the pixels.
#include "port_record/port_record.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace norva {

static constexpr std::uint32_t white = 0xFFFFFF;

static const std::array drawing_ops = {"pen", "rop", "move_to", "polyline_to", "fill", "erase", "image"};

std::string to_text(const record_call& c) {
    std::string s = c.op + ' ' + std::to_string(c.win);
    const auto add = [&s](long v) { s += ' ' + std::to_string(v); };
    const auto add_rect = [&] { add(c.rect.x), add(c.rect.y), add(c.rect.w), add(c.rect.h); };
    if (c.op == "move" || c.op == "fill" || c.op == "erase" || c.op == "image") add_rect();
    if (c.op == "pen" || c.op == "fill" || c.op == "swatch_colour") add(c.rgb);
    if (c.op == "pen") add(c.style), add(c.width);
    if (c.op == "create" || c.op == "list_select") add(c.style);
    if (c.op == "rop") s += c.rop == port_rop::copy ? " copy" : " xor";
    if (c.op == "image") add(c.pixel_size.w), add(c.pixel_size.h);
    for (const char* op : {"show", "enable", "read_only", "set_check", "mouse_free", "busy"})
        if (c.op == op) s += c.on ? " on" : " off";
    for (const port_point p : c.points) s += ' ' + std::to_string(p.x) + ',' + std::to_string(p.y);
    if (!c.text.empty()) s += " \"" + c.text + '"';
    for (const std::string& t : c.texts) s += " \"" + t + '"';
    if (c.lost) s += " lost";
    return s;
}

std::string record_port::log_text() const {
    std::string all_lines;
    for (const record_call& c : log) all_lines += to_text(c) + '\n';
    return all_lines;
}

std::vector<record_call> record_port::drawn(port_win dc) const {
    std::vector<record_call> calls;
    for (const record_call& c : log)
        if (c.win == dc && std::find(drawing_ops.begin(), drawing_ops.end(), c.op) != drawing_ops.end())
            calls.push_back(c);
    return calls;
}

std::size_t record_port::count(const std::string& op, port_win win) const {
    return static_cast<std::size_t>(std::count_if(log.begin(), log.end(), [&](const record_call& c) {
        return c.op == op && (win == 0 || c.win == win);
    }));
}

record_call& record_port::draw_note(const char* op, port_win dc) {
    record_call& c = note(op, dc);
    c.rop = pens_[dc].rop;
    const record_window* w = get(dc);
    c.lost = dc == port_page ? !has_page() : !w || !w->has_picture;
    return c;
}

void record_port::put_in_page(const record_call& c) {
    if (c.win == port_page && has_page()) pages.back().calls.push_back(c);
}

void record_port::pen(port_win dc, std::uint32_t rgb, int style, int width) {
    record_call& c = draw_note("pen", dc);
    c.rgb = rgb;
    c.style = style;
    c.width = width;
    pens_[dc].rgb = rgb;
    pens_[dc].width = width;
    put_in_page(c);
}

void record_port::rop(port_win dc, port_rop mode) {
    if (dc != port_page) pens_[dc].rop = mode;
    record_call& c = draw_note("rop", dc);
    c.rop = mode;
    put_in_page(c);
}

void record_port::move_to(port_win dc, port_point to) {
    pens_[dc].at = to;
    record_call& c = draw_note("move_to", dc);
    c.points = {to};
    put_in_page(c);
}

void record_port::polyline_to(port_win dc, std::span<const port_point> points) {
    pen_state& pen = pens_[dc];
    record_call& c = draw_note("polyline_to", dc);
    c.rgb = pen.rgb;
    c.width = pen.width;
    c.points.push_back(pen.at);
    c.points.insert(c.points.end(), points.begin(), points.end());
    put_in_page(c);
    record_window* w = get(dc);
    for (const port_point to : points) {
        if (w && !w->pixels.empty()) raster_line(*w, pen, pen.at, to);
        pen.at = to;
    }
}

// The part of a rectangle that lies on the picture.
static port_rect on_picture(port_rect r, port_size size) {
    const int x1 = std::min(r.x + r.w, size.w), y1 = std::min(r.y + r.h, size.h);
    const int x0 = std::max(r.x, 0), y0 = std::max(r.y, 0);
    return {x0, y0, std::max(x1 - x0, 0), std::max(y1 - y0, 0)};
}

static std::uint32_t& pixel(record_window& w, int x, int y) {
    return w.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(w.picture.w) +
                    static_cast<std::size_t>(x)];
}

static void raster_fill(record_window& w, port_rect r, std::uint32_t rgb, port_rop mode) {
    r = on_picture(r, w.picture);
    for (int y = r.y; y < r.y + r.h; ++y)
        for (int x = r.x; x < r.x + r.w; ++x) {
            std::uint32_t& p = pixel(w, x, y);
            p = mode == port_rop::copy ? rgb : p ^ rgb;
        }
}

// The part of a line inside a box two pixels wider than the picture, so that the length of a line never
// decides how long a test runs. False: nothing is left.
static bool clip(port_size size, double& x0, double& y0, double& x1, double& y1) {
    double t0 = 0, t1 = 1;
    const double dx = x1 - x0, dy = y1 - y0;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x0 + 2, size.w + 2 - x0, y0 + 2, size.h + 2 - y0};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0 && q[i] < 0) return false;
        if (p[i] < 0) t0 = std::max(t0, q[i] / p[i]);
        if (p[i] > 0) t1 = std::min(t1, q[i] / p[i]);
    }
    if (t0 > t1) return false;
    x1 = x0 + t1 * dx, y1 = y0 + t1 * dy;
    x0 += t0 * dx, y0 += t0 * dy;
    return true;
}

// A plain integer line without its last pixel; wide pens set squares.
void record_port::raster_line(record_window& w, const pen_state& pen, port_point from, port_point to) {
    double fx = from.x, fy = from.y, tx = to.x, ty = to.y;
    if (!clip(w.picture, fx, fy, tx, ty)) return;
    int x = static_cast<int>(std::lround(fx)), y = static_cast<int>(std::lround(fy));
    const int x1 = static_cast<int>(std::lround(tx)), y1 = static_cast<int>(std::lround(ty));
    const int dx = std::abs(x1 - x), dy = -std::abs(y1 - y), sx = x < x1 ? 1 : -1, sy = y < y1 ? 1 : -1;
    const int wide = std::max(pen.width, 1);
    for (int err = dx + dy; x != x1 || y != y1;) {
        raster_fill(w, {x - (wide - 1) / 2, y - (wide - 1) / 2, wide, wide}, pen.rgb, pen.rop);
        const int e2 = 2 * err;
        if (e2 >= dy) err += dy, x += sx;
        if (e2 <= dx) err += dx, y += sy;
    }
}

void record_port::fill(port_win dc, port_rect r, std::uint32_t rgb) {
    record_call& c = draw_note("fill", dc);
    c.rect = r;
    c.rgb = rgb;
    put_in_page(c);
    if (record_window* w = get(dc); w && !w->pixels.empty()) raster_fill(*w, r, rgb, port_rop::copy);
}

void record_port::erase(port_win dc, port_rect r) {
    record_call& c = draw_note("erase", dc);
    c.rect = r;
    put_in_page(c);
    if (record_window* w = get(dc); w && !w->pixels.empty()) raster_fill(*w, r, white, port_rop::copy);
}

void record_port::image(port_win dc, port_rect r, std::span<const std::uint32_t> rgb, int w, int h) {
    record_call& c = draw_note("image", dc);
    c.rect = r;
    c.pixels.assign(rgb.begin(), rgb.end());
    c.pixel_size = {w, h};
    put_in_page(c);
    record_window* area = get(dc);
    if (!area || area->pixels.empty() || w <= 0 || h <= 0 || r.w <= 0 || r.h <= 0) return;
    const port_rect seen = on_picture(r, area->picture);
    for (int y = seen.y; y < seen.y + seen.h; ++y)
        for (int x = seen.x; x < seen.x + seen.w; ++x) {
            const long column = static_cast<long>(x - r.x) * w / r.w,
                       row = static_cast<long>(y - r.y) * h / r.h;
            const std::size_t at = static_cast<std::size_t>(row * w + column);
            if (at < rgb.size()) pixel(*area, x, y) = rgb[at];
        }
}

port_page_result record_port::page_begin(const port_page_job& job) {
    note("page_begin", port_page).text = job.title;
    record_page& page = pages.emplace_back();
    page.job = job;
    page.begin = printer_cancelled ? port_page_result::cancel
                 : begin_fails     ? port_page_result::error
                                   : port_page_result::ok;
    pens_[port_page] = {};
    return page.begin;
}

port_page_caps record_port::page_caps() {
    return has_page() ? caps : port_page_caps{};
}

port_page_result record_port::page_end() {
    note("page_end", port_page);
    if (!has_page()) return port_page_result::error;
    pages.back().ended = true;
    pages.back().end = end_fails ? port_page_result::error : port_page_result::ok;
    return pages.back().end;
}

bool record_port::picture(port_win top, const std::string& png_file) {
    if (!get(top)) return false;
    note("picture", top).text = png_file;
    if (pictures_written) picture_files.push_back(png_file);
    return pictures_written;
}

} // namespace norva
