// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::frame::message {

inline constexpr std::uint16_t loadingLibrary = 28400;    ///< %s library
inline constexpr std::uint16_t libraryNotLoaded = 28401;  ///< %s library
inline constexpr std::uint16_t initialisingHandlers = 28402;
inline constexpr std::uint16_t oneInitialisationError = 28403;  ///< %s1 library, %s2 error text
inline constexpr std::uint16_t furtherFailure = 28404;
inline constexpr std::uint16_t otherFailure = 28405;  ///< %c code
inline constexpr std::uint16_t updatingFacets = 28406;
inline constexpr std::uint16_t libraryLocked = 28407;                ///< %l library, %u user
inline constexpr std::uint16_t severalInitialisationErrors = 28408;  ///< %s1 library, %s2 error text

}  // namespace qor::frame::message
