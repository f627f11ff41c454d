// The ring buffer between input reports and the unpacker: `rx_buffer` and its count and indices.
//
// Both ends run on the device thread; there is no lock. It is not emptied when a device goes: the
// unpacker copes with what is left.
#pragma once

#include <cstdint>

namespace cabslot {

/// Appends `n` bytes, or none: 1, or 0 when they do not all fit into the 10240.
int putRX_buffer(const std::uint8_t* data, std::uint32_t n);

/// Removes exactly `n` bytes into `out`, or none: 1, or 0 when fewer are stored.
int getRX_buffer(std::uint32_t n, std::uint8_t* out);

/// Empties the buffer.
void ClearRx_buffer();

} // namespace cabslot
