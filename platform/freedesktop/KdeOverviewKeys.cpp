#include "platform/freedesktop/KdeOverviewKeys.h"

#include <array>
#include <string>
#include <utility>

namespace platform::freedesktop {

namespace {

// KWin's names for the actions that open an overview, whichever of its effects is loaded.
constexpr std::array kActions{"Overview", "ShowDesktopGrid", "Grid View", "Cube"};

// An action is known by its component and its own name; the other two parts are names for the user.
BusCall shortcutCall(const char* action) {
    return {.service = "org.kde.kglobalaccel",
            .path = "/kglobalaccel",
            .interface = "org.kde.KGlobalAccel",
            .member = "shortcut",
            .arguments = {std::vector<std::string>{"kwin", action, "", ""}}};
}

// From an array of signed numbers, 0 being no key.
void appendKeys(const std::optional<BusArguments>& arguments, std::vector<std::uint32_t>& keys) {
    if (!arguments || arguments->size() != 1 || !(*arguments)[0].is_array()) return;
    for (const auto& key : (*arguments)[0])
        if (key.is_number_integer() && key.get<std::int64_t>() != 0)
            keys.push_back(static_cast<std::uint32_t>(key.get<std::int64_t>()));
}

}  // namespace

void KdeOverviewKeys::request(const Callback& callback) {
    calls_.clear();
    keys_.clear();
    answersMissing_ = kActions.size();
    for (const auto* action : kActions)
        calls_.push_back(bus_.call(shortcutCall(action), [this, callback](const auto& arguments) {
            appendKeys(arguments, keys_);
            if (--answersMissing_ == 0) callback(std::exchange(keys_, {}));
        }));
}

}  // namespace platform::freedesktop
