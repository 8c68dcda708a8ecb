// SPDX-License-Identifier: Apache-2.0
// Queries on the meta-model and on what identifiers stand for.
#include <gtest/gtest.h>

#include "platform/QorAttributeIds.h"
#include "platform/QorOwnedText.h"
#include "support/OnStores.h"

namespace {

using Code = QorErrorCode;
using Ids = ISortedSet<long>;
constexpr long kBeyond32Bits = 4294967296;

struct MetaModel : OnStores {
    QorCoreModelingManager& repository = w.repository();
    QorIdentifier node = w.abstractClass("Node");
    QorIdentifier task = w.cls("Task", "Node");
    QorIdentifier special = w.cls("Special", "Task");
    QorIdentifier role = w.environmentClass("Role", "Node");
    QorIdentifier boss = w.environmentClass("Boss", "Role");
    QorIdentifier table = w.recordClass("Table");
    QorIdentifier then = w.relationClass("then", "Node", "Task");
    QorIdentifier ends = w.relationClass("ends", "Special", "Node");
    QorIdentifier effort = w.attribute("Node", "Effort", QorCoreAttributeType::Integer);
    QorIdentifier weight = w.attribute("then", "Weight", QorCoreAttributeType::Floating);
    QorIdentifier type = w.modelType("Process", {"Task", "Special"});
    QorIdentifier model = w.model("Process", "First");
    QorIdentifier a = w.object("Task", "a");
    QorIdentifier relation = w.connect(a, "then", a);

    template <class Query, class... Arguments>
    std::string name(Query query, Arguments... arguments) {
        QorOwnedText text;
        const Code code = (repository.*query)(arguments..., text.out());
        return code == Code::Ok ? text.c_str() : "code " + std::to_string(static_cast<int>(code));
    }
    long classOf(long id) {
        long cls = 7;
        const Code code = repository.classOf(id, cls);
        EXPECT_EQ(code == Code::Ok, cls != -1);
        return cls;
    }
};

TEST_P(MetaModel, ClassOfAnswersForObjectsModelsAndPartsAndNobodyElse) {
    EXPECT_EQ(classOf(a), task);
    EXPECT_EQ(classOf(w.processes), 42);
    EXPECT_EQ(classOf(w.environment), 39);
    EXPECT_EQ(classOf(model), type);
    long cls = -1;
    EXPECT_EQ(repository.getModelClass(model, cls), Code::Ok);
    EXPECT_EQ(cls, type);
    w.platform.forgetShown();
    for (const long id : {static_cast<long>(w.library), static_cast<long>(relation), static_cast<long>(task),
                          static_cast<long>(then), 42L, 48L, 0L, -1L, 999999L, a + kBeyond32Bits, a - kBeyond32Bits})
        EXPECT_EQ(classOf(id), -1) << id;
    EXPECT_TRUE(w.platform.shown().empty()) << "quietly";
}

TEST_P(MetaModel, NamesAreToldToThoseWhoAskForTheRightKind) {
    using M = QorCoreModelingManager;
    EXPECT_EQ(name(&M::getClassName, task), "Task");
    EXPECT_EQ(name(&M::getClassName, table), "Table");
    EXPECT_EQ(name(&M::getClassName, classOf(model)), "Process");
    EXPECT_NE(name(&M::getClassName, 42), name(&M::getClassName, 39));
    EXPECT_EQ(name(&M::getRelationClassName, then), "then");
    EXPECT_EQ(name(&M::getAttributeName, effort), "Effort");
    EXPECT_EQ(name(&M::getAttributeName, QorAttributeId::Cardinality), "Cardinalities");
    EXPECT_EQ(name(&M::getClassName, then), "code 5");
    EXPECT_EQ(name(&M::getRelationClassName, task), "code 5");
    EXPECT_EQ(name(&M::getAttributeName, task), "code 5");
    EXPECT_EQ(name(&M::getClassName, task + kBeyond32Bits), "code 5");
    EXPECT_EQ(name(&M::getRecordClassName, effort), "code 5");

    EXPECT_TRUE(repository.isClass(task) && repository.isClass(node) && repository.isClass(42));
    EXPECT_FALSE(repository.isClass(then) || repository.isClass(table) || repository.isClass(a));
    EXPECT_TRUE(repository.isRelationClass(then) && repository.isRelationInstance(relation));
    EXPECT_FALSE(repository.isRelationInstance(then) || repository.isRelationClass(relation));
    EXPECT_FALSE(repository.isRelationInstance(relation + kBeyond32Bits));
}

TEST_P(MetaModel, InstantiableClassesAreThoseOfThePartAndOnDemandWhatOthersDeriveFromThem) {
    Ids classes;
    EXPECT_EQ(repository.getAllInstantiableClasses(w.processes, classes, false), Code::Ok);
    EXPECT_EQ(classes, (Ids{task, special}));
    EXPECT_EQ(repository.getAllInstantiableClasses(w.processes, classes, true), Code::Ok);
    EXPECT_EQ(classes, (Ids{task, special, role, boss}));
    EXPECT_EQ(repository.getAllInstantiableClasses(w.environment, classes, true), Code::Ok);
    EXPECT_EQ(classes, (Ids{role, boss}));
    EXPECT_EQ(repository.getAllInstantiableClasses(w.library, classes, false), Code::Ok);
    EXPECT_EQ(classes, (Ids{task, special, role, boss}));
    EXPECT_EQ(repository.getAllInstantiableClasses(task, classes, false), Code::NotFound);
    EXPECT_TRUE(classes.isEmpty());
}

TEST_P(MetaModel, ClassesAreFoundByNameInThePartOrInBothBusinessProcessFirst) {
    const auto find = [&](long owner, const char* cls) {
        long id = 7;
        const Code code = repository.getClassIDFromClassName(owner, cls, id);
        EXPECT_EQ(code, id == -1 ? Code::NotFound : Code::Ok);
        return id;
    };
    EXPECT_EQ(find(w.processes, "Node"), node) << "abstract classes are found";
    EXPECT_EQ(find(w.processes, "Role"), -1);
    EXPECT_EQ(find(w.library, "Role"), role);
    EXPECT_EQ(find(w.processes, "Table"), -1) << "a record class has no objects";
    EXPECT_EQ(find(w.processes, "task"), -1);
    EXPECT_EQ(find(w.processes, nullptr), -1);
    EXPECT_EQ(find(w.processes + kBeyond32Bits, "Task"), -1);
    const auto twin = w.environmentClass("Task");
    EXPECT_EQ(find(w.library, "Task"), task);
    EXPECT_EQ(find(w.environment, "Task"), twin);
    long id = -1;
    EXPECT_EQ(repository.getRelationIDFromRelationName(w.library, "ends", id), Code::Ok);
    EXPECT_EQ(id, ends);
    EXPECT_EQ(repository.getRelationIDFromRelationName(w.library, "Task", id), Code::NotFound);
}

TEST_P(MetaModel, RelationClassesAndAttributesAreInheritedDownTheLine) {
    Ids found;
    EXPECT_EQ(repository.getAllFromRelationsRecursive(special, found), Code::Ok);
    EXPECT_EQ(found, (Ids{then, ends}));
    EXPECT_EQ(repository.getAllFromRelationsRecursive(task, found), Code::Ok);
    EXPECT_EQ(found, (Ids{then}));
    EXPECT_EQ(repository.getAllToRelationsRecursive(boss, found), Code::Ok);
    EXPECT_EQ(found, (Ids{ends}));
    EXPECT_EQ(repository.getAllToRelationsRecursive(table, found), Code::NotFound);
    EXPECT_EQ(repository.getAllSubClasses(node, found), Code::Ok);
    EXPECT_EQ(found, (Ids{task, special, role, boss}));
    EXPECT_EQ(repository.getAllSubClasses(special, found), Code::Ok);
    EXPECT_TRUE(found.isEmpty());

    const auto attribute = [&](long cls, const char* its) {
        long id = 7;
        const Code code = repository.getAttributeIDFromAttributeName(cls, its, id);
        EXPECT_EQ(code, id == -1 ? Code::NotFound : Code::Ok);
        return id;
    };
    EXPECT_EQ(attribute(boss, "Effort"), effort);
    EXPECT_EQ(attribute(then, "Weight"), weight);
    EXPECT_EQ(attribute(then, "Effort"), -1);
    EXPECT_EQ(attribute(special, "Cardinalities"), QorAttributeId::Cardinality);
    EXPECT_EQ(attribute(boss, "Cardinalities"), QorAttributeId::WorkingEnvironmentCardinality);
    EXPECT_EQ(attribute(table, "Cardinalities"), -1);
    long of = -1;
    EXPECT_EQ(repository.getLibraryOfClass(boss, of), Code::Ok);
    EXPECT_EQ(of, w.environment);
    EXPECT_EQ(repository.getLibraryOfClass(a, of), Code::NotFound);
}

TEST_P(MetaModel, TheBulkViewRefusesWhatIsNoObject) {
    long cls = 7;
    std::span<const QorRelationEnd> outgoing;
    std::span<const QorRelationEnd> incoming;
    ASSERT_EQ(repository.bulkView()->viewObject(a, cls, outgoing, incoming), Code::Ok);
    EXPECT_EQ(outgoing.size() + incoming.size(), 2U) << "a relation to itself leaves once and arrives once";
    EXPECT_EQ(repository.bulkView()->viewObject(a + kBeyond32Bits, cls, outgoing, incoming), Code::NotFound);
    EXPECT_EQ(cls, -1);
    EXPECT_TRUE(outgoing.empty() && incoming.empty());
    EXPECT_EQ(w.watched().bulkView(), nullptr);
}

TEST_P(MetaModel, TheReaderTellsWhatTheBuilderWasTold) {
    const auto& reader = w.reader();
    const auto info = reader.classInfo(special);
    EXPECT_EQ(std::tuple(info.part, info.superclass, info.isAbstract, info.isRecordClass, info.name),
              std::tuple(w.processes, task, false, false, std::string_view("Special")));
    EXPECT_EQ(reader.classesOf(w.processes).size(), 4U);
    EXPECT_EQ(reader.relationClassesOf(w.processes).back().toClass, node);
    EXPECT_EQ(reader.attributesOf(node).front().type, QorCoreAttributeType::Integer);
    EXPECT_TRUE(reader.attributesOf(task).empty()) << "inherited ones are not its own";
    EXPECT_EQ(reader.modelTypesOf(w.library).front().name, "Process");
    EXPECT_EQ(reader.visibleClasses(type), (std::vector{task, special}));
    for (const QorIdentifier id : {w.library, w.environment, boss, then, effort, type, model, a, relation})
        EXPECT_EQ(reader.applicationLibraryOf(id), w.library) << id;
    EXPECT_EQ(reader.applicationLibraryOf(42), QorNoIdentifier);
    EXPECT_EQ(reader.modelOf(relation), model);
    EXPECT_EQ(reader.nameOf(w.reader().modelInfo(model).thread), "First");
    EXPECT_EQ(reader.kindOf(-5), QorThingKind::None);
    EXPECT_EQ(reader.classInfo(a).id, QorNoIdentifier);
}

QOR_ON_ALL_STORES(MetaModel);

}  // namespace
