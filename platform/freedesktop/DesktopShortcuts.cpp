#include "platform/freedesktop/DesktopShortcuts.h"

#include <array>
#include <utility>

#include "platform/freedesktop/CurrentDesktop.h"

namespace platform::freedesktop {

namespace {

// Where the desktops that use GNOME's way keep the keys of their windows and programs.
struct Schema {
    const char* desktop;
    const char* name;
};
constexpr std::array kSchemas = {Schema{"GNOME", "org.gnome.desktop.wm.keybindings"},
                                 Schema{"GNOME", "org.gnome.mutter.keybindings"},
                                 Schema{"GNOME", "org.gnome.shell.keybindings"},
                                 Schema{"GNOME", "org.gnome.settings-daemon.plugins.media-keys"},
                                 Schema{"X-Cinnamon", "org.cinnamon.desktop.keybindings.wm"},
                                 Schema{"X-Cinnamon", "org.cinnamon.desktop.keybindings.media-keys"},
                                 Schema{"MATE", "org.mate.Marco.global-keybindings"},
                                 Schema{"MATE", "org.mate.Marco.window-keybindings"},
                                 Schema{"MATE", "org.mate.SettingsDaemon.plugins.media-keys"}};

// The daemon's answer: the component and the action, each by its own name and as the user knows it.
std::optional<std::string> actionOfKde(const std::optional<BusArguments>& arguments) {
    if (!arguments || arguments->size() != 1 || !(*arguments)[0].is_array()) return std::nullopt;
    const auto& names = (*arguments)[0];
    if (names.empty() || !names.back().is_string()) return std::nullopt;
    return names.back().get<std::string>();
}

}  // namespace

Subscription DesktopShortcuts::findUse(const KeyEvent& keys, Answer answer) {
    const auto question = std::make_shared<Question>();
    const Waiting waiting = question;
    question->keys = keys;
    question->answer = std::move(answer);
    question->missing = 1;
    askKde(*question, waiting);
    askXfce(*question, waiting);
    askGsettings(*question, waiting);
    auto& runLoop = services_.runLoop;
    question->allAsked = runLoop.after(Duration::zero(), [waiting] { settle(waiting, std::nullopt); });
    question->deadline = runLoop.after(kLongestBusCall, [waiting] {
        if (const auto late = waiting.lock()) late->missing = 1;
        settle(waiting, std::nullopt);
    });
    return Subscription([question] {});
}

// The last to answer says that there is no use, the first that knows one what it is.
void DesktopShortcuts::settle(const Waiting& waiting, const std::optional<std::string>& action) {
    const auto question = waiting.lock();
    if (!question || !question->answer) return;
    if (!action && --question->missing > 0) return;
    const auto answer = std::exchange(question->answer, nullptr);
    answer(action);
}

void DesktopShortcuts::look(const Waiting& waiting, const std::vector<Accelerator>& accelerators) const {
    const auto question = waiting.lock();
    if (!question) return;
    for (const auto& [accelerator, action] : accelerators)
        if (services_.isAccelerator(accelerator, question->keys)) return settle(waiting, action);
    settle(waiting, std::nullopt);
}

void DesktopShortcuts::askKde(Question& question, const Waiting& waiting) {
    const auto qtKey = services_.qtKey(question.keys);
    if (!qtKey) return;
    ++question.missing;
    question.calls.push_back(
        services_.bus.call({.service = "org.kde.kglobalaccel",
                            .path = "/kglobalaccel",
                            .interface = "org.kde.KGlobalAccel",
                            .member = "action",
                            .arguments = {static_cast<std::int32_t>(*qtKey)}},
                           [waiting](const auto& arguments) { settle(waiting, actionOfKde(arguments)); }));
}

void DesktopShortcuts::askXfce(Question& question, const Waiting& waiting) {
    if (!isAmongDesktops("XFCE", services_.desktops)) return;
    ++question.missing;
    question.calls.push_back(
        services_.bus.call({.service = "org.xfce.Xfconf",
                            .path = "/org/xfce/Xfconf",
                            .interface = "org.xfce.Xfconf",
                            .member = "GetAllProperties",
                            .arguments = {std::string("xfce4-keyboard-shortcuts"), std::string("/")}},
                           [this, waiting](const auto& arguments) {
                               const bool isAnswer = arguments && arguments->size() == 1;
                               look(waiting, acceleratorsOfXfce(isAnswer ? (*arguments)[0] : BusArguments()));
                           }));
}

void DesktopShortcuts::askGsettings(Question& question, const Waiting& waiting) {
    for (const auto& schema : kSchemas) {
        if (!isAmongDesktops(schema.desktop, services_.desktops)) continue;
        const std::array<std::string, 2> arguments = {"list-recursively", schema.name};
        const auto error =
            services_.processes.start("gsettings", arguments, [this, waiting](const auto& ended) {
                look(waiting, acceleratorsOfGsettings(ended.standardOutput));
            });
        if (!error) ++question.missing;
    }
}

}  // namespace platform::freedesktop
