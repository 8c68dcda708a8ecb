// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Console.h"
#include "cli/ConvertCommand.h"
#include "cli/InternalErrors.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "platform/ISortedSet.h"

namespace qor::cli {

/// One model of a repository file with its library loaded, for the time of a command. A dry run works on a copy in
/// memory, so that it may change what it likes.
class ConvertSession {
public:
    ConvertSession(const ModelEditOptions& options, Console& console);
    ConvertSession(const ConvertSession&) = delete;
    ConvertSession& operator=(const ConvertSession&) = delete;
    ~ConvertSession();

    /// Opens the file, loads the library, finds the model. Anything but Clean was told.
    Exit open();
    [[nodiscard]] QorIdentifier library() const { return _library; }
    [[nodiscard]] QorIdentifier model() const { return _model; }
    [[nodiscard]] const QorRepositoryReader& reader() const { return _platform.reader(); }
    [[nodiscard]] std::string nameOf(long id) const;
    /// "Task \"Look\"".
    [[nodiscard]] std::string objectText(long object) const;

    /// The object of that name; "CLASS:NAME" where several classes have one. None after telling why.
    [[nodiscard]] QorIdentifier findObject(const std::string& given) const;
    /// None when one of them is not found; each that is not is told.
    [[nodiscard]] std::optional<ISortedSet<long>> findObjects(const std::vector<std::string>& given) const;

    void error(std::string_view why) const;
    /// Tells why nothing was written; how the command ends.
    [[nodiscard]] Exit notWritten() const;
    [[nodiscard]] Exit end(Exit exit) const { return _internalErrors.count() != 0 ? Exit::Internal : exit; }

private:
    Exit openFile();
    Exit loadLibrary();
    Exit findModel();
    /// Under their names, and under CLASS:NAME.
    [[nodiscard]] const std::multimap<std::string, QorIdentifier>& objectsByName() const;

    const ModelEditOptions& _options;
    Console& _console;
    std::string _file;
    std::string _libraryName;
    InternalErrors _internalErrors;
    QorEmbeddedPlatform _platform;
    QorHost _host;
    std::optional<QorHostInstallation> _installation;
    QorIdentifier _library = QorNoIdentifier;
    QorIdentifier _model = QorNoIdentifier;
    mutable std::multimap<std::string, QorIdentifier> _objects;  ///< filled when first asked for
};

}  // namespace qor::cli
