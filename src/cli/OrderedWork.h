// Work on a stream of batches on all cores. Batches are made by one thread, worked at by many, and handed out
// in the order in which they were made; a bounded number of them is under way, and their memory is reused.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <span>
#include <thread>
#include <utility>
#include <vector>

namespace kelvora {

/// The batches under way, as a ring: made, claimed and handed out in turn.
template <class Batch>
class OrderedBatches {
public:
    explicit OrderedBatches(std::size_t count) : slots_(count) {}

    /// The batch to fill next, with what it held before; waits for one. Null once stopped.
    Batch* Fill()
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return stopped_ || filled_ - released_ < slots_.size(); });
        return stopped_ ? nullptr : &Slot(filled_).batch;
    }

    /// Passes the batch of Fill on to the workers.
    void Pass()
    {
        Change([&] { Slot(filled_++).done = false; });
    }

    /// No batches follow.
    void Close()
    {
        Change([&] { closed_ = true; });
    }

    /// Works at the next batch; waits for one. False when none follows.
    template <class Work>
    bool WorkAtNext(Work& work)
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return stopped_ || closed_ || claimed_ < filled_; });
        if (stopped_ || claimed_ == filled_)
            return false;
        Place& place = Slot(claimed_++);
        lock.unlock();
        work(place.batch);
        Change([&] { place.done = true; });
        return true;
    }

    /// The oldest batch, once its work is done. Null when none follows.
    Batch* Oldest()
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock,
                      [&] { return stopped_ || (released_ < filled_ ? Slot(released_).done : closed_); });
        return stopped_ || released_ == filled_ ? nullptr : &Slot(released_).batch;
    }

    /// Gives the batch of Oldest back for filling.
    void Release()
    {
        Change([&] { ++released_; });
    }

    /// Ends all waiting; the first failure is kept.
    void Stop(std::exception_ptr failure = nullptr)
    {
        Change([&] {
            stopped_ = true;
            if (!failure_)
                failure_ = std::move(failure);
        });
    }

    /// Throws the failure of Stop; for when the threads are at their end.
    void ThrowFailure() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    struct Place {
        Batch batch;
        bool done = false;
    };

    Place& Slot(std::size_t number) { return slots_[number % slots_.size()]; }

    template <class Set>
    void Change(Set set)
    {
        {
            const std::lock_guard lock(mutex_);
            set();
        }
        changed_.notify_all();
    }

    std::vector<Place> slots_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t filled_ = 0;
    std::size_t claimed_ = 0;
    std::size_t released_ = 0;
    bool closed_ = false;
    bool stopped_ = false;
    std::exception_ptr failure_;
};

/// Runs `make` (which fills and passes batches) in a thread of its own, `work` on each batch on all cores,
/// and `take` on each batch in this thread, in order. What one of them throws ends the others and is thrown
/// here.
template <class Batch, class Make, class Work, class Take>
void RunOrdered(Make make, Work work, Take take)
{
    constexpr std::size_t BatchesPerCore = 8;
    const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
    OrderedBatches<Batch> batches(cores * BatchesPerCore);
    const auto guarded = [&](auto step) {
        try {
            step();
        } catch (...) {
            batches.Stop(std::current_exception());
        }
    };
    {
        std::vector<std::jthread> threads;
        guarded([&] {
            threads.emplace_back([&] {
                guarded([&] { make(batches); });
                batches.Close();
            });
            for (std::size_t i = 0; i < cores; ++i)
                threads.emplace_back([&] {
                    guarded([&] {
                        while (batches.WorkAtNext(work)) {
                        }
                    });
                });
            while (Batch* batch = batches.Oldest()) {
                take(*batch);
                batches.Release();
            }
        });
    }
    batches.ThrowFailure();
}

/// Makes a `Result` of each of `items` on all cores, so many of them together: `work` takes them as a span
/// and appends a result for each to a vector. Hands each to `take`, which may keep it, in this thread, in
/// order. Throws as RunOrdered.
template <class Result, class Item, class Work, class Take>
void RunOrderedTogether(const std::vector<Item>& items, std::size_t together, Work work, Take take)
{
    struct Batch {
        std::span<const Item> items;
        std::vector<Result> results;
    };
    RunOrdered<Batch>(
        [&](OrderedBatches<Batch>& batches) {
            for (std::size_t first = 0; first < items.size(); first += together) {
                Batch* const batch = batches.Fill();
                if (!batch)
                    return;
                batch->items = std::span(items).subspan(first, std::min(together, items.size() - first));
                batches.Pass();
            }
        },
        [&](Batch& batch) {
            batch.results.clear();
            work(batch.items, batch.results);
        },
        [&](Batch& batch) {
            for (Result& result : batch.results)
                take(std::move(result));
        });
}

/// The same with `work` on each by itself.
template <class Result, class Item, class Work, class Take>
void RunOrderedOn(const std::vector<Item>& items, Work work, Take take)
{
    constexpr std::size_t ItemsPerBatch = 32;
    RunOrderedTogether<Result>(
        items, ItemsPerBatch,
        [&](std::span<const Item> together, std::vector<Result>& results) {
            for (const Item& item : together)
                results.push_back(work(item));
        },
        take);
}

}  // namespace kelvora
