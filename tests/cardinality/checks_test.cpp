// SPDX-License-Identifier: Apache-2.0
// The checks that end at the first breach: what they count, say and mark.
#include "cardinality/Desk.h"

namespace {

/// One class's rules, a drawing, and what the check of object "a" (a Task) makes of it.
struct ObjectCase {
    const char *cls, *rules, *drawing;
    const char* message;  ///< empty: all is well
    const char *badObjects, *badRelations;
};

void expectObject(const ObjectCase& row) {
    SCOPED_TRACE(std::string(row.rules) + " / " + row.drawing);
    Desk desk;
    desk.objects("abcxyz").draw(row.drawing).rules(row.cls, std::string("CARDINALITIES ") + row.rules);
    ASSERT_EQ(desk.handler.getErrorText(), "");
    EXPECT_EQ(desk.handler.checkObject(desk["a"], true, true), *row.message == '\0' ? 1 : 0);
    EXPECT_EQ(desk.handler.getErrorText(), row.message);
    EXPECT_EQ(desk.names(desk.handler.getBadObjects()), row.badObjects);
    EXPECT_EQ(desk.names(desk.handler.getBadRelations()), row.badRelations);
    EXPECT_TRUE(desk.internalErrors.empty());
    EXPECT_FALSE(desk.waitCursor);
}

TEST(ObjectCheck, FindsTheFirstBrokenMaximum) {
    const ObjectCase rows[] = {
        // The class's own limits also stand for every relation class without a record, and are met there first.
        {"Task", "max-outgoing: 2", "a>b a>c", "", "", ""},
        {"Task", "max-outgoing: 1", "a>b a>c", "1965{1984<Task|a>,then,1}", "a b c", "a>b a>c"},
        {"Task", "max-outgoing: 2", "a>b a>x a>y", "1964{ \"a\" 1981,then,2}", "a", "a>b a>x a>y"},
        {"Task", "max-outgoing: 1", "a>b a=x", "1963{ \"a\",1981,1}", "a", "a>b a=x"},
        {"Task", "max-incoming: 1", "b>a c=a", "1963{ \"a\",1982,1}", "a", "b>a c=a"},
        {"Task", "max-incoming: 1", "b>a c>a", "1963{ \"a\",1982,1}", "a", "b>a c>a"},
        {"Task", "max-relations: 2", "b>a a=x a=c", "1962{ \"a\",1980,2}", "", "b>a a=x a=c"},
        {"Task", "max-outgoing: 65535", "a>b a>c", "", "", ""},
        {"Task", "max-outgoing: -1", "a>b a>c", "", "", ""},
        // A record takes their place, even with defaults.
        {"Task", "max-outgoing: 2 RELATION 'then' max-outgoing: 1", "a>b a=x a=y", "1962{ \"a\",1981,2}", "a",
         "a>b a=x a=y"},
        {"Task", "RELATION 'then' max-outgoing: 1", "a=x a=y a>b a>c", "1965{1984<Task|a>,then,1}", "a b c", "a>b a>c"},
        {"Task", "RELATION 'then' max-outgoing: 1", "a>b a>x", "1965{ \"a\" 1981,then,1}", "a", "a>b a>x"},
        {"Task", "RELATION 'then' max-incoming: 0", "b>a", "1964{1985<Task|a>,then,0}", "a b", "b>a"},
        {"Task", "RELATION 'then' max-incoming: 2", "b>a x>a y>a", "1964{ \"a\" 1982,then,2}", "a", "b>a x>a y>a"},
        // The default holds for classes without a target record, a target record for its class, whatever it holds.
        {"Task", "RELATION 'then' default-max-outgoing: 1 TO_CLASS 'Task' max-outgoing: 3", "a>b a>c a>x", "", "", ""},
        {"Task", "RELATION 'then' default-max-outgoing: 1 FROM_CLASS 'Task' max-incoming: 3", "a>b a>c a>x a>y",
         "1965{1984<Document|a>,then,1}", "a x y", "a>x a>y"},
        {"Task", "RELATION 'then' TO_CLASS 'Document' max-outgoing: 1", "a>x a>b a>y", "1965{1984<Document|a>,then,1}",
         "a x y", "a>x a>y"},
        // The one met first at the lowest relation comes first.
        {"Task", "RELATION 'uses' max-outgoing: 0 RELATION 'then' max-outgoing: 0", "a=x a>b",
         "1964{1984<Document|a>,uses,0}", "a x", "a=x"},
        {"Task", "max-relations: 1 RELATION 'then' max-incoming: 0", "b>a a=x a=y", "1965{1984<Document|a>,uses,1}",
         "a x y", "a=x a=y"},
        // Exactly the class counts, and every relation: parallel ones, and one with itself in both directions.
        {"Task", "RELATION 'then' TO_CLASS 'Task' max-outgoing: 1", "a>b a>s", "", "", ""},
        {"Task", "max-relations: 1", "a>a", "1963{ \"a\",1980,1}", "", "a>a"},
        {"Task", "max-incoming: 0", "a>a", "1962{ \"a\",1982,0}", "a", "a>a"},
        // Rules of another class, also of the class above, are not the object's.
        {"Document", "max-relations: 0", "a>x", "", "", ""},
        {"Node", "max-relations: 0", "a>x", "", "", ""},
    };
    for (const auto& row : rows) expectObject(row);
}

TEST(ObjectCheck, FindsTheFirstBrokenMinimum) {
    const ObjectCase rows[] = {
        {"Task", "min-outgoing: 2", "a>b b>a", "1971{ \"a\",1981,2}", "a", "a>b"},
        {"Task", "min-incoming: 1", "a>b", "1972{ \"a\",1982,1}", "a", ""},
        {"Task", "min-relations: 3", "a>b b>a", "1971{ \"a\",1980,3}", "a", "a>b b>a"},
        {"Task", "min-relations: 2", "a>a", "", "", ""},
        {"Task", "min-relations: -1", "a>a", "1971{ \"a\",1980,4294967295}", "a", "a>a"},
        {"Task", "min-incoming: 1 RELATION 'then' min-outgoing: 1", "a=x", "1974{ \"a\" 1981,then,1}", "a", ""},
        {"Task", "RELATION 'then' TO_CLASS 'Document' min-outgoing: 2", "a>x a>b", "1973{1984<Document|a>,then,2}", "a",
         "a>x"},
        {"Task", "RELATION 'then' FROM_CLASS 'Document' min-incoming: 2", "x>a b>a", "1973{1985<Document|a>,then,2}",
         "a", "x>a"},
        // A default minimum works through the minimum of the relation class alone: no class is demanded by it.
        {"Task", "RELATION 'then' default-min-outgoing: 2", "a>x a>b", "", "", ""},
        {"Task", "RELATION 'then' default-min-outgoing: 2", "a>x", "1973{ \"a\" 1981,then,2}", "a", "a>x"},
        // Within a relation class: towards classes out, out, from classes in, in; then the next relation class.
        {"Task", "RELATION 'then' min-outgoing: 1 FROM_CLASS 'Task' min-incoming: 1", "", "1974{ \"a\" 1981,then,1}",
         "a", ""},
        {"Task", "RELATION 'uses' min-outgoing: 1 RELATION 'then' min-incoming: 1", "", "1974{ \"a\" 1982,then,1}", "a",
         ""},
        // A broken maximum leaves the minima alone.
        {"Task", "max-outgoing: 0 min-incoming: 1", "a>b", "1964{1984<Task|a>,then,0}", "a b", "a>b"},
    };
    for (const auto& row : rows) expectObject(row);
}

TEST(ObjectCheck, CountsBeyond65535WhereALimitIsSmaller) {
    Desk desk;
    desk.draw("a>b").rules("Task", "CARDINALITIES max-relations: 65535");
    const auto a = static_cast<QorIdentifier>(desk["a"]);
    for (int drawn = 1; drawn < 65536; ++drawn) desk.workshop.connect(a, "then", static_cast<QorIdentifier>(desk["b"]));
    EXPECT_EQ(desk.handler.checkObject(a, true, true), 1);
    desk.rules("Task", "CARDINALITIES max-relations: 65534 min-outgoing: 65537");
    EXPECT_EQ(desk.handler.checkObject(a, false, true), 0);
    EXPECT_EQ(desk.handler.getBadRelations().numberOfElements(), 65536u);
    EXPECT_EQ(desk.handler.checkObject(a, true, false), 0);
}

TEST(ObjectCheck, TestsWhatItIsAskedFor) {
    Desk desk;
    desk.draw("a>b").rules("Task", "CARDINALITIES max-outgoing: 0 min-incoming: 1");
    EXPECT_EQ(desk.handler.checkObject(desk["a"], true, false), 0);
    EXPECT_EQ(desk.handler.getErrorText(), "1972{ \"a\",1982,1}");
    EXPECT_EQ(desk.handler.checkObject(desk["a"], false, true), 0);
    EXPECT_EQ(desk.handler.getErrorText(), "1964{1984<Task|a>,then,0}");
    EXPECT_EQ(desk.handler.checkObject(desk["a"], false, false), 1);
    EXPECT_FALSE(desk.handler.isError());
}

TEST(ClassCheck, CountsObjectsWithThoseOfSubclasses) {
    const struct {
        const char *rules, *objects, *message, *bad;
    } rows[] = {
        {"min-objects: 1", "", "1970{Task,0,1}", ""},
        {"min-objects: 2", "ax", "1969{Task,1,2}", "a"},
        {"min-objects: 2", "as", "", ""},
        {"max-objects: 1", "asx", "1968{Task,2,1}", "a s"},
        {"max-objects: 0", "a", "1967{Task,1,0}", "a"},
        {"max-objects: -1", "ab", "", ""},
        {"min-objects: 3 max-objects: 1", "ab", "1969{Task,2,3}", "a b"},
    };
    for (const auto& row : rows) {
        Desk desk;
        desk.objects(row.objects).rules("Task", std::string("CARDINALITIES ") + row.rules);
        EXPECT_EQ(desk.handler.checkClass(desk.model, desk["Task"], true, true), *row.message == '\0') << row.rules;
        EXPECT_EQ(desk.handler.getErrorText(), row.message) << row.rules;
        EXPECT_EQ(desk.names(desk.handler.getBadObjects()), row.bad) << row.rules;
        EXPECT_TRUE(desk.handler.checkClass(desk.model, desk["Document"], true, true));
        EXPECT_FALSE(desk.waitCursor);
    }
}

TEST(ModelCheck, EndsAtTheFirstBreachOfTheLowestObject) {
    Desk desk;
    desk.draw("a>b b>c").rules("Task", "CARDINALITIES max-outgoing: 0 max-objects: 0");
    EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 0);
    EXPECT_EQ(desk.handler.getErrorText(), "1964{1984<Task|a>,then,0}");
    EXPECT_EQ(desk.names(desk.handler.getBadRelations()), "a>b");
    EXPECT_TRUE(desk.handler.isAlreadyChecked(desk["a"]));
    EXPECT_FALSE(desk.handler.isAlreadyChecked(desk["b"])) << "an end of the breach is not checked by it";
    EXPECT_TRUE(desk.handler.isAlreadyChecked(desk["a>b"]));

    desk.rules("Task", "CARDINALITIES max-outgoing: 9");
    EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 0);
    EXPECT_EQ(desk.handler.getErrorText(), "1967{Task,3,0}");
}

TEST(ModelCheck, SharesWhatItHasCheckedBetweenObjectsAndClasses) {
    // a has the Document that b lacks: only the first object that meets the class is held against its minimum.
    const char* const needsDocument = "CARDINALITIES RELATION 'then' TO_CLASS 'Document' min-outgoing: 1";
    {
        Desk desk;
        desk.draw("a>x").objects("b").rules("Task", needsDocument);
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 1);
        EXPECT_EQ(desk.handler.checkObject(desk["b"], true, true), 0) << "a run of its own tests it";
    }
    {  // The number of the class's objects is then not tested either.
        Desk desk;
        desk.draw("a>x").rules("Document", "CARDINALITIES max-objects: 0");
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 0);
        desk.rules("Task", needsDocument);
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 1);
    }
    {  // One class named towards and from, or under two relation classes: only the first meeting counts.
        Desk desk;
        desk.draw("a>x").rules("Task",
                               "CARDINALITIES RELATION 'then' TO_CLASS 'Document' max-outgoing: 5 FROM_CLASS "
                               "\"Document\" min-incoming: 1 RELATION 'uses' TO_CLASS 'Document' min-outgoing: 1");
        EXPECT_EQ(desk.handler.checkObject(desk["a"], true, true), 1);
    }
    {  // A class without a bound in a direction is not met there.
        Desk desk;
        desk.draw("a>x").rules("Task",
                               "CARDINALITIES RELATION 'then' FROM_CLASS 'Document' min-incoming: 1 TO_CLASS "
                               "\"Document\" max-outgoing: 65535");
        EXPECT_EQ(desk.handler.checkObject(desk["a"], true, true), 0);
    }
    {  // What a kept run has checked stays checked in the next model.
        Desk desk;
        desk.objects("a").rules("Task", "CARDINALITIES min-outgoing: 1");
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 0);
        EXPECT_EQ(desk.handler.checkModel(desk.model, 1), 1);
        EXPECT_EQ(desk.names(desk.handler.getBadObjects()), "a");
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 0);
    }
}

TEST(ModelCheck, MarksTheRelationClassesAndRelationsThatItMeets) {
    Desk desk;
    desk.draw("a>x a>b").rules("Task", "CARDINALITIES RELATION 'then' max-incoming: 5");
    EXPECT_EQ(desk.handler.checkObject(desk["a"], true, true), 1);
    ISortedSet<long> met{desk["then"], desk["a>x"], desk["a>b"], desk["a"]};
    EXPECT_TRUE(desk.handler.areAlreadyChecked(met));
    met.add(desk["b"]);
    EXPECT_FALSE(desk.handler.areAlreadyChecked(met));

    // A breach of all relations of a class comes at the first of them; the later ones have not been met.
    desk.rules("Task", "CARDINALITIES RELATION 'then' max-outgoing: 1");
    EXPECT_EQ(desk.handler.checkObject(desk["a"], true, true), 0);
    EXPECT_TRUE(desk.handler.isAlreadyChecked(desk["a>x"]));
    EXPECT_FALSE(desk.handler.isAlreadyChecked(desk["a>b"]));
}

TEST(RelationCheck, FailsOnlyForABreachOfThisRelation) {
    Desk desk;
    desk.draw("a>b a>c a=x y=b").rules("Task", "CARDINALITIES RELATION 'then' max-outgoing: 1");
    EXPECT_EQ(desk.handler.checkRelation(desk["a>b"], true, true), 0);
    EXPECT_EQ(desk.handler.checkRelation(desk["a=x"], true, true), 1) << "the source fails for other relations";
    EXPECT_TRUE(desk.handler.isError());
    desk.rules("Task", "CARDINALITIES max-incoming: 1");
    EXPECT_EQ(desk.handler.checkRelation(desk["y=b"], true, true), 0) << "the target fails";
    EXPECT_EQ(desk.handler.checkRelation(desk["a>b"], true, false), 1);
    EXPECT_EQ(desk.handler.checkRelation(desk["a"], true, true), 0) << "not a relation";
    EXPECT_FALSE(desk.internalErrors.empty());
    EXPECT_FALSE(desk.waitCursor);
}

TEST(Activation, OffLetsEverythingPass) {
    Desk desk;
    desk.draw("a>b").rules("Task", "CARDINALITIES max-outgoing: 0 max-objects: 0");
    const auto breach = [&] {
        desk.handler.setActivation(1);
        EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 0);
        desk.handler.setActivation(0);
    };
    breach();
    EXPECT_EQ(desk.handler.checkModel(desk.model, 0), 1);
    EXPECT_TRUE(desk.handler.isError()) << "the results of the last check stay";
    EXPECT_EQ(desk.handler.checkRelateClasses(desk["then"], desk["Task"], desk["Task"]), 1);
    EXPECT_TRUE(desk.handler.isError());
    EXPECT_EQ(desk.handler.getRelationSlotCount(desk["then"], desk["Task"], desk["Task"]), 0u);
    EXPECT_TRUE(desk.handler.isNewObjectAllowed(desk.model, desk["Task"], desk["then"], desk["a"], true));
    EXPECT_TRUE(desk.handler.isNewObjectInBetweenAllowed(desk.model, desk["Task"], desk["then"], desk["a"], desk["b"]));

    EXPECT_EQ(desk.handler.checkObject(desk["a"], true, true), 1);
    EXPECT_FALSE(desk.handler.isError());
    breach();
    EXPECT_EQ(desk.handler.checkRelation(desk["a>b"], true, true), 1);
    EXPECT_FALSE(desk.handler.isError());
    breach();
    EXPECT_TRUE(desk.handler.checkClass(desk.model, desk["Task"], true, true));
    EXPECT_TRUE(desk.handler.getBadObjects().isEmpty());
}

TEST(RelationSlots, AreTheTighterLimitOfBothEnds) {
    const struct {
        const char *task, *document;
        unsigned long slots;
    } rows[] = {
        {"", "", 65535},
        {"CARDINALITIES", "CARDINALITIES max-incoming: -1", 65535},
        {"CARDINALITIES max-outgoing: 4", "", 4},
        {"CARDINALITIES max-outgoing: 4", "CARDINALITIES max-incoming: 3", 3},
        {"CARDINALITIES max-outgoing: 4 RELATION 'then' max-outgoing: 7", "", 7},
        {"CARDINALITIES RELATION 'then' default-max-outgoing: 6 TO_CLASS 'Document' max-outgoing: 9", "", 9},
        {"", "CARDINALITIES RELATION 'then' FROM_CLASS 'Task' max-incoming: 0", 0},
    };
    for (const auto& row : rows) {
        Desk desk;
        desk.rules("Task", row.task).rules("Document", row.document);
        EXPECT_EQ(desk.handler.getRelationSlotCount(desk["then"], desk["Task"], desk["Document"]), row.slots)
            << row.task << row.document;
        EXPECT_EQ(desk.handler.checkRelateClasses(desk["then"], desk["Task"], desk["Document"]),
                  row.slots == 0 ? 0 : 1);
    }
}

TEST(NewObject, IsAllowedWhileEveryMaximumHolds) {
    const struct {
        const char *cls, *rules, *drawing;
        bool after;      ///< a new Special behind "a"
        bool before;     ///< a new Special before "a"
        bool inBetween;  ///< a new Special between the first two of the drawing
    } rows[] = {
        {"Task", "", "a>b", true, true, true},
        {"Special", "max-objects: 1", "a>b s>a", false, false, false},
        {"Task", "max-objects: 3", "a>b x>a", true, true, true},
        {"Task", "max-objects: 2", "a>b", false, false, false},
        {"Document", "max-objects: 0", "a>b", true, true, true},
        {"Task", "max-outgoing: 1", "a>b", false, true, true},
        {"Task", "max-outgoing: 0", "a=b", false, true, false},
        {"Task", "max-relations: 2", "a>b b=x x=a", false, false, true},
        {"Task", "max-incoming: 1", "a>b c>a", true, false, true},
        {"Task", "max-relations: 2", "a>a", false, false, true},
        {"Task", "max-relations: 3", "a=a", true, true, false},
        {"Task", "max-relations: 9 RELATION 'then' max-outgoing: 1", "a>b", false, true, true},
        {"Task", "RELATION 'then' TO_CLASS 'Special' max-outgoing: 1", "a>b a>s", false, true, false},
        {"Task", "RELATION 'then' TO_CLASS 'Special' max-outgoing: 1", "a>s", false, true, true},
        {"Task", "RELATION 'then' FROM_CLASS 'Special' max-incoming: 0", "a>b", true, false, false},
        {"Special", "max-incoming: 0", "a>b", false, true, false},
        {"Special", "max-relations: 1", "a>b", true, true, false},
        {"Special", "RELATION 'then' TO_CLASS 'Task' max-outgoing: 0", "a>b", true, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.rules) + " / " + row.drawing);
        Desk desk;
        desk.draw(row.drawing).rules(row.cls, std::string("CARDINALITIES ") + row.rules);
        const auto& handler = desk.handler;
        const auto special = desk["Special"];
        const auto then = desk["then"];
        const auto end = desk[std::string(1, row.drawing[2])];
        EXPECT_EQ(handler.isNewObjectAllowed(desk.model, special, then, desk["a"], true), row.after);
        EXPECT_EQ(handler.isNewObjectAllowed(desk.model, special, then, desk["a"], false), row.before);
        EXPECT_EQ(handler.isNewObjectInBetweenAllowed(desk.model, special, then, desk["a"], end), row.inBetween);
    }
}

TEST(Steps, WriteMessagesAndMarks) {
    Desk desk;
    desk.draw("a>b a=x c>a");
    auto& handler = desk.handler;
    const struct {
        unsigned long message;
        const char *subject, *other, *relationClass;
        unsigned long number;
        unsigned long direction;
        const char* text;
    } messages[] = {
        {1962, "Task", "", "", 3, 1980, "1962{1988<Task>,1980,3}"},
        {1962, "a", "", "", 1, 1982, "1963{ \"a\",1982,1}"},
        {1964, "a", "", "then", 1, 1981, "1965{ \"a\" 1981,then,1}"},
        {1971, "a", "x", "", 1, 1980, "1972{1983<a|x>,,1}"},
        {1973, "Task", "Document", "uses", 2, 1981, "1973{1983<Task|Document>,uses,2}"},
        {1973, "a", "Document", "uses", 1, 1981, "1974{1984<Document|a>,uses,1}"},
        // Beyond 16 and 32 bits nothing wraps round to a number that means something.
        {65536 + 1962, "a", "", "", 1, 1980, "0"},
        {1962, "a", "", "", 4294967297, 65536 + 1980, "1962{ \"a\",0,4294967295}"},
    };
    const auto idOf = [&](std::string_view name) { return name.empty() ? -1 : desk[std::string(name)]; };
    for (const auto& row : messages) {
        handler.makeErrorText(row.message, idOf(row.subject), idOf(row.other), idOf(row.relationClass), row.number,
                              row.direction);
        EXPECT_EQ(handler.getErrorText(), row.text) << row.message;
    }

    handler.setBadInstances({desk["b"], desk["c>a"]}, true, false);
    EXPECT_EQ(desk.names(handler.getBadObjects()), "b c");
    EXPECT_EQ(desk.names(handler.getBadRelations()), "c>a");
    handler.setBadInstance(desk["a=x"], false, true);
    EXPECT_EQ(desk.names(handler.getBadObjects()), "b x c");
    EXPECT_TRUE(desk.internalErrors.empty());
    handler.setBadInstance(99999, true, true);
    EXPECT_EQ(desk.internalErrors.size(), 1u);

    handler.setChecked({desk["Task"], desk["a>b"], desk["c"]});
    EXPECT_EQ(handler.checkOneObject(desk["c"], true, true), 1);
    EXPECT_TRUE(handler.isAlreadyChecked(desk["Task"]));
    EXPECT_FALSE(handler.isAlreadyChecked(desk["Document"]));
    EXPECT_FALSE(handler.isAlreadyChecked(desk["c"] + 4294967296));

    ISortedSet<long> relations{-7};
    EXPECT_EQ(handler.getCurrentOutRelations(desk["a"], relations), 2u);
    EXPECT_EQ(desk.names(relations), "a>b a=x");
    EXPECT_EQ(handler.getCurrentOutRelations(desk["a"], desk["uses"], relations), 1u);
    EXPECT_EQ(desk.names(relations), "a=x");
    EXPECT_EQ(handler.getCurrentInRelations(desk["a"], desk["then"], desk["Document"], relations), 0u);
    EXPECT_EQ(handler.getCurrentInRelations(desk["a"], desk["then"], desk["Task"], relations), 1u);
    EXPECT_EQ(desk.names(relations), "c>a");

    // For all of an object's relations nobody asks what they are.
    const CallRecord& calls = desk.watched().record;
    EXPECT_EQ(handler.getCurrentOutRelations(desk["a"], relations), 2u);
    EXPECT_EQ(handler.getCurrentInRelations(desk["a"], relations), 1u);
    EXPECT_EQ(calls.order(), (std::vector<std::string>{"getFromRelationInstances", "getToRelationInstances"}));
}

}  // namespace
