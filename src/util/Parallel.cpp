#include "util/Parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace terravo {

void InParallel(int count, const std::function<void(int piece)>& work) {
    std::atomic<int> next{0};
    std::exception_ptr thrown;
    std::mutex guard;
    const auto takePieces = [&] {
        for (int piece = next++; piece < count; piece = next++) {
            try {
                work(piece);
            } catch (...) {
                next = count;
                const std::lock_guard lock(guard);
                thrown = thrown ? thrown : std::current_exception();
            }
        }
    };
    const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    std::vector<std::thread> helpers;
    try {
        for (int i = 1; i < std::min(cores, count); ++i) {
            helpers.emplace_back(takePieces);
        }
    } catch (const std::system_error&) {
        // No more threads to be had: those there are do it.
    }
    takePieces();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    if (thrown) {
        std::rethrow_exception(thrown);
    }
}

} // namespace terravo
