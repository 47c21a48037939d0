#include "numeric/sortind.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
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

std::size_t DigitOf(std::uint32_t key, std::size_t digit) {
    return (key >> (8 * digit)) % DigitValues;
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

namespace {

// Puts the words in the order of the bytes of key from the first one to before the last, the lowest
// first; equal ones keep their order.
template <class Key>
void SortByBytes(std::vector<Item>& words, std::size_t bytes, Key&& key) {
    sorted.resize(words.size());
    std::array<std::array<std::uint32_t, DigitValues>, Digits> counts{};
    for (const Item word : words)
        for (std::size_t digit = 0; digit < bytes; ++digit)
            ++counts[digit][DigitOf(key(word), digit)];
    for (std::size_t digit = 0; digit < bytes; ++digit) {
        std::uint32_t place = 0;
        for (std::uint32_t& count : counts[digit])
            place += std::exchange(count, place);
        for (const Item word : words)
            sorted[counts[digit][DigitOf(key(word), digit)]++] = word;
        words.swap(sorted);
    }
}

std::uint32_t UpperHalf(Item word) {
    return static_cast<std::uint32_t>(word >> 32);
}

// Insertion, which is quick where few words are out of place; false if they are not few.
bool SortFewOutOfPlace(std::vector<Item>& words) {
    std::size_t steps = 4 * words.size();
    for (std::size_t i = 1; i < words.size(); ++i) {
        const Item word = words[i];
        std::size_t at = i;
        while (at > 0 && UpperHalf(words[at - 1]) > UpperHalf(word) && steps > 0) {
            words[at] = words[at - 1];
            --at;
            --steps;
        }
        words[at] = word;
        if (steps == 0)
            return false;
    }
    return true;
}

} // namespace

// The 16 leading bits of the range of the words tell nearly all of a few thousand apart; the others
// are put right afterwards. Words that lie so close together that this takes too long are sorted by
// all bits.
void SortByUpperHalf(std::vector<std::uint64_t>& words) {
    std::uint32_t least = ~std::uint32_t{0};
    std::uint32_t most = 0;
    for (const Item word : words) {
        least = std::min(least, UpperHalf(word));
        most = std::max(most, UpperHalf(word));
    }
    constexpr std::uint32_t leading = 16;
    const auto bits = static_cast<std::uint32_t>(std::bit_width(most - least));
    const std::uint32_t shift = !words.empty() && bits > leading ? bits - leading : 0;
    SortByBytes(words, leading / 8, [=](Item word) { return (UpperHalf(word) - least) >> shift; });
    if (shift == 0 || SortFewOutOfPlace(words))
        return;
    SortByBytes(words, Digits, UpperHalf);
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
