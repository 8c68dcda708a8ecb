// SPDX-License-Identifier: Apache-2.0
// Checks of whole models. Each benchmark also reports its time as a multiple of a bare pass over the same relations
// through the bulk view ("passes"), which any check has to make.
#include <benchmark/benchmark.h>

#include <ctime>
#include <string>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorHost.h"

namespace {

constexpr int kClasses = 20;

// Every kind of limit is there and holds, and the limits of single relation classes lie below what an object has in
// all, so that they have to be counted one by one.
constexpr const char* kRingRules =
    "CARDINALITIES max-objects: 1000000 max-relations: 8 max-outgoing: 4 min-outgoing: 1\n"
    "RELATION \"then\" max-outgoing: 2 max-incoming: 2 min-incoming: 1\n"
    "TO_CLASS \"Task 1\" max-outgoing: 2 min-outgoing: 0 TO_CLASS \"Task 2\" max-outgoing: 2\n"
    "RELATION \"uses\" max-incoming: 2 min-outgoing: 2";
constexpr const char* kHubRules =
    "CARDINALITIES min-relations: 1\n"
    "RELATION \"then\" min-outgoing: 1 min-incoming: 1\n"
    "TO_CLASS \"Task 2\" min-outgoing: 1 FROM_CLASS \"Task 3\" min-incoming: 1\n"
    "RELATION \"uses\" min-outgoing: 1";

double secondsSince(std::clock_t start) {
    return static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC);
}

/// A model of tasks of several classes.
class Model {
public:
    explicit Model(const char* rules) {
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

    /// Processor seconds of one pass that looks at every relation end of the model once.
    [[nodiscard]] double barePass() const {
        auto& repository = *QorCoreModelingManager::GetGlobal();
        auto best = 1e9;
        for (int round = 0; round < 3; ++round) {
            const auto start = std::clock();
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
            best = std::min(best, secondsSince(start));
        }
        return best;
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
    QorHostInstallation _installation{_platform.host()};
    QorIdentifier _application = QorNoIdentifier;
    std::vector<QorIdentifier> _classes;
    QorIdentifier _then = QorNoIdentifier;
    QorIdentifier _uses = QorNoIdentifier;
    QorIdentifier _model = QorNoIdentifier;
};

template <class Check>
void measure(benchmark::State& state, const Model& model, const Check& check) {
    double spent = 0;
    for (auto _ : state) {
        const auto start = std::clock();
        if (!check()) state.SkipWithError("the model should have no breach");
        spent += secondsSince(start);
    }
    state.counters["passes"] = spent / static_cast<double>(state.iterations()) / model.barePass();
    state.SetItemsProcessed(state.iterations() * state.range(0));
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
    measure(state, model, [&] { return checkToFirstBreach(model); });
}

void CheckModelCompletely(benchmark::State& state) {
    Model model(kRingRules);
    model.addRing(static_cast<int>(state.range(0)));
    measure(state, model, [&] { return checkCompletely(model); });
}

// The hub alone: the objects around it lack relations that their rules demand.
void CheckHub(benchmark::State& state) {
    Model model(kHubRules);
    model.addHub(static_cast<int>(state.range(0)));
    ISortedSet<long> objects;
    (void)QorCoreModelingManager::GetGlobal()->getAllInstancesInModel(model.id(), objects);
    const long hub = objects.elementAtIndex(0);
    measure(state, model, [&] { return QorCardinalityHandler::Instance().checkObject(hub, true, true) == 1; });
}

BENCHMARK(CheckModelToFirstBreach)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckModelCompletely)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckHub)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
