/// The fixed text fields of the records.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kesto {

inline constexpr std::size_t textFieldSize = 32;  // bytes of a text field, its terminating zero included

/// A text field's content: up to its terminating zero, or the whole field where there is none.
std::string_view TextOf(const char (&field)[textFieldSize]) noexcept;

/// Writes a text into a field, cut to 31 bytes at a character boundary, the rest zero.
void SetText(char (&field)[textFieldSize], std::string_view text) noexcept;

/// Cuts a caller's field that carries no terminating zero.
void CutText(char (&field)[textFieldSize]) noexcept;

}  // namespace kesto
