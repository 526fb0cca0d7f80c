#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/windows/MenuSpaceRow.h"
#include "platform/Observers.h"

namespace orvellos {

// The texts and the operations of the panel for jumping to a Space by typing. It lists the Spaces of the
// moment in which it is shown.
class QuickSwitcher {
  public:
    static constexpr std::string_view kPlaceholder = "Jump to Space…";
    static constexpr std::string_view kUntagged = "(untagged)";
    static constexpr std::string_view kRowHint = "Jumps to this Space";

    // Whoever shows the switcher.
    class Owner {
      public:
        virtual ~Owner() = default;
        // Goes to the row's Space.
        virtual void navigate(const MenuSpaceRow& row) = 0;
        // Closes the panel, and may end the switcher.
        virtual void onClose() = 0;
    };
    QuickSwitcher(std::vector<MenuSpaceRow> rows, Owner& owner);

    // To be called when the panel is shown again: selects the current Space among the rows that match the
    // query.
    void showAgain(std::vector<MenuSpaceRow> rows);
    // Called after it was shown again.
    platform::Subscription subscribe(std::function<void()> callback) {
        return shownAgain_.subscribe(std::move(callback));
    }

    // Filters the rows by the text that the user has typed, and selects the first that matches.
    void setQuery(std::string_view query);
    [[nodiscard]] const std::vector<MenuSpaceRow>& filteredRows() const { return filtered_; }
    // Into the filtered rows; 0 when there are none.
    [[nodiscard]] std::size_t selectedIndex() const { return selectedIndex_; }
    // Wraps around at both ends.
    void moveSelection(std::ptrdiff_t delta);
    // One of the filtered rows.
    void select(std::size_t index) { selectedIndex_ = index; }
    void activateSelected() const;
    void jump(const MenuSpaceRow& row) const;
    // Whether the switcher has used this key (a virtual key code); otherwise it goes to the search field.
    bool keyDown(std::uint16_t keyCode);

    [[nodiscard]] static std::string title(const MenuSpaceRow& row);
    [[nodiscard]] static std::string desktopText(const MenuSpaceRow& row);
    [[nodiscard]] static std::string accessibilityLabel(const MenuSpaceRow& row);
    // Shown in place of the rows when there are none.
    [[nodiscard]] std::string_view emptyText() const;

  private:
    struct Entry {
        MenuSpaceRow row;
        std::string label;    // in lower case; empty without a tag
        std::string desktop;  // "desktop " and the number
    };
    [[nodiscard]] static bool matches(const Entry& entry, const std::string& query);
    void setRows(std::vector<MenuSpaceRow> rows);
    void filter();

    std::vector<Entry> entries_;
    Owner& owner_;
    std::string query_;  // trimmed and in lower case
    bool queryIsEmpty_ = true;
    std::vector<MenuSpaceRow> filtered_;
    std::size_t selectedIndex_ = 0;
    platform::Observers<> shownAgain_;
};

}  // namespace orvellos
