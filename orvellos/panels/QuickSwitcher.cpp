#include "orvellos/panels/QuickSwitcher.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "orvellos/base/Text.h"
#include "orvellos/tags/Labels.h"
#include "platform/Keys.h"

namespace orvellos {

namespace key = platform::key;

QuickSwitcher::QuickSwitcher(std::vector<MenuSpaceRow> rows, Owner& owner) : owner_(owner) {
    setRows(std::move(rows));
}

void QuickSwitcher::showAgain(std::vector<MenuSpaceRow> rows) {
    setRows(std::move(rows));
    shownAgain_.notify();
}

void QuickSwitcher::setRows(std::vector<MenuSpaceRow> rows) {
    entries_.clear();
    for (auto& row : rows) {
        auto label = row.tag ? lowerCased(row.tag->label) : std::string();
        auto desktop = fmt::format("desktop {}", row.displayIndex);
        entries_.push_back({std::move(row), std::move(label), std::move(desktop)});
    }
    filter();
    const auto active = std::ranges::find_if(filtered_, &MenuSpaceRow::isActive);
    const bool isThere = active != filtered_.end();
    selectedIndex_ = isThere ? static_cast<std::size_t>(active - filtered_.begin()) : 0;
}

void QuickSwitcher::setQuery(std::string_view query) {
    queryIsEmpty_ = query.empty();
    query_ = lowerCased(trimmed(query));
    filter();
    selectedIndex_ = 0;
}

void QuickSwitcher::filter() {
    filtered_.clear();
    for (const auto& entry : entries_)
        if (matches(entry, query_)) filtered_.push_back(entry.row);
}

bool QuickSwitcher::matches(const Entry& entry, const std::string& query) {
    return query.empty() || (entry.row.tag && entry.label.find(query) != std::string::npos) ||
           entry.desktop.find(query) != std::string::npos;
}

void QuickSwitcher::moveSelection(std::ptrdiff_t delta) {
    const auto count = static_cast<std::ptrdiff_t>(filtered_.size());
    if (count == 0) return;
    const auto moved = (static_cast<std::ptrdiff_t>(selectedIndex_) + delta + count) % count;
    selectedIndex_ = static_cast<std::size_t>(moved);
}

void QuickSwitcher::activateSelected() const {
    if (selectedIndex_ < filtered_.size()) jump(MenuSpaceRow(filtered_[selectedIndex_]));
}

void QuickSwitcher::jump(const MenuSpaceRow& row) const {
    auto& owner = owner_;
    owner.navigate(row);
    owner.onClose();
}

bool QuickSwitcher::keyDown(std::uint16_t keyCode) {
    switch (keyCode) {
        case key::kReturn:
        case key::kKeypadEnter:
            activateSelected();
            return true;
        case key::kUpArrow:
            moveSelection(-1);
            return true;
        case key::kDownArrow:
            moveSelection(1);
            return true;
        case key::kEscape:
            owner_.onClose();
            return true;
        default:
            return false;
    }
}

std::string QuickSwitcher::title(const MenuSpaceRow& row) {
    return row.tag ? shortLabel(row.tag->label) : std::string(kUntagged);
}

std::string QuickSwitcher::desktopText(const MenuSpaceRow& row) {
    return fmt::format("Desktop {}", row.displayIndex);
}

std::string QuickSwitcher::accessibilityLabel(const MenuSpaceRow& row) {
    return fmt::format("{}, {}{}", row.tag ? shortLabel(row.tag->label) : "Untagged", desktopText(row),
                       row.isActive ? ", current Space" : "");
}

std::string_view QuickSwitcher::emptyText() const {
    return queryIsEmpty_ ? "No Spaces" : "No matches";
}

}  // namespace orvellos
