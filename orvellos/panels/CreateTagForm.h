#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace orvellos {

// The texts and the operations of the form for a new tag.
class CreateTagForm {
  public:
    static constexpr std::string_view kHeading = "Tag this space";
    static constexpr std::string_view kExplanation = "A floating label will pin to the space you're on now.";
    static constexpr std::string_view kPlaceholder = "WORK";
    static constexpr std::string_view kColorCaption = "Color";
    static constexpr std::string_view kCustomColorHelp = "Custom color";
    static constexpr std::string_view kCancel = "Cancel";
    static constexpr std::string_view kCreate = "Create";

    // Whoever shows the form. Both operations may end it.
    class Owner {
      public:
        virtual ~Owner() = default;
        virtual void createTag(const std::string& label, const std::string& colorHex) = 0;
        virtual void cancelCreateTag() = 0;
    };
    CreateTagForm(std::string initialColorHex, Owner& owner)
        : colorHex(std::move(initialColorHex)), owner_(owner) {}

    std::string label;
    std::string colorHex;

    // Whether the label is more than white space.
    [[nodiscard]] bool canCreate() const;
    // Hands the label on without white space around it; nothing while there is no label.
    void submit() const;
    void cancel() const { owner_.cancelCreateTag(); }

  private:
    Owner& owner_;
};

}  // namespace orvellos
