// Damaged files: cut at every byte, bits turned over. Whatever the bytes, there is a status and no harm.
#include "machine_bytes.h"
#include "memory_file.h"
#include "walk_container.h"

#include <gtest/gtest.h>

#include <random>

namespace norva::test {
namespace {

TEST(damage, a_file_cut_anywhere_is_refused) {
    memory_file file;
    for (int machine : {MACHINE_THIS, MACHINE_SUN, MACHINE_ALPHA_VMS}) {
        const std::string whole = gate_image{.machine = machine, .incrng = 1}.bytes();
        for (std::size_t n = 0; n < whole.size(); n++) {
            file.hold(whole.substr(0, n));
            ASSERT_FALSE(opengat(file.name(), "Old", 3)) << n;
            ASSERT_EQ(getgaterror(), ZUV_TOO_SHORT) << n;
            ASSERT_FALSE(opengat(file.name(), "Update", 3)) << n;
            ASSERT_EQ(file.size(), n); // and is left as it is
        }
        file.hold(whole + "behind");
        EXPECT_TRUE(opengat(file.name(), "Old", 3));
    }
}

TEST(damage, turned_bits_do_no_harm) {
    memory_file file;
    std::mt19937 random(11);
    for (int machine : all_machines) {
        const std::string whole =
            gate_image{.machine = machine, .incrng = 1, .rows = 5, .reserved = 100}.bytes();
        for (int i = 0; i < 1000; i++) {
            std::string bytes = whole;
            for (unsigned flips = 1 + random() % 3; flips > 0; flips--)
                bytes[random() % bytes.size()] ^= static_cast<char>(1 << random() % 8);
            file.hold(bytes);
            walk_container(file.name());
            ASSERT_LT(file.size(), 100'000U);
        }
    }
}

} // namespace
} // namespace norva::test
