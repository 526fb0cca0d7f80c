#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/Windows.h"

namespace platform::simulated {

// A tag window in memory: what it was last told.
struct SimulatedWindow {
    Rect frame;
    bool acceptsMouse = false;
    double alpha = 1;
    bool ignoresMouseEvents = false;
    TagLayers layers;
    std::string title;
    double contentScale = 1;
    bool orderedIn = false;
    TagWindowDelegate* delegate = nullptr;
    std::vector<Rect> frames;    // every frame it was given, in order
    std::vector<double> alphas;  // every alpha it was given, in order
};

// A window system in memory, which a test looks into and drives.
class SimulatedWindowSystem final : public WindowSystem {
  public:
    std::unique_ptr<TagSurface> makeTagSurface(const Rect& frame, bool acceptsMouse,
                                               TagWindowDelegate& delegate) override;
    [[nodiscard]] bool takesClicksOnOutlineOnly() const override { return hasOutlines; }

    // The live windows by number, oldest first.
    std::map<WindowNumber, SimulatedWindow> windows;
    // Whether a window counts as being on the active Space.
    std::function<bool(WindowNumber)> isOnActiveSpace = [](WindowNumber) { return true; };
    bool hasOutlines = false;  // clicks beside a tag go through by themselves
    // Called at a window's end, so that it is taken off its Space.
    std::function<void(WindowNumber)> windowClosed = [](WindowNumber) {};

  private:
    WindowNumber next_{1};
};

// Measures every character (byte) as wide as `widthPerPoint` times the font size, unless a text's width is
// given.
class SimulatedTextMeasurer final : public TextMeasurer {
  public:
    [[nodiscard]] double heavyTextWidth(std::string_view text, double fontSize) const override;

    double widthPerPoint = 0.5;
    std::map<std::string, double, std::less<>> widths;
};

}  // namespace platform::simulated
