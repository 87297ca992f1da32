// Peak, image and vector files of every machine: elements, headers, keywords.
#include "cu/img.h"
#include "cu/pks.h"
#include "cu/vec.h"
#include "series_images.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace norva::test {
namespace {

TEST(rows, peak_files_of_all_machines) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        series_image image = pks_image(machine);
        write_all(dir.file("f"), image.bytes());
        pksfile_ptr p = openpks(dir.file("f"), "Update", 0);
        ASSERT_TRUE(p) << getpkserror();
        EXPECT_EQ(u_nitems(p.get()), 9);
        double t = 0;
        std::vector<float> pos(11, 9), amp(9, 9);
        std::vector<char> flag(9, 9);
        for (int n = 0; n < 3; n++) {
            ASSERT_EQ(getpks(p.get(), t, pos, amp, flag), ZUV_OK);
            EXPECT_EQ(t, 10 + 0.5 * n);
            for (int k = 0; k < 9; k++) {
                const auto i = static_cast<std::size_t>(k);
                EXPECT_EQ(pos[i], k - 1.5F * n);
                EXPECT_EQ(amp[i], 100.0F * k);
                EXPECT_EQ(flag[i], k % 3 == n % 3);
            }
            EXPECT_EQ(pos[9], 0); // room for more than there are
        }
        EXPECT_EQ(getpks(p.get(), t, pos, amp, flag), ZUV_EOF);
        EXPECT_EQ(u_timemove(p.get(), 10.75), ZUV_OK);
        EXPECT_EQ(u_nextelem(p.get()), 2);
        for (std::size_t i = 0; i < std::size(pks_words); i++)
            if (const char* name = pks_word_names[i]) {
                EXPECT_EQ(u_kwget_i(p.get(), name), pks_words[i]) << name;
            }
        for (std::size_t i = 0; i < std::size(pks_reals); i++)
            EXPECT_EQ(u_kwget_d(p.get(), pks_real_names[i]), pks_reals[i]);
        EXPECT_EQ(listing(p.get()),
                  "text:s npks:i type:i nfft:i wdw:i lag:i weight:i t0:d prf:d tbias:d xlam:d "
                  "hz1:d hz2:d note:s ");

        // Two peaks in use: what they do not fill is 0. A header word and the list change, too.
        EXPECT_EQ(u_elemmove(p.get(), 1), ZUV_OK);
        EXPECT_EQ(setpksnitems(p.get(), 10), ZUV_BAD_ARGUMENT);
        EXPECT_EQ(setpksnitems(p.get(), 2), ZUV_OK);
        EXPECT_EQ(putpks(p.get(), 10.5, pos, amp, flag), ZUV_BAD_ARGUMENT);
        const float two_places[] = {-7.5F, 8.25F}, two_amps[] = {0.5F, 2};
        EXPECT_EQ(putpks(p.get(), 10.5, two_places, two_amps, std::array<char, 2>{1, 1}), ZUV_OK);
        EXPECT_EQ(u_kwput_i(p.get(), "lag", 8), ZUV_OK);
        EXPECT_EQ(u_kwput_i(p.get(), "npks", 10), ZUV_BAD_ARGUMENT); // the elements are for nine
        EXPECT_EQ(u_kwput_i(p.get(), "RUN", 300), ZUV_OK);
        EXPECT_EQ(u_elemmove(p.get(), 0), ZUV_OK);
        ASSERT_EQ(getpks(p.get(), t, pos, amp, flag), ZUV_OK);
        EXPECT_EQ((std::vector(flag.begin(), flag.begin() + 4)), (std::vector<char>{1, 0, 0, 0}));
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        std::string changed = double_bytes(machine, 10.5);
        for (int k : {0, 1})
            changed += float_bytes(machine, two_places[k]) + float_bytes(machine, two_amps[k]);
        changed += std::string(7 * 8, '\0') + "\1\1";
        image.elements[1] = changed;
        image.header.replace(124, 4, integer_bytes(machine, std::int32_t{8}));
        image.list += int_item(machine, "RUN", 300);
        image.elements[1].resize(96);
        EXPECT_EQ(read_all(dir.file("f")), image.bytes());
    }
}

template <class Ptr, class V> void expect_rows(Ptr& p, int (*get)(decltype(p.get()), double&, std::span<V>)) {
    const bool img = p->kw.filetype == 110;
    std::vector<V> row(img ? 8 : 4, V{9});
    double t = 0;
    for (int n = 0; n < 4; n++) {
        ASSERT_EQ(get(p.get(), t, row), ZUV_OK);
        EXPECT_EQ(t, 10 + 0.25 * n);
        for (std::size_t v = 0; v < row.size(); v++) {
            const V expected = static_cast<V>(10 * n) + static_cast<V>(v) + (img ? V{-0.5} : V{0.125});
            EXPECT_EQ(row[v], v < (img ? 6 : 3) ? expected : V{0});
        }
    }
    EXPECT_EQ(get(p.get(), t, row), ZUV_EOF);
    EXPECT_EQ(u_nitems(p.get()), 3);
    EXPECT_EQ(u_lasttime(p.get()), 10.75);
    for (auto [to, element] : {std::pair{-9.0, 0}, {10.25, 1}, {10.3, 2}, {10.75, 3}, {99.0, 4}}) {
        EXPECT_EQ(u_timemove(p.get(), to), ZUV_OK);
        EXPECT_EQ(u_nextelem(p.get()), element) << to;
    }
}

TEST(rows, image_files_of_all_machines) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        series_image image = row_image(machine, 110);
        write_all(dir.file("f"), image.bytes());
        imgfile_ptr p = openimg(dir.file("f"), "update", 0);
        ASSERT_TRUE(p) << getimgerror();
        expect_rows(p, getimg);
        EXPECT_EQ(listing(p.get()), "nsamp:i RUN:i t0:d prf:d ");
        EXPECT_EQ(putimg(p.get(), std::array{39.5F, 40.5F, 41.5F, 42.5F, 43.5F, 44.5F}), ZUV_OK);
        EXPECT_EQ(putimg(p.get(), std::array{39.5F, 40.5F, 41.5F, 42.5F}), ZUV_BAD_ARGUMENT);
        EXPECT_EQ(u_kwput_i(p.get(), "prf", 2), ZUV_OK); // an int will do
        EXPECT_EQ(u_lasttime(p.get()), 12);
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        image.elements.push_back(img_row(machine, 4));
        image.list =
            int_item(machine, "RUN", 7) + double_item(machine, "t0", 10) + int_item(machine, "prf", 2);
        EXPECT_EQ(read_all(dir.file("f")), image.bytes());
    }
}

TEST(rows, vector_files_of_all_machines) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        series_image image = row_image(machine, 111);
        write_all(dir.file("f"), image.bytes());
        vecfile_ptr p = openvec(dir.file("f"), "Update", 0);
        ASSERT_TRUE(p) << getvecerror();
        expect_rows(p, getvec);
        EXPECT_EQ(u_kwget_n(p.get()), 4);
        EXPECT_EQ(listing(p.get()), "nvec:i t0:d prf:d RUN:i ");
        EXPECT_EQ(putvec(p.get(), std::array{40.125, 41.125, 42.125}), ZUV_OK);
        EXPECT_EQ(putvec(p.get(), std::array{40.125, 41.125}), ZUV_BAD_ARGUMENT);
        EXPECT_EQ(u_kwput_d(p.get(), "t0", -3), ZUV_OK);
        EXPECT_EQ(u_kwput_s(p.get(), "NOTE", "x"), ZUV_OK);
        EXPECT_EQ(u_kwput_d(p.get(), "prf", 0), ZUV_BAD_ARGUMENT);
        EXPECT_EQ(u_kwput_d(p.get(), "prf", std::nan("")), ZUV_BAD_ARGUMENT);
        EXPECT_NE(u_kwdelete(p.get(), "t0"), ZUV_OK);
        EXPECT_EQ(u_firsttime(p.get()), -3);
        EXPECT_EQ(u_kwget_d(p.get(), "t0"), -3);
        EXPECT_EQ(listing(p.get()), "nvec:i t0:d prf:d RUN:i NOTE:s ");
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        image.elements.push_back(vec_row(machine, 4));
        image.list = int_item(machine, "RUN", 7) + double_item(machine, "prf", 4) +
                     double_item(machine, "t0", -3) + string_item("NOTE", "x");
        EXPECT_EQ(read_all(dir.file("f")), image.bytes());
    }
}

// A file that says nothing of times, or nonsense, still has some.
TEST(rows, times_that_a_file_does_not_tell) {
    temp_dir dir;
    for (int filetype : {110, 111})
        for (const std::string& list :
             {std::string(), string_item("prf", "fast"), double_item(4, "prf", -1), int_item(4, "prf", 0)}) {
            series_image image = row_image(4, filetype);
            image.list = list;
            write_all(dir.file("f"), image.bytes());
            zuvfile_ptr p;
            if (filetype == 110)
                p = openimg(dir.file("f"), "Old", 0);
            else
                p = openvec(dir.file("f"), "Old", 0);
            ASSERT_TRUE(p);
            EXPECT_EQ(u_firsttime(p.get()), 0);
            EXPECT_EQ(u_lasttime(p.get()), 3);
            u_kwget_d(p.get(), "prf");
            EXPECT_EQ(u_error() == ZUV_OK, filetype == 111 || list == double_item(4, "prf", -1));
        }
}

TEST(rows, new_files) {
    temp_dir dir;
    pksfile_ptr pks = openpks(dir.file("pks"), "New", 9);
    imgfile_ptr img = openimg(dir.file("img"), "create", 3);
    vecfile_ptr vec = openvec(dir.file("vec"), "New", 2);
    ASSERT_TRUE(pks && img && vec);
    EXPECT_EQ(u_elemsize(pks.get()), 96);
    EXPECT_EQ(u_elemsize(img.get()), 24);
    EXPECT_EQ(u_elemsize(vec.get()), 16);
    EXPECT_EQ(u_kwput_d(vec.get(), "t0", 2), ZUV_OK);
    EXPECT_EQ(putvec(vec.get(), std::array{1.0, -1.0}), ZUV_OK);
    EXPECT_EQ(u_close(std::move(vec)), ZUV_OK);
    vec = openvec(dir.file("vec"), "Old", 0);
    ASSERT_TRUE(vec);
    EXPECT_EQ(u_firsttime(vec.get()), 2);
    EXPECT_EQ(listing(vec.get()), "nvec:i t0:d prf:d ");
    EXPECT_EQ(u_kwput_d(vec.get(), "t0", 5), ZUV_READ_ONLY);
    EXPECT_EQ(putvec(vec.get(), std::array{1.0, -1.0}), ZUV_READ_ONLY);
    EXPECT_EQ(putpkskeys(pks.get(), 1, 2, 3, 4), ZUV_OK);
    EXPECT_EQ(u_close(std::move(pks)), ZUV_OK);
    pks = openpks(dir.file("pks"), "Read", 40);
    double t0 = 0, tbias = 0, prf = 0, xlam = 0;
    ASSERT_EQ(getpkskeys(pks.get(), t0, tbias, prf, xlam), ZUV_OK);
    EXPECT_EQ((std::array{t0, tbias, prf, xlam}), (std::array{1.0, 2.0, 3.0, 4.0}));

    for (int n : {0, -1, 0x7FFFFFFF}) {
        EXPECT_FALSE(openpks(dir.file("none"), "New", n));
        EXPECT_EQ(getpkserror(), ZUV_BAD_ARGUMENT);
        EXPECT_FALSE(openimg(dir.file("none"), "New", n));
        EXPECT_EQ(getimgerror(), ZUV_BAD_ARGUMENT);
        EXPECT_FALSE(openvec(dir.file("none"), "New", n));
        EXPECT_EQ(getvecerror(), ZUV_BAD_ARGUMENT);
    }
    for (const char* mode : {"", "x", static_cast<const char*>(nullptr)}) EXPECT_FALSE(openvec("f", mode, 1));
}

} // namespace
} // namespace norva::test
