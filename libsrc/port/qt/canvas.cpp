// Drawing with one pen on a picture or a page.
#include "canvas.h"

#include "text.h"

#include <QImage>
#include <QList>
#include <QPen>

#include <array>

namespace norva {

// Dash and gap lengths in pen widths, for the line words solid, dash, longdash, dotdash, dot, dotdotdash,
// dashdashdot, dashdashdotdot, dashlongdash, dotdashlongdash.
static const QList<qreal>& dash_pattern(int style) {
    static const std::array<QList<qreal>, 10> patterns = {{
        {},
        {7, 4},
        {15, 4},
        {2, 3, 7, 3},
        {2, 3},
        {2, 3, 2, 3, 7, 3},
        {7, 3, 7, 3, 2, 3},
        {7, 3, 7, 3, 2, 3, 2, 3},
        {7, 4, 15, 4},
        {2, 3, 7, 3, 15, 3},
    }};
    return patterns[style >= 0 && style < 10 ? static_cast<std::size_t>(style) : 0];
}

canvas::~canvas() {
    end();
}

bool canvas::begin(QPaintDevice* device, bool page, double unit) {
    end();
    page_ = page;
    unit_ = unit;
    if (!painter_.begin(device)) return false;
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform, false);
    if (page) painter_.setRenderHint(QPainter::LosslessImageRendering);
    at_ = {};
    phase_ = 0;
    apply_pen();
    apply_rop();
    return true;
}

bool canvas::end() {
    if (!painter_.isActive()) return false;
    draw_run();
    return painter_.end();
}

void canvas::pen(std::uint32_t rgb, int style, int width) {
    draw_run();
    rgb_ = rgb;
    style_ = style;
    width_ = std::clamp(width, 1, 1000);
    apply_pen();
}

void canvas::apply_pen() {
    if (!active()) return;
    const QList<qreal>& dashes = dash_pattern(style_);
    QPen pen(to_colour(rgb_));
    pen.setWidthF(width_ * unit_);
    // With a flat cap the thinnest pen leaves out the last pixel of a run, so that two runs that meet do not
    // touch it twice. Wide solid lines need round ends to close the corners where runs meet.
    const bool wide = page_ || width_ > 1;
    pen.setCapStyle(wide && dashes.isEmpty() ? Qt::RoundCap : Qt::FlatCap);
    pen.setJoinStyle(wide ? Qt::RoundJoin : Qt::BevelJoin);
    if (!dashes.isEmpty()) {
        pen.setDashPattern(dashes);
        pen.setDashOffset(phase_);
    }
    painter_.setPen(pen);
}

void canvas::rop(port_rop mode) {
    draw_run();
    rop_ = mode;
    apply_rop();
}

void canvas::apply_rop() {
    if (!active()) return;
    const bool exclusive = rop_ == port_rop::exclusive_or && !page_;
    painter_.setCompositionMode(exclusive ? QPainter::RasterOp_SourceXorDestination
                                          : QPainter::CompositionMode_SourceOver);
}

void canvas::move_to(port_point to) {
    draw_run();
    at_ = {to.x, to.y};
    if (phase_ != 0) {
        phase_ = 0;
        apply_pen();
    }
}

void canvas::polyline_to(std::span<const port_point> points) {
    if (!active() || points.empty()) return;
    if (run_.empty()) run_.push_back(at_);
    for (const port_point& p : points) run_.emplace_back(p.x, p.y);
    at_ = run_.back();
    if (!page_) draw_run();
}

// How far the run goes, counted as the line drawing counts dashes: the thinnest pen on a picture takes one
// step per pixel, everything else goes by the length of the line.
double canvas::run_length() const {
    double sum = 0;
    for (std::size_t i = 1; i < run_.size(); i++) {
        const double dx = double(run_[i].x()) - run_[i - 1].x(), dy = double(run_[i].y()) - run_[i - 1].y();
        sum += width_ == 1 ? std::max(std::abs(dx), std::abs(dy)) : std::hypot(dx, dy);
    }
    return sum;
}

void canvas::draw_run() {
    if (run_.empty()) return;
    painter_.drawPolyline(run_.data(), static_cast<int>(run_.size()));
    const QList<qreal>& dashes = dash_pattern(style_);
    if (!page_ && !dashes.isEmpty()) {
        double period = 0;
        for (qreal d : dashes) period += d;
        phase_ = std::fmod(phase_ + run_length() / width_, period);
        apply_pen();
    }
    run_.clear();
}

void canvas::fill(port_rect area, std::uint32_t rgb) {
    if (!active()) return;
    draw_run();
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.fillRect(to_qrect(area), to_colour(rgb));
    apply_rop();
}

QImage to_qimage(std::span<const std::uint32_t> rgb, int w, int h) {
    if (w <= 0 || h <= 0 || rgb.size() / static_cast<std::size_t>(w) < static_cast<std::size_t>(h)) return {};
    QImage picture(w, h, QImage::Format_RGB32);
    if (picture.isNull()) return {};
    for (int y = 0; y < h; y++) {
        auto* row = reinterpret_cast<std::uint32_t*>(picture.scanLine(y));
        const auto source = rgb.subspan(static_cast<std::size_t>(y) * static_cast<std::size_t>(w));
        for (std::size_t x = 0; x < static_cast<std::size_t>(w); x++)
            row[x] = 0xff000000u | swap_red_blue(source[x]);
    }
    return picture;
}

void canvas::image(port_rect area, const QImage& picture) {
    if (!active() || picture.isNull()) return;
    draw_run();
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.drawImage(to_qrect(area), picture);
    apply_rop();
}

} // namespace norva
