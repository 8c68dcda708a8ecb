// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/BreachName.h"
#include "interchange/QorDocument.h"

namespace qor::cli {

class DocumentFaults;

/// Breaches that are known, as a file that people keep beside their models. Models are told by the path of their file
/// from the baseline's folder, objects by class, name and identifier in the file, so that moved lines change nothing.
class Baseline {
public:
    /// An empty one that will be written to the path.
    explicit Baseline(const std::string& path);
    /// The one that stands at the path.
    Baseline(const std::string& path, std::vector<QorDiagnostic>& diagnostics);

    /// A file that could be read.
    void beginFile(const std::string& file);
    void beginModel(std::string_view model, std::string_view version);
    /// Whether the breach is known. One that comes more often than it is known, or with a worse count, is new.
    [[nodiscard]] bool knows(const BreachName& name, std::uint32_t found);
    void add(const BreachName& name, std::uint32_t found);

    /// What is known of the models that were begun, or of files that are gone, and was not found. With `everyModel` a
    /// model that its file does not hold any more is gone, too. One line each.
    [[nodiscard]] std::vector<std::string> stale(bool everyModel) const;
    /// Writes it to its path. Empty, or why that failed.
    [[nodiscard]] std::string write() const;

private:
    struct Entry {
        std::string file, model, version, cls, object, sourceId, ruleClass, key, relation, otherClass;
        std::uint32_t count = 0;  ///< how often
        std::uint32_t found = 0;  ///< the worst count
        std::uint32_t met = 0;    ///< how often in this run

        [[nodiscard]] BreachName name() const;
    };

    [[nodiscard]] std::string keyOf(const BreachName& name) const;
    [[nodiscard]] std::string pathFromHere(const std::string& file) const;
    [[nodiscard]] bool isGone(const std::string& file) const;
    void read(const QorDocumentNode& root, DocumentFaults& faults);

    std::string _path;
    std::string _file;  ///< the current one, as the baseline names it
    std::vector<Entry> _entries;
    std::map<std::string, std::size_t> _places;  ///< of entries, by file and name of the breach
    std::set<std::string> _files;
    std::set<std::string> _models;  ///< with their files
};

}  // namespace qor::cli
