#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

#include "tests/support/PrivateDesktop.h"

namespace benchmark {

// The tags and settings that a measured application finds, written before it starts.

inline constexpr std::size_t kUsualTags = 10;
// The application has done everything that belongs to its start by then.
inline constexpr std::chrono::seconds kSettlingTime(3);

// Tags the Spaces over and over again, which costs as much as tagging that many Spaces.
void tagSpaces(const desktop_test::PrivateDesktop& desktop, std::size_t count);
// Tags one Space alone (counted from 0).
void tagSpace(const desktop_test::PrivateDesktop& desktop, std::uint32_t space);
// Chooses the mode that shows tags for a glance alone.
void hideDuringWork(const desktop_test::PrivateDesktop& desktop);
// Gives the quick switcher the hotkey Control-Alt-Super-J.
void recordQuickSwitcherKey(const desktop_test::PrivateDesktop& desktop);

// Waits until the window manager lists that many windows. Throws std::runtime_error when it does not.
void awaitClients(desktop_test::PrivateDesktop& desktop, std::size_t count);
void awaitNoClients(desktop_test::PrivateDesktop& desktop);

}  // namespace benchmark
