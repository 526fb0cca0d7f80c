#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace orvellos {

// What the form for a new tag says and does.
class CreateTagForm {
  public:
    static constexpr std::string_view kHeading = "Tag this space";
    static constexpr std::string_view kExplanation = "A floating label will pin to the space you're on now.";
    static constexpr std::string_view kPlaceholder = "WORK";
    static constexpr std::string_view kColorCaption = "Color";
    static constexpr std::string_view kCustomColorHelp = "Custom color";
    static constexpr std::string_view kCancel = "Cancel";
    static constexpr std::string_view kCreate = "Create";

    using OnCreate = std::function<void(const std::string& label, const std::string& colorHex)>;

    // `onCancel` and `onCreate` may end the form.
    CreateTagForm(std::string initialColorHex, OnCreate onCreate, std::function<void()> onCancel)
        : colorHex(std::move(initialColorHex)),
          onCreate_(std::move(onCreate)),
          onCancel_(std::move(onCancel)) {}

    std::string label;
    std::string colorHex;

    // Whether the label is more than white space.
    [[nodiscard]] bool canCreate() const;
    // Hands the label on without white space around it; nothing while there is no label.
    void submit() const;
    void cancel() const;

  private:
    OnCreate onCreate_;
    std::function<void()> onCancel_;
};

}  // namespace orvellos
