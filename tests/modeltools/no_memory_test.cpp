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

/// Runs `prepare`, then what it gives with its n-th allocation failing, for every n until none fails any more; `after`
/// each time. What the platform makes once in a process is made before.
void eachAllocationFails(const std::function<std::function<void()>()>& prepare, const std::function<void()>& after) {
    prepare()();
    after();
    for (long n = 1; n < 20'000; ++n) {
        const std::function<void()> run = prepare();
        failing_allocations::untilFailure = n;
        run();
        const bool failed = failing_allocations::untilFailure == 0;
        failing_allocations::untilFailure = 0;
        after();
        if (!failed) return;
    }
    FAIL() << "allocations without end";
}

TEST(ModelToolsWithoutMemory, NameWhatTheyCan) {
    std::unique_ptr<NamingDesk> desk;
    eachAllocationFails(
        [&]() -> std::function<void()> {
            desk.reset();  // hosts are removed in the reverse order
            desk = std::make_unique<NamingDesk>();
            desk->order("Order-1", "a title that is too long to be stored without memory of its own");
            desk->value(desk->order("Alpha-1", "Beta"), "__NameGeneration__", "NAMEGEN last:\"Alpha-1\"");
            return [&] {
                QorNameGenerator generator(desk->shop);
                (void)generator.IsNameGenDefined();
                generator.Execute();
                QorNameGenerator::UpdatePastedObjects(desk->shop, ISortedSet<long>());
                SV::String error;
                (void)QorNameGenerator::IsCorrectNameGenAttr("NAMEGEN", desk->idOf("Order"), 0, error);
            };
        },
        [&] {
            (void)desk->run();
            for (const std::string& name : desk->names()) EXPECT_FALSE(name.starts_with("Order-")) << name;
        });
}

TEST(ModelToolsWithoutMemory, PlanAllOrNothing) {
    NamingDesk desk;
    desk.order("Order-1", "a title that is too long to be stored without memory of its own");
    desk.order("Order-2", "a title that is too long to be stored without memory of its own");
    QorNamePlan plan(desk.shop);
    bool made = false;
    eachAllocationFails([&]() -> std::function<void()> { return [&] { made = plan.make(); }; },
                        [&] {
                            if (!made) {
                                EXPECT_TRUE(plan.changes().empty());
                            }
                        });
    EXPECT_EQ(plan.changes().size(), 2U);
}

TEST(ModelToolsWithoutMemory, AnswerAsSoonAsThereIsMemory) {
    HierarchyDesk desk;
    const auto models = desk.models(3);
    desk.callTo(models[0], {"M1", "M2"});
    desk.callTo(models[1], {"M0", "a model whose name needs memory of its own"});
    const ISortedSet<long> all{models[0], models[1], models[2]};
    std::unique_ptr<QorHierarchyManager> manager;
    QorReferenceIndex index;
    QorHierarchyTree tree;
    SV::String xml;
    eachAllocationFails(
        [&]() -> std::function<void()> {
            return [&] {
                manager.reset(new (std::nothrow) QorHierarchyManager);
                if (manager) (void)manager->GetHierarchyAsXML(models[0], xml);
                (void)index.build(all);
                (void)index.cycles();
                (void)index.ifModelRenamed(models[1], "M5");
                (void)tree.build(index, models[0], 10);
                SV::String text;
                for (const auto write : {&QorHierarchyTree::asXml, &QorHierarchyTree::asJson, &QorHierarchyTree::asSvg})
                    (void)(tree.*write)(text);
            };
        },
        [&] {
            // A repository that fails while a manager is made leaves that one without hierarchy attributes.
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

/// Whatever is missing in the one object is in the other.
TEST(ModelToolsWithoutMemory, ConvertWithoutLosingAnything) {
    std::unique_ptr<ConversionDesk> desk;
    QorIdentifier task = QorNoIdentifier;
    QorIdentifier relation = QorNoIdentifier;
    eachAllocationFails(
        [&]() -> std::function<void()> {
            desk.reset();  // hosts are installed and removed like a stack
            desk = std::make_unique<ConversionDesk>();
            task = desk->object("Task", "a name that is too long to be stored without memory of its own");
            desk->value(task, "Calls", "MODEL \"Monday\" type: \"Shop\"");
            desk->row(task, "nail", "3");
            relation = desk->connect(task, "and", task);
            return [&desk, &task, from = desk->idOf("Task"), to = desk->idOf("Check")] {
                long made = 5;
                (void)QorConversionHandler(from).Convert(desk->shop, task, to, made);
            };
        },
        [&] {
            EXPECT_FALSE(desk->reader().objectsOf(desk->shop).empty());
            EXPECT_NE(desk->reader().relationInfo(relation).id, QorNoIdentifier);
        });
}

// A plan that is made, carried out, or breaks off has changed everything or nothing.
TEST(ModelToolsWithoutMemory, PlanAndConvertAllOrNothing) {
    std::unique_ptr<ConversionDesk> desk;
    std::string before;
    bool done = false;
    eachAllocationFails(
        [&]() -> std::function<void()> {
            desk.reset();
            desk = std::make_unique<ConversionDesk>();
            const auto tasks = desk->objects("Task", {"One", "Two"});
            for (const QorIdentifier task : tasks) desk->row(task, "nail", "3");
            desk->value(tasks[0], "Info", "a value that is too long to be stored without memory of its own");
            desk->value(tasks[1], "Calls", "MODEL \"Monday\" type: \"Shop\"");
            desk->connect(tasks[0], "and", tasks[1]);
            before = pictureOf(desk->platform);
            return [&done, &shop = *desk, both = ISortedSet<long>{tasks[0], tasks[1]}, check = desk->idOf("Check")] {
                QorConversionPlan plan;
                done = plan.make(shop.shop, both, check) && plan.carryOut();
            };
        },
        [&] {
            if (!done) {
                ASSERT_EQ(pictureOf(desk->platform), before);
                return;
            }
            const auto made = desk->reader().objectsOf(desk->shop);
            ASSERT_EQ(made.size(), 2U);
            for (const QorIdentifier object : made) ASSERT_EQ(desk->rowsOf(object), "nail/3/;");
            ASSERT_EQ(desk->valueOf(made[0], "Note").size(), 63U);
            ASSERT_EQ(desk->valueOf(made[1], "Calls"), "MODEL \"Monday\" type: \"Shop\"");
        });
    EXPECT_TRUE(done);
}

// What a transfer says is done is done; whatever it says, the source keeps what it has, and the next transfer works.
TEST(ModelToolsWithoutMemory, TransferWhatTheySay) {
    auto& clipboard = QorTransferAttributesClipboard::Instance();
    std::unique_ptr<ConversionDesk> desk;
    QorIdentifier source = QorNoIdentifier;
    QorIdentifier target = QorNoIdentifier;
    ISortedSet<long> attributes;
    bool copied = false;
    bool several = false;
    const auto state = [&](QorIdentifier object) {
        return desk->valueOf(object, "Info") + desk->valueOf(object, "Calls") + desk->valueOf(object, "Position") +
               desk->rowsOf(object);
    };
    const std::string whole = "a value that is too long to be stored without memory of its own" +
                              std::string("MODEL \"Monday\" type: \"Shop\"NODE x:1cm w:2cm h:3cm");
    eachAllocationFails(
        [&]() -> std::function<void()> {
            desk.reset();
            desk = std::make_unique<ConversionDesk>();
            source = desk->object("Task", "Source");
            target = desk->object("Task", "Target");
            desk->value(source, "Info", "a value that is too long to be stored without memory of its own");
            desk->value(source, "Calls", "MODEL \"Monday\" type: \"Shop\"");
            desk->value(source, "Position", "NODE x:1cm w:2cm h:3cm");
            desk->value(target, "Position", "NODE x:1cm w:9cm h:9cm");
            desk->row(source, "nail", "3");
            desk->row(target, "old", "1");
            attributes = {-1};
            for (const char* name : {"Info", "Calls", "Table"}) attributes.add(desk->attributeOf(source, name));
            return [&, targets = ISortedSet<long>{target}] {
                bool changed = false;
                clipboard.setAttributes(desk->shop, source, attributes);
                copied = !clipboard.empty() && clipboard.copyAttributes(desk->shop, target, false, false, changed);
                QorAttributeTransfer transfer;
                several = transfer.plan(desk->shop, source, attributes, targets) &&
                          transfer.carryOut(QorTransferMode::AllOrNothing);
            };
        },
        [&] {
            ASSERT_EQ(state(source), whole + "nail/3/secret;");
            if (copied || several) {
                ASSERT_EQ(state(target), whole + "nail/3/;");
            }
            bool changed = false;
            clipboard.setAttributes(desk->shop, source, attributes);
            ASSERT_TRUE(clipboard.copyAttributes(desk->shop, target, false, false, changed));
            ASSERT_EQ(state(target), whole + "nail/3/;");
        });
    EXPECT_TRUE(copied && several);
    clipboard.clear();
}

}  // namespace
