#include "io/number_text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace kesto {

namespace {

inline constexpr int projectDecimals = 8;
inline constexpr double projectScale = 1e8;                 // the decimals as an integer
inline constexpr double exactIntegers = 0x1p53;             // every integer below is a double, and all its digits are
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
    constexpr double relativeError = 0x1p-53;  // of a product
    constexpr double middle = 0.5;
    const double size = std::fabs(number);
    if (!(size < exactIntegers)) return std::nullopt;
    auto whole = static_cast<std::uint64_t>(size);
    const double scaled = (size - static_cast<double>(whole)) * projectScale;  // only the product is rounded
    auto decimals = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - decimals;
    if (!(std::fabs(rest - middle) > scaled * relativeError)) return std::nullopt;
    if (rest > middle) ++decimals;
    if (decimals == static_cast<std::uint32_t>(projectScale)) {
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

/// Appends digits to a number.
/// @return false where one of them is none
bool AppendDigits(std::string_view digits, std::uint64_t& number) noexcept {
    for (const char character : digits) {
        const auto digit = static_cast<unsigned char>(character - '0');
        if (digit > 9) return false;
        number = number * 10 + digit;
    }
    return true;
}

/// Reads a text that FormatReal() has written, in half the time. Its digits are an integer, which a double holds
/// exactly; divided by a power of ten that is exact too, it gives the nearest double to the decimal number.
/// @return false for any other text and for a number too large to hold exactly
bool ReadByIntegers(std::string_view text, double& number) noexcept {
    constexpr std::size_t tail = 1 + projectDecimals;  // characters from the point on
    constexpr std::size_t mostWhole = 9;               // digits: with the decimals they do not overflow
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    if (text.size() <= tail || text.size() > mostWhole + tail) return false;
    const std::size_t point = text.size() - tail;
    std::uint64_t digits = 0;
    if (text[point] != '.' || !AppendDigits({text.data(), point}, digits)) return false;
    if (!AppendDigits({text.data() + point + 1, projectDecimals}, digits)) return false;
    const auto integer = static_cast<double>(digits);
    if (!(integer < exactIntegers)) return false;
    number = (negative ? -integer : integer) / projectScale;
    return true;
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

/// Whether nothing but a blank stands where a number ends.
bool EndsAt(const char* end, const char* last) noexcept { return end == last || IsBlank(*end); }

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
    double written = 0;
    ReadReal(FormatReal(room, number), written);
    return written + 0.0;  // takes the sign off a zero
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

bool ReadReal(std::string_view text, double& number, bool& whole) noexcept {
    whole = true;
    if (ReadByIntegers(text, number)) return true;
    number = 0;
    const std::string_view part = NumberPart(text, true);
    whole = !part.empty();
    if (part.empty()) return true;
    const char* const last = part.data() + part.size();
    const auto end = std::from_chars(part.data(), last, number);
    whole = EndsAt(end.ptr, last);
    if (end.ec == std::errc() && std::isfinite(number)) return true;
    number = 0;
    return !IsTooLarge(part);
}

bool ReadReal(std::string_view text, double& number) noexcept {
    bool whole = false;
    return ReadReal(text, number, whole);
}

bool ReadInteger(std::string_view text, std::int32_t& number, bool& whole) noexcept {
    number = 0;
    const std::string_view part = NumberPart(text, false);
    whole = !part.empty();
    if (part.empty()) return true;
    const char* const last = part.data() + part.size();
    const auto end = std::from_chars(part.data(), last, number);
    whole = EndsAt(end.ptr, last);
    return end.ec == std::errc();
}

bool ReadInteger(std::string_view text, std::int32_t& number) noexcept {
    bool whole = false;
    return ReadInteger(text, number, whole);
}

}  // namespace kesto
