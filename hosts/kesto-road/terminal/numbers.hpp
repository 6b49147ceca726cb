/// Numbers as text, independent of the process locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kesto::host {

/// Without blanks, tabs and line ends at both ends.
std::string_view Trim(std::string_view text) noexcept;

/// A whole text as a finite decimal number.
/// @param text         blanks around it and a leading "+" are allowed
/// @param decimalComma accept "12,5" as well, as spreadsheets of many countries write it
/// @return nothing when anything is left over, or the number is not finite
std::optional<double> ParseReal(std::string_view text, bool decimalComma = false) noexcept;

/// A whole text as a 32-bit integer; nothing when anything is left over.
std::optional<int> ParseInteger(std::string_view text) noexcept;

/// Fixed notation; a number that rounds to zero carries no minus sign.
std::string FormatReal(double number, int decimals);

/// Shortest text that reads back as the same number, for echoing what a user gave.
std::string FormatShort(double number);

}  // namespace kesto::host
