#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Processes.h"

namespace platform::simulated {

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
