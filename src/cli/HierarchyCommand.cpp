// SPDX-License-Identifier: Apache-2.0
#include "cli/HierarchyCommand.h"

#include <fmt/format.h>

#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/HierarchyView.h"
#include "cli/InputFiles.h"
#include "cli/InternalErrors.h"
#include "cli/OutputFile.h"

namespace qor::cli {

namespace {

void tell(Console& console, std::string_view text) {
    console.err(fmt::format("qor: {} {}\n", console.errColours().error("error:"), text));
}

/// A document has one tree.
Exit writeDocuments(const HierarchyOptions& options, const HierarchyReport& report, Console& console) {
    if (options.xml.empty() && options.svg.empty()) return Exit::Clean;
    if (report.chosen.size() != 1) {
        tell(console, fmt::format("there are {}; choose one with --model for --xml and --svg",
                                  counted(report.chosen.size(), "tree")));
        return Exit::WrongUse;
    }
    QorHierarchyTree tree;
    if (tree.build(report.view.index(), report.chosen.front(), options.maxElements) != QorErrorCode::Ok)
        return Exit::Internal;
    if (!tree.isComplete())
        console.err(fmt::format("qor: the tree is cut at {}; --max-elements shows more\n",
                                counted(tree.elements().size(), "element")));
    Exit exit = Exit::Clean;
    const auto write = [&](const std::string& file, auto make) {
        SV::String text;
        if (file.empty()) return;
        if ((tree.*make)(text) != QorErrorCode::Ok) {
            exit = Exit::Internal;
        } else if (file == kStandardOutput) {
            console.out(text.view());
        } else {
            OutputFile output(file);
            output.add(text.view());
            const std::string problem = output.commit();
            if (problem.empty()) return;
            tell(console, fmt::format("{}: {}", printable(file), problem));
            exit = worse(exit, Exit::WriteFailed);
        }
    };
    write(options.xml, &QorHierarchyTree::asNamedXml);
    write(options.svg, &QorHierarchyTree::asSvg);
    return exit;
}

}  // namespace

Exit runHierarchy(const HierarchyOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading models");
    Workspaces workspaces(options.language, internalErrors.windows());
    ModelSet set(workspaces, options.library);
    set.read(options.files);
    if (!options.json)
        for (const QorDiagnostic& diagnostic : set.diagnostics())
            console.err(diagnosticLine(diagnostic, console.errColours()));
    if (set.workspace() == nullptr) {
        if (options.json)
            for (const QorDiagnostic& diagnostic : set.diagnostics())
                console.err(diagnosticLine(diagnostic, console.errColours()));
        return set.exit();
    }
    const std::vector<std::string> unknown = set.unknownNames(options.models);
    for (const std::string& complaint : unknown) tell(console, complaint);
    if (!unknown.empty()) return Exit::WrongUse;

    console.progress().say("following references");
    QorReferenceIndex index;
    if (!index.build(set.models())) internalErrors.add("the references could not be followed");
    const HierarchyView view(set, index);
    const std::vector<long> chosen = view.chosen(options.models);
    const HierarchyReport report{view, chosen, options.whereUsed, options.broken, options.maxElements};

    Exit exit = writeDocuments(options, report, console);
    if (exit == Exit::WrongUse) return exit;
    const bool onlyDocuments = !options.xml.empty() || !options.svg.empty();
    if (options.json || options.whereUsed || options.broken || !onlyDocuments) {
        const auto write = options.json ? writeHierarchyJson : writeHierarchyText;
        if (write(report, console) != 0) exit = worse(exit, Exit::Findings);
    }
    exit = worse(exit, set.exit());
    return internalErrors.count() != 0 ? Exit::Internal : exit;
}

}  // namespace qor::cli
