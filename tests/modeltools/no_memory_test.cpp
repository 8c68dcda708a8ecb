// SPDX-License-Identifier: Apache-2.0
// Every allocation of naming, hierarchies, references and conversion fails once: nothing is thrown, and what was there
// stays usable.
#include <functional>

#include "modeltools/ConversionDesk.h"
#include "modeltools/HierarchyDesk.h"
#include "modeltools/NamingDesk.h"
#include "modeltools/QorAttributeTransfer.h"
#include "modeltools/QorConversionPlan.h"
#include "modeltools/QorHierarchyTree.h"
#include "modeltools/QorReferenceIndex.h"
#include "modeltools/QorTransferAttributesClipboard.h"
#include "support/FailingAllocations.h"
#include "support/Picture.h"

namespace {

constexpr const char* kLong = "a text that is too long to be stored without memory of its own";

/// Runs `run` with its n-th allocation failing, for every n until none fails any more, on what `prepare` made; `after`
/// each time. What the platform makes once in a process is made before.
void eachAllocationFails(const std::function<void()>& prepare, const std::function<void()>& run,
                         const std::function<void()>& after) {
    const auto prepared = [&] {
        const long number = std::exchange(failing_allocations::untilFailure, 0);
        prepare();
        failing_allocations::untilFailure = number;
        run();
        return true;
    };
    prepared();
    after();
    EXPECT_GT(failing_allocations::failEach(prepared, [&](bool, long) { after(); }), 0);
}

/// A desk of that kind, made anew; hosts are removed in the reverse order of their installation.
template <class Desk>
void renew(std::unique_ptr<Desk>& desk) {
    desk.reset();
    desk = std::make_unique<Desk>();
}

TEST(ModelToolsWithoutMemory, NameWhatTheyCan) {
    std::unique_ptr<NamingDesk> desk;
    eachAllocationFails(
        [&] {
            renew(desk);
            desk->order("Order-1", kLong);
            desk->value(desk->order("Alpha-1", "Beta"), "__NameGeneration__", "NAMEGEN last:\"Alpha-1\"");
        },
        [&] {
            QorNameGenerator generator(desk->shop);
            (void)generator.IsNameGenDefined();
            generator.Execute();
            QorNameGenerator::UpdatePastedObjects(desk->shop, ISortedSet<long>());
            SV::String error;
            (void)QorNameGenerator::IsCorrectNameGenAttr("NAMEGEN", desk->idOf("Order"), 0, error);
        },
        [&] {
            (void)desk->run();
            for (const std::string& name : desk->names()) EXPECT_FALSE(name.starts_with("Order-")) << name;
        });
}

TEST(ModelToolsWithoutMemory, PlanAllOrNothing) {
    NamingDesk desk;
    for (const char* name : {"Order-1", "Order-2"}) desk.order(name, kLong);
    QorNamePlan plan(desk.shop);
    bool made = false;
    eachAllocationFails([] {}, [&] { made = plan.make(); }, [&] { EXPECT_TRUE(made || plan.changes().empty()); });
    EXPECT_EQ(plan.changes().size(), 2U);
}

TEST(ModelToolsWithoutMemory, AnswerAsSoonAsThereIsMemory) {
    HierarchyDesk desk;
    const auto models = desk.models(3);
    desk.callTo(models[0], {"M1", "M2"});
    desk.callTo(models[1], {"M0", kLong});
    const ISortedSet<long> all{models[0], models[1], models[2]};
    std::unique_ptr<QorHierarchyManager> manager;
    QorReferenceIndex index;
    QorHierarchyTree tree;
    SV::String xml;
    eachAllocationFails(
        [] {},
        [&] {
            manager.reset(new (std::nothrow) QorHierarchyManager);
            if (manager) (void)manager->GetHierarchyAsXML(models[0], xml);
            (void)index.build(all);
            (void)index.cycles();
            (void)index.ifModelRenamed(models[1], "M5");
            (void)tree.build(index, models[0], 10);
            SV::String text;
            for (const auto write : {&QorHierarchyTree::asXml, &QorHierarchyTree::asJson, &QorHierarchyTree::asSvg})
                (void)(tree.*write)(text);
        },
        [&] {
            // A repository that fails while a manager is made leaves that one without attributes.
            QorHierarchyManager fresh;
            SV::String whole;
            SV::String again;
            ASSERT_EQ(fresh.GetHierarchyAsXML(models[0], whole), QorErrorCode::Ok);
            ASSERT_TRUE(index.build(all));
            ASSERT_EQ(tree.build(index, models[0], 10), QorErrorCode::Ok);
            ASSERT_EQ(tree.asXml(again), QorErrorCode::Ok);
            ASSERT_EQ(again, whole);
            ASSERT_EQ(tree.elements().size(), 4U);
        });
}

/// Two tasks with everything that can be carried over.
struct TwoTasks : ConversionDesk {
    TwoTasks() {
        value(tasks[0], "Info", kLong);
        value(tasks[0], "Calls", "MODEL \"Monday\" type: \"Shop\"");
        value(tasks[0], "Position", "NODE x:1cm w:2cm h:3cm");
        value(tasks[1], "Position", "NODE x:1cm w:9cm h:9cm");
        row(tasks[0], "nail", "3");
        row(tasks[1], "old", "1");
        connect(tasks[0], "and", tasks[1]);
        before = pictureOf(platform);
    }
    std::vector<QorIdentifier> tasks = objects("Task", {kLong, "Two"});
    // What the calls take, made before memory runs out.
    ISortedSet<long> both{tasks[0], tasks[1]};
    ISortedSet<long> second{tasks[1]};
    long check = idOf("Check");
    QorConversionHandler handler{idOf("Task")};
    std::string before;
};

/// Whatever is missing in the one object is in the other.
TEST(ModelToolsWithoutMemory, ConvertWithoutLosingAnything) {
    std::unique_ptr<TwoTasks> desk;
    eachAllocationFails([&] { renew(desk); },
                        [&] {
                            long made = 5;
                            (void)desk->handler.Convert(desk->shop, desk->tasks[0], desk->check, made);
                        },
                        [&] {
                            EXPECT_GE(desk->reader().objectsOf(desk->shop).size(), 2U);
                            EXPECT_EQ(desk->reader().relationsOf(desk->shop).size(), 1U);
                        });
}

// A plan that is made, carried out, or breaks off has changed everything or nothing.
TEST(ModelToolsWithoutMemory, PlanAndConvertAllOrNothing) {
    std::unique_ptr<TwoTasks> desk;
    std::string whole;
    bool done = false;
    eachAllocationFails([&] { renew(desk); },
                        [&] {
                            QorConversionPlan plan;
                            done = plan.make(desk->shop, desk->both, desk->check) && plan.carryOut();
                        },
                        [&] {
                            if (whole.empty()) whole = pictureOf(desk->platform);
                            ASSERT_EQ(pictureOf(desk->platform), done ? whole : desk->before);
                        });
    EXPECT_TRUE(done);
}

// What a transfer says is done is done; whatever it says, the source keeps what it has, and the next transfer works.
TEST(ModelToolsWithoutMemory, TransferWhatTheySay) {
    auto& clipboard = QorTransferAttributesClipboard::Instance();
    std::unique_ptr<TwoTasks> desk;
    ISortedSet<long> attributes;
    bool copied = false;
    bool several = false;
    const auto copy = [&] {
        bool changed = false;
        clipboard.setAttributes(desk->shop, desk->tasks[0], attributes);
        return !clipboard.empty() && clipboard.copyAttributes(desk->shop, desk->tasks[1], false, false, changed);
    };
    const auto state = [&](std::size_t at) {
        std::string all = desk->rowsOf(desk->tasks[at]);
        for (const char* name : {"Info", "Calls", "Position"}) all += desk->valueOf(desk->tasks[at], name);
        return all;
    };
    const std::string values = std::string(kLong) + "MODEL \"Monday\" type: \"Shop\"NODE x:1cm w:2cm h:3cm";
    eachAllocationFails(
        [&] {
            renew(desk);
            attributes = {-1};
            for (const char* name : {"Info", "Calls", "Table"}) attributes.add(desk->attributeOf(desk->tasks[0], name));
        },
        [&] {
            copied = copy();
            QorAttributeTransfer transfer;
            several = transfer.plan(desk->shop, desk->tasks[0], attributes, desk->second) &&
                      transfer.carryOut(QorTransferMode::AllOrNothing);
        },
        [&] {
            ASSERT_EQ(state(0), "nail/3/secret;" + values);
            ASSERT_TRUE((!copied && !several) || state(1) == "nail/3/;" + values);
            ASSERT_TRUE(copy());
            ASSERT_EQ(state(1), "nail/3/;" + values);
        });
    EXPECT_TRUE(copied && several);
    clipboard.clear();
}

}  // namespace
