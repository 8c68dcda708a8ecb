// SPDX-License-Identifier: Apache-2.0
// Runs over a repository that fails, and objects that were pasted.
#include "modeltools/NamingDesk.h"
#include "platform/QorEditing.h"

namespace {

constexpr int kAlways = 0;

TEST(NamingFailures, AreReportedAndLeaveTheOthersAlone) {
    constexpr const char* kByProfile = "NAMEGEN srcattr: \"Profile\" attrprofattr: \"Label\"";
    const auto broken = static_cast<QorErrorCode>(77);
    const struct {
        const char* operation;
        int nth;
        const char* rule;
        int changes;
        const char* shown;
    } rows[] = {
        {"GetModelTypeIndexOfModel", kAlways, NamingDesk::kByTitle, 0, ""},
        {"GetModelTypeVisibleClasses", kAlways, NamingDesk::kByTitle, 0, ""},
        {"classOf", kAlways, NamingDesk::kByTitle, 2, ""},
        {"getAllInstancesOfClassAndSubClassInModel", kAlways, NamingDesk::kByTitle, 0, ""},
        {"getAllSubClasses", kAlways, NamingDesk::kByTitle, 2, ""},
        {"getAttributeValue", 1, NamingDesk::kByTitle, 0, "anamegen:104; "},
        {"getAttributeValue", 2, NamingDesk::kByTitle, 0, "anamegen:104; "},
        {"getAttributeValue", 3, NamingDesk::kByTitle, 1, "anamegen:158; "},
        {"getUIAttributeType", kAlways, NamingDesk::kByTitle, 0, "anamegen:145; "},
        {"getAttributeValueAsNewChar", 1, NamingDesk::kByTitle, 1, "anamegen:251; "},
        {"getAttributeIDFromAttrProfAttributeName", 1, kByProfile, 0, "anamegen:227; "},
        {"getInstanceIDFromInstanceName", 1, NamingDesk::kByTitle, 1, "anamegen:281; "},
        {"getInstanceIDFromInstanceName", 2, NamingDesk::kByTitle, 1, "anamegen:281; "},
        {"RenameInstance", 1, NamingDesk::kByTitle, 2, "anamegen:298; "},
        {"setAttributeValue", 1, NamingDesk::kByTitle, 2, "anamegen:306; "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.operation + std::to_string(row.nth));
        NamingDesk desk(row.rule);
        desk.order("Order-1", "Alpha");
        desk.order("Order-2", "Alpha");
        desk.watched().record.fail(row.operation, broken, row.nth);
        EXPECT_EQ(desk.run(), row.changes);
        EXPECT_EQ(desk.shown(), row.shown);
    }
}

TEST(NamingFailures, OfProfilesAndReferencesLeaveTheObject) {
    for (const char* source : {"Profile", "Models"}) {
        NamingDesk desk("NAMEGEN srcattr: \"" + std::string(source) + "\" attrprofattr: \"Label\"");
        desk.order("Order-1");
        QorHost host = desk.platform.host();
        host.editing = nullptr;
        host.attributeProfiles = nullptr;
        const QorHostInstallation without(host);
        EXPECT_EQ(desk.run(), 0);
        const std::string shown = desk.shown();
        EXPECT_NE(shown.find(source == std::string("Models") ? "anamegen:176; " : "anamegen:243; "), std::string::npos)
            << shown;
    }
}

// The object then has a name that is not the one it remembers, as if somebody had typed it.
TEST(NamingFailures, ARefusedRenamingIsRememberedAndCounts) {
    NamingDesk desk;
    const QorIdentifier order = desk.order("Old-1", "Alpha");
    desk.value(order, "__NameGeneration__", "NAMEGEN last:\"Old-1\"");
    const QorIdentifier next = desk.order("Order-1", "Alpha");
    desk.watched().record.fail("RenameInstance", QorErrorCode::ValueRefused);
    EXPECT_EQ(desk.run(), 2);
    EXPECT_EQ(desk.nameOf(order), "Old-1");
    EXPECT_EQ(desk.remembered(order), "NAMEGEN last:\"Alpha-1\"");
    EXPECT_EQ(desk.nameOf(next), "Alpha-1") << "the refused number is free";
    EXPECT_EQ(desk.run(), 0);
}

/// Tells for pasted objects whose copies they are, while it lives.
struct Pasting : QorEditingService {
    explicit Pasting(NamingDesk& desk) : _host(desk.platform.host()) {
        _host.editing = this;
        _installed.emplace(_host);
    }
    QorErrorCode sourceNameOfPastedObject(long, long object, SV::String& name) override {
        const auto found = sources.find(object);
        name = found == sources.end() ? SV::String() : SV::String(found->second);
        return found == sources.end() ? QorErrorCode::NotFound : QorErrorCode::Ok;
    }
    std::map<long, std::string> sources;

private:
    QorHost _host;
    std::optional<QorHostInstallation> _installed;
};

TEST(NamingOfPastedObjects, StartsAnewForCopiesOfGeneratedNames) {
    const struct {
        const char* name;
        const char* remembered;
        const char* source;  // null: not known
        const char* then;
    } rows[] = {
        {"Copy", "NAMEGEN last:\"Alpha-1\"", "Alpha-1", "NAMEGEN last:\"Copy\""},
        {"Say \"hi\"", "NAMEGEN last:\"Alpha-1\"", "Alpha-1", "NAMEGEN last:\"Say \"\"hi\"\"\""},
        {"Copy", "NAMEGEN last:\"Alpha-1\"", "Alpha-2", "NAMEGEN last:\"Alpha-1\""},
        {"Copy", "NAMEGEN last:\"Alpha-1\"", nullptr, "NAMEGEN last:\"Alpha-1\""},
        {"Copy", "", nullptr, ""},
        {"Copy", "not a \"keyword text", "Alpha-1", "not a \"keyword text"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name + std::string(row.remembered));
        NamingDesk desk;
        Pasting pasting(desk);
        const QorIdentifier copy = desk.order(row.name, "Beta");
        const QorIdentifier plain = desk.object("Plain", "Plain-1");
        desk.value(copy, "__NameGeneration__", row.remembered);
        if (row.source != nullptr) pasting.sources = {{copy, row.source}, {plain, row.source}};
        QorNameGenerator::UpdatePastedObjects(desk.shop, {copy, plain, 0, -1, 4294967296L + copy});
        EXPECT_EQ(desk.remembered(copy), row.then);
        EXPECT_EQ(desk.shown(), "");
    }
}

TEST(NamingOfPastedObjects, IsDoneByTheNextRun) {
    NamingDesk desk;
    Pasting pasting(desk);
    desk.order("Order-1", "Alpha");
    desk.run();
    const QorIdentifier copy = desk.order("Alpha-1 copy", "Alpha");
    desk.value(copy, "__NameGeneration__", "NAMEGEN last:\"Alpha-1\"");
    pasting.sources = {{copy, "Alpha-1"}};
    EXPECT_EQ(desk.run(), 0) << "as if somebody had typed it";
    QorNameGenerator::UpdatePastedObjects(desk.shop, {copy});
    EXPECT_EQ(desk.run(), 1);
    EXPECT_EQ(desk.nameOf(copy), "Alpha-2");
}

}  // namespace
