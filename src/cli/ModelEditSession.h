// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/RepositoryEdit.h"
#include "platform/ISortedSet.h"

namespace qor::cli {

struct ModelEditOptions : RepositoryEditOptions {
    std::string model;  ///< empty: the only one
};

/// One model of a repository file, whose objects are to be changed.
class ModelEditSession : public RepositoryEdit {
public:
    ModelEditSession(const ModelEditOptions& options, Console& console)
        : RepositoryEdit(options, console), _options(options) {}

    /// Opens the file, loads the library, finds the model. Anything but Clean was told.
    [[nodiscard]] Exit open();
    [[nodiscard]] QorIdentifier library() const { return _library; }
    [[nodiscard]] QorIdentifier model() const { return _model; }
    /// "Task \"Look\"".
    [[nodiscard]] std::string objectText(long object) const;

    /// The object of that name; "CLASS:NAME" where several classes have one. None after telling why.
    [[nodiscard]] QorIdentifier findObject(const std::string& given);
    /// None when one of them is not found; each that is not is told.
    [[nodiscard]] std::optional<ISortedSet<long>> findObjects(const std::vector<std::string>& given);

private:
    [[nodiscard]] Exit loadNamedLibrary();
    [[nodiscard]] Exit findModel();
    /// Under their names, and under CLASS:NAME.
    [[nodiscard]] const std::multimap<std::string, QorIdentifier>& objectsByName();

    const ModelEditOptions& _options;
    QorIdentifier _library = QorNoIdentifier;
    QorIdentifier _model = QorNoIdentifier;
    std::multimap<std::string, QorIdentifier> _objects;  ///< filled when first asked for
};

}  // namespace qor::cli
