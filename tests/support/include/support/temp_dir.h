#pragma once
// A folder of its own for one test, removed with all it holds at the end.

#include <filesystem>
#include <string>

namespace norva::test {

class temp_dir {
public:
    temp_dir();
    ~temp_dir();
    temp_dir(const temp_dir&) = delete;
    temp_dir& operator=(const temp_dir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

// Makes a folder the current one for the length of a scope.
class current_dir {
public:
    explicit current_dir(const std::filesystem::path& to);
    ~current_dir();
    current_dir(const current_dir&) = delete;
    current_dir& operator=(const current_dir&) = delete;

private:
    std::filesystem::path before_;
};

// The bytes of a file; empty when it cannot be read.
std::string read_all(const std::string& name);
void write_all(const std::string& name, const std::string& bytes);

} // namespace norva::test
