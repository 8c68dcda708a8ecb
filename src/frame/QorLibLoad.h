// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvWindow.h"

// The options of a load: 0 asks for the action, any other value declines it.

/// Initialise the library handlers after the load.
enum class QorLibLoad_InitHandler : std::int32_t { Wanted = 0, Declined = 1 };
/// Bring the repository's facets up to date before another library is loaded.
enum class QorLibLoad_UpdateFacets : std::int32_t { Wanted = 0, Declined = 1 };
/// Exclusive access: refuse when another user holds the library's lock, and take the lock for the current user.
enum class QorLibLoad_AccessMode : std::int32_t { Exclusive = 0, Shared = 1 };
/// Silent: no wait cursor, no progress window, no message box.
enum class QorLibLoad_SilentMode : std::int32_t { Silent = 0, Shown = 1 };

/// Makes `libraryId` the current application library. A library that is loaded already stays loaded: only its handlers
/// are initialised and its lock is taken, as wanted. Any other load gives up the current library first, also when the
/// new load then fails.
///
/// `parent` is the window that progress and messages stand on; null: the application window. An identifier below 1 does
/// nothing and gives 0.
///
/// Returns 0; LockedByOther when exclusive access is wanted and another user holds the lock; the platform's code when
/// the load fails (no lock is left behind) or the handler initialisation does (the library is loaded all the same;
/// NotAllHandlersSetUp counts as 0).
QOR_API QorErrorCode Qor_LoadLibrary(SV::Window* parent, long libraryId, QorLibLoad_InitHandler initHandler,
                                     QorLibLoad_UpdateFacets updateFacets, QorLibLoad_AccessMode accessMode,
                                     QorLibLoad_SilentMode silentMode) noexcept;

/// Gives up the current application library; 0 when there is none. After a failure of the platform, whose code is
/// returned, the application's list of libraries is not refreshed.
QOR_API QorErrorCode Qor_DiscardLibrary() noexcept;
