// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the operations of the simulation mapping return.
namespace QorSimCode {
inline constexpr int Ok = 0;
inline constexpr int Failed = 1;              ///< the repository failed, or a class or attribute is unknown
inline constexpr int OutOfRange = 2;          ///< no option of that index, or no attribute for that action
inline constexpr int BadText = 4;             ///< syntax error, unknown element, misplaced ACTION, unknown event
inline constexpr int KeyMissing = 5;          ///< a required key is missing
inline constexpr int NoSuchOption = 6;        ///< no option of that name, or an option that is not complete
inline constexpr int FinishedWithErrors = 7;  ///< read to the end, with errors on the way
inline constexpr int NotRead = 8;             ///< asked before the text was read
}  // namespace QorSimCode
