// SPDX-License-Identifier: Apache-2.0
// A repository's libraries and models as text files.
#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <ostream>
#include <set>
#include <streambuf>

#include "cli/OutputFile.h"
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

/// What is written goes into the file.
class Feed final : public std::streambuf {
public:
    explicit Feed(OutputFile& file) : _file(file) {}

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        _file.add({text, static_cast<std::size_t>(size)});
        return size;
    }
    int_type overflow(int_type c) override {
        if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
        const char byte = traits_type::to_char_type(c);
        _file.add({&byte, 1});
        return c;
    }

private:
    OutputFile& _file;
};

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

    void writeFile(const std::string& name, const std::function<QorExportResult(std::ostream&)>& content) {
        OutputFile file((_folder / name).string());
        Feed feed(file);
        std::ostream out(&feed);
        const QorExportResult result = content(out);
        const std::string problem = result.ok() ? file.commit() : fmt::format("cannot be written: {}", result.problem);
        if (!problem.empty()) return _session.error(file.path(), problem, Exit::WriteFailed);
        _files.push_back(file.path());
        if (!_session.options.json) _session.console.out(printable(file.path()) + "\n");
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
