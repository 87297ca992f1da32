// Writing a file through a temporary that is renamed over it.
#include "zuvsys/safefile.h"

#include "zuvsys/dirutil.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace norva {

safefile_calls safefile_system = {::write, ::fsync, ::close, std::rename};

namespace {

// What the name leads to: a link is followed, so that the file behind it is replaced and not the link.
std::string followed(const std::string& name) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(name, error);
    return error ? name : real.string();
}

// An open temporary in the folder of `target`; -1 and errno on failure.
int make_temporary(const std::string& target, std::string& temporary) {
    std::size_t slash = target.find_last_of('/');
    std::string folder = slash == std::string::npos ? "" : target.substr(0, slash + 1);
    for (int i = 0; i < 1000; i++) {
        temporary = folder + ".norva-" + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp";
        int fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

// A rename lasts once the folder is on the disk, too. Not every file system can do this; the data are safe
// without.
void flush_folder(const std::string& target) {
    std::size_t slash = target.find_last_of('/');
    std::string folder = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    int fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    safefile_system.fsync(fd);
    ::close(fd);
}

} // namespace

safe_file::safe_file(const std::string& name) : name_(name), target_(followed(name)) {
    replaces_ = stat(target_.c_str(), &old_) == 0;
    if (target_.empty())
        fail(ENOENT);
    else if (replaces_ && !S_ISREG(old_.st_mode))
        why_ = "Unable to write " + name_ + ": it is no regular file";
    else if (replaces_ && access(target_.c_str(), W_OK) != 0)
        fail(errno);
    else if (fd_ = make_temporary(target_, temporary_); fd_ < 0)
        fail(errno);
}

safe_file::~safe_file() {
    if (fd_ < 0) return;
    safefile_system.close(fd_);
    unlink(temporary_.c_str());
}

// The first failure is the one told.
void safe_file::fail(int error) {
    if (good()) why_ = "Unable to write " + name_ + ": " + std::strerror(error);
}

void safe_file::write(std::span<const std::byte> bytes) {
    while (good() && !bytes.empty()) {
        const ssize_t n = safefile_system.write(fd_, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0)
            fail(n < 0 ? errno : ENOSPC);
        else
            bytes = bytes.subspan(static_cast<std::size_t>(n));
    }
}

bool safe_file::commit() {
    if (!good()) return false;
    // EINVAL and ENOSYS: a file system that has no such call.
    if (safefile_system.fsync(fd_) != 0 && errno != EINVAL && errno != ENOSYS) fail(errno);
    // The owner stays where the system lets us set it. This may clear permission bits, so it comes first.
    [[maybe_unused]] const int owner_kept = replaces_ ? fchown(fd_, old_.st_uid, old_.st_gid) : 0;
    if (good() && replaces_ && fchmod(fd_, old_.st_mode & 07777) != 0) fail(errno);
    if (safefile_system.close(fd_) != 0) fail(errno);
    fd_ = -1;
    if (good() && safefile_system.rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
    if (good())
        flush_folder(target_);
    else
        unlink(temporary_.c_str());
    return good();
}

bool write_file_safely(const std::string& name, std::span<const std::byte> bytes, std::string* why) {
    safe_file file(name);
    file.write(bytes);
    const bool written = file.commit();
    if (!written && why) *why = file.why();
    return written;
}

bool write_text_safely(const std::string& name, std::string_view text, std::string* why) {
    return write_file_safely(name, std::as_bytes(std::span(text.data(), text.size())), why);
}

} // namespace norva
