// Arrays with declared lower bounds whose every access is checked.
#pragma once

#include "core/fault.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace quorvanta {

// Bounds fixed at compile time: FixedArray<f64, 0, 12> holds the elements (0) to (12).
template <class T, int Low, int High>
class FixedArray {
  public:
    static constexpr int LowBound = Low;
    static constexpr int HighBound = High;

    T& operator()(int i) { return cells_[Offset(i)]; }
    const T& operator()(int i) const { return cells_[Offset(i)]; }

    void Fill(const T& value) { cells_.fill(value); }
    std::span<T> Raw() { return cells_; }
    std::span<const T> Raw() const { return cells_; }

    friend bool operator==(const FixedArray&, const FixedArray&) = default;

  private:
    static std::size_t Offset(int i) {
        if (i < Low || i > High)
            throw RunTimeError(Fault::BadIndex);
        return static_cast<std::size_t>(i - Low);
    }

    std::array<T, High - Low + 1> cells_{};
};

// Two fixed dimensions, row after row in memory.
template <class T, int Low1, int High1, int Low2, int High2>
class FixedGrid {
  public:
    T& operator()(int i, int j) { return cells_[Offset(i, j)]; }
    const T& operator()(int i, int j) const { return cells_[Offset(i, j)]; }

    void Fill(const T& value) { cells_.fill(value); }
    std::span<T> Raw() { return cells_; }
    std::span<const T> Raw() const { return cells_; }

    friend bool operator==(const FixedGrid&, const FixedGrid&) = default;

  private:
    static constexpr int width_ = High2 - Low2 + 1;

    static std::size_t Offset(int i, int j) {
        if (i < Low1 || i > High1 || j < Low2 || j > High2)
            throw RunTimeError(Fault::BadIndex);
        return static_cast<std::size_t>((i - Low1) * width_ + (j - Low2));
    }

    std::array<T, static_cast<std::size_t>((High1 - Low1 + 1) * width_)> cells_{};
};

// Bounds set at run time; an array that was never dimensioned has none.
template <class T>
class Array1 {
  public:
    Array1() = default;
    Array1(int low, int high) { ReDim(low, high); }

    // New bounds, every element value-initialised.
    void ReDim(int low, int high) {
        low_ = low;
        high_ = high;
        cells_.assign(Size(low, high), T());
    }

    // New upper bound; the elements that both bounds cover keep their values.
    void ReDimPreserve(int high) {
        high_ = high;
        cells_.resize(Size(low_, high), T());
    }

    int LowBound() const { return low_; }
    int HighBound() const { return high_; }

    T& operator()(int i) { return cells_[Offset(i)]; }
    const T& operator()(int i) const { return cells_[Offset(i)]; }

    std::span<T> Raw() { return cells_; }
    std::span<const T> Raw() const { return cells_; }

    friend bool operator==(const Array1&, const Array1&) = default;

  private:
    static std::size_t Size(int low, int high) {
        return high < low ? 0 : static_cast<std::size_t>(high - low + 1);
    }

    std::size_t Offset(int i) const {
        if (i < low_ || i > high_)
            throw RunTimeError(Fault::BadIndex);
        return static_cast<std::size_t>(i - low_);
    }

    int low_ = 0;
    int high_ = -1;
    std::vector<T> cells_;
};

// Two dimensions set at run time, row after row in memory.
template <class T>
class Array2 {
  public:
    Array2() = default;
    Array2(int low1, int high1, int low2, int high2) { ReDim(low1, high1, low2, high2); }

    // New bounds, every element value-initialised.
    void ReDim(int low1, int high1, int low2, int high2) {
        low1_ = low1;
        high1_ = high1;
        low2_ = low2;
        high2_ = high2;
        const int rows = high1 < low1 ? 0 : high1 - low1 + 1;
        const int columns = high2 < low2 ? 0 : high2 - low2 + 1;
        cells_.assign(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns), T());
    }

    int LowBound1() const { return low1_; }
    int HighBound1() const { return high1_; }
    int LowBound2() const { return low2_; }
    int HighBound2() const { return high2_; }

    T& operator()(int i, int j) { return cells_[Offset(i, j)]; }
    const T& operator()(int i, int j) const { return cells_[Offset(i, j)]; }

    std::span<T> Raw() { return cells_; }
    std::span<const T> Raw() const { return cells_; }

    friend bool operator==(const Array2&, const Array2&) = default;

  private:
    std::size_t Offset(int i, int j) const {
        if (i < low1_ || i > high1_ || j < low2_ || j > high2_)
            throw RunTimeError(Fault::BadIndex);
        return static_cast<std::size_t>(i - low1_) * static_cast<std::size_t>(high2_ - low2_ + 1) +
               static_cast<std::size_t>(j - low2_);
    }

    int low1_ = 0;
    int high1_ = -1;
    int low2_ = 0;
    int high2_ = -1;
    std::vector<T> cells_;
};

} // namespace quorvanta
