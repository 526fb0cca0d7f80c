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

// The applications of a desktop, by bundle identifier: the ones to be opened, and the running ones.
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
    [[nodiscard]] std::vector<ProcessId> withBundleIdentifier(std::string_view identifier) override {
        std::vector<ProcessId> found;
        for (auto [at, end] = running.equal_range(identifier); at != end; ++at) found.push_back(at->second);
        return found;
    }
    [[nodiscard]] bool takeOver(ProcessId application) override {
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

// Programs that end at once with the status a test has chosen, and a record of what was started.
class SimulatedChildProcesses final : public ChildProcesses, public BackgroundProcesses {
  public:
    struct Run {
        std::string program;
        std::vector<std::string> arguments;
        bool operator==(const Run&) const = default;
    };

    // Absent: programs cannot be started.
    void setExitStatus(std::optional<int> status) { status_ = status; }
    // Called at each run, before its status is given.
    void onRun(std::function<void(const Run&)> action) { onRun_ = std::move(action); }
    [[nodiscard]] const std::vector<Run>& runs() const { return runs_; }

    [[nodiscard]] std::optional<int> run(const std::string& program,
                                         std::span<const std::string> arguments) override {
        runs_.push_back({program, {arguments.begin(), arguments.end()}});
        if (onRun_) onRun_(runs_.back());
        return status_;
    }
    [[nodiscard]] std::optional<std::string> start(const std::string& program,
                                                   std::span<const std::string> arguments,
                                                   std::function<void(const Ended&)> ended) override {
        const auto status = run(program, arguments);
        if (!status) return "there is no such program";
        ended({status, "stderr"});
        return std::nullopt;
    }

  private:
    std::optional<int> status_ = 0;
    std::function<void(const Run&)> onRun_;
    std::vector<Run> runs_;
};

}  // namespace platform::simulated
