#include "core/number_text.h"

#include "core/fault.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace quorvanta {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Walks over the parts of a number in a text.
class NumberReader {
  public:
    explicit NumberReader(std::string_view text) : rest_(text) {}

    void SkipBlanks() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
    }

    // The next character if it is one of those wanted, else 0.
    char Take(std::string_view wanted) {
        if (rest_.empty() || wanted.find(rest_.front()) == std::string_view::npos)
            return 0;
        const char taken = rest_.front();
        rest_.remove_prefix(1);
        return taken;
    }

    std::string_view TakeDigits() {
        std::size_t n = 0;
        while (n < rest_.size() && IsDigit(rest_[n]))
            ++n;
        const std::string_view digits = rest_.substr(0, n);
        rest_.remove_prefix(n);
        return digits;
    }

  private:
    std::string_view rest_;
};

} // namespace

std::optional<f64> NumberIn(std::string_view text) {
    NumberReader reader(text);
    reader.SkipBlanks();
    const bool negative = reader.Take("+-") == '-';
    const std::string_view whole = reader.TakeDigits();
    const std::string_view fraction = reader.Take(".") != 0 ? reader.TakeDigits() : "";
    const bool hasExponent = reader.Take("EeDd") != 0;
    const bool negativeExponent = hasExponent && reader.Take("+-") == '-';
    const std::string_view exponent = hasExponent ? reader.TakeDigits() : "";

    std::string number(whole);
    number += '.';
    number += fraction;
    const std::size_t first = number.find_first_not_of("0.");
    if (first == std::string::npos)
        return 0;
    if (!exponent.empty()) {
        number += negativeExponent ? "e-" : "e";
        number += exponent;
    }
    f64 x = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), x);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large or too small: from_chars doesn't tell which. Only an exponent of hundreds, or
        // hundreds of digits, gets here, so the sign of one or the place of the other decides.
        const bool large = exponent.empty() ? first < whole.size() : !negativeExponent;
        if (large)
            return std::nullopt;
        return 0;
    }
    return negative ? -x : x;
}

f64 Val(std::string_view text) {
    const auto number = NumberIn(text);
    if (!number)
        throw RunTimeError(Fault::Overflow);
    return *number;
}

std::optional<std::string> DecimalText(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return std::nullopt;
    std::string number(text.substr(first, text.find_last_not_of(' ') - first + 1));
    std::ranges::replace(number, ',', '.');
    f64 x = 0;
    const char* const end = number.data() + number.size();
    const auto result = std::from_chars(number.data(), end, x);
    const bool isNumber = result.ec == std::errc{} && result.ptr == end && std::isfinite(x);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace quorvanta
