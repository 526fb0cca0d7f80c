#include "platform/freedesktop/session/PackageKitUpdates.h"

#include <gtest/gtest.h>

#include "tests/support/MainLoop.h"
#include "tests/support/PrivateBus.h"

namespace platform::freedesktop {
namespace {

using desktop_test::StandInService;

constexpr const char* kPath = "/7_dead_beef";

class PackageKitUpdatesTests : public testing::Test {
  protected:
    // What starting comes to: "" when it works.
    std::string start() {
        std::optional<std::string> result;
        updates_.startUpdater(
            [&](const MaybeError& error) { result = error ? error->description : std::string(); });
        EXPECT_TRUE(mainLoop_.runUntil([&] { return result.has_value(); }));
        return result.value_or("nothing");
    }
    void check() {
        answer_.reset();
        updates_.checkForUpdates([this](const UpdateAnswer& answer) { answer_ = answer; });
    }
    // PackageKit, which refuses what it is told to.
    StandInService::Answer packageKit(const std::string& refused = "") {
        return [refused](auto* call, auto* reply) {
            const std::string member = sd_bus_message_get_member(call);
            if (member == refused) return -1;
            return member == "CreateTransaction" ? sd_bus_message_append(reply, "o", kPath) : 0;
        };
    }
    static void send(StandInService& service, const char* member, const char* types, std::uint32_t number,
                     const char* text) {
        service.run([&](sd_bus* bus) {
            const char* interface = "org.freedesktop.PackageKit.Transaction";
            if (std::string_view(types) == "uss")
                sd_bus_emit_signal(bus, kPath, interface, member, types, number, text, "A summary");
            else if (std::string_view(types) == "us")
                sd_bus_emit_signal(bus, kPath, interface, member, types, number, text);
            else
                sd_bus_emit_signal(bus, kPath, interface, member, types, number, 12U);
        });
    }
    bool waitForQuestion(StandInService& service) {
        return mainLoop_.runUntil([&] { return service.calls().size() == 2; });
    }
    bool waitForAnswer() {
        return mainLoop_.runUntil([&] { return answer_.has_value(); });
    }

    desktop_test::PrivateBus daemon_;
    desktop_test::MainLoop mainLoop_;
    SystemdLibrary library_;
    MessageBus bus_{library_, mainLoop_.runLoop, mainLoop_.runLoop, [this] { return daemon_.address(); }};
    PackageKitUpdates updates_{bus_, {"orvellos", "orvello"}};
    std::optional<UpdateAnswer> answer_;
};

TEST_F(PackageKitUpdatesTests, StartsWherePackageKitIs) {
    EXPECT_EQ(start(), "PackageKit is not available on this system.");
    const StandInService service(daemon_.address(), "org.freedesktop.PackageKit", packageKit());
    EXPECT_EQ(start(), "");
    EXPECT_TRUE(service.calls().empty()) << "a start asks it nothing";
}

TEST_F(PackageKitUpdatesTests, FindsItsOwnPackageAmongTheUpdates) {
    for (const bool isThere : {true, false}) {
        StandInService service(daemon_.address(), "org.freedesktop.PackageKit", packageKit());
        check();
        ASSERT_TRUE(waitForQuestion(service));
        EXPECT_EQ(service.calls().back(),
                  std::string(kPath) + " org.freedesktop.PackageKit.Transaction.GetUpdates");
        send(service, "Package", "uss", 5, "orvellos-theme;9;all;debian");
        send(service, "Package", "uss", 5, "malformed");
        if (isThere) send(service, "Package", "uss", 5, "orvellos;0.2.0-1;amd64;debian");
        send(service, "Finished", "uu", 1, "");
        ASSERT_TRUE(waitForAnswer());
        EXPECT_FALSE(answer_->error);
        EXPECT_EQ(answer_->newVersion, isThere ? std::optional<std::string>("0.2.0-1") : std::nullopt);
    }
}

TEST_F(PackageKitUpdatesTests, TellsWhatWentWrongOnce) {
    {
        StandInService service(daemon_.address(), "org.freedesktop.PackageKit", packageKit());
        check();
        ASSERT_TRUE(waitForQuestion(service));
        send(service, "ErrorCode", "us", 2, "No network");
        send(service, "Finished", "uu", 2, "");
        ASSERT_TRUE(waitForAnswer());
        EXPECT_EQ(answer_->error, Error{"No network"});
    }
    {
        std::optional<StandInService> service;
        service.emplace(daemon_.address(), "org.freedesktop.PackageKit", packageKit());
        check();
        ASSERT_TRUE(waitForQuestion(*service));
        service.reset();
        ASSERT_TRUE(waitForAnswer()) << "it ended while it was looking";
        EXPECT_EQ(answer_->error, Error{"PackageKit does not answer."});
    }
    for (const auto& [refused, text] : {std::pair("CreateTransaction", "PackageKit does not answer."),
                                        {"GetUpdates", "PackageKit does not look for updates."}}) {
        const StandInService service(daemon_.address(), "org.freedesktop.PackageKit", packageKit(refused));
        check();
        ASSERT_TRUE(waitForAnswer());
        EXPECT_EQ(answer_->error, Error{text});
    }
}

}  // namespace
}  // namespace platform::freedesktop
