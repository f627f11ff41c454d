// Previews what the selected file would put into the pedal.
#pragma once

#include "analysis/IRSummary.h"

#include <QString>

#include <optional>

namespace cabslot {

struct Preview {
    std::optional<IRSummary> summary; ///< of the block that would be sent; none if refused
    QString whyNot;                   ///< why the file is refused: a sentence
};

/// Reads the start of the file (some megabytes at most) and changes nothing that is sent. If it
/// `prepares`, the block is that of the prepared file.
Preview previewOf(const QString& path, bool prepares);

/// Whether the name ends with .wav, in any case: only such files can be opened.
bool isWavName(const QString& path);

} // namespace cabslot
