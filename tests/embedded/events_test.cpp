// SPDX-License-Identifier: Apache-2.0
// Which change raises which event, with which fields; what listeners do wrong harms nothing.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorEventListener.h"
#include "support/OnStores.h"

namespace {

using Type = QorCoreAttributeType;
using Raised = std::vector<std::vector<long>>;

// The type and the fields that the event fills, from field 8 to the last one that the page lists.
class Listener final : public QorEventListener {
public:
    Listener() {
        const auto hear = [this](long type) {
            setEventHandler(static_cast<QorEventType>(type), &Listener::heard, 400);
        };
        for (const long type : {704, 705, 712, 713, 714, 739, 756, 778, 827, 828, 829, 839}) hear(type);
    }
    std::function<void()> upset;  // called in every handler
    Raised seen;

private:
    void heard(const QorEvent& event) {
        const auto type = static_cast<long>(event.type());
        const int last = type == 756 ? 13 : type == 705 || type > 800 ? 9 : 8;
        std::vector<long> fields{type};
        for (int field = QorEvent::kFirstField; field <= last; ++field) fields.push_back(event.field(field));
        seen.push_back(std::move(fields));
        if (const auto call = upset) call();  // it may take itself away
    }
};

struct Events : OnStores {
    Events() {
        w.recordClass("Line");
        QorAttributeSpec spec;
        spec.name = "See";
        spec.type = Type::InterReference;
        spec.refersToModels = true;
        w.attribute("Line", spec);
        w.cls("Task");
        see = w.attribute("Task", spec);
        size = w.attribute("Task", "Size", Type::Integer);
        spec.name = "Lines";
        spec.type = Type::Record;
        spec.refersToModels = false;
        spec.target = w.idOf("Line");
        lines = w.attribute("Task", spec);
        w.modelType("Process", {"Task"});
        group = w.builder().addModelGroup(w.library, "Sales").id;
        model = w.model("Process", "Pack");
        a = w.object("Task", "a");
    }
    Raised raisedBy(const std::function<void()>& change) {
        Listener listener;
        change();
        return listener.seen;
    }

    QorCoreModelingManager& repository = w.repository();
    static constexpr const char* kSeePack = "MODEL \"Pack\" type: \"Process\"";
    static constexpr const char* kSeeWrap = "MODEL \"Wrap\" type: \"Process\"";
    QorIdentifier see = -1, size = -1, lines = -1, group = -1, model = -1, a = -1;
};

TEST_P(Events, ComeWithTheFieldsThatThePageLists) {
    QorIdentifier next = -1;
    long row = -1;
    const auto expect = [&](const char* change, const std::function<void()>& carryOut, const Raised& expected) {
        EXPECT_EQ(raisedBy(carryOut), expected) << change;
    };
    expect("a further version", [&] { next = w.model("Process", "Pack", "2"); }, {{704, a + 1}, {778, a + 1}});
    ASSERT_EQ(next, a + 1);
    expect("renamed", [&] { (void)w.builder().renameModel(model, "Wrap"); }, {{712, model}, {712, next}});
    expect("the name that it has", [&] { (void)w.builder().renameModel(model, "Wrap"); }, {});
    expect("into a group", [&] { (void)w.builder().moveModel(next, group); }, {{713, model}, {713, next}});
    expect("where it is", [&] { (void)w.builder().moveModel(model, group); }, {});
    expect("a group renamed", [&] { (void)w.builder().renameModelGroup(group, "Shop"); }, {});
    expect("a version deleted", [&] { (void)w.builder().removeModel(next); }, {{714, next}, {778, model}});

    const auto set = [&](long thing, long attribute, const char* text, bool announce) {
        return [=, this] { (void)repository.setAttributeValueAsString(model, thing, attribute, text, announce); };
    };
    expect("a value", set(a, size, "1", true), {{756, 0, model, a, size, -1, 0}});
    expect("a value in silence", set(a, size, "2", false), {});
    expect("a refused value", set(a, size, "x", true), {});
    expect("a name", [&] { (void)repository.RenameInstance(model, a, "b", true); },
           {{756, 0, model, a, QorAttributeId::Name, -1, 2}});
    expect("a reference", set(a, see, kSeeWrap, true), {{756, 0, model, a, see, -1, 9}});
    expect("a reference in silence", set(a, see, kSeeWrap, false), {{739, model}});
    expect("a reference by the builder", [&] { (void)w.builder().setValue(a, see, kSeePack); }, {{739, model}});
    expect("a row", [&] { (void)repository.createRecordInstance(model, a, lines, row, -1); }, {});
    const auto cell = w.attributeOf(w.idOf("Line"), "See");
    expect("a cell", set(row, cell, kSeePack, true), {{756, 0, model, a, cell, row, 9}});
    expect("pasted", [&] { (void)w.builder().pasteObject(model, a, "c"); }, {{739, model}});
    expect("a row with references deleted", [&] { (void)repository.deleteRecordInstance(model, a, lines, row); },
           {{739, model}});
    expect("an object with references deleted", [&] { (void)repository.deleteInstance(model, a); }, {{739, model}});
    expect("loaded", [&] { (void)w.load(false); },
           {{827, w.library, -1}, {828, w.processes, w.environment}, {829, w.library, -1}});
    expect("discarded", [&] { (void)w.discard(); }, {{839, w.library, -1}});
    expect("deleted", [&] { (void)w.builder().removeModel(model); }, {{714, model}});
}

TEST_P(Events, OfReferencesAreToldAgainAfterAHold) {
    const auto setSee = [&] { (void)repository.setAttributeValueAsString(model, a, see, kSeePack, true); };
    EXPECT_EQ(
        raisedBy([&] {
            const QorCoreAutoExManStopStart held;
            const QorCoreAutoExManStopStart heldTwice;
            setSee();
            (void)repository.setAttributeValueAsString(model, a, size, "1", true);
        }),
        (Raised{
            {705, 0, 0}, {756, 0, model, a, see, -1, 9}, {756, 0, model, a, size, -1, 0}, {705, 0, 1}, {739, model}}));
    EXPECT_EQ(raisedBy(setSee).size(), 1U) << "the hold is over";
}

struct RolledBack : Events {};

TEST_P(RolledBack, UnitsTellWhatTheyTookAway) {
    QorCoreUnitsOfWork* const units = repository.unitsOfWork();
    ASSERT_EQ(units->begin(), QorErrorCode::Ok);
    (void)repository.setAttributeValueAsString(model, a, see, kSeePack, false);
    (void)w.builder().renameModel(model, "Wrap");
    (void)w.builder().moveModel(model, group);
    EXPECT_EQ(raisedBy([&] { units->rollBack(); }), (Raised{{778, -1}, {739, model}}));
    EXPECT_EQ(w.reader().nameOf(model), "Pack");
    EXPECT_EQ(w.reader().groupOfModel(model), QorNoIdentifier);
    ASSERT_EQ(units->begin(), QorErrorCode::Ok);
    (void)repository.setAttributeValueAsString(model, a, size, "1", false);
    EXPECT_EQ(raisedBy([&] { units->rollBack(); }), Raised{}) << "nobody keeps answers about that";
}

TEST_P(Events, SurviveListenersThatThrowOrChangeThings) {
    Listener listener;
    listener.upset = [] { throw std::runtime_error("no"); };
    ASSERT_TRUE(w.builder().renameModel(model, "Wrap").ok());
    EXPECT_EQ(repository.setAttributeValueAsString(model, a, size, "3", true), QorErrorCode::Ok);
    listener.upset = [&] {
        listener.upset = {};
        ASSERT_TRUE(w.builder().removeModel(model).ok());
    };
    EXPECT_EQ(repository.setAttributeValueAsString(model, a, see, kSeeWrap, true), QorErrorCode::Ok);
    EXPECT_EQ(w.reader().kindOf(a), QorThingKind::None) << "the listener deleted it";
    const QorIdentifier again = w.model("Process", "Wrap");
    listener.upset = [&] {
        listener.upset = {};
        (void)w.builder().moveModel(again, group);
    };
    EXPECT_TRUE(w.builder().renameModel(again, "Pack").ok());
    EXPECT_EQ(w.reader().groupOfModel(again), group);
}

QOR_ON_ALL_STORES(Events);
QOR_ON_STORES(RolledBack, Kept::InMemory, Kept::InFile);

}  // namespace
