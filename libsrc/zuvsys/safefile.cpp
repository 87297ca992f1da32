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

struct cause {
    int error = 0;
    const char* text = nullptr; // instead of the system's
    explicit operator bool() const { return error != 0 || text; }
};

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

cause write_all(int fd, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        ssize_t n = safefile_system.write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return {errno};
        if (n == 0) return {ENOSPC};
        bytes = bytes.subspan(static_cast<std::size_t>(n));
    }
    // EINVAL and ENOSYS: a file system that has no such call.
    bool flushed = safefile_system.fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS;
    return flushed ? cause{} : cause{errno};
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

cause replace(const std::string& target, std::span<const std::byte> bytes) {
    struct stat old {};
    bool exists = stat(target.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) return {0, "it is no regular file"};
    if (exists && access(target.c_str(), W_OK) != 0) return {errno};

    std::string temporary;
    int fd = make_temporary(target, temporary);
    if (fd < 0) return {errno};
    cause failure = write_all(fd, bytes);
    // The owner stays where the system lets us set it. This may clear permission bits, so it comes first.
    [[maybe_unused]] int owner_kept = exists ? fchown(fd, old.st_uid, old.st_gid) : 0;
    if (!failure && exists && fchmod(fd, old.st_mode & 07777) != 0) failure = {errno};
    if (safefile_system.close(fd) != 0 && !failure) failure = {errno};
    if (!failure && safefile_system.rename(temporary.c_str(), target.c_str()) != 0) failure = {errno};
    if (failure)
        unlink(temporary.c_str());
    else
        flush_folder(target);
    return failure;
}

} // namespace

bool write_file_safely(const std::string& name, std::span<const std::byte> bytes, std::string* why) {
    cause failure = replace(followed(name), bytes);
    if (failure && why)
        *why =
            "Unable to write " + name + ": " + (failure.text ? failure.text : std::strerror(failure.error));
    return !failure;
}

bool write_text_safely(const std::string& name, std::string_view text, std::string* why) {
    return write_file_safely(name, std::as_bytes(std::span(text.data(), text.size())), why);
}

} // namespace norva
