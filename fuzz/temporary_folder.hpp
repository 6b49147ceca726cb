/// A folder of this process alone, below the system's folder for temporary files, removed at its end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "require.hpp"

namespace kesto::fuzz {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string made = (std::filesystem::temp_directory_path() / "kesto_fuzz_XXXXXX").string();
        Require(mkdtemp(made.data()) != nullptr, "a temporary folder can be made");
        path = made;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }

    /// The path of a file in it. The name holds no separator.
    std::string File(const std::string& name) const { return path + '/' + name; }

    /// Removes what is in it.
    void Empty() const {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(path, error)) {
            std::filesystem::remove_all(entry.path(), error);
        }
    }

private:
    std::string path;
};

}  // namespace kesto::fuzz
