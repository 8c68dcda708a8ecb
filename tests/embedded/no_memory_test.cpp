// SPDX-License-Identifier: Apache-2.0
// Every allocation of every operation fails once: the operation says so, throws nothing and has changed nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorEncryption.h"
#include "platform/QorFileManager.h"
#include "platform/QorOwnedText.h"
#include "support/FailingAllocations.h"
#include "support/OnStores.h"
#include "support/Picture.h"

namespace {

using Type = QorCoreAttributeType;

struct Scene {
    explicit Scene(Kept kept = Kept::InMemory) : w(kOptions, kept == Kept::InFile ? folder.file("a.qor") : "") {
        w.abstractClass("Node");
        task = w.cls("Task", "Node");
        table = w.recordClass("Table");
        w.attribute("Table", "Cell", Type::Text);
        w.relationClass("then", "Node", "Node");
        title = w.attribute("Node", "Title", Type::Text);
        links = w.attribute("Task", "Links", Type::InterReference);
        QorAttributeSpec rows;
        rows.name = "Rows";
        rows.type = Type::Record;
        rows.target = table;
        record = w.attribute("Task", rows);
        sum = w.attribute("Task", "Sum", Type::Expression, "[Title] & [Title]");
        empty = w.cls("Empty", "Task");
        thenClass = w.idOf("then");
        type = w.modelType("Process", {"Task"});
        model = w.model("Process", "First");
        a = w.object("Task", "a");
        b = w.object("Task", "b");
        for (int n = 0; n < 70; ++n) w.connect(b, "then", w.object("Task", std::to_string(n)));
        w.builder().layOut();
        then = w.connect(a, "then", b);
        w.value(a, "Title", "long enough to be somewhere on the heap");
        w.value(a, "Links", "OBJECT \"o\" class: \"C\" model: \"m\" type: \"T\"");
        const auto row = builder.addRecordRow(a, record).id;
        (void)builder.setValue(row, w.attributeOf(table, "Cell"), "a cell that is long enough to stand on the heap");
        group = builder.addModelGroup(w.library, "group").id;
        inner = builder.addModelGroup(w.library, "inner").id;
        user = users.addUser("ada").id;
        staff = users.addUserGroup("Staff").id;
        (void)users.join(user, staff);
        (void)users.setPermission(staff, inner, 2);
        if (kept == Kept::InUnit && repository.unitsOfWork()->begin() != QorErrorCode::Ok) std::abort();
    }
    [[nodiscard]] QorBuildResult result(QorErrorCode code) const {
        if (code == QorErrorCode::Ok) return {};
        return {QorNoIdentifier,
                code == QorErrorCode::Broken ? QorBuildError::NoIdentifiersLeft : QorBuildError::UnknownIdentifier};
    }
    // Everything that can be seen of the repository, and who has locks.
    std::string picture() {
        std::string seen = pictureOf(w.platform);
        QorUserID holder;
        for (const long id : {w.library, w.processes}) seen += repository.isLibraryLocked(id, holder) ? 'l' : '-';
        return seen;
    }
    std::vector<long> from(long object) {
        ISortedSet<long> found;
        EXPECT_EQ(repository.getFromRelationInstances(object, found), QorErrorCode::Ok);
        return {found.begin(), found.end()};
    }

    static inline const QorEmbeddedOptions kOptions{.language = "en", .console = false, .user = "ada"};
    const SV::String toB = "OBJECT \"b\" class: \"Task\" model: \"First\" type: \"Process\"";
    TemporaryFolder folder;
    Workshop w;
    QorCoreModelingManager& repository = w.repository();
    QorRepositoryBuilder& builder = w.builder();
    QorUserAdministration& users = w.platform.userAdministration();
    // An object for each round; relations stand between them.
    [[nodiscard]] QorIdentifier other() const { return a + 2 + 2 * round; }
    void beginRound(int number) {
        round = number;
        name = "a name that is long enough to stand on the heap " + std::to_string(number);
        fresh = users.addUserGroup("fresh " + std::to_string(number)).id;
        mortal = users.addUser("somebody who is there for one round only " + std::to_string(number)).id;
        (void)users.setProfileEntry(mortal, 6, "a remark that is long enough to stand on the heap");
        (void)users.join(mortal, fresh);
        longName.assign(60000, static_cast<char>('0' + number));
        text.assign(140000 + static_cast<std::size_t>(std::min(number, 4)) * 60000, 'x');
    }

    std::string name;      // nobody has it yet
    std::string longName;  // nor this one
    std::string text;      // gets a block of its own in the repository
    int round = 0;
    QorIdentifier task, table, title, links, record, sum, type, model, a, b, then, thenClass, empty, group, inner, user,
        staff, fresh, mortal;
};

struct Operation {
    const char* name;
    std::function<QorBuildResult(Scene&)> run;
};

QorBuildResult addEnumeration(Scene& s) {
    const std::string_view values[] = {s.name, "two"};
    QorAttributeSpec spec;
    spec.name = s.name;
    spec.type = Type::Enumeration;
    spec.enumeration = values;
    spec.defaultText = s.name;
    return s.builder.addAttribute(s.empty, spec);
}

// clang-format off
const Operation kOperations[] = {
    {"library", [](Scene& s) { return s.builder.addApplicationLibrary(s.name, "", ""); }},
    {"class", [](Scene& s) { return s.builder.addClass(s.w.processes, s.name, s.task, false); }},
    {"relation class", [](Scene& s) { return s.builder.addRelationClass(s.w.processes, s.name, s.task, s.task); }},
    {"enumeration", addEnumeration},
    {"class value", [](Scene& s) { return s.builder.setClassValue(s.task, QorAttributeId::Cardinality, s.text); }},
    {"library value", [](Scene& s) { return s.builder.setLibraryValue(s.w.library, QorAttributeId::AutomaticChecks, s.text); }},
    {"model type", [](Scene& s) { return s.builder.addModelType(s.w.processes, s.name, std::span(&s.task, 1)); }},
    {"model", [](Scene& s) { return s.builder.addModel(s.type, s.name, "1"); }},
    {"version", [](Scene& s) { return s.builder.addModel(s.type, "First", s.name); }},
    {"object", [](Scene& s) { return s.builder.addObject(s.model, s.task, s.name); }},
    {"relation", [](Scene& s) { return s.builder.addRelation(s.thenClass, s.a, s.b); }},
    {"value", [](Scene& s) { return s.builder.setValue(s.other(), s.title, s.text); }},
    {"other value", [](Scene& s) { return s.builder.setValue(s.a, s.title, s.text); }},
    {"position", [](Scene& s) { return s.builder.setValue(s.other(), QorAttributeId::Graphic, "NODE x:1cm y:2.5cm w:3cm h:1cm index:1"); }},
    {"reference", [](Scene& s) { return s.result(s.repository.setAttributeValueAsString(s.model, s.other(), s.links, s.toB.c_str(), true)); }},
    {"save references", [](Scene& s) { QorCoreInterReferenceHandler handler(s.model, s.a, s.links); QorErrorCode code = QorErrorCode::Ok; if (!handler.initHandler(s.toB, code)) return s.result(code); handler.MarkAllAdded(); return s.result(handler._Save(s.model, s.other(), true)); }},
    {"row", [](Scene& s) { long row = -1; return s.result(s.repository.createRecordInstance(s.model, s.a, s.record, row, -1)); }},
    {"name", [](Scene& s) { return s.result(s.repository.RenameInstance(s.model, s.other(), s.longName.c_str(), true)); }},
    {"group", [](Scene& s) { return s.builder.addModelGroup(s.group, s.name); }},
    {"group moved", [](Scene& s) { return s.builder.moveModelGroup(s.inner, s.round % 2 ? s.group : s.w.library); }},
    {"model moved", [](Scene& s) { return s.builder.moveModel(s.model, s.round % 2 ? s.group : s.inner); }},
    {"paste", [](Scene& s) { return s.builder.pasteObject(s.model, s.a, s.name); }},
    {"expression", [](Scene& s) { SV::String text; return s.result(s.w.platform.host().editing->expressionResult(s.model, s.a, s.sum, text)); }},
    {"groups", [](Scene& s) { ISortedSet<long> found; return s.result(s.w.platform.host().modelGroups->subGroups(s.group, found, true)); }},
    {"user", [](Scene& s) { return s.users.addUser(s.name); }},
    {"display name", [](Scene& s) { return s.users.setDisplayName(s.user, s.name, s.name); }},
    {"profile", [](Scene& s) { return s.users.setProfileEntry(s.user, 6 + s.round, s.name); }},
    {"user group", [](Scene& s) { return s.users.addUserGroup(s.name); }},
    {"join", [](Scene& s) { return s.users.join(s.staff, s.fresh); }},
    {"user group goes", [](Scene& s) { return s.users.removeUserGroup(s.round == 0 ? s.staff : s.fresh); }},
    {"permission", [](Scene& s) { return s.users.setPermission(s.fresh, s.round % 2 ? s.group : s.inner, 2); }},
    {"group with permissions goes", [](Scene& s) { return s.round == 0 ? s.builder.removeModelGroup(s.inner) : s.users.addUser(s.name); }},
    {"user goes", [](Scene& s) { return s.users.removeUser(s.mortal); }},
    {"access", [](Scene& s) { QorAccModelgroupContainer found; return s.result(QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(QorUserGroupID(s.staff), found)); }},
    {"move source", [](Scene& s) { return s.result(s.repository.moveFromEndpoint(s.then, s.round % 2 ? s.a : s.other())); }},
    {"move target", [](Scene& s) { return s.result(s.repository.moveToEndpoint(s.then, s.round % 2 ? s.a : s.other())); }},
    {"delete", [](Scene& s) { return s.result(s.repository.deleteInstance(s.model, s.round == 0 ? s.b : s.other())); }},
    {"lock", [](Scene& s) { return s.result(s.repository.lockLibrary(s.w.library, false, QorDBLockModeType::Exclusive)); }},
    {"facets", [](Scene& s) { return s.result(s.repository.updateFacets()); }},
    {"read name", [](Scene& s) { QorOwnedText text; return s.result(s.repository.getClassName(s.task, text.out())); }},
    {"read value", [](Scene& s) { QorOwnedText text; return s.result(s.repository.getAttributeValueAsNewChar(s.a, s.title, text.out())); }},
    {"read objects", [](Scene& s) { ISortedSet<long> found; return s.result(s.repository.getAllInstancesInModel(s.model, found)); }},
    {"read references", [](Scene& s) { QorSourceInterRefContainer found; return s.result(s.repository.getInterRefsOfSourceModel(s.model, found)); }},
};
// clang-format on

// Fails one allocation after the other until the operation gets through; how many it came to.
long failEachAllocation(const Operation& operation, Scene& scene) {
    const std::string before = scene.picture();
    for (long failures = 0;; ++failures) {
        failing_allocations::untilFailure = failures + 1;
        const QorBuildResult result = operation.run(scene);
        const bool ranOut = failing_allocations::untilFailure == 0;
        failing_allocations::untilFailure = 0;
        if (!ranOut) {
            EXPECT_TRUE(result.ok()) << Qor_BuildErrorText(result.error);
            return failures;
        }
        EXPECT_EQ(result.error, QorBuildError::NoIdentifiersLeft) << failures;
        EXPECT_TRUE(scene.picture() == before) << failures;
        if (testing::Test::HasFailure()) return failures;
    }
}

class NoMemory : public testing::TestWithParam<Kept> {};
QOR_ON_ALL_STORES(NoMemory);

TEST_P(NoMemory, AnyAllocationThatFailsIsToldAndChangesNothing) {
    const int rounds = GetParam() == Kept::InFile ? 8 : 60;
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        Scene scene(GetParam());
        long failures = 0;
        for (int round = 0; round < rounds; ++round) {
            scene.beginRound(round);
            failures += failEachAllocation(operation, scene);
        }
        EXPECT_GT(failures, 0) << "nothing was allocated";
        if (HasFailure()) return;
        if (GetParam() != Kept::InFile) continue;
        QorEmbeddedPlatform again;
        EXPECT_TRUE(again.openRepository(scene.folder.file("a.qor"), QorRepositoryAccess::ReadOnly).ok());
        EXPECT_TRUE(pictureOf(again) == pictureOf(scene.w.platform));
    }
}

TEST(NoMemoryForReading, AnEditThatCouldNotBeFoldedInIsThereAtTheNextReading) {
    long failures = 0;
    for (bool ranOut = true; ranOut; ++failures) {
        Scene scene;
        EXPECT_EQ(scene.from(scene.a), std::vector<long>{scene.then});
        std::vector<long> wanted{scene.then};
        for (int n = 0; n < 5; ++n) wanted.push_back(scene.w.connect(scene.a, "then", scene.b));
        long cls = -1;
        std::span<const QorRelationEnd> outgoing;
        std::span<const QorRelationEnd> incoming;
        failing_allocations::untilFailure = failures + 1;
        const auto code = scene.repository.bulkView()->viewObject(scene.a, cls, outgoing, incoming);
        ranOut = failing_allocations::untilFailure == 0;
        failing_allocations::untilFailure = 0;
        EXPECT_EQ(code, ranOut ? QorErrorCode::Broken : QorErrorCode::Ok);
        EXPECT_EQ(outgoing.size(), ranOut ? 0 : wanted.size());
        EXPECT_EQ(scene.from(scene.a), wanted);
    }
    EXPECT_GT(failures, 1);
}

// A line of the sealed log is kept as a whole or not at all; what failed once works the next time.
TEST(NoMemoryForTheFileArea, LosesTheLineAndNothingElse) {
    const TemporaryFolder folder;
    Workshop w({.language = "en", .console = false, .user = "ada", .keyFile = folder.file("a.key")},
               folder.file("a.qor"));
    const SV::String name = "db:\\a name that is long enough to stand on the heap";
    const std::string line(100, 'x');
    std::size_t kept = 0;
    const auto log = [&] {
        QorOwnedText text;
        const long handle = QorFileManager::fileOpenWrite(name, QorFileOpenMode::Append);
        const bool isKept =
            QorFileManager::fileWrite(handle, line.c_str(), line.size()) == static_cast<long>(line.size());
        const bool isClosed = QorFileManager::fileClose(handle);
        kept += isKept && isClosed ? 1 : 0;
        auto& cipher = QorEncryption::Instance();
        const auto code = cipher.Encrypt(QorEncryption::kStandardMode, line.c_str(), text.out(), -1);
        QorOwnedText plain;
        return isKept && isClosed && code == QorErrorCode::Ok &&
               cipher.Decrypt(QorEncryption::kStandardMode, text.c_str(), plain.out()) == QorErrorCode::Ok &&
               plain.view() == line && w.platform.fileArea().verify("", "").isSound();
    };
    const long failures = failing_allocations::failEach(log, [&](bool isDone, long number) {
        EXPECT_EQ(isDone, number == 0) << number;
        const QorSealReport report = w.platform.fileArea().verify("", "");
        EXPECT_TRUE(report.isSound() || kept == 0) << number << ": " << report.result.text;
        EXPECT_EQ(report.entries, kept == 0 ? 0 : static_cast<std::int64_t>(kept) + 1);
    });
    EXPECT_GT(failures, 10);
}

}  // namespace
