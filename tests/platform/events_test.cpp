// SPDX-License-Identifier: Apache-2.0
#include "platform/QorEventListener.h"
#include "platform/QorHost.h"
#include "platform/QorLibraryHandlers.h"
#include "platform/QorWindows.h"

namespace {

class Silent final : public QorWindows {
public:
    void internalError(const char*, long, const char*) override { ++errors; }
    int errors = 0;
};

std::string g_heard;

class Listener : public QorEventListener {
public:
    Listener(std::string name, QorEventPriority priority) : _name(std::move(name)) {
        setEventHandler(QorEventType::ModelCreated, &Listener::heard, priority);
    }
    std::function<void()> then;

private:
    void heard(const QorModelEvent& event) {
        g_heard += _name + std::to_string(event.model()) + " ";
        if (then) then();
    }
    std::string _name;
};

class Events : public testing::Test {
protected:
    Events() { g_heard.clear(); }
    static void raise() { Qor_RaiseEvent(QorModelEvent(QorEventType::ModelCreated, 5)); }
    Silent windows;
    QorHost host{.windows = &windows};
};

}  // namespace

TEST_F(Events, RunByPriorityThenBySubscriptionAndOnlyUnderAHost) {
    const Listener late("late", 800);
    const Listener first("first", 400);
    const Listener second("second", 400);
    raise();
    EXPECT_EQ(g_heard, "");
    const QorHostInstallation installed(host);
    raise();
    EXPECT_EQ(g_heard, "first5 second5 late5 ");
    Qor_RaiseEvent(QorLibraryEvent(QorEventType::ModelCreated, 5));
    EXPECT_EQ(g_heard, "first5 second5 late5 ") << "an event of another class is not theirs";
}

TEST_F(Events, AListenerMayEndOrBeginWhileAnEventIsDelivered) {
    const QorHostInstallation installed(host);
    Listener first("first", 1);
    auto victim = std::make_unique<Listener>("victim", 2);
    std::unique_ptr<Listener> born;
    first.then = [&] {
        victim.reset();
        if (!born) born = std::make_unique<Listener>("born", 3);
    };
    raise();
    EXPECT_EQ(g_heard, "first5 ");
    raise();
    EXPECT_EQ(g_heard, "first5 first5 born5 ");
}

TEST_F(Events, WhatAHandlerThrowsIsReportedAndTheNextOneRuns) {
    const QorHostInstallation installed(host);
    Listener first("first", 1);
    first.then = [] { throw 1; };
    const Listener second("second", 2);
    raise();
    EXPECT_EQ(g_heard, "first5 second5 ");
    EXPECT_EQ(windows.errors, 1);
}

TEST(Event, FieldsBeginAtEight) {
    const QorAttributeEvent event(QorEventType::AttributeValueChanged, 1, 2, 3, 4, 5, 9);
    EXPECT_EQ(event.field(8), 1);
    EXPECT_EQ(event.field(13), 9);
    EXPECT_EQ(event.field(7), 0);
    EXPECT_EQ(event.field(99), 0);
}

namespace {

struct Handler {
    QorLibraryHandlerState state = QorLibraryHandlerState::Current;
    QorLibraryHandlerRegistration registration;
    Handler(QorEventType event, QorErrorCode failure)
        : registration({"test", event, [this] { return state; }, failure}) {}
};

}  // namespace

// The system's own handlers are registered too, so only the events of this test are looked at.
TEST(LibraryHandlers, RenewWhatIsMissingOrInErrorOncePerEvent) {
    constexpr auto kEvent = static_cast<QorEventType>(100001);
    constexpr auto kOther = static_cast<QorEventType>(100002);
    constexpr auto kFailure = static_cast<QorErrorCode>(4711);
    using State = QorLibraryHandlerState;
    const auto theSystems = Qor_RenewLibraryHandlers([](QorEventType) {}, true);  // the system registers its own
    Handler a(kEvent, QorErrorCode::SimMappingError);
    Handler b(kEvent, kFailure);
    Handler c(kOther, kFailure);

    const auto renew = [&](bool all, const auto& then) {
        std::vector<QorEventType> raised;
        const auto result = Qor_RenewLibraryHandlers(
            [&](QorEventType type) {
                if (type != kEvent && type != kOther) return;
                raised.push_back(type);
                then();
            },
            all);
        return std::pair(result, raised);
    };
    using Raised = std::vector<QorEventType>;

    a.state = State::InError;
    b.state = State::Missing;
    const auto [renewed, raised] = renew(true, [&] { a.state = b.state = State::Current; });
    EXPECT_EQ(raised, Raised{kEvent});
    EXPECT_EQ(renewed, theSystems);

    b.state = State::InError;
    EXPECT_EQ(renew(false, [] {}), std::pair(kFailure, Raised{}))
        << "an error is left alone when only what is missing counts";
    b.state = State::Missing;
    EXPECT_EQ(renew(true, [] {}), std::pair(QorErrorCode::NotAllHandlersSetUp, Raised{kEvent}));
    c.state = State::InError;
    EXPECT_EQ(renew(true, [] {}), std::pair(kFailure, Raised{kEvent, kOther})) << "an error outweighs what is missing";
}
