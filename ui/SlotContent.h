// What a slot's row shows of its content, in words and as a picture.
#pragma once

#include "analysis/IRSummary.h"
#include "memory/SlotRecord.h"

#include <QString>

#include <optional>

namespace cabslot {

/// Empty: nothing is known, because the slot was loaded elsewhere.
struct SlotContent {
    QString file{};                     ///< the source's name; may be cut to fit; may be empty
    QString rest{};                     ///< what follows it in the line below the slot's name
    bool problem = false;               ///< the pedal has not confirmed it
    QString detail{};                   ///< the whole path
    QString findings{};                 ///< one on each line; none of a clear, which is silent
    std::optional<IRSummary> summary{}; ///< with all findings

    QString line() const { return file + rest; }
};

/// `origin` says what the file is, if it was just read.
SlotContent contentOf(const SlotRecord& record, const std::string& origin = {});

/// Such as "3 May", or "3 May 2025" in another year.
QString dayOf(const SlotRecord& record);

} // namespace cabslot
