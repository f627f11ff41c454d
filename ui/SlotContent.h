// What a slot's row shows of its content, in words and as a picture.
#pragma once

#include "analysis/IRSummary.h"
#include "memory/SlotMemory.h"

#include <QString>

#include <optional>

namespace cabslot {

/// Without a summary the content is unknown.
struct SlotContent {
    QString line; ///< below the name; may be empty
    std::optional<IRSummary> summary{};
};

/// The content that is remembered; unknown without a record.
SlotContent contentOf(const std::optional<SlotRecord>& record);

/// Such as "Loaded from here on 3 May"; empty without a record.
QString lineOf(const std::optional<SlotRecord>& record);

} // namespace cabslot
