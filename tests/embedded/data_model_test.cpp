// SPDX-License-Identifier: Apache-2.0
// What the data model offers beyond plain values: expressions, shown types, patterns, pasted objects, names.
#include <gtest/gtest.h>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorCoreVar.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorGrObjAttrHandler.h"
#include "support/OnStores.h"

namespace {

using Code = QorErrorCode;
using Error = QorBuildError;
using Type = QorCoreAttributeType;

struct DataModel : OnStores {
    DataModel() {
        w.abstractClass("Node");
        w.cls("Task", "Node");
        w.recordClass("Line");
        w.attribute("Line", "Item", Type::Text);
        for (const char* name : {"A", "B"}) w.attribute("Task", name, Type::Expression);
        w.attribute("Task", "Half", Type::Expression, "[Size] / 2");
        w.attribute("Task", "Size", Type::Integer, "12");
        w.attribute("Task", "Note", Type::Text);
        QorAttributeSpec spec;
        spec.name = "Lines";
        spec.type = Type::Record;
        spec.target = w.idOf("Line");
        w.attribute("Task", spec);
        spec.name = "Shown";
        spec.type = Type::Text;
        spec.target = QorNoIdentifier;
        spec.shownAs = Type::InterReference;
        w.attribute("Task", spec);
        w.relationClass("then", "Task", "Task");
        w.environmentClass("Role");
        w.modelType("Process", {"Task"});
        model = w.model("Process", "First");
        x = w.object("Task", "x");
    }
    std::string result(QorIdentifier object, std::string_view attribute) {
        SV::String text;
        const long id = w.attributeOf(object, attribute);
        const Code code =
            QorCoreExpressionManager::GetExprHandler(w.reader().modelOf(object), object, id).GetResultText(text);
        return code == Code::Ok ? text.str() : "code " + std::to_string(static_cast<int>(code));
    }

    QorCoreModelingManager& repository = w.repository();
    QorIdentifier model = QorNoIdentifier, x = QorNoIdentifier;
};

TEST_P(DataModel, ExpressionsAreWorkedOutFromTheAttributesOfTheirObject) {
    const struct {
        const char* a;
        const char* b;
        const char* result;
    } kCases[] = {
        {"[Half] & \" of \" & [Name]", "", "6 of x"},
        {"[B] * [B]", "[Half] + 1", "49"},
        {"[Note] & \"|\" & [B] & \"|\"", "", "||"},
        {"[B]", "[A]", "code 63"},
        {"[A]", "", "code 63"},
        {"[Gone]", "", "code 63"},
        {"[Lines]", "", "code 63"},
        {"[B]", "1 / [Size] / [Note]", "code 63"},
        {"\"\"", "", ""},
        {"", "", "code 3"},
    };
    for (const auto& each : kCases) {
        w.value(x, "A", each.a);
        w.value(x, "B", each.b);
        EXPECT_EQ(result(x, "A"), each.result) << each.a << " with " << each.b;
    }
    EXPECT_EQ(result(x, "Half"), "6") << "the default";
    EXPECT_EQ(result(x, "Size"), "code 5");
    EXPECT_EQ(w.builder().setValue(x, w.attributeOf(x, "A"), "1 +").error, Error::ValueRefused);
}

TEST_P(DataModel, ExpressionsThatNameEachOtherTwiceAreWorkedOutOnceEach) {
    w.cls("Chain");
    for (int step = 0; step <= 70; ++step) {
        const std::string next = "[E" + std::to_string(step + 1) + "]";
        w.attribute("Chain", "E" + std::to_string(step), Type::Expression,
                    step == 70  ? "1"
                    : step < 50 ? next + " / 2 + " + next + " / 2"
                                : next);
    }
    w.modelType("Chains", {"Chain"});
    w.model("Chains", "M");
    const auto object = w.object("Chain", "c");
    EXPECT_EQ(result(object, "E20"), "1") << "2^30 ways lead to the end";
    EXPECT_EQ(result(object, "E0"), "code 63") << "too many stand behind one another";
}

TEST_P(DataModel, AnAttributeCanBeShownAsAnotherType) {
    Type type = Type::None;
    for (const auto& [name, stored, shown] :
         {std::tuple("Shown", Type::Text, Type::InterReference), std::tuple("Size", Type::Integer, Type::Integer)}) {
        EXPECT_EQ(repository.getAttributeType(w.attributeOf(x, name), type), Code::Ok);
        EXPECT_EQ(type, stored) << name;
        EXPECT_EQ(repository.getUIAttributeType(w.attributeOf(x, name), type), Code::Ok);
        EXPECT_EQ(type, shown) << name;
    }
    EXPECT_EQ(repository.getUIAttributeType(x, type), Code::NotFound);
    EXPECT_EQ(type, Type::None);
}

TEST_P(DataModel, PatternsAreThePartsClassesWithTheAbstractOnesUnusable) {
    const QorGrObjAttrHandler handler(true, true);
    std::vector<QorGrObjPattern> patterns(1);
    EXPECT_EQ(handler.GetPatterns(true, patterns), Code::NotFound) << "nothing is loaded";
    EXPECT_TRUE(patterns.empty());
    if (GetParam() == Kept::InUnit) return;
    ASSERT_EQ(w.load(false), Code::Ok);
    ASSERT_EQ(handler.GetPatterns(true, patterns), Code::Ok);
    ASSERT_EQ(patterns.size(), 2U) << "record classes are none";
    EXPECT_TRUE(patterns[0].name == "Node" && patterns[0].unusable && patterns[0].cls == w.idOf("Node"));
    EXPECT_TRUE(patterns[1].name == "Task" && !patterns[1].unusable);
    ASSERT_EQ(handler.GetPatterns(false, patterns), Code::Ok);
    EXPECT_EQ(patterns.size(), 1U);
    EXPECT_EQ(w.discard(), Code::Ok);
}

TEST_P(DataModel, APartNamesTheRelationClassThatConversionLeaves) {
    const auto variables = [] {
        return std::pair(Qor_GetCoreVarConst(QorCoreVarType::UnmovedRelationClass),
                         Qor_GetCoreVarConst(QorCoreVarType::OtherUnmovedRelationClass));
    };
    EXPECT_EQ(w.builder().setUnmovedRelationClass(w.processes, "none").error, Error::UnknownIdentifier);
    EXPECT_EQ(w.builder().setUnmovedRelationClass(w.environment, "then").error, Error::UnknownIdentifier)
        << "of the other part";
    ASSERT_TRUE(w.builder().setUnmovedRelationClass(w.processes, "then").ok());
    EXPECT_EQ(variables(), std::pair(-1L, -1L)) << "nothing is loaded";
    if (GetParam() == Kept::InUnit) return;
    ASSERT_EQ(w.load(false), Code::Ok);
    EXPECT_EQ(variables(), std::pair(static_cast<long>(w.idOf("then")), -1L));
    ASSERT_TRUE(w.builder().setUnmovedRelationClass(w.processes, "").ok());
    EXPECT_EQ(variables(), std::pair(-1L, -1L));
    EXPECT_EQ(w.discard(), Code::Ok);
}

TEST_P(DataModel, APastedObjectIsACopyThatKnowsItsSourcesName) {
    w.value(x, "Note", "mine");
    w.value(x, "Position", "Position x:1cm y:2cm w:3cm h:1cm");
    for (const char* item : {"first", "second"}) {
        const auto row = w.builder().addRecordRow(x, w.attributeOf(x, "Lines"));
        ASSERT_TRUE(w.builder().setValue(row.id, w.attributeOf(w.idOf("Line"), "Item"), item).ok());
    }
    w.connect(x, "then", x);
    const auto other = w.model("Process", "Second");
    const auto copy = w.builder().pasteObject(other, x, "y");
    ASSERT_TRUE(copy.ok());
    EXPECT_EQ(w.reader().valueOf(copy.id, w.attributeOf(x, "Note")), "mine");
    EXPECT_EQ(w.reader().valueOf(copy.id, QorAttributeId::Graphic), "Position x:1cm y:2cm w:3cm h:1cm");
    const auto rows = w.reader().recordRows(copy.id, w.attributeOf(x, "Lines"));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(w.reader().valueOf(rows[1], w.attributeOf(w.idOf("Line"), "Item")), "second");
    EXPECT_TRUE(w.reader().relationsOf(other).empty());

    SV::String source;
    const auto& manager = QorCoreCopyManager::Instance();
    EXPECT_EQ(manager.getSourceInstNameOfPastedInst(other, copy.id, source), Code::Ok);
    EXPECT_EQ(source, "x");
    EXPECT_EQ(manager.getSourceInstNameOfPastedInst(model, x, source), Code::NotFound) << "it was not pasted";
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_EQ(manager.getSourceInstNameOfPastedInst(model, copy.id, source), Code::NotFound) << "not in that model";
    const auto again = w.builder().pasteObject(other, copy.id, "z");
    ASSERT_TRUE(again.ok());
    EXPECT_EQ(manager.getSourceInstNameOfPastedInst(other, again.id, source), Code::Ok);
    EXPECT_EQ(source, "y") << "the one it was copied from, not the first of all";
    EXPECT_EQ(w.builder().pasteObject(other, x, "z").error, Error::DuplicateName);
    EXPECT_EQ(w.builder().pasteObject(x, x, "u").error, Error::UnknownIdentifier);
}

TEST_P(DataModel, NamesHoldNoLineBreaksAndControlCharacters) {
    for (const char* name :
         {"a\nb", "\r", "a\tb", "\x1B", "\x7F", "\xC2\x85", "a\xC2\x9F", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        EXPECT_EQ(w.builder().addObject(model, w.idOf("Task"), name).error, Error::NameRefused) << name;
        EXPECT_EQ(repository.RenameInstance(model, x, name, false), Code::ValueRefused) << name;
    }
    for (const char* name : {"\"quoted\"", "\xC3\xA4", "\xC2\xA0", "\xE2\x80\xA7", "\xE2\x80\xAA", "\xE2", "\xC2"})
        EXPECT_TRUE(w.builder().addObject(model, w.idOf("Task"), name).ok()) << name;
}

TEST_P(DataModel, ANameIsFreeOnlyWhereModelAndClassExist) {
    long object = 7;
    const auto look = [&](long inModel, long cls) {
        return repository.getInstanceIDFromInstanceName(inModel, cls, "free", object);
    };
    EXPECT_EQ(look(model, w.idOf("Task")), Code::NotFound);
    EXPECT_EQ(look(x, w.idOf("Task")), Code::OutOfRange);
    EXPECT_EQ(look(model, model), Code::OutOfRange);
    EXPECT_EQ(look(model + (1L << 32), w.idOf("Task")), Code::OutOfRange);
    EXPECT_EQ(object, -1);
}

TEST_P(DataModel, AnAttributeIsRefusedForTheNameOfOneBelowAsLongAsItIsThere) {
    w.cls("Deep", "Task");
    w.cls("Sibling", "Node");
    w.relationClass("leads", "Deep", "Deep");
    const auto add = [&](std::string_view owner, std::string_view name) {
        QorAttributeSpec spec;
        spec.name = name;
        return w.builder().addAttribute(w.idOf(owner), spec);
    };
    const auto below = add("Sibling", "Below");
    EXPECT_EQ(add("Node", "Below").id, below.id) << "who has the name";
    EXPECT_TRUE(add("leads", "Below").ok());
    EXPECT_EQ(add("Node", "New").error, Error::HasInstances) << "a class below has objects";
    ASSERT_TRUE(w.builder().removeModel(model).ok());
    EXPECT_TRUE(add("Node", "New").ok());
    EXPECT_EQ(add("Deep", "New").error, Error::DuplicateName);
    if (GetParam() == Kept::InUnit) return;
    ASSERT_EQ(repository.unitsOfWork()->begin(), Code::Ok);
    EXPECT_TRUE(add("Deep", "Undone").ok());
    repository.unitsOfWork()->rollBack();
    EXPECT_TRUE(add("Node", "Undone").ok());
}

QOR_ON_ALL_STORES(DataModel);

}  // namespace
