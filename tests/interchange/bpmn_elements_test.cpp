// SPDX-License-Identifier: Apache-2.0
#include "interchange/BpmnDesk.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace {

void remove(std::string& text, std::string_view part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
}

struct ElementCase {
    const char* element;  // as it stands in the process, with the identifier "x"
    const char* cls;
    const char* attribute = nullptr;
    const char* value = nullptr;
};

const ElementCase kElements[] = {
    {"<startEvent id='x'/>", "Start event", "Trigger", ""},
    {"<startEvent id='x' isInterrupting='false'/>", "Start event", "Interrupting", "no"},
    {"<endEvent id='x'><terminateEventDefinition/></endEvent>", "End event", "Trigger", "terminate"},
    {"<intermediateCatchEvent id='x'><signalEventDefinition/></intermediateCatchEvent>", "Intermediate catch event",
     "Trigger", "signal"},
    {"<intermediateThrowEvent id='x'><escalationEventDefinition/></intermediateThrowEvent>", "Intermediate throw event",
     "Trigger", "escalation"},
    {"<intermediateCatchEvent id='x'><linkEventDefinition name='A'/></intermediateCatchEvent>", "Link catch event",
     "Trigger detail", "link: A"},
    {"<intermediateThrowEvent id='x'><linkEventDefinition name='A'/></intermediateThrowEvent>", "Link throw event"},
    {"<boundaryEvent id='x' attachedToRef='host' cancelActivity='false'/>", "Boundary event", "Interrupting", "no"},
    {"<boundaryEvent id='x' attachedToRef='host'><compensateEventDefinition/></boundaryEvent>",
     "Compensation boundary event"},
    {"<task id='x'/>", "Task"},
    {"<userTask id='x'><potentialOwner><resourceRef>clerks</resourceRef></potentialOwner></userTask>", "User task",
     "Performers", "clerks"},
    {"<serviceTask id='x' implementation='##WebService'/>", "Service task", "Further details",
     "implementation = ##WebService"},
    {"<sendTask id='x'/>", "Send task"},
    {"<receiveTask id='x'/>", "Receive task"},
    {"<receiveTask id='x' instantiate='true'/>", "Instantiating receive task"},
    {"<manualTask id='x'><standardLoopCharacteristics/></manualTask>", "Manual task", "Loop", "standard"},
    {"<scriptTask id='x' scriptFormat='text/x'><script>a &lt; b</script></scriptTask>", "Script task", "Script",
     "a < b"},
    {"<businessRuleTask id='x'/>", "Business rule task"},
    {"<callActivity id='x' calledElement='elsewhere'/>", "Call activity", "Called element", "elsewhere"},
    {"<subProcess id='x'><multiInstanceLoopCharacteristics isSequential='1'/></subProcess>", "Sub-process", "Loop",
     "sequential multi-instance"},
    {"<subProcess id='x' triggeredByEvent='true'/>", "Event sub-process"},
    {"<transaction id='x'/>", "Transaction"},
    {"<adHocSubProcess id='x'/>", "Ad-hoc sub-process"},
    {"<userTask id='x' isForCompensation='true'/>", "Compensation activity", "BPMN element", "userTask"},
    {"<subProcess id='x' isForCompensation='true'/>", "Compensation sub-process"},
    {"<adHocSubProcess><userTask id='x'/></adHocSubProcess>", "Ad-hoc activity", "BPMN element", "userTask"},
    {"<adHocSubProcess><subProcess id='x'/></adHocSubProcess>", "Sub-process in ad-hoc"},
    {"<adHocSubProcess><intermediateThrowEvent id='x'/></adHocSubProcess>", "Ad-hoc event"},
    {"<adHocSubProcess><intermediateCatchEvent "
     "id='x'><linkEventDefinition/></intermediateCatchEvent></adHocSubProcess>",
     "Ad-hoc event", "Trigger", "link"},
    {"<adHocSubProcess><complexGateway id='x'/></adHocSubProcess>", "Ad-hoc gateway", "BPMN element", "complexGateway"},
    {"<adHocSubProcess><eventBasedGateway id='x' instantiate='true'/></adHocSubProcess>", "Ad-hoc gateway",
     "Further details", "instantiate = true"},
    {"<adHocSubProcess><task id='h'/><boundaryEvent id='x' attachedToRef='h'/></adHocSubProcess>",
     "Ad-hoc boundary event"},
    {"<adHocSubProcess><adHocSubProcess id='x'/></adHocSubProcess>", "Ad-hoc activity", "BPMN element",
     "adHocSubProcess"},
    {"<adHocSubProcess><subProcess id='x' triggeredByEvent='true'/></adHocSubProcess>", "Event sub-process"},
    {"<adHocSubProcess><subProcess><exclusiveGateway id='x'/></subProcess></adHocSubProcess>", "Exclusive gateway"},
    {"<adHocSubProcess><subProcess triggeredByEvent='true'><task id='x'/></subProcess></adHocSubProcess>", "Task"},
    {"<exclusiveGateway id='x' gatewayDirection='Diverging'/>", "Exclusive gateway", "Direction", "Diverging"},
    {"<inclusiveGateway id='x'/>", "Inclusive gateway"},
    {"<parallelGateway id='x'/>", "Parallel gateway"},
    {"<complexGateway id='x'/>", "Complex gateway"},
    {"<eventBasedGateway id='x'/>", "Event-based gateway"},
    {"<eventBasedGateway id='x' instantiate='true'/>", "Instantiating event-based gateway"},
    // Triggers.
    {"<startEvent id='x'><timerEventDefinition><timeCycle>R3/PT1H</timeCycle></timerEventDefinition></startEvent>",
     "Start event", "Trigger detail", "timer: cycle R3/PT1H"},
    {"<startEvent "
     "id='x'><conditionalEventDefinition><condition>a</condition></conditionalEventDefinition></startEvent>",
     "Start event", "Trigger detail", "conditional: condition a"},
    {"<startEvent id='x'><signalEventDefinition/><timerEventDefinition/></startEvent>", "Start event", "Trigger",
     "multiple"},
    {"<startEvent id='x' parallelMultiple='true'><signalEventDefinition/><timerEventDefinition/></startEvent>",
     "Start event", "Trigger", "parallel multiple"},
    // What is no flow node.
    {"<dataObject id='o' isCollection='true'/><dataObjectReference id='x' dataObjectRef='o'><dataState name='new'/>"
     "</dataObjectReference>",
     "Data object", "State", "new"},
    {"<dataObject id='o' isCollection='true'/><dataObjectReference id='x' dataObjectRef='o'/>", "Data object",
     "Collection", "yes"},
    {"<dataObject id='x'/>", "Data object"},
    {"<dataStoreReference id='x'/>", "Data store"},
    {"<ioSpecification><dataInput id='x'/></ioSpecification>", "Data input"},
    {"<ioSpecification><dataOutput id='x'/></ioSpecification>", "Data output"},
    {"<textAnnotation id='x'><text> Mind the gap. </text></textAnnotation>", "Text annotation", "Text",
     "Mind the gap."},
    {"<group id='x' categoryValueRef='nowhere'/>", "Group", "Category", "nowhere"},
    {"<laneSet><lane id='x'><documentation>Who sells</documentation></lane></laneSet>", "Lane", "Documentation",
     "Who sells"},
};

TEST(BpmnElement, BecomesAnObjectOfItsClass) {
    for (const ElementCase& row : kElements) {
        SCOPED_TRACE(row.element);
        BpmnDesk desk;
        desk.readProcess(std::string("<task id=\"host\"/>") + row.element);
        EXPECT_FALSE(desk.hasErrors());
        const QorRepositoryReader& reader = desk.platform.reader();
        EXPECT_EQ(reader.nameOf(reader.classOfObject(desk.made("x"))), row.cls);
        if (row.attribute != nullptr) {
            EXPECT_EQ(desk.value("x", row.attribute), row.value);
        }
    }
}

TEST(BpmnNames, AreFoldedAndMadeUniqueWithinTheirClass) {
    BpmnDesk desk;
    desk.readProcess(
        "<task id='a' name='Check&#10;  it '/><task id='b' name='Check it'/><task id='c' name='Check it (2)'/>"
        "<task id='d' name='Check it'/><userTask id='e' name='Check it'/><task id='f'/><task/>");
    EXPECT_THAT(desk.objects(),
                UnorderedElementsAre("Task \"Check it\"", "Task \"Check it (2)\"", "Task \"Check it (2) (2)\"",
                                     "Task \"Check it (3)\"", "User task \"Check it\"", "Task \"f\"", "Task \"Task\""));
    EXPECT_EQ(desk.value("a", "Label"), "Check\n  it ");
    EXPECT_EQ(desk.value("b", "Label"), "Check it");
    EXPECT_EQ(desk.value("e", "Label"), "") << "equal to the name";
}

TEST(BpmnNames, AreCutBetweenCharactersAndKeptWholeAsLabel) {
    std::string name;
    for (int i = 0; i < 600; ++i) name += "ü";
    BpmnDesk desk;
    desk.readProcess("<task id='a' name='" + name + "'/>");
    const std::string_view given = desk.platform.reader().nameOf(desk.made("a"));
    EXPECT_LT(given.size(), 1010U);
    EXPECT_TRUE(given.starts_with("üü") && given.ends_with("ü…"));
    EXPECT_EQ(desk.value("a", "Label"), name);
}

TEST(BpmnDetails, WhatHasNoAttributeOfItsOwnIsKeptLineByLine) {
    BpmnDesk desk;
    desk.readProcess(
        "<task id='a' startQuantity='1' completionQuantity='2'><documentation>One</documentation>"
        "<documentation>Two</documentation><multiInstanceLoopCharacteristics behavior='All'>"
        "<loopCardinality>7</loopCardinality></multiInstanceLoopCharacteristics></task>");
    EXPECT_EQ(desk.value("a", "Documentation"), "One\n\nTwo");
    EXPECT_EQ(desk.value("a", "Further details"),
              "completionQuantity = 2\nmultiInstanceLoopCharacteristics.behavior = All\nloopCardinality = 7");
}

TEST(BpmnDetails, NamesOfMessagesErrorsAndResourcesStandForTheirReferences) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<message id='m' name='Order'/><error id='e' name='No stock'/><resource id='r' name='Clerk'/>"
        "<timerEventDefinition id='weekly'><timeCycle>R/P7D</timeCycle></timerEventDefinition>"
        "<category><categoryValue id='k' value='Phase 1'/></category>"
        "<process id='p'><startEvent id='s'><messageEventDefinition messageRef='m'/></startEvent>"
        "<startEvent id='t'><eventDefinitionRef>weekly</eventDefinitionRef></startEvent>"
        "<endEvent id='n'><errorEventDefinition errorRef='e'/></endEvent><sendTask id='a' messageRef='m'>"
        "<performer><resourceRef>r</resourceRef></performer><performer><resourceRef>Boss</resourceRef></performer></"
        "sendTask><group id='g' categoryValueRef='k'/></process>");
    EXPECT_THAT(desk.diagnostics(), ElementsAre(HasSubstr("nothing in this file is its resourceRef \"Boss\"")));
    EXPECT_EQ(desk.value("s", "Trigger detail"), "message: Order");
    EXPECT_EQ(desk.value("t", "Trigger"), "timer");
    EXPECT_EQ(desk.value("n", "Trigger detail"), "error: No stock");
    EXPECT_EQ(desk.value("a", "Message"), "Order");
    EXPECT_EQ(desk.value("a", "Performers"), "Clerk, Boss");
    EXPECT_EQ(desk.value("g", "Category"), "Phase 1");
}

TEST(BpmnDetails, GoToTheFurtherOnesWhenTheLibraryHasNoAttributeForThem) {
    const char* const process =
        "<process id='p'><task id='a'><potentialOwner><resourceRef>me</resourceRef></potentialOwner></task></process>";
    std::string text = shippedLibrary();
    remove(text, "        - {name: Performers, type: text}\n");
    BpmnDesk without(text);
    EXPECT_EQ(without.readDefinitions(process).value("a", "Further details"), "Performers = me");

    remove(text, "        - {name: Further details, type: long text}\n");
    BpmnDesk withoutBoth(text);
    EXPECT_THAT(withoutBoth.readDefinitions(process).diagnostics(),
                testing::Contains(HasSubstr("<task> \"a\": its \"Further details\" could not be kept")));
}

TEST(BpmnDetails, PlacesAreKeptFromTheDiagramAndTheFile) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<process id='p'>\n  <!-- ü --><task id='a'/></process>"
        "<d:BPMNDiagram xmlns:d='http://www.omg.org/spec/BPMN/20100524/DI' "
        "xmlns:c='http://www.omg.org/spec/DD/20100524/DC' xmlns:v='urn:v'><d:BPMNPlane>"
        "<d:BPMNShape bpmnElement='a' v:color='red'><c:Bounds x='1' y='2' width='3.5' height='4'/>"
        "<d:BPMNLabel><c:Bounds x='9' y='9' width='9' height='9'/></d:BPMNLabel></d:BPMNShape>"
        "</d:BPMNPlane></d:BPMNDiagram>");
    EXPECT_EQ(desk.value("a", "Bounds"), "1 2 3.5 4");
    EXPECT_THAT(desk.diagnostics(), ElementsAre()) << "diagrams hold other makers' layout";
    const QorFilePlace place = desk.importer.placeOf(desk.made("a"));
    EXPECT_EQ(place.line, 2U);
    EXPECT_EQ(place.column, 14U) << "columns count bytes";
}

}  // namespace
