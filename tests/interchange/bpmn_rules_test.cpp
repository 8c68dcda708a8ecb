// SPDX-License-Identifier: Apache-2.0
#include "interchange/BpmnDesk.h"

using testing::ElementsAre;

namespace {

std::string example(const char* name) { return textOfFile(std::string(QOR_SOURCE_DIR "/examples/bpmn/") + name); }

TEST(BpmnRules, FindWhatTheExamplesBreakAndNothingElse) {
    BpmnDesk desk;
    EXPECT_THAT(desk.read(example("order-handling.bpmn")).breaches(), ElementsAre());
    EXPECT_THAT(desk.read(example("claim.bpmn")).breaches(),
                ElementsAre("Boundary event \"Four weeks passed\": min-outgoing 1, Sequence flow",
                            "End event \"Claim paid\": max-outgoing 0, Sequence flow",
                            "Manual task \"Archive the papers\": min-incoming 1, Sequence flow",
                            "Parallel gateway \"Assess\": min-relations 4",
                            "Start event \"Claim reported\": max-incoming 0, Sequence flow",
                            "Sub-process \"Assess the damage\": min-outgoing 1, Contains, End event",
                            "User task \"Estimate the costs\": min-outgoing 1, Sequence flow"));
    EXPECT_THAT(desk.read(example("travel.bpmn")).breaches(),
                ElementsAre("Event-based gateway \"Until the journey begins\": default-max-outgoing 0, Sequence flow"));
}

/// The process "s" -> "t" -> "e", with what stands beside it.
BpmnDesk& readBeside(BpmnDesk& desk, const char* process) {
    return desk.readProcess(
        std::string("<startEvent id='s'/><task id='t'/><endEvent id='e'/><sequenceFlow sourceRef='s' targetRef='t'/>"
                    "<sequenceFlow sourceRef='t' targetRef='e'/>") +
        process);
}

TEST(BpmnRules, GoodPracticeBreaksNone) {
    const struct {
        const char *what, *process;
    } kCases[] = {
        {"a link",
         "<intermediateThrowEvent id='l'><linkEventDefinition/></intermediateThrowEvent>"
         "<sequenceFlow sourceRef='t' targetRef='l'/>"
         "<intermediateCatchEvent id='m'><linkEventDefinition/></intermediateCatchEvent>"
         "<sequenceFlow sourceRef='m' targetRef='e'/>"},
        {"an event sub-process",
         "<subProcess id='x' triggeredByEvent='true'><startEvent id='xs' "
         "isInterrupting='false'><signalEventDefinition/>"
         "</startEvent><endEvent id='xe'/><sequenceFlow sourceRef='xs' targetRef='xe'/></subProcess>"},
        {"compensation",
         "<boundaryEvent id='b' attachedToRef='t'><compensateEventDefinition/></boundaryEvent>"
         "<task id='c' isForCompensation='true'/><association sourceRef='b' targetRef='c'/>"},
        {"ad-hoc work",
         "<adHocSubProcess id='a'><task id='x'/><subProcess id='y'><startEvent id='ys'/><endEvent id='ye'/>"
         "<sequenceFlow sourceRef='ys' targetRef='ye'/></subProcess><intermediateThrowEvent id='z'/>"
         "<exclusiveGateway id='g'/><eventBasedGateway id='h'/><sequenceFlow sourceRef='x' targetRef='g'/>"
         "<intermediateThrowEvent id='l'><linkEventDefinition/></intermediateThrowEvent>"
         "<boundaryEvent id='b' attachedToRef='x'/><adHocSubProcess id='n'><parallelGateway id='m'/></adHocSubProcess>"
         "</adHocSubProcess><sequenceFlow sourceRef='t' targetRef='a'/>"
         "<sequenceFlow sourceRef='a' targetRef='e'/>"},
        {"waiting for one of three",
         "<eventBasedGateway id='g'/><sequenceFlow sourceRef='t' targetRef='g'/><receiveTask id='r'/>"
         "<intermediateCatchEvent id='c'><timerEventDefinition/></intermediateCatchEvent>"
         "<intermediateCatchEvent id='d'><messageEventDefinition/></intermediateCatchEvent>"
         "<sequenceFlow sourceRef='g' targetRef='r'/><sequenceFlow sourceRef='g' targetRef='c'/>"
         "<sequenceFlow sourceRef='g' targetRef='d'/><sequenceFlow sourceRef='r' targetRef='e'/>"
         "<sequenceFlow sourceRef='c' targetRef='e'/><sequenceFlow sourceRef='d' targetRef='e'/>"},
        {"a gateway that merges and splits, with a remark",
         "<inclusiveGateway id='g'/><sequenceFlow sourceRef='t' targetRef='g'/><sequenceFlow sourceRef='g' "
         "targetRef='t'/>"
         "<sequenceFlow sourceRef='g' targetRef='e'/><textAnnotation id='n'/><association sourceRef='n' "
         "targetRef='g'/>"},
        {"data without flows", "<dataObject id='d'/><dataStoreReference id='x'/><group id='g'/>"},
    };
    BpmnDesk desk;
    for (const auto& row : kCases) {
        EXPECT_THAT(readBeside(desk, row.process).diagnostics(), ElementsAre()) << row.what;
        EXPECT_THAT(desk.breaches(), ElementsAre()) << row.what;
    }
}

TEST(BpmnRules, BlackBoxesAndMessageStartedProcessesBreakNone) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<collaboration id='c'><participant id='P' processRef='empty'/><participant id='Q'/>"
        "<participant id='R' processRef='p'/><messageFlow sourceRef='P' targetRef='r'/></collaboration>"
        "<process id='empty'/><process id='p'><receiveTask id='r' instantiate='true'/><endEvent id='e'/>"
        "<sequenceFlow sourceRef='r' targetRef='e'/></process>");
    EXPECT_THAT(desk.breaches(), ElementsAre());
}

TEST(BpmnRules, EachIsBrokenByItsOwnMistake) {
    const struct {
        const char *process, *expected;
    } kCases[] = {
        {"<startEvent id='x'/>", "Start event \"x\": min-outgoing 1, Sequence flow"},
        {"<endEvent id='x'/>", "End event \"x\": min-incoming 1, Sequence flow"},
        {"<boundaryEvent id='x' attachedToRef='t'/><sequenceFlow sourceRef='x' targetRef='t'/>"
         "<sequenceFlow sourceRef='t' targetRef='x'/>",
         "Boundary event \"x\": max-incoming 0, Sequence flow"},
        {"<boundaryEvent id='x' attachedToRef='t'><compensateEventDefinition/></boundaryEvent>",
         "Compensation boundary event \"x\": min-outgoing 1, Association"},
        {"<exclusiveGateway id='x'/><sequenceFlow sourceRef='t' targetRef='x'/>"
         "<sequenceFlow sourceRef='x' targetRef='e'/><textAnnotation id='n'/>"
         "<association sourceRef='n' targetRef='x'/>",
         "Exclusive gateway \"x\": min-relations 4"},
        {"<eventBasedGateway id='x'/><sequenceFlow sourceRef='t' targetRef='x'/><receiveTask id='r'/>"
         "<sequenceFlow sourceRef='x' targetRef='r'/><sequenceFlow sourceRef='r' targetRef='e'/>",
         "Event-based gateway \"x\": min-outgoing 2, Sequence flow"},
        {"<callActivity id='x'/><sequenceFlow sourceRef='t' targetRef='x'/>",
         "Call activity \"x\": min-outgoing 1, Sequence flow"},
        {"<subProcess id='x' triggeredByEvent='true'><startEvent id='a'/><startEvent id='b'/><endEvent id='c'/>"
         "<sequenceFlow sourceRef='a' targetRef='c'/><sequenceFlow sourceRef='b' targetRef='c'/></subProcess>",
         "Event sub-process \"x\": max-outgoing 1, Contains, Start event"},
        {"<adHocSubProcess id='x'><startEvent id='a'/><task id='b'/><sequenceFlow sourceRef='a' targetRef='b'/>"
         "</adHocSubProcess><sequenceFlow sourceRef='t' targetRef='x'/><sequenceFlow sourceRef='x' targetRef='e'/>",
         "Ad-hoc sub-process \"x\": max-outgoing 0, Contains, Start event"},
        {"<adHocSubProcess id='o'><adHocSubProcess id='x'><startEvent id='a'/><task id='b'/>"
         "<sequenceFlow sourceRef='a' targetRef='b'/></adHocSubProcess></adHocSubProcess>"
         "<sequenceFlow sourceRef='t' targetRef='o'/><sequenceFlow sourceRef='o' targetRef='e'/>",
         "Ad-hoc activity \"x\": max-outgoing 0, Contains, Start event"},
        {"<adHocSubProcess id='o'><subProcess id='x'><startEvent id='a'/><exclusiveGateway id='g'/><endEvent id='z'/>"
         "<sequenceFlow sourceRef='a' targetRef='g'/><sequenceFlow sourceRef='g' targetRef='z'/></subProcess>"
         "</adHocSubProcess><sequenceFlow sourceRef='t' targetRef='o'/><sequenceFlow sourceRef='o' targetRef='e'/>",
         "Exclusive gateway \"g\": min-relations 4"},
        {"<transaction id='x'><startEvent id='a'/><task id='b'/><sequenceFlow sourceRef='a' targetRef='b'/>"
         "<sequenceFlow sourceRef='b' targetRef='c'/><task id='c'/><sequenceFlow sourceRef='c' targetRef='b'/>"
         "</transaction><sequenceFlow sourceRef='t' targetRef='x'/><sequenceFlow sourceRef='x' targetRef='e'/>",
         "Transaction \"x\": min-outgoing 1, Contains, End event"},
    };
    BpmnDesk desk;
    for (const auto& row : kCases)
        EXPECT_THAT(readBeside(desk, row.process).breaches(), ElementsAre(row.expected)) << row.process;
}

}  // namespace
