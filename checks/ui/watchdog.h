// Ends a check that hangs, with the last things that were done before.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace quorvanta {

class Watchdog {
  public:
    // What stands first in the message: how to come here again.
    explicit Watchdog(std::string origin);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    // The next thing begins. When it takes too long, the program is aborted with its trail.
    void Begin(const std::string& what);

    // More about the thing that goes on.
    void Add(const std::string& what);

    // The thing is long, and still alive.
    void GoOn();

    // The last things, one a line.
    std::string Trail() const;

  private:
    void Watch();

    std::string origin_;
    mutable std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnded_ = false;
    std::deque<std::string> trail_;
    double begunAt_ = 0; // processor seconds
    int looks_ = 0;      // since then
    std::thread thread_; // after all that it reads
};

} // namespace quorvanta
