// SPDX-License-Identifier: Apache-2.0
// Attribute values: which texts each type takes, who has values, defaults, records, references, events.
#include <gtest/gtest.h>

#include <deque>
#include <limits>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorEventListener.h"
#include "platform/QorOwnedText.h"
#include "support/OnStores.h"

namespace {

using Code = QorErrorCode;
using Type = QorCoreAttributeType;

QorAttributeSpec spec(std::string_view name, Type type) {
    QorAttributeSpec made;
    made.name = name;
    made.type = type;
    return made;
}

// One class with an attribute of every type, and objects of it.
struct Values : OnStores {
    Values() {
        w.cls("Task");
        w.cls("Special", "Task");
        w.recordClass("Costs");
        w.attribute("Costs", "Amount", Type::Floating);
        w.cls("Profile");
        w.attribute("Profile", "Rate", Type::Integer);
        constexpr std::string_view kKinds[] = {"manual", "automatic"};
        for (int type = 0; type <= static_cast<int>(Type::Calendar); ++type) {
            QorAttributeSpec its = spec(names.emplace_back("type " + std::to_string(type)), static_cast<Type>(type));
            if (its.type == Type::Enumeration || its.type == Type::EnumerationList) its.enumeration = kKinds;
            if (its.type == Type::Record) its.target = w.idOf("Costs");
            if (its.type == Type::AttributeProfile) its.target = w.idOf("Profile");
            w.attribute("Task", its);
        }
        w.attribute("Task", "Greeting", Type::Text, "hello");
        w.attribute("Task", "Size", Type::Integer, "12");
        QorAttributeSpec models = spec("Models", Type::InterReference);
        models.refersToModels = true;
        w.attribute("Task", models);
        QorAttributeSpec ofClass = spec("Of the class", Type::Integer);
        ofClass.level = QorAttributeLevel::Class;
        w.attribute("Task", ofClass);
        w.attribute("Task", "__Hidden", Type::Text);
        w.modelType("Process", {"Task", "Special", "Profile"});
        model = w.model("Process", "First");
        a = w.object("Task", "a");
        b = w.object("Special", "b");
        profile = w.object("Profile", "cheap");
    }

    Code set(long object, std::string_view attribute, const char* text, bool raise = false) {
        return repository.setAttributeValueAsString(model, object, w.attributeOf(a, attribute), text, raise);
    }
    // The value, or "-" when there is none, or the code.
    std::string get(long thing, long attribute, bool withDefault = true) {
        QorOwnedText text;
        const Code code = repository.getAttributeValue(thing, attribute, text.out(), withDefault);
        if (code == Code::NoValue) return "-";
        return code == Code::Ok ? text.c_str() : "code " + std::to_string(static_cast<int>(code));
    }
    std::string get(long thing, std::string_view attribute, bool withDefault = true) {
        return get(thing, w.attributeOf(a, attribute), withDefault);
    }

    QorCoreModelingManager& repository = w.repository();
    std::deque<std::string> names;
    QorIdentifier model = QorNoIdentifier, a = QorNoIdentifier, b = QorNoIdentifier, profile = QorNoIdentifier;
};

struct Form {
    Type type;
    const char* text;
    bool fits;
};

constexpr Form kForms[] = {
    {Type::Integer, "0", true},
    {Type::Integer, "-2147483648", true},
    {Type::Integer, "+2147483647", true},
    {Type::Integer, "2147483648", false},
    {Type::Integer, "4294967301", false},
    {Type::Integer, "1.0", false},
    {Type::Integer, "+-1", false},
    {Type::Integer, " 1", false},
    {Type::Floating, "-1.5e3", true},
    {Type::Floating, "7", true},
    {Type::Floating, "1,5", false},
    {Type::Floating, "inf", false},
    {Type::Floating, "nan", false},
    {Type::Floating, "1e400", false},
    {Type::Text, "anything\n\"at\" all", true},
    {Type::LongText, "x", true},
    {Type::Time, "99:364:23:59:59", true},
    {Type::Time, "00:000:00:00:00", true},
    {Type::Time, "00:365:00:00:00", false},
    {Type::Time, "00:000:24:00:00", false},
    {Type::Time, "00:000:00:60:00", false},
    {Type::Time, "00:000:00:00:60", false},
    {Type::Time, "0:000:00:00:00", false},
    {Type::Time, "00:000:00:00:0x", false},
    {Type::Enumeration, "manual", true},
    {Type::Enumeration, "Manual", false},
    {Type::Enumeration, "manual;automatic", false},
    {Type::EnumerationList, "automatic;manual", true},
    {Type::EnumerationList, "manual;manual", false},
    {Type::EnumerationList, "manual;", false},
    {Type::EnumerationList, "other", false},
    {Type::Date, "2024-02-29", true},
    {Type::Date, "2023-02-29", false},
    {Type::Date, "0000-01-01", false},
    {Type::Date, "2024-2-29", false},
    {Type::DateTime, "2024-02-29 23:59:59", true},
    {Type::DateTime, "2024-02-29 24:00:00", false},
    {Type::DateTime, "2024-02-29", false},
    {Type::InterReference, "OBJECT \"b\" class: \"Special\" model: \"First\" type: \"Process\"", true},
    {Type::InterReference, "OBJECT \"b\" class: \"Task\" model: \"First\" type: \"Process\"", false},
    {Type::InterReference, "OBJECT \"b\" class: \"Special\" model: \"Second\" type: \"Process\"", false},
    {Type::InterReference, "OBJECT \"b\" class: \"Special\" model: \"First\" type: \"Map\"", false},
    {Type::InterReference, "OBJECT \"o\" class: \"C\" type: \"T\"", false},
    {Type::InterReference, "MODEL \"m\" type: \"T\"", false},
    {Type::InterReference, "OBJECT \"o", false},
    {Type::SimulationAction, "x := 1", true},
    {Type::Expression, "1 + 1", true},
    {Type::AttributeProfile, "cheap", true},
    {Type::AttributeProfile, "a name", false},
    {Type::Record, "", false},
    {Type::Record, "x", false},
    {Type::Distribution, "Constant(5)", true},
    {Type::Calendar, "any", true},
};

TEST_P(Values, EachTypeTakesItsOwnTextsAndKeepsTheOldOneWhenItRefuses) {
    for (const Form& form : kForms) {
        const std::string& name = names[static_cast<std::size_t>(form.type)];
        SCOPED_TRACE(name + ": " + form.text);
        const std::string before = get(a, name);
        EXPECT_EQ(set(a, name, form.text), form.fits ? Code::Ok : Code::ValueRefused);
        EXPECT_EQ(get(a, name), form.fits ? form.text : before);
    }
}

TEST_P(Values, TheEmptyTextTakesAValueAwayButIsOneForFreeTexts) {
    for (int type = 0; type <= static_cast<int>(Type::Calendar); ++type) {
        if (static_cast<Type>(type) == Type::Record) continue;
        SCOPED_TRACE(names[static_cast<std::size_t>(type)]);
        EXPECT_EQ(set(a, names[static_cast<std::size_t>(type)], ""), Code::Ok);
    }
    EXPECT_EQ(get(a, names[0]), "-");
    EXPECT_EQ(get(a, names[2]), "");
    EXPECT_EQ(set(a, "Greeting", nullptr), Code::Ok);
    EXPECT_EQ(get(a, "Greeting"), "") << "the default is hidden";
    EXPECT_TRUE(w.reader().hasValue(a, w.attributeOf(a, "Greeting")));
    EXPECT_EQ(set(a, "Size", "5"), Code::Ok);
    EXPECT_EQ(set(a, "Size", ""), Code::Ok);
    EXPECT_EQ(get(a, "Size"), "12") << "the default is back";
    EXPECT_EQ(w.builder().setValue(a, w.attributeOf(a, "Greeting"), {"a\0b", 3}).error, QorBuildError::ValueRefused);
}

TEST_P(Values, DefaultsAnswerOnDemandAndForObjectsOnly) {
    EXPECT_EQ(get(b, "Greeting", true), "hello");
    EXPECT_EQ(get(b, "Greeting", false), "-");
    EXPECT_EQ(get(w.idOf("Task"), "Greeting", true), "-");
    QorOwnedText text;
    EXPECT_EQ(repository.getAttributeValueAsNewChar(b, w.attributeOf(b, "Size"), text.out()), Code::Ok);
    EXPECT_EQ(text.view(), "12");
}

TEST_P(Values, ClassesHaveValuesOfTheirOwnThatSubclassesDoNotInherit) {
    w.classText("Task", "CARDINALITIES\nmax-objects: 1");
    const auto task = w.idOf("Task");
    const auto special = w.idOf("Special");
    EXPECT_EQ(get(task, QorAttributeId::Cardinality), "CARDINALITIES\nmax-objects: 1");
    EXPECT_EQ(get(special, QorAttributeId::Cardinality), "-");
    EXPECT_EQ(get(a, QorAttributeId::Cardinality), "code 5") << "an object has no class-level value";
    ASSERT_TRUE(w.builder().setClassValue(special, w.attributeOf(a, "__Hidden"), "rule").ok());
    EXPECT_EQ(get(special, "__Hidden"), "rule") << "of an attribute of its objects";
    EXPECT_EQ(get(b, "__Hidden"), "-");
    EXPECT_EQ(set(b, "__Hidden", "own"), Code::Ok);
    EXPECT_EQ(get(special, "__Hidden"), "rule");
    EXPECT_EQ(set(a, "Of the class", "1"), Code::NotFound);
    EXPECT_EQ(w.builder().setClassValue(task, w.attributeOf(a, "Of the class"), "x").error,
              QorBuildError::ValueRefused);
    w.libraryText(w.processes, QorAttributeId::AutomaticChecks, "CHECK_CARDINALITIES before-save: 1");
    EXPECT_EQ(w.reader().libraryValue(w.processes, QorAttributeId::AutomaticChecks), get(w.processes, 138));
    EXPECT_EQ(get(w.library, QorAttributeId::AutomaticChecks), "-");
}

TEST_P(Values, NamesAreReadAsAttributesAndAnObjectsNameIsWrittenAsOne) {
    EXPECT_EQ(get(w.idOf("Task"), QorAttributeId::ClassName), "Task");
    EXPECT_EQ(get(a, QorAttributeId::Name), "a");
    EXPECT_EQ(get(w.library, QorAttributeId::Name), "Works");
    EXPECT_EQ(get(w.processes, QorAttributeId::Name), "Works (business process)");
    w.relationClass("then", "Task", "Task");
    EXPECT_EQ(get(w.idOf("then"), QorAttributeId::RelationClassName), "then");
    EXPECT_EQ(get(w.idOf("Task"), QorAttributeId::Name), "code 5");

    w.object("Task", "taken");
    EXPECT_EQ(repository.RenameInstance(model, a, "taken", false), Code::ValueRefused);
    EXPECT_EQ(repository.RenameInstance(model, a, "", false), Code::ValueRefused);
    EXPECT_EQ(repository.RenameInstance(model, a, "a", false), Code::Ok) << "its own name is free for it";
    EXPECT_EQ(set(a, "Name", "other"), Code::Ok);
    long found = -1;
    EXPECT_EQ(repository.getInstanceIDFromInstanceName(model, w.idOf("Task"), "a", found), Code::NotFound);
    EXPECT_EQ(repository.getInstanceIDFromInstanceName(model, w.idOf("Task"), "other", found), Code::Ok);
    EXPECT_EQ(found, a);
    EXPECT_EQ(repository.RenameInstance(model + 1, a, "x", false), Code::NotFound) << "not in that model";
}

TEST_P(Values, NumbersAreWrittenAndReadInTheirOwnForm) {
    const auto integer = w.attributeOf(a, names[0]);
    const auto floating = w.attributeOf(a, names[1]);
    const auto text = w.attributeOf(a, names[2]);
    long number = 0;
    double real = 0;
    EXPECT_EQ(repository.setAttributeValue(model, a, integer, -5L, false), Code::Ok);
    EXPECT_EQ(repository.getAttributeValue(a, integer, number, false), Code::Ok);
    EXPECT_EQ(number, -5);
    EXPECT_EQ(repository.setAttributeValue(model, a, integer, 4294967301L, false), Code::ValueRefused);
    EXPECT_EQ(repository.setAttributeValue(model, a, integer, 1.0, false), Code::ValueRefused);
    EXPECT_EQ(repository.setAttributeValue(model, a, floating, 0.1, false), Code::Ok);
    EXPECT_EQ(repository.getAttributeValue(a, floating, real, false), Code::Ok);
    EXPECT_EQ(real, 0.1) << "to the last bit";
    EXPECT_EQ(repository.setAttributeValue(model, a, floating, std::numeric_limits<double>::infinity(), false),
              Code::ValueRefused);
    EXPECT_EQ(repository.setAttributeValue(model, a, floating, 3L, false), Code::Ok);
    EXPECT_EQ(repository.setAttributeValue(model, a, text, 3L, false), Code::ValueRefused);
    EXPECT_EQ(repository.setAttributeValue(model, a, text, "3", false), Code::Ok);
    EXPECT_EQ(repository.getAttributeValue(a, text, number, false), Code::OutOfRange);
    EXPECT_EQ(number, -1);
    EXPECT_EQ(repository.getAttributeValue(b, integer, number, true), Code::NoValue);
    EXPECT_EQ(repository.getAttributeValue(a + (1L << 32), integer, number, true), Code::NotFound);
}

class Listener final : public QorEventListener {
public:
    Listener() {
        setEventHandler(QorEventType::AttributeValueChanged, &Listener::value, 1);
        for (const auto type :
             {QorEventType::ModelCreated, QorEventType::ModelDeleted, QorEventType::ModelReferencesChanged})
            setEventHandler(type, &Listener::model, 1);
    }
    std::vector<std::vector<long>> seen;

private:
    void value(const QorAttributeEvent& e) {
        seen.push_back({756, e.model(), e.object(), e.attribute(), e.row(), e.attributeType()});
    }
    void model(const QorModelEvent& e) { seen.push_back({static_cast<long>(e.type()), e.model()}); }
};

TEST_P(Values, RecordsHaveRowsWithCellsThatGoWithTheirObject) {
    const auto record = w.attributeOf(a, names[static_cast<std::size_t>(Type::Record)]);
    const auto amount = w.attributeOf(w.idOf("Costs"), "Amount");
    const auto rows = [&] {
        ISequence<long> found;
        EXPECT_EQ(repository.getRecordInstances(a, record, found), Code::Ok);
        return std::vector<long>(found.begin(), found.end());
    };
    long first = -1, second = -1, third = -1, none = 7;
    EXPECT_EQ(repository.createRecordInstance(model, a, record, second, -1), Code::Ok);
    EXPECT_EQ(repository.createRecordInstance(model, a, record, first, 0), Code::Ok);
    EXPECT_EQ(repository.createRecordInstance(model, a, record, third, 2), Code::Ok);
    EXPECT_EQ(repository.createRecordInstance(model, a, record, none, 4), Code::OutOfRange);
    EXPECT_EQ(repository.createRecordInstance(model, a, w.attributeOf(a, "Size"), none, -1), Code::NotFound);
    EXPECT_EQ(none, -1);
    EXPECT_EQ(rows(), (std::vector{first, second, third}));

    Listener listener;
    EXPECT_EQ(repository.setAttributeValueAsString(model, second, amount, "2.5", true), Code::Ok);
    EXPECT_EQ(listener.seen, (std::vector<std::vector<long>>{{756, model, a, amount, second, 1}}));
    EXPECT_EQ(get(second, amount), "2.5");
    long cls = -1;
    EXPECT_EQ(repository.GetClassOfInstance(second, cls), Code::Ok);
    EXPECT_EQ(cls, w.idOf("Costs"));
    EXPECT_EQ(repository.deleteRecordInstance(model, b, record, second), Code::NotFound) << "another object's row";
    EXPECT_EQ(repository.deleteRecordInstance(model, a, record, second), Code::Ok);
    EXPECT_EQ(get(second, amount), "code 5");
    EXPECT_EQ(rows(), (std::vector{first, third}));
    EXPECT_EQ(repository.deleteInstance(model, a), Code::Ok);
    EXPECT_EQ(w.reader().kindOf(static_cast<QorIdentifier>(first)), QorThingKind::None);
}

TEST_P(Values, ReferencesAreReadWrittenAndListedByModel) {
    const auto objects = w.attributeOf(a, names[static_cast<std::size_t>(Type::InterReference)]);
    const auto models = w.attributeOf(a, "Models");
    w.value(a, "Models", "MODEL \"say \"\"x\"\"\" type: \"Process\"\nMODEL \"gone\" type: \"Process\"");
    w.value(b, names[9], "OBJECT \"o\" class: \"Task\" model: \"m\" type: \"Process\"");

    QorSourceInterRefContainer found;
    ASSERT_EQ(repository.getInterRefsOfSourceModel(model, found), Code::Ok);
    ASSERT_EQ(found.numberOfElements(), 3U);
    EXPECT_EQ(found.elementAtIndex(0).modelName, "say \"x\"");
    EXPECT_EQ(found.elementAtIndex(1).attribute, models);
    EXPECT_EQ(found.elementAtIndex(2).objectName, "o");
    EXPECT_EQ(repository.getInterRefsOfSourceModel(a, found), Code::NotFound);
    EXPECT_EQ(found.numberOfElements(), 0U);

    QorCoreInterReferenceHandler handler(model, a, models);
    ASSERT_EQ(handler.initHandler(), Code::Ok);
    EXPECT_TRUE(handler.isModelReferenceMode());
    handler.MarkAllAdded();
    Listener listener;
    ASSERT_EQ(handler._Save(model, b, true), Code::Ok);
    EXPECT_EQ(listener.seen.front(), (std::vector<long>{756, model, b, models, -1, 9}));
    EXPECT_EQ(get(b, "Models"), get(a, "Models"));
    QorCoreInterReferenceHandler other(model, a, objects);
    Code code = Code::Ok;
    EXPECT_FALSE(other.initHandler("MODEL \"m\" type: \"Process\"", code));
    EXPECT_EQ(code, Code::ValueRefused);
    listener.seen.clear();
    ASSERT_EQ(repository.deleteInstance(model, b), Code::Ok);
    EXPECT_EQ(listener.seen, (std::vector<std::vector<long>>{{739, model}}));
}

TEST_P(Values, ProfilesAreFoundByTheNameThatTheReferenceHolds) {
    const auto& reference = names[static_cast<std::size_t>(Type::AttributeProfile)];
    const auto rate = w.attributeOf(w.idOf("Profile"), "Rate");
    long referenced = 7;
    long attribute = 7;
    const auto find = [&](const char* profileAttribute) {
        return repository.getAttributeIDFromAttrProfAttributeName(a, reference.c_str(), profileAttribute, referenced,
                                                                  attribute);
    };
    EXPECT_EQ(find("Rate"), Code::NoProfileReferenced);
    EXPECT_EQ(set(a, reference, "dear"), Code::ValueRefused);
    w.model("Process", "Profiles");
    const auto elsewhere = w.object("Profile", "dear");
    ASSERT_EQ(set(a, reference, "dear"), Code::Ok);
    EXPECT_EQ(find("Rate"), Code::Ok);
    EXPECT_EQ((std::vector{referenced, attribute}), (std::vector<long>{elsewhere, rate}));
    long own = -1;
    ASSERT_EQ(repository.createInstance(model, w.idOf("Profile"), "dear", own), Code::Ok);
    EXPECT_EQ(find("Rate"), Code::Ok);
    EXPECT_EQ(referenced, own) << "the own model's profile goes first";
    EXPECT_EQ(find("Weight"), Code::NotFound);
    EXPECT_EQ(referenced, -1);
    long cls = -1;
    EXPECT_EQ(QorAttrProfRefDomainContainer::GetReferencedClassOfAttribute(w.attributeOf(a, reference), cls), Code::Ok);
    EXPECT_EQ(cls, w.idOf("Profile"));
}

TEST_P(Values, WhatTheyNameMayGoAndIsThenStillCopiedButNotNamedAnew) {
    const std::string toB = "OBJECT \"b\" class: \"Special\" model: \"First\" type: \"Process\"";
    const auto& profiles = names[static_cast<std::size_t>(Type::AttributeProfile)];
    ASSERT_EQ(set(a, names[9], toB.c_str()), Code::Ok);
    ASSERT_EQ(set(a, profiles, "cheap"), Code::Ok);
    ASSERT_EQ(repository.deleteInstance(model, b), Code::Ok);
    ASSERT_EQ(repository.deleteInstance(model, profile), Code::Ok);
    EXPECT_EQ(get(a, names[9]), toB);
    const auto missing = w.reader().missingTargets(model);
    ASSERT_EQ(missing.size(), 2U);
    EXPECT_EQ(missing[0].what, "the object \"b\" of class \"Special\" in the model \"First\" of type \"Process\"");
    EXPECT_EQ(missing[1].what, "the profile \"cheap\" of class \"Profile\"");
    const auto toA = "\n" + std::string("OBJECT \"a\" class: \"Task\" model: \"First\" type: \"Process\"");
    EXPECT_EQ(set(a, names[9], (toB + toA).c_str()), Code::Ok) << "one that is there beside it";
    const auto copy = w.object("Task", "copy");
    EXPECT_EQ(set(copy, names[9], toB.c_str()), Code::Ok);
    EXPECT_EQ(set(copy, profiles, "cheap"), Code::Ok);
    EXPECT_EQ(set(copy, profiles, "dear"), Code::ValueRefused);
    for (const auto object : {a, copy}) EXPECT_EQ(set(object, names[9], ""), Code::Ok);
    EXPECT_EQ(set(a, names[9], toB.c_str()), Code::ValueRefused) << "nothing names it any more";
    w.model("Process", "Second");
    const auto other = w.object("Task", "other");
    EXPECT_EQ(repository.setAttributeValueAsString(w.reader().modelOf(other), other, w.attributeOf(a, names[9]),
                                                   toB.c_str(), false),
              Code::ValueRefused);
}

TEST_P(Values, PositionsAreKeywordTexts) {
    for (const char* text : {"NODE x:1cm y:-2.5cm w:3cm", "EDGE", ""})
        EXPECT_EQ(repository.setAttributeValueAsString(model, a, QorAttributeId::Graphic, text, false), Code::Ok);
    for (const char* text : {"NODE x:\"", "node", "NODE x:"})
        EXPECT_EQ(repository.setAttributeValueAsString(model, a, QorAttributeId::Graphic, text, false),
                  Code::ValueRefused);
}

TEST_P(Values, TheNotebookShowsWhatUsersSee) {
    const QorBasicNotebookAttrHandler notebook(w.idOf("Special"));
    std::vector<std::string> shown;
    SV::String name;
    for (unsigned long at = 0; notebook.GetAttr(at, name); ++at) shown.push_back(name.str());
    std::vector<std::string> wanted(names.begin(), names.end());
    wanted.insert(wanted.end(), {"Greeting", "Size", "Models"});
    EXPECT_EQ(shown, wanted);
}

TEST_P(Values, ChangesAreAnnouncedWhenWanted) {
    Listener listener;
    const auto size = w.attributeOf(a, "Size");
    EXPECT_EQ(set(a, "Size", "1", false), Code::Ok);
    EXPECT_EQ(set(a, "Size", "x", true), Code::ValueRefused);
    EXPECT_TRUE(listener.seen.empty());
    EXPECT_EQ(set(a, "Size", "2", true), Code::Ok);
    EXPECT_EQ(repository.RenameInstance(model, a, "z", true), Code::Ok);
    const auto next = w.model("Process", "First", "2");
    EXPECT_TRUE(w.builder().removeModel(next).ok());
    EXPECT_EQ(listener.seen, (std::vector<std::vector<long>>{
                                 {756, model, a, size, -1, 0}, {756, model, a, 9, -1, 2}, {704, next}, {714, next}}));
}

QOR_ON_ALL_STORES(Values);

}  // namespace
