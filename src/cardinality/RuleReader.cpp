// SPDX-License-Identifier: Apache-2.0
#include "cardinality/RuleReader.h"

#include <optional>

#include "cardinality/ClassText.h"
#include "cardinality/names.h"
#include "cardinality/repository.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreVar.h"
#include "platform/QorIdentifier.h"
#include "platform/QorKexParser.h"
#include "platform/QorOwnedText.h"

namespace qor::cardinality {

namespace {

/// The attribute with the rule texts of the library's classes.
std::optional<long> ruleAttribute(long library) {
    long kind = QorNoIdentifier;
    if (!succeeded(Request::LibraryKind, repository().classOf(library, kind))) return std::nullopt;
    return Qor_GetCoreVar(kind == QorLibraryKind::BusinessProcess
                              ? QorCoreVarType::CardinalityAttribute
                              : QorCoreVarType::WorkingEnvironmentCardinalityAttribute);
}

std::optional<SV::String> nameOfLibrary(long library) {
    QorOwnedText name;
    if (!readOrMissing(Request::LibraryName,
                       repository().getAttributeValue(library, QorAttributeId::Name, name.out(), false)))
        return std::nullopt;
    return SV::String(name.view());
}

/// Appends the parser's error, which tells its place, and a line break; beside it the place stands apart.
void addSyntaxError(const QorKexParser& parser, const TextSource& source, DefinitionErrors errors) {
    errors.text += parser.GetErrorText().view();
    errors.text += "\n";
    auto text = source.attributeName + " of class \"" + source.className.view() + "\": ";
    text += parser.GetErrorReason().view();
    text += "\n";
    errors.list.push_back({source.library, source.cls, source.attribute, parser.GetErrorPosition(), text});
}

}  // namespace

bool RuleReader::readLibrary(long library) {
    ISortedSet<long> classes;
    if (!succeeded(Request::InstantiableClasses, repository().getAllInstantiableClasses(library, classes, false)))
        return false;
    bool clean = true;
    for (const long cls : classes)
        if (!readClass(library, cls, nullptr)) clean = false;
    return clean;
}

bool RuleReader::readClass(long library, long cls, const char* text) {
    const auto attribute = ruleAttribute(library);
    if (!attribute) return false;

    QorOwnedText stored;
    if (text == nullptr) {
        if (!readOrMissing(Request::RuleText, repository().getAttributeValue(cls, *attribute, stored.out(), false)))
            return false;
        text = stored.c_str();
    }
    if (*text == '\0') return true;

    const auto className = nameOfClass(cls);
    const auto attributeName = nameOfAttribute(*attribute);
    const auto libraryName = nameOfLibrary(library);
    const auto recordKey = Qor_NarrowIdentifier(cls);
    if (!className || !attributeName || !libraryName || !recordKey) return false;

    const TextSource source{library, cls, *attribute, *className, *attributeName};
    QorKexParser parser(text, *attributeName, *className + ", " + libraryName->view());
    if (parser.Parse() != 0) {
        addSyntaxError(parser, source, _errors);
        return false;
    }
    if (parser.GetElemCount() == 0) return true;
    return ClassText(parser, source, _rules.findOrCreate(*recordKey), _errors).read();
}

}  // namespace qor::cardinality
