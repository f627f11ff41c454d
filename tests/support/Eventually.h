// Waiting for what another thread or process does.
#pragma once

#include <chrono>
#include <thread>

namespace cabslot::testing {

/// Waits until `check` holds, ten seconds at most; returns whether it does.
template<typename Check>
bool eventually(const Check& check) {
    for (int i = 0; i < 2000 && !check(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return check();
}

} // namespace cabslot::testing
