// SPDX-License-Identifier: Apache-2.0
// Simulation mappings as a simulation asks for them.
#include "platform/QorEventListener.h"
#include "platform/QorLibraryHandlers.h"
#include "simmap/QorSimMappingHandler.h"
#include "simmap/Shop.h"
#include "simmap/messages.h"

namespace {

namespace message = qor::simmap::message;
using Event = QorSimOptionActionEvent;
using Ids = ISortedSet<long>;

constexpr const char* kFull = R"(
SIMOPTION name_de: "Kosten" name_en: "Costs" name: "Any" activity: "Task" helptext: "By costs"
  executiontime: "Work" waitingtime: "Wait" transporttime: "Move"
  processcall: "Call" subperformerattr: "Substitute"
  userattribute-1: "Priority" userattribute-2: "Info" userattribute-4: "Costs"
ACTION class: "Task" attribute: "On event" event: finish
ACTION class: "Person" attribute: "On event"
SIMCLASSES bp-1: "Task" we-none
)";

TEST(Mapping, SaysWhatEveryOptionUses) {
    MappedShop shop(kFull, "de");

    ISequence<SV::String> names;
    EXPECT_EQ(shop.handler.getMappingOptions(names), 0);
    EXPECT_EQ(names, ISequence<SV::String>{"Kosten"});
    SV::String text;
    EXPECT_EQ(shop.handler.getHelpTextFromOption(0, text), 0);
    EXPECT_EQ(text, "By costs");
    EXPECT_EQ(shop.handler.getActivityNameFromOption(0, text), 0);
    EXPECT_EQ(text, "Task");
    EXPECT_EQ(shop.handler.getWaitingTimeNameFromOption(0, text), 0);
    EXPECT_EQ(text, "Wait");
    ISequence<long> ids;
    EXPECT_EQ(shop.handler.getStandardSimAttributes(0, ids), 0);
    EXPECT_EQ(ids, (ISequence<long>{shop.at("Task", "Work"), shop.at("Task", "Wait"), 0, shop.at("Task", "Move")}));
    EXPECT_EQ(shop.handler.getAdditionalSimAttributes(0, ids), 0);
    EXPECT_EQ(ids, (ISequence<long>{shop.at("Task", "Priority"), shop.at("Task", "Info")})) << "a gap ends the list";
    long cls = 0;
    long attribute = 0;
    EXPECT_EQ(shop.handler.getSubPerformerAssignmentFromOption(0, cls, attribute), 0);
    EXPECT_EQ(std::pair(cls, attribute), std::pair(long{shop.idOf("Call")}, shop.at("Call", "Substitute")));
    Ids classes;
    EXPECT_EQ(shop.handler.getSimableBPClasses(classes), 0);
    EXPECT_EQ(classes, (Ids{shop.idOf("Task"), shop.idOf("Check")})) << "with its subclasses";
    EXPECT_EQ(shop.handler.getSimableWEClasses(classes), 0);
    EXPECT_EQ(classes, Ids{});
    for (const auto& [name, expected] :
         {std::pair("Check", true), std::pair("Step", false), std::pair("Person", false)}) {
        bool simable = !expected;
        EXPECT_EQ(shop.handler.isSimableClass(shop.idOf(name), simable), 0);
        EXPECT_EQ(simable, expected) << name;
    }
    EXPECT_TRUE(shop.handler.isDefined());
    EXPECT_EQ(shop.handler.GetErrorText(), "");
    for (const int bad : {-1, 1, INT32_MAX}) {
        EXPECT_EQ(shop.handler.getHelpTextFromOption(bad, text), QorSimCode::OutOfRange);
        EXPECT_FALSE(shop.handler.hasAnyActions(bad));
    }
}

// The single events find only their own entries, the question for any event finds them all.
TEST(Mapping, FindsActionsByClassAndEvent) {
    MappedShop shop(kFull);
    long found = -1;
    const long task = shop.idOf("Task");
    EXPECT_EQ(shop.handler.getActionAttribute(0, task, Event::Any, found), QorSimCode::NotRead);
    EXPECT_FALSE(shop.handler.hasAnyActions(0)) << "does not read the text";
    shop.handler.isDefined();
    EXPECT_TRUE(shop.handler.hasAnyActions(0));

    const struct {
        const char* cls;
        Event event;
        int code;
    } cases[] = {{"Task", Event::Finish, 0},  {"Task", Event::Any, 0},     {"Task", Event::Start, 2},
                 {"Person", Event::Any, 0},   {"Person", Event::Start, 2}, {"Person", Event::Finish, 2},
                 {"Check", Event::Finish, 2}, {"Robot", Event::Any, 2},    {"Task", static_cast<Event>(9), 2}};
    for (const auto& row : cases) {
        const long expected = row.code == 0 ? shop.at(row.cls, "On event") : 0;
        EXPECT_EQ(shop.handler.getActionAttribute(0, shop.idOf(row.cls), row.event, found), row.code) << row.cls;
        EXPECT_EQ(found, expected) << row.cls;
        EXPECT_EQ(shop.handler.isActionClass(0, shop.idOf(row.cls), row.event), row.code == 0 ? 1 : 0);
    }
    EXPECT_EQ(shop.handler.getActionAttribute(0, task + (1L << 32), Event::Finish, found), 2)
        << "no identifier is narrowed";
    EXPECT_EQ(shop.handler.getActionAttribute(-1, task, Event::Finish, found), QorSimCode::OutOfRange);
}

TEST(Mapping, WithoutATextHasOneOptionAndEveryClass) {
    for (const char* text : {"", " \n", "SIMOPTION undefined name: \"Off\"", "SIMCLASSES bp-all we-all"}) {
        MappedShop shop(text);
        EXPECT_EQ(shop.handler.getSimOptionCount(), 0) << "not read yet";
        EXPECT_EQ(shop.handler.GetErrorText(), said(message::noOptionDefined)) << text;
        EXPECT_EQ(shop.handler.readingCode(), 0) << "no option is no error";
        EXPECT_FALSE(shop.handler.isDefined());
        ASSERT_EQ(shop.handler.getSimOptionCount(), 1);
        EXPECT_EQ(shop.handler.option(0)->name, said(message::defaultOptionName));
        SV::String name("?");
        EXPECT_EQ(shop.handler.getActivityNameFromOption(0, name), QorSimCode::NoSuchOption);
        EXPECT_EQ(name, "");
        Ids classes;
        shop.handler.getSimableBPClasses(classes);
        EXPECT_EQ(classes, (Ids{shop.idOf("Task"), shop.idOf("Check"), shop.idOf("Start"), shop.idOf("Call")}));
        shop.handler.getSimableWEClasses(classes);
        EXPECT_EQ(classes, (Ids{shop.idOf("Person"), shop.idOf("Robot")}));
    }
}

TEST(Mapping, CountsSkippedOptionsInNumbersButNotInPlaces) {
    MappedShop shop(
        "SIMOPTION undefined name: \"Off\" SIMOPTION name: \"On\" activity: \"Task\"\n"
        "SIMOPTION invalid ACTION class: \"Task\" attribute: \"On event\" event: start");
    ASSERT_TRUE(shop.handler.isDefined());
    ASSERT_EQ(shop.handler.getSimOptionCount(), 1);
    EXPECT_EQ(shop.handler.option(0)->number, 2);
    int number = -1;
    EXPECT_EQ(shop.handler.getOptionNrFromName("On", number), 0);
    EXPECT_EQ(number, 1);
    EXPECT_EQ(shop.handler.getOptionNrFromName("on", number), QorSimCode::NoSuchOption);
    EXPECT_EQ(shop.handler.isActionClass(0, shop.idOf("Task"), Event::Start), 1)
        << "an action behind a skipped option goes to the one before";
    SV::String text;
    shop.handler.getHelpTextFromOption(0, text);
    EXPECT_EQ(text, said(message::defaultHelpText));
    shop.handler.getWaitingTimeNameFromOption(0, text);
    EXPECT_EQ(text, said(message::defaultWaitingTimeName));
}

TEST(Mapping, TakesTheClassesOfSeveralRecordsTogether) {
    const struct {
        const char* text;
        std::vector<const char*> expected;
    } cases[] = {
        {"SIMCLASSES bp-1: \"Check\" we-none", {"Check"}},
        {"SIMCLASSES bp-1: \"Check\" bp-all we-none", {"Task", "Check", "Start", "Call"}},
        {"SIMCLASSES bp-1: \"Step\" bp-3: \"Start\" we-none", {"Task", "Check"}},
        {"SIMCLASSES bp-1: \"Check\" we-none SIMCLASSES bp-1: \"Start\" we-none", {"Check", "Start"}},
        {"SIMCLASSES bp-1: \"Check\" we-none SIMCLASSES bp-none we-none", {"Check"}},
        {"SIMCLASSES bp-none bp-all we-none", {}},
    };
    for (const auto& row : cases) {
        MappedShop shop(row.text);
        Ids expected;
        for (const char* name : row.expected) expected.add(shop.idOf(name));
        Ids classes;
        EXPECT_EQ(shop.handler.getSimableBPClasses(classes), 0) << row.text;
        EXPECT_EQ(classes, expected) << row.text;
    }
}

// What a written text says; process calls and actions are left out, user attributes are numbered anew.
TEST(Mapping, WritesWhatItRead) {
    MappedShop shop(kFull);
    SV::String written("before|");
    EXPECT_EQ(shop.handler.getSimMappingKEX(written, 1), 0) << "not read yet";
    shop.handler.isDefined();
    EXPECT_EQ(shop.handler.getSimMappingKEX(written, 1), 1);
    EXPECT_EQ(written,
              "before|SIMOPTION\nname: \"Costs\"\nactivity: \"Task\"\nhelptext: \"By costs\"\nexecutiontime: \"Work\""
              "\nwaitingtime: \"Wait\"\ntransporttime: \"Move\"\nuserattribute-1: \"Priority\"\nuserattribute-2: "
              "\"Info\"\n\nSIMCLASSES\nbp-1: \"Task\"\nbp-2: \"Check\"");

    Shop other;
    other.open();
    QorSimMappingHandler defaults(other.library);
    defaults.isDefined();
    SV::String text;
    EXPECT_EQ(defaults.getSimMappingKEX(text, 0), 1);
    EXPECT_EQ(text.str(), "SIMOPTION\nundefined\nname: \"" + said(message::defaultOptionName).str() +
                              "\"\nactivity: \"\"\nhelptext: \"" + said(message::defaultHelpText).str() + "\"\n\n");
}

TEST(Mapping, CopiesShareTheirOptionsAndOutliveEachOther) {
    Shop shop;
    shop.mapping(kFull);
    shop.open();
    auto first = std::make_unique<QorSimMappingHandler>(shop.library);
    first->isDefined();
    const QorSimMappingHandler copy(*first);
    auto assigned = std::make_unique<QorSimMappingHandler>(0);
    *assigned = *first;
    *assigned = *&*assigned;
    EXPECT_EQ(copy.option(0), first->option(0));
    first.reset();
    SV::String text;
    EXPECT_EQ(assigned->getHelpTextFromOption(0, text), 0);
    EXPECT_EQ(text, "By costs");
    assigned.reset();
    EXPECT_EQ(copy.isActionClass(0, shop.idOf("Task"), Event::Finish), 1);
}

/// The state in which the library handlers are, by the name of the mapping's.
QorLibraryHandlerState stateOfMapping() {
    for (const auto* handler : Qor_LibraryHandlers())
        if (std::string_view(handler->name) == "simulation mapping") return handler->state();
    ADD_FAILURE() << "the handler is not registered";
    return QorLibraryHandlerState::Missing;
}

TEST(MappingWatcher, GivesEachLoadedLibraryItsHandler) {
    Shop shop;
    shop.mapping(kFull);
    EXPECT_EQ(stateOfMapping(), QorLibraryHandlerState::Missing);
    shop.open();
    ASSERT_TRUE(QorSimMappingHandler::ExistsGlobal());
    EXPECT_TRUE(QorSimMappingHandler::GetGlobal()->isDefined());
    EXPECT_EQ(stateOfMapping(), QorLibraryHandlerState::Current);

    shop.mapping("SIMOPTION");
    Qor_RaiseEvent(QorLibraryEvent(QorEventType::LibraryLoadedSimMapping, shop.library));
    EXPECT_FALSE(QorSimMappingHandler::GetGlobal()->isDefined()) << "read anew";
    EXPECT_EQ(stateOfMapping(), QorLibraryHandlerState::InError);

    shop.mapping("");
    Qor_RaiseEvent(QorLibraryEvent(QorEventType::LibraryLoadedSimMapping, shop.library));
    EXPECT_EQ(stateOfMapping(), QorLibraryHandlerState::Current) << "a library without options is in order";
    EXPECT_EQ(shop.discard(), QorErrorCode::Ok);
    EXPECT_FALSE(QorSimMappingHandler::ExistsGlobal());
}

TEST(MappingWatcher, AHandlerThatFailsStaysInPlace) {
    Shop shop;
    shop.open();
    QorSimMappingHandler::FreeGlobal();
    EXPECT_FALSE(QorSimMappingHandler::CreateGlobal(4294967297)) << "no library, however its number is cut";
    EXPECT_TRUE(QorSimMappingHandler::ExistsGlobal());
    auto* const replaced = QorSimMappingHandler::GetGlobal();
    EXPECT_TRUE(QorSimMappingHandler::CreateGlobal(shop.library));
    delete replaced;
    QorSimMappingHandler::FreeGlobal();
    QorSimMappingHandler::FreeGlobal();
    EXPECT_EQ(QorSimMappingHandler::GetGlobal(), nullptr);
}

}  // namespace
