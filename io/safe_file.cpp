#include "io/safe_file.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "core/status.hpp"
#include "io/code_page.hpp"
#include "io/file_output.hpp"

namespace kesto {

namespace fs = std::filesystem;

namespace {

inline constexpr std::size_t readPiece = 65536;                // bytes
inline constexpr int mostLinks = 40;                           // symbolic links in a row, then they form a ring
inline constexpr std::size_t longestFileName = 255;            // characters that common file systems take
inline constexpr const char* unfinishedExtension = ".saving";  // never the extension of a file that is opened

/// The file that a path leads to, which need not exist.
fs::path FollowLinks(fs::path path) {
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        const fs::path target = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / target;
    }
    return path;
}

/// Where the text stands until it is complete: a fixed name, so that the next save overwrites what a killed one left.
fs::path UnfinishedFile(const fs::path& target) {
    const fs::path extension = unfinishedExtension;
    fs::path::string_type name = target.filename().native();
    name.resize(std::min(name.size(), longestFileName - extension.native().size()));
    return target.parent_path() / (name += extension.native());
}

/// Removes a file at the end of its scope, unless it has got another name by then.
class RemovedAtLast {
public:
    explicit RemovedAtLast(const fs::path& file) noexcept : path(file) {}
    RemovedAtLast(const RemovedAtLast&) = delete;
    RemovedAtLast& operator=(const RemovedAtLast&) = delete;
    ~RemovedAtLast() {
        std::error_code error;
        if (!moved) fs::remove(path, error);
    }
    void Moved() noexcept { moved = true; }

private:
    const fs::path& path;
    bool moved = false;
};

bool ReplaceFile(const fs::path& target, std::string_view text) {
    const fs::path unfinished = UnfinishedFile(target);
    if (!WriteNewFile(unfinished, text, target)) return false;
    RemovedAtLast file(unfinished);  // however this ends: memory may run out before the move, too
    if (!MoveOver(unfinished, target)) return false;
    file.Moved();
    return true;
}

bool WriteFollowed(const fs::path& target, std::string_view text) {
    std::error_code error;
    const fs::file_type type = fs::status(target, error).type();
    if (type == fs::file_type::none) return false;
    const bool replaceable = type == fs::file_type::not_found || type == fs::file_type::regular;
    return replaceable ? ReplaceFile(target, text) : WriteExistingFile(target, text);
}

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { static_cast<void>(std::fclose(file)); }
};

}  // namespace

Result<std::string> ReadWholeFile(const char* path, std::size_t limit) {
#if defined(_WIN32)
    const std::unique_ptr<std::FILE, CloseFile> file(_wfopen(LocalPath(path).c_str(), L"rb"));
#else
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path, "rb"));
#endif
    if (!file) return Fail(errno == ENOMEM ? KESTO_FILE_OUT_OF_MEMORY : KESTO_FILE_NOT_OPENED);
    std::string text;
    std::error_code unknown;
    const std::uintmax_t size = fs::file_size(path, unknown);
    if (!unknown && size <= limit)
        text.reserve(static_cast<std::size_t>(size));  // only what it is likely to need: it may grow, or be no file
    std::string piece(readPiece, '\0');
    std::size_t count = 0;
    while ((count = std::fread(piece.data(), 1, piece.size(), file.get())) > 0) {
        if (text.size() + count > limit) return Fail(KESTO_FILE_OUT_OF_MEMORY);
        text.append(piece, 0, count);
    }
    if (std::ferror(file.get()) != 0) return Fail(KESTO_FILE_NOT_OPENED);
    return text;
}

Outcome WriteWholeFile(const std::string& path, std::string_view text) {
    if (!WriteFollowed(FollowLinks(LocalPath(path)), text)) return Fail(KESTO_FILE_NOT_WRITTEN);
    return {};
}

}  // namespace kesto
