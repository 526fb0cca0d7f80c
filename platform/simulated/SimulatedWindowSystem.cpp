#include "platform/simulated/SimulatedWindowSystem.h"

namespace platform::simulated {

namespace {

class SimulatedTagSurface final : public TagSurface {
  public:
    SimulatedTagSurface(SimulatedWindowSystem& system, WindowNumber number)
        : system_(system), number_(number) {}
    ~SimulatedTagSurface() override {
        system_.windows.erase(number_);
        system_.windowClosed(number_);
    }
    SimulatedTagSurface(const SimulatedTagSurface&) = delete;
    SimulatedTagSurface& operator=(const SimulatedTagSurface&) = delete;

    [[nodiscard]] WindowNumber number() const override { return number_; }
    [[nodiscard]] WindowState state() const override {
        const auto& window = system_.windows.at(number_);
        const bool onActiveSpace = system_.isOnActiveSpace(number_);
        return {window.orderedIn, onActiveSpace, window.orderedIn && onActiveSpace && window.alpha > 0};
    }
    void setFrame(const Rect& frame) override {
        window().frame = frame;
        window().frames.push_back(frame);
    }
    void setAlpha(double alpha) override {
        window().alpha = alpha;
        window().alphas.push_back(alpha);
    }
    void setIgnoresMouseEvents(bool ignores) override { window().ignoresMouseEvents = ignores; }
    void setContents(const TagLayers& layers, const std::string& title) override {
        window().layers = layers;
        window().title = title;
    }
    void setContentScale(double scale) override { window().contentScale = scale; }
    void setOrderedIn(bool orderedIn) override { window().orderedIn = orderedIn; }

  private:
    SimulatedWindow& window() { return system_.windows.at(number_); }

    SimulatedWindowSystem& system_;
    WindowNumber number_;
};

}  // namespace

std::unique_ptr<TagSurface> SimulatedWindowSystem::makeTagSurface(const Rect& frame, bool acceptsMouse,
                                                                  TagWindowDelegate& delegate) {
    const auto number = next_;
    ++next_.value;
    auto& window = windows[number];
    window.frame = frame;
    window.acceptsMouse = acceptsMouse;
    window.delegate = &delegate;
    return std::make_unique<SimulatedTagSurface>(*this, number);
}

double SimulatedTextMeasurer::heavyTextWidth(std::string_view text, double fontSize) const {
    const auto known = widths.find(text);
    return known != widths.end() ? known->second
                                 : static_cast<double>(text.size()) * widthPerPoint * fontSize;
}

}  // namespace platform::simulated
