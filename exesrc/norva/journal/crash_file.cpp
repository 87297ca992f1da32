// The crash file.
#include "journal/crash_file.h"

#include "bytes.h"
#include "journal/record.h"
#include "jrnl_int.h"
#include "state/calls.h"
#include "state/user.h"
#include "zuvsys/safefile.h"

#include <fstream>
#include <iterator>

namespace norva {

const char* const CRASH_FILE = "norva.mc.sav";
bool crash_file_kept = true;

std::string encode_crash_file(int count, const mcfile& mc) {
    std::string bytes;
    for (const int value : {count, mc.ptr, mc.nrecs}) put_int(bytes, value);
    for (const auto* run : {&mc.flag, &mc.nf0, &mc.nf, &mc.nt0, &mc.nt})
        for (int i = 0; i < mc.nrecs; i++) put_int(bytes, (*run)[i]);
    for (int i = 0; i < mc.nrecs; i++)
        for (const double value : mc.t[i]) put_double(bytes, value);
    return bytes;
}

bool decode_crash_file(const std::string& bytes, int& count, mcfile& mc) {
    byte_reader file{bytes};
    mcfile read;
    const int position = file.take_int();
    read.ptr = file.take_int();
    read.nrecs = file.take_int();
    if (position < 0 || position > JOURNAL_MAX_INDEX) return false;
    if (read.nrecs < 0 || read.nrecs > MC_MAX_REC) return false;
    for (auto* run : {&read.flag, &read.nf0, &read.nf, &read.nt0, &read.nt})
        for (int i = 0; i < read.nrecs; i++) (*run)[i] = file.take_int();
    for (int i = 0; i < read.nrecs; i++) {
        // Nothing is allocated before the file is known to hold it.
        if (!file.ok || read.nt[i] < 1) return false;
        const std::size_t left = file.rest.size() / 8,
                          n = read.flag[i] == MC_DECIMATE ? 2 : read.nt[i] + std::size_t{1};
        if (n > left) return false;
        read.t[i].reset(n);
        for (double& value : read.t[i]) value = file.take_double();
    }
    if (!file.ok || !mc_is_sound(read)) return false;
    count = position;
    mc = std::move(read);
    return true;
}

bool write_crash_file(const std::string& bytes) {
    return write_text_safely(CRASH_FILE, bytes);
}

static bool fail(const char* what) {
    popmsg(std::string("ERROR(9) in rw_mc()/jrnl -- can't ") + what + " file " + CRASH_FILE);
    return false;
}

bool rw_mc(const char* str) {
    if (*str == 'w') return write_crash_file(encode_crash_file(user.count, user.mc)) || fail("open");
    std::ifstream file(CRASH_FILE, std::ios::binary);
    if (!file) return fail("open");
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return decode_crash_file(bytes, user.count, user.mc) || fail("read");
}

} // namespace norva
