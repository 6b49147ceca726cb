/// Names between the local multi-byte code page and UTF-8.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace kesto {

/// A code page that texts are converted from and to. What cannot be converted whole passes unchanged, and so does
/// everything where the code page is UTF-8 itself.
class CodePage {
public:
#if defined(_WIN32)
    using Identity = unsigned;  // number of the code page
#else
    using Identity = std::string;  // name as iconv knows it
#endif
    /// A code page by its identity. An unknown one converts nothing.
    explicit CodePage(Identity codePage) : identity(std::move(codePage)) {}

    /// The code page of the process: the ANSI code page on Windows, the character set of its locale elsewhere.
    static CodePage Local();

    std::string ToUtf8(std::string_view text) const;
    std::string FromUtf8(std::string_view text) const;

private:
    Identity identity;
};

/// A path as the host gives it. On Windows it is UTF-8, or else in the ANSI code page; elsewhere its bytes name the
/// file as they are.
std::filesystem::path LocalPath(std::string_view path);

/// Whether a whole file counts as UTF-8: sequences of one to three bytes only. One that the end of the file cuts short
/// still counts.
bool IsUtf8(std::string_view text) noexcept;

}  // namespace kesto
