#pragma once

#include <future>

namespace ui {

// Begins to read which fonts the system has, on a thread of its own, for the first text that is measured or
// painted waits for it and it takes as long as a good part of the toolkit's start.
[[nodiscard]] std::future<void> readFontConfiguration();

}  // namespace ui
