#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace bellmark {

/// Works on items in several threads and hands the results over in the order of the items. Few items are in work or
/// wait for their turn at a time, whatever their number.
/// next: the next item, or nothing at the end; called by one thread at a time.
/// makeWorker: called by each thread once, for the function that makes a result of an item.
/// take: takes the results in order, by one thread at a time; false ends the work early.
/// What one of them throws ends the work, and is thrown again here.
template <class Next, class MakeWorker, class Take>
void WorkInOrder(std::size_t threads, Next next, MakeWorker makeWorker, Take take) {
    using Item = typename decltype(next())::value_type;
    using Result = decltype(makeWorker()(std::declval<Item>()));
    std::mutex mutex;
    std::condition_variable turnCame;
    std::map<std::size_t, Result> waiting;
    std::size_t started = 0;
    std::size_t taken = 0;
    bool isEnded = false;    // no further items
    bool isStopped = false;  // no further results
    std::exception_ptr failure;
    const std::size_t mostAhead = 4 * threads;

    const auto workOn = [&] {
        auto worker = makeWorker();
        std::unique_lock lock(mutex);
        for (;;) {
            turnCame.wait(lock, [&] { return isEnded || started < taken + mostAhead; });
            if (isEnded) return;
            std::optional<Item> item = next();
            if (!item) {
                isEnded = true;
                turnCame.notify_all();
                return;
            }
            const std::size_t number = started++;
            lock.unlock();
            Result result = worker(*std::move(item));
            lock.lock();
            waiting.emplace(number, std::move(result));
            for (auto first = waiting.find(taken); first != waiting.end(); first = waiting.find(taken)) {
                auto entry = waiting.extract(first);
                ++taken;
                if (!isStopped && !take(std::move(entry.mapped()))) isStopped = isEnded = true;
            }
            turnCame.notify_all();
        }
    };
    const auto guarded = [&] {
        try {
            workOn();
        } catch (...) {
            const std::lock_guard lock(mutex);
            if (!failure) failure = std::current_exception();
            isEnded = true;
            turnCame.notify_all();
        }
    };
    std::vector<std::thread> helpers;
    for (std::size_t i = 1; i < threads; ++i) helpers.emplace_back(guarded);
    guarded();
    for (std::thread& helper : helpers) helper.join();
    if (failure) std::rethrow_exception(failure);
}

}  // namespace bellmark
