/// Writing bytes to disk with the operating system's own calls: the part of saving that differs between systems.
#pragma once

#include <filesystem>
#include <string_view>

namespace kesto {

/// Makes a new file, overwriting one that is there, and waits until its bytes are on disk. No signal is raised.
/// @param permissions a file whose permissions the new one takes, where it exists; it must be writable
/// @return false when not all was written; the new file is then gone again
bool WriteNewFile(const std::filesystem::path& path, std::string_view text, const std::filesystem::path& permissions);

/// Writes to something that is there already and is no regular file. No signal is raised.
bool WriteExistingFile(const std::filesystem::path& path, std::string_view text);

/// Gives a file the name of another one, which it replaces at once, and waits, where the system can, until that is on
/// disk.
/// @return false when nothing was changed
/// @throws std::bad_alloc with nothing changed
bool MoveOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace kesto
