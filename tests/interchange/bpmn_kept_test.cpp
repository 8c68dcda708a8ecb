// SPDX-License-Identifier: Apache-2.0
// Whatever a BPMN file says is kept somewhere, or a warning names the element that said it.
#include "interchange/BpmnDesk.h"

namespace {

/// What must be found again stands in brackets. A process and a collaboration with a pool for it are around.
struct Snippet {
    const char* process;
    const char* definitions = "";
    const char* collaboration = "";
};

const Snippet kSnippets[] = {
    // What events, tasks, flows and groups refer to.
    {"<startEvent><messageEventDefinition messageRef='m'><documentation>[4]</documentation></messageEventDefinition>"
     "</startEvent><endEvent><messageEventDefinition messageRef='m'/></endEvent>",
     "<message id='m' name='[1]' itemRef='[2]'><documentation>[3]</documentation></message>"},
    {"<endEvent><errorEventDefinition errorRef='e'/></endEvent>",
     "<error id='e' errorCode='[1]' name='[2]'><documentation>[3]</documentation></error>"},
    {"<endEvent><escalationEventDefinition id='x' escalationRef='e'/></endEvent>",
     "<escalation id='e' escalationCode='[1]'><documentation>[2]</documentation></escalation>"},
    {"<endEvent><eventDefinitionRef>d</eventDefinitionRef></endEvent>",
     "<signal id='s' name='[1]' structureRef='[2]'><documentation>[3]</documentation></signal>"
     "<signalEventDefinition id='d' signalRef='s'><documentation>[4]</documentation></signalEventDefinition>"},
    {"<task id='t'/>", "<message id='m'><documentation>[1]</documentation></message>",
     "<participant id='Q'/><messageFlow sourceRef='t' targetRef='Q' messageRef='m'>"
     "<documentation>[2]</documentation></messageFlow>"},
    {"<group categoryValueRef='k'/>",
     "<category id='c' name='[1]'><documentation>[2]</documentation><categoryValue id='k' value='[3]'>"
     "<documentation>[4]</documentation></categoryValue></category>"},
    {"<task><categoryValueRef>k</categoryValueRef></task>", "<category><categoryValue id='k' value='[1]'/></category>"},
    {"<task><performer name='[3]'><resourceRef>r</resourceRef></performer></task>",
     "<resource id='r' name='[1]'><documentation>[2]</documentation></resource>"},
    {"<dataStoreReference name='[4]' dataStoreRef='d'/><dataStoreReference name='[5]' dataStoreRef='d'/>",
     "<dataStore id='d' name='[1]' capacity='[2]' isUnlimited='false'><documentation>[3]</documentation></dataStore>"},
    {"<callActivity calledElement='g'/>",
     "<globalUserTask id='g' name='[1]'><documentation>[2]</documentation></globalUserTask>"},
    // What nothing refers to.
    {"", "<timerEventDefinition id='[1]'/><message id='[2]'/><globalTask id='[3]'/>"},
    {"", "<message id='[1]' messageRef='[2]'/><message id='[2]' messageRef='[1]'/><property id='[3]'/>"},
    {"", "<resource id='[1]'/><globalTask><resourceRef>[1]</resourceRef><property id='[2]'/></globalTask>"},
    {"<task id='t'/>", "<message id='[1]'/>", "<messageFlow sourceRef='t' targetRef='gone' messageRef='[1]'/>"},
    {"", "<collaboration id='[1]'><documentation>x</documentation></collaboration>"},
    // What is referred to from several places, or over several steps.
    {"<task><resourceRef>r</resourceRef></task>",
     "<globalTask><resourceRef>r</resourceRef></globalTask><resource id='r' name='[1]' type='[2]'/>"},
    {"<dataObject id='d'><categoryValueRef>k</categoryValueRef></dataObject><dataObjectReference dataObjectRef='d'/>",
     "<category name='[1]'><documentation>[2]</documentation><categoryValue id='k' value='[3]'><documentation>[4]"
     "</documentation></categoryValue></category>"},
    {"<task><eventDefinitionRef>d</eventDefinitionRef></task>",
     "<timerEventDefinition id='d'><timeDate>[1]</timeDate></timerEventDefinition>"},
    {"<sequenceFlow sourceRef='host' targetRef='host' dataStoreRef='d'/>", "<dataStore id='d' capacity='[1]'/>"},
    // Parts of activities and processes.
    {"<property name='[1]' itemSubjectRef='[2]'/><laneSet name='[3]'><lane><documentation>[4]</documentation></lane>"
     "<documentation>[5]</documentation></laneSet>"},
    {"<task><property id='[1]'/><ioSpecification><dataInput name='[2]' itemSubjectRef='[3]'/><dataOutput name='[4]'>"
     "<documentation>[5]</documentation></dataOutput></ioSpecification></task>"},
    {"<task><multiInstanceLoopCharacteristics><inputDataItem name='[1]'/><outputDataItem id='[2]'/>"
     "<completionCondition>[3]</completionCondition></multiInstanceLoopCharacteristics></task>"},
    {"<task><potentialOwner><resourceAssignmentExpression><formalExpression language='[1]'>[2]</formalExpression>"
     "</resourceAssignmentExpression></potentialOwner></task>"},
    {"<dataObject id='d' name='[1]'/><dataObjectReference dataObjectRef='d' name='[2]'/><task><dataInputAssociation>"
     "<sourceRef>d</sourceRef><documentation>[3]</documentation><assignment><from>[4]</from><to>[5]</to></assignment>"
     "</dataInputAssociation></task>"},
    {"<startEvent><dataOutput name='[1]'/></startEvent><transaction triggeredByEvent='true' name='[2]'/>"},
    {"<exclusiveGateway id='g'/><textAnnotation id='t'/><association name='[1]' associationDirection='[2]' "
     "sourceRef='g' targetRef='t'><documentation>[3]</documentation></association>"},
    {"<task isForCompensation='[1]' attachedToRef='[5]' sourceRef='[6]'/><startEvent parallelMultiple='[2]'/>[3]<task> "
     "[4] &amp; more [7]</task>"},
    {"", "", "<documentation>[1]</documentation><textAnnotation><text>[2]</text></textAnnotation>"},
};

void expectAllKept(const Snippet& snippet) {
    const std::string text = std::string(snippet.definitions) + "<process id='p'><task id='host'/>" + snippet.process +
                             "</process><collaboration id='c'><participant id='P' processRef='p'/>" +
                             snippet.collaboration + "</collaboration>";
    BpmnDesk desk;
    desk.readDefinitions(text);
    const std::string everything = desk.everything();
    for (std::size_t at = text.find('['); at != std::string::npos; at = text.find('[', at + 1)) {
        const std::string mark = text.substr(at, text.find(']', at) + 1 - at);
        EXPECT_NE(everything.find(mark), std::string::npos) << mark << " of " << text << "\n" << everything;
    }
}

TEST(BpmnKept, WhateverIsSaidOutsideOfObjects) {
    for (const Snippet& snippet : kSnippets) expectAllKept(snippet);
}

TEST(BpmnKept, WhateverElementsOfAllKindsSay) {
    std::istringstream types(
        "userTask receiveTask callActivity subProcess transaction adHocSubProcess startEvent endEvent exclusiveGateway "
        "complexGateway dataObject dataStoreReference eventBasedGateway intermediateThrowEvent intermediateCatchEvent "
        "textAnnotation group boundaryEvent");
    for (std::string type; types >> type;) {
        const std::string process = "<" + type +
                                    " id='x' name='[1]' attachedToRef='host' unheardOf='[2]'><documentation>"
                                    "[3]</documentation><auditing id='[4]'/></" +
                                    type + ">";
        expectAllKept({process.c_str()});
    }
}

}  // namespace
