// Splits a byte string into 64-byte output reports.
//
//   offset  size  field
//   0       1     n, the number of valid bytes that follow: 1 to 63
//   1       n     bytes of the frame stream; frames and reports are not aligned
//   n+1     63-n  unused
#pragma once

#include "device/HIDManager.h"

#include <cstddef>
#include <cstdint>

namespace cabslot {

inline constexpr std::size_t reportDataSize =
    hidReportSize - 1; ///< stream bytes a report can carry

/// Sends `len` bytes to `HID_Device` as reports, in order. Returns 1 if every report was accepted.
/// Returns 0 at the first that was not; a last, partial report without a connected device is not
/// sent and raises deviceLost. Device thread.
int WriteHid(const std::uint8_t* data, std::int32_t len);

} // namespace cabslot
