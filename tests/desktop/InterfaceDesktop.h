#pragma once

#include <X11/keysym.h>

#include <fstream>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tests/desktop/TaggedDesktop.h"

namespace desktop_test {

// The rows of the status menu that can be chosen, counted from its top, on a desktop of four Spaces without
// warnings.
namespace menu_row {
inline constexpr int kCurrentSpace = 0;  // "Tag this Space…" or "Untag this Space"
inline constexpr int kFirstDesktop = 1;
inline constexpr int kEditTags = 5;
inline constexpr int kHideDuringWork = 7;
inline constexpr int kSettings = 9;
inline constexpr int kCheckForUpdates = 10;
inline constexpr int kAbout = 12;
inline constexpr int kQuit = 13;
}  // namespace menu_row

// The toolkit's highlight of the row that Return chooses.
inline constexpr Rgb kHighlight = 0x2B7DB0;

// A desktop on which the user does everything by mouse and keys.
class InterfaceDesktop : public DesktopWithTags {
  public:
    using DesktopWithTags::DesktopWithTags;

    // Starts the application and waits for its status button, in the corner where KWin moves it after it has
    // mapped it. The form for a first tag, which comes up where there is none, is closed.
    void startApplication() {
        const bool hasTags = std::filesystem::exists(dataFolder() / "orvello/tags.json");
        ASSERT_NO_FATAL_FAILURE(startApplicationAnew());
        if (hasTags) return;
        ASSERT_TRUE(hasKeyboard("Tag This Space"));
        press(XK_Escape);
        ASSERT_TRUE(isGone("Tag This Space"));
    }
    // Ends the application before, and starts it whatever panels come up.
    void startApplicationAnew() {
        application_.reset();
        application_.emplace(start({program("orvello")}));
        ASSERT_TRUE(waitUntil([&] {
            const auto place = x().geometry(statusButton());
            return place && place->x > 0;
        })) << application().standardError();
    }
    Process& application() { return application_.value(); }

    // The alert that has the keyboard; 0 when there is none. The status button has the same title.
    xcb_window_t alert() {
        const auto active = x().activeWindow();
        return active && x().text(*active, "_NET_WM_NAME") == "orvellos" ? *active : 0;
    }
    // A window that can be seen and whose type contains that word; 0 when there is none.
    xcb_window_t windowOfType(std::string_view word) {
        for (const auto each : x().allWindows()) {
            const auto types = x().atoms(each, "_NET_WM_WINDOW_TYPE");
            const bool isIt = std::ranges::any_of(
                types, [&](const auto& type) { return type.find(word) != std::string::npos; });
            if (isIt && x().mapState(each) == MapState::Viewable) return each;
        }
        return 0;
    }
    // The menu that is open; 0 when none is.
    xcb_window_t menu() { return windowOfType("MENU"); }
    // Waits for a menu and highlights its first row. A menu that has just come up may not have the keyboard
    // yet, so the key may have to be pressed again.
    void enterMenu() {
        ASSERT_TRUE(waitUntil([&] { return menu() != 0; }));
        const auto place = x().geometry(menu()).value();
        const auto isHighlighted = [&] { return takePicture(x(), place).count(kHighlight, 30) > 200; };
        ASSERT_TRUE(waitUntil([&] { return !isHighlighted(); })) << "the menu before may still fade";
        for (int tries = 0; tries < 4; ++tries) {
            press(XK_Down);
            if (waitUntil(isHighlighted, std::chrono::seconds(5))) return;
        }
        ASSERT_TRUE(isHighlighted());
    }
    // Opens the status menu, with its first row highlighted.
    void openMenu() {
        // A button that has just come up may still be on its way to its place.
        std::optional<Rectangle> place;
        ASSERT_TRUE(waitUntil([&] {
            const auto former = std::exchange(place, x().geometry(statusButton()));
            return place && place == former;
        }));
        devices().click(place->x + 12, place->y + place->height / 2);
        enterMenu();
    }
    // Opens the status menu and chooses a row by the arrow keys.
    void choose(int row) {
        openMenu();
        press(XK_Down, row);
        press(XK_Return);
        ASSERT_TRUE(waitUntil([&] { return menu() == 0; }));
    }

    void press(xcb_keysym_t key, int times = 1) {
        auto hands = devices();
        for (int i = 0; i < times; ++i) hands.typeKeys({hands.keyFor(key)});
    }
    // Lower-case letters.
    void type(std::string_view text) {
        for (const char letter : text) press(static_cast<xcb_keysym_t>(letter));
    }
    // Whether the panel comes up, with the keyboard.
    bool hasKeyboard(std::string_view title) {
        return waitUntil([&] { return shown(title) != 0 && x().activeWindow() == shown(title); });
    }
    bool isGone(std::string_view title) {
        return waitUntil([&] { return shown(title) == 0; });
    }

    // Where a toast that can be seen is, without its shadow.
    Rectangle capsuleOf(std::string_view toast) {
        const auto window = x().geometry(shown(toast)).value();
        const auto part = x().shape(shown(toast), ShapeKind::Input).at(0);
        return {window.x + part.x, window.y + part.y, part.width, part.height};
    }

    // The tags as they are stored.
    [[nodiscard]] nlohmann::json storedTags() const {
        std::ifstream file(dataFolder() / "orvello/tags.json");
        return nlohmann::json::parse(file, nullptr, false);
    }
    // Whether the stored tags come to have these labels, in any order.
    bool waitForLabels(std::vector<std::string> labels) {
        std::ranges::sort(labels);
        return waitUntil([&] {
            std::vector<std::string> stored;
            for (const auto& tag : storedTags())
                if (tag.contains("label")) stored.push_back(tag.at("label"));
            std::ranges::sort(stored);
            return stored == labels;
        });
    }
    [[nodiscard]] nlohmann::json storedTag(const std::string& label) const {
        for (const auto& tag : storedTags())
            if (tag.contains("label") && tag.at("label") == label) return tag;
        return nullptr;
    }
    // Moves the pointer into the middle of the tag, once it can be seen, and waits until it takes the mouse.
    bool pointAt(const std::string& label) {
        if (!waitUntil([&] { return x().mapState(window(label)) == MapState::Viewable; })) return false;
        const auto place = x().geometry(window(label)).value();
        return pointAtTag(window(label), place.x + place.width / 2, place.y + place.height / 2);
    }

  private:
    std::optional<Process> application_;
};

}  // namespace desktop_test
