// The same work on many things, spread over the processors.
#pragma once

#include <cstddef>
#include <functional>

namespace cabslot {

/// Calls `work` with 0 to `count` - 1, each once, on as many threads as there are processors (at
/// least four). While they work, `meanwhile` is called on this thread every 50 ms with how many are
/// done; when it returns false, no further work is begun. Returns when all threads have ended. If
/// no thread can be started, this thread does the work.
void onAllCores(std::size_t count, const std::function<void(std::size_t)>& work,
                const std::function<bool(std::size_t done)>& meanwhile);

} // namespace cabslot
