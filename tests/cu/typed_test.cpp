// What all eight types of data files have in common: keywords on every machine, damaged and impossible files,
// a full disk.
#include "cu/dop.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/spl.h"
#include "cu/track.h"
#include "cu/vec.h"
#include "fileio/gat.h"
#include "series_images.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <sys/resource.h>
#include <unistd.h>

namespace norva::test {
namespace {

series_image as_series(const spl_image& image) {
    series_image series{image.machine, image.filetype, {}, image.elemsize, {}};
    const std::string bytes = image.bytes();
    series.header = bytes.substr(20 + series_image::reserved, 192);
    for (std::size_t n = 0; n < image.elements.size(); n++)
        series.elements.push_back(bytes.substr(20 + series_image::reserved + 192 + 256 * n, 256));
    return series;
}

series_image as_series(const gate_image& image) {
    series_image series{image.machine, 109, image.header(), static_cast<int>(image.element(0).size()), {}};
    for (int row = 0; row < image.rows; row++) series.elements.push_back(image.element(row));
    return series;
}

// A type: a file of it, how it is opened, and where its header keeps its version and its count of items.
struct kind {
    const char* name;
    series_image (*image)(int machine);
    zuvfile_ptr (*open)(const std::string& name, const char* mode);
    int (*error)();
    std::size_t version = 0, count = 4; // bytes in the header; 0 for a count that is not there
};

const kind kinds[] = {
    {"iq", [](int m) { return iq_image(m); }, [](auto& n, auto* m) -> zuvfile_ptr { return openiq(n, m); },
     getiqerror, 0, 0},
    {"pks", pks_image, [](auto& n, auto* m) -> zuvfile_ptr { return openpks(n, m, 9); }, getpkserror, 104,
     108},
    {"rea", [](int m) { return rea_image(m); }, [](auto& n, auto* m) -> zuvfile_ptr { return openrea(n, m); },
     getreaerror, 0, 0},
    {"dop", [](int m) { return dop_image(m, 2); },
     [](auto& n, auto* m) -> zuvfile_ptr { return opendop(n, m, 5); }, getdoperror, 104, 108},
    {"spl", [](int m) { return as_series(spl_image{.machine = m}); },
     [](auto& n, auto* m) -> zuvfile_ptr { return openspl(n, m, 2); }, getsplerror, 104, 108},
    {"gat", [](int m) { return as_series(gate_image{.machine = m, .incrng = 1}); },
     [](auto& n, auto* m) -> zuvfile_ptr { return opengat(n, m, 3); }, getgaterror},
    {"img", [](int m) { return row_image(m, 110); },
     [](auto& n, auto* m) -> zuvfile_ptr { return openimg(n, m, 3); }, getimgerror},
    {"vec", [](int m) { return row_image(m, 111); },
     [](auto& n, auto* m) -> zuvfile_ptr { return openvec(n, m, 3); }, getvecerror},
};

// Reads the keyword at a place of the listing and puts the same value back.
void put_back(_zuvfile* file, int indx) {
    std::string name;
    int type = 0;
    ASSERT_EQ(u_kwindx(file, indx, name, type), ZUV_OK);
    EXPECT_EQ(u_kwexist(file, name), 1);
    if (type == KW_INT) {
        EXPECT_EQ(u_kwput_i(file, name, u_kwget_i(file, name)), ZUV_OK) << name;
    } else if (type == KW_DOUBLE) {
        EXPECT_EQ(u_kwput_d(file, name, u_kwget_d(file, name)), ZUV_OK) << name;
    } else {
        EXPECT_EQ(u_kwput_s(file, name, u_kwget_s(file, name)), ZUV_OK) << name;
    }
}

// Header words come back as they were, list items are read, replaced, added and removed; the file stays one
// of its machine, byte by byte.
TEST(typed, keywords_of_every_type_and_machine) {
    temp_dir dir;
    for (const kind& k : kinds) {
        for (int machine : all_machines) {
            SCOPED_TRACE(std::string(k.name) + " " + std::to_string(machine));
            series_image image = k.image(machine);
            const bool times_in_list = image.filetype >= FILETYPE_IMG;
            const std::string before =
                times_in_list ? double_item(machine, "t0", 10) + double_item(machine, "prf", 4) : "";
            image.list = before + int_item(machine, "RUN", -70000) + double_item(machine, "SPAN", 0.375) +
                         string_item("NOTE", "abc");
            write_all(dir.file("f"), image.bytes());
            zuvfile_ptr p = k.open(dir.file("f"), "Update");
            ASSERT_TRUE(p) << k.error();
            EXPECT_EQ(u_kwget_i(p.get(), "run"), -70000);
            EXPECT_EQ(u_kwget_d(p.get(), "SPAN"), 0.375);
            EXPECT_EQ(u_kwget_s(p.get(), "Note"), "abc");
            const std::string all = listing(p.get());
            EXPECT_TRUE(all.ends_with(" RUN:i SPAN:d NOTE:s ")) << all;
            const auto words = std::ranges::count(all, ':') - 3 - (times_in_list ? 2 : 0);
            EXPECT_GT(words, 0);
            for (int i = 0; i < words; i++) put_back(p.get(), i);

            EXPECT_EQ(u_kwput_d(p.get(), "SPAN", -8), ZUV_OK);
            EXPECT_EQ(u_kwput_i(p.get(), "GATE", 1 << 20), ZUV_OK);
            EXPECT_EQ(u_kwdelete(p.get(), "NOTE"), ZUV_OK);
            EXPECT_NE(u_kwput_s(p.get(), "NOTE", std::string(179, 'x')), ZUV_OK); // no room
            EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
            image.list = before + int_item(machine, "RUN", -70000) + double_item(machine, "SPAN", -8) +
                         int_item(machine, "GATE", 1 << 20);
            EXPECT_EQ(read_all(dir.file("f")), image.bytes());
        }
    }
}

std::string edited(std::string bytes, std::size_t at, const std::string& with) {
    return bytes.replace(at, with.size(), with);
}

// Files that cannot be of the type are refused with their status, in both modes, and left as they are.
TEST(typed, damaged_and_impossible_files) {
    temp_dir dir;
    for (const kind& k : kinds) {
        for (int machine : {MACHINE_THIS, MACHINE_SUN}) {
            const series_image image = k.image(machine);
            const std::string whole = image.bytes();
            const std::size_t header = 20 + series_image::reserved;
            auto whole_number = [&](std::int32_t x) { return integer_bytes(machine, x); };
            const auto elements = static_cast<std::int32_t>(image.elements.size());
            struct bad_file {
                std::string why, bytes;
                int status;
            };
            std::vector<bad_file> bad = {
                {"empty", "", ZUV_TOO_SHORT},
                {"text", "this is no data file, only a line of text\n", ZUV_NO_CONVERSION},
                {"other type", edited(whole, 2, image.filetype == 101 ? "g" : "e"), ZUV_BAD_TYPE},
                {"no such type", edited(whole, 2, "\x68"), ZUV_BAD_TYPE},
                {"container version", edited(whole, 1, "\2"), ZUV_BAD_VERSION},
                {"header one byte longer",
                 edited(whole, 8, whole_number(static_cast<int>(image.header.size()) + 1)) + " ",
                 ZUV_BAD_HEADSIZE},
                {"no header", edited(whole, 8, whole_number(0)), ZUV_BAD_HEADSIZE},
                {"wider elements", edited(whole, 12, whole_number(image.elemsize + 1)) + std::string(9, ' '),
                 ZUV_BAD_TYPE},
                {"elements of no size", edited(whole, 12, whole_number(0)), ZUV_TOO_SHORT},
                {"one element too many", edited(whole, 16, whole_number(elements + 1)), ZUV_TOO_SHORT},
                {"fewer than no elements", edited(whole, 16, whole_number(-1)), ZUV_BAD_TYPE},
                {"header version", edited(whole, header + k.version, whole_number(77)), ZUV_BAD_VERSION},
            };
            if (k.count > 0)
                for (std::int32_t n : {0, -1, 4000, INT32_MAX, INT32_MIN})
                    bad.push_back({"count " + std::to_string(n),
                                   edited(whole, header + k.count, whole_number(n)), ZUV_BAD_TYPE});
            for (std::size_t n : {std::size_t{19}, std::size_t{50}, header + 1, whole.size() - 1})
                bad.push_back({"cut at " + std::to_string(n), whole.substr(0, n), ZUV_TOO_SHORT});
            for (const bad_file& b : bad) {
                SCOPED_TRACE(std::string(k.name) + " " + std::to_string(machine) + ": " + b.why);
                write_all(dir.file("f"), b.bytes);
                for (const char* mode : {"Old", "Update"}) {
                    EXPECT_FALSE(k.open(dir.file("f"), mode));
                    EXPECT_EQ(k.error(), b.status);
                }
                EXPECT_EQ(read_all(dir.file("f")), b.bytes);
            }
        }
    }
}

TEST(typed, names_that_are_no_files) {
    temp_dir dir;
    write_all(dir.file("locked"), iq_image(MACHINE_THIS).bytes());
    std::filesystem::permissions(dir.file("locked"), std::filesystem::perms::none);
    for (const kind& k : kinds) {
        SCOPED_TRACE(k.name);
        std::vector<std::string> names = {"", dir.path().string(), dir.file("none"), "/dev/zero",
                                          dir.file("none/f")};
        if (geteuid() != 0) names.push_back(dir.file("locked")); // nothing is locked to the superuser
        for (const std::string& name : names) {
            EXPECT_FALSE(k.open(name, "Old")) << name;
            EXPECT_EQ(k.error(), ZUV_NO_OPEN) << name;
            EXPECT_FALSE(k.open(name, "Update")) << name;
        }
        EXPECT_FALSE(k.open(dir.path().string(), "New"));
        EXPECT_EQ(k.error(), ZUV_NO_OPEN);
        EXPECT_FALSE(k.open(dir.file("locked"), "what"));
        EXPECT_EQ(k.error(), ZUV_BAD_ARGUMENT);
    }
}

// A disk that is full while a file grows: the write is refused, what was there stays.
TEST(typed, a_full_disk) {
    temp_dir dir;
    auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    for (const kind& k : kinds) {
        SCOPED_TRACE(k.name);
        const std::string whole = k.image(MACHINE_VAX).bytes();
        write_all(dir.file("f"), whole);
        zuvfile_ptr p = k.open(dir.file("f"), "Update");
        ASSERT_TRUE(p);
        std::vector<std::byte> element(static_cast<std::size_t>(u_elemsize(p.get())));
        EXPECT_EQ(u_elemmove(p.get(), u_nelem(p.get())), ZUV_OK);
        rlimit full = before;
        full.rlim_cur = whole.size() + 5;
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
        EXPECT_EQ(u_putelem(p.get(), element), ZUV_WRITE_FAILED);
        EXPECT_EQ(u_close(std::move(p)), ZUV_OK);
        EXPECT_FALSE(k.open(dir.file("new"), "New")); // its front alone is larger
        EXPECT_EQ(k.error(), ZUV_WRITE_FAILED);
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_EQ(read_all(dir.file("f")).substr(0, whole.size()), whole);
        EXPECT_TRUE(k.open(dir.file("f"), "Old"));
    }
    std::signal(SIGXFSZ, handler);
}

// Not-a-number and infinity come back from files of the machines that have them; a machine that has none
// keeps the largest number of that sign.
TEST(typed, values_that_are_no_numbers) {
    temp_dir dir;
    const std::vector<float> wild = {std::nanf(""), HUGE_VALF, -HUGE_VALF, 0, 0, 0};
    for (int machine : all_machines) {
        SCOPED_TRACE(machine);
        write_all(dir.file("f"), row_image(machine, 110, 0).bytes());
        imgfile_ptr p = openimg(dir.file("f"), "Update", 0);
        ASSERT_TRUE(p);
        ASSERT_EQ(putimg(p.get(), wild), ZUV_OK);
        ASSERT_EQ(u_close(std::move(p)), ZUV_OK);
        p = openimg(dir.file("f"), "Old", 0);
        std::vector<float> row(6);
        double t = 0;
        ASSERT_EQ(getimg(p.get(), t, row), ZUV_OK);
        const float most = is_vax_like(machine) ? 1.7014117e38F : HUGE_VALF; // (1 - 2^-24) 2^127
        EXPECT_EQ(std::isnan(row[0]), !is_vax_like(machine));
        EXPECT_EQ(row[1], most);
        EXPECT_EQ(row[2], -most);
        EXPECT_EQ(row[3], 0);
    }
}

// Times that fall or are no numbers: every move ends, at an element or with a status.
TEST(typed, times_that_do_not_rise) {
    temp_dir dir;
    const double nan = std::nan("");
    for (const std::vector<double>& times : {std::vector<double>{5, 3, 9, 1, 2},
                                             {nan, 1, 2},
                                             {1, nan, 3},
                                             {1, 2, nan},
                                             {3, 3, 3},
                                             {HUGE_VAL, 0, -HUGE_VAL},
                                             {-HUGE_VAL, 4, HUGE_VAL}}) {
        reafile_ptr rea = openrea(dir.file("f"), "New");
        for (double t : times) ASSERT_EQ(putrea(rea.get(), t, 1, 0, 0, 0), ZUV_OK);
        for (double t : {-1.0, 2.5, 3.0, 100.0, nan, HUGE_VAL, -HUGE_VAL}) {
            const int status = u_timemove(rea.get(), t);
            EXPECT_TRUE(status == ZUV_OK || status == -1) << status;
            EXPECT_LE(u_nextelem(rea.get()), std::ssize(times));
        }
        ASSERT_EQ(u_close(std::move(rea)), ZUV_OK);
        rea_track_ptr track = rea_setup(dir.file("f"));
        ASSERT_TRUE(track);
        EXPECT_EQ(rea_get_ndata(track.get()), std::ssize(times));
    }
}

} // namespace
} // namespace norva::test
