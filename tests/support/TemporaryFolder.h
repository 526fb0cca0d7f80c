#pragma once

#include <filesystem>
#include <string>

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
// All that is in a file; empty without one.
[[nodiscard]] std::string readFile(const std::filesystem::path& path);

}  // namespace desktop_test
