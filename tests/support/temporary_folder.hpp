/// A folder for the files of one test, which no other run of the tests knows.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace kesto::test {

/// A new folder among the system's temporary ones, removed at the end of its scope.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::string& prefix = "kesto_") {
        std::random_device random;
        do {
            path = std::filesystem::temp_directory_path() / (prefix + std::to_string(random()));
        } while (!std::filesystem::create_directory(path));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    operator const std::filesystem::path&() const { return path; }  // NOLINT(google-explicit-constructor)
    std::string At(const std::string& name) const { return (path / name).string(); }

    /// Removes what is in it.
    void Empty() const {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(path, ignored)) {
            std::filesystem::remove_all(entry.path(), ignored);
        }
    }

private:
    std::filesystem::path path;
};

}  // namespace kesto::test
