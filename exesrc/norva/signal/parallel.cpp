// The crew of worker threads behind parallel_chunks. Chunks are handed out one by one, so a worker that wakes
// late, or whose core is busy with other things, only takes fewer of them; the caller waits for nobody who
// has not begun.
#include "signal/parallel.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace norva {
namespace {

thread_local bool inside_loop = false; // this thread runs a chunk now
std::atomic<int> thread_limit = 0;     // 0: all cores

struct job {
    const parallel_loop& loop;
    std::atomic<int> next = 0; // chunks handed out
    int workers = 0;           // workers that have joined and not left; guarded by crew::lock_
    int places = 0;            // workers that may still join; likewise

    int chunks() const {
        return static_cast<int>((static_cast<long long>(loop.n) + loop.chunk - 1) / loop.chunk);
    }
    // Runs the next chunk; false when none is left.
    bool step() {
        int k = next.load(std::memory_order_relaxed);
        do {
            if (k >= chunks()) return false;
        } while (!next.compare_exchange_weak(k, k + 1));
        int begin = k * loop.chunk;
        loop.run(loop.body, begin, loop.n - begin > loop.chunk ? begin + loop.chunk : loop.n);
        return true;
    }
    int handed_out() const {
        return static_cast<int>(
            std::min<long long>(static_cast<long long>(next.load()) * loop.chunk, loop.n));
    }
};

void run_and_report(job& work) {
    inside_loop = true;
    while (work.step()) {
        if (work.loop.report) work.loop.report(work.loop.after, work.handed_out());
    }
    inside_loop = false;
    if (work.loop.report) work.loop.report(work.loop.after, work.loop.n);
}

class crew {
public:
    crew() {
        unsigned cores = std::max(1U, std::thread::hardware_concurrency());
        for (unsigned i = 1; i < cores; i++) threads_.emplace_back([this] { serve(); });
    }
    ~crew() {
        {
            std::lock_guard guard(lock_);
            closing_ = true;
        }
        wake_.notify_all();
        for (std::thread& t : threads_) t.join();
    }
    crew(const crew&) = delete;
    crew& operator=(const crew&) = delete;

    // False when the crew is at work for another thread: the caller then does it alone.
    bool run(job& work) {
        const bool one = work.places == 1;
        {
            std::lock_guard guard(lock_);
            if (current_) return false;
            current_ = &work;
        }
        if (one)
            wake_.notify_one();
        else
            wake_.notify_all();
        run_and_report(work);
        std::unique_lock guard(lock_);
        current_ = nullptr;
        left_.wait(guard, [&] { return work.workers == 0; });
        return true;
    }
    int size() const { return static_cast<int>(threads_.size()); }

private:
    void serve() {
        inside_loop = true;
        std::unique_lock guard(lock_);
        for (;;) {
            wake_.wait(guard, [&] { return closing_ || (current_ && current_->places > 0); });
            if (closing_) return;
            job& work = *current_;
            work.places--;
            work.workers++;
            guard.unlock();
            while (work.step()) {
            }
            guard.lock();
            if (--work.workers == 0) left_.notify_all();
        }
    }

    std::mutex lock_;
    std::condition_variable wake_, left_;
    job* current_ = nullptr;
    bool closing_ = false;
    std::vector<std::thread> threads_;
};

} // namespace

int parallel_limit(int count) {
    return thread_limit.exchange(std::max(0, count));
}

void run_parallel(const parallel_loop& loop) {
    if (loop.n <= 0) return;
    job work{loop};
    int limit = thread_limit;
    if (!inside_loop && work.chunks() > 1 && limit != 1) {
        static crew workers;
        work.places = limit == 0 ? workers.size() : std::min(limit - 1, workers.size());
        work.places = std::min(work.places, work.chunks() - 1);
        if (work.places > 0 && workers.run(work)) return;
    }
    bool outer = inside_loop;
    run_and_report(work);
    inside_loop = outer;
}

} // namespace norva
