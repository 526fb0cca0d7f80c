#include "platform/freedesktop/desktops/DesktopAccelerators.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/freedesktop/desktops/CurrentDesktop.h"

namespace platform::freedesktop {

namespace {

constexpr const char* kXfconf = "org.xfce.Xfconf";
constexpr const char* kXfconfPath = "/org/xfce/Xfconf";
constexpr const char* kXfceChannel = "xfce4-keyboard-shortcuts";

// Where the desktops that use GNOME's way keep the keys of their windows and programs: the schema, and the
// folder of its settings.
struct Schema {
    const char* desktop;
    const char* name;
    std::string_view folder;
};
constexpr std::array kSchemas = {
    Schema{"GNOME", "org.gnome.desktop.wm.keybindings", "/org/gnome/desktop/wm/keybindings/"},
    Schema{"GNOME", "org.gnome.mutter", "/org/gnome/mutter/"},
    Schema{"GNOME", "org.gnome.mutter.keybindings", "/org/gnome/mutter/keybindings/"},
    Schema{"GNOME", "org.gnome.shell.keybindings", "/org/gnome/shell/keybindings/"},
    Schema{"GNOME", "org.gnome.settings-daemon.plugins.media-keys",
           "/org/gnome/settings-daemon/plugins/media-keys/"},
    Schema{"X-Cinnamon", "org.cinnamon.desktop.keybindings.wm", "/org/cinnamon/desktop/keybindings/wm/"},
    Schema{"X-Cinnamon", "org.cinnamon.desktop.keybindings.media-keys",
           "/org/cinnamon/desktop/keybindings/media-keys/"},
    Schema{"MATE", "org.mate.Marco.global-keybindings", "/org/mate/marco/global-keybindings/"},
    Schema{"MATE", "org.mate.Marco.window-keybindings", "/org/mate/marco/window-keybindings/"},
    Schema{"MATE", "org.mate.SettingsDaemon.plugins.media-keys",
           "/org/mate/settings-daemon/plugins/media-keys/"}};

std::vector<Schema> schemasOf(const std::string& desktops) {
    std::vector<Schema> schemas;
    std::ranges::copy_if(kSchemas, std::back_inserter(schemas),
                         [&](const Schema& schema) { return isAmongDesktops(schema.desktop, desktops); });
    return schemas;
}

// The signal of the settings' store: a path that all changes begin with, and the rest of each. A path that
// ends with a slash is a whole folder, which has been emptied.
bool isAboutAny(const std::vector<Schema>& schemas, const BusArguments& arguments) {
    if (arguments.size() < 2 || !arguments[0].is_string() || !arguments[1].is_array()) return false;
    return std::ranges::any_of(arguments[1], [&](const auto& rest) {
        if (!rest.is_string()) return false;
        const auto path = arguments[0].template get<std::string>() + rest.template get<std::string>();
        return std::ranges::any_of(schemas, [&](const Schema& schema) {
            return path.starts_with(schema.folder) ||
                   (path.ends_with('/') && schema.folder.starts_with(path));
        });
    });
}

}  // namespace

Subscription DesktopAccelerators::read(Duration patience, Answer answer) {
    const auto question = std::make_shared<Question>();
    const Waiting waiting = question;
    question->answer = std::move(answer);
    question->missing = 1;
    question->patience = patience;
    askXfce(*question, waiting);
    askGsettings(*question, waiting);
    question->allAsked = services_.runLoop.after(Duration::zero(), [waiting] { add(waiting, {}); });
    question->deadline = services_.runLoop.after(patience, [waiting] { finish(waiting); });
    return Subscription([question] {});
}

void DesktopAccelerators::add(const Waiting& waiting, const std::vector<Accelerator>& accelerators) {
    const auto question = waiting.lock();
    if (!question) return;
    question->found.insert(question->found.end(), accelerators.begin(), accelerators.end());
    if (--question->missing == 0) finish(waiting);
}

void DesktopAccelerators::finish(const Waiting& waiting) {
    const auto question = waiting.lock();
    if (!question || !question->answer) return;
    question->deadline.cancel();
    std::exchange(question->answer, nullptr)(question->found);
}

void DesktopAccelerators::askXfce(Question& question, const Waiting& waiting) {
    if (!isAmongDesktops("XFCE", services_.desktops)) return;
    ++question.missing;
    question.call =
        services_.bus.call({.service = kXfconf,
                            .path = kXfconfPath,
                            .interface = kXfconf,
                            .member = "GetAllProperties",
                            .arguments = {std::string(kXfceChannel), std::string("/")},
                            .timeout = question.patience},
                           [waiting](const auto& arguments) {
                               const bool isAnswer = arguments && arguments->size() == 1;
                               add(waiting, acceleratorsOfXfce(isAnswer ? (*arguments)[0] : BusArguments()));
                           });
}

void DesktopAccelerators::askGsettings(Question& question, const Waiting& waiting) {
    for (const auto& schema : schemasOf(services_.desktops)) {
        const std::array<std::string, 2> arguments = {"list-recursively", schema.name};
        const auto error = services_.processes.start("gsettings", arguments, [waiting](const auto& ended) {
            add(waiting, acceleratorsOfGsettings(ended.standardOutput));
        });
        if (!error) ++question.missing;
    }
}

std::vector<Subscription> DesktopAccelerators::onChange(const std::function<void()>& action) {
    std::vector<Subscription> subscriptions;
    const auto schemas = schemasOf(services_.desktops);
    if (isAmongDesktops("XFCE", services_.desktops))
        subscriptions.push_back(services_.bus.subscribe(
            {.sender = kXfconf, .path = kXfconfPath, .interface = kXfconf, .firstArgument = kXfceChannel},
            [action](const auto& /*change*/) { action(); }));
    if (!schemas.empty())
        subscriptions.push_back(services_.bus.subscribe({.sender = "ca.desrt.dconf",
                                                         .path = "/ca/desrt/dconf/Writer/user",
                                                         .interface = "ca.desrt.dconf.Writer",
                                                         .member = "Notify"},
                                                        [action, schemas](const auto& change) {
                                                            if (isAboutAny(schemas, change)) action();
                                                        }));
    if (!subscriptions.empty())
        subscriptions.push_back(services_.bus.onConnectionChanged([action](bool isConnected) {
            if (isConnected) action();
        }));
    return subscriptions;
}

}  // namespace platform::freedesktop
