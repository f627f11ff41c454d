// What a file that is pointed at would put into the pedal.
#pragma once

#include "analysis/IRSummary.h"

#include <QString>

#include <optional>

namespace cabslot {

struct Preview {
    std::optional<IRSummary> summary; ///< of the block that would be sent; none if it is refused
    QString whyNot;                   ///< then: a sentence
};

/// Looks at the start of the file (some megabytes at most) and touches nothing that is sent. When
/// it `prepares`, the block is the one that preparing the file gives.
Preview previewOf(const QString& path, bool prepares);

/// Only WAV files can be opened, whatever case the extension has.
bool isWavName(const QString& path);

} // namespace cabslot
