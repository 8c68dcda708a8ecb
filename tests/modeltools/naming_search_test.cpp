// SPDX-License-Identifier: Apache-2.0
// The search for free numbers gives what asking for every number from 1 gives, and asks little.
#include <random>

#include "modeltools/GeneratedName.h"
#include "modeltools/NamingDesk.h"
#include "modeltools/NumberSearch.h"
#include "platform/QorEventListener.h"

namespace {

using qor::modeltools::NumberSearch;

using Classes = std::vector<const char*>;

/// The run as it is described: one number after the other.
class PlainRun {
public:
    PlainRun(NamingDesk& desk, Classes classes) : _desk(desk), _named(std::move(classes)) {}

    void run() {
        for (const char* cls : _named) {
            ISortedSet<long> objects;
            (void)_desk.repository().getAllInstancesOfClassAndSubClassInModel(_desk.shop, _desk.idOf(cls), objects,
                                                                              true);
            for (const long object : objects) visit(cls, object);
        }
    }

private:
    long holderOf(std::string_view cls, const std::string& name) {
        long lowest = -1;
        for (const char* each : {"Order", "Rush"}) {
            long found = -1;
            if (cls == "Rush" && std::string_view(each) == "Order") continue;
            (void)_desk.repository().getInstanceIDFromInstanceName(_desk.shop, _desk.idOf(each), name.c_str(), found);
            if (found != -1 && (lowest == -1 || found < lowest)) lowest = found;
        }
        return lowest;
    }

    void visit(const std::string& cls, long object) {
        const auto id = static_cast<QorIdentifier>(object);
        const std::string name = _desk.nameOf(object);
        QorKexParser memory(_desk.remembered(id), name, cls);
        const std::string last = memory.Parse() == 0 ? memory.GetStrValue("last").str() : "";
        const std::string base = _desk.textAt(object, _desk.attributeOf(id, "Title"));
        if (!qor::modeltools::isNameComposition(name, cls) &&
            (name != last || qor::modeltools::isNameNumberComposition(name, base)))
            return;
        std::string candidate;
        for (int number = 1;; ++number) {
            candidate = base + "-" + std::to_string(number);
            const long holder = holderOf(cls, candidate);
            if (holder == -1 || holder == object) break;
        }
        if (candidate == name) return;
        (void)_desk.repository().RenameInstance(_desk.shop, object, candidate.c_str(), true);
        const std::string text = "NAMEGEN last:\"" + candidate + "\"";
        (void)_desk.repository().setAttributeValue(_desk.shop, object, _desk.attributeOf(id, "__NameGeneration__"),
                                                   text.c_str(), false);
    }

    NamingDesk& _desk;
    Classes _named;
};

/// Renames a further object, or the same one, after some of the renamings.
class Meddler : public QorEventListener {
public:
    explicit Meddler(NamingDesk& desk, std::uint32_t seed) : _desk(desk), _random(seed) {
        setEventHandler(QorEventType::AttributeValueChanged, &Meddler::onChange, 900);
    }
    void onChange(const QorAttributeEvent& event) {
        if (event.model() != _desk.shop || event.attribute() != QorAttributeId::Name || _busy) return;
        _busy = true;
        const auto objects = _desk.reader().objectsOf(_desk.shop);
        if (_random() % 3 == 0) {
            const long other = _random() % 4 == 0 ? event.object() : objects[_random() % objects.size()];
            const std::string name = std::string(1, "ABo"[_random() % 3]) + "-" + std::to_string(1 + _random() % 9);
            (void)_desk.repository().RenameInstance(_desk.shop, other, name.c_str(), true);
        }
        _busy = false;
    }

private:
    NamingDesk& _desk;
    std::mt19937 _random;
    bool _busy = false;
};

void shuffle(NamingDesk& desk, std::mt19937& random) {
    const char* const titles[] = {"A", "B", "A-1", "Order"};
    for (int step = 0; step < 12; ++step) {
        const auto objects = desk.reader().objectsOf(desk.shop);
        const QorIdentifier object = objects.empty() ? QorNoIdentifier : objects[random() % objects.size()];
        const std::string number = std::to_string(1 + random() % 12);
        switch (object == QorNoIdentifier ? 0 : random() % 5) {
            case 0:
            case 1: {
                const char* const cls = random() % 3 == 0 ? "Rush" : "Order";
                long made = -1;
                (void)desk.repository().createInstance(desk.shop, desk.idOf(cls), ("Order-" + number).c_str(), made);
                break;
            }
            case 2:
                desk.value(object, "Title", titles[random() % 4]);
                break;
            case 3:
                (void)desk.repository().RenameInstance(desk.shop, object, ("A-" + number).c_str(), true);
                break;
            default:
                if (random() % 3 == 0) (void)desk.repository().deleteInstance(desk.shop, object);
        }
    }
}

/// Names and their holders, and how often they were asked for.
struct Names {
    std::map<std::string, std::set<QorIdentifier>> holders;
    int asked = 0;

    NumberSearch::LookUp lookUp() {
        return [this](const std::string& name, QorIdentifier& holder) {
            ++asked;
            const auto found = holders.find(name);
            if (found == holders.end() || found->second.empty()) return QorErrorCode::NotFound;
            holder = *found->second.begin();
            return QorErrorCode::Ok;
        };
    }
};

TEST(NumberSearch, AsksForEachNumberOnceUnlessItsHolderChanges) {
    Names names;
    NumberSearch search(names.lookUp());
    for (QorIdentifier object = 1; object <= 1000; ++object) {
        const auto found = search.firstFor("A", object);
        ASSERT_EQ(found.number, object);
        EXPECT_EQ(found.first, object == 1 ? QorNoIdentifier : 1);
        names.holders["A-" + std::to_string(object)] = {object};
        search.given("A", object, found.number);
    }
    EXPECT_EQ(search.firstFor("A", 7).number, 7);
    EXPECT_EQ(names.asked, 1000);
    names.holders["A-7"].clear();
    names.holders["B-1"] = {7};
    search.nameLost(7);
    EXPECT_EQ(search.firstFor("A", 2000).number, 7);
    EXPECT_EQ(search.firstFor("A", 6).number, 6) << "its own number is lower than the one that is free";
    EXPECT_EQ(search.firstFor("A", 8).number, 7);
    EXPECT_EQ(names.asked, 1002);
    search.forgetAll();
    EXPECT_EQ(search.firstFor("A", 3).number, 3);
    EXPECT_EQ(names.asked, 1005);
}

// A name may have several holders, each of another class; the lowest one is found.
TEST(NumberSearch, NoticesAFurtherHolderOfAName) {
    Names names;
    names.holders["A-1"] = {20};
    NumberSearch search(names.lookUp());
    EXPECT_EQ(search.firstFor("A", 30).number, 2);
    names.holders["A-1"].insert(10);
    EXPECT_EQ(search.firstFor("A", 20).number, 1) << "nobody told";
    for (const char* name : {"A", "A-", "A-x", "A-1x", "A-99999999999", "A-2", "B-1", "A--1", "A-0"})
        search.nameSeen(name);
    EXPECT_EQ(search.firstFor("A", 20).number, 1);
    search.nameSeen("A-1");
    EXPECT_EQ(search.firstFor("A", 20).number, 2);
    EXPECT_EQ(search.firstFor("A", 10).number, 1);
}

// The host here takes every name for that of one object, which must not keep the search going round.
TEST(NumberSearch, EndsAtTheHighestNumberAndAtAFailure) {
    std::string free;
    QorErrorCode taken = QorErrorCode::Broken;
    const NumberSearch::LookUp lookUp = [&](const std::string& name, QorIdentifier& holder) {
        holder = 1000;
        return name == free ? QorErrorCode::NotFound : taken;
    };
    NumberSearch search(lookUp, 50);
    EXPECT_EQ(search.firstFor("A", 1).code, QorErrorCode::Broken);
    taken = QorErrorCode::Ok;
    free = "A-50";
    EXPECT_EQ(search.firstFor("A", 1).number, 50);
    free = "A-51";
    EXPECT_EQ(search.firstFor("A", 1).number, 0);
    EXPECT_EQ(search.firstFor("A", 1).code, QorErrorCode::Ok);
}

TEST(NumberSearch, GivesThePlainSearchsNamesAlsoWhenHandlersRename) {
    int planned = 0;
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        const bool rushIsNamed = seed % 2 == 0;
        std::vector<std::vector<std::string>> pictures;
        for (const bool plain : {true, false}) {
            NamingDesk desk(NamingDesk::kByTitle, rushIsNamed ? NamingDesk::kByTitle : "");
            std::mt19937 random(seed);
            auto& picture = pictures.emplace_back();
            for (int round = 0; round < 4; ++round) {
                shuffle(desk, random);
                QorNamePlan plan(desk.shop);
                if (!plain) plan.make();
                std::optional<Meddler> meddler;
                if (seed % 3 == 0) meddler.emplace(desk, seed + 77);
                if (plain)
                    PlainRun(desk, rushIsNamed ? Classes{"Order", "Rush"} : Classes{"Order"}).run();
                else
                    desk.run();
                const auto names = desk.names();
                picture.insert(picture.end(), names.begin(), names.end());
                for (const QorIdentifier object : desk.reader().objectsOf(desk.shop))
                    picture.push_back(desk.remembered(object));
                if (plain || meddler) continue;
                std::map<long, std::string> last;
                for (const QorNameChange& change : plan.changes()) last[change.object] = change.newName.str();
                for (const auto& [object, name] : last) EXPECT_EQ(desk.nameOf(object), name);
                planned += static_cast<int>(last.size());
            }
        }
        ASSERT_EQ(pictures[0], pictures[1]);
    }
    EXPECT_GT(planned, 1000) << "the plan was held against too little";
}

}  // namespace
