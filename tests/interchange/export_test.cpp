// SPDX-License-Identifier: Apache-2.0
// What is written reads back as the same thing, and writing that gives the same bytes.
#include <rapidcheck.h>

#include "interchange/BpmnDesk.h"
#include "interchange/Files.h"
#include "interchange/QorExport.h"
#include "interchange/YamlText.h"
#include "platform/QorAttributeIds.h"

namespace {

using qor::test::Files;
using qor::test::shown;

std::string exportedLibrary(const Files& files, QorIdentifier library) {
    std::ostringstream out;
    const QorExportResult result = Qor_ExportLibrary(files.reader(), library, out);
    return result.ok() ? out.str() : "failed: " + result.problem;
}

std::string exportedModels(const Files& files, const std::vector<QorIdentifier>& models) {
    std::ostringstream out;
    const QorExportResult result = Qor_ExportModels(files.reader(), models, "library.yaml", out);
    return result.ok() ? out.str() : "failed: " + result.problem;
}

/// Everything that the reader tells about a library with its models, with names in place of identifiers.
class Description {
public:
    explicit Description(const QorRepositoryReader& reader) : _reader(reader) {}

    std::string of(QorIdentifier library) {
        put(_reader.nameOf(library));
        texts(library);
        for (const auto which : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment}) {
            const QorIdentifier part = _reader.libraryPart(library, which);
            put(_reader.nameOf(part));
            texts(part);
            // Record classes are written before the others.
            for (const bool records : {true, false})
                for (const QorClassInfo& cls : _reader.classesOf(part))
                    if (cls.isRecordClass == records) describe(cls);
            for (const QorRelationClassInfo& cls : _reader.relationClassesOf(part)) describe(cls);
            put(_reader.unmovedRelationClass(part));
            for (const QorModelTypeInfo& type : _reader.modelTypesOf(library)) {
                if (type.part != part) continue;
                put(type.name);
                std::vector<std::string> visible;
                for (const QorIdentifier cls : _reader.visibleClasses(type.id)) visible.push_back(fullName(cls));
                std::sort(visible.begin(), visible.end());
                for (const std::string& name : visible) put(name);
            }
        }
        // Groups are written with models, in an order of their own.
        std::vector<std::string> ways;
        if (_reader.modelsOf(library).empty()) return _text;
        for (const QorModelGroupInfo& group : _reader.modelGroupsOf(library)) ways.push_back(wayTo(group.id));
        std::sort(ways.begin(), ways.end());
        for (const std::string& way : ways) put(way);
        for (const QorModelInfo& model : _reader.modelsOf(library)) describe(model);
        return _text;
    }

private:
    void put(std::string_view text) { _text += std::to_string(text.size()) + ":" + std::string(text) + "\n"; }
    std::string wayTo(QorIdentifier group) const {
        const QorModelGroupInfo info = _reader.modelGroupInfo(group);
        return group == QorNoIdentifier ? "" : wayTo(info.parent) + " > " + std::string(info.name);
    }
    std::string fullName(QorIdentifier cls) const {
        const bool relation = _reader.kindOf(cls) == QorThingKind::RelationClass;
        const QorIdentifier part = relation ? _reader.relationClassInfo(cls).part : _reader.classInfo(cls).part;
        return std::string(_reader.nameOf(cls)) + " in " + std::string(_reader.nameOf(part));
    }
    void texts(QorIdentifier library) {
        for (const QorIdentifier attribute : {109, 110, 125, 138}) put(_reader.libraryValue(library, attribute));
    }
    void attributes(QorIdentifier owner) {
        for (const QorAttributeInfo& a : _reader.attributesOf(owner)) {
            put(a.name);
            put(std::to_string(static_cast<int>(a.type)) + (a.level == QorAttributeLevel::Class ? "c" : "i") +
                (a.refersToModels ? "m" : "o") + std::to_string(static_cast<int>(a.shownAs)));
            put(a.defaultText);
            for (const std::string_view value : a.enumeration) put(value);
            if (a.target != QorNoIdentifier) put(fullName(a.target));
        }
    }
    void describe(const QorClassInfo& cls) {
        put(cls.name);
        put(cls.isAbstract ? "abstract" : cls.isRecordClass ? "record" : "class");
        if (cls.superclass != QorNoIdentifier) put(fullName(cls.superclass));
        attributes(cls.id);
        for (const QorIdentifier attribute : {47, 48, 194, 195}) put(_reader.classValue(cls.id, attribute));
        for (QorIdentifier owner = cls.id; owner != QorNoIdentifier; owner = _reader.classInfo(owner).superclass)
            for (const QorAttributeInfo& a : _reader.attributesOf(owner)) put(_reader.classValue(cls.id, a.id));
    }
    void describe(const QorRelationClassInfo& cls) {
        put(cls.name);
        put(fullName(cls.fromClass));
        put(fullName(cls.toClass));
        attributes(cls.id);
        for (const QorAttributeInfo& a : _reader.attributesOf(cls.id)) put(_reader.classValue(cls.id, a.id));
    }
    void values(QorIdentifier thing, QorIdentifier cls) {
        for (QorIdentifier owner = cls; owner != QorNoIdentifier; owner = _reader.classInfo(owner).superclass)
            for (const QorAttributeInfo& a : _reader.attributesOf(owner)) {
                put(_reader.hasValue(thing, a.id) ? "own" : "none");
                put(_reader.valueOf(thing, a.id));
                for (const QorIdentifier row : _reader.recordRows(thing, a.id)) values(row, a.target);
            }
        put(_reader.valueOf(thing, QorAttributeId::Graphic));
        put(_reader.valueOf(thing, QorAttributeId::WorkingEnvironmentGraphic));
    }
    void describe(const QorModelInfo& model) {
        put(model.name);
        put(model.version);
        put(wayTo(_reader.groupOfModel(model.id)));
        put(_reader.nameOf(model.modelType));
        for (const QorIdentifier object : _reader.objectsOf(model.id)) {
            put(fullName(_reader.classOfObject(object)));
            put(_reader.nameOf(object));
            values(object, _reader.classOfObject(object));
        }
        for (const QorRelationInfo& relation : _reader.relationsOf(model.id)) {
            put(fullName(relation.relationClass));
            for (const QorIdentifier end : {relation.from, relation.to}) {
                put(fullName(_reader.classOfObject(end)));
                put(_reader.nameOf(end));
            }
            values(relation.id, relation.relationClass);
        }
    }

    const QorRepositoryReader& _reader;
    std::string _text;
};

/// Texts that YAML readers stumble over, put together at random.
rc::Gen<std::string> anyText() {
    const auto character = rc::gen::elementOf(std::string("aB0~ \n\t\r:#-|>'\"\\[]{},&*!%@`\x01\x1B\x7F"));
    const auto piece =
        rc::gen::oneOf(rc::gen::map(character, [](char c) { return std::string(1, c); }),
                       rc::gen::element<std::string>("no", "null", "  ", "\n\n", "\r\n", ": ", " #", "- ", "? ", "\\n",
                                                     "---", "...", "\xC2\x80", "\xC2\x85", "\xC2\xA0", "\xC3\xA4",
                                                     "\xE2\x80\xA8", "\xE2\x80\xA9", "\xEF\xBB\xBF", "\xEF\xBF\xBE",
                                                     "\xF0\x9F\x98\x80", "CARDINALITIES", "max-objects: 1"));
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string>& pieces) {
                            std::string text;
                            for (const std::string& its : pieces) text += its;
                            return text;
                        });
}

/// The same without line breaks and control characters.
rc::Gen<std::string> anyName() {
    return rc::gen::map(anyText(), [](std::string text) {
        for (const char* refused :
             {"\n", "\r", "\t", "\x01", "\x1B", "\x7F", "\xC2\x80", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"})
            for (std::size_t at = text.find(refused); at != std::string::npos; at = text.find(refused))
                text.erase(at, std::string(refused).size());
        return text;
    });
}

/// Makes a library with models by the building interface, with random names, texts and shape. Names that are refused
/// because they are taken are simply left out.
class RandomRepository {
public:
    explicit RandomRepository(Files& files) : _builder(files.platform.builder()), _reader(files.reader()) {}

    QorIdentifier make() {
        const QorBuildResult library = _builder.addApplicationLibrary("L" + *anyName(), *anyName(), *anyName());
        _library = library.id;
        for (const auto which : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
            _parts.push_back(_builder.libraryPart(_library, which));
        for (const QorIdentifier part : {_library, _parts[0], _parts[1]})
            for (const QorIdentifier attribute : {109, 110, 125, 138})
                (void)_builder.setLibraryValue(part, attribute, *anyText());
        for (int i = number(0, 8); i > 0; --i) addClass();
        for (int i = number(0, 12); i > 0 && !_owners.empty(); --i) addAttribute();
        for (int i = number(0, 4); i > 0 && !_classes.empty(); --i) addRelationClass();
        for (const QorIdentifier owner : _owners) setClassValues(owner);
        for (int i = number(0, 2); i > 0; --i)
            (void)_builder.addModelType(*rc::gen::elementOf(_parts), *anyName(), _classes);
        for (const QorIdentifier part : _parts)
            if (number(0, 1) == 0) (void)_builder.setUnmovedRelationClass(part, name());
        for (int i = number(0, 4); i > 0; --i) addGroup();
        for (int i = number(0, 2); i > 0; --i) addModel();
        return _library;
    }

private:
    static int number(int from, int to) { return *rc::gen::inRange(from, to + 1); }
    // Few different names, so that both parts have classes of the same one.
    static std::string name() {
        return number(0, 2) == 0 ? *anyName() : std::string(1, static_cast<char>('A' + number(0, 3)));
    }
    QorIdentifier anyClass() const { return *rc::gen::elementOf(_classes); }

    template <class... Lists>
    static void keep(const QorBuildResult& made, Lists&... lists) {
        if (made.ok()) (lists.push_back(made.id), ...);
    }

    void addClass() {
        const QorIdentifier part = *rc::gen::elementOf(_parts);
        if (number(0, 5) == 0) {
            return keep(_builder.addRecordClass(part, name()), _records, _owners);
        }
        const QorIdentifier above = _classes.empty() || number(0, 2) == 0 ? QorNoIdentifier : anyClass();
        keep(_builder.addClass(part, name(), above, number(0, 3) == 0), _classes, _owners);
    }

    void addAttribute() {
        using Type = QorCoreAttributeType;
        QorAttributeSpec spec;
        const std::string attributeName = name();
        const std::string first = *anyText();
        const std::array<std::string_view, 2> values = {first, "other"};
        spec.name = attributeName;
        spec.type = static_cast<Type>(number(0, 15));
        spec.level = number(0, 1) == 0 ? QorAttributeLevel::Instance : QorAttributeLevel::Class;
        if (spec.type == Type::Enumeration || spec.type == Type::EnumerationList) {
            spec.enumeration = values;
            if (number(0, 1) == 0) spec.defaultText = "other";
        } else if (spec.type == Type::InterReference) {
            spec.refersToModels = number(0, 1) == 0;
        } else if (spec.type == Type::Text || spec.type == Type::LongText) {
            spec.defaultText = first;
        }
        if (number(0, 3) == 0) spec.shownAs = static_cast<Type>(number(0, 15));
        if (spec.shownAs == spec.type) spec.shownAs = Type::None;
        if (spec.type == Type::Record && !_records.empty()) spec.target = _records.front();
        if (spec.type == Type::AttributeProfile && !_classes.empty()) spec.target = anyClass();
        (void)_builder.addAttribute(*rc::gen::elementOf(_owners), spec);
    }

    void addGroup() {
        const bool atTop = _groups.empty() || number(0, 1) == 0;
        keep(_builder.addModelGroup(atTop ? _library : *rc::gen::elementOf(_groups), name()), _groups);
    }

    void addRelationClass() {
        keep(_builder.addRelationClass(*rc::gen::elementOf(_parts), name(), anyClass(), anyClass()), _relationClasses,
             _owners);
    }

    void setClassValues(QorIdentifier owner) {
        for (const QorIdentifier attribute : {47, 48, 194, 195})
            (void)_builder.setClassValue(owner, attribute, *anyText());
        forEachAttribute(owner, [&](const QorAttributeInfo& attribute) {
            (void)_builder.setClassValue(owner, attribute.id, anyValue(attribute.type));
        });
    }

    template <class Visit>
    void forEachAttribute(QorIdentifier owner, Visit visit) {
        for (; owner != QorNoIdentifier; owner = _reader.classInfo(owner).superclass)
            for (const QorAttributeInfo& attribute : _reader.attributesOf(owner)) visit(attribute);
    }
    // Many texts are refused by other types; a file's reader refuses what is no expression as well.
    static std::string anyValue(QorCoreAttributeType type) {
        if (number(0, 1) == 0) return "7";
        return type == QorCoreAttributeType::Expression ? "[A] &\n  if(\"\" = \"#: \", 1, [B])" : *anyText();
    }

    void setValues(QorIdentifier thing, QorIdentifier cls) {
        if (number(0, 1) == 0) return;
        for (const QorIdentifier graphic : {QorAttributeId::Graphic, QorAttributeId::WorkingEnvironmentGraphic})
            (void)_builder.setValue(thing, graphic, *anyText());
        forEachAttribute(cls, [&](const QorAttributeInfo& attribute) {
            if (attribute.type == QorCoreAttributeType::Record)
                for (int i = number(0, 2); i > 0; --i) addRow(thing, attribute);
            else if (number(0, 2) != 0)
                (void)_builder.setValue(thing, attribute.id, anyValue(attribute.type));
        });
    }

    // Rows may hold rows of their own class, up to a depth that the repository sets.
    void addRow(QorIdentifier thing, const QorAttributeInfo& attribute) {
        const QorBuildResult row = _builder.addRecordRow(thing, attribute.id);
        if (row.ok()) setValues(row.id, attribute.target);
    }

    void addModel() {
        const auto types = _reader.modelTypesOf(_library);
        if (types.empty()) return;
        const QorBuildResult model = _builder.addModel(types.front().id, name(), *anyName());
        if (!_groups.empty() && number(0, 1) == 0 && model.ok())
            (void)_builder.moveModel(model.id, *rc::gen::elementOf(_groups));
        std::vector<QorIdentifier> objects;
        for (int i = number(0, 6); i > 0 && model.ok() && !_classes.empty(); --i) {
            const QorIdentifier cls = anyClass();
            const QorBuildResult object = _builder.addObject(model.id, cls, name());
            if (!object.ok()) continue;
            objects.push_back(object.id);
            setValues(object.id, cls);
        }
        for (int i = number(0, 12); i > 0 && !objects.empty() && !_relationClasses.empty(); --i) {
            const QorIdentifier cls = *rc::gen::elementOf(_relationClasses);
            const QorBuildResult relation =
                _builder.addRelation(cls, *rc::gen::elementOf(objects), *rc::gen::elementOf(objects));
            if (relation.ok()) setValues(relation.id, cls);
        }
    }

    QorRepositoryBuilder& _builder;
    const QorRepositoryReader& _reader;
    QorIdentifier _library = QorNoIdentifier;
    std::vector<QorIdentifier> _parts;
    std::vector<QorIdentifier> _classes;
    std::vector<QorIdentifier> _records;
    std::vector<QorIdentifier> _relationClasses;
    std::vector<QorIdentifier> _owners;
    std::vector<QorIdentifier> _groups;
};

std::vector<QorIdentifier> modelsOf(const Files& files, QorIdentifier library) {
    std::vector<QorIdentifier> models;
    for (const QorModelInfo& model : files.reader().modelsOf(library)) models.push_back(model.id);
    return models;
}

TEST(Export, ReadsBackAsTheSameThing) {
    const bool held = rc::check([] {
        Files original;
        const QorIdentifier library = RandomRepository(original).make();
        const std::string libraryText = exportedLibrary(original, library);
        const std::string modelText = exportedModels(original, modelsOf(original, library));

        Files copy;
        const QorImportResult read = copy.read(libraryText);
        RC_LOG() << libraryText << modelText << shown(read.diagnostics);
        RC_ASSERT(!read.hasErrors());
        const QorImportResult readModels = copy.read(modelText, read.library);
        RC_LOG() << shown(readModels.diagnostics);
        RC_ASSERT(!readModels.hasErrors());
        RC_ASSERT(Description(copy.reader()).of(read.library) == Description(original.reader()).of(library));
        RC_ASSERT(exportedLibrary(copy, read.library) == libraryText);
        RC_ASSERT(exportedModels(copy, readModels.models) == modelText);
    });
    EXPECT_TRUE(held);
}

TEST(Export, LeavesKeywordTextsReadable) {
    Files files;
    const QorIdentifier library = files.library(
        "format: qor.library/1\nname: L\nbusiness_process:\n  texts: {automatic_checks: CHECK_CARDINALITIES}\n  "
        "classes:\n"
        "    - {name: \"yes\", cardinalities: \"CARDINALITIES\\n  max-objects: 1\\n\"}\n    - {name: B, cardinalities: "
        "\" A\\r\"}\n"
        "    - {name: C, cardinalities: \"  A\\n\\nB\\n\\n\"}\n");
    EXPECT_EQ(exportedLibrary(files, library), R"(format: qor.library/1
name: L
business_process:
  name: L (business process)
  texts:
    automatic_checks: |-
      CHECK_CARDINALITIES
  classes:
    - name: "yes"
      cardinalities: |
        CARDINALITIES
          max-objects: 1
    - name: B
      cardinalities: " A\r"
    - name: C
      cardinalities: |2+
          A

        B

working_environment:
  name: L (working environment)
)");
}

TEST(Export, SaysWhatAFileCannotHold) {
    Files files;
    QorRepositoryBuilder& builder = files.platform.builder();
    std::ostringstream out;
    EXPECT_EQ(Qor_ExportLibrary(files.reader(), 4711, out).problem, "there is no such application library");
    const QorIdentifier one = files.library(qor::test::kSmallLibrary);
    const QorIdentifier other = builder.addApplicationLibrary("\xFC", {}, {}).id;
    EXPECT_NE(exportedLibrary(files, other).find("not UTF-8"), std::string::npos);
    const std::vector<QorIdentifier> notes =
        files.models("format: qor.model/1\nmodels: [{name: M, type: Notes}]\n", one);
    const QorIdentifier type =
        builder.addModelType(builder.libraryPart(other, QorLibraryPart::BusinessProcess), "T", {}).id;
    const QorIdentifier foreign = builder.addModel(type, "N", {}).id;
    EXPECT_EQ(exportedModels(files, {notes[0], foreign}), "failed: the models belong to different method libraries");
    EXPECT_EQ(exportedModels(files, {one}), "failed: there is no such model");
    EXPECT_FALSE(qor::interchange::canBeWritten(std::string(20 << 20, 'x')));
    EXPECT_TRUE(qor::interchange::canBeWritten(std::string(10 << 20, 'x')));
    EXPECT_FALSE(qor::interchange::canBeWritten(std::string(10 << 20, '\x01')));
}

// Every example of the page that describes the files is a file that can be read, in the page's order.
TEST(Formats, AreDescribedByExamplesThatWork) {
    const std::string page = textOfFile(QOR_SOURCE_DIR "/docs/formats.md");
    Files files;
    QorIdentifier library = QorNoIdentifier;
    int examples = 0;
    for (const std::string fence : {"```yaml\n", "```json\n"})
        for (std::size_t at = page.find(fence); at != std::string::npos; at = page.find(fence, at + 1), ++examples) {
            const std::size_t begin = at + fence.size();
            const QorImportResult result = files.read(page.substr(begin, page.find("```", begin) - begin), library);
            EXPECT_EQ(shown(result.diagnostics), "") << page.substr(begin, 80);
            if (result.library != QorNoIdentifier) library = result.library;
        }
    EXPECT_GE(examples, 3);
}

}  // namespace
