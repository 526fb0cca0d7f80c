#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "orvellos/settings/Settings.h"
#include "orvellos/tags/Tag.h"
#include "orvellos/tags/TagLayout.h"
#include "orvellos/tags/TagStyle.h"
#include "orvellos/windows/Animation.h"
#include "orvellos/windows/EditingContext.h"
#include "orvellos/windows/HomeTarget.h"
#include "platform/Screens.h"
#include "platform/Windows.h"

namespace orvellos {

// What tag windows need of their surroundings.
struct TagWindowServices {
    platform::WindowSystem& windowSystem;
    platform::RunLoop& runLoop;
    const platform::Screens& screens;
    const platform::TextMeasurer& textMeasurer;
    Settings& settings;
    EditingContext& editingContext;
};

// What a main window asks of the one who made it; its backup asks for the screen, too.
class TagWindowOwner {
  public:
    virtual ~TagWindowOwner() = default;

    // The user dragged the window of that tag there.
    virtual void onFrameChange(const TagID& id, const platform::Rect& frame, bool shiftHeld) = 0;
    virtual void onClick() = 0;
    // The screen that the tag belongs to; absent when it has none.
    [[nodiscard]] virtual std::optional<platform::Screen> preferredScreenProvider(const TagID& id) const = 0;
};

// One screen as a dragged tag sees it.
struct ScreenLayout {
    platform::Rect frame;
    platform::Rect draggableFrame;  // where a tag may be dragged: 20 points past every edge

    explicit ScreenLayout(const platform::Screen& screen)
        : frame(screen.frame), draggableFrame(ScreenContext(screen).clampFrame) {}
};

// The floating window of one tag. It draws the tag, tells clicks from drags and animates; which Space it is
// on, and when it shows, is decided by its owner. A main window owns its Mission Control backup. Main thread
// only; coordinates are screen points.
class TagWindow final : public platform::TagWindowDelegate {
  public:
    // Makes the main window of a tag, with its backup. `existing` counts the windows that are there already;
    // windows without any other place are stacked by it.
    TagWindow(const TagWindowServices& services, TagWindowOwner& owner, const Tag& tag, TagSize size,
              std::size_t existing);
    ~TagWindow() override;
    TagWindow(const TagWindow&) = delete;
    TagWindow& operator=(const TagWindow&) = delete;

    [[nodiscard]] const TagID& tagID() const { return tagID_; }
    [[nodiscard]] TagWindow* mcBackup() const { return mcBackup_.get(); }
    [[nodiscard]] platform::WindowNumber windowNumber() const { return surface_->number(); }
    [[nodiscard]] const platform::Rect& frame() const { return frame_; }
    [[nodiscard]] TagSize currentSize() const { return currentSize_; }
    // Where the frame is going while it is animated; else the frame.
    [[nodiscard]] const platform::Rect& targetFrame() const {
        return frameAnimation_.isRunning() ? animationTarget_ : frame_;
    }
    [[nodiscard]] double alphaValue() const { return alpha_; }
    // Whether the window has this alpha and no fade is running.
    [[nodiscard]] bool restsAtAlpha(double alpha) const {
        return alpha_ == alpha && !alphaAnimation_.isRunning();
    }
    [[nodiscard]] bool ignoresMouseEvents() const { return ignoresMouseEvents_; }
    [[nodiscard]] platform::WindowState state() const { return surface_->state(); }
    [[nodiscard]] bool isInGesture() const { return mouseDownScreenLocation_.has_value(); }
    // Whether the point is part of the drawn tag: inside the margin and inside the silhouette.
    [[nodiscard]] bool hitMaskContains(platform::Point screenPoint) const;

    void setAlphaValue(double alpha);
    void setIgnoresMouseEvents(bool ignores);
    void orderFrontRegardless();
    void orderOut();

    // Lets a fade that is going there already go on.
    void fade(bool visible);
    void revealInstantly();
    // With the backup.
    void hideInstantly();
    // Points the tag out by a short swelling.
    void flash();

    // Lays the window, and then its backup, out anew.
    void refreshShape();
    // Takes another label and colour for the same tag, keeping the centre; the backup too.
    void update(const Tag& tag);
    void applyFrameAndSize(TagSize size, const std::string& label, const platform::Rect& frame, bool animate);
    // Moves the window without telling the owner.
    void setFrameWithoutPersisting(const platform::Rect& frame, bool animate);

    void mouseDown(const platform::MouseEvent& event) override;
    void mouseDragged(const platform::MouseEvent& event) override;
    void mouseUp(const platform::MouseEvent& event) override;
    void mouseCancelled() override;
    platform::Rect constrainFrame(const platform::Rect& proposed) override;

  private:
    struct BackupMark {};
    TagWindow(const TagWindowServices& services, TagWindowOwner& owner, const Tag& tag, BackupMark mark);
    TagWindow(const TagWindowServices& services, TagWindowOwner& owner, const Tag& tag, TagSize size,
              std::size_t existing, bool isBackup);

    [[nodiscard]] platform::Rect initialFrame(const Tag& tag, std::size_t existing) const;
    [[nodiscard]] platform::Size sizeForLabel(const std::string& label) const;
    [[nodiscard]] platform::Rect centred(platform::Size size, platform::Point center) const;
    [[nodiscard]] std::optional<platform::Screen> screenForDrag(platform::Point pointer) const;
    [[nodiscard]] std::optional<platform::Screen> ownScreen() const;
    [[nodiscard]] std::string shortId() const;
    void setLook(const Tag& tag);
    void setFrame(const platform::Rect& frame);
    void layOut();
    void animateFrame(const platform::Rect& target, std::function<double(double)> easing);
    void logIfCrossingDisplays(const platform::Rect& target, const std::string& start,
                               const std::string& end) const;
    void follow(platform::Size size);
    void placeAfterGesture(const platform::Rect& frame);
    void finishGesture(const platform::MouseEvent& event);
    void forgetGesture();

    TagWindowServices services_;
    TagWindowOwner& owner_;
    TagID tagID_;
    TagAppearance appearance_;
    std::optional<platform::Point> mouseDownScreenLocation_;
    std::optional<platform::Point> mouseDownWindowOrigin_;
    platform::Point pointer_;                          // where it was last in this gesture
    std::optional<platform::Rect> frameAfterGesture_;  // asked for meanwhile
    bool didDragThisGesture_ = false;
    std::optional<platform::Instant> lastMouseUpTime_;
    TagSize currentSize_;
    const bool isBackup_;
    platform::Rect frame_;
    platform::Rect animationTarget_;
    double alpha_ = 1;
    double fadeTarget_ = 1;  // of the last fade
    bool ignoresMouseEvents_ = false;
    std::unique_ptr<platform::TagSurface> surface_;
    std::unique_ptr<TagWindow> mcBackup_;
    Animation alphaAnimation_;
    Animation frameAnimation_;
    Animation flashAnimation_;
};

}  // namespace orvellos
