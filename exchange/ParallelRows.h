#pragma once

#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <functional>
#include <latch>

namespace vg::exchange {

// Runs body(first, last) over [0, count) in chunks of `chunk`, on the global thread pool and
// the calling thread together; returns when every chunk is done.
inline void parallelForChunks(int count, int chunk, const std::function<void(int first, int last)> &body)
{
    if (count <= 0)
        return;
    chunk = std::max(1, chunk);
    const int chunks = (count + chunk - 1) / chunk;
    QThreadPool *pool = QThreadPool::globalInstance();
    const int helpers = std::clamp(std::min(pool->maxThreadCount(), chunks) - 1, 0, 64);
    std::atomic<int> next{0};
    auto work = [&] {
        for (int c = next++; c < chunks; c = next++)
            body(c * chunk, std::min(count, (c + 1) * chunk));
    };
    std::latch done(helpers);
    for (int i = 0; i < helpers; ++i) {
        // A pool that is full runs the task on this thread instead; the latch still counts it.
        if (!pool->tryStart([&] {
                work();
                done.count_down();
            })) {
            done.count_down();
        }
    }
    work();
    done.wait();
}

} // namespace vg::exchange
