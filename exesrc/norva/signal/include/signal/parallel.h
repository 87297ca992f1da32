#pragma once
// Loops over all cores. A loop is cut into chunks that do not depend on the number of threads, and a chunk's
// result may depend on nothing but its own elements, so that every result is the same bits with one thread
// and with many.

#include <type_traits>

namespace norva {

// Runs body(begin, end) for 0 <= begin < end <= n over chunks of at most `chunk` elements, on the calling
// thread and on idle workers, and returns when all is done. Inside a chunk that itself runs in such a loop
// everything stays on its thread. body must not throw. after(done), when given, is called on the calling
// thread between chunks with the number of elements handed out so far, and with n at the end.
template <class Body> void parallel_chunks(int n, int chunk, Body&& body);
template <class Body, class After> void parallel_chunks(int n, int chunk, Body&& body, After&& after);

// Limits loops to `count` threads (at least 1; 0 for all cores) and returns the limit that was in force.
int parallel_limit(int count);

// What the templates stand on.
struct parallel_loop {
    int n = 0;
    int chunk = 1;
    void* body = nullptr;
    void (*run)(void* body, int begin, int end) = nullptr;
    void* after = nullptr;
    void (*report)(void* after, int done) = nullptr; // null: nobody wants to know
};
void run_parallel(const parallel_loop& loop);

template <class Body> void parallel_chunks(int n, int chunk, Body&& body) {
    using body_type = std::remove_reference_t<Body>;
    parallel_loop loop{n, chunk, &body, [](void* b, int i, int j) { (*static_cast<body_type*>(b))(i, j); }};
    run_parallel(loop);
}

template <class Body, class After> void parallel_chunks(int n, int chunk, Body&& body, After&& after) {
    using body_type = std::remove_reference_t<Body>;
    using after_type = std::remove_reference_t<After>;
    parallel_loop loop{n,      chunk,
                       &body,  [](void* b, int i, int j) { (*static_cast<body_type*>(b))(i, j); },
                       &after, [](void* a, int done) { (*static_cast<after_type*>(a))(done); }};
    run_parallel(loop);
}

} // namespace norva
