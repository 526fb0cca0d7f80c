#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace platform {

// Something that the user has to answer.
struct Alert {
    enum class Style { Warning, Informational };

    std::string message;
    std::string informativeText;
    std::vector<std::string> buttons;  // the first is the default one
    Style style = Style::Warning;
    bool operator==(const Alert&) const = default;
};

class Alerts {
  public:
    virtual ~Alerts() = default;

    // Shows the alert before everything else of the application and returns at once. `answered` is called on
    // the main queue with the index of the button that was chosen; one that is closed counts as its last
    // button. Several alerts are shown one after the other.
    virtual void runModal(const Alert& alert, std::function<void(std::size_t button)> answered) = 0;
};

}  // namespace platform
