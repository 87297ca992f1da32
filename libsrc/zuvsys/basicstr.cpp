// The older set of string routines.
#include "zuvsys/basicstr.h"

#include <cctype>
#include <cstring>

namespace norva {

namespace {

constexpr const char* blanks = " \t\n";

int upper(char c) {
    return toupperx(static_cast<unsigned char>(c));
}

} // namespace

int toupperx(int c) {
    return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c;
}

int tolowerx(int c) {
    return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
}

char* struprx(char* s) {
    for (char* p = s; *p; p++) *p = static_cast<char>(upper(*p));
    return s;
}

char* strlwrx(char* s) {
    for (char* p = s; *p; p++) *p = static_cast<char>(std::tolower(static_cast<unsigned char>(*p)));
    return s;
}

void extendstr(char* s, int n) {
    auto len = static_cast<int>(std::strlen(s));
    if (len >= n) return;
    std::memset(s + len, ' ', static_cast<std::size_t>(n - len));
    s[n] = '\0';
}

void ridstartws(char* s) {
    const char* first = s + std::strspn(s, blanks);
    xmove(s, first, std::strlen(first) + 1);
}

void ridendws(char* s) {
    std::size_t n = std::strlen(s);
    while (n > 0 && std::strchr(blanks, s[n - 1])) n--;
    s[n] = '\0';
}

int strcmpx(const char* s, const char* t) {
    while (*s && upper(*s) == upper(*t)) {
        s++;
        t++;
    }
    return upper(*s) - upper(*t);
}

int strncmpx(const char* s, const char* t, int n) {
    for (; n > 0; n--, s++, t++) {
        int difference = upper(*s) - upper(*t);
        if (difference != 0 || !*s) return difference;
    }
    return 0;
}

int strindx(const char* s1, const char* s2) {
    if (!*s1 && !*s2) return 0;
    if (!*s1 || !*s2) return -1;
    const char* found = std::strstr(s1, s2);
    return found ? static_cast<int>(found - s1) : -1;
}

void strlimcpy(char* s, const char* t, int n) {
    if (n < 1) return;
    for (; n > 1 && *t; n--) *s++ = *t++;
    *s = '\0';
}

void xmove(void* target, const void* source, std::size_t n) {
    std::memmove(target, source, n);
}

} // namespace norva
