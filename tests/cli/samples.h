// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

#include "cli/CommandRunner.h"

namespace qor::test {

/// A limit of a class, one of a relation class, and one on the number of objects.
inline constexpr std::string_view kWorkshop = R"(format: qor.library/1
name: Workshop
business_process:
  classes:
    - name: Task
      cardinalities: |
        CARDINALITIES
        min-objects: 1
        max-outgoing: 1
    - name: Store
      cardinalities: |
        CARDINALITIES
        RELATION "uses"
        min-incoming: 1
  relation_classes:
    - {name: then, from: Task, to: Task}
    - {name: uses, from: Task, to: Store}
  model_types:
    - {name: Process, classes: [Task, Store]}
)";

/// "Check" has two successors, nobody uses "Shelf", and the second model has no task.
inline constexpr std::string_view kOrders = R"(format: qor.model/1
library: workshop.yaml
models:
  - name: Orders
    type: Process
    objects:
      - {id: t1, class: Task, name: Check}
      - {class: Task, name: Pack}
      - {class: Task, name: Send}
      - {class: Store, name: Shelf}
    relations:
      - {class: then, from: t1, to: Pack}
      - {class: then, from: t1, to: Send}
  - name: Idle
    type: Process
)";

inline constexpr std::string_view kClean = R"(format: qor.model/1
library: workshop.yaml
models:
  - name: Clean
    type: Process
    objects:
      - {class: Task, name: Check}
)";

/// An end event without an incoming flow, beside a flow in good order.
inline constexpr std::string_view kBpmn = R"(<?xml version="1.0" encoding="UTF-8"?>
<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL" targetNamespace="urn:test">
  <process id="p" name="Order">
    <startEvent id="s" name="Ordered"/>
    <task id="t" name="Pack"/>
    <endEvent id="e" name="Packed"/>
    <endEvent id="lost" name="Lost"/>
    <sequenceFlow id="f1" sourceRef="s" targetRef="t"/>
    <sequenceFlow id="f2" sourceRef="t" targetRef="e"/>
  </process>
</definitions>
)";

/// Tests in a folder with all of these.
struct OnSamples : testing::Test {
    OnSamples() {
        qor.write("workshop.yaml", kWorkshop);
        qor.write("orders.yaml", kOrders);
        qor.write("clean.yaml", kClean);
        qor.write("order.bpmn", kBpmn);
    }
    CommandRunner qor;
};

}  // namespace qor::test
