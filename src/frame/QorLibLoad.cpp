// SPDX-License-Identifier: Apache-2.0
#include "frame/QorLibLoad.h"

#include "frame/HandlerInitialisation.h"
#include "frame/LoadContext.h"
#include "frame/messages.h"
#include "platform/QorCoreModManUpdater.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorErrorBox.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "platform/QorOwnedText.h"
#include "platform/QorUserManager.h"

namespace {

using qor::frame::LoadContext;
using qor::frame::StepCursor;
namespace message = qor::frame::message;

constexpr const char* kSource = "libload";

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

QorOwnedText libraryName(long library) {
    QorOwnedText name;
    (void)repository().getAppLibraryName(library, name.out());  // messages do without the name when it fails
    return name;
}

enum class LockState { Free, HeldByCurrentUser, HeldByOther };

SV::String displayName(const QorUserID& user) {
    SV::String first;
    SV::String second;
    auto kind = QorUserLogonNameType::Plain;
    (void)QorUserManager::allUmansGetUserFullDisplayNameOfUserID(user, first, second, kind, false);
    return Qor_JoinDisplayName(first, second, kind);
}

LockState checkLock(const LoadContext& context, long library) {
    QorUserID user;
    (void)QorUserManager::allUmansGetCurrentUserID(user);  // an unknown user holds no lock
    QorUserID holder;
    if (!repository().isLibraryLocked(library, holder)) return LockState::Free;
    if (!user.isNone() && holder == user) return LockState::HeldByCurrentUser;

    if (!context.isSilent())
        context.showError(Qor_Message(message::libraryLocked,
                                      {{"%l", libraryName(library).view()}, {"%u", displayName(holder).view()}}));
    return LockState::HeldByOther;
}

void updateFacets(const LoadContext& context) {
    const StepCursor cursor(context);
    const auto progress = context.showProgress(Qor_Message(message::updatingFacets));
    (void)repository().updateFacets();  // a library can be loaded with facets that are out of date
}

void unlockLibraryAndParts(long library) {
    (void)repository().unlockLibrary(library);
    for (const auto part : {QorCoreVarType::BusinessProcessLibrary, QorCoreVarType::WorkingEnvironmentLibrary}) {
        const long attached = Qor_GetCoreVarConst(part);
        if (repository().IsLibraryLoaded(attached)) (void)repository().unlockLibrary(attached);
    }
}

QorErrorCode loadShowingProgress(const LoadContext& context, long library, bool lock) {
    const StepCursor cursor(context);
    long first = -1;
    long second = -1;
    (void)repository().getAttachedLibraries(library, first, second);

    QorOwnedText name;
    if (!context.isSilent()) name = libraryName(library);
    auto progress = context.showProgress(Qor_Message(message::loadingLibrary, {{"%s", name.view()}}));
    const auto result = repository().LoadApplicationLibrary(library, lock);
    if (result != QorErrorCode::Ok && lock) unlockLibraryAndParts(library);
    progress.reset();

    if (result != QorErrorCode::Ok) context.showError(Qor_Message(message::libraryNotLoaded, {{"%s", name.view()}}));
    return result;
}

struct Wishes {
    bool initialiseHandlers;
    bool updateFacets;
    bool exclusiveAccess;
};

QorErrorCode reload(const LoadContext& context, long library, const Wishes& wishes) {
    long first = -1;
    long second = -1;
    auto result = repository().getAttachedLibraries(library, first, second);
    if (wishes.initialiseHandlers) result = qor::frame::initialiseHandlers(context);
    if (!wishes.exclusiveAccess) return result;

    switch (checkLock(context, library)) {
        case LockState::HeldByOther:
            return QorErrorCode::LockedByOther;
        case LockState::HeldByCurrentUser:
            return result;
        case LockState::Free:
            break;
    }
    return repository().lockLibrary(library, false, QorDBLockModeType::Exclusive);
}

QorErrorCode loadAnother(const LoadContext& context, long library, const Wishes& wishes) {
    (void)Qor_DiscardLibrary();  // a library that cannot be given up does not hinder the next one
    if (wishes.updateFacets) updateFacets(context);
    if (wishes.exclusiveAccess && checkLock(context, library) == LockState::HeldByOther)
        return QorErrorCode::LockedByOther;
    const auto result = loadShowingProgress(context, library, wishes.exclusiveAccess);
    if (result != QorErrorCode::Ok || !wishes.initialiseHandlers) return result;
    return qor::frame::initialiseHandlers(context);
}

}  // namespace

QorErrorCode Qor_LoadLibrary(SV::Window* parent, long libraryId, QorLibLoad_InitHandler initHandler,
                             QorLibLoad_UpdateFacets updateFacets, QorLibLoad_AccessMode accessMode,
                             QorLibLoad_SilentMode silentMode) noexcept {
    return Qor_Guarded(kSource, QorErrorCode::Broken, [&] {
        if (libraryId < 1) return QorErrorCode::Ok;
        const LoadContext context(parent, silentMode == QorLibLoad_SilentMode::Silent);
        const Wishes wishes{initHandler == QorLibLoad_InitHandler::Wanted,
                            updateFacets == QorLibLoad_UpdateFacets::Wanted,
                            accessMode == QorLibLoad_AccessMode::Exclusive};
        return repository().IsLibraryLoaded(libraryId) ? reload(context, libraryId, wishes)
                                                       : loadAnother(context, libraryId, wishes);
    });
}

QorErrorCode Qor_DiscardLibrary() noexcept {
    return Qor_Guarded(kSource, QorErrorCode::Broken, [] {
        const long current = Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary);
        if (current < 1) return QorErrorCode::Ok;
        const auto discarded = repository().discardCompleteLibrary(current);
        if (discarded != QorErrorCode::Ok) return discarded;
        const auto refreshed = QorCoreModManUpdater::UpdateAppLibList();
        QorErrorBox::ClearShownErrorBoxesTable();
        return refreshed;
    });
}
