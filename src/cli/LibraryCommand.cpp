// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/LibraryOutline.h"
#include "cli/ShippedLibraries.h"
#include "cli/Workspace.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

struct PartTitle {
    QorLibraryPart part;
    std::string_view title;
    std::string_view key;
};
constexpr std::array kParts = {
    PartTitle{QorLibraryPart::BusinessProcess, "Business-process part", "business_process"},
    PartTitle{QorLibraryPart::WorkingEnvironment, "Working-environment part", "working_environment"},
};

/// Prints what is in a library, for people.
class TextOutline {
public:
    TextOutline(Console& console, const QorRepositoryReader& reader)
        : _console(console), _reader(reader), _colours(console.outColours()) {}

    void writeLibrary(QorIdentifier library, const std::string& file) {
        _console.out(
            fmt::format("Method library {} ({})\n", _colours.bold(quoted(_reader.nameOf(library))), printable(file)));
        writeTexts(textsOfLibrary(_reader, library));
    }

    void writePart(std::string_view title, QorIdentifier part) {
        _console.out(fmt::format("\n{} {}\n", title, _colours.bold(quoted(_reader.nameOf(part)))));
        writeTexts(textsOfLibrary(_reader, part));
        writeHeading("Classes");
        for (const OutlinedClass& cls : classTree(_reader, part)) writeClass(cls);
        writeHeading("Record classes");
        for (const QorClassInfo& cls : recordClasses(_reader, part)) {
            writeLine(2, printable(cls.name));
            writeAttributes(cls.id, 6);
        }
        writeHeading("Relation classes");
        for (const QorRelationClassInfo& relation : _reader.relationClassesOf(part)) {
            writeLine(2, fmt::format("{}: {} -> {}", printable(relation.name), name(relation.fromClass),
                                     name(relation.toClass)));
            writeAttributes(relation.id, 6);
        }
        writeHeading("Model types");
        for (const QorModelTypeInfo& type : modelTypes(_reader, part)) writeModelType(type);
    }

private:
    /// Deeper trees are drawn at this depth, so that a line does not grow with the tree.
    static constexpr std::size_t kDeepest = 30;

    [[nodiscard]] std::string name(QorIdentifier id) const { return printable(_reader.nameOf(id)); }

    /// Comes out only when something follows.
    void writeHeading(std::string_view heading) { _heading = heading; }

    void writeLine(std::size_t indent, std::string_view line) {
        if (!_heading.empty()) _console.out(fmt::format("  {}\n", _colours.bold(_heading)));
        _heading = {};
        _console.out(fmt::format("{:{}}{}\n", "", indent + 2, line));
    }

    void writeTexts(const std::vector<std::string_view>& texts) {
        for (const std::string_view text : texts) writeLine(0, fmt::format("has the text {}", text));
    }

    void writeClass(const OutlinedClass& cls) {
        const std::size_t indent = 2 + 2 * std::min(cls.depth, kDeepest);
        std::string line = printable(cls.info.name);
        const bool hasForeignSuperclass = cls.depth == 0 && cls.info.superclass > 0;
        if (hasForeignSuperclass) line += fmt::format(", extends {} of the other part", name(cls.info.superclass));
        if (cls.info.isAbstract) line += ", abstract";
        for (const std::string_view text : textsOfClass(_reader, cls.info.id)) line += fmt::format(" [{}]", text);
        writeLine(indent, line);
        writeAttributes(cls.info.id, indent + 4);
    }

    void writeAttributes(QorIdentifier owner, std::size_t indent) {
        for (const QorAttributeInfo& attribute : _reader.attributesOf(owner)) {
            std::string line = fmt::format("{}: {}", printable(attribute.name), typeName(attribute.type));
            if (attribute.target > 0) line += fmt::format(" of {}", name(attribute.target));
            if (!attribute.enumeration.empty()) line += " (" + joined(attribute.enumeration) + ")";
            if (attribute.level == QorAttributeLevel::Class) line += ", of the class";
            if (!attribute.defaultText.empty()) line += ", default " + quoted(attribute.defaultText);
            writeLine(indent, _colours.dim(line));
        }
    }

    void writeModelType(const QorModelTypeInfo& type) {
        std::vector<std::string_view> classes;
        for (const QorIdentifier cls : _reader.visibleClasses(type.id)) classes.push_back(_reader.nameOf(cls));
        writeLine(2, fmt::format("{}: {}", printable(type.name), joined(classes)));
    }

    [[nodiscard]] static std::string joined(const std::vector<std::string_view>& names) {
        std::string text;
        for (const std::string_view name : names) text += (text.empty() ? "" : ", ") + printable(name);
        return text;
    }

    Console& _console;
    const QorRepositoryReader& _reader;
    Colours _colours;
    std::string_view _heading;
};

/// Writes what is in a library, for programs.
class JsonOutline {
public:
    JsonOutline(JsonWriter& json, const QorRepositoryReader& reader) : _json(json), _reader(reader) {}

    void writeLibrary(Workspace& workspace) {
        const QorIdentifier library = workspace.library();
        _json.beginObject().field("name", _reader.nameOf(library));
        writeNames("texts", textsOfLibrary(_reader, library));
        _json.key("parts").beginList();
        for (const PartTitle& part : kParts) writePart(part.key, workspace.part(part.part));
        _json.endList().endObject();
    }

private:
    void writePart(std::string_view key, QorIdentifier part) {
        _json.beginObject().field("part", key).field("name", _reader.nameOf(part));
        writeNames("texts", textsOfLibrary(_reader, part));
        _json.key("classes").beginList();
        for (const OutlinedClass& cls : classTree(_reader, part)) writeClass(cls.info);
        _json.endList().key("record_classes").beginList();
        for (const QorClassInfo& cls : recordClasses(_reader, part)) {
            _json.beginObject().field("name", cls.name);
            writeAttributes(cls.id);
            _json.endObject();
        }
        _json.endList().key("relation_classes").beginList();
        for (const QorRelationClassInfo& relation : _reader.relationClassesOf(part)) {
            _json.beginObject()
                .field("name", relation.name)
                .field("from", _reader.nameOf(relation.fromClass))
                .field("to", _reader.nameOf(relation.toClass));
            writeAttributes(relation.id);
            _json.endObject();
        }
        _json.endList().key("model_types").beginList();
        for (const QorModelTypeInfo& type : modelTypes(_reader, part)) {
            std::vector<std::string_view> classes;
            for (const QorIdentifier cls : _reader.visibleClasses(type.id)) classes.push_back(_reader.nameOf(cls));
            _json.beginObject().field("name", type.name);
            writeNames("classes", classes);
            _json.endObject();
        }
        _json.endList().endObject();
    }

    void writeClass(const QorClassInfo& cls) {
        _json.beginObject().field("name", cls.name).field("extends", nameOrNone(cls.superclass));
        _json.field("abstract", cls.isAbstract);
        writeNames("texts", textsOfClass(_reader, cls.id));
        writeAttributes(cls.id);
        _json.endObject();
    }

    void writeAttributes(QorIdentifier owner) {
        _json.key("attributes").beginList();
        for (const QorAttributeInfo& attribute : _reader.attributesOf(owner)) {
            const bool isOfClass = attribute.level == QorAttributeLevel::Class;
            _json.beginObject(kLine)
                .field("name", attribute.name)
                .field("type", typeName(attribute.type))
                .field("level", isOfClass ? "class" : "instance")
                .field("default", attribute.defaultText)
                .field("target", nameOrNone(attribute.target));
            writeNames("values", attribute.enumeration);
            _json.endObject();
        }
        _json.endList();
    }

    void writeNames(std::string_view key, const std::vector<std::string_view>& names) {
        _json.key(key).beginList(kLine);
        for (const std::string_view name : names) _json.value(name);
        _json.endList();
    }

    [[nodiscard]] std::optional<std::string> nameOrNone(QorIdentifier id) const {
        if (id <= 0) return std::nullopt;
        return std::string(_reader.nameOf(id));
    }

    JsonWriter& _json;
    const QorRepositoryReader& _reader;
};

void writeJson(Console& console, Workspace& workspace) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.library/1").field("file", std::string_view(workspace.libraryPath()));
    writeDiagnostics(json, workspace.fileDiagnostics());
    json.key("library");
    if (workspace.hasLibrary())
        JsonOutline(json, workspace.reader()).writeLibrary(workspace);
    else
        json.null();
    json.endObject();
}

void writeText(Console& console, Workspace& workspace) {
    for (const QorDiagnostic& diagnostic : workspace.fileDiagnostics())
        console.err(diagnosticLine(diagnostic, console.errColours()));
    if (!workspace.hasLibrary()) return;
    TextOutline outline(console, workspace.reader());
    outline.writeLibrary(workspace.library(), workspace.libraryPath());
    for (const PartTitle& part : kParts) outline.writePart(part.title, workspace.part(part.part));
}

}  // namespace

Exit runLibrary(const LibraryOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading " + options.file);
    Workspaces workspaces("en", internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.file));
    (options.json ? writeJson : writeText)(console, workspace);
    if (internalErrors.count() != 0) return Exit::Internal;
    return workspace.hasLibrary() ? Exit::Clean : Exit::BadInput;
}

}  // namespace qor::cli
