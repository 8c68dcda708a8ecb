// SPDX-License-Identifier: Apache-2.0
// The embedded repository at growing sizes: four relations to each object.
#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorOwnedText.h"

namespace {

constexpr int kRelationsPerObject = 4;

struct Edge {
    std::int32_t from;
    std::int32_t to;
};

class Map {
public:
    explicit Map(std::int64_t size) : platform(QorEmbeddedOptions{"en", false, "bench"}) {
        auto& builder = platform.builder();
        const auto library = builder.addApplicationLibrary("Works", "", "").id;
        const auto part = builder.libraryPart(library, QorLibraryPart::BusinessProcess);
        cls = builder.addClass(part, "Task", QorNoIdentifier, false).id;
        then = builder.addRelationClass(part, "then", cls, cls).id;
        QorAttributeSpec effort;
        effort.name = "Effort";
        effort.type = QorCoreAttributeType::Integer;
        attribute = builder.addAttribute(cls, effort).id;
        const auto type = builder.addModelType(part, "Process", std::span(&cls, 1)).id;
        model = builder.addModel(type, "Map", "").id;

        // Every hundredth relation arrives at one of ten hubs.
        std::mt19937_64 random(1);
        const auto any = [&] { return static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(size)); };
        for (std::int64_t edge = 0; edge < size * kRelationsPerObject; ++edge)
            edges.push_back({static_cast<std::int32_t>(any()),
                             static_cast<std::int32_t>(edge % 100 == 0 ? edge / 100 % 10 : any())});
        for (std::int64_t n = 0; n < size; ++n) names.push_back("Task " + std::to_string(n));
    }

    void addObjects() {
        auto& builder = platform.builder();
        builder.reserve(names.size(), edges.size());
        for (const std::string& name : names) objects.push_back(builder.addObject(model, cls, name).id);
    }
    void addRelations() {
        for (const Edge& edge : edges)
            (void)platform.builder().addRelation(then, objects[static_cast<std::size_t>(edge.from)],
                                                 objects[static_cast<std::size_t>(edge.to)]);
    }
    [[nodiscard]] QorCoreModelingManager& repository() { return *platform.host().repository; }

    QorEmbeddedPlatform platform;
    QorIdentifier cls, then, attribute, model;
    std::vector<Edge> edges;
    std::vector<std::string> names;
    std::vector<QorIdentifier> objects;
};

// The map of the size last asked for, laid out, with a value at each object.
Map& laidOut(std::int64_t objects) {
    static std::unique_ptr<Map> map;
    if (map == nullptr || map->names.size() != static_cast<std::size_t>(objects)) {
        map.reset();
        map = std::make_unique<Map>(objects);
        map->addObjects();
        map->addRelations();
        for (const QorIdentifier object : map->objects)
            (void)map->platform.builder().setValue(object, map->attribute, "17");
        map->platform.builder().layOut();
    }
    return *map;
}

void build(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto map = std::make_unique<Map>(state.range(0));
        state.ResumeTiming();
        map->addObjects();
        map->addRelations();
        state.PauseTiming();
        map.reset();
        state.ResumeTiming();
    }
}

void layOut(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto map = std::make_unique<Map>(state.range(0));
        map->addObjects();
        map->addRelations();
        state.ResumeTiming();
        map->platform.builder().layOut();
        state.PauseTiming();
        state.counters["bytes/object"] =
            static_cast<double>(map->platform.repositoryBytes()) / static_cast<double>(state.range(0));
        map.reset();
        state.ResumeTiming();
    }
}

// What every walk below has to do, on plain arrays.
void walkBareArrays(benchmark::State& state) {
    const Map& map = laidOut(state.range(0));
    std::vector<std::uint32_t> offsets(map.objects.size() + 1);
    for (const Edge& edge : map.edges) ++offsets[static_cast<std::size_t>(edge.from) + 1];
    for (std::size_t at = 1; at < offsets.size(); ++at) offsets[at] += offsets[at - 1];
    std::vector<QorRelationEnd> ends(map.edges.size());
    std::vector<std::uint32_t> next(offsets.begin(), offsets.end() - 1);
    for (const Edge& edge : map.edges)
        ends[next[static_cast<std::size_t>(edge.from)]++] = {0, map.then, edge.to, map.cls};
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (std::size_t object = 0; object + 1 < offsets.size(); ++object)
            for (std::uint32_t at = offsets[object]; at < offsets[object + 1]; ++at) sum += ends[at].other;
        benchmark::DoNotOptimize(sum);
    }
}

void walkBySpans(benchmark::State& state) {
    Map& map = laidOut(state.range(0));
    auto& view = *map.repository().bulkView();
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const QorIdentifier object : map.objects) {
            long cls = -1;
            std::span<const QorRelationEnd> outgoing;
            std::span<const QorRelationEnd> incoming;
            (void)view.viewObject(object, cls, outgoing, incoming);
            for (const QorRelationEnd& end : outgoing) sum += end.other;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void walkByPlainOperations(benchmark::State& state) {
    Map& map = laidOut(state.range(0));
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const QorIdentifier object : map.objects) {
            ISortedSet<long> relations;
            (void)map.repository().getFromRelationInstances(object, relations);
            for (const long relation : relations) {
                long to = -1;
                (void)map.repository().getToInstanceViaRelnInstance(relation, to);
                sum += to;
            }
        }
        benchmark::DoNotOptimize(sum);
    }
}

void findByName(benchmark::State& state) {
    Map& map = laidOut(state.range(0));
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const std::string& name : map.names) {
            long object = -1;
            (void)map.repository().getInstanceIDFromInstanceName(map.model, map.cls, name.c_str(), object);
            sum += object;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void readValue(benchmark::State& state) {
    Map& map = laidOut(state.range(0));
    for (auto _ : state) {
        std::int64_t sum = 0;
        for (const QorIdentifier object : map.objects) {
            long number = -1;
            (void)map.repository().getAttributeValue(object, map.attribute, number, true);
            sum += number;
        }
        benchmark::DoNotOptimize(sum);
    }
}

// Each edit is followed by a reading of what it touched, so that nothing can be put off.
void editAndRead(benchmark::State& state) {
    Map& map = laidOut(state.range(0));
    std::mt19937_64 random(2);
    const auto any = [&] { return map.objects[random() % map.objects.size()]; };
    const long moved = map.platform.reader().relationsOf(map.model).front().id;
    for (auto _ : state) {
        const QorIdentifier object = any();
        (void)map.repository().moveFromEndpoint(moved, object);
        long cls = -1;
        std::span<const QorRelationEnd> outgoing;
        std::span<const QorRelationEnd> incoming;
        (void)map.repository().bulkView()->viewObject(object, cls, outgoing, incoming);
        benchmark::DoNotOptimize(outgoing.data());
    }
}

constexpr std::int64_t kSizes[] = {10000, 100000, 1000000};

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t size : kSizes) benchmark->Arg(size);
    benchmark->Unit(benchmark::kMillisecond);
}

// One size after the other through all of them, so that each map is built once.
void registerWalks() {
    for (const std::int64_t size : kSizes) {
        const auto add = [size](const char* name, void (*run)(benchmark::State&)) {
            return benchmark::RegisterBenchmark(name, run)->Arg(size)->Unit(benchmark::kMillisecond);
        };
        add("walkBareArrays", walkBareArrays);
        add("walkBySpans", walkBySpans);
        add("walkByPlainOperations", walkByPlainOperations);
        add("findByName", findByName);
        add("readValue", readValue);
        add("editAndRead", editAndRead)->ArgName("objects")->Unit(benchmark::kNanosecond);
    }
}

const bool g_registered = (registerWalks(), true);

BENCHMARK(build)->Apply(sizes)->Iterations(3);
BENCHMARK(layOut)->Apply(sizes)->Iterations(3);

}  // namespace
