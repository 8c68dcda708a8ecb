// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnReader.h"

#include "interchange/bpmn/BpmnCollector.h"
#include "interchange/bpmn/BpmnDocument.h"
#include "interchange/bpmn/BpmnFindings.h"
#include "interchange/bpmn/BpmnLibrary.h"
#include "interchange/bpmn/BpmnLinks.h"
#include "interchange/bpmn/BpmnMaker.h"
#include "interchange/bpmn/BpmnXml.h"

namespace qor::interchange {

namespace bpmn {

namespace {

bool collect(ByteSource& source, Document& document, Findings& findings) {
    Collector collector(document, findings);
    const bool isWhole = readXml(source, collector);
    collector.finish();
    return isWhole && !findings.hasErrors();
}

void make(Document& document, const std::string& fileName, Findings& findings, Target target) {
    const Links links(document, findings);
    const Models models(document, links, fileName, target);
    if (models.empty()) findings.warn(FindingKind::NotUnderstood, {}, "the file holds no process and no collaboration");
    target.builder.reserve(document.nodes.size(), 2 * document.nodes.size());
    const Objects objects(document, links, models, findings, target);
    makeRelations(document, links, models, objects, findings, target);
    target.builder.layOut();
}

}  // namespace

}  // namespace bpmn

void readBpmn(ByteSource& source, const std::string& fileName, QorIdentifier library, QorRepositoryBuilder& builder,
              const QorRepositoryReader& reader, ImportSink& sink) {
    bpmn::Findings findings;
    bpmn::Document document;
    bpmn::Library classes;
    if (const std::string missing = classes.bind(reader, library); !missing.empty())
        findings.error({}, missing);
    else if (bpmn::collect(source, document, findings)) {
        try {
            bpmn::make(document, fileName, findings, {classes, builder, sink});
        } catch (const bpmn::RepositoryFull&) {
            findings.error({}, "the repository takes no more: all identifiers are in use");
        }
    }
    findings.deliver(sink);
}

}  // namespace qor::interchange
