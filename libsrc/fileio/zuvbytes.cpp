// Unbuffered access to the bytes of a file, and the form of the head on disk.
#include "zuvfile_int.h"

#include "fileio/mcvt.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <vector>

namespace norva {

static_assert(std::endian::native == std::endian::little, "machine 4 is little-endian");

namespace {

thread_local int last_status = ZUV_OK;

constexpr std::size_t most_per_call = 1U << 30; // the system moves less than 2 GB at a time

// Moves all bytes by repeated calls of step(done, n). The number moved before the end of the file, -1 on an
// error.
template <class Step> std::int64_t transfer(std::size_t total, Step step) {
    std::size_t done = 0;
    while (done < total) {
        ssize_t n = step(done, std::min(total - done, most_per_call));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return -1;
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    return static_cast<std::int64_t>(done);
}

} // namespace

int zuv_status(int status) {
    return last_status = status;
}

int zuvfileerror() {
    return last_status;
}

int zuv_open_handle(const std::string& name, int flags) {
    int handle = open(name.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600);
    struct stat status {};
    if (handle >= 0 && (fstat(handle, &status) != 0 || !S_ISREG(status.st_mode))) {
        close(handle);
        handle = -1;
    }
    return handle;
}

std::int64_t zuv_read(int handle, std::span<std::byte> bytes) {
    return transfer(bytes.size(),
                    [&](std::size_t done, std::size_t n) { return read(handle, bytes.data() + done, n); });
}

bool zuv_read_at(int handle, std::int64_t position, std::span<std::byte> bytes) {
    return transfer(bytes.size(), [&](std::size_t done, std::size_t n) {
               return pread(handle, bytes.data() + done, n, position + static_cast<std::int64_t>(done));
           }) == std::ssize(bytes);
}

bool zuv_read_stretches_at(int handle, std::int64_t position, std::size_t width, std::size_t gap,
                           std::span<std::byte> bytes) {
    constexpr std::size_t most = 500; // less than half of what a call takes
    std::vector<std::byte> unwanted(gap);
    std::vector<iovec> places;
    const std::size_t count = bytes.size() / width;
    for (std::size_t k = 0; k < count;) {
        places.clear();
        for (std::size_t i = k; i < std::min(count, k + most); i++) {
            if (i > k) places.push_back({unwanted.data(), gap});
            places.push_back({bytes.data() + i * width, width});
        }
        const std::int64_t at = position + static_cast<std::int64_t>(k * (width + gap));
        const ssize_t n = preadv(handle, places.data(), static_cast<int>(places.size()), at);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return false;
        std::size_t whole = (static_cast<std::size_t>(n) + gap) / (width + gap);
        if (whole == 0 && !zuv_read_at(handle, at, bytes.subspan(k * width, width))) return false;
        k += std::max<std::size_t>(whole, 1);
    }
    return true;
}

bool zuv_write(int handle, std::span<const std::byte> bytes) {
    return transfer(bytes.size(), [&](std::size_t done, std::size_t n) {
               return write(handle, bytes.data() + done, n);
           }) == std::ssize(bytes);
}

bool zuv_write_at(int handle, std::int64_t position, std::span<const std::byte> bytes) {
    return transfer(bytes.size(), [&](std::size_t done, std::size_t n) {
               return pwrite(handle, bytes.data() + done, n, position + static_cast<std::int64_t>(done));
           }) == std::ssize(bytes);
}

bool zuv_flush(int handle) {
    return fdatasync(handle) == 0 || errno == EINVAL || errno == ENOSYS; // a file system without such a call
}

bool zuv_unpack_head(std::span<const std::byte> bytes, _keywords& kw) {
    auto one = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
    std::int32_t longs[4];
    std::memcpy(longs, &bytes[4], sizeof longs);
    if (setmcvt(one(0), MACHINE_THIS) != 1) return false;
    mcvt_i4(longs, 4);
    kw = {one(0), one(1), one(2), one(3), longs[0], longs[1], longs[2], longs[3]};
    return true;
}

bool zuv_pack_head(const _keywords& kw, std::span<std::byte> bytes) {
    const unsigned char chars[4] = {kw.machine, kw.version, kw.filetype, 0};
    std::int32_t longs[4] = {kw.reservesize, kw.headsize, kw.elementsize, kw.nelements};
    if (setmcvt(MACHINE_THIS, kw.machine) != 1) return false;
    mcvt_i4(longs, 4);
    std::memcpy(&bytes[0], chars, sizeof chars);
    std::memcpy(&bytes[4], longs, sizeof longs);
    return true;
}

} // namespace norva
