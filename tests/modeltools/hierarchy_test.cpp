// SPDX-License-Identifier: Apache-2.0
// Which models a model refers to, their tree as XML, and when answers are forgotten.
#include "modeltools/HierarchyDesk.h"
#include "platform/QorEventListener.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace {

using Ids = std::vector<long>;

Ids referenced(QorHierarchyManager& manager, long model) {
    const ISortedSet<long>& models = manager.getReferencedModels(model);
    return {models.begin(), models.end()};
}

constexpr const char* kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// The tree's lines with "m0", "m1" ... for the models' identifiers.
std::string tree(QorHierarchyManager& manager, const std::vector<QorIdentifier>& models, std::size_t root = 0) {
    SV::String text;
    if (manager.GetHierarchyAsXML(models[root], text) != QorErrorCode::Ok) return "no tree";
    std::string lines = text.str();
    if (!lines.starts_with(kDeclaration)) return "no declaration";
    lines.erase(0, std::string_view(kDeclaration).size());
    for (std::size_t number = 0; number < models.size(); ++number) {
        const std::string id = "id=\"" + std::to_string(models[number]) + "\"";
        for (auto at = lines.find(id); at != std::string::npos; at = lines.find(id))
            lines.replace(at, id.size(), "m" + std::to_string(number));
    }
    return lines;
}

TEST(Hierarchy, FollowsHierarchyAttributesOnly) {
    HierarchyDesk desk;
    const auto models = desk.models(4);
    const QorIdentifier house = desk.model("House", "M1");
    const auto to1 = HierarchyDesk::to("M1");
    const struct {
        const char* cls;
        const char* attribute;
        std::string value;
        Ids found;
    } rows[] = {
        {"Call", "Calls", to1, {models[1]}},
        {"Call", "Calls", HierarchyDesk::to("M3") + to1 + to1, {models[1], models[3]}},
        {"Call", "Calls", HierarchyDesk::to("M1", "House"), {house}},
        {"Call", "Calls", HierarchyDesk::to("M9") + HierarchyDesk::to("M1", "Nothing") + to1, {models[1]}},
        {"Call", "Mentions", to1, {}},
        {"Call", "Uses", HierarchyDesk::toObject("o", "Call", "M1"), {}},
        {"Urgent call", "Calls", to1, {models[1]}},
        {"Link", "Referenced model", to1, {models[1]}},
        {"Link", "Note", to1, {}},
        {"Wrong", "Called", "M1", {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.cls + std::string(row.attribute) + row.value);
        QorHierarchyManager manager;
        const QorIdentifier object = desk.refer(models[0], row.cls, row.attribute, row.value);
        EXPECT_EQ(referenced(manager, models[0]), row.found);
        ASSERT_EQ(desk.repository().deleteInstance(models[0], object), QorErrorCode::Ok);
    }
    desk.refer(house, "Room", "Plan", to1);
    QorHierarchyManager manager;
    EXPECT_EQ(referenced(manager, house), Ids{models[1]}) << "of the working environment";
    const QorIdentifier newest = desk.process("M1", "2");
    manager.Clear();
    EXPECT_EQ(referenced(manager, house), Ids{newest});
}

TEST(Hierarchy, IsWrittenAsATree) {
    HierarchyDesk desk;
    const auto models = desk.models(6);
    desk.callTo(models[1], {"M2"});  // two that call each other
    desk.callTo(models[2], {"M1"});
    desk.callTo(models[3], {"M4", "M5"});  // two ways to one
    desk.callTo(models[4], {"M0"});
    desk.callTo(models[5], {"M0", "M5"});  // one that calls itself
    QorHierarchyManager manager;
    EXPECT_EQ(tree(manager, models, 0), "<model m0 />\n");
    EXPECT_EQ(tree(manager, models, 1), "<model m1>\n  <model m2>\n    <model m1 />\n  </model>\n</model>\n");
    EXPECT_EQ(
        tree(manager, models, 3),
        "<model m3>\n  <model m4>\n    <model m0 />\n  </model>\n  <model m5>\n    <model m0 />\n    <model m5 />\n"
        "  </model>\n</model>\n");
}

TEST(Hierarchy, OfWhatIsNoModelIsRefused) {
    HierarchyDesk desk;
    const auto models = desk.models(1);
    QorHierarchyManager manager;
    for (const long id : {0L, -1L, long{desk.call}, long{desk.library}, 4294967296L + models[0]}) {
        SV::String text("as before");
        EXPECT_EQ(manager.GetHierarchyAsXML(id, text), QorErrorCode::NotAModelVersion) << id;
        EXPECT_EQ(text, "as before");
        EXPECT_EQ(referenced(manager, id), Ids()) << id;
    }
    EXPECT_TRUE(manager.IsInCache(-1)) << "a failed fetch is an answer, too";
    EXPECT_FALSE(manager.IsInCache(4294967296L - 1));
}

/// Raises an event whenever it is asked.
class Nervous : public QorModelTypeAttrHandler {
public:
    explicit Nervous(QorModelTypeAttrHandler& calm) : _calm(calm) {}
    QorErrorCode GetModelTypeIndex(const SV::String& name, unsigned long& modelType) override {
        Qor_RaiseEvent(QorModelEvent(QorEventType::ModelRenamed, 0));
        return _calm.GetModelTypeIndex(name, modelType);
    }

private:
    QorModelTypeAttrHandler& _calm;
};

TEST(Hierarchy, IsWholeAlsoWhenEventsEmptyTheCacheMeanwhile) {
    HierarchyDesk desk;
    const auto models = desk.models(4);
    desk.callTo(models[0], {"M1", "M2", "M3"});
    desk.callTo(models[1], {"M2", "M0"});
    desk.callTo(models[2], {"M3"});
    QorHierarchyManager manager;
    const std::string calmTree = tree(manager, models);
    manager.Clear();
    Nervous types(*QorModelTypeAttrHandler::GetGlobal());
    desk.watched().setModelTypeHandler(&types);
    EXPECT_EQ(tree(manager, models), calmTree);
    desk.watched().setModelTypeHandler(nullptr);
}

TEST(Hierarchy, AsksOncePerModel) {
    HierarchyDesk desk;
    const auto models = desk.models(3);
    desk.callTo(models[0], {"M1", "M2"});
    desk.callTo(models[1], {"M2"});
    FailingRepository& watched = desk.watched();
    QorHierarchyManager manager;
    for (int round = 0; round < 2; ++round) (void)tree(manager, models);
    EXPECT_EQ(watched.record.count("getInterRefsOfSourceModel"), 3);
}

TEST(Hierarchy, LeavesOutWhatTheRepositoryFailsAt) {
    HierarchyDesk desk;
    const auto models = desk.models(2);
    desk.callTo(models[0], {"M1"});
    FailingRepository& watched = desk.watched();
    for (const char* const operation :
         {"getInterRefsOfSourceModel", "GetModelTypeIndex", "getModelThreadIDFromModelName",
          "getLastModelVersionOfModelThread", "getAllInstantiableClasses", "getUIAttributeType",
          "getAttributeIDFromAttributeName"}) {
        SCOPED_TRACE(operation);
        watched.record.fail(operation, static_cast<QorErrorCode>(77), 0);
        QorHierarchyManager manager;
        EXPECT_EQ(referenced(manager, models[0]), Ids());
        watched.record.failNothing();
        EXPECT_EQ(referenced(manager, models[0]), Ids()) << "the answer is kept";
        EXPECT_EQ(tree(manager, models), "<model m0 />\n");
    }
    // Without its text the class is one that uses the common name; "Call" has no such attribute.
    watched.record.fail("getAttributeValue", static_cast<QorErrorCode>(77), 0);
    QorHierarchyManager manager;
    EXPECT_EQ(referenced(manager, models[0]), Ids());
}

TEST(HierarchyCache, IsEmptiedByEvents) {
    const struct {
        QorEventType type;
        long first;   // field 8; 0: the model asked for, 1: another one
        long second;  // field 9
        long type13;
        bool keeps;
        bool keepsOther;
    } rows[] = {
        {QorEventType::ModelCreated, 1, 0, 0, false, false},
        {QorEventType::ModelRenamed, 1, 0, 0, false, false},
        {QorEventType::ModelMoved, 1, 0, 0, false, false},
        {QorEventType::ModelDeleted, 1, 0, 0, false, false},
        {QorEventType::ModelVersionsChanged, 1, 0, 0, false, false},
        {QorEventType::ModelReferencesChanged, 0, 1, 0, false, true},
        {QorEventType::ModelReferencesChanged, 1, 0, 0, true, false},
        {QorEventType::AttributeValueChanged, 1, 0, 9, false, true},
        {QorEventType::AttributeValueChanged, 0, 1, 9, true, false},
        {QorEventType::AttributeValueChanged, 1, 0, 2, true, true},
        {QorEventType::LibraryLoaded, 0, 0, 9, true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.type));
        HierarchyDesk desk;
        const auto models = desk.models(2);
        QorHierarchyManager manager;
        for (const QorIdentifier each : models) (void)manager.getReferencedModels(each);
        Qor_RaiseEvent(QorEvent(row.type, {models[static_cast<std::size_t>(row.first)],
                                           models[static_cast<std::size_t>(row.second)], 0, 0, 0, row.type13}));
        EXPECT_EQ(manager.IsInCache(models[0]), row.keeps);
        EXPECT_EQ(manager.IsInCache(models[1]), row.keepsOther);
    }
}

TEST(HierarchyCache, IgnoresValuesWhileUpdatesAreSuspended) {
    HierarchyDesk desk;
    const auto models = desk.models(1);
    QorHierarchyManager manager;
    const auto raiseValue = [&] {
        Qor_RaiseEvent(QorAttributeEvent(QorEventType::AttributeValueChanged, 0, models[0], 0, 0, -1, 9));
    };
    for (const bool on : {false, true}) {
        (void)manager.getReferencedModels(models[0]);
        Qor_RaiseEvent(QorSwitchEvent(QorEventType::AutomaticUpdatesSwitched, 0, on));
        raiseValue();
        EXPECT_EQ(manager.IsInCache(models[0]), !on);
    }
    Qor_RaiseEvent(QorSwitchEvent(QorEventType::AutomaticUpdatesSwitched, 0, false));
    (void)manager.getReferencedModels(models[0]);
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelReferencesChanged, models[0]));
    EXPECT_FALSE(manager.IsInCache(models[0])) << "references are looked at all the same";
}

TEST(HierarchyCache, FollowsChangesThroughTheRepository) {
    HierarchyDesk desk;
    const auto models = desk.models(3);
    const QorIdentifier call = desk.callTo(models[0], {"M1"});
    QorHierarchyManager manager;
    EXPECT_EQ(referenced(manager, models[0]), Ids{models[1]});
    const long attribute = desk.attributeOf(call, "Calls");
    ASSERT_EQ(
        desk.repository().setAttributeValueAsString(models[0], call, attribute, HierarchyDesk::to("M2").c_str(), true),
        QorErrorCode::Ok);
    EXPECT_EQ(referenced(manager, models[0]), Ids{models[2]});
    ASSERT_EQ(desk.repository().deleteInstance(models[0], call), QorErrorCode::Ok);
    EXPECT_EQ(referenced(manager, models[0]), Ids());
    manager.RemoveSourceModel(models[0]);
    manager.RemoveSourceModel(models[0]);
    EXPECT_FALSE(manager.IsInCache(models[0]));
}

}  // namespace
