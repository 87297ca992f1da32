// The colours of the colour map.
//
// A path through CIELAB (CIE 15:2004, white point D65): lightness rises all along it while the hue turns from
// violet over red and orange to yellow. The colours stand at equal distances on it, measured in the same
// space, so that equal steps of the value look alike everywhere.
#include "draw/image_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace norva {

constexpr int NCOLORS = 256;

namespace {
struct lab {
    double l, a, b;
};
} // namespace

// The path, u = 0 to 1. Its chroma stays inside what a screen can show.
static lab path(double u) {
    const double hue = (295 + 165 * u) * std::numbers::pi / 180;
    const double chroma = 62 * std::sin(std::numbers::pi * (0.08 + 0.78 * u));
    return {5 + 91 * u, chroma * std::cos(hue), chroma * std::sin(hue)};
}

static double distance(const lab& p, const lab& q) {
    return std::hypot(p.l - q.l, p.a - q.a, p.b - q.b);
}

// Linear light to the 8 bits of a screen (IEC 61966-2-1).
static std::uint32_t screen_level(double linear) {
    const double c = std::clamp(linear, 0.0, 1.0);
    const double v = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
    return static_cast<std::uint32_t>(std::lround(255 * v));
}

static std::uint32_t to_rgb(const lab& c) {
    const double fy = (c.l + 16) / 116, fx = fy + c.a / 500, fz = fy - c.b / 200;
    const auto from_f = [](double t) {
        constexpr double k = 6.0 / 29;
        return t > k ? t * t * t : 3 * k * k * (t - 4.0 / 29);
    };
    const double x = 0.95047 * from_f(fx), y = from_f(fy), z = 1.08883 * from_f(fz);
    const std::uint32_t r = screen_level(3.2404542 * x - 1.5371385 * y - 0.4985314 * z);
    const std::uint32_t g = screen_level(-0.9692660 * x + 1.8760108 * y + 0.0415560 * z);
    const std::uint32_t b = screen_level(0.0556434 * x - 0.2040259 * y + 1.0572252 * z);
    return r | g << 8 | b << 16;
}

static std::array<std::uint32_t, NCOLORS> make_colors() {
    constexpr int fine = 4096;
    std::array<double, fine + 1> length{};
    for (int i = 1; i <= fine; i++)
        length[i] = length[i - 1] + distance(path((i - 1.0) / fine), path(static_cast<double>(i) / fine));
    std::array<std::uint32_t, NCOLORS> colors{};
    for (int k = 0, i = 0; k < NCOLORS; k++) {
        const double want = length[fine] * k / (NCOLORS - 1);
        while (i < fine - 1 && length[i + 1] < want) i++;
        const double part = (want - length[i]) / (length[i + 1] - length[i]);
        colors[k] = to_rgb(path((i + part) / fine));
    }
    return colors;
}

int get_ncolors() {
    return NCOLORS;
}

int col_indx(double value) {
    if (!(value > 0)) return 0;
    return static_cast<int>(std::min(value * NCOLORS, NCOLORS - 1.0));
}

std::uint32_t get_img_color(double value) {
    static const std::array<std::uint32_t, NCOLORS> colors = make_colors();
    return colors[static_cast<std::size_t>(col_indx(value))];
}

} // namespace norva
