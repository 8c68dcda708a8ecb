// SPDX-License-Identifier: Apache-2.0
// Parsing of keyword texts. The counter "x_scan" is the time of the parse in times of a pass that only adds up the
// text's bytes, measured in the same run; it tells more than MB/s on a machine that is busy otherwise.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <string>

#include "platform/QorKexParser.h"

namespace {

const std::string kRules =
    "CARDINALITIES\n# what a method library says of one class\nmax-objects: 200\nmin-incoming: 1\n"
    "RELATION \"has subsequent step\"\nmin-incoming: 1\nmax-incoming: 12\n"
    "TO_CLASS \"Task\"\nmax-outgoing: 1\nmin-outgoing: 0\nFROM_CLASS \"Start event\"\nmax-incoming: 3\n\n";
const std::string kOptions =
    "SIMOPTION\nname: \"Costs and times\"\nname_de: \"Kosten und Zeiten\"\nactivity: \"Activity\"\n"
    "helptext: \"Follows every case through the process and adds up what \"\"Activity\"\" takes:\n"
    "the time of execution, the time of waiting, resting and transport, and the costs that come from them.\"\n"
    "executiontime: \"Execution time\"\nwaitingtime: \"Waiting time\"\nuserattribute-1: \"Costs\"\n"
    "ACTION event: start class: \"Process start\" attribute: \"Trigger\"\n\n";
const std::string kShapes = "NODE x:2.5cm y:-10.25cm w:3cm h:1.5cm index:12 time: 00:001:12:30:00\n";

std::string repeated(const std::string& text, std::size_t size) {
    std::string out;
    out.reserve(size + text.size());
    while (out.size() < size) out += text;
    return out;
}

double secondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double scanSeconds(const std::string& text) {
    const std::size_t rounds = 4'000'000 / text.size() + 1;
    const auto scan = [&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            unsigned sum = 0;
            for (const char c : text) {
                sum += static_cast<unsigned char>(c);
                benchmark::DoNotOptimize(sum);  // byte by byte, as a parser has to look
            }
        }
    };
    scan();
    return secondsOf(scan) / static_cast<double>(rounds);
}

// With construction, destruction and the copy of the text that a caller hands in.
void parseWhole(benchmark::State& state, const std::string& text) {
    const auto work = [&] {
        QorKexParser parser(SV::String(text), "Cardinalities", "Task, Order handling");
        if (parser.Parse() != 0) state.SkipWithError(parser.GetErrorText().c_str());
        benchmark::DoNotOptimize(parser.GetElemCount());
    };
    double spent = 0;
    for (auto _ : state) spent += secondsOf(work);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.counters["x_scan"] = spent / static_cast<double>(state.iterations()) / scanSeconds(text);
}

void parseRules(benchmark::State& state) {
    parseWhole(state, repeated(kRules, static_cast<std::size_t>(state.range(0))));
}
void parseOptions(benchmark::State& state) {
    parseWhole(state, repeated(kOptions, static_cast<std::size_t>(state.range(0))));
}
void parseShapes(benchmark::State& state) {
    parseWhole(state, repeated(kShapes, static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(parseRules)->Arg(200)->Arg(4'000)->Arg(100'000)->Arg(10'000'000);
BENCHMARK(parseOptions)->Arg(400)->Arg(100'000)->Arg(10'000'000);
BENCHMARK(parseShapes)->Arg(200)->Arg(10'000'000);

void parseOneString(benchmark::State& state) {
    parseWhole(state, "TEXT value: \"" + std::string(static_cast<std::size_t>(state.range(0)), 'x') + "\"");
}
BENCHMARK(parseOneString)->Arg(100'000'000);

void parseElements(benchmark::State& state) {
    parseWhole(state, repeated("A\n", static_cast<std::size_t>(state.range(0)) * 2));
}
BENCHMARK(parseElements)->Arg(1'000)->Arg(1'000'000);

// A parser that is kept, without the cost of fresh memory.
void parseAgain(benchmark::State& state) {
    const std::string text = repeated(kRules, static_cast<std::size_t>(state.range(0)));
    QorKexParser parser(SV::String(text), "Cardinalities");
    for (auto _ : state) benchmark::DoNotOptimize(parser.Parse());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(parseAgain)->Arg(10'000'000);

std::string keys(std::int64_t count) {
    std::string text = "SIMCLASSES";
    for (std::int64_t i = 0; i < count; ++i) text += "\nbp-" + std::to_string(i) + ":\"c\"";
    return text;
}

void parseManyKeys(benchmark::State& state) { parseWhole(state, keys(state.range(0))); }
BENCHMARK(parseManyKeys)->RangeMultiplier(10)->Range(10, 1'000'000);

void findKey(benchmark::State& state) {
    QorKexParser parser(SV::String(keys(state.range(0))), "Classes");
    if (parser.Parse() != 0) state.SkipWithError(parser.GetErrorText().c_str());
    const std::string last = "bp-" + std::to_string(state.range(0) - 1);
    for (auto _ : state) benchmark::DoNotOptimize(parser.GetStrView(last));
}
BENCHMARK(findKey)->RangeMultiplier(10)->Range(10, 1'000'000);

}  // namespace
