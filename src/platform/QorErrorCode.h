// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorExport.h"

/// Result of an operation that may fail: 0 is success, every other value a failure. A host may return any other 32-bit
/// value; the system passes such values through unchanged. Named here are the values that the system itself makes or
/// tests, and those that a service refuses with.
enum class [[nodiscard]] QorErrorCode : std::int32_t{
    Ok = 0,
    NoValue = 3,                       ///< the attribute has no value
    NotFound = 5,                      ///< no thing of that name or identifier
    OutOfRange = 17,                   ///< an argument lies outside its range (also: an identifier beyond 32 bits)
    ValueRefused = 52,                 ///< the attribute does not take this text
    NotAModelVersion = 60,             ///< the identifier is not a model version
    NotComputable = 63,                ///< an expression cannot be worked out
    ModelTypeHandlerError = 78,        ///< the model-type attribute handler reported an error
    SimMappingError = 79,              ///< the simulation mapping handler reported an error
    NotAllHandlersSetUp = 82,          ///< some library handlers were not set up; the load counts it as success
    HandlerInitialisationFailed = 83,  ///< a further initialisation failure with a fixed message of its own
    ClassOutsideLibrary = 106,         ///< a class belongs to neither of the two attached libraries
    NoProfileReferenced = 107,         ///< an attribute-profile reference is empty
    UserManagerNotSelected = 5000,     ///< a user manager could not be selected
    LockedByOther = 5013,              ///< the library is locked by another user
    Broken = -2,                       ///< the operation broke off: no memory, or a host's code threw
    NotInstalled = -1,                 ///< no host offers this operation
};

/// Reports, in one line to the host's error display or else to standard error, that no host offers `operation`
/// ("QorCoreMM_Enhanced::classOf"). Returns NotInstalled, so that a service's default can end with it.
QOR_API QorErrorCode Qor_NotInstalled(const char* operation) noexcept;
