// SPDX-License-Identifier: Apache-2.0
// The complete run: every breach, and never one that disagrees with the run that ends at the first.
#include "cardinality/Desk.h"
#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/RandomDesk.h"
#include "platform/QorCoreBulkView.h"
#include "platform/QorCoreModelingManager.h"

namespace {

std::string described(const Desk& desk, const QorCardinalityBreach& breach) {
    const auto named = [&desk](long identifier) {
        return identifier < 1 ? std::string("-") : desk.names(std::vector<long>{identifier});
    };
    return named(breach.subject) + (breach.subjectIsClass ? "!" : "") + " " + breach.text.str() + " " +
           named(breach.rule.cls) + "/" + std::string(breach.rule.key) + "/" + named(breach.rule.relationClass) + "/" +
           named(breach.rule.otherClass) + "/" + std::to_string(breach.rule.limit) + " found " +
           std::to_string(breach.found) + " [" + desk.names(breach.objects) + "] [" + desk.names(breach.relations) +
           "]";
}

std::vector<std::string> allBreaches(const Desk& desk) {
    std::vector<std::string> texts;
    EXPECT_TRUE(QorCardinalityCompleteCheck(desk.handler).checkModel(desk.model, [&](const auto& breach) {
        EXPECT_TRUE(breach.text.view().starts_with(std::to_string(breach.message)));
        texts.push_back(described(desk, breach));
        return true;
    }));
    return texts;
}

TEST(CompleteCheck, FindsEveryBreachAndNamesTheWrittenRule) {
    Desk desk;
    desk.draw("a>b a>x").objects("y");
    desk.rules("Task",
               "CARDINALITIES max-relations: 1 min-objects: 3 max-objects: 1 min-incoming: 1\n"
               "RELATION 'uses' TO_CLASS 'Document' min-outgoing: 1");
    desk.handler.setActivation(0);
    const std::vector<std::string> expected = {
        "a 1965{ \"a\" 1981,then,1} Task/max-relations/-/-/1 found 2 [a] [a>b a>x]",
        "a 1963{ \"a\",1981,1} Task/max-relations/-/-/1 found 2 [a] [a>b a>x]",
        "a 1963{ \"a\",1980,1} Task/max-relations/-/-/1 found 2 [] [a>b a>x]",
        "a 1974{1984<Document|a>,uses,1} Task/min-outgoing/uses/Document/1 found 0 [a] []",
        "a 1972{ \"a\",1982,1} Task/min-incoming/-/-/1 found 0 [a] []",
        "b 1974{1984<Document|b>,uses,1} Task/min-outgoing/uses/Document/1 found 0 [b] []",
        "Task! 1969{Task,2,3} Task/min-objects/-/-/3 found 2 [a b] []",
        "Task! 1968{Task,2,1} Task/max-objects/-/-/1 found 2 [a b] []",
    };
    EXPECT_EQ(allBreaches(desk), expected);
    EXPECT_FALSE(desk.handler.isError()) << "the handler's results are its own";
    EXPECT_FALSE(desk.waitCursor);
}

TEST(CompleteCheck, StopsWhenTheSinkHasEnough) {
    Desk desk;
    desk.draw("a>b a>c").rules("Task", "CARDINALITIES max-relations: 0 max-objects: 0");
    QorCardinalityCompleteCheck check(desk.handler);
    int taken = 0;
    EXPECT_TRUE(check.checkModel(desk.model, [&](const auto&) { return ++taken < 2; }));
    EXPECT_EQ(taken, 2);
    EXPECT_FALSE(check.checkModel(desk.model, [](const auto&) -> bool { throw 1; }));
    EXPECT_FALSE(check.checkObject(99999, [](const auto&) { return true; }));
    EXPECT_FALSE(desk.waitCursor);
}

// Each rule alone, at its border, for few and for many relations, which are counted in different ways.
TEST(CompleteCheck, CountsForEachKindOfLimitToTheLastRelation) {
    struct Row {
        const char *cls, *rule;
        int broken;  ///< the limit lies this far from the count
    };
    constexpr Row rows[] = {
        {"Task", "max-outgoing: ", -1},
        {"Task", "min-relations: ", +1},
        {"Task", "RELATION 'then' max-outgoing: ", -1},
        {"Task", "RELATION 'then' min-outgoing: ", +1},
        {"Task", "RELATION 'then' default-max-outgoing: ", -1},
        {"Task", "RELATION 'then' max-outgoing: 9999 TO_CLASS 'Document' max-outgoing: ", -1},
        {"Task", "RELATION 'then' TO_CLASS 'Document' min-outgoing: ", +1},
        {"Document", "RELATION 'then' default-max-incoming: ", -1},
        {"Document", "RELATION 'then' FROM_CLASS 'Task' max-incoming: ", -1},
        {"Document", "RELATION 'then' FROM_CLASS 'Task' min-incoming: ", +1},
    };
    for (const auto& row : rows)
        for (const int count : {2, 16, 17, 300}) {
            Desk desk;
            for (int one = 0; one < count; ++one) desk.draw("a>x");
            for (const int limit : {count, count + row.broken}) {
                desk.handler.Reset();
                desk.rules(row.cls, std::string("CARDINALITIES ") + row.rule + std::to_string(limit));
                EXPECT_EQ(allBreaches(desk).empty(), limit == count) << row.rule << limit;
            }
        }
}

// What the checks have laid out of the rules must go whenever these change, by whatever way.
TEST(CompleteCheck, FollowsEveryChangeOfTheRules) {
    Desk desk;
    desk.draw("a>b a>c a>d");
    const auto breaches = [&desk] {
        const auto complete = allBreaches(desk).size();
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0) == 0, complete > 0);
        return complete;
    };
    EXPECT_EQ(breaches(), 0U);
    desk.rules("Task", "CARDINALITIES max-relations: 2");
    EXPECT_GT(breaches(), 0U);
    const OpenHandler copy = desk.handler;
    desk.handler.createClassItem(desk["Task"])->maxTotal.count = 3;
    desk.handler.createClassItem(desk["Task"])->maxOut.count = 3;
    EXPECT_EQ(breaches(), 0U);
    desk.handler = copy;
    EXPECT_GT(breaches(), 0U);
    desk.handler.Reset();
    EXPECT_EQ(breaches(), 0U);
    desk.workshop.classText("Task", "CARDINALITIES max-outgoing: 1");
    EXPECT_EQ(desk.handler.init(desk.workshop.processes, desk.workshop.environment), 1);
    EXPECT_GT(breaches(), 0U);
    desk.handler.Reset();
    EXPECT_EQ(desk.handler.checkCardinalityDefinition(desk.workshop.processes, desk["Task"], nullptr), 1);
    EXPECT_GT(breaches(), 0U);
}

// ---- The rules applied the slow way ----

/// Counts anew for every limit, with no thought of speed; finds the (object, rule class, limit, found) of every breach.
class SlowCheck {
public:
    explicit SlowCheck(const Desk& desk) : _desk(desk) {}

    using Breach = std::tuple<long, std::uint16_t, std::uint32_t, std::uint32_t>;
    std::multiset<Breach> breaches;

    void object(long object) {
        long cls = -1;
        ASSERT_EQ(QorCoreModelingManager::GetGlobal()->classOf(object, cls), QorErrorCode::Ok);
        const auto* rules = _desk.handler.getClassCardinality(cls);
        if (rules == nullptr) return;
        const auto out = _desk.handler.getCurrentOutRelations(object, _all);
        const auto in = _desk.handler.getCurrentInRelations(object, _all);
        for (const auto* relation : {"then", "uses", "files"}) {
            const auto* record = rules->relations.find(static_cast<QorIdentifier>(_desk[relation]));
            const auto outOf = _desk.handler.getCurrentOutRelations(object, _desk[relation], _all);
            const auto inOf = _desk.handler.getCurrentInRelations(object, _desk[relation], _all);
            if (outOf > 0) most(object, outOf, record ? record->maxOut : rules->maxOut, 1964);
            if (inOf > 0) most(object, inOf, record ? record->maxIn : rules->maxIn, 1964);
            if (record) least(object, outOf, record->minOut, 1973);
            if (record) least(object, inOf, record->minIn, 1973);
            for (const auto* other : {"Node", "Task", "Document", "Special"}) {
                const auto* target = record ? record->targets.find(static_cast<QorIdentifier>(_desk[other])) : nullptr;
                const auto to = _desk.handler.getCurrentOutRelations(object, _desk[relation], _desk[other], _all);
                const auto from = _desk.handler.getCurrentInRelations(object, _desk[relation], _desk[other], _all);
                if (to > 0)
                    most(object, to,
                         target   ? target->maxToTarget
                         : record ? record->defaultMaxOut
                                  : rules->maxOut,
                         1964);
                if (from > 0)
                    most(object, from,
                         target   ? target->maxFromSource
                         : record ? record->defaultMaxIn
                                  : rules->maxIn,
                         1964);
                if (target) least(object, to, target->minToTarget, 1973);
                if (target) least(object, from, target->minFromSource, 1973);
            }
        }
        most(object, out, rules->maxOut, 1962);
        most(object, in, rules->maxIn, 1962);
        most(object, out + in, rules->maxTotal, 1962);
        least(object, out, rules->minOut, 1971);
        least(object, in, rules->minIn, 1971);
        least(object, out + in, rules->minTotal, 1971);
    }

private:
    void most(long object, unsigned long found, const QorCardinalityLimit& limit, std::uint16_t message) {
        if (limit.count < 65535 && found > limit.count) add(object, message, limit.count, found);
    }
    void least(long object, unsigned long found, const QorCardinalityLimit& limit, std::uint16_t message) {
        if (found < limit.count) add(object, message, limit.count, found);
    }
    void add(long object, std::uint16_t message, std::uint32_t limit, unsigned long found) {
        breaches.emplace(object, static_cast<std::uint16_t>(limit == 1 ? message + 1 : message), limit,
                         static_cast<std::uint32_t>(found));
    }

    const Desk& _desk;
    ISortedSet<long> _all;
};

/// Every third object can only be read by the plain operations.
class PartialView final : public QorCoreBulkView {
public:
    explicit PartialView(QorCoreBulkView& whole) : _whole(whole) {}
    QorErrorCode viewObject(long object, long& cls, std::span<const QorRelationEnd>& outgoing,
                            std::span<const QorRelationEnd>& incoming) override {
        if (object % 3 != 0) return _whole.viewObject(object, cls, outgoing, incoming);
        cls = -1;
        outgoing = incoming = {};
        return QorErrorCode::Broken;
    }

private:
    QorCoreBulkView& _whole;
};

TEST(CompleteCheck, AgreesWithSlowCountingWithTheFirstBreachRunAndWithoutTheView) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomDesk random(seed);
        auto& desk = random.desk;
        const auto all = allBreaches(desk);

        std::multiset<SlowCheck::Breach> found;
        ISortedSet<long> objects;
        SlowCheck slow(desk);
        ASSERT_EQ(QorCoreModelingManager::GetGlobal()->getAllInstancesInModel(desk.model, objects), QorErrorCode::Ok);
        for (const long object : objects) {
            slow.object(object);
            QorCardinalityCompleteCheck(desk.handler).checkObject(object, [&](const auto& breach) {
                found.emplace(breach.subject, breach.message, breach.rule.limit, breach.found);
                return true;
            });
        }
        EXPECT_EQ(found, slow.breaches);

        const auto firstBreach = [&desk](bool holds) {
            return holds ? std::string()
                         : desk.handler.getErrorText().str() + " [" + desk.names(desk.handler.getBadObjects()) + "] [" +
                               desk.names(desk.handler.getBadRelations()) + "]";
        };
        const auto isAmongAll = [&all](const std::string& breach) {
            const auto split = breach.find(" [");
            return std::any_of(all.begin(), all.end(), [&](const std::string& one) {
                return one.find(breach.substr(0, split)) != one.npos && one.ends_with(breach.substr(split));
            });
        };
        const auto inModel = firstBreach(desk.handler.checkModel(desk.model, 0) == 1);
        if (inModel.empty()) {
            EXPECT_EQ(desk.names(desk.handler.getBadObjects()), "");
        } else {
            EXPECT_TRUE(isAmongAll(inModel)) << inModel;
        }
        for (const long object : objects) {
            const auto atObject = firstBreach(desk.handler.checkObject(object, true, true) == 1);
            EXPECT_TRUE(atObject.empty() || isAmongAll(atObject)) << atObject;
        }

        PartialView partial(*QorCoreModelingManager::GetGlobal()->bulkView());
        auto& watched = desk.watched();
        for (QorCoreBulkView* view :
             {static_cast<QorCoreBulkView*>(nullptr), static_cast<QorCoreBulkView*>(&partial)}) {
            watched.offerView(view);
            EXPECT_EQ(allBreaches(desk), all);
            EXPECT_EQ(firstBreach(desk.handler.checkModel(desk.model, 0) == 1), inModel);
        }
    }
}

}  // namespace
