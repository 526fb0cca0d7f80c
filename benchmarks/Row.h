#pragma once

#include <string>
#include <vector>

namespace benchmark {

// One line of the table.
struct Row {
    std::string what;
    std::string measured;
    std::string goal;
    bool reached = false;
};

// How thoroughly to measure.
struct Effort {
    int pairs = 100;  // of each comparison
};

// The command line against the tools that scripts use today.
[[nodiscard]] std::vector<Row> measureCommands(const Effort& effort);
// The application's start.
[[nodiscard]] std::vector<Row> measureStart(const Effort& effort);
// The running application: its memory and what it costs while nothing happens.
[[nodiscard]] std::vector<Row> measureApplication(const Effort& effort);
// What the user does by hand, against commands that do the same.
[[nodiscard]] std::vector<Row> measureInterface(const Effort& effort);
// What the user sees, and how soon: Space switches, glances, overviews.
[[nodiscard]] std::vector<Row> measureScreen(const Effort& effort);
// The running application while the root window's properties change as fast as they can.
[[nodiscard]] std::vector<Row> measureFlood(const Effort& effort);
// The user's tags on the disk.
[[nodiscard]] std::vector<Row> measureStorage(const Effort& effort);
// The application's own decisions, on a desktop in memory.
[[nodiscard]] std::vector<Row> measureLogic(const Effort& effort);

}  // namespace benchmark
