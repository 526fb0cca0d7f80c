#pragma once

#include <string_view>

namespace platform {

// Opens pages of the system's settings and the like in the program that is meant for them.
class UrlOpener {
  public:
    virtual ~UrlOpener() = default;
    // Returns at once. Nothing happens when nothing on this desktop opens such a page.
    virtual void openUrl(std::string_view url) = 0;
};

}  // namespace platform
