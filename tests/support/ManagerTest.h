#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orvellos/tags/TagStore.h"
#include "orvellos/windows/TagManager.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {

// A desktop with one screen of 1440 × 900 points and the Spaces A, B and C, of which A ("Mail") and C
// ("Code") are tagged, and the manager of the tags, not yet started.
class ManagerTest : public ApplicationTest {
  protected:
    ManagerTest() {
        desktop_.screens.addScreen({0, 0, 1440, 900});
        desktop_.spaces.addDisplay("Main", {"A", "B", "C"});
        setTags(
            {{TagID::random(), "Mail", "#3B82F6", {}, "A"}, {TagID::random(), "Code", "#10B981", {}, "C"}});
    }

    void start() {
        manager_.start();
        wait(0.5);
    }
    void wait(double time) { desktop_.runLoop.advance(platform::seconds(time)); }
    void settle() { wait(0.5); }

    void setTags(const std::vector<Tag>& tags) {
        while (!store_.tags().empty()) store_.remove(store_.tags().front().id);
        for (const auto& tag : tags) store_.add(tag);
    }
    const Tag& tag(std::size_t index) { return store_.tags().at(index); }
    TagWindow& window(std::size_t index) { return *manager_.windowFor(tag(index).id); }
    TagWindow& backup(std::size_t index) { return *window(index).mcBackup(); }
    // The same as the window system knows them.
    platform::simulated::SimulatedWindow& seen(const TagWindow& window) {
        return desktop_.windowSystem.windows.at(window.windowNumber());
    }
    platform::simulated::SimulatedWindow& seen(std::size_t index) { return seen(window(index)); }
    std::vector<platform::ManagedSpaceId> spacesOf(const TagWindow& window) {
        return desktop_.spaces.copySpacesForWindow(window.windowNumber());
    }
    // Drags the tag's window by that much.
    void drag(std::size_t index, double dx, double dy, bool shift = false) {
        auto* mouse = seen(index).delegate;
        const auto from = window(index).frame().center();
        const platform::Point to{from.x + dx, from.y + dy};
        wait(1);
        mouse->mouseDown({from, shift});
        mouse->mouseDragged({to, shift});
        mouse->mouseUp({to, shift});
    }
    TagStore store_{desktop_.files, desktop_.runLoop, "/data"};
    TagManager manager_{managerServices(), store_};
};

}  // namespace orvellos
