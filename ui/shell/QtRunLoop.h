#pragma once

#include <QObject>

#include "platform/RunLoop.h"
#include "platform/linux/DescriptorWatcher.h"

namespace ui {

// The main loop of the Qt application.
class QtRunLoop final : public platform::RunLoop, public platform::DescriptorWatcher {
  public:
    [[nodiscard]] platform::Instant now() const override;
    [[nodiscard]] platform::WallTime wallNow() const override;
    void post(std::function<void()> action) override;
    platform::Timer after(platform::Duration delay, std::function<void()> action) override;
    platform::Timer every(platform::Duration interval, platform::Duration tolerance,
                          std::function<void()> action) override;
    platform::Subscription watchReadable(int descriptor, std::function<void()> action) override;
    platform::Subscription watchWritable(int descriptor, std::function<void()> action) override;

  private:
    QObject mainThread_;  // posted actions run where this object lives
};

}  // namespace ui
