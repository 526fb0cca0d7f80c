#pragma once

#include <optional>

namespace platform {

// The number of the Space that a window is on by the window manager's word, where Spaces are numbered by
// their places in a row. When the row changes, windows stay where they are and their numbers are others,
// which a window manager need not tell. So nothing that was told before counts, and of what is told
// afterwards only the answer to a question: the number that the window was asked for.
template <typename Number>
class SpaceNumber {
  public:
    // Absent until a number has been told that counts.
    [[nodiscard]] std::optional<Number> get() const { return isOutdated_ ? std::nullopt : told_; }
    // Where the window is to be: what was asked for and not answered yet, else where it is.
    [[nodiscard]] std::optional<Number> wanted() const { return asked_ ? asked_ : get(); }
    // Whether the row has changed since a number was told.
    [[nodiscard]] bool isOutdated() const { return isOutdated_; }

    // The row has changed.
    void outdate() {
        isOutdated_ = true;
        asked_.reset();
    }
    // The window manager is asked to have the window there.
    void ask(Number number) { asked_ = number; }
    // It has told that the window is there.
    void tell(Number number) {
        if (isOutdated_ && asked_ != number) return;
        isOutdated_ = false;
        told_ = number;
        asked_.reset();
    }

  private:
    std::optional<Number> told_;
    std::optional<Number> asked_;
    bool isOutdated_ = false;
};

}  // namespace platform
