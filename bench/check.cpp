// SPDX-License-Identifier: Apache-2.0
// Checks of whole models. Each benchmark also reports its time as a multiple of three bare passes over the same
// relations, measured in the same run: "keyed" counts the relations in a hash table by object, direction and relation
// class, "arrays" counts them object by object and so needs no table, "passes" only looks at each relation once through
// the bulk view.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <bit>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/QorCardinalityRecheck.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorHost.h"

namespace {

constexpr int kClasses = 20;
constexpr int kRelationClasses = 10;

// Every kind of limit is there and holds, and the limits of single relation classes lie below what an object has in
// all, so that they have to be counted one by one.
constexpr const char* kRingRules =
    "CARDINALITIES max-objects: 1000000 max-relations: 8 max-outgoing: 4 min-outgoing: 1\n"
    "RELATION \"then\" max-outgoing: 2 max-incoming: 2 min-incoming: 1\n"
    "TO_CLASS \"Task 1\" max-outgoing: 2 min-outgoing: 0 TO_CLASS \"Task 2\" max-outgoing: 2\n"
    "RELATION \"uses\" max-incoming: 2 min-outgoing: 2";
// Limits towards single classes that each need a count of their own.
constexpr const char* kTargetRules =
    "CARDINALITIES max-objects: 1000000 max-relations: 8\n"
    "RELATION \"then\" max-outgoing: 3 default-max-outgoing: 1 min-incoming: 1\n"
    "TO_CLASS \"Task 1\" max-outgoing: 1 TO_CLASS \"Task 2\" max-outgoing: 1\n"
    "RELATION \"uses\" default-max-incoming: 1 min-outgoing: 2 FROM_CLASS \"Task 3\" max-incoming: 1";
// As most libraries have them: limits that keep out mistakes, far from what ordinary objects have.
const std::string kLooseRules = [] {
    std::string rules = "CARDINALITIES max-objects: 1000000 max-relations: 200 min-outgoing: 1";
    for (int number = 0; number < kRelationClasses; ++number)
        rules += " RELATION \"link " + std::to_string(number) + "\" max-outgoing: 9 max-incoming: 60 TO_CLASS \"Task " +
                 std::to_string(number) + "\" max-outgoing: 8";
    return rules;
}();
constexpr const char* kHubRules =
    "CARDINALITIES min-relations: 1\n"
    "RELATION \"then\" min-outgoing: 1 min-incoming: 1\n"
    "TO_CLASS \"Task 2\" min-outgoing: 1 FROM_CLASS \"Task 3\" min-incoming: 1\n"
    "RELATION \"uses\" min-outgoing: 1";

double secondsSince(std::clock_t start) {
    return static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC);
}

/// Processor seconds of the fastest of some runs.
template <class Work>
double fastest(const Work& work) {
    auto best = 1e9;
    for (int round = 0; round < 5; ++round) {
        const auto start = std::clock();
        work();
        best = std::min(best, secondsSince(start));
    }
    return best;
}

/// Passes on what a check asks of a repository, and offers no bulk view.
class PlainRepository final : public QorCoreModelingManager {
public:
    QorCoreModelingManager* target = nullptr;

    QorModelTypeAttrHandler* modelTypeHandler() override { return target->modelTypeHandler(); }
    QorErrorCode classOf(long identifier, long& cls) override { return target->classOf(identifier, cls); }
    QorErrorCode relationOf(long relation, long& cls) override { return target->relationOf(relation, cls); }
    QorErrorCode getToInstanceViaRelnInstance(long relation, long& to) override {
        return target->getToInstanceViaRelnInstance(relation, to);
    }
    QorErrorCode getEndpointsOfRelationInstance(long relation, long& from, long& to) override {
        return target->getEndpointsOfRelationInstance(relation, from, to);
    }
    QorErrorCode getFromRelationInstances(long object, ISortedSet<long>& relations) override {
        return target->getFromRelationInstances(object, relations);
    }
    QorErrorCode getToRelationInstances(long object, ISortedSet<long>& relations) override {
        return target->getToRelationInstances(object, relations);
    }
    QorErrorCode getAllInstancesInModel(long model, ISortedSet<long>& objects) override {
        return target->getAllInstancesInModel(model, objects);
    }
    QorErrorCode getAllInstancesOfClassAndSubClassInModel(long model, long cls, ISortedSet<long>& objects,
                                                          bool withSubclasses) override {
        return target->getAllInstancesOfClassAndSubClassInModel(model, cls, objects, withSubclasses);
    }
};

/// The relations of a model as nothing but arrays.
class PlainArrays {
public:
    explicit PlainArrays(long model) {
        auto& repository = *QorCoreModelingManager::GetGlobal();
        ISortedSet<long> objects;
        (void)repository.getAllInstancesInModel(model, objects);
        for (const long object : objects) {
            long cls = -1;
            std::span<const QorRelationEnd> ends[2];
            (void)repository.bulkView()->viewObject(object, cls, ends[0], ends[1]);
            for (std::size_t side = 0; side < 2; ++side) {
                _sides[side].offsets.push_back(_sides[side].ends.size());
                _sides[side].ends.insert(_sides[side].ends.end(), ends[side].begin(), ends[side].end());
            }
        }
        for (auto& side : _sides) side.offsets.push_back(side.ends.size());
        _counts.resize(_sides[0].ends.size() * 2);
        _keyed.resize(std::bit_ceil(_sides[0].ends.size() * 3));
    }

    /// Counts the relations by object, direction and relation class; which relation classes there are is not known
    /// beforehand, as little as to a check.
    void count() {
        auto* next = _counts.data();
        for (std::size_t side = 0; side < 2; ++side)
            for (std::size_t object = 0; object + 1 < _sides[side].offsets.size(); ++object) {
                auto* const first = next;
                for (auto at = _sides[side].offsets[object]; at < _sides[side].offsets[object + 1]; ++at) {
                    const auto relationClass = _sides[side].ends[at].relationClass;
                    auto* count = first;
                    while (count != next && count->relationClass != relationClass) ++count;
                    if (count == next) *next++ = {static_cast<std::uint32_t>(object), relationClass, 0};
                    ++count->count;
                }
            }
        benchmark::DoNotOptimize(_counts.data());
        benchmark::ClobberMemory();
    }

    /// The same counts by a key of object, direction and relation class, as a pass that knows nothing of how the ends
    /// lie would keep them.
    void countKeyed() {
        std::fill(_keyed.begin(), _keyed.end(), Keyed());
        const auto mask = _keyed.size() - 1;
        for (std::size_t side = 0; side < 2; ++side)
            for (std::size_t object = 0; object + 1 < _sides[side].offsets.size(); ++object)
                for (auto at = _sides[side].offsets[object]; at < _sides[side].offsets[object + 1]; ++at) {
                    const auto relationClass = static_cast<std::uint32_t>(_sides[side].ends[at].relationClass);
                    const auto key = (object * 2 + side + 1) << 32 | relationClass;
                    auto place = key * 0x9E3779B97F4A7C15u >> 32 & mask;
                    while (_keyed[place].key != key && _keyed[place].key != 0) place = (place + 1) & mask;
                    _keyed[place].key = key;
                    ++_keyed[place].count;
                }
        benchmark::DoNotOptimize(_keyed.data());
        benchmark::ClobberMemory();
    }

private:
    struct Keyed {
        std::uint64_t key = 0;
        std::uint64_t count = 0;
    };
    struct Side {
        std::vector<std::size_t> offsets;
        std::vector<QorRelationEnd> ends;
    };
    struct Count {
        std::uint32_t object = 0;
        QorIdentifier relationClass = QorNoIdentifier;
        std::uint32_t count = 0;
    };

    Side _sides[2];
    std::vector<Count> _counts;
    std::vector<Keyed> _keyed;
};

/// A model of tasks of several classes.
class Model {
public:
    explicit Model(const std::string& rules) {
        auto& builder = _platform.builder();
        _application = builder.addApplicationLibrary("Works", "", "").id;
        const auto part = builder.libraryPart(_application, QorLibraryPart::BusinessProcess);
        const auto task = builder.addClass(part, "Task", QorNoIdentifier, true).id;
        for (int number = 0; number < kClasses; ++number) {
            _classes.push_back(builder.addClass(part, "Task " + std::to_string(number), task, false).id);
            (void)builder.setClassValue(_classes.back(), QorAttributeId::Cardinality, rules);
        }
        _then = builder.addRelationClass(part, "then", task, task).id;
        _uses = builder.addRelationClass(part, "uses", task, task).id;
        for (int number = 0; number < kRelationClasses; ++number)
            _links.push_back(builder.addRelationClass(part, "link " + std::to_string(number), task, task).id);
        _model = builder.addModel(builder.addModelType(part, "Process", _classes).id, "Model", "").id;
    }

    /// Each object has two outgoing relations of each class to its neighbours; it has as many incoming.
    void addRing(int objects) {
        auto& builder = _platform.builder();
        std::vector<QorIdentifier> ring;
        for (int number = 0; number < objects; ++number)
            ring.push_back(builder.addObject(_model, classOf(number), "T" + std::to_string(number)).id);
        for (std::size_t from = 0; from < ring.size(); ++from)
            for (std::size_t step = 1; step <= 2; ++step) {
                (void)builder.addRelation(_then, ring[from], ring[(from + step) % ring.size()]);
                (void)builder.addRelation(_uses, ring[from], ring[(from + step * 3) % ring.size()]);
            }
        load();
    }

    /// Each object has four outgoing relations of any class to any others.
    void addTangle(int objects) {
        auto& builder = _platform.builder();
        std::vector<QorIdentifier> tangle;
        for (int number = 0; number < objects; ++number)
            tangle.push_back(builder.addObject(_model, classOf(number), "T" + std::to_string(number)).id);
        std::minstd_rand random(4711);
        for (const auto source : tangle)
            for (int relation = 0; relation < 4; ++relation)
                (void)builder.addRelation(_links[random() % _links.size()], source, tangle[random() % tangle.size()]);
        load();
    }

    /// One object joined in both directions with all others.
    void addHub(int relations) {
        auto& builder = _platform.builder();
        const auto hub = builder.addObject(_model, _classes[0], "Hub").id;
        for (int number = 0; number < relations; ++number) {
            const auto other = builder.addObject(_model, classOf(number), "T" + std::to_string(number)).id;
            (void)builder.addRelation(number % 2 == 0 ? _then : _uses, hub, other);
            (void)builder.addRelation(_then, other, hub);
        }
        load();
    }

    [[nodiscard]] long id() const { return _model; }

    /// Looks at every relation end of the model once through the bulk view.
    void look() const {
        auto& repository = *QorCoreModelingManager::GetGlobal();
        ISortedSet<long> objects;
        (void)repository.getAllInstancesInModel(_model, objects);
        long sum = 0;
        for (const long object : objects) {
            long cls = -1;
            std::span<const QorRelationEnd> outgoing;
            std::span<const QorRelationEnd> incoming;
            (void)repository.bulkView()->viewObject(object, cls, outgoing, incoming);
            for (const auto& end : outgoing) sum += end.relationClass + end.otherClass;
            for (const auto& end : incoming) sum += end.relationClass + end.otherClass;
        }
        benchmark::DoNotOptimize(sum);
    }

    /// The host's repository without its bulk view, while the result lives.
    [[nodiscard]] std::unique_ptr<QorHostInstallation> withoutView() {
        _plain.target = QorCoreModelingManager::GetGlobal();
        auto host = _platform.host();
        host.repository = &_plain;
        return std::make_unique<QorHostInstallation>(host);
    }

private:
    [[nodiscard]] QorIdentifier classOf(int number) const {
        return _classes[static_cast<std::size_t>(number % kClasses)];
    }
    void load() {
        auto& repository = *QorCoreModelingManager::GetGlobal();
        (void)repository.LoadApplicationLibrary(_application, false);
        (void)repository.initLibraryHandlers(true);
        _platform.builder().layOut();
    }

    QorEmbeddedPlatform _platform;
    PlainRepository _plain;
    QorHostInstallation _installation{_platform.host()};
    QorIdentifier _application = QorNoIdentifier;
    std::vector<QorIdentifier> _classes;
    QorIdentifier _then = QorNoIdentifier;
    QorIdentifier _uses = QorNoIdentifier;
    std::vector<QorIdentifier> _links;
    QorIdentifier _model = QorNoIdentifier;
};

template <class Check>
void measure(benchmark::State& state, const Check& check) {
    for (auto _ : state)
        if (!check()) state.SkipWithError("the model should have no breach");
}

/// Also as a multiple of the bare passes.
template <class Check>
void measureAgainstPasses(benchmark::State& state, const Model& model, const Check& check) {
    PlainArrays arrays(model.id());
    const auto passed = fastest([&] { arrays.count(); });
    const auto keyed = fastest([&] { arrays.countKeyed(); });
    const auto looked = fastest([&] { model.look(); });
    measure(state, check);
    state.SetItemsProcessed(state.iterations() * state.range(0));
    const auto checked = fastest([&] { (void)check(); });
    state.counters["arrays"] = checked / std::min(passed, fastest([&] { arrays.count(); }));
    state.counters["keyed"] = checked / keyed;
    state.counters["keyed_pass_ms"] = keyed * 1e3;
    state.counters["passes"] = checked / std::min(looked, fastest([&] { model.look(); }));
}

bool checkToFirstBreach(const Model& model) { return QorCardinalityHandler::Instance().checkModel(model.id(), 0) == 1; }

bool checkCompletely(const Model& model) {
    bool clean = true;
    QorCardinalityCompleteCheck check(QorCardinalityHandler::Instance());
    return check.checkModel(model.id(), [&clean](const auto&) { return clean = false; }) && clean;
}

void CheckModelToFirstBreach(benchmark::State& state) {
    Model model(kRingRules);
    model.addRing(static_cast<int>(state.range(0)));
    measureAgainstPasses(state, model, [&] { return checkToFirstBreach(model); });
}

void CheckModelCompletely(benchmark::State& state) {
    Model model(kRingRules);
    model.addRing(static_cast<int>(state.range(0)));
    measureAgainstPasses(state, model, [&] { return checkCompletely(model); });
}

void CheckTangle(benchmark::State& state) {
    Model model(kLooseRules);
    model.addTangle(static_cast<int>(state.range(0)));
    measureAgainstPasses(state, model, [&] { return checkCompletely(model); });
}

void CheckTargetLimits(benchmark::State& state) {
    Model model(kTargetRules);
    model.addRing(static_cast<int>(state.range(0)));
    measureAgainstPasses(state, model, [&] { return checkCompletely(model); });
}

void CheckWithoutView(benchmark::State& state) {
    Model model(kRingRules);
    model.addRing(static_cast<int>(state.range(0)));
    measureAgainstPasses(state, model, [&] {
        const auto plain = model.withoutView();
        return checkCompletely(model);
    });
}

void CheckTangleWithoutView(benchmark::State& state) {
    Model model(kLooseRules);
    model.addTangle(static_cast<int>(state.range(0)));
    measureAgainstPasses(state, model, [&] {
        const auto plain = model.withoutView();
        return checkCompletely(model);
    });
}

// One object named as changed in a model that has been checked.
void RecheckAfterAnEdit(benchmark::State& state) {
    Model model(kRingRules);
    model.addRing(static_cast<int>(state.range(0)));
    QorCardinalityRecheck recheck(QorCardinalityHandler::Instance());
    if (!recheck.checkModel(model.id())) state.SkipWithError("the model cannot be checked");
    ISortedSet<long> objects;
    (void)QorCoreModelingManager::GetGlobal()->getAllInstancesInModel(model.id(), objects);
    const ISortedSet<long> changed{objects.elementAtIndex(objects.numberOfElements() / 2)};
    measure(state, [&] { return recheck.recheck(changed, {}) && recheck.numberOfBreaches() == 0; });
}

/// Many small models and a library with many limits of single relation classes.
class Collection {
public:
    static constexpr int kModels = 977;
    static constexpr int kObjects = 104'196;
    static constexpr int kRelations = 136'539;
    static constexpr int kLimits = 1'386;

    Collection() {
        auto& builder = _platform.builder();
        const auto application = builder.addApplicationLibrary("Works", "", "").id;
        const auto part = builder.libraryPart(application, QorLibraryPart::BusinessProcess);
        const auto thing = builder.addClass(part, "Thing", QorNoIdentifier, true).id;
        std::vector<QorIdentifier> classes;
        std::vector<QorIdentifier> relationClasses;
        for (int number = 0; number < kSorts; ++number) {
            classes.push_back(builder.addClass(part, "Thing " + std::to_string(number), thing, false).id);
            relationClasses.push_back(builder.addRelationClass(part, "R" + std::to_string(number), thing, thing).id);
        }
        for (int number = 0; number < kSorts; ++number) {
            std::string rules = "CARDINALITIES max-relations: 999";
            for (int limit = number; limit < kLimits; limit += kSorts)
                rules += " RELATION \"R" + std::to_string(limit / kSorts) + "\" max-outgoing: 99";
            (void)builder.setClassValue(classes[static_cast<std::size_t>(number)], QorAttributeId::Cardinality, rules);
        }
        const auto type = builder.addModelType(part, "Map", classes).id;
        for (int number = 0; number < kModels; ++number) addModel(type, number, classes, relationClasses);
        auto& repository = *QorCoreModelingManager::GetGlobal();
        (void)repository.LoadApplicationLibrary(application, false);
        (void)repository.initLibraryHandlers(true);
        builder.layOut();
    }

    std::vector<long> models;

private:
    static constexpr int kSorts = 33;

    static int share(int of, int model) { return of / kModels + (model < of % kModels ? 1 : 0); }

    void addModel(QorIdentifier type, int number, const std::vector<QorIdentifier>& classes,
                  const std::vector<QorIdentifier>& relationClasses) {
        auto& builder = _platform.builder();
        const auto model = builder.addModel(type, "Map " + std::to_string(number), "").id;
        std::vector<QorIdentifier> objects;
        for (int object = share(kObjects, number); object > 0; --object) {
            const auto cls = classes[static_cast<std::size_t>(object % kSorts)];
            objects.push_back(builder.addObject(model, cls, "T" + std::to_string(object)).id);
        }
        for (int relation = share(kRelations, number); relation > 0; --relation) {
            const auto step = static_cast<std::size_t>(relation);
            (void)builder.addRelation(relationClasses[step % kSorts], objects[step % objects.size()],
                                      objects[step * 7 % objects.size()]);
        }
        models.push_back(model);
    }

    QorEmbeddedPlatform _platform;
    QorHostInstallation _installation{_platform.host()};
};

void CheckCollection(benchmark::State& state) {
    const Collection collection;
    measure(state, [&] {
        QorCardinalityCompleteCheck check(QorCardinalityHandler::Instance());
        return std::all_of(collection.models.begin(), collection.models.end(), [&check](long model) {
            bool clean = true;
            return check.checkModel(model, [&clean](const auto&) { return clean = false; }) && clean;
        });
    });
    state.SetItemsProcessed(state.iterations() * Collection::kObjects);
}

// The hub alone: the objects around it lack relations that their rules demand.
void CheckHub(benchmark::State& state) {
    Model model(kHubRules);
    model.addHub(static_cast<int>(state.range(0)));
    ISortedSet<long> objects;
    (void)QorCoreModelingManager::GetGlobal()->getAllInstancesInModel(model.id(), objects);
    const long hub = objects.elementAtIndex(0);
    measure(state, [&] { return QorCardinalityHandler::Instance().checkObject(hub, true, true) == 1; });
    state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}

BENCHMARK(CheckModelToFirstBreach)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckModelCompletely)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckTangle)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckTargetLimits)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckTangleWithoutView)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckWithoutView)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(RecheckAfterAnEdit)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(CheckCollection)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckHub)->Arg(10'000)->Arg(90'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
