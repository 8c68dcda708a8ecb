// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "frame/QorLibLoad.h"

namespace qor::cli {

struct RepositoryEditOptions {
    std::string file;  ///< "shop.qor", or "shop.qor#Works" for one of its libraries
    bool dryRun = false;
    bool json = false;  ///< errors go into a document
    std::string language = "en";
    std::string user;  ///< who acts; empty: the operating system's
};

/// A repository file with one of its libraries loaded, to be changed, for the time of a command. A dry run works on a
/// copy in memory, so that it may change what it likes.
class RepositoryEdit {
public:
    RepositoryEdit(const RepositoryEditOptions& options, Console& console);
    RepositoryEdit(const RepositoryEdit&) = delete;
    RepositoryEdit& operator=(const RepositoryEdit&) = delete;
    ~RepositoryEdit();

    // Anything but Clean was told.
    [[nodiscard]] Exit openFile();
    /// What is wrong with its rules is what `qor rules` tells of.
    [[nodiscard]] Exit loadLibrary(QorIdentifier library, QorLibLoad_InitHandler handlers);

    /// Behind "#"; empty when none is named.
    [[nodiscard]] const std::string& libraryName() const { return _libraryName; }
    [[nodiscard]] const QorRepositoryReader& reader() const { return _platform.reader(); }
    [[nodiscard]] std::string nameOf(long id) const;

    void error(std::string_view why);
    /// What is wrong with the file; how the command ends.
    Exit fileError(std::string_view why, Exit exit);
    /// Tells why nothing was written; how the command ends.
    [[nodiscard]] Exit notWritten();

    JsonWriter& beginJson(std::string_view schema);
    /// Ends the document, if there is one, with the errors.
    [[nodiscard]] Exit end(Exit exit);

private:
    const RepositoryEditOptions& _options;
    Console& _console;
    std::string _file;
    std::string _libraryName;
    InternalErrors _internalErrors;
    QorEmbeddedPlatform _platform;
    QorHost _host;
    std::optional<QorHostInstallation> _installation;
    std::optional<JsonWriter> _json;
    std::vector<std::string> _errors;
};

}  // namespace qor::cli
