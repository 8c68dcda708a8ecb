// SPDX-License-Identifier: Apache-2.0
// Models that refer to each other. "x_pass" is the time in times of one pass that fetches the references of every
// model: the fastest of each, in turns in one run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <string>

#include "embedded/QorEmbeddedPlatform.h"
#include "modeltools/QorHierarchyManager.h"
#include "modeltools/QorHierarchyTree.h"
#include "modeltools/QorReferenceIndex.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorHost.h"

namespace {

/// Of the processor: the machine may have more to do.
double secondsOf(const auto& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC);
}

/// Models with one object each, that refers to others.
class Models {
public:
    Models() : _installation(_platform.host()) {
        auto& builder = _platform.builder();
        _library = builder.addApplicationLibrary("Works", {}, {}).id;
        const QorIdentifier part = builder.libraryPart(_library, QorLibraryPart::BusinessProcess);
        _call = builder.addClass(part, "Call", QorNoIdentifier, false).id;
        QorAttributeSpec attribute;
        attribute.name = "Calls";
        attribute.type = QorCoreAttributeType::InterReference;
        attribute.refersToModels = true;
        _calls = builder.addAttribute(_call, attribute).id;
        (void)builder.setClassValue(_call, QorAttributeId::HierarchyAttribute, "Calls");
        _type = builder.addModelType(part, "Process", std::vector<QorIdentifier>{_call}).id;
        auto& repository = *_platform.host().repository;
        (void)repository.LoadApplicationLibrary(_library, false);
        (void)repository.initLibraryHandlers(true);
    }
    ~Models() { (void)_platform.host().repository->discardCompleteLibrary(_library); }

    /// Every model is named after its number.
    void add(const std::vector<long>& calls) {
        auto& builder = _platform.builder();
        const QorIdentifier model = builder.addModel(_type, nameOf(ids.numberOfElements()), {}).id;
        ids.add(model);
        std::string text;
        for (const long called : calls)
            text += "MODEL \"" + nameOf(static_cast<std::size_t>(called)) + "\" type: \"Process\"\n";
        (void)builder.setValue(builder.addObject(model, _call, "call").id, _calls, text);
    }

    ISortedSet<long> ids;

private:
    static std::string nameOf(std::size_t number) { return "Process number " + std::to_string(number); }

    QorEmbeddedPlatform _platform;
    QorHostInstallation _installation;
    QorIdentifier _library = QorNoIdentifier;
    QorIdentifier _call = QorNoIdentifier;
    QorIdentifier _calls = QorNoIdentifier;
    QorIdentifier _type = QorNoIdentifier;
};

double secondsOfPass(const Models& models) {
    return secondsOf([&models] {
        std::size_t count = 0;
        for (const long model : models.ids) {
            QorSourceInterRefContainer references;
            (void)QorCoreModelingManager::GetGlobal()->getInterRefsOfSourceModel(model, references);
            count += references.numberOfElements();
        }
        benchmark::DoNotOptimize(count);
    });
}

/// Three references from each model; then where each of them is used.
void whereUsed(benchmark::State& state) {
    const long count = state.range(0);
    Models models;
    for (long number = 0; number < count; ++number)
        models.add({number * 7 % count, number * 31 % count, (number + 1) % count});
    double passing = 1e9;
    double indexing = 1e9;
    for (auto _ : state) {
        passing = std::min(passing, secondsOfPass(models));
        const double seconds = secondsOf([&] {
            QorReferenceIndex index;
            if (!index.build(models.ids)) state.SkipWithError("no index");
            std::size_t uses = 0;
            for (const long model : models.ids) uses += index.usesOf(model).size();
            if (uses != 3 * static_cast<std::size_t>(count)) state.SkipWithError("uses are missing");
        });
        indexing = std::min(indexing, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["x_pass"] = indexing / passing;
}
BENCHMARK(whereUsed)->UseManualTime()->Arg(25'000)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// Layers of two models that each refer to both of the next: 2^n elements. Bytes a second must not fall with the size.
void xmlOfLayers(benchmark::State& state) {
    Models models;
    models.add({1, 2});
    for (long layer = 1; layer < state.range(0); ++layer)
        for (int side = 0; side < 2; ++side) models.add({2 * layer + 1, 2 * layer + 2});
    for (int side = 0; side < 2; ++side) models.add({});
    QorHierarchyManager manager;
    std::size_t bytes = 0;
    for (auto _ : state) {
        SV::String text;
        (void)manager.GetHierarchyAsXML(models.ids.elementAtIndex(0), text);
        bytes += text.Len();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}
BENCHMARK(xmlOfLayers)->Arg(8)->Arg(12)->Arg(16)->Unit(benchmark::kMillisecond);

void xmlOfChain(benchmark::State& state) {
    Models models;
    for (long number = 1; number < state.range(0); ++number) models.add({number});
    models.add({});
    QorHierarchyManager manager;
    std::size_t bytes = 0;
    for (auto _ : state) {
        SV::String text;
        (void)manager.GetHierarchyAsXML(models.ids.elementAtIndex(0), text);
        bytes += text.Len();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}
BENCHMARK(xmlOfChain)->Arg(100)->Arg(1'000)->Arg(4'000)->Unit(benchmark::kMillisecond);

void limitedTree(benchmark::State& state) {
    Models models;
    models.add({1, 2});
    for (long layer = 1; layer < 30; ++layer)
        for (int side = 0; side < 2; ++side) models.add({2 * layer + 1, 2 * layer + 2});
    QorReferenceIndex index;
    (void)index.build(models.ids);
    for (auto _ : state) {
        QorHierarchyTree tree;
        (void)tree.build(index, models.ids.elementAtIndex(0), static_cast<std::size_t>(state.range(0)));
        benchmark::DoNotOptimize(tree.elements().size());
    }
}
BENCHMARK(limitedTree)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
