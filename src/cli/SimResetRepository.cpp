// SPDX-License-Identifier: Apache-2.0
#include "cli/SimResetRepository.h"

#include <fmt/format.h>

#include <optional>
#include <set>
#include <string_view>

#include "cli/Console.h"
#include "cli/InternalErrors.h"
#include "cli/RepositoryFiles.h"
#include "cli/SimResetReport.h"
#include "cli/Text.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "frame/QorLibLoad.h"
#include "platform/QorCoreVar.h"
#include "simmap/QorSimResultCode.h"
#include "simmap/QorSimResultDefinitions.h"

namespace qor::cli {

namespace {

/// One repository file with the library of the wanted models, for the time of a command.
class OpenRepository {
public:
    OpenRepository(const SimResetOptions& options, Console& console)
        : _options(options),
          _console(console),
          _internalErrors(console),
          _platform({.language = "en", .console = false, .user = options.user}),
          _host(_platform.host()) {
        _host.windows = &_internalErrors.windows();
        _installation.emplace(_host);
    }
    OpenRepository(const OpenRepository&) = delete;
    OpenRepository& operator=(const OpenRepository&) = delete;
    ~OpenRepository() { (void)Qor_DiscardLibrary(); }  // the platform goes with it

    Exit reset() {
        if (const Exit exit = open(); exit != Exit::Clean) return exit;
        ISortedSet<long> models;
        if (const Exit exit = loadLibraryOf(models); exit != Exit::Clean) return exit;

        const QorSimResultDefinitions definitions;
        for (const QorSimDefinitionError& error : definitions.errors()) tell(error);
        if (!definitions.isUsable()) return Exit::BadInput;
        QorSimResultReset reset;
        if (!reset.plan(definitions, models)) return Exit::Internal;
        if (!_options.dryRun && !reset.apply()) {
            const QorRepositoryResult& problem = _platform.lastProblem();
            refuse(problem.ok() ? "the repository took no change" : problemText(problem));
            return problem.ok() ? Exit::WriteFailed : exitOf(problem.status);
        }
        reportReset(_options, _platform.reader(), reset, _console);
        return _internalErrors.count() != 0 ? Exit::Internal : Exit::Clean;
    }

private:
    Exit open() {
        const auto access = _options.dryRun ? QorRepositoryAccess::ReadOnly : QorRepositoryAccess::ReadWrite;
        const QorRepositoryResult opened = _platform.openRepository(_options.file, access);
        if (!opened.ok()) {
            refuse(opened.text.empty() ? Qor_RepositoryStatusText(opened.status) : std::string_view(opened.text));
            for (const std::string& finding : opened.findings) refuse(finding);
            return exitOf(opened.status);
        }
        if (_options.dryRun || !_platform.isRepositoryReadOnly()) return Exit::Clean;
        refuse(Qor_RepositoryStatusText(QorRepositoryStatus::ReadOnly));
        return Exit::WriteFailed;
    }

    /// Chooses the models and makes their library the current one.
    Exit loadLibraryOf(ISortedSet<long>& models) {
        const QorRepositoryReader& reader = _platform.reader();
        ISortedSet<long> offered;
        for (const QorIdentifier library : reader.applicationLibraries()) {
            if (!_options.library.empty() && reader.nameOf(library) != _options.library) continue;
            for (const QorModelInfo& model : reader.modelsOf(library)) offered.add(model.id);
        }
        if (!chooseModels(_options.models, offered, reader, models, _console)) return Exit::WrongUse;

        std::set<QorIdentifier> libraries;
        for (const long model : models)
            libraries.insert(reader.applicationLibraryOf(static_cast<QorIdentifier>(model)));
        if (libraries.size() != 1) {
            refuse("models of those names belong to several libraries; give --library NAME");
            return Exit::WrongUse;
        }
        // What is wrong with its rules does not concern results.
        const auto access = _options.dryRun ? QorLibLoad_AccessMode::Shared : QorLibLoad_AccessMode::Exclusive;
        const QorErrorCode loaded =
            Qor_LoadLibrary(nullptr, *libraries.begin(), QorLibLoad_InitHandler::Declined,
                            QorLibLoad_UpdateFacets::Declined, access, QorLibLoad_SilentMode::Silent);
        if (const QorRepositoryResult problem = lockProblem(_platform, loaded); !problem.ok()) {
            refuse(problemText(problem));
            return exitOf(problem.status);
        }
        for (const std::string& text : locksTakenOver(_platform))
            _console.err(
                fmt::format("{}: {} {}\n", printable(_options.file), _console.errColours().warning("warning:"), text));
        if (Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary) == *libraries.begin()) return Exit::Clean;
        refuse("the library " + quoted(reader.nameOf(*libraries.begin())) + " cannot be loaded");
        return Exit::Locked;
    }

    void tell(const QorSimDefinitionError& error) {
        if (error.code == QorSimCode::Ok) return;  // left out without harm
        refuse(fmt::format("simulation results of {}, line {}, column {}: {}",
                           quoted(_platform.reader().nameOf(static_cast<QorIdentifier>(error.library))),
                           error.position.line, error.position.column, printable(error.text.view())));
    }

    void refuse(std::string_view why) { refuseReset(_console, fmt::format("{}: {}", printable(_options.file), why)); }

    const SimResetOptions& _options;
    Console& _console;
    InternalErrors _internalErrors;
    QorEmbeddedPlatform _platform;
    QorHost _host;
    std::optional<QorHostInstallation> _installation;
};

}  // namespace

Exit resetInRepository(const SimResetOptions& options, Console& console) {
    return OpenRepository(options, console).reset();
}

}  // namespace qor::cli
