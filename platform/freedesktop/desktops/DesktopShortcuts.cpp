#include "platform/freedesktop/desktops/DesktopShortcuts.h"

#include <utility>

namespace platform::freedesktop {

namespace {

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
    askKde(*question, waiting);
    askOthers(*question, waiting);
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
    for (const auto& accelerator : accelerators)
        if (services_.spelling.isAccelerator(accelerator.keys, question->keys))
            return settle(waiting, accelerator.action);
    settle(waiting, std::nullopt);
}

void DesktopShortcuts::askKde(Question& question, const Waiting& waiting) {
    const auto qtKey = services_.spelling.qtKey(question.keys);
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

void DesktopShortcuts::askOthers(Question& question, const Waiting& waiting) {
    ++question.missing;
    question.calls.push_back(services_.accelerators.read(
        kLongestBusCall, [this, waiting](const auto& accelerators) { look(waiting, accelerators); }));
}

}  // namespace platform::freedesktop
