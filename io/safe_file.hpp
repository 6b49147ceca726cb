/// Whole files in, whole files out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/result.hpp"

namespace kesto {

inline constexpr std::size_t largestFile = std::size_t{1} << 30U;  // bytes: a device may have no end

/// The content of a file.
/// @param path  file path as the host gives it
/// @param limit how many bytes are read at most
/// @return fails when the file cannot be opened or read (KESTO_FILE_NOT_OPENED); one above the limit counts as out of
///         memory (KESTO_FILE_OUT_OF_MEMORY)
Result<std::string> ReadWholeFile(const char* path, std::size_t limit = largestFile);

/// Writes a file so that an earlier one at this path stays whole until the new one is complete on disk: the text goes
/// to a file beside it, which then takes its place and its permissions. Symbolic links are followed to their target. A
/// target that exists and is no regular file (a device, a pipe) is written directly. A file that a killed call left
/// beside the target is overwritten.
/// @param path file path as the host gives it
/// @return fails with KESTO_FILE_NOT_WRITTEN when the file could not be written whole; an earlier file is then
///         untouched
Outcome WriteWholeFile(const std::string& path, std::string_view text);

}  // namespace kesto
