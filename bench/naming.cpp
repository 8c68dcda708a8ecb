// SPDX-License-Identifier: Apache-2.0
// Naming objects of one base. "x_hash" is the time in times of a bare pass that writes the same names and puts them
// into a hash table: the fastest of each, in turns in one run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <unordered_map>

#include "Works.h"
#include "modeltools/QorNameGenerator.h"
#include "modeltools/QorNamePlan.h"

namespace {

/// A model whose objects all have one title and a default name.
class Model : public Works {
public:
    explicit Model(int objects) {
        const QorIdentifier order = builder().addClass(part, "Order", QorNoIdentifier, false).id;
        const QorIdentifier title = textAttribute(order, "Title");
        (void)builder().setClassValue(order, textAttribute(order, "__NameGeneration__"), "NAMEGEN srcattr: \"Title\"");
        const QorIdentifier type = builder().addModelType(part, "Shop", std::vector<QorIdentifier>{order}).id;
        id = builder().addModel(type, "Monday", {}).id;
        for (int number = 1; number <= objects; ++number) {
            const QorIdentifier object = builder().addObject(id, order, "Order-" + std::to_string(number)).id;
            (void)builder().setValue(object, title, "A title as people write it");
        }
        load();
    }

    QorIdentifier id = QorNoIdentifier;
};

double secondsOfHashPass(int objects) {
    return secondsOf([objects] {
        std::unordered_map<std::string, int> names;
        for (int number = 1; number <= objects; ++number)
            names.emplace("A title as people write it-" + std::to_string(number), number);
        benchmark::DoNotOptimize(names.size());
    });
}

void name(benchmark::State& state) {
    const auto objects = static_cast<int>(state.range(0));
    double hashing = 1e9;
    double naming = 1e9;
    for (auto _ : state) {
        Model model(objects);
        hashing = std::min(hashing, secondsOfHashPass(objects));
        QorNameGenerator generator(model.id);
        const double seconds = secondsOf([&] { generator.Execute(); });
        if (generator.GetChangesCount() != objects) state.SkipWithError("not every object was named");
        naming = std::min(naming, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["x_hash"] = naming / hashing;
}
BENCHMARK(name)->UseManualTime()->Arg(25'000)->Arg(50'000)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

/// A run that finds everything named.
void nameAgain(benchmark::State& state) {
    Model model(static_cast<int>(state.range(0)));
    QorNameGenerator generator(model.id);
    generator.Execute();
    for (auto _ : state) generator.Execute();
    if (generator.GetChangesCount() != 0) state.SkipWithError("something was named twice");
}
BENCHMARK(nameAgain)->Arg(25'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void plan(benchmark::State& state) {
    Model model(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QorNamePlan plan(model.id);
        benchmark::DoNotOptimize(plan.make());
        if (plan.changes().size() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not all planned");
    }
}
BENCHMARK(plan)->Arg(25'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
