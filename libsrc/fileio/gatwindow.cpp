// A window of rows and samples, read in large blocks.
#include "fileio/mcvt.h"
#include "gat_int.h"
#include "zuvfile_int.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace norva {

namespace {

constexpr std::int64_t block_bytes = 512 << 10; // read at a time: stays in the cache while it is converted
constexpr std::int64_t plain_bytes = 4 << 20;   // the same where nothing is converted
constexpr int most_reports = 50;

struct window {
    _gatfile* p;
    std::int64_t first_row, rows; // from 0
    std::int64_t value;           // bytes of one value: half a sample
    std::int64_t skip;            // bytes of a row ahead of the window's samples
    std::int64_t width;           // bytes of the window's part of a row
    std::size_t values;           // of one row of the window
    std::span<float> out;

    std::span<float> out_rows(std::int64_t row, std::int64_t n) const {
        return out.subspan(static_cast<std::size_t>(row) * values, static_cast<std::size_t>(n) * values);
    }
};

// Values in the file's representation become this machine's, in place.
void to_this_machine(const window& w, void* values, std::size_t n) {
    if (w.value == 2) mcvt_i2(values, n);
    if (w.value == 4) mcvt_f4(values, n);
}

// Whole rows of floats are the result as they stand.
int read_whole(const window& w, std::int64_t row, std::int64_t n) {
    std::span<float> to = w.out_rows(row, n);
    int status = zuvfilereadraw(w.p, w.first_row + row, 0, std::as_writable_bytes(to));
    if (status == ZUV_OK) to_this_machine(w, to.data(), to.size());
    return status;
}

// Long stretches of floats likewise, without what stands between them.
int read_parts(const window& w, std::int64_t row, std::int64_t n) {
    return zuvfilereadparts(w.p, w.first_row + row, w.skip, w.width,
                            std::as_writable_bytes(w.out_rows(row, n)));
}

// n rows whose bytes from the window's first sample on lie `stride` apart in the block.
void take(const window& w, std::byte* block, std::int64_t stride, std::int64_t row, std::int64_t n) {
    for (std::int64_t i = 0; i < n; i++) {
        std::byte* from = block + i * stride;
        to_this_machine(w, from, w.values);
        gatconv(w.values, w.p->hd.dattype, GAT_FLOAT, from, w.out_rows(row + i, 1).data());
    }
}

int read_window(const window& w, const std::function<void(int, int)>& progress) {
    const std::int64_t size = w.p->kw.elementsize;
    const bool whole = w.value == 4 && w.width == size;
    // A narrow window of long rows: reading its samples alone beats reading everything between them.
    const bool narrow = size > 65536 && w.width < size / 4;
    const bool plain = w.value == 4 && w.p->machine == MACHINE_THIS; // nothing to convert
    // Little is left out of long rows: the system can put the rest where it belongs.
    const bool parts = plain && !whole && w.width >= 2048 && size - w.width <= size / 8;
    const std::int64_t at_a_time = plain && (whole || parts) ? plain_bytes : block_bytes;
    const std::int64_t per_block = narrow ? 1 : std::clamp<std::int64_t>(at_a_time / size, 1, w.rows);
    const std::int64_t block_size = whole || parts ? 0 : narrow ? w.width : per_block * size;
    auto block = std::make_unique_for_overwrite<std::byte[]>(static_cast<std::size_t>(block_size));
    std::span<std::byte> bytes(block.get(), static_cast<std::size_t>(block_size));
    if (setmcvt(w.p->machine, MACHINE_THIS) != 1) return ZUV_NO_CONVERSION;

    std::int64_t reported = 0;
    for (std::int64_t row = 0; row < w.rows;) {
        std::int64_t n = std::min(per_block, w.rows - row);
        int status = ZUV_OK;
        if (whole) {
            status = read_whole(w, row, n);
        } else if (parts) {
            status = read_parts(w, row, n);
        } else {
            std::int64_t first = narrow ? w.skip : 0;
            status = zuvfilereadraw(w.p, w.first_row + row, first,
                                    bytes.first(static_cast<std::size_t>(narrow ? w.width : n * size)));
            if (status == ZUV_OK) take(w, bytes.data() + w.skip - first, size, row, n);
        }
        if (status != ZUV_OK) return status;
        row += n;
        if (progress && (row == w.rows || (row - reported) * most_reports >= w.rows)) {
            progress(static_cast<int>(row), static_cast<int>(w.rows));
            reported = row;
        }
    }
    return ZUV_OK;
}

} // namespace

int getgat_window(_gatfile* p, std::int64_t nrec0, std::int64_t nrec, std::int64_t nsamp0, std::int64_t nsamp,
                  std::span<float> out, const std::function<void(int, int)>& progress) {
    if (!p) return gat_status(ZUV_NULL_FILE);
    auto inside = [](std::int64_t first, std::int64_t n, std::int64_t most) {
        return first >= 1 && n >= 0 && first <= most + 1 && n <= most - first + 1;
    };
    if (!inside(nrec0, nrec, p->nelements) || !inside(nsamp0, nsamp, p->hd.ngat) ||
        std::ssize(out) < 2 * nrec * nsamp)
        return gat_status(ZUV_BAD_ARGUMENT);
    if (nrec == 0 || nsamp == 0) return gat_status(ZUV_OK);

    std::int64_t value = gat_samplesize(p->hd.dattype);
    window w{.p = p,
             .first_row = nrec0 - 1,
             .rows = nrec,
             .value = value,
             .skip = gat_rangesize(p->hd) + (nsamp0 - 1) * 2 * value,
             .width = nsamp * 2 * value,
             .values = static_cast<std::size_t>(2 * nsamp),
             .out = out};
    return gat_status(read_window(w, progress));
}

} // namespace norva
