// SPDX-License-Identifier: Apache-2.0
// What goes away leaves nothing behind.
#include <gtest/gtest.h>

#include "support/OnStores.h"

namespace {

using Type = QorCoreAttributeType;

struct Growth : OnStores {
    Growth() {
        w.cls("Task");
        w.relationClass("then", "Task", "Task");
        w.recordClass("Inner");
        w.recordClass("Outer");
        w.attribute("Inner", "Cell", Type::LongText);
        addRecord("Outer", "Inner");
        addRecord("Task", "Outer");
        w.attribute("Task", "Title", Type::Text);
        w.attribute("then", "Title", Type::Text);
        constexpr std::string_view kKinds[] = {"manual", "automatic"};
        QorAttributeSpec kind;
        kind.name = "Kind";
        kind.type = Type::Enumeration;
        kind.enumeration = kKinds;
        w.attribute("Task", kind);
        w.modelType("Process", {"Task"});
    }
    void addRecord(const char* owner, const char* rows) {
        QorAttributeSpec record;
        record.name = rows;
        record.type = Type::Record;
        record.target = w.idOf(rows);
        w.attribute(owner, record);
    }
    // An object with a relation to itself and rows in rows, all with long texts.
    QorIdentifier furnishedObject(const std::string& name) {
        const auto object = w.object("Task", name + std::string(200, 'n'));
        w.value(object, "Title", std::string(200, 't'));
        w.value(w.connect(object, "then", object), "Title", std::string(200, 'u'));
        long outer = -1;
        const auto code = repository.createRecordInstance(model, object, w.attributeOf(object, "Outer"), outer, -1);
        EXPECT_EQ(code, QorErrorCode::Ok);
        row = outer;
        inner = -1;
        const auto rows = w.attributeOf(w.idOf("Outer"), "Inner");
        EXPECT_EQ(repository.createRecordInstance(model, outer, rows, inner, -1), QorErrorCode::Ok);
        const std::string cell(200, 'c');
        EXPECT_EQ(repository.setAttributeValueAsString(model, inner, w.attributeOf(w.idOf("Inner"), "Cell"),
                                                       cell.c_str(), false),
                  QorErrorCode::Ok);
        return object;
    }
    [[nodiscard]] std::size_t bytes() const { return w.platform.repositoryBytes(); }

    QorCoreModelingManager& repository = w.repository();
    QorIdentifier model = QorNoIdentifier;
    long row = -1;
    long inner = -1;
};

TEST_P(Growth, RenamingAndSettingValuesTakesNoMoreRoom) {
    model = w.model("Process", "First");
    const auto object = w.object("Task", "a");
    const auto edit = [&](int n) {
        const std::string name = "name " + std::to_string(n % 100);
        ASSERT_EQ(repository.RenameInstance(model, object, name.c_str(), false), QorErrorCode::Ok);
        w.value(object, "Title", std::string(static_cast<std::size_t>(n % 50), 't'));
        w.value(object, "Kind", n % 2 == 0 ? "" : "manual");
        w.value(object, "Kind", "automatic");
    };
    for (int n = 0; n < 200; ++n) edit(n);
    const std::size_t before = bytes();
    for (int n = 0; n < (isInFile() ? 1000 : 50000); ++n) edit(n);
    EXPECT_EQ(bytes(), before);
}

TEST_P(Growth, DeletedObjectsAndModelsLeaveOnlyTheirIdentifiersBehind) {
    const std::size_t cycles = isInFile() ? 400 : 20000;
    constexpr std::size_t kIdentifiers = 10;  // used up by a cycle, at up to 8 bytes each
    const auto cycle = [&] {
        model = w.model("Process", "First" + std::string(200, 'm'), std::string(200, 'v'));
        ASSERT_EQ(repository.deleteInstance(model, furnishedObject("a")), QorErrorCode::Ok);
        furnishedObject("b");
        ASSERT_TRUE(w.builder().removeModel(model).ok());
    };
    cycle();
    const std::size_t before = bytes();
    for (std::size_t n = 0; n < cycles; ++n) cycle();
    EXPECT_LT(bytes() - before, cycles * kIdentifiers * 8);
}

TEST_P(Growth, ADeletedRowTakesItsOwnRowsAlong) {
    model = w.model("Process", "First");
    const auto object = furnishedObject("a");
    ASSERT_EQ(repository.deleteRecordInstance(model, object, w.attributeOf(object, "Outer"), row), QorErrorCode::Ok);
    EXPECT_EQ(w.reader().kindOf(static_cast<QorIdentifier>(inner)), QorThingKind::None);
}

TEST_P(Growth, AClassWithoutObjectsAnyMoreCanBeChangedAgain) {
    model = w.model("Process", "First");
    const auto object = furnishedObject("a");
    QorAttributeSpec late;
    late.name = "Late";
    for (const char* owner : {"Task", "then", "Outer", "Inner"})
        EXPECT_EQ(w.builder().addAttribute(w.idOf(owner), late).error, QorBuildError::HasInstances) << owner;
    ASSERT_EQ(repository.deleteInstance(model, object), QorErrorCode::Ok);
    for (const char* owner : {"Task", "then", "Outer", "Inner"}) w.attribute(owner, late);
}

QOR_ON_STORES(Growth, Kept::InMemory, Kept::InFile);

}  // namespace
