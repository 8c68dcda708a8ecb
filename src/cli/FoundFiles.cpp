// SPDX-License-Identifier: Apache-2.0
#include "cli/FoundFiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

namespace qor::cli {

namespace fs = std::filesystem;

namespace {

const std::set<std::string, std::less<>> kEndings = {".bpmn", ".xml", ".yaml", ".yml", ".json"};

constexpr const char* kNoModels = "the folder holds no file with models";

std::vector<std::string> filesIn(const std::string& folder, std::string& problem) {
    std::vector<std::string> files;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored) && kEndings.contains(entry->path().extension().string()))
            files.push_back(entry->path().string());
    }
    if (error)
        problem = fmt::format("cannot be read: {}", error.message());
    else if (files.empty())
        problem = kNoModels;
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<FoundFile> findFiles(const std::vector<std::string>& filesAndFolders,
                                 const std::function<void(const std::string&, const std::string&)>& report) {
    std::vector<FoundFile> found;
    for (const std::string& given : filesAndFolders) {
        std::error_code error;
        if (!fs::is_directory(given, error)) {
            found.push_back({given, true});
            continue;
        }
        std::string problem;
        for (std::string& file : filesIn(given, problem)) found.push_back({std::move(file), false});
        if (!problem.empty()) report(given, problem);
    }
    return found;
}

std::vector<std::string> findModelFiles(const std::vector<std::string>& filesAndFolders, Workspace& workspace,
                                        std::vector<QorDiagnostic>& problems) {
    QorImporter importer(workspace.builder(), workspace.reader());
    const auto report = [&problems](const std::string& folder, const std::string& problem) {
        problems.push_back({QorSeverity::Error, {folder, 0, 0}, problem});
    };
    std::vector<std::string> names;
    for (const std::string& given : filesAndFolders) {
        const std::size_t namesBefore = names.size();
        const std::size_t problemsBefore = problems.size();
        for (FoundFile& file : findFiles({given}, report))
            if (isMeant(file) || isOfModels(importer.kindOf(file.name))) names.push_back(std::move(file.name));
        if (names.size() == namesBefore && problems.size() == problemsBefore) report(given, kNoModels);
    }
    return names;
}

bool isMeant(const FoundFile& file) { return file.isGiven || file.name.ends_with(".bpmn"); }

bool isOfModels(QorFileKind kind) { return kind == QorFileKind::Models || kind == QorFileKind::Bpmn; }

}  // namespace qor::cli
