// A file that the user has selected, and what it would put into the pedal.
#pragma once

#include "analysis/IRSummary.h"
#include "irfile/IRFile.h"

#include <QString>

#include <optional>

namespace cabslot {

/// A selected file, and how it is to be loaded.
struct Choice {
    QString path;
    bool prepares = false;
    double lowCut = 0;  ///< Hz, when it is prepared; 0: none
    double highCut = 0; ///< the same
    QString name{};     ///< in the pedal; empty: the one that the rule makes from the file's name

    bool isPlain() const { return !prepares && name.isEmpty(); }
};

struct Preview {
    std::optional<IRSummary> summary{}; ///< none if the file is refused
    IR ir{};                            ///< what would be sent
    QString whyNot{};                   ///< why the file is refused: a sentence
};

/// Reads the file, or only its start, and changes nothing that is sent.
Preview previewOf(const Choice& choice, Extent extent);

/// Whether the name ends with .wav, in any case: only such files can be opened.
bool isWavName(const QString& path);

} // namespace cabslot
