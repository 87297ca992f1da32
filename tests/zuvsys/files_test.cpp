// Environment, directories, safe writing.
#include "support/temp_dir.h"
#include "zuvsys/dirutil.h"
#include "zuvsys/logicals.h"
#include "zuvsys/rddir.h"
#include "zuvsys/safefile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace norva {
namespace {

namespace fs = std::filesystem;
using test::read_all;
using test::write_all;

TEST(logicals, lookups) {
    setenv("NORVA_T_LOG", "value", 1);
    EXPECT_STREQ(get_logical("NORVA_T_LOG"), "value");
    EXPECT_STREQ(get_logical("LOG", "NORVA_T"), "value");
    EXPECT_EQ(get_logical("norva_t_log"), nullptr);
    EXPECT_EQ(get_logical(nullptr, "NORVA_T"), nullptr);
    std::string longer(3000, 'p');
    setenv("NORVA_T_LOG", longer.c_str(), 1);
    EXPECT_EQ(get_logical("NORVA_T_LOG"), longer); // a long path is not cut
    unsetenv("NORVA_T_LOG");
}

TEST(logicals, fixed_length_fields) {
    setenv("NORVA_T_LOG", "value", 1);
    struct {
        const char* name;
        int loglen, equlen;
        std::string out;
    } cases[] = {
        {"NORVA_T_LOGxyz", 11, 8, std::string("value  \0", 8)},
        {"NORVA_T_LOG ", 12, 8, std::string("       \0", 8)}, // the trailing blank belongs to the name
        {"NORVA_T_LOG", 11, 4, std::string("val\0", 4)},
        {"NORVA_T_LOG", 11, 1, std::string("\0", 1)},
    };
    for (const auto& c : cases) {
        std::string field(static_cast<std::size_t>(c.equlen), '#');
        transl(c.name, field.data(), c.loglen, c.equlen);
        EXPECT_EQ(field, c.out);
    }
    unsetenv("NORVA_T_LOG");
}

TEST(dirutil, home_directory) {
    auto home_is = [](const char* value, const char* expected) {
        EXPECT_EXIT(
            {
                if (value)
                    setenv("HOME", value, 1);
                else
                    unsetenv("HOME");
                std::string home = zuvsys_homedir();
                setenv("HOME", "/another", 1); // looked up once
                std::_Exit(home == expected && home == zuvsys_homedir() ? 0 : 7);
            },
            testing::ExitedWithCode(0), "")
            << expected;
    };
    std::string most = "/" + std::string(58, 'h');
    home_is("/home/ana", "/home/ana/");
    home_is("/home/ana/", "/home/ana/");
    home_is(nullptr, "");
    home_is(most.c_str(), (most + "/").c_str());
    setenv("HOME", (most + "h").c_str(), 1);
    EXPECT_EXIT(zuvsys_homedir(), testing::ExitedWithCode(1),
                "Problem in homedir\\(\\), in zuvsys library\\.\\.\\.");
}

TEST(dirutil, kinds_of_paths) {
    test::temp_dir dir;
    write_all(dir.file("plain"), "x");
    mkfifo(dir.file("pipe").c_str(), 0600);
    EXPECT_EQ(zuvsys_mkdir(dir.file("made").c_str()), 0);
    const struct {
        const char* name;
        int file, directory;
    } paths[] = {{"plain", 1, 0}, {"pipe", 0, 0}, {"missing", 0, 0}, {"made", 0, 1}};
    for (const auto& p : paths) {
        EXPECT_EQ(zuvsys_is_file(dir.file(p.name).c_str()), p.file) << p.name;
        EXPECT_EQ(zuvsys_is_directory(dir.file(p.name).c_str()), p.directory) << p.name;
    }
    EXPECT_EQ(zuvsys_mkdir(dir.file("made").c_str()), -1);
    EXPECT_EQ(zuvsys_mkdir(dir.file("a/b").c_str()), -1);
}

std::vector<std::string> walked(const std::string& mask, std::size_t most = 100) {
    std::vector<std::string> names;
    rddir_init(mask.c_str());
    while (names.size() < most)
        if (const char* name = rddir(mask.c_str()))
            names.emplace_back(name);
        else
            break;
    return names;
}

TEST(rddir, walks_the_files_of_a_mask) {
    test::temp_dir dir;
    for (const char* name :
         {"plot_p_2.trv", "PLOT_P_1.TRV", "PLOT_P_10.trv", "PLOT_P_.trv", "x.trvx", "noext", ".trv"})
        write_all(dir.file(name), "");
    fs::create_directory(dir.file("plot_p_dir.trv"));
    auto in = [&](std::vector<std::string> names) {
        for (std::string& n : names) n = dir.file(n);
        return names;
    };
    EXPECT_EQ(walked(dir.file("PLOT_P_*.trv")),
              in({"PLOT_P_.trv", "PLOT_P_1.TRV", "PLOT_P_10.trv", "plot_p_2.trv"}));
    EXPECT_EQ(walked(dir.file("plot_p_?.trv")), in({"PLOT_P_1.TRV", "plot_p_2.trv"}));
    EXPECT_EQ(walked(dir.file("noext*")), in({"noext"}));
    EXPECT_EQ(walked(dir.file("*.*")).size(), 6U);
    EXPECT_EQ(walked(dir.path().string() + "\\noext"), in({"noext"}));
    EXPECT_EQ(walked(std::string(" ").append(dir.file("noext")).append(" ")), in({"noext"}));
    EXPECT_TRUE(walked(dir.file("nothing*")).empty());
    EXPECT_TRUE(walked(dir.file("missing/*")).empty());

    test::current_dir here(dir.path());
    EXPECT_EQ(walked("no*"), std::vector<std::string>{fs::current_path().string() + "/noext"});

    walked(dir.file("*"), 2); // a walk begun and left, then ended
    char handle = 0;
    rddir_free(&handle);
    EXPECT_EQ(rddir("*"), nullptr);
}

// Replaces one of the calls that safe writing makes, for the length of a scope.
struct broken_system {
    safefile_calls kept = safefile_system;
    ~broken_system() { safefile_system = kept; }
};

ssize_t no_room(int, const void*, std::size_t) {
    return errno = ENOSPC, -1;
}
ssize_t half_the_room(int fd, const void* bytes, std::size_t n) {
    return n > 2 ? write(fd, bytes, n / 2) : no_room(fd, bytes, n);
}
int failing_close(int fd) {
    close(fd);
    return errno = EIO, -1;
}

std::size_t files_in(const test::temp_dir& dir) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()));
}

TEST(safefile, writes_and_keeps_permissions) {
    test::temp_dir dir;
    std::string name = dir.file("journal.jou"), why;
    ASSERT_TRUE(write_text_safely(name, "first", &why)) << why;
    ASSERT_EQ(chmod(name.c_str(), 0640), 0);
    std::string large(3'000'000, 'j');
    ASSERT_TRUE(write_text_safely(name, large));
    EXPECT_EQ(read_all(name), large);
    EXPECT_EQ(fs::status(name).permissions(), static_cast<fs::perms>(0640));
    ASSERT_TRUE(write_text_safely(name, ""));
    EXPECT_EQ(read_all(name), "");
    EXPECT_EQ(files_in(dir), 1U);

    fs::create_symlink(name, dir.file("link.jou"));
    ASSERT_TRUE(write_text_safely(dir.file("link.jou"), "through"));
    EXPECT_TRUE(fs::is_symlink(dir.file("link.jou")));
    EXPECT_EQ(read_all(name), "through");

    test::current_dir here(dir.path());
    ASSERT_TRUE(write_text_safely("bare", "name"));
    EXPECT_EQ(read_all("bare"), "name");
}

TEST(safefile, a_failure_leaves_the_old_file_and_no_other) {
    test::temp_dir dir;
    std::string name = dir.file("journal.jou");
    ASSERT_TRUE(write_text_safely(name, "kept"));
    std::vector<std::pair<const char*, void (*)()>> faults = {
        {"disk full at once", [] { safefile_system.write = no_room; }},
        {"disk full half way", [] { safefile_system.write = half_the_room; }},
        {"flush fails", [] { safefile_system.fsync = [](int) { return errno = EIO, -1; }; }},
        {"close fails", [] { safefile_system.close = failing_close; }},
        {"rename fails",
         [] { safefile_system.rename = [](const char*, const char*) { return errno = EXDEV, -1; }; }},
    };
    for (auto& [fault, break_it] : faults) {
        broken_system restored;
        break_it();
        std::string why;
        EXPECT_FALSE(write_text_safely(name, "replaced", &why)) << fault;
        EXPECT_NE(why.find(name), std::string::npos) << fault;
        EXPECT_FALSE(write_text_safely(dir.file("fresh"), "new")) << fault;
        EXPECT_EQ(read_all(name), "kept") << fault;
        EXPECT_EQ(files_in(dir), 1U) << fault;
    }
    broken_system interrupted; // and a write that takes one byte at a time, after being interrupted, is none
    safefile_system.write = [](int fd, const void* bytes, std::size_t) -> ssize_t {
        static int calls = 0;
        errno = EINTR;
        return calls++ % 2 ? write(fd, bytes, 1) : -1;
    };
    EXPECT_TRUE(write_text_safely(name, "bytes"));
    EXPECT_EQ(read_all(name), "bytes");
}

TEST(safefile, refuses_what_is_no_writable_file) {
    test::temp_dir dir;
    std::string why;
    EXPECT_FALSE(write_text_safely(dir.path().string(), "x", &why));
    EXPECT_FALSE(write_text_safely(dir.file("missing/file"), "x", &why));
    EXPECT_NE(why.find("No such file"), std::string::npos);
    EXPECT_FALSE(write_text_safely("", "x", &why));
    mkfifo(dir.file("pipe").c_str(), 0600);
    EXPECT_FALSE(write_text_safely(dir.file("pipe"), "x"));
    EXPECT_EQ(files_in(dir), 1U);
}

} // namespace
} // namespace norva
