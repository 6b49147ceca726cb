/// Tests that write and read files in a folder of their own.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/temporary_folder.hpp"

namespace kesto::test {

/// The bytes of a file; empty where there is none.
inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class FolderTest : public testing::Test {
protected:
    std::string At(const std::string& name) const { return (folder / name).string(); }
    std::string Content(const std::string& name) const { return ReadFile(folder / name); }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    std::ptrdiff_t FileCount() const {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    }

private:
    const TemporaryFolder temporary{"kesto.ROAD_"};  // capitals and an extension, as users' folders have

protected:
    const std::filesystem::path folder = temporary;
};

}  // namespace kesto::test
