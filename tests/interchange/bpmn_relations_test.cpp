// SPDX-License-Identifier: Apache-2.0
#include "interchange/BpmnDesk.h"

using testing::ElementsAre;

namespace {

TEST(BpmnFlows, SequenceFlowsMayPointForwardAndKeepWhatTheySay) {
    BpmnDesk desk;
    desk.readProcess(
        "<sequenceFlow id='f' name='yes' sourceRef='g' targetRef='a'><conditionExpression language='x'>n &gt; 1"
        "</conditionExpression></sequenceFlow><sequenceFlow id='e' sourceRef='g' targetRef='b'/>"
        "<exclusiveGateway id='g' default='e'/><task id='a'/><task id='b'/>");
    EXPECT_THAT(desk.relations("Sequence flow"), ElementsAre("g -> a", "g -> b"));
    EXPECT_EQ(desk.value("f", "Label"), "yes");
    EXPECT_EQ(desk.value("f", "Condition"), "n > 1");
    EXPECT_EQ(desk.value("f", "Further details"), "conditionExpression.language = x");
    EXPECT_EQ(desk.value("e", "Default"), "yes");
    EXPECT_THAT(desk.diagnostics(), ElementsAre());
}

TEST(BpmnFlows, EverythingIsContainedOnceAndBoundaryEventsAreAttached) {
    BpmnDesk desk;
    desk.readProcess(
        "<subProcess id='s'><task id='a'/><dataObject id='d'/></subProcess><textAnnotation id='t'/>"
        "<boundaryEvent id='b' attachedToRef='s'/>");
    EXPECT_THAT(desk.relations("Contains"), ElementsAre("p -> b", "p -> s", "p -> t", "s -> a", "s -> d"));
    EXPECT_THAT(desk.relations("Attached to"), ElementsAre("b -> s"));
}

TEST(BpmnFlows, DataAssociationsJoinTheActivityWithItsData) {
    BpmnDesk desk;
    desk.readProcess(
        "<ioSpecification><dataInput id='in'/></ioSpecification>"
        "<dataObject id='o'/><dataObjectReference id='r' name='Order' dataObjectRef='o'/><dataStoreReference id='s'/>"
        "<task id='a'><ioSpecification><dataInput id='a_in'/><dataOutput id='a_out'/></ioSpecification>"
        "<dataInputAssociation id='x'><sourceRef>o</sourceRef><sourceRef>in</sourceRef><targetRef>a_in</targetRef>"
        "</dataInputAssociation><dataOutputAssociation><sourceRef>a_out</sourceRef><targetRef>s</targetRef>"
        "</dataOutputAssociation></task>");
    EXPECT_THAT(desk.relations("Data association"), ElementsAre("Order -> a", "a -> s", "in -> a"));
    EXPECT_THAT(desk.objects(),
                ElementsAre("Data input \"in\"", "Data object \"Order\"", "Data store \"s\"", "Task \"a\""))
        << "a data object that references draw is no object besides, nor is an activity's inside";
    EXPECT_THAT(desk.diagnostics(), ElementsAre());
}

TEST(BpmnFlows, AssociationsWithGatewaysAndFlowsAreKeptWithoutARelation) {
    BpmnDesk desk;
    desk.readProcess(
        "<task id='a'/><exclusiveGateway id='g' name='Which?'/><textAnnotation id='t'/>"
        "<sequenceFlow id='f' sourceRef='a' targetRef='g'/>"
        "<association id='1' sourceRef='a' targetRef='t'/><association id='2' sourceRef='g' targetRef='t'/>"
        "<association id='3' sourceRef='t' targetRef='f'/><association id='4' sourceRef='g' targetRef='f'/>");
    EXPECT_THAT(desk.relations("Association"), ElementsAre("a -> t"));
    EXPECT_EQ(desk.value("t", "Associated with"), "exclusiveGateway \"Which?\"\nsequenceFlow \"f\"");
    ASSERT_EQ(desk.diagnostics().size(), 1U);
    EXPECT_THAT(desk.diagnostics().front(), testing::HasSubstr("<association> \"4\""));
}

TEST(BpmnLanes, MembershipIsThePathOfTheInnermostLane) {
    BpmnDesk desk;
    desk.readProcess(
        "<laneSet><lane id='l' name='Sales'><flowNodeRef>a</flowNodeRef><flowNodeRef> b </flowNodeRef>"
        "<childLaneSet><lane id='m' name='Desk'><flowNodeRef>b</flowNodeRef></lane></childLaneSet></lane></laneSet>"
        "<laneSet><lane id='n' name='Berlin'><flowNodeRef>a</flowNodeRef></lane></laneSet>"
        "<task id='a'/><task id='b'/>");
    EXPECT_EQ(desk.value("a", "Lane"), "Sales, Berlin") << "two partitions of one process";
    EXPECT_EQ(desk.value("b", "Lane"), "Sales / Desk");
    EXPECT_THAT(desk.relations("Contains"),
                ElementsAre("Sales -> Desk", "p -> Berlin", "p -> Sales", "p -> a", "p -> b"));
}

TEST(BpmnModels, ACollaborationTakesInTheProcessesOfItsPoolsAndOfItsMessageFlows) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<collaboration id='c' name='Trade'><participant id='P' name='Buyer' processRef='b'/>"
        "<participant id='Q' name='Bank'/><participant id='R' name='State' processRef='e'/>"
        "<messageFlow id='m' sourceRef='P' targetRef='a'/>"
        "<messageFlow id='n' sourceRef='x' targetRef='Q'/></collaboration>"
        "<process id='b' name='Buy'><task id='x'/></process><process id='s' name='Sell'><task id='a'/></process>"
        "<process id='e' name='Govern'/><process id='l' name='Alone'/><process id='n1'/><process id='n2'/>");
    EXPECT_THAT(desk.modelNames(), ElementsAre("Trade", "Alone", "test", "test (2)"));
    EXPECT_THAT(desk.relations("Message flow"), ElementsAre("Buyer -> a", "x -> Bank"));
    EXPECT_THAT(desk.relations("Contains"), ElementsAre("Buy -> x", "Buyer -> Buy", "Sell -> a", "State -> Govern"));
    EXPECT_THAT(desk.objects("Task"), testing::Contains("Black-box process \"Govern\""));
}

TEST(BpmnModels, GetNumbersForTakenNamesAndTheNameOfTheOnlyPoolForNone) {
    BpmnDesk desk;
    const char* const file = "<process id='p' name='Order'/>";
    EXPECT_THAT(desk.readDefinitions(file).modelNames(), ElementsAre("Order"));
    EXPECT_THAT(desk.readDefinitions(file).modelNames(), ElementsAre("Order (2)"));
    desk.readDefinitions("<collaboration><participant name='Bank' processRef='p'/></collaboration><process id='p'/>");
    EXPECT_THAT(desk.modelNames(), ElementsAre("Bank"));
}

TEST(BpmnModels, CallActivitiesReferToTheModelOfTheCalledProcess) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<process id='p'><callActivity id='c' calledElement='t:q'/></process>"
        "<process id='q' name='Say &quot;hi&quot;'/>");
    EXPECT_EQ(desk.value("c", "Called element"), "t:q");
    EXPECT_EQ(desk.value("c", "Called process"), "MODEL \"Say \"\"hi\"\"\" type: \"BPMN diagram\"");
}

TEST(BpmnModels, AProcessThatAMessageStartsNeedsNoStartEvent) {
    BpmnDesk desk;
    desk.readProcess("<receiveTask id='r' instantiate='true'/>");
    EXPECT_THAT(desk.objects(""), testing::Contains("Message-started process \"p\""));
    desk.readProcess("<receiveTask id='r' instantiate='true'/><startEvent id='s'/>");
    EXPECT_THAT(desk.objects(""), testing::Contains("Process \"p\""));
}

}  // namespace
