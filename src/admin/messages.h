// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::admin::message {

// Columns of the log.
inline constexpr std::uint16_t dateColumn = 29000;
inline constexpr std::uint16_t timeColumn = 29001;
inline constexpr std::uint16_t userColumn = 29002;
inline constexpr std::uint16_t actionColumn = 29003;
inline constexpr std::uint16_t detailColumn = 29004;

inline constexpr std::uint16_t anonymousAdministrator = 29005;
inline constexpr std::uint16_t unreadableLine = 29006;  ///< %n line of the log

// Actions, from userCreated to groupLeft without a gap: readers of the log know an action by its text.
inline constexpr std::uint16_t userCreated = 29010;
inline constexpr std::uint16_t userDeleted = 29011;
inline constexpr std::uint16_t passwordSet = 29012;
inline constexpr std::uint16_t userLocked = 29013;
inline constexpr std::uint16_t rightChanged = 29014;
inline constexpr std::uint16_t libraryAssigned = 29015;
inline constexpr std::uint16_t remarkChanged = 29016;
inline constexpr std::uint16_t userRenamed = 29017;
inline constexpr std::uint16_t validitySet = 29018;
inline constexpr std::uint16_t systemGroupJoined = 29019;
inline constexpr std::uint16_t systemGroupLeft = 29020;
inline constexpr std::uint16_t signOnSet = 29021;
inline constexpr std::uint16_t managerJoined = 29022;
inline constexpr std::uint16_t managerLeft = 29023;
inline constexpr std::uint16_t groupJoined = 29024;
inline constexpr std::uint16_t groupLeft = 29025;

// Labels, with the space behind them.
inline constexpr std::uint16_t userLabel = 29030;
inline constexpr std::uint16_t identifierLabel = 29031;
inline constexpr std::uint16_t mustChangeLabel = 29032;
inline constexpr std::uint16_t lockedLabel = 29033;
inline constexpr std::uint16_t libraryLabel = 29034;
inline constexpr std::uint16_t beforeLabel = 29035;
inline constexpr std::uint16_t afterLabel = 29036;
inline constexpr std::uint16_t validUntilLabel = 29037;
inline constexpr std::uint16_t groupLabel = 29038;
inline constexpr std::uint16_t signOnLabel = 29039;
inline constexpr std::uint16_t managerLabel = 29040;
inline constexpr std::uint16_t yes = 29041;
inline constexpr std::uint16_t no = 29042;
inline constexpr std::uint16_t unlimited = 29043;
inline constexpr std::uint16_t administratorGranted = 29044;  ///< complete, like the next three
inline constexpr std::uint16_t administratorWithdrawn = 29045;
inline constexpr std::uint16_t subAdministratorGranted = 29046;
inline constexpr std::uint16_t subAdministratorWithdrawn = 29047;
inline constexpr std::uint16_t otherGrantedLabel = 29048;
inline constexpr std::uint16_t otherWithdrawnLabel = 29049;
inline constexpr std::uint16_t remarkBefore = 29050;  ///< a field of its own, like the next
inline constexpr std::uint16_t remarkAfter = 29051;

// Export.
inline constexpr std::uint16_t csvFiles = 29060;
inline constexpr std::uint16_t noFileName = 29061;
inline constexpr std::uint16_t targetNotWritable = 29062;  ///< %f file
inline constexpr std::uint16_t logNotReadable = 29063;
inline constexpr std::uint16_t exported = 29064;    ///< %f file
inline constexpr std::uint16_t writeError = 29065;  ///< %f file

// Settings.
inline constexpr std::uint16_t settingsTitle = 29070;
inline constexpr std::uint16_t loggingBox = 29071;
inline constexpr std::uint16_t adminNameBox = 29072;

// Access.
inline constexpr std::uint16_t lowerSubGroup = 29100;  ///< question; %g model group, %u user group

}  // namespace qor::admin::message
