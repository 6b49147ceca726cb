#include "io/file_output.hpp"

#if defined(_WIN32)
#include <windows.h>

#include <algorithm>
#else
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): the signal masks are POSIX, not C++
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#endif

namespace kesto {

namespace fs = std::filesystem;

#if defined(_WIN32)

namespace {

inline constexpr std::size_t largestPiece = std::size_t{1} << 30U;  // bytes that one call writes

bool WriteTo(const fs::path& path, std::string_view text, DWORD disposition) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    bool whole = true;
    while (whole && !text.empty()) {
        DWORD written = 0;
        const auto piece = static_cast<DWORD>(std::min(text.size(), largestPiece));
        whole = WriteFile(file, text.data(), piece, &written, nullptr) && written > 0;
        text.remove_prefix(written);
    }
    if (disposition == CREATE_ALWAYS) whole = whole && FlushFileBuffers(file);
    return CloseHandle(file) && whole;
}

}  // namespace

bool WriteNewFile(const fs::path& path, std::string_view text, const fs::path& permissions) {
    const DWORD attributes = GetFileAttributesW(permissions.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY)) return false;
    if (WriteTo(path, text, CREATE_ALWAYS)) return true;
    DeleteFileW(path.c_str());
    return false;
}

bool WriteExistingFile(const fs::path& path, std::string_view text) { return WriteTo(path, text, OPEN_EXISTING); }

bool MoveOver(const fs::path& from, const fs::path& to) {
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

#else

namespace {

inline constexpr mode_t newFileMode = 0666;     // before the process's mask
inline constexpr mode_t permissionMask = 0777;  // a saved file carries no special bits over

/// An open file, closed at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int opened) noexcept : number(opened) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    bool IsOpen() const noexcept { return number >= 0; }
    int Number() const noexcept { return number; }
    /// @return false when the system reports an error that it had kept back until now
    bool Close() noexcept {
        if (!IsOpen()) return true;
        const int closed = close(number);
        number = -1;
        return closed == 0 || errno == EINTR;
    }

private:
    int number;
};

/// Holds back, in this thread and scope, the signals that would end the process when a pipe is broken or a file reaches
/// the process's size limit: the failing write then tells by its result.
class HeldSignals {
public:
    HeldSignals() noexcept {
        sigset_t held;
        sigemptyset(&held);
        for (const int number : numbers) sigaddset(&held, number);
        sigpending(&pendingBefore);
        pthread_sigmask(SIG_BLOCK, &held, &maskBefore);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() {
        for (const int number : numbers) Take(number);
        pthread_sigmask(SIG_SETMASK, &maskBefore, nullptr);
    }

private:
    static constexpr std::array numbers{SIGPIPE, SIGXFSZ};

    /// Removes a signal that has come up since the construction.
    void Take(int number) const noexcept {
        sigset_t pending;
        sigpending(&pending);
        if (sigismember(&pending, number) != 1 || sigismember(&pendingBefore, number) == 1) return;
        sigset_t one;
        sigemptyset(&one);
        sigaddset(&one, number);
        int taken = 0;
        sigwait(&one, &taken);
    }

    sigset_t pendingBefore{};
    sigset_t maskBefore{};
};

inline constexpr uid_t keepOwner = static_cast<uid_t>(-1);

/// Makes a system call again for as long as signals interrupt it.
template <class Call>
auto Uninterrupted(Call call) noexcept -> decltype(call()) {
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

int Open(const fs::path& path, int flags, mode_t mode = 0) noexcept {
    return Uninterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); });  // NOLINT: it is variadic
}

bool WriteAll(int file, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = Uninterrupted([&] { return write(file, text.data(), text.size()); });
        if (written <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Waits until a file is on disk. A file system that cannot tell counts as done.
bool Sync(int file) noexcept {
    return Uninterrupted([&] { return fsync(file); }) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// Makes the file, with the permissions of another one where that exists.
bool FillNewFile(const fs::path& path, std::string_view text, const struct stat* like) noexcept {
    const mode_t mode = like != nullptr ? like->st_mode & permissionMask : newFileMode;
    Descriptor file(Open(path, O_WRONLY | O_CREAT | O_EXCL, mode));
    if (!file.IsOpen()) return false;
    if (like != nullptr) {
        // Another owner can be set by the superuser only; everybody else goes on as the file's new owner, in its group
        // if they belong to it. Another group gets no more than everybody.
        const bool inGroup = fchown(file.Number(), like->st_uid, like->st_gid) == 0 ||
                             fchown(file.Number(), keepOwner, like->st_gid) == 0;
        const mode_t others = mode & S_IRWXO;
        const mode_t allowed = inGroup ? mode : (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & (others << 3U));
        if (fchmod(file.Number(), allowed) != 0) return false;
    }
    return WriteAll(file.Number(), text) && Sync(file.Number()) && file.Close();
}

}  // namespace

bool WriteNewFile(const fs::path& path, std::string_view text, const fs::path& permissions) {
    struct stat like {};
    const bool exists = stat(permissions.c_str(), &like) == 0;
    if (exists && access(permissions.c_str(), W_OK) != 0) return false;
    const HeldSignals held;
    unlink(path.c_str());  // the leftover of a killed save: a new file, not what the name may lead to
    if (FillNewFile(path, text, exists ? &like : nullptr)) return true;
    unlink(path.c_str());
    return false;
}

bool WriteExistingFile(const fs::path& path, std::string_view text) {
    const HeldSignals held;
    Descriptor file(Open(path, O_WRONLY | O_TRUNC));
    return file.IsOpen() && WriteAll(file.Number(), text) && file.Close();
}

bool MoveOver(const fs::path& from, const fs::path& to) {
    const fs::path folder = to.has_parent_path() ? to.parent_path() : ".";
    if (std::rename(from.c_str(), to.c_str()) != 0) return false;
    const Descriptor opened(Open(folder, O_RDONLY));
    if (opened.IsOpen()) Sync(opened.Number());
    return true;
}

#endif

}  // namespace kesto
