// SPDX-License-Identifier: Apache-2.0
// Every allocation of every operation fails once: the operation says so and throws nothing, and the next one works.
#include <sys/mman.h>

#include "simmap/QorSimReadiness.h"
#include "simmap/QorSimResultAttributes.h"
#include "simmap/QorSimResultReset.h"
#include "simmap/QorSimTextHandler.h"
#include "simmap/Shop.h"
#include "support/FailingAllocations.h"

namespace {

constexpr const char* kMapping = R"(
SIMOPTION name: "An option with a long name" activity: "Task" helptext: "A help text that stands on the heap"
  executiontime: "Work" processcall: "Call" subperformerattr: "Substitute" userattribute-1: "Priority"
SIMOPTION name: "Another option with a long name" activity: "Check"
ACTION class: "Task" attribute: "On event" event: finish
SIMCLASSES bp-1: "Step" we-all
)";
constexpr const char* kTexts =
    R"(SIMTEXT bp: "A text that stands on the heap" cycletime: "" activity: "" number: "" actor: "" perscost: ""
resource: "" rescost: "A text that stands there too")";

struct Scene : RunShop {
    Scene() {
        mapping(kMapping);
        libraryText(library, QorAttributeId::SimulationText, kTexts);
        EXPECT_EQ(read.init(false), 0);
        EXPECT_EQ(texts.init(), 1);
    }
    void begin() {
        fill();
        names = {SV::String("untouched")};
        classes = {4711};
        text = SV::String("untouched");
    }
    [[nodiscard]] std::string outputs() const {
        return names.elementAtIndex(0).str() + ' ' + std::to_string(*classes.begin()) + ' ' + text.str();
    }
    QorSimMappingHandler read{library};
    QorSimTextHandler texts{library};
    ISortedSet<long> models{process, staff};
    ISequence<SV::String> names;
    ISortedSet<long> classes;
    SV::String text;
};

using Picture = std::optional<std::string>;

/// What an operation gives; nothing when it says that it failed. Memory is back for looking at it.
template <class Show>
Picture shown(bool ok, Show show) {
    failing_allocations::untilFailure = 0;
    return ok ? Picture(show()) : std::nullopt;
}
Picture shown(bool ok, const SV::String& text) {
    return shown(ok, [&] { return text.str(); });
}

Picture shown(bool ok, QorSimMappingHandler& mapping) {
    return shown(ok, [&] {
        SV::String text;
        EXPECT_EQ(mapping.getSimMappingKEX(text, 1), 1);
        std::string seen = text.str() + mapping.GetErrorText().str();
        for (int index = 0; index < mapping.getSimOptionCount(); ++index) {
            const auto& option = *mapping.option(index);
            seen += ' ' + std::to_string(option.subPerformerAttribute) + option.waitingTimeName.str();
            for (const auto& action : option.actions) seen += ' ' + std::to_string(action.attribute);
        }
        return seen;
    });
}

Picture readMapping(Scene& scene, bool continueOnError) {
    QorSimMappingHandler mapping(scene.library);
    const bool ok = mapping.init(continueOnError) == 0;
    return shown(ok, mapping);
}

Picture checkReadiness(Scene& scene) {
    QorSimReadiness readiness;
    const QorSimResultDefinitions results;
    const bool ok = results.isUsable() &&
                    readiness.check(scene.library, scene.read, results, QorSimReadiness::kAllOptions, scene.models);
    return shown(ok, [&] {
        std::string seen;  // the names in a finding may lack
        for (const auto& finding : readiness.findings())
            seen += std::to_string(static_cast<int>(finding.issue)) + '@' + std::to_string(finding.object) + ' ';
        return seen;
    });
}

Picture reset(Scene& scene) {
    QorSimResultReset reset;
    const QorSimResultDefinitions results;
    const bool ok = reset.plan(results, scene.models) && reset.apply();
    return shown(ok, [&] { return scene.state(); });
}

// clang-format off
const struct Operation {
    const char* name;
    std::function<Picture(Scene&)> run;
} kOperations[] = {
    {"read mapping", [](Scene& s) { return readMapping(s, false); }},
    {"read on", [](Scene& s) { return readMapping(s, true); }},
    {"option names", [](Scene& s) { const bool ok = s.read.getMappingOptions(s.names) == 0; return shown(ok, s.names.elementAtIndex(0)); }},
    {"classes", [](Scene& s) { const bool ok = s.read.getSimableBPClasses(s.classes) == 0; return shown(ok, [&] { return std::to_string(s.classes.numberOfElements()); }); }},
    {"help text", [](Scene& s) { SV::String text; const bool ok = s.read.getHelpTextFromOption(0, text) == 0; return shown(ok, text); }},
    {"write mapping", [](Scene& s) { const bool ok = s.read.getSimMappingKEX(s.text, 1) == 1; return shown(ok, s.text); }},
    {"copy mapping", [](Scene& s) { QorSimMappingHandler copy(s.read); const bool ok = copy.init(false) == 0; return shown(ok, copy); }},
    {"read texts", [](Scene& s) { QorSimTextHandler texts(s.library); const bool ok = texts.init() == 1; return shown(ok, [&] { return texts.getSimTextKEX().str(); }); }},
    {"a text", [](Scene& s) { const auto text = s.texts.getBPText(); return shown(!text.IsEmpty(), text); }},
    {"write texts", [](Scene& s) { const auto text = s.texts.getSimTextKEX(); return shown(!text.IsEmpty(), text); }},
    {"copy texts", [](Scene& s) { const QorSimTextHandler copy(s.texts); return shown(copy.isDefined() == 1, [&] { return copy.getSimTextKEX().str(); }); }},
    {"readiness", checkReadiness},
    {"reset", reset},
};
// clang-format on

TEST(NoMemory, WhatIsNotSaidToHaveFailedIsRightAndTheRestChangesNothing) {
    for (const Operation& operation : kOperations) {
        Scene scene;
        scene.begin();
        const Picture expected = operation.run(scene);
        ASSERT_TRUE(expected) << operation.name;
        const auto run = [&] {
            const long number = std::exchange(failing_allocations::untilFailure, 0);
            scene.begin();
            failing_allocations::untilFailure = number;
            return operation.run(scene);
        };
        long told = 0;
        failing_allocations::failEach(run, [&](const Picture& result, long number) {
            if (result) {
                EXPECT_EQ(result, expected) << operation.name << " at " << number;
                return;
            }
            ++told;
            EXPECT_GT(number, 0) << operation.name;
            EXPECT_EQ(scene.outputs(), "untouched 4711 untouched") << operation.name << " at " << number;
            EXPECT_EQ(scene.state(), kFilled) << operation.name << " at " << number;
        });
        EXPECT_GT(told, 0) << operation.name << " allocates nothing";
    }
}

long allocationsOf(const std::function<void()>& run) {
    constexpr long kMany = 1L << 30;
    failing_allocations::untilFailure = kMany;
    run();
    return kMany - std::exchange(failing_allocations::untilFailure, 0);
}

// A query over a text that has been read takes the memory of what it gives, and no more.
TEST(NoMemory, QueriesAllocateOnlyWhatTheyReturn) {
    using Event = QorSimOptionActionEvent;
    Scene scene;
    auto& mapping = scene.read;
    ISortedSet<long> classes;
    mapping.getSimableBPClasses(classes);
    const auto& option = *mapping.option(0);
    const SV::String name = option.name;
    const long task = scene.idOf("Task");
    const struct {
        const char* name;
        std::function<void()> query;
        std::function<void()> copy = [] {};
        // clang-format off
    } cases[] = {
        {"simable", [&] { bool is = false; mapping.isSimableClass(task, is); }},
        {"option by name", [&] { int index = 0; mapping.getOptionNrFromName(name, index); }},
        {"action", [&] { long attribute = 0; mapping.getActionAttribute(1, task, Event::Finish, attribute); }},
        {"action class", [&] { (void)mapping.isActionClass(1, task, Event::Any); }},
        {"any action", [&] { (void)mapping.hasAnyActions(1); }},
        {"number of options", [&] { (void)mapping.getSimOptionCount(); }},
        {"defined", [&] { mapping.isDefined(); }},
        {"sub-performer", [&] { long cls = 0, attribute = 0; mapping.getSubPerformerAssignmentFromOption(0, cls, attribute); }},
        {"texts defined", [&] { (void)scene.texts.isDefined(); }},
        {"classes", [&] { ISortedSet<long> out; mapping.getSimableBPClasses(out); }, [&] { const auto copy = classes; }},
        {"help text", [&] { SV::String out; mapping.getHelpTextFromOption(0, out); }, [&] { const auto copy = option.helpText; }},
        {"activity", [&] { SV::String out; mapping.getActivityNameFromOption(0, out); }, [&] { const auto copy = option.activityClassName; }},
        {"times", [&] { ISequence<long> out; mapping.getStandardSimAttributes(0, out); }, [&] { const auto copy = option.standardAttributes; }},
        {"user attributes", [&] { ISequence<long> out; mapping.getAdditionalSimAttributes(0, out); }, [&] { const auto copy = option.userAttributes; }},
        {"a text", [&] { const auto text = scene.texts.getBPText(); }, [] { const SV::String text("A text that stands on the heap"); }},
    };
    // clang-format on
    for (const auto& row : cases) EXPECT_EQ(allocationsOf(row.query), allocationsOf(row.copy)) << row.name;
    EXPECT_GT(allocationsOf([&] { const auto copy = option.helpText; }), 0) << "the counter counts";
}

// Tables of results belong to the process: one for each allocation.
TEST(NoMemory, ResultsAreResetWholeOrRefused) {
    void* const room = mmap(nullptr, sizeof(bool), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(room, MAP_FAILED);
    bool& hasFailed = *static_cast<bool*>(room);
    Scene scene;
    long failures = 0;
    for (hasFailed = true; hasFailed; ++failures) {
        inOwnProcess([&] {
            ISortedSet<long> instances;
            failing_allocations::hasFailed = false;
            failing_allocations::untilFailure = failures + 1;
            const int result = QorSimResultAttributes().resetResultAttributes(scene.models, instances);
            failing_allocations::untilFailure = 0;
            hasFailed = failing_allocations::hasFailed;
            EXPECT_TRUE(hasFailed || result == 1);
            // Unless an error of the texts blocks it, the next one resets everything.
            const int again = QorSimResultAttributes().resetResultAttributes(scene.models, instances);
            EXPECT_EQ(again, 1 - QorSimResultAttributes::Get_Error()) << failures;
            EXPECT_TRUE(again == 0 || scene.state() == kReset) << failures;
        });
    }
    EXPECT_GT(failures, 10);
    munmap(room, sizeof(bool));
}

}  // namespace
