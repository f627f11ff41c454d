// The ring buffer between input reports and the unpacker: `rx_buffer` and its count and indices.
//
// Both ends run on the device thread, so there is no lock. It is not emptied when a device is
// removed: the unpacker copes with leftover bytes.
#pragma once

#include <cstdint>

namespace cabslot {

/// Appends `n` bytes and returns 1, or none and returns 0 if they do not all fit into the 10240.
int putRX_buffer(const std::uint8_t* data, std::uint32_t n);

/// Removes exactly `n` bytes into `out` and returns 1, or none and returns 0 if fewer are stored.
int getRX_buffer(std::uint32_t n, std::uint8_t* out);

/// Empties the buffer.
void ClearRx_buffer();

} // namespace cabslot
