#pragma once

// What tests with random cases share: numbers from a range, and the number of threads for the length of a test.

#include "plush/rows.h"

#include <random>

constexpr int mostThreads = 8;

inline int between(std::mt19937& random, int least, int most) {
    return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
}

/// Sets the number of workers for the length of a test.
class ThreadSetting {
public:
    explicit ThreadSetting(int threads) : before_(AllowedThreads) { AllowedThreads = threads; }
    ThreadSetting(const ThreadSetting&) = delete;
    ThreadSetting& operator=(const ThreadSetting&) = delete;
    ~ThreadSetting() { AllowedThreads = before_; }

private:
    int before_;
};
