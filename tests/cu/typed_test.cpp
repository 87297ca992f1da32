// What all eight types of data files have in common: keywords on every machine, damaged and impossible files,
// a full disk.
#include "cu/dop.h"
#include "cu/img.h"
#include "cu/iq.h"
#include "cu/pks.h"
#include "cu/rea.h"
#include "cu/spl.h"
#include "cu/vec.h"
#include "fileio/gat.h"
#include "memory_file.h"
#include "series_images.h"
#include "support/temp_dir.h"
#include "walk_series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <sys/resource.h>

namespace norva::test {
namespace {

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
    {"spl", [](int m) { return spl_image{.machine = m}.image(); },
     [](auto& n, auto* m) -> zuvfile_ptr { return openspl(n, m, 2); }, getsplerror, 104, 108},
    {"gat", [](int m) { return gate_image{.machine = m, .incrng = 1, .reserved = 128}.image(); },
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
            const std::size_t header = 20 + static_cast<std::size_t>(image.reserved);
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
        EXPECT_FALSE(k.open(dir.file("f"), "what"));
        EXPECT_EQ(k.error(), ZUV_BAD_ARGUMENT);
        EXPECT_FALSE(k.open(dir.path().string(), "New"));
        EXPECT_EQ(k.error(), ZUV_NO_OPEN);
        EXPECT_FALSE(k.open(dir.file("none"), "Old"));
        EXPECT_EQ(k.error(), ZUV_NO_OPEN);
    }
}

// Cut at any byte a file is refused; whatever bits are turned over, it does no harm.
TEST(typed, damaged_files_do_no_harm) {
    memory_file file;
    std::mt19937 random(3);
    for (const kind& k : kinds) {
        for (int machine : {MACHINE_VAX, MACHINE_SUN, MACHINE_THIS}) {
            const std::string whole = k.image(machine).bytes();
            for (std::size_t n = 0; n < whole.size(); n += 3) {
                file.hold(whole.substr(0, n));
                ASSERT_FALSE(k.open(file.name(), n % 2 ? "Old" : "Update")) << k.name << " " << n;
                ASSERT_EQ(k.error(), ZUV_TOO_SHORT) << k.name << " " << n;
                ASSERT_EQ(file.size(), n); // and left as it is
            }
            for (int i = 0; i < 100; i++) {
                std::string bytes = whole;
                for (unsigned flips = 1 + random() % 3; flips > 0; flips--)
                    bytes[random() % bytes.size()] ^= static_cast<char>(1 << random() % 8);
                if (i % 5 == 0) bytes.resize(random() % bytes.size());
                for (auto walk : {walk_container, walk_series, walk_spline}) {
                    file.hold(bytes);
                    walk(file.name());
                    ASSERT_LT(file.size(), 100'000U);
                }
            }
        }
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

} // namespace
} // namespace norva::test
