// The container: statuses, positions, conversion and spreading, keywords in files, updates in place.
#include "fileio/zuvfile.h"

#include "fileio/mcvt.h"
#include "machine_bytes.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <vector>

namespace norva::test {
namespace {

constexpr int element_size = 4;

std::span<const std::byte> bytes_of(const std::string& text) {
    return std::as_bytes(std::span(text));
}

zuvfile_ptr reopened(const std::string& name, bool update = false) {
    int type = 0, headsize = 0, elementsize = 0;
    return update ? zuvfileupdate(name, type, headsize, elementsize)
                  : zuvfileopen(name, type, headsize, elementsize);
}

// A file of type 101 with an 8-byte header and the elements e000, e001, ...
void make_file(const std::string& name, int elements) {
    zuvfile_ptr file = zuvfilecreate(name, FILETYPE_IQ, 8, element_size);
    ASSERT_TRUE(file);
    for (int i = 0; i < elements; i++) {
        std::string number = std::to_string(1000 + i);
        number[0] = 'e';
        ASSERT_EQ(zuvfilewriteblock(file.get(), bytes_of(number), 1), ZUV_OK);
    }
    ASSERT_EQ(zuvfileputhead(file.get(), bytes_of("HEADER 8")), ZUV_OK);
    ASSERT_EQ(zuvfileclose(std::move(file)), ZUV_OK);
}

std::string read_block(_zuvfile* file, std::int64_t count, int& status, std::size_t size = element_size) {
    std::string buffer(static_cast<std::size_t>(count) * size, '#');
    status = zuvfilereadblock(file, std::as_writable_bytes(std::span(buffer)), count);
    return buffer;
}

TEST(zuvfile, a_new_file_has_the_documented_bytes) {
    temp_dir dir;
    make_file(dir.file("f"), 3);
    std::string expected(
        "\x04\x01\x65\x00\x00\x04\x00\x00\x08\x00\x00\x00\x04\x00\x00\x00\x03\x00\x00\x00\x01", 21);
    expected += std::string(1023, '\0') + "HEADER 8e000e001e002";
    EXPECT_EQ(read_all(dir.file("f")), expected);
    EXPECT_EQ(zuvfiletype(dir.file("f")), 101);
    int machine = 0;
    EXPECT_EQ(zuvfilemachine(dir.file("f"), machine), 1);
    EXPECT_EQ(machine, 4);
    EXPECT_EQ(std::filesystem::status(dir.file("f")).permissions(),
              static_cast<std::filesystem::perms>(0600));

    zuvfile_ptr file = reopened(dir.file("f"));
    std::string header(8, '#');
    EXPECT_EQ(zuvfilegethead(file.get(), std::as_writable_bytes(std::span(header))), ZUV_OK);
    EXPECT_EQ(header, "HEADER 8");
}

TEST(zuvfile, seeking_and_reading) {
    temp_dir dir;
    make_file(dir.file("f"), 3);
    zuvfile_ptr file = reopened(dir.file("f"));
    int status = 0;
    EXPECT_EQ(zuvfileseek(file.get(), 3), ZUV_OK); // where a file is appended to
    read_block(file.get(), 1, status);
    EXPECT_EQ(status, ZUV_EOF);
    EXPECT_EQ(zuvfileseek(file.get(), 4), ZUV_SEEK_FAILED);
    EXPECT_EQ(zuvfileseek(file.get(), -1), ZUV_SEEK_FAILED);
    EXPECT_EQ(zuvfileseek(file.get(), 1), ZUV_OK);
    EXPECT_EQ(read_block(file.get(), 2, status), "e001e002");
    EXPECT_EQ(status, ZUV_OK);
    EXPECT_EQ(zuvfileerror(), ZUV_OK);
    std::int64_t n = 0;
    zuvfilenextelement(file.get(), n);
    EXPECT_EQ(n, 3);
    zuvfilemaxelement(file.get(), n);
    EXPECT_EQ(n, 2);
    EXPECT_EQ(zuvfileseek(file.get(), 0), ZUV_OK);
    read_block(file.get(), 4, status);
    EXPECT_EQ(status, ZUV_EOF);
    EXPECT_EQ(zuvfilereadblock(file.get(), {}, -1), ZUV_BAD_ARGUMENT);
    EXPECT_EQ(zuvfilereadblock(file.get(), {}, 0), ZUV_OK);
    EXPECT_EQ(zuvfilereadblock(file.get(), {}, 1), ZUV_BAD_ARGUMENT); // no room
    EXPECT_EQ(zuvfilewriteblock(file.get(), bytes_of("xxxx"), 1), ZUV_READ_ONLY);
    EXPECT_EQ(zuvfileputhead(file.get(), bytes_of("header 8")), ZUV_READ_ONLY);
    EXPECT_EQ(zuvfileseek(nullptr, 0), ZUV_NULL_FILE);
    EXPECT_EQ(zuvfileclose({}), ZUV_NULL_FILE);
}

TEST(zuvfile, elements_are_replaced_and_appended_in_any_order) {
    temp_dir dir;
    make_file(dir.file("f"), 3);
    zuvfile_ptr file = reopened(dir.file("f"), true);
    int status = 0;
    EXPECT_EQ(read_block(file.get(), 1, status), "e000");
    EXPECT_EQ(zuvfilewriteblock(file.get(), bytes_of("xxxx"), 1), ZUV_OK);
    EXPECT_EQ(read_block(file.get(), 1, status), "e002");
    EXPECT_EQ(zuvfilewriteblock(file.get(), bytes_of("e003e004"), 2), ZUV_OK);
    EXPECT_EQ(zuvfilewriteelement(file.get(), bytes_of("yyyy"), 0), ZUV_OK);
    std::string header(8, '#');
    zuvfilegethead(file.get(), std::as_writable_bytes(std::span(header)));
    EXPECT_EQ(read_block(file.get(), 1, status), "xxxx"); // the header did not move the next element
    ASSERT_EQ(zuvfileclose(std::move(file)), ZUV_OK);
    file = reopened(dir.file("f"));
    EXPECT_EQ(read_block(file.get(), 5, status), "yyyyxxxxe002e003e004");
    EXPECT_EQ(status, ZUV_OK);
}

// Until the close, what lies on the disk is a file with its old count: a program that dies leaves that.
TEST(zuvfile, a_file_under_update_is_readable_at_every_moment) {
    temp_dir dir;
    make_file(dir.file("f"), 3);
    zuvfile_ptr file = reopened(dir.file("f"), true);
    zuvfileseek(file.get(), 3);
    for (int i = 0; i < 3; i++) {
        ASSERT_EQ(zuvfilewriteblock(file.get(), bytes_of("more"), 1), ZUV_OK);
        ASSERT_EQ(zuvfile_res_put_int(file.get(), "NREC", i), 1);
        write_all(dir.file("left"), read_all(dir.file("f")));
        zuvfile_ptr left = reopened(dir.file("left"));
        ASSERT_TRUE(left);
        EXPECT_EQ(left->nelements, 3);
        int n = -1;
        EXPECT_EQ(zuvfile_res_get_n(left.get(), n), 1);
        EXPECT_EQ(n, 0);
    }
    file.reset(); // the owner closes, too
    file = reopened(dir.file("f"));
    EXPECT_EQ(file->nelements, 6);
}

// An element of 4 bytes on disk and 6 in memory: a letter and three digits become a letter, four digits and a
// mark.
void widen(_zuvfile*, std::span<std::byte> element, int flag) {
    auto* c = reinterpret_cast<char*>(element.data());
    if (flag == 1) {
        EXPECT_EQ(c[4], '\0'); // zeros behind what the file holds
        c[5] = '!';
    }
    c[0] = static_cast<char>(flag == 1 ? c[0] - 'a' + 'A' : c[0] - 'A' + 'a');
}

void keep(_zuvfile*, std::span<std::byte>, int) {}

TEST(zuvfile, elements_spread_from_disk_size_to_memory_size) {
    temp_dir dir;
    make_file(dir.file("f"), 3);
    zuvfile_ptr file = reopened(dir.file("f"), true);
    EXPECT_EQ(zuvfileconvert(file.get(), keep, widen, 8, 3), ZUV_BAD_ARGUMENT);
    EXPECT_EQ(zuvfileconvert(file.get(), keep, widen, 7, 6), ZUV_BAD_ARGUMENT);
    ASSERT_EQ(zuvfileconvert(file.get(), keep, widen, 10, 6), ZUV_OK);
    int status = 0;
    EXPECT_EQ(read_block(file.get(), 3, status, 6), std::string("E000\0!E001\0!E002\0!", 18));
    EXPECT_EQ(status, ZUV_OK);
    EXPECT_EQ(zuvfilewriteelement(file.get(), bytes_of("X777??"), 1), ZUV_OK);
    std::string header(10, '#');
    EXPECT_EQ(zuvfilegethead(file.get(), std::as_writable_bytes(std::span(header))), ZUV_OK);
    EXPECT_EQ(header, std::string("HEADER 8\0\0", 10));
    EXPECT_EQ(zuvfileputhead(file.get(), bytes_of("header 9++")), ZUV_OK);
    zuvfileclose(std::move(file));
    EXPECT_EQ(read_all(dir.file("f")).substr(20 + 1024), "header 9e000x777e002");
}

TEST(zuvfile, a_file_of_another_machine_needs_converters) {
    temp_dir dir;
    for (int machine : {MACHINE_VAX, MACHINE_MIPS, MACHINE_SUN}) {
        write_all(dir.file("f"), gate_image{.machine = machine}.bytes());
        zuvfile_ptr file = reopened(dir.file("f"), true);
        ASSERT_TRUE(file);
        std::vector<std::byte> buffer(1000);
        EXPECT_EQ(zuvfilereadblock(file.get(), buffer, 1), ZUV_NO_CONVERSION);
        EXPECT_EQ(zuvfilewriteblock(file.get(), buffer, 1), ZUV_NO_CONVERSION);
        EXPECT_EQ(zuvfilegethead(file.get(), buffer), ZUV_NO_CONVERSION);
        EXPECT_EQ(zuvfileputhead(file.get(), buffer), ZUV_NO_CONVERSION);
    }
}

// One field of the head at a time takes a value that cannot be true.
TEST(zuvfile, heads_that_cannot_be_true_give_a_status) {
    struct {
        std::size_t at; // of a 4-byte field, or of one byte
        int size;
        std::int64_t value;
        int status;
    } cases[] = {
        {0, 1, 0, ZUV_NO_CONVERSION},
        {0, 1, 6, ZUV_NO_CONVERSION},
        {1, 1, 0, ZUV_BAD_VERSION},
        {1, 1, 2, ZUV_BAD_VERSION},
        {4, 4, -1, ZUV_TOO_SHORT},
        {4, 4, INT32_MAX, ZUV_TOO_SHORT},
        {8, 4, -1, ZUV_TOO_SHORT},
        {8, 4, INT32_MAX, ZUV_TOO_SHORT},
        {12, 4, 0, ZUV_TOO_SHORT},
        {12, 4, -4, ZUV_TOO_SHORT},
        {12, 4, INT32_MAX, ZUV_TOO_SHORT},
        {16, 4, -1, ZUV_BAD_TYPE},
        {16, 4, INT32_MIN, ZUV_BAD_TYPE},
        {16, 4, 4, ZUV_TOO_SHORT},
        {16, 4, INT32_MAX, ZUV_TOO_SHORT},
        {16, 4, 2, ZUV_OK},
        {3, 1, 77, ZUV_OK},
        {4, 4, 1023, ZUV_OK}, // one byte more at the end
    };
    temp_dir dir;
    make_file(dir.file("f"), 3);
    const std::string good = read_all(dir.file("f"));
    for (const auto& c : cases) {
        std::string bad = good;
        auto value = static_cast<std::int32_t>(c.value);
        std::memcpy(&bad[c.at], &value, static_cast<std::size_t>(c.size));
        write_all(dir.file("bad"), bad);
        EXPECT_EQ(static_cast<bool>(reopened(dir.file("bad"))), c.status == ZUV_OK) << c.at << " " << c.value;
        EXPECT_EQ(zuvfileerror(), c.status) << c.at << " " << c.value;
    }
    EXPECT_FALSE(zuvfilecreate(dir.file("bad"), 101, 8, 0));
    EXPECT_EQ(zuvfileerror(), ZUV_BAD_ARGUMENT);
}

TEST(zuvfile, a_reserved_area_beyond_all_reason_is_refused) {
    temp_dir dir;
    gate_image image;
    image.reserved = 1 << 30;
    write_all(dir.file("huge"), image.image().head());
    std::filesystem::resize_file(dir.file("huge"), (1LL << 30) + 100); // a hole, so no space is taken
    EXPECT_FALSE(reopened(dir.file("huge")));
    EXPECT_EQ(zuvfileerror(), ZUV_NO_MEMORY);
}

TEST(zuvfile, what_is_no_regular_file_is_not_opened) {
    temp_dir dir;
    mkfifo(dir.file("pipe").c_str(), 0600); // opening it would wait for ever
    write_all(dir.file("empty"), "");
    struct {
        std::string name;
        int status;
    } cases[] = {{dir.file("pipe"), ZUV_NO_OPEN},
                 {dir.path().string(), ZUV_NO_OPEN},
                 {"/dev/zero", ZUV_NO_OPEN},
                 {dir.file("missing"), ZUV_NO_OPEN},
                 {"", ZUV_NO_OPEN},
                 {dir.file("empty"), ZUV_TOO_SHORT}};
    for (const auto& c : cases) {
        EXPECT_FALSE(reopened(c.name));
        EXPECT_EQ(zuvfileerror(), c.status) << c.name;
        EXPECT_FALSE(reopened(c.name, true));
        EXPECT_EQ(zuvfiletype(c.name), -1);
        int machine = 0;
        EXPECT_EQ(zuvfilemachine(c.name, machine), 0);
        bool made = c.status == ZUV_TOO_SHORT || c.name == dir.file("missing");
        EXPECT_EQ(static_cast<bool>(zuvfilecreate(c.name, 101, 8, 4)), made) << c.name;
    }
}

TEST(zuvfile, an_unusable_area_answers_enquiries_with_nothing) {
    temp_dir dir;
    for (int reserved : {0, 2, 200}) {
        gate_image image;
        image.reserved = reserved;
        std::string bytes = image.bytes();
        if (reserved == 200) bytes[20] = 9; // another version of the area
        write_all(dir.file("f"), bytes);
        zuvfile_ptr file = reopened(dir.file("f"), true);
        ASSERT_TRUE(file) << reserved;
        int n = 9, yes = 9;
        EXPECT_EQ(zuvfile_res_get_n(file.get(), n), 1);
        EXPECT_EQ(zuvfile_res_exist(file.get(), "NREC", yes), 1);
        EXPECT_EQ(n + yes, 0);
        EXPECT_EQ(zuvfile_res_put_int(file.get(), "NREC", 1), -1);
        EXPECT_EQ(zuvfile_res_get_int(file.get(), "NREC", n), -1);
        EXPECT_EQ(zuvfile_res_new(file.get()), reserved == 200 ? 1 : -1);
    }
    kwarg arg;
    std::string name;
    EXPECT_EQ(zuvkwdef(nullptr, KWOP_COUNT, name, arg), ZUV_NULL_FILE);
}

} // namespace
} // namespace norva::test
