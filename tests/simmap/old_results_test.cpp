// SPDX-License-Identifier: Apache-2.0
// Result texts in the form before version 4.00.00.
#include "platform/QorCoreVar.h"
#include "simmap/OldResultText.h"
#include "simmap/QorSimResultAttributes.h"
#include "simmap/QorSimResultDefinitions.h"
#include "simmap/Shop.h"

namespace {

constexpr long kBusiness = QorLibraryKind::BusinessProcess;
constexpr long kStaff = QorLibraryKind::WorkingEnvironment;
constexpr const char* kRefused = nullptr;

TEST(OldResultText, IsRewrittenOrLeftAlone) {
    const struct {
        const char* old;
        long part;
        const char* rewritten;
    } cases[] = {
        {"@Start;Info;Cycle time;Costs", kBusiness,
         "PROCESSSTART \"Start\"\nfixedinfo:\"Info\"\nfixedcycletime:\"Cycle time\"\nfixedpersonalcosts:\"Costs\""},
        {"@Start;;Cycle time;;", kBusiness, "PROCESSSTART \"Start\"\nfixedcycletime:\"Cycle time\""},
        {" @Start;;;", kBusiness, kRefused},
        {"@ Start ;\n;;;Task;Costs;Info;\n@Task;;Number;;", kBusiness,
         "PROCESSSTART \"Start\"\n\nFROMCLASS \"Task\"\nfromattribute:\"Costs\"\nresultattribute:\"Info\"\n\nACTIVITY "
         "\"Task\"\nfixednumber:\"Number\""},
        {";@Task;;Number;;", kBusiness, "ACTIVITY \"Task\"\nfixednumber:\"Number\""},
        {"@Say \"hi\";;;;", kBusiness, "PROCESSSTART \"Say \"\"hi\"\"\""},
        {"@Person;;Workload;;;", kStaff, "PERSON \"Person\"\nfixedworkload:\"Workload\""},
        {";", kStaff, ""},
        {"@Person;;Workload;;", kStaff, "PERSON \"Person\"\nfixedworkload:\"Workload\""},
        {"@Person;;Workload;", kStaff, kRefused},
        {"@Start", kBusiness, kRefused},
        {"@Start;;", kBusiness, kRefused},
        {"@;;;", kBusiness, kRefused},
        {"@Start;;;;Task;Costs", kBusiness, kRefused},
        {"@Start;;;;Task;Costs;", kBusiness, kRefused},
        {"@Start;;@Task;;;", kBusiness, kRefused},
        {";;Task;Costs;Info", kBusiness, "FROMCLASS \"Task\"\nfromattribute:\"Costs\"\nresultattribute:\"Info\""},
        {";;;@Task;;;", kBusiness, kRefused},
        {"@A;;;;@B;;;;@C;;;", kBusiness, kRefused},
        {";;@Person;;;;", kStaff, kRefused},
        {"PROCESSSTART \"Start\"", kBusiness, kRefused},
        {"", kBusiness, kRefused},
        {"@Start;;;", 40, kRefused},
    };
    for (const auto& row : cases) {
        inOwnProcess([&row] {
            const bool isOld = row.rewritten != nullptr;
            SV::String text(row.old);
            EXPECT_EQ(QorSimResultAttributes::old2New(text, row.part), isOld) << row.old;
            EXPECT_EQ(text.str(), isOld ? row.rewritten : row.old);
            EXPECT_EQ(QorSimResultAttributes::Get_Error(), isOld ? 0 : 1) << row.old;
        });
    }
}

TEST(OldResultText, ComparesVersionsByTheirNumbers) {
    for (const char* below : {"3.99.99", "3", "", "03.100"})
        EXPECT_TRUE(qor::simmap::isVersionBelow(below, "4.00.00")) << below;
    for (const char* notBelow : {"4.00.00", "4", "4.0.0.1", "10.00.00", "99999999999999999999999"})
        EXPECT_FALSE(qor::simmap::isVersionBelow(notBelow, "4.00.00")) << notBelow;
}

class SyntaxLevel final : public QorCoreVarService {
public:
    SyntaxLevel(QorCoreVarService& others, const char* level) : _others(others), _level(level) {}
    long coreVar(QorCoreVarType variable) override { return _others.coreVar(variable); }
    const char* syntaxChecksLevel() override { return _level; }

private:
    QorCoreVarService& _others;
    const char* _level;
};

TEST(OldResultText, IsReadWhileThePlatformChecksTheOldSyntax) {
    for (const bool isOld : {true, false}) {
        inOwnProcess([isOld] {
            Shop shop;
            shop.results("@Start;;Cycle time;;;", "");
            shop.open();
            SyntaxLevel level(*shop.platform.host().coreVars, isOld ? "3.05.00" : "4.00.00");
            QorHost host = shop.platform.host();
            host.coreVars = &level;
            const QorHostInstallation installation(host);
            QorSimResultAttributes results;
            EXPECT_EQ(results.getResultAttributes(QorSimResultAttributeType::ProcessStart), isOld ? 1 : 0);
            EXPECT_EQ(QorSimResultAttributes::Get_Error(), isOld ? 0 : 1);
            EXPECT_EQ(QorSimResultAttributes::Get_ProcessStartMapping().numberOfElements(), isOld ? 1U : 0U);
            EXPECT_EQ(QorSimResultDefinitions().isUsable(), isOld);
        });
    }
}

}  // namespace
