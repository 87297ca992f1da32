// Gate files: rows in all representations, windows, headers, services.
#include "fileio/gat.h"

#include "machine_bytes.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace norva::test {
namespace {

// Every machine with every representation, with and without ranges.
std::vector<gate_image> all_images() {
    std::vector<gate_image> images;
    for (int machine : all_machines)
        for (int dattype : {4, 5, 6})
            for (int incrng : {0, 1})
                images.push_back(
                    {.machine = machine, .ngat = 5, .dattype = dattype, .incrng = incrng, .rows = 4});
    return images;
}

std::string told(const gate_image& image) {
    return "machine " + std::to_string(image.machine) + " dattype " + std::to_string(image.dattype) +
           " incrng " + std::to_string(image.incrng);
}

void expect_rows(_gatfile* p, const gate_image& image) {
    std::vector<float> row(static_cast<std::size_t>(2 * image.ngat));
    double tme = 0.0, rng = 0.0;
    for (int r = 0; r < image.rows; r++) {
        ASSERT_EQ(getgat(p, tme, rng, row), ZUV_OK);
        EXPECT_EQ(tme, r / image.prf + image.t0);
        EXPECT_EQ(rng, image.incrng ? gate_image::range(r) : 0.0);
        for (int v = 0; v < 2 * image.ngat; v++)
            ASSERT_EQ(row[static_cast<std::size_t>(v)], image.expected(r, v)) << r;
    }
    EXPECT_EQ(getgat(p, tme, rng, row), ZUV_EOF);
}

// A file that is updated stays in the form of its machine: after a row has been added and a keyword changed,
// its bytes are those that machine would have written.
TEST(gat, files_of_all_machines_are_updated_in_their_own_form) {
    temp_dir dir;
    for (gate_image image : all_images()) {
        SCOPED_TRACE(told(image));
        write_all(dir.file("f"), image.bytes());
        gatfile_ptr p = opengat(dir.file("f"), "u", 0);
        ASSERT_TRUE(p);
        std::vector<float> row;
        for (int v = 0; v < 2 * image.ngat; v++) row.push_back(image.expected(image.rows, v));
        ASSERT_EQ(u_elemmove(p.get(), image.rows), ZUV_OK);
        ASSERT_EQ(putgat(p.get(), gate_image::range(image.rows), row), ZUV_OK);
        ASSERT_EQ(u_kwput_d(p.get(), "t0", 8.5), ZUV_OK);
        ASSERT_EQ(u_kwput_i(p.get(), "NREC", image.rows + 1), ZUV_OK);
        ASSERT_EQ(u_kwput_d(p.get(), "T0", 2.5), ZUV_OK); // the order of the list is that of the last change
        ASSERT_EQ(u_kwput_s(p.get(), "ABC", "abc"), ZUV_OK);
        ASSERT_EQ(u_close(std::move(p)), ZUV_OK);
        image.rows++;
        std::string keywords = image.keywords();
        image.t0 = 8.5;
        std::string expected = image.bytes();
        expected.replace(21, keywords.size(), keywords);
        EXPECT_EQ(read_all(dir.file("f")), expected);
    }
}

TEST(gat, rows_and_windows_of_all_machines) {
    temp_dir dir;
    std::vector<gate_image> images = all_images();
    images.push_back(
        {.machine = MACHINE_SUN, .ngat = 20000, .dattype = 6, .incrng = 1, .rows = 7}); // long rows
    images.push_back(
        {.machine = MACHINE_THIS, .ngat = 40000, .dattype = 5, .incrng = 0, .rows = 90}); // many blocks
    images.push_back(
        {.machine = MACHINE_THIS, .ngat = 300, .dattype = 6, .incrng = 1, .rows = 1200}); // parts
    for (const gate_image& image : images) {
        SCOPED_TRACE(told(image));
        write_all(dir.file("f"), image.bytes());
        gatfile_ptr p = opengat(dir.file("f"), "Read", 0);
        ASSERT_TRUE(p);
        expect_rows(p.get(), image);
        u_elemmove(p.get(), 0);
        const int n = image.ngat, m = image.rows;
        struct {
            int nrec0, nrec, nsamp0, nsamp;
        } windows[] = {{1, m, 1, n},     {m, 1, n, 1}, {2, m - 1, 2, n - 1}, {1, 2, 1, n},
                       {2, 2, n - 2, 2}, {m, 1, 1, 1}, {1, 0, 1, n}};
        for (const auto& w : windows) {
            std::vector<float> out(static_cast<std::size_t>(2 * w.nrec * w.nsamp) + 2, -7777.0F);
            int last = 0;
            auto progress = [&](int done, int all) {
                EXPECT_GT(done, last);
                EXPECT_EQ(all, w.nrec);
                last = done;
            };
            ASSERT_EQ(getgat_window(p.get(), w.nrec0, w.nrec, w.nsamp0, w.nsamp, out, progress), ZUV_OK);
            EXPECT_EQ(last, w.nrec);
            std::size_t k = 0;
            for (int r = w.nrec0 - 1; r < w.nrec0 - 1 + w.nrec; r++)
                for (int v = 2 * (w.nsamp0 - 1); v < 2 * (w.nsamp0 - 1 + w.nsamp); v++)
                    ASSERT_EQ(out[k++], image.expected(r, v)) << r << " " << v;
            EXPECT_EQ(out[k], -7777.0F); // nothing behind
        }
        EXPECT_EQ(u_nextelem(p.get()), 0);
    }
}

TEST(gat, a_window_outside_the_file_is_refused) {
    temp_dir dir;
    gate_image image{.ngat = 5, .rows = 4};
    write_all(dir.file("f"), image.bytes());
    gatfile_ptr p = opengat(dir.file("f"), "Old", 0);
    constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();
    const std::int64_t windows[][4] = {{0, 1, 1, 1},    {1, 5, 1, 1},       {4, 2, 1, 1},
                                       {1, 1, 0, 1},    {1, 1, 1, 6},       {1, 1, 6, 1},
                                       {1, -1, 1, 1},   {1, 1, 1, -1},      {huge, 1, 1, 1},
                                       {1, huge, 1, 1}, {1, 1, huge, huge}, {-huge, huge, 1, 1}};
    std::vector<float> out(1000);
    for (const auto& w : windows)
        EXPECT_EQ(getgat_window(p.get(), w[0], w[1], w[2], w[3], out), ZUV_BAD_ARGUMENT)
            << w[0] << " " << w[1];
    EXPECT_EQ(getgat_window(p.get(), 1, 4, 1, 5, std::span(out).first(39)), ZUV_BAD_ARGUMENT);
    EXPECT_EQ(getgat_window(nullptr, 1, 1, 1, 1, out), ZUV_NULL_FILE);
    write_all(dir.file("f"), image.bytes().substr(0, 100)); // it loses its tail while it is open
    EXPECT_EQ(getgat_window(p.get(), 1, 4, 1, 5, out), ZUV_SHORT_READ);
    double tme = 0.0, rng = 0.0;
    EXPECT_EQ(getgat(p.get(), tme, rng, out), ZUV_EOF);
}

TEST(gat, samples_are_clamped_and_rounded_when_stored_narrow) {
    const float in[] = {200.0F, -200.0F, 2.5F, -2.5F, 0.49F, 1e30F, -INFINITY, NAN};
    std::int8_t bytes[8];
    std::int16_t shorts[8];
    gatconv(8, GAT_FLOAT, GAT_BYTE, in, bytes);
    gatconv(8, GAT_FLOAT, GAT_SHORT, in, shorts);
    const int as_bytes[] = {127, -128, 3, -3, 0, 127, -128, 0},
              as_shorts[] = {200, -200, 3, -3, 0, 32767, -32768, 0};
    for (int i = 0; i < 8; i++) {
        EXPECT_EQ(bytes[i], as_bytes[i]) << in[i];
        EXPECT_EQ(shorts[i], as_shorts[i]) << in[i];
    }
    std::int8_t narrow[3];
    const std::int16_t wide[] = {-129, 127, 128};
    gatconv(3, GAT_SHORT, GAT_BYTE, wide, narrow);
    EXPECT_EQ(narrow[0], -128);
    EXPECT_EQ(narrow[1], 127);
    EXPECT_EQ(narrow[2], 127);
    std::int16_t widened[3];
    gatconv(3, GAT_BYTE, GAT_SHORT, narrow, widened);
    EXPECT_EQ(widened[0], -128);
}

TEST(gat, created_files_take_all_three_kinds_of_input) {
    temp_dir dir;
    for (int dattype : {4, 5, 6, 7}) {
        gatfile_ptr p = opengat_opt(dir.file("f"), 2, dattype, 0);
        ASSERT_TRUE(p);
        EXPECT_EQ(p->hd.dattype, dattype == 7 ? 6 : dattype);
        EXPECT_EQ(putgat(p.get(), 9.0, std::vector<float>{1.0F, 200.0F, -3.0F, 4.0F}), ZUV_OK);
        EXPECT_EQ(putgat_b(p.get(), 9.0, std::vector<std::int8_t>{1, 2, -3, 4}), ZUV_OK);
        EXPECT_EQ(putgat_bb(p.get(), 9.0, std::vector<std::int16_t>{1, 2, -300, 4}), ZUV_OK);
        EXPECT_EQ(putgat(p.get(), 9.0, std::vector<float>(3)), ZUV_BAD_ARGUMENT);
        u_close(std::move(p));
        p = opengat(dir.file("f"), "Old", 0);
        ASSERT_TRUE(p);
        EXPECT_EQ(u_nelem(p.get()), 3);
        std::vector<float> rows(12);
        ASSERT_EQ(getgat_window(p.get(), 1, 3, 1, 2, rows), ZUV_OK);
        float first = dattype == 4 ? 127.0F : 200.0F, last = dattype == 4 ? -128.0F : -300.0F;
        EXPECT_EQ(rows, (std::vector<float>{1, first, -3, 4, 1, 2, -3, 4, 1, 2, last, 4}));
        EXPECT_EQ(putgat(p.get(), 9.0, std::vector<float>(4)), ZUV_READ_ONLY);
    }
    gatfile_ptr p = opengat(dir.file("f"), "New", 3);
    ASSERT_TRUE(p);
    EXPECT_EQ(p->hd.dattype, 6);
    EXPECT_EQ(p->hd.incrng, 1);
    EXPECT_EQ(putgat(p.get(), 12.5, std::vector<float>(6, 1.0F)), ZUV_OK);
    EXPECT_EQ(u_elemmove(p.get(), 0), ZUV_OK);
    double tme = -1.0, rng = 0.0;
    std::vector<float> few(4), many(8, 5.0F);
    EXPECT_EQ(getgat(p.get(), tme, rng, few), ZUV_OK); // fewer samples asked for than there are
    EXPECT_EQ(tme, 0.0);
    EXPECT_EQ(rng, 12.5);
    u_elemmove(p.get(), 0);
    EXPECT_EQ(getgat(p.get(), tme, rng, many), ZUV_OK); // and more
    EXPECT_EQ(many, (std::vector<float>{1, 1, 1, 1, 1, 1, 0, 0}));
}

TEST(gat, impossible_sizes_and_headers) {
    temp_dir dir;
    for (int n : {0, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(opengat(dir.file("n"), "New", n));
        EXPECT_EQ(getgaterror(), ZUV_BAD_ARGUMENT);
    }
    const std::string good = gate_image{.ngat = 10, .dattype = 4}.bytes();
    for (auto [at, value] : {std::pair{8, 5}, {12, 1}}) { // representation; ranges, which need 8 bytes more
        std::string bytes = good;
        std::memcpy(&bytes[20 + 200 + static_cast<std::size_t>(at)], &value, 4);
        write_all(dir.file("f"), bytes);
        EXPECT_FALSE(opengat(dir.file("f"), "Old", 1)) << at;
        EXPECT_EQ(getgaterror(), ZUV_BAD_TYPE) << at;
    }
    for (double prf : {0.0, -4.0, static_cast<double>(NAN)}) {
        write_all(dir.file("f"), gate_image{.prf = prf}.bytes());
        EXPECT_EQ(u_kwget_d(opengat(dir.file("f"), "Old", 0).get(), "prf"), 1.0);
    }
}

TEST(gat, header_values_are_keywords_ahead_of_the_list) {
    temp_dir dir;
    write_all(dir.file("f"), gate_image{}.bytes());
    gatfile_ptr p = opengat(dir.file("f"), "Update", 0);
    std::string name, listed;
    int type = 0;
    for (int i = 0; u_kwindx(p.get(), i, name, type) == ZUV_OK; i++)
        listed += name + std::to_string(type) + ' ';
    EXPECT_EQ(listed, "ngat1 dattype1 incrng1 t02 prf2 NREC1 T02 ABC3 ");
    EXPECT_NE(u_kwindx(p.get(), -1, name, type), ZUV_OK);
    EXPECT_EQ(u_kwexist(p.get(), "PRF"), 0); // spelling counts
    EXPECT_EQ(u_kwget_d(p.get(), "WFRI"), 0.0);
    EXPECT_NE(u_error(), ZUV_OK);
    EXPECT_EQ(u_kwput_d(p.get(), "prf", 10.0), ZUV_OK);
    EXPECT_EQ(u_error(), ZUV_OK);
    EXPECT_EQ(u_kwput_d(p.get(), "PRF", 20.0), ZUV_OK);
    EXPECT_NE(u_kwput_i(p.get(), "ngat", 4), ZUV_OK); // the rows would not fit
    EXPECT_NE(u_kwput_d(p.get(), "prf", 0.0), ZUV_OK);
    EXPECT_NE(u_kwput_s(p.get(), "prf", "10"), ZUV_OK);
    EXPECT_NE(u_kwdelete(p.get(), "t0"), ZUV_OK);
    u_close(std::move(p));
    p = opengat(dir.file("f"), "Old", 0);
    ASSERT_TRUE(p);
    EXPECT_EQ(u_kwget_d(p.get(), "prf"), 10.0);
    EXPECT_EQ(u_kwget_d(p.get(), "PRF"), 20.0);
    EXPECT_NE(u_kwput_d(p.get(), "prf", 5.0), ZUV_OK); // read-only
    EXPECT_EQ(u_kwget_d(nullptr, "prf"), 0.0);
    EXPECT_EQ(u_error(), ZUV_NULL_FILE);
}

TEST(gat, the_calling_surface_moves_by_time_and_element) {
    temp_dir dir;
    gate_image image{.ngat = 2, .dattype = 5, .incrng = 1, .rows = 11, .t0 = 100.0, .prf = 10.0};
    write_all(dir.file("f"), image.bytes());
    gatfile_ptr p = opengat(dir.file("f"), "Old", 0);
    EXPECT_EQ(u_firsttime(p.get()), 100.0);
    EXPECT_EQ(u_lasttime(p.get()), 101.0);
    EXPECT_EQ(u_nitems(p.get()), 2);
    for (int n = 0; n <= 10; n++) { // an element's own time finds it, whatever the rounding
        u_elemmove(p.get(), n);
        double t = u_nexttime(p.get());
        EXPECT_EQ(u_timemove(p.get(), t), ZUV_OK);
        EXPECT_EQ(u_nextelem(p.get()), n);
        u_timemove(p.get(), t + 0.001);
        EXPECT_EQ(u_nextelem(p.get()), n + 1);
    }
    for (auto [t, n] :
         {std::pair{-1e300, 0}, {0.0, 0}, {101.05, 11}, {1e300, 11}, {static_cast<double>(NAN), 0}}) {
        EXPECT_EQ(u_timemove(p.get(), t), ZUV_OK);
        EXPECT_EQ(u_nextelem(p.get()), n) << t;
    }
    std::vector<std::byte> two(32);
    u_elemmove(p.get(), 9);
    EXPECT_EQ(u_getnelem(p.get(), two, 2), ZUV_OK);
    EXPECT_EQ(u_getelem(p.get(), two), ZUV_EOF);
    EXPECT_EQ(u_elemmove(p.get(), 12), ZUV_SEEK_FAILED);
    double range = 0.0;
    std::memcpy(&range, &two[16], 8);
    EXPECT_EQ(range, gate_image::range(10));
    p->ucall = nullptr;
    u_nelem(p.get());
    EXPECT_EQ(u_error(), -1);
}

} // namespace
} // namespace norva::test
