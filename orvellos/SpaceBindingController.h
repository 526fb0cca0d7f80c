#pragma once

#include <functional>
#include <set>
#include <vector>

#include "orvellos/Published.h"
#include "orvellos/SpaceIdentifier.h"
#include "orvellos/Tag.h"
#include "orvellos/TagWindow.h"

namespace orvellos {

// Keeps every tag window on the Space that its tag is bound to, and knows the tags whose Space is gone. Owns
// no tags.
class SpaceBindingController {
  public:
    using TagsProvider = std::function<std::vector<Tag>()>;
    using WindowLookup = std::function<TagWindow*(const TagID&)>;

    SpaceBindingController(const SpaceIdentifier& spaces, TagsProvider tagsProvider, WindowLookup windowFor)
        : spaces_(spaces), tagsProvider_(std::move(tagsProvider)), windowFor_(std::move(windowFor)) {}

    // Pins every tag window, and its backup, that is not on its stored Space.
    void enforce();
    // Finds the tags whose Space does not exist; while no Space can be listed the set stays as it is.
    void recomputeSpaceOrphans();
    [[nodiscard]] Published<std::set<TagID>>& orphanedTagIDs() { return orphanedTagIDs_; }

  private:
    void pin(const Tag& tag, platform::WindowNumber window, platform::ManagedSpaceId space,
             const char* which);

    const SpaceIdentifier& spaces_;
    TagsProvider tagsProvider_;
    WindowLookup windowFor_;
    Published<std::set<TagID>> orphanedTagIDs_;
};

}  // namespace orvellos
