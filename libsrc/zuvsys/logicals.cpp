// Lookups in the environment.
#include "zuvsys/logicals.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace norva {

const char* get_logical(const char* lognam, const char* tabnam) {
    static std::string value;
    if (!lognam) return nullptr;
    std::string name = tabnam ? std::string(tabnam) + "_" + lognam : lognam;
    const char* found = std::getenv(name.c_str());
    if (!found) return nullptr;
    value = found;
    return value.c_str();
}

void transl(const char* logn, char* equn, int loglen, int equlen) {
    if (!equn || equlen < 1) return;
    std::string name =
        logn && loglen > 0 ? std::string(logn, static_cast<std::size_t>(loglen)) : std::string();
    const char* found = get_logical(name.c_str());
    std::string value = found ? found : "";
    value.resize(static_cast<std::size_t>(equlen - 1), ' ');
    std::copy(value.begin(), value.end(), equn);
    equn[equlen - 1] = '\0';
}

} // namespace norva
