#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Observers.h"
#include "platform/Processes.h"

namespace platform::simulated {

// The applications of a desktop: those that can be opened, by bundle identifier, and those that run.
class SimulatedApplications final : public ApplicationLauncher, public RunningApplications {
  public:
    std::map<std::string, std::string, std::less<>> urls;
    std::optional<std::string> openError;
    std::vector<std::string> opened;  // urls, in order
    std::multimap<std::string, ProcessId, std::less<>> running;
    std::vector<ProcessId> activated;

    [[nodiscard]] std::optional<std::string> urlForApplication(std::string_view identifier) const override {
        const auto found = urls.find(identifier);
        return found == urls.end() ? std::nullopt : std::optional(found->second);
    }
    void open(const std::string& url,
              std::function<void(const std::optional<std::string>&)> completion) override {
        opened.push_back(url);
        completion(openError);
    }

    [[nodiscard]] ProcessId currentProcess() const override { return 100; }
    [[nodiscard]] std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) const override {
        std::vector<ProcessId> found;
        for (auto [at, end] = running.equal_range(identifier); at != end; ++at) found.push_back(at->second);
        return found;
    }
    [[nodiscard]] bool hasTerminated(ProcessId application) const override {
        return std::ranges::none_of(running, [&](const auto& each) { return each.second == application; });
    }
    void activate(ProcessId application) override { activated.push_back(application); }
    Subscription onActivated(std::function<void()> handler) override {
        return activations_.subscribe(std::move(handler));
    }
    // Another instance asks this one to come to the front.
    void activateThis() { activations_.notify(); }

  private:
    Observers<> activations_;
};

}  // namespace platform::simulated
