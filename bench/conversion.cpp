// SPDX-License-Identifier: Apache-2.0
// Conversion of objects with 20 attributes and 10 relations each, and transfer of 20 attributes, in one unit of work.
// "x_rows" is the time in times of a unit that writes the same objects, values and relations plainly: the fastest of
// each, in turns in one run. "plan_x_rows" is that of the plan before it, "whole_x_rows" that of both.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Works.h"
#include "modeltools/QorAttributeTransfer.h"
#include "modeltools/QorConversionPlan.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace {

constexpr int kAttributes = 20;
constexpr int kRelationsOut = 5;  // and as many in

class Model : public Works {
public:
    explicit Model(int objects) {
        const QorIdentifier thing = builder().addClass(part, "Thing", QorNoIdentifier, true).id;
        _relationClass = builder().addRelationClass(part, "then", thing, thing).id;
        task = builder().addClass(part, "Task", thing, false).id;
        check = builder().addClass(part, "Check", thing, false).id;
        std::string conversion = "CLASS \"Check\"";
        for (int number = 0; number < kAttributes; ++number) {
            const std::string name = "Attribute " + std::to_string(number);
            attributes.add(textAttribute(task, name));
            _targets.push_back(textAttribute(check, name));
            conversion += "\nATTR \"" + name + "\"";
        }
        (void)builder().setClassValue(task, textAttribute(task, "__Conversion__"), conversion);
        const QorIdentifier type = builder().addModelType(part, "Shop", std::vector<QorIdentifier>{task, check}).id;
        id = builder().addModel(type, "Monday", {}).id;
        std::vector<QorIdentifier> made;
        for (int number = 0; number < objects; ++number) {
            made.push_back(builder().addObject(id, task, "Task " + std::to_string(number)).id);
            tasks.add(made.back());
            for (const long value : attributes)
                (void)builder().setValue(made.back(), static_cast<QorIdentifier>(value), "A value as people write it");
        }
        relate(made);
        load();
    }

    QorIdentifier id = QorNoIdentifier;
    QorIdentifier task = QorNoIdentifier;
    QorIdentifier check = QorNoIdentifier;
    ISortedSet<long> attributes;
    ISortedSet<long> tasks;

    /// New objects with values, and relations between them.
    void writeRows() {
        QorUnitOfWork unit;
        std::vector<QorIdentifier> made;
        for (unsigned long number = 0; number < tasks.numberOfElements(); ++number) {
            long object = -1;
            (void)repository().createInstance(id, check, ("Row " + std::to_string(number)).c_str(), object);
            made.push_back(static_cast<QorIdentifier>(object));
            for (const QorIdentifier attribute : _targets)
                (void)repository().setAttributeValueAsString(id, object, attribute, "A value as people write it",
                                                             false);
        }
        relate(made);
        (void)unit.commit();
    }

    /// Values only.
    void writeValues() {
        QorUnitOfWork unit;
        for (const long object : tasks)
            for (const long attribute : attributes)
                (void)repository().setAttributeValueAsString(id, object, attribute, "Another value, written plainly",
                                                             true);
        (void)unit.commit();
    }

    void changeFirst() {
        for (const long attribute : attributes)
            (void)repository().setAttributeValueAsString(id, tasks.elementAtIndex(0), attribute,
                                                         "The value of the source", false);
    }

private:
    void relate(const std::vector<QorIdentifier>& objects) {
        for (std::size_t from = 0; from < objects.size(); ++from)
            for (std::size_t next = 1; next <= kRelationsOut; ++next)
                (void)builder().addRelation(_relationClass, objects[from], objects[(from + next) % objects.size()]);
    }

    QorIdentifier _relationClass = QorNoIdentifier;
    std::vector<QorIdentifier> _targets;
};

void convert(benchmark::State& state) {
    double rows = 1e9;
    double converting = 1e9;
    double planning = 1e9;
    double whole = 1e9;
    for (auto _ : state) {
        const auto objects = static_cast<int>(state.range(0));
        {
            Model plain(objects);
            rows = std::min(rows, secondsOf([&] { plain.writeRows(); }));
        }
        Model model(objects);
        QorConversionPlan plan;
        bool done = false;
        const double planned = secondsOf([&] { done = plan.make(model.id, model.tasks, model.check); });
        const double seconds = secondsOf([&] { done = done && plan.carryOut(); });
        planning = std::min(planning, planned);
        whole = std::min(whole, planned + seconds);
        if (!done) state.SkipWithError("not converted");
        converting = std::min(converting, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["x_rows"] = converting / rows;
    state.counters["plan_x_rows"] = planning / rows;
    state.counters["whole_x_rows"] = whole / rows;
}
BENCHMARK(convert)->UseManualTime()->Arg(2'500)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(3);

void transfer(benchmark::State& state) {
    double rows = 1e9;
    double transferring = 1e9;
    double planning = 1e9;
    for (auto _ : state) {
        Model model(static_cast<int>(state.range(0)));
        rows = std::min(rows, secondsOf([&] { model.writeValues(); }));
        model.changeFirst();
        ISortedSet<long> targets = model.tasks;
        (void)targets.remove(model.tasks.elementAtIndex(0));
        QorAttributeTransfer onto;
        bool done = false;
        planning = std::min(planning, secondsOf([&] {
                                done = onto.plan(model.id, model.tasks.elementAtIndex(0), model.attributes, targets);
                            }));
        const double seconds = secondsOf([&] { done = done && onto.carryOut(QorTransferMode::AllOrNothing); });
        if (!done) state.SkipWithError("not transferred");
        transferring = std::min(transferring, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["x_rows"] = transferring / rows;
    state.counters["plan_x_rows"] = planning / rows;
}
BENCHMARK(transfer)->UseManualTime()->Arg(2'500)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
