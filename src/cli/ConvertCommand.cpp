// SPDX-License-Identifier: Apache-2.0
#include "cli/ConvertCommand.h"

#include <fmt/format.h>

#include "cli/Text.h"
#include "modeltools/QorConversionPlan.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

std::string_view wordOf(QorConversionFate fate) {
    switch (fate) {
        case QorConversionFate::Carried:
            return "carried";
        case QorConversionFate::Cast:
            return "cast";
        default:
            return "dropped";
    }
}

std::string_view wordOf(QorConversionProblemKind kind) {
    switch (kind) {
        case QorConversionProblemKind::NoUnitsOfWork:
            return "the repository cannot be changed as a whole";
        case QorConversionProblemKind::UnknownObject:
            return "the object is not there";
        case QorConversionProblemKind::NoConversions:
            return "its class has no attribute \"__Conversion__\"";
        case QorConversionProblemKind::WrongText:
            return "the conversions of its class have an error";
        case QorConversionProblemKind::NotIntoClass:
            return "the conversions of its class do not name the target class";
        case QorConversionProblemKind::NotMade:
            return "the target class has an object of that name, or the model cannot hold its objects";
        case QorConversionProblemKind::ValueRefused:
            return "a value does not fit";
        case QorConversionProblemKind::RelationRefused:
            return "a relation cannot be moved: its relation class has no such ends";
        default:
            return "the repository failed";
    }
}

/// What a plan says, for people or programs.
class ConvertReport {
public:
    ConvertReport(const ModelEditSession& session, const QorConversionPlan& plan) : _session(session), _plan(plan) {}

    /// Before anything is converted: afterwards the old objects and relations have no names any more.
    void writeFindings(Console& console) const {
        for (const QorConversionProblem& problem : _plan.problems())
            console.out(fmt::format("{}: {} {}\n", about(problem.object), console.outColours().error("error:"),
                                    textOf(problem)));
        for (const QorCardinalityBreach& breach : _plan.breaches())
            console.out(fmt::format("{}: {} would break \"{}\": {}\n", aboutSubject(breach),
                                    console.outColours().warning("warning:"), breach.rule.key,
                                    printable(breach.text.view())));
        for (const QorLostRelation& lost : _plan.lostRelations())
            console.out(fmt::format("{}: {} the relation {} is deleted with the old object\n", about(lost.object),
                                    console.outColours().warning("warning:"), relationText(lost.relation)));
        for (const QorLostReference& lost : _plan.lostReferences())
            console.out(fmt::format("{}: {} the reference {} in model {} would lead nowhere\n", about(lost.object),
                                    console.outColours().warning("warning:"), quoted(_session.nameOf(lost.attribute)),
                                    quoted(_session.nameOf(lost.model))));
        for (const QorConversionAttribute& attribute : _plan.attributes()) writeAttribute(console, attribute);
    }

    void writeEnd(Console& console, bool done) const {
        console.out(fmt::format("{} {}\n", counted(_plan.objects().size(), "object"),
                                done ? "converted" : "looked at, nothing changed"));
    }

    void writeJson(JsonWriter& json, bool done) const {
        json.field("converted", done).key("objects").beginList();
        for (const QorPlannedConversion& planned : _plan.objects())
            json.beginObject(kLine)
                .field("id", std::int64_t{planned.object})
                .field("class", std::string_view(_session.nameOf(planned.cls)))
                .field("name", std::string_view(_session.nameOf(done ? planned.newObject : planned.object)))
                .field("new_id", std::int64_t{planned.newObject})
                .endObject();
        json.endList().key("attributes").beginList();
        for (const QorConversionAttribute& attribute : _plan.attributes())
            json.beginObject(kLine)
                .field("class", std::string_view(_session.nameOf(attribute.cls)))
                .field("attribute", std::string_view(_session.nameOf(attribute.source)))
                .field("to", std::string_view(_session.nameOf(attribute.target)))
                .field("fate", wordOf(attribute.fate))
                .field("objects", std::int64_t{attribute.objects})
                .endObject();
        json.endList().key("problems").beginList();
        for (const QorConversionProblem& problem : _plan.problems())
            json.beginObject(kLine)
                .field("object", std::int64_t{problem.object})
                .field("relation", std::int64_t{problem.relation})
                .field("text", std::string_view(textOf(problem)))
                .endObject();
        json.endList().key("lost_relations").beginList();
        for (const QorLostRelation& lost : _plan.lostRelations())
            json.beginObject(kLine)
                .field("relation", std::int64_t{lost.relation})
                .field("object", std::int64_t{lost.object})
                .endObject();
        json.endList().key("lost_references").beginList();
        for (const QorLostReference& lost : _plan.lostReferences())
            json.beginObject(kLine)
                .field("object", std::int64_t{lost.object})
                .field("model", std::string_view(_session.nameOf(lost.model)))
                .field("attribute", std::string_view(_session.nameOf(lost.attribute)))
                .endObject();
        json.endList().key("breaches").beginList();
        for (const QorCardinalityBreach& breach : _plan.breaches())
            json.beginObject(kLine)
                .field("subject", std::int64_t{breach.subject})
                .field("key", breach.rule.key)
                .field("limit", std::int64_t{breach.rule.limit})
                .field("found", std::int64_t{breach.found})
                .field("text", breach.text.view())
                .endObject();
        json.endList();
    }

private:
    [[nodiscard]] std::string about(long object) const {
        return object > 0 ? _session.objectText(object) : "model " + quoted(_session.nameOf(_session.model()));
    }
    [[nodiscard]] std::string aboutSubject(const QorCardinalityBreach& breach) const {
        return breach.subjectIsClass ? "class " + quoted(_session.nameOf(breach.subject)) : about(breach.subject);
    }
    [[nodiscard]] std::string relationText(long relation) const {
        const auto info = _session.reader().relationInfo(static_cast<QorIdentifier>(relation));
        if (info.id == QorNoIdentifier) return fmt::format("{}", relation);
        return fmt::format("{} from {} to {}", quoted(_session.nameOf(info.relationClass)),
                           _session.objectText(info.from), _session.objectText(info.to));
    }
    [[nodiscard]] std::string textOf(const QorConversionProblem& problem) const {
        std::string text(wordOf(problem.kind));
        if (!problem.text.IsEmpty()) text += ": " + printable(problem.text.view());
        if (problem.relation > 0) text += ": " + relationText(problem.relation);
        return text;
    }
    void writeAttribute(Console& console, const QorConversionAttribute& attribute) const {
        if (attribute.fate == QorConversionFate::Dropped && attribute.objects == 0) return;
        const std::string into = attribute.target > 0 ? " -> " + quoted(_session.nameOf(attribute.target)) : "";
        console.out(fmt::format("  {}: {}{} {}, {}\n", printable(_session.nameOf(attribute.cls)),
                                quoted(_session.nameOf(attribute.source)), into, wordOf(attribute.fate),
                                counted(attribute.objects, "value")));
    }

    const ModelEditSession& _session;
    const QorConversionPlan& _plan;
};

Exit convert(const ConvertOptions& options, ModelEditSession& session, QorConversionPlan& plan, bool& done,
             Console& console) {
    if (const Exit exit = session.open(); exit != Exit::Clean) return exit;
    const auto objects = session.findObjects(options.objects);
    const QorIdentifier target = session.reader().findClass(session.library(), options.to);
    if (target == QorNoIdentifier) session.error("there is no class " + quoted(options.to));
    if (!objects || target == QorNoIdentifier) return Exit::WrongUse;

    ISortedSet<long> models;
    for (const QorModelInfo& model : session.reader().modelsOf(session.library())) models.add(model.id);
    const bool isPossible = plan.make(session.model(), *objects, target, models);
    const bool isWanted = isPossible && !options.edit.dryRun && (options.keep || plan.breaches().empty());
    const ConvertReport report(session, plan);
    if (!options.edit.json) report.writeFindings(console);
    done = isWanted && plan.carryOut();
    if (!options.edit.json) report.writeEnd(console, done);
    if (isWanted && !done) return session.notWritten();
    return isPossible && (plan.breaches().empty() || options.keep) ? Exit::Clean : Exit::Findings;
}

}  // namespace

Exit runConvert(const ConvertOptions& options, Console& console) {
    ModelEditSession session(options.edit, console);
    QorConversionPlan plan;
    bool done = false;
    const Exit exit = convert(options, session, plan, done, console);
    if (options.edit.json) ConvertReport(session, plan).writeJson(session.beginJson("qor.convert/1"), done);
    return session.end(exit);
}

}  // namespace qor::cli
