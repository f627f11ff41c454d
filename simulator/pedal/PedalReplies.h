// Builds the pedal's two frames, cut into 64-byte reports, including faults.
//
// Byte 0 of a report is the number of stream bytes that follow, 1 to 63; the rest is padding.
#pragma once

#include "simulator/pedal/PedalBehaviour.h"
#include "simulator/pedal/PedalStore.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace cabslot::simulator {

inline constexpr std::size_t reportSize = 64;
inline constexpr std::size_t reportCapacity = reportSize - 1;

using Report = std::array<std::uint8_t, reportSize>;

/// The names and the factory flag of all four slots.
std::vector<Report> allDataReply(const PedalStore& store, const Faults& faults);

/// Confirms that an import is finished.
std::vector<Report> confirmationReply(const Faults& faults);

} // namespace cabslot::simulator
