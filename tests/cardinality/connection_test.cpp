// SPDX-License-Identifier: Apache-2.0
// Explanations before drawing: they agree with the questions of an editor, and with what a check finds after drawing.
#include "cardinality/Desk.h"
#include "cardinality/QorCardinalityConnection.h"
#include "cardinality/RandomDesk.h"

namespace {

constexpr const char* kRelations[] = {"then", "uses", "files"};
constexpr const char* kClasses[] = {"Task", "Document", "Special"};

TEST(Connection, NamesPlaceCountAndRuleOfEachLimit) {
    Desk desk;
    desk.draw("a>b a>x").rules("Task", "CARDINALITIES max-outgoing: 2 max-relations: 9");
    desk.rules("Document", "CARDINALITIES RELATION 'then' max-incoming: 4 FROM_CLASS 'Task' max-incoming: 3");
    const QorCardinalityConnection connection(desk.handler);
    const auto advice = connection.betweenObjects(desk["then"], desk["a"], desk["x"]);
    EXPECT_FALSE(advice.allowed);
    std::string found;
    for (const auto& limit : advice.limits)
        found += std::to_string(static_cast<int>(limit.place)) + " " + std::string(limit.rule.key) + " " +
                 std::to_string(limit.present) + "/" + std::to_string(limit.rule.limit) + " " +
                 std::to_string(limit.slots()) + "; ";
    EXPECT_EQ(found,
              "0 max-outgoing 1/2 1; 0 max-outgoing 2/2 0; 0 max-outgoing 2/2 0; 0 max-relations 2/9 7; 1 max-incoming "
              "1/3 2; 1 max-incoming 1/4 3; ");
    EXPECT_EQ(connection.betweenObjects(desk["then"], desk["b"], desk["b"]).slots, 2U) << "b is joined once by now";
    EXPECT_FALSE(connection.betweenObjects(desk["then"], 99999, desk["b"]).allowed);
    desk.handler.setActivation(0);
    EXPECT_TRUE(connection.betweenObjects(desk["then"], desk["a"], desk["x"]).allowed);
}

/// Whether a check finds a maximum at one of the ends that counts the relation.
bool breaksMaximum(Desk& desk, QorIdentifier relation, std::initializer_list<long> ends) {
    bool broken = false;
    for (const long end : ends)
        QorCardinalityCompleteCheck(desk.handler).checkObject(end, [&](const QorCardinalityBreach& breach) {
            const bool isMaximum = breach.found > breach.rule.limit;
            broken =
                broken || (isMaximum && std::count(breach.relations.begin(), breach.relations.end(), relation) > 0);
            return true;
        });
    return broken;
}

TEST(Connection, AgreesWithTheEditorsQuestionsAndWithWhatIsFoundAfterDrawing) {
    for (unsigned seed = 0; seed < 80; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomDesk random(seed);
        auto& desk = random.desk;
        const QorCardinalityConnection connection(desk.handler);
        for (const auto* relation : kRelations)
            for (const auto* source : kClasses)
                for (const auto* target : kClasses) {
                    const auto advice = connection.betweenClasses(desk[relation], desk[source], desk[target]);
                    EXPECT_EQ(advice.allowed ? 1 : 0,
                              desk.handler.checkRelateClasses(desk[relation], desk[source], desk[target]));
                    EXPECT_EQ(advice.slots,
                              desk.handler.getRelationSlotCount(desk[relation], desk[source], desk[target]));
                }
        for (const auto* cls : kClasses)
            for (const bool isSource : {true, false}) {
                const auto advice = connection.withNewObject(desk.model, desk[cls], desk["then"], desk["a"], isSource);
                EXPECT_EQ(advice.allowed,
                          desk.handler.isNewObjectAllowed(desk.model, desk[cls], desk["then"], desk["a"], isSource));
            }
        for (const auto* line : {"a>b", "a=x", "x>s", "y~a", "c>c", "b=a"}) {
            const std::string_view name(line);
            const auto* relationClass = name[1] == '>' ? "then" : name[1] == '=' ? "uses" : "files";
            const auto from = desk[name.substr(0, 1)];
            const auto to = desk[name.substr(2)];
            const auto advice = connection.betweenObjects(desk[relationClass], from, to);
            const auto drawn =
                desk.workshop.connect(static_cast<QorIdentifier>(from), relationClass, static_cast<QorIdentifier>(to));
            EXPECT_EQ(advice.allowed, !breaksMaximum(desk, drawn, {from, to})) << line;
        }
    }
}

}  // namespace
