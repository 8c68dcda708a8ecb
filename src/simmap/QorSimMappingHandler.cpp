// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimMappingHandler.h"

#include <new>
#include <string>
#include <utility>

#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "simmap/MappingWriter.h"
#include "simmap/internalErrors.h"
#include "simmap/messages.h"

using qor::simmap::kMappingSource;

namespace {
QorSimMappingHandler* g_handler = nullptr;
}

bool QorSimMappingHandler::CreateGlobal(long libraryId) noexcept {
    auto* const handler = new (std::nothrow) QorSimMappingHandler(libraryId);
    if (handler == nullptr) return false;
    g_handler = handler;
    return handler->init(false) == QorSimCode::Ok;
}

QorSimMappingHandler* QorSimMappingHandler::GetGlobal() noexcept { return g_handler; }

bool QorSimMappingHandler::ExistsGlobal() noexcept { return g_handler != nullptr; }

void QorSimMappingHandler::FreeGlobal() noexcept { delete std::exchange(g_handler, nullptr); }

QorSimMappingHandler::QorSimMappingHandler(long libraryId) : _library(libraryId) {}

QorSimMappingHandler::QorSimMappingHandler(const QorSimMappingHandler& other) noexcept : _library(other._library) {
    *this = other;
}

/// Without memory for a copy the handler counts as unread and reads the text anew when asked.
QorSimMappingHandler& QorSimMappingHandler::operator=(const QorSimMappingHandler& other) noexcept {
    if (this == &other) return *this;
    _library = other._library;
    Qor_Guarded(kMappingSource, [&] {
        forget();
        _readingCode = QorSimCode::Ok;
        _errorText = other._errorText;
        _errors = other._errors;
        _businessProcessClasses = other._businessProcessClasses;
        _workingEnvironmentClasses = other._workingEnvironmentClasses;
        _options = other._options;
        _readingCode = other._readingCode;
        _parsed = other._parsed;
        _defined = other._defined;
    });
    return *this;
}

QorSimMappingHandler::~QorSimMappingHandler() = default;

int QorSimMappingHandler::ensureRead() noexcept { return _parsed ? QorSimCode::Ok : init(false); }

template <class Read>
int QorSimMappingHandler::readOption(int index, Read read) noexcept {
    if (const int code = ensureRead(); code != QorSimCode::Ok) return code;
    const auto* const found = option(index);
    if (found == nullptr) return QorSimCode::OutOfRange;
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        read(*found);
        return QorSimCode::Ok;
    });
}

const QorSimulationOption* QorSimMappingHandler::option(int index) const noexcept {
    if (index < 0 || static_cast<std::size_t>(index) >= _options.size()) return nullptr;
    return _options[static_cast<std::size_t>(index)].get();
}

int QorSimMappingHandler::getSimableBPClasses(ISortedSet<long>& classes) noexcept {
    if (const int code = ensureRead(); code != QorSimCode::Ok) return code;
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        if (&classes != &_businessProcessClasses) classes = _businessProcessClasses;
        return QorSimCode::Ok;
    });
}

int QorSimMappingHandler::getSimableWEClasses(ISortedSet<long>& classes) noexcept {
    if (const int code = ensureRead(); code != QorSimCode::Ok) return code;
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        if (&classes != &_workingEnvironmentClasses) classes = _workingEnvironmentClasses;
        return QorSimCode::Ok;
    });
}

int QorSimMappingHandler::isSimableClass(long classId, bool& isSimable) noexcept {
    if (const int code = ensureRead(); code != QorSimCode::Ok) return code;
    isSimable = _businessProcessClasses.contains(classId) || _workingEnvironmentClasses.contains(classId);
    return QorSimCode::Ok;
}

int QorSimMappingHandler::getMappingOptions(ISequence<SV::String>& names) noexcept {
    if (const int code = ensureRead(); code != QorSimCode::Ok) return code;
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        ISequence<SV::String> found;
        for (const auto& each : _options) found.add(each->name);
        names = std::move(found);
        return QorSimCode::Ok;
    });
}

int QorSimMappingHandler::getHelpTextFromOption(int index, SV::String& text) noexcept {
    return readOption(index, [&](const QorSimulationOption& found) { text = found.helpText; });
}

int QorSimMappingHandler::getActivityNameFromOption(int index, SV::String& name) noexcept {
    bool complete = true;
    const int code = readOption(index, [&](const QorSimulationOption& found) {
        name = found.activityClassName;
        complete = found.complete != 0;
    });
    return code == QorSimCode::Ok && !complete ? QorSimCode::NoSuchOption : code;
}

int QorSimMappingHandler::getWaitingTimeNameFromOption(int index, SV::String& name) noexcept {
    return readOption(index, [&](const QorSimulationOption& found) { name = found.waitingTimeName; });
}

int QorSimMappingHandler::getSubPerformerAssignmentFromOption(int index, long& processCallClassId,
                                                              long& subPerformerAttrId) noexcept {
    return readOption(index, [&](const QorSimulationOption& found) {
        processCallClassId = found.processCallClass;
        subPerformerAttrId = found.subPerformerAttribute;
    });
}

int QorSimMappingHandler::getStandardSimAttributes(int index, ISequence<long>& attributes) noexcept {
    return readOption(index, [&](const QorSimulationOption& found) { attributes = found.standardAttributes; });
}

int QorSimMappingHandler::getAdditionalSimAttributes(int index, ISequence<long>& attributes) noexcept {
    return readOption(index, [&](const QorSimulationOption& found) { attributes = found.userAttributes; });
}

bool QorSimMappingHandler::isDefined() noexcept {
    ensureRead();
    return _defined;
}

SV::String QorSimMappingHandler::GetErrorText() noexcept {
    ensureRead();
    return Qor_Guarded(kMappingSource, SV::String(), [this] { return _errorText; });
}

int QorSimMappingHandler::getSimOptionCount() const noexcept { return _parsed ? static_cast<int>(_options.size()) : 0; }

int QorSimMappingHandler::getOptionNrFromName(const SV::String& name, int& index) const noexcept {
    for (const auto& each : _options) {
        if (!(each->name == name)) continue;
        index = each->number - 1;
        return QorSimCode::Ok;
    }
    return QorSimCode::NoSuchOption;
}

int QorSimMappingHandler::getActionAttribute(int index, const long& classId, QorSimOptionActionEvent event,
                                             long& attributeId) const noexcept {
    const long cls = classId;  // the output may be the same variable
    attributeId = 0;
    if (!_parsed) return QorSimCode::NotRead;
    const auto* const found = option(index);
    if (found == nullptr) return QorSimCode::OutOfRange;
    attributeId = found->actionAttribute(cls, event);
    return attributeId != 0 ? QorSimCode::Ok : QorSimCode::OutOfRange;
}

int QorSimMappingHandler::isActionClass(int index, const long& classId, QorSimOptionActionEvent event) const noexcept {
    long attribute = 0;
    return getActionAttribute(index, classId, event, attribute) == QorSimCode::Ok ? 1 : 0;
}

bool QorSimMappingHandler::hasAnyActions(int index) const noexcept {
    const auto* const found = option(index);
    return found != nullptr && !found->actions.isEmpty();
}

int QorSimMappingHandler::getSimMappingKEX(SV::String& out, const int& withClasses) noexcept {
    if (!_parsed) return 0;
    return Qor_Guarded(kMappingSource, 0, [&] {
        using namespace qor::simmap;
        std::string text;
        bool written = true;
        for (const auto& each : _options) written = written && writeOption(*each, text);
        if (withClasses != 0)
            written = written && writeClasses(_businessProcessClasses, _workingEnvironmentClasses, text);
        if (!written) {
            _errorText = Qor_Message(message::repositoryFailed);
            return 0;
        }
        out += text;
        return 1;
    });
}
