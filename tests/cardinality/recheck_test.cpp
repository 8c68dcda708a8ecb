// SPDX-License-Identifier: Apache-2.0
// Breaches that are kept while a model is edited: always those of a run over the whole model.
#include <algorithm>

#include "cardinality/QorCardinalityRecheck.h"
#include "cardinality/RandomDesk.h"
#include "platform/QorCoreModelingManager.h"

namespace {

std::string described(const QorCardinalityBreach& breach) {
    std::string text = std::to_string(breach.subject) + " " + breach.text.str() + std::string(breach.rule.key) +
                       std::to_string(breach.found);
    for (const auto* list : {&breach.objects, &breach.relations})
        for (const long one : *list) text += " " + std::to_string(one);
    return text;
}

std::vector<std::string> kept(const QorCardinalityRecheck& recheck) {
    std::vector<std::string> list;
    recheck.visitBreaches([&](const auto& breach) {
        list.push_back(described(breach));
        return true;
    });
    EXPECT_EQ(recheck.numberOfBreaches(), list.size());
    return list;
}

std::vector<std::string> foundAnew(const Desk& desk) {
    std::vector<std::string> list;
    EXPECT_TRUE(QorCardinalityCompleteCheck(desk.handler).checkModel(desk.model, [&](const auto& breach) {
        list.push_back(described(breach));
        return true;
    }));
    return list;
}

/// Edits the model and names what an editor would know to have changed.
class Editor {
public:
    Editor(Desk& desk, unsigned seed) : _desk(desk), _random(seed) {
        (void)repository().getAllInstancesInModel(desk.model, _objects);
    }

    ISortedSet<long> objects;
    ISortedSet<long> relations;

    void edit() {
        switch (std::uniform_int_distribution<int>(0, 4)(_random)) {
            case 0:
                return addObject();
            case 1:
                return deleteObject();
            case 2:
                return renameObject();
            case 3:
                return moveRelation();
            default:
                return addRelation();
        }
    }

private:
    static QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }
    long any(const ISortedSet<long>& set) {
        if (set.isEmpty()) return -1;
        return set.elementAtIndex(std::uniform_int_distribution<unsigned long>(0, set.numberOfElements() - 1)(_random));
    }
    ISortedSet<long> relationsOf(long object) {
        ISortedSet<long> all;
        ISortedSet<long> incoming;
        (void)repository().getFromRelationInstances(object, all);
        (void)repository().getToRelationInstances(object, incoming);
        all.addAllFrom(incoming);
        return all;
    }
    void nameEnds(long relation) {
        long from = -1;
        long to = -1;
        if (repository().getEndpointsOfRelationInstance(relation, from, to) != QorErrorCode::Ok) return;
        objects.add(from);
        objects.add(to);
    }

    void addObject() {
        constexpr const char* kClasses[] = {"Task", "Document", "Special"};
        const auto name = "new " + std::to_string(++_added);
        long object = -1;
        (void)repository().createInstance(_desk.model, _desk[kClasses[_added % 3]], name.c_str(), object);
        _objects.add(object);
        objects.add(object);
    }
    void deleteObject() {
        const long object = any(_objects);
        for (const long relation : relationsOf(object)) nameEnds(relation);
        if (repository().deleteInstance(_desk.model, object) != QorErrorCode::Ok) return;
        _objects.remove(object);
        objects.add(object);
    }
    void renameObject() {
        const long object = any(_objects);
        (void)repository().RenameInstance(_desk.model, object, ("named " + std::to_string(++_added)).c_str(), false);
        objects.add(object);
    }
    void addRelation() {
        const auto made = _desk.workshop.builder().addRelation(
            static_cast<QorIdentifier>(_desk[_added++ % 2 == 0 ? "then" : "uses"]),
            static_cast<QorIdentifier>(any(_objects)), static_cast<QorIdentifier>(any(_objects)));
        if (made.ok()) relations.add(made.id);
    }
    void moveRelation() {
        const long relation = any(relationsOf(any(_objects)));
        nameEnds(relation);
        (void)repository().moveToEndpoint(relation, any(_objects));
        relations.add(relation);
    }

    Desk& _desk;
    std::mt19937 _random;
    ISortedSet<long> _objects;
    unsigned _added = 0;
};

TEST(Recheck, EqualsAWholeRunAfterAnyEdits) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomDesk random(seed);
        auto& desk = random.desk;
        QorCardinalityRecheck recheck(desk.handler);
        ASSERT_TRUE(recheck.checkModel(desk.model));
        ASSERT_EQ(kept(recheck), foundAnew(desk));
        for (unsigned round = 0; round < 15; ++round) {
            Editor editor(desk, seed * 100 + round);
            for (unsigned edits = 0; edits <= round % 4; ++edits) editor.edit();
            ASSERT_TRUE(recheck.recheck(editor.objects, editor.relations));
            ASSERT_EQ(kept(recheck), foundAnew(desk)) << "round " << round;
        }
    }
}

TEST(Recheck, AsksOnlyForWhatChangedAndCanBeRepeatedAfterAFailure) {
    Desk desk;
    desk.draw("a>b b>c c>d d>e e>f f>g g>h").rules("Task", "CARDINALITIES max-outgoing: 1 max-objects: 99");
    auto& record = desk.watched().record;
    QorCardinalityRecheck recheck(desk.handler);
    ASSERT_TRUE(recheck.checkModel(desk.model));
    const auto relation =
        desk.workshop.connect(static_cast<QorIdentifier>(desk["a"]), "then", static_cast<QorIdentifier>(desk["c"]));
    record.fail("getToRelationInstances", static_cast<QorErrorCode>(4711));
    EXPECT_FALSE(recheck.recheck({}, {relation}));
    record.forget();
    EXPECT_TRUE(recheck.recheck({}, {relation}));
    EXPECT_EQ(kept(recheck), foundAnew(desk));
    EXPECT_EQ(recheck.numberOfBreaches(), 3U);
    record.forget();
    EXPECT_TRUE(recheck.recheck({}, {relation}));
    EXPECT_LT(record.order().size(), 40U) << "of a model with more than 100 calls";
    EXPECT_FALSE(recheck.checkModel(99999));
    EXPECT_EQ(recheck.numberOfBreaches(), 0U);
}

}  // namespace
