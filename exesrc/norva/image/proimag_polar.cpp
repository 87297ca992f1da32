// Action 10: the image of a target on a turntable, every sample focused with its exact geometry.
#include "image/proimag.h"
#include "mocomp/polar.h"
#include "proimag_int.h"

#include <algorithm>
#include <cmath>

namespace norva::image {
namespace {

constexpr int turntable = 1;
constexpr float light = 300; // metres times MHz

// Words 12 to 21 of the record. Lengths in metres, frequencies in MHz, angles in radians.
struct geometry {
    float xex, yex; // extent of the target
    float f1, df;
    float rc, da, de; // distance to the axis, rotation between records, depression
};

// The part of the image that the sums are formed for.
struct target_grid {
    int iterations;
    int mx, my;
    float dx, dy;
};

// Refinements of the range differences that polarfor1 makes, by the target's extent against the distance at
// which wave fronts are flat.
int range_iterations(double xex, double wavelength, double rc) {
    const double far_field = xex * xex / (wavelength * rc);
    return far_field < 0.5 ? 3 : far_field < 2 ? 2 : 1;
}

// Samples of one direction: a quarter more than the target, within the ambiguity.
int target_samples(double extent, double ambiguity, double spacing, int most) {
    return static_cast<int>(
        std::min(std::min(1.25 * extent, ambiguity) / spacing, static_cast<double>(most)));
}

failure place_grid(const image_parms& parms, const geometry& g, target_grid& grid) {
    constexpr failure improper = "***Error 110f...Improper geometry";
    for (float value : {g.xex, g.yex, g.f1, g.df, g.rc, g.da, g.de}) {
        if (!std::isfinite(value)) return improper;
    }
    const double fc = g.f1 + 0.5 * (parms.nf - 1) * g.df, wavelength = light / fc;
    if (!(fc > 0) || g.df == 0 || g.da == 0 || !(g.xex > 0) || !(g.yex > 0) || g.rc < 0) return improper;
    const double xamb = 0.5 * wavelength / std::fabs(g.da), yamb = 0.5 * light / std::fabs(g.df);
    if (g.xex > xamb || g.yex > yamb) return "***Error 110e...Target is larger than ambiguity";
    const int most_x = parms.ifx * parms.nt, most_y = parms.ify * parms.nf;
    const double dx = xamb / most_x, dy = yamb / most_y;
    grid.iterations = range_iterations(g.xex, wavelength, g.rc);
    grid.mx = target_samples(g.xex, xamb, dx, most_x);
    grid.my = target_samples(g.yex, yamb, dy, most_y);
    grid.dx = static_cast<float>(dx);
    grid.dy = static_cast<float>(dy);
    return grid.mx < 1 || grid.my < 1 ? improper : nullptr;
}

} // namespace

failure do_polar_init(processor& p, words_in in, words_out out) {
    image_parms parms = img;
    static constexpr init_texts texts = {"***Error 110a...Insufficient memory",
                                         "***Error 110b...Too many peaks specified",
                                         "***Error 110c...Improper scaling"};
    if (failure text = read_init(in, PI_POLAR_DATA_WORD, texts, parms)) return text;
    if (in[12] != turntable) return "***Error 110d...Rail geometry is not implemented yet";
    // Words 19 and 20 are those of a rail.
    const geometry g = {real_at(in, 13), real_at(in, 14), real_at(in, 15), real_at(in, 16),
                        real_at(in, 17), real_at(in, 18), real_at(in, 21)};
    target_grid grid{};
    if (failure text = place_grid(parms, g, grid)) return text;

    const auto data_words = 2 * static_cast<std::size_t>(parms.nf) * static_cast<std::size_t>(parms.nt);
    float* data = p.qc.make_room(data_words);
    std::ranges::transform(in.subspan(PI_POLAR_DATA_WORD, data_words), data, finite_sample);
    float* target = p.qa.make_room(2 * static_cast<std::size_t>(grid.mx) * static_cast<std::size_t>(grid.my));
    polarfor1(data, parms.nf, parms.nt, g.f1, g.df, g.rc, g.de, g.da, grid.mx, grid.my, grid.dx, grid.dy,
              grid.iterations, light, target);

    const std::size_t image_words =
        2 * static_cast<std::size_t>(parms.nx) * static_cast<std::size_t>(parms.ny);
    float* image = p.qb.make_room(image_words);
    std::fill_n(image, image_words, 0.0F);
    const int left = parms.nx / 2 - grid.mx / 2, bottom = parms.ny / 2 - grid.my / 2;
    for (int j = 0; j < grid.my; j++) {
        std::copy_n(target + 2 * static_cast<std::ptrdiff_t>(j) * grid.mx, 2 * grid.mx,
                    image + 2 * (static_cast<std::ptrdiff_t>(bottom + j) * parms.nx + left));
    }
    parms.dx = 1.0F / static_cast<float>(parms.ifx);
    parms.dy = 1.0F / static_cast<float>(parms.ify);
    return begin_with(p, parms, PI_POLAR, PI_POLAR_DATA_WORD, out);
}

} // namespace norva::image
