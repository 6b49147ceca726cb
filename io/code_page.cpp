#include "io/code_page.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

#if defined(_WIN32)
#include <windows.h>
#else
#include <iconv.h>
#include <langinfo.h>

#include <cerrno>
#include <new>
#endif

namespace kesto {

namespace {

/// How many ASCII bytes a text begins with.
std::size_t AsciiBytes(std::string_view text) noexcept {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t count = 0;
    for (std::uint64_t word = 0; text.size() - count >= sizeof word; count += sizeof word) {
        std::memcpy(&word, text.data() + count, sizeof word);
        if ((word & highBits) != 0) break;  // most of a file is ASCII: eight bytes at once
    }
    while (count < text.size() && static_cast<unsigned char>(text[count]) < 0x80U) ++count;
    return count;
}

bool IsAscii(std::string_view text) noexcept { return AsciiBytes(text) == text.size(); }

#if defined(_WIN32)

constexpr unsigned utf8 = CP_UTF8;

std::optional<std::wstring> Widen(std::string_view text, unsigned from) {
    const int size = static_cast<int>(text.size());
    const int wideSize = MultiByteToWideChar(from, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
    if (wideSize <= 0) return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(from, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), wideSize);
    return wide;
}

std::optional<std::string> Convert(std::string_view text, unsigned from, unsigned to) {
    const std::optional<std::wstring> wide = Widen(text, from);
    if (!wide) return std::nullopt;
    const int wideSize = static_cast<int>(wide->size());
    BOOL lost = FALSE;  // may be asked for only where the target is not UTF-8, which loses nothing
    BOOL* const askLost = to == utf8 ? nullptr : &lost;
    const DWORD flags = to == utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int narrowSize = WideCharToMultiByte(to, flags, wide->data(), wideSize, nullptr, 0, nullptr, askLost);
    if (narrowSize <= 0 || lost) return std::nullopt;
    std::string narrow(static_cast<std::size_t>(narrowSize), '\0');
    WideCharToMultiByte(to, flags, wide->data(), wideSize, narrow.data(), narrowSize, nullptr, nullptr);
    return narrow;
}

#else

constexpr const char* utf8 = "UTF-8";

/// An iconv conversion, closed at the end of its scope.
class Converter {
public:
    /// @throws std::bad_alloc; a code page that the system does not know leaves the converter closed
    Converter(const std::string& from, const std::string& to) : handle(iconv_open(to.c_str(), from.c_str())) {
        // Memory that runs out while the conversion's module is loaded is told as an unknown code page. The second
        // attempt finds the module, or no memory from the start.
        if (!IsOpen() && errno == EINVAL) handle = iconv_open(to.c_str(), from.c_str());
        if (!IsOpen() && errno == ENOMEM) throw std::bad_alloc();
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (IsOpen()) iconv_close(handle);
    }

    /// The whole text converted; nothing when a character is invalid or has no exact counterpart.
    std::optional<std::string> Whole(std::string_view text) const {
        if (!IsOpen()) return std::nullopt;
        std::string input(text);
        char* next = input.data();
        std::size_t left = input.size();
        std::string result;
        if (!Feed(&next, &left, result) || !Feed(nullptr, nullptr, result)) return std::nullopt;
        return result;
    }

private:
    bool IsOpen() const noexcept { return handle != reinterpret_cast<iconv_t>(-1); }  // NOLINT: iconv's own sentinel

    /// One call of iconv, repeated while only room for the output is missing.
    bool Feed(char** next, std::size_t* left, std::string& result) const {
        std::array<char, 256> room{};
        while (true) {
            char* end = room.data();
            std::size_t free = room.size();
            const std::size_t inexact = iconv(handle, next, left, &end, &free);
            const bool full = inexact == static_cast<std::size_t>(-1) && errno == E2BIG;
            result.append(room.data(), end);
            if (!full) return inexact == 0;
        }
    }

    iconv_t handle;
};

std::optional<std::string> Convert(std::string_view text, const std::string& from, const std::string& to) {
    return Converter(from, to).Whole(text);
}

#endif

}  // namespace

CodePage CodePage::Local() {
#if defined(_WIN32)
    return CodePage(GetACP());
#else
    return CodePage(nl_langinfo(CODESET));
#endif
}

std::string CodePage::ToUtf8(std::string_view text) const {
    // Every local code page agrees with ASCII.
    if (identity == utf8 || IsAscii(text)) return std::string(text);
    return Convert(text, identity, utf8).value_or(std::string(text));
}

std::string CodePage::FromUtf8(std::string_view text) const {
    if (identity == utf8 || IsAscii(text)) return std::string(text);
    return Convert(text, utf8, identity).value_or(std::string(text));
}

std::filesystem::path LocalPath(std::string_view path) {
#if defined(_WIN32)
    if (const std::optional<std::wstring> wide = Widen(path, utf8)) return *wide;
    return Widen(path, CP_ACP).value_or(std::wstring());  // neither: names no file
#else
    return path;
#endif
}

bool IsUtf8(std::string_view text) noexcept {
    for (std::size_t at = 0; at < text.size();) {
        at += AsciiBytes(text.substr(at));
        if (at == text.size()) return true;
        const auto lead = static_cast<unsigned char>(text[at++]);
        if (lead < 0xC0U || lead >= 0xF0U) return false;
        const std::size_t end = std::min(text.size(), at + (lead < 0xE0U ? 1 : 2));
        for (; at < end; ++at) {
            if ((static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U) return false;
        }
    }
    return true;
}

}  // namespace kesto
