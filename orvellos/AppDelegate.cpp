#include "orvellos/AppDelegate.h"

#include "orvellos/DebugLog.h"

namespace orvellos {

void AppDelegate::applicationDidFinishLaunching() {
    startCore();
}

void AppDelegate::startCore() {
    coreStarted_ = true;
    probeSpaceReader();
    tagManager_ = &makeTagManager_();
    tagManager_->start();
}

void AppDelegate::probeSpaceReader() const {
    const auto current = spaces_.currentSpaceUUID();
    logGeneral(current
                   ? "orvello-pro: SkyLight bridge OK, active space UUID=" + *current
                   : "orvello-pro: SkyLight bridge returned nil — symbols resolved but no space reported");
    logGeneral("orvello-pro: switch symbols — " + spaces_.symbolStatusLine());
}

void AppDelegate::applicationWillTerminate() {
    if (coreStarted_) tagManager_->stop();
}

}  // namespace orvellos
