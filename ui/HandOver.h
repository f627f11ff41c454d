// A set that a second start of the program hands over to the window that is open already: a file in
// the folder of what is remembered, named for the window's process. Main thread.
#pragma once

#include <QString>

#include <cstdint>

namespace cabslot {

/// Leaves the set at `path` for the window of process `pid`. Reports a failure.
void handOver(std::int64_t pid, const QString& path);

/// The set that was left for this process; empty if there is none.
QString takeHandedOver();

} // namespace cabslot
