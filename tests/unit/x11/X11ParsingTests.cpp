#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "platform/x11/spaces/EwmhSpaceLayout.h"
#include "platform/x11/windows/WindowClass.h"
#include "platform/x11/windows/X11Window.h"

namespace platform::x11 {
namespace {

using Values = std::vector<std::uint32_t>;

// Memory that free() takes, for a record with `more` bytes behind it.
template <typename T>
T* zeroed(std::size_t more = 0) {
    constexpr std::size_t kAlignment = alignof(std::max_align_t);
    const auto size = (sizeof(T) + more + kAlignment - 1) / kAlignment * kAlignment;
    return static_cast<T*>(std::memset(std::aligned_alloc(kAlignment, size), 0, size));
}

// A reply as the X library hands it out: the record with the property's bytes behind it.
Reply<xcb_get_property_reply_t> reply(xcb_atom_t type, std::uint8_t format, const void* data,
                                      std::size_t length) {
    const auto bytes = length * format / 8;
    auto* memory = zeroed<xcb_get_property_reply_t>(bytes);
    memory->type = type;
    memory->format = format;
    memory->value_len = static_cast<std::uint32_t>(length);
    memory->length = static_cast<std::uint32_t>((bytes + 3) / 4);
    if (bytes > 0) std::memcpy(memory + 1, data, bytes);
    return Reply<xcb_get_property_reply_t>(memory);
}
Reply<xcb_get_property_reply_t> reply(xcb_atom_t type, const Values& values) {
    return reply(type, 32, values.data(), values.size());
}
Reply<xcb_get_property_reply_t> reply(std::string_view text) {
    return reply(XCB_ATOM_STRING, 8, text.data(), text.size());
}

const Atoms kAtoms = Atoms::numbered();

EwmhRootReplies rootReplies(const Values& check, const Values& count, const Values& current) {
    return {reply(XCB_ATOM_WINDOW, check), reply(XCB_ATOM_CARDINAL, count), reply(XCB_ATOM_CARDINAL, current),
            reply(XCB_ATOM_ATOM, {kAtoms[Atom::NetNumberOfDesktops], kAtoms[Atom::NetCurrentDesktop]})};
}

TEST(EwmhDesktopsTest, TakesOnlyPlausibleRootProperties) {
    using enum EwmhRoot::State;
    struct Case {
        const char* name;
        Values check, count, current;
        EwmhRoot::State state;
        std::optional<std::uint32_t> currentDesktop;
    };
    for (const auto& [name, check, count, current, state, currentDesktop] : std::vector<Case>{
             {"healthy", {7}, {4}, {3}, Plausible, 3},
             {"current out of range", {7}, {4}, {4}, Plausible, std::nullopt},
             {"no current", {7}, {4}, {}, Plausible, std::nullopt},
             {"largest count", {7}, {kMostDesktops}, {0}, Plausible, 0},
             {"count above the bound", {7}, {kMostDesktops + 1}, {0}, Absent, std::nullopt},
             {"four billion desktops", {7}, {0xFFFFFFFF}, {0}, Absent, std::nullopt},
             {"no desktop", {7}, {0}, {0}, Absent, std::nullopt},
             {"nothing", {}, {}, {}, Absent, std::nullopt},
             {"no check window", {}, {4}, {0}, Inconsistent, std::nullopt},
             {"no count", {7}, {}, {0}, Inconsistent, std::nullopt},
             {"check window 0", {0}, {4}, {0}, Absent, std::nullopt},
         }) {
        const auto root = parseRoot(kAtoms, rootReplies(check, count, current));
        EXPECT_EQ(root.state, state) << name;
        EXPECT_EQ(root.desktops.current, currentDesktop) << name;
    }
}

TEST(EwmhDesktopsTest, TellsAWindowManagerWithoutDesktopsFromOneThatStarts) {
    struct Case {
        const char* name;
        Values supported;
        EwmhRoot::State state;
    };
    for (const auto& [name, supported, state] : std::vector<Case>{
             {"has none", {kAtoms[Atom::NetClientList]}, EwmhRoot::State::Absent},
             {"will have some", {kAtoms[Atom::NetNumberOfDesktops]}, EwmhRoot::State::Inconsistent},
             {"has told nothing yet", {}, EwmhRoot::State::Inconsistent},
         }) {
        auto replies = rootReplies({7}, {}, {});
        replies.supported = reply(XCB_ATOM_ATOM, supported);
        EXPECT_EQ(parseRoot(kAtoms, replies).state, state) << name;
    }
}

TEST(EwmhDesktopsTest, GivesTheSpacesOfAWindow) {
    using Ids = std::vector<ManagedSpaceId>;
    EXPECT_EQ(managedSpaceIds(2, 4), Ids{{3}});
    EXPECT_EQ(managedSpaceIds(kEveryDesktop, 3), (Ids{{1}, {2}, {3}}));
    EXPECT_EQ(managedSpaceIds(std::nullopt, 3), Ids());
}

TEST(EwmhDesktopsTest, ToleratesWrongTypesAndMissingReplies) {
    EXPECT_EQ(parseRoot(kAtoms, {}).state, EwmhRoot::State::Absent);
    auto replies = rootReplies({7}, {4}, {1});
    replies.current = reply("garbage");
    replies.supported = reply(XCB_ATOM_CARDINAL, {kAtoms[Atom::NetCurrentDesktop]});
    const auto root = parseRoot(kAtoms, replies);
    EXPECT_EQ(root.desktops.current, std::nullopt);
    EXPECT_FALSE(root.desktops.canSwitch);
    replies.count = reply(XCB_ATOM_WINDOW, {4});
    EXPECT_EQ(parseRoot(kAtoms, replies).state, EwmhRoot::State::Inconsistent);
}

TEST(EwmhDesktopsTest, TrustsACheckWindowThatNamesItself) {
    const auto named = [](xcb_window_t window) {
        return parseCheckWindow(7, {reply(XCB_ATOM_WINDOW, {window}), reply("KWin")});
    };
    EXPECT_EQ(named(7), "KWin");
    EXPECT_EQ(named(8), std::nullopt);
    EXPECT_EQ(parseCheckWindow(7, {nullptr, nullptr}), std::nullopt) << "a dead window";
    EXPECT_EQ(parseCheckWindow(7, {reply(XCB_ATOM_WINDOW, {7}), nullptr}), "");
}

TEST(EwmhSpaceLayoutTest, NamesDesktopsByTheirNumberAlone) {
    const auto four = desktopNumberUuids(4);
    EXPECT_EQ(four.at(0), "6FD273A8-5697-586A-A7DF-5D35B4FF99F5") << "as stored in users' tag files";
    EXPECT_EQ(desktopNumberUuids(2), std::vector(four.begin(), four.begin() + 2));
    const auto layout = managedDisplaySpaces({four, 2});
    ASSERT_EQ(layout.size(), 1U);
    EXPECT_EQ(layout[0].identifier, "Main");
    EXPECT_EQ(layout[0].currentSpace, (SpaceEntry{four[2], ManagedSpaceId{3}}));
    EXPECT_EQ(layout[0].spaces->size(), 4U);
}

class X11WindowTest : public testing::Test {
  protected:
    X11WindowReplies replies;
    void SetUp() override {
        replies.geometry.reset(zeroed<xcb_get_geometry_reply_t>());
        replies.geometry->width = 400;
        replies.geometry->height = 300;
        replies.position.reset(zeroed<xcb_translate_coordinates_reply_t>());
        replies.position->dst_x = 100;
        replies.position->dst_y = 50;
    }
    [[nodiscard]] X11Window parse() const { return parseWindow(kAtoms, 42, replies, {1000, 0}).value(); }
};

TEST_F(X11WindowTest, ReadsAnOrdinaryWindow) {
    replies.frameExtents = reply(XCB_ATOM_CARDINAL, {2, 3, 20, 4});
    replies.geometry->border_width = 1;
    replies.desktop = reply(XCB_ATOM_CARDINAL, {3});
    replies.pid = reply(XCB_ATOM_CARDINAL, {77});
    replies.windowClass = reply(std::string_view("xterm\0XTerm\0", 12));
    replies.opacity = reply(XCB_ATOM_CARDINAL, {0xFFFFFFFF});
    const auto window = parse();
    EXPECT_EQ(window.info, (WindowInfo{0, 42, 77, "XTerm", Rect{-903, 29, 407, 326}, 1}));
    EXPECT_EQ(window.desktop, 3U);
}

TEST_F(X11WindowTest, SortsWindowsIntoLayers) {
    struct Case {
        const char* name;
        Values types, states;
        std::int64_t layer;
        bool isDesktopElement;
    };
    for (const auto& [name, types, states, layer, isDesktopElement] : std::vector<Case>{
             {"no type", {}, {}, 0, false},
             {"unknown type", {1}, {}, 0, false},
             {"above", {}, {kAtoms[Atom::NetWmStateAbove]}, 3, false},
             {"dock", {kAtoms[Atom::NetWmWindowTypeDock]}, {}, 20, false},
             {"second choice of type", {1, kAtoms[Atom::NetWmWindowTypeNotification]}, {}, 25, false},
             {"tooltip", {kAtoms[Atom::NetWmWindowTypeTooltip]}, {}, 101, false},
             {"desktop", {kAtoms[Atom::NetWmWindowTypeDesktop]}, {}, 0, true},
         }) {
        replies.types = reply(XCB_ATOM_ATOM, types);
        replies.states = reply(XCB_ATOM_ATOM, states);
        EXPECT_EQ(parse().info.layer, layer) << name;
        EXPECT_EQ(parse().isDesktopElement, isDesktopElement) << name;
    }
}

TEST_F(X11WindowTest, ToleratesGarbage) {
    EXPECT_EQ(parse().info, (WindowInfo{0, 42, {}, {}, Rect{-900, 50, 400, 300}, 1})) << "no property at all";
    replies.frameExtents = reply(XCB_ATOM_CARDINAL, {1, 2, 3});
    replies.types = reply(XCB_ATOM_CARDINAL, {kAtoms[Atom::NetWmWindowTypeDock]});
    replies.pid = reply("77");
    replies.desktop = reply(XCB_ATOM_WINDOW, {1});
    EXPECT_EQ(parse().info, (WindowInfo{0, 42, {}, {}, Rect{-900, 50, 400, 300}, 1}));
    EXPECT_EQ(parse().desktop, std::nullopt);
    replies.position.reset();
    EXPECT_FALSE(parseWindow(kAtoms, 42, replies, {})) << "it has died meanwhile";
}

TEST(ClassPartTest, IsUtf8WhateverTheProgramWrote) {
    struct Case {
        std::string_view property;
        std::optional<std::string> name;
    };
    for (const auto& [property, name] : std::vector<Case>{
             {{"a\0B\0", 4}, "B"},
             {{"a\0B", 3}, "B"},
             {{"a\0caf\xE9\0", 7}, "caf\u00E9"},
             {{"a\0caf\xC3\xA9\0", 8}, "caf\u00E9"},
             {{"a\0\xC3\0", 4}, "\u00C3"},
             {{"a\0\xED\xA0\x80", 5}, "\xC3\xAD\xC2\xA0\xC2\x80"},  // no UTF-8: half a pair of UTF-16
             {{"a\0\0", 3}, std::nullopt},
             {{"a", 1}, std::nullopt},
             {{}, std::nullopt},
         })
        EXPECT_EQ(classPart(property), name) << property;
}

}  // namespace
}  // namespace platform::x11
