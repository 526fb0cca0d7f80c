#include "benchmarks/PairedRuns.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace benchmark {

namespace {

constexpr int kWarmUps = 5;

}  // namespace

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Comparison compare(int pairs, const Timed& ours, const Timed& theirs) {
    for (int i = 0; i < kWarmUps; ++i) {
        ours();
        theirs();
    }
    std::vector<double> ourTimes;
    std::vector<double> theirTimes;
    std::vector<double> ratios;
    for (int i = 0; i < pairs; ++i) {
        ourTimes.push_back(ours().count());
        theirTimes.push_back(theirs().count());
        ratios.push_back(ourTimes.back() / theirTimes.back());
    }
    return {Milliseconds(median(ourTimes)), Milliseconds(median(theirTimes)), median(ratios)};
}

Row rowOf(const std::string& what, const Comparison& comparison, double goal) {
    return {what,
            fmt::format("{:.2f} ms / {:.2f} ms = {:.2f}", comparison.ours.count(), comparison.theirs.count(),
                        comparison.ratio),
            fmt::format("<= {:.2f}", goal), comparison.ratio <= goal};
}

Command::Command(const std::vector<std::string>& words, const desktop_test::Environment& environment)
    : name_(words.front()) {
    std::vector<std::string> variables;
    for (const auto& [name, value] : environment) variables.push_back(fmt::format("{}={}", name, value));
    const auto pointers = [](const std::vector<std::string>& texts) {
        std::vector<char*> list;
        list.reserve(texts.size() + 1);
        for (const auto& text : texts) list.push_back(const_cast<char*>(text.c_str()));
        list.push_back(nullptr);
        return list;
    };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = posix_spawnp(&pid_, name_.c_str(), &actions, nullptr, pointers(words).data(),
                                   pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error(name_ + " cannot be started");
}

void Command::ended() {
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
    }
    if (status != 0) throw std::runtime_error(name_ + " failed");
}

Timed wholeRun(std::vector<std::string> words, const desktop_test::Environment& environment) {
    return [words = std::move(words), environment] {
        const auto start = std::chrono::steady_clock::now();
        Command(words, environment).ended();
        return Milliseconds(std::chrono::steady_clock::now() - start);
    };
}

}  // namespace benchmark
