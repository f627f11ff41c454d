#include "device/ReceiveBuffer.h"

#include "device/SharedState.h"

#include <algorithm>

namespace cabslot {

namespace {

/// The index `n` bytes after `index` in the ring; `n` is at most its size.
std::uint32_t advanced(std::uint32_t index, std::uint32_t n) {
    return index + n < rxBufferSize ? index + n : index + n - rxBufferSize;
}

/// How many of the `n` bytes at `index` come before the ring wraps.
std::uint32_t untilEnd(std::uint32_t index, std::uint32_t n) {
    return std::min(n, rxBufferSize - index);
}

} // namespace

int putRX_buffer(const std::uint8_t* data, std::uint32_t n) {
    if (rxBufferSize - rx_buffer_count < n)
        return 0;
    const std::uint32_t first = untilEnd(rx_buffer_writep, n);
    std::copy_n(data, first, rx_buffer.begin() + rx_buffer_writep);
    std::copy_n(data + first, n - first, rx_buffer.begin());
    rx_buffer_writep = advanced(rx_buffer_writep, n);
    rx_buffer_count += n;
    return 1;
}

int getRX_buffer(std::uint32_t n, std::uint8_t* out) {
    if (rx_buffer_count < n)
        return 0;
    const std::uint32_t first = untilEnd(rx_buffer_readp, n);
    std::copy_n(rx_buffer.begin() + rx_buffer_readp, first, out);
    std::copy_n(rx_buffer.begin(), n - first, out + first);
    rx_buffer_readp = advanced(rx_buffer_readp, n);
    rx_buffer_count -= n;
    return 1;
}

void ClearRx_buffer() {
    rx_buffer_count = 0;
    rx_buffer_writep = 0;
    rx_buffer_readp = 0;
}

} // namespace cabslot
