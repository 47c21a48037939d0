#include "numeric/sortind.h"

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace quorvanta {

namespace {

// Up to here counting the pairs in order takes less time than the four passes over the digits.
constexpr std::size_t CountingLimit = 80;

constexpr std::size_t Digits = 4;
constexpr std::size_t DigitValues = 256;

// A value's sort key above its position.
using Item = std::uint64_t;

// Work arrays that keep their memory between the replicates of a simulation.
std::vector<i32> keys;
std::vector<Item> SortPerm;
std::vector<Item> sorted;

// An unsigned number in the order of the floats: the bits of a negative one are turned over, the
// sign bit of a positive one is set. Adding 0 makes -0 a 0.
std::uint32_t KeyOf(f32 value) {
    const auto bits = std::bit_cast<std::uint32_t>(value + 0.0F);
    const std::uint32_t signMask = 0U - (bits >> 31);
    return bits ^ (signMask | 0x80000000U);
}

void SortByCounting(std::span<const f32> values, std::span<i32> index) {
    const std::size_t n = values.size();
    keys.resize(n);
    for (std::size_t i = 0; i < n; ++i)
        keys[i] = static_cast<i32>(KeyOf(values[i]) ^ 0x80000000U);
    for (std::size_t i = 0; i < n; ++i) {
        const i32 key = keys[i];
        i32 before = 0;
        for (std::size_t j = 0; j < i; ++j)
            before += keys[j] <= key ? 1 : 0;
        for (std::size_t j = i + 1; j < n; ++j)
            before += keys[j] < key ? 1 : 0;
        index[static_cast<std::size_t>(before)] = static_cast<i32>(i + 1);
    }
}

std::size_t DigitOf(Item item, std::size_t digit) {
    return (item >> (32 + 8 * digit)) % DigitValues;
}

void SortByDigits(std::span<const f32> values, std::span<i32> index) {
    const std::size_t n = values.size();
    SortPerm.resize(n);
    for (std::size_t i = 0; i < n; ++i)
        SortPerm[i] = Item{KeyOf(values[i])} << 32 | (i + 1);
    SortByUpperHalf(SortPerm);
    for (std::size_t i = 0; i < n; ++i)
        index[i] = static_cast<i32>(SortPerm[i] & 0xFFFFFFFFU);
}

} // namespace

void SortByUpperHalf(std::vector<std::uint64_t>& words) {
    sorted.resize(words.size());
    std::array<std::array<std::uint32_t, DigitValues>, Digits> counts{};
    for (const Item word : words)
        for (std::size_t digit = 0; digit < Digits; ++digit)
            ++counts[digit][DigitOf(word, digit)];
    for (std::size_t digit = 0; digit < Digits; ++digit) {
        std::uint32_t place = 0;
        for (std::uint32_t& count : counts[digit])
            place += std::exchange(count, place);
        for (const Item word : words)
            sorted[counts[digit][DigitOf(word, digit)]++] = word;
        words.swap(sorted);
    }
}

void SortIndex(const Array1<f32>& values, Array1<i32>& index, i32 n) {
    index.ReDim(1, n);
    if (n < 1)
        return;
    // The bounds of values(1..n), so that the loops may go over the bare cells.
    const f32& first = values(1);
    static_cast<void>(values(n));
    const std::span<const f32> cells(&first, static_cast<std::size_t>(n));
    if (cells.size() <= CountingLimit)
        SortByCounting(cells, index.Raw());
    else
        SortByDigits(cells, index.Raw());
}

} // namespace quorvanta
