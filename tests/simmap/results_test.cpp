// SPDX-License-Identifier: Apache-2.0
// Into which attributes results go, and their reset. What the process keeps is tested in processes of their own.
#include "simmap/QorSimResultAttributes.h"
#include "simmap/QorSimResultDefinitions.h"
#include "simmap/QorSimResultReset.h"
#include "simmap/Shop.h"
#include "simmap/messages.h"
#include "support/UserDesk.h"

namespace {

namespace message = qor::simmap::message;
using enum QorSimResultAttributeType;
using Results = QorSimResultAttributes;
using Mapping = ISortedSet<std::pair<long, long>>;

TEST(Results, GoIntoTheAttributesThatTheTextsName) {
    inOwnProcess([] {
        Shop shop;
        shop.results(kBusiness, kStaff);
        shop.open();
        Results results;
        EXPECT_EQ(Results::Get_PersonAttributes().numberOfElements(), 0U) << "not made yet";
        for (const auto kind : {ProcessStart, Activity, Person}) EXPECT_EQ(results.getResultAttributes(kind), 1);
        EXPECT_EQ(results.getResultAttributes(static_cast<QorSimResultAttributeType>(3)), 0);

        EXPECT_EQ(Results::Get_ProcessStartAttributes(),
                  (ISequence<long>{shop.at("Start", "Info"), shop.at("Start", "Cycle time"), 0}));
        EXPECT_EQ(Results::Get_ActivityAttributes(),
                  (ISequence<long>{0, shop.at("Task", "Number"), shop.at("Task", "Costs")}));
        EXPECT_EQ(Results::Get_PersonAttributes(),
                  (ISequence<long>{shop.at("Person", "Info"), shop.at("Person", "Workload"), 0, 0}));
        const auto same = [](long id) { return std::pair(id, id); };
        EXPECT_EQ(Results::Get_ProcessStartMapping(), (Mapping{same(shop.at("Start", "Info")),
                                                               same(shop.at("Start", "Cycle time")),
                                                               {shop.at("Task", "Costs"), shop.at("Start", "Costs")}}));
        EXPECT_EQ(Results::Get_ActivityMapping(),
                  (Mapping{same(shop.at("Task", "Number")), same(shop.at("Task", "Costs"))}));
        EXPECT_EQ(Results::Get_PersonMapping(), (Mapping{same(shop.at("Person", "Info")),
                                                         same(shop.at("Person", "Workload")),
                                                         {shop.at("Robot", "Wage"), shop.at("Person", "Workload")}}));
        EXPECT_EQ(Results::Get_Error(), 0);
    });
}

// An attribute of unknown type gets the empty text, which takes a number's value away.
TEST(Results, AreResetByTypeInAllHoldersOfTheModelsAlsoBehindAFailure) {
    const struct {
        const char* operation;
        int nth;
        const char* shown;
        const char* state;
    } cases[] = {
        {"none", 1, "", kReset},
        {"getUIAttributeType", 1, "asimresm:1044; ", "|00:000:00:00:00||0|0|kept|0"},
        {"getUIAttributeType", 4, "asimresm:1105; ", "|00:000:00:00:00|0||0|kept|0"},
        {"getUIAttributeType", 6, "asimresm:1169; ", "|00:000:00:00:00|0|0|0|kept|0"},
        {"setAttributeValue", 1, "asimresm:1062; ", "|00:000:00:00:00|12.5|0|0|kept|0"},
        {"setAttributeValue", 2, "asimresm:1079; ", "42 orders|00:000:00:00:00|0|0|0|kept|0"},
        {"setAttributeValue", 3, "asimresm:1070; ", "|00:001:00:00:00|0|0|0|kept|0"},
        {"setAttributeValue", 4, "asimresm:1116; ", "|00:000:00:00:00|0|7|0|kept|0"},
        {"setAttributeValue", 7, "asimresm:1124; ", "|00:000:00:00:00|0|0|1.5|kept|0"},
        {"setAttributeValue", 8, "asimresm:1205; ", kReset},
        {"setAttributeValue", 9, "asimresm:1188; ", kReset},
    };
    for (const auto& row : cases) {
        inOwnProcess([&row] {
            RunShop shop;
            shop.watched().record.fail(row.operation, QorErrorCode::NotFound, row.nth);
            ISortedSet<long> instances{4711};
            EXPECT_EQ(Results().resetResultAttributes({shop.process, 999999, shop.staff}, instances), 1);
            EXPECT_EQ(instances, (ISortedSet<long>{shop.start, shop.task, shop.check, shop.robot})) << "and subclasses";
            EXPECT_EQ(shop.shown(), row.shown) << row.operation << row.nth;
            EXPECT_EQ(shop.state(), row.state) << row.operation << row.nth;
        });
    }
}

TEST(Results, AnErrorEmptiesItsKindOnceAndBlocksEveryReset) {
    const std::string from = "ACTIVITY \"Task\" fixednumber: \"Number\" FROMCLASS ";
    const struct {
        std::string business;
        const char* staff;
        QorSimResultAttributeType kind;
        int code;
    } cases[] = {
        {"PROCESSSTART \"Nobody\"", "", ProcessStart, 0},
        {"PROCESSSTART", "", ProcessStart, 0},
        {"ACTIVITY \"Task\" fixedinfo: \"Soul\"", "", Activity, 0},
        {from + "\"Person\" fromattribute: \"Wage\" resultattribute: \"Costs\"", "", Activity, 0},
        {from + "\"Start\" fromattribute: \"Costs\"", "", Activity, 0},
        {from + "\"Start\" resultattribute: \"Costs\"", "", Activity, 0},
        {from + "\"Start\" fromattribute: \"Costs\" resultattribute: \"Cycle time\"", "", Activity, 0},
        {"", "PERSON \"Person\" fixedcapacity: \"Wage\" fixedpersonalcosts: \"\"", Person, 0},
        {"", "PERSON \"Person", Person, 0},
        {"FROMCLASS \"Nobody\" ACTIVITY \"Task\"", "", Activity, 1},
        {"ACTIVITY \"Task\" ACTIVITY \"Nobody\" fixedinfo: \"Soul\"", "", Activity, 1},
        {"ACTIVITY \"Task\" PROCESSSTART \"Start\" FROMCLASS \"Nobody\"", "", Activity, 1},
        {"PROCESSSTART \"Start\"", "", Activity, 1},
    };
    for (const auto& row : cases) {
        inOwnProcess([&row] {
            Shop shop;
            shop.results(row.business, row.staff);
            shop.open();
            Results results;
            EXPECT_EQ(results.getResultAttributes(row.kind), row.code) << row.business << row.staff;
            EXPECT_EQ(shop.shown(), row.code == 1 ? "" : said(message::resultNameUnknown).str() + "; ");
            EXPECT_EQ(Results::Get_Error(), 1 - row.code);
            if (row.code == 1) return;
            EXPECT_EQ(results.getResultAttributes(row.kind), 1) << "the tables are made, empty as they are";
            for (const auto* mapping :
                 {&Results::Get_ProcessStartMapping(), &Results::Get_ActivityMapping(), &Results::Get_PersonMapping()})
                EXPECT_TRUE(mapping->isEmpty()) << row.business;
            EXPECT_TRUE(Results::Get_ActivityAttributes().isEmpty()) << row.business;
            EXPECT_TRUE(Results::Get_PersonAttributes().isEmpty()) << row.business;

            shop.results(kBusiness, kStaff);
            ISortedSet<long> instances{4711};
            EXPECT_EQ(Results().resetResultAttributes({}, instances), 0) << "until the process ends";
            EXPECT_EQ(instances, ISortedSet<long>{4711});
        });
    }
}

TEST(Results, AreReadOnceInAProcess) {
    inOwnProcess([] {
        Shop shop;
        shop.open();
        Results before;
        EXPECT_EQ(before.getResultAttributes(Activity), 1) << "without a text there is nothing to find";
        shop.results(kBusiness, kStaff);
        Results after;
        EXPECT_EQ(after.getResultAttributes(Activity), 1);
        EXPECT_TRUE(Results::Get_ActivityMapping().isEmpty());
        EXPECT_EQ(after.getResultAttributes(Person), 1);
        EXPECT_FALSE(Results::Get_PersonMapping().isEmpty());
    });
}

TEST(Results, AnUnknownKindIsAnInternalError) {
    inOwnProcess([] {
        struct Open : Results {
            using Results::_GetAttrError;
        };
        Shop shop;
        Open().Open::_GetAttrError(static_cast<QorSimResultAttributeType>(3));
        EXPECT_EQ(shop.shown(), "asimresm:204; ");
        EXPECT_EQ(Results::Get_Error(), 1);
    });
}

/// Without a library, but with units of work, which are recorded.
class Unloaded final : public QorCoreModelingManager {
public:
    using QorCoreModelingManager::getAttributeValue;
    QorErrorCode getAttributeValue(long, long, char*&, bool) override { return QorErrorCode::NotFound; }
    QorCoreUnitsOfWork* unitsOfWork() override { return &desk; }
    UserDesk desk;
};

TEST(Results, AreResetInOneUnitOfWork) {
    for (const auto code : {QorErrorCode::Ok, QorErrorCode::Broken}) {
        inOwnProcess([code] {
            Unloaded unloaded;
            unloaded.desk.record.fail("commit", code);
            QorHost host;
            host.repository = &unloaded;
            const QorHostInstallation installation(host);
            ISortedSet<long> instances;
            EXPECT_EQ(Results().resetResultAttributes({1, 2}, instances), code == QorErrorCode::Ok ? 1 : 0);
            EXPECT_EQ(unloaded.desk.record.order(), (std::vector<std::string>{"begin", "commit"}));
        });
    }
}

TEST(ResultDefinitions, TellAllErrorsWithTheirPlacesAndRemarks) {
    Shop shop;
    shop.results(
        "FROMCLASS \"Task\"\nPROCESSSTART \"Start\" fixedinfo: \"Soul\"\nACTIVITY \"Nobody\"\n"
        "FROMCLASS \"Task\"\nPROCESSSTART \"Start\"\nFROMCLASS \"Task\" fromattribute: \"X\"",
        "PERSON \"");
    shop.open();
    const QorSimResultDefinitions definitions;
    std::string told;
    for (const auto& error : definitions.errors())
        told += std::to_string(error.code) + "@" + std::to_string(error.position.line) + " ";
    EXPECT_EQ(told, "1@2 1@6 5@6 1@3 0@1 0@5 4@1 ");
    EXPECT_FALSE(definitions.isUsable());
    EXPECT_EQ(definitions.holders()[0].cls, shop.idOf("Start")) << "what is right is taken over";
    EXPECT_EQ(definitions.errors().back().library, shop.environment);

    shop.results("OTHER PROCESSSTART \"Start\"", "");
    EXPECT_TRUE(QorSimResultDefinitions().isUsable()) << "a remark is no error";
}

TEST(ResultReset, ShowsWhatItWouldChangeAndChangesJustThat) {
    RunShop shop;
    const QorSimResultDefinitions definitions;
    QorSimResultReset reset;
    ASSERT_TRUE(reset.plan(definitions, {shop.process, shop.staff}));
    std::string planned;
    for (const auto& change : reset.changes())
        planned += change.before.str() + ">" + QorSimResultReset::textAfter(change) + " ";
    EXPECT_EQ(planned, "42 orders> 00:001:00:00:00>00:000:00:00:00 12.5>0 7>0 7>0 1.5>0 1.5>0 0.8>0 ");
    EXPECT_EQ(shop.state(), kFilled) << "a plan writes nothing";
    EXPECT_TRUE(reset.apply());
    EXPECT_EQ(shop.state(), kReset);
    ASSERT_TRUE(reset.plan(definitions, {shop.process, shop.staff}));
    EXPECT_TRUE(reset.changes().empty());
}

TEST(ResultReset, TakesBackEverythingWhenAValueCannotBeWritten) {
    RunShop shop;
    const QorSimResultDefinitions definitions;
    QorSimResultReset reset;
    ASSERT_TRUE(reset.plan(definitions, {shop.process, shop.staff}));
    for (int nth = 1; nth <= 8; ++nth) {
        shop.watched().record.fail("setAttributeValue", QorErrorCode::ValueRefused, nth);
        EXPECT_FALSE(reset.apply()) << nth;
        EXPECT_EQ(shop.state(), kFilled) << nth;
    }
    shop.watched().record.fail("getUIAttributeType", QorErrorCode::NotFound, 2);
    EXPECT_FALSE(reset.plan(definitions, {shop.process}));
    EXPECT_TRUE(reset.changes().empty()) << "half a plan is none";
}

}  // namespace
