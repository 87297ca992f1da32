// IQ, track and Doppler files of every machine, the views over several types, and the track reader.
#include "cu/dop.h"
#include "cu/geniq.h"
#include "cu/genrea.h"
#include "cu/iq.h"
#include "cu/rea.h"
#include "cu/track.h"
#include "fileio/gat.h"
#include "series_images.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace norva::test {
namespace {

TEST(series, iq_files_of_all_machines) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        series_image image = iq_image(machine);
        write_all(dir.file("f"), image.bytes());
        iqfile_ptr p = openiq(dir.file("f"), "Update");
        ASSERT_TRUE(p) << getiqerror();
        double t = 0, t0 = 0, tbias = 0, prf = 0, xlam = 0;
        float i = 0, q = 0;
        for (int n = 0; n < 5; n++) {
            ASSERT_EQ(getiq(p.get(), t, i, q), ZUV_OK);
            EXPECT_EQ(t, 10 + 0.25 * n);
            EXPECT_EQ(i, n + 0.5F);
            EXPECT_EQ(q, -2.0F * n);
        }
        EXPECT_EQ(getiq(p.get(), t, i, q), ZUV_EOF);
        EXPECT_EQ(getiqkeys(p.get(), t0, tbias, prf, xlam), ZUV_OK);
        EXPECT_EQ((std::array{t0, tbias, prf, xlam}), (std::array{10.0, 0.25, 4.0, 0.5}));
        for (auto [to, element] : {std::pair{9.0, 0}, {10.25, 1}, {10.3, 2}, {11.0, 4}, {99.0, 5}}) {
            EXPECT_EQ(u_timemove(p.get(), to), ZUV_OK);
            EXPECT_EQ(u_nextelem(p.get()), element) << to;
        }
        EXPECT_EQ(u_lasttime(p.get()), 11);
        EXPECT_EQ(putiq(p.get(), 5.5F, -10.0F), ZUV_OK);
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        image.elements.push_back(float_bytes(machine, 5.5F) + float_bytes(machine, -10.0F));
        EXPECT_EQ(read_all(dir.file("f")), image.bytes());
    }
}

TEST(series, track_files_of_all_machines) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        series_image image = rea_image(machine);
        const std::string last = image.elements.back();
        image.elements.pop_back();
        write_all(dir.file("f"), image.bytes());
        reafile_ptr p = openrea(dir.file("f"), "Update");
        ASSERT_TRUE(p) << getreaerror();
        double t = 0, r = 0;
        float el = 0, az = 0;
        int flag = 0;
        for (int n = 0; n < 6; n++) {
            ASSERT_EQ(getrea(p.get(), t, r, el, az, flag), ZUV_OK);
            EXPECT_EQ(t, 10 + 0.5 * n);
            EXPECT_EQ(r, 5000 + 8.0 * n * n);
            EXPECT_EQ(el, 0.25F * n);
            EXPECT_EQ(az, -1.5F * n);
            EXPECT_EQ(flag, n % 2);
        }
        EXPECT_EQ(getrea(p.get(), t, r, el, az, flag), ZUV_EOF);
        EXPECT_EQ(putrea(p.get(), 13, 5288, 1.5F, -9.0F, 0), ZUV_OK);
        EXPECT_EQ(u_kwget_s(p.get(), "text"), "track");
        EXPECT_EQ(putreakeys(p.get(), 10, 0.25, 0, 0.5), ZUV_BAD_ARGUMENT); // could not be opened again
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        image.elements.push_back(last);
        EXPECT_EQ(read_all(dir.file("f")), image.bytes());
    }
}

TEST(series, doppler_files_of_all_machines_and_versions) {
    temp_dir dir;
    for (int machine : all_machines) {
        for (int version : {1, 2}) {
            SCOPED_TRACE(std::to_string(machine) + " " + std::to_string(version));
            series_image image = dop_image(machine, version);
            const std::string last = image.elements.back();
            image.elements.pop_back();
            write_all(dir.file("f"), image.bytes());
            dopfile_ptr p = opendop(dir.file("f"), "Update", 0);
            ASSERT_TRUE(p) << getdoperror();
            double t = 0, a = -1, e = -1;
            std::vector<std::int16_t> amps(7, 9);
            for (int n = 0; n < 2; n++) {
                ASSERT_EQ(getdopae(p.get(), t, a, e, amps), ZUV_OK);
                EXPECT_EQ(t, 10 + 0.5 * n);
                EXPECT_EQ(a, version == 2 ? n + 100 : 0);
                EXPECT_EQ(e, version == 2 ? n + 200 : 0);
                for (int j = 0; j < 7; j++)
                    EXPECT_EQ(amps[static_cast<std::size_t>(j)], j < 5 ? 300 * n - j : 0);
            }
            EXPECT_EQ(u_kwget_d(p.get(), "scale"), 0.125);
            const std::vector<std::int16_t> more = {600, 599, 598, 597, 596};
            EXPECT_EQ(putdopae(p.get(), 11, 102, 202, more), ZUV_OK);
            EXPECT_EQ(putdop(p.get(), 11, std::span(more).first(4)), ZUV_BAD_ARGUMENT);
            EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
            image.elements.push_back(last);
            EXPECT_EQ(read_all(dir.file("f")), image.bytes());
        }
    }
}

TEST(series, what_does_not_fit_is_refused_with_its_status) {
    temp_dir dir;
    series_image narrow = dop_image(4, 2);
    narrow.elemsize = 32;
    const double nan = std::nan("");
    const struct {
        series_image image;
        int status;
    } cases[] = {
        {iq_image(4, 0), ZUV_BAD_HEADER},     {iq_image(4, 4, 0), ZUV_BAD_HEADER},
        {iq_image(4, nan), ZUV_BAD_HEADER},   {rea_image(4, -1), ZUV_BAD_HEADER},
        {rea_image(4, 4, 0), ZUV_BAD_HEADER}, {narrow, ZUV_BAD_TYPE},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        write_all(dir.file("f"), c.image.bytes());
        if (c.image.filetype == 103) {
            EXPECT_FALSE(opengenrea(dir.file("f")));
            EXPECT_EQ(getgenreaerror(), c.status);
            EXPECT_FALSE(rea_setup(dir.file("f")));
            EXPECT_FALSE(opengeniq(dir.file("f")));
            EXPECT_EQ(getgeniqerror(), ZUV_BAD_TYPE);
        } else {
            EXPECT_FALSE(opengeniq(dir.file("f")));
            EXPECT_EQ(getgeniqerror(), c.status);
            EXPECT_FALSE(opengenrea(dir.file("f")));
            EXPECT_EQ(getgenreaerror(), ZUV_BAD_TYPE);
        }
    }
    EXPECT_FALSE(opengeniq(dir.file("none")));
    EXPECT_EQ(getgeniqerror(), ZUV_NO_OPEN);
    EXPECT_FALSE(opengenrea(dir.file("none")));
    EXPECT_EQ(getgenreaerror(), ZUV_NO_OPEN);
    EXPECT_FALSE(opendop(dir.file("new"), "New", 0));
    EXPECT_EQ(getdoperror(), ZUV_BAD_ARGUMENT);
    EXPECT_FALSE(opendop(dir.file("new"), "New", 0x7FFFFFFF));
    EXPECT_EQ(getdoperror(), ZUV_BAD_ARGUMENT);
    // Nothing but a header, but rows of 2^28 samples and more.
    series_image wide = dop_image(MACHINE_THIS, 2, 1 << 28);
    write_all(dir.file("wide"), wide.bytes());
    EXPECT_TRUE(opendop(dir.file("wide"), "Old", 0));
    EXPECT_FALSE(opengeniq(dir.file("wide")));
    EXPECT_EQ(getgeniqerror(), ZUV_NO_MEMORY);
    write_all(dir.file("flat"), gate_image{}.bytes()); // rows without ranges are no track
    EXPECT_FALSE(opengenrea(dir.file("flat")));
    EXPECT_EQ(getgenreaerror(), ZUV_BAD_TYPE);
}

// --- Views

std::vector<float> rows_of(_zuvfile* file, std::int64_t n) {
    std::vector<float> rows(static_cast<std::size_t>(n * u_elemsize(file)) / sizeof(float), -77);
    EXPECT_EQ(u_getnelem(file, std::as_writable_bytes(std::span(rows)), n), ZUV_OK);
    return rows;
}

TEST(series, complex_rows_look_alike_whatever_the_type) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        const gate_image gate{.machine = machine, .ngat = 3, .dattype = 5, .incrng = 1, .rows = 4};
        write_all(dir.file("iq"), iq_image(machine).bytes());
        write_all(dir.file("dop"), dop_image(machine, 2).bytes());
        write_all(dir.file("gat"), gate.bytes());
        zuvfile_ptr iq = opengeniq(dir.file("iq")), dop = opengeniq(dir.file("dop"));
        zuvfile_ptr gat = opengeniq(dir.file("gat"));
        ASSERT_TRUE(iq && dop && gat);
        EXPECT_EQ(u_nitems(iq.get()), 1);
        EXPECT_EQ(u_nitems(dop.get()), 5);
        EXPECT_EQ(u_nitems(gat.get()), 3);
        EXPECT_EQ(rows_of(iq.get(), 2), (std::vector<float>{0.5F, 0, 1.5F, -2}));
        EXPECT_EQ(rows_of(iq.get(), 1), (std::vector<float>{2.5F, -4})); // goes on where it was
        EXPECT_EQ(u_nexttime(iq.get()), 10.75);
        EXPECT_EQ(rows_of(dop.get(), 2), (std::vector<float>{0,   0, -1,  0, -2,  0, -3,  0, -4,  0,
                                                             300, 0, 299, 0, 298, 0, 297, 0, 296, 0}));
        EXPECT_EQ(u_elemmove(gat.get(), 1), ZUV_OK);
        std::vector<float> expected;
        for (int row : {1, 2})
            for (int v = 0; v < 6; v++) expected.push_back(gate.expected(row, v));
        EXPECT_EQ(rows_of(gat.get(), 2), expected);
        EXPECT_EQ(u_nextelem(gat.get()), 3);

        const struct {
            _zuvfile* file;
            double t0, tbias, prf, xlam, scale;
        } keys[] = {{iq.get(), 10, 0.25, 4, 0.5, 1},
                    {dop.get(), 10, 0.25, 4, 0.5, 0.125},
                    {gat.get(), gate.t0, 0, gate.prf, 1, 1}};
        for (const auto& k : keys) {
            const std::pair<const char*, double> asked[] = {
                {"t0", k.t0}, {"tbias", k.tbias}, {"prf", k.prf}, {"xlam", k.xlam}, {"scale", k.scale}};
            for (auto [name, value] : asked) {
                EXPECT_EQ(u_kwget_d(k.file, name), value) << name;
                EXPECT_EQ(u_error(), ZUV_OK);
                EXPECT_EQ(u_kwexist(k.file, name), 1);
            }
            u_kwget_d(k.file, "other");
            EXPECT_NE(u_error(), ZUV_OK);
            EXPECT_EQ(u_canwrite(k.file), 0);
        }
        std::array<std::byte, 8> small;
        EXPECT_EQ(u_elemmove(dop.get(), 0), ZUV_OK);
        EXPECT_EQ(u_getelem(dop.get(), small), ZUV_BAD_ARGUMENT); // no room for a row
        EXPECT_EQ(u_getnelem(iq.get(), small, -1), ZUV_BAD_ARGUMENT);
        EXPECT_EQ(u_elemmove(iq.get(), 5), ZUV_OK);
        EXPECT_EQ(u_getelem(iq.get(), small), ZUV_EOF);
        EXPECT_EQ(getgeniqerror(), ZUV_EOF);
    }
}

TEST(series, gate_keywords_stand_for_missing_header_values) {
    temp_dir dir;
    gatfile_ptr made = opengat_opt(dir.file("g"), 2, GAT_FLOAT, 0);
    u_kwput_d(made.get(), "XLAM", 0.03);
    u_kwput_d(made.get(), "TBIAS", -7);
    ASSERT_EQ(putgat(made.get(), 0, std::vector<float>{1, 2, 3, 4}), ZUV_OK);
    u_close(std::move(made));
    zuvfile_ptr file = opengeniq(dir.file("g"));
    ASSERT_TRUE(file);
    EXPECT_EQ(u_kwget_d(file.get(), "xlam"), 0.03);
    EXPECT_EQ(u_kwget_d(file.get(), "tbias"), -7);
}

TEST(series, many_rows_in_one_call_equal_single_rows) {
    temp_dir dir;
    iqfile_ptr made = openiq(dir.file("f"), "New");
    for (int n = 0; n < 20000; n++) ASSERT_EQ(putiq(made.get(), n, -n), ZUV_OK);
    u_close(std::move(made));
    zuvfile_ptr file = opengeniq(dir.file("f"));
    ASSERT_TRUE(file);
    const std::vector<float> all = rows_of(file.get(), 20000);
    for (int n = 0; n < 20000; n++) {
        ASSERT_EQ(all[static_cast<std::size_t>(2 * n)], n);
        ASSERT_EQ(all[static_cast<std::size_t>(2 * n + 1)], -n);
    }
}

// --- The track reader

TEST(track, arrays_of_a_track_file) {
    temp_dir dir;
    write_all(dir.file("f"), rea_image(MACHINE_SUN).bytes());
    rea_track_ptr track = rea_setup(dir.file("f"));
    ASSERT_TRUE(track);
    ASSERT_EQ(rea_get_ndata(track.get()), 7);
    for (std::size_t n = 0; n < 7; n++) {
        const auto x = static_cast<double>(n);
        EXPECT_EQ(rea_get_time(track.get())[n], 10 + 0.5 * x);
        EXPECT_EQ(rea_get_range(track.get())[n], 5000 + 8 * x * x);
        EXPECT_EQ(rea_get_elevation(track.get())[n], 0.25 * x);
        EXPECT_EQ(rea_get_azimuth(track.get())[n], -1.5 * x);
    }
    // Elements 1 to 5 by twos: 1 and 2, 3 and 4, 5 alone.
    ASSERT_EQ(rea_rd_and_avg(track.get(), 10.4, 12.5, 2), ZUV_OK);
    ASSERT_EQ(rea_get_ndata(track.get()), 3);
    const double t[] = {10.75, 11.75, 12.5}, r[] = {5020, 5100, 5200}, az[] = {-2.25, -5.25, -7.5};
    for (std::size_t n = 0; n < 3; n++) {
        EXPECT_DOUBLE_EQ(rea_get_time(track.get())[n], t[n]);
        EXPECT_DOUBLE_EQ(rea_get_range(track.get())[n], r[n]);
        EXPECT_DOUBLE_EQ(rea_get_azimuth(track.get())[n], az[n]);
    }
    EXPECT_EQ(rea_rd_and_avg(track.get(), 0, 99, 0), ZUV_BAD_ARGUMENT);
    EXPECT_EQ(rea_get_ndata(track.get()), 3);
    EXPECT_EQ(rea_rd_and_avg(track.get(), 20, 30, 1), ZUV_OK); // nothing there
    EXPECT_EQ(rea_get_ndata(track.get()), 0);

    reafile_ptr more = openrea(dir.file("f"), "Update");
    ASSERT_EQ(u_elemmove(more.get(), 7), ZUV_OK);
    ASSERT_EQ(putrea(more.get(), 20, 9000, 0, 0, 0), ZUV_OK);
    u_close(std::move(more));
    EXPECT_EQ(rea_rehash(track.get()), ZUV_OK);
    EXPECT_EQ(rea_get_ndata(track.get()), 8);
    EXPECT_EQ(rea_get_range(track.get())[7], 9000);

    write_all(dir.file("f"), "damaged");
    EXPECT_NE(rea_rehash(track.get()), ZUV_OK);
    EXPECT_EQ(rea_get_ndata(track.get()), 8); // as they were
    EXPECT_EQ(rea_close_file(track.get()), ZUV_OK);
    EXPECT_EQ(rea_get_ndata(track.get()), 8);
    EXPECT_EQ(rea_rehash(track.get()), ZUV_NULL_FILE);
    EXPECT_EQ(rea_rd_and_avg(track.get(), 0, 1, 1), ZUV_NULL_FILE);
    EXPECT_EQ(rea_close_file(track.get()), ZUV_NULL_FILE);
    rea_free(std::move(track));
    EXPECT_EQ(rea_get_ndata(nullptr), 0);
    EXPECT_TRUE(rea_get_time(nullptr).empty());
}

TEST(track, ranges_of_a_gate_file) {
    temp_dir dir;
    for (int machine : all_machines) {
        const gate_image gate{.machine = machine, .ngat = 5, .dattype = 4, .incrng = 1, .rows = 6};
        write_all(dir.file("g"), gate.bytes());
        rea_track_ptr track = rea_setup(dir.file("g"));
        ASSERT_TRUE(track) << getgenreaerror();
        ASSERT_EQ(rea_get_ndata(track.get()), 6);
        for (int row = 0; row < 6; row++) {
            const auto n = static_cast<std::size_t>(row);
            EXPECT_EQ(rea_get_time(track.get())[n], gate.t0 + row / gate.prf);
            EXPECT_EQ(rea_get_range(track.get())[n], gate_image::range(row));
            EXPECT_EQ(rea_get_elevation(track.get())[n], 0);
        }
    }
}

} // namespace
} // namespace norva::test
