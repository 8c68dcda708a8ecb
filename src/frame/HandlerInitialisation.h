// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "frame/LoadContext.h"
#include "platform/QorErrorCode.h"

namespace qor::frame {

/// Has the platform set up the library handlers unless they are current, and shows what went wrong. The result is the
/// platform's, with NotAllHandlersSetUp counted as 0: an error of the model-type handler alone is shown and still gives
/// 0.
QorErrorCode initialiseHandlers(const LoadContext& context);

}  // namespace qor::frame
