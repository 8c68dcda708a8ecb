// SPDX-License-Identifier: Apache-2.0
#include "cli/TransferCommand.h"

#include <fmt/format.h>

#include "cli/Text.h"
#include "modeltools/QorAttributeTransfer.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;
constexpr std::string_view kSize = "size";
constexpr long kSizeAttribute = -1;

/// For programs, and for people.
struct OutcomeWords {
    std::string_view word;
    std::string_view text;
};

OutcomeWords wordsOf(QorTransferOutcome outcome) {
    switch (outcome) {
        case QorTransferOutcome::Changes:
            return {"changes", "changes"};
        case QorTransferOutcome::Same:
            return {"same", "same already"};
        case QorTransferOutcome::IsSource:
            return {"source", "is the source itself"};
        case QorTransferOutcome::NotOfClass:
            return {"other_class", "is of another class"};
        case QorTransferOutcome::NotInModel:
            return {"other_model", "lies in another model"};
        case QorTransferOutcome::NoAttribute:
            return {"no_attribute", "has no such attribute"};
        case QorTransferOutcome::NoPlaceForSize:
            return {"no_size", "has no place for the size"};
        default:
            return {"failed", "the repository failed"};
    }
}

/// "size" means an attribute of that name where the class has one.
bool findAttributes(ModelEditSession& session, long source, const std::vector<std::string>& names,
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

std::string attributeName(const ModelEditSession& session, const QorTransferEntry& entry) {
    return entry.attribute < 0 ? std::string(kSize) : session.nameOf(entry.attribute);
}

void writeText(const ModelEditSession& session, const QorAttributeTransfer& transfer, bool done, Console& console) {
    std::uint64_t changes = 0;
    std::uint64_t same = 0;
    for (const QorTransferEntry& entry : transfer.entries()) {
        console.out(fmt::format("{}: {} {}\n", session.objectText(entry.object), quoted(attributeName(session, entry)),
                                wordsOf(entry.outcome).text));
        if (entry.outcome == QorTransferOutcome::Changes) ++changes;
        if (entry.outcome == QorTransferOutcome::Same) ++same;
    }
    console.out(fmt::format("{} {}; {} the same already, {} not possible\n", counted(changes, "value"),
                            done ? "changed" : "to be changed, nothing written", same, transfer.impossibleCount()));
}

void writeJson(const ModelEditSession& session, const QorAttributeTransfer& transfer, bool done, JsonWriter& json) {
    json.field("written", done).key("entries").beginList();
    for (const QorTransferEntry& entry : transfer.entries())
        json.beginObject(kLine)
            .field("object", std::int64_t{entry.object})
            .field("name", std::string_view(session.nameOf(entry.object)))
            .field("attribute", std::string_view(attributeName(session, entry)))
            .field("outcome", wordsOf(entry.outcome).word)
            .endObject();
    json.endList();
}

Exit transferAttributes(const TransferOptions& options, ModelEditSession& session, QorAttributeTransfer& transfer,
                        bool& done) {
    if (const Exit exit = session.open(); exit != Exit::Clean) return exit;
    const QorIdentifier source = session.findObject(options.from);
    const auto targets = session.findObjects(options.to);
    ISortedSet<long> attributes;
    if (source == QorNoIdentifier || !targets || !findAttributes(session, source, options.attributes, attributes))
        return Exit::WrongUse;

    if (!transfer.plan(session.model(), source, attributes, *targets)) return Exit::Internal;
    const bool isPossible = transfer.impossibleCount() == 0;
    const bool isWanted = !options.edit.dryRun && (isPossible || !options.all);
    done = isWanted && transfer.carryOut(options.all ? QorTransferMode::AllOrNothing : QorTransferMode::WhatFits);
    if (isWanted && !done) return session.notWritten();
    return isPossible ? Exit::Clean : Exit::Findings;
}

}  // namespace

Exit runTransfer(const TransferOptions& options, Console& console) {
    ModelEditSession session(options.edit, console);
    QorAttributeTransfer transfer;
    bool done = false;
    const Exit exit = transferAttributes(options, session, transfer, done);
    if (options.edit.json)
        writeJson(session, transfer, done, session.beginJson("qor.transfer/1"));
    else if (!transfer.entries().empty())
        writeText(session, transfer, done, console);
    return session.end(exit);
}

}  // namespace qor::cli
