// SPDX-License-Identifier: Apache-2.0
#include "interchange/BpmnDesk.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

TEST(BpmnWarning, NamesTheElementAndLeavesOutWhatCannotBe) {
    const struct {
        const char *process, *expected;
    } kCases[] = {
        {"<sequenceFlow id='f' sourceRef='a' targetRef='zz'/>",
         "3:1 <sequenceFlow> \"f\": its target \"zz\" is not in this file; the relation is left out"},
        {"<sequenceFlow name='to b' targetRef='b'/>",
         "3:1 <sequenceFlow> named \"to b\": its source is not given; the relation is left out"},
        {"  <dataObject id='d'/><sequenceFlow id='f' sourceRef='a' targetRef='d'/>",
         "3:23 <sequenceFlow> \"f\": Sequence flow from <task> \"a\" to <dataObject> \"d\" is not possible (the "
         "relation "
         "class does not arrive at objects of this class); the relation is left out"},
        {"<sequenceFlow id='f' sourceRef='f' targetRef='a'/>",
         "3:1 <sequenceFlow> \"f\": <sequenceFlow> \"f\" cannot be its end; the relation is left out"},
        {"<boundaryEvent id='e' attachedToRef='zz'/>",
         "3:1 <boundaryEvent> \"e\": its activity that it is attached to \"zz\" is not in this file; the relation is "
         "left "
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
        {"<monitoring id='x'/><auditing/><monitoring id='y'/>",
         "3:1 left out, since the method library has no place for it: <auditing> (1), <monitoring> (2); these are "
         "<monitoring> \"x\" (line 3), <auditing> (line 3), <monitoring> \"y\" (line 3)"},
        {"<task id='c'><extensionElements><task id='lost'/></extensionElements></task>",
         "3:33 left out, since it stands among extensions: 1 element of the namespace "
         "\"http://www.omg.org/spec/BPMN/20100524/MODEL\": <task> in <task> \"c\" (line 3)"},
        {"<task id='c' v:a='1'><extensionElements><v:b><v:c v:d='2'/></v:b></extensionElements></task><v:e><task "
         "v:f='3'/></v:e>",
         "3:1 left out, as an extension that is not part of BPMN: 3 elements and 3 attributes of the namespace "
         "\"urn:vendor\": a of <task> \"c\" (line 3), <b> in <task> \"c\" (line 3), <e> in <process> \"p\" (line 3)"},
    };
    for (const auto& row : kCases) {
        BpmnDesk desk;
        desk.readProcess("\n<task id='a'/><task id='b'/>\n" + std::string(row.process));
        EXPECT_FALSE(desk.hasErrors());
        EXPECT_THAT(desk.diagnostics(), ElementsAre(row.expected));
        EXPECT_THAT(desk.relations("Sequence flow"), ElementsAre()) << row.process;
        EXPECT_THAT(desk.objects(), testing::IsSupersetOf({"Task \"a\"", "Task \"b\""}));
    }
}

TEST(BpmnWarnings, NameTheFirstOfManyAndMentionAll) {
    BpmnDesk desk;
    desk.readProcess("<task id='a' v:x='1'/>\n<task id='b' v:x='1'/>\n<task id='c' v:x='1'/>\n<task id='d' v:x='1'/>");
    ASSERT_EQ(desk.result().diagnostics.size(), 1U);
    EXPECT_THAT(desk.result().diagnostics[0].text, testing::EndsWith("x of <task> \"c\" (line 3) and 1 more"));
    ASSERT_EQ(desk.result().diagnostics[0].mentions.size(), 4U);
    EXPECT_EQ(desk.result().diagnostics[0].mentions[3].text, "x of <task> \"d\"");
    EXPECT_EQ(desk.result().diagnostics[0].mentions[3].line, 4U);
}

TEST(BpmnWarnings, OnlyActivitiesLeadToThemselvesWithoutOne) {
    BpmnDesk desk;
    desk.readProcess(
        "<task id='a'/><subProcess id='s'/><exclusiveGateway id='g'/><sequenceFlow id='f' sourceRef='a' targetRef='a'/>"
        "<sequenceFlow sourceRef='s' targetRef='s'/><sequenceFlow id='h' sourceRef='g' targetRef='g'/>"
        "<association id='i' sourceRef='a' targetRef='a'/>");
    EXPECT_THAT(desk.relations("Sequence flow"), ElementsAre("a -> a", "g -> g", "s -> s"));
    EXPECT_THAT(desk.diagnostics(), ElementsAre(HasSubstr("\"h\" leads from <exclusiveGateway> \"g\" to itself"),
                                                HasSubstr("\"i\" leads from <task> \"a\" to itself")));
    EXPECT_THAT(desk.breaches(), testing::Not(testing::Contains(HasSubstr("Task \"a\"")))) << "it has one of each";
    EXPECT_THAT(desk.breaches(), testing::Contains(HasSubstr("Exclusive gateway \"g\": min-relations 4")));
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

TEST(BpmnWarnings, TellWhatStandsOutsideOfProcessesInVain) {
    BpmnDesk desk;
    desk.readDefinitions(
        "<process id='p' name='P'><task id='a'/><sequenceFlow id='f' sourceRef='a' targetRef='b'/></process>"
        "<process id='q' name='Q'><task id='b'/></process>");
    EXPECT_THAT(desk.diagnostics(), ElementsAre(HasSubstr("its ends lie in two models, \"P\" and \"Q\"")));
    desk.readDefinitions(
        "<message id='m' name='Used'/><message id='n' name='Unused'/>"
        "<process id='p'><receiveTask id='r' messageRef='m'/></process>");
    EXPECT_THAT(desk.diagnostics(), ElementsAre(HasSubstr(": <message> (1); these are <message> \"n\" (line 1)")));
    desk.readDefinitions("<documentation>x</documentation><choreography id='c'/>");
    EXPECT_FALSE(desk.hasErrors());
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("<documentation> (1)")));
    EXPECT_THAT(desk.diagnostics(), testing::Contains(HasSubstr("no process and no collaboration")));
}

}  // namespace
