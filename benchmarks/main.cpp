#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "benchmarks/Row.h"

// Measures what the project promises and prints a table. "--pairs N" sets how often each comparison is made;
// words choose groups of rows.

namespace {

using namespace benchmark;

void print(const std::vector<Row>& rows) {
    constexpr auto* kLine = "| {:<64} | {:>30} | {:>11} | {:<7} |\n";
    fmt::print(kLine, "What", "Measured", "Goal", "Verdict");
    fmt::print(kLine, std::string(64, '-'), std::string(30, '-'), std::string(11, '-'), std::string(7, '-'));
    for (const auto& row : rows)
        fmt::print(kLine, row.what, row.measured, row.goal, row.reached ? "reached" : "missed");
}

struct Group {
    std::string_view name;
    std::vector<Row> (*measure)(const Effort& effort);
};
constexpr Group kGroups[] = {{"commands", measureCommands},       {"start", measureStart},
                             {"application", measureApplication}, {"interface", measureInterface},
                             {"screen", measureScreen},           {"flood", measureFlood},
                             {"storage", measureStorage},         {"logic", measureLogic}};

struct Arguments {
    Effort effort;
    std::vector<Group> groups;  // those named, or all
};

// Absent when they make no sense.
std::optional<Arguments> parse(std::span<char* const> words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        const auto* group = std::ranges::find(kGroups, word, &Group::name);
        if (group != std::end(kGroups)) {
            arguments.groups.push_back(*group);
        } else if (word == "--pairs" && i + 1 < words.size()) {
            const std::string_view number = words[++i];
            std::from_chars(number.data(), number.data() + number.size(), arguments.effort.pairs);
            if (arguments.effort.pairs < 1) return std::nullopt;
        } else {
            return std::nullopt;
        }
    }
    if (arguments.groups.empty()) arguments.groups.assign(std::begin(kGroups), std::end(kGroups));
    return arguments;
}

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = parse(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    if (!arguments) {
        fmt::print(stderr, "usage: orvello-benchmark [--pairs N] [GROUP...]\ngroups:");
        for (const auto& group : kGroups) fmt::print(stderr, " {}", group.name);
        fmt::print(stderr, "\n");
        return 1;
    }
    try {
        std::vector<Row> rows;
        for (const auto& group : arguments->groups)
            for (auto& row : group.measure(arguments->effort)) rows.push_back(std::move(row));
        print(rows);
    } catch (const std::exception& failure) {
        fmt::print(stderr, "orvello-benchmark: {}\n", failure.what());
        return 1;
    }
    return 0;
}
