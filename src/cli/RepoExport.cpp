// SPDX-License-Identifier: Apache-2.0
// A repository's libraries and models as text files.
#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "cli/RepoCommand.h"
#include "cli/RepoSession.h"
#include "cli/RepoVerbs.h"
#include "cli/RepositoryFiles.h"
#include "cli/Text.h"
#include "interchange/QorExport.h"

namespace qor::cli {

namespace {

namespace fs = std::filesystem;

/// A name that files can have everywhere: other characters than letters, digits and some marks become "_".
std::string fileNameFor(std::string_view name) {
    constexpr std::size_t kLongest = 100;
    std::string result;
    for (const char c : name.substr(0, kLongest)) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        result += isPlain ? c : '_';
    }
    return result;
}

class Export {
public:
    Export(RepoSession& session, const std::string& folder) : _session(session), _folder(folder) {}

    void write(QorIdentifier library) {
        const QorRepositoryReader& reader = _session.reader();
        const std::string stem = stemFor(reader.nameOf(library));
        const std::string file = stem + ".yaml";
        writeFile(file, [&](std::ostream& out) { return Qor_ExportLibrary(reader, library, out); });
        if (reader.modelsOf(library).empty() && reader.modelGroupsOf(library).empty()) return;
        writeFile(stem + ".models.yaml",
                  [&](std::ostream& out) { return Qor_ExportAllModels(reader, library, file, out); });
    }

    [[nodiscard]] const std::vector<std::string>& files() const { return _files; }

private:
    /// File names may be the same to a file system that takes no notice of case.
    std::string stemFor(std::string_view name) {
        const std::string stem = fileNameFor(name);
        std::string free = stem;
        const auto lower = [](std::string text) {
            for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            return text;
        };
        for (int number = 2; !_stems.insert(lower(free)).second; ++number) free = fmt::format("{}-{}", stem, number);
        return free;
    }

    /// Beside its place first, so that what breaks off leaves an older file as it was.
    void writeFile(const std::string& name, const std::function<QorExportResult(std::ostream&)>& content) {
        const fs::path path = _folder / name;
        const fs::path unfinished = path.string() + ".unfinished";
        errno = 0;
        std::ofstream out(unfinished, std::ios::binary | std::ios::trunc);
        const QorExportResult result = out ? content(out) : QorExportResult{};
        out.close();
        std::error_code error;
        if (result.ok() && out) fs::rename(unfinished, path, error);
        if (result.ok() && out && !error) {
            _files.push_back(path.string());
            if (!_session.options.json) _session.console.out(printable(path.string()) + "\n");
            return;
        }
        std::string why = result.ok() ? error ? error.message() : std::string(std::strerror(errno)) : result.problem;
        fs::remove(unfinished, error);
        _session.error(path.string(), fmt::format("cannot be written: {}", why), Exit::WriteFailed);
    }

    RepoSession& _session;
    fs::path _folder;
    std::set<std::string> _stems;
    std::vector<std::string> _files;
};

}  // namespace

void exportFrom(RepoSession& session, const RepoOptions& options) {
    std::error_code error;
    fs::create_directories(options.target, error);
    if (error)
        return session.error(options.target, fmt::format("cannot be made: {}", error.message()), Exit::WriteFailed);
    std::vector<QorIdentifier> libraries = session.reader().applicationLibraries();
    if (!options.library.empty()) {
        std::string reason;
        libraries = {chooseLibrary(session.reader(), options.library, reason)};
        if (!reason.empty()) return session.error(session.options.file, reason, Exit::WrongUse);
    }
    Export run(session, options.target);
    for (const QorIdentifier library : libraries) run.write(library);
    if (!session.options.json) return;
    JsonWriter& json = session.beginJson();
    json.key("files").beginList();
    for (const std::string& file : run.files()) json.value(std::string_view(file));
    json.endList();
}

}  // namespace qor::cli
