// What inspect --compare reports about two IRs.
#pragma once

#include "analysis/Picture.h"
#include "blend/Compare.h"
#include "irfile/IR.h"
#include "json/Json.h"

#include <optional>
#include <string>
#include <vector>

namespace cabslot {

class CompareReport {
public:
    CompareReport(const IR& first, const IR& second);

    void print() const; ///< to standard output
    Json fields() const;
    Picture page() const; ///< both responses, and the same rows

private:
    struct Row {
        const char* label;
        std::string text;
    };
    std::vector<Row> rows() const;

    Samples first_;
    Samples second_;
    std::string name_;      ///< of the first's file
    std::string otherPath_; ///< of the second
    std::optional<Comparison> comparison_;
};

/// The fields of an alignment: whether it is clear, the shift, the polarity.
Json alignmentFields(const Alignment& alignment);

double toTwoDecimals(double number);

} // namespace cabslot
