// Elements that cannot be read behind the unified calls, and the local fit.
#include "file_read.h"
#include "fileio/ufile.h"
#include "local_fit.h"
#include "show.h"

#include <algorithm>
#include <cmath>

namespace norva::test {
namespace {

// Three elements of 24 bytes at 0, 1 and 2 s, each of one item; those from `readable` on fail to be read.
std::int64_t readable;

int service(_zuvfile* file, int opcode, uarg& arg) {
    switch (opcode) {
    case UOP_FIRSTTIME: arg.t = 0; return ZUV_OK;
    case UOP_LASTTIME: arg.t = 2; return ZUV_OK;
    case UOP_NELEM: arg.n = 3; return ZUV_OK;
    case UOP_NEXTTIME: arg.t = static_cast<double>(file->nextelem); return ZUV_OK;
    case UOP_NEXTELEM: arg.n = file->nextelem; return ZUV_OK;
    case UOP_TIMEMOVE:
        file->nextelem = static_cast<int>(std::clamp(std::ceil(arg.t), 0.0, 3.0));
        return ZUV_OK;
    case UOP_ELEMMOVE: file->nextelem = arg.n; return ZUV_OK;
    case UOP_GETELEM:
        if (file->nextelem >= readable) return ZUV_SHORT_READ;
        std::ranges::fill(arg.data, std::byte{0});
        file->nextelem++;
        return ZUV_OK;
    case UOP_ELEMSIZE: arg.n = 24; return ZUV_OK;
    case UOP_NITEMS: arg.n = 1; return ZUV_OK;
    default: return -1;
    }
}

zuvfile_ptr open_memory(const std::string&) {
    zuvfile_ptr file(new _zuvfile);
    file->ucall = service;
    file->ukwcall = [](_zuvfile*, int, std::string&, kwarg&) { return -1; };
    return file;
}

TEST(trelva_readers, elements_that_cannot_be_read) {
    const struct {
        sp_file_kind kind;
        const char *type, *message;
    } cases[] = {{sp_iq_kind, "I", "error: Internal problem reading IQ file."},
                 {sp_img_kind, "I", "error: Internal problem reading IMG file."},
                 {sp_rea_kind, "VALID", "error: Internal problem reading REA file (2)."},
                 {sp_pks_kind, "LOC", "error: Internal problem reading PKS file."}};
    for (const auto& c : cases)
        for (readable = 0; readable <= 3; readable++) {
            sp_file_kind kind = c.kind;
            kind.open = open_memory;
            const sp_value values[] = {sp_mkstring("name"), sp_mkstring(c.type)};
            fileparams parms;
            ASSERT_EQ(sp_read_file_args(parms, values), "");
            EXPECT_EQ(sp_show(sp_read_file(kind, parms)), readable < 3 ? c.message : "[0 0 0]") << readable;
        }
}

// A parabola comes back exactly, at the ends too, whatever the weights; masked elements do not count.
TEST(trelva_readers, local_fit) {
    std::vector<double> t, y, mask, out(50);
    for (int i = 0; i < 50; i++) {
        t.push_back(100.0 + 0.1 * i + 0.03 * (i % 3));
        y.push_back(7000.0 - 30.0 * t.back() + 4.0 * t.back() * t.back());
        mask.push_back(i % 5 == 2 ? 0.0 : 1.0);
    }
    std::vector<double> spoiled = y;
    for (std::size_t i = 0; i < 50; i++)
        if (mask[i] == 0.0) spoiled[i] += 1000.0;
    for (bool taper : {false, true})
        for (int navg : {-1, 3, 8, 40, 9999}) {
            sp_local_fit(t, y, {}, navg, taper, 1, out);
            for (std::size_t i = 0; i < 50; i++) EXPECT_NEAR(out[i], 8.0 * t[i] - 30.0, 1e-5) << navg;
            sp_local_fit(t, y, {}, navg, taper, 2, out);
            for (std::size_t i = 0; i < 50; i++) EXPECT_NEAR(out[i], 8.0, 1e-4) << navg;
        }
    sp_local_fit(t, spoiled, mask, 8, true, 1, out);
    for (std::size_t i = 0; i < 50; i++) EXPECT_NEAR(out[i], mask[i] ? 8.0 * t[i] - 30.0 : out[i], 1e-5);
    EXPECT_LT(std::fabs(out[17] - (8.0 * t[17] - 30.0)), 1e-5); // a masked element takes its neighbours' fit
    const double two[] = {1.0, 2.0}, same[] = {5.0, 5.0, 5.0, 5.0};
    sp_local_fit(two, two, {}, 3, false, 1, std::span(out).first(2));
    EXPECT_TRUE(std::isnan(out[0]));
    sp_local_fit(same, y, {}, 4, false, 1, std::span(out).first(4));
    EXPECT_TRUE(std::isnan(out[3]));
}

} // namespace
} // namespace norva::test
