// SPDX-License-Identifier: Apache-2.0
#include "cli/RepoCommand.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/RepoLocks.h"
#include "cli/RepoSession.h"
#include "cli/RepoVerbs.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

struct LibraryCounts {
    std::string_view name;
    std::uint64_t classes = 0;
    std::uint64_t models = 0;
    std::uint64_t objects = 0;
    std::uint64_t relations = 0;
};

LibraryCounts countsOf(const QorRepositoryReader& reader, QorIdentifier library) {
    LibraryCounts counts{reader.nameOf(library)};
    for (const auto part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
        counts.classes += reader.classesOf(reader.libraryPart(library, part)).size();
    for (const QorModelInfo& model : reader.modelsOf(library)) {
        ++counts.models;
        counts.objects += reader.objectsOf(model.id).size();
        counts.relations += reader.relationsOf(model.id).size();
    }
    return counts;
}

void showInfo(RepoSession& session, const RepoOptions&) {
    std::vector<LibraryCounts> libraries;
    for (const QorIdentifier library : session.reader().applicationLibraries())
        libraries.push_back(countsOf(session.reader(), library));
    std::error_code error;
    const auto bytes = std::filesystem::file_size(session.options.file, error);
    const auto size = error ? std::int64_t{0} : static_cast<std::int64_t>(bytes);
    const std::int64_t writes = session.platform().repositoryGeneration();
    if (session.options.json) {
        JsonWriter& json = session.beginJson();
        json.field("bytes", size).field("writes", writes).key("libraries").beginList();
        for (const LibraryCounts& its : libraries)
            json.beginObject(JsonWriter::Layout::Line)
                .field("name", its.name)
                .field("classes", static_cast<std::int64_t>(its.classes))
                .field("models", static_cast<std::int64_t>(its.models))
                .field("objects", static_cast<std::int64_t>(its.objects))
                .field("relations", static_cast<std::int64_t>(its.relations))
                .endObject();
        json.endList();
        return showLocks(session, &json);
    }
    session.console.out(fmt::format("{}: {} bytes, written {} times\n", printable(session.options.file), size, writes));
    for (const LibraryCounts& its : libraries)
        session.console.out(fmt::format("library {}: {}, {}, {}, {}\n", cli::quoted(its.name),
                                        counted(its.classes, "class"), counted(its.models, "model"),
                                        counted(its.objects, "object"), counted(its.relations, "relation")));
    if (libraries.empty()) session.console.out("no libraries\n");
    showLocks(session, nullptr);
}

void say(RepoSession& session, const std::string& text) {
    if (!session.options.json) session.console.out(printable(text) + "\n");
}

void tellMade(RepoSession& session, const RepoOptions&) { say(session, session.options.file + ": made"); }

void verify(RepoSession& session, const RepoOptions&) {
    const std::string& file = session.options.file;
    const QorRepositoryResult result = session.platform().verifyRepository();
    if (result.ok()) return say(session, file + ": everything is as it was written");
    // Opening has told the rest.
    for (const std::string& finding : result.findings)
        if (session.isNews(finding)) session.tell({QorSeverity::Error, {file, 0, 0}, finding});
    session.endAtLeast(Exit::BadInput);
}

void backUp(RepoSession& session, const RepoOptions& options) {
    const QorRepositoryResult result = session.platform().backUpRepository(options.target);
    // A copy that cannot be written is not the repository's fault.
    if (session.tell(result, options.target)) return say(session, options.target + ": copied");
    session.endAtLeast(Exit::WriteFailed);
}

}  // namespace

std::span<const RepoVerb> repoVerbs() {
    using enum RepoOpening;
    static constexpr RepoVerb kVerbs[] = {
        {"init", "Make an empty repository file", Make, tellMade},
        {"import", "Take in libraries and models from YAML, JSON and BPMN files", Write, importInto},
        {"export", "Write libraries and models as YAML files into a folder", Read, exportFrom},
        {"info", "Show what is in it", Read, showInfo},
        {"verify", "Compare everything in it with its hashes", Read, verify},
        {"backup", "Copy it while it is in use", Read, backUp},
        {"unlock", "Break the locks of its libraries, as an administrator", Write, unlock},
    };
    return kVerbs;
}

Exit runRepo(const RepoOptions& options, Console& console) {
    RepoSession session(options.repository, console);
    const RepoVerb& verb = *options.verb;
    const bool isOpen = verb.opening == RepoOpening::Make
                            ? session.create()
                            : session.open(verb.opening == RepoOpening::Write ? QorRepositoryAccess::ReadWrite
                                                                              : QorRepositoryAccess::ReadOnly);
    if (isOpen) verb.run(session, options);
    return session.end();
}

}  // namespace qor::cli
