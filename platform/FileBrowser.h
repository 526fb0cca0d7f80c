#pragma once

#include <filesystem>

namespace platform {

// The desktop's file browser.
class FileBrowser {
  public:
    virtual ~FileBrowser() = default;

    // Shows the file, selected, in its folder. Returns at once; a desktop without a file browser does
    // nothing.
    virtual void reveal(const std::filesystem::path& file) = 0;
};

}  // namespace platform
