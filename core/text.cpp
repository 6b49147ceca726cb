#include "core/text.hpp"

#include <algorithm>
#include <cstring>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace kesto {

namespace {

bool IsContinuation(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// Bytes of the UTF-8 sequence that a lead byte announces; 1 for anything that is no lead byte.
std::size_t SequenceLength(char lead) noexcept {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte >= 0xC0U && byte < 0xE0U) return 2;
    if (byte >= 0xE0U && byte < 0xF0U) return 3;
    if (byte >= 0xF0U && byte < 0xF8U) return 4;
    return 1;
}

/// Length of the longest run of whole characters within the limit, in a text longer than the limit.
std::size_t WholeCharacters(std::string_view text, std::size_t limit) noexcept {
#if defined(_WIN32)
    if (GetACP() != CP_UTF8) {
        std::size_t length = 0;
        while (length < limit) {
            const std::size_t step = IsDBCSLeadByte(static_cast<BYTE>(text[length])) ? 2 : 1;
            if (length + step > limit) break;
            length += step;
        }
        return length;
    }
#endif
    std::size_t lead = limit;
    while (lead > 0 && limit - lead < 3 && IsContinuation(text[lead])) --lead;
    // Cut before the lead byte only where a sequence really spans the limit; other bytes are characters of their own.
    return lead + SequenceLength(text[lead]) > limit && lead < limit ? lead : limit;
}

}  // namespace

std::string_view TextOf(const char (&field)[textFieldSize]) noexcept {
    return {field, static_cast<std::size_t>(std::find(field, field + textFieldSize, '\0') - field)};
}

void SetText(char (&field)[textFieldSize], std::string_view text) noexcept {
    constexpr std::size_t limit = textFieldSize - 1;
    const std::size_t length = text.size() > limit ? WholeCharacters(text, limit) : text.size();
    if (length > 0) std::memmove(field, text.data(), length);
    std::fill(field + length, field + textFieldSize, '\0');
}

void CutText(char (&field)[textFieldSize]) noexcept {
    const std::string_view text = TextOf(field);
    if (text.size() == textFieldSize) SetText(field, text);
}

}  // namespace kesto
