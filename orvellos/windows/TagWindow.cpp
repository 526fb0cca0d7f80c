#include "orvellos/windows/TagWindow.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "orvellos/base/DebugLog.h"
#include "orvellos/base/Describe.h"
#include "orvellos/base/PathGeometry.h"
#include "orvellos/tags/TagColor.h"

namespace orvellos {

namespace {

using platform::Point;
using platform::Rect;
using platform::Size;

constexpr auto kFadeDuration = platform::seconds(0.25);
constexpr auto kFrameDuration = platform::seconds(0.22);
constexpr auto kFlashDuration = platform::seconds(0.36);  // there and back
constexpr double kFlashScale = 1.06;
constexpr auto kDoubleClickGuard = platform::seconds(0.2);
constexpr double kLargestClick = 5;
constexpr double kStackMargin = 24;
constexpr double kStackGap = 10;
constexpr Rect kAssumedScreen{0, 0, 1440, 900};

Rect clampedTo(const std::optional<platform::Screen>& screen, const Rect& frame) {
    if (!screen) return frame;
    const Point origin = clampOrigin(frame.origin(), frame.size(), ScreenLayout(*screen).draggableFrame);
    return {origin.x, origin.y, frame.width, frame.height};
}

// For the log; -1 without a screen.
int screenIndex(const std::vector<platform::Screen>& screens, Point point) {
    const auto* found = platform::screenAt(screens, point);
    return found ? static_cast<int>(found - screens.data()) : -1;
}

}  // namespace

TagWindow::TagWindow(const TagWindowServices& services, TagWindowOwner& owner, const Tag& tag, TagSize size,
                     std::size_t existing)
    : TagWindow(services, owner, tag, size, existing, false) {
    mcBackup_.reset(new TagWindow(services, owner, tag, BackupMark{}));
}

TagWindow::TagWindow(const TagWindowServices& services, TagWindowOwner& owner, const Tag& tag,
                     BackupMark /*mark*/)
    : TagWindow(services, owner, tag, TagSize::MissionControl, 0, true) {
    setIgnoresMouseEvents(true);
    setAlphaValue(0);
}

TagWindow::TagWindow(const TagWindowServices& services, TagWindowOwner& owner, const Tag& tag, TagSize size,
                     std::size_t existing, bool isBackup)
    : services_(services),
      owner_(owner),
      tagID_(tag.id),
      currentSize_(size),
      isBackup_(isBackup),
      alphaAnimation_(services.runLoop),
      frameAnimation_(services.runLoop),
      flashAnimation_(services.runLoop) {
    setLook(tag);
    frame_ = initialFrame(tag, existing);
    surface_ = services.windowSystem.makeTagSurface(frame_, !isBackup, *this);
    layOut();
}

TagWindow::~TagWindow() {
    if (isInGesture()) forgetGesture();
}

void TagWindow::setLook(const Tag& tag) {
    appearance_.label = tag.label;
    appearance_.fill = tagColor(tag);
    appearance_.labelColor = labelTextColor(tag);
}

Rect TagWindow::initialFrame(const Tag& tag, std::size_t existing) const {
    const Size size = sizeForLabel(tag.label);
    if (tag.frame) return centred(size, tag.frame->center());
    const auto main = services_.screens.mainScreen();
    const auto chosen = screenOfDisplay(services_.screens, services_.settings.globalAnchoredDisplay.get());
    const auto& screen = chosen ? chosen : main;
    if (const auto& anchor = services_.settings.globalAnchoredPosition.get(); anchor && screen)
        return anchoredFrame(size, *anchor, ScreenContext(*screen));
    const Rect area = main ? main->visibleFrame : kAssumedScreen;
    const double step = (size.height + kStackGap) * static_cast<double>(existing);
    return {area.maxX() - size.width - kStackMargin, area.maxY() - size.height - kStackMargin - step,
            size.width, size.height};
}

Size TagWindow::sizeForLabel(const std::string& label) const {
    return tagWindowSize(label, baseHeight(currentSize_, services_.screens.mainScreen()),
                         services_.settings.globalTagShape.get(), services_.textMeasurer);
}

Rect TagWindow::centred(Size size, Point center) const {
    const Point origin{center.x - size.width / 2, center.y - size.height / 2};
    const auto under = screenUnder(services_.screens, center);
    return clampedTo(under ? under : services_.screens.mainScreen(),
                     {origin.x, origin.y, size.width, size.height});
}

// Where no screen is preferred, the tag follows the pointer to another one.
std::optional<platform::Screen> TagWindow::screenForDrag(Point pointer) const {
    if (const auto preferred = owner_.preferredScreenProvider(tagID_)) return preferred;
    const auto under = screenUnder(services_.screens, pointer);
    return under ? under : ownScreen();
}

std::optional<platform::Screen> TagWindow::ownScreen() const {
    const auto shared = [this](const platform::Screen& screen) {
        const double width =
            std::min(frame_.maxX(), screen.frame.maxX()) - std::max(frame_.minX(), screen.frame.minX());
        const double height =
            std::min(frame_.maxY(), screen.frame.maxY()) - std::max(frame_.minY(), screen.frame.minY());
        return std::max(width, 0.0) * std::max(height, 0.0);
    };
    const auto screens = services_.screens.screens();
    const auto largest = std::ranges::max_element(screens, {}, shared);
    return largest == screens.end() || shared(*largest) <= 0 ? std::nullopt : std::optional(*largest);
}

std::string TagWindow::shortId() const {
    return tagID_.text().substr(0, 6);
}

bool TagWindow::hitMaskContains(Point screenPoint) const {
    const Rect tint = Rect{0, 0, frame_.width, frame_.height}.insetBy(kTagMargin);
    const Point inWindow{screenPoint.x - frame_.x, screenPoint.y - frame_.y};
    if (tint.isEmpty() || !tint.contains(inWindow)) return false;
    const auto silhouette = outlinePath(services_.settings.globalTagShape.get(), tint.width, tint.height);
    return contains(silhouette, {inWindow.x - tint.x, inWindow.y - tint.y});
}

void TagWindow::setAlphaValue(double alpha) {
    alphaAnimation_.stop();
    alpha_ = alpha;
    surface_->setAlpha(alpha);
}

void TagWindow::setIgnoresMouseEvents(bool ignores) {
    if (ignoresMouseEvents_ == ignores) return;
    ignoresMouseEvents_ = ignores;
    surface_->setIgnoresMouseEvents(ignores);
}

void TagWindow::orderFrontRegardless() {
    surface_->setOrderedIn(true);
}

void TagWindow::orderOut() {
    surface_->setOrderedIn(false);
}

void TagWindow::fade(bool visible) {
    setIgnoresMouseEvents(!visible);
    const double from = alpha_;
    const double to = visible ? 1 : 0;
    if (std::exchange(fadeTarget_, to) == to && alphaAnimation_.isRunning()) return;
    alphaAnimation_.start(kFadeDuration, [this, from, to, curve = visible ? kEaseOut : kEaseIn](double time) {
        alpha_ = from + (to - from) * curve.progress(time);
        surface_->setAlpha(alpha_);
    });
}

void TagWindow::revealInstantly() {
    setAlphaValue(1);
    setIgnoresMouseEvents(false);
}

void TagWindow::hideInstantly() {
    setAlphaValue(0);
    setIgnoresMouseEvents(true);
    mcBackup_->setAlphaValue(0);
}

void TagWindow::flash() {
    flashAnimation_.start(kFlashDuration, [this](double time) {
        const double there = time < 0.5 ? 2 * time : 2 - 2 * time;
        surface_->setContentScale(1 + (kFlashScale - 1) * kEaseInEaseOut.progress(there));
    });
}

void TagWindow::refreshShape() {
    layOut();
    if (mcBackup_) mcBackup_->refreshShape();
}

void TagWindow::update(const Tag& tag) {
    setLook(tag);
    applyFrameAndSize(currentSize_, tag.label, centred(sizeForLabel(tag.label), frame_.center()), false);
    if (mcBackup_) mcBackup_->update(tag);
}

void TagWindow::applyFrameAndSize(TagSize size, const std::string& label, const Rect& frame, bool animate) {
    currentSize_ = size;
    logIfCrossingDisplays(
        frame, fmt::format("applyFrameAndSize[{}]: cross-display move from screen#", redactedLabel(label)),
        fmt::format(" animate={}", animate));
    const bool relabelled = std::exchange(appearance_.label, label) != label;
    if (isInGesture()) {
        placeAfterGesture(frame);
        return layOut();
    }
    if (animate && !frame_.isEmpty() && !frame.isEmpty()) {
        if (relabelled) layOut();
        if (frame != targetFrame()) animateFrame(frame, cubicEaseInOut);
        return;
    }
    frameAnimation_.stop();
    if (debugEchoEnabled())
        log(LogCategory::Mc, fmt::format("[verbose] applyFrameAndSize[{}]: setFrame instant from {} → {}",
                                         redactedLabel(label), describe(frame_), describe(frame)));
    frame_ = frame;
    surface_->setFrame(frame);
    layOut();
    if (debugEchoEnabled())
        log(LogCategory::Mc, fmt::format("[verbose] applyFrameAndSize[{}]: setFrame returned, frame={}",
                                         redactedLabel(label), describe(frame_)));
}

void TagWindow::setFrameWithoutPersisting(const Rect& frame, bool animate) {
    logIfCrossingDisplays(frame, "setFrameWithoutPersisting: cross-display from screen#",
                          fmt::format(" animate={}", animate));
    if (isInGesture()) {
        placeAfterGesture(frame);
    } else if (animate) {
        animateFrame(frame, [](double time) { return kEaseInEaseOut.progress(time); });
    } else {
        frameAnimation_.stop();
        setFrame(frame);
    }
}

void TagWindow::logIfCrossingDisplays(const Rect& target, const std::string& start,
                                      const std::string& end) const {
    const auto screens = services_.screens.screens();
    const int from = screenIndex(screens, frame_.center());
    const int to = screenIndex(screens, target.center());
    if (from == to) return;
    log(LogCategory::Nav,
        fmt::format("{}{} {} -> screen#{} {}{}", start, from, describe(frame_), to, describe(target), end));
}

void TagWindow::animateFrame(const Rect& target, std::function<double(double)> easing) {
    animationTarget_ = target;
    frameAnimation_.start(
        kFrameDuration, [this, from = frame_, target, easing = std::move(easing)](double time) {
            if (time >= 1) return setFrame(target);
            const double e = easing(time);
            const auto between = [e](double a, double b) { return a + e * (b - a); };
            setFrame({between(from.x, target.x), between(from.y, target.y), between(from.width, target.width),
                      between(from.height, target.height)});
        });
}

void TagWindow::setFrame(const Rect& frame) {
    const bool resized = frame.size() != frame_.size();
    frame_ = frame;
    surface_->setFrame(frame);
    if (resized) layOut();
}

void TagWindow::layOut() {
    appearance_.shape = services_.settings.globalTagShape.get();
    if (isBackup_) appearance_.backupStyle = services_.settings.missionControlStyle.get();
    surface_->setContents(layOutTag(frame_.size(), appearance_, services_.textMeasurer),
                          displayedLabel(appearance_.label));
    if (isBackup_ && appearance_.backupStyle != MissionControlStyle::Pill && debugEchoEnabled())
        log(LogCategory::Mc, fmt::format("[verbose] BACKUP[{}] render style={} winFrame={} cvBounds={}",
                                         shortId(), rawValue(*appearance_.backupStyle), describe(frame_),
                                         describe(Rect{0, 0, frame_.width, frame_.height})));
}

void TagWindow::mouseDown(const platform::MouseEvent& event) {
    mouseDownScreenLocation_ = event.location;
    mouseDownWindowOrigin_ = frame_.origin();
    pointer_ = event.location;
    didDragThisGesture_ = false;
    if (frameAnimation_.isRunning()) placeAfterGesture(animationTarget_);
    services_.editingContext.begin("drag-" + tagID_.text());
    log(LogCategory::Nav, fmt::format("TagWindow[{}] mouseDown @ {} origin={}", shortId(),
                                      describe(event.location), describe(frame_.origin())));
}

void TagWindow::mouseDragged(const platform::MouseEvent& event) {
    didDragThisGesture_ = true;
    if (!mouseDownScreenLocation_ || !mouseDownWindowOrigin_) return;
    pointer_ = event.location;
    follow(frame_.size());
}

void TagWindow::follow(Size size) {
    const Point moved{mouseDownWindowOrigin_->x + pointer_.x - mouseDownScreenLocation_->x,
                      mouseDownWindowOrigin_->y + pointer_.y - mouseDownScreenLocation_->y};
    setFrame(clampedTo(screenForDrag(pointer_), {moved.x, moved.y, size.width, size.height}));
}

// The tag stays in the hand: it takes the size at once, held at the same part of its drawing.
void TagWindow::placeAfterGesture(const Rect& frame) {
    frameAnimation_.stop();
    frameAfterGesture_ = frame;
    const auto shift = [](double grip, double before, double after) {
        const double part = (grip - kTagMargin) / (before - 2 * kTagMargin);
        return grip - (kTagMargin + part * (after - 2 * kTagMargin));
    };
    auto& origin = *mouseDownWindowOrigin_;
    const Point& press = *mouseDownScreenLocation_;
    origin.x += shift(press.x - origin.x, frame_.width, frame.width);
    origin.y += shift(press.y - origin.y, frame_.height, frame.height);
    follow(frame.size());
}

void TagWindow::mouseUp(const platform::MouseEvent& event) {
    const auto now = services_.runLoop.now();
    if (lastMouseUpTime_ && now - *lastMouseUpTime_ < kDoubleClickGuard) {
        const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(now - *lastMouseUpTime_);
        log(LogCategory::Nav,
            fmt::format("TagWindow[{}] mouseUp SWALLOWED — {} ms after previous", shortId(), since.count()));
    } else {
        lastMouseUpTime_ = now;
        finishGesture(event);
    }
    forgetGesture();
}

void TagWindow::mouseCancelled() {
    forgetGesture();
}

void TagWindow::forgetGesture() {
    mouseDownScreenLocation_.reset();
    mouseDownWindowOrigin_.reset();
    didDragThisGesture_ = false;
    const auto frame = std::exchange(frameAfterGesture_, std::nullopt);
    if (frame && frame != frame_) setFrameWithoutPersisting(*frame, true);
    services_.editingContext.end("drag-" + tagID_.text());
}

void TagWindow::finishGesture(const platform::MouseEvent& event) {
    const Point start = mouseDownScreenLocation_.value_or(event.location);
    const double dx = std::abs(event.location.x - start.x);
    const double dy = std::abs(event.location.y - start.y);
    const bool isClick = std::max(dx, dy) <= kLargestClick;
    log(LogCategory::Nav, fmt::format("TagWindow[{}] mouseUp dx={:.1f} dy={:.1f} didDrag={} → {}", shortId(),
                                      dx, dy, didDragThisGesture_, isClick ? "click" : "drag"));
    if (isBackup_) return;
    if (isClick) {
        log(LogCategory::Nav, fmt::format("TagWindow[{}] → onClick()", shortId()));
        owner_.onClick();
    } else {
        frameAfterGesture_.reset();
        owner_.onFrameChange(tagID_, frame_, event.shiftHeld);
    }
}

Rect TagWindow::constrainFrame(const Rect& proposed) {
    const Rect constrained = clampedTo(owner_.preferredScreenProvider(tagID_), proposed);
    const bool resized = constrained.size() != frame_.size();
    frame_ = constrained;
    if (resized) layOut();
    return constrained;
}

}  // namespace orvellos
