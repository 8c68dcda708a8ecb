// SPDX-License-Identifier: Apache-2.0
// Reading a simulation mapping, asking it, and resetting results. "x_parse" is the time in times of the bare parse of
// the same text, "x_update" in times of the plain update of the same values: the fastest of each, in turns in one run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorKexParser.h"
#include "simmap/QorSimMappingHandler.h"
#include "simmap/QorSimResultAttributes.h"

namespace {

double secondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A library with many classes, loaded.
class Library {
public:
    explicit Library(int classes) : _installation(_platform.host()) {
        auto& builder = _platform.builder();
        id = builder.addApplicationLibrary("Works", {}, {}).id;
        part = builder.libraryPart(id, QorLibraryPart::BusinessProcess);
        activity = builder.addClass(part, "Activity", QorNoIdentifier, false).id;
        for (const char* name : {"Execution time", "Waiting time", "Resting time", "Transport time"})
            (void)builder.addAttribute(activity, attribute(name, QorCoreAttributeType::Time));
        for (const char* name : {"Costs", "Length"})
            results.push_back(builder.addAttribute(activity, attribute(name, QorCoreAttributeType::Floating)).id);
        (void)builder.addAttribute(activity, attribute("On event", QorCoreAttributeType::SimulationAction));
        for (int i = 1; i <= classes; ++i) (void)builder.addClass(part, "Class " + std::to_string(i), activity, false);
        modelType = builder.addModelType(part, "Process", std::vector<QorIdentifier>{activity}).id;
    }

    void text(QorIdentifier of, QorIdentifier attribute, const std::string& content) {
        (void)_platform.builder().setLibraryValue(of, attribute, content);
    }
    void load() { (void)_platform.host().repository->LoadApplicationLibrary(id, false); }
    QorRepositoryBuilder& builder() { return _platform.builder(); }

    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    QorIdentifier activity = QorNoIdentifier;
    QorIdentifier modelType = QorNoIdentifier;
    std::vector<long> results;

private:
    static QorAttributeSpec attribute(std::string_view name, QorCoreAttributeType type) {
        QorAttributeSpec spec;
        spec.name = name;
        spec.type = type;
        return spec;
    }

    QorEmbeddedPlatform _platform;
    QorHostInstallation _installation;
};

/// `options` records and ten lines of classes for each.
std::string mappingText(int options) {
    std::string text;
    for (int i = 1; i <= options; ++i)
        text += "SIMOPTION\nname: \"Option " + std::to_string(i) +
                "\"\nhelptext: \"What this option is for.\"\nactivity: \"Activity\"\nexecutiontime: \"Execution "
                "time\"\nwaitingtime: \"Waiting time\"\nrestingtime: \"Resting time\"\nuserattribute-1: \"Costs\"\n"
                "ACTION class: \"Activity\" attribute: \"On event\" event: finish\n\n";
    text += "SIMCLASSES";
    for (int i = 1; i <= 10 * options; ++i)
        text += "\nbp-" + std::to_string(i) + ": \"Class " + std::to_string(i) + "\"";
    return text + "\nwe-none\n";
}

void readMapping(benchmark::State& state) {
    const auto options = static_cast<int>(state.range(0));
    Library library(10 * options);
    const std::string text = mappingText(options);
    library.text(library.id, QorAttributeId::SimulationMapping, text);
    library.load();
    const auto parse = [&] {
        QorKexParser parser(SV::String(text), "Simulation mapping", "Works");
        if (parser.Parse() != 0) state.SkipWithError("the text is wrong");
    };
    double parsing = 1e9;
    double reading = 1e9;
    for (auto _ : state) {
        parsing = std::min(parsing, secondsOf(parse));
        const double seconds = secondsOf([&] {
            QorSimMappingHandler mapping(library.id);
            if (mapping.init(false) != 0) state.SkipWithError(mapping.GetErrorText().c_str());
        });
        reading = std::min(reading, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["x_parse"] = reading / parsing;
}
BENCHMARK(readMapping)->UseManualTime()->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void isSimableClass(benchmark::State& state) {
    const auto classes = static_cast<int>(state.range(0));
    Library library(classes);
    library.load();
    QorSimMappingHandler mapping(library.id);
    mapping.isDefined();
    long cls = library.activity;
    for (auto _ : state) {
        bool simable = false;
        benchmark::DoNotOptimize(mapping.isSimableClass(cls, simable));
        cls = cls + 7919 < library.activity + classes ? cls + 7919 : cls + 7919 - classes;
    }
}
BENCHMARK(isSimableClass)->Arg(100)->Arg(10'000)->Arg(100'000);

// The tables of results are the process's, so that all sizes share one library.
void resetResults(benchmark::State& state) {
    static auto* const library = [] {
        auto* const made = new Library(0);
        made->text(made->part, QorAttributeId::SimulationResult,
                   "ACTIVITY \"Activity\" fixednumber: \"Length\" fixedpersonalcosts: \"Costs\"");
        made->load();
        return made;
    }();
    const auto count = state.range(0);
    const long model = library->builder().addModel(library->modelType, "Model of " + std::to_string(count), {}).id;
    std::vector<long> objects;
    for (long i = 0; i < count; ++i)
        objects.push_back(
            library->builder().addObject(static_cast<QorIdentifier>(model), library->activity, std::to_string(i)).id);
    auto& repository = *QorCoreModelingManager::GetGlobal();
    const auto writeAll = [&](double value) {
        for (const long attribute : library->results)
            for (const long object : objects)
                (void)repository.setAttributeValue(model, object, attribute, value, false);
    };
    writeAll(1);

    double updating = 1e9;
    double resetting = 1e9;
    ISortedSet<long> instances;
    for (auto _ : state) {
        updating = std::min(updating, secondsOf([&] { writeAll(2.5); }));
        const double seconds = secondsOf([&] {
            if (QorSimResultAttributes().resetResultAttributes({model}, instances) == 0) state.SkipWithError("refused");
        });
        resetting = std::min(resetting, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["x_update"] = resetting / updating;
}
BENCHMARK(resetResults)->UseManualTime()->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
