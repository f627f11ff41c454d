// Writes what the next upload sends, and what a slot then shows. Main thread, never while
// isInportIR is set. `slot` is 0 to 3; any other aborts.
#pragma once

#include "irfile/IR.h"

#include <cstdint>

namespace cabslot {

/// The name to send, which also becomes the display name of `slot`.
void stageName(std::int64_t slot, const NameField& name);

/// Whether the IR is a factory IR, for `slot` and for sending.
void recordFactoryFlag(std::int64_t slot, bool factory);

/// Block, name and flag of `ir`.
void stage(std::int64_t slot, const IR& ir);

} // namespace cabslot
