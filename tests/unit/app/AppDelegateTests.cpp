#include "orvellos/app/AppDelegate.h"

#include "orvellos/settings/HotkeyNames.h"
#include "tests/support/ManagerTest.h"
#include "tests/support/SimulatedPanelHost.h"

namespace orvellos {
namespace {

class AppDelegateTests : public ManagerTest, AppDelegate::Root {
  protected:
    AppDelegateTests() {
        settings_.hasSeenWelcome.set(true);
        settings_.lastWelcomeVersion.set(kCurrentWelcomeVersion);
    }
    bool started() { return !desktop_.windowSystem.windows.empty(); }

    AppDelegate::Services services() {
        auto& d = desktop_;
        return {.spaces = identifier_,
                .runLoop = d.runLoop,
                .applications = d.applications,
                .screens = d.screens,
                .updates = d.updates,
                .permissions = permissions_,
                .keyNames = d.keyNames,
                .systemShortcuts = d.systemShortcuts,
                .ui = {.alerts = d.alerts,
                       .panels = host_,
                       .mouse = d.mouse,
                       .statusItem = d.statusItem,
                       .menuBar = d.menuBar},
                .diagnostics = {.files = d.files,
                                .folders = d.folders,
                                .fileBrowser = d.fileBrowser,
                                .clock = d.runLoop,
                                .system = d.system},
                .root = *this};
    }
    AppDelegate::Core makeCore() override {
        ++starts_;
        return {.manager = manager_, .settings = settings_, .editingContext = editing_, .hotkeys = hotkeys_};
    }
    void quit() override { ended_ = true; }

    keyboard_shortcuts::Registry hotkeys_{
        {desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    PrivacyPermissions permissions_{privacyServices([this] { ended_ = true; })};
    int starts_ = 0;
    bool ended_ = false;
    SimulatedPanelHost host_;
    AppDelegate delegate_{services()};
};

TEST_F(AppDelegateTests, WelcomesWhoHasNotSeenThisWelcome) {
    struct Row {
        const char* name;
        bool hasSeenWelcome;
        std::int64_t version;
        bool hasTags;
        const char* panel;
        const char* title;
    };
    const auto tags = store_.tags();
    for (const Row& row : {Row{"first run", false, 0, false, "Welcome to orvellos", "Welcome to orvellos"},
                           {"closed last time", false, 2, true, "Welcome to orvellos", "Welcome to orvellos"},
                           {"an earlier one", true, 1, true, "Welcome to orvellos", "What’s new in orvellos"},
                           {"this one", true, 2, true, nullptr, nullptr},
                           {"a later one", true, 3, true, nullptr, nullptr},
                           {"this one, no tags", true, 2, false, "Tag This Space", nullptr}}) {
        SCOPED_TRACE(row.name);
        settings_.hasSeenWelcome.set(row.hasSeenWelcome);
        settings_.lastWelcomeVersion.set(row.version);
        setTags(row.hasTags ? tags : std::vector<Tag>());
        AppDelegate delegate(services());
        delegate.applicationDidFinishLaunching();
        settle();
        ASSERT_EQ(host_.panels.size(), row.panel ? 1U : 0U);
        if (row.panel) {
            EXPECT_EQ(host_.panels.begin()->second->shell.title, row.panel);
        }
        if (row.title) {
            EXPECT_EQ(std::get<WelcomeForm*>(host_.panels.begin()->second->content)->title(), row.title);
        }
        delegate.applicationWillTerminate();
    }
}

TEST_F(AppDelegateTests, OnlyOneInstanceRuns) {
    struct Row {
        const char* name;
        const char* flavour;
        double ends;  // seconds after the launch
        double starts;
    };
    for (const Row& row : {Row{"none runs", nullptr, 0, 0},
                           {"it ends soon", "org.norvath.orvello", 1.05, 1.2},
                           {"the other flavour", "org.norvath.orvello.pro", 0.1, 0.2},
                           {"at the last check", "org.norvath.orvello", 2.9, 3},
                           {"too late", "org.norvath.orvello", 3.1, 0}}) {
        SCOPED_TRACE(row.name);
        manager_.stop();
        desktop_.runLoop.advance(platform::seconds(1));
        auto& running = desktop_.applications.running;
        running.clear();
        running.emplace("org.norvath.orvello", desktop_.applications.currentProcess());
        if (row.flavour) running.emplace(row.flavour, 7);
        starts_ = 0;
        ended_ = false;
        AppDelegate delegate(services());
        delegate.applicationDidFinishLaunching();
        const double checks[] = {row.starts - 0.001, row.starts + 0.001};
        double now = 0;
        for (const double time : {row.ends, checks[0], checks[1], 4.0}) {
            if (time <= now) continue;
            wait(time - now);
            now = time;
            if (now >= row.ends) std::erase_if(running, [](const auto& each) { return each.second == 7; });
            EXPECT_EQ(starts_, !row.flavour || (row.starts > 0 && now > row.starts) ? 1 : 0) << now;
        }
        EXPECT_EQ(ended_, row.flavour && row.starts == 0);
        EXPECT_EQ(desktop_.applications.activated.empty(), !ended_);
        delegate.applicationWillTerminate();
    }
    EXPECT_EQ(desktop_.systemLog.general().back(),
              "orvello: deferring to running instance (pid 7) and quitting");
}

TEST_F(AppDelegateTests, ShowsItselfWhenItIsStartedAgain) {
    delegate_.applicationDidFinishLaunching();
    settle();
    const auto startAgain = [this] { desktop_.applications.activateThis(); };
    startAgain();
    startAgain();
    for (const auto& item : desktop_.statusItem.openMenu())
        if (item.title == "About orvellos") item.action();
    startAgain();
    EXPECT_EQ(std::exchange(host_.shown, {}),
              (Texts{"Edit Tag", "Edit Tag", "About orvellos", "Edit Tag", "About orvellos"}))
        << "what is open comes to the front, in the order it was shown";
    host_.titled("Edit Tag")->close();
    startAgain();
    EXPECT_EQ(host_.shown, Texts{"About orvellos"});
}

TEST_F(AppDelegateTests, EndingDuringTheWaitStopsNothing) {
    desktop_.applications.running.emplace("org.norvath.orvello", 7);
    delegate_.applicationDidFinishLaunching();
    EXPECT_EQ(desktop_.systemLog.general(),
              Texts{"orvello: another instance detected (pid 7) — waiting to see if it exits"});
    delegate_.applicationWillTerminate();
    wait(5);
    EXPECT_FALSE(ended_);
    EXPECT_FALSE(started());
}

TEST_F(AppDelegateTests, SaysWhatItFindsOfTheSpaces) {
    delegate_.applicationDidFinishLaunching();
    EXPECT_TRUE(started());
    const auto lines = desktop_.systemLog.general();
    EXPECT_EQ(lines.at(0), "orvello-pro: SkyLight bridge OK, active space UUID=A");
    EXPECT_EQ(
        lines.at(1),
        "orvello-pro: switch symbols — setCurrent=SLSManagedDisplaySetCurrentSpace  show=SLSShowSpaces  "
        "hide=SLSHideSpaces");
}

TEST_F(AppDelegateTests, TagsOpenTheListAndDeletedOnesCanBeTakenBack) {
    delegate_.applicationDidFinishLaunching();
    settle();
    EXPECT_EQ(logged().front(), "installed main menu: 2 top-level items");
    manager_.onTagClicked();
    ASSERT_TRUE(host_.titled("Edit Tag"));
    manager_.onTagClicked();
    EXPECT_FALSE(host_.titled("Edit Tag") && host_.titled("Edit Tag")->visible);

    const Tag mail = tag(0);
    manager_.deleteTag(mail.id);
    ASSERT_EQ(host_.toasts.size(), 1U);
    EXPECT_EQ(host_.toasts.begin()->second->view.message, "Deleted “Mail”");
    const auto undo = host_.toasts.begin()->second->view.onUndo;
    undo();
    undo();
    wait(1);
    EXPECT_EQ(std::ranges::count(store_.tags(), mail), 1) << "pressed twice";
    EXPECT_TRUE(host_.toasts.empty());

    EXPECT_EQ(desktop_.menuBar.menus.at(0).items.at(0).title, "Quit orvellos");
    std::get<1>(desktop_.menuBar.menus[0].items[0].action)();
    EXPECT_TRUE(ended_);
}

TEST_F(AppDelegateTests, HotkeysDoTheirWork) {
    delegate_.applicationDidFinishLaunching();
    settle();
    EXPECT_EQ(desktop_.hotKeys.registered.size(), 7U) << "all but the quick switcher's";
    const auto keysOf = [](const auto& name) {
        return *keyboard_shortcuts::keyEventOf(*name.defaultShortcut);
    };
    const auto tap = [&](const auto& name) {
        EXPECT_TRUE(desktop_.hotKeys.press(keysOf(name)));
        desktop_.hotKeys.release(keysOf(name));
        wait(0.5);
    };
    const auto panel = [this](const char* title) {
        const auto shown = host_.titled(title);
        return shown && shown->visible;
    };
    tap(hotkey::toggleKillSwitch);
    EXPECT_TRUE(settings_.killSwitchActive.get());
    tap(hotkey::toggleKillSwitch);
    tap(hotkey::toggleEmbiggen);
    EXPECT_FALSE(settings_.killSwitchActive.get());
    EXPECT_TRUE(settings_.embiggenAllTags.get());
    for (const auto& [name, from, to] :
         {std::tuple(hotkey::biggerLabel, TagSize::Large, TagSize::ExtraLarge),
          std::tuple(hotkey::biggerLabel, TagSize::ExtraLarge, TagSize::ExtraLarge),
          std::tuple(hotkey::smallerLabel, TagSize::Small, TagSize::ExtraSmall),
          std::tuple(hotkey::smallerLabel, TagSize::ExtraSmall, TagSize::ExtraSmall),
          std::tuple(hotkey::smallerLabel, TagSize::MissionControl, TagSize::Medium)}) {
        settings_.tagSize.set(from);
        tap(name);
        EXPECT_EQ(settings_.tagSize.get(), to);
    }
    tap(hotkey::tagThisSpace);
    EXPECT_TRUE(panel("Edit Tag")) << "Space A has a tag";
    tap(hotkey::tagThisSpace);
    EXPECT_FALSE(panel("Edit Tag"));
    desktop_.spaces.setCurrentSpace("B");
    tap(hotkey::tagThisSpace);
    EXPECT_TRUE(panel("Tag This Space"));
    tap(hotkey::tagThisSpace);
    EXPECT_FALSE(panel("Tag This Space"));
    hotkeys_.setShortcut(keyboard_shortcuts::Shortcut{49, keyboard_shortcuts::carbon::kControl},
                         hotkey::quickSwitcher);
    desktop_.hotKeys.press({49, platform::modifier::kControl});
    desktop_.hotKeys.release({49, platform::modifier::kControl});
    EXPECT_TRUE(std::ranges::any_of(host_.panels, [](const auto& each) { return each.second->visible; }));
    tap(hotkey::openMCBig);
    wait(1);
    EXPECT_TRUE(hasLogged("openMCBig: launching Mission Control"));
}

TEST_F(AppDelegateTests, APeekLastsAsLongAsItsKeyIsHeldAndABitMore) {
    settings_.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    delegate_.applicationDidFinishLaunching();
    settle();
    wait(2);
    const auto keys = *keyboard_shortcuts::keyEventOf(*hotkey::peekTags.defaultShortcut);
    const auto isSeen = [this] { return seen(0).alpha > 0; };
    EXPECT_FALSE(isSeen());
    desktop_.hotKeys.press(keys);
    for (int i = 0; i < 3; ++i) {
        wait(1);
        EXPECT_TRUE(isSeen());
    }
    desktop_.hotKeys.release(keys);
    wait(1.4);
    EXPECT_TRUE(isSeen());
    wait(0.6);
    EXPECT_FALSE(isSeen());
}

}  // namespace
}  // namespace orvellos
