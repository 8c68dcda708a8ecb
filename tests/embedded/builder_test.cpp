// SPDX-License-Identifier: Apache-2.0
// What the builder takes and what it refuses.
#include <gtest/gtest.h>

#include <functional>

#include "platform/QorAttributeIds.h"
#include "support/OnStores.h"

namespace {

using Error = QorBuildError;
using Type = QorCoreAttributeType;

// A library with one of everything, and a second library beside it.
struct Builder : OnStores {
    void SetUp() override {
        OnStores::SetUp();
        node = abstractClass("Node");
        task = cls("Task", "Node");
        special = cls("Special", "Task");
        role = environmentClass("Role");
        table = recordClass("Table");
        then = relationClass("then", "Task", "Task");
        performs = relationClass("performs", "Role", "Task");
        effort = attribute("Node", "Effort", Type::Integer);
        cost = attribute("Special", "Cost", Type::Floating);
        process = modelType("Process", {"Task", "Special", "Role"});
        tasksOnly = modelType("Tasks", {"Task"});
        first = model("Process", "First", "1");
        a = object("Task", "a");
        r = object("Role", "r");
        second = model("Process", "Second");
        b = object("Task", "b");
        third = model("Tasks", "Third");
        foreign = builder().addApplicationLibrary("Elsewhere", "bp", "we").id;
        foreignPart = builder().libraryPart(foreign, QorLibraryPart::BusinessProcess);
        foreignClass = builder().addClass(foreignPart, "Task", QorNoIdentifier, false).id;
    }
    QorIdentifier node, task, special, role, table, then, performs, effort, cost, process, tasksOnly;
    QorIdentifier first, second, third, a, b, r, foreign, foreignPart, foreignClass;
    Builder& w = *this;
};

struct Refusal {
    const char* what;
    Error error;
    std::function<QorBuildResult(Builder&, QorRepositoryBuilder&)> attempt;
};

QorBuildResult newAttribute(QorRepositoryBuilder& builder, QorIdentifier owner, const char* name, Type type,
                            const char* defaultText = "", std::vector<std::string_view> values = {},
                            QorIdentifier target = QorNoIdentifier) {
    QorAttributeSpec spec;
    spec.name = name;
    spec.type = type;
    spec.defaultText = defaultText;
    spec.enumeration = values;
    spec.target = target;
    return builder.addAttribute(owner, spec);
}

const std::string kLongName(65536, 'x');
constexpr QorIdentifier kNobody = 900000;

// clang-format off
const Refusal kRefusals[] = {
    {"library without a name", Error::EmptyName, [](Builder&, auto& b) { return b.addApplicationLibrary("", "", ""); }},
    {"library of a name that is taken", Error::DuplicateName, [](Builder&, auto& b) { return b.addApplicationLibrary("Works", "", ""); }},
    {"class in an application library", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addClass(w.library, "X", -1, false); }},
    {"class with a zero byte", Error::NameRefused, [](Builder& w, auto& b) { return b.addClass(w.processes, {"a\0b", 3}, -1, false); }},
    {"class with too long a name", Error::NameRefused, [](Builder& w, auto& b) { return b.addClass(w.processes, kLongName, -1, false); }},
    {"class of a name that is taken", Error::DuplicateName, [](Builder& w, auto& b) { return b.addClass(w.processes, "Task", -1, false); }},
    {"class of a record class's name", Error::DuplicateName, [](Builder& w, auto& b) { return b.addClass(w.processes, "Table", -1, false); }},
    {"class below a record class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addClass(w.processes, "X", w.table, false); }},
    {"class below another library's", Error::ForeignLibrary, [](Builder& w, auto& b) { return b.addClass(w.processes, "X", w.foreignClass, false); }},
    {"relation class from a record class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addRelationClass(w.processes, "x", w.table, w.task); }},
    {"relation class to another library", Error::ForeignLibrary, [](Builder& w, auto& b) { return b.addRelationClass(w.processes, "x", w.task, w.foreignClass); }},
    {"relation class of a name that is taken", Error::DuplicateName, [](Builder& w, auto& b) { return b.addRelationClass(w.processes, "then", w.task, w.task); }},
    {"attribute of a model type", Error::UnknownIdentifier, [](Builder& w, auto& b) { return newAttribute(b, w.process, "X", Type::Text); }},
    {"attribute that an ancestor has", Error::DuplicateName, [](Builder& w, auto& b) { return newAttribute(b, w.special, "Effort", Type::Text); }},
    {"attribute that a descendant has", Error::DuplicateName, [](Builder& w, auto& b) { return newAttribute(b, w.node, "Cost", Type::Text); }},
    {"attribute of a fixed one's name", Error::DuplicateName, [](Builder& w, auto& b) { return newAttribute(b, w.special, "Name", Type::Text); }},
    {"attribute of a class with objects", Error::HasInstances, [](Builder& w, auto& b) { return newAttribute(b, w.task, "X", Type::Text); }},
    {"attribute of a class above one with objects", Error::HasInstances, [](Builder& w, auto& b) { return newAttribute(b, w.node, "X", Type::Text); }},
    {"enumeration without values", Error::ValueRefused, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::Enumeration); }},
    {"enumeration with a value twice", Error::ValueRefused, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::Enumeration, "", {"p", "q", "p"}); }},
    {"enumeration list with the separator", Error::ValueRefused, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::EnumerationList, "", {"p;q"}); }},
    {"values for a text", Error::ValueRefused, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::Text, "", {"p"}); }},
    {"default that the type refuses", Error::ValueRefused, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::Enumeration, "r", {"p", "q"}); }},
    {"record without a record class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::Record); }},
    {"record of a class that has objects", Error::UnknownIdentifier, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::Record, "", {}, w.task); }},
    {"profile of another library", Error::ForeignLibrary, [](Builder& w, auto& b) { return newAttribute(b, w.special, "X", Type::AttributeProfile, "", {}, w.foreignClass); }},
    {"value of a class's name", Error::AttributeDoesNotBelong, [](Builder& w, auto& b) { return b.setClassValue(w.task, QorAttributeId::ClassName, "X"); }},
    {"the other part's cardinality text", Error::AttributeDoesNotBelong, [](Builder& w, auto& b) { return b.setClassValue(w.task, QorAttributeId::WorkingEnvironmentCardinality, "X"); }},
    {"value of an unknown attribute", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.setClassValue(w.task, kNobody, "X"); }},
    {"cardinality text of a library", Error::AttributeDoesNotBelong, [](Builder& w, auto& b) { return b.setLibraryValue(w.library, QorAttributeId::Cardinality, "X"); }},
    {"library text of a class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.setLibraryValue(w.task, QorAttributeId::AutomaticChecks, "X"); }},
    {"model type of a name that is taken", Error::DuplicateName, [](Builder& w, auto& b) { return b.addModelType(w.environment, "Process", {}); }},
    {"model type with a foreign class", Error::ForeignLibrary, [](Builder& w, auto& b) { return b.addModelType(w.processes, "X", std::span(&w.foreignClass, 1)); }},
    {"model type with a relation class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addModelType(w.processes, "X", std::span(&w.then, 1)); }},
    {"library with models taken back", Error::HasInstances, [](Builder& w, auto& b) { return b.removeApplicationLibrary(w.library); }},
    {"model of a class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addModel(w.task, "X", ""); }},
    {"model of a version that is there", Error::DuplicateName, [](Builder& w, auto& b) { return b.addModel(w.process, "First", "1"); }},
    {"object of an abstract class", Error::AbstractClass, [](Builder& w, auto& b) { return b.addObject(w.first, w.node, "x"); }},
    {"object of a record class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addObject(w.first, w.table, "x"); }},
    {"object of a class that the type leaves out", Error::ClassNotInModelType, [](Builder& w, auto& b) { return b.addObject(w.third, w.special, "x"); }},
    {"object of a name that is taken", Error::DuplicateName, [](Builder& w, auto& b) { return b.addObject(w.first, w.task, "a"); }},
    {"object without a name", Error::EmptyName, [](Builder& w, auto& b) { return b.addObject(w.first, w.task, ""); }},
    {"relation from the wrong class", Error::SourceDoesNotFit, [](Builder& w, auto& b) { return b.addRelation(w.then, w.r, w.a); }},
    {"relation to the wrong class", Error::TargetDoesNotFit, [](Builder& w, auto& b) { return b.addRelation(w.performs, w.r, w.r); }},
    {"relation between models", Error::ForeignModel, [](Builder& w, auto& b) { return b.addRelation(w.then, w.a, w.b); }},
    {"relation of a class", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.addRelation(w.task, w.a, w.a); }},
    {"value of another class's attribute", Error::AttributeDoesNotBelong, [](Builder& w, auto& b) { return b.setValue(w.a, w.cost, "1"); }},
    {"value that the type refuses", Error::ValueRefused, [](Builder& w, auto& b) { return b.setValue(w.a, w.effort, "many"); }},
    {"value of a model", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.setValue(w.first, w.effort, "1"); }},
    {"a model that is no model", Error::UnknownIdentifier, [](Builder& w, auto& b) { return b.removeModel(w.a); }},
};
// clang-format on

TEST_P(Builder, RefusesWhatDoesNotFitAndUsesUpNoIdentifier) {
    for (const Refusal& refusal : kRefusals) {
        SCOPED_TRACE(refusal.what);
        const QorIdentifier before = w.builder().addModel(w.process, refusal.what, "before").id;
        const QorBuildResult result = refusal.attempt(w, w.builder());
        EXPECT_EQ(result.error, refusal.error) << Qor_BuildErrorText(result.error);
        const QorIdentifier after = w.builder().addModel(w.process, refusal.what, "after").id;
        EXPECT_EQ(after, before + 1) << "something was added all the same";
    }
}

TEST_P(Builder, NamesWhoHasTheName) {
    EXPECT_EQ(w.builder().addObject(w.first, w.task, "a").id, w.a);
    EXPECT_EQ(w.builder().addClass(w.processes, "Task", QorNoIdentifier, false).id, w.task);
    EXPECT_EQ(w.builder().addModel(w.process, "First", "1").id, w.first);
    EXPECT_EQ(newAttribute(w.builder(), w.special, "Effort", Type::Text).id, w.effort);
}

TEST_P(Builder, KeepsNamesApartByClassModelPartAndKind) {
    EXPECT_TRUE(w.builder().addObject(w.first, w.special, "a").ok());
    EXPECT_TRUE(w.builder().addObject(w.second, w.task, "a").ok());
    EXPECT_TRUE(w.builder().addClass(w.environment, "Task", QorNoIdentifier, false).ok());
    EXPECT_TRUE(w.builder().addRelationClass(w.processes, "Task", w.task, w.task).ok());
    EXPECT_TRUE(w.builder().addModel(w.tasksOnly, "First", "1").ok());
    EXPECT_EQ(w.reader().findClass(w.library, "Task"), w.task) << "business process first";
}

TEST_P(Builder, TakesBackALibraryWithEverythingInItAndFreesItsName) {
    auto& builder = w.builder();
    const auto attribute = newAttribute(builder, w.foreignClass, "Kind", Type::Enumeration, "p", {"p", "q"}).id;
    EXPECT_TRUE(builder.setClassValue(w.foreignClass, attribute, "q").ok());
    const auto type = builder.addModelType(w.foreignPart, "Process", std::span(&w.foreignClass, 1)).id;
    ASSERT_TRUE(builder.removeApplicationLibrary(w.foreign).ok());
    for (const QorIdentifier id : {w.foreign, w.foreignPart, w.foreignClass, attribute, type})
        EXPECT_EQ(w.reader().kindOf(id), QorThingKind::None);
    EXPECT_EQ(w.reader().applicationLibraries(), std::vector{w.library});
    EXPECT_TRUE(builder.addApplicationLibrary("Elsewhere", "", "").ok());

    for (const auto& model : w.reader().modelsOf(w.library)) ASSERT_TRUE(builder.removeModel(model.id).ok());
    ASSERT_EQ(w.load(), QorErrorCode::Ok);
    EXPECT_EQ(builder.removeApplicationLibrary(w.library).error, Error::HasInstances) << "it is loaded";
    ASSERT_EQ(w.discard(), QorErrorCode::Ok);
    EXPECT_TRUE(builder.removeApplicationLibrary(w.library).ok());
}

TEST_P(Builder, RemovesAModelWithItsContentAndItsThreadWithTheLastVersion) {
    const auto next = w.model("Process", "First", "2");
    const auto thread = w.reader().modelInfo(next).thread;
    const auto object = w.object("Task", "x");
    const auto loop = w.connect(object, "then", object);
    w.value(object, "Effort", "7");
    EXPECT_EQ(w.reader().modelInfo(w.first).thread, thread);

    ASSERT_TRUE(w.builder().removeModel(next).ok());
    for (const QorIdentifier id : {next, object, loop}) EXPECT_EQ(w.reader().kindOf(id), QorThingKind::None);
    EXPECT_EQ(w.reader().kindOf(thread), QorThingKind::ModelThread);
    ASSERT_TRUE(w.builder().removeModel(w.first).ok());
    EXPECT_EQ(w.reader().kindOf(thread), QorThingKind::None);
    EXPECT_EQ(w.reader().modelsOf(w.library).size(), 2U);
    EXPECT_TRUE(w.builder().addModel(w.process, "First", "1").ok());
}

TEST_P(Builder, TellsEveryErrorInItsOwnWords) {
    std::set<std::string> texts;
    const int last = static_cast<int>(Error::NoIdentifiersLeft);
    for (int error = 0; error <= last; ++error) texts.insert(Qor_BuildErrorText(static_cast<Error>(error)));
    EXPECT_EQ(texts.size(), static_cast<std::size_t>(last) + 1);
}

QOR_ON_ALL_STORES(Builder);

}  // namespace
