// The container: seeking, and reading and writing of elements and of the typed header.
#include "fileio/mcvt.h"
#include "zuvfile_int.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <unistd.h>
#include <vector>

namespace norva {

namespace {

bool seek_to(_zuvfile& file, std::int64_t position) {
    return lseek(file.handle, position, SEEK_SET) == position;
}

// An operation that has failed: where the system's position stands is not known any more.
int lost(_zuvfile& file, int status) {
    file.curpos = -1;
    return zuv_status(status);
}

// A part of the bytes by signed numbers that have been checked.
template <class T> std::span<T> part(std::span<T> bytes, std::int64_t first, std::int64_t n) {
    return bytes.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(n));
}

// Moves `count` elements apart from disk size to memory size, the last one first, and zeroes what lies
// between.
void spread(std::span<std::byte> buffer, std::int64_t count, std::int64_t disk, std::int64_t memory) {
    for (std::int64_t i = count - 1; i >= 0 && disk != memory; i--) {
        std::span<std::byte> to = part(buffer, i * memory, memory);
        std::memmove(to.data(), &buffer[static_cast<std::size_t>(i * disk)], static_cast<std::size_t>(disk));
        std::ranges::fill(to.subspan(static_cast<std::size_t>(disk)), std::byte{0});
    }
}

} // namespace

int zuvfileseek(_zuvfile* file, std::int64_t n) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    if (n < 0 || n > file->nelements) return zuv_status(ZUV_SEEK_FAILED);
    if (n != file->curpos) {
        if (!seek_to(*file, file->byte0 + n * file->kw.elementsize)) return lost(*file, ZUV_SEEK_FAILED);
        file->lastoper = 0;
    }
    file->nextelem = file->curpos = n;
    return zuv_status(ZUV_OK);
}

int zuvfilereadblock(_zuvfile* file, std::span<std::byte> buffer, std::int64_t count) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    if (count < 0) return zuv_status(ZUV_BAD_ARGUMENT);
    if (count == 0) return zuv_status(ZUV_OK);
    if (count > file->nelements - file->nextelem) return zuv_status(ZUV_EOF);
    if (std::ssize(buffer) < count * file->elemsize) return zuv_status(ZUV_BAD_ARGUMENT);
    if (file->convert && !file->elemcvt) return zuv_status(ZUV_NO_CONVERSION);
    if (int status = zuvfileseek(file, file->nextelem); status != ZUV_OK) return status;

    std::int64_t disk = file->kw.elementsize;
    std::int64_t got = zuv_read(file->handle, part(buffer, 0, count * disk));
    file->lastoper = 2;
    if (got != count * disk) return lost(*file, got == 0 ? ZUV_EOF : ZUV_SHORT_READ);
    file->nextelem += count;
    file->curpos = file->nextelem;
    if (!file->convert) return zuv_status(ZUV_OK);

    if (setmcvt(file->machine, MACHINE_THIS) != 1) return zuv_status(ZUV_NO_CONVERSION);
    spread(buffer, count, disk, file->elemsize);
    for (std::int64_t i = 0; i < count; i++)
        file->elemcvt(file, part(buffer, i * file->elemsize, file->elemsize), 1);
    return zuv_status(ZUV_OK);
}

int zuvfilewriteblock(_zuvfile* file, std::span<const std::byte> buffer, std::int64_t count) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    if (file->rdonly) return zuv_status(ZUV_READ_ONLY);
    if (count < 0) return zuv_status(ZUV_BAD_ARGUMENT);
    if (count == 0) return zuv_status(ZUV_OK);
    constexpr std::int64_t most_elements = std::numeric_limits<std::int32_t>::max();
    if (count > most_elements - file->nextelem) return zuv_status(ZUV_BAD_ARGUMENT);
    if (std::ssize(buffer) < count * file->elemsize) return zuv_status(ZUV_BAD_ARGUMENT);
    if (file->convert && (!file->elemcvt || setmcvt(MACHINE_THIS, file->machine) != 1))
        return zuv_status(ZUV_NO_CONVERSION);
    if (int status = zuvfileseek(file, file->nextelem); status != ZUV_OK) return status;

    file->dirty = 1;
    file->lastoper = 1;
    std::int64_t disk = file->kw.elementsize;
    bool written = true;
    if (!file->convert) {
        written = zuv_write(file->handle, part(buffer, 0, count * disk));
    } else {
        std::vector<std::byte> element(static_cast<std::size_t>(file->elemsize));
        for (std::int64_t i = 0; i < count && written; i++) {
            std::ranges::copy(part(buffer, i * file->elemsize, file->elemsize), element.begin());
            file->elemcvt(file, element, 0);
            written = zuv_write(file->handle, std::span(element).first(static_cast<std::size_t>(disk)));
        }
    }
    if (!written) return lost(*file, ZUV_WRITE_FAILED);
    file->nextelem += count;
    file->curpos = file->nextelem;
    file->nelements = std::max(file->nelements, file->nextelem);
    return zuv_status(ZUV_OK);
}

int zuvfilereadelement(_zuvfile* file, std::span<std::byte> buffer, std::int64_t n) {
    int status = zuvfileseek(file, n);
    return status == ZUV_OK ? zuvfilereadblock(file, buffer, 1) : status;
}

int zuvfilewriteelement(_zuvfile* file, std::span<const std::byte> buffer, std::int64_t n) {
    int status = zuvfileseek(file, n);
    return status == ZUV_OK ? zuvfilewriteblock(file, buffer, 1) : status;
}

int zuvfilereadraw(_zuvfile* file, std::int64_t n, std::int64_t first, std::span<std::byte> bytes) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    std::int64_t total = file->nelements * file->kw.elementsize;
    if (n < 0 || first < 0 || n > file->nelements || first > total) return zuv_status(ZUV_BAD_ARGUMENT);
    std::int64_t start = n * file->kw.elementsize + first;
    if (std::ssize(bytes) > total - start) return zuv_status(ZUV_EOF);
    return zuv_status(zuv_read_at(file->handle, file->byte0 + start, bytes) ? ZUV_OK : ZUV_SHORT_READ);
}

int zuvfilereadparts(_zuvfile* file, std::int64_t n, std::int64_t first, std::int64_t width,
                     std::span<std::byte> bytes) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    const std::int64_t size = file->kw.elementsize;
    if (n < 0 || first < 0 || width < 1 || width > size || first > size - width ||
        std::ssize(bytes) % width != 0 || n > file->nelements)
        return zuv_status(ZUV_BAD_ARGUMENT);
    if (std::ssize(bytes) / width > file->nelements - n) return zuv_status(ZUV_EOF);
    return zuv_status(zuv_read_stretches_at(file->handle, file->byte0 + n * size + first,
                                            static_cast<std::size_t>(width),
                                            static_cast<std::size_t>(size - width), bytes)
                          ? ZUV_OK
                          : ZUV_SHORT_READ);
}

int zuvfilegethead(_zuvfile* file, std::span<std::byte> header) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    if (std::ssize(header) < file->hdsize) return zuv_status(ZUV_BAD_ARGUMENT);
    if (file->convert && !file->hdcvt) return zuv_status(ZUV_NO_CONVERSION);
    file->curpos = -1;
    file->lastoper = 0;
    if (!seek_to(*file, std::int64_t{zuv_headbytes} + file->kw.reservesize))
        return zuv_status(ZUV_SEEK_FAILED);
    file->lastoper = 2;
    std::int64_t disk = file->kw.headsize;
    if (zuv_read(file->handle, part(header, 0, disk)) != disk) return zuv_status(ZUV_SHORT_READ);
    if (!file->convert) return zuv_status(ZUV_OK);

    if (setmcvt(file->machine, MACHINE_THIS) != 1) return zuv_status(ZUV_NO_CONVERSION);
    std::ranges::fill(part(header, disk, file->hdsize - disk), std::byte{0});
    file->hdcvt(file, part(header, 0, file->hdsize), 1);
    return zuv_status(ZUV_OK);
}

int zuvfileputhead(_zuvfile* file, std::span<const std::byte> header) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    if (file->rdonly) return zuv_status(ZUV_READ_ONLY);
    if (std::ssize(header) < file->hdsize) return zuv_status(ZUV_BAD_ARGUMENT);
    if (file->convert && (!file->hdcvt || setmcvt(MACHINE_THIS, file->machine) != 1))
        return zuv_status(ZUV_NO_CONVERSION);
    std::vector<std::byte> scratch(header.begin(), header.begin() + file->hdsize);
    if (file->convert) file->hdcvt(file, scratch, 0);
    file->curpos = -1;
    file->lastoper = 0;
    if (!seek_to(*file, std::int64_t{zuv_headbytes} + file->kw.reservesize))
        return zuv_status(ZUV_SEEK_FAILED);
    file->lastoper = 1;
    file->dirty = 1;
    bool written =
        zuv_write(file->handle, std::span(scratch).first(static_cast<std::size_t>(file->kw.headsize)));
    return zuv_status(written ? ZUV_OK : ZUV_WRITE_FAILED);
}

int zuvfilemaxelement(_zuvfile* file, std::int64_t& value) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    value = file->nelements - 1;
    return zuv_status(ZUV_OK);
}

int zuvfilenextelement(_zuvfile* file, std::int64_t& value) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    value = file->nextelem;
    return zuv_status(ZUV_OK);
}

} // namespace norva
