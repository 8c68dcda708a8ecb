// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

inline constexpr std::int32_t QorSecondsPerMinute = 60;
inline constexpr std::int32_t QorMinutesPerHour = 60;
inline constexpr std::int32_t QorSecondsPerHour = 3600;
inline constexpr std::int32_t QorSecondsPerDay = 86400;
