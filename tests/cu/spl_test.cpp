// Spline files: every machine's form, both ways; header, keywords, services; damaged files.
#include "cu/spl.h"

#include "images.h"
#include "splines.h"
#include "support/temp_dir.h"
#include "zuvsys/safefile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <filesystem>
#include <limits>
#include <random>

namespace norva::test {
namespace {

void expect_elements(_splfile* p, const spl_image& image) {
    double tme = 0;
    int ncont = 0, flg2 = 0;
    for (const auto& want : image.elements) {
        std::vector<double> coe(3, -1);
        ASSERT_EQ(getspl(p, tme, ncont, flg2, coe), ZUV_OK);
        EXPECT_EQ(tme, want.time);
        EXPECT_EQ(ncont, want.ncont);
        EXPECT_EQ(flg2, want.flg2);
        EXPECT_EQ(coe, (std::vector<double>{want.coe[0], want.coe[1], 0})); // room beyond is zeroed
    }
    EXPECT_EQ(getspl(p, tme, ncont, flg2, {}), ZUV_EOF);
}

TEST(spl, files_of_all_machines_are_read_and_updated_in_their_own_form) {
    temp_dir dir;
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        spl_image image{.machine = machine};
        write_all(dir.file("f"), image.bytes());
        splfile_ptr p = openspl(dir.file("f"), "Old", 0);
        ASSERT_TRUE(p) << getsplerror();
        expect_elements(p.get(), image);
        std::string type, xunits, yunits;
        int ider = 0;
        EXPECT_EQ(getsplkeys(p.get(), type, xunits, yunits, ider), ZUV_OK);
        EXPECT_EQ(type + "|" + xunits + "|" + yunits, "range|Seconds|Kilometers");
        EXPECT_EQ(ider, 2);
        EXPECT_EQ(u_kwget_s(p.get(), "text"), "a comment");
        EXPECT_EQ(u_firsttime(p.get()), -1.5);
        EXPECT_EQ(u_lasttime(p.get()), 8);
        EXPECT_EQ(u_nitems(p.get()), 2);
        const struct {
            double t;
            int element;
        } moves[] = {{-9, 0}, {-1.5, 0}, {-1, 1}, {2, 1}, {2.1, 2}, {8, 2}, {9, 3}};
        for (const auto& m : moves) {
            EXPECT_EQ(u_timemove(p.get(), m.t), ZUV_OK);
            EXPECT_EQ(u_nextelem(p.get()), m.element) << m.t;
        }
        EXPECT_EQ(putspl(p.get(), 1, 2, 3, std::vector<double>{1, 2}), ZUV_READ_ONLY);

        p = openspl(dir.file("f"), "update", 0);
        ASSERT_TRUE(p);
        image.elements.push_back({9.5, 1, 1, {-8, 16}});
        ASSERT_EQ(u_elemmove(p.get(), 3), ZUV_OK);
        EXPECT_EQ(putspl(p.get(), 9.5, 1, 1, std::vector<double>{-8}), ZUV_BAD_ARGUMENT);
        EXPECT_EQ(putspl(p.get(), 9.5, 1, 1, image.elements[3].coe), ZUV_OK);
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        EXPECT_EQ(read_all(dir.file("f")), image.bytes());
    }
}

TEST(spl, what_does_not_fit_is_refused_with_its_status) {
    temp_dir dir;
    const struct {
        spl_image image;
        int status;
    } cases[] = {
        {{.ncoe = 3}, ZUV_BAD_TYPE},         // element size for 2
        {{.ncoe = 0x4000002}, ZUV_BAD_TYPE}, // times 128 is the right size in 32 bits
        {{.nelements = 4}, ZUV_TOO_SHORT},
    };
    for (const auto& c : cases) {
        write_all(dir.file("f"), c.image.bytes());
        EXPECT_FALSE(openspl(dir.file("f"), "Old", 2));
        EXPECT_EQ(getsplerror(), c.status);
        EXPECT_FALSE(espl_read(dir.file("f")));
        EXPECT_EQ(espl_error(), c.status);
    }
    const struct {
        const char* mode;
        int ncoe, status;
    } opens[] = {{"", 2, ZUV_BAD_ARGUMENT},
                 {"New", 0, ZUV_BAD_ARGUMENT},
                 {"New", std::numeric_limits<int>::max(), ZUV_BAD_ARGUMENT}};
    for (const auto& o : opens) {
        EXPECT_FALSE(openspl(dir.file("none"), o.mode, o.ncoe));
        EXPECT_EQ(getsplerror(), o.status);
    }
    double x = 0;
    int i = 0;
    std::string s;
    _splheader head;
    EXPECT_EQ(getspl(nullptr, x, i, i, {}), ZUV_NULL_FILE);
    EXPECT_EQ(putspl(nullptr, 0, 0, 0, {}), ZUV_NULL_FILE);
    EXPECT_EQ(getsplkeys(nullptr, s, s, s, i), ZUV_NULL_FILE);
    EXPECT_EQ(putsplkeys(nullptr, s, s, s, 1), ZUV_NULL_FILE);
    EXPECT_EQ(putsplhead(nullptr, head), ZUV_NULL_FILE);
    EXPECT_FALSE(espl_init_with_file(nullptr, ESPL_FILE));
    EXPECT_EQ(espl_error(), ZUV_NULL_FILE);
}

TEST(spl, header_values_are_keywords) {
    temp_dir dir;
    splfile_ptr p = openspl(dir.file("f"), "create", 3);
    ASSERT_TRUE(p);
    EXPECT_EQ(u_kwget_i(p.get(), "ncoe"), 3);
    EXPECT_EQ(u_kwput_s(p.get(), "xunits", "Hz"), ZUV_OK);
    EXPECT_EQ(u_kwput_s(p.get(), "text", std::string(200, 'x')), ZUV_OK); // cut to its field
    EXPECT_EQ(u_kwput_i(p.get(), "ider", -1), ZUV_OK);
    EXPECT_EQ(u_kwput_i(p.get(), "IDER", 5), ZUV_OK); // an item of the list
    EXPECT_EQ(u_kwput_i(p.get(), "ncoe", 4), ZUV_BAD_ARGUMENT);
    EXPECT_EQ(u_kwput_i(p.get(), "yunits", 4), -1); // of another type
    EXPECT_EQ(u_kwdelete(p.get(), "text"), -1);
    ASSERT_EQ(u_close(std::move(p)), ZUV_OK);

    p = openspl(dir.file("f"), "read", 0);
    ASSERT_TRUE(p);
    EXPECT_EQ(u_kwget_s(p.get(), "text"), std::string(103, 'x'));
    EXPECT_EQ(u_kwget_i(p.get(), "ider"), -1);
    EXPECT_EQ(u_kwget_i(p.get(), "IDER"), 5);
    EXPECT_EQ(u_kwget_d(p.get(), "ider"), 0);
    EXPECT_NE(u_error(), ZUV_OK);
    EXPECT_EQ(u_kwexist(p.get(), "yunits"), 1);
    EXPECT_EQ(u_kwexist(p.get(), "zunits"), 0);
    std::string name, listed;
    int type = 0;
    for (int i = 0; u_kwindx(p.get(), i, name, type) == ZUV_OK; i++)
        listed += name + std::to_string(type) + ' ';
    EXPECT_EQ(listed, "text3 ncoe1 type3 xunits3 yunits3 ider1 IDER1 ");
    EXPECT_NE(u_kwindx(p.get(), -1, name, type), ZUV_OK);
}

TEST(spl, a_header_copies_from_file_to_file) {
    temp_dir dir;
    write_all(dir.file("from"), spl_image{.machine = MACHINE_SUN}.bytes());
    splfile_ptr from = openspl(dir.file("from"), "Old", 0), to = openspl(dir.file("to"), "New", 2);
    ASSERT_TRUE(from && to);
    std::vector<std::byte> head(static_cast<std::size_t>(u_headsize(from.get())));
    std::vector<std::byte> element(static_cast<std::size_t>(u_elemsize(from.get())));
    ASSERT_EQ(u_gethead(from.get(), head), ZUV_OK);
    ASSERT_EQ(u_puthead(to.get(), head), ZUV_OK);
    for (int i = 0; i < 3; i++) {
        ASSERT_EQ(u_getelem(from.get(), element), ZUV_OK);
        ASSERT_EQ(u_putelem(to.get(), element), ZUV_OK);
    }
    ASSERT_EQ(u_close(std::move(to)), ZUV_OK);
    to = openspl(dir.file("to"), "Old", 0);
    ASSERT_TRUE(to);
    EXPECT_EQ(to->hd.yunits, "Kilometers");
    expect_elements(to.get(), spl_image{});
    EXPECT_EQ(u_gethead(to.get(), std::span(head).first(191)), ZUV_BAD_ARGUMENT);
}

// --- Evaluated splines on these files

TEST(spl, a_written_spline_reads_back_whole) {
    temp_dir dir;
    const espl_ptr e = spline(3, {{0, {1, 2, -0.1}}, {0.1, {5, -1, 3e-200}}, {1e6, {7, 0, 1e300}}});
    ASSERT_EQ(espl_write(e.get(), dir.file("a.spl"), "my fit", "doppler", "Seconds", "Hz", 1), 1);
    EXPECT_EQ(espl_write(e.get(), dir.file("a.spl"), "my fit", "doppler", "Seconds", "Hz", 1), 1); // over it
    const espl_ptr back = espl_read(dir.file("a.spl"));
    ASSERT_TRUE(back);
    EXPECT_EQ(espl_error(), 1);
    ASSERT_EQ(back->nbrks, 3);
    EXPECT_EQ(back->ncoe, 3);
    for (std::size_t i = 0; i < 3; i++) {
        EXPECT_EQ(back->brks[i].time, e->brks[i].time);
        EXPECT_EQ(back->brks[i].ncont, e->brks[i].ncont);
        EXPECT_EQ(back->brks[i].flg2, e->brks[i].flg2);
        EXPECT_EQ(back->brks[i].coe, e->brks[i].coe);
    }
    splfile_ptr p = openspl(dir.file("a.spl"), "Old", 0);
    EXPECT_EQ(p->hd.text + "|" + p->hd.type + "|" + p->hd.xunits + "|" + p->hd.yunits,
              "my fit|doppler|Seconds|Hz");
    EXPECT_EQ(p->hd.ider, 1);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1); // no temporary stays
}

TEST(spl, a_failed_write_leaves_the_old_file) {
    temp_dir dir;
    const espl_ptr e = spline(1, {{0, {1}}, {1, {2}}}), other = spline(1, {{0, {8}}, {1, {9}}});
    ASSERT_EQ(espl_write(e.get(), dir.file("a.spl"), "", "", "", "", 0), 1);
    const std::string before = read_all(dir.file("a.spl"));
    const safefile_calls system = safefile_system;
    safefile_system.write = [](int, const void*, std::size_t) -> ssize_t { return errno = ENOSPC, -1; };
    EXPECT_EQ(espl_write(other.get(), dir.file("a.spl"), "", "", "", "", 0), ZUV_WRITE_FAILED);
    safefile_system = system;
    EXPECT_EQ(espl_error(), ZUV_WRITE_FAILED);
    EXPECT_EQ(read_all(dir.file("a.spl")), before);
    EXPECT_EQ(espl_write(e.get(), dir.file("no/folder.spl"), "", "", "", "", 0), ZUV_NO_OPEN);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(spl, on_file_evaluates_as_in_memory) {
    temp_dir dir;
    std::mt19937 random(5);
    std::vector<std::pair<double, std::vector<double>>> pieces;
    for (int i = 0; i < 40; i++) {
        const double step = i == 7 ? 0 : std::exp(static_cast<double>(random() % 100) / 20);
        pieces.push_back({i == 0 ? -50 : pieces.back().first + step, {1.0 * i, 2.0 - i, 0.25 * i}});
    }
    const espl_ptr memory = spline(3, pieces);
    ASSERT_EQ(espl_write(memory.get(), dir.file("a.spl"), "", "", "", "", 0), 1);
    splfile_ptr p = openspl(dir.file("a.spl"), "Old", 0);
    const espl_ptr file = espl_init_with_file(p.get(), ESPL_FILE);
    ASSERT_TRUE(file) << espl_error();
    EXPECT_EQ(file->nbrks, 40);
    EXPECT_EQ(file->t1, memory->t1);
    auto same_at = [&](double t) {
        for (int der = 0; der < 4; der++) {
            ASSERT_EQ(espl(file.get(), t, der), espl(memory.get(), t, der)) << t << " " << der;
            ASSERT_EQ(espl_error(), 1);
        }
    };
    const double span = memory->t1 - memory->t0;
    for (int i = -20; i < 320; i++) same_at(memory->t0 + span * i / 300); // in order
    for (int i = 0; i < 300; i++)
        same_at(memory->t0 + span * (static_cast<double>(random() % 1200) / 1000 - 0.1));
    for (std::size_t i = 40; i-- > 0;) same_at(pieces[i].first); // at each breakpoint, backwards
    for (double t : {-51.0, memory->t1 - 1e-6, memory->t1, memory->t1 + 1, memory->t1 - 1e-6, -51.0})
        same_at(t);
    for (const espl_ptr& refused :
         {espl_mult(file.get(), 2), espl_plus(file.get(), 2), espl_diff(file.get()),
          espl_integrate(file.get(), 0), espl_copy(file.get()), espl_add(file.get(), memory.get())})
        EXPECT_FALSE(refused);
    EXPECT_EQ(espl_error(), ZUV_BAD_ARGUMENT);
    EXPECT_TRUE(espl_plttimes(file.get(), 1).empty());
    EXPECT_EQ(espl_write(file.get(), dir.file("b.spl"), "", "", "", "", 0), ZUV_BAD_ARGUMENT);
    EXPECT_EQ(espl(file.get(), std::numeric_limits<double>::quiet_NaN(), 0), 0);
    EXPECT_EQ(espl_error(), ZUV_BAD_ARGUMENT);
}

// A file that is cut while it is open: a failed evaluation leaves no mixture of two pieces in hand.
TEST(spl, a_read_that_fails_is_told_each_time) {
    temp_dir dir;
    const std::string whole = spl_image{}.bytes();
    write_all(dir.file("f"), whole);
    splfile_ptr p = openspl(dir.file("f"), "Old", 0);
    const espl_ptr e = espl_init_with_file(p.get(), ESPL_FILE);
    ASSERT_TRUE(e);
    EXPECT_EQ(espl(e.get(), 5, 0), 4.25 - 2 * 3);
    std::filesystem::resize_file(dir.file("f"), whole.size() - 256 - 100); // the first element is left
    for (double t : {-5.0, 0.0, 5.0, 9.0}) {
        EXPECT_EQ(espl(e.get(), t, 0), 0);
        EXPECT_NE(espl_error(), 1) << t;
    }
    write_all(dir.file("f"), whole);
    EXPECT_EQ(espl(e.get(), 0, 0), 1.75);
    EXPECT_EQ(espl_error(), 1);
}

TEST(spl, a_file_that_grows_is_seen_after_a_rehash) {
    temp_dir dir;
    write_all(dir.file("f"), spl_image{}.bytes());
    splfile_ptr p = openspl(dir.file("f"), "Update", 0);
    const espl_ptr e = espl_init_with_file(p.get(), ESPL_FILE);
    ASSERT_TRUE(e);
    EXPECT_EQ(espl(e.get(), 20, 0), 36); // 0 + 3 (20-8)
    ASSERT_EQ(u_elemmove(p.get(), 3), ZUV_OK);
    ASSERT_EQ(putspl(p.get(), 10, 0, 0, std::vector<double>{100, 1}), ZUV_OK);
    EXPECT_EQ(espl_rehash(e.get()), 1);
    EXPECT_EQ(e->nbrks, 4);
    EXPECT_EQ(espl(e.get(), 20, 0), 110);
    e->ncoe = 5; // as if made for another file
    EXPECT_EQ(espl_rehash(e.get()), ESPL_NO_SPLINE);
    EXPECT_EQ(e->ncoe, 5);
}

TEST(spl, contents_that_make_no_spline) {
    temp_dir dir;
    const double inf = std::numeric_limits<double>::infinity();
    const spl_image good;
    auto with_times = [&](double a, double b, double c) {
        spl_image image;
        image.elements[0].time = a;
        image.elements[1].time = b;
        image.elements[2].time = c;
        return image;
    };
    spl_image one, none, wide{.ncoe = ESPL_MAX_NCOE + 1, .elemsize = 128 * (ESPL_MAX_NCOE + 1)};
    one.elements.resize(1);
    none.elements.clear();
    const struct {
        spl_image image;
        bool in_memory, on_file; // on file, what lies inside is not known at open
    } cases[] = {
        {good, true, true},
        {one, false, false},
        {none, false, false},
        {wide, false, false},
        {with_times(3, 2, 1), false, false},
        {with_times(0, 5, 2), false, true},
        {with_times(0, inf, 2), false, true},
        {with_times(-inf, 0, 2), false, false},
        {with_times(0, 1, inf - inf), false, false},
        {with_times(1, 1, 1), true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        write_all(dir.file("f"), c.image.bytes());
        EXPECT_EQ(espl_read(dir.file("f")) != nullptr, c.in_memory);
        EXPECT_EQ(espl_error(), c.in_memory ? 1 : ESPL_NO_SPLINE);
        splfile_ptr p = openspl(dir.file("f"), "Old", 0);
        ASSERT_TRUE(p);
        const espl_ptr e = espl_init_with_file(p.get(), ESPL_FILE);
        EXPECT_EQ(e != nullptr, c.on_file);
        EXPECT_EQ(espl_error(), c.on_file ? 1 : ESPL_NO_SPLINE);
        if (e)
            for (double t = -2; t < 9; t += 0.5) espl(e.get(), t, 0);
        EXPECT_FALSE(espl_init_with_file(p.get(), 2));
        EXPECT_EQ(espl_error(), ZUV_BAD_ARGUMENT); // no such mode
    }
}

} // namespace
} // namespace norva::test
