#pragma once

#include <functional>
#include <utility>

#include "platform/Observers.h"

namespace platform {

// What an overview shows: windows beside small pictures of the Spaces, or the Spaces alone, large.
enum class OverviewKind { None, Windows, DesktopGrid };

// A part of the desktop that can tell whether the desktop's overview of windows and Spaces is open.
class OverviewSource {
  public:
    virtual ~OverviewSource() = default;

    // Whether there is anything that could open one.
    [[nodiscard]] virtual bool mayOpen() const = 0;
    // As far as is known; asked many times a second, so it never waits.
    [[nodiscard]] virtual bool isOverviewOpen() const = 0;
    // Told when one of these may have changed.
    Subscription onOverviewChanged(std::function<void()> action) {
        return changed_.subscribe(std::move(action));
    }

  protected:
    void tellOverviewChanged() const { changed_.notify(); }

  private:
    Observers<> changed_;
};

}  // namespace platform
