// SPDX-License-Identifier: Apache-2.0
#include "interchange/LibraryReader.h"

#include <algorithm>

#include "interchange/InstanceValues.h"
#include "interchange/Places.h"

namespace qor::interchange {
namespace {

enum RootKey { kFormat, kName, kTexts, kFirstPart };
constexpr std::array kRootKeys = {Key{"format", Shape::Text, true}, Key{"name", Shape::Text, true},
                                  Key{"texts", Shape::Mapping}, Key{kParts[0].key, Shape::Mapping},
                                  Key{kParts[1].key, Shape::Mapping}};

constexpr std::array kPartKeys = {Key{"name"},
                                  Key{"texts", Shape::Mapping},
                                  Key{"record_classes", Shape::List},
                                  Key{"classes", Shape::List},
                                  Key{"relation_classes", Shape::List},
                                  Key{"unmoved_relation_class"},
                                  Key{"model_types", Shape::List}};

constexpr std::array kClassKeys = {Key{"name", Shape::Text, true}, Key{"extends", Shape::Reference},
                                   Key{"abstract", Shape::Flag},   Key{"attributes", Shape::List},
                                   Key{"values", Shape::Values},   Key{kClassTexts[0].key},
                                   Key{kClassTexts[1].key}};

enum RelationClassKey { kRelationName, kFrom, kTo, kRelationAttributes, kRelationValues };
constexpr std::array kRelationClassKeys = {Key{"name", Shape::Text, true}, Key{"from", Shape::Reference, true},
                                           Key{"to", Shape::Reference, true}, Key{"attributes", Shape::List},
                                           Key{"values", Shape::Values}};

enum ModelTypeKey { kTypeName, kTypeClasses };
constexpr std::array kModelTypeKeys = {Key{"name", Shape::Text, true}, Key{"classes", Shape::List}};

template <std::size_t... I>
constexpr auto libraryTextKeys(std::index_sequence<I...>) {
    return std::array{Key{kLibraryTexts[I].key}...};
}
constexpr auto kLibraryTextKeys = libraryTextKeys(std::make_index_sequence<kLibraryTexts.size()>());

}  // namespace

void LibraryReader::read(NodeId root, QorIdentifier& library) {
    make(root, library);
    if (_building.reading.findings.hasErrors()) _keywordTexts.reportSyntaxErrors(_building.reading);
}

void LibraryReader::make(NodeId root, QorIdentifier& library) {
    const Fields fields(_building.reading, root, "a library", kRootKeys);
    TextFields texts;
    readTexts(fields[kTexts], texts);
    for (std::size_t p = 0; p < kParts.size(); ++p) {
        _parts[p].part = kParts[p].part;
        if (!fields.has(kFirstPart + p)) continue;
        _parts[p].fields.emplace(_building.reading, fields[kFirstPart + p],
                                 concat({"the part ", inQuotes(kParts[p].key)}), kPartKeys);
        readTexts((*_parts[p].fields)[kPartTexts], _parts[p].texts);
    }
    if (!makeLibrary(root, fields.text(kName), fields[kName])) return;
    library = _library;

    for (std::size_t p = 0; p < kParts.size(); ++p) declareClasses(p);
    for (const Class& cls : _classes) rememberRules(cls);
    for (Class& cls : _classes) resolveSuperclass(cls);
    makeClasses();
    if (!isOfBearableSize()) {
        _building.error(root, "the classes have too many attributes and classes above them");
        return;
    }
    for (const Class& cls : _classes) makeAttributes(cls.id, cls.fields[kAttributes], cls.part);
    for (std::size_t p = 0; p < kParts.size(); ++p) makeRelationClasses(p);
    for (const Part& part : _parts) setUnmovedRelationClass(part);
    for (const Class& cls : _classes) setClassValues(cls);
    for (std::size_t p = 0; p < kParts.size(); ++p) makeModelTypes(p);

    setTexts(_library, texts);
    for (const Part& part : _parts) setTexts(part.id, part.texts);
    if (_tree.breaksOff()) return;
    for (const auto& [owner, expression] : _defaultExpressions) warnOfUnknownAttributes(_building, owner, expression);
}

void LibraryReader::readTexts(NodeId texts, TextFields& fields) {
    if (texts == kNoNode) return;
    fields.emplace(_building.reading, texts, "the texts of a library", kLibraryTextKeys);
    for (std::size_t i = 0; i < kLibraryTexts.size(); ++i)
        if (fields->has(i)) _keywordTexts.add((*fields)[i], std::string(kLibraryTexts[i].key));
}

bool LibraryReader::makeLibrary(NodeId root, std::string_view name, NodeId nameNode) {
    const auto partName = [this](std::size_t p) {
        return _parts[p].fields ? _parts[p].fields->text(kPartName) : std::string_view{};
    };
    QorBuildResult made = _building.builder.addApplicationLibrary(name, partName(0), partName(1));
    if (!made.ok() && nameNode != kNoNode) {
        if (made.error == QorBuildError::NameRefused)
            for (const Part& part : _parts)
                if (part.fields && part.fields->text(kPartName).size() > name.size())
                    nameNode = (*part.fields)[kPartName];
        _building.error(nameNode, _building.whyNotMade(made, name));
    }
    for (int tries = 0; !made.ok() && tries < 100; ++tries)
        made = _building.builder.addApplicationLibrary(_building.reading.findings.spareName(name), {}, {});
    if (!made.ok()) return false;
    _library = made.id;
    _building.wrote(_library, root);
    for (Part& part : _parts) part.id = _building.builder.libraryPart(_library, part.part);
    return true;
}

void LibraryReader::declareClasses(std::size_t part) {
    const auto& fields = _parts[part].fields;
    if (!fields) return;
    forEachItem(_tree, (*fields)[kRecordClasses], [&](NodeId node) { declareClass(part, node, true); });
    forEachItem(_tree, (*fields)[kClasses], [&](NodeId node) { declareClass(part, node, false); });
}

void LibraryReader::declareClass(std::size_t part, NodeId node, bool isRecord) {
    Fields fields(_building.reading, node, isRecord ? "a record class" : "a class", kClassKeys);
    if (isRecord)
        for (const std::size_t key : {std::size_t{kExtends}, std::size_t{kAbstract}, std::size_t{kFirstClassText},
                                      std::size_t{kFirstClassText} + 1})
            if (fields.has(key))
                _building.error(fields[key], concat({"a record class has no key ", inQuotes(kClassKeys[key].name)}));
    const auto index = static_cast<std::uint32_t>(_classes.size());
    Class cls{node,  static_cast<std::uint8_t>(part), isRecord, State::Written, false, 0, kNoClass, QorNoIdentifier,
              fields};
    _classes.push_back(cls);
    if (fields.text(kClassName).empty()) return;
    _parts[part].classes.try_emplace(fields.text(kClassName), index);
    _classNames.push_back(fields.text(kClassName));
}

void LibraryReader::rememberRules(const Class& cls) {
    if (cls.isRecord || cls.fields.flag(kAbstract)) return;
    const std::string_view name = cls.fields.text(kClassName);
    for (std::size_t i = 0; i < kClassTexts.size(); ++i) {
        if (!kClassTexts[i].isKeywordText || !cls.fields.has(kFirstClassText + i)) continue;
        const QorIdentifier attribute = kClassTexts[i].attribute(_parts[cls.part].part);
        _keywordTexts.add(cls.fields[kFirstClassText + i],
                          concat({_building.reader.nameOf(attribute), name.empty() ? "" : " of class ",
                                  name.empty() ? std::string() : inQuotes(name)}));
    }
}

void LibraryReader::resolveSuperclass(Class& cls) {
    if (cls.isRecord || !cls.fields.has(kExtends)) return;
    cls.superclass = resolveClass(cls.fields[kExtends], cls.part, "the class to extend", false);
    if (cls.superclass == kNoClass) cls.doubtful = true;
}

// The order of the file is kept within each part as far as classes that extend others allow it, so that what was
// written from a repository comes to stand in the same order again.
void LibraryReader::makeClasses() {
    const auto total = static_cast<std::uint32_t>(_classes.size());
    const auto isOfFirstPart = [](const Class& cls) { return cls.part == 0; };
    const auto firstPart = static_cast<std::uint32_t>(
        std::partition_point(_classes.begin(), _classes.end(), isOfFirstPart) - _classes.begin());
    std::array<std::uint32_t, kParts.size()> next = {0, firstPart};
    const std::array<std::uint32_t, kParts.size()> end = {firstPart, total};
    const auto isReady = [this](const Class& cls) {
        return cls.superclass == kNoClass || _classes[cls.superclass].state == State::Made;
    };
    while (next != end) {
        const auto before = next;
        for (std::size_t p = 0; p < next.size(); ++p)
            while (next[p] != end[p] && (_classes[next[p]].state == State::Made || isReady(_classes[next[p]])))
                makeWithAncestors(next[p]++);
        if (next != before) continue;
        const std::size_t blocked = next[0] != end[0] ? 0 : 1;
        makeWithAncestors(next[blocked]++);
    }
}

// Along the chain upwards by a loop: a file may hold chains longer than the stack is deep.
void LibraryReader::makeWithAncestors(std::uint32_t index) {
    std::vector<std::uint32_t> chain;
    for (; index != kNoClass && _classes[index].state == State::Written; index = _classes[index].superclass) {
        _classes[index].state = State::InHand;
        chain.push_back(index);
    }
    if (index != kNoClass && _classes[index].state == State::InHand) {
        reportCircle(chain, index);
        _classes[chain.back()].doubtful = true;
        index = kNoClass;
    }
    for (; !chain.empty(); chain.pop_back()) {
        makeClass(_classes[chain.back()], index);
        index = chain.back();
    }
}

void LibraryReader::reportCircle(const std::vector<std::uint32_t>& chain, std::uint32_t closing) {
    constexpr int kShown = 6;
    const auto name = [this](std::uint32_t index) { return inQuotes(_classes[index].fields.text(kClassName)); };
    std::string way = name(closing);
    auto step = std::next(std::find(chain.begin(), chain.end(), closing));
    for (int shown = 1; step != chain.end() && shown < kShown; ++step, ++shown)
        way += concat({" extends ", name(*step)});
    if (step != chain.end()) way += " extends \xE2\x80\xA6";
    _building.error(_classes[closing].fields[kExtends],
                    concat({"a class cannot extend itself: ", way, " extends ", name(closing)}));
}

void LibraryReader::makeClass(Class& cls, std::uint32_t superclass) {
    const std::string_view name = cls.fields.text(kClassName);
    const QorIdentifier part = _parts[cls.part].id;
    QorIdentifier above = QorNoIdentifier;
    if (superclass != kNoClass) {
        above = _classes[superclass].id;
        cls.doubtful = cls.doubtful || _classes[superclass].doubtful;
        cls.depth = static_cast<std::uint16_t>(_classes[superclass].depth + 1);
    }
    if (cls.depth > kMostClassesAbove) {
        _building.error(cls.fields[kExtends],
                        concat({"more than ", std::to_string(kMostClassesAbove), " classes above each other"}));
        above = QorNoIdentifier;
        cls.depth = 0;
        superclass = kNoClass;
    }
    cls.superclass = superclass;
    const auto add = [&](std::string_view as) {
        return cls.isRecord ? _building.builder.addRecordClass(part, as)
                            : _building.builder.addClass(part, as, above, cls.fields.flag(kAbstract));
    };
    QorBuildResult made = add(name);
    if (!made.ok()) {
        if (cls.fields.has(kClassName)) _building.error(cls.fields[kClassName], _building.whyNotMade(made, name));
        made = add(_building.reading.findings.spareName(name));
    }
    cls.id = made.id;
    cls.doubtful = cls.doubtful || !cls.fields.complete();
    cls.state = State::Made;
    if (made.ok()) _building.wrote(made.id, cls.node);
}

bool LibraryReader::isOfBearableSize() const {
    std::uint64_t size = 0;
    for (const Class& cls : _classes)
        if (cls.fields.has(kAttributes)) size += std::uint64_t{cls.depth} * _tree.childCount(cls.fields[kAttributes]);
    return size <= kMostAttributesTimesClassesAbove;
}

void LibraryReader::makeRelationClasses(std::size_t part) {
    if (!_parts[part].fields) return;
    forEachItem(_tree, (*_parts[part].fields)[kRelationClasses], [&](NodeId node) { makeRelationClass(part, node); });
}

void LibraryReader::makeRelationClass(std::size_t part, NodeId node) {
    const Fields fields(_building.reading, node, "a relation class", kRelationClassKeys);
    const auto end = [&](std::size_t key) {
        return fields.has(key) ? classIdAt(fields[key], part, concat({inQuotes(kRelationClassKeys[key].name)}), false)
                               : QorNoIdentifier;
    };
    const QorIdentifier from = end(kFrom);
    const QorIdentifier to = end(kTo);
    const bool doubtful = from == QorNoIdentifier || to == QorNoIdentifier;
    // Any class will do at an end that was already complained about.
    const QorIdentifier anyClass = _classes.empty() ? QorNoIdentifier : _classes.back().id;
    const auto add = [&](std::string_view name) {
        return _building.builder.addRelationClass(_parts[part].id, name, from == QorNoIdentifier ? anyClass : from,
                                                  to == QorNoIdentifier ? anyClass : to);
    };
    QorBuildResult made = add(fields.text(kRelationName));
    if (!made.ok()) {
        if (fields.has(kRelationName) && !(doubtful && made.error == QorBuildError::UnknownIdentifier))
            _building.error(fields[kRelationName], _building.whyNotMade(made, fields.text(kRelationName)));
        made = add(_building.reading.findings.spareName(fields.text(kRelationName)));
    }
    if (!made.ok()) return;
    _building.wrote(made.id, node);
    makeAttributes(made.id, fields[kRelationAttributes], part);
    setValues(made.id, fields[kRelationValues], doubtful);
}

void LibraryReader::setUnmovedRelationClass(const Part& part) {
    if (!part.fields || !part.fields->has(kUnmoved)) return;
    const std::string_view name = part.fields->text(kUnmoved);
    const NodeId node = (*part.fields)[kUnmoved];
    if (_building.builder.setUnmovedRelationClass(part.id, name).ok()) return;
    std::vector<std::string_view> names;
    for (const QorRelationClassInfo& known : _building.reader.relationClassesOf(part.id)) names.push_back(known.name);
    _building.missing(node, concat({"this part has no relation class ", inQuotes(name),
                                    _building.reading.guesser.hint(name, names)}));
}

void LibraryReader::setClassValues(const Class& cls) {
    if (cls.id == QorNoIdentifier) return;
    if (!cls.isRecord) {
        for (std::size_t i = 0; i < kClassTexts.size(); ++i) {
            if (!cls.fields.has(kFirstClassText + i)) continue;
            const NodeId node = cls.fields[kFirstClassText + i];
            const QorIdentifier attribute = kClassTexts[i].attribute(_parts[cls.part].part);
            const QorBuildResult set = _building.builder.setClassValue(cls.id, attribute, _tree.text(node));
            if (!set.ok()) _building.error(node, _building.whyNotTaken(set, attribute, _tree.text(node)));
            _building.reading.findings.places().addText(cls.id, attribute, textPlaceOf(_tree, node));
            if (kClassTexts[i].isKeywordText && cls.fields.flag(kAbstract))
                _building.warn(node, "these rules are not read: the class is abstract and has no objects");
        }
    }
    setValues(cls.id, cls.fields[kValues], cls.doubtful);
}

void LibraryReader::setValues(QorIdentifier owner, NodeId values, bool doubtful) {
    forEachPair(_tree, values, [&](NodeId key, NodeId value) {
        const std::string_view name = _tree.text(key);
        const Building::Attribute& found = _building.findAttribute(owner, name);
        const QorIdentifier attribute = found.id;
        if (attribute == QorNoIdentifier) {
            if (!doubtful && !_failedAttributes.contains(name))
                _building.missing(key, _building.unknownAttribute(owner, name));
            return;
        }
        for (const ClassTextRow& row : kClassTexts)
            if (attribute == row.businessProcess || attribute == row.workingEnvironment) {
                _building.error(key, concat({"this value stands under the key ", inQuotes(row.key), " of the class"}));
                return;
            }
        // The repository keeps such a value, but whoever writes one may well mean a default. Attributes that serve the
        // system have both on purpose.
        if (!name.starts_with("__") && found.level == QorAttributeLevel::Instance)
            _building.warn(key, concat({inQuotes(name),
                                        " has a value for each object; this one is the class's own, and no "
                                        "default for its objects"}));
        if (found.type == QorCoreAttributeType::Expression && !checkExpression(_building, value)) return;
        const auto text = _building.valueText(value, attribute);
        if (!text) return;
        const QorBuildResult set = _building.builder.setClassValue(owner, attribute, *text);
        if (!set.ok()) _building.error(value, _building.whyNotTaken(set, attribute, *text));
        _building.reading.findings.places().addText(owner, attribute, textPlaceOf(_tree, value));
    });
}

void LibraryReader::setTexts(QorIdentifier library, const TextFields& texts) {
    if (!texts) return;
    for (std::size_t i = 0; i < kLibraryTexts.size(); ++i) {
        if (!texts->has(i)) continue;
        const QorIdentifier attribute = kLibraryTexts[i].attribute;
        const QorBuildResult set = _building.builder.setLibraryValue(library, attribute, texts->text(i));
        if (!set.ok()) _building.error((*texts)[i], _building.whyNotTaken(set, attribute, texts->text(i)));
        _building.reading.findings.places().addText(library, attribute, textPlaceOf(_tree, (*texts)[i]));
    }
}

void LibraryReader::makeModelTypes(std::size_t part) {
    if (!_parts[part].fields) return;
    forEachItem(_tree, (*_parts[part].fields)[kModelTypes], [&](NodeId node) {
        const Fields fields(_building.reading, node, "a model type", kModelTypeKeys);
        std::vector<QorIdentifier> classes;
        forEachItem(_tree, fields[kTypeClasses], [&](NodeId item) {
            const QorIdentifier cls = classIdAt(item, part, "a class of the model type", false);
            if (cls != QorNoIdentifier) classes.push_back(cls);
        });
        if (!fields.has(kTypeName)) return;
        const QorBuildResult made = _building.builder.addModelType(_parts[part].id, fields.text(kTypeName), classes);
        if (made.ok())
            _building.wrote(made.id, node);
        else
            _building.error(fields[kTypeName], _building.whyNotMade(made, fields.text(kTypeName)));
    });
}

std::uint32_t LibraryReader::findClass(const Reference& reference, std::size_t ownPart) const {
    for (std::size_t i = 0; i < _parts.size(); ++i) {
        const std::size_t part =
            reference.part >= 0 ? static_cast<std::size_t>(reference.part) : (ownPart + i) % _parts.size();
        const auto found = _parts[part].classes.find(reference.name);
        if (found != _parts[part].classes.end()) return found->second;
    }
    return kNoClass;
}

std::uint32_t LibraryReader::resolveClass(NodeId node, std::size_t ownPart, std::string_view what, bool wantRecord) {
    const auto reference = readReference(_building.reading, node, what);
    if (!reference) return kNoClass;
    const std::uint32_t found = findClass(*reference, ownPart);
    if (found == kNoClass) {
        _building.missing(reference->node, concat({what, ": there is no class ", inQuotes(reference->name),
                                                   reference->part >= 0 ? " in that part" : "",
                                                   _building.reading.guesser.hint(reference->name, _classNames)}));
        return kNoClass;
    }
    if (_classes[found].isRecord == wantRecord) return found;
    _building.error(reference->node, concat({what, ": ", inQuotes(reference->name),
                                             wantRecord ? " is no record class" : " is a record class"}));
    return kNoClass;
}

QorIdentifier LibraryReader::classIdAt(NodeId node, std::size_t ownPart, std::string_view what, bool wantRecord) {
    const std::uint32_t found = resolveClass(node, ownPart, what, wantRecord);
    return found == kNoClass ? QorNoIdentifier : _classes[found].id;
}

}  // namespace qor::interchange
