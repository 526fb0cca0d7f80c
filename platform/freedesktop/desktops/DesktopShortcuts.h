#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Keys.h"
#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/desktops/DesktopAccelerators.h"

namespace platform::freedesktop {

// How others write keys.
class KeySpelling {
  public:
    virtual ~KeySpelling() = default;

    // Qt's key code with its modifiers; absent when Qt has none for these keys.
    [[nodiscard]] virtual std::optional<std::uint32_t> qtKey(const KeyEvent& keys) const = 0;
    // Whether a text in GTK's spelling is these keys.
    [[nodiscard]] virtual bool isAccelerator(const std::string& accelerator, const KeyEvent& keys) const = 0;
};

// Asks the running desktop for what it does on some keys: KDE's shortcut daemon, and the settings of those
// that keep their shortcuts there. Other window managers do not say.
class DesktopShortcuts final : public SystemShortcuts {
  public:
    struct Services {
        MessageBus& bus;
        DesktopAccelerators& accelerators;
        const KeySpelling& spelling;
    };
    explicit DesktopShortcuts(const Services& services) : services_(services) {}

    [[nodiscard]] Subscription findUse(const KeyEvent& keys, Answer answer) override;

  private:
    // What has been asked and not answered yet. Its asker keeps it.
    struct Question {
        KeyEvent keys;
        Answer answer;
        int missing = 0;  // answers
        std::vector<Subscription> calls;
    };
    using Waiting = std::weak_ptr<Question>;

    void askKde(Question& question, const Waiting& waiting);
    void askOthers(Question& question, const Waiting& waiting);
    void look(const Waiting& waiting, const std::vector<Accelerator>& accelerators) const;
    static void settle(const Waiting& waiting, const std::optional<std::string>& action);

    Services services_;
};

}  // namespace platform::freedesktop
