// Action 0: the image is formed; what it has in common with polar formatting.
#include "image/proimag.h"
#include "proimag_int.h"
#include "signal/fft.h"
#include "signal/numbers.h"
#include "signal/parallel.h"
#include "signal/weight.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace norva::image {
namespace {

// The circular weight of a data set by the distances from its middle, in samples: the middle comes first.
class circular_weights {
public:
    circular_weights(int nt, int nf)
        : width_(nt / 2 + 1),
          values_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(nf / 2 + 1)) {
        parallel_chunks(nf / 2 + 1, 1 + 1024 / width_, [&](int begin, int end) {
            for (int j = begin; j < end; j++) {
                const float y = static_cast<float>(j) / static_cast<float>(nf);
                for (int i = 0; i < width_; i++) {
                    const float x = static_cast<float>(i) / static_cast<float>(nt);
                    values_[static_cast<std::size_t>(j * width_ + i)] = cirwght(4 * (x * x + y * y));
                }
            }
        });
    }
    const float* row(int j) const {
        return &values_[static_cast<std::size_t>(j) * static_cast<std::size_t>(width_)];
    }

private:
    int width_;
    std::vector<float> values_;
};

// A direction of the data: sample k of n, the middle at n/2, goes to place(k) of m places, the middle to the
// first, what lies before the middle to the end. m is even. The sign of every other place is turned, which
// brings the zero of the transform from the first sample to sample m/2.
struct direction {
    int n, m;
    int place(int k) const { return k < n / 2 ? k - n / 2 + m : k - n / 2; }
    int distance(int k) const { return std::abs(k - n / 2); }
    bool turned(int k) const { return place(k) % 2 != 0; }
};

// Up to `together` frequencies are done at once: as many samples as lie on a line of the cache.
constexpr int together = 8;

// Weighted data, nt records of nf samples, into an array of the image's size, transformed along time.
void load_data(words_in q, const direction& time, const direction& frequency, int ksx, float* a) {
    const circular_weights weights(time.n, frequency.n);
    const int nx = time.m;
    auto load = [&](int begin, int end) {
        const int count = end - begin;
        std::array<float*, together> row{};
        std::array<const float*, together> weight{};
        std::array<float, together> sign{};
        for (int k = 0; k < count; k++) {
            const int f = begin + k;
            row[k] = a + 2 * static_cast<std::ptrdiff_t>(frequency.place(f)) * nx;
            weight[k] = weights.row(frequency.distance(f));
            sign[k] = frequency.turned(f) ? -1.0F : 1.0F;
            const std::ptrdiff_t after = time.n - time.n / 2; // samples from the middle on
            std::fill(row[k] + 2 * after, row[k] + 2 * static_cast<std::ptrdiff_t>(nx - time.n / 2), 0.0F);
        }
        for (int t = 0; t < time.n; t++) {
            const std::int32_t* sample = &q[2 * (static_cast<std::size_t>(t) * frequency.n + begin)];
            const int at = 2 * time.place(t), distance = time.distance(t);
            const float turn = time.turned(t) ? -1.0F : 1.0F;
            for (int k = 0; k < count; k++) {
                const float w = turn * sign[k] * weight[k][distance];
                row[k][at] = w * finite_sample(sample[2 * k]);
                row[k][at + 1] = w * finite_sample(sample[2 * k + 1]);
            }
        }
        for (int k = 0; k < count; k++) gfft(row[k], nx, ksx);
    };
    parallel_chunks(frequency.n, together, load);
    float* empty = a + 2 * static_cast<std::ptrdiff_t>(frequency.n - frequency.n / 2) * nx;
    parallel_chunks(frequency.m - frequency.n, 1 + 32768 / nx, [&](int begin, int end) {
        std::fill(empty + 2 * static_cast<std::ptrdiff_t>(begin) * nx,
                  empty + 2 * static_cast<std::ptrdiff_t>(end) * nx, 0.0F);
    });
}

int sign_of(int word) {
    return word >= 1 ? 1 : -1;
}

// Size of an image along one direction.
std::int64_t image_size(int n, int factor) {
    return iradx2(static_cast<int>(std::min<std::int64_t>(static_cast<std::int64_t>(n) * factor, 1 << 30)));
}

} // namespace

failure read_init(words_in in, std::size_t data_word, const init_texts& texts, image_parms& parms) {
    if (in.size() < data_word) return SHORT_RECORD;
    parms.nf = in[1];
    parms.nt = in[2];
    parms.kw = in[3];
    parms.ksx = sign_of(in[4]);
    parms.ksy = sign_of(in[5]);
    parms.ifx = in[6];
    parms.ify = in[7];
    parms.npmx = in[8];
    parms.kscl = in[9];
    parms.apmn = real_at(in, 10);
    parms.diam = real_at(in, 11);
    if (std::min({parms.nf, parms.nt, parms.ifx, parms.ify}) < 1) return "***Error 99...Improper data size";
    const std::int64_t data_words = 2 * static_cast<std::int64_t>(parms.nf) * parms.nt;
    if (data_words > PI_JOURNAL_WORDS - static_cast<std::int64_t>(data_word)) return JOURNAL_FULL;
    const std::int64_t nx = image_size(parms.nt, parms.ifx), ny = image_size(parms.nf, parms.ify);
    if (nx * ny > PI_MAX_SAMPLES || ny > FFT2D_MAX_NY) return texts.memory;
    if (parms.npmx > PI_MAX_PEAKS) return texts.peaks;
    if (parms.kscl < 1 || parms.kscl > 3) return texts.scaling;
    if (std::ssize(in) < static_cast<std::int64_t>(data_word) + data_words) return SHORT_RECORD;
    parms.nx = static_cast<int>(nx);
    parms.ny = static_cast<int>(ny);
    return nullptr;
}

failure begin_with(processor& p, const image_parms& parms, int init, std::size_t data_word, words_out out) {
    std::swap(p.qa, p.qb);
    img = parms;
    img.x1 = static_cast<float>(-(img.nx / 2)) * img.dx;
    img.y1 = static_cast<float>(-(img.ny / 2)) * img.dy;
    p.ready = true;
    p.init = p.il = p.last = init;
    p.is = p.ns = 0;
    p.edited = p.kept = p.touched = false;
    p.actions.clear();
    p.np = 0;
    p.first_words = static_cast<int>(data_word) + 2 * img.nf * img.nt;
    p.own.clear();
    const failure text = result_image(p, out);
    p.first = img;
    return text;
}

failure do_init(processor& p, words_in in, words_out out) {
    image_parms parms = img;
    static constexpr init_texts texts = {"***Error 100a...Insufficient memory",
                                         "***Error 100b...Too many peaks specified",
                                         "***Error 100c...Improper scaling"};
    if (failure text = read_init(in, PI_DATA_WORD, texts, parms)) return text;
    const direction time{parms.nt, parms.nx}, frequency{parms.nf, parms.ny};
    float* a = p.qb.make_room(2 * static_cast<std::size_t>(parms.nx) * static_cast<std::size_t>(parms.ny));
    load_data(in.subspan(PI_DATA_WORD), time, frequency, parms.ksx, a);
    fft2d(a, parms.nx, parms.ny, 0, parms.ksy);
    parms.dx = static_cast<float>(parms.nt) / static_cast<float>(parms.nx);
    parms.dy = static_cast<float>(parms.nf) / static_cast<float>(parms.ny);
    return begin_with(p, parms, PI_INIT, PI_DATA_WORD, out);
}

} // namespace norva::image
