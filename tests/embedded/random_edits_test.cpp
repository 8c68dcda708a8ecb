// SPDX-License-Identifier: Apache-2.0
// Random edits on the repository and on a model of it that is too simple to be wrong, compared as they go.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "platform/QorCoreBulkView.h"
#include "support/OnStores.h"

namespace {

struct Link {
    QorIdentifier from;
    QorIdentifier to;
    friend bool operator==(const Link& a, const Link& b) { return a.from == b.from && a.to == b.to; }
};

class Twin {
public:
    explicit Twin(unsigned seed, bool inFile)
        : _w({.language = "en", .console = false, .user = "ada"}, inFile ? _folder.file("a.qor") : ""), _random(seed) {
        _w.cls("Task");
        _w.cls("Special", "Task");
        _w.relationClass("then", "Task", "Task");
        _w.modelType("Process", {"Task", "Special"});
        for (const char* name : {"one", "two"}) _models.push_back(_w.model("Process", name));
    }

    void edit() {
        switch (pick(12)) {
            case 0:
            case 1:
                return addObject();
            case 2:
            case 3:
            case 4:
                return addRelation();
            case 5:
                return move(true);
            case 6:
                return move(false);
            case 7:
                return pick(3) == 0 ? removeObject() : addRelation();
            case 8:
                return rename();
            case 9:
                return pick(40) == 0 ? removeModel() : addRelation();
            case 10:
                return pick(10) == 0 ? relayOut() : addObject();
            default:
                return compareOne();
        }
    }

    void compareAll() {
        for (const QorIdentifier model : _models) {
            std::vector<long> objects;
            for (const auto& [id, its] : _objects)
                if (its.model == model) objects.push_back(id);
            ISortedSet<long> found;
            ASSERT_EQ(repository().getAllInstancesInModel(model, found), QorErrorCode::Ok);
            ASSERT_EQ(std::vector<long>(found.begin(), found.end()), objects);
            compareByClass(model, "Task", true);
            compareByClass(model, "Special", false);
            std::map<QorIdentifier, Link> relations;
            for (const auto& info : _w.reader().relationsOf(model)) relations[info.id] = {info.from, info.to};
            for (const auto& [id, link] : _relations) {
                if (_objects.at(link.from).model == model) {
                    ASSERT_EQ(relations.at(id), link);
                }
            }
        }
        for (const auto& [id, its] : _objects) {
            compare(id);
            long found = -1;
            ASSERT_EQ(repository().getInstanceIDFromInstanceName(its.model, its.cls, its.name.c_str(), found),
                      QorErrorCode::Ok);
            ASSERT_EQ(found, id);
        }
        for (const QorIdentifier id : _gone) ASSERT_EQ(_w.reader().kindOf(id), QorThingKind::None);
    }

    [[nodiscard]] std::size_t size() const { return _objects.size() + _relations.size(); }

private:
    struct Object {
        QorIdentifier model;
        QorIdentifier cls;
        std::string name;
    };

    QorCoreModelingManager& repository() { return _w.repository(); }
    std::size_t pick(std::size_t below) { return _random() % below; }
    // Some objects are hubs, so that long lists come about.
    QorIdentifier anyObject() {
        if (_objects.empty()) return QorNoIdentifier;
        auto at = _objects.begin();
        std::advance(at, static_cast<std::ptrdiff_t>(pick(pick(3) == 0 ? _objects.size() : 1 + _objects.size() / 8)));
        return at->first;
    }
    QorIdentifier anyRelation() {
        if (_relations.empty()) return QorNoIdentifier;
        auto at = _relations.begin();
        std::advance(at, static_cast<std::ptrdiff_t>(pick(_relations.size())));
        return at->first;
    }

    void addObject() {
        Object its{_models[pick(_models.size())], _w.idOf(pick(2) ? "Task" : "Special"), std::to_string(pick(400))};
        long made = -1;
        const auto code = repository().createInstance(its.model, its.cls, its.name.c_str(), made);
        const bool taken = std::any_of(_objects.begin(), _objects.end(), [&](const auto& other) {
            return other.second.model == its.model && other.second.cls == its.cls && other.second.name == its.name;
        });
        ASSERT_EQ(code, taken ? QorErrorCode::ValueRefused : QorErrorCode::Ok);
        if (!taken) _objects.emplace(static_cast<QorIdentifier>(made), std::move(its));
    }

    void rename() {
        const QorIdentifier id = anyObject();
        if (id == QorNoIdentifier) return;
        const std::string name = std::to_string(pick(400));
        if (repository().RenameInstance(_objects[id].model, id, name.c_str(), false) == QorErrorCode::Ok)
            _objects[id].name = name;
    }

    void addRelation() {
        const Link link{anyObject(), anyObject()};
        if (link.from == QorNoIdentifier) return;
        const bool fits = _objects[link.from].model == _objects[link.to].model;
        const auto result = _w.builder().addRelation(_w.idOf("then"), link.from, link.to);
        ASSERT_EQ(result.ok(), fits);
        if (fits) _relations[result.id] = link;
    }

    void move(bool source) {
        const QorIdentifier id = anyRelation();
        const QorIdentifier object = anyObject();
        if (id == QorNoIdentifier) return;
        Link& link = _relations[id];
        const bool fits = _objects[link.from].model == _objects[object].model;
        const auto code = source ? repository().moveFromEndpoint(id, object) : repository().moveToEndpoint(id, object);
        ASSERT_EQ(code, fits ? QorErrorCode::Ok : QorErrorCode::OutOfRange);
        if (fits) (source ? link.from : link.to) = object;
    }

    void forgetRelationsOf(QorIdentifier object) {
        for (auto at = _relations.begin(); at != _relations.end();) {
            if (at->second.from != object && at->second.to != object) {
                ++at;
                continue;
            }
            _gone.push_back(at->first);
            at = _relations.erase(at);
        }
    }

    void removeObject() {
        const QorIdentifier id = anyObject();
        if (id == QorNoIdentifier) return;
        ASSERT_EQ(repository().deleteInstance(_objects[id].model, id), QorErrorCode::Ok);
        forgetRelationsOf(id);
        _gone.push_back(id);
        _objects.erase(id);
    }

    void removeModel() {
        const std::size_t at = pick(_models.size());
        ASSERT_TRUE(_w.builder().removeModel(_models[at]).ok());
        for (auto object = _objects.begin(); object != _objects.end();) {
            if (object->second.model != _models[at]) {
                ++object;
                continue;
            }
            forgetRelationsOf(object->first);
            _gone.push_back(object->first);
            object = _objects.erase(object);
        }
        _models[at] = _w.model("Process", "model " + std::to_string(_random()));
    }

    void relayOut() {
        if (pick(2) == 0)
            _w.builder().layOut();
        else
            ASSERT_EQ(repository().updateFacets(), QorErrorCode::Ok);
    }

    void compareByClass(QorIdentifier model, std::string_view cls, bool withSubclasses) {
        std::vector<long> wanted;
        for (const auto& [id, its] : _objects)
            if (its.model == model && (withSubclasses || its.cls == _w.idOf(cls))) wanted.push_back(id);
        ISortedSet<long> found;
        ASSERT_EQ(repository().getAllInstancesOfClassAndSubClassInModel(model, _w.idOf(cls), found, withSubclasses),
                  QorErrorCode::Ok);
        ASSERT_EQ(std::vector<long>(found.begin(), found.end()), wanted);
    }

    void compareOne() {
        if (const QorIdentifier id = anyObject(); id != QorNoIdentifier) compare(id);
    }

    // The plain operations and the bulk view against the twin.
    void compare(QorIdentifier object) {
        std::vector<long> leaving;
        std::vector<long> arriving;
        for (const auto& [id, link] : _relations) {
            if (link.from == object) leaving.push_back(id);
            if (link.to == object) arriving.push_back(id);
        }
        ISortedSet<long> from;
        ISortedSet<long> to;
        ASSERT_EQ(repository().getFromRelationInstances(object, from), QorErrorCode::Ok);
        ASSERT_EQ(repository().getToRelationInstances(object, to), QorErrorCode::Ok);
        ASSERT_EQ(std::vector<long>(from.begin(), from.end()), leaving);
        ASSERT_EQ(std::vector<long>(to.begin(), to.end()), arriving);

        long cls = -1;
        std::span<const QorRelationEnd> outgoing;
        std::span<const QorRelationEnd> incoming;
        ASSERT_EQ(repository().bulkView()->viewObject(object, cls, outgoing, incoming), QorErrorCode::Ok);
        ASSERT_EQ(cls, _objects[object].cls);
        compareEnds(outgoing, leaving, &Link::to);
        compareEnds(incoming, arriving, &Link::from);
    }

    void compareEnds(std::span<const QorRelationEnd> ends, const std::vector<long>& relations,
                     QorIdentifier Link::*other) {
        ASSERT_EQ(ends.size(), relations.size());
        for (std::size_t at = 0; at < ends.size(); ++at) {
            ASSERT_EQ(ends[at].relation, relations[at]);
            ASSERT_EQ(ends[at].relationClass, _w.idOf("then"));
            const QorIdentifier its = _relations[ends[at].relation].*other;
            ASSERT_EQ(ends[at].other, its);
            ASSERT_EQ(ends[at].otherClass, _objects[its].cls);
        }
    }

    TemporaryFolder _folder;
    Workshop _w;
    std::mt19937 _random;
    std::vector<QorIdentifier> _models;
    std::map<QorIdentifier, Object> _objects;
    std::map<QorIdentifier, Link> _relations;
    std::vector<QorIdentifier> _gone;
};

class RandomEdits : public testing::TestWithParam<unsigned> {};

TEST_P(RandomEdits, LeaveTheSameAnswersByPlainOperationsAndByTheBulkView) {
    Twin twin(GetParam(), GetParam() % 4 == 0);
    for (int step = 0; step < 6000 && !HasFatalFailure(); ++step) {
        twin.edit();
        if (step % 500 == 0) twin.compareAll();
    }
    twin.compareAll();
    EXPECT_GT(twin.size(), 100U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, testing::Range(1U, 9U));

}  // namespace
