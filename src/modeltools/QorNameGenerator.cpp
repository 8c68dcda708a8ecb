// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorNameGenerator.h"

#include "frame/RepositoryLookup.h"
#include "modeltools/GeneratedName.h"
#include "modeltools/NamingClasses.h"
#include "modeltools/NamingRun.h"
#include "modeltools/RepositoryGround.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorErrorBox.h"
#include "platform/QorGuard.h"
#include "platform/QorModelTypeAttrHandler.h"

using namespace qor::modeltools;
namespace frame = qor::frame;

namespace {

constexpr std::uint32_t kNoModelType = 0xFFFFFFFF;

/// Shows faults as an application's user is to see them, and counts.
class ShownReport final : public NamingReport {
public:
    explicit ShownReport(std::int32_t& changes) : _changes(changes) {}
    ~ShownReport() override = default;

    void faulty(NamingRuleFault fault, const QorKexParser& parser, const NamingRule& rule) override {
        switch (fault) {
            case NamingRuleFault::None:
                return;
            case NamingRuleFault::Syntax:
                return parser.ShowErrorBox();
            case NamingRuleFault::ElementCount:
                return reportInternalError(NamingLine::ElementCount);
            case NamingRuleFault::NoSource:
                return reportInternalError(NamingLine::NoSource);
            case NamingRuleFault::UnknownSource:
                QorErrorBox(SV::Application::GetTopWindow(), QorBoxStyle::Error, textOf(fault, parser, rule))
                    .Execute(QorErrorBoxType::Standard);
        }
    }
    void failed(NamingLine line, long, long) override { reportInternalError(line); }
    void changed(QorNameChange) override { ++_changes; }
    void kept(QorNameKept, long) override {}

private:
    std::int32_t& _changes;
};

std::uint32_t modelTypeOf(long model) {
    unsigned long type = kNoModelType;
    const QorErrorCode code = QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndexOfModel(model, type);
    return code == QorErrorCode::Ok && type < kNoModelType ? static_cast<std::uint32_t>(type) : kNoModelType;
}

void updatePastedObject(long model, long object) {
    long cls = QorNoIdentifier;
    if (QorCoreModelingManager::GetGlobal()->GetClassOfInstance(object, cls) != QorErrorCode::Ok) return;
    const auto attribute = frame::findAttribute(cls, kNameGenAttribute);
    if (!attribute) return;
    const auto text = frame::readText(object, *attribute);
    const auto name = frame::readText(object, QorAttributeId::Name);
    const auto className = frame::readText(cls, QorAttributeId::ClassName);
    if (!text || !name || !className) return reportInternalError(NamingLine::PastedText);

    SV::String source;
    const auto known = QorCoreCopyManager::Instance().getSourceInstNameOfPastedInst(model, object, source);
    if (known != QorErrorCode::Ok || !(rememberedName(*text, *name, *className) == source)) return;
    const std::string remembered = rememberedText(name->view());
    const auto written =
        QorCoreModelingManager::GetGlobal()->setAttributeValue(model, object, *attribute, remembered.c_str(), false);
    if (written != QorErrorCode::Ok) reportInternalError(NamingLine::PastedText);
}

}  // namespace

QorNameGenerator::QorNameGenerator(long model) noexcept
    : _model(Qor_NarrowIdentifier(model).value_or(QorNoIdentifier)) {
    Qor_Guarded(kNamingSource, [this] {
        long cls = QorNoIdentifier;
        if (QorCoreModelingManager::GetGlobal()->classOf(_model, cls) == QorErrorCode::Ok)
            _modelClass = Qor_NarrowIdentifier(cls).value_or(QorNoIdentifier);
        _modelType = modelTypeOf(_model);
    });
}

QorNameGenerator::QorNameGenerator(const QorNameGenerator&) noexcept = default;
QorNameGenerator& QorNameGenerator::operator=(const QorNameGenerator&) noexcept = default;
QorNameGenerator::~QorNameGenerator() = default;

bool QorNameGenerator::IsNameGenDefined() const noexcept {
    return Qor_Guarded(kNamingSource, false, [this] {
        bool defined = false;
        forEachNamingClass(_modelType, [&](long, long) { return !(defined = true); });
        return defined;
    });
}

void QorNameGenerator::Execute() noexcept {
    _changes = 0;
    Qor_Guarded(kNamingSource, [this] {
        forEachNamingClass(_modelType, [this](long cls, long attribute) {
            DoNaming(cls, attribute, objectsOf(_model, cls));
            return true;
        });
    });
}

void QorNameGenerator::DoNaming(long cls, long attribute, const ISortedSet<long>& objects) {
    RepositoryGround ground(_model);
    ShownReport report(_changes);
    NamingRun(_model, cls, ground, report).run(attribute, objects);
}

void QorNameGenerator::UpdatePastedObjects(long model, const ISortedSet<long>& objects) noexcept {
    Qor_Guarded(kNamingSource, [&] {
        const ISortedSet<long> all = objects;
        for (const long object : all) updatePastedObject(model, object);
    });
}

const char* QorNameGenerator::GetNameGenAttrName() noexcept { return kNameGenAttribute; }

bool QorNameGenerator::IsCorrectNameGenAttr(const SV::String& text, long cls, long, SV::String& errorText) noexcept {
    return Qor_Guarded(kNamingSource, false, [&] {
        if (text.IsEmpty()) return true;
        NamingRule rule;
        rule.cls = cls;
        rule.className = frame::readText(cls, QorAttributeId::ClassName).value_or(SV::String());
        QorKexParser parser(text, kNameGenAttribute, rule.className);
        const NamingRuleFault fault = readNamingRule(parser, rule);
        if (fault != NamingRuleFault::None) errorText = textOf(fault, parser, rule);
        return fault == NamingRuleFault::None;
    });
}
