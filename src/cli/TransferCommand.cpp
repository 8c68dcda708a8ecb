// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>

#include "cli/ConvertCommand.h"
#include "cli/ConvertSession.h"
#include "cli/JsonWriter.h"
#include "cli/Text.h"
#include "modeltools/QorAttributeTransfer.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;
constexpr std::string_view kSize = "size";
constexpr long kSizeAttribute = -1;

std::string_view wordOf(QorTransferOutcome outcome) {
    switch (outcome) {
        case QorTransferOutcome::Changes:
            return "changes";
        case QorTransferOutcome::Same:
            return "same already";
        case QorTransferOutcome::IsSource:
            return "is the source itself";
        case QorTransferOutcome::NotOfClass:
            return "is of another class";
        case QorTransferOutcome::NotInModel:
            return "lies in another model";
        case QorTransferOutcome::NoAttribute:
            return "has no such attribute";
        case QorTransferOutcome::NoPlaceForSize:
            return "has no place for the size";
        default:
            return "the repository failed";
    }
}

/// "size" means an attribute of that name where the class has one.
bool findAttributes(const ConvertSession& session, long source, const std::vector<std::string>& names,
                    ISortedSet<long>& attributes) {
    const QorIdentifier cls = session.reader().classOfObject(static_cast<QorIdentifier>(source));
    bool all = true;
    for (const std::string& name : names) {
        const QorIdentifier attribute = session.reader().findAttribute(cls, name);
        if (attribute != QorNoIdentifier) {
            attributes.add(attribute);
        } else if (name == kSize) {
            attributes.add(kSizeAttribute);
        } else {
            session.error(fmt::format("the class {} has no attribute {}", quoted(session.nameOf(cls)), quoted(name)));
            all = false;
        }
    }
    return all;
}

std::string attributeName(const ConvertSession& session, const QorTransferEntry& entry) {
    return entry.attribute < 0 ? std::string(kSize) : session.nameOf(entry.attribute);
}

void writeText(const ConvertSession& session, const QorAttributeTransfer& transfer, bool done, Console& console) {
    std::uint64_t changes = 0;
    std::uint64_t same = 0;
    for (const QorTransferEntry& entry : transfer.entries()) {
        console.out(fmt::format("{}: {} {}\n", session.objectText(entry.object), quoted(attributeName(session, entry)),
                                wordOf(entry.outcome)));
        if (entry.outcome == QorTransferOutcome::Changes) ++changes;
        if (entry.outcome == QorTransferOutcome::Same) ++same;
    }
    console.out(fmt::format("{} {}; {} the same already, {} not possible\n", counted(changes, "value"),
                            done ? "changed" : "to be changed, nothing written", same, transfer.impossibleCount()));
}

void writeJson(const ConvertSession& session, const QorAttributeTransfer& transfer, bool done, Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.transfer/1").field("written", done).key("entries").beginList();
    for (const QorTransferEntry& entry : transfer.entries())
        json.beginObject(kLine)
            .field("object", std::int64_t{entry.object})
            .field("name", std::string_view(session.nameOf(entry.object)))
            .field("attribute", std::string_view(attributeName(session, entry)))
            .field("outcome", wordOf(entry.outcome))
            .endObject();
    json.endList().endObject();
}

}  // namespace

Exit runTransfer(const TransferOptions& options, Console& console) {
    ConvertSession session(options.edit, console);
    if (const Exit exit = session.open(); exit != Exit::Clean) return exit;
    const QorIdentifier source = session.findObject(options.from);
    const auto targets = session.findObjects(options.to);
    ISortedSet<long> attributes;
    if (source == QorNoIdentifier || !targets || !findAttributes(session, source, options.attributes, attributes))
        return Exit::WrongUse;

    QorAttributeTransfer transfer;
    if (!transfer.plan(session.model(), source, attributes, *targets)) return Exit::Internal;
    const bool isPossible = transfer.impossibleCount() == 0;
    const bool isWanted = !options.edit.dryRun && (isPossible || !options.all);
    const bool done =
        isWanted && transfer.carryOut(options.all ? QorTransferMode::AllOrNothing : QorTransferMode::WhatFits);
    if (options.edit.json)
        writeJson(session, transfer, done, console);
    else
        writeText(session, transfer, done, console);
    if (isWanted && !done) return session.end(session.notWritten());
    return session.end(isPossible ? Exit::Clean : Exit::Findings);
}

}  // namespace qor::cli
