// Array makers and string lists.
#include "zuvsys/clist.h"

#include "zuvsys/cstrings.h"
#include "zuvsys/jmalloc.h"

#include <algorithm>
#include <cstring>

namespace norva {

namespace {

template <class T> T* make(int n) {
    return n < 1 ? nullptr : static_cast<T*>(jmalloc(static_cast<std::size_t>(n) * sizeof(T)));
}

template <class T> T* copy(const T* from, int n) {
    T* p = from ? make<T>(n) : nullptr;
    if (p) std::copy_n(from, n, p);
    return p;
}

int locate(char* const* slst, const char* str, int (*equal)(const char*, const char*)) {
    for (int i = 0; slst && slst[i]; i++)
        if (equal(slst[i], str)) return i;
    return -1;
}

bool is_space(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

} // namespace

char* c_mkstr(const char* str) {
    if (!str) return nullptr;
    std::size_t n = std::strlen(str);
    auto* p = static_cast<char*>(jmalloc(n + 2));
    std::memcpy(p, str, n);
    return p;
}

char* c_cpstr(const char* str) {
    return c_mkstr(str);
}

char* c_mkstrn(int n) {
    return make<char>(n);
}
double* c_mkdary(int n) {
    return make<double>(n);
}
float* c_mkfary(int n) {
    return make<float>(n);
}
int* c_mkiary(int n) {
    return make<int>(n);
}
double* c_cpdary(const double* d, int n) {
    return copy(d, n);
}
float* c_cpfary(const float* f, int n) {
    return copy(f, n);
}
int* c_cpiary(const int* ia, int n) {
    return copy(ia, n);
}

char** c_mklist(int n) {
    return make<char*>(n);
}

char** c_growlist(char** slst, int n) {
    if (!slst) return c_mklist(n);
    int len = c_listlen(slst);
    if (n <= len) return slst;
    slst = static_cast<char**>(jrealloc(slst, static_cast<std::size_t>(n) * sizeof(char*)));
    std::fill(slst + len, slst + n, nullptr);
    return slst;
}

void c_addlist(char** slst, const char* str) {
    if (slst && str) slst[c_listlen(slst)] = c_mkstr(str);
}

char** c_addlistgrow(char** slst, const char* str, int* mn) {
    if (!str) return slst;
    if (!slst) {
        if (*mn < 1) *mn = 4;
        slst = c_mklist(*mn);
    }
    int n = c_listlen(slst);
    if (n >= *mn - 2) {
        *mn = n + 4;
        slst = c_growlist(slst, *mn);
    }
    slst[n] = c_mkstr(str);
    return slst;
}

void c_mvtolist(char** slst, char* sptr) {
    if (slst && sptr) slst[c_listlen(slst)] = sptr;
}

char** c_mvtolistgrow(char** slst, char* sptr, int* mn) {
    if (!slst || !sptr) return slst;
    int n = c_listlen(slst);
    if (n >= *mn - 2) {
        *mn = std::max(*mn + 10, n + 2); // n + 2 is the least that holds one more, should *mn be out of step
        slst = c_growlist(slst, *mn);
    }
    slst[n] = sptr;
    return slst;
}

void c_freelist(char** slst) {
    if (!slst) return;
    for (int i = 0; slst[i]; i++) jfree(slst[i]);
    jfree(slst);
}

int c_listlen(char* const* slst) {
    int n = 0;
    while (slst && slst[n]) n++;
    return n;
}

int c_locinlist(char* const* slst, const char* str) {
    return locate(slst, str, c_iseq);
}
int c_locinlistx(char* const* slst, const char* str) {
    return locate(slst, str, c_iseqx);
}
int c_isinlist(char* const* slst, const char* str) {
    return c_locinlist(slst, str) >= 0;
}
int c_isinlistx(char* const* slst, const char* str) {
    return c_locinlistx(slst, str) >= 0;
}

char** c_words(char* str) {
    int mn = 10;
    char** words = c_mklist(mn);
    char* start = nullptr; // of the word under way
    bool quoted = false;
    for (char* p = str; p && *p; p++) {
        if (!quoted && is_space(*p)) {
            *p = '\0';
            if (start) words = c_addlistgrow(words, start, &mn);
            start = nullptr;
            continue;
        }
        if (*p == '"') quoted = !quoted;
        if (!start) start = p;
    }
    return c_addlistgrow(words, start, &mn);
}

char** c_words_new(const char* str) {
    char* copy_of_str = c_mkstr(str);
    char** words = c_words(copy_of_str);
    jfree(copy_of_str);
    return c_growlist(words, c_listlen(words) + 3); // two more, and the end
}

} // namespace norva
