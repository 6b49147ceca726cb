/// Numbers as files hold them, independent of the process locale.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kesto {

inline constexpr std::size_t longestNumber = 352;  // characters: room for the largest double in fixed notation
using NumberRoom = std::array<char, longestNumber>;

/// A number in fixed notation with 8 decimals. What is no finite number is written as 0: a file holds no such number,
/// and for a radius 0 means infinite.
/// @param room where the text is put
std::string_view FormatReal(NumberRoom& room, double number) noexcept;

/// The number that FormatReal()'s text of a number reads back as, 0 for one that is not finite. Never a negative zero.
double WrittenReal(double number) noexcept;

/// A finite number in fixed notation.
/// @param decimals at most 8
std::string FixedReal(double number, int decimals);

/// A finite number as printf("%g") writes it in the "C" locale: six significant digits, without closing zeros.
std::string ShortReal(double number);

/// An integer in decimal notation.
/// @param room where the text is put
std::string_view FormatInteger(NumberRoom& room, std::int32_t number) noexcept;

/// Reads the longest decimal number that a text begins with: 0 where there is none (hexadecimal, inf and nan are none)
/// and for one that is too small for a double.
/// @param number out: 0 on failure. Not an optional: that comes back in pieces of a word, which costs as much time as a
///               short number does
/// @param whole  out: whether the text up to its end, or to a blank, is the number
/// @return false when the number is too large for a double
bool ReadReal(std::string_view text, double& number, bool& whole) noexcept;
bool ReadReal(std::string_view text, double& number) noexcept;

/// Reads the longest decimal integer that a text begins with, 0 where there is none.
/// @param number out: 0 on failure
/// @param whole  out: whether the text up to its end, or to a blank, is the number
/// @return false when the number does not fit 32 bits
bool ReadInteger(std::string_view text, std::int32_t& number, bool& whole) noexcept;
bool ReadInteger(std::string_view text, std::int32_t& number) noexcept;

/// Whether a character separates words, in the C locale.
constexpr bool IsBlank(char character) noexcept { return character == ' ' || (character >= '\t' && character <= '\r'); }

}  // namespace kesto
