// SPDX-License-Identifier: Apache-2.0
// Parsing of keyword texts. The counter "of_scanner" is the rate of the parse as a share of that of a bare scanner,
// which finds the tokens and keeps nothing, measured in the same run; it tells more than MB/s on a machine that is busy
// otherwise.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <string>
#include <string_view>

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
    const auto start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC);
}

enum Kind : unsigned char { kOther, kBlank, kWord, kQuote, kHash };

std::array<Kind, 256> kinds() {
    std::array<Kind, 256> table{};
    for (const char c : std::string_view(" \t\r\n")) table[static_cast<unsigned char>(c)] = kBlank;
    for (const char c : std::string_view("-+_.")) table[static_cast<unsigned char>(c)] = kWord;
    for (int c = '0'; c <= '9'; ++c) table[static_cast<std::size_t>(c)] = kWord;
    for (int c = 'a'; c <= 'z'; ++c)
        table[static_cast<std::size_t>(c)] = table[static_cast<std::size_t>(c - 32)] = kWord;
    table['"'] = kQuote;
    table['#'] = kHash;
    return table;
}

// Where tokens begin and end, and nothing else.
std::size_t scan(std::string_view text) {
    static const std::array<Kind, 256> table = kinds();
    std::size_t tokens = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        switch (table[static_cast<unsigned char>(*at)]) {
            case kBlank:
                ++at;
                continue;
            case kWord:
                while (at != end && table[static_cast<unsigned char>(*at)] == kWord) ++at;
                break;
            case kQuote:
                do ++at;
                while (at != end && *at != '"');
                if (at != end) ++at;
                break;
            case kHash:
                while (at != end && *at != '\n') ++at;
                break;
            default:
                ++at;
        }
        ++tokens;
    }
    return tokens;
}

double scanSeconds(const std::string& text) {
    const std::size_t rounds = 20'000'000 / text.size() + 1;
    auto best = 1e9;
    for (int attempt = 0; attempt < 5; ++attempt)
        best = std::min(best, secondsOf([&] {
                            for (std::size_t round = 0; round < rounds; ++round) {
                                benchmark::DoNotOptimize(text.data());
                                benchmark::DoNotOptimize(scan(text));
                            }
                        }));
    return best / static_cast<double>(rounds);
}

/// Reports the rate of the work on the text beside that of the scanner.
void compare(benchmark::State& state, const std::string& text, const auto& work) {
    for (auto _ : state) work();
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    const std::size_t rounds = 20'000'000 / text.size() + 1;
    auto parsed = 1e9;
    for (int attempt = 0; attempt < 5; ++attempt)
        parsed = std::min(parsed, secondsOf([&] {
                                      for (std::size_t round = 0; round < rounds; ++round) work();
                                  }) / static_cast<double>(rounds));
    state.counters["of_scanner"] = scanSeconds(text) / parsed;
}

// With construction, destruction and the copy of the text that a caller hands in.
void parseWhole(benchmark::State& state, const std::string& text) {
    compare(state, text, [&] {
        QorKexParser parser(SV::String(text), "Cardinalities", "Task, Order handling");
        if (parser.Parse() != 0) state.SkipWithError(parser.GetErrorText().c_str());
        benchmark::DoNotOptimize(parser.GetElemCount());
    });
}

// A parser that is kept, without the cost of fresh memory.
void parseAgain(benchmark::State& state, const std::string& text) {
    QorKexParser parser(SV::String(text), "Cardinalities");
    compare(state, text, [&] { benchmark::DoNotOptimize(parser.Parse()); });
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
void parseRulesAgain(benchmark::State& state) {
    parseAgain(state, repeated(kRules, static_cast<std::size_t>(state.range(0))));
}
void parseOptionsAgain(benchmark::State& state) {
    parseAgain(state, repeated(kOptions, static_cast<std::size_t>(state.range(0))));
}
void parseShapesAgain(benchmark::State& state) {
    parseAgain(state, repeated(kShapes, static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(parseRules)->Arg(200)->Arg(4'000)->Arg(100'000)->Arg(10'000'000);
BENCHMARK(parseOptions)->Arg(400)->Arg(100'000)->Arg(10'000'000);
BENCHMARK(parseShapes)->Arg(200)->Arg(10'000'000);
BENCHMARK(parseRulesAgain)->Arg(10'000'000);
BENCHMARK(parseOptionsAgain)->Arg(10'000'000);
BENCHMARK(parseShapesAgain)->Arg(10'000'000);

void parseOneString(benchmark::State& state) {
    parseWhole(state, "TEXT value: \"" + std::string(static_cast<std::size_t>(state.range(0)), 'x') + "\"");
}
BENCHMARK(parseOneString)->Arg(100'000'000);

void parseElements(benchmark::State& state) {
    parseWhole(state, repeated("A\n", static_cast<std::size_t>(state.range(0)) * 2));
}
BENCHMARK(parseElements)->Arg(1'000)->Arg(1'000'000);

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
