#include "ui/watchdog.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <iostream>

namespace quorvanta {

namespace {

constexpr std::size_t TrailLength = 20;
constexpr std::chrono::seconds BetweenLooks(1);
// The first catches work without end, and is not disturbed by a busy machine; the second catches
// waiting without end.
constexpr double MostProcessorSeconds = 20;
constexpr int MostLooks = 300;

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

Watchdog::Watchdog(std::string origin)
    : origin_(std::move(origin)), begunAt_(ProcessorSeconds()), thread_([this] { Watch(); }) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(mutex_);
        isEnded_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

void Watchdog::Begin(const std::string& what) {
    const std::lock_guard lock(mutex_);
    trail_.push_back(what);
    if (trail_.size() > TrailLength)
        trail_.pop_front();
    begunAt_ = ProcessorSeconds();
    looks_ = 0;
}

void Watchdog::GoOn() {
    const std::lock_guard lock(mutex_);
    begunAt_ = ProcessorSeconds();
    looks_ = 0;
}

void Watchdog::Add(const std::string& what) {
    const std::lock_guard lock(mutex_);
    if (!trail_.empty())
        trail_.back() += ": " + what;
}

std::string Watchdog::Trail() const {
    const std::lock_guard lock(mutex_);
    std::string lines;
    for (const std::string& what : trail_)
        lines += "  " + what + "\n";
    return lines;
}

void Watchdog::Watch() {
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, BetweenLooks, [this] { return isEnded_; })) {
        if (ProcessorSeconds() - begunAt_ < MostProcessorSeconds && ++looks_ < MostLooks)
            continue;
        std::cerr << origin_ << ": the last of these does not end:\n";
        for (const std::string& what : trail_)
            std::cerr << "  " << what << "\n";
        std::cerr << std::flush;
        std::abort();
    }
}

} // namespace quorvanta
