// String routines on zero-terminated text.
#include "zuvsys/cstrings.h"

#include "zuvsys/basicstr.h"
#include "zuvsys/clist.h"
#include "zuvsys/jmalloc.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace norva {

namespace {

int length(const char* str) {
    return static_cast<int>(std::strlen(str));
}

int upper(char c) {
    return toupperx(static_cast<unsigned char>(c));
}

int same(char c) {
    return static_cast<unsigned char>(c);
}

int abbreviates(const char* full, const char* given, char c, int (*fold)(char)) {
    if (!full || !given) return 0;
    bool passed = false;
    for (;; full++, given++) {
        if (!passed && c && *full == c) {
            passed = true;
            full++;
        }
        if (!*given) return passed || !*full;
        if (!*full || fold(*full) != fold(*given)) return 0;
    }
}

} // namespace

const char* c_strchrq(const char* str, char c) {
    bool quoted = false;
    for (; str && *str; str++) {
        if (!quoted && *str == c) return str;
        if (*str == '"') quoted = !quoted;
    }
    return nullptr;
}

char* c_strchrq(char* str, char c) {
    return const_cast<char*>(c_strchrq(static_cast<const char*>(str), c));
}

int c_iseq(const char* s1, const char* s2) {
    return s1 && s2 && std::strcmp(s1, s2) == 0;
}

int c_iseqx(const char* s1, const char* s2) {
    return c_strcmpx(s1, s2) == 0;
}

int c_strcmpx(const char* s1, const char* s2) {
    return s1 && s2 ? strcmpx(s1, s2) : 1;
}

int c_isabbr(const char* s1, const char* s2, char c) {
    return abbreviates(s1, s2, c, same);
}

int c_isabbrx(const char* s1, const char* s2, char c) {
    return abbreviates(s1, s2, c, upper);
}

// A later "*" sees every tail that an earlier one could still offer it, so only the last one needs trying
// again.
int c_iswild(const char* t, const char* s) {
    if (!t || !s) return 0;
    const char* star = nullptr;  // pattern behind the last "*"
    const char* retry = nullptr; // where that "*" ends next time
    for (;;) {
        if (*t && *s) {
            if (*t == '*') {
                if (!t[1]) return 1;
                star = ++t;
                retry = s;
                continue;
            }
            if (*t == '?' || *t == *s) {
                t++;
                s++;
                continue;
            }
        } else if (!*t && !*s) {
            return 1;
        }
        if (!star || !*retry || !*++retry) return 0;
        t = star;
        s = retry;
    }
}

int c_iswildx(const char* s1, const char* s2) {
    if (!s1 || !s2) return 0;
    std::string pattern = s1, text = s2;
    c_strupcase(pattern.data());
    c_strupcase(text.data());
    return c_iswild(pattern.c_str(), text.c_str());
}

char* c_strupcase(char* str) {
    return str ? struprx(str) : str;
}

char* c_strlowcase(char* str) {
    for (char* p = str; p && *p; p++) *p = static_cast<char>(tolowerx(static_cast<unsigned char>(*p)));
    return str;
}

char* c_strncat(char* s1, const char* s2, int n) {
    if (!s1 || !s2) return s1;
    int len = length(s1);
    if (n - len < 2) return s1;
    c_strncpy(s1 + len, s2, n - len);
    return s1;
}

char* c_strcatgrow(char* s1, const char* s2, int* n) {
    if (!s1) {
        if (!s2) {
            if (*n <= 0) *n = 20;
        } else {
            *n = std::max(*n, length(s2) + 1);
        }
        s1 = c_mkstrn(*n);
    } else if (s2 && length(s1) + length(s2) + 1 > *n) {
        *n = length(s1) + length(s2) + 100;
        s1 = static_cast<char*>(jrealloc(s1, static_cast<std::size_t>(*n)));
    }
    if (s2) std::strcat(s1, s2);
    return s1;
}

char* c_strncpy(char* s1, const char* s2, int n) {
    if (!s1 || n < 1) return s1;
    int m = 0;
    for (; s2 && s2[m] && m < n - 1; m++) s1[m] = s2[m];
    s1[m] = '\0';
    return s1;
}

char* c_extendstr(char* str, int n) {
    if (str) extendstr(str, n);
    return str;
}

char* c_setstrlen(char* str, int n) {
    if (!str || n < 0) return str;
    extendstr(str, n);
    str[n] = '\0';
    return str;
}

char* c_ridstartws(char* str) {
    if (str) ridstartws(str);
    return str;
}

char* c_ridendws(char* str) {
    if (str) ridendws(str);
    return str;
}

char* c_ridedgews(char* str) {
    return c_ridstartws(c_ridendws(str));
}

char* c_ridtab(char* str, int mxn) {
    if (!str || mxn < 1 || !std::strchr(str, '\t')) return str;
    std::string out;
    int column = 0;
    for (const char* p = str; *p; p++) {
        auto c = static_cast<unsigned char>(*p);
        if (c == '\t') {
            int blanks = 8 - column % 8;
            out.append(static_cast<std::size_t>(blanks), ' ');
            column += blanks;
            continue;
        }
        out += *p;
        if (c == '\n')
            column = 0;
        else if (c >= ' ' && c != 127)
            column++;
    }
    return c_strncpy(str, out.c_str(), mxn);
}

} // namespace norva
