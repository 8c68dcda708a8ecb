// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityRecheck.h"

#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "cardinality/ObjectClasses.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/breaches.h"
#include "cardinality/limits.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"

using namespace qor::cardinality;

namespace {

using Breaches = std::vector<QorCardinalityBreach>;

/// A class whose number of objects is limited.
struct CountedClass {
    const QorClassCardinality* rules = nullptr;
    std::uint32_t objects = 0;  ///< with those of subclasses

    [[nodiscard]] bool isWithinLimits() const {
        return !fallsShort(objects, rules->minObjects.count) && !exceeds(objects, rules->maxObjects.count);
    }
};

}  // namespace

struct QorCardinalityRecheck::Impl {
    explicit Impl(const QorCardinalityHandler& handlerToUse) : handler(handlerToUse) {}

    // ---- The whole model ----

    bool checkModel(long ofModel) {
        model = ofModel;
        const auto keep = [this](const QorCardinalityBreach& breach) {
            (breach.subjectIsClass ? ofClasses : ofObjects)[breach.subject].push_back(breach);
            ++count;
            return true;
        };
        return QorCardinalityCompleteCheck(handler).checkModel(model, keep) && readCountedClasses() && readObjects();
    }

    void forget() {
        ofObjects.clear();
        ofClasses.clear();
        count = 0;
        classes.clear();
        counted.clear();
        countedFor.clear();
        changed.clear();
    }

    bool readCountedClasses() {
        ISortedSet<long> visible;
        if (!visibleClasses(model, visible)) return false;
        for (const long cls : visible) {
            const auto* rules = handler.getClassCardinality(cls);
            if (rules == nullptr) continue;
            ISortedSet<long> below;
            if (!succeeded(Request::Subclasses, repository().getAllSubClasses(cls, below))) return false;
            below.add(cls);
            for (const long one : below) countedFor[one].push_back(counted.size());
            counted.push_back({rules, 0});
        }
        return true;
    }

    bool readObjects() {
        ISortedSet<long> objects;
        if (!succeeded(Request::ObjectsOfModel, repository().getAllInstancesInModel(model, objects))) return false;
        for (const long object : objects)
            if (!classOf(object)) return false;
        changed.clear();  // the check of the whole model has told
        return true;
    }

    // ---- What changed ----

    bool recheck(const ISortedSet<long>& objects, const ISortedSet<long>& relations) {
        std::set<long> touched(objects.begin(), objects.end());
        for (const long relation : relations)
            if (!addEnds(relation, touched)) return false;
        for (const long object : touched)
            if (!recheckObject(object)) return false;
        return recheckClasses();
    }

    static bool addEnds(long relation, std::set<long>& touched) {
        long from = QorNoIdentifier;
        long to = QorNoIdentifier;
        const auto code = repository().getEndpointsOfRelationInstance(relation, from, to);
        if (code == QorErrorCode::NotFound) return true;
        if (!succeeded(Request::EndsOfRelation, code)) return false;
        touched.insert({from, to});
        return true;
    }

    bool recheckObject(long object) {
        const auto present = classOf(object);
        if (!present) return false;
        Breaches found;
        const auto keep = [&found](const QorCardinalityBreach& breach) {
            found.push_back(breach);
            return true;
        };
        if (*present != QorNoIdentifier && !QorCardinalityCompleteCheck(handler).checkObject(object, keep))
            return false;
        replace(ofObjects, object, std::move(found));
        return true;
    }

    /// The object's class, none when the object is gone; nothing after an internal error. Keeps the counts.
    std::optional<QorIdentifier> classOf(long object) {
        const auto key = Qor_NarrowIdentifier(object);
        if (!key || *key < 1) return QorNoIdentifier;
        long cls = QorNoIdentifier;
        const auto code = repository().classOf(object, cls);
        if (code != QorErrorCode::NotFound && !succeeded(Request::ClassOfObject, code)) return std::nullopt;
        const auto present =
            code == QorErrorCode::Ok ? Qor_NarrowIdentifier(cls).value_or(QorNoIdentifier) : QorNoIdentifier;
        const auto known = classes.of(*key);
        if (known == present) return present;
        classes.set(*key, present);
        addToCounts(known, -1);
        addToCounts(present, +1);
        return present;
    }

    void addToCounts(QorIdentifier cls, int difference) {
        const auto places = countedFor.find(cls);
        if (places == countedFor.end()) return;
        for (const auto place : places->second) {
            counted[place].objects += static_cast<std::uint32_t>(difference);
            changed.insert(place);
        }
    }

    bool recheckClasses() {
        while (!changed.empty()) {
            const auto& one = counted[*changed.begin()];
            Breaches found;
            const auto keep = [&found](const QorCardinalityBreach& breach) {
                found.push_back(breach);
                return true;
            };
            if (!one.isWithinLimits() && testClass(*one.rules, model, true, true, keep) == Outcome::Failed)
                return false;
            replace(ofClasses, one.rules->key(), std::move(found));
            changed.erase(changed.begin());
        }
        return true;
    }

    void replace(std::map<long, Breaches>& records, long subject, Breaches found) {
        if (const auto earlier = records.find(subject); earlier != records.end()) {
            count -= earlier->second.size();
            records.erase(earlier);
        }
        count += found.size();
        if (!found.empty()) records.emplace(subject, std::move(found));
    }

    const QorCardinalityHandler& handler;
    long model = QorNoIdentifier;
    std::map<long, Breaches> ofObjects;
    std::map<long, Breaches> ofClasses;
    std::size_t count = 0;
    ObjectClasses classes;
    std::vector<CountedClass> counted;
    std::map<long, std::vector<std::size_t>> countedFor;  ///< by class of an object: where it counts
    std::set<std::size_t> changed;                        ///< counted classes with another number of objects
};

QorCardinalityRecheck::QorCardinalityRecheck(const QorCardinalityHandler& handler)
    : _impl(std::make_unique<Impl>(handler)) {}
QorCardinalityRecheck::~QorCardinalityRecheck() = default;

bool QorCardinalityRecheck::checkModel(long model) noexcept {
    _impl->forget();
    const bool isComplete = Qor_Guarded(kSource, false, [&] { return _impl->checkModel(model); });
    if (!isComplete) _impl->forget();
    return isComplete;
}

bool QorCardinalityRecheck::recheck(const ISortedSet<long>& objects, const ISortedSet<long>& relations) noexcept {
    return Qor_Guarded(kSource, false, [&] { return _impl->recheck(objects, relations); });
}

void QorCardinalityRecheck::visitBreaches(const QorCardinalityCompleteCheck::Sink& sink) const {
    for (const auto* records : {&_impl->ofObjects, &_impl->ofClasses})
        for (const auto& entry : *records)
            for (const auto& breach : entry.second)
                if (!sink(breach)) return;
}

std::size_t QorCardinalityRecheck::numberOfBreaches() const noexcept { return _impl->count; }
