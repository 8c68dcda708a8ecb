// SPDX-License-Identifier: Apache-2.0
#include "interchange/Wording.h"
#include "interchange/bpmn/BpmnClasses.h"
#include "interchange/bpmn/BpmnMaker.h"
#include "interchange/bpmn/BpmnValues.h"
#include "platform/QorKexParser.h"

namespace qor::interchange::bpmn {

namespace {

constexpr std::size_t kMaxNameBytes = 1000;  // the whole name is kept as the label

}  // namespace

Objects::Objects(const Document& document, const Links& links, const Models& models, Findings& findings, Target target)
    : _document(document),
      _links(links),
      _models(models),
      _findings(findings),
      _target(target),
      _objects(document.nodes.size(), QorNoIdentifier),
      _classes(document.nodes.size(), ObjectClass::None) {
    for (NodeIndex node = 0; node < document.size(); ++node)
        if (const QorIdentifier model = models.modelOf(node); model > 0) make(node, model);
}

void Objects::make(NodeIndex node, QorIdentifier model) {
    const Node& it = _document[node];
    const ObjectClass cls = classFor(_document, _links, node);
    if (cls == ObjectClass::None) return;

    const NodeIndex item = _document.find(_document.valueOf(node, Slot::DataRef));
    std::string_view name = it.name;
    if (name.empty() && item != kNoNode) name = _document[item].name;
    std::string nameGiven = folded(name, kMaxNameBytes);
    if (nameGiven.empty()) nameGiven = folded(it.id, kMaxNameBytes);
    if (nameGiven.empty()) nameGiven = nameOf(cls);

    const QorIdentifier object = makeNamed(model, cls, nameGiven, nameGiven);
    _objects[static_cast<std::size_t>(node)] = object;
    _classes[static_cast<std::size_t>(node)] = cls;
    _target.sink.madeThing(object, it.place.line, it.place.column, it.id);
    setValues(node, nameGiven);
}

/// The repository tells when a name is taken within the class; then numbers are tried from the last one given.
QorIdentifier Objects::makeNamed(QorIdentifier model, ObjectClass cls, std::string_view name, std::string& nameGiven) {
    const std::string base(name);
    const QorIdentifier classId = _target.library.classOf(cls);
    QorBuildResult made = _target.builder.addObject(model, classId, base);
    if (made.error == QorBuildError::DuplicateName) {
        std::uint32_t& number =
            _lastNumbers.try_emplace(concat({std::to_string(model), " ", std::to_string(classId), " ", base}), 1)
                .first->second;
        while (made.error == QorBuildError::DuplicateName) {
            nameGiven = concat({base, " (", std::to_string(++number), ")"});
            made = _target.builder.addObject(model, classId, nameGiven);
        }
    }
    if (!made.ok()) throw RepositoryFull();
    return made.id;
}

void Objects::setValues(NodeIndex node, std::string_view nameGiven) {
    const Node& it = _document[node];
    const ObjectClass cls = classOf(node);
    if (it.name != nameGiven) _values.add(Attribute::Label, it.name);
    if (cls != it.row->cls) _values.add(Attribute::BpmnElement, it.row->element);
    _values.add(Attribute::Bounds, it.bounds);
    _values.add(Attribute::Lane, _links.lanesOf(node));
    std::string_view trigger;
    if (isEvent(it.row->family)) {
        const std::vector<NodeIndex> triggers = _links.triggersOf(node);
        trigger = triggerWord(_document, node, triggers);
        if (!triggers.empty()) _values.add(Attribute::Trigger, trigger);
        _values.add(Attribute::TriggerDetail, triggerDetail(_document, _links, node, triggers));
    }
    setCalled(node, _document.valueOf(node, Slot::CalledElement));
    _values.addAllOf(_document, _links, node);
    for (const std::string_view flag : flagsNotShown(it, cls, trigger)) _values.addFurther(flag, "true");
    addItem(node, _document.find(_document.valueOf(node, Slot::DataRef)));
    _values.addCarried(_document, _links.carriedBy(node));

    _values.set(
        _target.builder, objectOf(node),
        [&](Attribute attribute) { return _target.library.attributeOf(cls, attribute); }, _findings, it);
}

/// What a data object or store says of itself, at the first reference that draws it.
void Objects::addItem(NodeIndex reference, NodeIndex item) {
    if (item == kNoNode || _links.meantBy(item) != reference) return;
    const Node& it = _document[item];
    const std::string_view name = _document[reference].name;
    if (!it.name.empty() && !name.empty() && it.name != name) _values.addFurther(it.row->element, it.name);
    _values.addAllOf(_document, _links, item);
}

/// A process of this file is referred to through its model; anything else keeps its name only.
void Objects::setCalled(NodeIndex node, std::string_view reference) {
    if (reference.empty()) return;
    _values.add(Attribute::CalledElement, reference);
    const NodeIndex called = _document.find(reference);
    if (called == kNoNode || _document[called].row->role != Role::Process) return;
    if (_target.library.attributeOf(classOf(node), Attribute::CalledProcess) < 1) return;
    const std::string_view model = _models.nameOf(_models.modelOf(called));
    _values.add(Attribute::CalledProcess, concat({"MODEL ", QorKexParser::GetKexTextOfStrValue(model).view(), " type: ",
                                                  QorKexParser::GetKexTextOfStrValue(kModelTypeName).view()}));
}

}  // namespace qor::interchange::bpmn
