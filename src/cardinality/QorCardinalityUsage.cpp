// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityUsage.h"

#include <map>
#include <set>
#include <tuple>

#include "cardinality/ObjectRelations.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/QorCardinalityRuleList.h"
#include "cardinality/breaches.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"

using namespace qor::cardinality;

namespace {

bool isAbout(std::string_view key, std::string_view word) { return key.find(word) != std::string_view::npos; }

}  // namespace

struct QorCardinalityUsage::Impl {
    explicit Impl(const QorCardinalityHandler& handlerToUse) : handler(handlerToUse) {}

    struct Seen {
        std::uint64_t objects = 0;
        std::uint64_t models = 0;
        long lastModel = -1;
    };
    /// Class of an object, direction, relation class, class at the other end; also with none for the last, and for the
    /// last two.
    using Relation = std::tuple<QorIdentifier, Direction, QorIdentifier, QorIdentifier>;

    bool addObjects(long model) {
        ISortedSet<long> objects;
        if (!succeeded(Request::ObjectsOfModel, repository().getAllInstancesInModel(model, objects))) return false;
        ObjectRelations object;
        for (const long one : objects) {
            if (!object.open(one)) return false;
            auto& known = seen[object.cls()];
            ++known.objects;
            if (known.lastModel != model) ++known.models;
            known.lastModel = model;
            for (const auto direction : {Direction::Outgoing, Direction::Incoming}) {
                if (!object.read(direction)) return false;
                addEnds(object.cls(), direction, object.ends(direction));
            }
        }
        return true;
    }

    void addEnds(QorIdentifier cls, Direction direction, std::span<const QorRelationEnd> ends) {
        for (const auto& end : ends) {
            if (!relations.emplace(cls, direction, end.relationClass, end.otherClass).second) continue;
            relations.emplace(cls, direction, end.relationClass, QorNoIdentifier);
            relations.emplace(cls, direction, QorNoIdentifier, QorNoIdentifier);
        }
    }

    /// Classes with limits on their numbers of objects, which count those of subclasses, too.
    bool addCounts(long model) {
        ISortedSet<long> visible;
        if (!visibleClasses(model, visible)) return false;
        for (const long cls : visible) {
            const auto* rules = handler.getClassCardinality(cls);
            if (rules == nullptr) continue;
            shown.insert(rules->key());
            ISortedSet<long> objects;
            if (!succeeded(Request::ObjectsOfClass,
                           repository().getAllInstancesOfClassAndSubClassInModel(model, rules->key(), objects, true)))
                return false;
            if (!objects.isEmpty()) peopled.insert(rules->key());
        }
        return true;
    }

    [[nodiscard]] bool hasApplied(const QorCardinalityRule& rule) const {
        const auto cls = static_cast<QorIdentifier>(rule.cls);
        const bool isMinimum = isAbout(rule.key, "min-");
        if (isAbout(rule.key, "objects")) return (isMinimum ? shown : peopled).count(cls) != 0;
        // A ban is at work wherever there is an object that keeps it.
        if (isMinimum || rule.limit == 0) return seen.count(cls) != 0;
        for (const auto direction : {Direction::Outgoing, Direction::Incoming}) {
            if (isAbout(rule.key, direction == Direction::Outgoing ? "incoming" : "outgoing")) continue;
            if (relations.count({cls, direction, static_cast<QorIdentifier>(rule.relationClass),
                                 static_cast<QorIdentifier>(rule.otherClass)}) != 0)
                return true;
        }
        return false;
    }

    const QorCardinalityHandler& handler;
    std::map<QorIdentifier, Seen> seen;
    std::set<Relation> relations;
    std::set<QorIdentifier> shown;    ///< by a model's type
    std::set<QorIdentifier> peopled;  ///< with an object, or one of a subclass
};

QorCardinalityUsage::QorCardinalityUsage(const QorCardinalityHandler& handler)
    : _impl(std::make_unique<Impl>(handler)) {}
QorCardinalityUsage::~QorCardinalityUsage() = default;

bool QorCardinalityUsage::addModel(long model) {
    return Qor_Guarded(kSource, false, [&] { return _impl->addObjects(model) && _impl->addCounts(model); });
}

std::vector<QorCardinalityRule> QorCardinalityUsage::unapplied() const {
    return Qor_Guarded(kSource, std::vector<QorCardinalityRule>(), [&] {
        std::vector<QorCardinalityRule> result;
        for (const auto& rules : _impl->handler.getClassCardinalities())
            for (const auto& rule : QorCardinalityRuleList::of(rules))
                if (!_impl->hasApplied(rule)) result.push_back(rule);
        return result;
    });
}

std::vector<QorCardinalityUsage::Untouched> QorCardinalityUsage::untouched() const {
    return Qor_Guarded(kSource, std::vector<Untouched>(), [&] {
        std::vector<Untouched> result;
        for (const auto& [cls, seen] : _impl->seen) {
            const auto* rules = _impl->handler.getClassCardinality(cls);
            if (rules == nullptr || QorCardinalityRuleList::of(*rules).empty())
                result.push_back({cls, seen.objects, seen.models});
        }
        return result;
    });
}
