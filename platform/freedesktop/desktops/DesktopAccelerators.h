#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Processes.h"
#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/desktops/AcceleratorLists.h"

namespace platform::freedesktop {

// The shortcuts that the running desktop keeps in its settings: Xfce's, those of GNOME, and of the desktops
// that keep theirs in the same way. Other desktops have none here.
class DesktopAccelerators {
  public:
    struct Services {
        MessageBus& bus;
        BackgroundProcesses& processes;
        RunLoop& runLoop;
        std::string desktops;  // the running desktop's names, as currentDesktops() gives them
    };
    using Answer = std::function<void(const std::vector<Accelerator>&)>;

    explicit DesktopAccelerators(Services services) : services_(std::move(services)) {}

    // Answers once, at a later turn of the main loop, with the shortcuts that are known after `patience`
    // at the latest; never when the subscription ends before.
    [[nodiscard]] Subscription read(Duration patience, Answer answer);
    // Calls `action` when one of them has changed, or may have: also at each new connection to the bus.
    [[nodiscard]] std::vector<Subscription> onChange(const std::function<void()>& action);
    [[nodiscard]] const std::string& desktops() const { return services_.desktops; }

  private:
    // What has been asked and not answered yet. Its asker keeps it.
    struct Question {
        Answer answer;
        Duration patience{};
        int missing = 0;  // answers: one for each that was asked, and one until all are
        std::vector<Accelerator> found;
        Subscription call;
        Timer allAsked;
        Timer deadline;
    };
    using Waiting = std::weak_ptr<Question>;

    void askXfce(Question& question, const Waiting& waiting);
    void askGsettings(Question& question, const Waiting& waiting);
    static void add(const Waiting& waiting, const std::vector<Accelerator>& accelerators);
    static void finish(const Waiting& waiting);

    Services services_;
};

}  // namespace platform::freedesktop
