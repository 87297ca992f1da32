// The container: opening, creating, closing. Reading and writing of elements is in zuvblock.cpp, the keyword
// list in zuvres.cpp.
#include "fileio/zuvfile.h"

#include "fileio/mcvt.h"
#include "zuvfile_int.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace norva {

namespace {

// A keyword list takes a kilobyte. An area beyond this is refused as out of memory rather than believed.
constexpr std::int64_t most_reserved = 16 << 20;

std::int64_t file_length(int handle) {
    struct stat status {};
    return fstat(handle, &status) == 0 ? status.st_size : 0;
}

std::span<std::byte> reserved_bytes(_zuvfile& file) {
    return std::as_writable_bytes(file.rspace.span());
}

// Converts the keyword list of `area`, with the routines that setmcvt installed, if it is one.
void convert_list(std::span<char> area) {
    if (area.size() < 3 || area[0] != 1) return;
    kwl_convert(
        area.subspan(1), [](void* p) { mcvt_i4(p); }, [](void* p) { mcvt_f8(p); });
}

int read_reserved(_zuvfile& file) {
    if (file.kw.reservesize > most_reserved) return ZUV_NO_MEMORY;
    file.rsize = file.kw.reservesize;
    if (file.rsize == 0) return ZUV_OK;
    file.rspace.reset(static_cast<std::size_t>(file.rsize));
    if (zuv_read(file.handle, reserved_bytes(file)) != file.rsize) return ZUV_TOO_SHORT;
    if (file.convert) convert_list(file.rspace.span());
    return ZUV_OK;
}

// Reads through the typed header to prove that it is there.
int prove_header(_zuvfile& file) {
    std::array<std::byte, 4096> scratch;
    for (std::int64_t left = file.kw.headsize; left > 0;) {
        std::int64_t n = std::min<std::int64_t>(left, scratch.size());
        if (zuv_read(file.handle, std::span(scratch).first(static_cast<std::size_t>(n))) != n)
            return ZUV_TOO_SHORT;
        left -= n;
    }
    return ZUV_OK;
}

// Everything of an open but the open itself.
int read_front(_zuvfile& file) {
    std::array<std::byte, zuv_headbytes> head;
    if (zuv_read(file.handle, head) != zuv_headbytes) return ZUV_TOO_SHORT;
    if (!zuv_unpack_head(head, file.kw)) return ZUV_NO_CONVERSION;
    file.machine = file.kw.machine;
    file.convert = file.machine != MACHINE_THIS;
    if (file.kw.version != 1) return ZUV_BAD_VERSION;

    // All sizes are below 2^31, so their sums and products fit 64 bits.
    std::int64_t length = file_length(file.handle);
    const _keywords& kw = file.kw;
    if (kw.reservesize < 0 || kw.headsize < 0 || kw.elementsize < 1) return ZUV_TOO_SHORT;
    file.byte0 = std::int64_t{kw.reservesize} + kw.headsize + zuv_headbytes;
    if (file.byte0 > length) return ZUV_TOO_SHORT;
    if (int status = read_reserved(file); status != ZUV_OK) return status;
    if (int status = prove_header(file); status != ZUV_OK) return status;
    if (kw.nelements < 0) return ZUV_BAD_TYPE;
    if ((length - file.byte0) / kw.elementsize < kw.nelements) return ZUV_TOO_SHORT;

    file.nelements = kw.nelements;
    file.hdsize = kw.headsize;
    file.elemsize = kw.elementsize;
    file.nextelem = file.curpos = 0;
    file.ukwcall = zuvkwdef;
    return lseek(file.handle, file.byte0, SEEK_SET) == file.byte0 ? ZUV_OK : ZUV_SEEK_FAILED;
}

// Head, reserved area and a zeroed header of a new file.
int write_front(_zuvfile& file) {
    std::vector<std::byte> front(static_cast<std::size_t>(file.byte0));
    zuv_pack_head(file.kw, front);
    front[zuv_headbytes] = std::byte{1};
    return zuv_write(file.handle, front) ? ZUV_OK : ZUV_WRITE_FAILED;
}

// Head and reserved area, both in one write, after everything that the head will count.
int write_changes(_zuvfile& file) {
    if (file.nelements > file.kw.nelements && !zuv_flush(file.handle)) return ZUV_WRITE_FAILED;
    file.kw.nelements = static_cast<std::int32_t>(file.nelements);
    std::vector<std::byte> front(zuv_headbytes + file.rspace.size());
    if (!zuv_pack_head(file.kw, front)) return ZUV_NO_CONVERSION; // also installs this machine to the file's
    if (file.convert) convert_list(file.rspace.span());
    std::ranges::copy(reserved_bytes(file), front.begin() + zuv_headbytes);
    return zuv_write_at(file.handle, 0, front) ? ZUV_OK : ZUV_WRITE_FAILED;
}

int shut(_zuvfile& file) {
    if (file.handle < 0) return ZUV_OK;
    int status = ZUV_OK;
    if ((file.dirty || file.rchng) && !file.rdonly) status = write_changes(file);
    if (close(file.handle) != 0 && status == ZUV_OK) status = ZUV_WRITE_FAILED;
    file.handle = -1;
    return status;
}

// The end of an open: a failed one leaves no open file.
int opened(_zuvfile& file, int status) {
    if (status != ZUV_OK && file.handle >= 0) {
        close(file.handle);
        file.handle = -1;
    }
    return zuv_status(status);
}

zuvfile_ptr open_plain(const std::string& name, bool update, int& filetype, int& headsize, int& elementsize) {
    zuvfile_ptr file(new _zuvfile);
    if (zuvfileopen_record(*file, name, update) != ZUV_OK) return {};
    filetype = file->kw.filetype;
    headsize = file->kw.headsize;
    elementsize = file->kw.elementsize;
    return file;
}

// The head of a file; false when it cannot be opened or is too short.
bool peek(const std::string& name, std::span<std::byte> head) {
    int handle = zuv_open_handle(name, O_RDONLY);
    if (handle < 0) return false;
    bool whole = zuv_read(handle, head) == std::ssize(head);
    close(handle);
    return whole;
}

} // namespace

int zuvfileopen_record(_zuvfile& file, const std::string& name, bool update) {
    file.fname = name.substr(0, 254);
    file.rdonly = !update;
    file.handle = zuv_open_handle(name, update ? O_RDWR : O_RDONLY);
    return opened(file, file.handle < 0 ? ZUV_NO_OPEN : read_front(file));
}

int zuvfilecreate_record(_zuvfile& file, const std::string& name, int filetype, int headsize,
                         int elementsize) {
    if (filetype < 0 || filetype > 255 || headsize < 0 || elementsize < 1)
        return zuv_status(ZUV_BAD_ARGUMENT);
    file.fname = name.substr(0, 254);
    // Truncated only after it has proved to be a regular file.
    file.handle = zuv_open_handle(name, O_RDWR | O_CREAT);
    if (file.handle < 0 || ftruncate(file.handle, 0) != 0) return opened(file, ZUV_NO_OPEN);

    file.kw = {MACHINE_THIS, 1, static_cast<unsigned char>(filetype), 0, ressize, headsize, elementsize, 0};
    file.byte0 = std::int64_t{zuv_headbytes} + ressize + headsize;
    file.machine = MACHINE_THIS;
    file.dirty = 1;
    file.nextelem = file.curpos = 0;
    file.hdsize = headsize;
    file.elemsize = elementsize;
    file.ukwcall = zuvkwdef;
    file.rsize = ressize;
    file.rspace.reset(ressize);
    file.rspace[0] = 1;
    return opened(file, write_front(file));
}

zuvfile_ptr zuvfileopen(const std::string& name, int& filetype, int& headsize, int& elementsize) {
    return open_plain(name, false, filetype, headsize, elementsize);
}

zuvfile_ptr zuvfileupdate(const std::string& name, int& filetype, int& headsize, int& elementsize) {
    return open_plain(name, true, filetype, headsize, elementsize);
}

zuvfile_ptr zuvfilecreate(const std::string& name, int filetype, int headsize, int elementsize) {
    zuvfile_ptr file(new _zuvfile);
    if (zuvfilecreate_record(*file, name, filetype, headsize, elementsize) != ZUV_OK) return {};
    return file;
}

int zuvfilemode(_zuvfile* file, int& rdonly) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    rdonly = file->rdonly;
    return zuv_status(ZUV_OK);
}

int zuvfileconvert(_zuvfile* file, zuvconverter hdcvt, zuvconverter elemcvt, int hdsize, int elemsize) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    if (hdsize < file->kw.headsize || elemsize < file->kw.elementsize) return zuv_status(ZUV_BAD_ARGUMENT);
    if (hdsize != file->kw.headsize || elemsize != file->kw.elementsize) file->convert = 1;
    file->hdcvt = hdcvt;
    file->elemcvt = elemcvt;
    file->hdsize = hdsize;
    file->elemsize = elemsize;
    return zuv_status(ZUV_OK);
}

void zuvfile_closer::operator()(_zuvfile* file) const {
    shut(*file);
    delete file;
}

int zuvfileclose(zuvfile_ptr file) {
    if (!file) return zuv_status(ZUV_NULL_FILE);
    return zuv_status(shut(*file));
}

int zuvfiletype(const std::string& name) {
    std::array<std::byte, zuv_headbytes> head;
    return peek(name, head) ? static_cast<int>(head[2]) : -1;
}

int zuvfilemachine(const std::string& name, int& machine) {
    std::array<std::byte, zuv_headbytes> head;
    if (!peek(name, head)) return 0;
    machine = static_cast<int>(head[0]);
    return 1;
}

} // namespace norva
