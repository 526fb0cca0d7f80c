#pragma once

#include <functional>
#include <vector>

#include "platform/Menus.h"

namespace orvellos {

// The application menu and the "Edit" menu.
[[nodiscard]] std::vector<platform::MainMenu> mainMenu(std::function<void()> terminate);

}  // namespace orvellos
