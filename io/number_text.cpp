#include "io/number_text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace kesto {

namespace {

inline constexpr int projectDecimals = 8;
inline constexpr int shortDigits = 6;                       // what "%g" writes
inline constexpr std::int64_t exponentCap = 1'000'000'000;  // far beyond what the digits of a line can weigh up

std::string_view Write(NumberRoom& room, double number, std::chars_format format, int precision) noexcept {
    const auto end = std::to_chars(room.data(), room.data() + room.size(), number, format, precision);
    return {room.data(), static_cast<std::size_t>(end.ptr - room.data())};
}

/// FormatReal()'s text by way of integers, in a quarter of the time: whole metres and their decimals each become one.
/// @return nothing where the number is too large, none at all, or so near to the middle of two texts that the product
///         does not tell which one is nearer
std::optional<std::string_view> WriteByIntegers(NumberRoom& room, double number) noexcept {
    constexpr double largest = 0x1p53;  // from here on doubles are no longer dense enough to count by ones
    constexpr double scale = 1e8;
    constexpr double relativeError = 0x1p-53;  // of a product
    const double size = std::fabs(number);
    if (!(size < largest)) return std::nullopt;
    auto whole = static_cast<std::uint64_t>(size);
    const double scaled = (size - static_cast<double>(whole)) * scale;  // the difference is exact, the product rounded
    auto decimals = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - decimals;
    if (!(std::fabs(rest - 0.5) > scaled * relativeError)) return std::nullopt;
    if (rest > 0.5) ++decimals;
    if (decimals == static_cast<std::uint32_t>(scale)) {
        decimals = 0;
        ++whole;
    }
    char* at = room.data();
    if (std::signbit(number)) *at++ = '-';
    at = std::to_chars(at, room.data() + room.size(), whole).ptr;
    *at = '.';
    for (int i = projectDecimals; i > 0; --i, decimals /= 10) at[i] = static_cast<char>('0' + decimals % 10);
    at += 1 + projectDecimals;
    return std::string_view(room.data(), static_cast<std::size_t>(at - room.data()));
}

bool IsDigit(char character) noexcept { return character >= '0' && character <= '9'; }

std::size_t CountDigits(std::string_view text) noexcept {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin());
}

/// The text without a leading plus, which std::from_chars does not take; empty when no digit follows the sign.
std::string_view NumberPart(std::string_view text, bool pointAllowed) noexcept {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return {};
    }
    std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
    if (pointAllowed && digits.starts_with('.')) digits.remove_prefix(1);
    return !digits.empty() && IsDigit(digits.front()) ? text : std::string_view();
}

/// Decimal exponent behind the mantissa, 0 where there is none.
std::int64_t ExponentOf(std::string_view text) noexcept {
    if (text.empty() || (text.front() != 'e' && text.front() != 'E')) return 0;
    text.remove_prefix(1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    std::int64_t exponent = 0;
    for (const char digit : text.substr(0, CountDigits(text))) {
        exponent = std::min(exponent * 10 + (digit - '0'), exponentCap);
    }
    return negative ? -exponent : exponent;
}

/// Whether a number that no double holds is too large rather than too small: the sign of the power of ten of its first
/// digit that is not 0.
bool IsTooLarge(std::string_view text) noexcept {
    if (text.starts_with('-')) text.remove_prefix(1);
    const std::size_t whole = CountDigits(text);
    std::string_view digits = text.substr(0, whole);
    std::int64_t weight = static_cast<std::int64_t>(whole) - 1;  // of the digit looked at
    text.remove_prefix(whole);
    std::string_view fraction;
    if (text.starts_with('.')) {
        fraction = text.substr(1, CountDigits(text.substr(1)));
        text.remove_prefix(1 + fraction.size());
    }
    for (const std::string_view part : {digits, fraction}) {
        for (const char digit : part) {
            if (digit != '0') return weight + ExponentOf(text) > 0;
            --weight;
        }
    }
    return false;
}

}  // namespace

std::string_view FormatReal(NumberRoom& room, double number) noexcept {
    if (const std::optional<std::string_view> text = WriteByIntegers(room, number)) return *text;
    return Write(room, std::isfinite(number) ? number : 0, std::chars_format::fixed, projectDecimals);
}

double WrittenReal(double number) noexcept {
    NumberRoom room;
    return ParseReal(FormatReal(room, number)).value_or(0) + 0.0;  // takes the sign off a zero
}

std::string FixedReal(double number, int decimals) {
    NumberRoom room;
    return std::string(Write(room, number, std::chars_format::fixed, decimals));
}

std::string ShortReal(double number) {
    NumberRoom room;
    return std::string(Write(room, number, std::chars_format::general, shortDigits));
}

std::string_view FormatInteger(NumberRoom& room, std::int32_t number) noexcept {
    const auto end = std::to_chars(room.data(), room.data() + room.size(), number);
    return {room.data(), static_cast<std::size_t>(end.ptr - room.data())};
}

std::optional<double> ParseReal(std::string_view text) noexcept {
    const std::string_view part = NumberPart(text, true);
    if (part.empty()) return 0.0;
    double number = 0;
    const auto end = std::from_chars(part.data(), part.data() + part.size(), number);
    if (end.ec == std::errc() && std::isfinite(number)) return number;
    if (IsTooLarge(part)) return std::nullopt;
    return 0.0;
}

std::optional<std::int32_t> ParseInteger(std::string_view text) noexcept {
    const std::string_view part = NumberPart(text, false);
    if (part.empty()) return 0;
    std::int32_t number = 0;
    const auto end = std::from_chars(part.data(), part.data() + part.size(), number);
    if (end.ec != std::errc()) return std::nullopt;
    return number;
}

}  // namespace kesto
