#pragma once

#include <filesystem>

namespace desktop_test {

// A new folder that only this user can enter, removed with all it holds.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// Writes a text file, making the folders above it.
void writeFile(const std::filesystem::path& path, const std::string& text);

}  // namespace desktop_test
