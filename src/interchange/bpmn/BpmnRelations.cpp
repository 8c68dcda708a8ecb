// SPDX-License-Identifier: Apache-2.0
#include <map>

#include "interchange/Wording.h"
#include "interchange/bpmn/BpmnMaker.h"
#include "interchange/bpmn/BpmnValues.h"

namespace qor::interchange::bpmn {

namespace {

class RelationMaker {
public:
    RelationMaker(const Document& document, const Links& links, const Models& models, const Objects& objects,
                  Findings& findings, Target target)
        : _document(document),
          _links(links),
          _models(models),
          _objects(objects),
          _findings(findings),
          _target(target) {}

    void run() {
        for (NodeIndex node = 0; node < _document.size(); ++node) contain(node);
        for (const auto& [participant, process] : _links.pools()) containInPool(participant, process);
        for (NodeIndex node = 0; node < _document.size(); ++node) flow(node);
        for (const auto& [node, text] : _associated) setAssociated(node, text);
    }

private:
    struct Ends {
        NodeIndex source = kNoNode;
        NodeIndex target = kNoNode;
    };

    void contain(NodeIndex node) {
        const Node& it = _document[node];
        if (it.parent == kNoNode || !isObject(node) || !isObject(it.parent)) return;
        (void)add(FlowClass::Contains, {it.parent, node}, it, {});
    }

    void containInPool(NodeIndex participant, NodeIndex process) {
        if (isObject(participant) && isObject(process))
            (void)add(FlowClass::Contains, {participant, process}, _document[participant], {});
    }

    void flow(NodeIndex node) {
        const Node& it = _document[node];
        if (it.row->family == Family::BoundaryEvent && isObject(node)) return attach(node);
        if (!isRelation(it.row->role)) return;
        _isMade = false;
        relate(node);
        if (!_isMade) tellWhatGoesWith(node);
    }

    void relate(NodeIndex node) {
        switch (_document[node].row->role) {
            case Role::SequenceFlow:
                return makeFlow(FlowClass::SequenceFlow, node);
            case Role::MessageFlow:
                return makeFlow(FlowClass::MessageFlow, node);
            case Role::Association:
                return associate(node);
            case Role::DataInputAssociation:
                return takeData(node);
            default:
                return giveData(node);
        }
    }

    /// That the relation itself is left out was told.
    void tellWhatGoesWith(NodeIndex node) {
        for (const NodeIndex carried : _links.carriedBy(node)) {
            const Node& it = _document[carried];
            _findings.leftOut(it.row->element, it.id.empty() ? it.name : it.id, it.place);
        }
    }

    void attach(NodeIndex node) {
        const NodeIndex host =
            endOf(node, _document.valueOf(node, Slot::AttachedTo), "activity that it is attached to");
        if (host != kNoNode && isObjectOrTell(node, host))
            (void)add(FlowClass::AttachedTo, {node, host}, _document[node], {});
    }

    void makeFlow(FlowClass cls, NodeIndex node) {
        const Ends ends = endsOf(node);
        if (ends.source == kNoNode || ends.target == kNoNode) return;
        if (!isObjectOrTell(node, ends.source) || !isObjectOrTell(node, ends.target)) return;
        addWithValues(cls, ends, node);
    }

    /// Gateways and flows cannot be ends of an association: the limit on a gateway counts its relations of all classes,
    /// and a flow is a relation itself. The element at the other end then names what it is associated with.
    void associate(NodeIndex node) {
        const Ends ends = endsOf(node);
        if (ends.source == kNoNode || ends.target == kNoNode) return;
        const bool sourceFits = canBeAssociated(ends.source);
        const bool targetFits = canBeAssociated(ends.target);
        if (sourceFits && targetFits) return addWithValues(FlowClass::Association, ends, node);
        if (sourceFits || targetFits) {
            const NodeIndex there = sourceFits ? ends.target : ends.source;
            std::string& text = _associated[sourceFits ? ends.source : ends.target];
            text += (text.empty() ? "" : "\n") + nameFor(there) + detailsFor(node);
            return;
        }
        tellUnfit(node, concat({wordsFor(_document[ends.source]), " and ", wordsFor(_document[ends.target]),
                                " cannot be associated"}));
    }

    /// Into the activity or event that the association stands in.
    void takeData(NodeIndex node) {
        bool hasSource = false;
        _document.forEachValue(node, [&](const Value& value) {
            if (value.slot != Slot::SourceRef) return;
            hasSource = true;
            const NodeIndex source = endOf(node, value.text, "source");
            if (source != kNoNode && isDataOrTell(node, source))
                addWithValues(FlowClass::DataAssociation, {_links.meantBy(source), _document[node].parent}, node);
        });
        if (!hasSource) tellUnfit(node, "it names no source, so no data");
    }

    void giveData(NodeIndex node) {
        const NodeIndex target = endOf(node, _document.valueOf(node, Slot::TargetRef), "target");
        if (target != kNoNode && isDataOrTell(node, target))
            addWithValues(FlowClass::DataAssociation, {_document[node].parent, _links.meantBy(target)}, node);
    }

    Ends endsOf(NodeIndex node) {
        Ends ends{endOf(node, _document.valueOf(node, Slot::SourceRef), "source"),
                  endOf(node, _document.valueOf(node, Slot::TargetRef), "target")};
        if (ends.source == kNoNode || ends.target == kNoNode) return ends;
        return {_links.meantBy(ends.source), _links.meantBy(ends.target)};
    }

    /// An activity may well be done again; anything else has no reason to lead to itself.
    void tellLoop(FlowClass cls, NodeIndex node, NodeIndex end) {
        const Family family = _document[end].row->family;
        const bool isActivity = family == Family::Activity || family == Family::SubProcess || family == Family::AdHoc;
        if (cls == FlowClass::SequenceFlow && isActivity) return;
        _findings.warn(FindingKind::SelfFlow, _document[node].place,
                       concat({wordsFor(_document[node]), " leads from ", wordsFor(_document[end]), " to itself"}));
    }

    NodeIndex endOf(NodeIndex node, std::string_view reference, std::string_view which) {
        const NodeIndex end = _document.find(reference);
        if (end != kNoNode) return end;
        _findings.warn(
            FindingKind::Dangling, _document[node].place,
            concat({wordsFor(_document[node]), ": its ", which, " ", reference.empty() ? "" : inQuotes(reference),
                    reference.empty() ? "is not given" : " is not in this file", "; the relation is left out"}));
        return kNoNode;
    }

    bool isObject(NodeIndex node) const { return _objects.objectOf(node) > 0; }

    bool canBeAssociated(NodeIndex node) const {
        return isObject(node) && _document[node].row->family != Family::Gateway;
    }

    bool isObjectOrTell(NodeIndex node, NodeIndex end) {
        if (isObject(end)) return true;
        tellUnfit(node, concat({wordsFor(_document[end]), " cannot be its end"}));
        return false;
    }

    bool isDataOrTell(NodeIndex node, NodeIndex end) {
        const NodeIndex meant = _links.meantBy(end);
        const Role role = _document[meant].row->role;
        if (isObject(meant) && (role == Role::Data || role == Role::DataObjectItem)) return true;
        tellUnfit(node, concat({wordsFor(_document[end]), " is not drawn as data"}));
        return false;
    }

    void tellUnfit(NodeIndex node, std::string_view why) {
        _findings.warn(FindingKind::UnfitEnds, _document[node].place,
                       concat({wordsFor(_document[node]), ": ", why, "; the relation is left out"}));
    }

    [[nodiscard]] std::string nameFor(NodeIndex node) const {
        const Node& it = _document[node];
        return concat({it.row->element, " ", inQuotes(folded(it.name.empty() ? it.id : it.name, kMaxBorrowedBytes))});
    }

    /// What an association without a relation says of itself: " (associationDirection One, documentation ...)".
    [[nodiscard]] std::string detailsFor(NodeIndex node) const {
        std::string details;
        const auto add = [&details](std::string_view key, std::string_view text) {
            details += concat({details.empty() ? " (" : ", ", key, " ", text});
        };
        if (!_document[node].name.empty()) add("name", _document[node].name);
        _document.forEachValue(node, [&](const Value& value) {
            if (value.slot != Slot::SourceRef && value.slot != Slot::TargetRef) add(value.key, value.text);
        });
        return details.empty() ? details : details + ")";
    }

    void addWithValues(FlowClass cls, Ends ends, NodeIndex node) {
        const Node& it = _document[node];
        const QorIdentifier relation = add(cls, ends, it, it.id);
        if (relation < 1) return;
        _isMade = true;
        if (ends.source == ends.target) tellLoop(cls, node, ends.source);
        _values.add(Attribute::Label, it.name);
        if (_links.isDefault(node)) _values.add(Attribute::Default, "yes");
        _values.addAllOf(_document, _links, node);
        _values.addCarried(_document, _links.carriedBy(node));
        _values.set(
            _target.builder, relation, [&](Attribute attribute) { return _target.library.attributeOf(cls, attribute); },
            _findings, it);
    }

    QorIdentifier add(FlowClass cls, Ends ends, const Node& it, std::string_view sourceId) {
        const QorBuildResult made = _target.builder.addRelation(
            _target.library.classOf(cls), _objects.objectOf(ends.source), _objects.objectOf(ends.target));
        if (made.ok()) {
            _target.sink.madeThing(made.id, it.place.line, it.place.column, sourceId);
            return made.id;
        }
        if (made.error == QorBuildError::NoIdentifiersLeft) throw RepositoryFull();
        const std::string why =
            made.error == QorBuildError::ForeignModel
                ? concat({"its ends lie in two models, ", inQuotes(_models.nameOf(_models.modelOf(ends.source))),
                          " and ", inQuotes(_models.nameOf(_models.modelOf(ends.target)))})
                : concat({nameOf(cls), " from ", wordsFor(_document[ends.source]), " to ",
                          wordsFor(_document[ends.target]), " is not possible (", Qor_BuildErrorText(made.error), ")"});
        _findings.warn(FindingKind::UnfitEnds, it.place,
                       concat({wordsFor(it), ": ", why, "; the relation is left out"}));
        return QorNoIdentifier;
    }

    void setAssociated(NodeIndex node, std::string_view text) {
        _values.add(Attribute::AssociatedWith, text);
        const ObjectClass cls = _objects.classOf(node);
        _values.set(
            _target.builder, _objects.objectOf(node),
            [&](Attribute attribute) { return _target.library.attributeOf(cls, attribute); }, _findings,
            _document[node]);
    }

    const Document& _document;
    const Links& _links;
    const Models& _models;
    const Objects& _objects;
    Findings& _findings;
    Target _target;
    Values _values;
    bool _isMade = false;  // the relation of the element in hand
    std::map<NodeIndex, std::string> _associated;
};

}  // namespace

void makeRelations(const Document& document, const Links& links, const Models& models, const Objects& objects,
                   Findings& findings, Target target) {
    RelationMaker(document, links, models, objects, findings, target).run();
}

}  // namespace qor::interchange::bpmn
