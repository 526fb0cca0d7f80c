#include "platform/freedesktop/session/PackageKitUpdates.h"

#include <algorithm>
#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr const char* kService = "org.freedesktop.PackageKit";
constexpr const char* kTransaction = "org.freedesktop.PackageKit.Transaction";
constexpr const char* kNoAnswer = "PackageKit does not answer.";

BusCall busCall(const char* member) {
    return {.service = kBus, .path = kBusPath, .interface = kBus, .member = member};
}

bool lists(const std::optional<BusArguments>& names, const char* name) {
    return names && names->size() == 1 && names->front().is_array() &&
           std::ranges::count(names->front(), BusArguments(name)) > 0;
}

std::optional<std::string> textAt(const BusArguments& arguments, std::size_t index) {
    if (index >= arguments.size() || !arguments[index].is_string()) return std::nullopt;
    return arguments[index].get<std::string>();
}

// The parts of a package id: "name;version;architecture;data".
std::pair<std::string, std::string> nameAndVersion(const std::string& packageId) {
    const auto first = packageId.find(';');
    if (first == std::string::npos) return {packageId, ""};
    const auto second = packageId.find(';', first + 1);
    return {packageId.substr(0, first), packageId.substr(first + 1, second - first - 1)};
}

}  // namespace

// It may run without being one that the bus can start.
void PackageKitUpdates::startUpdater(std::function<void(const MaybeError&)> started) {
    starting_ = bus_.call(busCall("ListActivatableNames"), [this, started](const auto& startable) {
        if (lists(startable, kService)) return started(std::nullopt);
        starting_ = bus_.call(busCall("ListNames"), [started](const auto& running) {
            started(lists(running, kService) ? MaybeError()
                                             : Error{"PackageKit is not available on this system."});
        });
    });
}

void PackageKitUpdates::checkForUpdates(std::function<void(const UpdateAnswer&)> answered) {
    answered_ = std::move(answered);
    newVersion_.reset();
    signals_.clear();
    question_ = bus_.call({.service = kService,
                           .path = "/org/freedesktop/PackageKit",
                           .interface = kService,
                           .member = "CreateTransaction",
                           .startsService = true,
                           .timeout = kLongestPatientCall},
                          [this](const auto& answer) {
                              const auto path = answer ? textAt(*answer, 0) : std::nullopt;
                              if (path)
                                  followTransaction(*path);
                              else
                                  finish(Error{kNoAnswer});
                          });
}

// The updates come as signals, up to one that says "finished".
void PackageKitUpdates::followTransaction(const std::string& path) {
    const auto follow = [&](const char* member, MessageBus::Handler handler) {
        signals_.push_back(
            bus_.subscribe({.sender = kService, .path = path, .interface = kTransaction, .member = member},
                           std::move(handler)));
    };
    follow("Package", [this](const auto& arguments) { handlePackage(arguments); });
    follow("ErrorCode", [this](const auto& arguments) {
        finish(Error{textAt(arguments, 1).value_or("PackageKit reports an error.")});
    });
    follow("Finished", [this](const auto&) { finish(std::nullopt); });
    followEnd();
    constexpr std::uint64_t kNoFilter = 0;
    question_ = bus_.call({.service = kService,
                           .path = path,
                           .interface = kTransaction,
                           .member = "GetUpdates",
                           .arguments = {kNoFilter},
                           .timeout = kLongestPatientCall},
                          [this](const auto& answer) {
                              if (!answer) finish(Error{"PackageKit does not look for updates."});
                          });
}

// An end before this is followed is an error to the next call.
void PackageKitUpdates::followEnd() {
    signals_.push_back(bus_.subscribe({.sender = kBus,
                                       .path = kBusPath,
                                       .interface = kBus,
                                       .member = "NameOwnerChanged",
                                       .firstArgument = kService},
                                      [this](const auto& arguments) {
                                          if (textAt(arguments, 2) == "") finish(Error{kNoAnswer});
                                      }));
    signals_.push_back(bus_.onConnectionChanged([this](bool connected) {
        if (!connected) finish(Error{kNoAnswer});
    }));
}

void PackageKitUpdates::handlePackage(const BusArguments& arguments) {
    const auto [name, version] = nameAndVersion(textAt(arguments, 1).value_or(""));
    if (std::ranges::count(packageNames_, name) > 0) newVersion_ = version;
}

void PackageKitUpdates::finish(const MaybeError& error) {
    if (!question_.isActive()) return;
    question_.cancel();
    signals_.clear();
    answered_({newVersion_, error});
}

}  // namespace platform::freedesktop
