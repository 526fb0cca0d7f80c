#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/Picture.h"
#include "tests/support/PrivateDesktop.h"

namespace desktop_test {

struct TagOnDesktop {
    const char* label;
    const char* colorHex;
    Rgb color;
};
// The tags of the first three desktops; the fourth has none.
inline constexpr TagOnDesktop kTags[] = {
    {"Mail", "#3B82F6", 0x3B82F6}, {"Code", "#10B981", 0x10B981}, {"Music", "#EF4444", 0xEF4444}};
inline constexpr std::size_t kNoTag = std::size(kTags);
inline constexpr int kEnoughPixels = 600;  // of a tag's own colour, which its highlight lightens at the top

// Whether the monitors of the desktop can be changed.
enum class HasMonitors { No, Yes };

// A desktop on which tags can be found.
class DesktopWithTags : public PrivateDesktop {
  public:
    using PrivateDesktop::PrivateDesktop;

    // The older (the tag) or the newer (its backup) of the windows with that label; 0 while there are not
    // both.
    xcb_window_t window(const std::string& label, bool backup = false) {
        std::vector<xcb_window_t> found;
        for (const auto each : x().allWindows())
            if (x().text(each, "_NET_WM_NAME") == label && x().cardinal(each, "_NET_WM_PID"))
                found.push_back(each);
        std::ranges::sort(found);
        if (found.size() != 2) return 0;
        return backup ? found.back() : found.front();
    }

    // Moves the pointer there and waits until the tag's frame takes the mouse where the tag does.
    bool pointAtTag(xcb_window_t tag, int pointerX, int pointerY) {
        devices().movePointer(pointerX, pointerY);
        return waitUntil([&] {
            const auto shape = x().shape(tag, ShapeKind::Input);
            return !shape.empty() && x().shape(x().frameOf(tag), ShapeKind::Input) == shape;
        });
    }

    // The application's window with that title that can be seen; 0 when there is none.
    xcb_window_t shown(std::string_view title) {
        for (const auto each : x().allWindows())
            if (x().text(each, "_NET_WM_NAME") == title && x().mapState(each) == MapState::Viewable)
                return each;
        return 0;
    }
    // Comes up a moment after the first tag; from then on the application has its keys.
    xcb_window_t statusButton() { return shown("orvellos"); }
};

// A desktop whose Spaces are tagged, before the application is started.
class TaggedDesktop : public DesktopWithTags {
  public:
    explicit TaggedDesktop(WindowManagerOptions windowManager, HasMonitors monitors = HasMonitors::No)
        : DesktopWithTags(
              {.windowManager = std::move(windowManager), .monitors = monitors == HasMonitors::Yes}) {
        const auto spaces = nlohmann::json::parse(run({program("orvello"), "dump"}).standardOutput);
        auto tags = nlohmann::json::array();
        for (std::size_t i = 0; i < std::size(kTags); ++i)
            tags.push_back({{"id", "0000000" + std::to_string(i) + "-1111-4111-8111-111111111111"},
                            {"label", kTags[i].label},
                            {"colorHex", kTags[i].colorHex},
                            {"spaceUUID", spaces.at(i).at("uuid")}});
        write(dataFolder() / "orvello/tags.json", tags);
    }

    static void write(const std::filesystem::path& file, const nlohmann::json& content) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << content;
    }

    // Whether the screen shows the tag of this desktop and of no other.
    bool showsTagOf(std::size_t desktop) {
        const auto picture = takePicture(x());
        for (std::size_t i = 0; i < std::size(kTags); ++i) {
            const int pixels = picture.count(kTags[i].color, 24);
            if (i == desktop ? pixels < kEnoughPixels : pixels > 0) return false;
        }
        return true;
    }
    bool waitForTagOf(std::size_t desktop) {
        return waitUntil([&] { return showsTagOf(desktop); });
    }
};

}  // namespace desktop_test
