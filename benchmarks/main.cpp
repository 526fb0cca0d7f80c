#include <fmt/format.h>

#include <charconv>
#include <cstdio>
#include <exception>
#include <iterator>
#include <string_view>
#include <utility>

#include "benchmarks/Row.h"

// Measures what the project promises and prints a table. "--pairs N" sets how often each comparison is made.

namespace {

using namespace benchmark;

void print(const std::vector<Row>& rows) {
    constexpr auto* kLine = "| {:<55} | {:>30} | {:>8} | {:<7} |\n";
    fmt::print(kLine, "What", "Measured", "Goal", "Verdict");
    fmt::print(kLine, std::string(55, '-'), std::string(30, '-'), std::string(8, '-'), std::string(7, '-'));
    for (const auto& row : rows)
        fmt::print(kLine, row.what, row.measured, row.goal, row.reached ? "reached" : "missed");
}

}  // namespace

int main(int argc, char** argv) {
    Effort effort;
    if (argc == 3 && std::string_view(argv[1]) == "--pairs") {
        const std::string_view number = argv[2];
        std::from_chars(number.data(), number.data() + number.size(), effort.pairs);
    } else if (argc != 1) {
        fmt::print(stderr, "usage: orvello-benchmark [--pairs N]\n");
        return 1;
    }
    if (effort.pairs < 1) return 1;
    try {
        auto rows = measureCommands(effort);
        for (auto* measure : {measureApplication, measureLogic})
            for (auto& row : measure(effort)) rows.push_back(std::move(row));
        print(rows);
    } catch (const std::exception& failure) {
        fmt::print(stderr, "orvello-benchmark: {}\n", failure.what());
        return 1;
    }
    return 0;
}
