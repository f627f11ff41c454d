// A byte string into 64-byte output reports.
//
//   offset  size  field
//   0       1     n, the number of valid bytes that follow: 1 to 63
//   1       n     bytes of the stream of frames; frames and reports do not line up
//   n+1     63-n  not used
#pragma once

#include "device/HIDManager.h"

#include <cstddef>
#include <cstdint>

namespace cabslot {

inline constexpr std::size_t reportDataSize =
    hidReportSize - 1; ///< stream bytes a report can carry

/// Sends `len` bytes to `HID_Device` as reports, in order, one after another. Returns 1 when every
/// report was accepted. Returns 0 at the first that was not; a last, partial report that finds no
/// device connected is not sent and raises the event deviceLost. Device thread.
int WriteHid(const std::uint8_t* data, std::int32_t len);

} // namespace cabslot
