#include "orvellos/menu/MainMenuItems.h"

#include <utility>

namespace orvellos {

std::vector<platform::MainMenu> mainMenu(std::function<void()> terminate) {
    using platform::EditAction;
    constexpr auto kCommand = platform::modifier::kCommand;
    constexpr auto kShift = platform::modifier::kShift;
    return {{"", {{"Quit orvellos", std::move(terminate), {'q', kCommand}}}},
            {"Edit",
             {{"Undo", EditAction::Undo, {'z', kCommand}},
              {"Redo", EditAction::Redo, {'z', kCommand | kShift}},
              {"Cut", EditAction::Cut, {'x', kCommand}},
              {"Copy", EditAction::Copy, {'c', kCommand}},
              {"Paste", EditAction::Paste, {'v', kCommand}},
              {"Select All", EditAction::SelectAll, {'a', kCommand}}}}};
}

}  // namespace orvellos
