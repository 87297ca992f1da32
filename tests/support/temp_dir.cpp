#include "support/temp_dir.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace norva::test {

namespace fs = std::filesystem;

temp_dir::temp_dir() {
    std::string pattern = (fs::temp_directory_path() / "norva-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
}

temp_dir::~temp_dir() {
    std::error_code ignored;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(path_, ignored);
}

current_dir::current_dir(const fs::path& to) : before_(fs::current_path()) {
    fs::current_path(to);
}

current_dir::~current_dir() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
}

std::string read_all(const std::string& name) {
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void write_all(const std::string& name, const std::string& bytes) {
    std::ofstream out(name, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace norva::test
