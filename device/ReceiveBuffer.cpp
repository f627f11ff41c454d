#include "device/ReceiveBuffer.h"

#include "device/SharedState.h"

namespace cabslot {

namespace {

std::uint32_t next(std::uint32_t index) {
    return index + 1 == rxBufferSize ? 0 : index + 1;
}

} // namespace

int putRX_buffer(const std::uint8_t* data, std::uint32_t n) {
    if (rxBufferSize - rx_buffer_count < n)
        return 0;
    for (std::uint32_t i = 0; i < n; ++i) {
        rx_buffer[rx_buffer_writep] = data[i];
        rx_buffer_writep = next(rx_buffer_writep);
        ++rx_buffer_count;
    }
    return 1;
}

int getRX_buffer(std::uint32_t n, std::uint8_t* out) {
    if (rx_buffer_count < n)
        return 0;
    for (std::uint32_t i = 0; i < n; ++i) {
        out[i] = rx_buffer[rx_buffer_readp];
        rx_buffer_readp = next(rx_buffer_readp);
        --rx_buffer_count;
    }
    return 1;
}

void ClearRx_buffer() {
    rx_buffer_count = 0;
    rx_buffer_writep = 0;
    rx_buffer_readp = 0;
}

} // namespace cabslot
