// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interchange/BpmnDesk.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct WarningCase {
    const char* process;
    const char* expected;
};

class BpmnWarning : public testing::TestWithParam<WarningCase> {};

TEST_P(BpmnWarning, NamesTheElementAndLeavesOutWhatCannotBe) {
    BpmnDesk desk;
    desk.readProcess("\n<task id='a'/><task id='b'/>\n" + std::string(GetParam().process));
    ASSERT_FALSE(desk.hasErrors());
    ASSERT_EQ(desk.diagnostics().size(), 1U) << GetParam().process << testing::PrintToString(desk.diagnostics());
    EXPECT_EQ(desk.diagnostics().front(), GetParam().expected);
    EXPECT_THAT(desk.relations("Sequence flow"), ElementsAre()) << GetParam().process;
    EXPECT_THAT(desk.objects(), testing::IsSupersetOf({"Task \"a\"", "Task \"b\""}));
}

const WarningCase kWarnings[] = {
    {"<sequenceFlow id='f' sourceRef='a' targetRef='zz'/>",
     "3:1 <sequenceFlow> \"f\": its target \"zz\" is not in this file; the relation is left out"},
    {"<sequenceFlow name='to b' targetRef='b'/>",
     "3:1 <sequenceFlow> named \"to b\": its source is not given; the relation is left out"},
    {"<sequenceFlow id='f' sourceRef='a' targetRef='a'/>",
     "3:1 <sequenceFlow> \"f\" leads from <task> \"a\" to itself; it is left out"},
    {"  <dataObject id='d'/><sequenceFlow id='f' sourceRef='a' targetRef='d'/>",
     "3:23 <sequenceFlow> \"f\": Sequence flow from <task> \"a\" to <dataObject> \"d\" is not possible (the relation "
     "class does not arrive at objects of this class); the relation is left out"},
    {"<sequenceFlow id='f' sourceRef='f' targetRef='a'/>",
     "3:1 <sequenceFlow> \"f\": <sequenceFlow> \"f\" cannot be its end; the relation is left out"},
    {"<boundaryEvent id='e' attachedToRef='zz'/>",
     "3:1 <boundaryEvent> \"e\": its activity that it is attached to \"zz\" is not in this file; the relation is left "
     "out"},
    {"<task id='a' name='again'/>",
     "3:1 <task> \"a\": this id is already that of <task> in line 2; references mean that one"},
    {"<task id='c' default='a'/>", "3:1 <task> \"c\": nothing in this file is its default \"a\""},
    {"<laneSet><lane id='l'><flowNodeRef>zz</flowNodeRef></lane></laneSet>",
     "3:10 <lane> \"l\": nothing in this file is its flowNodeRef \"zz\""},
    {"<task id='c'><dataInputAssociation id='i'><sourceRef>a</sourceRef></dataInputAssociation></task>",
     "3:14 <dataInputAssociation> \"i\": <task> \"a\" is not drawn as data; the relation is left out"},
    {"<choreographyTask id='c'><sequenceFlow/></choreographyTask>",
     "3:1 <choreographyTask> \"c\" belongs to a kind of diagram that is not read; it is left out with everything "
     "inside "
     "it"},
    {"<tsk id='c'><task/></tsk>",
     "3:1 <tsk> \"c\" is no element that BPMN knows; it is left out with everything inside it"},
    {"<participant id='c'/>",
     "3:1 <participant> \"c\" stands where BPMN has no such element; it is left out with everything inside it"},
    {"<property id='x'/><auditing/><property id='y'/>",
     "3:1 left out, since the method library has no place for it: <auditing> (1), <property> (2)"},
    {"<task id='c' v:a='1'><extensionElements><v:b><v:c v:d='2'/></v:b></extensionElements></task><v:e/>",
     "3:1 left out, as an extension that is not part of BPMN: 3 elements and 2 attributes of the namespace "
     "\"urn:vendor\""},
};
INSTANTIATE_TEST_SUITE_P(All, BpmnWarning, testing::ValuesIn(kWarnings));

TEST(BpmnWarnings, FlowsBetweenModelsAreLeftOut) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<process id='p' name='P'><task id='a'/><sequenceFlow id='f' sourceRef='a' targetRef='b'/></process>"
        "<process id='q' name='Q'><task id='b'/></process>");
    EXPECT_THAT(desk.diagnostics(), ElementsAre(HasSubstr("its ends lie in two models, \"P\" and \"Q\"")));
}

TEST(BpmnWarnings, DefinitionsThatNothingUsesAreTold) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<message id='m' name='Used'/><message id='n' name='Unused'/>"
        "<process id='p'><receiveTask id='r' messageRef='m'/></process>");
    EXPECT_THAT(desk.diagnostics(), ElementsAre(HasSubstr(": <message> (1)")));
}

TEST(BpmnWarnings, ACrowdOfOneKindIsCountedAndHidesNoOther) {
    std::string process = "<tsk/>";
    for (int i = 0; i < 5000; ++i)
        process += "<sequenceFlow sourceRef='x' targetRef='y'/>\n<v:a xmlns:v='urn:" + std::to_string(i) + "'/>";
    BpmnDesk desk;
    desk.readProcess(process);
    EXPECT_LT(desk.diagnostics().size(), 400U);
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("<tsk>")));
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("9900 more references to nothing are not listed")));
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("4900 elements of further namespaces")));
}

TEST(BpmnWarnings, AFileWithoutProcessesSaysSo) {
    BpmnDesk desk;
    desk.readDefinitions("<documentation>x</documentation><choreography id='c'/>");
    EXPECT_FALSE(desk.hasErrors());
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("<documentation> (1)")));
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("no process and no collaboration")));
}

}  // namespace
